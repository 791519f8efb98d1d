// Several processes on one file, and processes that die at any moment.

#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include <larkmoor/status.h>

#include "engine/store/driver.h"
#include "support/child_process.h"
#include "support/company.h"
#include "support/dice.h"
#include "support/sample_files.h"
#include "support/seed.h"
#include "support/told_work.h"
#include "support/worker.h"

namespace larkmoor::test {
namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;
using store::Driver;
using store::Seek;
using store::Step;

/// Starts the helper program and waits until it has its file open.
ChildProcess StartWriter(std::vector<std::string> arguments) {
  arguments.insert(arguments.begin(), LARKMOOR_WRITER_PROCESS);
  ChildProcess writer(arguments);
  EXPECT_EQ(writer.ReadLine(), "ready");
  return writer;
}

Driver& Embedded() { return store::DefaultDriver(); }

class ProcessTest : public testing::Test {
 protected:
  fs::path Make() {
    fs::path path = folder_.Path() / "Sample.dat";
    EXPECT_EQ(Embedded().Create(path, SampleFile()), StatusSuccess);
    return path;
  }

  static std::vector<std::string> Findings(const fs::path& path) {
    std::vector<std::string> findings;
    EXPECT_EQ(Embedded().Verify(path, findings, {}), StatusSuccess);
    return findings;
  }

