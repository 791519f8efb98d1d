// The accounts of the class Employee, which are stored as indexes into the chart and shown as IDs,
// and the memory of the whole chart that CacheCharts fills. Data below release 12 shows no
// accounts; below 19 they lie in the employee's record, from 19 on in the rows of the payroll
// files.
#include <cstdint>
#include <filesystem>
#include <ostream>
#include <string>
#include <string_view>

#include <gtest/gtest.h>

#include <larkmoor/bulk_write.h>
#include <larkmoor/masters/employee.h>
#include <larkmoor/status.h>
#include <larkmoor/variant.h>

#include "connection/status_messages.h"
#include "engine/records/chart.h"
#include "engine/records/employee.h"
#include "engine/records/employee_aux1.h"
#include "engine/records/employee_aux5.h"
#include "engine/records/employee_aux6.h"
#include "engine/store/driver.h"
#include "support/accounts.h"
#include "support/child_process.h"
#include "support/errors.h"
#include "support/failing_disk.h"
#include "support/payroll_company.h"
#include "support/raised_errors.h"
#include "support/read_only_file.h"
#include "support/record_files.h"
#include "support/taken_away.h"

namespace larkmoor {
namespace {

using test::AddAccount;
using test::ExpectRaised;
using test::IsHeldOpen;
using test::OpenRecordFile;
using test::PayrollTest;
using test::RaisedNumber;
using test::TakenAway;

// The accounts of every company here, and one that it has not.
constexpr std::int32_t Wages = 17;
constexpr std::int32_t Taxes = 18;
constexpr std::int32_t Unknown = 99;

/// A company with two accounts.
class EmployeeChartTest : public PayrollTest {
 protected:
  explicit EmployeeChartTest(double release) : PayrollTest(release) {
    AddAccount(company_.Folder(), {"4000", Wages});
    AddAccount(company_.Folder(), {"5000", Taxes});
  }
};

// --- Accounts ---

/// A property that shows an account, and what stands behind it.
struct AccountProperty {
  const char* name;
  std::string (Employee::*get)(std::int16_t);
  void (Employee::*let)(std::int16_t, std::string_view);
  const Field* inRecord;   ///< below release 19
  const Field* inRow;      ///< from 19 on, of the employee
  const Field* inDefault;  ///< from 19 on, of the company; null for pay levels, which have none
  std::int32_t rowsBefore = 0;          ///< rows ahead of that of number 1
  const char* readUnderTheName = name;  ///< what messages about reading call it

