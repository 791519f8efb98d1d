// The class CashDisbursementJournal: the properties that go by the words of a payment. What it
// shares with some journals is tested in files named after it, like journal_close_test.cpp; what it
// shares with all of them, in general_journal_test.cpp and journal_rows_test.cpp.
#include <cstdint>

#include <gtest/gtest.h>

#include <larkmoor/journal_code.h>
#include <larkmoor/journals/cash_disbursement_journal.h>
#include <larkmoor/journals/cash_receipt_journal.h>
#include <larkmoor/status.h>

#include "engine/records/jrnl_hdr.h"
#include "engine/records/jrnl_row.h"
#include "support/journal_fixture.h"
#include "support/record_files.h"

namespace larkmoor {
namespace {

/// The journal, as its headers bear it.
constexpr std::int16_t Payment = tovJournalCodeCashDisbursement;

using CashDisbursementJournalTest = test::JournalFixture<CashDisbursementJournal>;
using CashDisbursementJournalHeader = CashDisbursementJournalTest;
using CashDisbursementJournalRows = CashDisbursementJournalTest;

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

}  // namespace
}  // namespace larkmoor
