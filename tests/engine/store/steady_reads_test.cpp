// Reads that belong together see one state of a file, whoever writes to it meanwhile.
#include <thread>

#include "engine/store/conformance.h"

namespace larkmoor::test {
namespace {

using store::Seek;
using store::Step;

class SteadyReads : public DriverTest {
 protected:
  /// Does something to the file as somebody else would.
  void Elsewhere(const std::function<void(Cursor&)>& work) {
    std::thread([&] {
      Cursor other(Driver(), file_.Path());
      work(other);
    }).join();
  }

  void InsertElsewhere(std::int32_t number) {
    Elsewhere([number](Cursor& other) { Fill(other, {MadeSample(number, number)}); });
  }

  Cursor file_ = New(SampleFile());
};
INSTANTIATE_TEST_SUITE_P(Every, SteadyReads, testing::ValuesIn(EveryDriver()), DriverName);

TEST_P(SteadyReads, DoNotSeeWhatOthersWriteUntilTheyEnd) {
  Fill(file_, {MadeSample(1, 1), MadeSample(2, 2)});
  {
    const auto steady = file_.File().BeginSteadyReads();
    EXPECT_EQ(file_.StepTo(Step::First), StatusSuccess);
    InsertElsewhere(3);
    Elsewhere([](Cursor& other) {
      ASSERT_EQ(other.Get(Seek::Equal, SampleKey::Number, {.number = 2}), StatusSuccess);
      ASSERT_EQ(other.Delete(), StatusSuccess);
    });
    EXPECT_EQ(NumbersByKey(file_, SampleKey::Number), (Numbers{1, 2}));
    EXPECT_EQ(NumbersByStep(file_), (Numbers{1, 2}));
    EXPECT_EQ(file_.File().RecordCount(), 2);
  }
  EXPECT_EQ(NumbersByKey(file_, SampleKey::Number), (Numbers{1, 3}));
  EXPECT_EQ(NumbersByStep(file_), (Numbers{1, 3}));
}

TEST_P(SteadyReads, SeeWhatTheThreadItselfWrites) {
  Fill(file_, {MadeSample(1, 1)});
  const auto steady = file_.File().BeginSteadyReads();
  Fill(file_, {MadeSample(2, 2)});
  EXPECT_EQ(NumbersByKey(file_, SampleKey::Number), (Numbers{1, 2}));
  {
    const auto batch = Driver().BeginBatch();
    Fill(file_, {MadeSample(3, 3)});
    EXPECT_EQ(NumbersByStep(file_), (Numbers{1, 2, 3}));
    EXPECT_EQ(batch->Commit(), StatusSuccess);
  }
  EXPECT_EQ(NumbersByStep(file_), (Numbers{1, 2, 3}));
  {
    const auto dropped = Driver().BeginBatch();
    Fill(file_, {MadeSample(4, 4)});
    EXPECT_EQ(NumbersByStep(file_), (Numbers{1, 2, 3, 4}));
  }
  EXPECT_EQ(NumbersByStep(file_), (Numbers{1, 2, 3}));
}

TEST_P(SteadyReads, InsideOthersLastAsLongAsTheOuterOnes) {
  Fill(file_, {MadeSample(1, 1)});
  const auto outer = file_.File().BeginSteadyReads();
  {
    const auto inner = file_.File().BeginSteadyReads();
    InsertElsewhere(2);
  }
  EXPECT_EQ(NumbersByStep(file_), Numbers{1});
}

TEST_P(SteadyReads, HoldForAllObjectsOfTheThread) {
  Fill(file_, {MadeSample(1, 1)});
  Cursor another = file_.Another();
  const auto steady = file_.File().BeginSteadyReads();
  InsertElsewhere(2);
  EXPECT_EQ(NumbersByStep(another), Numbers{1});
}

TEST_P(SteadyReads, MayOutliveTheObjectThatBeganThem) {
  Cursor another = file_.Another();
  std::unique_ptr<store::SteadyReads> steady;
  {
    Cursor passing = file_.Another();
    steady = passing.File().BeginSteadyReads();
  }
  InsertElsewhere(1);
  EXPECT_EQ(another.File().RecordCount(), 0);
  steady.reset();
  EXPECT_EQ(another.File().RecordCount(), 1);
}

TEST_P(SteadyReads, LetAnUpdateOfWhatOthersChangedAnswer80) {
  Fill(file_, {MadeSample(1, 1)});
  const auto steady = file_.File().BeginSteadyReads();
  Elsewhere([](Cursor& other) {
    ASSERT_EQ(other.Get(Seek::Equal, SampleKey::Number, {.number = 1}), StatusSuccess);
    ASSERT_EQ(other.Update(SampleKey::Number, MadeSample(1, 5)), StatusSuccess);
  });
  ASSERT_EQ(file_.Get(Seek::Equal, SampleKey::Number, {.number = 1}), StatusSuccess);
  EXPECT_EQ(file_.InHand(), MadeSample(1, 1));
  EXPECT_EQ(file_.Update(SampleKey::Number, MadeSample(1, 7)), StatusRecordConflict);
}

}  // namespace
}  // namespace larkmoor::test
