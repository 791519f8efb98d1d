// Records what the process does to record files. A program that is linked with this has its calls
// of `pwrite`, `fdatasync` and their kin come here first, those of its libraries among them.
#pragma once

#include <string>
#include <vector>

namespace larkmoor::trials {

/// From now on every write, change of length and sync of these files, which are there already, is
/// written to `recording`; so is what becomes of new files beside them, but for lock files. All of
/// them lie in one folder. One thread may work on them.
void StartRecording(const std::string& recording, const std::vector<std::string>& files);

/// Puts a line between what is recorded.
void RecordLine(const std::string& line);

}  // namespace larkmoor::trials