  [[nodiscard]] bool IsOfALevel() const { return inDefault == nullptr; }
};

void PrintTo(const AccountProperty& property, std::ostream* out) { *out << property.name; }

const AccountProperty AccountProperties[] = {
    {"AcctDataGLAccount", &Employee::AcctDataGLAccount, &Employee::AcctDataGLAccount,
     &EmployeeRecord::AcctDataGLAccountIndex, &EmployeeAux5Record::GLAccountIndex, nullptr},
    {"EEGLAccount", &Employee::EEGLAccount, &Employee::EEGLAccount,
     &EmployeeRecord::EEGLAccountIndex, &EmployeeAux6Record::GLAccountIndex,
     &EmployeeAux1Record::GLAccountIndex},
    {"ERExpenseAccount", &Employee::ERExpenseAccount, &Employee::ERExpenseAccount,
     &EmployeeRecord::ERExpenseAccountIndex, &EmployeeAux6Record::ExpenseAccountIndex,
     &EmployeeAux1Record::ExpenseAccountIndex, 40, "EEGLAccount"},
    {"ERLiabilityAccount", &Employee::ERLiabilityAccount, &Employee::ERLiabilityAccount,
     &EmployeeRecord::ERLiabilityAccountIndex, &EmployeeAux6Record::GLAccountIndex,
     &EmployeeAux1Record::GLAccountIndex, 40},
};

std::string NameOfAccount(const testing::TestParamInfo<AccountProperty>& tested) {
  return tested.param.name;
}

/// The property under test, of the number 5.
class EmployeeAccount : public EmployeeChartTest,
                        public testing::WithParamInterface<AccountProperty> {
 protected:
  explicit EmployeeAccount(double release = 18.9) : EmployeeChartTest(release) {}

  static std::string Get(Employee& employee) { return (employee.*GetParam().get)(5); }
  static void Let(Employee& employee, std::string_view id) { (employee.*GetParam().let)(5, id); }
  std::string Get() { return Get(employee_); }
  void Let(std::string_view id) { Let(employee_, id); }

  /// What messages about a failing step say in front of it.
  static std::string Reading(std::string_view step) {
    return "Employee." + std::string(GetParam().readUnderTheName) + "->Chart." + std::string(step);
  }
  static std::string Writing(std::string_view step) {
    return "Employee." + std::string(GetParam().name) + "->Chart." + std::string(step);
  }

  Variant StoredIndex() { return Stored(*GetParam().inRecord, 5); }
  void StoreIndex(std::int32_t account) { Store(account, *GetParam().inRecord, 5); }
};

TEST_P(EmployeeAccount, IsStoredAsTheIndexAndShownAsTheID) {
  Let("4000");
  EXPECT_EQ(Get(), "4000");
  ASSERT_EQ(employee_.Update(), StatusSuccess);
  EXPECT_EQ(StoredIndex(), Wages);
  StoreIndex(Taxes);
  EXPECT_EQ(Get(), "5000");
}

TEST_P(EmployeeAccount, ShowsTheIDThatTheAccountHasNow) {
  Let("4000");
  OpenRecordFile chart(ChartFile(), ChartRecord::Describe());
  chart.File().KeyLong(Wages, 0);
  ASSERT_EQ(chart.File().btGetEqual(3), StatusSuccess);
  chart.Record().SetText(ChartRecord::AccountID, "4100");
  ASSERT_EQ(chart.File().btUpdate(3), StatusSuccess);
  EXPECT_EQ(Get(), "4100");
}

TEST_P(EmployeeAccount, OfIndex0IsEmptyAndOpensNoFile) {
  std::filesystem::remove(ChartFile());
  EXPECT_EQ(Get(), "");
}

TEST_P(EmployeeAccount, BecomesIndex0ByTheEmptyIDAndOpensNoFile) {
  StoreIndex(Wages);
  std::filesystem::remove(ChartFile());
  Let("");
  EXPECT_EQ(Get(), "");
  ASSERT_EQ(employee_.Update(), StatusSuccess);
  EXPECT_EQ(StoredIndex(), 0);
}

// About reading, the expense accounts are called by another property's name.
TEST_P(EmployeeAccount, OfAnUnknownIndexRaises) {
  StoreIndex(Unknown);
  ExpectRaised([&] { return Get(); }, ErrorRead, Reading("GetEqual(99)"), StatusKeyNotFound);
}

TEST_P(EmployeeAccount, AssignedAnUnknownIDRaisesAndStaysAsItWas) {
  Let("4000");
  for (const std::string id : {"9999", "400", "40000", "4000 "}) {
    ExpectRaised([&] { Let(id); }, ErrorAccount, Writing("GetForAccountID(" + id + ")"),
                 StatusKeyNotFound);
    EXPECT_EQ(Get(), "4000") << id;
  }
}

TEST_P(EmployeeAccount, WithoutTheFileRaisesAtEachTryAndStaysAsItWas) {
  StoreIndex(Wages);
  {
    const TakenAway away(ChartFile());
    for (int tries = 0; tries < 2; ++tries) {
      ExpectRaised([&] { return Get(); }, ErrorOpen, Reading("OpenFile"), StatusFileNotFound);
      ExpectRaised([&] { Let("5000"); }, ErrorOpen, Writing("Open"), StatusFileNotFound);
    }
  }
  EXPECT_EQ(Get(), "4000");
}

// A file of another owner is no exception here.
TEST_P(EmployeeAccount, OfAChartOfAnotherOwnerRaisesAtEachTry) {
  StoreIndex(Wages);
  test::ProtectFile(ChartFile(), /*allowRead=*/false);
  for (int tries = 0; tries < 2; ++tries) {
    ExpectRaised([&] { return Get(); }, ErrorOpen, Reading("OpenFile"), StatusInvalidOwner);
    ExpectRaised([&] { Let("5000"); }, ErrorOpen, Writing("Open"), StatusInvalidOwner);
  }
  ASSERT_EQ(store::DefaultDriver().ClearOwner(ChartFile(), "someone"), StatusSuccess);
  EXPECT_EQ(Get(), "4000");
}

TEST_P(EmployeeAccount, OfAChartThatCannotBeWrittenRaises) {
  test::WhereOnlyThisIsReadOnly(ChartFile(), [] {
    Employee employee;
    ASSERT_EQ(employee.OpenFile(), StatusSuccess);
    ExpectRaised([&] { Let(employee, "4000"); }, ErrorOpen, Writing("Open"), StatusPermission);
  });
}

TEST_P(EmployeeAccount, KeepsTheChartOpenUntilCloseFile) {
  EXPECT_FALSE(IsHeldOpen(ChartFile()));
  Let("4000");
  EXPECT_TRUE(IsHeldOpen(ChartFile()));
  EXPECT_EQ(employee_.CloseFile(), StatusSuccess);
  EXPECT_FALSE(IsHeldOpen(ChartFile()));
}

TEST_P(EmployeeAccount, KeepsTheChartOpenAfterAnIDThatIsUnknown) {
  EXPECT_EQ(RaisedNumber([&] { Let("9999"); }), ErrorAccount);
  EXPECT_TRUE(IsHeldOpen(ChartFile()));
}

INSTANTIATE_TEST_SUITE_P(Employee, EmployeeAccount, testing::ValuesIn(AccountProperties),
                         NameOfAccount);

class EmployeeAccountBelow12 : public EmployeeAccount {
 protected:
  EmployeeAccountBelow12() : EmployeeAccount(11.9) {}
};

TEST_P(EmployeeAccountBelow12, IsEmptyAndDropsWhatIsAssigned) {
  StoreIndex(Wages);
  std::filesystem::remove(ChartFile());
  EXPECT_EQ(Get(), "");
  for (const char* id : {"5000", "no account at all", ""}) {
    EXPECT_EQ(RaisedNumber([&] { Let(id); }), 0) << id;
    EXPECT_EQ(Get(), "") << id;
  }
  ASSERT_EQ(employee_.Update(), StatusSuccess);
  EXPECT_EQ(StoredIndex(), Wages);
}

INSTANTIATE_TEST_SUITE_P(Employee, EmployeeAccountBelow12, testing::ValuesIn(AccountProperties),
                         NameOfAccount);

class EmployeeAccountFrom12 : public EmployeeAccount {
 protected:
  EmployeeAccountFrom12() : EmployeeAccount(12.0) {}
};

TEST_P(EmployeeAccountFrom12, IsLookedUp) {
  ExpectRaised([&] { Let("no account at all"); }, ErrorAccount,
               Writing("GetForAccountID(no account at all)"), StatusKeyNotFound);
  Let("4000");
  EXPECT_EQ(Get(), "4000");
  ASSERT_EQ(employee_.Update(), StatusSuccess);
  EXPECT_EQ(StoredIndex(), Wages);
}

INSTANTIATE_TEST_SUITE_P(Employee, EmployeeAccountFrom12, testing::ValuesIn(AccountProperties),
                         NameOfAccount);

// --- Accounts in the payroll rows ---

class EmployeeAccountRow : public EmployeeAccount {
 protected:
  EmployeeAccountRow() : EmployeeAccount(19.0) {}

