// The accounts and employees that JrnlHdr stores by index and shows by ID: MainAccount, SalesRepID
// and IDText. What cannot be looked up is raised, a refused access too.
#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>

#include <gtest/gtest.h>

#include <larkmoor/error.h>
#include <larkmoor/journal_code.h>
#include <larkmoor/journals/jrnl_hdr.h>
#include <larkmoor/status.h>

#include "connection/status_messages.h"
#include "engine/records/jrnl_hdr.h"
#include "support/accounts.h"
#include "support/company.h"
#include "support/errors.h"
#include "support/masters.h"
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
using test::OpenRecordFile;
using test::RaisedNumber;
using test::TakenAway;
using test::WhereOnlyThisIsReadOnly;

constexpr std::int16_t Payroll = tovJournalCodePayroll;
constexpr std::int16_t Sales = tovJournalCodeSales;

/// The error that stands for an endless repetition.
constexpr std::int32_t OutOfStackSpace = 28;

/// A company with accounts 1000 and 2000 of the indexes 12 and 13, employees MILLER and SMITH of
/// the same, and an object that is not open yet.
class JrnlHdrIDTest : public testing::Test {
 protected:
  explicit JrnlHdrIDTest(double release = 19.0) : company_(release) {
    AddAccount(company_.Folder(), {"1000", 12});
    AddAccount(company_.Folder(), {"2000", 13});
    AddEmployee(company_.Folder(), {"MILLER", 12});
    AddEmployee(company_.Folder(), {"SMITH", 13});
  }

  std::filesystem::path HeaderFile() const { return company_.Folder() / "JrnlHdr.dat"; }
  std::filesystem::path ChartFile() const { return company_.Folder() / "Chart.dat"; }
  std::filesystem::path EmployeeFile() const { return company_.Folder() / "Employee.dat"; }

  /// Opens the object and reads a header that was laid with this index in a field.
  void ReadHeaderWith(const Field& field, std::int32_t index, Status answerOfOpen = StatusSuccess) {
    {
      OpenRecordFile headers(HeaderFile(), JrnlHdrRecord::Describe());
      headers.Add([&](Tovrin2Record& record) { record.SetLong(field, index); });
    }
    ASSERT_EQ(header_.OpenFile(), answerOfOpen);
    ASSERT_EQ(header_.StepFirst(), StatusSuccess);
  }

  /// The index that a field of the first header on file holds.
  std::int32_t StoredIndex(const Field& field) {
    OpenRecordFile headers(HeaderFile(), JrnlHdrRecord::Describe());
    EXPECT_EQ(headers.File().btStepFirst(), StatusSuccess);
    return headers.Record().GetLong(field);
  }

  Company company_;
  JrnlHdr header_;
};

// --- MainAccount ---

/// Of a release that keeps the account of a header.
class JrnlHdrMainAccount : public JrnlHdrIDTest, public testing::WithParamInterface<double> {
 protected:
  JrnlHdrMainAccount() : JrnlHdrIDTest(GetParam()) {}
};

TEST_P(JrnlHdrMainAccount, IsTheIDOfTheAccountWithTheIndex) {
  ReadHeaderWith(JrnlHdrRecord::MainAccountIndex, 13);
  EXPECT_EQ(header_.MainAccount(), "2000");
}

TEST_P(JrnlHdrMainAccount, AssignedStoresTheIndexOfTheAccount) {
  ReadHeaderWith(JrnlHdrRecord::MainAccountIndex, 0);
  header_.MainAccount("2000");
  ASSERT_EQ(header_.Update(), StatusSuccess);
  EXPECT_EQ(StoredIndex(JrnlHdrRecord::MainAccountIndex), 13);
}

TEST_P(JrnlHdrMainAccount, Index0IsTheEmptyTextAndBack) {
  ReadHeaderWith(JrnlHdrRecord::MainAccountIndex, 13);
  header_.MainAccount("");
  EXPECT_EQ(header_.MainAccount(), "");
  ASSERT_EQ(header_.Update(), StatusSuccess);
  EXPECT_EQ(StoredIndex(JrnlHdrRecord::MainAccountIndex), 0);
}

TEST_P(JrnlHdrMainAccount, OfAnUnknownIndexRaises) {
  ReadHeaderWith(JrnlHdrRecord::MainAccountIndex, 99);
  ExpectRaised([&] { return header_.MainAccount(); }, ErrorRead,
               "JrnlHdr.MainAccount->Chart.GetEqual(99)", StatusKeyNotFound);
}

