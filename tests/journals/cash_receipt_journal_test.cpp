// The class CashReceiptJournal: its finders by customer and by key, its steps through the headers
// of all journals, and the properties that go by the words of a receipt. What it shares with every
// journal is tested in general_journal_test.cpp and journal_rows_test.cpp.
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include <larkmoor/journal_code.h>
#include <larkmoor/journals/cash_receipt_journal.h>
#include <larkmoor/status.h>

#include "connection/shared_state.h"
#include "connection/status_messages.h"
#include "engine/records/jrnl_hdr.h"
#include "engine/records/jrnl_row.h"
#include "engine/runtime_error.h"
#include "support/accounts.h"
#include "support/child_process.h"
#include "support/company.h"
#include "support/errors.h"
#include "support/failing_disk.h"
#include "support/journal_fixture.h"
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
using test::JournalFiles;
using test::RaisedNumber;
using test::TakenAway;

// Journals, as headers bear them.
constexpr std::int16_t Entry = tovJournalCodeGeneral;
constexpr std::int16_t Receipt = tovJournalCodeCashReceipt;
constexpr std::int16_t Payment = tovJournalCodeCashDisbursement;
constexpr std::int16_t Invoice = tovJournalCodeSales;

class CashReceiptJournalTest : public test::JournalFixture<CashReceiptJournal> {
 protected:
  References WalkByCustomer(std::int32_t index) {
    return Walk(journal_.ReadFirstForCustomer(index),
                [&] { return journal_.ReadNextByCustomer(); });
  }

  std::filesystem::path Employees() const { return company_.Folder() / "Employee.dat"; }
};

using CashReceiptJournalWalk = CashReceiptJournalTest;
using CashReceiptJournalByCustomer = CashReceiptJournalTest;
using CashReceiptJournalByKey = CashReceiptJournalTest;
using CashReceiptJournalSteps = CashReceiptJournalTest;
using CashReceiptJournalHeader = CashReceiptJournalTest;
using CashReceiptJournalRows = CashReceiptJournalTest;
using CashReceiptJournalSalesRep = CashReceiptJournalTest;
using CashReceiptJournalClose = CashReceiptJournalTest;

// --- ReadFirst and ReadNext ---

TEST_F(CashReceiptJournalWalk, GivesTheReceiptsFromThePeriodOnAndNothingElse) {
  Add(Entry, 9, "entry");
  Add(Receipt, 1, "too early");
  Add(Receipt, 5, "R5");
  Add(Receipt, 3, "R3");
  Add(Payment, 1, "payment");
  Open();
  EXPECT_EQ(WalkFrom(2), (References{"R3", "R5"}));
}

TEST_F(CashReceiptJournalWalk, BringsThePeriodBetween0And41) {
  Add(Receipt, -1, "R-1");
  Add(Receipt, 40, "R40");
  Add(Receipt, 41, "R41");
  Open();
  EXPECT_EQ(WalkFrom(50), References{"R41"});
  EXPECT_EQ(WalkFrom(-5), (References{"R40", "R41"}));
}

// --- ReadFirstForCustomer and ReadNextByCustomer ---

TEST_F(CashReceiptJournalByCustomer, GivesTheReceiptsOfTheCustomerByNumberAndThoseOfTheNextOnes) {
  Add(Receipt, 1, "B7", 7);
  Add(Receipt, 2, "A7", 7);
  Add(Receipt, 3, "A9", 9);
  Add(Receipt, 3, "A6", 6);
  Add(Payment, 1, "payment", 7);
  Open();
  EXPECT_EQ(WalkByCustomer(7), (References{"A7", "B7", "A9"}));
}

TEST_F(CashReceiptJournalByCustomer, WithoutReceiptsLandsOnTheNextCustomer) {
  Add(Receipt, 1, "A9", 9);
  Open();
  ASSERT_EQ(journal_.ReadFirstForCustomer(7), StatusSuccess);
  EXPECT_EQ(journal_.CustomerIndex(), 9);
  EXPECT_EQ(journal_.DetailAmount(1), 1);
}

TEST_F(CashReceiptJournalByCustomer, PassesOverOtherJournalsToTheEnd) {
  Add(Entry, 1, "entry", 7);
  Add(Payment, 1, "payment", 7);
  Open();
  EXPECT_EQ(journal_.ReadFirstForCustomer(7), StatusEndOfFile);
}

