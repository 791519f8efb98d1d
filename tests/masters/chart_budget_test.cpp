// What the class Chart budgets: in the account's record up to release 13, from 14 on in two files
// that it opens by itself. There one set of amounts is in hand from the first access to the next
// OpenFile; it serves every account, and a write of an account takes it to that account's row.
// What happens to the two files themselves is told in chart_budget_files_test.cpp.
#include <cstdint>
#include <filesystem>
#include <ostream>
#include <string_view>

#include <gtest/gtest.h>

#include <larkmoor/masters/chart.h>
#include <larkmoor/status.h>

#include "engine/records/budget.h"
#include "engine/store/driver.h"
#include "engine/tovrin_file_names.h"
#include "support/budgets.h"
#include "support/company.h"
#include "support/record_files.h"
#include "support/taken_away.h"

namespace larkmoor {
namespace {

using test::Amounts;
using test::BudgetGUID;
using test::Cash;
using test::CashGUID;
using test::Company;
using test::IsHeldOpen;
using test::NoAccount;
using test::NoBudget;
using test::OpenRecordFile;
using test::Periods;
using test::Rent;
using test::RentGUID;
using test::Rising;
using test::TakenAway;
using test::With;

/// A company with two accounts and an object that has the first of them in hand.
class ChartBudgetTest : public testing::Test, protected test::BudgetCompany {
 protected:
  explicit ChartBudgetTest(double release = 14.0) : BudgetCompany(release) {
    EXPECT_EQ(chart_.OpenFile(), StatusSuccess);
    EXPECT_EQ(chart_.GetEqual(Cash), StatusSuccess);
  }

