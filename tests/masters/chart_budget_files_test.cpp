// The two budget files that the class Chart opens by itself from release 14 on: what happens where
// they do not open, how long they stay open, and what CloseFile tells of them.
#include <cstdint>
#include <filesystem>
#include <string_view>

#include <gtest/gtest.h>

#include <larkmoor/masters/chart.h>
#include <larkmoor/status.h>

#include "connection/status_messages.h"
#include "engine/store/driver.h"
#include "engine/tovrin_file.h"
#include "support/budgets.h"
#include "support/child_process.h"
#include "support/errors.h"
#include "support/failing_disk.h"
#include "support/raised_errors.h"
#include "support/read_only_file.h"
#include "support/record_files.h"
#include "support/taken_away.h"

namespace larkmoor {
namespace {

using test::Cash;
using test::CashGUID;
using test::ExpectRaised;
using test::IsHeldOpen;
using test::NoAccount;
using test::Periods;
using test::RaisedNumber;
using test::RentGUID;
using test::Rising;
using test::TakenAway;

/// A company with two accounts and an object that has the first of them in hand.
class ChartBudgetTest : public testing::Test, protected test::BudgetCompany {
 protected:
  ChartBudgetTest() : BudgetCompany(14.0) {
    EXPECT_EQ(chart_.OpenFile(), StatusSuccess);
    EXPECT_EQ(chart_.GetEqual(Cash), StatusSuccess);
  }