  static std::int32_t Row(std::int32_t number = 5) { return number + GetParam().rowsBefore; }
  /// The payroll file that has the employee's rows.
  [[nodiscard]] const test::PayrollRows<std::int32_t>& Rows() const {
    return GetParam().IsOfALevel() ? payroll_.levels : payroll_.fields;
  }

  void AddRow(std::int32_t account, std::int32_t number = 5) {
    Rows().Add(Adams, Row(number), *GetParam().inRow, account);
  }
  void SetDefault(std::int32_t account) {
    if (GetParam().IsOfALevel()) return;
    payroll_.defaults.Change(All, Row(), *GetParam().inDefault, account);
  }
  Variant IndexInRow() { return Rows().Value(Adams, Row(), *GetParam().inRow); }
};

TEST_P(EmployeeAccountRow, HasTheIndexOfTheAccountShown) {
  AddRow(Wages);
  EXPECT_EQ(Get(), "4000");
}

TEST_P(EmployeeAccountRow, GoesBeforeTheDefaultThoughItHasNoAccount) {
  SetDefault(Wages);
  AddRow(0);
  EXPECT_EQ(Get(), "");
}

TEST_P(EmployeeAccountRow, ThatIsMissingLeavesTheDefaultWhereThereIsOne) {
  SetDefault(Wages);
  EXPECT_EQ(Get(), GetParam().IsOfALevel() ? "" : "4000");
}

TEST_P(EmployeeAccountRow, ThatIsMissingWithTheDefaultLeavesNoAccount) {
  StoreIndex(Wages);
  payroll_.defaults.Delete(All, Row());
  EXPECT_EQ(Get(), "") << "the record has no say any more";
}

TEST_P(EmployeeAccountRow, OfAnUnknownAccountRaises) {
  AddRow(Unknown);
  ExpectRaised([&] { return Get(); }, ErrorRead, Reading("GetEqual(99)"), StatusKeyNotFound);
}

TEST_P(EmployeeAccountRow, ThatIsMissingDropsWhatIsAssigned) {
  SetDefault(Taxes);
  Let("4000");
  EXPECT_EQ(Get(), GetParam().IsOfALevel() ? "" : "5000");
  ASSERT_EQ(employee_.CloseFile(), StatusSuccess);
  EXPECT_EQ(Rows().Count(), 0);
}

// The account is looked up before the row.
TEST_P(EmployeeAccountRow, ThatIsMissingStillRaisesForAnUnknownAccount) {
  ExpectRaised([&] { Let("9999"); }, ErrorAccount, Writing("GetForAccountID(9999)"),
               StatusKeyNotFound);
}

TEST_P(EmployeeAccountRow, ShowsWhatIsAssigned) {
  AddRow(Taxes);
  Let("4000");
  EXPECT_EQ(Get(), "4000");
  Let("");
  EXPECT_EQ(Get(), "");
}

TEST_P(EmployeeAccountRow, KeepsWhatIsAssignedOfAPayLevelOnly) {
  AddRow(Taxes);
  AddRow(0, 6);
  Let("4000");
  EXPECT_EQ((employee_.*GetParam().get)(6), "");
  EXPECT_EQ(IndexInRow(), GetParam().IsOfALevel() ? Wages : Taxes);
  Let("");
  ASSERT_EQ(employee_.CloseFile(), StatusSuccess);
  EXPECT_EQ(IndexInRow(), GetParam().IsOfALevel() ? 0 : Taxes);
}

INSTANTIATE_TEST_SUITE_P(Employee, EmployeeAccountRow, testing::ValuesIn(AccountProperties),
                         NameOfAccount);

class EmployeeAccountRows : public EmployeeChartTest {
 protected:
  EmployeeAccountRows() : EmployeeChartTest(19.0) {}
};

TEST_F(EmployeeAccountRows, OfTheEmployerHaveTwoAccounts) {
  payroll_.fields.Add(Adams, 45, [](Tovrin2Record& row) {
    row.SetLong(EmployeeAux6Record::GLAccountIndex, Wages);
    row.SetLong(EmployeeAux6Record::ExpenseAccountIndex, Taxes);
  });
  EXPECT_EQ(employee_.ERLiabilityAccount(5), "4000");
  EXPECT_EQ(employee_.ERExpenseAccount(5), "5000");
  EXPECT_EQ(employee_.EEGLAccount(5), "");
}

TEST_F(EmployeeAccountRows, AreNotFetchedForAnUnknownAccount) {
  payroll_.levels.Add(Adams, 1, [](Tovrin2Record&) {});
  payroll_.levels.Add(Adams, 2, [](Tovrin2Record&) {});
  employee_.PayRateAmount(1, 15.5);
  EXPECT_EQ(RaisedNumber([&] { employee_.AcctDataGLAccount(2, "9999"); }), ErrorAccount);
  EXPECT_EQ(payroll_.levels.Value(Adams, 1, EmployeeAux5Record::PayRateAmount), 0.0)
      << "fetching row 2 would have written row 1";
}

// --- Which account an index means ---

class EmployeeLevelAccount : public EmployeeChartTest, public testing::WithParamInterface<double> {
 protected:
  EmployeeLevelAccount() : EmployeeChartTest(GetParam()) {
    if (GetParam() < 19) {
      Store(Wages, EmployeeRecord::AcctDataGLAccountIndex, 1);
      Store(Taxes, EmployeeRecord::AcctDataGLAccountIndex, 20);
    } else {
      payroll_.levels.Add(Adams, 1, EmployeeAux5Record::GLAccountIndex, Wages);
      payroll_.levels.Add(Adams, 20, EmployeeAux5Record::GLAccountIndex, Taxes);
    }
  }
};

TEST_P(EmployeeLevelAccount, OfAnIndexOutsideIsTheNearest) {
  EXPECT_EQ(employee_.AcctDataGLAccount(1), "4000");
  EXPECT_EQ(employee_.AcctDataGLAccount(0), "4000");
  EXPECT_EQ(employee_.AcctDataGLAccount(-32768), "4000");
  EXPECT_EQ(employee_.AcctDataGLAccount(2), "");
  EXPECT_EQ(employee_.AcctDataGLAccount(20), "5000");
  EXPECT_EQ(employee_.AcctDataGLAccount(25), "5000");
  EXPECT_EQ(employee_.AcctDataGLAccount(32767), "5000");
}

TEST_P(EmployeeLevelAccount, AssignedOutsideIsTheNearestToo) {
  employee_.AcctDataGLAccount(0, "5000");
  EXPECT_EQ(employee_.AcctDataGLAccount(1), "5000");
  employee_.AcctDataGLAccount(25, "4000");
  EXPECT_EQ(employee_.AcctDataGLAccount(20), "4000");
}

INSTANTIATE_TEST_SUITE_P(Employee, EmployeeLevelAccount, testing::Values(12.0, 18.9, 19.0));

class EmployeeFieldAccounts : public EmployeeChartTest {
 protected:
  EmployeeFieldAccounts() : EmployeeChartTest(18.9) {}
};

TEST_F(EmployeeFieldAccounts, OfAnIndexOutsideRaise9) {
  for (const std::int16_t field : {std::int16_t{-1}, std::int16_t{32767}}) {
    EXPECT_EQ(RaisedNumber([&] { return employee_.EEGLAccount(field); }), 9) << field;
    EXPECT_EQ(RaisedNumber([&] { employee_.EEGLAccount(field, "4000"); }), 9) << field;
    EXPECT_EQ(RaisedNumber([&] { return employee_.ERExpenseAccount(field); }), 9) << field;
    EXPECT_EQ(RaisedNumber([&] { employee_.ERExpenseAccount(field, "4000"); }), 9) << field;
    EXPECT_EQ(RaisedNumber([&] { return employee_.ERLiabilityAccount(field); }), 9) << field;
    EXPECT_EQ(RaisedNumber([&] { employee_.ERLiabilityAccount(field, "4000"); }), 9) << field;
  }
}

// --- The chart over a second OpenFile ---

using EmployeeChartFile = EmployeeFieldAccounts;

// OpenFile takes the chart for closed, so that the CloseFile after it passes it over.
TEST_F(EmployeeChartFile, StaysOpenFromASecondOpenFileToDestruction) {
  {
    Employee employee;
    ASSERT_EQ(employee.OpenFile(), StatusSuccess);
    employee.EEGLAccount(1, "4000");
    ASSERT_EQ(employee.OpenFile(), StatusSuccess);
    EXPECT_TRUE(IsHeldOpen(ChartFile()));
    ASSERT_EQ(employee.CloseFile(), StatusSuccess);
    EXPECT_TRUE(IsHeldOpen(ChartFile()));
  }
  EXPECT_FALSE(IsHeldOpen(ChartFile()));
}

TEST_F(EmployeeChartFile, StaysKnownToBeOpenOverAnOpenFileThatFails) {
  employee_.EEGLAccount(1, "4000");
  {
    const TakenAway away(EmployeeFile());
    EXPECT_EQ(employee_.OpenFile(), StatusFileNotFound);
  }
  EXPECT_TRUE(IsHeldOpen(ChartFile()));
  EXPECT_EQ(employee_.CloseFile(), StatusFileNotOpen);
  EXPECT_FALSE(IsHeldOpen(ChartFile()));
}

TEST_F(EmployeeChartFile, ThatFailsToCloseIsNotTold) {
  test::RunInChild([&] {
    Employee employee;
    ASSERT_EQ(employee.OpenFile(), StatusSuccess);
    employee.EEGLAccount(1, "4000");
    AddAccount(company_.Folder(), {"7000", 19});
    test::BreakDisk(ChartFile());
    EXPECT_EQ(employee.CloseFile(), StatusSuccess);
  });
}

// --- The chart in memory ---

class EmployeeChartCache : public EmployeeChartTest {
 protected:
  explicit EmployeeChartCache(double release = 18.9) : EmployeeChartTest(release) {}