  Chart chart_;
};

using ChartBudgetInHand = ChartBudgetTest;
using ChartBudgetSearch = ChartBudgetTest;
using ChartBudgetWrite = ChartBudgetTest;

// --- Where it lives, by release ---

/// The release counts as a whole number, halves going to the even one.
struct Place {
  double release;
  bool inFiles;
  std::int16_t lastPeriod;
};

void PrintTo(const Place& place, std::ostream* out) { *out << place.release; }

constexpr Place Places[] = {
    {8.0, false, 41},  {10.0, false, 41}, {10.4, false, 41}, {10.5, false, 41}, {10.6, false, 55},
    {10.9, false, 55}, {11.0, false, 55}, {11.5, false, 55}, {12.9, false, 55}, {13.0, false, 55},
    {13.4, false, 55}, {13.5, true, 55},  {13.9, true, 55},  {14.0, true, 55},  {19.0, true, 55},
};

class ChartBudgetPlace : public ChartBudgetTest, public testing::WithParamInterface<Place> {
 protected:
  ChartBudgetPlace() : ChartBudgetTest(GetParam().release) { AddBudgetWithAmounts(); }
};

TEST_P(ChartBudgetPlace, IsTheRecordOrTheBudgetFiles) {
  EXPECT_EQ(chart_.Budget(3), GetParam().inFiles ? 103 : 503);
  EXPECT_EQ(IsHeldOpen(BudgetFile()), GetParam().inFiles);
  EXPECT_EQ(IsHeldOpen(DetailFile()), GetParam().inFiles);
}

TEST_P(ChartBudgetPlace, IsWrittenByAnUpdate) {
  chart_.Budget(3, 1.5);
  ASSERT_EQ(chart_.Update(), StatusSuccess);
  EXPECT_EQ(Stored(CashGUID), GetParam().inFiles ? With(Rising(100), 3, 1.5) : Amounts{});
  EXPECT_EQ(StoredInRecord(Cash, 3), GetParam().inFiles ? 503 : 1.5);
}

TEST_P(ChartBudgetPlace, IsReadAtTheNearestPeriodWhereTheIndexIsOutside) {
  const std::int16_t last = GetParam().lastPeriod;
  const double first = GetParam().inFiles ? 100 : 500;
  EXPECT_EQ(chart_.Budget(0), first);
  EXPECT_EQ(chart_.Budget(-1), first);
  EXPECT_EQ(chart_.Budget(-32768), first);
  EXPECT_EQ(chart_.Budget(last), first + last);
  EXPECT_EQ(chart_.Budget(static_cast<std::int16_t>(last + 1)), first + last);
  EXPECT_EQ(chart_.Budget(100), first + last);
  EXPECT_EQ(chart_.Budget(32767), first + last);
}

TEST_P(ChartBudgetPlace, IsWrittenAtTheNearestPeriodWhereTheIndexIsOutside) {
  chart_.Budget(-1, 1.5);
  chart_.Budget(100, 2.5);
  EXPECT_EQ(chart_.Budget(0), 1.5);
  EXPECT_EQ(chart_.Budget(1), GetParam().inFiles ? 101 : 501);
  EXPECT_EQ(chart_.Budget(GetParam().lastPeriod), 2.5);
}

INSTANTIATE_TEST_SUITE_P(Releases, ChartBudgetPlace, testing::ValuesIn(Places));

// An object that was never opened knows no release.
TEST(ChartBudgetOfAClosedObject, LivesInTheRecord) {
  Chart chart;
  chart.Budget(100, 2.5);
  EXPECT_EQ(chart.Budget(41), 2.5);
  EXPECT_EQ(chart.Budget(50), 2.5);
}

TEST(ChartBudgetInTheRecord, NeedsNoBudgetFiles) {
  const Company company(13.0);
  std::filesystem::remove(company.Folder() / TovrinFileNames::BudgetFile());
  std::filesystem::remove(company.Folder() / TovrinFileNames::BudgetDetailFile());
  Chart chart;
  ASSERT_EQ(chart.OpenFile(), StatusSuccess);
  chart.Budget(50, 1.5);
  EXPECT_EQ(chart.Budget(50), 1.5);
  EXPECT_EQ(chart.Insert(), StatusSuccess);
  EXPECT_EQ(chart.CloseFile(), StatusSuccess);
}

// --- The amounts in hand ---

// The account's half of the key is blank in a new object, whatever account the record holds.
TEST_F(ChartBudgetInHand, AreReadFromTheRowOfNoAccount) {
  AddBudgetWithAmounts();
  AddAmounts(CashGUID, 200);
  EXPECT_EQ(chart_.Budget(0), 100);
  EXPECT_EQ(chart_.Budget(55), 155);
}

TEST_F(ChartBudgetInHand, Are0WhereTheBudgetHasNoSuchRow) {
  AddBudget("Budget");
  AddAmounts(CashGUID, 200);
  EXPECT_EQ(chart_.Budget(0), 0);
  EXPECT_EQ(chart_.Budget(55), 0);
}

TEST_F(ChartBudgetInHand, ServeEveryAccount) {
  AddBudgetWithAmounts();
  AddAmounts(RentGUID, 300);
  EXPECT_EQ(chart_.Budget(3), 103);
  chart_.Budget(4, 1.5);
  ASSERT_EQ(chart_.GetEqual(Rent), StatusSuccess);
  EXPECT_EQ(chart_.Budget(3), 103);
  EXPECT_EQ(chart_.Budget(4), 1.5);
  ASSERT_EQ(chart_.StepFirst(), StatusSuccess);
  EXPECT_EQ(chart_.Budget(4), 1.5);
}

TEST_F(ChartBudgetInHand, AreReadOnceAndAgainAfterOpenFile) {
  AddBudgetWithAmounts();
  EXPECT_EQ(chart_.Budget(3), 103);
  Rewrite(NoAccount, 400);
  EXPECT_EQ(chart_.Budget(3), 103);
  ASSERT_EQ(chart_.OpenFile(), StatusSuccess);
  EXPECT_EQ(chart_.Budget(3), 403);
}

TEST_F(ChartBudgetInHand, StayAt0WhenTheRowIsAddedLater) {
  AddBudget("Budget");
  EXPECT_EQ(chart_.Budget(3), 0);
  AddAmounts(NoAccount, 100);
  EXPECT_EQ(chart_.Budget(3), 0);
  ASSERT_EQ(chart_.OpenFile(), StatusSuccess);
  EXPECT_EQ(chart_.Budget(3), 103);
}

TEST_F(ChartBudgetInHand, OutliveCloseFile) {
  AddBudgetWithAmounts();
  EXPECT_EQ(chart_.Budget(3), 103);
  ASSERT_EQ(chart_.CloseFile(), StatusSuccess);
  Rewrite(NoAccount, 400);
  EXPECT_EQ(chart_.Budget(3), 103);
  EXPECT_FALSE(IsHeldOpen(BudgetFile()));
}

TEST_F(ChartBudgetInHand, AreGivenUpByAnOpenFileThatFails) {
  AddBudgetWithAmounts();
  chart_.Budget(3, 1.5);
  Rewrite(NoAccount, 400);
  const TakenAway away(ChartFile());
  ASSERT_EQ(chart_.OpenFile(), StatusFileNotFound);
  EXPECT_EQ(chart_.Budget(3), 403);
}

TEST_F(ChartBudgetInHand, BelongToOneObject) {
  AddBudgetWithAmounts();
  chart_.Budget(3, 1.5);
  Chart other;
  ASSERT_EQ(other.OpenFile(), StatusSuccess);
  EXPECT_EQ(other.Budget(3), 103);
}

// The key buffer outlasts the close and the open of the budget's rows, and with it the account that
// was written last.
TEST_F(ChartBudgetInHand, AreReadFromTheRowOfTheAccountLastWritten) {
  AddBudgetWithAmounts();
  AddAmounts(RentGUID, 300);
  chart_.Budget(3, 1.5);
  ASSERT_EQ(chart_.Update(), StatusSuccess);
  Rewrite(CashGUID, 200);
  ASSERT_EQ(chart_.OpenFile(), StatusSuccess);
  ASSERT_EQ(chart_.GetEqual(Rent), StatusSuccess);
  EXPECT_EQ(chart_.Budget(3), 203);
  ASSERT_EQ(chart_.CloseFile(), StatusSuccess);
  ASSERT_EQ(chart_.OpenFile(), StatusSuccess);
  EXPECT_EQ(chart_.Budget(3), 103) << "CloseFile gives the key up";
}

// --- The search for the budget ---

TEST_F(ChartBudgetSearch, GoesByTheExactNameAlone) {
  AddAmounts(NoAccount, 100);
  for (const char* id : {"budget", "Budgets", "Budge", "Revised Budget"}) AddBudget(id);
  EXPECT_EQ(chart_.Budget(3), 0);
  AddBudget("Budget");
  EXPECT_EQ(chart_.Budget(3), 103);
}

TEST_F(ChartBudgetSearch, IsRepeatedAtEachAccessUntilItFinds) {
  AddAmounts(NoAccount, 100);
  EXPECT_EQ(chart_.Budget(3), 0);
  EXPECT_EQ(chart_.Budget(3), 0);
  AddBudget("Budget");
  EXPECT_EQ(chart_.Budget(3), 103);
}

TEST_F(ChartBudgetSearch, ThatFindsNothingForgetsWhatWasAssigned) {
  chart_.Budget(3, 1.5);
  EXPECT_EQ(chart_.Budget(3), 0);
}

TEST_F(ChartBudgetSearch, ThatFindsNothingLeavesTheLastAssignmentToBeWrittenForNoBudget) {
  chart_.Budget(3, 1.5);
  chart_.Budget(4, 2.5);
  ASSERT_EQ(chart_.Update(), StatusSuccess);
  EXPECT_EQ(Stored(CashGUID, NoBudget), With(Amounts(Periods), 4, 2.5));
  EXPECT_EQ(StoredRows(), 1);
}

TEST_F(ChartBudgetSearch, ThatFindsABudgetWithoutGUIDIsRepeatedAndKeepsWhatWasAssigned) {
  AddBudget("Budget", NoBudget);
  AddAmounts(NoAccount, 100);
  EXPECT_EQ(chart_.Budget(3), 0);
  chart_.Budget(3, 1.5);
  EXPECT_EQ(chart_.Budget(3), 1.5);
  {
    OpenRecordFile budgets(BudgetFile(), BudgetRecord::Describe());
    ASSERT_EQ(budgets.File().btStepFirst(), StatusSuccess);
    budgets.Record().SetText(BudgetRecord::BudgetGUID, BudgetGUID);
    ASSERT_EQ(budgets.File().btUpdate(0), StatusSuccess);
  }
  EXPECT_EQ(chart_.Budget(3), 103);
}

// A write leaves the rows' file closed, and the search that goes on does not open it.
TEST_F(ChartBudgetSearch, ThatFindsTheBudgetAfterAWriteReads0) {
  chart_.Budget(3, 1.5);
  ASSERT_EQ(chart_.Update(), StatusSuccess);
  AddBudget("Budget");
  AddAmounts(NoAccount, 100);
  AddAmounts(CashGUID, 200);
  EXPECT_EQ(chart_.Budget(3), 0);
  ASSERT_EQ(chart_.OpenFile(), StatusSuccess);
  EXPECT_EQ(chart_.Budget(3), 203);
}

// --- Writing the amounts in hand ---

TEST_F(ChartBudgetWrite, RewritesAllAmountsOfTheAccountInHandAndNoOther) {
  AddBudgetWithAmounts();
  AddAmounts(CashGUID, 200);
  AddAmounts(RentGUID, 300);
  chart_.Budget(3, 1.5);
  ASSERT_EQ(chart_.Update(), StatusSuccess);
  EXPECT_EQ(Stored(CashGUID), With(Rising(100), 3, 1.5));
  EXPECT_EQ(Stored(RentGUID), Rising(300));
  EXPECT_EQ(Stored(NoAccount), Rising(100));
  EXPECT_EQ(StoredRows(), 3);
}

TEST_F(ChartBudgetWrite, AddsTheRowWhereItIsMissing) {
  AddBudgetWithAmounts();
  chart_.Budget(3, 1.5);
  ASSERT_EQ(chart_.Update(), StatusSuccess);
  EXPECT_EQ(Stored(CashGUID), With(Rising(100), 3, 1.5));
  EXPECT_EQ(Stored(NoAccount), Rising(100));
  EXPECT_EQ(StoredRows(), 2);
}

TEST_F(ChartBudgetWrite, HappensAtAnInsertToo) {
  AddBudgetWithAmounts();
  constexpr std::string_view BankGUID = "A0000000-0000-4000-8000-000000000003";
  chart_.AccountID("BANK");
  chart_.Index(0);
  chart_.GUID(BankGUID);
  chart_.Budget(3, 1.5);
  ASSERT_EQ(chart_.Insert(), StatusSuccess);
  EXPECT_EQ(Stored(BankGUID), With(Rising(100), 3, 1.5));
  EXPECT_EQ(Stored(CashGUID), Amounts{});
}

TEST_F(ChartBudgetWrite, HappensAlthoughTheEngineRefusesTheAccount) {
  AddBudgetWithAmounts();
  chart_.Budget(3, 1.5);
  EXPECT_EQ(chart_.Insert(), StatusDuplicateKey);
  EXPECT_EQ(Stored(CashGUID), With(Rising(100), 3, 1.5));

  Chart unplaced;
  ASSERT_EQ(unplaced.OpenFile(), StatusSuccess);
  unplaced.GUID(RentGUID);
  unplaced.Budget(3, 2.5);
  EXPECT_EQ(unplaced.Update(), StatusInvalidPositioning);
  EXPECT_EQ(Stored(RentGUID), With(Rising(100), 3, 2.5));
}

TEST_F(ChartBudgetWrite, GoesToTheAccountInHandAtThatTime) {
  AddBudgetWithAmounts();
  chart_.Budget(3, 1.5);
  ASSERT_EQ(chart_.GetEqual(Rent), StatusSuccess);
  ASSERT_EQ(chart_.Update(), StatusSuccess);
  EXPECT_EQ(Stored(RentGUID), With(Rising(100), 3, 1.5));
  EXPECT_EQ(Stored(CashGUID), Amounts{});
}

TEST_F(ChartBudgetWrite, OfAnAccountWithoutGUIDGoesToTheRowOfNoAccount) {
  AddBudgetWithAmounts();
  chart_.GUID("");
  chart_.Budget(3, 1.5);
  ASSERT_EQ(chart_.Update(), StatusSuccess);
  EXPECT_EQ(Stored(NoAccount), With(Rising(100), 3, 1.5));
  EXPECT_EQ(StoredRows(), 1);
}

TEST_F(ChartBudgetWrite, NeedsAnAssignment) {
  AddBudgetWithAmounts();
  EXPECT_EQ(chart_.Budget(3), 103);
  ASSERT_EQ(chart_.Update(), StatusSuccess);
  EXPECT_EQ(StoredRows(), 1);
}

TEST_F(ChartBudgetWrite, HappensOnceForAnAssignment) {
  AddBudgetWithAmounts();
  chart_.Budget(3, 1.5);
  ASSERT_EQ(chart_.Update(), StatusSuccess);
  Rewrite(CashGUID, 200);
  ASSERT_EQ(chart_.Update(), StatusSuccess);
  ASSERT_EQ(chart_.GetEqual(Rent), StatusSuccess);
  ASSERT_EQ(chart_.Update(), StatusSuccess);
  EXPECT_EQ(Stored(CashGUID), Rising(200));
  EXPECT_EQ(Stored(RentGUID), Amounts{});
  EXPECT_EQ(chart_.Budget(3), 1.5) << "the amounts stay in hand";
}

TEST_F(ChartBudgetWrite, DoesNotHappenAtDeleteCloseFileOrDestruction) {
  AddBudgetWithAmounts();
  {
    Chart deleting;
    ASSERT_EQ(deleting.OpenFile(), StatusSuccess);
    ASSERT_EQ(deleting.GetEqual(Rent), StatusSuccess);
    deleting.Budget(3, 1.5);
    ASSERT_EQ(deleting.Delete(), StatusSuccess);
  }
  chart_.Budget(3, 1.5);
  ASSERT_EQ(chart_.CloseFile(), StatusSuccess);
  EXPECT_EQ(StoredRows(), 1);
  EXPECT_EQ(Stored(NoAccount), Rising(100));
}

TEST_F(ChartBudgetWrite, IsForgottenByOpenFile) {
  AddBudgetWithAmounts();
  chart_.Budget(3, 1.5);
  ASSERT_EQ(chart_.OpenFile(), StatusSuccess);
  ASSERT_EQ(chart_.GetEqual(Cash), StatusSuccess);
  ASSERT_EQ(chart_.Update(), StatusSuccess);
  EXPECT_EQ(StoredRows(), 1);
}

// CloseFile leaves the assignment in hand, and a closed object has the account without GUID.
TEST_F(ChartBudgetWrite, OfAClosedObjectGoesToTheRowOfNoAccount) {
  AddBudgetWithAmounts();
  chart_.Budget(3, 1.5);
  ASSERT_EQ(chart_.CloseFile(), StatusSuccess);
  EXPECT_EQ(chart_.Update(), StatusFileNotOpen);
  EXPECT_EQ(Stored(NoAccount), With(Rising(100), 3, 1.5));
}

TEST_F(ChartBudgetWrite, ThatFindsNoFileIsPassedOverForGood) {
  AddBudgetWithAmounts();
  chart_.Budget(3, 1.5);
  {
    const TakenAway away(DetailFile());
    EXPECT_EQ(chart_.Update(), StatusSuccess);
  }
  EXPECT_EQ(chart_.Update(), StatusSuccess);
  EXPECT_EQ(StoredRows(), 1);
}

TEST_F(ChartBudgetWrite, ThatTheFileRefusesIsPassedOverForGood) {
  AddBudgetWithAmounts();
  AddAmounts(CashGUID, 200);
  test::ProtectFile(DetailFile(), /*allowRead=*/true);
  EXPECT_EQ(chart_.Budget(3), 103);
  chart_.Budget(3, 1.5);
  EXPECT_EQ(chart_.Update(), StatusSuccess);
  ASSERT_EQ(store::DefaultDriver().ClearOwner(DetailFile(), "someone"), StatusSuccess);
  EXPECT_EQ(chart_.Update(), StatusSuccess);
  EXPECT_EQ(Stored(CashGUID), Rising(200));
}

}  // namespace
}  // namespace larkmoor
