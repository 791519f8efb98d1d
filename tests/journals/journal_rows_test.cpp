// The rows of a transaction, as every journal keeps them: loaded with the header, reached by
// number, one at a time in the row buffer, and written back as a whole. The general journal stands
// for all.
#include <sys/types.h>
#include <sys/wait.h>
#include <unistd.h>

#include <atomic>
#include <chrono>
#include <csignal>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <numeric>
#include <ostream>
#include <set>
#include <stdexcept>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include <larkmoor/bulk_write.h>
#include <larkmoor/date.h>
#include <larkmoor/journals/general_journal.h>
#include <larkmoor/message_box.h>
#include <larkmoor/status.h>

#include "engine/records/jrnl_hdr.h"
#include "engine/records/jrnl_row.h"
#include "engine/runtime_error.h"
#include "support/company.h"
#include "support/errors.h"
#include "support/journals.h"
#include "support/record_files.h"
#include "support/worker.h"

namespace larkmoor {
namespace {

using test::CapturedMessages;
using Amounts = std::vector<double>;
using Messages = std::vector<std::string>;

/// The transaction under test, and one behind it in the file.
constexpr std::int32_t Ours = 1;
constexpr std::int32_t Theirs = 2;
/// Amount of the first row of `Theirs`, which no row of `Ours` has.
constexpr double TheirAmount = 77;

/// The amounts 1 to `count`.
Amounts UpTo(int count) {
  Amounts amounts(static_cast<std::size_t>(count));
  std::iota(amounts.begin(), amounts.end(), 1.0);
  return amounts;
}

class JournalRowsTest : public testing::Test {
 protected:
  /// Loads a transaction with a row of each amount; it is the last one on file.
  void LoadAlone(const Amounts& amounts) {
    files_.AddTransaction({.nRecord = Ours, .reference = "ours"}, amounts);
    Open();
    journal_.GetEqual(Ours);
  }
  /// The same with another transaction behind it.
  void Load(const Amounts& amounts) {
    files_.AddTransaction({.nRecord = Ours, .reference = "ours"}, amounts);
    files_.AddTransaction({.nRecord = Theirs, .reference = "theirs"}, {TheirAmount, 78});
    Open();
    ASSERT_EQ(journal_.GetEqual(Ours), StatusSuccess);
  }
  void Open() { ASSERT_EQ(journal_.OpenFile(), StatusSuccess); }

  /// The amounts of the rows that the journal holds, read one after the other.
  Amounts Held() {
    Amounts amounts;
    for (std::int16_t i = 1; i <= journal_.NDistributions(); ++i) {
      amounts.push_back(journal_.DetailAmount(i));
    }
    return amounts;
  }

