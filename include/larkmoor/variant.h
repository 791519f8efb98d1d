// A value that carries its type.
#pragma once

#include <cstdint>
#include <iosfwd>
#include <string>
#include <string_view>
#include <variant>

#include <larkmoor/currency.h>
#include <larkmoor/date.h>

namespace larkmoor {

/// The type of `Null`.
struct NullType {};
/// The value "no value", such as a date that was never entered.
inline constexpr NullType Null{};

/// A value with its type. Date properties are Variants that hold a date or Null.
///
/// Variants compare by value: numbers, dates and truth values (true is -1) across their kinds,
/// text with text, and Empty equals 0 and "". Null equals nothing, not even Null.
class Variant {
 public:
  enum class Kind {
    Empty,
    Null,
    Integer,
    Long,
    Single,
    Double,
    Currency,
    Date,
    String,
    Boolean,
    Byte
  };

  Variant() = default;
  Variant(NullType) : value_(NullType{}) {}
  Variant(std::int16_t value) : value_(value) {}
  Variant(std::int32_t value) : value_(value) {}
  Variant(std::uint8_t value) : value_(value) {}
  Variant(float value) : value_(value) {}
  Variant(double value) : value_(value) {}
  Variant(Currency value) : value_(value) {}
  Variant(Date value) : value_(value) {}
  Variant(bool value) : value_(value) {}
  /// Text is UTF-8.
  Variant(std::string_view value) : value_(std::string(value)) {}
  Variant(const std::string& value) : value_(value) {}
  Variant(const char* value) : value_(std::string(value)) {}

  [[nodiscard]] Kind GetKind() const;
  [[nodiscard]] bool IsNull() const { return GetKind() == Kind::Null; }
  [[nodiscard]] bool IsEmpty() const { return GetKind() == Kind::Empty; }

  // The conversions of the runtime. Numbers round halves to the even neighbour; a text is read as
  // a number ("-1.5", "2e3", blanks around it passed over) or, by `ToDate`, as a date; Empty is 0,
  // "" or False. Each raises error 94 ("Invalid use of Null") of a Null, 13 ("Type mismatch") where
  // the value has no such form, and 6 ("Overflow") where it does not fit.
  [[nodiscard]] std::int16_t ToInteger() const;
  [[nodiscard]] std::int32_t ToLong() const;
  /// Of True 255, its low byte.
  [[nodiscard]] std::uint8_t ToByte() const;
  [[nodiscard]] float ToSingle() const;
  [[nodiscard]] double ToDouble() const;
  [[nodiscard]] larkmoor::Currency ToCurrency() const;
  /// Any number but 0 is true; of texts, "True" and "False" in either case, or a number.
  [[nodiscard]] bool ToBoolean() const;
  /// The shortest text that reads back as the same value, "True" or "False"; dates as
  /// `Date::ToText` gives them.
  [[nodiscard]] std::string ToText() const;
  /// A text must be one that `Date::FromText` takes; a number is a serial number, and must lie in
  /// the years 100 to 9999.
  [[nodiscard]] larkmoor::Date ToDate() const;

  friend bool operator==(const Variant& left, const Variant& right);

 private:
  std::variant<std::monostate, NullType, std::int16_t, std::int32_t, float, double,
               larkmoor::Currency, larkmoor::Date, std::string, bool, std::uint8_t>
      value_;
};

/// Writes `ToText()`, "Null" for a Null and nothing for Empty.
std::ostream& operator<<(std::ostream& out, const Variant& value);

}  // namespace larkmoor