  /// Whether accounts are looked up in memory: there an unknown one is no error.
  bool IsOn() {
    return RaisedNumber([&] { employee_.EEGLAccount(40, "9999"); }) == 0;
  }
};

TEST_F(EmployeeChartCache, AnswersWithoutTheFile) {
  Store(Wages, EmployeeRecord::EEGLAccountIndex, 1);
  ASSERT_EQ(employee_.CacheCharts(true), StatusSuccess);
  std::filesystem::remove(ChartFile());
  EXPECT_EQ(employee_.EEGLAccount(1), "4000");
  employee_.EEGLAccount(2, "5000");
  EXPECT_EQ(employee_.EEGLAccount(2), "5000");
  ASSERT_EQ(employee_.Update(), StatusSuccess);
  EXPECT_EQ(Stored(EmployeeRecord::EEGLAccountIndex, 2), Taxes);
}

TEST_F(EmployeeChartCache, ServesAllAccountProperties) {
  ASSERT_EQ(employee_.CacheCharts(true), StatusSuccess);
  std::filesystem::remove(ChartFile());
  for (const AccountProperty& property : AccountProperties) {
    (employee_.*property.let)(3, "4000");
    EXPECT_EQ((employee_.*property.get)(3), "4000") << property.name;
    (employee_.*property.let)(3, "9999");
    EXPECT_EQ((employee_.*property.get)(3), "") << property.name;
  }
}

TEST_F(EmployeeChartCache, HoldsTheWholeChart) {
  {
    OpenRecordFile chart(ChartFile(), ChartRecord::Describe());
    BulkWrite bulk;
    for (std::int32_t number = 1; number <= 300; ++number) {
      chart.Add([&](Tovrin2Record& record) {
        record.SetText(ChartRecord::AccountID, "N" + std::to_string(number));
        record.SetLong(ChartRecord::Index, 1000 + number);
      });
    }
    ASSERT_EQ(bulk.Commit(), StatusSuccess);
  }
  ASSERT_EQ(employee_.CacheCharts(true), StatusSuccess);
  std::filesystem::remove(ChartFile());
  for (const char* id : {"4000", "5000", "N1", "N2", "N150", "N299", "N300"}) {
    employee_.EEGLAccount(1, id);
    EXPECT_EQ(employee_.EEGLAccount(1), id);
  }
}

TEST_F(EmployeeChartCache, LeavesTheChartClosed) {
  ASSERT_EQ(employee_.CacheCharts(true), StatusSuccess);
  EXPECT_FALSE(IsHeldOpen(ChartFile()));
  employee_.EEGLAccount(1, "4000");
  EXPECT_FALSE(IsHeldOpen(ChartFile()));
}

TEST_F(EmployeeChartCache, ClosesAChartThatALookUpHadOpened) {
  employee_.EEGLAccount(1, "4000");
  EXPECT_TRUE(IsHeldOpen(ChartFile()));
  ASSERT_EQ(employee_.CacheCharts(true), StatusSuccess);
  EXPECT_FALSE(IsHeldOpen(ChartFile()));
  EXPECT_EQ(employee_.EEGLAccount(1), "4000");
}

TEST_F(EmployeeChartCache, NeedsNoFileThatALookUpHadOpened) {
  employee_.EEGLAccount(1, "4000");
  const TakenAway away(ChartFile());
  EXPECT_EQ(employee_.CacheCharts(true), StatusSuccess);
  EXPECT_EQ(employee_.EEGLAccount(1), "4000");
}

TEST_F(EmployeeChartCache, ReadsAnUnknownIndexAsEmpty) {
  Store(Unknown, EmployeeRecord::EEGLAccountIndex, 1);
  ASSERT_EQ(employee_.CacheCharts(true), StatusSuccess);
  EXPECT_EQ(employee_.EEGLAccount(1), "");
}

TEST_F(EmployeeChartCache, StoresAnUnknownIDAsNone) {
  ASSERT_EQ(employee_.CacheCharts(true), StatusSuccess);
  for (const char* id : {"9999", "400", "40000", "4000 ", ""}) {
    employee_.EEGLAccount(1, "4000");
    employee_.EEGLAccount(1, id);
    EXPECT_EQ(employee_.EEGLAccount(1), "") << id;
  }
  ASSERT_EQ(employee_.Update(), StatusSuccess);
  EXPECT_EQ(Stored(EmployeeRecord::EEGLAccountIndex, 1), 0);
}

TEST_F(EmployeeChartCache, DoesNotSeeLaterAccounts) {
  Store(19, EmployeeRecord::EEGLAccountIndex, 1);
  ASSERT_EQ(employee_.CacheCharts(true), StatusSuccess);
  AddAccount(company_.Folder(), {"7000", 19});
  EXPECT_EQ(employee_.EEGLAccount(1), "");
  employee_.EEGLAccount(2, "7000");
  EXPECT_EQ(employee_.EEGLAccount(2), "");
}

TEST_F(EmployeeChartCache, IsOffUntilAskedFor) { EXPECT_FALSE(IsOn()); }

TEST_F(EmployeeChartCache, GoesOffByASecondTrueAndOnByAThird) {
  EXPECT_EQ(employee_.CacheCharts(true), StatusSuccess);
  EXPECT_TRUE(IsOn());
  EXPECT_EQ(employee_.CacheCharts(true), StatusSuccess);
  EXPECT_FALSE(IsOn());
  EXPECT_EQ(employee_.CacheCharts(true), StatusSuccess);
  EXPECT_TRUE(IsOn());
}

TEST_F(EmployeeChartCache, GoesOffByFalse) {
  EXPECT_EQ(employee_.CacheCharts(true), StatusSuccess);
  EXPECT_EQ(employee_.CacheCharts(false), StatusSuccess);
  EXPECT_FALSE(IsOn());
  EXPECT_EQ(employee_.CacheCharts(false), StatusSuccess);
  EXPECT_FALSE(IsOn());
}

TEST_F(EmployeeChartCache, GoesOffByOpenFile) {
  ASSERT_EQ(employee_.CacheCharts(true), StatusSuccess);
  ASSERT_EQ(employee_.OpenFile(), StatusSuccess);
  EXPECT_FALSE(IsOn());
}

TEST_F(EmployeeChartCache, GoesOffByAnOpenFileThatFails) {
  ASSERT_EQ(employee_.CacheCharts(true), StatusSuccess);
  {
    const TakenAway away(EmployeeFile());
    EXPECT_EQ(employee_.OpenFile(), StatusFileNotFound);
  }
  EXPECT_FALSE(IsOn());
}

TEST_F(EmployeeChartCache, GoesOffByCloseFile) {
  ASSERT_EQ(employee_.CacheCharts(true), StatusSuccess);
  ASSERT_EQ(employee_.CloseFile(), StatusSuccess);
  EXPECT_FALSE(IsOn());
}

TEST_F(EmployeeChartCache, IsNotToldByFalseThatTheFileIsMissing) {
  std::filesystem::remove(ChartFile());
  EXPECT_EQ(employee_.CacheCharts(false), StatusSuccess);
}

TEST_F(EmployeeChartCache, StaysOffWithoutTheFileAndAnswersItsStatus) {
  {
    const TakenAway away(ChartFile());
    EXPECT_EQ(employee_.CacheCharts(true), StatusFileNotFound);
  }
  EXPECT_FALSE(IsOn());
  EXPECT_EQ(employee_.CacheCharts(true), StatusSuccess);
  EXPECT_TRUE(IsOn());
}

TEST_F(EmployeeChartCache, StaysOffWithAChartOfAnotherOwner) {
  test::ProtectFile(ChartFile(), /*allowRead=*/false);
  EXPECT_EQ(employee_.CacheCharts(true), StatusInvalidOwner);
  ASSERT_EQ(store::DefaultDriver().ClearOwner(ChartFile(), "someone"), StatusSuccess);
  EXPECT_FALSE(IsOn());
}

TEST_F(EmployeeChartCache, StaysOffWithAChartThatCannotBeWritten) {
  test::WhereOnlyThisIsReadOnly(ChartFile(), [] {
    Employee employee;
    ASSERT_EQ(employee.OpenFile(), StatusSuccess);
    EXPECT_EQ(employee.CacheCharts(true), StatusPermission);
  });
}

// Such an object knows no release yet.
TEST_F(EmployeeChartCache, OfAnObjectThatNeverWasOpenReadsNothing) {
  std::filesystem::remove(ChartFile());
  EXPECT_EQ(Employee().CacheCharts(true), StatusSuccess);
}

class EmployeeChartCacheBelow11 : public EmployeeChartCache {
 protected:
  EmployeeChartCacheBelow11() : EmployeeChartCache(10.9) {}
};

TEST_F(EmployeeChartCacheBelow11, ReadsNothing) {
  std::filesystem::remove(ChartFile());
  EXPECT_EQ(employee_.CacheCharts(true), StatusSuccess);
}

class EmployeeChartCacheFrom11 : public EmployeeChartCache {
 protected:
  EmployeeChartCacheFrom11() : EmployeeChartCache(11.0) {}
};

TEST_F(EmployeeChartCacheFrom11, ReadsTheChart) {
  EXPECT_EQ(employee_.CacheCharts(true), StatusSuccess);
  std::filesystem::remove(ChartFile());
  EXPECT_EQ(employee_.CacheCharts(true), StatusSuccess) << "this one switches it off";
  EXPECT_EQ(employee_.CacheCharts(true), StatusFileNotFound);
}

class EmployeeChartCacheFrom19 : public EmployeeChartCache {
 protected:
  EmployeeChartCacheFrom19() : EmployeeChartCache(19.0) {
    payroll_.levels.Add(Adams, 1, EmployeeAux5Record::GLAccountIndex, Wages);
    payroll_.fields.Add(Adams, 1, EmployeeAux6Record::GLAccountIndex, Unknown);
    EXPECT_EQ(employee_.CacheCharts(true), StatusSuccess);
    std::filesystem::remove(ChartFile());
  }
};

TEST_F(EmployeeChartCacheFrom19, ServesThePayrollRows) {
  EXPECT_EQ(employee_.AcctDataGLAccount(1), "4000");
  EXPECT_EQ(employee_.EEGLAccount(1), "");
  employee_.EEGLAccount(1, "5000");
  EXPECT_EQ(employee_.EEGLAccount(1), "5000");
}

TEST_F(EmployeeChartCacheFrom19, StoresAnUnknownIDAsNone) {
  employee_.AcctDataGLAccount(1, "9999");
  ASSERT_EQ(employee_.CloseFile(), StatusSuccess);
  EXPECT_EQ(payroll_.levels.Value(Adams, 1, EmployeeAux5Record::GLAccountIndex), 0);
}

TEST_F(EmployeeChartCacheFrom19, KnowsNoErrorForARowThatIsMissing) {
  employee_.AcctDataGLAccount(2, "9999");
  EXPECT_EQ(employee_.AcctDataGLAccount(2), "");
}

}  // namespace
}  // namespace larkmoor
