#include "peers/lmdb_file.h"

#include <cstring>

#include "engine/store/lmdb/record_value.h"
#include "support.h"

namespace larkmoor::bench {
namespace {

/// The record number at the end of an entry, most significant byte first.
std::uint64_t NumberAtEnd(const MDB_val& entry) {
  const auto* end = static_cast<const unsigned char*>(entry.mv_data) + entry.mv_size;
  std::uint64_t number = 0;
  for (const auto* byte = end - sizeof number; byte < end; ++byte) number = number << 8 | *byte;
  return number;
}

}  // namespace

LmdbKey LmdbKey::CopyOf(const MDB_val& entry) {
  LmdbKey copy;
  copy.Bytes({static_cast<const std::byte*>(entry.mv_data), entry.mv_size});
  return copy;
}

LmdbKey& LmdbKey::Text(std::string_view value) {
  std::memcpy(bytes_.data() + size_, value.data(), value.size());
  size_ += value.size();
  return Byte(0);
}

LmdbKey& LmdbKey::Bytes(std::span<const std::byte> value) {
  std::memcpy(bytes_.data() + size_, value.data(), value.size());
  size_ += value.size();
  return *this;
}

bool LmdbKey::operator==(const LmdbKey& other) const {
  return size_ == other.size_ && std::memcmp(bytes_.data(), other.bytes_.data(), size_) == 0;
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

bool LmdbFile::FindBelow(const LmdbKey& behind, const LmdbKey& path) {
  MDB_val value;
  entry_ = behind.Value();
  const bool above = mdb_cursor_get(keys_, &entry_, &value, MDB_SET_RANGE) == 0;
  return Move(above ? MDB_PREV : MDB_LAST, path);
}

bool LmdbFile::Next(const LmdbKey& path) { return Move(MDB_NEXT, path); }

bool LmdbFile::Previous(const LmdbKey& path) { return Move(MDB_PREV, path); }

bool LmdbFile::Move(MDB_cursor_op operation, const LmdbKey& path) {
  MDB_val value;
  return mdb_cursor_get(keys_, &entry_, &value, operation) == 0 && path.Begins(entry_);
}

void LmdbFile::Read(std::span<std::byte> record) {
  // The number at the end of an entry lies there as in the record's own key.
  std::array<unsigned char, 9> bytes{0x01};
  std::memcpy(bytes.data() + 1, static_cast<char*>(entry_.mv_data) + entry_.mv_size - 8, 8);
  MDB_val key{bytes.size(), bytes.data()};
  MDB_val value;
  Check(mdb_cursor_get(records_, &key, &value, MDB_SET) == 0, "record");
  number_ = NumberAtEnd(entry_);
  Unpack(number_, value, record);
}

bool LmdbFile::ReadFrom(std::uint64_t number, std::span<std::byte> record) {
  const LmdbKey from = LmdbKey::OfRecord(number);
  return ReadStep(MDB_SET_RANGE, from.Value(), record);
}

bool LmdbFile::ReadNext(std::span<std::byte> record) { return ReadStep(MDB_NEXT, {}, record); }

bool LmdbFile::ReadStep(MDB_cursor_op operation, MDB_val entry, std::span<std::byte> record) {
  MDB_val value;
  if (mdb_cursor_get(records_, &entry, &value, operation) != 0) return false;
  if (!LmdbKey::OfRecords().Begins(entry)) return false;
  number_ = NumberAtEnd(entry);
  Unpack(number_, value, record);
  return true;
}

void LmdbFile::Unpack(std::uint64_t number, const MDB_val& value,
                      std::span<std::byte> record) const {
  const std::span bytes(static_cast<const std::byte*>(value.mv_data), value.mv_size);
  if (form_ == Form::Plain) {
    std::memcpy(record.data(), bytes.data(), record.size());
    return;
  }
  store::lmdb::Stamp stamp;
  Check(store::lmdb::ReadRecordValue(number, bytes, stamp, record), "packed record");
}

std::size_t LmdbFile::Entries() const {
  MDB_stat stat{};
  Check(mdb_stat(read_, tree_, &stat) == 0, "statistics");
  return stat.ms_entries;
}

LmdbWrite::LmdbWrite(LmdbFile& file) : file_(file) {
  Check(mdb_txn_begin(file.env_, nullptr, 0, &txn_) == 0, "transaction");
}

std::uint64_t LmdbWrite::LastRecord() const {
  MDB_cursor* cursor = nullptr;
  mdb_cursor_open(txn_, file_.tree_, &cursor);
  const LmdbKey behind = LmdbKey::BehindRecords();
  MDB_val entry = behind.Value();
  MDB_val value;
  int code = mdb_cursor_get(cursor, &entry, &value, MDB_SET_RANGE);
  code = mdb_cursor_get(cursor, &entry, &value, code == 0 ? MDB_PREV : MDB_LAST);
  const std::uint64_t number = code == 0 ? NumberAtEnd(entry) : 0;
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
  if (last_ == 0) last_ = LastRecord();
  number_ = ++last_;
  Replace(record);
}

void LmdbWrite::TakeLast(std::span<std::byte> record) {
  number_ = LastRecord();
  const LmdbKey key = LmdbKey::OfRecord(number_);
  MDB_val name = key.Value();
  MDB_val value;
  Check(mdb_get(txn_, file_.tree_, &name, &value) == 0, "last record");
  file_.Unpack(number_, value, record);
}

void LmdbWrite::Replace(std::span<const std::byte> record) {
  constexpr store::lmdb::Stamp NoStamp = 0;
  const LmdbKey key = LmdbKey::OfRecord(number_);
  if (file_.form_ == Form::Plain) {
    Put(key, record);
  } else {
    Put(key, store::lmdb::RecordValue(number_, NoStamp, record));
  }
}

void LmdbWrite::Put(const LmdbKey& key, std::span<const std::byte> value) {
  MDB_val name = key.Value();
  MDB_val bytes{value.size(), const_cast<std::byte*>(value.data())};
  Check(mdb_put(txn_, file_.tree_, &name, &bytes, 0) == 0, "put");
}

void LmdbWrite::Remove(const LmdbKey& key) {
  MDB_val name = key.Value();
  Check(mdb_del(txn_, file_.tree_, &name, nullptr) == 0, "remove");
}

void LmdbWrite::Commit() {
  const int code = mdb_txn_commit(txn_);
  txn_ = nullptr;
  Check(code == 0, "commit");
}

}  // namespace larkmoor::bench
