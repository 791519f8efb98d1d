// The class GeneralData: what it does to its own fields. How it is opened, read and rewritten is in
// settings_frame_test.cpp, its accounts are in settings_accounts_test.cpp.
#include "engine/records/general_data.h"

#include <cstddef>
#include <cstdint>

#include <gtest/gtest.h>

#include <larkmoor/date.h>
#include <larkmoor/error.h>
#include <larkmoor/settings/general_data.h>
#include <larkmoor/status.h>
#include <larkmoor/variant.h>

#include "connection/shared_routines.h"
#include "engine/runtime_error.h"
#include "engine/tovrin_file.h"
#include "support/company.h"
#include "support/errors.h"
#include "support/settings_row.h"

namespace larkmoor {
namespace {

using test::Company;
using test::RaisedNumber;
using test::SettingsRow;

constexpr double EmptyDate = 2;
constexpr double OtherEmptyDate = 65537;

constexpr std::uint8_t AnyButFalse[] = {1, 5, 254, 255};

class GeneralDataTest : public testing::Test {
 protected:
  GeneralDataTest() { EXPECT_EQ(general_.OpenFile(), StatusSuccess); }

  /// Puts a value into the row on file and has the object read it.
  void Store(const Field& field, const Variant& value, int index = 0) {
    row_.Set(field, value, index);
    ASSERT_EQ(general_.Read(), StatusSuccess);
  }
  /// Rewrites the row from the object and gives what is on file then.
  Variant Written(const Field& field, int index = 0) {
    EXPECT_EQ(general_.Update(), StatusSuccess);
    return row_.Value(field, index);
  }

