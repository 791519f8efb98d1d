// A record file of hostile bytes: opened, checked, read along every key and written to.
#include <algorithm>
#include <array>
#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

#include <larkmoor/status.h>

#include "engine/store/driver.h"
#include "engine/tovrin_file.h"
#include "fuzz/hostile_file.h"
#include "fuzz/input_reader.h"
#include "fuzz/restored_file.h"

namespace larkmoor::fuzz {
namespace {

using store::DefaultDriver;

/// The least that an entry takes in a page.
constexpr std::size_t EntrySize = 16;

/// The work on one opened file.
class Work {
 public:
  Work(TovrinFile& file, std::size_t fileSize) : file_(file), mostRecords_(fileSize / EntrySize) {}

  /// Reads all of it, both ways, along every key and in physical order. Gives the numbers of
  /// records that the walks found.
  std::vector<std::size_t> WalkAll() {
    std::vector<std::size_t> counts;
    for (const store::KeyDescription& key : file_.Description()->keys) {
      const auto read = [&](auto operation) {
        return [this, operation, &key] { return (file_.*operation)(key.number); };
      };
      counts.push_back(Walk(read(&TovrinFile::btGetFirst), read(&TovrinFile::btGetNext)));
      counts.push_back(Walk(read(&TovrinFile::btGetLast), read(&TovrinFile::btGetPrevious)));
      Search(key.number);
    }
    const auto step = [&](auto operation) {
      return [this, operation] { return (file_.*operation)(); };
    };
    counts.push_back(Walk(step(&TovrinFile::btStepFirst), step(&TovrinFile::btStepNext)));
    counts.push_back(Walk(step(&TovrinFile::btStepLast), step(&TovrinFile::btStepPrevious)));
    return counts;
  }

  /// Deletes, changes and inserts a record. Whether all of it was done.
  bool Write() {
    const auto& keys = file_.Description()->keys;
    const std::int16_t key = keys.empty() ? std::int16_t{0} : keys.front().number;
    const bool deleted = file_.btStepLast() == StatusSuccess && file_.btDelete() == StatusSuccess;
    const bool changed =
        file_.btStepFirst() == StatusSuccess && file_.btUpdate(key) == StatusSuccess;
    std::ranges::fill(*file_.RecordBuffer(), std::byte{0});
    const bool inserted = file_.btInsert(key) == StatusSuccess;
    return deleted && changed && inserted;
  }

 private:
  template <typename First, typename Next>
  std::size_t Walk(First first, Next next) {
    std::size_t count = 0;
    for (Status status = Read(first); status == StatusSuccess; status = Read(next)) {
      Must(++count <= mostRecords_, "a walk comes to an end");
    }
    return count;
  }

  template <typename Operation>
  Status Read(Operation read) {
    const RecordBytes before = *file_.RecordBuffer();
    const Status status = read();
    Must(status == StatusSuccess || *file_.RecordBuffer() == before,
         "a read that fails leaves the record as it was");
    return status;
  }

  void Search(std::int16_t key) {
    for (const auto search :
         {&TovrinFile::btGetEqual, &TovrinFile::btGetGreaterThan, &TovrinFile::btGetGreaterOrEqual,
          &TovrinFile::btGetLessThan, &TovrinFile::btGetLessOrEqual}) {
      Read([&] { return (file_.*search)(key); });
    }
    double percent = 50;
    file_.btFindPercentage(key, percent);
    Must(percent >= 0 && percent <= 100, "a percentage goes from 0 to 100");
    Read([&] { return file_.btGetByPercentage(key, percent); });
  }

  TovrinFile& file_;
  std::size_t mostRecords_;
};

/// Whether the file holds together, as far as the driver can tell.
bool IsVerified(const std::filesystem::path& path) {
  std::vector<std::string> findings;
  return DefaultDriver().Verify(path, findings, {}) == StatusSuccess && findings.empty();
}

bool IsAnswerOfOpen(Status status) {
  constexpr std::array Answers = {StatusSuccess, StatusIOError, StatusNotARecordFile,
                                  StatusInvalidOwner};
  return std::ranges::find(Answers, status) != Answers.end();
}

void WorkOn(const std::filesystem::path& path, bool isSound) {
  const bool isVerified = IsVerified(path);
  Must(isVerified || !isSound, "a sound file holds together");
  TovrinFile file;
  const Status opened = file.btOpen(path.string(), TovrinFile::NormalMode);
  Must(IsAnswerOfOpen(opened), "what is no record file is told");
  if (opened == StatusInvalidOwner) return;
  if (opened != StatusSuccess) return Must(!isVerified, "a file that holds together opens");
  Work work(file, std::filesystem::file_size(path));
  const auto records = static_cast<std::size_t>(file.btRecordCount());
  const std::vector<std::size_t> counts = work.WalkAll();
  const bool allFindAll =
      std::ranges::all_of(counts, [&](std::size_t count) { return count == records; });
  Must(allFindAll || !isVerified, "in a file that holds together each walk finds all records");
  const bool written = work.Write();
  Must(written || !isSound || records == 0, "a sound file can be written to");
  work.WalkAll();
  file.btClose();
  Must(IsVerified(path) || !isVerified, "a file holds together after writes");
}

}  // namespace

void RecordFile(Input input) {
  static const RestoredFile file(test::SampleFile());
  const bool isSound = MakeHostileFile(file.Path(), input);
  WorkOn(file.Path(), isSound);
}

}  // namespace larkmoor::fuzz
