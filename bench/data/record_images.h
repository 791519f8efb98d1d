// Transactions as the bytes of their records: what every store of records is given to keep, and how
// fields are told apart in it.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <span>
#include <string_view>

#include "data/transactions.h"
#include "engine/record_description.h"

namespace larkmoor::bench {

inline constexpr std::size_t HeaderSize = 5670;
inline constexpr std::size_t RowSize = 514;

template <typename T>
T GetField(std::span<const std::byte> record, const Field& field) {
  T value;
  std::memcpy(&value, record.data() + field.offset, sizeof value);
  return value;
}

inline std::string_view GetTextField(std::span<const std::byte> record, const Field& field) {
  const auto* text = reinterpret_cast<const char*>(record.data()) + field.offset;
  return {text, strnlen(text, field.width)};
}

template <typename T>
void PutField(std::span<std::byte> record, const Field& field, T value) {
  std::memcpy(record.data() + field.offset, &value, sizeof value);
}

inline void PutTextField(std::span<std::byte> record, const Field& field, std::string_view value) {
  std::memcpy(record.data() + field.offset, value.data(),
              std::min<std::size_t>(value.size(), field.width));
}

/// Fills a blank record with the header of a transaction of that journal.
void FillHeader(std::span<std::byte> record, std::int16_t journal, const Transaction& from);

/// Fills a blank record with one of its rows; `number` counts from 1.
void FillRow(std::span<std::byte> record, std::int16_t journal, const Transaction& from,
             const Line& line, std::int16_t number);

}  // namespace larkmoor::bench
