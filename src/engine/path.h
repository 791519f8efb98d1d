// From paths as clients spell them to files of the host.
#pragma once

#include <sys/types.h>

#include <filesystem>
#include <string_view>

namespace larkmoor {

/// The host's path of a UTF-8 path that separates folders by "\" or "/". The last component is
/// matched with the folder's files without regard to case, an exact match first; where none matches
/// it stays as it is. Empty for a path that names no file: an empty one, one that ends in a
/// separator, one with a zero byte or one that is not UTF-8.
std::filesystem::path ResolvePath(std::string_view path);

/// The permissions of new files in a folder: whoever may read and write it may read and write them,
/// whatever the umask.
mode_t PermissionsIn(const std::filesystem::path& folder);

/// Makes the names of a folder's files safe against loss of power, where the file system can.
void SyncNames(const std::filesystem::path& folder);

}  // namespace larkmoor
