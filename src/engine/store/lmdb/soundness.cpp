#include "engine/store/lmdb/soundness.h"

#include <algorithm>
#include <cstring>
#include <vector>

#include "engine/store/lmdb/environment.h"
#include "engine/store/lmdb/format.h"
#include "engine/store/lmdb/pages.h"
#include "engine/store/lmdb/seal.h"

namespace larkmoor::store::lmdb {
namespace {

using Bytes = std::span<const std::byte>;

bool Precedes(Bytes left, Bytes right) {
  const int order = std::memcmp(left.data(), right.data(), std::min(left.size(), right.size()));
  return order != 0 ? order < 0 : left.size() < right.size();
}

/// Which pages are in use. None may be so twice.
class PagesInUse {
 public:
  explicit PagesInUse(PageNumber lastPage) : inUse_(lastPage + 1) {
    Take(0, 2);  // the metas
  }

  /// False where one of the pages is taken already or is none of the file's.
  bool Take(PageNumber first, PageNumber count = 1) {
    if (first >= inUse_.size() || count > inUse_.size() - first) return false;
    for (PageNumber page = first; page < first + count; ++page) {
      if (inUse_[page]) return false;
      inUse_[page] = true;
    }
    return true;
  }

 private:
  std::vector<bool> inUse_;
};

/// What is done with the entries of a tree.
class Entries {
 public:
  virtual ~Entries() = default;
  [[nodiscard]] virtual bool InOrder(Bytes left, Bytes right) const = 0;
  /// False where the entry is none that the tree can hold. The value is empty where it is not
  /// wanted and lies on pages of its own.
  virtual bool Take(Bytes key, Bytes value) = 0;
  [[nodiscard]] virtual bool WantsLongValues() const = 0;
  /// LMDB asserts where a branch has fewer.
  [[nodiscard]] virtual std::size_t FewestChildren() const = 0;
};

/// Of the tree of free pages: a list of pages for each commit that freed some.
class FreeLists final : public Entries {
 public:
  FreeLists(PagesInUse& pages, std::uint64_t lastCommit) : pages_(pages), lastCommit_(lastCommit) {}

  [[nodiscard]] bool InOrder(Bytes left, Bytes right) const override {
    return NumberAt(left, 0) < NumberAt(right, 0);
  }
  bool Take(Bytes key, Bytes value) override {
    if (key.size() != NumberSize || NumberAt(key, 0) == 0 || NumberAt(key, 0) > lastCommit_) {
      return false;
    }
    const std::size_t room = value.size() / NumberSize;
    const std::uint64_t count = room == 0 ? 0 : NumberAt(value, 0);
    if (room == 0 || count >= room) return false;
    // The highest page comes first.
    for (std::uint64_t i = 1; i <= count; ++i) {
      const PageNumber page = NumberAt(value, i);
      if ((i > 1 && page >= NumberAt(value, i - 1)) || !pages_.Take(page)) return false;
    }
    return true;
  }
  [[nodiscard]] bool WantsLongValues() const override { return true; }
  [[nodiscard]] std::size_t FewestChildren() const override { return 1; }

 private:
  static std::uint64_t NumberAt(Bytes bytes, std::size_t index) {
    std::uint64_t number = 0;
    if (bytes.size() >= (index + 1) * sizeof number) {
      std::memcpy(&number, bytes.data() + index * sizeof number, sizeof number);
    }
    return number;
  }

  PagesInUse& pages_;
  std::uint64_t lastCommit_;
};

/// Of the tree of entries: what is counted agrees with the counters.
class CountedEntries final : public Entries {
 public:
  [[nodiscard]] bool InOrder(Bytes left, Bytes right) const override {
    return Precedes(left, right);
  }
  bool Take(Bytes key, Bytes value) override {
    const MDB_val entry{key.size(), const_cast<std::byte*>(key.data())};
    if (EntryKey::OfCounters() == entry) return TakeCounters(value);
    if (IsRecord(entry)) {
      ++found_.records;
      found_.next = NumberIn(entry) + 1;
      return true;
    }
    if (IsOfSomeKey(entry)) {
      found_.keyEntries += Checksum(key);
      return value.empty();
    }
    return IsHeader(entry);
  }
  [[nodiscard]] bool WantsLongValues() const override { return false; }
  [[nodiscard]] std::size_t FewestChildren() const override { return 2; }

  /// Whether all that there should be has come.
  [[nodiscard]] bool Complete() const {
    return found_.records == told_.records && found_.keyEntries == told_.keyEntries &&
           found_.next <= told_.next;
  }

