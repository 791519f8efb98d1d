// The class SalesOrderJournal: the properties that read more than one place or another one than
// their name says. What it shares with some journals is tested in files named after it, like
// journal_close_test.cpp; what it shares with all of them, in general_journal_test.cpp and
// journal_rows_test.cpp.
#include <cstdint>
#include <vector>

#include <gtest/gtest.h>

#include <larkmoor/date.h>
#include <larkmoor/journals/sales_order_journal.h>
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

using test::RaisedNumber;
using test::TakenAway;

/// The journal, as its headers bear it.
constexpr std::int16_t Order = 11;

using SalesOrderJournalTest = test::JournalFixture<SalesOrderJournal>;
using SalesOrderJournalWalk = SalesOrderJournalTest;
using SalesOrderJournalHeader = SalesOrderJournalTest;
using SalesOrderJournalRows = SalesOrderJournalTest;

// --- ReadFirst and ReadNext ---

// The journal of the header in hand is looked at before the status of the read.
TEST_F(SalesOrderJournalWalk, OfAFileThatIsNotOpenAnswersByTheHeaderInHand) {
  Add(Order, 1, "S1");
  EXPECT_EQ(journal_.ReadFirst(1), StatusEndOfFile);
  Open();
  ASSERT_EQ(journal_.ReadFirst(1), StatusSuccess);
  ASSERT_EQ(TovrinFile().btReset(), StatusSuccess);
  EXPECT_EQ(journal_.ReadFirst(1), StatusFileNotOpen);
  ASSERT_EQ(journal_.ClearRecord(), StatusSuccess);
  EXPECT_EQ(journal_.ReadFirst(1), StatusEndOfFile);
}

// --- The header ---

TEST_F(SalesOrderJournalHeader, NamesFieldsInTheWordsOfAnOrder) {
  const Date day = Date::FromYmd(2024, 3, 15);
  Open();
  journal_.NRecord(1);
  journal_.ARAmount(2.5);
  journal_.BeginningBalanceFlag(true);
  journal_.CloseSalesOrder(true);
  journal_.ReimbursableExpense(true);
  journal_.CustomerIndex(7);
  journal_.DropShipCustomerIndex(8);
  journal_.CustomerName("Elm Street Dairy");
  journal_.CustomerPO("PO-1");
  journal_.InvoiceNumber("SO-1");
  journal_.ShipToAddr1("1 Elm Street");
  journal_.ShipToAddr2("Back door");
  journal_.NumSOLines2(4);
  journal_.QuoteGoodThruDate(day);
  ASSERT_EQ(journal_.Insert(), StatusSuccess);
  files_.OfHeader(1, [&](Tovrin2Record& header) {
    EXPECT_EQ(header.GetDouble(JrnlHdrRecord::Amount), 2.5);
    EXPECT_TRUE(header.GetBoolean(JrnlHdrRecord::BeginningBalance));
    EXPECT_TRUE(header.GetBoolean(JrnlHdrRecord::CloseOrder));
    EXPECT_TRUE(header.GetBoolean(JrnlHdrRecord::HasPartner));
    EXPECT_EQ(header.GetLong(JrnlHdrRecord::IDNumber), 7);
    EXPECT_EQ(header.GetLong(JrnlHdrRecord::ShipIndex), 8);
    EXPECT_EQ(header.GetText(JrnlHdrRecord::Description), "Elm Street Dairy");
    EXPECT_EQ(header.GetText(JrnlHdrRecord::PONumber), "PO-1");
    EXPECT_EQ(header.GetText(JrnlHdrRecord::Reference), "SO-1");
    EXPECT_EQ(header.GetText(JrnlHdrRecord::ShipToAddress1), "1 Elm Street");
    EXPECT_EQ(header.GetText(JrnlHdrRecord::ShipToAddress2), "Back door");
    EXPECT_EQ(header.GetInteger(JrnlHdrRecord::NumOrderLines), 4);
    EXPECT_EQ(header.GetDate(JrnlHdrRecord::GoodThruDate), day.Serial());
    EXPECT_EQ(header.GetText(JrnlHdrRecord::PurchaseOrderNumber), "") << "that is an invoice's";
  });
  EXPECT_EQ(journal_.CustomerPO(), "PO-1");
  EXPECT_TRUE(journal_.CloseSalesOrder());
  EXPECT_EQ(journal_.QuoteGoodThruDate(), Variant(day));
}