  Chart chart_;
};

using ChartBudgetFailure = ChartBudgetTest;
using ChartBudgetDenied = ChartBudgetTest;
using ChartBudgetFiles = ChartBudgetTest;

// --- Files that do not open ---

constexpr std::string_view OpenOfBudget = "Chart:CacheBudget->btOpen(Budget)";
constexpr std::string_view OpenOfDetail = "Chart:CacheBudget->btOpen(BDDetail)";

TEST_F(ChartBudgetFailure, WithoutTheBudgetFileEveryAccessRaises) {
  AddBudgetWithAmounts();
  {
    const TakenAway away(BudgetFile());
    ExpectRaised([&] { return chart_.Budget(3); }, ErrorOpen, OpenOfBudget, StatusFileNotFound);
    ExpectRaised([&] { return chart_.Budget(3); }, ErrorOpen, OpenOfBudget, StatusFileNotFound);
    ExpectRaised([&] { chart_.Budget(3, 1.5); }, ErrorOpen, OpenOfBudget, StatusFileNotFound);
  }
  EXPECT_EQ(chart_.Budget(3), 103);
}

TEST_F(ChartBudgetFailure, DisturbsNothingButTheBudget) {
  std::filesystem::remove(BudgetFile());
  EXPECT_EQ(RaisedNumber([&] { chart_.Budget(3, 1.5); }), ErrorOpen);
  EXPECT_EQ(chart_.AccountID(), "CASH");
  EXPECT_EQ(chart_.Update(), StatusSuccess);
  EXPECT_EQ(StoredRows(), 0) << "what could not be assigned is not written";
  EXPECT_EQ(chart_.CloseFile(), StatusSuccess);
  EXPECT_FALSE(IsHeldOpen(ChartFile()));
}

// The error tells the status of closing the file that did not open.
TEST_F(ChartBudgetFailure, WithoutTheDetailFileEveryAccessRaisesStatus3) {
  AddBudgetWithAmounts();
  {
    const TakenAway away(DetailFile());
    ExpectRaised([&] { return chart_.Budget(3); }, ErrorOpen, OpenOfDetail, StatusFileNotOpen);
    EXPECT_FALSE(IsHeldOpen(BudgetFile()));
    ExpectRaised([&] { chart_.Budget(3, 1.5); }, ErrorOpen, OpenOfDetail, StatusFileNotOpen);
  }
  EXPECT_EQ(chart_.Budget(3), 103);
}

// The refusal is silent for the budget file alone.
TEST_F(ChartBudgetFailure, WithADetailFileOfAnotherOwnerEveryAccessRaisesStatus3) {
  AddBudgetWithAmounts();
  test::ProtectFile(DetailFile(), /*allowRead=*/false);
  ExpectRaised([&] { return chart_.Budget(3); }, ErrorOpen, OpenOfDetail, StatusFileNotOpen);
  ExpectRaised([&] { return chart_.Budget(3); }, ErrorOpen, OpenOfDetail, StatusFileNotOpen);
  EXPECT_FALSE(IsHeldOpen(BudgetFile()));
}

TEST_F(ChartBudgetFailure, WithABudgetFileThatCannotBeWrittenAccessRaises) {
  AddBudgetWithAmounts();
  test::WhereOnlyThisIsReadOnly(BudgetFile(), [] {
    Chart chart;
    ASSERT_EQ(chart.OpenFile(), StatusSuccess);
    ExpectRaised([&] { return chart.Budget(3); }, ErrorOpen, OpenOfBudget, StatusPermission);
  });
}

TEST_F(ChartBudgetFailure, WithADetailFileThatCannotBeWrittenAccessRaises) {
  AddBudgetWithAmounts();
  test::WhereOnlyThisIsReadOnly(DetailFile(), [] {
    Chart chart;
    ASSERT_EQ(chart.OpenFile(), StatusSuccess);
    ExpectRaised([&] { return chart.Budget(3); }, ErrorOpen, OpenOfDetail, StatusFileNotOpen);
  });
}

// --- A budget file of another owner ---

TEST_F(ChartBudgetDenied, ReadsAs0WithoutAnError) {
  AddBudgetWithAmounts();
  test::ProtectFile(BudgetFile(), /*allowRead=*/false);
  EXPECT_EQ(chart_.Budget(3), 0);
  EXPECT_FALSE(IsHeldOpen(DetailFile()));
}

TEST_F(ChartBudgetDenied, ForgetsTheAmountsOfTheTimeBefore) {
  AddBudgetWithAmounts();
  EXPECT_EQ(chart_.Budget(3), 103);
  ASSERT_EQ(chart_.OpenFile(), StatusSuccess);
  test::ProtectFile(BudgetFile(), /*allowRead=*/false);
  for (std::int16_t period = 0; period < Periods; ++period) {
    EXPECT_EQ(chart_.Budget(period), 0) << period;
  }
}

TEST_F(ChartBudgetDenied, KeepsWhatIsAssignedInHandAndWritesNothing) {
  AddBudgetWithAmounts();
  AddAmounts(CashGUID, 200);
  test::ProtectFile(BudgetFile(), /*allowRead=*/false);
  chart_.Budget(3, 1.5);
  EXPECT_EQ(chart_.Budget(3), 1.5);
  EXPECT_EQ(chart_.Update(), StatusSuccess);
  EXPECT_EQ(chart_.Budget(3), 1.5);
  EXPECT_EQ(Stored(CashGUID), Rising(200));
  EXPECT_EQ(StoredRows(), 2);
}

TEST_F(ChartBudgetDenied, IsNotTriedAgainUntilOpenFile) {
  AddBudgetWithAmounts();
  test::ProtectFile(BudgetFile(), /*allowRead=*/false);
  EXPECT_EQ(chart_.Budget(3), 0);
  ASSERT_EQ(store::DefaultDriver().ClearOwner(BudgetFile(), "someone"), StatusSuccess);
  EXPECT_EQ(chart_.Budget(3), 0);
  ASSERT_EQ(chart_.CloseFile(), StatusSuccess);
  EXPECT_EQ(chart_.Budget(3), 0);
  ASSERT_EQ(chart_.OpenFile(), StatusSuccess);
  EXPECT_EQ(chart_.Budget(3), 103);
}

// --- What stays open ---

TEST_F(ChartBudgetFiles, AreNotOpenedBeforeTheFirstAccess) {
  AddBudgetWithAmounts();
  ASSERT_EQ(chart_.Update(), StatusSuccess);
  EXPECT_FALSE(IsHeldOpen(BudgetFile()));
  EXPECT_FALSE(IsHeldOpen(DetailFile()));
}

TEST_F(ChartBudgetFiles, StayOpenUntilCloseFile) {
  AddBudgetWithAmounts();
  EXPECT_EQ(chart_.Budget(3), 103);
  EXPECT_TRUE(IsHeldOpen(BudgetFile()));
  EXPECT_TRUE(IsHeldOpen(DetailFile()));
  EXPECT_EQ(chart_.CloseFile(), StatusSuccess);
  EXPECT_FALSE(IsHeldOpen(BudgetFile()));
  EXPECT_FALSE(IsHeldOpen(DetailFile()));
}

TEST_F(ChartBudgetFiles, AreClosedByOpenFile) {
  AddBudgetWithAmounts();
  EXPECT_EQ(chart_.Budget(3), 103);
  ASSERT_EQ(chart_.OpenFile(), StatusSuccess);
  EXPECT_FALSE(IsHeldOpen(BudgetFile()));
  EXPECT_FALSE(IsHeldOpen(DetailFile()));
}

TEST_F(ChartBudgetFiles, AreClosedByAnOpenFileThatFails) {
  AddBudgetWithAmounts();
  EXPECT_EQ(chart_.Budget(3), 103);
  const TakenAway away(ChartFile());
  ASSERT_EQ(chart_.OpenFile(), StatusFileNotFound);
  EXPECT_FALSE(IsHeldOpen(BudgetFile()));
  EXPECT_FALSE(IsHeldOpen(DetailFile()));
}

TEST_F(ChartBudgetFiles, AreClosedAtDestruction) {
  AddBudgetWithAmounts();
  {
    Chart chart;
    ASSERT_EQ(chart.OpenFile(), StatusSuccess);
    EXPECT_EQ(chart.Budget(3), 103);
  }
  EXPECT_FALSE(IsHeldOpen(BudgetFile()));
  EXPECT_FALSE(IsHeldOpen(DetailFile()));
}

TEST_F(ChartBudgetFiles, OfTheAmountsAloneIsClosedByAWrite) {
  AddBudgetWithAmounts();
  chart_.Budget(3, 1.5);
  ASSERT_EQ(chart_.Update(), StatusSuccess);
  EXPECT_TRUE(IsHeldOpen(BudgetFile()));
  EXPECT_FALSE(IsHeldOpen(DetailFile()));
}

TEST_F(ChartBudgetFiles, ThatAWriteHasClosedAreNoFailureOfCloseFile) {
  AddBudgetWithAmounts();
  chart_.Budget(3, 1.5);
  ASSERT_EQ(chart_.Update(), StatusSuccess);
  EXPECT_EQ(chart_.CloseFile(), StatusSuccess);
  EXPECT_FALSE(IsHeldOpen(BudgetFile()));
}

TEST_F(ChartBudgetFiles, ThatFailToCloseAreToldByCloseFile) {
  AddBudgetWithAmounts();
  test::RunInChild([&] {
    Chart chart;
    ASSERT_EQ(chart.OpenFile(), StatusSuccess);
    EXPECT_EQ(chart.Budget(3), 103);
    AddBudget("Another");
    test::BreakDisk(BudgetFile());
    ExpectRaised([&] { chart.CloseFile(); }, ErrorClose, "\r\n->btClose(Budget):2", StatusIOError);
    EXPECT_EQ(chart.CloseFile(), StatusSuccess);
  });
  test::RunInChild([&] {
    Chart chart;
    ASSERT_EQ(chart.OpenFile(), StatusSuccess);
    EXPECT_EQ(chart.Budget(3), 103);
    AddAmounts(RentGUID, 300);
    test::BreakDisk(DetailFile());
    ExpectRaised([&] { chart.CloseFile(); }, ErrorClose, "\r\n->btClose(BDDetail):2",
                 StatusIOError);
    EXPECT_EQ(chart.CloseFile(), StatusSuccess);
  });
}

TEST_F(ChartBudgetFiles, ThatFailToCloseAreToldTogether) {
  AddBudgetWithAmounts();
  test::RunInChild([&] {
    Chart chart;
    ASSERT_EQ(chart.OpenFile(), StatusSuccess);
    EXPECT_EQ(chart.Budget(3), 103);
    AddBudget("Another");
    AddAmounts(RentGUID, 300);
    AddAccount("BANK", 3, NoAccount);
    for (const auto& file : {BudgetFile(), DetailFile(), ChartFile()}) test::BreakDisk(file);
    ExpectRaised([&] { chart.CloseFile(); }, ErrorClose,
                 "\r\n->btClose(Budget):2\r\n->btClose(BDDetail):2\r\n->btClose(Chart):2",
                 StatusIOError);
    EXPECT_EQ(chart.CloseFile(), StatusSuccess);
  });
}

TEST_F(ChartBudgetFiles, ThatAreNoLongerOpenAreNoFailureOfCloseFile) {
  AddBudgetWithAmounts();
  EXPECT_EQ(chart_.Budget(3), 103);
  ASSERT_EQ(TovrinFile().btReset(), StatusSuccess);
  EXPECT_EQ(chart_.CloseFile(), StatusSuccess);
}

}  // namespace
}  // namespace larkmoor
