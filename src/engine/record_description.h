// What the dictionary tells of a record: its fields, its keys and its length, by release. The
// descriptions themselves are generated from records/*.toml.
#pragma once

#include <cstdint>
#include <limits>
#include <span>
#include <string_view>

#include "engine/store/file_description.h"

namespace larkmoor {

enum class FieldType : std::uint8_t {
  Byte,
  Boolean,
  Integer,
  Long,
  Single,
  Double,
  Currency,
  Date,
  Day,
  Text,
  Guid
};

/// One field of a record. A repeating field has `count` elements, counted from 0; a table of two
/// indexes has `count` rows of `count2` elements each.
struct Field {
  std::string_view name;
  FieldType type;
  std::uint32_t offset;
  std::uint16_t width;       ///< bytes of one element
  std::uint16_t count = 0;   ///< 0: a single value
  std::uint16_t count2 = 0;  ///< 0: no second index
  std::string_view doc = {};
};

/// A key with the releases that it holds for: from `from` to below `below`.
struct RecordKey {
  std::int16_t number;
  bool unique;
  bool modifiable;
  bool autoIncrement;
  std::span<const store::KeySegment> segments;
  double from = 0;
  double below = std::numeric_limits<double>::infinity();
};

/// The record length from a release on.
struct RecordLength {
  double from;
  std::uint32_t length;
};

/// A 16-bit value in a field that tells the rows of a record from the file's other rows.
struct RowMark {
  std::uint32_t offset;
  std::int16_t value;
};

struct RecordDescription {
  std::string_view name;
  std::string_view doc;
  std::string_view fileName;
  std::span<const Field> fields;
  std::span<const RecordKey> keys;
  std::span<const RecordLength> lengths;
  /// The record whose file this one shares, or null for a record with a file of its own.
  const RecordDescription* base = nullptr;
  /// Set for a record that is one kind of row of a shared file.
  const RowMark* rowMark = nullptr;

  [[nodiscard]] const Field* FindField(std::string_view fieldName) const;
  [[nodiscard]] std::uint32_t LengthFor(double release) const;
  /// What a file of this record says of itself in data of that release.
  [[nodiscard]] store::FileDescription FileFor(double release) const;
};

}  // namespace larkmoor
