#include "engine/records/company.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <iterator>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

#include <larkmoor/company.h>
#include <larkmoor/error.h>
#include <larkmoor/status.h>

#include "connection/first_settings.h"
#include "connection/status_messages.h"
#include "engine/path.h"
#include "engine/records/all_records.h"
#include "engine/records/employee_aux1.h"
#include "engine/records/general_row.h"
#include "engine/runtime_error.h"
#include "engine/tovrin_file.h"
#include "engine/tovrin_record.h"

namespace larkmoor {
namespace {

namespace fs = std::filesystem;

constexpr double FirstRelease = 8.0;
constexpr double LastRelease = 19.0;
constexpr std::int32_t InvalidCall = 5;
constexpr std::int32_t FileNumber = 57;  // "Device I/O error" in the classic numbering

/// Raises an error about the company that is being made.
[[noreturn]] void Fail(const fs::path& what, const std::string& why, Status status) {
  throw Error(FileNumber, "Larkmoor", what.string() + ": " + why, status);
}

void Check(Status status, const fs::path& file) {
  if (status != StatusSuccess) Fail(file, BtrieveErrorText(status), status);
}

/// What has been made so far; taken away again unless the company is finished.
class Made {
 public:
  ~Made() {
    for (const fs::path& file : recordFiles_) store::DefaultDriver().Remove(file);
    std::error_code ignored;
    for (auto path = paths_.rbegin(); path != paths_.rend(); ++path) fs::remove(*path, ignored);
  }
  Made() = default;
  Made(const Made&) = delete;
  Made& operator=(const Made&) = delete;

  void Note(const fs::path& path) { paths_.push_back(path); }
  void NoteRecordFile(const fs::path& path) { recordFiles_.push_back(path); }
  void Finish() {
    paths_.clear();
    recordFiles_.clear();
  }

 private:
  std::vector<fs::path> paths_;
  std::vector<fs::path> recordFiles_;
};

/// Makes the folder and those above it that are missing.
void MakeFolder(const fs::path& folder, Made& made) {
  std::error_code failed;
  if (folder.empty() || fs::is_directory(folder, failed)) return;
  const fs::path above =
      folder.has_filename() ? folder.parent_path() : folder.parent_path().parent_path();
  if (above != folder) MakeFolder(above, made);
  if (!folder.has_filename()) return;
  if (fs::create_directory(folder, failed)) return made.Note(folder);
  if (failed) Fail(folder, failed.message(), StatusInvalidFileName);  // else someone was quicker
}

/// The folder's file of that name in any case.
fs::path PathOf(const fs::path& folder, std::string_view name) {
  return ResolvePath((folder / name).string());
}

void CheckIsFree(const fs::path& folder) {
  std::vector<std::string_view> names{"VERSION.TXT"};
  for (const RecordDescription* record : AllRecords()) names.push_back(record->fileName);
  for (const std::string_view name : names) {
    if (fs::exists(fs::symlink_status(PathOf(folder, name)))) {
      Fail(folder, "the folder holds a company already", StatusFileExists);
    }
  }
}

/// The version text of a release: the connection maps it back by taking 3 away.
std::string VersionText(double release) {
  const double version = release + 3;
  char text[32];
  const bool hundredths = version * 100 == std::round(version * 100);
  std::snprintf(text, sizeof text, hundredths ? "%.2f" : "%.17g", version);
  return text;
}

/// A descriptor that is closed at the end.
class Descriptor {
 public:
  explicit Descriptor(int number) : number_(number) {}
  ~Descriptor() { close(number_); }
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;

  [[nodiscard]] int Number() const { return number_; }

 private:
  int number_;
};

/// Makes the file that tells a company: as the last one, so that nobody connects to a half. What
/// bears its name by then, a link among it, is in the way.
void MakeVersionFile(const fs::path& folder, double release, Made& made) {
  const fs::path path = folder / "VERSION.TXT";
  const Descriptor file(open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600));
  if (file.Number() < 0) {
    Fail(path, std::strerror(errno), errno == EEXIST ? StatusFileExists : StatusPermission);
  }
  made.Note(path);
  const std::string text = VersionText(release) + "\r\n";
  const bool done = write(file.Number(), text.data(), text.size()) == std::ssize(text) &&
                    fchmod(file.Number(), PermissionsIn(folder)) == 0 && fsync(file.Number()) == 0;
  if (!done) Fail(path, std::strerror(errno), errno == ENOSPC ? StatusDiskFull : StatusIOError);
}

void MakeRecordFiles(const fs::path& folder, double release, Made& made) {
  for (const RecordDescription* record : AllRecords()) {
    if (record->base != nullptr) continue;
    const fs::path path = folder / record->fileName;
    Check(store::DefaultDriver().Create(path, record->FileFor(release)), path);
    made.NoteRecordFile(path);
  }
}

/// Opens a file of the new company, binds a record to it and inserts what `fill` puts there.
template <typename Fill>
void InsertRow(const fs::path& folder, const RecordDescription& description, Fill fill) {
  const fs::path path = folder / description.fileName;
  TovrinFile file;
  Check(file.btOpen(path.string(), TovrinFile::NormalMode), path);
  Tovrin2Record record(description);
  record.AttachBuffer(file.RecordBuffer());
  record.ClearBuffer();
  fill(record);
  Check(file.btInsert(0), path);
  Check(file.btClose(), path);
}

void InsertSettings(const fs::path& folder, const CompanyOptions& options) {
  for (const FirstSettings& row : AllFirstSettings()) {
    InsertRow(folder, row.describe(), [&](Tovrin2Record& record) {
      record.SetInteger(GeneralRowRecord::RowType, row.describe().rowMark->value);
      row.fill(record, options);
    });
  }
}

/// From release 19 on the company's payroll fields are rows of their own: 40 that employees pay,
/// and 40 that the employer pays.
void InsertPayrollFields(const fs::path& folder, double release) {
  constexpr double FirstReleaseWithRows = 19.0;
  constexpr std::int32_t Fields = 80;
  if (release < FirstReleaseWithRows) return;
  for (std::int32_t number = 0; number < Fields; ++number) {
    InsertRow(folder, EmployeeAux1Record::Describe(), [number](Tovrin2Record& record) {
      record.SetLong(EmployeeAux1Record::RowNumber, number);
    });
  }
}

}  // namespace

void CreateCompany(const fs::path& folder, const CompanyOptions& options) {
  if (!(options.Release >= FirstRelease && options.Release <= LastRelease)) {
    throw Error(InvalidCall, "Larkmoor", "The release of a company is a number from 8.0 to 19.0");
  }
  if (!options.FiscalYearStart.IsValid()) {
    throw Error(InvalidCall, "Larkmoor", "A fiscal year begins in the years 100 to 9999");
  }
  if (folder.empty()) Fail(folder, "the folder has no name", StatusInvalidFileName);
  Made made;
  MakeFolder(folder, made);
  CheckIsFree(folder);
  MakeRecordFiles(folder, options.Release, made);
  const auto batch = store::DefaultDriver().BeginBatch();
  InsertRow(folder, CompanyRecord::Describe(), [&](Tovrin2Record& record) {
    record.SetText(CompanyRecord::CompanyName, options.Name);
  });
  InsertSettings(folder, options);
  InsertPayrollFields(folder, options.Release);
  Check(batch->Commit(), folder);
  MakeVersionFile(folder, options.Release, made);
  SyncNames(folder);
  made.Finish();
}

}  // namespace larkmoor
