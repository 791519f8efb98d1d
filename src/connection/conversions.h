// The rules that turn record values into client values and back.
#pragma once

#include <cstdint>

#include <larkmoor/variant.h>

namespace larkmoor {

/// A record's date for the client: Null for any day of 1900 and for 65537.0, otherwise the date.
Variant DateFromRecord(double value);

/// A client's date for the record. 1, an empty text and whatever is no date give 2.0, which reads
/// back as Null; 31 December 1999 gives 65537.0, which reads back as Null too. Never raises.
double DateToRecord(const Variant& value);

/// `value` brought into the range from `low` to `high`; `low` is looked at first.
std::int16_t Clamp(std::int16_t value, std::int16_t low, std::int16_t high);

/// The low 16 bits of `value` as a signed number, without any overflow.
std::int16_t LongToInteger(std::int32_t value);

}  // namespace larkmoor
