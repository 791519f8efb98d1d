// The properties of the class PayrollJournal: what a paycheck calls the fields of its header and of
// its two kinds of rows, the employees and accounts behind them, and what goes by the release.
#include <bit>
#include <cstdint>
#include <filesystem>
#include <vector>

#include <gtest/gtest.h>

#include <larkmoor/date.h>
#include <larkmoor/journal_code.h>
#include <larkmoor/journals/payroll_journal.h>
#include <larkmoor/status.h>

#include "connection/shared_state.h"
#include "connection/status_messages.h"
#include "engine/records/jrnl_hdr.h"
#include "engine/records/jrnl_row.h"
#include "engine/runtime_error.h"
#include "support/accounts.h"
#include "support/company.h"
#include "support/errors.h"
#include "support/journal_fixture.h"
#include "support/journals.h"
#include "support/masters.h"
#include "support/paychecks.h"
#include "support/raised_errors.h"
#include "support/record_files.h"
#include "support/taken_away.h"

namespace larkmoor {
namespace {

using test::AddAccount;
using test::AddEmployee;
using test::ExpectRaised;
using test::JournalFiles;
using test::RaisedNumber;
using test::TakenAway;
using Longs = std::vector<std::int32_t>;

// Journals, as headers bear them.
constexpr std::int16_t Paycheck = tovJournalCodePayroll;
constexpr std::int16_t Invoice = tovJournalCodeSales;

/// An index that a row can hold and an Integer cannot.
constexpr std::int32_t BeyondInteger = 40000;

class PayrollJournalPropertiesTest : public test::JournalFixture<PayrollJournal> {
 protected:
  /// Lays a transaction of journal `code` with that party and no rows.
  void AddHeader(std::int16_t code, std::int32_t party) {
    files_.AddHeader({.nRecord = 1, .journal = code, .idNumber = party});
  }
  /// Opens the journal and takes that header in hand.
  void LoadHeader(std::int16_t code, std::int32_t party) {
    AddHeader(code, party);
    Open();
    journal_.GetEqual(1);
  }

