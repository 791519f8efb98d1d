#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <ostream>

#include <larkmoor/date.h>

#include "connection/number_text.h"
#include "engine/runtime_error.h"
#include "engine/text.h"

namespace larkmoor {
namespace {

using std::chrono::days;
using std::chrono::local_days;
using std::chrono::local_seconds;
using std::chrono::seconds;
using std::chrono::year_month_day;

constexpr local_days DayZero{std::chrono::year{1899} / 12 / 30};
constexpr int FirstYear = 100;
constexpr int LastYear = 9999;
constexpr local_days FirstDay{std::chrono::year{FirstYear} / 1 / 1};
constexpr local_days LastDay{std::chrono::year{LastYear} / 12 / 31};
constexpr double SecondsOfDay = 86400;

// Before day zero the time of day counts away from zero, as the whole part does.
double SerialOf(local_days day, seconds time) {
  const auto whole = static_cast<double>((day - DayZero).count());
  const double fraction = static_cast<double>(time.count()) / SecondsOfDay;
  return whole < 0 ? whole - fraction : whole + fraction;
}

// The day of a valid serial number.
local_days DayOf(double serial) { return DayZero + days(static_cast<int>(std::trunc(serial))); }

bool IsWithin(int value, int low, int high) { return value >= low && value <= high; }

std::optional<Date> Compose(int y, int m, int d, int hh, int mm, int ss) {
  // The calendar types keep a few bits of each number only, so the numbers are looked at before.
  if (!IsWithin(y, FirstYear, LastYear) || !IsWithin(m, 1, 12) || !IsWithin(d, 1, 31) ||
      !IsWithin(hh, 0, 23) || !IsWithin(mm, 0, 59) || !IsWithin(ss, 0, 59)) {
    return std::nullopt;
  }
  const year_month_day ymd = std::chrono::year{y} / m / d;
  if (!ymd.ok()) return std::nullopt;
  const seconds time = std::chrono::hours{hh} + std::chrono::minutes{mm} + seconds{ss};
  return Date(SerialOf(local_days{ymd}, time));
}

// The full ISO form; a 0 stands for a digit, and the blank may be a T.
constexpr std::string_view IsoForm = "0000-00-00 00:00:00";
constexpr std::size_t DateLength = 10;
constexpr std::size_t MinutesLength = 16;

bool HasIsoForm(std::string_view text) {
  if (text.size() != DateLength && text.size() != MinutesLength && text.size() != IsoForm.size()) {
    return false;
  }
  const auto fits = [](char character, char form) {
    if (form == '0') return character >= '0' && character <= '9';
    return character == form || (form == ' ' && character == 'T');
  };
  return std::equal(text.begin(), text.end(), IsoForm.begin(), fits);
}

// The number that `count` digits spell from `first` on; 0 behind the end of the text.
int NumberAt(std::string_view text, std::size_t first, std::size_t count) {
  if (first > text.size()) return 0;
  int number = 0;
  for (const char digit : text.substr(first, count)) number = number * 10 + (digit - '0');
  return number;
}

template <typename Count>
std::string Padded(Count count, std::size_t width) {
  const std::string digits = std::to_string(count);
  return std::string(width - digits.size(), '0') + digits;
}

std::string DayText(year_month_day day) {
  return Padded(static_cast<int>(day.year()), 4) + '-' +
         Padded(static_cast<unsigned>(day.month()), 2) + '-' +
         Padded(static_cast<unsigned>(day.day()), 2);
}

std::string TimeText(seconds timeOfDay) {
  const std::chrono::hh_mm_ss time(timeOfDay);
  return Padded(time.hours().count(), 2) + ':' + Padded(time.minutes().count(), 2) + ':' +
         Padded(time.seconds().count(), 2);
}

}  // namespace

Date Date::FromYmd(int y, int m, int d, int hh, int mm, int ss) {
  const std::optional<Date> date = Compose(y, m, d, hh, mm, ss);
  if (!date) RaiseRuntimeError(errors::TypeMismatch);
  return *date;
}

std::optional<Date> Date::FromText(std::string_view text) {
  text = TrimBlanks(text);
  if (!HasIsoForm(text)) return std::nullopt;
  return Compose(NumberAt(text, 0, 4), NumberAt(text, 5, 2), NumberAt(text, 8, 2),
                 NumberAt(text, 11, 2), NumberAt(text, 14, 2), NumberAt(text, 17, 2));
}

Date Date::FromChrono(std::chrono::year_month_day day) {
  return FromYmd(static_cast<int>(day.year()), static_cast<int>(static_cast<unsigned>(day.month())),
                 static_cast<int>(static_cast<unsigned>(day.day())));
}

Date Date::FromChrono(std::chrono::local_seconds time) {
  if (time < FirstDay || time >= LastDay + days{1}) RaiseRuntimeError(errors::TypeMismatch);
  const local_days day = std::chrono::floor<days>(time);
  return Date(SerialOf(day, time - day));
}

std::chrono::year_month_day Date::ToYmd() const {
  constexpr year_month_day NoDay = std::chrono::year{0} / 0 / 0;
  return IsValid() ? year_month_day{DayOf(serial_)} : NoDay;
}

std::chrono::local_seconds Date::ToChrono() const {
  if (!IsValid()) RaiseRuntimeError(errors::Overflow);
  const double fraction = std::abs(serial_ - std::trunc(serial_));
  const local_seconds time = DayOf(serial_) + seconds(std::llround(fraction * SecondsOfDay));
  // The last half second of all would round up into a year that is no more.
  constexpr local_seconds End = LastDay + days{1};
  return time < End ? time : End - seconds{1};
}

std::string Date::ToText() const {
  if (!IsValid()) return NumberText(serial_);
  const local_seconds time = ToChrono();
  const local_days day = std::chrono::floor<days>(time);
  const std::string text = DayText(year_month_day{day});
  return time == day ? text : text + ' ' + TimeText(time - day);
}

bool Date::IsValid() const {
  return std::trunc(serial_) >= SerialOf(FirstDay, seconds{0}) &&
         std::trunc(serial_) <= SerialOf(LastDay, seconds{0});
}

std::ostream& operator<<(std::ostream& out, const Date& date) { return out << date.ToText(); }

}  // namespace larkmoor
