// The class CashDisbursementJournal: its finders by vendor and by key, its steps through the
// headers of all journals, and the properties that go by the words of a payment. What it shares
// with every journal is tested in general_journal_test.cpp and journal_rows_test.cpp.
#include <cstdint>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include <larkmoor/journal_code.h>
#include <larkmoor/journals/cash_disbursement_journal.h>
#include <larkmoor/journals/cash_receipt_journal.h>
#include <larkmoor/status.h>

#include "connection/shared_state.h"
#include "connection/status_messages.h"
#include "engine/records/jrnl_hdr.h"
#include "engine/records/jrnl_row.h"
#include "engine/runtime_error.h"
#include "support/accounts.h"
#include "support/child_process.h"
#include "support/errors.h"
#include "support/failing_disk.h"
#include "support/journal_fixture.h"
#include "support/raised_errors.h"
#include "support/record_files.h"

namespace larkmoor {
namespace {

using test::AddAccount;
using test::ExpectRaised;
using test::IsHeldOpen;
using test::JournalFiles;
using test::RaisedNumber;

// Journals, as headers bear them.
constexpr std::int16_t Receipt = tovJournalCodeCashReceipt;
constexpr std::int16_t Payment = tovJournalCodeCashDisbursement;
constexpr std::int16_t Invoice = tovJournalCodeSales;
constexpr std::int16_t Bill = tovJournalCodePurchase;

class CashDisbursementJournalTest : public test::JournalFixture<CashDisbursementJournal> {
 protected:
  References WalkByVendor(std::int32_t index) {
    return Walk(journal_.ReadFirstForVendor(index), [&] { return journal_.ReadNextByVendor(); });
  }
};

using CashDisbursementJournalWalk = CashDisbursementJournalTest;
using CashDisbursementJournalByVendor = CashDisbursementJournalTest;
using CashDisbursementJournalByKey = CashDisbursementJournalTest;
using CashDisbursementJournalSteps = CashDisbursementJournalTest;
using CashDisbursementJournalHeader = CashDisbursementJournalTest;
using CashDisbursementJournalRows = CashDisbursementJournalTest;
using CashDisbursementJournalClose = CashDisbursementJournalTest;

// --- ReadFirst and ReadNext ---

TEST_F(CashDisbursementJournalWalk, GivesThePaymentsFromThePeriodOnAndNothingElse) {
  Add(Receipt, 9, "receipt");
  Add(Payment, 1, "too early");
  Add(Payment, 5, "P5");
  Add(Payment, 3, "P3");
  Add(Invoice, 1, "invoice");
  Open();
  EXPECT_EQ(WalkFrom(2), (References{"P3", "P5"}));
}

TEST_F(CashDisbursementJournalWalk, BringsThePeriodBetween0And41) {
  Add(Payment, -1, "P-1");
  Add(Payment, 40, "P40");
  Add(Payment, 41, "P41");
  Open();
  EXPECT_EQ(WalkFrom(50), References{"P41"});
  EXPECT_EQ(WalkFrom(-5), (References{"P40", "P41"}));
}

// --- ReadFirstForVendor and ReadNextByVendor ---

TEST_F(CashDisbursementJournalByVendor, GivesThePaymentsOfTheVendorByNumberAndThoseOfTheNextOnes) {
  Add(Payment, 1, "B7", 7);
  Add(Payment, 2, "A7", 7);
  Add(Payment, 3, "A9", 9);
  Add(Payment, 3, "A6", 6);
  Add(Invoice, 1, "invoice", 7);
  Open();
  EXPECT_EQ(WalkByVendor(7), (References{"A7", "B7", "A9"}));
}

TEST_F(CashDisbursementJournalByVendor, WithoutPaymentsLandsOnTheNextVendor) {
  Add(Payment, 1, "A9", 9);
  Open();
  ASSERT_EQ(journal_.ReadFirstForVendor(7), StatusSuccess);
  EXPECT_EQ(journal_.VendorIndex(), 9);
  EXPECT_EQ(journal_.DetailAmount(1), 1);
}

TEST_F(CashDisbursementJournalByVendor, PassesOverOtherJournalsToTheEnd) {
  Add(Receipt, 1, "receipt", 7);
  Add(Bill, 1, "bill", 7);
  Open();
  EXPECT_EQ(journal_.ReadFirstForVendor(7), StatusEndOfFile);
}

TEST_F(CashDisbursementJournalByVendor, NeedsAPlaceOnItsOwnKey) {
  Add(Payment, 1, "A7", 7);
  Open();
  EXPECT_EQ(journal_.ReadNextByVendor(), StatusInvalidPositioning);
  ASSERT_EQ(journal_.ReadFirst(1), StatusSuccess);
  EXPECT_EQ(journal_.ReadNextByVendor(), StatusDifferentKeyNumber);
}

// The key bears another number in each of these releases, and no release has two of them.
TEST_F(CashDisbursementJournalByVendor, FindsItsKeyInEveryRelease) {
  InEveryRelease([](const JournalFiles& files, CashDisbursementJournal& journal) {
    files.AddTransaction({.nRecord = 1, .journal = Payment, .idNumber = 7}, {10});
    files.AddTransaction({.nRecord = 2, .journal = Payment, .idNumber = 8}, {20});
    EXPECT_EQ(journal.ReadFirstForVendor(7), StatusSuccess);
    EXPECT_EQ(journal.VendorIndex(), 7);
    EXPECT_EQ(journal.ReadNextByVendor(), StatusSuccess);
    EXPECT_EQ(journal.VendorIndex(), 8);
  });
}

// --- GetForKeyL ---

TEST_F(CashDisbursementJournalByKey, ComparesAllFivePartsInEveryRelease) {
  InEveryRelease([](const JournalFiles& files, CashDisbursementJournal& journal) {
    files.AddHeader({.nRecord = 1, .journal = Payment, .period = 5, .trxNumber = 300},
                    [](Tovrin2Record& header) {
                      header.SetByte(JrnlHdrRecord::Subindex1, 17);
                      header.SetByte(JrnlHdrRecord::Subindex2, 200);
                    });
    EXPECT_EQ(journal.GetForKeyL(17, 300, 5, Payment, 200), StatusSuccess);
    EXPECT_EQ(journal.GetForKeyL(16, 300, 5, Payment, 200), StatusKeyNotFound);
    EXPECT_EQ(journal.GetForKeyL(17, 301, 5, Payment, 200), StatusKeyNotFound);
    EXPECT_EQ(journal.GetForKeyL(17, 300, 6, Payment, 200), StatusKeyNotFound);
    EXPECT_EQ(journal.GetForKeyL(17, 300, 5, Bill, 200), StatusKeyNotFound);
    EXPECT_EQ(journal.GetForKeyL(17, 300, 5, Payment, 201), StatusKeyNotFound);
    EXPECT_EQ(RaisedNumber([&] { journal.GetForKeyL(17, 300, 5, Payment, 256); }),
              errors::Overflow);
    EXPECT_EQ(journal.NRecord(), 1);
  });
}

// Below release 13 the number has 16 bits in the key. The release is that of the journal opened
// last, whichever it was.
TEST_F(CashDisbursementJournalByKey, TakesTheNumberInTheBitsThatTheReleaseHasForIt) {
  files_.AddHeader({.nRecord = 1, .journal = Payment, .period = 5, .trxNumber = 40000});
  Open();
  Shared().gDataVersion = 12.9;
  EXPECT_EQ(RaisedNumber([&] { journal_.GetForKeyL(0, 40000, 5, Payment, 0); }), errors::Overflow);
  Shared().gDataVersion = 13.0;
  EXPECT_EQ(journal_.GetForKeyL(0, 40000, 5, Payment, 0), StatusSuccess);
}

// It reads the header alone, of any journal. Rows still belong to the transaction before, and a
// write gives them to the header that was found.
TEST_F(CashDisbursementJournalByKey, LeavesTheRowsOfTheTransactionBefore) {
  files_.AddTransaction({.nRecord = 1, .journal = Payment}, {10, 11});
  files_.AddTransaction({.nRecord = 2, .journal = Bill, .period = 5, .trxNumber = 3}, {20});
  Load(1);
  ASSERT_EQ(journal_.GetForKeyL(0, 3, 5, Bill, 0), StatusSuccess);
  EXPECT_EQ(journal_.JournalID(), Bill);
  EXPECT_EQ(journal_.NDistributions(), 2);
  EXPECT_EQ(journal_.DetailAmount(1), 10);
  ASSERT_EQ(journal_.Update(), StatusSuccess);
  EXPECT_EQ(files_.Amounts(2), (std::vector<double>{10, 11}));
}

TEST_F(CashDisbursementJournalByKey, IsWhereReadNextGoesOnFrom) {
  files_.AddTransaction(
      {.nRecord = 1, .journal = Payment, .period = 9, .reference = "P1", .trxNumber = 1}, {10});
  files_.AddTransaction(
      {.nRecord = 2, .journal = Payment, .period = 1, .reference = "P2", .trxNumber = 2}, {20});
  Open();
  ASSERT_EQ(journal_.ReadFirst(0), StatusSuccess);
  ASSERT_EQ(journal_.GetForKeyL(0, 1, 9, Payment, 0), StatusSuccess);
  ASSERT_EQ(journal_.ReadNext(), StatusSuccess) << "by number, not by period";
  EXPECT_EQ(journal_.CheckNumber(), "P2");
}

// --- StepFirst, StepLast, StepNext and StepPrevious ---

TEST_F(CashDisbursementJournalSteps, GoThroughAllJournalsInTheOrderOfInsertionWithTheirRows) {
  Add(Payment, 9, "payment");
  Add(Receipt, 1, "receipt");
  Add(Bill, 5, "bill");
  Open();
  const auto expectInHand = [&](const char* number, double amount) {
    EXPECT_EQ(journal_.CheckNumber(), number);
    EXPECT_EQ(journal_.NDistributions(), 1);
    EXPECT_EQ(journal_.DetailAmount(1), amount);
  };
  ASSERT_EQ(journal_.StepFirst(), StatusSuccess);
  expectInHand("payment", 1);
  ASSERT_EQ(journal_.StepNext(), StatusSuccess);
  expectInHand("receipt", 2);
  ASSERT_EQ(journal_.StepLast(), StatusSuccess);
  expectInHand("bill", 3);
  EXPECT_EQ(journal_.StepNext(), StatusEndOfFile);
  expectInHand("bill", 3);
  ASSERT_EQ(journal_.StepPrevious(), StatusSuccess);
  expectInHand("receipt", 2);
  ASSERT_EQ(journal_.StepPrevious(), StatusSuccess);
  EXPECT_EQ(journal_.StepPrevious(), StatusEndOfFile);
  expectInHand("payment", 1);
}

TEST_F(CashDisbursementJournalSteps, NeedAnOpenFileAndHeadersAndAnswerTheStatusOfTheRows) {
  EXPECT_EQ(journal_.StepFirst(), StatusFileNotOpen);
  EXPECT_EQ(journal_.StepLast(), StatusFileNotOpen);
  EXPECT_EQ(journal_.StepNext(), StatusFileNotOpen);
  EXPECT_EQ(journal_.StepPrevious(), StatusFileNotOpen);
  Open();
  EXPECT_EQ(journal_.StepFirst(), StatusEndOfFile);
  EXPECT_EQ(journal_.CheckNumber(), "");
  files_.AddHeader({.nRecord = 1, .journal = Payment, .reference = "without rows"});
  EXPECT_EQ(journal_.StepFirst(), StatusEndOfFile);
  EXPECT_EQ(journal_.CheckNumber(), "without rows");
}

// --- The header ---

TEST_F(CashDisbursementJournalHeader, NamesFieldsInTheWordsOfAPayment) {
  Open();
  journal_.NRecord(1);
  journal_.BeginningBalanceFlag(true);
  journal_.CashAmount(1.5);
  journal_.CheckNumber("1001");
  journal_.CustomerIndex(8);
  journal_.CustomerPayment(true);
  journal_.ReimbursableExpense(true);
  journal_.TotalPaidOnInvoice(2.5);
  journal_.VendorIndex(7);
  journal_.VendorName("Elm Street Dairy");
  ASSERT_EQ(journal_.Insert(), StatusSuccess);
  files_.OfHeader(1, [](Tovrin2Record& header) {
    EXPECT_TRUE(header.GetBoolean(JrnlHdrRecord::BeginningBalance));
    EXPECT_EQ(header.GetDouble(JrnlHdrRecord::Amount), 1.5);
    EXPECT_EQ(header.GetText(JrnlHdrRecord::Reference), "1001");
    EXPECT_EQ(header.GetLong(JrnlHdrRecord::OtherIndex), 8);
    EXPECT_TRUE(header.GetBoolean(JrnlHdrRecord::OtherReceipt));
    EXPECT_TRUE(header.GetBoolean(JrnlHdrRecord::HasPartner));
    EXPECT_EQ(header.GetDouble(JrnlHdrRecord::AmountPaid), 2.5);
    EXPECT_EQ(header.GetLong(JrnlHdrRecord::IDNumber), 7);
    EXPECT_EQ(header.GetText(JrnlHdrRecord::Description), "Elm Street Dairy");
    EXPECT_EQ(header.GetDouble(JrnlHdrRecord::PaidOnInvoice), 0) << "that is a bill's";
  });
  EXPECT_EQ(journal_.TotalPaidOnInvoice(), 2.5);
  EXPECT_EQ(journal_.CustomerIndex(), 8);
}

TEST_F(CashDisbursementJournalHeader, CheckIsTheAddressOfTheHeader) {
  Open();
  journal_.NRecord(1);
  journal_.CheckName("Elm Street Dairy");
  journal_.CheckAddr1("1 Elm Street");
  journal_.CheckAddr2("Back door");
  journal_.CheckCity("Elmton");
  journal_.CheckState("OH");
  journal_.CheckZipcode("44001");
  journal_.CheckCountry("USA");
  ASSERT_EQ(journal_.Insert(), StatusSuccess);
  EXPECT_EQ(files_.Text(1, JrnlHdrRecord::Name), "Elm Street Dairy");
  EXPECT_EQ(files_.Text(1, JrnlHdrRecord::Address1), "1 Elm Street");
  EXPECT_EQ(files_.Text(1, JrnlHdrRecord::Address2), "Back door");
  EXPECT_EQ(files_.Text(1, JrnlHdrRecord::City), "Elmton");
  EXPECT_EQ(files_.Text(1, JrnlHdrRecord::State), "OH");
  EXPECT_EQ(files_.Text(1, JrnlHdrRecord::Zipcode), "44001");
  EXPECT_EQ(files_.Text(1, JrnlHdrRecord::Country), "USA");
}

// The two mirror each other in the party that comes first.
TEST_F(CashDisbursementJournalHeader, CustomerAndVendorAreTheVendorAndCustomerOfAReceipt) {
  Open();
  journal_.NRecord(1);
  journal_.CustomerIndex(8);
  journal_.VendorIndex(7);
  journal_.DetailAmount(1, 10);
  ASSERT_EQ(journal_.Insert(), StatusSuccess);
  CashReceiptJournal receipts;
  ASSERT_EQ(receipts.OpenFile(), StatusSuccess);
  ASSERT_EQ(receipts.GetEqual(1), StatusSuccess);
  EXPECT_EQ(receipts.CustomerIndex(), 7);
  EXPECT_EQ(receipts.VendorIndex(), 8);
}

TEST_F(CashDisbursementJournalHeader, MaxTrxNumberIsThatOfThePayments) {
  files_.AddHeader({.nRecord = 1, .journal = Payment, .period = 5, .trxNumber = 40000});
  files_.AddHeader({.nRecord = 2, .journal = Invoice, .period = 5, .trxNumber = 50000});
  EXPECT_EQ(journal_.MaxTrxNumberL(5), 40000);
  EXPECT_EQ(journal_.MaxTrxNumber(5), -25536);
}

TEST_F(CashDisbursementJournalHeader, IncrementBatchCountCountsAPayment) {
  EXPECT_EQ(journal_.IncrementBatchCount(), -1);
  EXPECT_EQ(BatchEntries(Payment), 1);
  EXPECT_EQ(BatchEntries(Receipt), 0);
}

// --- The rows ---

TEST_F(CashDisbursementJournalRows, NameFieldsInTheWordsOfAPayment) {
  Open();
  journal_.NRecord(1);
  journal_.DetailCustomerIndex(1, 8);
  journal_.DetailFlag2(1, true);
  journal_.DetailInvoiceNRecord(1, 40);
  journal_.DetailInvoicePaid(1, "BILL-1");
  journal_.DetailLinkJournalRowEx(1, 11);
  journal_.DetailVendorIndex(1, 7);
  ASSERT_EQ(journal_.Insert(), StatusSuccess);
  const auto rows = files_.OfRows(1, [](Tovrin2Record& row) {
    EXPECT_EQ(row.GetLong(JrnlRowRecord::CustomerIndex), 8);
    EXPECT_TRUE(row.GetBoolean(JrnlRowRecord::ReimbursableExpense));
    EXPECT_EQ(row.GetLong(JrnlRowRecord::OtherNRecord), 40);
    EXPECT_EQ(row.GetText(JrnlRowRecord::InvoiceNumber), "BILL-1");
    EXPECT_EQ(row.GetLong(JrnlRowRecord::LinkJournalRowEx), 11);
    EXPECT_EQ(row.GetLong(JrnlRowRecord::VendorIndex), 7);
    return true;
  });
  EXPECT_EQ(rows.size(), 1U);
}

// A move to row 11 would make the payment grow.
TEST_F(CashDisbursementJournalRows, WhatHasNoStorageDoesNotMoveToTheRow) {
  Add(Payment, 1, "P1");
  Load(1);
  journal_.DetailCostOfSalesAccount(11);
  journal_.DetailCostOfSalesAccount(11, "5000");
  journal_.DetailDiscountAmount(11);
  journal_.DetailDiscountAmount(11, 1);
  journal_.DetailInventoryAmount(11);
  journal_.DetailInventoryAmount(11, 1);
  journal_.DetailUnknownBoolean(11);
  journal_.DetailUnknownBoolean(11, true);
  journal_.DetailUnused1(11);
  journal_.DetailUnused1(11, 1);
  EXPECT_EQ(journal_.DetailInventoryAccount(11), "") << "a receipt reads 0";
  journal_.DetailInventoryAccount(11, "1200");
  EXPECT_EQ(journal_.DetailInventoryAccount(11), "");
  EXPECT_EQ(journal_.NDistributions(), 1);
  journal_.DetailTaxType(11);
  EXPECT_EQ(journal_.NDistributions(), 11) << "a stored one does move";
}

// --- CloseFile ---

TEST_F(CashDisbursementJournalClose, LeavesNothingOpen) {
  Open();
  EXPECT_EQ(journal_.CloseFile(), StatusSuccess);
  EXPECT_FALSE(IsHeldOpen(files_.Headers()));
  EXPECT_FALSE(IsHeldOpen(files_.Rows()));
  EXPECT_FALSE(IsHeldOpen(Accounts()));
}

TEST_F(CashDisbursementJournalClose, RaisesWithTheNamesOfTheFilesThatFailInTheirOrder) {
  test::RunInChild([&] {
    Open();
    AddAccount(company_.Folder(), {"1000", 5});
    Add(Payment, 1, "P1");
    for (const auto& path : {files_.Headers(), files_.Rows(), Accounts()}) test::BreakDisk(path);
    ExpectRaised([&] { return journal_.CloseFile(); }, ErrorClose,
                 "CashDisbursementJournal.CloseFile: "
                 "\r\nCashDisbursementJournal.CloseFile->Chart.CloseFile"
                 "\r\nCashDisbursementJournal.CloseFile->JrnlHdr.CloseFile"
                 "\r\nCashDisbursementJournal.CloseFile->JrnlRow.CloseFile",
                 StatusIOError);
  });
}

}  // namespace
}  // namespace larkmoor
