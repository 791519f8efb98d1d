// The class PurchaseOrderJournal: the properties that go by the words of an order, and those that
// read another number than is stored. What it shares with some journals is tested in files named
// after it, like journal_close_test.cpp; what it shares with all of them, in
// general_journal_test.cpp and journal_rows_test.cpp.
#include <cstdint>
#include <vector>

#include <gtest/gtest.h>

#include <larkmoor/date.h>
#include <larkmoor/journal_code.h>
#include <larkmoor/journals/purchase_order_journal.h>
#include <larkmoor/status.h>
#include <larkmoor/variant.h>

#include "connection/shared_routines.h"
#include "engine/records/default_vendor_data.h"
#include "engine/records/jrnl_hdr.h"
#include "engine/records/jrnl_row.h"
#include "engine/runtime_error.h"
#include "support/errors.h"
#include "support/journal_fixture.h"
#include "support/record_files.h"
#include "support/taken_away.h"

namespace larkmoor {
namespace {

using test::IsHeldOpen;
using test::RaisedNumber;
using test::TakenAway;

/// The journal, as its headers bear it.
constexpr std::int16_t Order = tovJournalCodePurchaseOrder;

using PurchaseOrderJournalTest = test::JournalFixture<PurchaseOrderJournal>;
using PurchaseOrderJournalOpen = PurchaseOrderJournalTest;
using PurchaseOrderJournalHeader = PurchaseOrderJournalTest;
using PurchaseOrderJournalRows = PurchaseOrderJournalTest;

// --- OpenFile ---

// Only the bills keep their headers open then.
TEST_F(PurchaseOrderJournalOpen, WithoutRowsAnswersTheirStatusAndClosesTheHeaders) {
  const TakenAway away(files_.Rows());
  EXPECT_EQ(journal_.OpenFile(), StatusFileNotFound);
  EXPECT_FALSE(IsHeldOpen(files_.Headers()));
}

// --- The header ---

TEST_F(PurchaseOrderJournalHeader, NamesFieldsInTheWordsOfAnOrder) {
  const Date day = Date::FromYmd(2024, 3, 15);
  Open();
  journal_.NRecord(1);
  journal_.AmountPaid(1.5);
  journal_.APAmount(2.5);
  journal_.BeginningBalanceFlag(true);
  journal_.ClosePurchaseOrder(true);
  journal_.CustomerInvoiceNumber("INV-1");
  journal_.DropShipCustomerIndex(8);
  journal_.NumPOLines2(300);
  journal_.POGoodThruDate(day);
  journal_.PONumber("PO-1");
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
    EXPECT_TRUE(header.GetBoolean(JrnlHdrRecord::CloseOrder));
    EXPECT_EQ(header.GetText(JrnlHdrRecord::PONumber), "INV-1");
    EXPECT_EQ(header.GetLong(JrnlHdrRecord::ShipIndex), 8);
    EXPECT_EQ(header.GetInteger(JrnlHdrRecord::NumOrderLines), 300);
    EXPECT_EQ(header.GetDate(JrnlHdrRecord::GoodThruDate), day.Serial());
    EXPECT_EQ(header.GetText(JrnlHdrRecord::Reference), "PO-1");
    EXPECT_TRUE(header.GetBoolean(JrnlHdrRecord::HasPartner));
    EXPECT_EQ(header.GetText(JrnlHdrRecord::ShipToAddress1), "1 Elm Street");
    EXPECT_EQ(header.GetText(JrnlHdrRecord::ShipToAddress2), "Back door");
    EXPECT_EQ(header.GetLong(JrnlHdrRecord::IDNumber), 7);
    EXPECT_EQ(header.GetText(JrnlHdrRecord::Description), "Elm Street Dairy");
    EXPECT_EQ(header.GetText(JrnlHdrRecord::PurchaseOrderNumber), "") << "that is a bill's";
  });
  EXPECT_EQ(journal_.PONumber(), "PO-1");
  EXPECT_TRUE(journal_.ClosePurchaseOrder());
  EXPECT_EQ(journal_.POGoodThruDate(), Variant(day));
}

