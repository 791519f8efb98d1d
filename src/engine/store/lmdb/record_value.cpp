#include "engine/store/lmdb/record_value.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <limits>

namespace larkmoor::store::lmdb {
namespace {

/// What stands ahead of each piece's bytes.
struct PieceHead {
  std::uint16_t zeros;
  std::uint16_t bytes;
};

constexpr std::size_t Longest = std::numeric_limits<std::uint16_t>::max();
/// A shorter run of zero bytes stays inside its piece: leaving it out would save next to nothing.
constexpr std::size_t ShortestRun = 8;

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

/// Goes through the pieces of a packed record; `take` is given where each piece lies in the record.
/// False where they do not add up or go beyond `size` bytes.
template <typename Take>
bool EachPiece(std::span<const std::byte> packed, std::size_t size, Take take) {
  std::size_t place = 0;
  while (!packed.empty()) {
    PieceHead head;
    if (packed.size() < sizeof head) return false;
    std::memcpy(&head, packed.data(), sizeof head);
    packed = packed.subspan(sizeof head);
    place += head.zeros;
    if (head.bytes > packed.size() || place + head.bytes > size) return false;
    take(place, packed.first(head.bytes));
    packed = packed.subspan(head.bytes);
    place += head.bytes;
  }
  return true;
}

}  // namespace

std::vector<std::byte> RecordValue(Stamp stamp, std::span<const std::byte> record) {
  const auto stampBytes = std::as_bytes(std::span(&stamp, 1));
  std::vector<std::byte> value(stampBytes.begin(), stampBytes.end());
  value.reserve(value.size() + record.size() / 4);
  for (Place done = record.begin(); true;) {
    const Place piece = EndOfZeros(done, record.end());
    if (piece == record.end()) return value;
    for (; Distance(done, piece) > Longest; done += Longest) {
      AppendPiece(Longest, done, done, value);
    }
    Place end = EndOfPiece(piece, record.end());
    if (Distance(piece, end) > Longest) end = piece + Longest;
    AppendPiece(Distance(done, piece), piece, end, value);
    done = end;
  }
}

bool ReadRecordValue(std::span<const std::byte> value, Stamp& stamp, std::span<std::byte> record) {
  if (value.size() < sizeof stamp) return false;
  const auto pieces = value.subspan(sizeof stamp);
  if (!EachPiece(pieces, record.size(), [](std::size_t, std::span<const std::byte>) {})) {
    return false;
  }
  std::memcpy(&stamp, value.data(), sizeof stamp);
  std::ranges::fill(record, std::byte{0});
  return EachPiece(pieces, record.size(), [&](std::size_t place, std::span<const std::byte> bytes) {
    std::memcpy(record.data() + place, bytes.data(), bytes.size());
  });
}

}  // namespace larkmoor::store::lmdb
