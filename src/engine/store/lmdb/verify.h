// Checking a file against itself.
#pragma once

#include <string>
#include <vector>

#include "engine/store/lmdb/transactions.h"

namespace larkmoor::store::lmdb {

/// Looks at every entry of the file, in one state of it: every key entry has its record, every
/// record has its entries, and the counters count what is there. Each finding is a line of text.
Status VerifyFile(ThreadView& view, std::vector<std::string>& findings, const Progress& progress);

}  // namespace larkmoor::store::lmdb
