#include "engine/path.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <string>

#include <larkmoor/error.h>

#include "engine/text.h"

namespace larkmoor {
namespace {

namespace fs = std::filesystem;

bool IsUtf8(std::string_view text) {
  try {
    FitsWindows1252(text);
    return true;
  } catch (const Error&) {
    return false;
  }
}

/// The file of the folder whose name is that one in another case, or an empty path.
fs::path MatchInFolder(const fs::path& folder, const std::string& name) {
  std::error_code failed;
  for (fs::directory_iterator entry(folder, failed), end; !failed && entry != end;
       entry.increment(failed)) {
    if (EqualIgnoringCase(entry->path().filename().native(), name)) return entry->path();
  }
  return {};
}

}  // namespace

fs::path ResolvePath(std::string_view path) {
  std::string text(path);
  std::replace(text.begin(), text.end(), '\\', '/');
  if (text.empty() || text.back() == '/' || text.find('\0') != std::string::npos || !IsUtf8(text)) {
    return {};
  }
  const fs::path exact(text);
  std::error_code failed;
  if (fs::exists(exact, failed)) return exact;
  const fs::path folder = exact.has_parent_path() ? exact.parent_path() : fs::path(".");
  const fs::path match = MatchInFolder(folder, exact.filename().native());
  return match.empty() ? exact : match;
}

mode_t PermissionsIn(const fs::path& folder) {
  struct stat status {};
  return stat(folder.c_str(), &status) == 0 ? status.st_mode & 0666U : 0600U;
}

void SyncNames(const fs::path& folder) {
  const int descriptor = open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (descriptor < 0) return;
  fsync(descriptor);
  close(descriptor);
}

}  // namespace larkmoor
