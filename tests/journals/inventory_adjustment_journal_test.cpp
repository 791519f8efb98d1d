// The class InventoryAdjustmentJournal: its walk, and the properties that go by the words of a
// change of stock. What it shares with every journal is tested in general_journal_test.cpp and
// journal_rows_test.cpp.
#include <cstdint>
#include <string>

#include <gtest/gtest.h>

#include <larkmoor/journal_code.h>
#include <larkmoor/journals/inventory_adjustment_journal.h>
#include <larkmoor/status.h>

#include "connection/status_messages.h"
#include "engine/records/jrnl_hdr.h"
#include "engine/records/jrnl_row.h"
#include "support/accounts.h"
#include "support/child_process.h"
#include "support/failing_disk.h"
#include "support/journal_fixture.h"
#include "support/raised_errors.h"
#include "support/record_files.h"

namespace larkmoor {
namespace {

using test::AddAccount;
using test::ExpectRaised;
using test::IsHeldOpen;

// Journals, as headers bear them.
constexpr std::int16_t Paycheck = tovJournalCodePayroll;
constexpr std::int16_t Adjustment = tovJournalCodeInventoryAdjustment;
constexpr std::int16_t Assembly = tovJournalCodeAssemblyAdjustment;

using InventoryAdjustmentJournalTest = test::JournalFixture<InventoryAdjustmentJournal>;
using InventoryAdjustmentJournalWalk = InventoryAdjustmentJournalTest;
using InventoryAdjustmentJournalHeader = InventoryAdjustmentJournalTest;
using InventoryAdjustmentJournalRows = InventoryAdjustmentJournalTest;
using InventoryAdjustmentJournalClose = InventoryAdjustmentJournalTest;

// --- ReadFirst and ReadNext ---

TEST_F(InventoryAdjustmentJournalWalk, GivesTheAdjustmentsFromThePeriodOnAndNothingElse) {
  Add(Paycheck, 9, "paycheck");
  Add(Adjustment, 1, "too early");
  Add(Adjustment, 5, "A5");
  Add(Adjustment, 3, "A3");
  Add(Assembly, 1, "assembly");
  Open();
  EXPECT_EQ(WalkFrom(2), (References{"A3", "A5"}));
}

TEST_F(InventoryAdjustmentJournalWalk, BringsThePeriodBetween0And41) {
  Add(Adjustment, -1, "A-1");
  Add(Adjustment, 40, "A40");
  Add(Adjustment, 41, "A41");
  Open();
  EXPECT_EQ(WalkFrom(50), References{"A41"});
  EXPECT_EQ(WalkFrom(-5), (References{"A40", "A41"}));
}

// --- The header ---

TEST_F(InventoryAdjustmentJournalHeader, NamesFieldsInTheWordsOfAnAdjustment) {
  Open();
  journal_.NRecord(1);
  journal_.AmountAdjusted(1.5);
  journal_.ItemIndex(7);
  journal_.Description("damaged in store");
  ASSERT_EQ(journal_.Insert(), StatusSuccess);
  files_.OfHeader(1, [](Tovrin2Record& header) {
    EXPECT_EQ(header.GetDouble(JrnlHdrRecord::Amount), 1.5);
    EXPECT_EQ(header.GetLong(JrnlHdrRecord::IDNumber), 7);
    EXPECT_EQ(header.GetText(JrnlHdrRecord::Description), "damaged in store");
  });
  EXPECT_EQ(journal_.AmountAdjusted(), 1.5);
  EXPECT_EQ(journal_.ItemIndex(), 7);
}

TEST_F(InventoryAdjustmentJournalHeader, MainAccountThatIsUnknownRaises) {
  files_.AddHeader({.nRecord = 1, .journal = Adjustment}, [](Tovrin2Record& header) {
    header.SetLong(JrnlHdrRecord::MainAccountIndex, 77);
  });
  files_.AddRows(1, {10});
  Load(1);
  ExpectRaised([&] { return journal_.MainAccount(); }, ErrorRead,
               "JrnlHdr.MainAccount->Chart.GetEqual(77)", StatusKeyNotFound);
  ExpectRaised([&] { journal_.MainAccount("9999"); }, ErrorAccount,
               "JrnlHdr.MainAccount->Chart.GetForAccountID(9999)", StatusKeyNotFound);
}

TEST_F(InventoryAdjustmentJournalHeader, MaxTrxNumberIsThatOfTheAdjustments) {
  files_.AddHeader({.nRecord = 1, .journal = Adjustment, .period = 5, .trxNumber = 40000});
  files_.AddHeader({.nRecord = 2, .journal = Assembly, .period = 5, .trxNumber = 50000});
  EXPECT_EQ(journal_.MaxTrxNumberL(5), 40000);
  EXPECT_EQ(journal_.MaxTrxNumber(5), -25536);
}

TEST_F(InventoryAdjustmentJournalHeader, IncrementBatchCountCountsAnAdjustment) {
  EXPECT_EQ(journal_.IncrementBatchCount(), -1);
  EXPECT_EQ(BatchEntries(Adjustment), 1);
  EXPECT_EQ(BatchEntries(Assembly), 0);
}

// --- The rows ---

TEST_F(InventoryAdjustmentJournalRows, NameFieldsInTheWordsOfAnAdjustment) {
  Open();
  journal_.NRecord(1);
  journal_.DetailItemIndex(1, 7);
  journal_.DetailReasonToAdjust(1, "broken");
  journal_.DetailUnitCost(1, 2.5);
  ASSERT_EQ(journal_.Insert(), StatusSuccess);
  const auto rows = files_.OfRows(1, [](Tovrin2Record& row) {
    EXPECT_EQ(row.GetLong(JrnlRowRecord::ItemIndex), 7);
    EXPECT_EQ(row.GetText(JrnlRowRecord::Description), "broken");
    EXPECT_EQ(row.GetDouble(JrnlRowRecord::UnitPrice), 2.5);
    return true;
  });
  EXPECT_EQ(rows.size(), 1U);
}

// A row has no such mark, and it is not the header's Posted.
TEST_F(InventoryAdjustmentJournalRows, DetailPostedIsTheReversedOfTheHeader) {
  files_.AddHeader({.nRecord = 1, .journal = Adjustment},
                   [](Tovrin2Record& header) { header.SetBoolean(JrnlHdrRecord::Reversed, true); });
  files_.AddRows(1, {10, 11});
  Load(1);
  EXPECT_TRUE(journal_.DetailPosted(1));
  EXPECT_FALSE(journal_.Posted());
  journal_.DetailPosted(2, false);
  EXPECT_FALSE(journal_.DetailPosted(1));
  journal_.Posted(true);
  EXPECT_FALSE(journal_.DetailPosted(1));
  ASSERT_EQ(journal_.Update(), StatusSuccess);
  files_.OfHeader(1, [](Tovrin2Record& header) {
    EXPECT_FALSE(header.GetBoolean(JrnlHdrRecord::Reversed));
    EXPECT_TRUE(header.GetBoolean(JrnlHdrRecord::Posted));
  });
}

TEST_F(InventoryAdjustmentJournalRows, DetailPostedMovesToTheRow) {
  Open();
  journal_.DetailPosted(3, true);
  EXPECT_EQ(journal_.NDistributions(), 3);
  EXPECT_TRUE(journal_.DetailPosted(4));
  EXPECT_EQ(journal_.NDistributions(), 4);
}

// A move to row 11 would make the adjustment grow.
TEST_F(InventoryAdjustmentJournalRows, WhatHasNoStorageDoesNotMoveToTheRow) {
  Add(Adjustment, 1, "A1");
  Load(1);
  journal_.DetailUnused7(11, 11);
  journal_.DetailUnused7(11, 11, 1);
  EXPECT_EQ(journal_.NDistributions(), 1);
  journal_.DetailUnitCost(11);
  EXPECT_EQ(journal_.NDistributions(), 11) << "a stored one does move";
}

// --- CloseFile ---

TEST_F(InventoryAdjustmentJournalClose, LeavesNothingOpen) {
  Open();
  EXPECT_EQ(journal_.CloseFile(), StatusSuccess);
  EXPECT_FALSE(IsHeldOpen(files_.Headers()));
  EXPECT_FALSE(IsHeldOpen(files_.Rows()));
  EXPECT_FALSE(IsHeldOpen(Accounts()));
}

TEST_F(InventoryAdjustmentJournalClose, RaisesWithTheNamesOfTheFilesThatFailInTheirOrder) {
  test::RunInChild([&] {
    Open();
    AddAccount(company_.Folder(), {"1200", 5});
    Add(Adjustment, 1, "A1");
    for (const auto& path : {files_.Headers(), files_.Rows(), Accounts()}) test::BreakDisk(path);
    ExpectRaised([&] { return journal_.CloseFile(); }, ErrorClose,
                 "InventoryAdjustmentJournal.CloseFile: "
                 "\r\nInventoryAdjustmentJournal.CloseFile->Chart.CloseFile"
                 "\r\nInventoryAdjustmentJournal.CloseFile->JrnlHdr.CloseFile"
                 "\r\nInventoryAdjustmentJournal.CloseFile->JrnlRow.CloseFile",
                 StatusIOError);
  });
}

}  // namespace
}  // namespace larkmoor
