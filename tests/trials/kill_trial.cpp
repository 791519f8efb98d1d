#include "trials/kill_trial.h"

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include <larkmoor/status.h>

#include "support/child_process.h"
#include "support/sample_files.h"
#include "trials/trial.h"
#include "trials/watched_driver.h"

namespace larkmoor::trials {
namespace {

using namespace std::chrono_literals;
using test::ChildProcess;
using test::Content;
using test::Cursor;
using test::Expectation;

/// A process, while it is there.
using Process = std::optional<ChildProcess>;

constexpr std::int32_t Writers = 2;
constexpr std::size_t Files = 2;

/// Two record files and the processes at work on them.
class Battlefield {
 public:
  explicit Battlefield(Round& round) : round_(round) {
    for (const char* name : {"First", "Second"}) {
      store::FileDescription description = test::SampleFile();
      description.name = name;
      paths_.push_back(round.Folder() / (description.name + ".dat"));
      test::MustSucceed(driver_.Create(paths_.back(), description), "create");
    }
    for (std::int32_t writer = 0; writer < Writers; ++writer) expectations_.emplace_back(Files);
    writers_.resize(Writers);
  }
  ~Battlefield() { round_.Count("answers", driver_.Answers()); }
  Battlefield(const Battlefield&) = delete;
  Battlefield& operator=(const Battlefield&) = delete;

  /// Writers at work while readers come and go, and one after the other dies.
  void Fight() {
    for (std::int32_t writer = 0; writer < Writers; ++writer) StartWriter(writer);
    Process walker(Start("walk"));
    Process opener(Start("open"));
    for (int deaths = 4 + round_.Dice().Below(8); deaths > 0; --deaths) {
      Pause();
      if (round_.Dice().OneIn(4)) Replace(walker, "walk");
      if (round_.Dice().OneIn(4)) Replace(opener, "open");
      if (round_.Dice().OneIn(4)) ExpectSound();
      KillAWriter();
    }
    CompactMustWait();
    for (Process* reader : {&walker, &opener}) {
      ExpectGoesOn(**reader, IsThrough);
      Kill(**reader, "killed readers");
    }
  }

  /// Everyone dies at once, and nothing has to be cleaned up.
  void KillAll() {
    for (std::int32_t writer = 0; writer < Writers; ++writer) Bury(writer);
    Examine();
  }

  /// Dies while it compacts, and leaves the file as it was or compacted.
  void KillACompactor() {
    ChildProcess compactor = Start("compact");
    Pause();
    Kill(compactor, "killed compactions");
    Examine();
    for (const auto& path : paths_) test::MustSucceed(driver_.Compact(path), "compact");
    Examine();
  }

 private:
  ChildProcess Start(const std::string& verb, const std::vector<std::string>& more = {}) {
    std::vector<std::string> command{LARKMOOR_TRIAL_WORKER, verb, paths_[0], paths_[1]};
    command.insert(command.end(), more.begin(), more.end());
    ChildProcess child(command);
    const std::string line = child.ReadLine().value_or("nothing");
    if (line != ReadyLine) throw Finding("a process that starts to " + verb + " said: " + line);
    return child;
  }

  void StartWriter(std::int32_t writer) {
    writers_[static_cast<std::size_t>(writer)].emplace(
        Start("write", {std::to_string(writer), std::to_string(round_.Dice().Seed())}));
  }