TEST_F(PurchaseOrderJournalHeader, RemitToIsTheAddressOfTheHeader) {
  Open();
  journal_.NRecord(1);
  journal_.RemitToName("Elm Street Dairy");
  journal_.RemitToAddr1("1 Elm Street");
  journal_.RemitToAddr2("Back door");
  journal_.RemitToCity("Elmton");
  journal_.RemitToState("OH");
  journal_.RemitToZipcode("44001");
  journal_.RemitToCountry("USA");
  ASSERT_EQ(journal_.Insert(), StatusSuccess);
  EXPECT_EQ(files_.Text(1, JrnlHdrRecord::Name), "Elm Street Dairy");
  EXPECT_EQ(files_.Text(1, JrnlHdrRecord::Address1), "1 Elm Street");
  EXPECT_EQ(files_.Text(1, JrnlHdrRecord::Address2), "Back door");
  EXPECT_EQ(files_.Text(1, JrnlHdrRecord::City), "Elmton");
  EXPECT_EQ(files_.Text(1, JrnlHdrRecord::State), "OH");
  EXPECT_EQ(files_.Text(1, JrnlHdrRecord::Zipcode), "44001");
  EXPECT_EQ(files_.Text(1, JrnlHdrRecord::Country), "USA");
}

TEST_F(PurchaseOrderJournalHeader, CustomerInvoiceNumberAndDropShipInvoiceNumberAreOne) {
  Open();
  journal_.CustomerInvoiceNumber("INV-1");
  EXPECT_EQ(journal_.DropShipInvoiceNumber(), "INV-1");
  journal_.DropShipInvoiceNumber("INV-2");
  EXPECT_EQ(journal_.CustomerInvoiceNumber(), "INV-2");
}

TEST_F(PurchaseOrderJournalHeader, NumPOLinesIsAByteAndOverflowsOfMore) {
  Open();
  constexpr std::int16_t InAByte[] = {0, 2, 255};
  for (const std::int16_t lines : InAByte) {
    journal_.NumPOLines2(lines);
    EXPECT_EQ(journal_.NumPOLines(), lines);
  }
  constexpr std::int16_t Beyond[] = {256, 300, 32767, -1};
  for (const std::int16_t lines : Beyond) {
    journal_.NumPOLines2(lines);
    EXPECT_EQ(RaisedNumber([&] { return journal_.NumPOLines(); }), errors::Overflow) << lines;
    EXPECT_EQ(journal_.NumPOLines2(), lines);
  }
}

TEST_F(PurchaseOrderJournalHeader, NumPOLinesAssignedReplacesTheWholeNumber) {
  Open();
  journal_.NumPOLines2(-1);
  journal_.NumPOLines(255);
  EXPECT_EQ(journal_.NumPOLines2(), 255);
  journal_.NumPOLines(0);
  EXPECT_EQ(journal_.NumPOLines2(), 0);
}

TEST_F(PurchaseOrderJournalHeader, LastPONumberIsThatOfTheGeneralFile) {
  EXPECT_EQ(WriteLastPONumber("PO-1"), StatusSuccess);
  EXPECT_EQ(journal_.LastPONumber(), "PO-1");
  journal_.LastPONumber("PO-2");
  EXPECT_EQ(journal_.LastPONumber(), "PO-2");
  EXPECT_EQ(ReadLastPONumber(), "PO-2");
  EXPECT_FALSE(IsHeldOpen(General()));
}

TEST_F(PurchaseOrderJournalHeader, LastPONumberThatCannotBeReadIsEmptyAndAssignedIsLost) {
  journal_.LastPONumber("PO-1");
  {
    const TakenAway away(General());
    EXPECT_NO_THROW(journal_.LastPONumber("PO-2"));
    EXPECT_EQ(journal_.LastPONumber(), "");
  }
  EXPECT_EQ(journal_.LastPONumber(), "PO-1");
  {
    constexpr std::int16_t VendorDefaults = 2;
    test::OpenRecordFile general(General(), DefaultVendorDataRecord::Describe());
    ASSERT_EQ(general.ReadRow(VendorDefaults), StatusSuccess);
    ASSERT_EQ(general.File().btDelete(), StatusSuccess);
  }
  EXPECT_NO_THROW(journal_.LastPONumber("PO-2"));
  EXPECT_EQ(journal_.LastPONumber(), "");
}

// --- The rows ---