TEST_F(CashReceiptJournalByCustomer, NeedsAPlaceOnItsOwnKey) {
  Add(Receipt, 1, "A7", 7);
  Open();
  EXPECT_EQ(journal_.ReadNextByCustomer(), StatusInvalidPositioning);
  ASSERT_EQ(journal_.ReadFirst(1), StatusSuccess);
  EXPECT_EQ(journal_.ReadNextByCustomer(), StatusDifferentKeyNumber);
}

// The key bears another number in each of these releases, and no release has two of them.
TEST_F(CashReceiptJournalByCustomer, FindsItsKeyInEveryRelease) {
  InEveryRelease([](const JournalFiles& files, CashReceiptJournal& journal) {
    files.AddTransaction({.nRecord = 1, .journal = Receipt, .idNumber = 7}, {10});
    files.AddTransaction({.nRecord = 2, .journal = Receipt, .idNumber = 8}, {20});
    EXPECT_EQ(journal.ReadFirstForCustomer(7), StatusSuccess);
    EXPECT_EQ(journal.CustomerIndex(), 7);
    EXPECT_EQ(journal.ReadNextByCustomer(), StatusSuccess);
    EXPECT_EQ(journal.CustomerIndex(), 8);
  });
}

// --- GetForKey and GetForKeyL ---

TEST_F(CashReceiptJournalByKey, ComparesAllFivePartsInEveryRelease) {
  InEveryRelease([](const JournalFiles& files, CashReceiptJournal& journal) {
    files.AddHeader({.nRecord = 1, .journal = Receipt, .period = 5, .trxNumber = 300},
                    [](Tovrin2Record& header) {
                      header.SetByte(JrnlHdrRecord::Subindex1, 17);
                      header.SetByte(JrnlHdrRecord::Subindex2, 200);
                    });
    EXPECT_EQ(journal.GetForKeyL(17, 300, 5, Receipt, 200), StatusSuccess);
    EXPECT_EQ(journal.GetForKeyL(16, 300, 5, Receipt, 200), StatusKeyNotFound);
    EXPECT_EQ(journal.GetForKeyL(17, 301, 5, Receipt, 200), StatusKeyNotFound);
    EXPECT_EQ(journal.GetForKeyL(17, 300, 6, Receipt, 200), StatusKeyNotFound);
    EXPECT_EQ(journal.GetForKeyL(17, 300, 5, Payment, 200), StatusKeyNotFound);
    EXPECT_EQ(journal.GetForKeyL(17, 300, 5, Receipt, 201), StatusKeyNotFound);
    EXPECT_EQ(journal.GetForKey(17, 300, 5, Receipt, 200), StatusSuccess);
    EXPECT_EQ(journal.GetForKey(17, 301, 5, Receipt, 200), StatusKeyNotFound);
    EXPECT_EQ(journal.NRecord(), 1);
  });
}

TEST_F(CashReceiptJournalByKey, FindsHeadersOfAnyJournal) {
  files_.AddHeader({.nRecord = 1, .journal = Invoice, .period = 5, .trxNumber = 3});
  Open();
  ASSERT_EQ(journal_.GetForKeyL(0, 3, 5, Invoice, 0), StatusSuccess);
  EXPECT_EQ(journal_.JournalID(), Invoice);
  ASSERT_EQ(journal_.ClearRecord(), StatusSuccess);
  ASSERT_EQ(journal_.GetForKey(0, 3, 5, Invoice, 0), StatusSuccess);
  EXPECT_EQ(journal_.JournalID(), Invoice);
}

// It reads the header alone: rows still belong to the transaction before, and a write gives them to
// the header that was found.
TEST_F(CashReceiptJournalByKey, LeavesTheRowsOfTheTransactionBefore) {
  files_.AddTransaction({.nRecord = 1, .journal = Receipt}, {10, 11});
  files_.AddTransaction({.nRecord = 2, .journal = Receipt, .period = 5, .trxNumber = 3}, {20});
  Load(1);
  ASSERT_EQ(journal_.GetForKeyL(0, 3, 5, Receipt, 0), StatusSuccess);
  EXPECT_EQ(journal_.NRecord(), 2);
  EXPECT_EQ(journal_.NDistributions(), 2);
  EXPECT_EQ(journal_.DetailAmount(1), 10);
  ASSERT_EQ(journal_.GetForKey(0, 3, 5, Receipt, 0), StatusSuccess);
  EXPECT_EQ(journal_.NDistributions(), 2);
  ASSERT_EQ(journal_.Update(), StatusSuccess);
  EXPECT_EQ(files_.Amounts(2), (std::vector<double>{10, 11}));
}