 private:
  TempFolder folder_;
};

using Numbers = std::vector<std::int32_t>;
const std::vector<std::string> Nothing;

// Living together --------------------------------------------------------------------------------

TEST_F(ProcessTest, ReadsSeeTheWritesOfAnotherProcessAtOnce) {
  Cursor file(Embedded(), Make());
  ChildProcess other = StartWriter({"remote", file.Path()});
  for (std::int32_t value = 1; value <= 20; ++value) {
    ASSERT_EQ(other.Ask("insert 5 " + std::to_string(value)), "0");
    ASSERT_EQ(file.Get(Seek::Equal, SampleKey::Number, {.number = 5}), StatusSuccess);
    EXPECT_EQ(file.InHand(), MadeSample(5, value));
    ASSERT_EQ(other.Ask("update 5 " + std::to_string(value + 1000)), "0");
    ASSERT_EQ(file.StepTo(Step::First), StatusSuccess);
    EXPECT_EQ(file.InHand(), MadeSample(5, value + 1000));
    ASSERT_EQ(other.Ask("delete"), "0");
    EXPECT_EQ(file.File().RecordCount(), 0);
    EXPECT_EQ(file.Get(Seek::First, SampleKey::Name), StatusEndOfFile);

    ASSERT_EQ(file.Insert(SampleKey::Number, MadeSample(6, value)), StatusSuccess);
    EXPECT_EQ(other.Ask("read 6"), "0 " + std::to_string(value));
    ASSERT_EQ(file.Delete(), StatusSuccess);
    EXPECT_EQ(other.Ask("next"), "9 " + std::to_string(value));
  }
  EXPECT_EQ(other.Wait(), 0);
}

TEST_F(ProcessTest, ARecordThatAnotherProcessChangedAnswers80) {
  Cursor file(Embedded(), Make());
  Fill(file, {MadeSample(1, 10), MadeSample(2, 20)});
  ChildProcess other = StartWriter({"remote", file.Path()});
  ASSERT_EQ(file.Get(Seek::Equal, SampleKey::Number, {.number = 1}), StatusSuccess);
  ASSERT_EQ(other.Ask("read 1"), "0 10");
  ASSERT_EQ(other.Ask("update 1 11"), "0");
  EXPECT_EQ(file.Update(SampleKey::Number, MadeSample(1, 12)), StatusRecordConflict);
  EXPECT_EQ(file.Delete(), StatusRecordConflict);
  ASSERT_EQ(file.Get(Seek::Equal, SampleKey::Number, {.number = 1}), StatusSuccess);
  EXPECT_EQ(file.InHand().account, 11);
  ASSERT_EQ(file.Update(SampleKey::Number, MadeSample(1, 12)), StatusSuccess);
  EXPECT_EQ(other.Ask("update 1 13"), "80");
  EXPECT_EQ(other.Ask("delete"), "80");
  EXPECT_EQ(other.Ask("read 1"), "0 12");
}

TEST_F(ProcessTest, ARecordThatAnotherProcessDeletedAnswers80) {
  Cursor file(Embedded(), Make());
  Fill(file, {MadeSample(1, 10), MadeSample(2, 20)});
  ChildProcess other = StartWriter({"remote", file.Path()});
  ASSERT_EQ(file.Get(Seek::Equal, SampleKey::Number, {.number = 2}), StatusSuccess);
  ASSERT_EQ(other.Ask("read 2"), "0 20");
  ASSERT_EQ(other.Ask("delete"), "0");
  // A new record in its stead is another record.
  ASSERT_EQ(other.Ask("insert 2 20"), "0");
  EXPECT_EQ(file.Update(SampleKey::Number, MadeSample(2, 21)), StatusRecordConflict);
  EXPECT_EQ(file.Delete(), StatusRecordConflict);
  EXPECT_EQ(other.Ask("read 2"), "0 20");
}

TEST_F(ProcessTest, AWalkGoesOnWhateverAnotherProcessDoesToItsRecords) {
  Cursor file(Embedded(), Make());
  Fill(file, {MadeSample(1, 1), MadeSample(2, 2), MadeSample(4, 4)});
  ChildProcess other = StartWriter({"remote", file.Path()});
  ASSERT_EQ(file.Get(Seek::Equal, SampleKey::Number, {.number = 2}), StatusSuccess);
  ASSERT_EQ(other.Ask("read 2"), "0 2");
  ASSERT_EQ(other.Ask("delete"), "0");
  ASSERT_EQ(other.Ask("insert 3 3"), "0");
  EXPECT_EQ(file.Get(Seek::Next, SampleKey::Number), StatusSuccess);
  EXPECT_EQ(file.InHand().number, 3);
}

TEST_F(ProcessTest, AProcessFollowsAFileThatAnotherOneMakesGrow) {
  constexpr std::int32_t Records = 20'000;
  Cursor file(Embedded(), Make());
  Fill(file, {MadeSample(1, 1)});
  ChildProcess other = StartWriter({"remote", file.Path()});
  ASSERT_EQ(other.Ask("lengthen 2 " + std::to_string(Records - 1)), "0");
  EXPECT_EQ(file.File().RecordCount(), Records);
  ASSERT_EQ(file.Get(Seek::Last, SampleKey::Number), StatusSuccess);
  EXPECT_EQ(file.InHand(), MadeSample(Records, Records));
  EXPECT_EQ(NumbersByStep(file).size(), static_cast<std::size_t>(Records));
  ASSERT_EQ(file.Insert(SampleKey::Number, MadeSample(Records + 1, 1)), StatusSuccess);
  EXPECT_EQ(other.Ask("read " + std::to_string(Records + 1)), "0 1");
  EXPECT_EQ(Findings(file.Path()), Nothing);
}

TEST_F(ProcessTest, NoUpdateIsLostBetweenTwoProcesses) {
  constexpr int Rounds = 100;
  Cursor file(Embedded(), Make());
  Fill(file, {{.number = 1}, {.number = 2}, {.number = 3}});
  ChildProcess first = StartWriter({"count", file.Path(), std::to_string(Rounds)});
  ChildProcess second = StartWriter({"count", file.Path(), std::to_string(Rounds)});
  EXPECT_EQ(first.Wait(), 0) << testing::PrintToString(first.RemainingLines());
  EXPECT_EQ(second.Wait(), 0) << testing::PrintToString(second.RemainingLines());
  for (Status status = file.StepTo(Step::First); status == StatusSuccess;
       status = file.StepTo(Step::Next)) {
    EXPECT_EQ(file.InHand().account, 2 * Rounds) << file.InHand();
  }
  EXPECT_EQ(Findings(file.Path()), Nothing);
}

TEST_F(ProcessTest, NoNumberIsGivenTwiceByTwoProcesses) {
  constexpr int Records = 150;
  Cursor file(Embedded(), Make());
  ChildProcess first = StartWriter({"fill", file.Path(), std::to_string(Records)});
  ChildProcess second = StartWriter({"fill", file.Path(), std::to_string(Records)});
  EXPECT_EQ(first.Wait(), 0) << testing::PrintToString(first.RemainingLines());
  EXPECT_EQ(second.Wait(), 0) << testing::PrintToString(second.RemainingLines());
  Numbers expected;
  for (std::int32_t i = 1; i <= 2 * Records; ++i) expected.push_back(i);
  EXPECT_EQ(NumbersByKey(file, SampleKey::Number), expected);
  EXPECT_EQ(NumbersByStep(file), expected);
}

// The first to open makes the lock file beside the data file.
TEST_F(ProcessTest, OpensAndClosesOfManyProcessesDoNotStandInEachOthersWay) {
  const fs::path path = Make();
  std::vector<pid_t> children;
  for (int child = 0; child < 4; ++child) {
    children.push_back(fork());
    if (children.back() != 0) continue;
    Status status = StatusSuccess;
    for (int round = 0; round < 300 && status == StatusSuccess; ++round) {
      std::unique_ptr<store::File> file;
      status = Embedded().Open(path, store::OpenMode::Normal, file);
    }
    _exit(status);
  }
  for (const pid_t child : children) {
    int ended = 0;
    ASSERT_EQ(waitpid(child, &ended, 0), child);
    EXPECT_TRUE(WIFEXITED(ended));
    EXPECT_EQ(WEXITSTATUS(ended), StatusSuccess);
  }
}

TEST_F(ProcessTest, CompactAnswers85WhileAnotherProcessLivesThatHasTheFileOpen) {
  const fs::path path = Make();
  ChildProcess other = StartWriter({"remote", path});
  EXPECT_EQ(Embedded().Compact(path), StatusFileInUse);
  other.Kill();
  EXPECT_EQ(Embedded().Compact(path), StatusSuccess);
}

// Sudden death -----------------------------------------------------------------------------------

class CrashTest : public ProcessTest {
 protected:
  CrashTest() : dice_(Seed()) {}

