// The class PayrollJournal: which files it opens and holds, how it finds paychecks and how it
// writes their headers. Its properties are in payroll_journal_properties_test.cpp, its two lists of
// rows in payroll_rows_test.cpp.
#include <cstdint>
#include <filesystem>
#include <vector>

#include <gtest/gtest.h>

#include <larkmoor/journal_code.h>
#include <larkmoor/journals/payroll_journal.h>
#include <larkmoor/status.h>

#include "connection/shared_state.h"
#include "connection/status_messages.h"
#include "engine/records/jrnl_hdr.h"
#include "engine/store/driver.h"
#include "engine/tovrin_file.h"
#include "support/accounts.h"
#include "support/child_process.h"
#include "support/company.h"
#include "support/errors.h"
#include "support/failing_disk.h"
#include "support/journal_fixture.h"
#include "support/journals.h"
#include "support/masters.h"
#include "support/paychecks.h"
#include "support/raised_errors.h"
#include "support/read_only_file.h"
#include "support/record_files.h"
#include "support/taken_away.h"

namespace larkmoor {
namespace {

using test::AddAccount;
using test::AddEmployee;
using test::Company;
using test::ExpectRaised;
using test::IsHeldOpen;
using test::JournalFiles;
using test::RaisedNumber;
using test::TakenAway;

// Journals, as headers bear them.
constexpr std::int16_t Paycheck = tovJournalCodePayroll;
constexpr std::int16_t Invoice = tovJournalCodeSales;
constexpr std::int16_t Bill = tovJournalCodePurchase;
constexpr std::int16_t Adjustment = tovJournalCodeInventoryAdjustment;

class PayrollJournalTest : public test::JournalFixture<PayrollJournal> {
 protected:
  /// Lays a paycheck of employee 11 with the main account 5, two pay rows and a labor row.
  void AddPaycheck(std::int32_t nRecord) {
    files_.AddHeader(
        {.nRecord = nRecord, .journal = Paycheck, .idNumber = 11},
        [](Tovrin2Record& header) { header.SetLong(JrnlHdrRecord::MainAccountIndex, 5); });
    files_.AddRows(nRecord, {1, 2});
    test::AddLabor(files_, nRecord, 10);
  }

