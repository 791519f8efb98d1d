// The class PurchaseOrderJournal: its walk and its finders, the properties that go by the words of
// an order, and those that read another number than is stored. What it shares with every journal is
// tested in general_journal_test.cpp and journal_rows_test.cpp.
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include <larkmoor/date.h>
#include <larkmoor/journal_code.h>
#include <larkmoor/journals/purchase_order_journal.h>
#include <larkmoor/status.h>
#include <larkmoor/variant.h>

#include "connection/shared_routines.h"
#include "connection/shared_state.h"
#include "connection/status_messages.h"
#include "engine/records/default_vendor_data.h"
#include "engine/records/jrnl_hdr.h"
#include "engine/records/jrnl_row.h"
#include "engine/runtime_error.h"
#include "support/accounts.h"
#include "support/child_process.h"
#include "support/company.h"
#include "support/errors.h"
#include "support/failing_disk.h"
#include "support/journal_fixture.h"
#include "support/raised_errors.h"
#include "support/record_files.h"
#include "support/taken_away.h"

namespace larkmoor {
namespace {

using test::AddAccount;
using test::Company;
using test::ExpectRaised;
using test::IsHeldOpen;
using test::JournalFiles;
using test::RaisedNumber;
using test::TakenAway;

// Journals, as headers bear them.
constexpr std::int16_t Bill = tovJournalCodePurchase;
constexpr std::int16_t Assembly = tovJournalCodeAssemblyAdjustment;
constexpr std::int16_t Order = tovJournalCodePurchaseOrder;
constexpr std::int16_t SalesOrder = tovJournalCodeSalesOrder;

class PurchaseOrderJournalTest : public test::JournalFixture<PurchaseOrderJournal> {
 protected:
  /// Lays an order of two rows, which `fill` fills by their number, and loads it. Behind it lies
  /// the row of another transaction, number 3.
  void LoadTwoRows(const std::function<void(Tovrin2Record&, std::int16_t number)>& fill) {
    files_.AddHeader({.nRecord = 1, .journal = Order});
    for (std::int16_t number = 1; number <= 3; ++number) {
      files_.AddRow(number < 3 ? 1 : 2, [&](Tovrin2Record& row) { fill(row, number); });
    }
    Load(1);
  }
  References WalkByVendor(std::int32_t index) {
    return Walk(journal_.ReadFirstForVendor(index), [&] { return journal_.ReadNextByVendor(); });
  }
};

using PurchaseOrderJournalOpen = PurchaseOrderJournalTest;
using PurchaseOrderJournalClose = PurchaseOrderJournalTest;
using PurchaseOrderJournalWalk = PurchaseOrderJournalTest;
using PurchaseOrderJournalByVendor = PurchaseOrderJournalTest;
using PurchaseOrderJournalByNumber = PurchaseOrderJournalTest;
using PurchaseOrderJournalHeader = PurchaseOrderJournalTest;
using PurchaseOrderJournalRows = PurchaseOrderJournalTest;

// --- OpenFile and CloseFile ---

// Only the bills keep their headers open then.
TEST_F(PurchaseOrderJournalOpen, WithoutRowsAnswersTheirStatusAndClosesTheHeaders) {
  const TakenAway away(files_.Rows());
  EXPECT_EQ(journal_.OpenFile(), StatusFileNotFound);
  EXPECT_FALSE(IsHeldOpen(files_.Headers()));
}

TEST_F(PurchaseOrderJournalClose, LeavesNothingOpenAndDropsTheRows) {
  Add(Order, 1, "P1");
  Load(1);
  EXPECT_EQ(journal_.CloseFile(), StatusSuccess);
  EXPECT_FALSE(IsHeldOpen(files_.Headers()));
  EXPECT_FALSE(IsHeldOpen(files_.Rows()));
  EXPECT_FALSE(IsHeldOpen(Accounts()));
  EXPECT_EQ(journal_.NDistributions(), 0);
  EXPECT_EQ(journal_.CloseFile(), StatusSuccess);
}

TEST_F(PurchaseOrderJournalClose, RaisesWithTheNamesOfTheFilesThatFailInTheirOrder) {
  test::RunInChild([&] {
    Open();
    AddAccount(company_.Folder(), {"2000", 5});
    Add(Order, 1, "P1");
    for (const auto& path : {files_.Headers(), files_.Rows(), Accounts()}) test::BreakDisk(path);
    ExpectRaised([&] { return journal_.CloseFile(); }, ErrorClose,
                 "PurchaseOrderJournal.CloseFile: "
                 "\r\nPurchaseOrderJournal.CloseFile->Chart.CloseFile"
                 "\r\nPurchaseOrderJournal.CloseFile->JrnlHdr.CloseFile"
                 "\r\nPurchaseOrderJournal.CloseFile->JrnlRow.CloseFile",
                 StatusIOError);
  });
}

// --- ReadFirst and ReadNext ---

TEST_F(PurchaseOrderJournalWalk, GivesTheOrdersFromThePeriodOnAndNothingElse) {
  Add(Assembly, 9, "assembly");
  Add(Order, 1, "too early");
  Add(Order, 5, "P5");
  Add(Order, 3, "P3");
  Add(SalesOrder, 1, "sales order");
  Open();
  EXPECT_EQ(WalkFrom(2), (References{"P3", "P5"}));
}

TEST_F(PurchaseOrderJournalWalk, BringsThePeriodBetween0And41) {
  Add(Order, -1, "P-1");
  Add(Order, 40, "P40");
  Add(Order, 41, "P41");
  Open();
  EXPECT_EQ(WalkFrom(50), References{"P41"});
  EXPECT_EQ(WalkFrom(-5), (References{"P40", "P41"}));
}

// --- ReadFirstForVendor and ReadNextByVendor ---

TEST_F(PurchaseOrderJournalByVendor, GivesTheOrdersOfTheVendorByNumberAndThoseOfTheNextOnes) {
  Add(Order, 1, "B7", 7);
  Add(Order, 2, "A7", 7);
  Add(Order, 3, "A9", 9);
  Add(Order, 3, "A6", 6);
  Add(SalesOrder, 1, "sales order", 7);
  Open();
  EXPECT_EQ(WalkByVendor(7), (References{"A7", "B7", "A9"}));
}

TEST_F(PurchaseOrderJournalByVendor, WithoutOrdersLandsOnTheNextVendor) {
  Add(Order, 1, "A9", 9);
  Open();
  ASSERT_EQ(journal_.ReadFirstForVendor(7), StatusSuccess);
  EXPECT_EQ(journal_.VendorIndex(), 9);
  EXPECT_EQ(journal_.DetailAmount(1), 1);
}

TEST_F(PurchaseOrderJournalByVendor, PassesOverOtherJournalsToTheEnd) {
  Add(Bill, 1, "bill", 7);
  Add(SalesOrder, 1, "sales order", 7);
  Open();
  EXPECT_EQ(journal_.ReadFirstForVendor(7), StatusEndOfFile);
}

TEST_F(PurchaseOrderJournalByVendor, NeedsAPlaceOnItsOwnKey) {
  Add(Order, 1, "A7", 7);
  Open();
  EXPECT_EQ(journal_.ReadNextByVendor(), StatusInvalidPositioning);
  ASSERT_EQ(journal_.ReadFirst(1), StatusSuccess);
  EXPECT_EQ(journal_.ReadNextByVendor(), StatusDifferentKeyNumber);
}

// The key bears another number in each of these releases, and no release has two of them.
TEST_F(PurchaseOrderJournalByVendor, FindsItsKeyInEveryRelease) {
  InEveryRelease([](const JournalFiles& files, PurchaseOrderJournal& journal) {
    files.AddTransaction({.nRecord = 1, .journal = Order, .idNumber = 7}, {10});
    files.AddTransaction({.nRecord = 2, .journal = Order, .idNumber = 8}, {20});
    EXPECT_EQ(journal.ReadFirstForVendor(7), StatusSuccess);
    EXPECT_EQ(journal.VendorIndex(), 7);
    EXPECT_EQ(journal.ReadNextByVendor(), StatusSuccess);
    EXPECT_EQ(journal.VendorIndex(), 8);
  });
}

// --- GetForPurchaseOrder ---

TEST_F(PurchaseOrderJournalByNumber, ReadsTheOrderOfThatNumber) {
  Add(Order, 1, "1001");
  Add(Order, 1, "1002");
  Open();
  ASSERT_EQ(journal_.GetForPurchaseOrder("1002"), StatusSuccess);
  EXPECT_EQ(journal_.PONumber(), "1002");
  EXPECT_EQ(journal_.DetailAmount(1), 2);
  EXPECT_EQ(journal_.GetForPurchaseOrder("1003"), StatusKeyNotFound);
}

// The number is not compared on the way.
TEST_F(PurchaseOrderJournalByNumber, ThatOnlyABillHasGivesALaterOrder) {
  Add(Bill, 1, "1001");
  Add(SalesOrder, 1, "1002");
  Add(Order, 1, "1005");
  Open();
  ASSERT_EQ(journal_.GetForPurchaseOrder("1001"), StatusSuccess);
  EXPECT_EQ(journal_.PONumber(), "1005");
}

TEST_F(PurchaseOrderJournalByNumber, ThatOnlyABillHasIsNotFoundAtTheEndOfTheFile) {
  Add(Order, 1, "1000");
  Add(Bill, 1, "1001");
  Open();
  EXPECT_EQ(journal_.GetForPurchaseOrder("1001"), StatusEndOfFile);
}

TEST_F(PurchaseOrderJournalByNumber, IsFoundInEveryRelease) {
  InEveryRelease([](const JournalFiles& files, PurchaseOrderJournal& journal) {
    files.AddTransaction({.nRecord = 1, .journal = Bill, .reference = "1001"}, {10});
    files.AddTransaction({.nRecord = 2, .journal = Order, .reference = "1001"}, {20});
    EXPECT_EQ(journal.GetForPurchaseOrder("1001"), StatusSuccess);
    EXPECT_EQ(journal.NRecord(), 2);
  });
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

TEST_F(PurchaseOrderJournalHeader, MaxTrxNumberIsThatOfTheOrders) {
  files_.AddHeader({.nRecord = 1, .journal = Order, .period = 5, .trxNumber = 40000});
  files_.AddHeader({.nRecord = 2, .journal = SalesOrder, .period = 5, .trxNumber = 50000});
  EXPECT_EQ(journal_.MaxTrxNumberL(5), 40000);
  EXPECT_EQ(journal_.MaxTrxNumber(5), -25536);
}

TEST_F(PurchaseOrderJournalHeader, IncrementBatchCountCountsAnOrder) {
  EXPECT_EQ(journal_.IncrementBatchCount(), -1);
  EXPECT_EQ(BatchEntries(Order), 1);
  EXPECT_EQ(BatchEntries(Bill), 0);
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
  LoadTwoRows([](Tovrin2Record& row, std::int16_t number) {
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
  LoadTwoRows([](Tovrin2Record& row, std::int16_t number) {
    row.SetDouble(JrnlRowRecord::Extension, number);
  });
  EXPECT_EQ(journal_.DetailExtension(1), 1);
  EXPECT_EQ(journal_.DetailExtension(2), 2);
  journal_.DetailExtension(1, 21);
  EXPECT_EQ(journal_.DetailExtension(2), 2);
  EXPECT_EQ(journal_.DetailExtension(1), 21);
}

/// One of the two quantities of the rows on file.
std::vector<double> Quantities(const JournalFiles& files, const Field& field) {
  return files.OfRows(1, [&](Tovrin2Record& row) { return row.GetDouble(field); });
}

TEST_F(PurchaseOrderJournalRows, DetailQuantityIsTheQuantityFromRelease19On) {
  for (const double release : {18.9, 19.0}) {
    const Company company(release);
    const JournalFiles files(company.Folder());
    PurchaseOrderJournal journal;
    ASSERT_EQ(journal.OpenFile(), StatusSuccess);
    journal.NRecord(1);
    journal.DetailQuantity(1, 10);
    journal.DetailQuantity(2, 20);
    EXPECT_EQ(journal.DetailQuantity(1), 10) << release;
    ASSERT_EQ(journal.Insert(), StatusSuccess);
    const bool isNew = release >= 19.0;
    const auto& stored = isNew ? JrnlRowRecord::Quantity : JrnlRowRecord::QuantityOrdered;
    const auto& other = isNew ? JrnlRowRecord::QuantityOrdered : JrnlRowRecord::Quantity;
    EXPECT_EQ(Quantities(files, stored), (std::vector<double>{10, 20})) << release;
    EXPECT_EQ(Quantities(files, other), (std::vector<double>{0, 0})) << release;
  }
}

TEST_F(PurchaseOrderJournalRows, DetailQuantityGoesByTheReleaseThatWasOpenedLast) {
  LoadTwoRows([](Tovrin2Record& row, std::int16_t number) {
    row.SetDouble(JrnlRowRecord::Quantity, 10.0 * number);
    row.SetDouble(JrnlRowRecord::QuantityOrdered, 100.0 * number);
  });
  EXPECT_EQ(journal_.DetailQuantity(2), 20);
  Shared().gDataVersion = 18.9;
  EXPECT_EQ(journal_.DetailQuantity(2), 200);
  EXPECT_EQ(journal_.DetailQuantity(1), 100);
}

// Unlike NumPOLines it never overflows.
TEST_F(PurchaseOrderJournalRows, DetailPOLineIsTheLowByteOfTheLine) {
  LoadTwoRows([](Tovrin2Record& row, std::int16_t number) {
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
  LoadTwoRows(
      [](Tovrin2Record& row, std::int16_t) { row.SetInteger(JrnlRowRecord::OrderLine, -1); });
  journal_.DetailPOLine(2, 255);
  EXPECT_EQ(journal_.DetailPOLine2(1), -1);
  EXPECT_EQ(journal_.DetailPOLine2(2), 255);
}

// A move to row 11 would make the order grow.
TEST_F(PurchaseOrderJournalRows, WhatHasNoStorageDoesNotMoveToTheRow) {
  LoadTwoRows([](Tovrin2Record&, std::int16_t) {});
  journal_.DetailUnused(11, 11);
  journal_.DetailUnused(11, 11, 1);
  EXPECT_EQ(journal_.NDistributions(), 2);
  journal_.DetailItemIndex(11);
  EXPECT_EQ(journal_.NDistributions(), 11) << "a stored one does move";
}

}  // namespace
}  // namespace larkmoor
