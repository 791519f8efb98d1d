// A "VERSION.TXT" of hostile bytes, in a folder with a company file: the release that it tells, and
// the connection on it.
#include "connection/company_version.h"

#include <cmath>
#include <string>

#include <larkmoor/connection/btrieve.h>
#include <larkmoor/status.h>

#include "connection/shared_state.h"
#include "engine/tovrin_file_names.h"
#include "fuzz/input_reader.h"
#include "fuzz/restored_file.h"
#include "fuzz/shared_state_kept.h"

namespace larkmoor::fuzz {
namespace {

/// A folder that is a company as far as the connection looks.
class Folder {
 public:
  [[nodiscard]] std::string Path() const {
    return companyFile_.Path().parent_path().string() + "/";
  }

  /// The release that a version file of these bytes tells.
  [[nodiscard]] double ReleaseOf(std::string_view bytes) const {
    Overwrite(Path() + "VERSION.TXT", bytes);
    Shared().gCompanyPath = Path();
    return ReadCompanyVersion();
  }

 private:
  static store::FileDescription CompanyFile() {
    store::FileDescription description = test::LooseFile();
    description.name = std::filesystem::path(TovrinFileNames::CompanyFile()).stem().string();
    return description;
  }

  RestoredFile companyFile_{CompanyFile()};
};

void CheckConnection(const Folder& folder, double release) {
  Btrieve connection;
  const auto connections = connection.ConnectCount();
  const Status expected = release == 0 ? StatusInvalidFileName : StatusSuccess;
  Must(connection.Connect(folder.Path()).ToInteger() == expected,
       "a folder that tells a release connects, and no other does");
  Must(connection.ConnectCount() == connections + (release == 0 ? 0 : 1),
       "a connection counts where it succeeds");
}

/// An "F" ahead makes the last five characters the number.
void CheckMark(const Folder& folder, std::string_view field, double release) {
  constexpr std::size_t VersionLength = 5;
  if (field.starts_with('F') || field.size() > VersionLength) return;
  const std::string marked =
      "F" + std::string(VersionLength - field.size(), ' ') + std::string(field);
  Must(folder.ReleaseOf(marked) == release, "a marked field tells what a plain one tells");
}

}  // namespace

void CompanyVersion(Input input) {
  static const Folder folder;
  const SharedStateKept kept;
  const std::string_view bytes = TextOf(input);
  const std::string_view field = bytes.substr(0, bytes.find_first_of(",\r\n"));
  const double release = folder.ReleaseOf(bytes);
  Must(std::isfinite(release), "a release is a number");
  CheckConnection(folder, release);
  Must(folder.ReleaseOf(field) == release, "the first field alone tells the release");
  CheckMark(folder, field, release);
}

}  // namespace larkmoor::fuzz
