// The classes Budget and BudgetDetail: finders that take a number and search keys of GUIDs.
#include <cstdint>

#include <gtest/gtest.h>

#include <larkmoor/status.h>
#include <larkmoor/tables/budget.h>
#include <larkmoor/tables/budget_detail.h>

#include "support/company.h"
#include "support/errors.h"

namespace larkmoor {
namespace {

// "A1" in bytes, read as a number from the lower end up.
constexpr std::int32_t A1 = 0x3141;

class BudgetTest : public testing::Test {
 protected:
  BudgetTest() {
    EXPECT_EQ(budget_.OpenFile(), StatusSuccess);
    EXPECT_EQ(detail_.OpenFile(), StatusSuccess);
  }

  test::Company company_;
  Budget budget_;
  BudgetDetail detail_;
};

using BudgetDetailTest = BudgetTest;

TEST_F(BudgetTest, GetEqualReadsTheBudgetWhoseGuidIsTheNumber) {
  budget_.BudgetID("Plan");
  budget_.BudgetGUID("A1");
  ASSERT_EQ(budget_.Insert(), StatusSuccess);
  EXPECT_EQ(budget_.GetEqual(A1), StatusSuccess);
  EXPECT_EQ(budget_.GetEqual(A1 + 1), StatusKeyNotFound);
}

TEST_F(BudgetTest, GetEqualFindsNoBudgetWithAGuidOfTheUsualKind) {
  budget_.BudgetGUID("00000001-0000-0000-0000-000000000001");
  ASSERT_EQ(budget_.Insert(), StatusSuccess);
  EXPECT_EQ(budget_.GetEqual(1), StatusKeyNotFound);
  EXPECT_EQ(budget_.GetEqual(0x01000000), StatusKeyNotFound);
}

TEST_F(BudgetTest, InsertRefusesABudgetIdThatIsTaken) {
  budget_.BudgetID("Plan");
  ASSERT_EQ(budget_.Insert(), StatusSuccess);
  EXPECT_EQ(budget_.Insert(), StatusDuplicateKey);
}

TEST_F(BudgetDetailTest, GetEqualReadsTheRowWithoutAnAccountWhoseBudgetIsTheNumber) {
  detail_.BudgetGUID("A1");
  detail_.AccountGUID("Rent");
  ASSERT_EQ(detail_.Insert(), StatusSuccess);
  EXPECT_EQ(detail_.GetEqual(A1), StatusKeyNotFound);
  detail_.AccountGUID("");
  ASSERT_EQ(detail_.Insert(), StatusSuccess);
  EXPECT_EQ(detail_.GetEqual(A1), StatusSuccess);
  EXPECT_EQ(detail_.AccountGUID(), "");
}

TEST_F(BudgetDetailTest, HasAnAmountForEachOfThePeriods0To55) {
  detail_.Amount(0, 1.5);
  detail_.Amount(55, 2.5);
  EXPECT_EQ(detail_.Amount(0), 1.5);
  EXPECT_EQ(detail_.Amount(55), 2.5);
  EXPECT_EQ(test::RaisedNumber([&] { return detail_.Amount(56); }), 9);
  EXPECT_EQ(test::RaisedNumber([&] { return detail_.Amount(-1); }), 9);
}

}  // namespace
}  // namespace larkmoor