TEST_P(JrnlHdrMainAccount, AssignedUnknownRaisesAndKeepsTheAccount) {
  ReadHeaderWith(JrnlHdrRecord::MainAccountIndex, 12);
  ExpectRaised([&] { header_.MainAccount("1500"); }, ErrorAccount,
               "JrnlHdr.MainAccount->Chart.GetForAccountID(1500)", StatusKeyNotFound);
  EXPECT_EQ(header_.MainAccount(), "1000");
}

INSTANTIATE_TEST_SUITE_P(Releases, JrnlHdrMainAccount, testing::Values(12.0, 19.0),
                         [](const auto& tested) {
                           return "Release" + std::to_string(static_cast<int>(tested.param));
                         });

class JrnlHdrMainAccountBelow12 : public JrnlHdrIDTest {
 protected:
  JrnlHdrMainAccountBelow12() : JrnlHdrIDTest(11.9) {}
};

TEST_F(JrnlHdrMainAccountBelow12, IsEmptyWhateverTheRecordHolds) {
  ReadHeaderWith(JrnlHdrRecord::MainAccountIndex, 13);
  EXPECT_EQ(header_.MainAccount(), "");
}

TEST_F(JrnlHdrMainAccountBelow12, AssignedDoesNothing) {
  ReadHeaderWith(JrnlHdrRecord::MainAccountIndex, 13);
  header_.MainAccount("1000");
  header_.MainAccount("no such account");
  header_.MainAccount("");
  ASSERT_EQ(header_.Update(), StatusSuccess);
  EXPECT_EQ(StoredIndex(JrnlHdrRecord::MainAccountIndex), 13);
}

using JrnlHdrMainAccountFile = JrnlHdrIDTest;

// Until a file is open, the data count as older than any.
TEST_F(JrnlHdrMainAccountFile, OfAnObjectThatWasNeverOpenedIsEmpty) {
  header_.MainAccount("no such account");
  EXPECT_EQ(header_.MainAccount(), "");
}

TEST_F(JrnlHdrMainAccountFile, IsOpenedByOpenFileAlone) {
  {
    const TakenAway away(ChartFile());
    ReadHeaderWith(JrnlHdrRecord::MainAccountIndex, 13, StatusFileNotFound);
  }
  EXPECT_EQ(RaisedNumber([&] { return header_.MainAccount(); }), ErrorRead);
  EXPECT_EQ(RaisedNumber([&] { header_.MainAccount("2000"); }), ErrorAccount);
  EXPECT_FALSE(IsHeldOpen(ChartFile()));
  header_.MainAccount("");
  EXPECT_EQ(header_.MainAccount(), "") << "no account needs no file";
}

TEST_F(JrnlHdrMainAccountFile, ServesAlsoWhereItWasTakenAwaySince) {
  ReadHeaderWith(JrnlHdrRecord::MainAccountIndex, 13);
  const TakenAway away(ChartFile());
  EXPECT_EQ(header_.MainAccount(), "2000");
}

// --- SalesRepID ---

class JrnlHdrSalesRep : public JrnlHdrIDTest {};

TEST_F(JrnlHdrSalesRep, IsTheIDOfTheEmployeeWithTheIndex) {
  ReadHeaderWith(JrnlHdrRecord::SalesRepIndex, 13);
  EXPECT_EQ(header_.SalesRepID(), "SMITH");
}

TEST_F(JrnlHdrSalesRep, AssignedStoresTheIndexOfTheEmployee) {
  ReadHeaderWith(JrnlHdrRecord::SalesRepIndex, 0);
  header_.SalesRepID("SMITH");
  ASSERT_EQ(header_.Update(), StatusSuccess);
  EXPECT_EQ(StoredIndex(JrnlHdrRecord::SalesRepIndex), 13);
}

TEST_F(JrnlHdrSalesRep, Index0IsTheEmptyTextAndBack) {
  ReadHeaderWith(JrnlHdrRecord::SalesRepIndex, 13);
  header_.SalesRepID("");
  EXPECT_EQ(header_.SalesRepID(), "");
  ASSERT_EQ(header_.Update(), StatusSuccess);
  EXPECT_EQ(StoredIndex(JrnlHdrRecord::SalesRepIndex), 0);
}

TEST_F(JrnlHdrSalesRep, OfAnUnknownIndexRaises) {
  ReadHeaderWith(JrnlHdrRecord::SalesRepIndex, 99);
  ExpectRaised([&] { return header_.SalesRepID(); }, ErrorRead,
               "JrnlHdr.SalesRepID->Employee.GetForIndex(99)", StatusKeyNotFound);
}