  Company company_;
  SettingsRow row_{company_.Folder(), GeneralDataRecord::Describe()};
  GeneralData general_;
};

using GeneralDataMarks = GeneralDataTest;
using GeneralDataDates = GeneralDataTest;
using GeneralDataOldestUnpostedTrx = GeneralDataTest;
using GeneralDataBytes = GeneralDataTest;

TEST_F(GeneralDataTest, ReadOnlyFieldsShowWhatIsOnFile) {
  row_.Set(GeneralDataRecord::CurrentPeriod, std::int16_t{7});
  row_.Set(GeneralDataRecord::Version, "19.0.01");
  ASSERT_EQ(general_.Read(), StatusSuccess);
  EXPECT_EQ(general_.CurrentPeriod(), 7);
  EXPECT_EQ(general_.Version(), "19.0.01");
}

TEST_F(GeneralDataTest, CountsTheEntriesOfEachJournalByItsCode) {
  row_.Set(GeneralDataRecord::BatchEntryCount, std::int16_t{4}, 3);
  row_.Set(GeneralDataRecord::BatchFlag, std::uint8_t{0}, 3);
  ASSERT_TRUE(IncrementBatchEntry(3));
  ASSERT_EQ(general_.Read(), StatusSuccess);
  EXPECT_EQ(general_.BatchEntryCount(3), 5);
  EXPECT_EQ(general_.BatchFlag(3), 255);
}

// --- Marks ---

TEST_F(GeneralDataMarks, BatchFlagStores255ForAnythingBut0) {
  ASSERT_EQ(general_.Read(), StatusSuccess);
  for (const std::uint8_t value : AnyButFalse) {
    general_.BatchFlag(3, 0);
    general_.BatchFlag(3, value);
    EXPECT_EQ(general_.BatchFlag(3), 255);
    EXPECT_EQ(Written(GeneralDataRecord::BatchFlag, 3), 255);
  }
  general_.BatchFlag(3, 0);
  EXPECT_EQ(general_.BatchFlag(3), 0);
  EXPECT_EQ(Written(GeneralDataRecord::BatchFlag, 3), 0);
}

TEST_F(GeneralDataMarks, BatchFlagReadsTheByteThatIsOnFile) {
  Store(GeneralDataRecord::BatchFlag, std::uint8_t{7}, 3);
  EXPECT_EQ(general_.BatchFlag(3), 7);
}

TEST_F(GeneralDataMarks, BatchFlagOfOneJournalLeavesTheOthers) {
  for (const int journal : {2, 4}) {
    row_.Set(GeneralDataRecord::BatchFlag, std::uint8_t{7}, journal);
  }
  ASSERT_EQ(general_.Read(), StatusSuccess);
  general_.BatchFlag(3, 1);
  EXPECT_EQ(general_.BatchFlag(2), 7);
  EXPECT_EQ(general_.BatchFlag(4), 7);
}

TEST_F(GeneralDataMarks, BatchFlagOfNoJournalRaises9) {
  for (const std::int16_t journal : {std::int16_t{-1}, std::int16_t{99}}) {
    EXPECT_EQ(RaisedNumber([&] { return general_.BatchFlag(journal); }),
              errors::SubscriptOutOfRange);
    EXPECT_EQ(RaisedNumber([&] { general_.BatchFlag(journal, 1); }), errors::SubscriptOutOfRange);
  }
}

TEST_F(GeneralDataMarks, Unused4Reads1Or0AndIsStoredAsABoolean) {
  ASSERT_EQ(general_.Read(), StatusSuccess);
  for (const std::uint8_t value : AnyButFalse) {
    general_.Unused4(0);
    general_.Unused4(value);
    EXPECT_EQ(general_.Unused4(), 1);
    EXPECT_EQ(Written(GeneralDataRecord::Unused4), true);
    const RecordBytes bytes = row_.Bytes();
    const std::uint32_t place = GeneralDataRecord::Unused4.offset;
    EXPECT_EQ(bytes[place], std::byte{0xFF});
    EXPECT_EQ(bytes[place + 1], std::byte{0xFF});
  }
  general_.Unused4(0);
  EXPECT_EQ(general_.Unused4(), 0);
  EXPECT_EQ(Written(GeneralDataRecord::Unused4), false);
}

// --- Dates ---

TEST_F(GeneralDataDates, OfPeriodsAreCountedFrom0) {
  const Date first = Date::FromYmd(2012, 1, 1);
  const Date last = Date::FromYmd(2012, 1, 31);
  row_.Set(GeneralDataRecord::PeriodStartDate, first, 0);
  row_.Set(GeneralDataRecord::PeriodEndDate, last, 55);
  ASSERT_EQ(general_.Read(), StatusSuccess);
  EXPECT_EQ(general_.PeriodStartDate(0), first);
  EXPECT_EQ(general_.PeriodEndDate(55), last);
  general_.PeriodStartDate(3, last);
  general_.PeriodEndDate(4, first);
  EXPECT_EQ(Written(GeneralDataRecord::PeriodStartDate, 3), last);
  EXPECT_EQ(row_.Value(GeneralDataRecord::PeriodEndDate, 4), first);
}

// Both are Null first, and so never become the empty text.
TEST_F(GeneralDataDates, OfPeriodsThatAreEmptyReadNullAndNotAnEmptyText) {
  for (const double empty : {0.0, EmptyDate, OtherEmptyDate}) {
    row_.Set(GeneralDataRecord::PeriodStartDate, Date(empty), 5);
    row_.Set(GeneralDataRecord::PeriodEndDate, Date(empty), 5);
    ASSERT_EQ(general_.Read(), StatusSuccess);
    EXPECT_TRUE(general_.PeriodStartDate(5).IsNull()) << empty;
    EXPECT_TRUE(general_.PeriodEndDate(5).IsNull()) << empty;
  }
}

TEST_F(GeneralDataDates, ThatAreSpareAreStored) {
  const Date one = Date::FromYmd(2011, 5, 1);
  const Date other = Date::FromYmd(2011, 5, 2);
  Store(GeneralDataRecord::UnusedDate1, one);
  EXPECT_EQ(general_.UnusedDate1(), one);
  general_.UnusedDate1(other);
  general_.UnusedDate2(one);
  EXPECT_EQ(Written(GeneralDataRecord::UnusedDate1), other);
  EXPECT_EQ(row_.Value(GeneralDataRecord::UnusedDate2), one);
  general_.UnusedDate2(Null);
  EXPECT_EQ(Written(GeneralDataRecord::UnusedDate2), Date(EmptyDate));
}

TEST_F(GeneralDataDates, UnidentifiedDateIsNullWhateverWasAssigned) {
  ASSERT_EQ(general_.Read(), StatusSuccess);
  const RecordBytes before = row_.Bytes();
  for (const Variant& value :
       {Variant(Date::FromYmd(2011, 5, 1)), Variant("2011-05-01"), Variant(Null), Variant()}) {
    general_.UnidentifiedDate(value);
    EXPECT_TRUE(general_.UnidentifiedDate().IsNull()) << value;
  }
  ASSERT_EQ(general_.Update(), StatusSuccess);
  EXPECT_TRUE(row_.Bytes() == before);
}

// --- The oldest unposted transaction ---

TEST_F(GeneralDataOldestUnpostedTrx, AssignedRunsOutOfStackAndKeepsWhatIsStored) {
  const Date oldest = Date::FromYmd(2012, 2, 29);
  Store(GeneralDataRecord::OldestUnpostedTrx, oldest);
  for (const Variant& value : {Variant(Date::FromYmd(2012, 3, 1)), Variant(oldest), Variant(Null),
                               Variant(""), Variant("no date"), Variant()}) {
    try {
      general_.OldestUnpostedTrx(value);
      ADD_FAILURE() << value << " raises nothing";
    } catch (const Error& error) {
      EXPECT_EQ(error.Number(), 28);
      EXPECT_EQ(error.Source(), "Larkmoor");
      EXPECT_EQ(error.Description(), "Out of stack space");
      EXPECT_EQ(error.BtrieveStatus(), 0);
    }
    EXPECT_EQ(general_.OldestUnpostedTrx(), oldest);
  }
  general_.CalendarYear(2012);
  EXPECT_EQ(Written(GeneralDataRecord::CalendarYear), 2012) << "the object goes on working";
  EXPECT_EQ(row_.Value(GeneralDataRecord::OldestUnpostedTrx), oldest);
}

TEST_F(GeneralDataOldestUnpostedTrx, CannotBeAssignedBeforeOpenFileEither) {
  GeneralData general;
  EXPECT_EQ(RaisedNumber([&] { general.OldestUnpostedTrx(Null); }), errors::OutOfStackSpace);
  EXPECT_TRUE(general.OldestUnpostedTrx().IsNull());
}

// --- Bytes of the row ---

TEST_F(GeneralDataBytes, AreThoseOfTheRowInHandFrom0) {
  Store(GeneralDataRecord::BatchFlag, std::uint8_t{0x5A}, 3);
  constexpr std::int16_t RowType = 4;
  EXPECT_EQ(general_.RecordByte(0), RowType);
  EXPECT_EQ(general_.RecordByte(1), 0);
  const auto flag = static_cast<std::int16_t>(GeneralDataRecord::BatchFlag.offset + 3);
  EXPECT_EQ(general_.RecordByte(flag), 0x5A);
  general_.BatchFlag(3, 1);
  EXPECT_EQ(general_.RecordByte(flag), 255) << "with what was assigned since";
}

TEST_F(GeneralDataBytes, OutsideTheRowAre0) {
  ASSERT_EQ(general_.Read(), StatusSuccess);
  EXPECT_EQ(general_.RecordByte(-1), 0);
  EXPECT_EQ(general_.RecordByte(-32768), 0);
}

TEST_F(GeneralDataBytes, Are0BeforeOpenFile) {
  GeneralData general;
  EXPECT_EQ(general.RecordByte(0), 0);
}

}  // namespace
}  // namespace larkmoor
