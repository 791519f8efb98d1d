#include "fuzz/key_model.h"

#include <algorithm>
#include <compare>
#include <limits>
#include <numeric>

namespace larkmoor::fuzz {
namespace {

using store::KeyDescription;
using store::KeySegment;
using store::Seek;
using store::SegmentType;
using test::Bytes;
using test::Peek;

/// The two zeros are one value. What is no number lies beyond the infinities, by its sign.
std::strong_ordering CompareDoubles(double left, double right) {
  return std::strong_order(left + 0.0, right + 0.0);
}

std::strong_ordering CompareBytes(std::span<const std::byte> left,
                                  std::span<const std::byte> right) {
  return std::lexicographical_compare_three_way(left.begin(), left.end(), right.begin(),
                                                right.end());
}

std::strong_ordering CompareSegment(const KeySegment& segment, std::span<const std::byte> left,
                                    std::span<const std::byte> right) {
  switch (segment.type) {
    case SegmentType::Integer:
      return Peek<std::int16_t>(left, 0) <=> Peek<std::int16_t>(right, 0);
    case SegmentType::Long:
    case SegmentType::Day:
      return Peek<std::int32_t>(left, 0) <=> Peek<std::int32_t>(right, 0);
    case SegmentType::Double:
    case SegmentType::Date:
      return CompareDoubles(Peek<double>(left, 0), Peek<double>(right, 0));
    case SegmentType::ZeroText:
      return test::PeekText(left, 0, segment.width) <=> test::PeekText(right, 0, segment.width);
    case SegmentType::Byte:
    case SegmentType::Text:
    case SegmentType::Guid:
      break;
  }
  return CompareBytes(left, right);
}

/// Where the segments of a key lie: in a record at offsets of their own, in a key buffer one behind
/// the other.
enum class Layout { Record, KeyBuffer };

/// Compares the key of a record with another one.
std::strong_ordering CompareKeys(const KeyDescription& key, std::span<const std::byte> record,
                                 std::span<const std::byte> other, Layout otherLayout) {
  std::size_t place = 0;
  for (const KeySegment& segment : key.segments) {
    const auto order = CompareSegment(
        segment, record.subspan(segment.offset, segment.width),
        other.subspan(otherLayout == Layout::Record ? segment.offset : place, segment.width));
    if (order != std::strong_ordering::equal) return order;
    place += segment.width;
  }
  return std::strong_ordering::equal;
}

}  // namespace

std::vector<std::size_t> KeyModel::PathOf(const KeyDescription& key) const {
  std::vector<std::size_t> path(records_.size());
  std::iota(path.begin(), path.end(), std::size_t{0});
  std::ranges::stable_sort(path, [&](std::size_t left, std::size_t right) {
    return CompareKeys(key, records_[left], records_[right], Layout::Record) < 0;
  });
  return path;
}

std::optional<std::size_t> KeyModel::Find(Seek seek, const KeyDescription& key,
                                          const std::vector<std::size_t>& path,
                                          std::span<const std::byte> keyBuffer) const {
  const auto order = [&](std::size_t place) {
    return CompareKeys(key, records_[place], keyBuffer, Layout::KeyBuffer);
  };
  const auto placeOf = [&](auto found) { return static_cast<std::size_t>(found - path.begin()); };
  // Along the path lie the lesser ones, the equal ones from `low` on, the greater ones from `high`.
  const std::size_t low =
      placeOf(std::ranges::find_if(path, [&](std::size_t place) { return order(place) >= 0; }));
  const std::size_t high =
      placeOf(std::ranges::find_if(path, [&](std::size_t place) { return order(place) > 0; }));
  const auto at = [&](std::size_t place) {
    return place < path.size() ? std::optional(place) : std::nullopt;
  };
  switch (seek) {
    case Seek::Equal:
      return low == high ? std::nullopt : at(low);
    case Seek::GreaterOrEqual:
      return at(low);
    case Seek::Greater:
      return at(high);
    case Seek::Less:
      return at(low - 1);  // of the first one the place is beyond all
    case Seek::LessOrEqual:
      return at(high - 1);
    case Seek::First:
      return at(0);
    case Seek::Last:
      return at(path.size() - 1);
    case Seek::Next:
    case Seek::Previous:
      break;
  }
  return std::nullopt;
}

bool KeyModel::HasNumberOf(std::span<const std::byte> record,
                           std::optional<std::size_t> except) const {
  const auto number = Peek<std::int32_t>(record, test::SampleOffset::Number);
  for (std::size_t place = 0; place < records_.size(); ++place) {
    if (place != except && NumberAt(place) == number) return true;
  }
  return false;
}

std::int32_t KeyModel::NextNumber() const {
  std::int32_t highest = 0;
  for (std::size_t place = 0; place < records_.size(); ++place) {
    highest = std::max(highest, NumberAt(place));
  }
  return highest == std::numeric_limits<std::int32_t>::max() ? 0 : highest + 1;
}

std::int32_t KeyModel::NumberAt(std::size_t place) const {
  return Peek<std::int32_t>(records_[place], test::SampleOffset::Number);
}

}  // namespace larkmoor::fuzz
