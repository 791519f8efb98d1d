#include "engine/store/lmdb/pages.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstring>
#include <utility>

namespace larkmoor::store::lmdb {
namespace {

constexpr std::uint32_t Magic = 0xBEEFC0DE;
constexpr std::uint32_t Version = 1;
constexpr std::size_t SmallestPage = 4096;
constexpr std::size_t LargestPage = 32768;
/// Flags of the tree of free pages: keys are numbers, and the file is one by itself.
constexpr std::uint16_t NumberKeys = 0x0008;
constexpr std::uint16_t SingleFile = 0x4000;

template <typename T>
T Load(std::span<const std::byte> bytes, std::size_t place = 0) {
  T value;
  std::memcpy(&value, bytes.data() + place, sizeof value);
  return value;
}

std::size_t ValueSize(const NodeHeader& node) { return node.low | std::size_t{node.high} << 16; }

/// Nodes begin at even places.
std::size_t Even(std::size_t size) { return (size + 1) & ~std::size_t{1}; }

bool IsSound(const Meta& meta, PageNumber page) {
  const std::size_t pageSize = meta.freePages.pad;
  return meta.magic == Magic && meta.version == Version && std::has_single_bit(pageSize) &&
         pageSize >= SmallestPage && pageSize <= LargestPage &&
         (meta.freePages.flags & ~SingleFile) == NumberKeys && meta.entries.flags == 0 &&
         (meta.transaction == 0 || meta.transaction % 2 == page);
}

}  // namespace

std::optional<TreePage> TreePage::Of(std::vector<std::byte> bytes, PageNumber number) {
  const auto header = Load<PageHeader>(bytes);
  const bool known = header.flags == LeafPage || header.flags == BranchPage;
  if (header.number != number || !known || header.lower <= sizeof header ||
      header.lower % sizeof(std::uint16_t) != 0 || header.lower > header.upper ||
      header.upper > bytes.size()) {
    return std::nullopt;
  }
  TreePage page(std::move(bytes), header);
  if (!page.NodesAreSound()) return std::nullopt;
  return page;
}

std::size_t TreePage::Count() const {
  return (header_.lower - sizeof header_) / sizeof(std::uint16_t);
}

std::size_t TreePage::PlaceOf(std::size_t index) const {
  return Load<std::uint16_t>(bytes_, sizeof header_ + index * sizeof(std::uint16_t));
}

NodeHeader TreePage::NodeAt(std::size_t place) const { return Load<NodeHeader>(bytes_, place); }

std::size_t TreePage::SizeOfNode(std::size_t place) const {
  if (place < header_.upper || place % 2 != 0 || place + sizeof(NodeHeader) > bytes_.size()) {
    return 0;
  }
  const NodeHeader node = NodeAt(place);
  std::size_t size = sizeof node + node.keySize;
  if (IsLeaf()) {
    if ((node.flags & ~ValueOnPagesOfItsOwn) != 0) return 0;
    size += node.flags == ValueOnPagesOfItsOwn ? sizeof(PageNumber) : ValueSize(node);
  }
  return place + size <= bytes_.size() ? Even(size) : 0;
}

bool TreePage::NodesAreSound() const {
  std::vector<std::size_t> places(Count());
  for (std::size_t i = 0; i < places.size(); ++i) places[i] = PlaceOf(i);
  std::ranges::sort(places);
  std::size_t end = header_.upper;
  for (const std::size_t place : places) {
    const std::size_t size = SizeOfNode(place);
    if (size == 0 || place < end) return false;
    end = place + size;
  }
  return end <= bytes_.size();
}

LeafNode TreePage::Leaf(std::size_t index) const {
  const std::size_t place = PlaceOf(index);
  const NodeHeader node = NodeAt(place);
  const std::size_t valuePlace = place + sizeof node + node.keySize;
  LeafNode leaf{BytesAt(place + sizeof node, node.keySize), ValueSize(node), {}, std::nullopt};
  if (node.flags == ValueOnPagesOfItsOwn) {
    leaf.valuePage = Load<PageNumber>(bytes_, valuePlace);
  } else {
    leaf.value = BytesAt(valuePlace, leaf.valueSize);
  }
  return leaf;
}

BranchNode TreePage::Branch(std::size_t index) const {
  const std::size_t place = PlaceOf(index);
  const NodeHeader node = NodeAt(place);
  const PageNumber child = node.low | PageNumber{node.high} << 16 | PageNumber{node.flags} << 32;
  return {BytesAt(place + sizeof node, node.keySize), child};
}

std::optional<Meta> PageReader::ReadMetaPage(PageNumber number) const {
  std::array<std::byte, sizeof(PageHeader) + sizeof(Meta)> bytes;
  if (!file_.Read(bytes, number * pageSize_)) return std::nullopt;
  const auto header = Load<PageHeader>(bytes);
  const auto meta = Load<Meta>(bytes, sizeof header);
  if (header.number != number || header.flags != MetaPage || !IsSound(meta, number)) {
    return std::nullopt;
  }
  return meta;
}

std::optional<Meta> PageReader::ReadMeta() {
  const auto first = ReadMetaPage(0);
  if (!first) return std::nullopt;
  pageSize_ = first->freePages.pad;
  const auto second = ReadMetaPage(1);
  if (!second || second->freePages.pad != pageSize_) return std::nullopt;
  const auto& [older, newer] = first->transaction < second->transaction
                                   ? std::pair(*first, *second)
                                   : std::pair(*second, *first);
  const bool follows = newer.transaction == older.transaction + 1 || newer.transaction == 0;
  return follows ? std::optional(newer) : std::nullopt;
}

std::optional<TreePage> PageReader::ReadTreePage(PageNumber number) const {
  std::vector<std::byte> bytes(pageSize_);
  if (!file_.Read(bytes, number * pageSize_)) return std::nullopt;
  return TreePage::Of(std::move(bytes), number);
}

std::optional<std::uint32_t> PageReader::ReadOverflowCount(PageNumber number) const {
  std::array<std::byte, sizeof(PageHeader)> bytes;
  if (!file_.Read(bytes, number * pageSize_)) return std::nullopt;
  const auto header = Load<PageHeader>(bytes);
  if (header.number != number || header.flags != OverflowPage) return std::nullopt;
  return header.lower | std::uint32_t{header.upper} << 16;
}

bool PageReader::HasPage(PageNumber number) const {
  return static_cast<PageNumber>(file_.Size()) / pageSize_ > number;
}

std::optional<std::vector<std::byte>> PageReader::ReadValue(PageNumber number,
                                                            std::size_t size) const {
  std::vector<std::byte> bytes(size);
  if (!file_.Read(bytes, number * pageSize_ + sizeof(PageHeader))) return std::nullopt;
  return bytes;
}

}  // namespace larkmoor::store::lmdb
