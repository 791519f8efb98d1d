// The class Chart: its file, its finders and the key that a write goes along, the texts of the
// account types, and the amounts that live in the account's record. What is budgeted is told in
// chart_budget_test.cpp.
#include "engine/records/chart.h"

#include <cstdint>
#include <filesystem>
#include <ostream>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include <larkmoor/masters/chart.h>
#include <larkmoor/status.h>

#include "automation/automation.h"
#include "connection/status_messages.h"
#include "engine/records/budget.h"
#include "engine/records/budget_detail.h"
#include "engine/tovrin_file.h"
#include "engine/tovrin_file_names.h"
#include "support/accounts.h"
#include "support/child_process.h"
#include "support/company.h"
#include "support/errors.h"
#include "support/failing_disk.h"
#include "support/raised_errors.h"
#include "support/record_files.h"
#include "support/taken_away.h"

namespace larkmoor {
namespace {

using test::AddAccount;
using test::Company;
using test::ExpectRaised;
using test::IsHeldOpen;
using test::OpenRecordFile;
using test::RaisedNumber;
using test::TakenAway;

// Key numbers of the accounts.
constexpr std::int16_t ByAccountID = 0;
constexpr std::int16_t ByIndex = 3;

class ChartTest : public testing::Test {
 protected:
  std::filesystem::path ChartFile() const {
    return company_.Folder() / TovrinFileNames::ChartFile();
  }

  Company company_;
};

/// A chart of three accounts, laid in another order than that of their IDs or indexes, and an
/// object open on it.
class OpenChartTest : public ChartTest {
 protected:
  OpenChartTest() {
    AddAccount(company_.Folder(), {"3000", 20});
    AddAccount(company_.Folder(), {"1000", 30});
    AddAccount(company_.Folder(), {"2000", 10});
    EXPECT_EQ(chart_.OpenFile(), StatusSuccess);
  }

