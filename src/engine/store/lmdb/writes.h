// What an insert, an update and a delete do to the tree.
#pragma once

#include <span>
#include <vector>

#include "engine/store/lmdb/format.h"
#include "engine/store/lmdb/transactions.h"

namespace larkmoor::store::lmdb {

/// A key entry to be taken out and one to be put in its place.
struct KeyChange {
  const KeyDescription* key;
  EncodedKey from;
  EncodedKey to;
};

/// A stamp for a write.
Stamp NewStamp();

/// Whether any record has that key value.
bool HasKey(const Writing& writing, std::int16_t keyNumber, const EncodedKey& key);

/// One above the highest number on an auto-increment key, at least 1; 0 where the type's range is
/// used up.
std::int64_t NextNumber(const Writing& writing, const KeyDescription& key);

// Each answers LMDB's code. The entries of keys are summed up in the counters.
int PutRecord(const Writing& writing, RecordNumber number, Stamp stamp,
              std::span<const std::byte> record);
int PutCounters(const Writing& writing, const Counters& counters);
int PutKey(const Writing& writing, const EntryKey& entry, Counters& counters);
int RemoveKey(const Writing& writing, const EntryKey& entry, Counters& counters);
int RemoveRecord(const Writing& writing, RecordNumber number);

}  // namespace larkmoor::store::lmdb
