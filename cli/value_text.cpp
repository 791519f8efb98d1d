#include "value_text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <optional>

#include <larkmoor/error.h>

#include "engine/guid.h"
#include "engine/text.h"
#include "money.h"
#include "text_tools.h"

namespace larkmoor::cli {

using automation::ValueType;

namespace {

// What a record holds for "no date": the empty date, and what old clients wrote for it.
constexpr double EmptyDate = 2.0;
constexpr double OldEmptyDate = 65537.0;

[[noreturn]] void RaiseNoValue(std::string_view text, std::string_view what) {
  throw ValueError(Quoted(text) + " is no " + std::string(what));
}

/// Reads the whole text as a whole number; `what` names its type for the message. The runtime's own
/// conversion would round fractions.
template <typename Whole>
Whole ParseWhole(std::string_view text, std::string_view what) {
  std::string_view digits = TrimBlanks(text);
  if (digits.empty()) return 0;
  if (digits.starts_with('+') && !digits.starts_with("+-")) digits.remove_prefix(1);
  Whole number{};
  const char* const end = digits.data() + digits.size();
  const auto [stop, error] = std::from_chars(digits.data(), end, number);
  if (error != std::errc() || stop != end) RaiseNoValue(text, what);
  return number;
}

/// Reads a number by one of the runtime's conversions.
template <typename Number>
Number ParseReal(std::string_view text, Number (Variant::*convert)() const) {
  if (TrimBlanks(text).empty()) return Number{};
  try {
    return (Variant(text).*convert)();
  } catch (const Error&) {
    RaiseNoValue(text, "number of that type");
  }
}

bool ParseBoolean(std::string_view text) {
  const std::string_view word = TrimBlanks(text);
  const auto isOneOf = [&](auto... names) { return (EqualIgnoringCase(word, names) || ...); };
  if (isOneOf("true", "yes", "-1", "1")) return true;
  if (isOneOf("", "false", "no", "0")) return false;
  RaiseNoValue(text, "truth value (true or false)");
}

Date ParseDate(std::string_view text) {
  const std::string_view day = TrimBlanks(text);
  if (day.empty()) return Date(EmptyDate);
  const std::optional<Date> date = Date::FromText(day);
  if (!date) RaiseNoValue(text, "date (2024-02-29, with a time 2024-02-29 13:45:10)");
  return *date;
}

/// The bytes that a record would hold. A text that is not UTF-8 does not convert.
std::string RecordText(std::string_view text) {
  try {
    return ToWindows1252(text);
  } catch (const Error&) {
    throw ValueError(Quoted(text) + " is not UTF-8 text");
  }
}

std::string ParseText(std::string_view text) {
  RecordText(text);
  return std::string(text);
}

/// Bytes that the field has for a text, none for a field that is no text.
std::optional<std::size_t> RoomOf(const Field* field, std::string_view text) {
  if (field == nullptr) return std::nullopt;
  if (field->type == FieldType::Text) return field->width;
  if (field->type == FieldType::Guid && !ParseGuid(text)) return field->width;
  return std::nullopt;
}

std::string TextOfDate(const Date& date) {
  if (date.Serial() == EmptyDate || date.Serial() == OldEmptyDate) return {};
  return date.IsValid() ? date.ToText() : Variant(date.Serial()).ToText();
}

}  // namespace

std::string TextOf(const Variant& value) {
  switch (value.GetKind()) {
    case Variant::Kind::Empty:
    case Variant::Kind::Null:
      return {};
    case Variant::Kind::Boolean:
      return value.ToBoolean() ? "true" : "false";
    case Variant::Kind::Date:
      return TextOfDate(value.ToDate());
    case Variant::Kind::Currency:
      return MoneyText(value.ToCurrency());
    default:
      return value.ToText();
  }
}

Variant ValueFromText(std::string_view text, ValueType type) {
  switch (type) {
    case ValueType::Integer:
      return ParseWhole<std::int16_t>(text, "whole number from -32768 to 32767");
    case ValueType::Long:
      return ParseWhole<std::int32_t>(text, "whole number from -2147483648 to 2147483647");
    case ValueType::Byte:
      return ParseWhole<std::uint8_t>(text, "whole number from 0 to 255");
    case ValueType::Boolean:
      return ParseBoolean(text);
    case ValueType::Single:
      return ParseReal(text, &Variant::ToSingle);
    case ValueType::Double:
      return ParseReal(text, &Variant::ToDouble);
    case ValueType::Currency:
      return ParseReal(text, &Variant::ToCurrency);
    case ValueType::Date:
      return ParseDate(text);
    case ValueType::Variant:  // a class that takes anything reads numbers and dates in texts
    case ValueType::String:
      break;
  }
  return ParseText(text);
}

std::vector<std::string> LossesOf(std::string_view text, const Property& property,
                                  std::size_t recordLength) {
  std::vector<std::string> losses;
  if (property.field != nullptr && property.field->offset + property.field->width > recordLength) {
    if (!text.empty()) losses.push_back("the file has no room for it: dropped");
    return losses;
  }
  if (property.type != ValueType::String) return losses;
  if (!FitsWindows1252(text)) {
    losses.push_back(Quoted(text) + " has a character that Windows-1252 lacks: stored as \"?\"");
  }
  const std::string stored = RecordText(text);
  const std::optional<std::size_t> room = RoomOf(property.field, text);
  if (room && stored.size() > *room) {
    losses.push_back(Quoted(text) + " is longer than the " + std::to_string(*room) +
                     " characters of its field: cut");
  } else if (room && stored.find('\0') != std::string::npos) {
    losses.push_back(Quoted(text) + " holds a zero character: cut there");
  }
  return losses;
}

bool IsNumber(ValueType type) {
  constexpr std::array Numbers = {ValueType::Integer, ValueType::Long,   ValueType::Byte,
                                  ValueType::Single,  ValueType::Double, ValueType::Currency};
  return std::ranges::find(Numbers, type) != Numbers.end();
}

}  // namespace larkmoor::cli
