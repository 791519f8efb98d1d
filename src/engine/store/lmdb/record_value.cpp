#include "engine/store/lmdb/record_value.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <limits>

#include "engine/store/lmdb/seal.h"

namespace larkmoor::store::lmdb {
namespace {

/// What stands ahead of each piece's bytes.
struct PieceHead {
  std::uint16_t zeros;
  std::uint16_t bytes;
};

constexpr std::size_t Longest = std::numeric_limits<std::uint16_t>::max();
/// A shorter run of zero bytes stays inside its piece: leaving it out would save next to nothing.
constexpr std::size_t ShortestRun = 16;

using Place = std::span<const std::byte>::iterator;

std::size_t Distance(Place from, Place to) { return static_cast<std::size_t>(to - from); }

Place EndOfZeros(Place from, Place end) {
  return std::find_if(from, end, [](std::byte b) { return b != std::byte{0}; });
}

/// Where the next run of zero bytes starts that is worth leaving out, or the record's end.
Place EndOfPiece(Place from, Place end) {
  for (Place zero = std::find(from, end, std::byte{0}); zero != end;) {
    const Place behind = EndOfZeros(zero, end);
    if (behind == end || Distance(zero, behind) >= ShortestRun) return zero;
    zero = std::find(behind, end, std::byte{0});
  }
  return end;
}

void AppendPiece(std::size_t zeros, Place from, Place to, std::vector<std::byte>& packed) {
  const PieceHead head{static_cast<std::uint16_t>(zeros),
                       static_cast<std::uint16_t>(Distance(from, to))};
  const auto bytes = std::as_bytes(std::span(&head, 1));
  packed.insert(packed.end(), bytes.begin(), bytes.end());
  packed.insert(packed.end(), from, to);
}

void Pack(std::span<const std::byte> record, std::vector<std::byte>& packed) {
  for (Place done = record.begin(); true;) {
    const Place piece = EndOfZeros(done, record.end());
    if (piece == record.end()) return;
    for (; Distance(done, piece) > Longest; done += Longest) {
      AppendPiece(Longest, done, done, packed);
    }
    Place end = EndOfPiece(piece, record.end());
    if (Distance(piece, end) > Longest) end = piece + Longest;
    AppendPiece(Distance(done, piece), piece, end, packed);
    done = end;
  }
}

/// Whether the pieces of a packed record are whole and lie within `size` bytes.
bool PiecesFit(std::span<const std::byte> packed, std::size_t size) {
  std::size_t place = 0;
  while (!packed.empty()) {
    PieceHead head;
    if (packed.size() < sizeof head) return false;
    std::memcpy(&head, packed.data(), sizeof head);
    packed = packed.subspan(sizeof head);
    place += std::size_t{head.zeros} + head.bytes;
    if (head.bytes > packed.size() || place > size) return false;
    packed = packed.subspan(head.bytes);
  }
  return true;
}

/// Fills `record` from pieces that fit. One fill of it all is quicker than one for each run.
void Unpack(std::span<const std::byte> packed, std::span<std::byte> record) {
  std::ranges::fill(record, std::byte{0});
  auto to = record.begin();
  while (!packed.empty()) {
    PieceHead head;
    std::memcpy(&head, packed.data(), sizeof head);
    to = std::copy_n(packed.begin() + sizeof head, head.bytes, to + head.zeros);
    packed = packed.subspan(sizeof head + head.bytes);
  }
}

/// What stands ahead of the pieces. The checksum is of all that is behind it.
struct ValueHead {
  std::uint32_t checksum;
  std::array<std::byte, sizeof(Stamp)> stamp;
};
static_assert(sizeof(ValueHead) == sizeof(std::uint32_t) + sizeof(Stamp));

std::uint32_t ChecksumOf(RecordNumber number, std::span<const std::byte> value) {
  return static_cast<std::uint32_t>(Checksum(value.subspan(sizeof(std::uint32_t)), number));
}

}  // namespace

std::vector<std::byte> RecordValue(RecordNumber number, Stamp stamp,
                                   std::span<const std::byte> record) {
  std::vector<std::byte> value(sizeof(ValueHead));
  value.reserve(value.size() + record.size() / 4);
  std::memcpy(value.data() + offsetof(ValueHead, stamp), &stamp, sizeof stamp);
  Pack(record, value);
  const std::uint32_t checksum = ChecksumOf(number, value);
  std::memcpy(value.data(), &checksum, sizeof checksum);
  return value;
}

bool ReadRecordValue(RecordNumber number, std::span<const std::byte> value, Stamp& stamp,
                     std::span<std::byte> record) {
  ValueHead head;
  if (value.size() < sizeof head) return false;
  std::memcpy(&head, value.data(), sizeof head);
  const auto pieces = value.subspan(sizeof head);
  if (head.checksum != ChecksumOf(number, value) || !PiecesFit(pieces, record.size())) return false;
  std::memcpy(&stamp, head.stamp.data(), sizeof stamp);
  Unpack(pieces, record);
  return true;
}

}  // namespace larkmoor::store::lmdb
