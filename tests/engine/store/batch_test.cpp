// Batches: many writes, one commit a file.

#include <atomic>
#include <chrono>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "engine/store/conformance.h"
#include "support/child_process.h"
#include "support/worker.h"

namespace larkmoor::test {
namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;
using store::OpenMode;
using store::Seek;
using store::Step;

class Batches : public DriverTest {
 protected:
  /// The numbers that another thread sees in the file.
  Numbers SeenElsewhere(const fs::path& path) {
    store::Driver& driver = Driver();
    return OnAnotherThread([&driver, path] {
      Cursor file(driver, path);
      return NumbersByStep(file);
    });
  }

  Cursor NewNamed(std::string name) {
    store::FileDescription description = SampleFile();
    description.name = std::move(name);
    return New(description);
  }
};
INSTANTIATE_TEST_SUITE_P(Every, Batches, testing::ValuesIn(EveryDriver()), DriverName);

// Who sees what ----------------------------------------------------------------------------------

TEST_P(Batches, OwnReadsSeeTheWritesAtOnceAndOthersAtTheCommit) {
  Cursor file = New(SampleFile());
  Fill(file, {{.number = 1}, {.number = 2}});
  const auto batch = Driver().BeginBatch();
  Fill(file, {{.number = 3}});
  ASSERT_EQ(file.Get(Seek::Equal, SampleKey::Number, {.number = 1}), StatusSuccess);
  ASSERT_EQ(file.Delete(), StatusSuccess);

  EXPECT_EQ(NumbersByKey(file, SampleKey::Number), (Numbers{2, 3}));
  EXPECT_EQ(NumbersByStep(file), (Numbers{2, 3}));
  EXPECT_EQ(file.File().RecordCount(), 2);
  EXPECT_EQ(SeenElsewhere(file.Path()), (Numbers{1, 2}));

  EXPECT_EQ(batch->Commit(), StatusSuccess);
  EXPECT_EQ(SeenElsewhere(file.Path()), (Numbers{2, 3}));
  EXPECT_EQ(Findings(file.Path()), Nothing);
}

TEST_P(Batches, AllObjectsOfTheThreadSeeTheWrites) {
  Cursor file = New(SampleFile());
  Cursor reader = file.Another(OpenMode::ReadOnly);
  const auto batch = Driver().BeginBatch();
  Fill(file, {{.number = 1}});
  EXPECT_EQ(NumbersByKey(reader, SampleKey::Number), (Numbers{1}));
  Cursor later = file.Another();
  EXPECT_EQ(NumbersByKey(later, SampleKey::Number), (Numbers{1}));
}

TEST_P(Batches, ObjectsOfTheThreadAreStillSomeoneElseToEachOther) {
  Cursor file = New(SampleFile());
  Fill(file, {{.number = 1}});
  Cursor other = file.Another();
  const auto batch = Driver().BeginBatch();
  ASSERT_EQ(other.Get(Seek::First, SampleKey::Number), StatusSuccess);
  ASSERT_EQ(other.Update(SampleKey::Number, {.number = 1, .stamp = 1}), StatusSuccess);
  EXPECT_EQ(file.Update(SampleKey::Number, {.number = 1, .stamp = 2}), StatusRecordConflict);
}

TEST_P(Batches, ARecordThatSomeoneElseChangedBeforeTheBatchAnswers80InIt) {
  Cursor file = New(SampleFile());
  Fill(file, {{.number = 1}});
  store::Driver& driver = Driver();
  OnAnotherThread([&driver, path = file.Path()] {
    Cursor other(driver, path);
    EXPECT_EQ(other.StepTo(Step::First), StatusSuccess);
    EXPECT_EQ(other.Update(SampleKey::Number, {.number = 1, .stamp = 1}), StatusSuccess);
  });
  const auto batch = driver.BeginBatch();
  EXPECT_EQ(file.Update(SampleKey::Number, {.number = 1, .stamp = 2}), StatusRecordConflict);
}

TEST_P(Batches, NumbersAreGivenOnInsideABatch) {
  Cursor file = New(SampleFile());
  Fill(file, {{.number = 7}});
  const auto batch = Driver().BeginBatch();
  Fill(file, {{}, {}, {}});
  EXPECT_EQ(NumbersByKey(file, SampleKey::Number), (Numbers{7, 8, 9, 10}));
}

TEST_P(Batches, AReaderDoesNotWaitForABatch) {
  Cursor file = New(SampleFile());
  Fill(file, {{.number = 1}});
  const auto batch = Driver().BeginBatch();
  ASSERT_EQ(file.Update(SampleKey::Number, {.number = 1, .stamp = 1}), StatusSuccess);
  Worker reader([&driver = Driver(), path = file.Path()] {
    Cursor other(driver, path);
    EXPECT_EQ(other.StepTo(Step::First), StatusSuccess);
    return other.InHand().stamp;
  });
  ASSERT_TRUE(reader.EndsWithin(20s));
  EXPECT_EQ(reader.Get(), 0);
}

// Commit and drop --------------------------------------------------------------------------------

TEST_P(Batches, WhatIsNotCommittedIsDropped) {
  Cursor file = New(SampleFile());
  Fill(file, {MadeSample(1, 1), MadeSample(2, 2), MadeSample(3, 3)});
  {
    const auto batch = Driver().BeginBatch();
    ASSERT_EQ(file.Update(SampleKey::Number, MadeSample(3, 33)), StatusSuccess);
    ASSERT_EQ(file.StepTo(Step::First), StatusSuccess);
    ASSERT_EQ(file.Delete(), StatusSuccess);
    Fill(file, {MadeSample(4, 4)});
  }
  EXPECT_EQ(NumbersByStep(file), (Numbers{1, 2, 3}));
  for (const std::int32_t number : {1, 2, 3}) {
    ASSERT_EQ(file.Get(Seek::Equal, SampleKey::Number, {.number = number}), StatusSuccess);
    EXPECT_EQ(file.InHand(), MadeSample(number, number));
  }
  EXPECT_EQ(file.Get(Seek::Equal, SampleKey::Guid, MadeSample(4, 4)), StatusKeyNotFound);
  EXPECT_EQ(Findings(file.Path()), Nothing);
}

TEST_P(Batches, WritesGoOnAfterADroppedBatch) {
  Cursor file = New(SampleFile());
  {
    const auto batch = Driver().BeginBatch();
    Fill(file, {{.number = 1}});
  }
  Fill(file, {{.number = 2}});
  {
    const auto batch = Driver().BeginBatch();
    Fill(file, {{.number = 3}});
    ASSERT_EQ(batch->Commit(), StatusSuccess);
  }
  EXPECT_EQ(SeenElsewhere(file.Path()), (Numbers{2, 3}));
}

TEST_P(Batches, ABatchGoesOnGatheringAfterACommit) {
  Cursor file = New(SampleFile());
  {
    const auto batch = Driver().BeginBatch();
    Fill(file, {{.number = 1}});
    ASSERT_EQ(batch->Commit(), StatusSuccess);
    Fill(file, {{.number = 2}});
    EXPECT_EQ(SeenElsewhere(file.Path()), (Numbers{1}));
    ASSERT_EQ(batch->Commit(), StatusSuccess);
    EXPECT_EQ(SeenElsewhere(file.Path()), (Numbers{1, 2}));
    Fill(file, {{.number = 3}});
  }
  EXPECT_EQ(NumbersByStep(file), (Numbers{1, 2}));
}

TEST_P(Batches, ABatchOfNothingCommits) {
  Cursor file = New(SampleFile());
  const auto batch = Driver().BeginBatch();
  EXPECT_EQ(batch->Commit(), StatusSuccess);
  EXPECT_EQ(file.Get(Seek::First, SampleKey::Number), StatusEndOfFile);
  EXPECT_EQ(batch->Commit(), StatusSuccess);
}

TEST_P(Batches, ARefusedWriteLeavesTheRestOfTheBatch) {
  Cursor file = New(StrictFile());
  Fill(file, {{.number = 1, .account = 10, .grade = 1}});
  const auto batch = Driver().BeginBatch();
  Fill(file, {{.number = 2, .account = 20, .grade = 1}});
  EXPECT_EQ(file.Insert(0, {.number = 3, .account = 10}), StatusDuplicateKey);
  EXPECT_EQ(file.Update(0, {.number = 2, .account = 10, .grade = 1}), StatusDuplicateKey);
  EXPECT_EQ(file.Update(0, {.number = 2, .account = 20, .grade = 2}), StatusKeyNotModifiable);
  Fill(file, {{.number = 4, .account = 40}});
  ASSERT_EQ(batch->Commit(), StatusSuccess);
  EXPECT_EQ(SeenElsewhere(file.Path()), (Numbers{1, 2, 4}));
  EXPECT_EQ(Findings(file.Path()), Nothing);
}

TEST_P(Batches, AnObjectMayBeClosedBeforeTheCommit) {
  const fs::path path = Make(SampleFile());
  const auto batch = Driver().BeginBatch();
  {
    Cursor file(Driver(), path);
    Fill(file, {{.number = 1}});
  }
  {
    Cursor file(Driver(), path);
    EXPECT_EQ(NumbersByStep(file), (Numbers{1}));
    Fill(file, {{.number = 2}});
  }
  ASSERT_EQ(batch->Commit(), StatusSuccess);
  EXPECT_EQ(SeenElsewhere(path), (Numbers{1, 2}));
}

TEST_P(Batches, PositionsHoldOverACommit) {
  Cursor file = New(SampleFile());
  Fill(file, {{.number = 1}, {.number = 2}, {.number = 3}});
  ASSERT_EQ(file.Get(Seek::First, SampleKey::Number), StatusSuccess);
  const auto batch = Driver().BeginBatch();
  ASSERT_EQ(file.Update(SampleKey::Number, {.number = 1, .stamp = 1}), StatusSuccess);
  ASSERT_EQ(batch->Commit(), StatusSuccess);
  ASSERT_EQ(file.Update(SampleKey::Number, {.number = 1, .stamp = 2}), StatusSuccess);
  EXPECT_EQ(file.Get(Seek::Next, SampleKey::Number), StatusSuccess);
  EXPECT_EQ(file.InHand().number, 2);
  ASSERT_EQ(batch->Commit(), StatusSuccess);
  EXPECT_EQ(file.Delete(), StatusSuccess);
}

TEST_P(Batches, AWriteInsideABatchCanBeRefusedForAReadOnlyObject) {
  Cursor file = New(SampleFile());
  Cursor reader = file.Another(OpenMode::ReadOnly);
  const auto batch = Driver().BeginBatch();
  EXPECT_EQ(reader.Insert(SampleKey::Number, {}), StatusAccessDenied);
  EXPECT_EQ(batch->Commit(), StatusSuccess);
}

// Joined batches ---------------------------------------------------------------------------------

TEST_P(Batches, TheCommitOfAJoinedBatchDoesNothing) {
  Cursor file = New(SampleFile());
  const auto outer = Driver().BeginBatch();
  {
    const auto joined = Driver().BeginBatch();
    Fill(file, {{.number = 1}});
    EXPECT_EQ(joined->Commit(), StatusSuccess);
  }
  EXPECT_EQ(SeenElsewhere(file.Path()), Numbers{});
  EXPECT_EQ(outer->Commit(), StatusSuccess);
  EXPECT_EQ(SeenElsewhere(file.Path()), (Numbers{1}));
}

TEST_P(Batches, TheOuterBatchDecidesAboutTheWritesOfAJoinedOne) {
  Cursor file = New(SampleFile());
  {
    const auto outer = Driver().BeginBatch();
    {
      const auto joined = Driver().BeginBatch();
      Fill(file, {{.number = 1}});
      EXPECT_EQ(joined->Commit(), StatusSuccess);
    }
  }
  EXPECT_EQ(NumbersByStep(file), Numbers{});
  {
    const auto outer = Driver().BeginBatch();
    {
      const auto joined = Driver().BeginBatch();
      Fill(file, {{.number = 2}});
    }
    EXPECT_EQ(NumbersByStep(file), (Numbers{2}));
    EXPECT_EQ(outer->Commit(), StatusSuccess);
  }
  EXPECT_EQ(SeenElsewhere(file.Path()), (Numbers{2}));
}

TEST_P(Batches, BatchesOfTwoThreadsAreTwo) {
  Cursor mine = NewNamed("Mine");
  const auto batch = Driver().BeginBatch();
  Worker other([&driver = Driver(), path = Make(LooseFile())] {
    const auto own = driver.BeginBatch();
    Cursor file(driver, path);
    return own->Commit();
  });
  ASSERT_TRUE(other.EndsWithin(20s));
  EXPECT_EQ(other.Get(), StatusSuccess);
  Fill(mine, {{.number = 1}});
  EXPECT_EQ(SeenElsewhere(mine.Path()), Numbers{});
}

// Several files ----------------------------------------------------------------------------------

TEST_P(Batches, ABatchSpansFiles) {
  Cursor first = NewNamed("First");
  Cursor second = NewNamed("Second");
  {
    const auto batch = Driver().BeginBatch();
    Fill(first, {{.number = 1}});
    Fill(second, {{.number = 2}});
  }
  EXPECT_EQ(SeenElsewhere(first.Path()), Numbers{});
  EXPECT_EQ(SeenElsewhere(second.Path()), Numbers{});
  const auto batch = Driver().BeginBatch();
  Fill(first, {{.number = 1}});
  Fill(second, {{.number = 2}});
  EXPECT_EQ(batch->Commit(), StatusSuccess);
  EXPECT_EQ(SeenElsewhere(first.Path()), (Numbers{1}));
  EXPECT_EQ(SeenElsewhere(second.Path()), (Numbers{2}));
}

TEST_P(Batches, FilesAreCommittedInTheOrderOfTheirFirstWrites) {
  constexpr std::int32_t Rounds = 150;
  // Named against the order of the writes, and read in the opposite order: whoever sees a round in
  // the file written last finds it in the one written first.
  Cursor first = NewNamed("Z");
  Cursor last = NewNamed("A");
  Fill(first, {{.number = 1}});
  Fill(last, {{.number = 1}});
  const auto ended = std::make_shared<std::atomic<bool>>(false);
  Worker observer([&driver = Driver(), ended, firstPath = first.Path(), lastPath = last.Path()] {
    Cursor seenFirst(driver, firstPath);
    Cursor seenLast(driver, lastPath);
    bool inOrder = true;
    while (!*ended) {
      EXPECT_EQ(seenLast.StepTo(Step::First), StatusSuccess);
      EXPECT_EQ(seenFirst.StepTo(Step::First), StatusSuccess);
      inOrder = inOrder && seenFirst.InHand().stamp >= seenLast.InHand().stamp;
    }
    return inOrder;
  });
  const auto batch = Driver().BeginBatch();
  for (std::int32_t round = 1; round <= Rounds; ++round) {
    EXPECT_EQ(first.Update(SampleKey::Number, {.number = 1, .stamp = round}), StatusSuccess);
    EXPECT_EQ(last.Update(SampleKey::Number, {.number = 1, .stamp = round}), StatusSuccess);
    // A second write changes nothing about the order.
    EXPECT_EQ(first.Update(SampleKey::Number, {.number = 1, .stamp = round}), StatusSuccess);
    EXPECT_EQ(batch->Commit(), StatusSuccess);
  }
  *ended = true;
  EXPECT_TRUE(observer.Get());
}

// Writers wait -----------------------------------------------------------------------------------

TEST_P(Batches, AnotherWriterWaitsForTheCommit) {
  Cursor file = New(SampleFile());
  const auto batch = Driver().BeginBatch();
  Fill(file, {{}});
  Worker writer([&driver = Driver(), path = file.Path()] {
    Cursor other(driver, path);
    const Status status = other.Insert(SampleKey::Number, {});
    return std::pair(status, other.InHand().number);
  });
  EXPECT_FALSE(writer.EndsWithin(200ms));
  EXPECT_EQ(batch->Commit(), StatusSuccess);
  ASSERT_TRUE(writer.EndsWithin(20s));
  EXPECT_EQ(writer.Get(), std::pair(StatusSuccess, 2));
}

TEST_P(Batches, AnotherWriterWaitsForTheDrop) {
  Cursor file = New(SampleFile());
  auto batch = Driver().BeginBatch();
  Fill(file, {{}});
  Worker writer([&driver = Driver(), path = file.Path()] {
    Cursor other(driver, path);
    const Status status = other.Insert(SampleKey::Number, {});
    return std::pair(status, other.InHand().number);
  });
  EXPECT_FALSE(writer.EndsWithin(200ms));
  batch.reset();
  ASSERT_TRUE(writer.EndsWithin(20s));
  EXPECT_EQ(writer.Get(), std::pair(StatusSuccess, 1));
}

TEST_P(Batches, AWriterOfAnotherFileDoesNotWait) {
  Cursor file = NewNamed("Mine");
  const auto batch = Driver().BeginBatch();
  Fill(file, {{}});
  Worker writer([&driver = Driver(), path = NewNamed("Yours").Path()] {
    return Cursor(driver, path).Insert(SampleKey::Number, {});
  });
  ASSERT_TRUE(writer.EndsWithin(20s));
  EXPECT_EQ(writer.Get(), StatusSuccess);
}

TEST_P(Batches, TwoThreadsThatWriteTwoFilesInOppositeOrderDoNotBlockEachOther) {
  constexpr int Rounds = 100;
  const fs::path first = NewNamed("First").Path();
  const fs::path second = NewNamed("Second").Path();
  const auto work = [&driver = Driver()](const fs::path& firstPath, const fs::path& secondPath) {
    return [&driver, firstPath, secondPath] {
      Cursor one(driver, firstPath);
      Cursor two(driver, secondPath);
      const auto batch = driver.BeginBatch();
      for (int i = 0; i < Rounds; ++i) {
        Fill(one, {{}});
        Fill(two, {{}});
        if (const Status status = batch->Commit(); status != StatusSuccess) return status;
      }
      return StatusSuccess;
    };
  };
  Worker forward(work(first, second));
  Worker backward(work(second, first));
  ASSERT_TRUE(forward.EndsWithin(60s));
  ASSERT_TRUE(backward.EndsWithin(60s));
  EXPECT_EQ(forward.Get(), StatusSuccess);
  EXPECT_EQ(backward.Get(), StatusSuccess);
  EXPECT_EQ(SeenElsewhere(first).size(), 2U * Rounds);
  EXPECT_EQ(SeenElsewhere(second).size(), 2U * Rounds);
}

TEST_P(Batches, SingleWritesBetweenTheWritesOfABatchDoNotBlockIt) {
  // The thread of the batch holds the first file and wants the second; the other thread writes to
  // the second, then to the first, one commit each.
  constexpr int Rounds = 100;
  const fs::path first = NewNamed("First").Path();
  const fs::path second = NewNamed("Second").Path();
  Worker gathered([&driver = Driver(), first, second] {
    Cursor one(driver, first);
    Cursor two(driver, second);
    const auto batch = driver.BeginBatch();
    for (int i = 0; i < Rounds; ++i) {
      Fill(one, {{}});
      Fill(two, {{}});
      if (const Status status = batch->Commit(); status != StatusSuccess) return status;
    }
    return StatusSuccess;
  });
  Worker single([&driver = Driver(), first, second] {
    Cursor one(driver, first);
    Cursor two(driver, second);
    for (int i = 0; i < Rounds; ++i) {
      Fill(two, {{}});
      Fill(one, {{}});
    }
    return StatusSuccess;
  });
  ASSERT_TRUE(gathered.EndsWithin(60s));
  ASSERT_TRUE(single.EndsWithin(60s));
  EXPECT_EQ(gathered.Get(), StatusSuccess);
  EXPECT_EQ(single.Get(), StatusSuccess);
  EXPECT_EQ(SeenElsewhere(first).size(), 2U * Rounds);
}

// Other processes --------------------------------------------------------------------------------

class EmbeddedBatches : public DriverTest {
 protected:
  static ChildProcess Start(std::vector<std::string> arguments) {
    arguments.insert(arguments.begin(), LARKMOOR_WRITER_PROCESS);
    ChildProcess process(arguments);
    EXPECT_EQ(process.ReadLine(), "ready");
    return process;
  }
};
// The helper process works with the embedded driver.
INSTANTIATE_TEST_SUITE_P(Embedded, EmbeddedBatches,
                         testing::Values(DriverUnderTest{"Embedded", &store::DefaultDriver}),
                         DriverName);

TEST_P(EmbeddedBatches, AnotherProcessSeesABatchAtItsCommit) {
  Cursor file = New(SampleFile());
  ChildProcess other = Start({"remote", file.Path()});
  ASSERT_EQ(other.Ask("batch"), "0");
  ASSERT_EQ(other.Ask("insert 1 1"), "0");
  ASSERT_EQ(other.Ask("insert 2 2"), "0");
  EXPECT_EQ(other.Ask("read 1"), "0 1");
  EXPECT_EQ(NumbersByStep(file), Numbers{});
  ASSERT_EQ(other.Ask("commit"), "0");
  EXPECT_EQ(NumbersByStep(file), (Numbers{1, 2}));
}

TEST_P(EmbeddedBatches, NothingOfABatchSurvivesTheDeathOfItsProcess) {
  Cursor file = New(SampleFile());
  Fill(file, {MadeSample(1, 1)});
  for (int round = 0; round < 20; ++round) {
    ChildProcess other = Start({"remote", file.Path()});
    ASSERT_EQ(other.Ask("batch"), "0");
    ASSERT_EQ(other.Ask("read 1").substr(0, 2), "0 ");
    ASSERT_EQ(other.Ask("update 1 100"), "0");
    for (int i = 2; i < 10; ++i) {
      ASSERT_EQ(other.Ask("insert " + std::to_string(i) + " 7"), "0");
    }
    other.Kill();
    ASSERT_EQ(NumbersByStep(file), (Numbers{1}));
    ASSERT_EQ(file.InHand(), MadeSample(1, 1 + round));
    ASSERT_EQ(file.Update(SampleKey::Number, MadeSample(1, 2 + round)), StatusSuccess);
  }
  EXPECT_EQ(Findings(file.Path()), Nothing);
}

TEST_P(EmbeddedBatches, TwoProcessesThatWriteTwoFilesInOppositeOrderDoNotBlockEachOther) {
  constexpr int Rounds = 100;
  const fs::path first = Make(SampleFile());
  store::FileDescription other = SampleFile();
  other.name = "Other";
  const fs::path second = Make(other);
  const std::string rounds = std::to_string(Rounds);
  ChildProcess forward = Start({"batches", first, second, rounds});
  ChildProcess backward = Start({"batches", second, first, rounds});
  EXPECT_EQ(forward.Wait(), 0) << testing::PrintToString(forward.RemainingLines());
  EXPECT_EQ(backward.Wait(), 0) << testing::PrintToString(backward.RemainingLines());
  for (const fs::path& path : {first, second}) {
    EXPECT_EQ(Cursor(Driver(), path).File().RecordCount(), 2 * Rounds);
    EXPECT_EQ(Findings(path), Nothing);
  }
}

}  // namespace
}  // namespace larkmoor::test