TEST_F(JrnlHdrSalesRep, AssignedUnknownRaisesAndKeepsTheEmployee) {
  header_.SalesRepID("MILLER");
  ExpectRaised([&] { header_.SalesRepID("NOBODY"); }, ErrorRead,
               "JrnlHdr.SalesRepID->Employee.GetEqual(NOBODY)", StatusKeyNotFound);
  EXPECT_EQ(header_.SalesRepID(), "MILLER");
}

TEST_F(JrnlHdrSalesRep, OpensTheEmployeesAlsoToReadNone) {
  EXPECT_EQ(header_.SalesRepID(), "");
  EXPECT_TRUE(IsHeldOpen(EmployeeFile()));
}

TEST_F(JrnlHdrSalesRep, OpensTheEmployeesAlsoToStoreNone) {
  header_.SalesRepID("");
  EXPECT_TRUE(IsHeldOpen(EmployeeFile()));
}

TEST_F(JrnlHdrSalesRep, LeavesTheEmployeesOpen) {
  header_.SalesRepID("SMITH");
  const TakenAway away(EmployeeFile());
  EXPECT_EQ(header_.SalesRepID(), "SMITH");
  header_.SalesRepID("MILLER");
  EXPECT_EQ(header_.SalesRepID(), "MILLER");
}

TEST_F(JrnlHdrSalesRep, NeedsNoMoreThanReadingOfTheEmployees) {
  WhereOnlyThisIsReadOnly(EmployeeFile(), [] {
    JrnlHdr header;
    header.SalesRepID("SMITH");
    EXPECT_EQ(header.SalesRepID(), "SMITH");
  });
}

TEST_F(JrnlHdrSalesRep, ReadWithoutTheEmployeesRaisesAlsoForNoneAndIsTriedAgain) {
  {
    const TakenAway away(EmployeeFile());
    ExpectRaised([&] { return header_.SalesRepID(); }, ErrorOpen,
                 "JrnlHdr.SalesRepID->Employee.OpenFile", StatusFileNotFound);
  }
  EXPECT_EQ(header_.SalesRepID(), "");
}

TEST_F(JrnlHdrSalesRep, ReadWhereAccessIsRefusedRaises) {
  test::ProtectFile(EmployeeFile(), /*allowRead=*/false);
  ExpectRaised([&] { return header_.SalesRepID(); }, ErrorOpen,
               "JrnlHdr.SalesRepID->Employee.OpenFile", StatusInvalidOwner);
}

// An assignment that cannot open the employees assigns the empty text first, which cannot open them
// either, and so on without end.
TEST_F(JrnlHdrSalesRep, AssignedWithoutTheEmployeesRepeatsItselfUntilTheStackIsFull) {
  const TakenAway away(EmployeeFile());
  try {
    header_.SalesRepID("SMITH");
    ADD_FAILURE() << "nothing is raised";
  } catch (const Error& error) {
    EXPECT_EQ(error.Number(), OutOfStackSpace);
    EXPECT_EQ(error.Source(), "Larkmoor");
    EXPECT_EQ(error.Description(), "Out of stack space");
    EXPECT_EQ(error.BtrieveStatus(), StatusSuccess);
  }
}

TEST_F(JrnlHdrSalesRep, AssignedEmptyWithoutTheEmployeesRepeatsItselfTooAndKeepsTheEmployee) {
  ReadHeaderWith(JrnlHdrRecord::SalesRepIndex, 13);
  {
    const TakenAway away(EmployeeFile());
    EXPECT_EQ(RaisedNumber([&] { header_.SalesRepID(""); }), OutOfStackSpace);
  }
  EXPECT_EQ(header_.SalesRepID(), "SMITH");
}

TEST_F(JrnlHdrSalesRep, AssignedWhereAccessIsRefusedRepeatsItselfToo) {
  test::ProtectFile(EmployeeFile(), /*allowRead=*/false);
  EXPECT_EQ(RaisedNumber([&] { header_.SalesRepID("SMITH"); }), OutOfStackSpace);
}

// --- IDText ---

class JrnlHdrIDText : public JrnlHdrIDTest {
 protected:
  void SetParty(std::int16_t journal, std::int32_t party) {
    header_.JournalID(journal);
    header_.IDNumber(party);
  }
};

TEST_F(JrnlHdrIDText, IsTheIDOfTheEmployeeInPayroll) {
  SetParty(Payroll, 12);
  EXPECT_EQ(header_.IDText(), "MILLER");
}

TEST_F(JrnlHdrIDText, IsEmptyInOtherJournalsAndOpensNothing) {
  for (std::int16_t journal = 0; journal <= 12; ++journal) {
    if (journal == Payroll) continue;
    SetParty(journal, 12);
    EXPECT_EQ(header_.IDText(), "") << journal;
  }
  EXPECT_FALSE(IsHeldOpen(EmployeeFile()));
}

