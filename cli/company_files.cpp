#include "company_files.h"

#include <algorithm>
#include <system_error>

#include <larkmoor/connection/btrieve.h>
#include <larkmoor/status.h>

#include "engine/text.h"
#include "failure.h"

namespace larkmoor::cli {
namespace {

namespace fs = std::filesystem;

/// Files of the folder with the extension ".dat" in any case of letters.
std::vector<fs::path> DatFiles(const std::string& folder) {
  std::vector<fs::path> files;
  std::error_code error;
  for (fs::directory_iterator at(folder, error), end; !error && at != end; at.increment(error)) {
    std::error_code ignored;
    if (!EqualIgnoringCase(at->path().extension().string(), ".dat")) continue;
    if (!at->is_directory(ignored)) files.push_back(at->path());
  }
  if (error) throw Failure(folder + ": " + error.message());
  std::ranges::sort(files);
  return files;
}

}  // namespace

void Connect(const std::string& folder) {
  Btrieve connection;
  Require(connection.Connect(folder).ToInteger(), folder.empty() ? "no folder" : folder);
}

fs::path FindRecordFile(const std::string& folder, const std::string& name) {
  for (const fs::path& file : DatFiles(folder)) {
    if (EqualIgnoringCase(file.filename().string(), name)) return file;
  }
  throw Failure(name + ": " + StatusTitle(StatusFileNotFound));
}

std::vector<fs::path> RecordFiles(const std::string& folder, const std::string& name) {
  if (!name.empty()) return {FindRecordFile(folder, name)};
  std::vector<fs::path> files = DatFiles(folder);
  if (files.empty()) throw Failure(folder + " holds no record files");
  return files;
}

}  // namespace larkmoor::cli
