// The record files of a company folder.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace larkmoor::cli {

/// Connects to the company in `folder`. Raises a `Failure` with the status where it is none.
void Connect(const std::string& folder);

/// The record file of that name in any case of letters. Raises a `Failure` with status 12 where the
/// folder has none.
std::filesystem::path FindRecordFile(const std::string& folder, const std::string& name);

/// The one record file of that name, or all of the folder in alphabetical order for an empty name.
/// Raises a `Failure` where there is none.
std::vector<std::filesystem::path> RecordFiles(const std::string& folder, const std::string& name);

}  // namespace larkmoor::cli
