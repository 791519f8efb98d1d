// Bare LMDB, as far as the benchmarks use it: files of one tree, laid out as the library lays out
// its own, entry for entry with the same keys.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <span>
#include <string_view>

#include <lmdb.h>

namespace larkmoor::bench {

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
  /// What all records begin with, and what is behind them.
  static LmdbKey OfRecords() { return LmdbKey(RecordPrefix); }
  static LmdbKey BehindRecords() { return LmdbKey(RecordPrefix + 1); }
  /// An entry of a key path, or with fewer pieces where a part of the path starts.
  static LmdbKey OfPath(int path) { return LmdbKey(KeyPrefix + path); }

  /// An entry's own.
  static LmdbKey CopyOf(const MDB_val& entry);
  LmdbKey() = default;

  LmdbKey& Byte(std::uint8_t value) { return Append(value); }
  LmdbKey& Integer(std::int16_t value) {
    return Append(static_cast<std::uint16_t>(value ^ 0x8000));
  }
  LmdbKey& Long(std::int32_t value) {
    return Append(static_cast<std::uint32_t>(value) ^ 0x8000'0000U);
  }
  LmdbKey& Text(std::string_view value);
  LmdbKey& Bytes(std::span<const std::byte> value);
  LmdbKey& Number(std::uint64_t value) { return Append(value); }

  [[nodiscard]] MDB_val Value() const { return {size_, const_cast<unsigned char*>(bytes_.data())}; }
  [[nodiscard]] bool operator==(const LmdbKey& other) const;
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

  // Each goes to an entry of the path, and is false where there is none.

  /// To the first one at or above `from`.
  bool Find(const LmdbKey& from, const LmdbKey& path);
  /// To the last one below `behind`.
  bool FindBelow(const LmdbKey& behind, const LmdbKey& path);
  bool Next(const LmdbKey& path);
  bool Previous(const LmdbKey& path);

  /// Copies the record of the entry.
  void Read(std::span<std::byte> record);
  /// The entry's key, for coming back to it.
  [[nodiscard]] LmdbKey Place() const { return LmdbKey::CopyOf(entry_); }
  /// Copies the first record at or above `number`, or the one behind the last read this way. False
  /// where there is none.
  bool ReadFrom(std::uint64_t number, std::span<std::byte> record);
  bool ReadNext(std::span<std::byte> record);
  /// The number of the record that was copied last.
  [[nodiscard]] std::uint64_t Number() const { return number_; }

  /// All entries, those of records and those of keys.
  [[nodiscard]] std::size_t Entries() const;

 private:
  friend class LmdbWrite;

  bool Move(MDB_cursor_op operation, const LmdbKey& path);
  bool ReadStep(MDB_cursor_op operation, MDB_val entry, std::span<std::byte> record);
  void Unpack(std::uint64_t number, const MDB_val& value, std::span<std::byte> record) const;

  Form form_;
  MDB_env* env_ = nullptr;
  MDB_dbi tree_ = 0;
  MDB_txn* read_ = nullptr;
  MDB_cursor* keys_ = nullptr;
  MDB_cursor* records_ = nullptr;
  MDB_val entry_{};
  std::uint64_t number_ = 0;
};

/// What is written to a file in one commit.
class LmdbWrite {
 public:
  explicit LmdbWrite(LmdbFile& file);
  ~LmdbWrite() { mdb_txn_abort(txn_); }
  LmdbWrite(const LmdbWrite&) = delete;
  LmdbWrite& operator=(const LmdbWrite&) = delete;

  [[nodiscard]] bool Has(const LmdbKey& path) const;

  /// Adds a record behind all others, and makes it the one that the calls below are about.
  void Add(std::span<const std::byte> record);
  /// Makes a record of the file the one that the calls below are about.
  void Take(std::uint64_t number) { number_ = number; }
  /// Makes the last record that one, and copies it.
  void TakeLast(std::span<std::byte> record);

  void Replace(std::span<const std::byte> record);
  void Remove() { Remove(LmdbKey::OfRecord(number_)); }
  void AddKey(LmdbKey& key) { Put(key.Number(number_), {}); }
  void RemoveKey(LmdbKey& key) { Remove(key.Number(number_)); }

  void Commit();

 private:
  [[nodiscard]] std::uint64_t LastRecord() const;
  void Put(const LmdbKey& key, std::span<const std::byte> value);
  void Remove(const LmdbKey& key);

  LmdbFile& file_;
  MDB_txn* txn_ = nullptr;
  std::uint64_t number_ = 0;
  std::uint64_t last_ = 0;  // 0 until it is looked for
};

}  // namespace larkmoor::bench