  /// The four files, in the order in which they are opened.
  std::vector<std::filesystem::path> AllFiles() const {
    return {files_.Headers(), files_.Rows(), Accounts(), Employees()};
  }
  void ExpectNothingHeld() const {
    for (const auto& path : AllFiles()) EXPECT_FALSE(IsHeldOpen(path)) << path;
  }
};

using PayrollJournalOpen = PayrollJournalTest;
using PayrollJournalClose = PayrollJournalTest;
using PayrollJournalReadFirst = PayrollJournalTest;
using PayrollJournalReadNext = PayrollJournalTest;
using PayrollJournalGetEqual = PayrollJournalTest;
using PayrollJournalWrites = PayrollJournalTest;

// --- OpenFile ---

// Unlike the other journals it does not wait with the employees until it needs them.
TEST_F(PayrollJournalOpen, HoldsHeadersRowsAccountsAndEmployees) {
  Open();
  for (const auto& path : AllFiles()) EXPECT_TRUE(IsHeldOpen(path)) << path;
}

TEST_F(PayrollJournalOpen, IsNeededByAllThatTouchesAFile) {
  EXPECT_EQ(journal_.ReadFirst(1), StatusEndOfFile) << "the header in hand is no paycheck's";
  EXPECT_EQ(journal_.ReadNext(), StatusFileNotOpen);
  EXPECT_EQ(journal_.GetEqual(1), StatusFileNotOpen);
  EXPECT_EQ(journal_.Insert(), StatusFileNotOpen);
  EXPECT_EQ(journal_.Update(), StatusFileNotOpen);
  EXPECT_EQ(journal_.Delete(), StatusFileNotOpen);
  EXPECT_EQ(journal_.ClearRecord(), StatusSuccess);
  EXPECT_EQ(journal_.NDistributions(), 0);
  EXPECT_EQ(journal_.NLaborDistributions(), 0);
  EXPECT_EQ(journal_.CloseFile(), StatusSuccess);
}

TEST_F(PayrollJournalOpen, TakesTheReleaseOfTheDataForAllJournals) {
  Shared().gDataVersion = 0;
  const Company older(12.9);
  Open();
  EXPECT_DOUBLE_EQ(Shared().gDataVersion, 12.9);
}

TEST_F(PayrollJournalOpen, AgainBeginsAnew) {
  AddPaycheck(1);
  Load(1);
  Open();
  EXPECT_EQ(journal_.NRecord(), 0);
  EXPECT_EQ(journal_.NDistributions(), 0);
  EXPECT_EQ(journal_.NLaborDistributions(), 0);
  EXPECT_EQ(journal_.ReadNext(), StatusInvalidPositioning);
  EXPECT_EQ(journal_.CloseFile(), StatusSuccess);
  ExpectNothingHeld();
}

TEST_F(PayrollJournalOpen, WithoutHeadersAnswersTheirStatusAndHoldsNothing) {
  {
    const TakenAway away(files_.Headers());
    EXPECT_EQ(journal_.OpenFile(), StatusFileNotFound);
  }
  test::ProtectFile(files_.Headers(), /*allowRead=*/false);
  EXPECT_EQ(journal_.OpenFile(), StatusInvalidOwner);
  ExpectNothingHeld();
}

TEST_F(PayrollJournalOpen, WithoutRowsAnswersTheirStatusAndClosesTheHeaders) {
  {
    const TakenAway away(files_.Rows());
    EXPECT_EQ(journal_.OpenFile(), StatusFileNotFound);
    EXPECT_FALSE(IsHeldOpen(files_.Headers()));
  }
  test::ProtectFile(files_.Rows(), /*allowRead=*/false);
  EXPECT_EQ(journal_.OpenFile(), StatusInvalidOwner);
  ExpectNothingHeld();
}

TEST_F(PayrollJournalOpen, ThatFailsDropsTheRowsInHand) {
  AddPaycheck(1);
  Load(1);
  const TakenAway away(files_.Headers());
  EXPECT_EQ(journal_.OpenFile(), StatusFileNotFound);
  EXPECT_EQ(journal_.NDistributions(), 0);
  EXPECT_EQ(journal_.NLaborDistributions(), 0);
  EXPECT_EQ(journal_.GetEqual(1), StatusFileNotOpen);
}

// The answer is that of the last file, the employees. Nobody is told that the accounts are missing.
TEST_F(PayrollJournalOpen, WithoutAccountsAnswersForTheEmployees) {
  AddEmployee(company_.Folder(), {"ADAMS", 11});
  AddPaycheck(1);
  {
    const TakenAway away(Accounts());
    EXPECT_EQ(journal_.OpenFile(), StatusSuccess);
  }
  ASSERT_EQ(journal_.ReadFirst(0), StatusSuccess);
  EXPECT_EQ(journal_.PayAmount(2), 2);
  EXPECT_EQ(journal_.EmployeeID(), "ADAMS");
  EXPECT_EQ(RaisedNumber([&] { return journal_.MainAccount(); }), ErrorRead);
  EXPECT_EQ(journal_.CloseFile(), StatusSuccess);
}

TEST_F(PayrollJournalOpen, WithProtectedAccountsAnswersForTheEmployees) {
  test::ProtectFile(Accounts(), /*allowRead=*/false);
  EXPECT_EQ(journal_.OpenFile(), StatusSuccess);
  EXPECT_FALSE(IsHeldOpen(Accounts()));
  const TakenAway away(Employees());
  EXPECT_EQ(journal_.OpenFile(), StatusFileNotFound);
}

TEST_F(PayrollJournalOpen, WithoutEmployeesAnswersTheirStatusAndCanBeUsed) {
  AddAccount(company_.Folder(), {"1100", 5});
  AddPaycheck(1);
  const TakenAway away(Employees());
  EXPECT_EQ(journal_.OpenFile(), StatusFileNotFound);
  EXPECT_TRUE(IsHeldOpen(files_.Headers()));
  EXPECT_TRUE(IsHeldOpen(files_.Rows()));
  EXPECT_TRUE(IsHeldOpen(Accounts()));
  ASSERT_EQ(journal_.ReadFirst(0), StatusSuccess);
  EXPECT_EQ(journal_.MainAccount(), "1100");
  EXPECT_EQ(journal_.PayAmount(2), 2);
  EXPECT_EQ(journal_.Update(), StatusSuccess);
  EXPECT_EQ(journal_.CloseFile(), StatusSuccess);
}

TEST_F(PayrollJournalOpen, WithProtectedEmployeesAnswers51AndCanBeUsed) {
  AddPaycheck(1);
  test::ProtectFile(Employees(), /*allowRead=*/false);
  EXPECT_EQ(journal_.OpenFile(), StatusInvalidOwner);
  ASSERT_EQ(journal_.ReadFirst(0), StatusSuccess);
  EXPECT_EQ(journal_.EmployeeID(), "");
  EXPECT_EQ(journal_.CloseFile(), StatusSuccess);
}

TEST_F(PayrollJournalOpen, AgainShowsTheEmployeesThatWereProtectedBefore) {
  AddEmployee(company_.Folder(), {"ADAMS", 11});
  AddPaycheck(1);
  test::ProtectFile(Employees(), /*allowRead=*/false);
  ASSERT_EQ(journal_.OpenFile(), StatusInvalidOwner);
  ASSERT_EQ(store::DefaultDriver().ClearOwner(Employees(), "someone"), StatusSuccess);
  ASSERT_EQ(journal_.GetEqual(1), StatusSuccess);
  EXPECT_EQ(journal_.EmployeeID(), "") << "they are not tried again before that";
  Load(1);
  EXPECT_EQ(journal_.EmployeeID(), "ADAMS");
}

TEST_F(PayrollJournalOpen, AgainWithoutEmployeesLetsGoOfThem) {
  Open();
  {
    const TakenAway away(Employees());
    EXPECT_EQ(journal_.OpenFile(), StatusFileNotFound);
  }
  EXPECT_FALSE(IsHeldOpen(Employees()));
  EXPECT_TRUE(IsHeldOpen(Accounts()));
  EXPECT_EQ(journal_.CloseFile(), StatusSuccess);
}

TEST_F(PayrollJournalOpen, NeedsNoMoreThanReadingFromAnothersAccountsAndEmployees) {
  AddAccount(company_.Folder(), {"1100", 5});
  AddEmployee(company_.Folder(), {"ADAMS", 11});
  AddPaycheck(1);
  test::ProtectFile(Accounts(), /*allowRead=*/true);
  test::ProtectFile(Employees(), /*allowRead=*/true);
  Load(1);
  EXPECT_EQ(journal_.MainAccount(), "1100");
  EXPECT_EQ(journal_.EmployeeID(), "ADAMS");
}

/// What the journal answers where one of its files can only be read.
struct ReadOnlyFile {
  std::filesystem::path path;
  Status opened;
  Status found;  ///< of a read after that
};

TEST_F(PayrollJournalOpen, OpensAllFourFilesForWriting) {
  AddAccount(company_.Folder(), {"1100", 5});
  AddEmployee(company_.Folder(), {"ADAMS", 11});
  AddPaycheck(1);
  const std::vector<ReadOnlyFile> files = {{files_.Headers(), StatusPermission, StatusFileNotOpen},
                                           {files_.Rows(), StatusPermission, StatusFileNotOpen},
                                           {Accounts(), StatusSuccess, StatusSuccess},
                                           {Employees(), StatusPermission, StatusSuccess}};
  for (const ReadOnlyFile& file : files) {
    test::WhereOnlyThisIsReadOnly(file.path, [&] {
      EXPECT_EQ(journal_.OpenFile(), file.opened) << file.path;
      EXPECT_EQ(journal_.GetEqual(1), file.found) << file.path;
      if (file.found != StatusSuccess) return;
      const bool hasAccounts = RaisedNumber([&] { return journal_.MainAccount(); }) == 0;
      const bool hasEmployees = RaisedNumber([&] { return journal_.EmployeeID(); }) == 0;
      EXPECT_EQ(hasAccounts, file.path != Accounts());
      EXPECT_EQ(hasEmployees, file.path != Employees());
    });
    std::filesystem::permissions(file.path, std::filesystem::perms::owner_write,
                                 std::filesystem::perm_options::add);
  }
}

// --- CloseFile and the end of the object ---

TEST_F(PayrollJournalClose, LeavesNothingOpenAndMayBeCalledAgain) {
  AddPaycheck(1);
  Load(1);
  EXPECT_EQ(journal_.CloseFile(), StatusSuccess);
  ExpectNothingHeld();
  EXPECT_EQ(journal_.NRecord(), 0);
  EXPECT_EQ(journal_.NDistributions(), 0);
  EXPECT_EQ(journal_.NLaborDistributions(), 0);
  EXPECT_EQ(journal_.CloseFile(), StatusSuccess);
}

TEST_F(PayrollJournalClose, OfFilesThatTheEngineClosedAnswers0) {
  Open();
  ASSERT_EQ(TovrinFile().btReset(), StatusSuccess);
  EXPECT_EQ(journal_.CloseFile(), StatusSuccess);
}

TEST_F(PayrollJournalClose, RaisesWithTheNamesOfTheFilesThatFailInTheirOrder) {
  test::RunInChild([&] {
    Open();
    AddAccount(company_.Folder(), {"1100", 5});
    AddEmployee(company_.Folder(), {"ADAMS", 11});
    AddPaycheck(1);
    for (const auto& path : AllFiles()) test::BreakDisk(path);
    ExpectRaised([&] { return journal_.CloseFile(); }, ErrorClose,
                 "PayrollJournal.CloseFile: "
                 "\r\nPayrollJournal.CloseFile->Chart.CloseFile"
                 "\r\nPayrollJournal.CloseFile->Employee.CloseFile"
                 "\r\nPayrollJournal.CloseFile->JrnlHdr.CloseFile"
                 "\r\nPayrollJournal.CloseFile->JrnlRow.CloseFile",
                 StatusIOError);
    EXPECT_EQ(journal_.CloseFile(), StatusSuccess) << "all are closed all the same";
  });
}

// The rows close last and without trouble: the error bears their 0.
TEST_F(PayrollJournalClose, RaisesWithTheStatusOfTheLastFileWhateverFailed) {
  test::RunInChild([&] {
    Open();
    AddEmployee(company_.Folder(), {"ADAMS", 11});
    test::BreakDisk(Employees());
    ExpectRaised([&] { return journal_.CloseFile(); }, ErrorClose,
                 "PayrollJournal.CloseFile: \r\nPayrollJournal.CloseFile->Employee.CloseFile",
                 StatusSuccess);
    EXPECT_FALSE(IsHeldOpen(files_.Rows()));
  });
}

TEST_F(PayrollJournalClose, IsWhatTheEndOfTheObjectDoes) {
  {
    PayrollJournal brief;
    ASSERT_EQ(brief.OpenFile(), StatusSuccess);
    ASSERT_TRUE(IsHeldOpen(Employees()));
  }
  ExpectNothingHeld();
}

// --- ReadFirst ---

TEST_F(PayrollJournalReadFirst, ReadsTheFirstPaycheckAtOrAfterThePeriod) {
  Add(Bill, 3, "BILL");
  Add(Paycheck, 5, "1005");
  Add(Paycheck, 3, "1004");
  Add(Paycheck, 3, "1003");
  Add(Adjustment, 3, "ADJ");
  Open();
  EXPECT_EQ(WalkFrom(3), (References{"1003", "1004", "1005"}));
  EXPECT_EQ(WalkFrom(4), (References{"1005"}));
  EXPECT_EQ(WalkFrom(6), References{});
}

TEST_F(PayrollJournalReadFirst, LoadsBothListsOfRows) {
  AddPaycheck(1);
  Open();
  ASSERT_EQ(journal_.ReadFirst(0), StatusSuccess);
  EXPECT_EQ(journal_.NDistributions(), 2);
  EXPECT_EQ(journal_.NLaborDistributions(), 1);
  EXPECT_EQ(journal_.PayAmount(2), 2);
  EXPECT_EQ(journal_.JobAmount(1), 10);
}

TEST_F(PayrollJournalReadFirst, BringsThePeriodBetween0And41) {
  Add(Paycheck, -1, "too early");
  Add(Paycheck, 0, "0");
  Add(Paycheck, 40, "40");
  Add(Paycheck, 41, "41");
  Add(Paycheck, 50, "50");
  Open();
  EXPECT_EQ(WalkFrom(99), (References{"41", "50"}));
  EXPECT_EQ(WalkFrom(-1), (References{"0", "40", "41", "50"}));
}

TEST_F(PayrollJournalReadFirst, OfAJournalWithoutPaychecksIsItsEnd) {
  Open();
  EXPECT_EQ(journal_.ReadFirst(0), StatusEndOfFile);
  Add(Adjustment, 3, "ADJ");
  EXPECT_EQ(journal_.ReadFirst(0), StatusEndOfFile);
  EXPECT_EQ(journal_.CheckNumber(), "ADJ") << "the other journal's header is in hand";
  EXPECT_EQ(journal_.NDistributions(), 0) << "but not its rows";
}

// The journal of the header in hand is looked at before the status of the read.
TEST_F(PayrollJournalReadFirst, ThatFailsIsTheEndWhereNoPaycheckIsInHand) {
  Add(Invoice, 1, "INV");
  Add(Paycheck, 1, "1001");
  Load(1);
  ASSERT_EQ(TovrinFile().btReset(), StatusSuccess);
  EXPECT_EQ(journal_.ReadFirst(0), StatusEndOfFile);
  Load(2);
  ASSERT_EQ(TovrinFile().btReset(), StatusSuccess);
  EXPECT_EQ(journal_.ReadFirst(0), StatusFileNotOpen);
}

// --- ReadNext ---

TEST_F(PayrollJournalReadNext, EndsAtAnotherJournalAndKeepsTheRows) {
  Add(Adjustment, 3, "ADJ");
  AddPaycheck(2);
  Open();
  ASSERT_EQ(journal_.ReadFirst(0), StatusSuccess);
  EXPECT_EQ(journal_.ReadNext(), StatusEndOfFile);
  EXPECT_EQ(journal_.JournalID(), Adjustment) << "the other journal's header is in hand";
  EXPECT_EQ(journal_.NDistributions(), 2);
  EXPECT_EQ(journal_.NLaborDistributions(), 1);
}

TEST_F(PayrollJournalReadNext, AfterOpenFileHasNoPlaceToGoOnFrom) {
  AddPaycheck(1);
  Open();
  EXPECT_EQ(journal_.ReadNext(), StatusInvalidPositioning);
}

TEST_F(PayrollJournalReadNext, ThatFailsAnswersTheStatusWhateverIsInHand) {
  Add(Invoice, 1, "INV");
  Load(1);
  ASSERT_EQ(TovrinFile().btReset(), StatusSuccess);
  EXPECT_EQ(journal_.ReadNext(), StatusFileNotOpen);
}

TEST_F(PayrollJournalReadNext, AfterGetEqualWalksTheRecordNumbers) {
  Add(Paycheck, 9, "1009");
  Add(Paycheck, 1, "1001");
  Add(Invoice, 1, "INV");
  Load(1);
  ASSERT_EQ(journal_.ReadNext(), StatusSuccess);
  EXPECT_EQ(journal_.CheckNumber(), "1001");
  EXPECT_EQ(journal_.ReadNext(), StatusEndOfFile);
}

// --- GetEqual ---

TEST_F(PayrollJournalGetEqual, LoadsATransactionOfAnyJournal) {
  files_.AddTransaction({.nRecord = 7, .journal = Invoice, .reference = "INV"}, {10, 20});
  Load(7);
  EXPECT_EQ(journal_.JournalID(), Invoice);
  EXPECT_EQ(journal_.CheckNumber(), "INV");
  EXPECT_EQ(journal_.NDistributions(), 2);
  EXPECT_EQ(journal_.PayAmount(2), 20);
}

TEST_F(PayrollJournalGetEqual, OfAnUnknownNumberAnswers4AndKeepsThePaycheckInHand) {
  AddPaycheck(1);
  Load(1);
  journal_.PayAmount(2, 3);
  EXPECT_EQ(journal_.GetEqual(8), StatusKeyNotFound);
  EXPECT_EQ(journal_.NRecord(), 1);
  EXPECT_EQ(journal_.PayAmount(1), 1);
  EXPECT_EQ(journal_.PayAmount(2), 3);
  EXPECT_EQ(journal_.NLaborDistributions(), 1);
}

// Data of this release has no key 5, which served below 13.
TEST_F(PayrollJournalGetEqual, ChoosesTheKeyByTheReleaseThatWasOpenedLast) {
  AddPaycheck(1);
  Load(1);
  Shared().gDataVersion = 12.9;
  EXPECT_EQ(journal_.GetEqual(1), StatusInvalidKeyNumber);
  Shared().gDataVersion = 13.0;
  EXPECT_EQ(journal_.GetEqual(1), StatusSuccess);
}

TEST_F(PayrollJournalGetEqual, FindsAndWritesPaychecksOfEveryRelease) {
  InEveryRelease([](const JournalFiles& files, PayrollJournal& journal) {
    test::AddPaycheck(files, {.nRecord = 1, .journal = Paycheck}, {1, 2}, {10});
    ASSERT_EQ(journal.GetEqual(1), StatusSuccess);
    journal.PayAmount(2, 3);
    ASSERT_EQ(journal.Update(), StatusSuccess);
    ASSERT_EQ(journal.ReadFirst(0), StatusSuccess);
    EXPECT_EQ(test::PayOnFile(files, 1), (std::vector<double>{1, 3}));
    EXPECT_EQ(test::LaborOnFile(files, 1), (std::vector<double>{10}));
  });
}

// --- ClearRecord, Insert, Update, Delete of the header ---

TEST_F(PayrollJournalWrites, ClearRecordBlanksTheHeaderAndKeepsBothListsOfRows) {
  AddPaycheck(1);
  Load(1);
  journal_.PayAmount(2, 3);
  EXPECT_EQ(journal_.ClearRecord(), StatusSuccess);
  EXPECT_EQ(journal_.NRecord(), 0);
  EXPECT_EQ(journal_.JournalID(), 0);
  EXPECT_EQ(journal_.NDistributions(), 2);
  EXPECT_EQ(journal_.NLaborDistributions(), 1);
  EXPECT_EQ(journal_.PayAmount(2), 3);
}

// The numbers are the client's business, and so is the journal.
TEST_F(PayrollJournalWrites, InsertGivesNoNumbersAndNoJournal) {
  AddPaycheck(7);
  Open();
  ASSERT_EQ(journal_.Insert(), StatusSuccess);
  EXPECT_EQ(journal_.NRecord(), 0);
  EXPECT_EQ(journal_.JournalID(), 0);
  EXPECT_EQ(journal_.TrxNumberL(), 0);
  EXPECT_TRUE(files_.HasHeader(0));
}

TEST_F(PayrollJournalWrites, InsertOfATakenNumberAnswers5) {
  AddPaycheck(7);
  Open();
  journal_.NRecord(7);
  EXPECT_EQ(journal_.Insert(), StatusDuplicateKey);
}

TEST_F(PayrollJournalWrites, InsertGoesOnAlongTheKeyOfTheLastRead) {
  Add(Paycheck, 2, "1002");
  Add(Paycheck, 4, "1004");
  Open();
  ASSERT_EQ(journal_.ReadFirst(2), StatusSuccess);
  journal_.NRecord(7);
  journal_.Period(3);
  ASSERT_EQ(journal_.Insert(), StatusSuccess);
  ASSERT_EQ(journal_.ReadNext(), StatusSuccess);
  EXPECT_EQ(journal_.CheckNumber(), "1004");
}

TEST_F(PayrollJournalWrites, PropertiesReachTheFileWithTheNextWriteOnly) {
  Add(Paycheck, 1, "1001");
  Load(1);
  journal_.CheckNumber("1002");
  EXPECT_EQ(files_.Text(1, JrnlHdrRecord::Reference), "1001");
  EXPECT_EQ(journal_.Update(), StatusSuccess);
  EXPECT_EQ(files_.Text(1, JrnlHdrRecord::Reference), "1002");
}

TEST_F(PayrollJournalWrites, UpdateAndDeleteNeedACurrentHeader) {
  files_.AddHeader({.nRecord = 7, .journal = Paycheck});
  Open();
  journal_.NRecord(7);
  EXPECT_EQ(journal_.Update(), StatusInvalidPositioning);
  EXPECT_EQ(journal_.Delete(), StatusInvalidPositioning);
  EXPECT_TRUE(files_.HasHeader(7));
}

TEST_F(PayrollJournalWrites, DeleteTakesTheHeaderInHandAndKeepsThePlace) {
  Add(Paycheck, 1, "1001");
  Add(Paycheck, 2, "1002");
  Add(Paycheck, 3, "1003");
  Open();
  ASSERT_EQ(journal_.ReadFirst(2), StatusSuccess);
  ASSERT_EQ(journal_.Delete(), StatusSuccess);
  EXPECT_FALSE(files_.HasHeader(2));
  ASSERT_EQ(journal_.ReadNext(), StatusSuccess);
  EXPECT_EQ(journal_.CheckNumber(), "1003");
}

}  // namespace
}  // namespace larkmoor
