#include "engine/store/key_encoding.h"

#include <algorithm>
#include <bit>
#include <cstdint>
#include <cstring>

namespace larkmoor::store {
namespace {

template <typename T>
T LoadAs(std::span<const std::byte> bytes) {
  T value;
  std::memcpy(&value, bytes.data(), sizeof value);
  return value;
}

template <typename T>
void AppendBigEndian(EncodedKey& encoded, T value) {
  for (int shift = 8 * (static_cast<int>(sizeof value) - 1); shift >= 0; shift -= 8) {
    encoded.Append(static_cast<std::byte>(value >> shift));
  }
}

/// Two's complement sorts as unsigned once the sign bit is flipped.
template <typename Signed, typename Unsigned>
void AppendSigned(EncodedKey& encoded, std::span<const std::byte> bytes) {
  const auto value = static_cast<Unsigned>(LoadAs<Signed>(bytes));
  AppendBigEndian(encoded, static_cast<Unsigned>(value ^ (Unsigned{1} << (8 * sizeof value - 1))));
}

/// Floats sort as unsigned once the sign bit of the positive ones, and all bits of the negative
/// ones, are flipped. The two zeros are one value.
void AppendDouble(EncodedKey& encoded, std::span<const std::byte> bytes) {
  constexpr std::uint64_t SignBit = std::uint64_t{1} << 63;
  const auto number = LoadAs<double>(bytes);
  const auto bits = number == 0 ? 0 : std::bit_cast<std::uint64_t>(number);
  AppendBigEndian(encoded, (bits & SignBit) != 0 ? ~bits : bits ^ SignBit);
}

/// Texts end with a zero byte, which sorts before any character.
void AppendZeroText(EncodedKey& encoded, std::span<const std::byte> bytes) {
  const auto end = std::find(bytes.begin(), bytes.end(), std::byte{0});
  encoded.Append({bytes.begin(), end});
  encoded.Append(std::byte{0});
}

void AppendSegment(EncodedKey& encoded, SegmentType type, std::span<const std::byte> bytes) {
  switch (type) {
    case SegmentType::Integer:
      return AppendSigned<std::int16_t, std::uint16_t>(encoded, bytes);
    case SegmentType::Long:
    case SegmentType::Day:
      return AppendSigned<std::int32_t, std::uint32_t>(encoded, bytes);
    case SegmentType::Double:
    case SegmentType::Date:
      return AppendDouble(encoded, bytes);
    case SegmentType::ZeroText:
      return AppendZeroText(encoded, bytes);
    case SegmentType::Byte:
    case SegmentType::Text:
    case SegmentType::Guid:
      return encoded.Append(bytes);
  }
}

}  // namespace

void EncodedKey::Append(std::span<const std::byte> values) {
  if (values.empty()) return;
  std::memcpy(bytes_ + size_, values.data(), values.size());
  size_ += values.size();
}

EncodedKey EncodeKeyBuffer(const KeyDescription& key, std::span<const std::byte> buffer) {
  EncodedKey encoded;
  std::size_t place = 0;
  for (const KeySegment& segment : key.segments) {
    AppendSegment(encoded, segment.type, buffer.subspan(place, segment.width));
    place += segment.width;
  }
  return encoded;
}

EncodedKey EncodeKeyOf(const KeyDescription& key, std::span<const std::byte> record) {
  EncodedKey encoded;
  for (const KeySegment& segment : key.segments) {
    AppendSegment(encoded, segment.type, record.subspan(segment.offset, segment.width));
  }
  return encoded;
}

std::int64_t DecodeNumber(const KeySegment& segment, std::span<const std::byte> encoded) {
  std::uint32_t value = 0;
  for (const std::byte byte : encoded) value = value << 8 | std::to_integer<std::uint32_t>(byte);
  const std::int64_t zero = std::int64_t{1} << (8 * segment.width - 1);
  return static_cast<std::int64_t>(value) - zero;
}

}  // namespace larkmoor::store