 private:
  bool TakeCounters(Bytes value) {
    const auto counters =
        CountersFromBytes({reinterpret_cast<const char*>(value.data()), value.size()});
    if (counters) told_ = *counters;
    return counters.has_value();
  }

  Counters told_;
  Counters found_;
};

/// A walk over all pages of a tree.
class TreeWalk {
 public:
  TreeWalk(const PageReader& reader, PagesInUse& pages, Entries& entries)
      : reader_(reader), pages_(pages), entries_(entries) {}

  /// What is wrong, or nothing.
  std::optional<std::string> Run(PageNumber root) {
    if (root == NoPage || Visit(root, 1)) return std::nullopt;
    return fault_;
  }

 private:
  /// No tree that LMDB can walk is deeper.
  static constexpr int Deepest = 30;

  bool Fault(PageNumber page, const std::string& what) {
    fault_ = "page " + std::to_string(page) + ": " + what;
    return false;
  }

  bool Visit(PageNumber number, int depth) {
    if (!pages_.Take(number)) return Fault(number, "is used twice, or is none of the file's");
    const auto page = reader_.ReadTreePage(number);
    if (!page || depth > Deepest) return Fault(number, "is not a page of a tree");
    return page->IsLeaf() ? VisitLeaf(number, *page, depth) : VisitBranch(number, *page, depth);
  }

  bool VisitBranch(PageNumber number, const TreePage& page, int depth) {
    if (page.Count() < entries_.FewestChildren()) return Fault(number, "has too few below it");
    for (std::size_t i = 0; i < page.Count(); ++i) {
      const BranchNode node = page.Branch(i);
      // The first key of a branch says nothing; the others part what is below them.
      if (i > 0 && !TakeBound(node.key)) return Fault(number, "its keys are out of order");
      if (!Visit(node.child, depth + 1)) return false;
    }
    return true;
  }

  bool VisitLeaf(PageNumber number, const TreePage& page, int depth) {
    if (depthOfLeaves_ == 0) depthOfLeaves_ = depth;
    if (depth != depthOfLeaves_) return Fault(number, "the tree is not level");
    for (std::size_t i = 0; i < page.Count(); ++i) {
      const LeafNode node = page.Leaf(i);
      if (node.key.empty() || !TakeKey(node.key)) {
        return Fault(number, "its keys are out of order");
      }
      if (!TakeEntry(node)) return Fault(number, "entry " + std::to_string(i) + " is none");
    }
    return true;
  }

  bool TakeEntry(const LeafNode& node) {
    if (!node.valuePage) return entries_.Take(node.key, node.value);
    const auto count = reader_.ReadOverflowCount(*node.valuePage);
    const std::size_t needed =
        (sizeof(PageHeader) + node.valueSize + reader_.PageSize() - 1) / reader_.PageSize();
    if (!count || *count < needed || !reader_.HasPage(*node.valuePage + needed - 1) ||
        !pages_.Take(*node.valuePage, *count)) {
      return false;
    }
    const std::size_t wanted = entries_.WantsLongValues() ? node.valueSize : 0;
    const auto value = reader_.ReadValue(*node.valuePage, wanted);
    return value && entries_.Take(node.key, *value);
  }

  // What comes before a bound lies below it, and what comes behind at it or above.

  bool TakeBound(Bytes bound) {
    const bool inOrder = last_.empty() || entries_.InOrder(last_, bound);
    last_.assign(bound.begin(), bound.end());
    lastIsBound_ = true;
    return inOrder;
  }

  bool TakeKey(Bytes key) {
    const bool inOrder = last_.empty() || entries_.InOrder(last_, key) ||
                         (lastIsBound_ && std::ranges::equal(last_, key));
    last_.assign(key.begin(), key.end());
    lastIsBound_ = false;
    return inOrder;
  }

  const PageReader& reader_;
  PagesInUse& pages_;
  Entries& entries_;
  int depthOfLeaves_ = 0;
  std::vector<std::byte> last_;
  bool lastIsBound_ = false;
  std::string fault_;
};

}  // namespace

std::optional<std::string> FindFault(const DataFile& file) {
  PageReader reader(file);
  const auto meta = reader.ReadMeta();
  if (!meta || meta->lastPage >= MapSize / reader.PageSize()) return "the first pages are damaged";
  PagesInUse pages(meta->lastPage);
  CountedEntries entries;
  if (auto fault = TreeWalk(reader, pages, entries).Run(meta->entries.root)) return fault;
  FreeLists freeLists(pages, meta->transaction);
  if (auto fault = TreeWalk(reader, pages, freeLists).Run(meta->freePages.root)) return fault;
  if (!entries.Complete()) return "the entries are not those that were written";
  return std::nullopt;
}

}  // namespace larkmoor::store::lmdb
