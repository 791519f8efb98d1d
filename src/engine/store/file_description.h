// What a record file says of itself: its name, the release of its data, its record length and its
// keys. Drivers keep this inside the file, so that opening one needs no dictionary.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace larkmoor::store {

/// How the bytes of a key segment compare.
enum class SegmentType : std::uint8_t {
  Byte,      ///< one unsigned byte
  Integer,   ///< 16-bit signed
  Long,      ///< 32-bit signed
  Double,    ///< 64-bit float
  Date,      ///< 64-bit float, days since 30 December 1899
  Day,       ///< 32-bit signed, whole days since 30 December 1899
  ZeroText,  ///< text that ends at its first zero byte or at its width, byte by byte
  Text,      ///< text of fixed width, byte by byte
  Guid,      ///< 16 bytes, byte by byte
};

/// One typed piece of a key. Its place in the key buffer is the sum of the widths before it.
struct KeySegment {
  SegmentType type;
  std::uint16_t offset;  ///< place in the record, from 0
  std::uint16_t width;   ///< bytes, in the record and in the key buffer alike
};

struct KeyDescription {
  std::int16_t number;
  bool unique = false;
  bool modifiable = true;
  /// A 0 in the record's field asks for the next number at an insert. One segment, Integer or Long.
  bool autoIncrement = false;
  std::vector<KeySegment> segments;

  /// Bytes that the key takes in the key buffer.
  [[nodiscard]] std::size_t Width() const {
    std::size_t width = 0;
    for (const KeySegment& segment : segments) width += segment.width;
    return width;
  }
};

struct FileDescription {
  std::string name;
  double release = 0;
  std::uint32_t recordLength = 0;
  std::vector<KeyDescription> keys;

  /// The key of that number, or null. The pointer lasts as long as the description.
  [[nodiscard]] const KeyDescription* FindKey(std::int16_t number) const {
    for (const KeyDescription& key : keys) {
      if (key.number == number) return &key;
    }
    return nullptr;
  }
};

}  // namespace larkmoor::store
