#include <chrono>
#include <cmath>
#include <limits>
#include <sstream>
#include <string>

#include <gtest/gtest.h>

#include <larkmoor/date.h>

#include "support/errors.h"

namespace larkmoor {
namespace {

using namespace std::chrono_literals;
using std::chrono::local_days;
using std::chrono::local_seconds;
using std::chrono::year_month_day;
using test::RaisedNumber;

constexpr double FirstDay = -657434;
constexpr double LastDay = 2958465;
constexpr double NotANumber = std::numeric_limits<double>::quiet_NaN();
constexpr double Infinity = std::numeric_limits<double>::infinity();

TEST(Date, CountsDaysFromThe30thOfDecember1899) {
  EXPECT_EQ(Date::FromYmd(1899, 12, 30).Serial(), 0);
  EXPECT_EQ(Date::FromYmd(1899, 12, 31).Serial(), 1);
  EXPECT_EQ(Date::FromYmd(1900, 1, 1).Serial(), 2);
  EXPECT_EQ(Date::FromYmd(1900, 3, 1).Serial(), 61) << "1900 was no leap year";
  EXPECT_EQ(Date::FromYmd(1999, 12, 31).Serial(), 36525);
  EXPECT_EQ(Date::FromYmd(2079, 6, 6).Serial(), 65537);
  EXPECT_EQ(Date::FromYmd(100, 1, 1).Serial(), FirstDay);
  EXPECT_EQ(Date::FromYmd(9999, 12, 31).Serial(), LastDay);
}

TEST(Date, ANewDateIsDayZero) { EXPECT_EQ(Date(), Date::FromYmd(1899, 12, 30)); }

TEST(Date, TheFractionIsTheTimeOfDay) {
  EXPECT_EQ(Date::FromYmd(1900, 1, 1, 6).Serial(), 2.25);
  EXPECT_EQ(Date::FromYmd(1900, 1, 1, 18, 0, 0).Serial(), 2.75);
}

TEST(Date, BeforeDayZeroTheDaysCountDownAndTheTimeStillCountsUp) {
  EXPECT_EQ(Date::FromYmd(1899, 12, 29).Serial(), -1);
  EXPECT_EQ(Date::FromYmd(1899, 12, 29, 6).Serial(), -1.25);
  EXPECT_EQ(Date(-1.25).ToText(), "1899-12-29 06:00:00");
  EXPECT_EQ(Date(-1.75).ToText(), "1899-12-29 18:00:00");
  EXPECT_EQ(Date(-0.25).ToText(), "1899-12-30 06:00:00");
}

TEST(Date, EveryDayOfTheRangeComesBackFromItsSerialNumber) {
  year_month_day day = 100y / 1 / 1;
  for (double serial = FirstDay; serial <= LastDay; ++serial) {
    ASSERT_EQ(Date(serial).ToYmd(), day) << serial;
    ASSERT_EQ(Date::FromChrono(day), Date(serial)) << serial;
    day = year_month_day{local_days{day} + std::chrono::days{1}};
  }
}

TEST(Date, EverySecondOfADayComesBack) {
  for (const year_month_day day :
       {100y / 1 / 1, 1899y / 12 / 29, 2024y / 2 / 29, 9999y / 12 / 31}) {
    for (auto time = 0s; time < 24h; ++time) {
      const local_seconds point = local_days{day} + time;
      ASSERT_EQ(Date::FromChrono(point).ToChrono(), point) << time.count();
      ASSERT_EQ(Date::FromChrono(point).ToYmd(), day) << time.count();
    }
  }
}

TEST(Date, FromYmdRaises13ForADateThatTheCalendarDoesNotHave) {
  EXPECT_EQ(RaisedNumber([] { return Date::FromYmd(2023, 2, 29); }), 13);
  EXPECT_EQ(RaisedNumber([] { return Date::FromYmd(1900, 2, 29); }), 13);
  EXPECT_EQ(RaisedNumber([] { return Date::FromYmd(2024, 4, 31); }), 13);
  EXPECT_EQ(RaisedNumber([] { return Date::FromYmd(2024, 0, 1); }), 13);
  EXPECT_EQ(RaisedNumber([] { return Date::FromYmd(2024, 13, 1); }), 13);
  EXPECT_EQ(RaisedNumber([] { return Date::FromYmd(2024, 1, 0); }), 13);
  EXPECT_EQ(RaisedNumber([] { return Date::FromYmd(2024, 1, 32); }), 13);
  EXPECT_EQ(RaisedNumber([] { return Date::FromYmd(2000, 2, 29); }), 0);
}

TEST(Date, FromYmdRaises13OutsideTheYears100To9999) {
  EXPECT_EQ(RaisedNumber([] { return Date::FromYmd(99, 12, 31); }), 13);
  EXPECT_EQ(RaisedNumber([] { return Date::FromYmd(10000, 1, 1); }), 13);
  EXPECT_EQ(RaisedNumber([] { return Date::FromYmd(-2024, 1, 1); }), 13);
}

TEST(Date, FromYmdRaises13ForNumbersThatAreADateOnlyInTheirLowBits) {
  EXPECT_EQ(RaisedNumber([] { return Date::FromYmd(2024 + 65536, 1, 1); }), 13);
  EXPECT_EQ(RaisedNumber([] { return Date::FromYmd(2024, 1 + 256, 1); }), 13);
  EXPECT_EQ(RaisedNumber([] { return Date::FromYmd(2024, 1, 1 + 256); }), 13);
}

TEST(Date, FromYmdRaises13ForAnImpossibleTime) {
  EXPECT_EQ(RaisedNumber([] { return Date::FromYmd(2024, 1, 1, 24); }), 13);
  EXPECT_EQ(RaisedNumber([] { return Date::FromYmd(2024, 1, 1, -1); }), 13);
  EXPECT_EQ(RaisedNumber([] { return Date::FromYmd(2024, 1, 1, 0, 60); }), 13);
  EXPECT_EQ(RaisedNumber([] { return Date::FromYmd(2024, 1, 1, 0, 0, 60); }), 13);
}

TEST(Date, FromChronoRaises13OutsideTheCalendar) {
  EXPECT_EQ(RaisedNumber([] { return Date::FromChrono(2023y / 2 / 29); }), 13);
  EXPECT_EQ(RaisedNumber([] { return Date::FromChrono(99y / 12 / 31); }), 13);
  EXPECT_EQ(RaisedNumber([] { return Date::FromChrono(local_seconds::min()); }), 13);
  EXPECT_EQ(RaisedNumber([] { return Date::FromChrono(local_seconds::max()); }), 13);
  EXPECT_EQ(RaisedNumber([] { return Date::FromChrono(local_days{10000y / 1 / 1}); }), 13);
  EXPECT_EQ(RaisedNumber([] { return Date::FromChrono(local_days{10000y / 1 / 1} - 1s); }), 0);
}

TEST(Date, FromTextReadsTheIsoForms) {
  EXPECT_EQ(Date::FromText("2024-02-29"), Date::FromYmd(2024, 2, 29));
  EXPECT_EQ(Date::FromText("2024-02-29 13:45"), Date::FromYmd(2024, 2, 29, 13, 45));
  EXPECT_EQ(Date::FromText("2024-02-29T13:45:10"), Date::FromYmd(2024, 2, 29, 13, 45, 10));
  EXPECT_EQ(Date::FromText("  0100-01-01 "), Date(FirstDay));
}

TEST(Date, FromTextGivesNothingForAnythingElse) {
  for (const char* text : {"",
                           " ",
                           "today",
                           "2024",
                           "45351",
                           "2024-2-29",
                           "24-02-29",
                           "29.02.2024",
                           "2/29/2024",
                           "2024-02-29x",
                           "2024-02-29T",
                           "2024-02-29 13",
                           "2024-02-29 13:4",
                           "2024-02-29  13:45",
                           "2024-02-29t13:45",
                           "2024-02-29 13:45:",
                           "2024-02-29 13:45:1",
                           "2024-02-29 13:45:10Z",
                           "2024-02-29 13:45:10.5",
                           "2024/02/29",
                           "2024-02-29 13-45",
                           "2024-02T29",
                           "+024-02-29",
                           "2023-02-29",
                           "2024-13-01",
                           "2024-00-01",
                           "0099-12-31",
                           "2024-02-29 24:00",
                           "2024-02-29 12:60",
                           "2024-02-29 12:00:60"}) {
    EXPECT_FALSE(Date::FromText(text)) << text;
  }
}

TEST(Date, ToTextWritesTheTimeOnlyWhereThereIsOne) {
  EXPECT_EQ(Date::FromYmd(2024, 2, 29).ToText(), "2024-02-29");
  EXPECT_EQ(Date::FromYmd(2024, 2, 29, 13, 45, 10).ToText(), "2024-02-29 13:45:10");
  EXPECT_EQ(Date::FromYmd(100, 1, 2, 3, 4, 5).ToText(), "0100-01-02 03:04:05");
}

TEST(Date, WhatToTextWritesFromTextReads) {
  for (const Date date : {Date(), Date::FromYmd(100, 1, 1, 0, 0, 1), Date::FromYmd(1850, 7, 4, 12),
                          Date::FromYmd(9999, 12, 31, 23, 59, 59)}) {
    EXPECT_EQ(Date::FromText(date.ToText()), date);
  }
}

TEST(Date, TimesRoundToTheNearestSecond) {
  const double second = 1.0 / 86400;
  EXPECT_EQ(Date(45351 + 1.4 * second).ToText(), "2024-02-29 00:00:01");
  EXPECT_EQ(Date(45351 + 1.6 * second).ToText(), "2024-02-29 00:00:02");
  EXPECT_EQ(Date(45351 + 59.9 * second).ToText(), "2024-02-29 00:01:00");
  EXPECT_EQ(Date(45351 + 0.4 * second).ToText(), "2024-02-29");
}

TEST(Date, ATimeThatRoundsUpToMidnightIsTheNextDay) {
  const double almostADay = 0.999999;
  EXPECT_EQ(Date(45351 + almostADay).ToText(), "2024-03-01");
  EXPECT_EQ(Date(-1 - almostADay).ToText(), "1899-12-30");
  EXPECT_EQ(Date(-almostADay).ToText(), "1899-12-31");
  EXPECT_EQ(Date(45351 + almostADay).ToChrono(), local_days{2024y / 3 / 1});
  EXPECT_EQ(Date(45351 + almostADay).ToYmd(), 2024y / 2 / 29) << "the day alone drops the time";
}

TEST(Date, TheLastSecondOfAllRoundsDown) {
  EXPECT_EQ(Date(LastDay + 0.999999).ToText(), "9999-12-31 23:59:59");
}

TEST(Date, IsValidInTheYears100To9999) {
  EXPECT_TRUE(Date(FirstDay).IsValid());
  EXPECT_TRUE(Date(FirstDay - 0.99).IsValid()) << "the evening of the first day";
  EXPECT_FALSE(Date(FirstDay - 1).IsValid());
  EXPECT_TRUE(Date(LastDay + 0.99).IsValid());
  EXPECT_FALSE(Date(LastDay + 1).IsValid());
  EXPECT_FALSE(Date(NotANumber).IsValid());
  EXPECT_FALSE(Date(Infinity).IsValid());
}

TEST(Date, ADateThatIsNotValidPrintsAsItsNumber) {
  EXPECT_EQ(Date(LastDay + 1).ToText(), "2958466");
  EXPECT_EQ(Date(FirstDay - 1.5).ToText(), "-657435.5");
  EXPECT_EQ(Date(1e300).ToText(), "1E+300");
  EXPECT_EQ(Date(Infinity).ToText(), "inf");
  EXPECT_EQ(Date(NotANumber).ToText(), "nan");
}

TEST(Date, ADateThatIsNotValidHasNoDayAndNoPointOfTime) {
  for (const double serial : {NotANumber, Infinity, -Infinity, 1e300, LastDay + 1}) {
    EXPECT_FALSE(Date(serial).ToYmd().ok()) << serial;
    EXPECT_EQ(RaisedNumber([&] { return Date(serial).ToChrono(); }), 6) << serial;
  }
}

TEST(Date, PrintsItsText) {
  std::ostringstream out;
  out << Date::FromYmd(2024, 2, 29, 7, 30);
  EXPECT_EQ(out.str(), "2024-02-29 07:30:00");
}

}  // namespace
}  // namespace larkmoor