// It writes "255" behind the number of lines and reads both as one number, which is a Byte only
// where there are no lines.
TEST_F(SalesOrderJournalHeader, NumSOLinesReads255WithoutLinesAndOverflowsWithAny) {
  Open();
  EXPECT_EQ(journal_.NumSOLines(), 255);
  constexpr std::int16_t Lines[] = {1, 2, 255, -1};
  for (const std::int16_t lines : Lines) {
    journal_.NumSOLines2(lines);
    EXPECT_EQ(RaisedNumber([&] { return journal_.NumSOLines(); }), errors::Overflow) << lines;
    EXPECT_EQ(journal_.NumSOLines2(), lines);
  }
}

TEST_F(SalesOrderJournalHeader, NumSOLinesAssignedIsReadByNumSOLines2) {
  Open();
  journal_.NumSOLines2(-1);
  journal_.NumSOLines(255);
  EXPECT_EQ(journal_.NumSOLines2(), 255);
  journal_.NumSOLines(0);
  EXPECT_EQ(journal_.NumSOLines2(), 0);
}

TEST_F(SalesOrderJournalHeader, NextSONumberIsThatOfTheGeneralFile) {
  journal_.NextSONumber("SO-2");
  EXPECT_EQ(journal_.NextSONumber(), "SO-2");
  EXPECT_EQ(ReadNextSONumber(), "SO-2");
  const TakenAway away(company_.Folder() / TovrinFileNames::GeneralFile());
  EXPECT_NO_THROW(journal_.NextSONumber("SO-3"));
  EXPECT_EQ(journal_.NextSONumber(), "");
}

// --- The rows ---

TEST_F(SalesOrderJournalRows, NameFieldsInTheWordsOfAnOrder) {
  Open();
  journal_.NRecord(1);
  journal_.DetailSalesTaxAuthority(1, "STATE");
  journal_.DetailShippedAmount(1, 1.5);
  journal_.DetailShippedQuantity(1, 2.5);
  journal_.DetailSOLine2(1, 6);
  ASSERT_EQ(journal_.Insert(), StatusSuccess);
  const auto rows = files_.OfRows(1, [](Tovrin2Record& row) {
    EXPECT_EQ(row.GetText(JrnlRowRecord::TaxCode), "STATE");
    EXPECT_EQ(row.GetDouble(JrnlRowRecord::AmountShipped), 1.5);
    EXPECT_EQ(row.GetDouble(JrnlRowRecord::QuantityShipped), 2.5);
    EXPECT_EQ(row.GetInteger(JrnlRowRecord::OrderLine), 6);
    return true;
  });
  EXPECT_EQ(rows.size(), 1U);
}

// Straight after a read that is the row behind the order.
TEST_F(SalesOrderJournalRows, DetailExtensionAndLinkJournalRowExAreThoseOfTheRowInHand) {
  LoadTwoRows(Order, [](Tovrin2Record& row, std::int16_t number) {
    row.SetDouble(JrnlRowRecord::Extension, number);
    row.SetLong(JrnlRowRecord::LinkJournalRowEx, number);
  });
  EXPECT_EQ(journal_.DetailExtension(1), 3);
  EXPECT_EQ(journal_.LinkJournalRowEx(), 3);
  journal_.DetailAmount(2);
  EXPECT_EQ(journal_.DetailExtension(1), 2);
  EXPECT_EQ(journal_.LinkJournalRowEx(), 2);
  journal_.DetailExtension(1, 22);
  journal_.LinkJournalRowEx(23);
  ASSERT_EQ(journal_.Update(), StatusSuccess);
  EXPECT_EQ(
      files_.OfRows(1, [](Tovrin2Record& row) { return row.GetDouble(JrnlRowRecord::Extension); }),
      (std::vector<double>{1, 22}));
  EXPECT_EQ(files_.OfRows(
                1, [](Tovrin2Record& row) { return row.GetLong(JrnlRowRecord::LinkJournalRowEx); }),
            (std::vector<std::int32_t>{1, 23}));
}

