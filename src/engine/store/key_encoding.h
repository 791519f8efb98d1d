// Key values as bytes that sort as the keys do.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

#include "engine/store/file_description.h"

namespace larkmoor::store {

/// Bytes that compare, byte by byte, as key values do: integers by sign and size, floats by size,
/// texts byte by byte with a shorter one first. At most as long as the key is wide and one byte
/// more for each text segment.
class EncodedKey {
 public:
  /// Room for the widest key and the ends of its text segments.
  static constexpr std::size_t Capacity = 384;

  [[nodiscard]] std::span<const std::byte> Bytes() const { return {bytes_, size_}; }
  void Append(std::byte value) { bytes_[size_++] = value; }
  void Append(std::span<const std::byte> values);

 private:
  std::byte bytes_[Capacity];
  std::size_t size_ = 0;
};

/// The key that a key buffer holds, segment after segment. `buffer` is at least as long as the key
/// is wide.
EncodedKey EncodeKeyBuffer(const KeyDescription& key, std::span<const std::byte> buffer);

/// The key of a record.
EncodedKey EncodeKeyOf(const KeyDescription& key, std::span<const std::byte> record);

/// The number in the encoded form of an Integer or Long segment.
std::int64_t DecodeNumber(const KeySegment& segment, std::span<const std::byte> encoded);

}  // namespace larkmoor::store
