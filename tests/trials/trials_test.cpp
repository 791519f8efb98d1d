// The trials in short, by fixed seeds; and that a store which broke its promises would be found
// out.

#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <csignal>
#include <cstdint>
#include <functional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include <larkmoor/status.h>

#include "support/company.h"
#include "support/dice.h"
#include "support/sample_files.h"
#include "support/told_work.h"
#include "trials/child.h"
#include "trials/disk.h"
#include "trials/lockstep.h"
#include "trials/power_trial.h"
#include "trials/recording.h"
#include "trials/runner.h"
#include "trials/trial.h"
#include "trials/watched_driver.h"

namespace larkmoor::trials {
namespace {

void ExpectNothingFound(std::string_view name, std::uint32_t rounds) {
  const auto trial = std::find_if(Trials().begin(), Trials().end(),
                                  [name](const Trial& each) { return each.name == name; });
  ASSERT_NE(trial, Trials().end());
  const Outcome outcome = Run(*trial, {.seed = 1, .rounds = rounds});
  for (const FailedRound& failed : outcome.failed) {
    ADD_FAILURE() << "round " << failed.round << ": " << failed.finding << "\nleft in "
                  << failed.folder;
  }
  EXPECT_EQ(outcome.rounds, rounds);
}

TEST(Trials, ProcessesThatAreKilledLoseNothingThatWasDone) { ExpectNothingFound("kill", 6); }

TEST(Trials, ALossOfPowerLeavesASoundFileOfTheLastCommits) { ExpectNothingFound("power", 6); }

TEST(Trials, AFullDiskLosesNothingAndIsWorkedOnAfterwards) { ExpectNothingFound("full", 8); }

TEST(Trials, ADamagedFileTellsItsDamageOrAnswersAsBefore) { ExpectNothingFound("damage", 150); }

// What the trials would find -------------------------------------------------------------------

TEST(PowerTrial, FindsWhatAStoreLosesThatDoesNotSync) {
  const test::TempFolder folder;
  Round round(folder.Path(), 1);
  RecordedWork work = RecordWork(round);
  std::erase_if(work.events, [](const Event& event) { return event.kind == Event::Kind::Sync; });
  EXPECT_THROW(CutPower(round, work), Finding);
}

TEST(PowerTrial, FindsTheLossOfMoreThanTheLastCommit) {
  const test::TempFolder folder;
  Round round(folder.Path(), 1);
  RecordedWork work = RecordWork(round);
  // As if all had been said to be done from the start.
  std::stable_partition(work.events.begin(), work.events.end(),
                        [](const Event& event) { return event.kind == Event::Kind::Said; });
  EXPECT_THROW(CutPower(round, work), Finding);
}

TEST(FileOnDisk, LosesNothingThatWasSyncedAndAnythingElse) {
  FileOnDisk disk(std::string(512, 'a'));
  disk.Take({Event::Kind::Write, 0, 0, std::string(512, 'b')});
  disk.Take({Event::Kind::Sync, 0, 0, {}});
  disk.Take({Event::Kind::Write, 0, 0, std::string(1024, 'c')});
  test::Dice dice(1);
  std::set<std::string> left;
  for (int i = 0; i < 1000; ++i) left.insert(disk.AfterLossOfPower(dice));
  const std::string safe(512, 'b');
  const std::string first(512, 'c');
  EXPECT_EQ(left, (std::set<std::string>{safe, first, safe + first, first + first}));
}

TEST(Expectation, MissesWhatWasDoneAndAcceptsNoHalves) {
  test::Expectation expectation;
  expectation.Follow("try 0:1=10 0:2=20");
  expectation.Follow("done");
  expectation.Follow("try 0:1=- 0:3=30");
  test::Expectation other = expectation;
  EXPECT_EQ(other.Mismatch({{1, 10}, {2, 20}}), "");
  other = expectation;
  EXPECT_EQ(other.Mismatch({{2, 20}, {3, 30}}), "");
  other = expectation;
  EXPECT_EQ(other.Mismatch({{1, 10}, {2, 20}, {3, 30}}), "record 3 is of value 30 and not missing");
  EXPECT_EQ(expectation.Mismatch({{1, 10}}), "record 2 is missing and not of value 20");
}

TEST(Lockstep, FindsARecordThatIsNotWhatItWas) {
  const test::TempFolder folder;
  const auto make = [&folder](const char* name, std::int32_t value) {
    const auto path = folder.Path() / name;
    test::MustSucceed(store::DefaultDriver().Create(path, test::SampleFile()), "create");
    test::Cursor file(store::DefaultDriver(), path);
    test::Sample sample = test::MadeSample(1, 1);
    sample.stamp = value;
    Fill(file, {sample});
    return path;
  };
  Round round(folder.Path(), 1);
  Lockstep same(round, make("one", 1), make("same", 1), store::OpenMode::Normal);
  ASSERT_TRUE(same.Open());
  EXPECT_NO_THROW(same.Read());
  same.Close();
  Lockstep changed(round, folder.Path() / "one", make("changed", 2), store::OpenMode::Normal);
  ASSERT_TRUE(changed.Open());
  EXPECT_THROW(changed.Read(), Finding);
}

TEST(WatchedDriver, FindsAStatusThatAnOperationMustNotAnswer) {
  WatchedDriver driver;
  EXPECT_EQ(driver.Check(Operation::Step, {}, StatusEndOfFile), StatusEndOfFile);
  EXPECT_THROW(driver.Check(Operation::Step, {}, StatusKeyNotFound), Finding);
  EXPECT_THROW(driver.Check(Operation::GoOn, {}, StatusEndOfFile), Finding);
  EXPECT_THROW(driver.Check(Operation::Insert, {.isReadOnly = true}, StatusSuccess), Finding);
  EXPECT_THROW(driver.Check(Operation::Delete, {.hasCurrent = true}, StatusIOError), Finding);
}

/// What `InChild` says of such a body.
std::string Words(const std::function<void(Round&)>& body) {
  Round round({}, 1);
  try {
    InChild(round, std::chrono::seconds(1), body);
    return "nothing";
  } catch (const Finding& finding) {
    return finding.what();
  }
}

TEST(InChild, TellsCrashesHangsAndFindings) {
  EXPECT_EQ(Words([](Round&) {}), "nothing");
  EXPECT_EQ(Words([](Round&) { throw Finding("lost"); }), "lost");
  EXPECT_EQ(Words([](Round&) { raise(SIGKILL); }), "it crashes by signal 9");
  EXPECT_EQ(Words([](Round&) { pause(); }), "it hangs");
}

}  // namespace
}  // namespace larkmoor::trials
