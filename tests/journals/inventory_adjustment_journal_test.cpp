// The class InventoryAdjustmentJournal: the properties that go by the words of a change of stock.
// What it shares with some journals is tested in files named after it, like journal_close_test.cpp;
// what it shares with all of them, in general_journal_test.cpp and journal_rows_test.cpp.
#include <cstdint>

#include <gtest/gtest.h>

#include <larkmoor/journal_code.h>
#include <larkmoor/journals/inventory_adjustment_journal.h>
#include <larkmoor/status.h>

#include "connection/status_messages.h"
#include "engine/records/jrnl_hdr.h"
#include "engine/records/jrnl_row.h"
#include "support/journal_fixture.h"
#include "support/raised_errors.h"
#include "support/record_files.h"

namespace larkmoor {
namespace {

using test::ExpectRaised;

/// The journal, as its headers bear it.
constexpr std::int16_t Adjustment = tovJournalCodeInventoryAdjustment;

using InventoryAdjustmentJournalTest = test::JournalFixture<InventoryAdjustmentJournal>;
using InventoryAdjustmentJournalHeader = InventoryAdjustmentJournalTest;
using InventoryAdjustmentJournalRows = InventoryAdjustmentJournalTest;

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

}  // namespace
}  // namespace larkmoor