TEST_F(PurchaseOrderJournalRows, NameFieldsInTheWordsOfAnOrder) {
  Open();
  journal_.NRecord(1);
  journal_.DetailPOLine2(1, 300);
  journal_.DetailReceivedAmount(1, 1.5);
  journal_.DetailReceivedQuantity(1, 2.5);
  journal_.DetailVendorIndex(1, 7);
  ASSERT_EQ(journal_.Insert(), StatusSuccess);
  const auto rows = files_.OfRows(1, [](Tovrin2Record& row) {
    EXPECT_EQ(row.GetInteger(JrnlRowRecord::OrderLine), 300);
    EXPECT_EQ(row.GetDouble(JrnlRowRecord::AmountShipped), 1.5);
    EXPECT_EQ(row.GetDouble(JrnlRowRecord::QuantityShipped), 2.5);
    EXPECT_EQ(row.GetLong(JrnlRowRecord::VendorIndex), 7);
    return true;
  });
  EXPECT_EQ(rows.size(), 1U);
}

// Straight after a read that is the row behind the order.
TEST_F(PurchaseOrderJournalRows, LinkJournalRowExIsThatOfTheRowInHand) {
  LoadTwoRows(Order, [](Tovrin2Record& row, std::int16_t number) {
    row.SetLong(JrnlRowRecord::LinkJournalRowEx, number);
  });
  EXPECT_EQ(journal_.LinkJournalRowEx(), 3);
  EXPECT_EQ(journal_.DetailLinkJournalRowEx(2), 2);
  EXPECT_EQ(journal_.LinkJournalRowEx(), 2);
  journal_.LinkJournalRowEx(22);
  journal_.DetailLinkJournalRowEx(1, 21);
  ASSERT_EQ(journal_.Update(), StatusSuccess);
  EXPECT_EQ(RowLongs(1, JrnlRowRecord::LinkJournalRowEx), (std::vector<std::int32_t>{21, 22}));
}

// In a sales order it is that of the row in hand.
TEST_F(PurchaseOrderJournalRows, DetailExtensionIsThatOfItsRow) {
  LoadTwoRows(Order, [](Tovrin2Record& row, std::int16_t number) {
    row.SetDouble(JrnlRowRecord::Extension, number);
  });
  EXPECT_EQ(journal_.DetailExtension(1), 1);
  EXPECT_EQ(journal_.DetailExtension(2), 2);
  journal_.DetailExtension(1, 21);
  EXPECT_EQ(journal_.DetailExtension(2), 2);
  EXPECT_EQ(journal_.DetailExtension(1), 21);
}

// Unlike NumPOLines it never overflows.
TEST_F(PurchaseOrderJournalRows, DetailPOLineIsTheLowByteOfTheLine) {
  LoadTwoRows(Order, [](Tovrin2Record& row, std::int16_t number) {
    row.SetInteger(JrnlRowRecord::OrderLine, number == 1 ? std::int16_t{300} : std::int16_t{-1});
  });
  EXPECT_EQ(journal_.DetailPOLine(1), 44);
  EXPECT_EQ(journal_.DetailPOLine2(1), 300);
  EXPECT_EQ(journal_.DetailPOLine(2), 255);
  EXPECT_EQ(journal_.DetailPOLine2(2), -1);
  journal_.DetailPOLine2(1, 256);
  EXPECT_EQ(journal_.DetailPOLine(1), 0);
  EXPECT_EQ(journal_.DetailPOLine(11), 0);
  EXPECT_EQ(journal_.NDistributions(), 11) << "it moves to the row";
}

TEST_F(PurchaseOrderJournalRows, DetailPOLineAssignedReplacesTheWholeLine) {
  LoadTwoRows(Order, [](Tovrin2Record& row, std::int16_t) {
    row.SetInteger(JrnlRowRecord::OrderLine, -1);
  });
  journal_.DetailPOLine(2, 255);
  EXPECT_EQ(journal_.DetailPOLine2(1), -1);
  EXPECT_EQ(journal_.DetailPOLine2(2), 255);
}

// A move to row 11 would make the order grow.
TEST_F(PurchaseOrderJournalRows, WhatHasNoStorageDoesNotMoveToTheRow) {
  LoadTwoRows(Order, [](Tovrin2Record&, std::int16_t) {});
  journal_.DetailUnused(11, 11);
  journal_.DetailUnused(11, 11, 1);
  EXPECT_EQ(journal_.NDistributions(), 2);
  journal_.DetailItemIndex(11);
  EXPECT_EQ(journal_.NDistributions(), 11) << "a stored one does move";
}

}  // namespace
}  // namespace larkmoor