TEST_F(CashReceiptJournalByKey, ThatIsUnknownAnswers4AndKeepsTheHeaderInHand) {
  Add(Receipt, 1, "R1");
  Load(1);
  EXPECT_EQ(journal_.GetForKeyL(0, 3, 5, Receipt, 0), StatusKeyNotFound);
  EXPECT_EQ(journal_.GetForKey(0, 3, 5, Receipt, 0), StatusKeyNotFound);
  EXPECT_EQ(journal_.Reference(), "R1");
}

TEST_F(CashReceiptJournalByKey, IsWhereReadNextGoesOnFrom) {
  files_.AddTransaction(
      {.nRecord = 1, .journal = Receipt, .period = 9, .reference = "R1", .trxNumber = 1}, {10});
  files_.AddTransaction(
      {.nRecord = 2, .journal = Receipt, .period = 1, .reference = "R2", .trxNumber = 2}, {20});
  Open();
  ASSERT_EQ(journal_.ReadFirst(0), StatusSuccess);
  ASSERT_EQ(journal_.GetForKeyL(0, 1, 9, Receipt, 0), StatusSuccess);
  ASSERT_EQ(journal_.ReadNext(), StatusSuccess) << "by number, not by period";
  EXPECT_EQ(journal_.Reference(), "R2");
  EXPECT_EQ(journal_.DetailAmount(1), 20);
  ASSERT_EQ(journal_.ReadFirst(0), StatusSuccess);
  ASSERT_EQ(journal_.GetForKey(0, 1, 9, Receipt, 0), StatusSuccess);
  ASSERT_EQ(journal_.ReadNext(), StatusSuccess);
  EXPECT_EQ(journal_.Reference(), "R2");
}

TEST_F(CashReceiptJournalByKey, NeedsAnOpenFile) {
  EXPECT_EQ(journal_.GetForKey(0, 1, 5, Receipt, 0), StatusFileNotOpen);
  EXPECT_EQ(journal_.GetForKeyL(0, 1, 5, Receipt, 0), StatusFileNotOpen);
}

TEST_F(CashReceiptJournalByKey, Raises6ForASecondSubindexThatIsNoByte) {
  InEveryRelease([](const JournalFiles&, CashReceiptJournal& journal) {
    constexpr std::int16_t NoBytes[] = {-1, 256};
    for (const std::int16_t subindex : NoBytes) {
      EXPECT_EQ(RaisedNumber([&] { journal.GetForKey(0, 1, 5, Receipt, subindex); }),
                errors::Overflow);
      EXPECT_EQ(RaisedNumber([&] { journal.GetForKeyL(0, 1, 5, Receipt, subindex); }),
                errors::Overflow);
    }
    EXPECT_EQ(journal.GetForKeyL(0, 1, 5, Receipt, 255), StatusKeyNotFound);
  });
}

// Below release 13 the number has 16 bits in the key. The release is that of the journal opened
// last, whichever it was.
TEST_F(CashReceiptJournalByKey, TakesTheNumberInTheBitsThatTheReleaseHasForIt) {
  files_.AddHeader({.nRecord = 1, .journal = Receipt, .period = 5, .trxNumber = 32768});
  Open();
  Shared().gDataVersion = 12.9;
  EXPECT_EQ(RaisedNumber([&] { journal_.GetForKeyL(0, 32768, 5, Receipt, 0); }), errors::Overflow);
  EXPECT_EQ(RaisedNumber([&] { journal_.GetForKeyL(0, -32769, 5, Receipt, 0); }), errors::Overflow);
  Shared().gDataVersion = 13.0;
  EXPECT_EQ(journal_.GetForKeyL(0, 32768, 5, Receipt, 0), StatusSuccess);
  EXPECT_EQ(journal_.GetForKeyL(0, -32769, 5, Receipt, 0), StatusKeyNotFound);
}

