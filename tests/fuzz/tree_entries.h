// Entries of a record file's tree, as one would write them who knows the form and means harm.
#pragma once

#include <filesystem>

#include "fuzz/input_reader.h"

namespace larkmoor::fuzz {

/// Puts the entries that an input tells into the file's tree, so that pages and checksums are sound
/// and only what the entries say is not.
///
/// An entry is the length of its key, the key, the length of its value (two bytes), the value;
/// without a value the entry is taken out. Those of the header and of records get the checksums
/// that they have to have. The counters are counted anew.
void PutEntries(const std::filesystem::path& path, InputReader& input);

}  // namespace larkmoor::fuzz
