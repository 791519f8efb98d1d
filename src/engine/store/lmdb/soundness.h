// Whether a file can be given to LMDB.
#pragma once

#include <optional>
#include <string>

#include "engine/store/lmdb/file_locks.h"

namespace larkmoor::store::lmdb {

/// Reads every page that is in use and every entry, and tells the first thing found that is not as
/// the store writes it; nothing in a sound file. What the values of records hold is left to their
/// reads. Nobody may write to the file meanwhile.
std::optional<std::string> FindFault(const DataFile& file);

}  // namespace larkmoor::store::lmdb
