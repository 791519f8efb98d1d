// Values to put into what the classes store, and what is read back.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <limits>
#include <string>
#include <string_view>

#include <larkmoor/currency.h>
#include <larkmoor/date.h>
#include <larkmoor/variant.h>

#include "automation/elements.h"

namespace larkmoor::test {

/// What to write, and what is read back.
struct ValueSample {
  Variant written;
  Variant read;

  explicit ValueSample(const Variant& value) : written(value), read(value) {}
  ValueSample(const Variant& write, const Variant& reads) : written(write), read(reads) {}
};

/// That many characters, each of one byte in the record, most of them beyond ASCII.
inline std::string TextOf(std::size_t characters) {
  static constexpr std::string_view Cycle[] = {"É", "z", "€", "ß", "ÿ"};
  std::string text;
  for (std::size_t i = 0; i < characters; ++i) text += Cycle[i % std::size(Cycle)];
  return text;
}

/// A GUID that begins with these eight digits, written in the other of its two forms.
inline ValueSample SampleGuid(const std::string& digits) {
  return {"{" + digits + "-abcd-4ef0-9abc-def012345678}", digits + "-ABCD-4EF0-9ABC-DEF012345678"};
}

struct Extremes {
  Variant smallest;
  Variant largest;
};

template <typename T>
Extremes ExtremesOfType() {
  return {std::numeric_limits<T>::lowest(), std::numeric_limits<T>::max()};
}

/// The smallest and the largest value of an element: of a text the empty one and one that fills its
/// width.
inline Extremes ExtremesOf(const Element& element) {
  switch (element.StoredIn().type) {
    case FieldType::Byte:
      return ExtremesOfType<std::uint8_t>();
    case FieldType::Boolean:
      return {false, true};
    case FieldType::Integer:
      return ExtremesOfType<std::int16_t>();
    case FieldType::Long:
      return ExtremesOfType<std::int32_t>();
    case FieldType::Single:
      return ExtremesOfType<float>();
    case FieldType::Double:
      return ExtremesOfType<double>();
    case FieldType::Currency:
      return {Currency::FromScaled(std::numeric_limits<std::int64_t>::min()),
              Currency::FromScaled(std::numeric_limits<std::int64_t>::max())};
    case FieldType::Date:
      return {Date::FromYmd(100, 1, 1), Date::FromYmd(9999, 12, 31, 23, 59, 59)};
    case FieldType::Day:
      return {Date::FromYmd(100, 1, 1), Date::FromYmd(9999, 12, 31)};
    case FieldType::Guid:
      return {"", "FFFFFFFF-FFFF-FFFF-FFFF-FFFFFFFFFFFF"};
    case FieldType::Text:
      break;
  }
  return {"", TextOf(element.StoredIn().width)};
}

inline ValueSample SmallestOf(const Element& element) {
  return ValueSample(ExtremesOf(element).smallest);
}
inline ValueSample LargestOf(const Element& element) {
  return ValueSample(ExtremesOf(element).largest);
}

/// A text with one character more than the element has room for.
inline ValueSample TooLongOf(const Element& element) {
  const std::string room = TextOf(element.StoredIn().width);
  return {room + "x", room};
}

/// A value that the record's other elements do not have, as far as the type has so many. It goes by
/// the place in the record, so that two properties over one field get the same. Dates have a time
/// of day, which those in whole days drop.
inline ValueSample OwnOf(const Element& element) {
  const auto place = static_cast<std::int32_t>(element.Place());
  switch (element.StoredIn().type) {
    case FieldType::Byte:
      return ValueSample(static_cast<std::uint8_t>(place % 251 + 1));
    case FieldType::Boolean:
      return ValueSample(place / element.StoredIn().width % 2 == 0);
    case FieldType::Integer:
      return ValueSample(static_cast<std::int16_t>(place % 32000 + 1));
    case FieldType::Long:
      return ValueSample(1'000'000 + place);
    case FieldType::Single:
      return ValueSample(static_cast<float>(place) + 0.25F);
    case FieldType::Double:
      return ValueSample(place + 0.015625);
    case FieldType::Currency:
      return ValueSample(Currency::FromScaled(10'000 * std::int64_t{place} + 1));
    case FieldType::Date:
      return ValueSample(Date(100'000 + place + 0.5625));
    case FieldType::Day:
      return {Date(100'000 + place + 0.5625), Date(100'000 + place)};
    case FieldType::Guid:
      return SampleGuid(std::to_string(10'000'000 + place));
    case FieldType::Text:
      break;
  }
  const std::string number = std::to_string(place);
  const std::size_t width = std::min<std::size_t>(element.StoredIn().width, number.size());
  return ValueSample(number.substr(number.size() - width));
}

/// What is read where the data's release has no such field.
inline Variant BlankOf(const Element& element) {
  if (element.member->storage == automation::Storage::Date) return Null;
  switch (element.StoredIn().type) {
    case FieldType::Text:
    case FieldType::Guid:
      return "";
    case FieldType::Date:
    case FieldType::Day:
      return Date(2);
    default:
      return std::int16_t{0};
  }
}

}  // namespace larkmoor::test