  Chart chart_;
};

using ChartLifecycle = ChartTest;
using ChartFinders = OpenChartTest;
using ChartWrites = OpenChartTest;

// --- Opening and closing ---

TEST_F(ChartLifecycle, FileIsChartDat) {
  Chart chart;
  ASSERT_EQ(chart.OpenFile(), StatusSuccess);
  EXPECT_TRUE(IsHeldOpen(company_.Folder() / "Chart.dat"));
}

TEST_F(ChartLifecycle, OperationsBeforeOpenFileAnswer3) {
  Chart chart;
  EXPECT_EQ(chart.GetEqual(1), StatusFileNotOpen);
  EXPECT_EQ(chart.GetForAccountId("1000"), StatusFileNotOpen);
  EXPECT_EQ(chart.StepFirst(), StatusFileNotOpen);
  EXPECT_EQ(chart.Insert(), StatusFileNotOpen);
  EXPECT_EQ(chart.Update(), StatusFileNotOpen);
  EXPECT_EQ(chart.Delete(), StatusFileNotOpen);
  EXPECT_EQ(chart.RecordCount(), 0);
  EXPECT_EQ(chart.CloseFile(), StatusSuccess);
}

TEST_F(ChartLifecycle, FailedOpenFileLeavesItClosed) {
  Chart chart;
  {
    const TakenAway away(ChartFile());
    EXPECT_EQ(chart.OpenFile(), StatusFileNotFound);
    EXPECT_EQ(chart.StepFirst(), StatusFileNotOpen);
    EXPECT_EQ(chart.CloseFile(), StatusSuccess);
  }
  EXPECT_EQ(chart.OpenFile(), StatusSuccess);
  EXPECT_EQ(chart.StepFirst(), StatusEndOfFile);
}

TEST_F(ChartLifecycle, FileOfAnotherOwnerAnswers51) {
  test::ProtectFile(ChartFile(), /*allowRead=*/false);
  EXPECT_EQ(Chart().OpenFile(), StatusInvalidOwner);
}

TEST_F(ChartLifecycle, ReadOnlyFileDoesNotOpen) {
  test::WhereReadOnly(ChartFile(), [] { EXPECT_EQ(Chart().OpenFile(), StatusPermission); });
}

TEST_F(ChartLifecycle, CloseFileClosesAndAnswers0EachTime) {
  Chart chart;
  ASSERT_EQ(chart.OpenFile(), StatusSuccess);
  EXPECT_EQ(chart.CloseFile(), StatusSuccess);
  EXPECT_FALSE(IsHeldOpen(ChartFile()));
  EXPECT_EQ(chart.StepFirst(), StatusFileNotOpen);
  EXPECT_EQ(chart.CloseFile(), StatusSuccess);
}

// Other tables answer 3 here; the accounts' file counts as closed.
TEST_F(ChartLifecycle, CloseFileOfAFileThatIsNoLongerOpenAnswers0) {
  Chart chart;
  ASSERT_EQ(chart.OpenFile(), StatusSuccess);
  ASSERT_EQ(TovrinFile().btReset(), StatusSuccess);
  EXPECT_EQ(chart.CloseFile(), StatusSuccess);
}

TEST_F(ChartLifecycle, CloseFileThatFailsRaisesAndClosesAllTheSame) {
  test::RunInChild([&] {
    Chart chart;
    ASSERT_EQ(chart.OpenFile(), StatusSuccess);
    ASSERT_EQ(chart.Insert(), StatusSuccess);
    test::BreakDisk(ChartFile());
    ExpectRaised([&] { chart.CloseFile(); }, ErrorClose, "\r\n->btClose(Chart):2", StatusIOError);
    EXPECT_EQ(chart.StepFirst(), StatusFileNotOpen);
    EXPECT_EQ(chart.CloseFile(), StatusSuccess);
  });
}

TEST_F(ChartLifecycle, DestructionLetsNoErrorEscape) {
  test::RunInChild([&] {
    Chart chart;
    ASSERT_EQ(chart.OpenFile(), StatusSuccess);
    ASSERT_EQ(chart.Insert(), StatusSuccess);
    test::BreakDisk(ChartFile());
  });
}

TEST_F(ChartLifecycle, FailedSecondOpenFileReleasesTheFile) {
  Chart chart;
  ASSERT_EQ(chart.OpenFile(), StatusSuccess);
  {
    const TakenAway away(ChartFile());
    EXPECT_EQ(chart.OpenFile(), StatusFileNotFound);
  }
  EXPECT_FALSE(IsHeldOpen(ChartFile()));
  EXPECT_EQ(chart.StepFirst(), StatusFileNotOpen);
  EXPECT_EQ(chart.CloseFile(), StatusSuccess);
}

TEST_F(ChartLifecycle, SecondOpenFileStartsAnew) {
  AddAccount(company_.Folder(), {"1000", 7});
  Chart chart;
  ASSERT_EQ(chart.OpenFile(), StatusSuccess);
  ASSERT_EQ(chart.GetEqual(7), StatusSuccess);
  EXPECT_EQ(chart.OpenFile(), StatusSuccess);
  EXPECT_EQ(chart.AccountID(), "");
  EXPECT_EQ(chart.Update(), StatusInvalidPositioning);
  EXPECT_EQ(chart.CloseFile(), StatusSuccess);
  EXPECT_FALSE(IsHeldOpen(ChartFile()));
}

TEST_F(ChartLifecycle, OpenFilePutsIndex0IntoTheKey) {
  AddAccount(company_.Folder(), {"1000", 7});
  automation::Object chart("Chart");
  ASSERT_EQ(chart.Call("OpenFile"), Variant(StatusSuccess));
  ASSERT_EQ(chart.Call("GetEqual", {Variant(std::int32_t{7})}), Variant(StatusSuccess));
  ASSERT_EQ(chart.File()->btGetEqual(ByIndex), StatusSuccess);
  ASSERT_EQ(chart.Call("OpenFile"), Variant(StatusSuccess));
  EXPECT_EQ(chart.File()->btGetEqual(ByIndex), StatusKeyNotFound);
}

TEST_F(ChartLifecycle, DestructionClosesTheFile) {
  {
    Chart chart;
    ASSERT_EQ(chart.OpenFile(), StatusSuccess);
    ASSERT_TRUE(IsHeldOpen(ChartFile()));
  }
  EXPECT_FALSE(IsHeldOpen(ChartFile()));
}

// --- Finders ---

TEST_F(ChartFinders, GetEqualReadsTheAccountOfThatIndex) {
  ASSERT_EQ(chart_.GetEqual(30), StatusSuccess);
  EXPECT_EQ(chart_.AccountID(), "1000");
  EXPECT_EQ(chart_.Index(), 30);
  EXPECT_EQ(chart_.GetEqual(31), StatusKeyNotFound);
  EXPECT_EQ(chart_.AccountID(), "1000") << "a read that finds nothing leaves the record";
}

TEST_F(ChartFinders, GetForAccountIdReadsTheAccountOfExactlyThatID) {
  ASSERT_EQ(chart_.GetForAccountId("2000"), StatusSuccess);
  EXPECT_EQ(chart_.Index(), 10);
  EXPECT_EQ(chart_.GetForAccountId("200"), StatusKeyNotFound);
  EXPECT_EQ(chart_.GetForAccountId("20000"), StatusKeyNotFound);
  EXPECT_EQ(chart_.GetForAccountId("2000 "), StatusKeyNotFound);
  EXPECT_EQ(chart_.GetForAccountId(""), StatusKeyNotFound);
}

TEST_F(ChartFinders, AShorterIDIsNotDisturbedByALongerOneBefore) {
  AddAccount(company_.Folder(), {"20", 40});
  ASSERT_EQ(chart_.GetForAccountId("2000"), StatusSuccess);
  ASSERT_EQ(chart_.GetForAccountId("20"), StatusSuccess);
  EXPECT_EQ(chart_.Index(), 40);
}

TEST_F(ChartFinders, StepsGoInTheOrderOfInsertion) {
  ASSERT_EQ(chart_.StepFirst(), StatusSuccess);
  EXPECT_EQ(chart_.AccountID(), "3000");
  ASSERT_EQ(chart_.StepNext(), StatusSuccess);
  EXPECT_EQ(chart_.AccountID(), "1000");
  ASSERT_EQ(chart_.StepLast(), StatusSuccess);
  EXPECT_EQ(chart_.AccountID(), "2000");
  EXPECT_EQ(chart_.StepNext(), StatusEndOfFile);
  ASSERT_EQ(chart_.StepPrevious(), StatusSuccess);
  EXPECT_EQ(chart_.AccountID(), "1000");
}

// --- Writes ---

TEST_F(ChartWrites, InsertGivesTheNextIndex) {
  chart_.AccountID("4000");
  ASSERT_EQ(chart_.Insert(), StatusSuccess);
  EXPECT_EQ(chart_.Index(), 31);
  EXPECT_EQ(chart_.RecordCount(), 4);
}

TEST_F(ChartWrites, InsertOfAnIDThatIsThereAnswers5) {
  chart_.AccountID("1000");
  EXPECT_EQ(chart_.Insert(), StatusDuplicateKey);
  EXPECT_EQ(chart_.RecordCount(), 3);
}

TEST_F(ChartWrites, UpdateRewritesTheAccountInHand) {
  ASSERT_EQ(chart_.GetEqual(30), StatusSuccess);
  chart_.AccountDescription("Petty cash");
  ASSERT_EQ(chart_.Update(), StatusSuccess);
  Chart reader;
  ASSERT_EQ(reader.OpenFile(), StatusSuccess);
  ASSERT_EQ(reader.GetForAccountId("1000"), StatusSuccess);
  EXPECT_EQ(reader.AccountDescription(), "Petty cash");
}

TEST_F(ChartWrites, DeleteTakesTheAccountInHandAway) {
  ASSERT_EQ(chart_.GetEqual(30), StatusSuccess);
  ASSERT_EQ(chart_.Delete(), StatusSuccess);
  EXPECT_EQ(chart_.RecordCount(), 2);
  EXPECT_EQ(chart_.GetEqual(30), StatusKeyNotFound);
}

/// An object whose engine file tells which key path a write has gone along.
class ChartKeyNumber : public OpenChartTest {
 protected:
  ChartKeyNumber() { EXPECT_EQ(Call("OpenFile"), StatusSuccess); }