  /// Starts a writer, kills it at a random moment, and takes note of what it told until then.
  void KillAWriter(const fs::path& path, Expectation& expectation) {
    ChildProcess writer({LARKMOOR_WRITER_PROCESS, "work", path, std::to_string(dice_.Seed())});
    // Now and then it dies while it starts; mostly after some work, which takes a moment each.
    if (!dice_.OneIn(8)) {
      ASSERT_EQ(writer.ReadLine(), "ready");
      std::this_thread::sleep_for(std::chrono::microseconds(dice_.Below(20'000)));
    } else {
      std::this_thread::sleep_for(std::chrono::microseconds(dice_.Below(5'000)));
    }
    writer.Kill();
    for (const std::string& line : writer.RemainingLines()) {
      if (line != "ready") expectation.Follow(line);
    }
  }

  /// A write of the survivor's own: no lock of the dead stands in its way. A commit that was cut
  /// off in its last moment shows with this write, so that the first try may answer 80.
  static void GoOn(Cursor& file, Expectation& expectation, std::int32_t round) {
    const Sample sample = MadeSample(1'000'000, round + 1);
    Status status = StatusRecordConflict;
    for (int tries = 0; tries < 2 && status == StatusRecordConflict; ++tries) {
      const bool there = file.Get(Seek::Equal, SampleKey::Number, sample) == StatusSuccess;
      status =
          there ? file.Update(SampleKey::Number, sample) : file.Insert(SampleKey::Number, sample);
    }
    ASSERT_EQ(status, StatusSuccess);
    expectation.Note({.file = 0, .number = sample.number, .value = sample.stamp});
  }

 private:
  Dice dice_;
};

TEST_F(CrashTest, EveryAcknowledgedWriteSurvivesTheDeathOfItsProcess) {
  constexpr std::int32_t Rounds = 200;
  const fs::path path = Make();
  Expectation expectation;
  for (std::int32_t round = 0; round < Rounds; ++round) {
    SCOPED_TRACE(testing::Message() << "round " << round);
    KillAWriter(path, expectation);
    EXPECT_EQ(Findings(path), Nothing);
    Cursor file(Embedded(), path);
    EXPECT_EQ(expectation.Mismatch(ContentOf(file)), "");
    GoOn(file, expectation, round);
    ASSERT_FALSE(HasFailure());
  }
  // The rounds were long enough to write in.
  EXPECT_GT(expectation.Done(), Rounds / 4);
}

TEST_F(CrashTest, AProcessThatHasTheFileOpenGoesOnWhenAWriterDies) {
  constexpr std::int32_t Rounds = 60;
  Cursor file(Embedded(), Make());
  Expectation expectation;
  for (std::int32_t round = 0; round < Rounds; ++round) {
    SCOPED_TRACE(testing::Message() << "round " << round);
    KillAWriter(file.Path(), expectation);
    GoOn(file, expectation, round);
    EXPECT_EQ(expectation.Mismatch(ContentOf(file)), "");
    ASSERT_FALSE(HasFailure());
  }
  EXPECT_EQ(Findings(file.Path()), Nothing);
  EXPECT_GT(expectation.Done(), Rounds / 4);
}

TEST_F(CrashTest, AWriterThatDiesInsideABatchHoldsNobodyUp) {
  const fs::path path = Make();
  ChildProcess other = StartWriter({"remote", path});
  ASSERT_EQ(other.Ask("batch"), "0");
  ASSERT_EQ(other.Ask("insert 1 1"), "0");
  Worker waiting([path] {
    Cursor file(Embedded(), path);
    return file.Insert(SampleKey::Number, MadeSample(2, 2));
  });
  EXPECT_FALSE(waiting.EndsWithin(200ms));
  other.Kill();
  ASSERT_TRUE(waiting.EndsWithin(20s));
  EXPECT_EQ(waiting.Get(), StatusSuccess);
  Cursor file(Embedded(), path);
  EXPECT_EQ(NumbersByStep(file), (Numbers{2}));
}

// Room -------------------------------------------------------------------------------------------

class RoomTest : public ProcessTest {
 protected:
  static constexpr std::int32_t Records = 300;

  static std::uintmax_t SizeOf(const fs::path& path) {
    store::FileStatistics statistics;
    EXPECT_EQ(Embedded().Statistics(path, statistics), StatusSuccess);
    return statistics.bytes;
  }

  /// Changes records one after the other, each in a commit of its own, and tells by how many bytes
  /// the file grew.
  static std::intmax_t GrowthOver(Cursor& file, std::int32_t commits) {
    const std::uintmax_t before = SizeOf(file.Path());
    for (std::int32_t i = 0; i < commits && !HasFailure(); ++i) {
      const Sample sample = MadeSample(1 + i % Records, i);
      EXPECT_EQ(file.Get(Seek::Equal, SampleKey::Number, sample), StatusSuccess);
      EXPECT_EQ(file.Update(SampleKey::Number, sample), StatusSuccess);
    }
    return static_cast<std::intmax_t>(SizeOf(file.Path()) - before);
  }

  Cursor MakeFilled() {
    Cursor file(Embedded(), Make());
    const auto batch = Embedded().BeginBatch();
    for (std::int32_t i = 1; i <= Records; ++i) Fill(file, {MadeSample(i, i)});
    EXPECT_EQ(batch->Commit(), StatusSuccess);
    return file;
  }

  /// A file that never took up the room of a former state again would grow ten times as much in
  /// these commits.
  static constexpr std::int32_t Commits = 600;
  static constexpr std::intmax_t Little = 1 << 20;
};

TEST_F(RoomTest, AKilledReaderDoesNotKeepTheFileGrowing) {
  Cursor file = MakeFilled();
  for (int i = 0; i < 10; ++i) {
    ChildProcess reader = StartWriter({"walk", file.Path()});
    std::this_thread::sleep_for(std::chrono::milliseconds(1 + i % 3));
    reader.Kill();
  }
  GrowthOver(file, Commits / 10);
  EXPECT_LT(GrowthOver(file, Commits), Little);
}

TEST_F(RoomTest, AnObjectThatOnlyWaitsDoesNotKeepTheFileGrowing) {
  Cursor file = MakeFilled();
  ChildProcess other = StartWriter({"remote", file.Path()});
  ASSERT_EQ(other.Ask("read 1"), "0 1");
  Cursor waiting = file.Another();
  ASSERT_EQ(waiting.Get(Seek::First, SampleKey::Number), StatusSuccess);
  GrowthOver(file, Commits / 10);
  EXPECT_LT(GrowthOver(file, Commits), Little);
  EXPECT_EQ(waiting.Get(Seek::Next, SampleKey::Number), StatusSuccess);
  EXPECT_EQ(other.Ask("next").substr(0, 2), "0 ");
}

}  // namespace
}  // namespace larkmoor::test
