#include "trials/power_trial.h"

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <string>
#include <utility>
#include <vector>

#include <larkmoor/status.h>

#include "support/child_process.h"
#include "support/sample_files.h"
#include "support/told_work.h"
#include "trials/child.h"
#include "trials/disk.h"
#include "trials/file_bytes.h"
#include "trials/kill_trial.h"
#include "trials/watched_driver.h"

namespace larkmoor::trials {
namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;
using test::Content;
using test::Cursor;
using test::MadeSample;
using test::SampleKey;

constexpr std::size_t Files = 2;

/// The states that a file has gone through, by what its writer told.
class History {
 public:
  explicit History(Content start) : states_{std::move(start)} {}

  void Try(const test::Change& change, bool isFirstOfCommit) {
    if (isFirstOfCommit) states_.push_back(states_.back());
    Apply(change, states_.back());
  }
  void Done() { done_ = states_.size() - 1; }
  void Synced() { safe_ = states_.size() - 1; }

  /// Whether a loss of power now may leave this: the commit that was done last, the one before it,
  /// the one under way; nothing that is older than the last sync.
  [[nodiscard]] bool MayLeave(const Content& content) const {
    const std::size_t oldest = std::max(safe_, done_ - std::min<std::size_t>(done_, 1));
    return std::find(states_.begin() + static_cast<std::ptrdiff_t>(oldest), states_.end(),
                     content) != states_.end();
  }

 private:
  std::vector<Content> states_;  ///< after each commit, the one under way among them
  std::size_t done_ = 0;
  std::size_t safe_ = 0;
};

/// Takes what was done to the names of files, or to a file, which may be a new one.
void TakeChange(const Event& event, NamesOnDisk& names, std::vector<FileOnDisk>& disks) {
  while (disks.size() <= event.file) disks.emplace_back(std::string());
  const bool isOfNames = event.kind == Event::Kind::Rename || event.kind == Event::Kind::SyncFolder;
  if (isOfNames) return names.Take(event);
  disks[event.file].Take(event);
}

Content ContentAt(WatchedDriver& driver, const fs::path& path) {
  Cursor file(driver, path);
  return ContentOf(file);
}

void ExpectSound(WatchedDriver& driver, const fs::path& path) {
  std::vector<std::string> findings;
  test::MustSucceed(driver.Verify(path, findings, {}), "verify");
  if (!findings.empty()) throw Finding("after a loss of power: " + findings.front());
}

/// The recorded work once more, up to a moment.
class Replay {
 public:
  Replay(Round& round, const RecordedWork& work) : round_(round), events_(work.events) {
    for (const std::string& bytes : work.before) {
      disks_.emplace_back(bytes);
      histories_.emplace_back(ContentOfImage(bytes));
    }
  }
  ~Replay() { round_.Count("answers", driver_.Answers()); }
  Replay(const Replay&) = delete;
  Replay& operator=(const Replay&) = delete;

  void GoOnTo(std::size_t moment) {
    for (; next_ < moment; ++next_) Take(events_[next_]);
  }

  void CutPower() {
    round_.Count("losses of power");
    const std::vector<std::size_t> left = names_.AfterLossOfPower(round_.Dice());
    for (std::size_t file = 0; file < Files; ++file) {
      const Content found = ContentOfImage(disks_[left[file]].AfterLossOfPower(round_.Dice()));
      if (!histories_[file].MayLeave(found)) {
        throw Finding("a loss of power at event " + std::to_string(next_) + " takes file " +
                      std::to_string(file) + " to a state that it must not have" +
                      (left[file] == names_.AsGiven()[file] ? "" : ", before its compaction"));
      }
      ExpectGoesOn(found);
    }
  }

 private:
  void Take(const Event& event) {
    if (event.kind != Event::Kind::Said) return TakeChange(event, names_, disks_);
    if (event.bytes == test::DoneLine) {
      for (History& history : histories_) history.Done();
      return;
    }
    for (std::size_t file = 0; file < Files; ++file) {
      if (event.bytes == SyncedLine(file)) return histories_[file].Synced();
    }
    Try(test::ChangesIn(event.bytes));
  }

  void Try(const std::vector<test::Change>& changes) {
    std::vector<bool> touched(Files);
    for (const test::Change& change : changes) {
      histories_.at(change.file).Try(change, !touched[change.file]);
      touched[change.file] = true;
    }
  }

