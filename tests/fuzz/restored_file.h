// A record file that each run of a target finds as it was made.
#pragma once

#include <filesystem>
#include <functional>
#include <string>
#include <string_view>

#include "engine/store/file_description.h"
#include "support/company.h"
#include "support/sample_files.h"

namespace larkmoor::fuzz {

/// Puts these bytes into a file. One that is there stays the same file, so that the lock file
/// beside it need not be made anew.
void Overwrite(const std::filesystem::path& path, std::string_view bytes);

/// A record file in a folder of its own.
class RestoredFile {
 public:
  /// Makes the file and lets `fill` put the records in that it starts with.
  explicit RestoredFile(const store::FileDescription& description,
                        const std::function<void(test::Cursor&)>& fill = {});

  [[nodiscard]] const std::filesystem::path& Path() const { return path_; }
  /// What the file held when it was made.
  [[nodiscard]] const std::string& Bytes() const { return bytes_; }
  /// Brings that back. Nobody has the file open.
  void Restore() const { Overwrite(path_, bytes_); }

 private:
  test::TempFolder folder_;
  std::filesystem::path path_;
  std::string bytes_;
};

}  // namespace larkmoor::fuzz