TEST_F(CashReceiptJournalByKey, FindsTheLargestNumbersBelow13) {
  const test::Company older(12.9);
  const JournalFiles files(older.Folder());
  files.AddHeader({.nRecord = 1, .journal = Receipt, .period = 5, .trxNumber = 32767});
  files.AddHeader({.nRecord = 2, .journal = Receipt, .period = 5, .trxNumber = -32768});
  Open();
  ASSERT_EQ(journal_.GetForKeyL(0, 32767, 5, Receipt, 0), StatusSuccess);
  EXPECT_EQ(journal_.NRecord(), 1);
  ASSERT_EQ(journal_.GetForKey(0, -32768, 5, Receipt, 0), StatusSuccess);
  EXPECT_EQ(journal_.NRecord(), 2);
}

// From 13 on -1 is not 65535, though both are the same in 16 bits.
TEST_F(CashReceiptJournalByKey, GetForKeyWidensItsNumberFrom13On) {
  const test::Company company(13.0);
  const JournalFiles files(company.Folder());
  files.AddHeader({.nRecord = 1, .journal = Receipt, .period = 5, .trxNumber = 65535});
  Open();
  EXPECT_EQ(journal_.GetForKey(0, -1, 5, Receipt, 0), StatusKeyNotFound);
  files.AddHeader({.nRecord = 2, .journal = Receipt, .period = 5, .trxNumber = -1});
  ASSERT_EQ(journal_.GetForKey(0, -1, 5, Receipt, 0), StatusSuccess);
  EXPECT_EQ(journal_.TrxNumberL(), -1);
}

// --- StepFirst, StepLast, StepNext and StepPrevious ---

TEST_F(CashReceiptJournalSteps, GoThroughAllJournalsInTheOrderOfInsertionWithTheirRows) {
  Add(Receipt, 9, "receipt");
  Add(Invoice, 1, "invoice");
  Add(Payment, 5, "payment");
  Open();
  const auto expectInHand = [&](const char* reference, double amount) {
    EXPECT_EQ(journal_.Reference(), reference);
    EXPECT_EQ(journal_.NDistributions(), 1);
    EXPECT_EQ(journal_.DetailAmount(1), amount);
  };
  ASSERT_EQ(journal_.StepFirst(), StatusSuccess);
  expectInHand("receipt", 1);
  ASSERT_EQ(journal_.StepNext(), StatusSuccess);
  expectInHand("invoice", 2);
  ASSERT_EQ(journal_.StepNext(), StatusSuccess);
  expectInHand("payment", 3);
  EXPECT_EQ(journal_.StepNext(), StatusEndOfFile);
  expectInHand("payment", 3);
  ASSERT_EQ(journal_.StepPrevious(), StatusSuccess);
  expectInHand("invoice", 2);
  ASSERT_EQ(journal_.StepPrevious(), StatusSuccess);
  expectInHand("receipt", 1);
  EXPECT_EQ(journal_.StepPrevious(), StatusEndOfFile);
  expectInHand("receipt", 1);
  ASSERT_EQ(journal_.StepLast(), StatusSuccess);
  expectInHand("payment", 3);
}

TEST_F(CashReceiptJournalSteps, ShowTheRowsOfAnInvoiceAsThoseOfAReceipt) {
  files_.AddHeader({.nRecord = 1, .journal = Invoice});
  files_.AddRow(1, [](Tovrin2Record& row) { row.SetText(JrnlRowRecord::InvoiceNumber, "1001"); });
  Open();
  ASSERT_EQ(journal_.StepFirst(), StatusSuccess);
  EXPECT_EQ(journal_.DetailInvoicePaid(1), "1001");
}

TEST_F(CashReceiptJournalSteps, AnswerTheStatusOfTheRows) {
  files_.AddHeader({.nRecord = 1, .journal = Receipt, .reference = "R1"});
  Open();
  EXPECT_EQ(journal_.StepFirst(), StatusEndOfFile);
  EXPECT_EQ(journal_.Reference(), "R1");
  ASSERT_EQ(journal_.ClearRecord(), StatusSuccess);
  EXPECT_EQ(journal_.StepLast(), StatusEndOfFile);
  EXPECT_EQ(journal_.Reference(), "R1");
}

TEST_F(CashReceiptJournalSteps, NeedAnOpenFileAndHeaders) {
  for (const bool isOpen : {false, true}) {
    if (isOpen) Open();
    const Status expected = isOpen ? StatusEndOfFile : StatusFileNotOpen;
    EXPECT_EQ(journal_.StepFirst(), expected);
    EXPECT_EQ(journal_.StepLast(), expected);
    EXPECT_EQ(journal_.StepNext(), expected);
    EXPECT_EQ(journal_.StepPrevious(), expected);
  }
}

