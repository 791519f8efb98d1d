// The class SalesJournal: the walk over the invoices and then the quotes, and its own properties.
// What it shares with some journals is tested in files named after it, like journal_close_test.cpp;
// what it shares with all of them, in general_journal_test.cpp and journal_rows_test.cpp.
#include <cstdint>
#include <vector>

#include <gtest/gtest.h>

#include <larkmoor/date.h>
#include <larkmoor/journals/sales_journal.h>
#include <larkmoor/status.h>
#include <larkmoor/variant.h>

#include "connection/shared_routines.h"
#include "engine/records/jrnl_hdr.h"
#include "engine/records/jrnl_row.h"
#include "engine/runtime_error.h"
#include "engine/tovrin_file.h"
#include "engine/tovrin_file_names.h"
#include "support/errors.h"
#include "support/journal_fixture.h"
#include "support/record_files.h"
#include "support/taken_away.h"

namespace larkmoor {
namespace {

using test::JournalFiles;
using test::RaisedNumber;
using test::TakenAway;

// Codes of journals, as headers bear them.
constexpr std::int16_t Invoice = 3;
constexpr std::int16_t Purchase = 4;
constexpr std::int16_t QuoteCode = 12;

using SalesJournalTest = test::JournalFixture<SalesJournal>;
using SalesJournalWalk = SalesJournalTest;
using SalesJournalHeader = SalesJournalTest;
using SalesJournalRows = SalesJournalTest;

// --- ReadFirst and ReadNext ---

TEST_F(SalesJournalWalk, GivesTheInvoicesFromThePeriodOnAndThenTheQuotes) {
  Add(Invoice, 1, "too early");
  Add(Invoice, 5, "I5");
  Add(Invoice, 3, "I3");
  Add(Purchase, 3, "purchase");
  Add(QuoteCode, 1, "too early");
  Add(QuoteCode, 4, "Q4");
  Add(QuoteCode, 3, "Q3");
  Open();
  EXPECT_EQ(WalkFrom(2), (References{"I3", "I5", "Q3", "Q4"}));
}

TEST_F(SalesJournalWalk, LoadsTheRowsOfEach) {
  files_.AddTransaction({.nRecord = 1, .journal = Invoice}, {10, 11});
  files_.AddTransaction({.nRecord = 2, .journal = QuoteCode}, {20, 21, 22});
  Open();
  ASSERT_EQ(journal_.ReadFirst(0), StatusSuccess);
  EXPECT_EQ(journal_.NDistributions(), 2);
  EXPECT_EQ(journal_.DetailAmount(2), 11);
  ASSERT_EQ(journal_.ReadNext(), StatusSuccess);
  EXPECT_EQ(journal_.NDistributions(), 3);
  EXPECT_EQ(journal_.DetailAmount(3), 22);
}

TEST_F(SalesJournalWalk, BeginsWithTheQuotesWhereThereIsNoInvoice) {
  Add(QuoteCode, 3, "Q3");
  Add(QuoteCode, 4, "Q4");
  Open();
  ASSERT_EQ(journal_.ReadFirst(1), StatusSuccess);
  EXPECT_EQ(journal_.InvoiceNumber(), "Q3");
  EXPECT_TRUE(journal_.Quote());
  EXPECT_EQ(journal_.NDistributions(), 1);
  EXPECT_EQ(WalkFrom(1), (References{"Q3", "Q4"}));
}

TEST_F(SalesJournalWalk, BeginsWithTheQuotesWhereOnlyAnotherJournalFollows) {
  Add(Invoice, 1, "too early");
  Add(Purchase, 1, "purchase");
  Add(QuoteCode, 3, "Q3");
  Open();
  EXPECT_EQ(WalkFrom(2), (References{"Q3"}));
}

TEST_F(SalesJournalWalk, WithoutQuotesEndsWithTheInvoices) {
  Add(Invoice, 3, "I3");
  Open();
  EXPECT_EQ(WalkFrom(1), (References{"I3"}));
  Add(Purchase, 3, "purchase");
  EXPECT_EQ(WalkFrom(1), (References{"I3"}));
}

TEST_F(SalesJournalWalk, WithoutEitherIsAtItsEnd) {
  Open();
  EXPECT_EQ(journal_.ReadFirst(1), StatusEndOfFile);
  Add(Purchase, 3, "purchase");
  EXPECT_EQ(journal_.ReadFirst(1), StatusEndOfFile);
}

TEST_F(SalesJournalWalk, StaysAtItsEnd) {
  Add(Invoice, 3, "I3");
  Add(QuoteCode, 3, "Q3");
  Open();
  EXPECT_EQ(WalkFrom(1).size(), 2U);
  EXPECT_EQ(journal_.ReadNext(), StatusEndOfFile);
  EXPECT_EQ(journal_.ReadNext(), StatusEndOfFile);
}

TEST_F(SalesJournalWalk, BringsThePeriodBetween0And41) {
  Add(Invoice, -1, "I-1");
  Add(Invoice, 41, "I41");
  Add(QuoteCode, -1, "Q-1");
  Add(QuoteCode, 40, "Q40");
  Add(QuoteCode, 41, "Q41");
  Open();
  EXPECT_EQ(WalkFrom(99), (References{"I41", "Q41"}));
  EXPECT_EQ(WalkFrom(-9), (References{"I41", "Q40", "Q41"}));
}

TEST_F(SalesJournalWalk, OfAFileThatIsNotOpenAnswersByTheHeaderInHand) {
  Add(Invoice, 1, "I1");
  Add(QuoteCode, 1, "Q1");
  EXPECT_EQ(journal_.ReadFirst(1), StatusEndOfFile) << "neither invoice nor quote in hand";
  constexpr std::int32_t Both[] = {1, 2};
  for (const std::int32_t nRecord : Both) {
    Open();
    ASSERT_EQ(journal_.GetEqual(nRecord), StatusSuccess);
    ASSERT_EQ(TovrinFile().btReset(), StatusSuccess);
    EXPECT_EQ(journal_.ReadFirst(1), StatusFileNotOpen) << nRecord;
  }
}

// GetEqual turns the walk to the record numbers. Where it meets another journal it goes over to the
// quotes by period, and there it has lost its key.
TEST_F(SalesJournalWalk, AfterGetEqualReachesOneQuoteAndAnswers7) {
  Add(Invoice, 1, "I1");
  Add(Invoice, 2, "I2");
  Add(Purchase, 1, "purchase");
  Add(Invoice, 3, "I3");
  Add(QuoteCode, 1, "Q1");
  Add(QuoteCode, 2, "Q2");
  Open();
  ASSERT_EQ(journal_.ReadFirst(1), StatusSuccess);
  ASSERT_EQ(journal_.GetEqual(2), StatusSuccess);
  ASSERT_EQ(journal_.ReadNext(), StatusSuccess);
  EXPECT_EQ(journal_.InvoiceNumber(), "Q1");
  EXPECT_EQ(journal_.ReadNext(), StatusDifferentKeyNumber);
}

TEST_F(SalesJournalWalk, AfterGetEqualGoesByRecordNumber) {
  Add(Invoice, 9, "I9");
  Add(Invoice, 1, "I1");
  Open();
  ASSERT_EQ(journal_.ReadFirst(1), StatusSuccess);
  ASSERT_EQ(journal_.GetEqual(1), StatusSuccess);
  EXPECT_EQ(journal_.InvoiceNumber(), "I9");
  ASSERT_EQ(journal_.ReadNext(), StatusSuccess);
  EXPECT_EQ(journal_.InvoiceNumber(), "I1");
}

// --- The header ---

TEST_F(SalesJournalHeader, NamesFieldsInTheWordsOfASale) {
  const Date day = Date::FromYmd(2024, 3, 15);
  Open();
  journal_.NRecord(1);
  journal_.AmountReceived(1.5);
  journal_.ARAmount(2.5);
  journal_.BeginningBalanceFlag(true);
  journal_.ReimbursableExpense(true);
  journal_.CustomerIndex(7);
  journal_.DropShipCustomerIndex(8);
  journal_.CustomerName("Elm Street Dairy");
  journal_.CustomerPO("PO-1");
  journal_.InvoiceNumber("INV-1");
  journal_.ShipToAddr1("1 Elm Street");
  journal_.ShipToAddr2("Back door");
  journal_.SONo("SO-1");
  journal_.QuoteGoodThruDate(day);
  ASSERT_EQ(journal_.Insert(), StatusSuccess);
  files_.OfHeader(1, [&](Tovrin2Record& header) {
    EXPECT_EQ(header.GetDouble(JrnlHdrRecord::PaidOnInvoice), 1.5);
    EXPECT_EQ(header.GetDouble(JrnlHdrRecord::Amount), 2.5);
    EXPECT_TRUE(header.GetBoolean(JrnlHdrRecord::BeginningBalance));
    EXPECT_TRUE(header.GetBoolean(JrnlHdrRecord::HasPartner));
    EXPECT_EQ(header.GetLong(JrnlHdrRecord::IDNumber), 7);
    EXPECT_EQ(header.GetLong(JrnlHdrRecord::ShipIndex), 8);
    EXPECT_EQ(header.GetText(JrnlHdrRecord::Description), "Elm Street Dairy");
    EXPECT_EQ(header.GetText(JrnlHdrRecord::PurchaseOrderNumber), "PO-1");
    EXPECT_EQ(header.GetText(JrnlHdrRecord::Reference), "INV-1");
    EXPECT_EQ(header.GetText(JrnlHdrRecord::ShipToAddress1), "1 Elm Street");
    EXPECT_EQ(header.GetText(JrnlHdrRecord::ShipToAddress2), "Back door");
    EXPECT_EQ(header.GetText(JrnlHdrRecord::OrderNumber), "SO-1");
    EXPECT_EQ(header.GetDate(JrnlHdrRecord::GoodThruDate), day.Serial());
    EXPECT_EQ(header.GetText(JrnlHdrRecord::PONumber), "") << "that is a sales order's";
  });
  EXPECT_EQ(journal_.AmountReceived(), 1.5);
  EXPECT_EQ(journal_.CustomerPO(), "PO-1");
  EXPECT_EQ(journal_.QuoteGoodThruDate(), Variant(day));
}

TEST_F(SalesJournalHeader, HasPartnerAndReimbursableExpenseAreOne) {
  Open();
  journal_.HasPartner(true);
  EXPECT_TRUE(journal_.ReimbursableExpense());
  journal_.ReimbursableExpense(false);
  EXPECT_FALSE(journal_.HasPartner());
}

TEST_F(SalesJournalHeader, QuoteFollowsTheJournalAndCannotBeSet) {
  Open();
  EXPECT_FALSE(journal_.Quote());
  journal_.Quote(true);
  EXPECT_FALSE(journal_.Quote());
  EXPECT_EQ(journal_.JournalID(), 0);
  journal_.JournalID(QuoteCode);
  EXPECT_TRUE(journal_.Quote());
  journal_.Quote(false);
  EXPECT_TRUE(journal_.Quote());
  journal_.JournalID(Invoice);
  EXPECT_FALSE(journal_.Quote());
}

TEST_F(SalesJournalHeader, NumOrderLinesIsALongOver16Bits) {
  Open();
  journal_.NumOrderLines(32767);
  EXPECT_EQ(journal_.NumOrderLines(), 32767);
  journal_.NumOrderLines(-2);
  EXPECT_EQ(journal_.NumOrderLines(), -2);
  EXPECT_EQ(RaisedNumber([&] { journal_.NumOrderLines(32768); }), errors::Overflow);
  EXPECT_EQ(journal_.NumOrderLines(), -2);
}

TEST_F(SalesJournalHeader, NextNumbersAreThoseOfTheGeneralFile) {
  journal_.NextInvoiceNumber("INV-2");
  journal_.NextQuoteNumber("Q-2");
  EXPECT_EQ(journal_.NextInvoiceNumber(), "INV-2");
  EXPECT_EQ(journal_.NextQuoteNumber(), "Q-2");
  EXPECT_EQ(ReadNextInvoiceNumber(), "INV-2");
  EXPECT_EQ(ReadNextQuoteNumber(), "Q-2");
  const TakenAway away(company_.Folder() / TovrinFileNames::GeneralFile());
  EXPECT_NO_THROW(journal_.NextInvoiceNumber("INV-3"));
  EXPECT_NO_THROW(journal_.NextQuoteNumber("Q-3"));
  EXPECT_EQ(journal_.NextInvoiceNumber(), "");
  EXPECT_EQ(journal_.NextQuoteNumber(), "");
}

// --- The rows ---

TEST_F(SalesJournalRows, NameFieldsInTheWordsOfASale) {
  Open();
  journal_.NRecord(1);
  journal_.DetailInvoiceNRecord(1, 40);
  journal_.DetailInvoicePaid(1, "INV-1");
  journal_.DetailSalesTaxAuthority(1, "STATE");
  journal_.DetailSOLine(1, 5);
  journal_.DetailDisplayedLine(1, 6);
  ASSERT_EQ(journal_.Insert(), StatusSuccess);
  const auto rows = files_.OfRows(1, [](Tovrin2Record& row) {
    EXPECT_EQ(row.GetLong(JrnlRowRecord::OtherNRecord), 40);
    EXPECT_EQ(row.GetText(JrnlRowRecord::InvoiceNumber), "INV-1");
    EXPECT_EQ(row.GetText(JrnlRowRecord::TaxCode), "STATE");
    EXPECT_EQ(row.GetInteger(JrnlRowRecord::LinkToOtherTrxIndex), 5);
    EXPECT_EQ(row.GetInteger(JrnlRowRecord::OrderLine), 6);
    return true;
  });
  EXPECT_EQ(rows.size(), 1U);
}

/// Lays a row with its place on the order and its link, so that rows can be told apart.
void AddLinkedRow(const JournalFiles& files, std::int32_t nRecord, std::int16_t number) {
  files.AddRow(nRecord, [&](Tovrin2Record& row) {
    row.SetDouble(JrnlRowRecord::Amount, number);
    row.SetInteger(JrnlRowRecord::OrderLine, number);
    row.SetLong(JrnlRowRecord::LinkJournalRowEx, number);
  });
}

// Straight after a read that is the row behind the transaction.
TEST_F(SalesJournalRows, DisplayedLineAndLinkJournalRowExAreThoseOfTheRowInHand) {
  files_.AddHeader({.nRecord = 1, .journal = Invoice});
  AddLinkedRow(files_, 1, 11);
  AddLinkedRow(files_, 1, 12);
  AddLinkedRow(files_, 2, 99);
  Open();
  ASSERT_EQ(journal_.GetEqual(1), StatusSuccess);
  EXPECT_EQ(journal_.DetailDisplayedLine(1), 99);
  EXPECT_EQ(journal_.LinkJournalRowEx(), 99);
  ASSERT_EQ(journal_.DetailAmount(2), 12);
  EXPECT_EQ(journal_.DetailDisplayedLine(1), 12);
  EXPECT_EQ(journal_.LinkJournalRowEx(), 12);
  journal_.DetailDisplayedLine(1, 22);
  journal_.LinkJournalRowEx(23);
  ASSERT_EQ(journal_.Update(), StatusSuccess);
  EXPECT_EQ(
      files_.OfRows(1, [](Tovrin2Record& row) { return row.GetInteger(JrnlRowRecord::OrderLine); }),
      (std::vector<std::int16_t>{11, 22}));
  EXPECT_EQ(files_.OfRows(
                1, [](Tovrin2Record& row) { return row.GetLong(JrnlRowRecord::LinkJournalRowEx); }),
            (std::vector<std::int32_t>{11, 23}));
}

TEST_F(SalesJournalRows, DetailLinkJournalRowExIsThatOfItsRow) {
  files_.AddHeader({.nRecord = 1, .journal = Invoice});
  AddLinkedRow(files_, 1, 11);
  AddLinkedRow(files_, 1, 12);
  Open();
  ASSERT_EQ(journal_.GetEqual(1), StatusSuccess);
  EXPECT_EQ(journal_.DetailLinkJournalRowEx(1), 11);
  EXPECT_EQ(journal_.LinkJournalRowEx(), 11);
  EXPECT_EQ(journal_.DetailLinkJournalRowEx(2), 12);
}

// A move to row 11 would make the transaction grow.
TEST_F(SalesJournalRows, WhatHasNoStorageDoesNotMoveToTheRow) {
  Add(Invoice, 1, "A");
  Open();
  ASSERT_EQ(journal_.GetEqual(1), StatusSuccess);
  journal_.DetailDisplayedLine(11);
  journal_.DetailDisplayedLine(11, 1);
  journal_.DetailApplyToSO(11);
  journal_.DetailApplyToSO(11, true);
  journal_.DetailFreightFlag(11);
  journal_.DetailFreightFlag(11, true);
  journal_.DetailCostOfSalesAccount(11);
  journal_.DetailCostOfSalesAccount(11, "1100");
  journal_.DetailCostOfSalesAmount(11);
  journal_.DetailCostOfSalesAmount(11, 1);
  journal_.DetailUnused1(11);
  journal_.DetailUnused1(11, 1);
  EXPECT_EQ(journal_.DetailInventoryAccount(11), "0");
  journal_.DetailInventoryAccount(11, "1100");
  EXPECT_EQ(journal_.DetailInventoryAccount(11), "0");
  EXPECT_EQ(journal_.NDistributions(), 1);
  journal_.DetailTaxType(11);
  EXPECT_EQ(journal_.NDistributions(), 11) << "a stored one does move";
}

TEST_F(SalesJournalRows, BadIndexShowsTheMessageOfEveryJournal) {
  Add(Invoice, 1, "A");
  Open();
  ASSERT_EQ(journal_.GetEqual(1), StatusSuccess);
  journal_.DetailQuantity(0);
  EXPECT_EQ(messages_.Texts(), Messages{"Error in PositionOnDetail(0): NRowsDefined = 10, "
                                        "NDetail = -1, j = 0\r\n"
                                        "9 : Subscript out of range"});
}

}  // namespace
}  // namespace larkmoor