TEST_F(JrnlHdrIDText, OfNobodyIsEmptyAndOpensNothing) {
  SetParty(Payroll, 0);
  EXPECT_EQ(header_.IDText(), "");
  EXPECT_FALSE(IsHeldOpen(EmployeeFile()));
}

TEST_F(JrnlHdrIDText, OfAnUnknownIndexRaises) {
  SetParty(Payroll, 99);
  ExpectRaised([&] { return header_.IDText(); }, ErrorRead,
               "JrnlHdr.IDText->Employee.GetForIndex(99)", StatusKeyNotFound);
}

TEST_F(JrnlHdrIDText, AssignedStoresTheIndexOfTheEmployeeInAnyJournal) {
  SetParty(Payroll, 0);
  header_.IDText("SMITH");
  EXPECT_EQ(header_.IDNumber(), 13);
  SetParty(Sales, 0);
  header_.IDText("SMITH");
  EXPECT_EQ(header_.IDNumber(), 13);
  EXPECT_EQ(header_.IDText(), "") << "it reads in payroll alone";
}

TEST_F(JrnlHdrIDText, AssignedEmptyStores0InAnyJournalAndOpensNothing) {
  for (const std::int16_t journal : {Payroll, Sales}) {
    SetParty(journal, 12);
    header_.IDText("");
    EXPECT_EQ(header_.IDNumber(), 0);
  }
  EXPECT_FALSE(IsHeldOpen(EmployeeFile()));
}

TEST_F(JrnlHdrIDText, AssignedUnknownRaisesAndKeepsTheIndex) {
  SetParty(Payroll, 12);
  ExpectRaised([&] { header_.IDText("NOBODY"); }, ErrorRead,
               "JrnlHdr.IDText->Employee.GetEqual(NOBODY)", StatusKeyNotFound);
  EXPECT_EQ(header_.IDNumber(), 12);
}

TEST_F(JrnlHdrIDText, ReadWithoutTheEmployeesRaisesAndIsTriedAgain) {
  SetParty(Payroll, 12);
  {
    const TakenAway away(EmployeeFile());
    ExpectRaised([&] { return header_.IDText(); }, ErrorOpen, "JrnlHdr.IDText->Employee.OpenFile",
                 StatusFileNotFound);
    EXPECT_EQ(header_.IDNumber(), 12);
  }
  EXPECT_EQ(header_.IDText(), "MILLER");
}

TEST_F(JrnlHdrIDText, ReadWhereAccessIsRefusedRaises) {
  test::ProtectFile(EmployeeFile(), /*allowRead=*/false);
  SetParty(Payroll, 12);
  ExpectRaised([&] { return header_.IDText(); }, ErrorOpen, "JrnlHdr.IDText->Employee.OpenFile",
               StatusInvalidOwner);
}

// The empty text goes in first, and needs no file.
TEST_F(JrnlHdrIDText, AssignedWithoutTheEmployeesStores0AndRaises) {
  SetParty(Payroll, 12);
  const TakenAway away(EmployeeFile());
  ExpectRaised([&] { header_.IDText("SMITH"); }, ErrorOpen, "JrnlHdr.IDText->Employee.OpenFile",
               StatusFileNotFound);
  EXPECT_EQ(header_.IDNumber(), 0);
}

TEST_F(JrnlHdrIDText, LeavesTheEmployeesOpen) {
  SetParty(Payroll, 12);
  EXPECT_EQ(header_.IDText(), "MILLER");
  const TakenAway away(EmployeeFile());
  header_.IDText("SMITH");
  EXPECT_EQ(header_.IDText(), "SMITH");
}

TEST_F(JrnlHdrIDText, NeedsEmployeesThatCanBeWrittenUnlessTheSalesRepHasOpenedThem) {
  WhereOnlyThisIsReadOnly(EmployeeFile(), [] {
    JrnlHdr header;
    header.JournalID(Payroll);
    header.IDNumber(12);
    ExpectRaised([&] { return header.IDText(); }, ErrorOpen, "JrnlHdr.IDText->Employee.OpenFile",
                 StatusPermission);
    ExpectRaised([&] { header.IDText("SMITH"); }, ErrorOpen, "JrnlHdr.IDText->Employee.OpenFile",
                 StatusPermission);
    EXPECT_EQ(header.SalesRepID(), "");
    header.IDText("SMITH");
    EXPECT_EQ(header.IDText(), "SMITH");
  });
}

}  // namespace
}  // namespace larkmoor
