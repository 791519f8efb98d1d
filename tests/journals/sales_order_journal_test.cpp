// The class SalesOrderJournal: its walk and its finders, and the properties that read more than one
// place or another one than their name says. What it shares with every journal is tested in
// general_journal_test.cpp and journal_rows_test.cpp.
#include <cstdint>
#include <filesystem>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include <larkmoor/date.h>
#include <larkmoor/journals/sales_order_journal.h>
#include <larkmoor/status.h>
#include <larkmoor/variant.h>

#include "connection/shared_routines.h"
#include "connection/shared_state.h"
#include "connection/status_messages.h"
#include "engine/records/general_data.h"
#include "engine/records/jrnl_hdr.h"
#include "engine/records/jrnl_row.h"
#include "engine/runtime_error.h"
#include "engine/tovrin_file.h"
#include "engine/tovrin_file_names.h"
#include "support/accounts.h"
#include "support/child_process.h"
#include "support/company.h"
#include "support/errors.h"
#include "support/failing_disk.h"
#include "support/journals.h"
#include "support/masters.h"
#include "support/raised_errors.h"
#include "support/record_files.h"
#include "support/taken_away.h"

namespace larkmoor {
namespace {

using test::AddAccount;
using test::AddEmployee;
using test::CapturedMessages;
using test::Company;
using test::ExpectRaised;
using test::IsHeldOpen;
using test::JournalFiles;
using test::RaisedNumber;
using test::TakenAway;
using References = std::vector<std::string>;

// Codes of journals, as headers bear them.
constexpr std::int16_t PurchaseOrder = 10;
constexpr std::int16_t Order = 11;
constexpr std::int16_t Quote = 12;

class SalesOrderJournalTest : public testing::Test {
 protected:
  /// Lays a transaction that finders look at, with one row whose amount is its record number.
  void Add(std::int16_t journal, std::int16_t period, std::string_view reference,
           std::int32_t customer = 0) {
    ++lastNRecord_;
    files_.AddTransaction({.nRecord = lastNRecord_,
                           .journal = journal,
                           .period = period,
                           .reference = reference,
                           .idNumber = customer},
                          {static_cast<double>(lastNRecord_)});
  }
  /// Lays an order of two rows, which `fill` fills by their number, and loads it. Behind it lies
  /// the row of another transaction, number 3.
  void LoadTwoRows(const std::function<void(Tovrin2Record&, std::int16_t number)>& fill) {
    files_.AddHeader({.nRecord = 1, .journal = Order});
    for (std::int16_t number = 1; number <= 3; ++number) {
      files_.AddRow(number < 3 ? 1 : 2, [&](Tovrin2Record& row) { fill(row, number); });
    }
    Open();
    ASSERT_EQ(journal_.GetEqual(1), StatusSuccess);
  }
  void Open() { ASSERT_EQ(journal_.OpenFile(), StatusSuccess); }

  /// The numbers of the orders that a walk gives, from its first read to its end.
  References Walk(Status first, const std::function<Status()>& next) {
    References found;
    Status status = first;
    for (; status == StatusSuccess; status = next()) found.push_back(journal_.InvoiceNumber());
    EXPECT_EQ(status, StatusEndOfFile);
    return found;
  }

  std::filesystem::path Employees() const { return company_.Folder() / "Employee.dat"; }