TEST_F(SalesOrderJournalRows, DetailTaxFlagTellsOfTheRowInHandAndThenMoves) {
  LoadTwoRows(Order, [](Tovrin2Record& row, std::int16_t number) {
    constexpr std::int16_t Flagged = 5;
    constexpr std::int16_t Other = 4;
    row.SetInteger(JrnlRowRecord::TaxType, number == 1 ? Other : Flagged);
  });
  EXPECT_TRUE(journal_.DetailTaxFlag(1)) << "the row behind the order is in hand";
  EXPECT_FALSE(journal_.DetailTaxFlag(2)) << "row 1 is";
  EXPECT_TRUE(journal_.DetailTaxFlag(1)) << "row 2 is";
  EXPECT_FALSE(journal_.DetailTaxFlag(1)) << "row 1 is";
  EXPECT_FALSE(journal_.DetailTaxFlag(11));
  EXPECT_EQ(journal_.NDistributions(), 11) << "a move like any other";
}

TEST_F(SalesOrderJournalRows, DetailTaxFlagAssignedDoesNothing) {
  LoadTwoRows(Order, [](Tovrin2Record& row, std::int16_t number) {
    row.SetInteger(JrnlRowRecord::TaxType, number);
  });
  journal_.DetailTaxFlag(11, true);
  EXPECT_EQ(journal_.NDistributions(), 2);
  EXPECT_EQ(journal_.DetailTaxType(1), 1);
  journal_.DetailTaxFlag(1, true);
  EXPECT_EQ(journal_.DetailTaxType(1), 1);
}

TEST_F(SalesOrderJournalRows, DetailSOLineReads255OfLine0AndOverflowsOfAnyOther) {
  LoadTwoRows(Order, [](Tovrin2Record& row, std::int16_t number) {
    if (number > 1) row.SetInteger(JrnlRowRecord::OrderLine, 2);
  });
  EXPECT_EQ(journal_.DetailSOLine(1), 255);
  EXPECT_EQ(RaisedNumber([&] { return journal_.DetailSOLine(2); }), errors::Overflow);
  EXPECT_EQ(journal_.DetailSOLine2(2), 2);
  EXPECT_EQ(journal_.DetailSOLine2(1), 0);
  EXPECT_EQ(journal_.DetailSOLine(11), 255);
  EXPECT_EQ(journal_.NDistributions(), 11) << "it moves to the row";
}

TEST_F(SalesOrderJournalRows, DetailSOLineAssignedIsReadByDetailSOLine2) {
  LoadTwoRows(Order, [](Tovrin2Record& row, std::int16_t) {
    row.SetInteger(JrnlRowRecord::OrderLine, -1);
  });
  journal_.DetailSOLine(2, 255);
  EXPECT_EQ(journal_.DetailSOLine2(1), -1);
  EXPECT_EQ(journal_.DetailSOLine2(2), 255);
}

// A move to row 11 would make the order grow.
TEST_F(SalesOrderJournalRows, WhatHasNoStorageDoesNotMoveToTheRow) {
  LoadTwoRows(Order, [](Tovrin2Record&, std::int16_t) {});
  journal_.DetailExtension(11);
  journal_.DetailExtension(11, 1);
  journal_.DetailFreightFlag(11);
  journal_.DetailFreightFlag(11, true);
  journal_.DetailUnused1(11);
  journal_.DetailUnused1(11, 1);
  journal_.DetailUnknown2(11);
  journal_.DetailUnknown2(11, 1);
  journal_.DetailUnused3(11);
  journal_.DetailUnused3(11, 1);
  EXPECT_EQ(journal_.NDistributions(), 2);
}

}  // namespace
}  // namespace larkmoor
