// Where records lie along a key path, in percent.
#pragma once

#include <optional>
#include <vector>

#include "engine/store/lmdb/format.h"
#include "engine/store/lmdb/transactions.h"

namespace larkmoor::store::lmdb {

/// Entries of a key that stand for all of them: of a small file all, of a large one those of
/// records spread evenly over the file. So the answer is exact for small files, near for large
/// ones, and costs the same however many records there are.
class KeySpread {
 public:
  KeySpread(const Reading& reading, const KeyDescription& key, std::size_t recordLength);

  /// 0.0 for the first entry to 100.0 for the last.
  [[nodiscard]] double PercentOf(const EntryKey& entry) const;
  /// The entry there; nothing in an empty file.
  [[nodiscard]] std::optional<EntryKey> EntryAt(double percent) const;

 private:
  void TakeAll(const Reading& reading, const KeyDescription& key);
  void TakeSample(const Reading& reading, const KeyDescription& key, std::size_t recordLength,
                  RecordNumber end);

  std::vector<EntryKey> entries_;  // ascending, the first and the last of the path among them
};

}  // namespace larkmoor::store::lmdb
