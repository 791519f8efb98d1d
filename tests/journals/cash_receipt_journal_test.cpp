// The class CashReceiptJournal: the rows that its steps show, and the properties that go by the
// words of a receipt. What it shares with some journals is tested in files named after it, like
// journal_close_test.cpp; what it shares with all of them, in general_journal_test.cpp and
// journal_rows_test.cpp.
#include <cstddef>
#include <cstdint>
#include <vector>

#include <gtest/gtest.h>

#include <larkmoor/journal_code.h>
#include <larkmoor/journals/cash_receipt_journal.h>
#include <larkmoor/status.h>

#include "engine/records/jrnl_hdr.h"
#include "engine/records/jrnl_row.h"
#include "engine/runtime_error.h"
#include "support/errors.h"
#include "support/journal_fixture.h"
#include "support/record_files.h"

namespace larkmoor {
namespace {

using test::JournalFiles;
using test::RaisedNumber;

// Journals, as headers bear them.
constexpr std::int16_t Receipt = tovJournalCodeCashReceipt;
constexpr std::int16_t Invoice = tovJournalCodeSales;

using CashReceiptJournalTest = test::JournalFixture<CashReceiptJournal>;
using CashReceiptJournalSteps = CashReceiptJournalTest;
using CashReceiptJournalHeader = CashReceiptJournalTest;
using CashReceiptJournalRows = CashReceiptJournalTest;

// --- StepFirst, StepLast, StepNext and StepPrevious ---

TEST_F(CashReceiptJournalSteps, ShowTheRowsOfAnInvoiceAsThoseOfAReceipt) {
  files_.AddHeader({.nRecord = 1, .journal = Invoice});
  files_.AddRow(1, [](Tovrin2Record& row) { row.SetText(JrnlRowRecord::InvoiceNumber, "1001"); });
  Open();
  ASSERT_EQ(journal_.StepFirst(), StatusSuccess);
  EXPECT_EQ(journal_.DetailInvoicePaid(1), "1001");
}

// --- The header ---

TEST_F(CashReceiptJournalHeader, NamesFieldsInTheWordsOfAReceipt) {
  Open();
  journal_.NRecord(1);
  journal_.BeginningBalanceFlag(true);
  journal_.CashAmount(1.5);
  journal_.CustomerIndex(7);
  journal_.CustomerName("Elm Street Dairy");
  journal_.InvoicesPaid(2.5);
  journal_.VendorIndex(8);
  journal_.VendorReceipt(true);
  ASSERT_EQ(journal_.Insert(), StatusSuccess);
  files_.OfHeader(1, [](Tovrin2Record& header) {
    EXPECT_TRUE(header.GetBoolean(JrnlHdrRecord::BeginningBalance));
    EXPECT_EQ(header.GetDouble(JrnlHdrRecord::Amount), 1.5);
    EXPECT_EQ(header.GetLong(JrnlHdrRecord::IDNumber), 7);
    EXPECT_EQ(header.GetText(JrnlHdrRecord::Description), "Elm Street Dairy");
    EXPECT_EQ(header.GetDouble(JrnlHdrRecord::AmountPaid), 2.5);
    EXPECT_EQ(header.GetLong(JrnlHdrRecord::OtherIndex), 8);
    EXPECT_TRUE(header.GetBoolean(JrnlHdrRecord::OtherReceipt));
    EXPECT_EQ(header.GetDouble(JrnlHdrRecord::PaidOnInvoice), 0) << "that is an invoice's";
  });
  EXPECT_EQ(journal_.InvoicesPaid(), 2.5);
  EXPECT_EQ(journal_.VendorIndex(), 8);
}

TEST_F(CashReceiptJournalHeader, CCNumberAndCCEncryptedCardAreOne) {
  Open();
  journal_.CCNumber("4111");
  EXPECT_EQ(journal_.CCEncryptedCard(), "4111");
  journal_.CCEncryptedCard("4222");
  EXPECT_EQ(journal_.CCNumber(), "4222");
}

TEST_F(CashReceiptJournalHeader, CCFlagIsTheStateOfTheAuthorizationAndOverflowsBeyondAByte) {
  Open();
  journal_.CCFlag(255);
  EXPECT_EQ(journal_.CCAuthStatus(), 255);
  EXPECT_EQ(journal_.CCFlag(), 255);
  constexpr std::int16_t NoBytes[] = {-1, 256};
  for (const std::int16_t state : NoBytes) {
    journal_.CCAuthStatus(state);
    EXPECT_EQ(RaisedNumber([&] { return journal_.CCFlag(); }), errors::Overflow) << state;
    EXPECT_EQ(journal_.CCAuthStatus(), state);
  }
  journal_.CCFlag(0);
  EXPECT_EQ(journal_.CCAuthStatus(), 0);
}

// The header keeps a reference to the stored card, which these two names do not reach.
TEST_F(CashReceiptJournalHeader, CCUnknownReads0AndCCStoredAcctRefDropsWhatIsWritten) {
  files_.AddHeader({.nRecord = 1, .journal = Receipt}, [](Tovrin2Record& header) {
    header.SetText(JrnlHdrRecord::CCStoredAcctRef, "card 7");
  });
  files_.AddRows(1, {10});
  Load(1);
  EXPECT_EQ(journal_.CCUnknown(0), 0);
  EXPECT_EQ(journal_.CCUnknown(-1), 0);
  journal_.CCStoredAcctRef(0, 65);
  journal_.CCStoredAcctRef(-1, 65);
  EXPECT_EQ(journal_.CCUnknown(0), 0);
  ASSERT_EQ(journal_.Update(), StatusSuccess);
  EXPECT_EQ(files_.Text(1, JrnlHdrRecord::CCStoredAcctRef), "card 7");
}

TEST_F(CashReceiptJournalHeader, RecordByteIsAByteOfTheHeaderInHand) {
  Add(Receipt, 5, "R1", 7);
  EXPECT_EQ(journal_.RecordByte(0), 0) << "nothing was read yet";
  Load(1);
  test::OpenRecordFile headers(files_.Headers(), JrnlHdrRecord::Describe());
  ASSERT_EQ(headers.File().btStepFirst(), StatusSuccess);
  const RecordBytes& bytes = headers.Record().Bytes();
  const auto length = static_cast<std::int32_t>(bytes.size());
  for (std::int32_t i = 0; i < length; ++i) {
    ASSERT_EQ(journal_.RecordByte(i),
              std::to_integer<std::uint8_t>(bytes[static_cast<std::size_t>(i)]))
        << i;
  }
  EXPECT_EQ(journal_.RecordByte(-1), 0);
  EXPECT_EQ(journal_.RecordByte(length), 0);
}

// --- The rows ---

TEST_F(CashReceiptJournalRows, NameFieldsInTheWordsOfAReceipt) {
  Open();
  journal_.NRecord(1);
  journal_.DetailCustomerIndex(1, 7);
  journal_.DetailInvoiceNRecord(1, 40);
  journal_.DetailInvoicePaid(1, "INV-1");
  journal_.DetailSalesTaxAuthority(1, "STATE");
  journal_.DetailVendorIndex(1, 8);
  ASSERT_EQ(journal_.Insert(), StatusSuccess);
  const auto rows = files_.OfRows(1, [](Tovrin2Record& row) {
    EXPECT_EQ(row.GetLong(JrnlRowRecord::CustomerIndex), 7);
    EXPECT_EQ(row.GetLong(JrnlRowRecord::OtherNRecord), 40);
    EXPECT_EQ(row.GetText(JrnlRowRecord::InvoiceNumber), "INV-1");
    EXPECT_EQ(row.GetText(JrnlRowRecord::TaxCode), "STATE");
    EXPECT_EQ(row.GetLong(JrnlRowRecord::VendorIndex), 8);
    return true;
  });
  EXPECT_EQ(rows.size(), 1U);
}

TEST_F(CashReceiptJournalRows, DetailCostOfSalesAmountIsDetailAmount) {
  files_.AddTransaction({.nRecord = 1, .journal = Receipt}, {10, 11});
  Load(1);
  EXPECT_EQ(journal_.DetailCostOfSalesAmount(2), 11);
  journal_.DetailCostOfSalesAmount(1, 5);
  EXPECT_EQ(journal_.DetailAmount(1), 5);
  journal_.DetailAmount(2, 6);
  EXPECT_EQ(journal_.DetailCostOfSalesAmount(2), 6);
  ASSERT_EQ(journal_.Update(), StatusSuccess);
  EXPECT_EQ(files_.Amounts(1), (std::vector<double>{5, 6}));
}

/// Lays a row with its link, so that rows can be told apart.
void AddLinkedRow(const JournalFiles& files, std::int32_t nRecord, std::int32_t link) {
  files.AddRow(nRecord,
               [&](Tovrin2Record& row) { row.SetLong(JrnlRowRecord::LinkJournalRowEx, link); });
}

// Straight after a read that is the row behind the receipt.
TEST_F(CashReceiptJournalRows, LinkJournalRowExIsThatOfTheRowInHand) {
  files_.AddHeader({.nRecord = 1, .journal = Receipt});
  AddLinkedRow(files_, 1, 11);
  AddLinkedRow(files_, 1, 12);
  AddLinkedRow(files_, 2, 99);
  Load(1);
  EXPECT_EQ(journal_.LinkJournalRowEx(), 99);
  EXPECT_EQ(journal_.DetailLinkJournalRowEx(2), 12);
  EXPECT_EQ(journal_.LinkJournalRowEx(), 12);
  journal_.LinkJournalRowEx(22);
  journal_.DetailLinkJournalRowEx(1, 21);
  ASSERT_EQ(journal_.Update(), StatusSuccess);
  EXPECT_EQ(RowLongs(1, JrnlRowRecord::LinkJournalRowEx), (std::vector<std::int32_t>{21, 22}));
}

// A move to row 11 would make the receipt grow.
TEST_F(CashReceiptJournalRows, WhatHasNoStorageDoesNotMoveToTheRow) {
  Add(Receipt, 1, "R1");
  Load(1);
  journal_.DetailCostOfSalesAccount(11);
  journal_.DetailCostOfSalesAccount(11, "5000");
  journal_.DetailDiscountAmount(11);
  journal_.DetailDiscountAmount(11, 1);
  journal_.DetailUnused1(11);
  journal_.DetailUnused1(11, 1);
  EXPECT_EQ(journal_.DetailInventoryAccount(11), "0");
  journal_.DetailInventoryAccount(11, "1200");
  EXPECT_EQ(journal_.DetailInventoryAccount(11), "0");
  EXPECT_EQ(journal_.NDistributions(), 1);
  journal_.DetailCostOfSalesAmount(11);
  EXPECT_EQ(journal_.NDistributions(), 11) << "a stored one does move";
}

}  // namespace
}  // namespace larkmoor
