#include "engine/store/lmdb/writes.h"

#include <unistd.h>

#include <algorithm>
#include <cstring>
#include <limits>
#include <random>
#include <string>

#include "engine/store/lmdb/record_value.h"
#include "engine/store/lmdb/seal.h"

namespace larkmoor::store::lmdb {
namespace {

class WriteCursor {
 public:
  explicit WriteCursor(const Writing& writing) {
    mdb_cursor_open(writing.Transaction(), writing.Tree(), &cursor_);
  }
  ~WriteCursor() {
    if (cursor_ != nullptr) mdb_cursor_close(cursor_);
  }
  WriteCursor(const WriteCursor&) = delete;
  WriteCursor& operator=(const WriteCursor&) = delete;

  /// The last entry below `key`, or whether there is one that begins with it.
  bool Below(const EntryKey& key, MDB_val& entry) {
    MDB_val value;
    entry = key.Value();
    const int code = mdb_cursor_get(cursor_, &entry, &value, MDB_SET_RANGE);
    return mdb_cursor_get(cursor_, &entry, &value, code == MDB_SUCCESS ? MDB_PREV : MDB_LAST) ==
           MDB_SUCCESS;
  }
  bool FindsBeginning(const EntryKey& key) {
    MDB_val entry = key.Value();
    MDB_val value;
    return mdb_cursor_get(cursor_, &entry, &value, MDB_SET_RANGE) == MDB_SUCCESS &&
           key.Begins(entry);
  }

 private:
  MDB_cursor* cursor_ = nullptr;
};

}  // namespace

Stamp NewStamp() {
  thread_local pid_t process = 0;
  thread_local std::mt19937_64 stamps;
  // A forked process must not give the stamps that its parent and its siblings give.
  if (process != getpid()) {
    process = getpid();
    std::random_device source;
    std::seed_seq seed{source(), source(), source(), source()};
    stamps.seed(seed);
  }
  return stamps();
}

bool HasKey(const Writing& writing, std::int16_t keyNumber, const EncodedKey& key) {
  return WriteCursor(writing).FindsBeginning(EntryKey::OfKey(keyNumber, key));
}

std::int64_t NextNumber(const Writing& writing, const KeyDescription& key) {
  const KeySegment& segment = key.segments.front();
  const std::int64_t limit = segment.type == SegmentType::Integer
                                 ? std::numeric_limits<std::int16_t>::max()
                                 : std::numeric_limits<std::int32_t>::max();
  MDB_val entry;
  std::int64_t highest = 0;
  const EntryKey behind = EntryKey::BeforeKey(static_cast<std::int16_t>(key.number + 1));
  if (WriteCursor(writing).Below(behind, entry) && IsOfKey(entry, key.number)) {
    highest = DecodeNumber(
        segment, std::span(static_cast<const std::byte*>(entry.mv_data) + 1, segment.width));
  }
  return highest >= limit ? 0 : std::max<std::int64_t>(highest, 0) + 1;
}

int PutRecord(const Writing& writing, RecordNumber number, Stamp stamp,
              std::span<const std::byte> record) {
  const EntryKey entry = EntryKey::OfRecord(number);
  MDB_val key = entry.Value();
  std::vector<std::byte> bytes = RecordValue(number, stamp, record);
  MDB_val value{bytes.size(), bytes.data()};
  return mdb_put(writing.Transaction(), writing.Tree(), &key, &value, 0);
}

int PutCounters(const Writing& writing, const Counters& counters) {
  const EntryKey name = EntryKey::OfCounters();
  MDB_val key = name.Value();
  std::string bytes = ToBytes(counters);
  MDB_val value{bytes.size(), bytes.data()};
  return mdb_put(writing.Transaction(), writing.Tree(), &key, &value, 0);
}

int PutKey(const Writing& writing, const EntryKey& entry, Counters& counters) {
  counters.keyEntries += Checksum(entry.Bytes());
  MDB_val key = entry.Value();
  MDB_val value{0, nullptr};
  return mdb_put(writing.Transaction(), writing.Tree(), &key, &value, 0);
}

int RemoveKey(const Writing& writing, const EntryKey& entry, Counters& counters) {
  counters.keyEntries -= Checksum(entry.Bytes());
  MDB_val key = entry.Value();
  return mdb_del(writing.Transaction(), writing.Tree(), &key, nullptr);
}

int RemoveRecord(const Writing& writing, RecordNumber number) {
  const EntryKey entry = EntryKey::OfRecord(number);
  MDB_val key = entry.Value();
  return mdb_del(writing.Transaction(), writing.Tree(), &key, nullptr);
}

}  // namespace larkmoor::store::lmdb
