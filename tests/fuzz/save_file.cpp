// A stream in the sequential form, loaded and saved again.
#include <algorithm>
#include <cstdint>
#include <optional>
#include <sstream>
#include <string>
#include <vector>

#include <larkmoor/status.h>

#include "engine/sequential.h"
#include "fuzz/input_reader.h"
#include "fuzz/restored_file.h"

namespace larkmoor::fuzz {
namespace {

constexpr std::size_t RecordLength = test::SampleOffset::End;
constexpr char EndMark = '\x1A';

/// The records of a stream that was loaded: in each line, what stands behind the first comma.
std::vector<std::string> RecordsIn(std::string_view stream) {
  std::vector<std::string> records;
  while (!stream.empty() && stream.front() != EndMark) {
    stream.remove_prefix(stream.find(',') + 1);
    records.emplace_back(stream.substr(0, RecordLength));
    stream.remove_prefix(RecordLength);
    stream.remove_prefix(stream.find('\n') + 1);
  }
  return records;
}

/// What the file saves of these records: those without a number have been given one.
std::string SavedForm(std::vector<std::string> records) {
  std::int32_t highest = 0;
  std::string saved;
  for (std::string& record : records) {
    const auto bytes = std::as_writable_bytes(std::span(record));
    auto number = test::Peek<std::int32_t>(bytes, test::SampleOffset::Number);
    if (number == 0) number = highest + 1;
    test::Poke(bytes, test::SampleOffset::Number, number);
    highest = std::max(highest, number);
    saved += std::to_string(RecordLength) + "," + record + "\r\n";
  }
  return saved;
}

std::string Save(TovrinFile& file, std::optional<std::int16_t> key = {}) {
  std::ostringstream out;
  const SequentialResult result = SaveSequential(file, key, out);
  Must(result.status == StatusSuccess && result.problem.empty(), "a file can be saved");
  Must(result.records == file.btRecordCount(), "a file is saved as a whole");
  return out.str();
}

/// Loads the stream into an empty file, and gives what is then saved; nothing where it was refused.
std::optional<std::string> SavedAfterLoad(const RestoredFile& empty, std::string_view stream) {
  empty.Restore();
  TovrinFile file;
  Must(file.btOpen(empty.Path().string(), TovrinFile::NormalMode) == StatusSuccess,
       "the file opens");
  std::istringstream in{std::string(stream)};
  const SequentialResult loaded = LoadSequential(file, in);
  Must(loaded.records == file.btRecordCount(), "a load tells what it added");
  if (loaded.status == StatusSuccess && loaded.problem.empty()) {
    for (const auto& key : file.Description()->keys) Save(file, key.number);
    return Save(file);
  }
  Must(loaded.records == 0, "a load that is refused adds nothing");
  return std::nullopt;
}

}  // namespace

void SaveFile(Input input) {
  static const RestoredFile empty(test::SampleFile());
  const std::string_view stream = TextOf(input);
  const std::optional<std::string> saved = SavedAfterLoad(empty, stream);
  if (!saved) return;
  Must(*saved == SavedForm(RecordsIn(stream)), "what was loaded is saved byte by byte");
  Must(SavedAfterLoad(empty, *saved) == saved, "what was saved loads, and is saved the same");
}

}  // namespace larkmoor::fuzz
