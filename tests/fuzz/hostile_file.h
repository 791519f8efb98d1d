// Record files as nobody should have made them.
#pragma once

#include <filesystem>

#include "fuzz/targets.h"

namespace larkmoor::fuzz {

/// Puts the file that an input tells in the place of the one at `path`, and tells whether it is a
/// sound one: a sample as it was made.
///
/// The first byte says what it is. 0: the bytes that follow are the file. Up to 127: one of the
/// samples, with edits. An edit is a page, a place in it (two bytes), a count, and as many bytes to
/// put there; a count of 0 cuts the file off at that place. From 128 on: a sample with entries that
/// were put into its tree, as `PutEntries` takes them.
bool MakeHostileFile(const std::filesystem::path& path, Input input);

}  // namespace larkmoor::fuzz
