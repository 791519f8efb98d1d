// One read-only file in a company that can be written otherwise.
#pragma once

#include <filesystem>
#include <utility>

#include "support/record_files.h"

namespace larkmoor::test {

/// `WhereReadOnly` for objects that open further files for writing: all others of the folder can be
/// written.
template <typename Body>
void WhereOnlyThisIsReadOnly(const std::filesystem::path& path, Body&& body) {
  using std::filesystem::perms;
  constexpr perms WrittenByAll =
      perms::group_read | perms::group_write | perms::others_read | perms::others_write;
  // Whoever may not write the folder cannot make a lock file there either.
  for (const auto& file : std::filesystem::directory_iterator(path.parent_path())) {
    if (file.path().extension() == ".dat") {
      TovrinFile().btOpen(file.path().string(), TovrinFile::ReadOnlyMode);
    }
  }
  for (const auto& file : std::filesystem::directory_iterator(path.parent_path())) {
    std::filesystem::permissions(file, WrittenByAll, std::filesystem::perm_options::add);
  }
  WhereReadOnly(path, std::forward<Body>(body));
}

}  // namespace larkmoor::test
