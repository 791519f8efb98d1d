// From paths as clients spell them to files of the host.
#pragma once

#include <filesystem>
#include <string_view>

namespace larkmoor {

/// The host's path of a UTF-8 path that separates folders by "\" or "/". The last component is
/// matched with the folder's files without regard to case, an exact match first; where none matches
/// it stays as it is. Empty for a path that names no file: an empty one, one that ends in a
/// separator, one with a zero byte or one that is not UTF-8.
std::filesystem::path ResolvePath(std::string_view path);

}  // namespace larkmoor
