// A process that the trials kill, or record.
//
//   larkmoor_trial_worker write FIRST SECOND SHARE SEED   writes to both files until it is killed
//   larkmoor_trial_worker walk FIRST SECOND               reads both over and over
//   larkmoor_trial_worker open FIRST SECOND               opens and closes both over and over
//   larkmoor_trial_worker compact FIRST SECOND            compacts both over and over
//   larkmoor_trial_worker record FIRST SECOND LOG SEED COUNT
//                                                         does so many pieces of work, and records
//                                                         what reaches the disk
//
// It prints "ready" when it begins, then what it writes, as `told_work.h` says, or a line for each
// time that it is through. Where a promise is not kept it says so and ends with 1.

#include <cstddef>
#include <cstdint>
#include <exception>
#include <iostream>
#include <memory>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include <larkmoor/status.h>

#include "support/random_work.h"
#include "support/sample_files.h"
#include "support/told_work.h"
#include "trials/kill_trial.h"
#include "trials/recorder.h"
#include "trials/recording.h"
#include "trials/trial.h"
#include "trials/watched_driver.h"

namespace larkmoor::trials {
namespace {

using store::Seek;
using store::Step;
using test::Cursor;
using test::SampleKey;
using Arguments = std::vector<std::string>;

void Print(const std::string& line) { std::cout << line << std::endl; }

std::vector<std::string> FilesIn(const Arguments& arguments) {
  return {arguments.at(1), arguments.at(2)};
}

std::vector<Cursor> Open(WatchedDriver& driver, const std::vector<std::string>& paths) {
  std::vector<Cursor> files;
  for (const std::string& path : paths) files.emplace_back(driver, path);
  return files;
}

std::uint32_t SeedIn(const std::string& word) {
  return static_cast<std::uint32_t>(std::stoul(word));
}

[[noreturn]] void WriteForEver(WatchedDriver& driver, const Arguments& arguments) {
  test::RandomWork work(driver, Open(driver, FilesIn(arguments)),
                        ShareOf(std::stoi(arguments.at(3))), SeedIn(arguments.at(4)), Print);
  Print(ReadyLine);
  for (;;) work.Work();
}

void ExpectWhole(const test::Sample& sample) {
  if (sample != test::MadeSample(sample.number, sample.stamp)) {
    throw Finding("record " + std::to_string(sample.number) + " was read by halves");
  }
}

/// Walks along the numbers, which come in order whatever others do meanwhile. One comes twice where
/// its record is deleted and inserted anew.
void WalkAlongNumbers(Cursor& file, Seek start, Seek onward) {
  std::int32_t last = 0;
  Status status = file.Get(start, SampleKey::Number);
  for (bool isFirst = true; status == StatusSuccess; isFirst = false) {
    const std::int32_t number = file.InHand().number;
    ExpectWhole(file.InHand());
    if (!isFirst && number != last && (onward == Seek::Next) != (last < number)) {
      throw Finding("a walk goes from " + std::to_string(last) + " to " + std::to_string(number));
    }
    last = number;
    status = file.Get(onward, SampleKey::Number);
  }
}

void WalkByStep(Cursor& file) {
  Status status = file.StepTo(Step::First);
  for (; status == StatusSuccess; status = file.StepTo(Step::Next)) ExpectWhole(file.InHand());
}

/// Within steady reads nothing changes, so that all ways through the file show the same.
void LookAtOneState(Cursor& file) {
  const auto steady = file.File().BeginSteadyReads();
  const std::size_t records = ContentOf(file).size();
  if (file.File().RecordCount() != static_cast<std::int32_t>(records)) {
    throw Finding("a state counts records that it has not");
  }
  for (const store::KeyDescription& key : file.File().Description().keys) {
    if (NumbersByKey(file, key.number).size() != records) {
      throw Finding("a state has other records on key " + std::to_string(key.number));
    }
  }
}

[[noreturn]] void WalkForEver(WatchedDriver& driver, const Arguments& arguments) {
  std::vector<Cursor> files = Open(driver, FilesIn(arguments));
  Print(ReadyLine);
  for (;;) {
    for (Cursor& file : files) {
      WalkAlongNumbers(file, Seek::First, Seek::Next);
      WalkAlongNumbers(file, Seek::Last, Seek::Previous);
      WalkByStep(file);
      LookAtOneState(file);
    }
    Print(ThroughLine);
  }
}

[[noreturn]] void OpenForEver(WatchedDriver& driver, const Arguments& arguments) {
  Print(ReadyLine);
  for (;;) {
    for (const std::string& path : FilesIn(arguments)) {
      std::unique_ptr<store::File> file;
      driver.Open(path, store::OpenMode::Normal, file);
    }
    Print(ThroughLine);
  }
}

[[noreturn]] void CompactForEver(WatchedDriver& driver, const Arguments& arguments) {
  Print(ReadyLine);
  for (;;) {
    for (const std::string& path : FilesIn(arguments)) driver.Compact(path);
    Print(ThroughLine);
  }
}

/// Work in sessions, each from an open to a close as clients have them; between them the files are
/// compacted now and then.
int Record(WatchedDriver& driver, const Arguments& arguments) {
  const std::vector<std::string> paths = FilesIn(arguments);
  test::Dice dice(SeedIn(arguments.at(4)));
  StartRecording(arguments.at(3), paths);
  bool compacts = false;
  for (int left = std::stoi(arguments.at(5)); left > 0;) {
    for (const std::string& path : paths) {
      if (compacts) test::MustSucceed(driver.Compact(path), "compact");
    }
    test::RandomWork work(driver, Open(driver, paths), {}, dice.Seed(), RecordLine);
    std::vector<Cursor> files = Open(driver, paths);
    for (int session = 1 + dice.Below(30); session > 0 && left > 0; --session, --left) {
      work.Work();
    }
    for (std::size_t file = 0; file < files.size(); ++file) {
      test::MustSucceed(files[file].File().Sync(), "sync");
      RecordLine(SyncedLine(file));
    }
    compacts = dice.OneIn(3);
  }
  Print(ThroughLine);
  return 0;
}

int Run(const Arguments& arguments) {
  WatchedDriver driver({.hasOthers = arguments.at(0) != "record"});
  const std::string& verb = arguments.at(0);
  if (verb == "write") WriteForEver(driver, arguments);
  if (verb == "walk") WalkForEver(driver, arguments);
  if (verb == "open") OpenForEver(driver, arguments);
  if (verb == "compact") CompactForEver(driver, arguments);
  if (verb == "record") return Record(driver, arguments);
  throw std::runtime_error("unknown work " + verb);
}

}  // namespace
}  // namespace larkmoor::trials

int main(int count, char** arguments) {
  try {
    return larkmoor::trials::Run({arguments + 1, arguments + count});
  } catch (const std::exception& error) {
    std::cout << "failed: " << error.what() << std::endl;
    return 1;
  }
}
