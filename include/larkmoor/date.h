// A date with its time of day.
#pragma once

#include <chrono>
#include <compare>
#include <iosfwd>
#include <optional>
#include <string>
#include <string_view>

namespace larkmoor {

/// A date and time as a count of days since 30 December 1899; the fraction is the time of day.
/// Before that day the whole part counts downward and the fraction is still the time of its day
/// (-1.25 is six o'clock in the morning of 29 December 1899).
struct Date {
  /// The date of that serial number.
  constexpr explicit Date(double serial = 0) : serial_(serial) {}

  /// The date of a year (100 to 9999), month (1 to 12), day and time of the Gregorian calendar.
  /// Raises error 13 ("Type mismatch") for a date that the calendar does not have.
  static Date FromYmd(int y, int m, int d, int hh = 0, int mm = 0, int ss = 0);
  /// The date that a text in ISO form names ("2024-02-29", "2024-02-29 13:45",
  /// "2024-02-29T13:45:10"); blanks around it are passed over. Nothing where it is no date.
  static std::optional<Date> FromText(std::string_view text);
  /// The date of a calendar day. Raises error 13 for a day that is not `ok()` or lies outside the
  /// years 100 to 9999.
  static Date FromChrono(std::chrono::year_month_day day);
  /// The date of a point of time, to the second, without any time zone. Raises error 13 outside the
  /// years 100 to 9999.
  static Date FromChrono(std::chrono::local_seconds time);

  /// Days since 30 December 1899.
  [[nodiscard]] constexpr double Serial() const { return serial_; }
  /// The calendar day, the time dropped. One that is not `ok()` where the date is not valid.
  [[nodiscard]] std::chrono::year_month_day ToYmd() const;
  /// The point of time, rounded to the second. Raises error 6 ("Overflow") where the date is not
  /// valid.
  [[nodiscard]] std::chrono::local_seconds ToChrono() const;
  /// "2024-02-29", and with a time of day, rounded to the second, "2024-02-29 13:45:10". The serial
  /// number where the date is not valid.
  [[nodiscard]] std::string ToText() const;
  /// Whether the serial number lies in the years 100 to 9999.
  [[nodiscard]] bool IsValid() const;

  auto operator<=>(const Date&) const = default;

 private:
  double serial_;
};

/// Writes `ToText()`.
std::ostream& operator<<(std::ostream& out, const Date& date);

}  // namespace larkmoor
