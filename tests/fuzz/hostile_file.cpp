#include "fuzz/hostile_file.h"

#include <array>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include <larkmoor/status.h>

#include "engine/store/driver.h"
#include "fuzz/input_reader.h"
#include "fuzz/restored_file.h"
#include "fuzz/tree_entries.h"

namespace larkmoor::fuzz {
namespace {

constexpr std::size_t PageSize = 4096;
constexpr std::uint8_t FirstWithEntries = 128;

/// `count` records with numbers from 1 on, of which each fifth was deleted again.
void FillWith(test::Cursor& file, std::int32_t count) {
  const std::unique_ptr<store::Batch> batch = store::DefaultDriver().BeginBatch();
  for (std::int32_t number = 1; number <= count; ++number) {
    Must(
        file.Insert(test::SampleKey::Number, test::MadeSample(number, number * 7)) == StatusSuccess,
        "a record can be inserted");
    if (number % 5 == 0) Must(file.Delete() == StatusSuccess, "a record can be deleted");
  }
  Must(batch->Commit() == StatusSuccess, "records can be committed");
}

/// The sound files that edits start from: without records, with a tree of one page, with a tree of
/// several, and one of which some keys may not be repeated or changed.
const std::array<RestoredFile, 4>& Samples() {
  static const std::array<RestoredFile, 4> samples = {
      RestoredFile(test::SampleFile()),
      RestoredFile(test::SampleFile(), [](test::Cursor& file) { FillWith(file, 4); }),
      RestoredFile(test::SampleFile(), [](test::Cursor& file) { FillWith(file, 60); }),
      RestoredFile(test::StrictFile(), [](test::Cursor& file) { FillWith(file, 20); }),
  };
  return samples;
}

void Edit(std::string& bytes, InputReader& input) {
  const std::size_t page = input.Take<std::uint8_t>();
  const std::size_t place = page * PageSize + input.Take<std::uint16_t>();
  const std::string_view edit = input.TakeText();
  if (place >= bytes.size()) return;
  if (edit.empty()) return bytes.resize(place);
  bytes.replace(place, edit.size(), edit);
}

}  // namespace

bool MakeHostileFile(const std::filesystem::path& path, Input input) {
  InputReader reader(input);
  const auto choice = reader.Take<std::uint8_t>();
  // What the store noted there is of another file.
  std::filesystem::remove(path.string() + "-lock");
  if (choice == 0) {
    Overwrite(path, TextOf(reader.TakeRest()));
    return false;
  }
  const std::string& sample = Samples()[choice % Samples().size()].Bytes();
  std::string bytes = sample;
  while (choice < FirstWithEntries && !reader.AtEnd()) Edit(bytes, reader);
  Overwrite(path, bytes);
  const bool isSound = bytes == sample && reader.AtEnd();
  if (!reader.AtEnd()) PutEntries(path, reader);
  return isSound;
}

}  // namespace larkmoor::fuzz
