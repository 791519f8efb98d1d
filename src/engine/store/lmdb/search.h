// Finding entries of the tree.
#pragma once

#include "engine/store/driver.h"
#include "engine/store/lmdb/format.h"
#include "engine/store/lmdb/transactions.h"

namespace larkmoor::store::lmdb {

/// A cursor that an object keeps between readings. While nobody commits every page of the tree
/// stays as it is, and the cursor still stands where it stood.
class KeptCursor {
 public:
  KeptCursor() = default;
  ~KeptCursor();
  KeptCursor(const KeptCursor&) = delete;
  KeptCursor& operator=(const KeptCursor&) = delete;

  /// The object went on without it.
  void Leave() { stands_ = false; }

 private:
  friend class Cursor;
  MDB_cursor* cursor_ = nullptr;
  std::size_t state_ = UnknownState;
  bool stands_ = false;
};

/// A cursor for one reading: the object's kept one, or inside a batch, where every write may move
/// it, one that passes.
class Cursor {
 public:
  Cursor(KeptCursor& kept, const Reading& reading);
  explicit Cursor(const Reading& reading);
  ~Cursor();
  Cursor(const Cursor&) = delete;
  Cursor& operator=(const Cursor&) = delete;

  /// Whether the cursor stands where an earlier reading left it with `Stay`.
  [[nodiscard]] bool Stands() const { return kept_ != nullptr && kept_->stands_; }
  void Stay(bool stays) {
    if (kept_ != nullptr) kept_->stands_ = stays;
  }

  /// Drops where the cursor stands. LMDB looks there first, which helps a walk and hinders a
  /// search.
  void Forget();

  // Each sets the entry that it found and answers 0, or answers LMDB's code.
  int Move(MDB_cursor_op operation);
  /// The entry itself.
  int At(const EntryKey& key);
  /// The first entry at or above.
  int AtOrAbove(const EntryKey& key);
  /// The last entry below.
  int Below(const EntryKey& key);
  /// The next and the previous entry as seen from `key`, whether it is still there or not.
  int After(const EntryKey& key);

  [[nodiscard]] const MDB_val& Entry() const { return entry_; }
  [[nodiscard]] const MDB_val& Value() const { return value_; }

 private:
  KeptCursor* kept_ = nullptr;
  MDB_txn* transaction_;
  MDB_cursor* cursor_ = nullptr;
  int failure_ = MDB_SUCCESS;
  MDB_val entry_{};
  MDB_val value_{};
};

/// Searches a key path; `buffer` holds the value that the comparing searches compare with. Next and
/// previous are not searches of this kind. MDB_NOTFOUND where the path ends.
int SearchKey(Cursor& cursor, Seek seek, const KeyDescription& key,
              std::span<const std::byte> buffer);

}  // namespace larkmoor::store::lmdb
