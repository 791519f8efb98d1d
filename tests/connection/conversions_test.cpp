// The rules that turn dates, indexes and numbers of a record into those of a client and back.
#include "connection/conversions.h"

#include <cstdint>
#include <limits>

#include <gtest/gtest.h>

namespace larkmoor {
namespace {

/// The two dates that mean "no date" in a record, and the one date that cannot be stored.
constexpr double EmptyDate = 2.0;
constexpr double OtherEmptyDate = 65537.0;
constexpr double LastDayOf1999 = 36525.0;

double Serial(int year, int month, int day) { return Date::FromYmd(year, month, day).Serial(); }

/// The date that a client sees, NaN where it sees none.
double ShownDate(double recordDate) {
  const Variant shown = DateFromRecord(recordDate);
  EXPECT_EQ(shown.GetKind(), Variant::Kind::Date) << recordDate;
  return shown.GetKind() == Variant::Kind::Date ? shown.ToDate().Serial()
                                                : std::numeric_limits<double>::quiet_NaN();
}

// --- From the record ---

TEST(DateFromRecord, GivesTheDateAsItIs) {
  EXPECT_EQ(ShownDate(Serial(2024, 2, 29)), Serial(2024, 2, 29));
  EXPECT_EQ(ShownDate(Serial(1999, 12, 31)), LastDayOf1999);
}

TEST(DateFromRecord, KeepsTheTimeOfDay) { EXPECT_EQ(ShownDate(45000.75), 45000.75); }

TEST(DateFromRecord, GivesNullForTheEmptyDates) {
  EXPECT_TRUE(DateFromRecord(EmptyDate).IsNull());
  EXPECT_TRUE(DateFromRecord(OtherEmptyDate).IsNull());
}

TEST(DateFromRecord, GivesNullForEveryDayOf1900) {
  EXPECT_TRUE(DateFromRecord(Serial(1900, 1, 1)).IsNull());
  EXPECT_TRUE(DateFromRecord(Serial(1900, 7, 15)).IsNull());
  EXPECT_TRUE(DateFromRecord(Serial(1900, 12, 31)).IsNull());
  for (int day = 2; day <= 366; ++day) EXPECT_TRUE(DateFromRecord(day).IsNull()) << day;
}

TEST(DateFromRecord, GivesNullForEveryHourOf1900) {
  EXPECT_TRUE(DateFromRecord(2.5).IsNull());
  EXPECT_TRUE(DateFromRecord(366.75).IsNull());
}

TEST(DateFromRecord, GivesTheDaysBeforeAndAfter1900) {
  EXPECT_EQ(ShownDate(Serial(1901, 1, 1)), 367.0);
  EXPECT_EQ(ShownDate(Serial(1899, 12, 31)), 1.0);
  EXPECT_EQ(ShownDate(1.75), 1.75);
  EXPECT_EQ(ShownDate(0.0), 0.0);
  EXPECT_EQ(ShownDate(-1.25), -1.25);
}

TEST(DateFromRecord, TakesOnlyTheExactOtherEmptyDate) {
  EXPECT_EQ(ShownDate(65536.0), 65536.0);
  EXPECT_EQ(ShownDate(65537.5), 65537.5);
  EXPECT_EQ(ShownDate(65538.0), 65538.0);
}

TEST(DateFromRecord, NeverRaisesOnSpoiltRecords) {
  EXPECT_EQ(ShownDate(1e300), 1e300);
  EXPECT_EQ(ShownDate(-1e300), -1e300);
  EXPECT_EQ(ShownDate(std::numeric_limits<double>::infinity()),
            std::numeric_limits<double>::infinity());
  EXPECT_NO_THROW(DateFromRecord(std::numeric_limits<double>::quiet_NaN()));
}

// --- To the record ---

TEST(DateToRecord, StoresTheDateAsItIs) {
  EXPECT_EQ(DateToRecord(Date::FromYmd(2024, 2, 29)), Serial(2024, 2, 29));
  EXPECT_EQ(DateToRecord(Date(45000.75)), 45000.75);
  EXPECT_EQ(DateToRecord(Date(-1.25)), -1.25);
}

TEST(DateToRecord, StoresTheEmptyDateForNullAndTheEmptyText) {
  EXPECT_EQ(DateToRecord(Null), EmptyDate);
  EXPECT_EQ(DateToRecord(""), EmptyDate);
  EXPECT_EQ(DateToRecord(Variant()), EmptyDate) << "Empty equals the empty text";
}

TEST(DateToRecord, StoresTheEmptyDateForANumber1OfAnyKind) {
  EXPECT_EQ(DateToRecord(std::int16_t{1}), EmptyDate);
  EXPECT_EQ(DateToRecord(std::int32_t{1}), EmptyDate);
  EXPECT_EQ(DateToRecord(std::uint8_t{1}), EmptyDate);
  EXPECT_EQ(DateToRecord(1.0f), EmptyDate);
  EXPECT_EQ(DateToRecord(1.0), EmptyDate);
  EXPECT_EQ(DateToRecord(Currency(1.0)), EmptyDate);
  EXPECT_EQ(DateToRecord(Date(1.0)), EmptyDate);
}

TEST(DateToRecord, ConvertsAnyOtherNumber) {
  EXPECT_EQ(DateToRecord(std::int16_t{2}), 2.0);
  EXPECT_EQ(DateToRecord(std::int32_t{45000}), 45000.0);
  EXPECT_EQ(DateToRecord(1.5), 1.5);
  EXPECT_EQ(DateToRecord(std::int16_t{0}), 0.0);
  EXPECT_EQ(DateToRecord(true), -1.0) << "true is -1, not 1";
}

TEST(DateToRecord, StoresTheLastDayOf1999AsTheOtherEmptyDate) {
  EXPECT_EQ(DateToRecord(Date::FromYmd(1999, 12, 31)), OtherEmptyDate);
  EXPECT_EQ(DateToRecord(LastDayOf1999), OtherEmptyDate);
  EXPECT_EQ(DateToRecord(std::int32_t{36525}), OtherEmptyDate);
  EXPECT_EQ(DateToRecord("1999-12-31"), OtherEmptyDate);
}

TEST(DateToRecord, StoresTheDaysAroundItAndItsLaterHours) {
  EXPECT_EQ(DateToRecord(Date::FromYmd(1999, 12, 30)), 36524.0);
  EXPECT_EQ(DateToRecord(Date::FromYmd(2000, 1, 1)), 36526.0);
  EXPECT_EQ(DateToRecord(Date::FromYmd(1999, 12, 31, 12)), 36525.5);
}

TEST(DateToRecord, TakesADateInText) {
  EXPECT_EQ(DateToRecord("2024-02-29"), Serial(2024, 2, 29));
  EXPECT_EQ(DateToRecord("2024-02-29 12:00"), Serial(2024, 2, 29) + 0.5);
}

TEST(DateToRecord, StoresTheEmptyDateForWhatIsNoDate) {
  EXPECT_EQ(DateToRecord("yesterday"), EmptyDate);
  EXPECT_EQ(DateToRecord("2023-02-29"), EmptyDate);
  EXPECT_EQ(DateToRecord("2024-13-01"), EmptyDate);
  EXPECT_EQ(DateToRecord("\xff\xfe"), EmptyDate);
  EXPECT_EQ(DateToRecord(1e300), EmptyDate);
  EXPECT_EQ(DateToRecord(-1e300), EmptyDate);
}

TEST(DateToRecord, WhatIsStoredForNoDateIsShownAsNull) {
  EXPECT_TRUE(DateFromRecord(DateToRecord(Null)).IsNull());
  EXPECT_TRUE(DateFromRecord(DateToRecord("yesterday")).IsNull());
  EXPECT_TRUE(DateFromRecord(DateToRecord(Date::FromYmd(1999, 12, 31))).IsNull());
  EXPECT_TRUE(DateFromRecord(DateToRecord(Date::FromYmd(1900, 7, 15))).IsNull());
}

TEST(DateToRecord, EveryOtherDayComesBack) {
  for (int day = 367; day < 80000; ++day) {
    const Date date(day);
    if (day == LastDayOf1999 || day == OtherEmptyDate) continue;
    ASSERT_EQ(DateFromRecord(DateToRecord(date)), Variant(date));
  }
}

// --- Clamp ---

TEST(Clamp, BringsAValueIntoTheRange) {
  EXPECT_EQ(Clamp(5, 0, 3), 3);
  EXPECT_EQ(Clamp(-1, 0, 3), 0);
  EXPECT_EQ(Clamp(2, 0, 3), 2);
}

TEST(Clamp, KeepsTheEndsOfTheRange) {
  EXPECT_EQ(Clamp(0, 0, 3), 0);
  EXPECT_EQ(Clamp(3, 0, 3), 3);
  EXPECT_EQ(Clamp(-32768, -32768, 32767), -32768);
  EXPECT_EQ(Clamp(32767, -32768, 32767), 32767);
}

// An upside-down range: below its low end a value goes there, from there on it is above the high.
TEST(Clamp, LooksAtTheLowEndFirst) {
  EXPECT_EQ(Clamp(2, 5, 1), 5);
  EXPECT_EQ(Clamp(0, 5, 1), 5);
  EXPECT_EQ(Clamp(5, 5, 1), 1);
  EXPECT_EQ(Clamp(9, 5, 1), 1);
}

// --- LongToInteger ---

TEST(LongToInteger, KeepsWhatFits) {
  EXPECT_EQ(LongToInteger(0), 0);
  EXPECT_EQ(LongToInteger(1), 1);
  EXPECT_EQ(LongToInteger(32767), 32767);
}

TEST(LongToInteger, FoldsTheUpperHalfIntoTheNegatives) {
  EXPECT_EQ(LongToInteger(32768), -32768);
  EXPECT_EQ(LongToInteger(40000), -25536);
  EXPECT_EQ(LongToInteger(65535), -1);
}

TEST(LongToInteger, LooksAtTheLow16BitsOnly) {
  EXPECT_EQ(LongToInteger(65536), 0);
  EXPECT_EQ(LongToInteger(65537), 1);
  EXPECT_EQ(LongToInteger(98304), -32768);
  EXPECT_EQ(LongToInteger(std::numeric_limits<std::int32_t>::max()), -1);
  EXPECT_EQ(LongToInteger(std::numeric_limits<std::int32_t>::min()), 0);
}

TEST(LongToInteger, TakesNegativeNumbersByTheirBitsToo) {
  EXPECT_EQ(LongToInteger(-1), -1);
  EXPECT_EQ(LongToInteger(-32768), -32768);
  EXPECT_EQ(LongToInteger(-32769), 32767);
  EXPECT_EQ(LongToInteger(-65536), 0);
}

}  // namespace
}  // namespace larkmoor
