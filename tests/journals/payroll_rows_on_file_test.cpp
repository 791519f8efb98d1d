// The rows of a paycheck on file: both of its lists are written back as a whole, the pay rows
// first, and deleted with their header. How they lie in memory is in payroll_rows_test.cpp.
#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include <larkmoor/date.h>
#include <larkmoor/journal_code.h>
#include <larkmoor/journals/payroll_journal.h>
#include <larkmoor/status.h>

#include "engine/records/jrnl_hdr.h"
#include "engine/records/jrnl_row.h"
#include "engine/tovrin_record.h"
#include "support/paychecks.h"
#include "support/record_files.h"
#include "support/watched_records.h"

namespace larkmoor {
namespace {

using test::AddLabor;

using PayrollRowsWritten = test::PaycheckFixture;
using PayrollRowsDeleted = test::PaycheckFixture;

// --- Byte for byte ---

class PayrollRowsByteForByte : public test::PaycheckFixture {
 protected:
  static constexpr double Day = 45000;

  /// A row of our paycheck that is blank but for what `fill` puts into it and for what each of its
  /// rows bears.
  template <typename Fill>
  static RecordBytes RowWith(Fill&& fill) {
    Tovrin2Record row(JrnlRowRecord::Describe());
    std::forward<Fill>(fill)(row);
    row.SetLong(JrnlRowRecord::NRecord, Ours);
    row.SetLong(JrnlRowRecord::JournalID, tovJournalCodePayroll);
    row.SetDate(JrnlRowRecord::TrxDate, Day);
    row.SetInteger(JrnlRowRecord::RowOrder, 0);
    return row.Bytes();
  }

  /// A row of our paycheck that is full of other bytes than 0, which go by their place and `seed`.
  static RecordBytes FullRow(int seed, std::int32_t job) {
    return RowWith([&](Tovrin2Record& row) {
      RecordBytes& bytes = row.Bytes();
      for (std::size_t i = 0; i < bytes.size(); ++i) {
        bytes[i] = static_cast<std::byte>((i * 7 + static_cast<std::size_t>(seed)) % 251 + 1);
      }
      row.SetLong(JrnlRowRecord::JobIndex, job);
    });
  }

