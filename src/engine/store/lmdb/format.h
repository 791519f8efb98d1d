// What an LMDB file of ours holds.
//
// All entries lie in one tree, told apart by their first byte, so that a read needs no look-up of a
// sub-database:
//
//   Header + name            description of the file (JSON), owner name (JSON), sealed
//   Record + record number   the record with the stamp of its last write: see record_value.h
//   Counters                 `Counters`, sealed; lies right behind the last record, so that an
//   insert
//                            touches no page of its own for it
//   Key + key number, encoded key, record number    nothing
//
// Record numbers are eight bytes, most significant first. They are given once, in the order of
// insertion, which is the physical order and the order among duplicates of a key.
//
// What is sealed has a checksum behind it, a record has one ahead, and of the entries of keys the
// counters hold the sum: no byte of the file can change unnoticed.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include <lmdb.h>

#include "engine/store/file_description.h"
#include "engine/store/key_encoding.h"

namespace larkmoor::store::lmdb {

using RecordNumber = std::uint64_t;
/// A number that no other write has, so that a record read is known to be the record written.
using Stamp = std::uint64_t;

enum class Prefix : std::uint8_t { Header = 0x00, Record = 0x01, Counters = 0x02, Key = 0x10 };

constexpr std::int16_t HighestKeyNumber = 118;
constexpr std::size_t NumberSize = sizeof(RecordNumber);
constexpr RecordNumber LastNumber = ~RecordNumber{0};

/// The key of an entry in the tree.
class EntryKey {
 public:
  EntryKey() = default;
  // A key has room for the widest one there can be. A copy takes the bytes that are in use: reads
  // along a key keep their place at every step.
  EntryKey(const EntryKey& other) : size_(other.size_) { std::memcpy(bytes_, other.bytes_, size_); }
  EntryKey& operator=(const EntryKey& other) {
    size_ = other.size_;
    std::memmove(bytes_, other.bytes_, size_);
    return *this;
  }
  /// Takes an entry's key as the tree holds it.
  EntryKey& operator=(const MDB_val& entry) {
    size_ = std::min(entry.mv_size, sizeof bytes_);
    std::memcpy(bytes_, entry.mv_data, size_);
    return *this;
  }
  /// "Header" with a one-letter name.
  static EntryKey OfHeader(char name);
  static EntryKey OfCounters();
  static EntryKey OfRecord(RecordNumber number);
  /// Sorts before all entries of that key number, and behind those of the one before.
  static EntryKey BeforeKey(std::int16_t keyNumber);
  /// Sorts before all entries of that key value.
  static EntryKey OfKey(std::int16_t keyNumber, const EncodedKey& key);
  /// The entry itself.
  static EntryKey OfKey(std::int16_t keyNumber, const EncodedKey& key, RecordNumber number);
  /// A copy of an entry's key as the tree holds it.
  static EntryKey CopyOf(const MDB_val& entry);

  [[nodiscard]] MDB_val Value() const;
  [[nodiscard]] std::span<const std::byte> Bytes() const { return {bytes_, size_}; }
  /// Whether an entry of the tree begins with these bytes.
  [[nodiscard]] bool Begins(const MDB_val& entry) const;
  [[nodiscard]] bool operator==(const MDB_val& entry) const;

 private:
  void Append(Prefix prefix, int more = 0);
  void Append(std::span<const std::byte> bytes);
  void Append(RecordNumber number);

  std::byte bytes_[EncodedKey::Capacity + 1 + NumberSize];
  std::size_t size_ = 0;
};

/// Whether the entry is one of that kind.
bool IsHeader(const MDB_val& entry);
bool IsRecord(const MDB_val& entry);
bool IsOfSomeKey(const MDB_val& entry);
bool IsOfKey(const MDB_val& entry, std::int16_t keyNumber);
/// The record number at the end of a record's or a key's entry.
RecordNumber NumberIn(const MDB_val& entry);
/// The bytes that LMDB points at.
inline std::span<const std::byte> BytesOf(const MDB_val& value) {
  return {static_cast<const std::byte*>(value.mv_data), value.mv_size};
}

struct Counters {
  RecordNumber next = 1;
  std::uint64_t records = 0;
  /// Sum of the checksums of all key entries, modulo 2^64.
  std::uint64_t keyEntries = 0;

  bool operator==(const Counters&) const = default;
};

/// The form of the counters in their entry; nothing where the bytes are none.
std::string ToBytes(const Counters& counters);
std::optional<Counters> CountersFromBytes(std::string_view bytes);

/// The owner name of a protected file, salted and hashed.
struct Owner {
  std::string hash;
  bool allowRead = false;

  static Owner Make(std::string_view name, bool allowRead);
  [[nodiscard]] bool IsNamed(std::string_view name) const;
};

// The form of the header entries, sealed JSON; nothing where the bytes are none.
std::string ToBytes(const FileDescription& description);
std::optional<FileDescription> DescriptionFromBytes(std::string_view bytes);
std::string ToBytes(const Owner& owner);
std::optional<Owner> OwnerFromBytes(std::string_view bytes);

constexpr char DescriptionName = 'd';
constexpr char OwnerName = 'o';

}  // namespace larkmoor::store::lmdb