  Company company_;
  JournalFiles files_{company_.Folder()};
  CapturedMessages messages_;
  SalesOrderJournal journal_;
  std::int32_t lastNRecord_ = 0;
};

using SalesOrderJournalWalk = SalesOrderJournalTest;
using SalesOrderJournalByCustomer = SalesOrderJournalTest;
using SalesOrderJournalByNumber = SalesOrderJournalTest;
using SalesOrderJournalHeader = SalesOrderJournalTest;
using SalesOrderJournalRows = SalesOrderJournalTest;
using SalesOrderJournalSalesRep = SalesOrderJournalTest;
using SalesOrderJournalClose = SalesOrderJournalTest;

// --- ReadFirst and ReadNext ---

TEST_F(SalesOrderJournalWalk, GivesTheOrdersFromThePeriodOnAndNothingElse) {
  Add(PurchaseOrder, 9, "purchase order");
  Add(Order, 1, "too early");
  Add(Order, 5, "S5");
  Add(Order, 3, "S3");
  Add(Quote, 3, "quote");
  Open();
  EXPECT_EQ(Walk(journal_.ReadFirst(2), [&] { return journal_.ReadNext(); }),
            (References{"S3", "S5"}));
}

TEST_F(SalesOrderJournalWalk, BringsThePeriodBetween0And41) {
  Add(Order, -1, "S-1");
  Add(Order, 41, "S41");
  Open();
  ASSERT_EQ(journal_.ReadFirst(50), StatusSuccess);
  EXPECT_EQ(journal_.InvoiceNumber(), "S41");
  ASSERT_EQ(journal_.ReadFirst(-5), StatusSuccess);
  EXPECT_EQ(journal_.InvoiceNumber(), "S41");
}

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

// --- ReadFirstForCustomer and ReadNextByCustomer ---

TEST_F(SalesOrderJournalByCustomer, GivesTheOrdersOfTheCustomerByNumberAndThoseOfTheNextOnes) {
  Add(Order, 1, "B7", 7);
  Add(Order, 2, "A7", 7);
  Add(Order, 3, "A9", 9);
  Add(Order, 3, "A6", 6);
  Add(Quote, 1, "Q1", 1);
  Open();
  EXPECT_EQ(Walk(journal_.ReadFirstForCustomer(7), [&] { return journal_.ReadNextByCustomer(); }),
            (References{"A7", "B7", "A9"}));
}

TEST_F(SalesOrderJournalByCustomer, WithoutOrdersLandsOnTheNextCustomer) {
  Add(Order, 1, "A9", 9);
  Open();
  ASSERT_EQ(journal_.ReadFirstForCustomer(7), StatusSuccess);
  EXPECT_EQ(journal_.CustomerIndex(), 9);
  EXPECT_EQ(journal_.DetailAmount(1), 1);
}

TEST_F(SalesOrderJournalByCustomer, PassesOverOtherJournalsToTheEnd) {
  Add(PurchaseOrder, 1, "P7", 7);
  Add(Quote, 1, "Q7", 7);
  Open();
  EXPECT_EQ(journal_.ReadFirstForCustomer(7), StatusEndOfFile);
}

TEST_F(SalesOrderJournalByCustomer, NeedsAPlaceOnItsOwnKey) {
  Add(Order, 1, "A7", 7);
  Open();
  EXPECT_EQ(journal_.ReadNextByCustomer(), StatusInvalidPositioning);
  ASSERT_EQ(journal_.ReadFirst(1), StatusSuccess);
  EXPECT_EQ(journal_.ReadNextByCustomer(), StatusDifferentKeyNumber);
}

// The key bears another number in each of these releases, and no release has two of them.
TEST_F(SalesOrderJournalByCustomer, FindsItsKeyInEveryRelease) {
  for (const double release : {8.0, 12.9, 17.9, 18.0, 18.9, 19.0}) {
    const Company company(release);
    const JournalFiles files(company.Folder());
    files.AddTransaction({.nRecord = 1, .journal = Order, .idNumber = 7}, {10});
    files.AddTransaction({.nRecord = 2, .journal = Order, .idNumber = 8}, {20});
    SalesOrderJournal journal;
    ASSERT_EQ(journal.OpenFile(), StatusSuccess);
    EXPECT_EQ(journal.ReadFirstForCustomer(7), StatusSuccess) << release;
    EXPECT_EQ(journal.CustomerIndex(), 7) << release;
    EXPECT_EQ(journal.ReadNextByCustomer(), StatusSuccess) << release;
    EXPECT_EQ(journal.CustomerIndex(), 8) << release;
  }
}

// --- GetForSalesOrder ---

TEST_F(SalesOrderJournalByNumber, ReadsTheOrderOfThatNumber) {
  Add(Order, 1, "1001");
  Add(Order, 1, "1002");
  Open();
  ASSERT_EQ(journal_.GetForSalesOrder("1002"), StatusSuccess);
  EXPECT_EQ(journal_.InvoiceNumber(), "1002");
  EXPECT_EQ(journal_.DetailAmount(1), 2);
  EXPECT_EQ(journal_.GetForSalesOrder("1003"), StatusKeyNotFound);
}

// The number is not compared on the way.
TEST_F(SalesOrderJournalByNumber, ThatOnlyAnotherJournalHasGivesALaterOrder) {
  Add(PurchaseOrder, 1, "1001");
  Add(Quote, 1, "1002");
  Add(Order, 1, "1005");
  Open();
  ASSERT_EQ(journal_.GetForSalesOrder("1001"), StatusSuccess);
  EXPECT_EQ(journal_.InvoiceNumber(), "1005");
}

TEST_F(SalesOrderJournalByNumber, ThatOnlyAnotherJournalHasIsNotFoundAtTheEndOfTheFile) {
  Add(Order, 1, "1000");
  Add(PurchaseOrder, 1, "1001");
  Open();
  EXPECT_EQ(journal_.GetForSalesOrder("1001"), StatusEndOfFile);
}

TEST_F(SalesOrderJournalByNumber, IsWhereReadNextGoesOnFrom) {
  Add(Order, 3, "1001");
  Add(Order, 1, "1002");
  Add(Quote, 1, "1003");
  Open();
  ASSERT_EQ(journal_.GetForSalesOrder("1001"), StatusSuccess);
  ASSERT_EQ(journal_.ReadNext(), StatusSuccess);
  EXPECT_EQ(journal_.InvoiceNumber(), "1002");
  EXPECT_EQ(journal_.ReadNext(), StatusEndOfFile);
}

TEST_F(SalesOrderJournalByNumber, IsFoundInEveryRelease) {
  for (const double release : {8.0, 12.9, 13.0}) {
    const Company company(release);
    const JournalFiles files(company.Folder());
    files.AddTransaction({.nRecord = 1, .journal = PurchaseOrder, .reference = "1001"}, {10});
    files.AddTransaction({.nRecord = 2, .journal = Order, .reference = "1001"}, {20});
    SalesOrderJournal journal;
    ASSERT_EQ(journal.OpenFile(), StatusSuccess);
    EXPECT_EQ(journal.GetForSalesOrder("1001"), StatusSuccess) << release;
    EXPECT_EQ(journal.NRecord(), 2) << release;
  }
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

TEST_F(SalesOrderJournalHeader, MaxTrxNumberIsThatOfTheOrders) {
  files_.AddHeader({.nRecord = 1, .journal = Order, .period = 5, .trxNumber = 40000});
  files_.AddHeader({.nRecord = 2, .journal = Quote, .period = 5, .trxNumber = 50000});
  EXPECT_EQ(journal_.MaxTrxNumberL(5), 40000);
  EXPECT_EQ(journal_.MaxTrxNumber(5), -25536);
}

TEST_F(SalesOrderJournalHeader, IncrementBatchCountCountsAnOrder) {
  EXPECT_EQ(journal_.IncrementBatchCount(), -1);
  constexpr std::int16_t BatchCounters = 4;
  test::OpenRecordFile general(company_.Folder() / TovrinFileNames::GeneralFile(),
                               GeneralDataRecord::Describe());
  ASSERT_EQ(general.ReadRow(BatchCounters), StatusSuccess);
  EXPECT_EQ(general.Record().GetInteger(GeneralDataRecord::BatchEntryCount, Order), 1);
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
  LoadTwoRows([](Tovrin2Record& row, std::int16_t number) {
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

/// What a row on file holds of the two quantities.
std::vector<double> Quantities(const JournalFiles& files, const Field& field) {
  return files.OfRows(1, [&](Tovrin2Record& row) { return row.GetDouble(field); });
}

TEST_F(SalesOrderJournalRows, DetailQuantityIsTheQuantityFromRelease19On) {
  for (const double release : {18.9, 19.0}) {
    const Company company(release);
    const JournalFiles files(company.Folder());
    SalesOrderJournal journal;
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

TEST_F(SalesOrderJournalRows, DetailQuantityGoesByTheReleaseThatWasOpenedLast) {
  LoadTwoRows([](Tovrin2Record& row, std::int16_t number) {
    row.SetDouble(JrnlRowRecord::Quantity, 10.0 * number);
    row.SetDouble(JrnlRowRecord::QuantityOrdered, 100.0 * number);
  });
  EXPECT_EQ(journal_.DetailQuantity(2), 20);
  Shared().gDataVersion = 18.9;
  EXPECT_EQ(journal_.DetailQuantity(2), 200);
  EXPECT_EQ(journal_.DetailQuantity(1), 100);
}

TEST_F(SalesOrderJournalRows, DetailTaxFlagTellsOfTheRowInHandAndThenMoves) {
  LoadTwoRows([](Tovrin2Record& row, std::int16_t number) {
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
  LoadTwoRows([](Tovrin2Record& row, std::int16_t number) {
    row.SetInteger(JrnlRowRecord::TaxType, number);
  });
  journal_.DetailTaxFlag(11, true);
  EXPECT_EQ(journal_.NDistributions(), 2);
  EXPECT_EQ(journal_.DetailTaxType(1), 1);
  journal_.DetailTaxFlag(1, true);
  EXPECT_EQ(journal_.DetailTaxType(1), 1);
}

TEST_F(SalesOrderJournalRows, DetailSOLineReads255OfLine0AndOverflowsOfAnyOther) {
  LoadTwoRows([](Tovrin2Record& row, std::int16_t number) {
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
  LoadTwoRows(
      [](Tovrin2Record& row, std::int16_t) { row.SetInteger(JrnlRowRecord::OrderLine, -1); });
  journal_.DetailSOLine(2, 255);
  EXPECT_EQ(journal_.DetailSOLine2(1), -1);
  EXPECT_EQ(journal_.DetailSOLine2(2), 255);
}

// A move to row 11 would make the order grow.
TEST_F(SalesOrderJournalRows, WhatHasNoStorageDoesNotMoveToTheRow) {
  LoadTwoRows([](Tovrin2Record&, std::int16_t) {});
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

// --- SalesRepID ---

TEST_F(SalesOrderJournalSalesRep, IsTheIdOfTheEmployeeInTheHeader) {
  AddEmployee(company_.Folder(), {"ADAMS", 11});
  Open();
  journal_.NRecord(1);
  journal_.SalesRepID("ADAMS");
  EXPECT_FALSE(IsHeldOpen(Employees())) << "assigning lets go of the file";
  EXPECT_EQ(journal_.SalesRepID(), "ADAMS");
  EXPECT_TRUE(IsHeldOpen(Employees()));
  ASSERT_EQ(journal_.Insert(), StatusSuccess);
  EXPECT_EQ(files_.Long(1, JrnlHdrRecord::SalesRepIndex), 11);
}

// The texts are those of the class JrnlHdr.
TEST_F(SalesOrderJournalSalesRep, RaisesWhereItCannotBeRead) {
  files_.AddHeader({.nRecord = 1, .journal = Order},
                   [](Tovrin2Record& header) { header.SetLong(JrnlHdrRecord::SalesRepIndex, 77); });
  Open();
  journal_.GetEqual(1);
  {
    const TakenAway away(Employees());
    ExpectRaised([&] { return journal_.SalesRepID(); }, ErrorOpen,
                 "JrnlHdr.SalesRepID->Employee.OpenFile", StatusFileNotFound);
  }
  ExpectRaised([&] { return journal_.SalesRepID(); }, ErrorRead,
               "JrnlHdr.SalesRepID->Employee.GetForIndex(77)", StatusKeyNotFound);
}

TEST_F(SalesOrderJournalSalesRep, AssignedAnUnknownIdShowsAMessageAndStoresNone) {
  Open();
  journal_.SalesRepID("NOBODY");
  EXPECT_EQ(journal_.SalesRepID(), "");
  EXPECT_EQ(messages_.Texts(),
            std::vector<std::string>{"Error getting SalesRep index:\r\n"
                                     "-2147220988:Employee.GetEqual(NOBODY) failed\r\n\r\n" +
                                     BtrieveErrorText(StatusKeyNotFound)});
}

// --- CloseFile ---

TEST_F(SalesOrderJournalClose, RaisesWithTheNamesOfTheFilesThatFailInTheirOrder) {
  test::RunInChild([&] {
    Open();
    journal_.SalesRepID();
    AddAccount(company_.Folder(), {"1100", 5});
    AddEmployee(company_.Folder(), {"ADAMS", 11});
    Add(Order, 1, "A");
    test::BreakDisk(company_.Folder() / "Chart.dat");
    for (const auto& path : {files_.Headers(), files_.Rows(), Employees()}) test::BreakDisk(path);
    ExpectRaised([&] { return journal_.CloseFile(); }, ErrorClose,
                 "SalesOrderJournal.CloseFile: "
                 "\r\nSalesOrderJournal.CloseFile->Chart.CloseFile"
                 "\r\nSalesOrderJournal.CloseFile->Employee.CloseFile"
                 "\r\nSalesOrderJournal.CloseFile->JrnlHdr.CloseFile"
                 "\r\nSalesOrderJournal.CloseFile->JrnlRow.CloseFile",
                 StatusIOError);
  });
}

TEST_F(SalesOrderJournalClose, LeavesNothingOpen) {
  Open();
  journal_.SalesRepID();
  EXPECT_EQ(journal_.CloseFile(), StatusSuccess);
  EXPECT_FALSE(IsHeldOpen(files_.Headers()));
  EXPECT_FALSE(IsHeldOpen(files_.Rows()));
  EXPECT_FALSE(IsHeldOpen(company_.Folder() / "Chart.dat"));
  EXPECT_FALSE(IsHeldOpen(Employees()));
}

}  // namespace
}  // namespace larkmoor
