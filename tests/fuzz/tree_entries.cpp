#include "fuzz/tree_entries.h"

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include <lmdb.h>

#include "engine/store/lmdb/format.h"
#include "engine/store/lmdb/seal.h"

namespace larkmoor::fuzz {
namespace {

namespace lmdb = store::lmdb;

void MustSucceed(int code) { Must(code == MDB_SUCCESS, "LMDB opens a sample and writes to it"); }

MDB_val ValueOf(std::string_view text) {
  return {text.size(), const_cast<char*>(text.data())};  // LMDB only reads it
}

/// A record's value with its checksum ahead.
std::string SealedRecord(const MDB_val& key, std::string_view value) {
  const auto checksum = static_cast<std::uint32_t>(
      lmdb::Checksum(std::as_bytes(std::span(value)), lmdb::NumberIn(key)));
  return std::string(reinterpret_cast<const char*>(&checksum), sizeof checksum).append(value);
}

std::string Sealed(const MDB_val& key, std::string_view value) {
  if (lmdb::IsHeader(key)) return lmdb::Seal(value);
  return lmdb::IsRecord(key) ? SealedRecord(key, value) : std::string(value);
}

/// The tree of a file that nobody has open, in one transaction.
class Tree {
 public:
  explicit Tree(const std::filesystem::path& path) {
    MDB_env* env = nullptr;
    MustSucceed(mdb_env_create(&env));
    env_.reset(env);
    MustSucceed(mdb_env_open(env, path.c_str(), MDB_NOSUBDIR | MDB_NOLOCK | MDB_NOSYNC, 0600));
    MustSucceed(mdb_txn_begin(env, nullptr, 0, &transaction_));
    MustSucceed(mdb_dbi_open(transaction_, nullptr, 0, &tree_));
  }

  /// What LMDB does not take, such as an empty key, is no entry.
  void Put(std::string_view key, std::string_view value) {
    MDB_val name = ValueOf(key);
    if (key.empty()) return;
    if (value.empty()) {
      mdb_del(transaction_, tree_, &name, nullptr);
      return;
    }
    const std::string sealed = Sealed(name, value);
    MDB_val bytes = ValueOf(sealed);
    mdb_put(transaction_, tree_, &name, &bytes, 0);
  }

  /// Counts what there is.
  void PutCounters() {
    lmdb::Counters counters;
    MDB_cursor* cursor = nullptr;
    MDB_val key;
    MDB_val value;
    MustSucceed(mdb_cursor_open(transaction_, tree_, &cursor));
    while (mdb_cursor_get(cursor, &key, &value, MDB_NEXT) == MDB_SUCCESS) Count(key, counters);
    mdb_cursor_close(cursor);
    const lmdb::EntryKey entry = lmdb::EntryKey::OfCounters();
    const std::string bytes = lmdb::ToBytes(counters);
    MDB_val name = entry.Value();
    value = ValueOf(bytes);
    MustSucceed(mdb_put(transaction_, tree_, &name, &value, 0));
  }

  void Commit() { MustSucceed(mdb_txn_commit(transaction_)); }

 private:
  struct Closer {
    void operator()(MDB_env* env) const { mdb_env_close(env); }
  };

  static void Count(const MDB_val& key, lmdb::Counters& counters) {
    if (lmdb::IsRecord(key)) {
      ++counters.records;
      counters.next = lmdb::NumberIn(key) + 1;
    } else if (lmdb::IsOfSomeKey(key)) {
      counters.keyEntries += lmdb::Checksum(lmdb::BytesOf(key));
    }
  }

  std::unique_ptr<MDB_env, Closer> env_;
  MDB_txn* transaction_ = nullptr;
  MDB_dbi tree_ = 0;
};

}  // namespace

void PutEntries(const std::filesystem::path& path, InputReader& input) {
  Tree tree(path);
  while (!input.AtEnd()) {
    const std::string_view key = input.TakeText();
    const auto length = input.Take<std::uint16_t>();
    tree.Put(key, TextOf(input.TakeBytes(length)));
  }
  tree.PutCounters();
  tree.Commit();
}

}  // namespace larkmoor::fuzz
