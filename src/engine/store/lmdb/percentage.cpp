#include "engine/store/lmdb/percentage.h"

#include <algorithm>
#include <cmath>

#include "engine/store/lmdb/record_value.h"
#include "engine/store/lmdb/search.h"

namespace larkmoor::store::lmdb {
namespace {

/// Up to so many records every entry is counted.
constexpr std::uint64_t CountedExactly = 4096;
constexpr std::uint64_t SampleSize = 1024;

bool Precedes(const EntryKey& left, const EntryKey& right) {
  return std::ranges::lexicographical_compare(left.Bytes(), right.Bytes());
}

}  // namespace

KeySpread::KeySpread(const Reading& reading, const KeyDescription& key, std::size_t recordLength) {
  const auto counters = ReadCounters(reading.Transaction(), reading.Tree()).value_or(Counters());
  if (counters.records <= CountedExactly) {
    TakeAll(reading, key);
  } else {
    TakeSample(reading, key, recordLength, counters.next);
  }
}

void KeySpread::TakeAll(const Reading& reading, const KeyDescription& key) {
  Cursor cursor(reading);
  int code = SearchKey(cursor, Seek::First, key, {});
  while (code == MDB_SUCCESS && IsOfKey(cursor.Entry(), key.number)) {
    entries_.push_back(EntryKey::CopyOf(cursor.Entry()));
    code = cursor.Move(MDB_NEXT);
  }
}

void KeySpread::TakeSample(const Reading& reading, const KeyDescription& key,
                           std::size_t recordLength, RecordNumber end) {
  Cursor cursor(reading);
  Stamp stamp;
  std::vector<std::byte> record(recordLength);
  for (std::uint64_t i = 0; i < SampleSize; ++i) {
    const RecordNumber number = 1 + end / SampleSize * i + end % SampleSize * i / SampleSize;
    if (cursor.AtOrAbove(EntryKey::OfRecord(number)) != MDB_SUCCESS || !IsRecord(cursor.Entry())) {
      continue;
    }
    const RecordNumber found = NumberIn(cursor.Entry());
    if (!ReadRecordValue(found, BytesOf(cursor.Value()), stamp, record)) continue;
    entries_.push_back(EntryKey::OfKey(key.number, EncodeKeyOf(key, record), found));
  }
  for (const Seek end_of_path : {Seek::First, Seek::Last}) {
    if (SearchKey(cursor, end_of_path, key, {}) == MDB_SUCCESS) {
      entries_.push_back(EntryKey::CopyOf(cursor.Entry()));
    }
  }
  std::ranges::sort(entries_, Precedes);
}

double KeySpread::PercentOf(const EntryKey& entry) const {
  if (entries_.size() < 2) return 0;
  const auto place = std::ranges::lower_bound(entries_, entry, Precedes);
  const auto before = std::min<std::ptrdiff_t>(place - entries_.begin(),
                                               static_cast<std::ptrdiff_t>(entries_.size()) - 1);
  return 100.0 * static_cast<double>(before) / static_cast<double>(entries_.size() - 1);
}

std::optional<EntryKey> KeySpread::EntryAt(double percent) const {
  if (entries_.empty()) return std::nullopt;
  const double share = percent > 0 ? std::min(percent, 100.0) / 100.0 : 0;  // of a NaN the first
  const double place = std::round(share * static_cast<double>(entries_.size() - 1));
  return entries_[static_cast<std::size_t>(place)];
}

}  // namespace larkmoor::store::lmdb