  test::Company company_;
  test::JournalFiles files_{company_.Folder()};
  CapturedMessages messages_;
  GeneralJournal journal_;
};

using JournalRowsLoaded = JournalRowsTest;
using JournalRowsPositioned = JournalRowsTest;
using JournalRowsGrowing = JournalRowsTest;
using JournalRowsCounted = JournalRowsTest;
using JournalRowsMessage = JournalRowsTest;
using JournalRowsWritten = JournalRowsTest;
using JournalRowsDeleted = JournalRowsTest;
using JournalRowsCommit = JournalRowsTest;

// --- Loading ---

TEST_F(JournalRowsLoaded, AreThoseOfTheTransactionInTheOrderTheyWereWritten) {
  files_.AddTransaction({.nRecord = Theirs}, {77});
  files_.AddHeader({.nRecord = Ours});
  constexpr std::int16_t Lines[] = {3, 1, 2};
  for (const std::int16_t line : Lines) {
    files_.AddRow(Ours, [&](Tovrin2Record& row) {
      row.SetDouble(JrnlRowRecord::Amount, 10.0 * line);
      row.SetInteger(JrnlRowRecord::LineNo, line);
    });
    files_.AddRows(Theirs, {78});
  }
  Open();
  ASSERT_EQ(journal_.GetEqual(Ours), StatusSuccess);
  EXPECT_EQ(journal_.NDistributions(), 3);
  EXPECT_EQ(Held(), (Amounts{30, 10, 20}));
  EXPECT_EQ(journal_.DetailLineNo(1), 3);
}

TEST_F(JournalRowsLoaded, MayBeMoreThanAHundred) {
  Load(UpTo(137));
  EXPECT_EQ(journal_.NDistributions(), 137);
  EXPECT_EQ(Held(), UpTo(137));
}

TEST_F(JournalRowsLoaded, OfAHeaderWithoutRowsAnswerTheReadThatFoundTheNextTransaction) {
  Load({});
  EXPECT_EQ(journal_.NDistributions(), 0);
  EXPECT_EQ(journal_.ReadFirst(0), StatusSuccess);
  EXPECT_EQ(journal_.Reference(), "ours");
}

// The header was found and is in hand, but the answer is that of the rows.
TEST_F(JournalRowsLoaded, OfAHeaderWithoutRowsAtTheEndOfTheFileAnswer9) {
  LoadAlone({});
  EXPECT_EQ(journal_.GetEqual(Ours), StatusEndOfFile);
  EXPECT_EQ(journal_.Reference(), "ours");
  ASSERT_EQ(journal_.ClearRecord(), StatusSuccess);
  EXPECT_EQ(journal_.ReadFirst(0), StatusEndOfFile);
  EXPECT_EQ(journal_.Reference(), "ours");
  EXPECT_EQ(journal_.NDistributions(), 0);
}

TEST_F(JournalRowsLoaded, OfTheLastTransactionAnswer0ThoughTheFileEnded) {
  LoadAlone({1});
  EXPECT_EQ(journal_.GetEqual(Ours), StatusSuccess);
}

TEST_F(JournalRowsLoaded, ReplaceWhatWasInHand) {
  Load(UpTo(12));
  journal_.DetailAmount(2, 99);
  ASSERT_EQ(journal_.GetEqual(Theirs), StatusSuccess);
  EXPECT_EQ(Held(), (Amounts{TheirAmount, 78}));
  EXPECT_EQ(journal_.DetailAmount(3), 0) << "nothing is left of the longer transaction";
  ASSERT_EQ(journal_.GetEqual(Ours), StatusSuccess);
  EXPECT_EQ(Held(), UpTo(12)) << "what was not written is gone";
}

// --- The row in hand ---

TEST_F(JournalRowsPositioned, KeepWhatWasAssignedToThem) {
  Load({1, 2, 3});
  journal_.DetailAmount(1, 10);
  journal_.DetailDescription(1, "first");
  journal_.DetailDescription(3, "third");
  journal_.DetailAmount(2, 20);
  EXPECT_EQ(Held(), (Amounts{10, 20, 3}));
  EXPECT_EQ(journal_.DetailDescription(1), "first");
  EXPECT_EQ(journal_.DetailDescription(2), "");
  EXPECT_EQ(journal_.DetailDescription(3), "third");
}

// Every byte of the record is kept, also those that no property names.
TEST_F(JournalRowsPositioned, AreKeptByteForByteAndWrittenBackSo) {
  constexpr double Day = 45000;
  files_.AddHeader({.nRecord = Ours},
                   [](Tovrin2Record& header) { header.SetDate(JrnlHdrRecord::TrxDate, Day); });
  for (const int seed : {1, 2}) {
    files_.AddRow(Ours, [&](Tovrin2Record& row) {
      RecordBytes& bytes = row.Bytes();
      for (std::size_t i = 0; i < bytes.size(); ++i) {
        bytes[i] = static_cast<std::byte>((i * 7 + static_cast<std::size_t>(seed)) % 251 + 1);
      }
      row.SetLong(JrnlRowRecord::NRecord, Ours);
      row.SetLong(JrnlRowRecord::JournalID, 0);
      row.SetDate(JrnlRowRecord::TrxDate, Day);
    });
  }
  const auto bytesOf = [](Tovrin2Record& row) { return row.Bytes(); };
  const auto before = files_.OfRows(Ours, bytesOf);
  ASSERT_EQ(before.size(), 2U);
  ASSERT_EQ(before[0].size(), 514U);
  Open();
  ASSERT_EQ(journal_.GetEqual(Ours), StatusSuccess);
  journal_.DetailLineNo(1);
  journal_.DetailLineNo(2);
  journal_.DetailLineNo(1);
  ASSERT_EQ(journal_.Update(), StatusSuccess);
  EXPECT_EQ(files_.OfRows(Ours, bytesOf), before);
}

// After loading no row of the transaction is in hand, and -1 stands for that. What the last read
// met is still in the row buffer.
TEST_F(JournalRowsPositioned, AtIndexMinus1AfterLoadingAreTheRowBehindTheTransaction) {
  Load({1, 2});
  EXPECT_EQ(journal_.DetailAmount(-1), TheirAmount);
  EXPECT_EQ(messages_.Texts(), Messages{});
}

TEST_F(JournalRowsPositioned, AtIndexMinus1AfterLoadingAreTheLastRowWhereNoneFollows) {
  LoadAlone({1, 2});
  EXPECT_EQ(journal_.DetailAmount(-1), 2);
  EXPECT_EQ(messages_.Texts(), Messages{});
}

// What is written there belongs to no row.
TEST_F(JournalRowsPositioned, AtIndexMinus1AfterLoadingAreNotSaved) {
  LoadAlone({1, 2});
  journal_.DetailAmount(-1, 99);
  EXPECT_EQ(Held(), (Amounts{1, 2}));
  ASSERT_EQ(journal_.Update(), StatusSuccess);
  EXPECT_EQ(files_.Amounts(Ours), (Amounts{1, 2}));
}

// After a write 0 stands for no row in hand, and the row written last is in the row buffer.
TEST_F(JournalRowsPositioned, AtIndex0AfterAWriteAreTheRowWrittenLastAndNotSaved) {
  Load({1, 2, 3});
  journal_.DetailAmount(1, 10);
  ASSERT_EQ(journal_.Update(), StatusSuccess);
  EXPECT_EQ(journal_.DetailAmount(0), 3);
  journal_.DetailAmount(0, 99);
  EXPECT_EQ(journal_.DetailAmount(0), 99);
  EXPECT_EQ(journal_.DetailAmount(1), 10);
  EXPECT_EQ(Held(), (Amounts{10, 2, 3}));
  EXPECT_EQ(messages_.Texts(), Messages{});
}

// A write without rows only deletes; the walk over what it deletes ends at the next transaction.
TEST_F(JournalRowsPositioned, AtIndex0AfterAWriteOfNoRowsAreWhatTheDeletionReadLast) {
  Load({1, 2});
  journal_.NDistributions(0);
  ASSERT_EQ(journal_.Update(), StatusSuccess);
  EXPECT_EQ(journal_.DetailAmount(0), TheirAmount);
  EXPECT_EQ(messages_.Texts(), Messages{});
}

TEST_F(JournalRowsPositioned, AtIndex0AfterOpenFileAreBlankWithoutAMessage) {
  Open();
  EXPECT_EQ(journal_.DetailAmount(0), 0);
  EXPECT_EQ(journal_.NDistributions(), 0);
  EXPECT_EQ(messages_.Texts(), Messages{});
}

// --- Growing ---

/// Rows of a transaction, and up to which index rows can be reached before the transaction grows.
struct Room {
  int rows;
  std::int16_t capacity;
};

void PrintTo(const Room& room, std::ostream* out) { *out << room.rows << " rows"; }

class JournalRowsRoom : public JournalRowsTest, public testing::WithParamInterface<Room> {};

TEST_P(JournalRowsRoom, IsMadeByTensWhileLoading) {
  const auto [rows, capacity] = GetParam();
  Load(UpTo(rows));
  EXPECT_EQ(journal_.DetailAmount(capacity), capacity <= rows ? capacity : 0);
  EXPECT_EQ(journal_.NDistributions(), rows) << "the last index with room adds no row";
  const auto beyond = static_cast<std::int16_t>(capacity + 1);
  EXPECT_EQ(journal_.DetailAmount(beyond), 0);
  EXPECT_EQ(journal_.NDistributions(), beyond) << "the first one without room does";
  for (std::int16_t i = 1; i <= rows; ++i) EXPECT_EQ(journal_.DetailAmount(i), i);
}

INSTANTIATE_TEST_SUITE_P(Transactions, JournalRowsRoom,
                         testing::Values(Room{0, 10}, Room{1, 10}, Room{10, 10}, Room{11, 20},
                                         Room{20, 20}, Room{21, 30}, Room{30, 30}, Room{31, 40}),
                         [](const testing::TestParamInfo<Room>& tested) {
                           return "Of" + std::to_string(tested.param.rows) + "Rows";
                         });

TEST_F(JournalRowsGrowing, OfANewTransactionAreAddedOneByOne) {
  Open();
  journal_.DetailAmount(1, 10);
  EXPECT_EQ(journal_.NDistributions(), 1);
  journal_.DetailAmount(2, 20);
  EXPECT_EQ(journal_.NDistributions(), 2);
  journal_.DetailAmount(3, 30);
  EXPECT_EQ(Held(), (Amounts{10, 20, 30}));
  journal_.NRecord(Ours);
  ASSERT_EQ(journal_.Insert(), StatusSuccess);
  EXPECT_EQ(files_.Amounts(Ours), (Amounts{10, 20, 30}));
}

TEST_F(JournalRowsGrowing, ByALaterIndexCountAllBetweenAsBlank) {
  Open();
  journal_.DetailAmount(4, 40);
  EXPECT_EQ(journal_.NDistributions(), 4);
  journal_.DetailAmount(2, 20);
  EXPECT_EQ(journal_.NDistributions(), 4);
  EXPECT_EQ(Held(), (Amounts{0, 20, 0, 40}));
}

TEST_F(JournalRowsGrowing, ByReadingAloneAreWrittenAsBlanks) {
  Load({1, 2, 3});
  EXPECT_EQ(journal_.DetailAmount(11), 0);
  EXPECT_EQ(journal_.NDistributions(), 11);
  ASSERT_EQ(journal_.Update(), StatusSuccess);
  EXPECT_EQ(files_.Amounts(Ours), (Amounts{1, 2, 3, 0, 0, 0, 0, 0, 0, 0, 0}));
}

TEST_F(JournalRowsGrowing, MakeRoomForThatIndexAndNoMore) {
  Load({1, 2, 3});
  journal_.DetailAmount(15);
  EXPECT_EQ(journal_.NDistributions(), 15);
  journal_.DetailAmount(14);
  EXPECT_EQ(journal_.NDistributions(), 15);
  journal_.DetailAmount(16);
  EXPECT_EQ(journal_.NDistributions(), 16);
}

TEST_F(JournalRowsGrowing, SaveTheRowInHandFirst) {
  Load({1, 2, 3});
  journal_.DetailAmount(2, 20);
  journal_.DetailAmount(25, 250);
  EXPECT_EQ(journal_.DetailAmount(2), 20);
  EXPECT_EQ(journal_.DetailAmount(25), 250);
  EXPECT_EQ(journal_.NDistributions(), 25);
}

// Within the room there are places behind the last row. They can be read and written like rows, but
// are none.
TEST_F(JournalRowsGrowing, DoNotCountBehindTheLastWhereThereIsRoom) {
  Load({1, 2, 3});
  EXPECT_EQ(journal_.DetailAmount(4), 0);
  journal_.DetailAmount(5, 50);
  EXPECT_EQ(journal_.DetailAmount(1), 1);
  EXPECT_EQ(journal_.DetailAmount(5), 50);
  EXPECT_EQ(journal_.NDistributions(), 3);
  EXPECT_EQ(messages_.Texts(), Messages{});
  ASSERT_EQ(journal_.Update(), StatusSuccess);
  EXPECT_EQ(files_.Amounts(Ours), (Amounts{1, 2, 3}));
}

TEST_F(JournalRowsGrowing, CountBehindTheLastOnceNDistributionsSaysSo) {
  Load({1, 2, 3});
  journal_.DetailAmount(5, 50);
  journal_.NDistributions(5);
  ASSERT_EQ(journal_.Update(), StatusSuccess);
  EXPECT_EQ(files_.Amounts(Ours), (Amounts{1, 2, 3, 0, 50}));
}

// --- NDistributions ---

TEST_F(JournalRowsCounted, CutTheTransactionShort) {
  Load({1, 2, 3, 4, 5});
  journal_.NDistributions(2);
  ASSERT_EQ(journal_.Update(), StatusSuccess);
  EXPECT_EQ(files_.Amounts(Ours), (Amounts{1, 2}));
}

TEST_F(JournalRowsCounted, CutShortComeBackWhenCountedAgain) {
  Load({1, 2, 3, 4, 5});
  journal_.NDistributions(2);
  journal_.NDistributions(4);
  EXPECT_EQ(Held(), (Amounts{1, 2, 3, 4}));
}

TEST_F(JournalRowsCounted, AnnounceNewOnes) {
  Load({1, 2});
  journal_.NDistributions(12);
  EXPECT_EQ(journal_.NDistributions(), 12);
  EXPECT_EQ(Held(), (Amounts{1, 2, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0}));
  journal_.DetailAmount(13);
  EXPECT_EQ(journal_.NDistributions(), 13) << "there is room for 12 and no more";
}

TEST_F(JournalRowsCounted, KeepTheirRoomWhenTheirNumberFalls) {
  Open();
  journal_.NDistributions(5);
  journal_.NDistributions(2);
  journal_.DetailAmount(4, 40);
  EXPECT_EQ(journal_.NDistributions(), 2);
  journal_.DetailAmount(6, 60);
  EXPECT_EQ(journal_.NDistributions(), 6);
  EXPECT_EQ(Held(), (Amounts{0, 0, 0, 40, 0, 60}));
}

TEST_F(JournalRowsCounted, DoNotTouchTheRowInHand) {
  Load({1, 2, 3});
  journal_.DetailAmount(2, 20);
  journal_.NDistributions(25);
  EXPECT_EQ(journal_.DetailAmount(2), 20);
  journal_.NDistributions(2);
  ASSERT_EQ(journal_.Update(), StatusSuccess);
  EXPECT_EQ(files_.Amounts(Ours), (Amounts{1, 20}));
}

TEST_F(JournalRowsCounted, BelowZeroWriteNone) {
  Load({1, 2});
  journal_.NDistributions(-3);
  EXPECT_EQ(journal_.NDistributions(), -3);
  ASSERT_EQ(journal_.Update(), StatusSuccess);
  EXPECT_EQ(files_.Amounts(Ours), Amounts{});
}

TEST_F(JournalRowsCounted, BeyondTheLargestIntegerRaise6AndAreAllHeld) {
  LoadAlone(UpTo(32768));
  EXPECT_EQ(test::RaisedNumber([&] { return journal_.NDistributions(); }), errors::Overflow);
  EXPECT_EQ(journal_.DetailAmount(32767), 32767);
  journal_.NDistributions(3);
  EXPECT_EQ(Held(), UpTo(3));
}

// --- The message box ---

TEST_F(JournalRowsMessage, TellsOfAnIndexBelow1AndReadsTheRowThatIsThere) {
  Load({1, 2});
  EXPECT_EQ(journal_.DetailAmount(0), TheirAmount);
  EXPECT_EQ(messages_.Texts(), Messages{"Error in PositionOnDetail(0): NRowsDefined = 10, "
                                        "NDetail = -1, j = 0\r\n"
                                        "9 : Subscript out of range"});
}

TEST_F(JournalRowsMessage, ComesWithEveryAccess) {
  Load({1, 2});
  journal_.DetailDescription(0);
  journal_.DetailDescription(0, "lost");
  journal_.DetailPosted(0);
  EXPECT_EQ(messages_.Texts().size(), 3U);
}

TEST_F(JournalRowsMessage, NamesTheRowInHandAndTheRoom) {
  Load(UpTo(11));
  journal_.DetailAmount(3);
  journal_.DetailAmount(-7);
  EXPECT_EQ(messages_.Texts(), Messages{"Error in PositionOnDetail(-7): NRowsDefined = 20, "
                                        "NDetail = 3, j = 0\r\n"
                                        "9 : Subscript out of range"});
}

TEST_F(JournalRowsMessage, OfAJournalWithoutATransactionNamesNoRow) {
  Open();
  journal_.DetailAmount(-1);
  EXPECT_EQ(messages_.Texts(), Messages{"Error in PositionOnDetail(-1): NRowsDefined = 0, "
                                        "NDetail = 0, j = 0\r\n"
                                        "9 : Subscript out of range"});
}

TEST_F(JournalRowsMessage, LeavesTheRowInHandWhereItWas) {
  Load({1, 2, 3});
  journal_.DetailAmount(2, 20);
  EXPECT_EQ(journal_.DetailAmount(0), 20);
  journal_.DetailAmount(0, 25);
  EXPECT_EQ(journal_.DetailAmount(2), 25) << "the row in hand took what was meant for index 0";
  ASSERT_EQ(journal_.Update(), StatusSuccess);
  EXPECT_EQ(files_.Amounts(Ours), (Amounts{1, 25, 3}));
  EXPECT_EQ(messages_.Texts().size(), 2U);
}

TEST_F(JournalRowsMessage, ThatCannotBeShownDisturbsNobody) {
  Load({1, 2});
  const MessageBoxHandler before =
      SetMessageBoxHandler([](std::string_view) { throw std::runtime_error("no display"); });
  EXPECT_NO_THROW(journal_.DetailAmount(0));
  SetMessageBoxHandler(before);
  EXPECT_EQ(Held(), (Amounts{1, 2}));
}

// --- Writing back ---

TEST_F(JournalRowsWritten, BearTheNumberJournalAndDayOfTheirHeader) {
  const Date day = Date::FromYmd(2024, 3, 15);
  constexpr std::int16_t Sales = 3;
  Load({1, 2});
  journal_.NRecord(40);
  journal_.JournalID(Sales);
  journal_.TrxDate(day);
  ASSERT_EQ(journal_.Insert(), StatusSuccess);
  EXPECT_EQ(files_.Amounts(40), (Amounts{1, 2}));
  files_.OfRows(40, [&](Tovrin2Record& row) {
    EXPECT_EQ(row.GetLong(JrnlRowRecord::JournalID), Sales);
    EXPECT_EQ(row.GetDate(JrnlRowRecord::TrxDate), day.Serial());
    return 0;
  });
  EXPECT_EQ(files_.Amounts(Ours), (Amounts{1, 2})) << "the old transaction is as it was";
}

TEST_F(JournalRowsWritten, AreAllOfTheTransactionWhateverIsOnFile) {
  Load({1, 2, 3});
  files_.AddRows(Ours, {4, 5});
  journal_.DetailAmount(1, 10);
  ASSERT_EQ(journal_.Update(), StatusSuccess);
  EXPECT_EQ(files_.Amounts(Ours), (Amounts{10, 2, 3}));
  EXPECT_EQ(files_.Amounts(Theirs), (Amounts{TheirAmount, 78}));
}

TEST_F(JournalRowsWritten, IncludeTheRowInHand) {
  Load({1, 2});
  journal_.DetailAmount(2, 20);
  ASSERT_EQ(journal_.Update(), StatusSuccess);
  EXPECT_EQ(files_.Amounts(Ours), (Amounts{1, 20}));
  ASSERT_EQ(journal_.Update(), StatusSuccess) << "a second write finds them where they were";
  EXPECT_EQ(files_.Amounts(Ours), (Amounts{1, 20}));
}

TEST_F(JournalRowsWritten, UnderANewHeaderAreThoseThatClearRecordLeft) {
  Load({1, 2, 3});
  ASSERT_EQ(journal_.ClearRecord(), StatusSuccess);
  journal_.NRecord(40);
  ASSERT_EQ(journal_.Insert(), StatusSuccess);
  EXPECT_EQ(files_.Amounts(40), (Amounts{1, 2, 3}));
  EXPECT_EQ(files_.Amounts(Ours), (Amounts{1, 2, 3}));
}

TEST_F(JournalRowsWritten, OfAnInsertReplaceWhatTheFileHasUnderThatNumber) {
  files_.AddRows(40, {7, 8, 9});
  Open();
  journal_.NRecord(40);
  ASSERT_EQ(journal_.Insert(), StatusSuccess);
  EXPECT_EQ(files_.Amounts(40), Amounts{});
}

// The rows go first: a header that is refused has its rows on file all the same.
TEST_F(JournalRowsWritten, OfAHeaderThatExistsAlreadyReplaceItsOwn) {
  Load({1, 2, 3});
  journal_.NRecord(Theirs);
  EXPECT_EQ(journal_.Insert(), StatusDuplicateKey);
  EXPECT_EQ(files_.Amounts(Theirs), (Amounts{1, 2, 3}));
  EXPECT_EQ(files_.Text(Theirs, JrnlHdrRecord::Reference), "theirs");
}

TEST_F(JournalRowsWritten, OfAHeaderThatSomeoneElseChangedStay) {
  Load({1, 2, 3});
  {
    GeneralJournal other;
    ASSERT_EQ(other.OpenFile(), StatusSuccess);
    ASSERT_EQ(other.GetEqual(Ours), StatusSuccess);
    other.Reference("changed");
    ASSERT_EQ(other.Update(), StatusSuccess);
  }
  journal_.DetailAmount(1, 10);
  EXPECT_EQ(journal_.Update(), StatusRecordConflict);
  EXPECT_EQ(files_.Amounts(Ours), (Amounts{10, 2, 3}));
}

TEST_F(JournalRowsWritten, OfAHeaderThatMayOnlyBeReadStay) {
  files_.AddTransaction({.nRecord = Ours, .reference = "ours"}, {1, 2});
  test::ProtectFile(files_.Headers(), /*allowRead=*/true);
  Open();
  ASSERT_EQ(journal_.GetEqual(Ours), StatusSuccess);
  journal_.DetailAmount(1, 10);
  EXPECT_EQ(journal_.Update(), StatusAccessDenied);
  EXPECT_EQ(files_.Amounts(Ours), (Amounts{10, 2}));
}

// Nobody is told that the rows did not change.
TEST_F(JournalRowsWritten, ThatAreRefusedLeaveTheAnswerToTheHeader) {
  files_.AddTransaction({.nRecord = Ours, .reference = "ours"}, {1, 2});
  test::ProtectFile(files_.Rows(), /*allowRead=*/true);
  Open();
  ASSERT_EQ(journal_.GetEqual(Ours), StatusSuccess);
  journal_.DetailAmount(1, 10);
  journal_.Reference("changed");
  EXPECT_EQ(journal_.Update(), StatusSuccess);
  EXPECT_EQ(files_.Text(Ours, JrnlHdrRecord::Reference), "changed");
  EXPECT_EQ(files_.Amounts(Ours), (Amounts{1, 2}));
  EXPECT_EQ(Held(), (Amounts{10, 2})) << "the journal still holds what it could not write";
  EXPECT_EQ(messages_.Texts(), Messages{});
}

// --- Deleting ---

TEST_F(JournalRowsDeleted, GoWithTheirHeader) {
  Load({1, 2, 3});
  ASSERT_EQ(journal_.Delete(), StatusSuccess);
  EXPECT_EQ(files_.Amounts(Ours), Amounts{});
  EXPECT_EQ(files_.Amounts(Theirs), (Amounts{TheirAmount, 78}));
}

TEST_F(JournalRowsDeleted, StayInTheJournalAndCanBeInsertedAgain) {
  Load({1, 2, 3});
  ASSERT_EQ(journal_.Delete(), StatusSuccess);
  EXPECT_EQ(journal_.NDistributions(), 3);
  ASSERT_EQ(journal_.Insert(), StatusSuccess);
  EXPECT_EQ(files_.Amounts(Ours), (Amounts{1, 2, 3}));
  EXPECT_EQ(files_.Text(Ours, JrnlHdrRecord::Reference), "ours");
}

// The deletion reads through the one row buffer, and the row in hand is lost to what it read last.
TEST_F(JournalRowsDeleted, TakeTheRowInHandWithThem) {
  Load({1, 2, 3});
  journal_.DetailAmount(2, 20);
  ASSERT_EQ(journal_.Delete(), StatusSuccess);
  EXPECT_EQ(journal_.DetailAmount(2), TheirAmount);
  ASSERT_EQ(journal_.Insert(), StatusSuccess);
  EXPECT_EQ(files_.Amounts(Ours), (Amounts{1, TheirAmount, 3}));
}

TEST_F(JournalRowsDeleted, AtTheEndOfTheFileLeaveTheirLastOneInHand) {
  LoadAlone({1, 2, 3});
  journal_.DetailAmount(1);
  ASSERT_EQ(journal_.Delete(), StatusSuccess);
  EXPECT_EQ(journal_.DetailAmount(1), 3);
}

TEST_F(JournalRowsDeleted, GoAlsoWhereTheHeaderDoesNot) {
  files_.AddTransaction({.nRecord = Ours}, {1, 2});
  Open();
  journal_.NRecord(Ours);
  EXPECT_EQ(journal_.Delete(), StatusInvalidPositioning);
  EXPECT_EQ(files_.Amounts(Ours), Amounts{});
  EXPECT_TRUE(files_.HasHeader(Ours));
}

TEST_F(JournalRowsDeleted, ThatAreRefusedStayWithoutAHeader) {
  files_.AddTransaction({.nRecord = Ours}, {1, 2});
  test::ProtectFile(files_.Rows(), /*allowRead=*/true);
  Open();
  ASSERT_EQ(journal_.GetEqual(Ours), StatusSuccess);
  EXPECT_EQ(journal_.Delete(), StatusSuccess);
  EXPECT_FALSE(files_.HasHeader(Ours));
  EXPECT_EQ(files_.Amounts(Ours), (Amounts{1, 2}));
}

// --- One commit ---

/// Writes a loaded transaction of five rows again, with two rows and with five in turns, and counts
/// the writes in its header.
void WriteTwoAndFiveRows(GeneralJournal& journal) {
  constexpr std::int16_t RowCounts[] = {2, 5};
  for (const std::int16_t rows : RowCounts) {
    journal.NDistributions(rows);
    journal.EditCount(journal.EditCount() + 1);
    journal.Update();
  }
}

TEST_F(JournalRowsCommit, IsSeenByOthersAsAWhole) {
  LoadAlone({1, 2, 3, 4, 5});
  std::atomic<bool> watching = false;
  std::atomic<bool> done = false;
  std::set<std::int32_t> seen;
  std::thread watcher([&] {
    test::OpenRecordFile rows(files_.Rows(), JrnlRowRecord::Describe());
    while (!done) {
      seen.insert(rows.File().btRecordCount());
      watching = true;
    }
  });
  while (!watching) std::this_thread::yield();
  for (int i = 0; i < 100; ++i) WriteTwoAndFiveRows(journal_);
  done = true;
  watcher.join();
  for (const std::int32_t count : seen) EXPECT_TRUE(count == 2 || count == 5) << count << " rows";
  EXPECT_EQ(files_.Amounts(Ours), (Amounts{1, 2, 3, 4, 5}));
}

/// Runs `body` in a child process and kills that in the midst of it.
void KillInTheMidst(const std::function<void()>& body) {
  const pid_t child = fork();
  ASSERT_GE(child, 0);
  if (child == 0) {
    constexpr unsigned int Seconds = 60;  // where nobody kills it
    alarm(Seconds);
    body();
    _exit(1);
  }
  std::this_thread::sleep_for(std::chrono::milliseconds(40));
  kill(child, SIGKILL);
  int state = 0;
  ASSERT_EQ(waitpid(child, &state, 0), child);
  EXPECT_TRUE(WIFSIGNALED(state)) << "the child came to an end by itself";
}

TEST_F(JournalRowsCommit, IsWholeOrNotAtAllWhereItsWriterDies) {
  files_.AddTransaction({.nRecord = Ours}, {1, 2, 3, 4, 5});
  const auto writeForEver = [] {
    GeneralJournal journal;
    if (journal.OpenFile() != StatusSuccess || journal.GetEqual(Ours) != StatusSuccess) return;
    journal.NDistributions(5);
    for (;;) WriteTwoAndFiveRows(journal);
  };
  for (int i = 0; i < 10; ++i) {
    KillInTheMidst(writeForEver);
    const Amounts left = files_.Amounts(Ours);
    EXPECT_TRUE(left.size() == 2 || left.size() == 5) << left.size() << " rows";
  }
  EXPECT_GT(files_.Long(Ours, JrnlHdrRecord::EditCount), 0) << "nobody wrote";
}

TEST_F(JournalRowsCommit, WaitsForTheBulkWriteThatItIsPartOf) {
  LoadAlone({1, 2, 3});
  journal_.NDistributions(1);
  {
    BulkWrite bulk;
    ASSERT_EQ(journal_.Update(), StatusSuccess);
    EXPECT_EQ(files_.Amounts(Ours), (Amounts{1})) << "the writer itself sees it at once";
    EXPECT_EQ(test::OnAnotherThread([&] { return files_.Amounts(Ours); }), (Amounts{1, 2, 3}));
  }
  EXPECT_EQ(files_.Amounts(Ours), (Amounts{1, 2, 3})) << "and nobody, where it is dropped";
}

}  // namespace
}  // namespace larkmoor