  /// Lays a pay row and a labor row of paycheck 1 with one field set alike and loads them.
  void LoadRowsWith(const Field& field, std::int32_t value) {
    LayRowsWith(field, value);
    Load(1);
  }
  void LayRowsWith(const Field& field, std::int32_t value) {
    files_.AddHeader({.nRecord = 1, .journal = Paycheck});
    constexpr std::int32_t Jobs[] = {0, 7};
    for (const std::int32_t job : Jobs) {
      files_.AddRow(1, [&](Tovrin2Record& row) {
        row.SetLong(JrnlRowRecord::JobIndex, job);
        row.SetLong(field, value);
      });
    }
  }
};

using PayrollJournalHeader = PayrollJournalPropertiesTest;
using PayrollJournalPay = PayrollJournalPropertiesTest;
using PayrollJournalLabor = PayrollJournalPropertiesTest;
using PayrollJournalEmployee = PayrollJournalPropertiesTest;
using PayrollJournalRowEmployees = PayrollJournalPropertiesTest;
using PayrollJournalAccounts = PayrollJournalPropertiesTest;
using PayrollJournalCounters = PayrollJournalPropertiesTest;

// --- The header ---

TEST_F(PayrollJournalHeader, NamesFieldsInTheWordsOfAPaycheck) {
  Open();
  journal_.NRecord(1);
  journal_.BeginningBalanceFlag(true);
  journal_.CashAmount(12.5);
  journal_.CheckNumber("1001");
  journal_.EmployeeName("Ada Adams");
  journal_.HoursSalaryAmount(2, 38.5);
  EXPECT_EQ(journal_.MainAmount(), 12.5);
  journal_.MainAmount(-13.5);
  EXPECT_EQ(journal_.CashAmount(), -13.5);
  ASSERT_EQ(journal_.Insert(), StatusSuccess);
  files_.OfHeader(1, [](Tovrin2Record& header) {
    EXPECT_TRUE(header.GetBoolean(JrnlHdrRecord::BeginningBalance));
    EXPECT_EQ(header.GetDouble(JrnlHdrRecord::Amount), -13.5);
    EXPECT_EQ(header.GetText(JrnlHdrRecord::Reference), "1001");
    EXPECT_EQ(header.GetText(JrnlHdrRecord::Description), "Ada Adams");
    EXPECT_EQ(header.GetDouble(JrnlHdrRecord::PayLevel, 2), 38.5);
  });
}

TEST_F(PayrollJournalHeader, HoursSalaryAmountBringsTheLevelBetween1And20) {
  Open();
  journal_.HoursSalaryAmount(0, 1.5);
  EXPECT_EQ(journal_.HoursSalaryAmount(1), 1.5);
  journal_.HoursSalaryAmount(1, 2.5);
  EXPECT_EQ(journal_.HoursSalaryAmount(-3), 2.5);
  journal_.HoursSalaryAmount(25, 3.5);
  EXPECT_EQ(journal_.HoursSalaryAmount(20), 3.5);
  EXPECT_EQ(journal_.HoursSalaryAmount(21), 3.5);
  EXPECT_EQ(journal_.HoursSalaryAmount(19), 0);
}

// Elsewhere these names reach the main account and the mark of a partner.
TEST_F(PayrollJournalHeader, CashAccountAndReimbursableExpenseStoreNothing) {
  AddAccount(company_.Folder(), {"1100", 5});
  Open();
  journal_.NRecord(1);
  journal_.CashAccount("1100");
  journal_.CashAccount("no account");
  journal_.ReimbursableExpense(true);
  EXPECT_EQ(journal_.CashAccount(), "");
  EXPECT_FALSE(journal_.ReimbursableExpense());
  EXPECT_EQ(journal_.MainAccount(), "");
  ASSERT_EQ(journal_.Insert(), StatusSuccess);
  EXPECT_FALSE(files_.OfHeader(
      1, [](Tovrin2Record& header) { return header.GetBoolean(JrnlHdrRecord::HasPartner); }));
}

TEST_F(PayrollJournalHeader, TrxNumberIsTheNumberInSixteenBits) {
  Open();
  journal_.TrxNumber(-1);
  EXPECT_EQ(journal_.TrxNumberL(), -1);
  journal_.TrxNumberL(BeyondInteger);
  EXPECT_EQ(RaisedNumber([&] { return journal_.TrxNumber(); }), errors::Overflow);
}

TEST_F(PayrollJournalHeader, KeyPacksTheReferenceAndClearsSubindex2) {
  Open();
  journal_.Subindex1(7);
  journal_.TrxNumberL(300);
  journal_.Period(6);
  journal_.JournalID(Paycheck);
  journal_.Subindex2(1);
  const double key = journal_.Key();
  EXPECT_EQ(std::bit_cast<std::uint64_t>(key), 0x0005'0006'012C'0007U);
  ASSERT_EQ(journal_.ClearRecord(), StatusSuccess);
  journal_.Subindex2(1);
  journal_.Key(key);
  EXPECT_EQ(journal_.Subindex1(), 7);
  EXPECT_EQ(journal_.TrxNumberL(), 300);
  EXPECT_EQ(journal_.Period(), 6);
  EXPECT_EQ(journal_.JournalID(), Paycheck);
  EXPECT_EQ(journal_.Subindex2(), 0);
}

// --- Pay rows ---

constexpr const char* SomeGuid = "3F2504E0-4F89-11D3-9A0C-0305E82C3301";

TEST_F(PayrollJournalPay, NamesFieldsOfItsRow) {
  const Date day = Date::FromYmd(2024, 3, 15);
  Open();
  journal_.NRecord(1);
  journal_.PayAmount(1, 1.5);
  journal_.PayDateCleared(1, day);
  journal_.PayDescription(1, "Gross");
  journal_.PayFieldNumber(1, 2);
  journal_.PayFlag1(1, true);
  journal_.PayGUID(1, SomeGuid);
  journal_.PayJournalRowEx(1, 3);
  journal_.PayLastUpdateCounter(1, 4);
  journal_.PayLineNo(1, 5);
  journal_.PayNField(1, 6);
  journal_.PayQuantity(1, 7.5);
  journal_.PayTrxType(1, 8);
  ASSERT_EQ(journal_.Insert(), StatusSuccess);
  const auto rows = files_.OfRows(1, [&](Tovrin2Record& row) {
    EXPECT_EQ(row.GetDouble(JrnlRowRecord::Amount), 1.5);
    EXPECT_EQ(row.GetDate(JrnlRowRecord::DateCleared), day.Serial());
    EXPECT_EQ(row.GetText(JrnlRowRecord::Description), "Gross");
    EXPECT_EQ(row.GetInteger(JrnlRowRecord::OrderLine), 2);
    EXPECT_TRUE(row.GetBoolean(JrnlRowRecord::Flag1));
    EXPECT_FALSE(row.GetBoolean(JrnlRowRecord::ReimbursableExpense));
    EXPECT_EQ(row.GetText(JrnlRowRecord::GUID), SomeGuid);
    EXPECT_EQ(row.GetLong(JrnlRowRecord::JournalRowEx), 3);
    EXPECT_EQ(row.GetLong(JrnlRowRecord::LastUpdateCounter), 4);
    EXPECT_EQ(row.GetInteger(JrnlRowRecord::LineNo), 5);
    EXPECT_EQ(row.GetInteger(JrnlRowRecord::PayrollItemIndex), 6);
    EXPECT_EQ(row.GetDouble(JrnlRowRecord::StockingUnitPrice), 7.5);
    EXPECT_EQ(row.GetLong(JrnlRowRecord::TrxType), 8);
    return true;
  });
  EXPECT_EQ(rows.size(), 1U);
}

TEST_F(PayrollJournalPay, Flag2IsTheSecondMarkOfItsRow) {
  Open();
  journal_.NRecord(1);
  journal_.PayFlag2(1, true);
  EXPECT_FALSE(journal_.PayFlag1(1));
  ASSERT_EQ(journal_.Insert(), StatusSuccess);
  EXPECT_EQ(
      files_.OfRows(
          1, [](Tovrin2Record& row) { return row.GetBoolean(JrnlRowRecord::ReimbursableExpense); }),
      std::vector<bool>{true});
}

// A move to row 11 would make the list grow.
TEST_F(PayrollJournalPay, MemoAmountAndUnused2HaveNoRow) {
  Add(Paycheck, 1, "1001");
  Load(1);
  journal_.PayMemoAmount(11, 5);
  EXPECT_EQ(journal_.PayMemoAmount(11), 0);
  journal_.Unused2(11, 5);
  EXPECT_EQ(journal_.Unused2(11), 0);
  EXPECT_EQ(journal_.NDistributions(), 1);
  journal_.PayLineNo(11);
  EXPECT_EQ(journal_.NDistributions(), 11) << "a stored one has";
}

// --- Labor rows ---

TEST_F(PayrollJournalLabor, NamesFieldsOfItsRow) {
  const Date day = Date::FromYmd(2024, 3, 15);
  Open();
  journal_.NRecord(1);
  journal_.JobAmount(1, 1.5);
  journal_.JobCostIndex(1, 2);
  journal_.JobDateCleared(1, day);
  journal_.JobFieldNumber(1, 3);
  journal_.JobFlag1(1, true);
  journal_.JobGUID(1, SomeGuid);
  journal_.JobHours(1, 4.5);
  journal_.JobJobIndex(1, 5);
  journal_.JobJournalRowEx(1, 6);
  journal_.JobLastUpdateCounter(1, 7);
  journal_.JobLevel(1, 8);
  journal_.JobPhaseIndex(1, 9);
  journal_.JobTrxType(1, 10);
  ASSERT_EQ(journal_.Insert(), StatusSuccess);
  const auto rows = files_.OfRows(1, [&](Tovrin2Record& row) {
    EXPECT_EQ(row.GetDouble(JrnlRowRecord::Amount), 1.5);
    EXPECT_EQ(row.GetLong(JrnlRowRecord::CostIndex), 2);
    EXPECT_EQ(row.GetDate(JrnlRowRecord::DateCleared), day.Serial());
    EXPECT_EQ(row.GetInteger(JrnlRowRecord::OrderLine), 3);
    EXPECT_TRUE(row.GetBoolean(JrnlRowRecord::Flag1));
    EXPECT_FALSE(row.GetBoolean(JrnlRowRecord::ReimbursableExpense));
    EXPECT_EQ(row.GetText(JrnlRowRecord::GUID), SomeGuid);
    EXPECT_EQ(row.GetDouble(JrnlRowRecord::StockingUnitPrice), 4.5);
    EXPECT_EQ(row.GetLong(JrnlRowRecord::JobIndex), 5);
    EXPECT_EQ(row.GetLong(JrnlRowRecord::JournalRowEx), 6);
    EXPECT_EQ(row.GetLong(JrnlRowRecord::LastUpdateCounter), 7);
    EXPECT_EQ(row.GetInteger(JrnlRowRecord::LineNo), 9) << "one more than the level";
    EXPECT_EQ(row.GetLong(JrnlRowRecord::PhaseIndex), 9);
    EXPECT_EQ(row.GetLong(JrnlRowRecord::TrxType), 10);
    return true;
  });
  EXPECT_EQ(rows.size(), 1U);
}

TEST_F(PayrollJournalLabor, Flag2IsTheSecondMarkOfItsRow) {
  Open();
  journal_.NRecord(1);
  journal_.JobFlag2(1, true);
  EXPECT_FALSE(journal_.JobFlag1(1));
  ASSERT_EQ(journal_.Insert(), StatusSuccess);
  EXPECT_EQ(
      files_.OfRows(
          1, [](Tovrin2Record& row) { return row.GetBoolean(JrnlRowRecord::ReimbursableExpense); }),
      std::vector<bool>{true});
}

TEST_F(PayrollJournalLabor, LevelIsOneLessThanTheLine) {
  files_.AddHeader({.nRecord = 1, .journal = Paycheck});
  constexpr std::int16_t Lines[] = {1, 0, -32768};
  for (const std::int16_t line : Lines) {
    files_.AddRow(1, [&](Tovrin2Record& row) {
      row.SetLong(JrnlRowRecord::JobIndex, 7);
      row.SetInteger(JrnlRowRecord::LineNo, line);
    });
  }
  Load(1);
  EXPECT_EQ(journal_.JobLevel(1), 0);
  EXPECT_EQ(journal_.JobLevel(2), -1);
  EXPECT_EQ(RaisedNumber([&] { return journal_.JobLevel(3); }), errors::Overflow);
}

TEST_F(PayrollJournalLabor, LevelWithoutALineRaises6AndStaysAsItWas) {
  Open();
  journal_.JobLevel(1, 32766);
  EXPECT_EQ(journal_.JobLevel(1), 32766);
  EXPECT_EQ(RaisedNumber([&] { journal_.JobLevel(1, 32767); }), errors::Overflow);
  EXPECT_EQ(journal_.JobLevel(1), 32766);
}

TEST_F(PayrollJournalLabor, LineNoIsTheNumberThatWasAskedFor) {
  files_.AddHeader({.nRecord = 1, .journal = Paycheck});
  files_.AddRow(1, [](Tovrin2Record& row) {
    row.SetLong(JrnlRowRecord::JobIndex, 7);
    row.SetInteger(JrnlRowRecord::LineNo, 33);
  });
  Load(1);
  EXPECT_EQ(journal_.JobLineNo(1), 1);
  EXPECT_EQ(journal_.JobLineNo(-5), -5);
  journal_.JobLineNo(1, 44);
  EXPECT_EQ(journal_.JobLineNo(1), 1);
  EXPECT_EQ(journal_.JobLevel(1), 32);
  EXPECT_EQ(journal_.JobLineNo(300), 300);
  journal_.JobLineNo(300, 44);
  EXPECT_EQ(journal_.NLaborDistributions(), 1) << "there is no move to the row";
  EXPECT_EQ(messages_.Texts(), Messages{});
}

TEST_F(PayrollJournalLabor, UnknownHasNoRow) {
  files_.AddHeader({.nRecord = 1, .journal = Paycheck});
  test::AddLabor(files_, 1, 10);
  Load(1);
  journal_.JobUnknown(11, 5);
  EXPECT_EQ(journal_.JobUnknown(11), 0);
  EXPECT_EQ(journal_.JobUnknown(0), 0);
  EXPECT_EQ(journal_.NLaborDistributions(), 1);
  EXPECT_EQ(messages_.Texts(), Messages{});
}

/// Hours and quantities of a paycheck that has one labor row and one pay row, both with the unit
/// price 1.5 and the stocking unit price 2.5.
struct Hours {
  double labor;
  double pay;
};

/// Lays that paycheck, reads hours and quantity and sets both to 9.
Hours ReadAndSetHours(const JournalFiles& files, PayrollJournal& journal) {
  files.AddHeader({.nRecord = 1, .journal = Paycheck});
  constexpr std::int32_t Jobs[] = {7, 0};
  for (const std::int32_t job : Jobs) {
    files.AddRow(1, [&](Tovrin2Record& row) {
      row.SetLong(JrnlRowRecord::JobIndex, job);
      row.SetDouble(JrnlRowRecord::UnitPrice, 1.5);
      row.SetDouble(JrnlRowRecord::StockingUnitPrice, 2.5);
    });
  }
  EXPECT_EQ(journal.GetEqual(1), StatusSuccess);
  const double pay = journal.PayQuantity(1);
  journal.PayQuantity(1, 9);
  journal.PayAmount(0);  // puts the pay row away
  const double labor = journal.JobHours(1);
  journal.JobHours(1, 9);
  EXPECT_EQ(journal.Update(), StatusSuccess);
  return {.labor = labor, .pay = pay};
}

TEST_F(PayrollJournalLabor, HoursAreTheUnitPriceBelowRelease13AndTheStockingUnitPriceFromItOn) {
  InEveryRelease([](const JournalFiles& files, PayrollJournal& journal) {
    const bool isOld = Shared().gDataVersion < 13.0;
    const Hours read = ReadAndSetHours(files, journal);
    EXPECT_EQ(read.labor, isOld ? 1.5 : 2.5);
    EXPECT_EQ(read.pay, 2.5) << "the quantity of a pay row is the same in all releases";
    const auto unitPrices =
        files.OfRows(1, [](Tovrin2Record& row) { return row.GetDouble(JrnlRowRecord::UnitPrice); });
    const auto stockingUnitPrices = files.OfRows(
        1, [](Tovrin2Record& row) { return row.GetDouble(JrnlRowRecord::StockingUnitPrice); });
    // The pay row is written first.
    EXPECT_EQ(unitPrices, (std::vector<double>{1.5, isOld ? 9 : 1.5}));
    EXPECT_EQ(stockingUnitPrices, (std::vector<double>{9, isOld ? 2.5 : 9}));
  });
}

TEST_F(PayrollJournalLabor, HoursGoByTheReleaseThatWasOpenedLast) {
  Open();
  journal_.JobHours(1, 4.5);
  Shared().gDataVersion = 12.9;
  EXPECT_EQ(journal_.JobHours(1), 0);
  Shared().gDataVersion = 13.0;
  EXPECT_EQ(journal_.JobHours(1), 4.5);
}

// --- EmployeeID ---

TEST_F(PayrollJournalEmployee, IsTheIdOfTheEmployeeInTheHeader) {
  AddEmployee(company_.Folder(), {"ADAMS", 11});
  Open();
  journal_.NRecord(1);
  journal_.JournalID(Paycheck);
  EXPECT_EQ(journal_.EmployeeID(), "");
  journal_.EmployeeID("ADAMS");
  EXPECT_EQ(journal_.EmployeeID(), "ADAMS");
  ASSERT_EQ(journal_.Insert(), StatusSuccess);
  EXPECT_EQ(files_.Long(1, JrnlHdrRecord::IDNumber), 11);
  journal_.EmployeeID("");
  ASSERT_EQ(journal_.Update(), StatusSuccess);
  EXPECT_EQ(files_.Long(1, JrnlHdrRecord::IDNumber), 0);
}

TEST_F(PayrollJournalEmployee, OfAnotherJournalIsEmptyButCanBeAssigned) {
  AddEmployee(company_.Folder(), {"ADAMS", 11});
  AddEmployee(company_.Folder(), {"BAKER", 12});
  LoadHeader(Invoice, 11);
  EXPECT_EQ(journal_.EmployeeID(), "");
  journal_.EmployeeID("BAKER");
  EXPECT_EQ(journal_.EmployeeID(), "");
  journal_.JournalID(Paycheck);
  EXPECT_EQ(journal_.EmployeeID(), "BAKER");
}

TEST_F(PayrollJournalEmployee, ThatIsUnknownRaisesAndStaysAsItWas) {
  LoadHeader(Paycheck, 77);
  ExpectRaised([&] { return journal_.EmployeeID(); }, ErrorRead,
               "JrnlHdr.IDText->Employee.GetForIndex(77)", StatusKeyNotFound);
  ExpectRaised([&] { journal_.EmployeeID("NOBODY"); }, ErrorRead,
               "JrnlHdr.IDText->Employee.GetEqual(NOBODY)", StatusKeyNotFound);
  AddEmployee(company_.Folder(), {"ADAMS", 77});
  EXPECT_EQ(journal_.EmployeeID(), "ADAMS");
}

// The refusal is passed over in silence; only the empty text still takes the employee away.
TEST_F(PayrollJournalEmployee, WhereEmployeesAreProtectedIsEmptyAndCanOnlyBeTakenAway) {
  AddEmployee(company_.Folder(), {"ADAMS", 11});
  AddEmployee(company_.Folder(), {"BAKER", 12});
  AddHeader(Paycheck, 11);
  test::ProtectFile(Employees(), /*allowRead=*/false);
  ASSERT_EQ(journal_.OpenFile(), StatusInvalidOwner);
  journal_.GetEqual(1);
  EXPECT_EQ(journal_.EmployeeID(), "");
  journal_.EmployeeID("BAKER");
  journal_.EmployeeID("NOBODY");
  ASSERT_EQ(journal_.Update(), StatusSuccess);
  EXPECT_EQ(files_.Long(1, JrnlHdrRecord::IDNumber), 11);
  journal_.EmployeeID("");
  ASSERT_EQ(journal_.Update(), StatusSuccess);
  EXPECT_EQ(files_.Long(1, JrnlHdrRecord::IDNumber), 0);
}

// A missing file is a failure, and it is not opened later.
TEST_F(PayrollJournalEmployee, WhereEmployeesWereMissingAtOpenFileRaises) {
  AddEmployee(company_.Folder(), {"ADAMS", 11});
  AddHeader(Paycheck, 11);
  {
    const TakenAway away(Employees());
    ASSERT_EQ(journal_.OpenFile(), StatusFileNotFound);
  }
  journal_.GetEqual(1);
  ExpectRaised([&] { return journal_.EmployeeID(); }, ErrorRead,
               "JrnlHdr.IDText->Employee.GetForIndex(11)", StatusFileNotOpen);
  ExpectRaised([&] { journal_.EmployeeID("ADAMS"); }, ErrorRead,
               "JrnlHdr.IDText->Employee.GetEqual(ADAMS)", StatusFileNotOpen);
  journal_.EmployeeID("");
  EXPECT_EQ(journal_.EmployeeID(), "");
}

// --- The employees of rows ---

TEST_F(PayrollJournalRowEmployees, PayEmployeeIDIsThatOfTheRow) {
  AddEmployee(company_.Folder(), {"FIRST", 1});
  AddEmployee(company_.Folder(), {"ADAMS", 11});
  LoadRowsWith(JrnlRowRecord::EmployeeIndex, 11);
  EXPECT_EQ(journal_.PayEmployeeID(1), "ADAMS");
  journal_.PayEmployeeID(1, "FIRST");
  EXPECT_EQ(journal_.PayEmployeeID(1), "FIRST");
  EXPECT_EQ(journal_.PayEmployeeID(2), "");
}

// It shows the employee whose index is the number of the row.
TEST_F(PayrollJournalRowEmployees, JobEmployeeIDGoesByTheNumberOfTheRow) {
  AddEmployee(company_.Folder(), {"FIRST", 1});
  AddEmployee(company_.Folder(), {"SECOND", 2});
  AddEmployee(company_.Folder(), {"ADAMS", 11});
  LoadRowsWith(JrnlRowRecord::EmployeeIndex, 11);
  EXPECT_EQ(journal_.JobEmployeeID(1), "FIRST");
  EXPECT_EQ(journal_.JobEmployeeID(2), "SECOND") << "also where the row has no employee";
  EXPECT_EQ(journal_.JobEmployeeID(3), "") << "there is no employee 3";
  journal_.JobEmployeeID(1, "ADAMS");
  EXPECT_EQ(journal_.JobEmployeeID(1), "FIRST");
}

TEST_F(PayrollJournalRowEmployees, AssignedAreStoredByTheirIndex) {
  AddEmployee(company_.Folder(), {"ADAMS", 11});
  AddEmployee(company_.Folder(), {"BAKER", 12});
  Open();
  journal_.NRecord(1);
  journal_.PayEmployeeID(1, "ADAMS");
  journal_.PayAmount(0);  // puts the pay row away
  journal_.JobEmployeeID(1, "BAKER");
  ASSERT_EQ(journal_.Insert(), StatusSuccess);
  EXPECT_EQ(RowLongs(1, JrnlRowRecord::EmployeeIndex), (Longs{11, 12}));
}

// Unlike EmployeeID they raise nothing.
TEST_F(PayrollJournalRowEmployees, ThatAreUnknownAreNone) {
  LoadRowsWith(JrnlRowRecord::EmployeeIndex, 77);
  EXPECT_EQ(journal_.PayEmployeeID(1), "");
  journal_.PayEmployeeID(1, "NOBODY");
  journal_.PayAmount(0);  // puts the pay row away
  EXPECT_EQ(journal_.JobEmployeeID(1), "");
  journal_.JobEmployeeID(1, "NOBODY");
  ASSERT_EQ(journal_.Update(), StatusSuccess);
  EXPECT_EQ(RowLongs(1, JrnlRowRecord::EmployeeIndex), (Longs{0, 0}));
}

TEST_F(PayrollJournalRowEmployees, AreTakenAwayByTheEmptyText) {
  LoadRowsWith(JrnlRowRecord::EmployeeIndex, 11);
  journal_.PayEmployeeID(1, "");
  journal_.PayAmount(0);  // puts the pay row away
  journal_.JobEmployeeID(1, "");
  ASSERT_EQ(journal_.Update(), StatusSuccess);
  EXPECT_EQ(RowLongs(1, JrnlRowRecord::EmployeeIndex), (Longs{0, 0}));
}

TEST_F(PayrollJournalRowEmployees, BeyondTheIntegersRaise6) {
  AddEmployee(company_.Folder(), {"FIRST", 1});
  AddEmployee(company_.Folder(), {"LAST", BeyondInteger});
  LoadRowsWith(JrnlRowRecord::EmployeeIndex, BeyondInteger);
  EXPECT_EQ(RaisedNumber([&] { return journal_.PayEmployeeID(1); }), errors::Overflow);
  EXPECT_EQ(RaisedNumber([&] { return journal_.JobEmployeeID(1); }), errors::Overflow)
      << "though the row's employee is not looked at otherwise";
}

TEST_F(PayrollJournalRowEmployees, AssignedBeyondTheIntegersRaise6AndStayAsTheyWere) {
  AddEmployee(company_.Folder(), {"LAST", BeyondInteger});
  LoadRowsWith(JrnlRowRecord::EmployeeIndex, 11);
  EXPECT_EQ(RaisedNumber([&] { journal_.PayEmployeeID(1, "LAST"); }), errors::Overflow);
  journal_.PayAmount(0);  // puts the pay row away
  EXPECT_EQ(RaisedNumber([&] { journal_.JobEmployeeID(1, "LAST"); }), errors::Overflow);
  ASSERT_EQ(journal_.Update(), StatusSuccess);
  EXPECT_EQ(RowLongs(1, JrnlRowRecord::EmployeeIndex), (Longs{11, 11}));
}

TEST_F(PayrollJournalRowEmployees, WithoutTheirFileAreNone) {
  AddEmployee(company_.Folder(), {"FIRST", 1});
  LayRowsWith(JrnlRowRecord::EmployeeIndex, 1);
  test::ProtectFile(Employees(), /*allowRead=*/false);
  ASSERT_EQ(journal_.OpenFile(), StatusInvalidOwner);
  ASSERT_EQ(journal_.GetEqual(1), StatusSuccess);
  EXPECT_EQ(journal_.PayEmployeeID(1), "");
  journal_.PayEmployeeID(1, "FIRST");
  journal_.PayAmount(0);  // puts the pay row away
  EXPECT_EQ(journal_.JobEmployeeID(1), "");
  journal_.JobEmployeeID(1, "FIRST");
  ASSERT_EQ(journal_.Update(), StatusSuccess);
  EXPECT_EQ(RowLongs(1, JrnlRowRecord::EmployeeIndex), (Longs{0, 0}));
}

TEST_F(PayrollJournalRowEmployees, MoveToTheRow) {
  Add(Paycheck, 1, "1001");
  Load(1);
  journal_.PayEmployeeID(11);
  EXPECT_EQ(journal_.NDistributions(), 11);
  journal_.PayEmployeeID(12, "");
  EXPECT_EQ(journal_.NDistributions(), 12);
  journal_.JobEmployeeID(11);
  EXPECT_EQ(journal_.NLaborDistributions(), 11);
  journal_.JobEmployeeID(12, "");
  EXPECT_EQ(journal_.NLaborDistributions(), 12);
}

// --- Accounts ---

TEST_F(PayrollJournalAccounts, OfHeaderAndRowsAreShownByTheirIds) {
  AddAccount(company_.Folder(), {"1100", 5});
  AddAccount(company_.Folder(), {"6000", 6});
  AddAccount(company_.Folder(), {"7000", 7});
  Open();
  journal_.NRecord(1);
  journal_.MainAccount("1100");
  journal_.PayAccount(1, "6000");
  EXPECT_EQ(journal_.PayAccount(1), "6000");
  journal_.PayAmount(0);  // puts the pay row away
  journal_.JobAccount(1, "7000");
  EXPECT_EQ(journal_.JobAccount(1), "7000");
  EXPECT_EQ(journal_.MainAccount(), "1100");
  ASSERT_EQ(journal_.Insert(), StatusSuccess);
  EXPECT_EQ(files_.Long(1, JrnlHdrRecord::MainAccountIndex), 5);
  EXPECT_EQ(RowLongs(1, JrnlRowRecord::AccountIndex), (Longs{6, 7}));
}

TEST_F(PayrollJournalAccounts, ThatAreEmptyNeedNoFile) {
  LayRowsWith(JrnlRowRecord::AccountIndex, 5);
  const TakenAway away(Accounts());
  Load(1);
  journal_.MainAccount("");
  EXPECT_EQ(journal_.MainAccount(), "");
  journal_.PayAccount(1, "");
  EXPECT_EQ(journal_.PayAccount(1), "");
  journal_.PayAmount(0);  // puts the pay row away
  journal_.JobAccount(1, "");
  EXPECT_EQ(journal_.JobAccount(1), "");
  ASSERT_EQ(journal_.Update(), StatusSuccess);
  EXPECT_EQ(RowLongs(1, JrnlRowRecord::AccountIndex), (Longs{0, 0}));
}

TEST_F(PayrollJournalAccounts, ThatAreUnknownRaiseAndStayAsTheyWere) {
  LoadRowsWith(JrnlRowRecord::AccountIndex, 77);
  ExpectRaised([&] { return journal_.PayAccount(1); }, ErrorRead, "PayAccount->Chart.GetEqual(77)",
               StatusKeyNotFound);
  ExpectRaised([&] { journal_.PayAccount(1, "9999"); }, ErrorAccount,
               "PayAccount->Chart.GetForAccountID(9999)", StatusKeyNotFound);
  journal_.PayAmount(0);  // puts the pay row away
  ExpectRaised([&] { return journal_.JobAccount(1); }, ErrorRead, "JobAccount->Chart.GetEqual(77)",
               StatusKeyNotFound);
  ExpectRaised([&] { journal_.JobAccount(1, "9999"); }, ErrorAccount,
               "JobAccount->Chart.GetForAccountID(9999)", StatusKeyNotFound);
  ASSERT_EQ(journal_.Update(), StatusSuccess);
  EXPECT_EQ(RowLongs(1, JrnlRowRecord::AccountIndex), (Longs{77, 77}));
}

TEST_F(PayrollJournalAccounts, MainAccountThatIsUnknownRaises) {
  files_.AddHeader({.nRecord = 1, .journal = Paycheck}, [](Tovrin2Record& header) {
    header.SetLong(JrnlHdrRecord::MainAccountIndex, 77);
  });
  Open();
  journal_.GetEqual(1);
  ExpectRaised([&] { return journal_.MainAccount(); }, ErrorRead,
               "JrnlHdr.MainAccount->Chart.GetEqual(77)", StatusKeyNotFound);
  ExpectRaised([&] { journal_.MainAccount("9999"); }, ErrorAccount,
               "JrnlHdr.MainAccount->Chart.GetForAccountID(9999)", StatusKeyNotFound);
}

// Only the labor rows bring the index into 16 bits, and only on reading.
TEST_F(PayrollJournalAccounts, BeyondTheIntegersRaise6WhereJobAccountIsRead) {
  AddAccount(company_.Folder(), {"4000", BeyondInteger});
  Open();
  journal_.NRecord(1);
  journal_.PayAccount(1, "4000");
  EXPECT_EQ(journal_.PayAccount(1), "4000");
  journal_.PayAmount(0);  // puts the pay row away
  journal_.JobAccount(1, "4000");
  EXPECT_EQ(RaisedNumber([&] { return journal_.JobAccount(1); }), errors::Overflow);
  ASSERT_EQ(journal_.Insert(), StatusSuccess);
  EXPECT_EQ(RowLongs(1, JrnlRowRecord::AccountIndex), (Longs{BeyondInteger, BeyondInteger}));
}

TEST_F(PayrollJournalAccounts, ThatWereMissingAtOpenFileStayMissing) {
  AddAccount(company_.Folder(), {"1100", 5});
  LayRowsWith(JrnlRowRecord::AccountIndex, 5);
  {
    const TakenAway away(Accounts());
    ASSERT_EQ(journal_.OpenFile(), StatusSuccess);
  }
  ASSERT_EQ(journal_.GetEqual(1), StatusSuccess);
  EXPECT_EQ(RaisedNumber([&] { return journal_.PayAccount(1); }), ErrorRead);
  EXPECT_EQ(RaisedNumber([&] { return journal_.JobAccount(1); }), ErrorRead);
  EXPECT_EQ(RaisedNumber([&] { journal_.PayAccount(1, "1100"); }), ErrorAccount);
  EXPECT_EQ(RaisedNumber([&] { journal_.JobAccount(1, "1100"); }), ErrorAccount);
  EXPECT_EQ(RaisedNumber([&] { journal_.MainAccount("1100"); }), ErrorAccount);
}

// The refusal makes the employee read empty, but not the accounts.
TEST_F(PayrollJournalAccounts, ThatAreProtectedRaiseLikeMissingOnes) {
  LayRowsWith(JrnlRowRecord::AccountIndex, 5);
  test::ProtectFile(Accounts(), /*allowRead=*/false);
  Load(1);
  EXPECT_EQ(RaisedNumber([&] { return journal_.PayAccount(1); }), ErrorRead);
  EXPECT_EQ(RaisedNumber([&] { journal_.PayAccount(1, "1100"); }), ErrorAccount);
}

TEST_F(PayrollJournalAccounts, MainAccountIsInUseFromRelease12On) {
  AddAccount(company_.Folder(), {"1100", 5});
  files_.AddHeader({.nRecord = 1, .journal = Paycheck}, [](Tovrin2Record& header) {
    header.SetLong(JrnlHdrRecord::MainAccountIndex, 5);
  });
  Open();
  journal_.GetEqual(1);
  Shared().gDataVersion = 11.9;
  EXPECT_EQ(journal_.MainAccount(), "");
  journal_.MainAccount("");
  journal_.MainAccount("9999");
  Shared().gDataVersion = 12.0;
  EXPECT_EQ(journal_.MainAccount(), "1100");
}

// --- Counters ---

TEST_F(PayrollJournalCounters, MaxNRecordIsThatOfAllJournals) {
  EXPECT_EQ(journal_.MaxNRecord(), 1) << "an empty file counts as one";
  files_.AddHeader({.nRecord = 7, .journal = Paycheck});
  files_.AddHeader({.nRecord = 300, .journal = Invoice});
  EXPECT_EQ(journal_.MaxNRecord(), 300);
}

TEST_F(PayrollJournalCounters, MaxTrxNumberIsThatOfThePaychecksInThePeriod) {
  files_.AddHeader({.nRecord = 1, .journal = Paycheck, .period = 5, .trxNumber = 3});
  files_.AddHeader({.nRecord = 2, .journal = Paycheck, .period = 5, .trxNumber = 4});
  files_.AddHeader({.nRecord = 3, .journal = Invoice, .period = 5, .trxNumber = 9});
  EXPECT_EQ(journal_.MaxTrxNumberL(5), 4);
  EXPECT_EQ(journal_.MaxTrxNumber(5), 4);
  EXPECT_EQ(journal_.MaxTrxNumberL(6), 0);
}

TEST_F(PayrollJournalCounters, MaxTrxNumberIsCutTo16Bits) {
  files_.AddHeader({.nRecord = 1, .journal = Paycheck, .period = 5, .trxNumber = BeyondInteger});
  EXPECT_EQ(journal_.MaxTrxNumberL(5), BeyondInteger);
  EXPECT_EQ(journal_.MaxTrxNumber(5), -25536);
}

TEST_F(PayrollJournalCounters, IncrementBatchCountCountsAPaycheck) {
  EXPECT_EQ(journal_.IncrementBatchCount(), -1);
  EXPECT_EQ(journal_.IncrementBatchCount(), -1);
  EXPECT_EQ(BatchEntries(Paycheck), 2);
  EXPECT_EQ(BatchEntries(Invoice), 0);
  const TakenAway away(General());
  EXPECT_EQ(journal_.IncrementBatchCount(), 0);
}

}  // namespace
}  // namespace larkmoor
