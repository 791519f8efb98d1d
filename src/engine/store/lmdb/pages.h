// The pages of an LMDB file, read without LMDB.
//
// LMDB believes what it finds on a page: a wrong number there leads it outside of the page or of
// the file, and the process to its end. So a file that others than the store may have written to is
// looked at with these first, which believe nothing.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "engine/store/lmdb/file_locks.h"

namespace larkmoor::store::lmdb {

using PageNumber = std::uint64_t;
constexpr PageNumber NoPage = ~PageNumber{0};

// As they lie in the file.

struct PageHeader {
  PageNumber number;
  std::uint16_t pad;
  std::uint16_t flags;
  std::uint16_t lower;  ///< end of the list of places
  std::uint16_t upper;  ///< where the nodes begin
};

enum PageFlag : std::uint16_t {
  BranchPage = 0x01,
  LeafPage = 0x02,
  OverflowPage = 0x04,
  MetaPage = 0x08,
};

struct NodeHeader {
  std::uint16_t low;  ///< of a leaf's node the size of the value, else the child's page
  std::uint16_t high;
  std::uint16_t flags;  ///< of a branch's node the third part of the child's page
  std::uint16_t keySize;
};

constexpr std::uint16_t ValueOnPagesOfItsOwn = 0x01;

struct TreeHeader {
  std::uint32_t pad;
  std::uint16_t flags;
  std::uint16_t depth;
  PageNumber branchPages;
  PageNumber leafPages;
  PageNumber overflowPages;
  std::uint64_t entries;
  PageNumber root;  ///< `NoPage` for an empty tree
};

/// What the file holds, as of one commit. Two pages have one: of the last commit and of the one
/// before.
struct Meta {
  std::uint32_t magic;
  std::uint32_t version;
  std::uint64_t address;
  std::uint64_t mapSize;
  TreeHeader freePages;  ///< its `pad` is the size of a page
  TreeHeader entries;
  PageNumber lastPage;
  std::uint64_t transaction;
};

static_assert(sizeof(PageHeader) == 16 && sizeof(NodeHeader) == 8 && sizeof(Meta) == 136);

/// A node of a leaf. The bytes lie in the page, or the value on pages of its own.
struct LeafNode {
  std::span<const std::byte> key;
  std::size_t valueSize = 0;
  std::span<const std::byte> value;  ///< empty where it is on pages of its own
  std::optional<PageNumber> valuePage;
};

struct BranchNode {
  std::span<const std::byte> key;
  PageNumber child = NoPage;
};

/// The bytes of a page whose parts were found to lie inside it, and none over another.
class TreePage {
 public:
  /// Nothing where the bytes are not those of a sound branch or leaf of that number.
  static std::optional<TreePage> Of(std::vector<std::byte> bytes, PageNumber number);

  [[nodiscard]] bool IsLeaf() const { return header_.flags == LeafPage; }
  [[nodiscard]] std::size_t Count() const;
  [[nodiscard]] LeafNode Leaf(std::size_t index) const;
  [[nodiscard]] BranchNode Branch(std::size_t index) const;

 private:
  TreePage(std::vector<std::byte> bytes, const PageHeader& header)
      : bytes_(std::move(bytes)), header_(header) {}

  [[nodiscard]] std::size_t PlaceOf(std::size_t index) const;
  [[nodiscard]] NodeHeader NodeAt(std::size_t place) const;
  [[nodiscard]] std::span<const std::byte> BytesAt(std::size_t place, std::size_t size) const {
    return std::span(bytes_).subspan(place, size);
  }
  /// Bytes that the node takes on the page, 0 where it does not lie on it.
  [[nodiscard]] std::size_t SizeOfNode(std::size_t place) const;
  [[nodiscard]] bool NodesAreSound() const;

  std::vector<std::byte> bytes_;
  PageHeader header_;
};

/// The file, page by page.
class PageReader {
 public:
  explicit PageReader(const DataFile& file) : file_(file) {}

  /// The newer of the two metas, whose pages can be read from then on; nothing where they are not
  /// those of two commits that follow each other.
  std::optional<Meta> ReadMeta();
  [[nodiscard]] std::size_t PageSize() const { return pageSize_; }

  [[nodiscard]] std::optional<TreePage> ReadTreePage(PageNumber number) const;
  /// How many pages a value takes that begins on that page; nothing where none can.
  [[nodiscard]] std::optional<std::uint32_t> ReadOverflowCount(PageNumber number) const;
  /// Whether the file reaches over that page.
  [[nodiscard]] bool HasPage(PageNumber number) const;
  /// The value that begins on that page; nothing where the file ends before it does.
  [[nodiscard]] std::optional<std::vector<std::byte>> ReadValue(PageNumber number,
                                                                std::size_t size) const;

 private:
  [[nodiscard]] std::optional<Meta> ReadMetaPage(PageNumber number) const;

  const DataFile& file_;
  std::size_t pageSize_ = 4096;
};

}  // namespace larkmoor::store::lmdb