  [[nodiscard]] fs::path ImagePath() const { return round_.Folder() / "After.dat"; }

  /// Puts an image in place, and reads it as a client would.
  Content ContentOfImage(const std::string& bytes) {
    driver_.Remove(ImagePath());
    WriteBytes(ImagePath(), bytes);
    ExpectSound(driver_, ImagePath());
    return ContentAt(driver_, ImagePath());
  }

  /// Work goes on with what a loss of power has left.
  void ExpectGoesOn(Content content) {
    constexpr std::int32_t New = 999'999;
    {
      Cursor file(driver_, ImagePath());
      for (std::int32_t number = New; number < New + 3; ++number) {
        const int value = 1 + round_.Dice().Below(1000);
        test::MustSucceed(file.Insert(SampleKey::Number, MadeSample(number, value)), "insert");
        content[number] = value;
      }
      test::MustSucceed(file.File().Sync(), "sync");
    }
    ExpectSound(driver_, ImagePath());
    if (ContentAt(driver_, ImagePath()) != content) {
      throw Finding("a file that saw a loss of power loses what is written to it");
    }
  }

  Round& round_;
  WatchedDriver driver_;
  const std::vector<Event>& events_;
  std::size_t next_ = 0;
  NamesOnDisk names_{Files};
  std::vector<FileOnDisk> disks_;
  std::vector<History> histories_;
};

/// New files, some of them with more records than the work looks at.
std::vector<fs::path> MakeFiles(Round& round) {
  WatchedDriver driver;
  std::vector<fs::path> paths;
  for (std::size_t file = 0; file < Files; ++file) {
    paths.push_back(round.Folder() / (std::to_string(file) + ".dat"));
    test::MustSucceed(driver.Create(paths.back(), test::SampleFile()), "create");
    Cursor cursor(driver, paths.back());
    const auto batch = driver.BeginBatch();
    const int records = round.Dice().OneIn(2) ? round.Dice().Below(500) : 0;
    for (int number = 1; number <= records; ++number) {
      Fill(cursor, {MadeSample(number, number)});
    }
    test::MustSucceed(batch->Commit(), "commit");
    test::MustSucceed(cursor.File().Sync(), "sync");
  }
  return paths;
}

/// A recorder that misses a write would find fault with the store, or would not where there is one.
void ExpectComplete(const RecordedWork& work, const std::vector<fs::path>& paths) {
  NamesOnDisk names(paths.size());
  std::vector<FileOnDisk> disks(work.before.begin(), work.before.end());
  for (const Event& event : work.events) {
    if (event.kind != Event::Kind::Said) TakeChange(event, names, disks);
  }
  for (std::size_t file = 0; file < paths.size(); ++file) {
    if (disks[names.AsGiven()[file]].AsWritten() != ReadBytes(paths[file])) {
      throw std::runtime_error("the recording missed what was done to a file");
    }
  }
}

}  // namespace

RecordedWork RecordWork(Round& round) {
  const std::vector<fs::path> paths = MakeFiles(round);
  RecordedWork work;
  for (const fs::path& path : paths) work.before.push_back(ReadBytes(path));
  const fs::path recording = round.Folder() / "recording";
  const int pieces = 20 + round.Dice().Below(60);
  test::ChildProcess worker({LARKMOOR_TRIAL_WORKER, "record", paths[0], paths[1], recording,
                             std::to_string(round.Dice().Seed()), std::to_string(pieces)});
  const std::string said = worker.ReadLine().value_or("nothing");
  if (worker.Wait() != 0 || said != ThroughLine) throw Finding("the writer said: " + said);
  work.events = ReadRecording(recording);
  ExpectComplete(work, paths);
  round.Count("recorded events", static_cast<std::int64_t>(work.events.size()));
  return work;
}

void CutPower(Round& round, const RecordedWork& work) {
  constexpr int Losses = 40;
  std::vector<std::size_t> moments;
  for (int i = 0; i < Losses; ++i) {
    moments.push_back(round.Dice().PlaceIn(work.events.size() + 1));
  }
  std::sort(moments.begin(), moments.end());
  InChild(round, 60s, [&](Round& inner) {
    Replay replay(inner, work);
    for (const std::size_t moment : moments) {
      replay.GoOnTo(moment);
      replay.CutPower();
    }
  });
}

void PowerRound(Round& round) { CutPower(round, RecordWork(round)); }

}  // namespace larkmoor::trials
