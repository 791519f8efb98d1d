// The class PurchaseJournal: which of its files it keeps open and how long, and the properties that
// go by the words of a purchase. What it shares with some journals is tested in files named after
// it, like period_walk_test.cpp; what it shares with all of them, in general_journal_test.cpp and
// journal_rows_test.cpp.
#include <cstdint>
#include <filesystem>
#include <vector>

#include <gtest/gtest.h>

#include <larkmoor/date.h>
#include <larkmoor/journal_code.h>
#include <larkmoor/journals/purchase_journal.h>
#include <larkmoor/status.h>
#include <larkmoor/variant.h>

#include "connection/shared_state.h"
#include "connection/status_messages.h"
#include "engine/records/jrnl_hdr.h"
#include "engine/records/jrnl_row.h"
#include "support/accounts.h"
#include "support/child_process.h"
#include "support/company.h"
#include "support/failing_disk.h"
#include "support/journal_fixture.h"
#include "support/raised_errors.h"
#include "support/read_only_file.h"
#include "support/record_files.h"
#include "support/taken_away.h"

namespace larkmoor {
namespace {

using test::AddAccount;
using test::Company;
using test::ExpectRaised;
using test::IsHeldOpen;
using test::JournalFiles;
using test::TakenAway;

/// The journal, as its headers bear it.
constexpr std::int16_t Bill = tovJournalCodePurchase;

using PurchaseJournalTest = test::JournalFixture<PurchaseJournal>;
using PurchaseJournalOpen = PurchaseJournalTest;
using PurchaseJournalClose = PurchaseJournalTest;
using PurchaseJournalHeader = PurchaseJournalTest;
using PurchaseJournalRows = PurchaseJournalTest;

// --- OpenFile ---

TEST_F(PurchaseJournalOpen, HoldsHeadersRowsAndAccounts) {
  Open();
  EXPECT_TRUE(IsHeldOpen(files_.Headers()));
  EXPECT_TRUE(IsHeldOpen(files_.Rows()));
  EXPECT_TRUE(IsHeldOpen(Accounts()));
}

TEST_F(PurchaseJournalOpen, TakesTheReleaseOfTheDataForAllJournals) {
  Shared().gDataVersion = 0;
  const Company older(12.9);
  Open();
  EXPECT_DOUBLE_EQ(Shared().gDataVersion, 12.9);
}

TEST_F(PurchaseJournalOpen, AgainBeginsAnew) {
  Add(Bill, 1, "B1");
  Load(1);
  Open();
  EXPECT_EQ(journal_.InvoiceNumber(), "");
  EXPECT_EQ(journal_.NDistributions(), 0);
  EXPECT_EQ(journal_.ReadNext(), StatusInvalidPositioning);
}

TEST_F(PurchaseJournalOpen, WithoutHeadersAnswersTheirStatusAndOpensNoMore) {
  {
    const TakenAway away(files_.Headers());
    EXPECT_EQ(journal_.OpenFile(), StatusFileNotFound);
  }
  test::ProtectFile(files_.Headers(), /*allowRead=*/false);
  EXPECT_EQ(journal_.OpenFile(), StatusInvalidOwner);
  EXPECT_FALSE(IsHeldOpen(files_.Rows()));
  EXPECT_FALSE(IsHeldOpen(Accounts()));
}

// Other journals close the headers then.
TEST_F(PurchaseJournalOpen, WithoutRowsKeepsTheHeadersOpenForTheLifeOfTheObject) {
  Shared().gDataVersion = 19.0;  // an OpenFile that comes to no end does not set it
  {
    PurchaseJournal brief;
    const TakenAway away(files_.Rows());
    EXPECT_EQ(brief.OpenFile(), StatusFileNotFound);
    EXPECT_EQ(brief.GetEqual(1), StatusKeyNotFound) << "the headers can be searched";
    EXPECT_EQ(brief.CloseFile(), StatusSuccess);
    EXPECT_TRUE(IsHeldOpen(files_.Headers()));
    EXPECT_FALSE(IsHeldOpen(Accounts()));
  }
  EXPECT_FALSE(IsHeldOpen(files_.Headers()));
}

TEST_F(PurchaseJournalOpen, WithProtectedRowsAnswers51AndKeepsTheHeadersOpen) {
  test::ProtectFile(files_.Rows(), /*allowRead=*/false);
  EXPECT_EQ(journal_.OpenFile(), StatusInvalidOwner);
  EXPECT_TRUE(IsHeldOpen(files_.Headers()));
}

TEST_F(PurchaseJournalOpen, AfterOneWithoutRowsOpensAll) {
  Add(Bill, 1, "B1");
  {
    const TakenAway away(files_.Rows());
    ASSERT_EQ(journal_.OpenFile(), StatusFileNotFound);
  }
  Open();
  ASSERT_EQ(journal_.ReadFirst(1), StatusSuccess);
  EXPECT_EQ(journal_.InvoiceNumber(), "B1");
  EXPECT_EQ(journal_.DetailAmount(1), 1);
}

// The caller sees the status of the accounts, and works with the bills all the same.
TEST_F(PurchaseJournalOpen, WithoutAccountsAnswersTheirStatusAndCanBeUsed) {
  Add(Bill, 1, "B1");
  {
    const TakenAway away(Accounts());
    EXPECT_EQ(journal_.OpenFile(), StatusFileNotFound);
  }
  EXPECT_EQ(journal_.ReadFirst(0), StatusSuccess);
  EXPECT_EQ(journal_.DetailAmount(1), 1);
  EXPECT_EQ(journal_.Update(), StatusSuccess);
  test::ProtectFile(Accounts(), /*allowRead=*/false);
  EXPECT_EQ(journal_.OpenFile(), StatusInvalidOwner);
  EXPECT_EQ(journal_.ReadFirst(0), StatusSuccess);
  EXPECT_EQ(journal_.CloseFile(), StatusSuccess);
  EXPECT_TRUE(IsHeldOpen(files_.Headers()));
}

TEST_F(PurchaseJournalOpen, OpensAllThreeFilesForWriting) {
  Shared().gDataVersion = 19.0;
  Add(Bill, 1, "B1");
  AddAccount(company_.Folder(), {"2000", 5});
  const auto expectRefused = [&](const std::filesystem::path& path, Status known, Status unknown) {
    test::WhereOnlyThisIsReadOnly(path, [&] {
      EXPECT_EQ(journal_.OpenFile(), StatusPermission) << path;
      EXPECT_EQ(journal_.GetEqual(1), known) << path;
      EXPECT_EQ(journal_.GetEqual(99), unknown) << path;
    });
    std::filesystem::permissions(path, std::filesystem::perms::owner_write,
                                 std::filesystem::perm_options::add);
  };
  expectRefused(files_.Headers(), StatusFileNotOpen, StatusFileNotOpen);
  expectRefused(files_.Rows(), StatusFileNotOpen, StatusKeyNotFound);
  expectRefused(Accounts(), StatusSuccess, StatusKeyNotFound);
}

TEST_F(PurchaseJournalOpen, ThatFailsOnAnOpenObjectDropsTheRowsInHandAndTheHeadersOnly) {
  Add(Bill, 1, "B1");
  Load(1);
  const TakenAway away(files_.Headers());
  EXPECT_EQ(journal_.OpenFile(), StatusFileNotFound);
  EXPECT_EQ(journal_.NDistributions(), 0);
  EXPECT_EQ(journal_.GetEqual(1), StatusFileNotOpen);
  EXPECT_FALSE(IsHeldOpen(away.Aside()));
  EXPECT_TRUE(IsHeldOpen(files_.Rows()));
  EXPECT_TRUE(IsHeldOpen(Accounts()));
  EXPECT_EQ(journal_.CloseFile(), StatusSuccess);
  EXPECT_TRUE(IsHeldOpen(files_.Rows()));
  EXPECT_FALSE(IsHeldOpen(Accounts()));
}

// The place on the path of the last walk is forgotten: behind transaction 2 comes number 3, not the
// next period.
TEST_F(PurchaseJournalOpen, WithoutAccountsLetsTheNextWriteTakeItsPlaceByNumber) {
  files_.AddTransaction(
      {.nRecord = 1, .journal = Bill, .period = 2, .reference = "A", .trxNumber = 3}, {10});
  files_.AddTransaction(
      {.nRecord = 2, .journal = Bill, .period = 4, .reference = "B", .trxNumber = 1}, {20});
  Open();
  ASSERT_EQ(journal_.ReadFirst(0), StatusSuccess);
  const TakenAway away(Accounts());
  ASSERT_EQ(journal_.OpenFile(), StatusFileNotFound);
  journal_.NRecord(3);
  journal_.JournalID(Bill);
  journal_.Period(3);
  journal_.TrxNumberL(2);
  ASSERT_EQ(journal_.Insert(), StatusSuccess);
  ASSERT_EQ(journal_.ReadNext(), StatusSuccess);
  EXPECT_EQ(journal_.InvoiceNumber(), "A");
}

// --- CloseFile and the end of the object ---

TEST_F(PurchaseJournalClose, ClosesTheAccountsAndLeavesHeadersAndRowsOpen) {
  Open();
  EXPECT_EQ(journal_.CloseFile(), StatusSuccess);
  EXPECT_FALSE(IsHeldOpen(Accounts()));
  EXPECT_TRUE(IsHeldOpen(files_.Headers()));
  EXPECT_TRUE(IsHeldOpen(files_.Rows()));
  EXPECT_EQ(journal_.CloseFile(), StatusSuccess);
  EXPECT_TRUE(IsHeldOpen(files_.Headers()));
}

TEST_F(PurchaseJournalClose, KeepsTheBillInHand) {
  Add(Bill, 1, "B1");
  Load(1);
  journal_.DetailAmount(1, 15);
  ASSERT_EQ(journal_.CloseFile(), StatusSuccess);
  EXPECT_EQ(journal_.InvoiceNumber(), "B1");
  EXPECT_EQ(journal_.NDistributions(), 1);
  EXPECT_EQ(journal_.DetailAmount(1), 15);
}

TEST_F(PurchaseJournalClose, IsFollowedByReadsAndWritesAsBefore) {
  Add(Bill, 1, "B1");
  Add(Bill, 2, "B2");
  Open();
  ASSERT_EQ(journal_.ReadFirst(1), StatusSuccess);
  ASSERT_EQ(journal_.CloseFile(), StatusSuccess);
  journal_.DetailAmount(1, 15);
  EXPECT_EQ(journal_.Update(), StatusSuccess);
  EXPECT_EQ(files_.Amounts(1), std::vector<double>{15});
  EXPECT_EQ(journal_.ReadNext(), StatusSuccess) << "the walk goes on";
  EXPECT_EQ(journal_.InvoiceNumber(), "B2");
  EXPECT_EQ(journal_.DetailAmount(1), 2);
  EXPECT_EQ(journal_.Delete(), StatusSuccess);
  EXPECT_FALSE(files_.HasHeader(2));
  EXPECT_EQ(WalkFrom(0), References{"B1"});
}

TEST_F(PurchaseJournalClose, LeavesNoAccounts) {
  AddAccount(company_.Folder(), {"2000", 5});
  files_.AddHeader({.nRecord = 1, .journal = Bill});
  files_.AddRow(1, [](Tovrin2Record& row) { row.SetLong(JrnlRowRecord::AccountIndex, 5); });
  Load(1);
  ASSERT_EQ(journal_.DetailGLAccount(1), "2000");
  ASSERT_EQ(journal_.CloseFile(), StatusSuccess);
  ExpectRaised([&] { return journal_.DetailGLAccount(1); }, ErrorRead,
               "DetailGLAccount->Chart.GetEqual(5)", StatusFileNotOpen);
}

TEST_F(PurchaseJournalClose, FollowedByOpenFileBeginsAnew) {
  Add(Bill, 1, "B1");
  Load(1);
  ASSERT_EQ(journal_.CloseFile(), StatusSuccess);
  Open();
  EXPECT_EQ(journal_.InvoiceNumber(), "");
  EXPECT_EQ(journal_.NDistributions(), 0);
  EXPECT_EQ(journal_.ReadNext(), StatusInvalidPositioning);
}

TEST_F(PurchaseJournalClose, OfAllFilesIsTheEndOfTheObject) {
  {
    PurchaseJournal brief;
    ASSERT_EQ(brief.OpenFile(), StatusSuccess);
    ASSERT_EQ(brief.CloseFile(), StatusSuccess);
    ASSERT_EQ(brief.OpenFile(), StatusSuccess);
  }
  EXPECT_FALSE(IsHeldOpen(files_.Headers()));
  EXPECT_FALSE(IsHeldOpen(files_.Rows()));
  EXPECT_FALSE(IsHeldOpen(Accounts()));
}

TEST_F(PurchaseJournalClose, RaisesWithTheNameOfTheAccountsAlone) {
  test::RunInChild([&] {
    Open();
    AddAccount(company_.Folder(), {"2000", 5});
    Add(Bill, 1, "B1");
    for (const auto& path : {files_.Headers(), files_.Rows(), Accounts()}) test::BreakDisk(path);
    ExpectRaised([&] { return journal_.CloseFile(); }, ErrorClose,
                 "PurchaseJournal.CloseFile: \r\nPurchaseJournal.CloseFile->Chart.CloseFile",
                 StatusIOError);
    EXPECT_EQ(journal_.CloseFile(), StatusSuccess);
  });
}

// --- The header ---

TEST_F(PurchaseJournalHeader, NamesFieldsInTheWordsOfAPurchase) {
  const Date day = Date::FromYmd(2024, 3, 15);
  Open();
  journal_.NRecord(1);
  journal_.AmountPaid(1.5);
  journal_.APAmount(2.5);
  journal_.BeginningBalanceFlag(true);
  journal_.DropShipCustomerIndex(8);
  journal_.DropShipInvNo("INV-1");
  journal_.InvoiceNumber("BILL-1");
  journal_.POGoodThruDate(day);
  journal_.PONo("PO-1");
  journal_.PONumber("PO-2");
  journal_.ReimbursableExpense(true);
  journal_.ShipToAddr1("1 Elm Street");
  journal_.ShipToAddr2("Back door");
  journal_.VendorIndex(7);
  journal_.VendorName("Elm Street Dairy");
  ASSERT_EQ(journal_.Insert(), StatusSuccess);
  files_.OfHeader(1, [&](Tovrin2Record& header) {
    EXPECT_EQ(header.GetDouble(JrnlHdrRecord::PaidOnInvoice), 1.5);
    EXPECT_EQ(header.GetDouble(JrnlHdrRecord::Amount), 2.5);
    EXPECT_TRUE(header.GetBoolean(JrnlHdrRecord::BeginningBalance));
    EXPECT_EQ(header.GetLong(JrnlHdrRecord::ShipIndex), 8);
    EXPECT_EQ(header.GetText(JrnlHdrRecord::PONumber), "INV-1");
    EXPECT_EQ(header.GetText(JrnlHdrRecord::Reference), "BILL-1");
    EXPECT_EQ(header.GetDate(JrnlHdrRecord::GoodThruDate), day.Serial());
    EXPECT_EQ(header.GetText(JrnlHdrRecord::OrderNumber), "PO-1");
    EXPECT_EQ(header.GetText(JrnlHdrRecord::PurchaseOrderNumber), "PO-2");
    EXPECT_TRUE(header.GetBoolean(JrnlHdrRecord::HasPartner));
    EXPECT_EQ(header.GetText(JrnlHdrRecord::ShipToAddress1), "1 Elm Street");
    EXPECT_EQ(header.GetText(JrnlHdrRecord::ShipToAddress2), "Back door");
    EXPECT_EQ(header.GetLong(JrnlHdrRecord::IDNumber), 7);
    EXPECT_EQ(header.GetText(JrnlHdrRecord::Description), "Elm Street Dairy");
    EXPECT_EQ(header.GetDouble(JrnlHdrRecord::AmountPaid), 0) << "that is a payment's";
  });
  EXPECT_EQ(journal_.AmountPaid(), 1.5);
  EXPECT_EQ(journal_.PONumber(), "PO-2");
  EXPECT_EQ(journal_.POGoodThruDate(), Variant(day));
}

TEST_F(PurchaseJournalHeader, HasPartnerAndReimbursableExpenseAreOne) {
  Open();
  journal_.HasPartner(true);
  EXPECT_TRUE(journal_.ReimbursableExpense());
  journal_.ReimbursableExpense(false);
  EXPECT_FALSE(journal_.HasPartner());
}

// --- The rows ---

TEST_F(PurchaseJournalRows, NameFieldsInTheWordsOfAPurchase) {
  Open();
  journal_.NRecord(1);
  journal_.DetailDisplayedLine(1, 6);
  journal_.DetailFlag2(1, true);
  journal_.DetailInvoiceNRecord(1, 40);
  journal_.DetailInvoicePaid(1, "BILL-1");
  journal_.DetailPOLine(1, 5);
  journal_.DetailVendorIndex(1, 7);
  ASSERT_EQ(journal_.Insert(), StatusSuccess);
  const auto rows = files_.OfRows(1, [](Tovrin2Record& row) {
    EXPECT_EQ(row.GetInteger(JrnlRowRecord::OrderLine), 6);
    EXPECT_TRUE(row.GetBoolean(JrnlRowRecord::ReimbursableExpense));
    EXPECT_EQ(row.GetLong(JrnlRowRecord::OtherNRecord), 40);
    EXPECT_EQ(row.GetText(JrnlRowRecord::InvoiceNumber), "BILL-1");
    EXPECT_EQ(row.GetInteger(JrnlRowRecord::LinkToOtherTrxIndex), 5);
    EXPECT_EQ(row.GetLong(JrnlRowRecord::VendorIndex), 7);
    return true;
  });
  EXPECT_EQ(rows.size(), 1U);
}

/// Lays a row with its number and its link, so that rows can be told apart.
void AddLinkedRow(const JournalFiles& files, std::int32_t nRecord, std::int16_t number) {
  files.AddRow(nRecord, [&](Tovrin2Record& row) {
    row.SetLong(JrnlRowRecord::JournalRowEx, number);
    row.SetLong(JrnlRowRecord::LinkJournalRowEx, number + 100);
    row.SetInteger(JrnlRowRecord::OrderLine, number);
  });
}

// In all other journals it is the link.
TEST_F(PurchaseJournalRows, DetailLinkJournalRowExIsDetailJournalRowEx) {
  files_.AddHeader({.nRecord = 1, .journal = Bill});
  AddLinkedRow(files_, 1, 11);
  AddLinkedRow(files_, 1, 12);
  Load(1);
  EXPECT_EQ(journal_.DetailLinkJournalRowEx(2), 12);
  journal_.DetailLinkJournalRowEx(1, 21);
  EXPECT_EQ(journal_.DetailJournalRowEx(1), 21);
  journal_.DetailJournalRowEx(2, 22);
  EXPECT_EQ(journal_.DetailLinkJournalRowEx(2), 22);
  ASSERT_EQ(journal_.Update(), StatusSuccess);
  EXPECT_EQ(RowLongs(1, JrnlRowRecord::JournalRowEx), (std::vector<std::int32_t>{21, 22}));
  EXPECT_EQ(RowLongs(1, JrnlRowRecord::LinkJournalRowEx), (std::vector<std::int32_t>{111, 112}));
}

// Straight after a read that is the row behind the bill.
TEST_F(PurchaseJournalRows, LinkJournalRowExIsThatOfTheRowInHand) {
  files_.AddHeader({.nRecord = 1, .journal = Bill});
  AddLinkedRow(files_, 1, 11);
  AddLinkedRow(files_, 1, 12);
  AddLinkedRow(files_, 2, 99);
  Load(1);
  EXPECT_EQ(journal_.LinkJournalRowEx(), 199);
  journal_.DetailAmount(2);
  EXPECT_EQ(journal_.LinkJournalRowEx(), 112);
  journal_.LinkJournalRowEx(23);
  ASSERT_EQ(journal_.Update(), StatusSuccess);
  EXPECT_EQ(RowLongs(1, JrnlRowRecord::LinkJournalRowEx), (std::vector<std::int32_t>{111, 23}));
  EXPECT_EQ(RowLongs(1, JrnlRowRecord::JournalRowEx), (std::vector<std::int32_t>{11, 12}));
}

// In a sale it is that of the row in hand.
TEST_F(PurchaseJournalRows, DetailDisplayedLineIsThatOfItsRow) {
  files_.AddHeader({.nRecord = 1, .journal = Bill});
  AddLinkedRow(files_, 1, 11);
  AddLinkedRow(files_, 1, 12);
  AddLinkedRow(files_, 2, 99);
  Load(1);
  EXPECT_EQ(journal_.DetailDisplayedLine(1), 11);
  EXPECT_EQ(journal_.LinkJournalRowEx(), 111) << "row 1 is in hand";
  EXPECT_EQ(journal_.DetailDisplayedLine(2), 12);
  journal_.DetailDisplayedLine(1, 21);
  EXPECT_EQ(journal_.LinkJournalRowEx(), 111);
  EXPECT_EQ(journal_.DetailDisplayedLine(2), 12);
  EXPECT_EQ(journal_.DetailDisplayedLine(1), 21);
}

// A move to row 11 makes the bill grow.
TEST_F(PurchaseJournalRows, DetailApplyToPOReadsFalseAndMovesButAssignedDoesNothing) {
  Add(Bill, 1, "B1");
  Load(1);
  journal_.DetailApplyToPO(11, true);
  EXPECT_EQ(journal_.NDistributions(), 1);
  EXPECT_FALSE(journal_.DetailApplyToPO(11));
  EXPECT_EQ(journal_.NDistributions(), 11);
  EXPECT_EQ(messages_.Texts(), Messages{});
  journal_.DetailApplyToPO(0, true);
  EXPECT_EQ(messages_.Texts(), Messages{});
  EXPECT_FALSE(journal_.DetailApplyToPO(0));
  EXPECT_EQ(messages_.Texts(), Messages{"Error in PositionOnDetail(0): NRowsDefined = 11, "
                                        "NDetail = 11, j = 0\r\n"
                                        "9 : Subscript out of range"});
}

TEST_F(PurchaseJournalRows, WhatHasNoStorageDoesNotMoveToTheRow) {
  Add(Bill, 1, "B1");
  Load(1);
  journal_.DetailCostOfSalesAccount(11);
  journal_.DetailCostOfSalesAccount(11, "5000");
  EXPECT_EQ(journal_.DetailInventoryAccount(11), "") << "a sale reads 0";
  journal_.DetailInventoryAccount(11, "1200");
  EXPECT_EQ(journal_.DetailInventoryAccount(11), "");
  journal_.DetailUnknown(11);
  journal_.DetailUnknown(11, 1);
  journal_.DetailUnused1(11);
  journal_.DetailUnused1(11, 1);
  journal_.DetailUnused2(11);
  journal_.DetailUnused2(11, 1);
  journal_.DetailUnused3(11);
  journal_.DetailUnused3(11, 1);
  journal_.DetailUnused4(11);
  journal_.DetailUnused4(11, 1);
  EXPECT_EQ(journal_.NDistributions(), 1);
  journal_.DetailTrxType(11);
  EXPECT_EQ(journal_.NDistributions(), 11) << "a stored one does move";
}

}  // namespace
}  // namespace larkmoor