  Status Call(const char* operation, std::vector<Variant> arguments = {}) {
    return object_.Call(operation, std::move(arguments)).ToInteger();
  }

  /// The account with the lowest ID has the highest index, so that the paths go opposite ways.
  void ExpectPlaceOn(std::int16_t keyNumber) {
    const std::int16_t other = keyNumber == ByIndex ? ByAccountID : ByIndex;
    EXPECT_EQ(object_.File()->btGetNext(other), StatusDifferentKeyNumber);
    EXPECT_NE(object_.File()->btGetNext(keyNumber), StatusDifferentKeyNumber);
  }

  automation::Object object_{"Chart"};
};

TEST_F(ChartKeyNumber, OfANewlyOpenedObjectIsThatOfTheIndexes) {
  object_.Let("AccountID", "4000");
  ASSERT_EQ(Call("Insert"), StatusSuccess);
  ExpectPlaceOn(ByIndex);
}

TEST_F(ChartKeyNumber, FollowsTheLastFinder) {
  ASSERT_EQ(Call("GetForAccountId", {Variant("1000")}), StatusSuccess);
  ASSERT_EQ(Call("Update"), StatusSuccess);
  ExpectPlaceOn(ByAccountID);
  ASSERT_EQ(Call("GetEqual", {Variant(std::int32_t{30})}), StatusSuccess);
  ASSERT_EQ(Call("Update"), StatusSuccess);
  ExpectPlaceOn(ByIndex);
}

TEST_F(ChartKeyNumber, FollowsAFinderThatFindsNothing) {
  ASSERT_EQ(Call("GetForAccountId", {Variant("none")}), StatusKeyNotFound);
  object_.Let("AccountID", "4000");
  ASSERT_EQ(Call("Insert"), StatusSuccess);
  ExpectPlaceOn(ByAccountID);
}

TEST_F(ChartKeyNumber, IsNotTouchedBySteps) {
  ASSERT_EQ(Call("GetForAccountId", {Variant("1000")}), StatusSuccess);
  ASSERT_EQ(Call("StepFirst"), StatusSuccess);
  ASSERT_EQ(Call("Update"), StatusSuccess);
  ExpectPlaceOn(ByAccountID);
}

TEST_F(ChartKeyNumber, IsSetBackByOpenFile) {
  ASSERT_EQ(Call("GetForAccountId", {Variant("1000")}), StatusSuccess);
  ASSERT_EQ(Call("OpenFile"), StatusSuccess);
  ASSERT_EQ(Call("StepFirst"), StatusSuccess);
  ASSERT_EQ(Call("Update"), StatusSuccess);
  ExpectPlaceOn(ByIndex);
}

// --- Account types ---

struct AccountType {
  std::int16_t number;
  const char* text;
};

TEST(ChartAccountType, EachHasItsText) {
  constexpr AccountType Types[] = {{0, "Cash"},
                                   {1, "Accounts Receivable"},
                                   {2, "Inventory"},
                                   {4, "Other Current Assets"},
                                   {5, "Fixed Assets"},
                                   {6, "Accumulated Depreciation"},
                                   {8, "Other Assets"},
                                   {10, "Accounts Payable"},
                                   {12, "Other Current Liabilities"},
                                   {14, "Long Term Liabilities"},
                                   {16, "Equity-doesn't close"},
                                   {18, "Equity-Retained Earnings"},
                                   {19, "Equity-gets closed"},
                                   {21, "Income"},
                                   {23, "Cost of Sales"},
                                   {24, "Expenses"}};
  Chart chart;
  for (const AccountType& type : Types) {
    chart.AccountType(type.number);
    EXPECT_EQ(chart.AccountTypeDescription(), type.text) << type.number;
  }
}

TEST(ChartAccountType, NumbersBetweenAndBeyondAreUnknown) {
  constexpr std::int16_t Numbers[] = {-32768, -1, 3, 7, 9, 11, 13, 15, 17, 20, 22, 25, 32767};
  Chart chart;
  for (const std::int16_t number : Numbers) {
    chart.AccountType(number);
    EXPECT_EQ(chart.AccountTypeDescription(), "<unknown>") << number;
  }
}

TEST(ChartAccountType, OfABlankRecordIsCash) {
  EXPECT_EQ(Chart().AccountTypeDescription(), "Cash");
}

// --- Amounts in the record ---

/// A property with an amount of each period.
struct Amount {
  const char* name;
  double (Chart::*get)(std::int16_t);
  void (Chart::*let)(std::int16_t, double);
};

void PrintTo(const Amount& amount, std::ostream* out) { *out << amount.name; }

const Amount Amounts[] = {
    {"Activity", &Chart::Activity, &Chart::Activity},
    {"Credit", &Chart::Credit, &Chart::Credit},
    {"Debit", &Chart::Debit, &Chart::Debit},
    {"PurgedBalanceCredit", &Chart::PurgedBalanceCredit, &Chart::PurgedBalanceCredit},
    {"PurgedBalanceDebit", &Chart::PurgedBalanceDebit, &Chart::PurgedBalanceDebit},
    {"PurgedBalanceNet", &Chart::PurgedBalanceNet, &Chart::PurgedBalanceNet},
    {"Revised", &Chart::Revised, &Chart::Revised},
};

class ChartAmount : public testing::TestWithParam<Amount> {};

TEST_P(ChartAmount, GoesToTheRecordByItsIndex) {
  const Company company;
  Chart chart;
  ASSERT_EQ(chart.OpenFile(), StatusSuccess);
  (chart.*GetParam().let)(0, 1.5);
  (chart.*GetParam().let)(13, 2.5);
  EXPECT_EQ((chart.*GetParam().get)(0), 1.5);
  EXPECT_EQ((chart.*GetParam().get)(13), 2.5);
  ASSERT_EQ(chart.Insert(), StatusSuccess);
  OpenRecordFile file(company.Folder() / TovrinFileNames::ChartFile(), ChartRecord::Describe());
  ASSERT_EQ(file.File().btStepFirst(), StatusSuccess);
  const Field* field = ChartRecord::Describe().FindField(GetParam().name);
  ASSERT_NE(field, nullptr);
  EXPECT_EQ(file.Record().GetDouble(*field, 0), 1.5);
  EXPECT_EQ(file.Record().GetDouble(*field, 13), 2.5);
}

/// Indexes that no repeating field has.
constexpr std::int16_t Outside[] = {-32768, -1, 32767};

// Unlike that of Budget, the index is not brought into range.
TEST_P(ChartAmount, OfAnIndexOutsideRaises9) {
  Chart chart;
  for (const std::int16_t index : Outside) {
    EXPECT_EQ(RaisedNumber([&] { return (chart.*GetParam().get)(index); }), 9) << index;
    EXPECT_EQ(RaisedNumber([&] { (chart.*GetParam().let)(index, 1.5); }), 9) << index;
  }
}

INSTANTIATE_TEST_SUITE_P(Properties, ChartAmount, testing::ValuesIn(Amounts),
                         [](const auto& tested) { return std::string(tested.param.name); });

TEST(ChartHasPurgedTrx, OfAnIndexOutsideRaises9) {
  Chart chart;
  for (const std::int16_t index : Outside) {
    EXPECT_EQ(RaisedNumber([&] { return chart.HasPurgedTrx(index); }), 9) << index;
    EXPECT_EQ(RaisedNumber([&] { chart.HasPurgedTrx(index, true); }), 9) << index;
  }
}

/// The release of a company.
class ChartRevised : public testing::TestWithParam<double> {
 protected:
  Company company_{GetParam()};
};

// There may be a budget of that name, with amounts for every account: it is not looked at.
TEST_P(ChartRevised, LivesInTheRecordInEveryRelease) {
  constexpr const char* Revised = "B0000000-0000-4000-8000-000000000002";
  const auto budgets = company_.Folder() / TovrinFileNames::BudgetFile();
  const auto amounts = company_.Folder() / TovrinFileNames::BudgetDetailFile();
  OpenRecordFile(budgets, BudgetRecord::Describe()).Add([&](Tovrin2Record& record) {
    record.SetText(BudgetRecord::BudgetID, "Revised Budget");
    record.SetText(BudgetRecord::BudgetGUID, Revised);
  });
  OpenRecordFile(amounts, BudgetDetailRecord::Describe()).Add([&](Tovrin2Record& record) {
    record.SetText(BudgetDetailRecord::BudgetGUID, Revised);
    record.SetDouble(BudgetDetailRecord::Amount, 99, 3);
  });
  Chart chart;
  ASSERT_EQ(chart.OpenFile(), StatusSuccess);
  EXPECT_EQ(chart.Revised(3), 0);
  chart.Revised(3, 1.5);
  EXPECT_EQ(chart.Revised(3), 1.5);
  ASSERT_EQ(chart.Insert(), StatusSuccess);
  EXPECT_FALSE(IsHeldOpen(budgets));
  EXPECT_FALSE(IsHeldOpen(amounts));
  EXPECT_EQ(OpenRecordFile(amounts, BudgetDetailRecord::Describe()).File().btRecordCount(), 1);
  OpenRecordFile file(company_.Folder() / TovrinFileNames::ChartFile(), ChartRecord::Describe());
  ASSERT_EQ(file.File().btStepFirst(), StatusSuccess);
  EXPECT_EQ(file.Record().GetDouble(ChartRecord::Revised, 3), 1.5);
}

INSTANTIATE_TEST_SUITE_P(Releases, ChartRevised, testing::Values(8.0, 11.0, 13.0, 14.0, 19.0));

// --- Other fields ---

TEST(ChartInternal1, IsAFieldThatTheRecordKnowsByName) {
  ASSERT_NE(ChartRecord::Describe().FindField("Internal1"), nullptr);
  automation::Object chart("Chart");
  chart.Let("Internal1", "x1");
  EXPECT_EQ(chart.Get("Internal1"), Variant("x1"));
}

TEST(ChartUnknown, Reads0AndDropsWritesWhateverTheIndex) {
  Chart chart;
  constexpr std::int16_t Indexes[] = {-32768, -1, 0, 1, 32767};
  for (const std::int16_t index : Indexes) {
    chart.Unknown(index, 7);
    EXPECT_EQ(chart.Unknown(index), 0) << index;
    chart.Unknown6(index, 7);
    EXPECT_EQ(chart.Unknown6(index), 0) << index;
  }
}

}  // namespace
}  // namespace larkmoor
