// Bare LMDB, as far as the benchmarks use it: files of one tree, laid out as the library lays out
// its own, entry for entry with the same keys.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <filesystem>
#include <span>
#include <string_view>

#include <lmdb.h>

#include "engine/record_description.h"

namespace larkmoor::bench {

// Fields of a record.

template <typename T>
T GetField(std::span<const std::byte> record, const Field& field) {
  T value;
  std::memcpy(&value, record.data() + field.offset, sizeof value);
  return value;
}

inline std::string_view GetTextField(std::span<const std::byte> record, const Field& field) {
  const auto* text = reinterpret_cast<const char*>(record.data()) + field.offset;
  return {text, strnlen(text, field.width)};
}

template <typename T>
void PutField(std::span<std::byte> record, const Field& field, T value) {
  std::memcpy(record.data() + field.offset, &value, sizeof value);
}

inline void PutTextField(std::span<std::byte> record, const Field& field, std::string_view value) {
  std::memcpy(record.data() + field.offset, value.data(),
              std::min<std::size_t>(value.size(), field.width));
}

/// How records lie in their entries.
enum class Form {
  Plain,  ///< whole, as plain programs keep them: 5,670 bytes a header, 514 bytes a row
  Packed  ///< without their runs of zero bytes, as the library keeps them
};

/// The key of an entry, put together piece by piece.
class LmdbKey {
 public:
  /// A record.
  static LmdbKey OfRecord(std::uint64_t number) { return LmdbKey(RecordPrefix).Number(number); }
  /// Behind all records.
  static LmdbKey BehindRecords() { return LmdbKey(RecordPrefix + 1); }
  /// An entry of a key path, or with fewer pieces where a part of the path starts.
  static LmdbKey OfPath(int path) { return LmdbKey(KeyPrefix + path); }

  LmdbKey& Byte(std::uint8_t value) { return Append(value); }
  LmdbKey& Integer(std::int16_t value) {
    return Append(static_cast<std::uint16_t>(value ^ 0x8000));
  }
  LmdbKey& Long(std::int32_t value) {
    return Append(static_cast<std::uint32_t>(value) ^ 0x8000'0000U);
  }
  LmdbKey& Text(std::string_view value);
  LmdbKey& Number(std::uint64_t value) { return Append(value); }

  [[nodiscard]] MDB_val Value() const { return {size_, const_cast<unsigned char*>(bytes_.data())}; }
  /// Whether the key of an entry begins with these bytes.
  [[nodiscard]] bool Begins(const MDB_val& entry) const;

 private:
  static constexpr int RecordPrefix = 0x01;
  static constexpr int KeyPrefix = 0x10;

  explicit LmdbKey(int prefix) { Append(static_cast<std::uint8_t>(prefix)); }
  /// Most significant byte first.
  template <typename Unsigned>
  LmdbKey& Append(Unsigned value) {
    for (int shift = 8 * (static_cast<int>(sizeof value) - 1); shift >= 0; shift -= 8) {
      bytes_[size_++] = static_cast<unsigned char>(value >> shift);
    }
    return *this;
  }

  std::array<unsigned char, 80> bytes_;
  std::size_t size_ = 0;
};

/// One file with one tree, opened with the flags that the library opens its own with.
class LmdbFile {
 public:
  LmdbFile(const std::filesystem::path& path, Form form);
  ~LmdbFile();
  LmdbFile(const LmdbFile&) = delete;
  LmdbFile& operator=(const LmdbFile&) = delete;

  // Reading, between `Begin` and `End`, in one state of the file.
  void Begin();
  void End() { mdb_txn_reset(read_); }
  /// Goes to the first entry at or above `from`, or to the next one. False where it does not begin
  /// with `path`.
  bool Find(const LmdbKey& from, const LmdbKey& path);
  bool Next(const LmdbKey& path);
  /// Copies the record of the entry.
  void Read(std::span<std::byte> record);

 private:
  friend class LmdbWrite;

  MDB_val Value();

  Form form_;
  MDB_env* env_ = nullptr;
  MDB_dbi tree_ = 0;
  MDB_txn* read_ = nullptr;
  MDB_cursor* keys_ = nullptr;
  MDB_cursor* records_ = nullptr;
  MDB_val entry_{};
};

/// What is written to a file in one commit.
class LmdbWrite {
 public:
  explicit LmdbWrite(LmdbFile& file);
  ~LmdbWrite() { mdb_txn_abort(txn_); }
  LmdbWrite(const LmdbWrite&) = delete;
  LmdbWrite& operator=(const LmdbWrite&) = delete;

  [[nodiscard]] bool Has(const LmdbKey& path) const;
  /// Adds a record; the keys that are added next lead to it.
  void Add(std::span<const std::byte> record);
  void AddKey(LmdbKey& key) { Put(key.Number(number_), {}); }
  void Commit();

 private:
  void Put(const LmdbKey& key, std::span<const std::byte> value);
  [[nodiscard]] std::uint64_t LastRecord() const;

  LmdbFile& file_;
  MDB_txn* txn_ = nullptr;
  std::uint64_t number_ = 0;
};

}  // namespace larkmoor::bench
