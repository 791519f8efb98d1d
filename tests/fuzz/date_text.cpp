// A text as a date and as a value of every other type.
//
// What is taken reads the same once it was shown; what is not is refused by the one error for it.
#include <algorithm>
#include <cmath>
#include <cstdint>
#include <optional>
#include <string>

#include <larkmoor/date.h>
#include <larkmoor/error.h>
#include <larkmoor/variant.h>

#include "connection/conversions.h"
#include "engine/runtime_error.h"
#include "engine/text.h"
#include "fuzz/input_reader.h"
#include "support/errors.h"
#include "value_text.h"

namespace larkmoor::fuzz {
namespace {

using automation::ValueType;

/// The form that a date's text has once it was read: with a blank and seconds, at midnight without
/// the time.
std::string ShownForm(std::string_view text) {
  constexpr std::size_t DayLength = 10;
  constexpr std::size_t MinutesLength = 16;
  constexpr std::string_view Midnight = " 00:00:00";
  std::string shown(TrimBlanks(text));
  std::ranges::replace(shown, 'T', ' ');
  if (shown.size() == MinutesLength) shown += ":00";
  if (shown.ends_with(Midnight)) shown.resize(DayLength);
  return shown;
}

void ReadDate(std::string_view text) {
  const std::optional<Date> date = Date::FromText(text);
  const std::int32_t raised = test::RaisedNumber([&] { return Variant(text).ToDate(); });
  Must(raised == (date ? 0 : errors::TypeMismatch), "a Variant reads what a Date reads");
  if (!date) return;
  Must(date->IsValid(), "a date that was read is valid");
  Must(date->ToText() == ShownForm(text), "a date shows as it was read");
  Must(Date::FromText(date->ToText()) == date, "a date that is shown reads as the same date");
  Must(Date::FromChrono(date->ToChrono()) == *date, "a date goes through a point of time");
  Must(date->ToYmd().ok(), "a date that was read has a calendar day");
}

/// A date through a record: Null, or what it was. The number 1 is no date to a record, also where
/// it is the serial number of one.
void StoreDate(const Variant& value) {
  constexpr double NoDate = 1.0;
  const double stored = DateToRecord(value);
  const Variant shown = DateFromRecord(stored);
  Must(shown.IsNull() || shown.ToDate().Serial() == stored || std::isnan(stored),
       "a record's date shows as it is stored");
  Must(shown.IsNull() || DateToRecord(shown) == stored || stored == NoDate || std::isnan(stored),
       "a shown date is stored as it was");
}

/// A date of any serial number, also of one that no day has.
void ShowDate(double serial) {
  const Date date(serial);
  StoreDate(date);
  const std::string text = date.ToText();
  if (!date.IsValid()) {
    Must(test::RaisedNumber([&] { return date.ToChrono(); }) == errors::Overflow,
         "no day, no point of time");
    return;
  }
  const std::optional<Date> read = Date::FromText(text);
  Must(read.has_value(), "a valid date shows as a text that is a date");
  Must(read->ToText() == text, "a date that was read shows the same");
}

/// The value that the command line reads in a text, or nothing.
std::optional<Variant> ValueIn(std::string_view text, ValueType type) {
  try {
    return cli::ValueFromText(text, type);
  } catch (const cli::ValueError&) {
    return std::nullopt;
  }
}

void ReadValue(std::string_view text, ValueType type) {
  const std::optional<Variant> value = ValueIn(text, type);
  if (!value) return;
  const std::string shown = cli::TextOf(*value);
  const std::optional<Variant> again = ValueIn(shown, type);
  Must(again.has_value(), "a value that is shown can be read");
  Must(cli::TextOf(*again) == shown, "a value that was read again shows the same");
}

}  // namespace

void DateText(Input input) {
  const std::string_view text = TextOf(input);
  ReadDate(text);
  StoreDate(Variant(text));
  ShowDate(InputReader(input).Take<double>());
  for (const ValueType type :
       {ValueType::Integer, ValueType::Long, ValueType::Byte, ValueType::Boolean, ValueType::Single,
        ValueType::Double, ValueType::Currency, ValueType::Date, ValueType::Variant,
        ValueType::String}) {
    ReadValue(text, type);
  }
}

}  // namespace larkmoor::fuzz