  void Pause() {
    std::this_thread::sleep_for(std::chrono::microseconds(round_.Dice().Below(20'000)));
  }

  /// Kills a process, whose last words tell whether it found something.
  void Kill(ChildProcess& process, std::string_view what) {
    process.Kill();
    for (const std::string& line : process.RemainingLines()) IsThrough(line);
    round_.Count(what);
  }

  /// Whether a reader is through once more, which is all that it may say.
  static bool IsThrough(const std::string& line) {
    if (line != ThroughLine) throw Finding(line);
    return true;
  }

  void Replace(Process& process, const std::string& verb) {
    Kill(*process, "killed readers");
    process.emplace(Start(verb));
  }

  /// Kills a writer, and follows it to its end.
  void Bury(std::int32_t writer) {
    auto& process = writers_[static_cast<std::size_t>(writer)];
    process->Kill();
    Expectation& expectation = expectations_[static_cast<std::size_t>(writer)];
    const int before = expectation.Done();
    for (const std::string& line : process->RemainingLines()) expectation.Follow(line);
    round_.Count("killed writers");
    round_.Count("writes", expectation.Done() - before);
    process.reset();
  }

  /// Kills a writer, looks at what it left, and puts another in its place.
  void KillAWriter() {
    const std::int32_t victim = round_.Dice().Below(Writers);
    Bury(victim);
    ExpectSurvivorsGoOn();
    CompareShare(victim);
    StartWriter(victim);
  }

  void ExpectSurvivorsGoOn() {
    for (std::size_t writer = 0; writer < writers_.size(); ++writer) {
      if (!writers_[writer]) continue;
      Expectation& expectation = expectations_[writer];
      const int before = expectation.Done();
      ExpectGoesOn(*writers_[writer], [&expectation](const std::string& line) {
        expectation.Follow(line);
        return line == test::DoneLine;
      });
      round_.Count("writes", expectation.Done() - before);
    }
  }

  /// Expects a process to do one more piece of its work. `follow` takes its lines, and tells
  /// whether a line says that a piece is done.
  static void ExpectGoesOn(ChildProcess& process,
                           const std::function<bool(const std::string&)>& follow) {
    // What it has said until now may be of the time before a death.
    constexpr int AsManyAsAPipeHolds = 10'000;
    for (int i = 0; i < AsManyAsAPipeHolds; ++i) {
      const auto line = process.ReadLine(1ms);
      if (!line) break;
      follow(*line);
    }
    for (bool done = false; !done;) {
      const auto line = process.ReadLine();
      if (!line) throw Finding("a process does not go on after the death of another");
      done = follow(*line);
    }
  }

  /// Compares the records of a writer that is dead, while others write theirs.
  void CompareShare(std::int32_t writer) {
    for (std::size_t file = 0; file < Files; ++file) {
      Cursor cursor(driver_, paths_[file]);
      Compare(writer, file, ContentOf(cursor, ShareOf(writer)));
    }
  }

  void Compare(std::int32_t writer, std::size_t file, const Content& found) {
    Expectation& expectation = expectations_[static_cast<std::size_t>(writer)];
    const std::string mismatch = expectation.Mismatch(found, file);
    if (!mismatch.empty()) throw Finding("after a death " + mismatch);
    round_.Count("comparisons");
  }

  /// Every state of a file is sound, whatever is under way.
  void ExpectSound() {
    for (const auto& path : paths_) {
      std::vector<std::string> findings;
      test::MustSucceed(driver_.Verify(path, findings, {}), "verify");
      if (!findings.empty()) throw Finding(findings.front());
      round_.Count("verifications");
    }
  }

  /// Looks at the files while nobody works on them.
  void Examine() {
    ExpectSound();
    for (std::int32_t writer = 0; writer < Writers; ++writer) CompareShare(writer);
  }

  void CompactMustWait() {
    for (const auto& path : paths_) {
      if (driver_.Compact(path) != StatusFileInUse) {
        throw Finding("a file was compacted that others have open");
      }
    }
    round_.Count("refused compactions");
  }

  Round& round_;
  WatchedDriver driver_{{.hasOthers = true}};
  std::vector<std::filesystem::path> paths_;
  std::vector<Expectation> expectations_;  ///< one a writer
  std::vector<Process> writers_;
};

}  // namespace

void KillRound(Round& round) {
  Battlefield field(round);
  field.Fight();
  field.KillAll();
  field.KillACompactor();
}

}  // namespace larkmoor::trials
