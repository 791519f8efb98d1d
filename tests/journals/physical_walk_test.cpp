// How journals step through the headers of all journals in the order of their insertion: StepFirst,
// StepLast, StepNext and StepPrevious.
#include <gtest/gtest.h>

#include <larkmoor/status.h>

#include "support/journal_traits.h"

namespace larkmoor {
namespace {

template <typename Journal>
class PhysicalWalkTest : public test::SharedJournalFixture<Journal> {
 protected:
  void ExpectAllSteps(Status status) {
    EXPECT_EQ(this->journal_.StepFirst(), status);
    EXPECT_EQ(this->journal_.StepLast(), status);
    EXPECT_EQ(this->journal_.StepNext(), status);
    EXPECT_EQ(this->journal_.StepPrevious(), status);
  }
};

using WithSteps =
    testing::Types<CashReceiptJournal, CashDisbursementJournal, AssemblyAdjustmentJournal>;
TYPED_TEST_SUITE(PhysicalWalkTest, WithSteps, test::JournalNames);

TYPED_TEST(PhysicalWalkTest, GoesThroughAllJournalsInTheOrderOfInsertionWithTheirRows) {
  this->AddOwn(9, "own");
  this->Add(this->PreviousCode, 1, "before");
  this->Add(this->NextCode, 5, "behind");
  this->Open();
  ASSERT_EQ(this->journal_.StepFirst(), StatusSuccess);
  this->ExpectInHand("own", 1);
  ASSERT_EQ(this->journal_.StepNext(), StatusSuccess);
  this->ExpectInHand("before", 2);
  ASSERT_EQ(this->journal_.StepNext(), StatusSuccess);
  this->ExpectInHand("behind", 3);
  EXPECT_EQ(this->journal_.StepNext(), StatusEndOfFile);
  this->ExpectInHand("behind", 3);
  ASSERT_EQ(this->journal_.StepPrevious(), StatusSuccess);
  this->ExpectInHand("before", 2);
  ASSERT_EQ(this->journal_.StepPrevious(), StatusSuccess);
  this->ExpectInHand("own", 1);
  EXPECT_EQ(this->journal_.StepPrevious(), StatusEndOfFile);
  this->ExpectInHand("own", 1);
  ASSERT_EQ(this->journal_.StepLast(), StatusSuccess);
  this->ExpectInHand("behind", 3);
}

TYPED_TEST(PhysicalWalkTest, AnswersTheStatusOfTheRows) {
  this->files_.AddHeader({.nRecord = 1, .journal = this->Code, .reference = "without rows"});
  this->Open();
  EXPECT_EQ(this->journal_.StepFirst(), StatusEndOfFile);
  EXPECT_EQ(this->Reference(), "without rows");
  ASSERT_EQ(this->journal_.ClearRecord(), StatusSuccess);
  EXPECT_EQ(this->journal_.StepLast(), StatusEndOfFile);
  EXPECT_EQ(this->Reference(), "without rows");
}

TYPED_TEST(PhysicalWalkTest, NeedsAnOpenFileAndHeaders) {
  this->ExpectAllSteps(StatusFileNotOpen);
  this->Open();
  this->ExpectAllSteps(StatusEndOfFile);
  EXPECT_EQ(this->Reference(), "");
}

TYPED_TEST(PhysicalWalkTest, GoesOnFromAReadAndLeavesNoPlaceOnItsKey) {
  this->AddOwn(1, "A");
  this->Add(this->NextCode, 1, "B");
  this->AddOwn(2, "C");
  this->Open();
  ASSERT_EQ(this->journal_.ReadFirst(0), StatusSuccess);
  ASSERT_EQ(this->journal_.StepNext(), StatusSuccess);
  EXPECT_EQ(this->Reference(), "B");
  EXPECT_EQ(this->journal_.ReadNext(), StatusInvalidPositioning);
}

// The key of the last search is kept over a step, and a write takes its place there.
TYPED_TEST(PhysicalWalkTest, FollowedByAWriteIsFollowedByTheWalkOfTheLastSearch) {
  this->AddOwn(2, "B");
  this->AddOwn(1, "A");
  this->AddOwn(3, "C");
  this->Open();
  ASSERT_EQ(this->journal_.ReadFirst(1), StatusSuccess);
  ASSERT_EQ(this->journal_.StepFirst(), StatusSuccess);
  ASSERT_EQ(this->journal_.Update(), StatusSuccess);
  ASSERT_EQ(this->journal_.ReadNext(), StatusSuccess);
  EXPECT_EQ(this->Reference(), "C");
}

}  // namespace
}  // namespace larkmoor
