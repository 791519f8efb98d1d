#include "lmdb_file.h"

#include "engine/store/lmdb/record_value.h"
#include "support.h"

namespace larkmoor::bench {

LmdbKey& LmdbKey::Text(std::string_view value) {
  std::memcpy(bytes_.data() + size_, value.data(), value.size());
  size_ += value.size();
  return Byte(0);
}

bool LmdbKey::Begins(const MDB_val& entry) const {
  return entry.mv_size >= size_ && std::memcmp(entry.mv_data, bytes_.data(), size_) == 0;
}

LmdbFile::LmdbFile(const std::filesystem::path& path, Form form) : form_(form) {
  constexpr std::size_t MapSize = std::size_t{32} << 30;
  mdb_env_create(&env_);
  mdb_env_set_mapsize(env_, MapSize);
  Check(mdb_env_open(env_, path.c_str(), MDB_NOSUBDIR | MDB_NOMETASYNC | MDB_NOTLS, 0600) == 0,
        "environment");
  Check(mdb_txn_begin(env_, nullptr, MDB_RDONLY, &read_) == 0, "transaction");
  mdb_dbi_open(read_, nullptr, 0, &tree_);
  mdb_cursor_open(read_, tree_, &keys_);
  mdb_cursor_open(read_, tree_, &records_);
  End();
}

LmdbFile::~LmdbFile() {
  mdb_cursor_close(keys_);
  mdb_cursor_close(records_);
  mdb_txn_abort(read_);
  mdb_env_close(env_);
}

void LmdbFile::Begin() {
  Check(mdb_txn_renew(read_) == 0, "transaction");
  mdb_cursor_renew(read_, keys_);
  mdb_cursor_renew(read_, records_);
}

bool LmdbFile::Find(const LmdbKey& from, const LmdbKey& path) {
  MDB_val value;
  entry_ = from.Value();
  return mdb_cursor_get(keys_, &entry_, &value, MDB_SET_RANGE) == 0 && path.Begins(entry_);
}

bool LmdbFile::Next(const LmdbKey& path) {
  MDB_val value;
  return mdb_cursor_get(keys_, &entry_, &value, MDB_NEXT) == 0 && path.Begins(entry_);
}

void LmdbFile::Read(std::span<std::byte> record) {
  const MDB_val value = Value();
  const std::span bytes(static_cast<const std::byte*>(value.mv_data), value.mv_size);
  if (form_ == Form::Plain) {
    std::memcpy(record.data(), bytes.data(), record.size());
    return;
  }
  store::lmdb::Stamp stamp;
  Check(store::lmdb::ReadRecordValue(bytes, stamp, record), "packed record");
}

MDB_val LmdbFile::Value() {
  // The number at the end of an entry lies there as in the record's own key.
  std::array<unsigned char, 9> bytes{0x01};
  std::memcpy(bytes.data() + 1, static_cast<char*>(entry_.mv_data) + entry_.mv_size - 8, 8);
  MDB_val key{bytes.size(), bytes.data()};
  MDB_val record;
  Check(mdb_cursor_get(records_, &key, &record, MDB_SET) == 0, "record");
  return record;
}

LmdbWrite::LmdbWrite(LmdbFile& file) : file_(file) {
  Check(mdb_txn_begin(file.env_, nullptr, 0, &txn_) == 0, "transaction");
  number_ = LastRecord();
}

std::uint64_t LmdbWrite::LastRecord() const {
  MDB_cursor* cursor = nullptr;
  mdb_cursor_open(txn_, file_.tree_, &cursor);
  const LmdbKey behind = LmdbKey::BehindRecords();
  MDB_val entry = behind.Value();
  MDB_val value;
  int code = mdb_cursor_get(cursor, &entry, &value, MDB_SET_RANGE);
  code = mdb_cursor_get(cursor, &entry, &value, code == 0 ? MDB_PREV : MDB_LAST);
  std::uint64_t number = 0;
  if (code == 0) {
    const auto* bytes = static_cast<const unsigned char*>(entry.mv_data) + 1;
    for (std::size_t i = 0; i < sizeof number; ++i) number = number << 8 | bytes[i];
  }
  mdb_cursor_close(cursor);
  return number;
}

bool LmdbWrite::Has(const LmdbKey& path) const {
  MDB_cursor* cursor = nullptr;
  mdb_cursor_open(txn_, file_.tree_, &cursor);
  MDB_val entry = path.Value();
  MDB_val value;
  const bool has = mdb_cursor_get(cursor, &entry, &value, MDB_SET_RANGE) == 0 && path.Begins(entry);
  mdb_cursor_close(cursor);
  return has;
}

void LmdbWrite::Add(std::span<const std::byte> record) {
  constexpr store::lmdb::Stamp NoStamp = 0;
  const LmdbKey key = LmdbKey::OfRecord(++number_);
  if (file_.form_ == Form::Plain) {
    Put(key, record);
  } else {
    Put(key, store::lmdb::RecordValue(NoStamp, record));
  }
}

void LmdbWrite::Put(const LmdbKey& key, std::span<const std::byte> value) {
  MDB_val name = key.Value();
  MDB_val bytes{value.size(), const_cast<std::byte*>(value.data())};
  Check(mdb_put(txn_, file_.tree_, &name, &bytes, 0) == 0, "put");
}

void LmdbWrite::Commit() {
  const int code = mdb_txn_commit(txn_);
  txn_ = nullptr;
  Check(code == 0, "commit");
}

}  // namespace larkmoor::bench