TEST_F(CashReceiptJournalSteps, GoOnFromAReadAndLeaveNoPlaceOnItsKey) {
  Add(Receipt, 1, "A");
  Add(Invoice, 1, "B");
  Add(Receipt, 2, "C");
  Open();
  ASSERT_EQ(journal_.ReadFirst(0), StatusSuccess);
  ASSERT_EQ(journal_.StepNext(), StatusSuccess);
  EXPECT_EQ(journal_.Reference(), "B");
  EXPECT_EQ(journal_.ReadNext(), StatusInvalidPositioning);
}

// The key of the last search is kept over a step, and a write takes its place there.
TEST_F(CashReceiptJournalSteps, FollowedByAWriteAreFollowedByTheWalkOfTheLastSearch) {
  Add(Receipt, 2, "B");
  Add(Receipt, 1, "A");
  Add(Receipt, 3, "C");
  Open();
  ASSERT_EQ(journal_.ReadFirst(1), StatusSuccess);
  ASSERT_EQ(journal_.StepFirst(), StatusSuccess);
  ASSERT_EQ(journal_.Update(), StatusSuccess);
  ASSERT_EQ(journal_.ReadNext(), StatusSuccess);
  EXPECT_EQ(journal_.Reference(), "C");
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

TEST_F(CashReceiptJournalHeader, CheckIsTheAddressOfTheHeader) {
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

TEST_F(CashReceiptJournalHeader, MaxTrxNumberIsThatOfTheReceipts) {
  files_.AddHeader({.nRecord = 1, .journal = Receipt, .period = 5, .trxNumber = 40000});
  files_.AddHeader({.nRecord = 2, .journal = Payment, .period = 5, .trxNumber = 50000});
  EXPECT_EQ(journal_.MaxTrxNumberL(5), 40000);
  EXPECT_EQ(journal_.MaxTrxNumber(5), -25536);
}

TEST_F(CashReceiptJournalHeader, IncrementBatchCountCountsAReceipt) {
  EXPECT_EQ(journal_.IncrementBatchCount(), -1);
  EXPECT_EQ(BatchEntries(Receipt), 1);
  EXPECT_EQ(BatchEntries(Payment), 0);
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

// --- SalesRepID ---

TEST_F(CashReceiptJournalSalesRep, IsTheIdOfTheEmployeeInTheHeader) {
  AddEmployee(company_.Folder(), {"ADAMS", 11});
  Open();
  journal_.NRecord(1);
  journal_.SalesRepID("ADAMS");
  EXPECT_FALSE(IsHeldOpen(Employees())) << "assigning lets go of the file";
  EXPECT_EQ(journal_.SalesRepID(), "ADAMS");
  ASSERT_EQ(journal_.Insert(), StatusSuccess);
  EXPECT_EQ(files_.Long(1, JrnlHdrRecord::SalesRepIndex), 11);
  EXPECT_EQ(messages_.Texts(), Messages{});
}

// It opens the employees whatever the header holds.
TEST_F(CashReceiptJournalSalesRep, HoldsTheEmployeesFromTheFirstReadOn) {
  Open();
  EXPECT_FALSE(IsHeldOpen(Employees()));
  EXPECT_EQ(journal_.SalesRepID(), "");
  EXPECT_TRUE(IsHeldOpen(Employees()));
}

TEST_F(CashReceiptJournalSalesRep, AssignedTheEmptyTextNeedsNoEmployees) {
  AddEmployee(company_.Folder(), {"ADAMS", 11});
  Open();
  journal_.SalesRepID("ADAMS");
  {
    const TakenAway away(Employees());
    journal_.SalesRepID("");
  }
  EXPECT_EQ(journal_.SalesRepID(), "");
  EXPECT_EQ(messages_.Texts(), Messages{});
}

// The texts are those of the class JrnlHdr.
TEST_F(CashReceiptJournalSalesRep, RaisesWhereItCannotBeRead) {
  files_.AddHeader({.nRecord = 1, .journal = Receipt},
                   [](Tovrin2Record& header) { header.SetLong(JrnlHdrRecord::SalesRepIndex, 77); });
  files_.AddRows(1, {10});
  Load(1);
  {
    const TakenAway away(Employees());
    ExpectRaised([&] { return journal_.SalesRepID(); }, ErrorOpen,
                 "JrnlHdr.SalesRepID->Employee.OpenFile", StatusFileNotFound);
  }
  ExpectRaised([&] { return journal_.SalesRepID(); }, ErrorRead,
               "JrnlHdr.SalesRepID->Employee.GetForIndex(77)", StatusKeyNotFound);
  AddEmployee(company_.Folder(), {"BAKER", 77});
  EXPECT_EQ(journal_.SalesRepID(), "BAKER");
}

// Elsewhere this refusal is passed over in silence.
TEST_F(CashReceiptJournalSalesRep, WithProtectedEmployeesRaises) {
  Open();
  test::ProtectFile(Employees(), /*allowRead=*/false);
  ExpectRaised([&] { return journal_.SalesRepID(); }, ErrorOpen,
               "JrnlHdr.SalesRepID->Employee.OpenFile", StatusInvalidOwner);
}

TEST_F(CashReceiptJournalSalesRep, NeedsNoMoreThanReadingTheEmployees) {
  AddEmployee(company_.Folder(), {"ADAMS", 11});
  AddAccount(company_.Folder(), {"1000", 5});
  Add(Receipt, 1, "R1");
  test::WhereOnlyThisIsReadOnly(Employees(), [&] {
    Open();
    journal_.SalesRepID("ADAMS");
    EXPECT_EQ(journal_.SalesRepID(), "ADAMS");
  });
}

// Assigning raises nothing: the user is told, once, and the receipt has no representative.
TEST_F(CashReceiptJournalSalesRep, AssignedAnUnknownIdShowsAMessageAndStoresNone) {
  AddEmployee(company_.Folder(), {"ADAMS", 11});
  Open();
  journal_.SalesRepID("ADAMS");
  journal_.SalesRepID("NOBODY");
  EXPECT_EQ(journal_.SalesRepID(), "");
  EXPECT_EQ(messages_.Texts(), Messages{"Error getting SalesRep index:\r\n"
                                        "-2147220988:Employee.GetEqual(NOBODY) failed\r\n\r\n" +
                                        BtrieveErrorText(StatusKeyNotFound)});
}

TEST_F(CashReceiptJournalSalesRep, AssignedWithoutTheEmployeesShowsAMessageAndStoresNone) {
  AddEmployee(company_.Folder(), {"ADAMS", 11});
  Open();
  journal_.SalesRepID("ADAMS");
  {
    const TakenAway away(Employees());
    journal_.SalesRepID("ADAMS");
  }
  EXPECT_EQ(journal_.SalesRepID(), "");
  EXPECT_EQ(messages_.Texts(), Messages{"Error getting SalesRep index:\r\n"
                                        "-2147220991:Employee.OpenFile failed\r\n\r\n" +
                                        BtrieveErrorText(StatusFileNotFound)});
}

// --- CloseFile ---

TEST_F(CashReceiptJournalClose, LeavesNothingOpen) {
  Open();
  journal_.SalesRepID();
  EXPECT_EQ(journal_.CloseFile(), StatusSuccess);
  EXPECT_FALSE(IsHeldOpen(files_.Headers()));
  EXPECT_FALSE(IsHeldOpen(files_.Rows()));
  EXPECT_FALSE(IsHeldOpen(Accounts()));
  EXPECT_FALSE(IsHeldOpen(Employees()));
  EXPECT_EQ(journal_.CloseFile(), StatusSuccess);
}

TEST_F(CashReceiptJournalClose, RaisesWithTheNamesOfTheFilesThatFailInTheirOrder) {
  test::RunInChild([&] {
    Open();
    journal_.SalesRepID();
    AddAccount(company_.Folder(), {"1000", 5});
    AddEmployee(company_.Folder(), {"ADAMS", 11});
    Add(Receipt, 1, "R1");
    for (const auto& path : {files_.Headers(), files_.Rows(), Accounts(), Employees()}) {
      test::BreakDisk(path);
    }
    ExpectRaised([&] { return journal_.CloseFile(); }, ErrorClose,
                 "CashReceiptJournal.CloseFile: "
                 "\r\nCashReceiptJournal.CloseFile->Chart.CloseFile"
                 "\r\nCashReceiptJournal.CloseFile->Employee.CloseFile"
                 "\r\nCashReceiptJournal.CloseFile->JrnlHdr.CloseFile"
                 "\r\nCashReceiptJournal.CloseFile->JrnlRow.CloseFile",
                 StatusIOError);
    EXPECT_EQ(journal_.CloseFile(), StatusSuccess);
  });
}

}  // namespace
}  // namespace larkmoor
