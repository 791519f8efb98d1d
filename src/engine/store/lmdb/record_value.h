// The value of a record's entry: a checksum of what follows, the stamp of the last write, then the
// record without its runs of zero bytes.
//
// Most of a record is the unused ends of its texts: a transaction's header takes 5,670 bytes, of
// which some 400 tell something. Without them a file is a small part as long, and records share the
// pages of the tree.
//
// The record is a list of pieces: how many zero bytes go ahead (16 bits), how many bytes follow
// (16 bits), and these bytes. The zero bytes behind the last piece are left out.
#pragma once

#include <cstddef>
#include <span>
#include <vector>

#include "engine/store/lmdb/format.h"

namespace larkmoor::store::lmdb {

/// The checksum covers the record's number too, so that no value is taken for another record's.
std::vector<std::byte> RecordValue(RecordNumber number, Stamp stamp,
                                   std::span<const std::byte> record);

/// Fills `stamp` and `record` from an entry's value. False, with both as they were, where that is
/// not what was written.
bool ReadRecordValue(RecordNumber number, std::span<const std::byte> value, Stamp& stamp,
                     std::span<std::byte> record);

}  // namespace larkmoor::store::lmdb
