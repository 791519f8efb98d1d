// The SalesRepID of the journals that have one: the employee of the header, whose file they open no
// sooner than they need it.
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include <larkmoor/status.h>

#include "connection/status_messages.h"
#include "engine/records/jrnl_hdr.h"
#include "support/accounts.h"
#include "support/journal_traits.h"
#include "support/masters.h"
#include "support/raised_errors.h"
#include "support/read_only_file.h"
#include "support/record_files.h"
#include "support/taken_away.h"

namespace larkmoor {
namespace {

using test::AddAccount;
using test::AddEmployee;
using test::ExpectRaised;
using test::IsHeldOpen;
using test::TakenAway;

template <typename Journal>
class SalesRepTest : public test::SharedJournalFixture<Journal> {
 protected:
  /// Expects reading it to raise that the employees do not open.
  void ExpectNotOpened(Status status) {
    ExpectRaised([&] { return this->journal_.SalesRepID(); }, ErrorOpen,
                 "JrnlHdr.SalesRepID->Employee.OpenFile", status);
  }
  /// Expects the user to have been told once that an assignment found nobody.
  void ExpectTold(const std::string& step, Status status) {
    EXPECT_EQ(this->messages_.Texts(),
              (std::vector<std::string>{"Error getting SalesRep index:\r\n" + step +
                                        " failed\r\n\r\n" + BtrieveErrorText(status)}));
  }
};

using WithSalesReps = testing::Types<CashReceiptJournal, SalesJournal, SalesOrderJournal>;
TYPED_TEST_SUITE(SalesRepTest, WithSalesReps, test::JournalNames);

TYPED_TEST(SalesRepTest, IsTheIdOfTheEmployeeInTheHeader) {
  AddEmployee(this->company_.Folder(), {"ADAMS", 11});
  this->Open();
  this->journal_.NRecord(1);
  this->journal_.SalesRepID("ADAMS");
  EXPECT_FALSE(IsHeldOpen(this->Employees())) << "assigning lets go of the file";
  EXPECT_EQ(this->journal_.SalesRepID(), "ADAMS");
  ASSERT_EQ(this->journal_.Insert(), StatusSuccess);
  EXPECT_EQ(this->files_.Long(1, JrnlHdrRecord::SalesRepIndex), 11);
  EXPECT_TRUE(this->messages_.Texts().empty());
}

// It opens the employees whatever the header holds.
TYPED_TEST(SalesRepTest, HoldsTheEmployeesFromTheFirstReadOn) {
  this->Open();
  EXPECT_FALSE(IsHeldOpen(this->Employees()));
  EXPECT_EQ(this->journal_.SalesRepID(), "");
  EXPECT_TRUE(IsHeldOpen(this->Employees()));
  ASSERT_EQ(this->journal_.CloseFile(), StatusSuccess);
  EXPECT_FALSE(IsHeldOpen(this->Employees()));
}

TYPED_TEST(SalesRepTest, AssignedTheEmptyTextNeedsNoEmployees) {
  AddEmployee(this->company_.Folder(), {"ADAMS", 11});
  this->Open();
  this->journal_.SalesRepID("ADAMS");
  {
    const TakenAway away(this->Employees());
    this->journal_.SalesRepID("");
  }
  EXPECT_EQ(this->journal_.SalesRepID(), "");
  EXPECT_TRUE(this->messages_.Texts().empty());
}

TYPED_TEST(SalesRepTest, WithoutTheEmployeesRaisesAtEveryReadUntilTheyAreBack) {
  this->Open();
  {
    const TakenAway away(this->Employees());
    this->ExpectNotOpened(StatusFileNotFound);
    this->ExpectNotOpened(StatusFileNotFound);
  }
  EXPECT_EQ(this->journal_.SalesRepID(), "");
}

// Elsewhere this refusal is passed over in silence.
TYPED_TEST(SalesRepTest, WithProtectedEmployeesRaises) {
  this->Open();
  test::ProtectFile(this->Employees(), /*allowRead=*/false);
  this->ExpectNotOpened(StatusInvalidOwner);
}

TYPED_TEST(SalesRepTest, NeedsNoMoreThanReadingTheEmployees) {
  AddEmployee(this->company_.Folder(), {"ADAMS", 11});
  AddAccount(this->company_.Folder(), {"1100", 5});
  this->AddOwn(1, "A");
  test::WhereOnlyThisIsReadOnly(this->Employees(), [&] {
    this->Open();
    this->journal_.SalesRepID("ADAMS");
    EXPECT_EQ(this->journal_.SalesRepID(), "ADAMS");
  });
}

// The texts are those of the class JrnlHdr.
TYPED_TEST(SalesRepTest, RaisesWhereItCannotBeRead) {
  this->files_.AddHeader({.nRecord = 1, .journal = this->Code}, [](Tovrin2Record& header) {
    header.SetLong(JrnlHdrRecord::SalesRepIndex, 77);
  });
  this->files_.AddRows(1, {10});
  this->Load(1);
  {
    const TakenAway away(this->Employees());
    this->ExpectNotOpened(StatusFileNotFound);
  }
  ExpectRaised([&] { return this->journal_.SalesRepID(); }, ErrorRead,
               "JrnlHdr.SalesRepID->Employee.GetForIndex(77)", StatusKeyNotFound);
  AddEmployee(this->company_.Folder(), {"BAKER", 77});
  EXPECT_EQ(this->journal_.SalesRepID(), "BAKER");
}

// Assigning raises nothing: the user is told, once, and the transaction has no representative.
TYPED_TEST(SalesRepTest, AssignedAnUnknownIdShowsAMessageAndStoresNone) {
  AddEmployee(this->company_.Folder(), {"ADAMS", 11});
  this->Open();
  this->journal_.SalesRepID("ADAMS");
  this->journal_.SalesRepID("NOBODY");
  EXPECT_EQ(this->journal_.SalesRepID(), "");
  this->ExpectTold("-2147220988:Employee.GetEqual(NOBODY)", StatusKeyNotFound);
}

TYPED_TEST(SalesRepTest, AssignedWithoutTheEmployeesShowsAMessageAndStoresNone) {
  AddEmployee(this->company_.Folder(), {"ADAMS", 11});
  this->Open();
  this->journal_.NRecord(1);
  this->journal_.SalesRepID("ADAMS");
  {
    const TakenAway away(this->Employees());
    this->journal_.SalesRepID("ADAMS");
  }
  EXPECT_EQ(this->journal_.SalesRepID(), "");
  ASSERT_EQ(this->journal_.Insert(), StatusSuccess);
  EXPECT_EQ(this->files_.Long(1, JrnlHdrRecord::SalesRepIndex), 0);
  this->ExpectTold("-2147220991:Employee.OpenFile", StatusFileNotFound);
}

}  // namespace
}  // namespace larkmoor