  /// A row of our paycheck with something changed.
  template <typename Change>
  static RecordBytes Changed(const RecordBytes& image, Change&& change) {
    return RowWith([&](Tovrin2Record& row) {
      row.Bytes() = image;
      std::forward<Change>(change)(row);
    });
  }
};

// Also what no property names is carried from the file and back.
TEST_F(PayrollRowsByteForByte, AreThoseThatWereReadChangedAndAdded) {
  const RecordBytes pay[] = {FullRow(1, 0), FullRow(2, 0), FullRow(3, 0)};
  const RecordBytes labor[] = {FullRow(4, 7), FullRow(5, 8)};
  ASSERT_EQ(pay[0].size(), 514U);
  files_.AddHeader({.nRecord = Ours, .journal = tovJournalCodePayroll},
                   [](Tovrin2Record& header) { header.SetDate(JrnlHdrRecord::TrxDate, Day); });
  for (const RecordBytes& image : {labor[0], pay[0], pay[1], labor[1], pay[2]}) {
    files_.AddRow(Ours, [&](Tovrin2Record& row) { row.Bytes() = image; });
  }
  LayTheirs();

  LoadOurs();
  journal_.PayDescription(1, "Gross");
  journal_.PayAmount(3, 33.5);
  journal_.NDistributions(4);
  journal_.PayFieldNumber(4, 44);
  journal_.PayAmount(0);  // puts the pay row away
  journal_.NLaborDistributions(3);
  journal_.JobJobIndex(3, 9);
  journal_.JobTrxType(3, 55);
  journal_.JobHours(2, 22.5);
  ASSERT_EQ(journal_.Update(), StatusSuccess);

  PayrollJournal reader;
  ASSERT_EQ(reader.OpenFile(), StatusSuccess);
  ASSERT_EQ(reader.GetEqual(Ours), StatusSuccess);
  EXPECT_EQ(reader.NDistributions(), 4);
  EXPECT_EQ(reader.NLaborDistributions(), 3);
  ASSERT_EQ(reader.Update(), StatusSuccess) << "what was read again is written once more";

  const std::vector<RecordBytes> expected = {
      Changed(pay[0], [](Tovrin2Record& row) { row.SetText(JrnlRowRecord::Description, "Gross"); }),
      pay[1],
      Changed(pay[2], [](Tovrin2Record& row) { row.SetDouble(JrnlRowRecord::Amount, 33.5); }),
      RowWith([](Tovrin2Record& row) { row.SetInteger(JrnlRowRecord::OrderLine, 44); }),
      labor[0],
      Changed(labor[1],
              [](Tovrin2Record& row) { row.SetDouble(JrnlRowRecord::StockingUnitPrice, 22.5); }),
      RowWith([](Tovrin2Record& row) {
        row.SetLong(JrnlRowRecord::JobIndex, 9);
        row.SetLong(JrnlRowRecord::TrxType, 55);
      })};
  EXPECT_EQ(files_.OfRows(Ours, [](Tovrin2Record& row) { return row.Bytes(); }), expected);
  EXPECT_EQ(files_.Amounts(Theirs), (Amounts{TheirAmount, 78}));
}

// --- Writing back ---

TEST_F(PayrollRowsWritten, ArePayRowsFirst) {
  Load({1, 2, 3}, {10, 20});
  ASSERT_EQ(AllOnFile(), (Amounts{1, 10, 2, 20, 3}));
  ASSERT_EQ(journal_.Update(), StatusSuccess);
  EXPECT_EQ(AllOnFile(), (Amounts{1, 2, 3, 10, 20}));
  ASSERT_EQ(journal_.Update(), StatusSuccess) << "a second write finds them where they were";
  EXPECT_EQ(AllOnFile(), (Amounts{1, 2, 3, 10, 20}));
}

TEST_F(PayrollRowsWritten, BearTheNumberJournalAndDayOfTheirHeader) {
  const Date day = Date::FromYmd(2024, 3, 15);
  Load({1}, {10});
  journal_.NRecord(40);
  constexpr std::int16_t Invoice = tovJournalCodeSales;
  journal_.JournalID(Invoice);
  journal_.TrxDate(day);
  ASSERT_EQ(journal_.Insert(), StatusSuccess);
  EXPECT_EQ(files_.Amounts(40), (Amounts{1, 10}));
  files_.OfRows(40, [&](Tovrin2Record& row) {
    EXPECT_EQ(row.GetLong(JrnlRowRecord::JournalID), Invoice);
    EXPECT_EQ(row.GetDate(JrnlRowRecord::TrxDate), day.Serial());
    return true;
  });
  EXPECT_EQ(AllOnFile(), (Amounts{1, 10})) << "the old paycheck is as it was";
}

TEST_F(PayrollRowsWritten, AreAllOfThePaycheckWhateverIsOnFile) {
  Load({1, 2}, {10});
  files_.AddRows(Ours, {4, 5});
  AddLabor(files_, Ours, 60);
  ASSERT_EQ(journal_.Update(), StatusSuccess);
  EXPECT_EQ(PayOnFile(), (Amounts{1, 2}));
  EXPECT_EQ(LaborOnFile(), Amounts{10});
  EXPECT_EQ(files_.Amounts(Theirs), (Amounts{TheirAmount, 78}));
}

TEST_F(PayrollRowsWritten, UnderANewHeaderAreThoseThatClearRecordLeft) {
  Load({1, 2}, {10});
  ASSERT_EQ(journal_.ClearRecord(), StatusSuccess);
  journal_.NRecord(40);
  ASSERT_EQ(journal_.Insert(), StatusSuccess);
  EXPECT_EQ(test::PayOnFile(files_, 40), (Amounts{1, 2}));
  EXPECT_EQ(test::LaborOnFile(files_, 40), Amounts{10});
}

TEST_F(PayrollRowsWritten, WithoutAJobChangeOverToThePayRowsWhenReadAgain) {
  Load({1}, {10, 20});
  journal_.JobJobIndex(1, 0);
  EXPECT_EQ(journal_.NLaborDistributions(), 2) << "up to then it is a labor row";
  ASSERT_EQ(journal_.Update(), StatusSuccess);
  ASSERT_EQ(journal_.GetEqual(Ours), StatusSuccess);
  EXPECT_EQ(PayHeld(), (Amounts{1, 10}));
  EXPECT_EQ(LaborHeld(), Amounts{20});
}

TEST_F(PayrollRowsWritten, OfAnInsertReplaceWhatTheFileHasUnderThatNumber) {
  files_.AddRows(40, {7, 8});
  AddLabor(files_, 40, 9);
  Open();
  journal_.NRecord(40);
  ASSERT_EQ(journal_.Insert(), StatusSuccess);
  EXPECT_EQ(files_.Amounts(40), Amounts{});
}

// The rows go first: a header that is refused has its rows on file all the same.
TEST_F(PayrollRowsWritten, OfAHeaderThatMayOnlyBeReadStay) {
  Lay({1, 2}, {10});
  test::ProtectFile(files_.Headers(), /*allowRead=*/true);
  LoadOurs();
  journal_.PayAmount(1, 5);
  EXPECT_EQ(journal_.Update(), StatusAccessDenied);
  EXPECT_EQ(PayOnFile(), (Amounts{5, 2}));
  journal_.NRecord(40);
  EXPECT_EQ(journal_.Insert(), StatusAccessDenied);
  EXPECT_EQ(test::LaborOnFile(files_, 40), Amounts{10});
  EXPECT_FALSE(files_.HasHeader(40));
}

// Nobody is told that the rows did not change.
TEST_F(PayrollRowsWritten, ThatAreRefusedLeaveTheAnswerToTheHeader) {
  Lay({1, 2}, {10});
  test::ProtectFile(files_.Rows(), /*allowRead=*/true);
  LoadOurs();
  journal_.PayAmount(1, 5);
  EXPECT_EQ(journal_.Update(), StatusSuccess);
  EXPECT_EQ(AllOnFile(), (Amounts{1, 10, 2}));
  journal_.NRecord(40);
  EXPECT_EQ(journal_.Insert(), StatusSuccess);
  EXPECT_TRUE(files_.HasHeader(40));
  EXPECT_EQ(files_.Amounts(40), Amounts{});
  EXPECT_EQ(PayHeld(), (Amounts{5, 2})) << "the journal still holds what it could not write";
  EXPECT_EQ(messages_.Texts(), Messages{});
}

TEST_F(PayrollRowsWritten, OfBothListsAreSeenByOthersAsAWhole) {
  LoadAlone({1, 2, 3}, {10, 20});
  const auto seen = test::CountsSeenDuring(files_.Rows(), JrnlRowRecord::Describe(), [&] {
    for (int i = 0; i < 100; ++i) {
      const bool isWhole = i % 2 != 0;
      journal_.NDistributions(isWhole ? 3 : 1);
      journal_.NLaborDistributions(isWhole ? 2 : 1);
      EXPECT_EQ(journal_.Update(), StatusSuccess);
    }
  });
  for (const std::int32_t count : seen) EXPECT_TRUE(count == 2 || count == 5) << count << " rows";
  EXPECT_EQ(PayOnFile(), (Amounts{1, 2, 3}));
  EXPECT_EQ(LaborOnFile(), (Amounts{10, 20}));
}

// --- Deleting ---

TEST_F(PayrollRowsDeleted, OfBothListsGoWithTheirHeader) {
  Load({1, 2}, {10});
  ASSERT_EQ(journal_.Delete(), StatusSuccess);
  EXPECT_EQ(AllOnFile(), Amounts{});
  EXPECT_FALSE(files_.HasHeader(Ours));
  EXPECT_EQ(files_.Amounts(Theirs), (Amounts{TheirAmount, 78}));
}

TEST_F(PayrollRowsDeleted, StayInTheJournalAndCanBeInsertedAgain) {
  Load({1, 2}, {10});
  ASSERT_EQ(journal_.Delete(), StatusSuccess);
  EXPECT_EQ(journal_.NDistributions(), 2);
  EXPECT_EQ(journal_.NLaborDistributions(), 1);
  ASSERT_EQ(journal_.Insert(), StatusSuccess);
  EXPECT_EQ(PayOnFile(), (Amounts{1, 2}));
  EXPECT_EQ(LaborOnFile(), Amounts{10});
}

// The deletion reads through the one row buffer, and the row in hand is lost to what it read last.
TEST_F(PayrollRowsDeleted, TakeTheRowInHandWithThem) {
  Load({1, 2, 3}, {10});
  journal_.PayAmount(2, 20);
  ASSERT_EQ(journal_.Delete(), StatusSuccess);
  EXPECT_EQ(journal_.PayAmount(2), TheirAmount);
  ASSERT_EQ(journal_.Insert(), StatusSuccess);
  EXPECT_EQ(PayOnFile(), (Amounts{1, TheirAmount, 3}));
  EXPECT_EQ(LaborOnFile(), Amounts{10});
}

TEST_F(PayrollRowsDeleted, GoAlsoWhereTheHeaderDoesNot) {
  Lay({1, 2}, {10});
  Open();
  journal_.NRecord(Ours);
  EXPECT_EQ(journal_.Delete(), StatusInvalidPositioning);
  EXPECT_EQ(AllOnFile(), Amounts{});
  EXPECT_TRUE(files_.HasHeader(Ours));
}

}  // namespace
}  // namespace larkmoor
