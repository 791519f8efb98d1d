#include <cmath>
#include <limits>
#include <optional>
#include <ostream>

#include <larkmoor/variant.h>

#include "connection/number_text.h"
#include "engine/runtime_error.h"
#include "engine/text.h"

namespace larkmoor {
namespace {

// Any value as a number.
struct NumberOf {
  double operator()(std::monostate) const { return 0; }
  double operator()(NullType) const { RaiseRuntimeError(errors::InvalidUseOfNull); }
  double operator()(Currency value) const { return value.ToDouble(); }
  double operator()(Date value) const { return value.Serial(); }
  double operator()(const std::string& value) const { return NumberFromText(value); }
  double operator()(bool value) const { return value ? -1 : 0; }
  template <typename Number>
  double operator()(Number value) const {
    return value;
  }
};

// Any value as text.
struct TextOf {
  std::string operator()(std::monostate) const { return {}; }
  std::string operator()(NullType) const { RaiseRuntimeError(errors::InvalidUseOfNull); }
  std::string operator()(float value) const { return NumberText(value); }
  std::string operator()(double value) const { return NumberText(value); }
  std::string operator()(Currency value) const { return NumberText(value); }
  std::string operator()(Date value) const { return value.ToText(); }
  std::string operator()(const std::string& value) const { return value; }
  std::string operator()(bool value) const { return value ? "True" : "False"; }
  template <typename Whole>
  std::string operator()(Whole value) const {
    return std::to_string(value);
  }
};

template <typename Whole>
Whole Rounded(double number) {
  using Limits = std::numeric_limits<Whole>;
  const double rounded = std::nearbyint(number);  // halves to the even neighbour
  if (!(rounded >= Limits::min() && rounded <= Limits::max())) RaiseRuntimeError(errors::Overflow);
  return static_cast<Whole>(rounded);
}

bool BooleanFromText(std::string_view text) {
  text = TrimBlanks(text);
  if (EqualIgnoringCase(text, "True")) return true;
  if (EqualIgnoringCase(text, "False")) return false;
  return NumberFromText(text) != 0;
}

Date DateFromText(std::string_view text) {
  const std::optional<Date> date = Date::FromText(text);
  if (!date) RaiseRuntimeError(errors::TypeMismatch);
  return *date;
}

}  // namespace

Variant::Kind Variant::GetKind() const {
  static_assert(std::variant_size_v<decltype(value_)> == static_cast<std::size_t>(Kind::Byte) + 1,
                "the kinds stand in the order of the alternatives");
  return static_cast<Kind>(value_.index());
}

std::int16_t Variant::ToInteger() const { return Rounded<std::int16_t>(ToDouble()); }

std::int32_t Variant::ToLong() const { return Rounded<std::int32_t>(ToDouble()); }

std::uint8_t Variant::ToByte() const {
  if (const bool* truth = std::get_if<bool>(&value_)) return *truth ? 255 : 0;
  return Rounded<std::uint8_t>(ToDouble());
}

float Variant::ToSingle() const {
  if (const float* single = std::get_if<float>(&value_)) return *single;
  // Half a step above the largest Single: whatever is less rounds to a Single.
  constexpr double End = 0x1.ffffffp127;
  const double number = ToDouble();
  if (std::abs(number) >= End) RaiseRuntimeError(errors::Overflow);
  return static_cast<float>(number);
}

double Variant::ToDouble() const { return std::visit(NumberOf{}, value_); }

larkmoor::Currency Variant::ToCurrency() const {
  if (const auto* amount = std::get_if<larkmoor::Currency>(&value_)) return *amount;
  if (const auto* text = std::get_if<std::string>(&value_)) return CurrencyFromText(*text);
  return CurrencyFromNumber(ToDouble());
}

bool Variant::ToBoolean() const {
  if (const auto* text = std::get_if<std::string>(&value_)) return BooleanFromText(*text);
  return ToDouble() != 0;
}

std::string Variant::ToText() const { return std::visit(TextOf{}, value_); }

larkmoor::Date Variant::ToDate() const {
  if (const auto* date = std::get_if<larkmoor::Date>(&value_)) return *date;
  if (const auto* text = std::get_if<std::string>(&value_)) return DateFromText(*text);
  const larkmoor::Date date(ToDouble());
  if (!date.IsValid()) RaiseRuntimeError(errors::Overflow);
  return date;
}

bool operator==(const Variant& left, const Variant& right) {
  using Kind = Variant::Kind;
  const Kind leftKind = left.GetKind();
  const Kind rightKind = right.GetKind();
  if (leftKind == Kind::Null || rightKind == Kind::Null) return false;
  if (leftKind == Kind::String || rightKind == Kind::String) {
    const bool areTexts = leftKind == rightKind || left.IsEmpty() || right.IsEmpty();
    return areTexts && left.ToText() == right.ToText();
  }
  // Two amounts of money compare in all their digits; a double has not enough for the large ones.
  if (leftKind == Kind::Currency && rightKind == Kind::Currency) {
    return left.ToCurrency() == right.ToCurrency();
  }
  return left.ToDouble() == right.ToDouble();
}

std::ostream& operator<<(std::ostream& out, const Variant& value) {
  return out << (value.IsNull() ? "Null" : value.ToText());
}

}  // namespace larkmoor
