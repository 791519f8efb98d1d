// The embedded driver: every record file is one LMDB file.

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <random>

#include <larkmoor/status.h>

#include "engine/path.h"
#include "engine/store/driver.h"
#include "engine/store/lmdb/failure.h"
#include "engine/store/lmdb/lmdb_file.h"
#include "engine/store/lmdb/soundness.h"
#include "engine/store/lmdb/verify.h"
#include "engine/store/lmdb/writes.h"

namespace larkmoor::store {
namespace lmdb {
namespace {

namespace fs = std::filesystem;

constexpr std::int16_t EngineMajor = 1;
constexpr std::int16_t EngineMinor = 0;

struct EnvCloser {
  void operator()(MDB_env* env) const { mdb_env_close(env); }
};
using EnvHandle = std::unique_ptr<MDB_env, EnvCloser>;

fs::path FolderOf(const fs::path& file) {
  return file.has_parent_path() ? file.parent_path() : fs::path(".");
}

/// A new file that nobody else uses, taken away again where nothing came of it.
class TemporaryFile {
 public:
  explicit TemporaryFile(fs::path path)
      : path_(std::move(path)),
        descriptor_(open(path_.c_str(), O_RDWR | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, 0600)),
        failure_(descriptor_ < 0 ? errno : 0) {}
  ~TemporaryFile() {
    if (descriptor_ < 0) return;
    unlink(path_.c_str());
    close(descriptor_);
  }
  TemporaryFile(const TemporaryFile&) = delete;
  TemporaryFile& operator=(const TemporaryFile&) = delete;

  [[nodiscard]] const fs::path& Path() const { return path_; }
  /// Of the empty file, which only its maker may read.
  [[nodiscard]] int Descriptor() const { return descriptor_; }
  /// Why it could not be made.
  [[nodiscard]] Status Failure() const { return OpenStatusOf(failure_); }

 private:
  fs::path path_;
  int descriptor_;
  int failure_;
};

int WriteFirstEntries(MDB_env* env, const FileDescription& description) {
  MDB_txn* transaction = nullptr;
  int code = mdb_txn_begin(env, nullptr, 0, &transaction);
  if (code != MDB_SUCCESS) return code;
  MDB_dbi tree = 0;
  code = mdb_dbi_open(transaction, nullptr, 0, &tree);
  std::string text = ToBytes(description);
  const EntryKey name = EntryKey::OfHeader(DescriptionName);
  MDB_val key = name.Value();
  MDB_val value{text.size(), text.data()};
  if (code == MDB_SUCCESS) code = mdb_put(transaction, tree, &key, &value, 0);
  if (code != MDB_SUCCESS) {
    mdb_txn_abort(transaction);
    return code;
  }
  return mdb_txn_commit(transaction);
}

Status MakeFile(const fs::path& path, const FileDescription& description) {
  MDB_env* handle = nullptr;
  const Status status = OpenAlone(path, MDB_NOSYNC, handle);
  if (status != StatusSuccess) return status;
  const EnvHandle env(handle);
  int code = WriteFirstEntries(handle, description);
  if (code == MDB_SUCCESS) code = mdb_env_sync(handle, 1);
  return StatusOf(code);
}

std::optional<Owner> OwnerOf(const Reading& reading) {
  const auto text = ReadEntry(reading.Transaction(), reading.Tree(), EntryKey::OfHeader(OwnerName));
  if (!text) return std::nullopt;
  // A protection that cannot be read protects against everyone.
  return OwnerFromBytes(*text).value_or(Owner{"*", false});
}

/// Puts an owner entry in place, or takes it away.
Status WriteOwner(ThreadView& view, const std::optional<Owner>& owner) {
  Writing writing(view);
  if (writing.Failure() != StatusSuccess) return writing.Failure();
  const EntryKey name = EntryKey::OfHeader(OwnerName);
  MDB_val key = name.Value();
  if (!owner) {
    return writing.Finish(mdb_del(writing.Transaction(), writing.Tree(), &key, nullptr));
  }
  std::string text = ToBytes(*owner);
  MDB_val value{text.size(), text.data()};
  return writing.Finish(mdb_put(writing.Transaction(), writing.Tree(), &key, &value, 0));
}

/// Puts a compacted copy in the place of a file that nobody has open.
Status Replace(const fs::path& path, mode_t permissions) {
  unlink(CompactedCopyOf(path).c_str());
  const TemporaryFile copy(CompactedCopyOf(path));
  if (copy.Failure() != StatusSuccess) return copy.Failure();
  MDB_env* handle = nullptr;
  const Status status = OpenAlone(path, MDB_RDONLY, handle);
  if (status != StatusSuccess) return status;
  const EnvHandle env(handle);
  int code = mdb_env_copyfd2(handle, copy.Descriptor(), MDB_CP_COMPACT);
  if (code == MDB_SUCCESS &&
      (fsync(copy.Descriptor()) != 0 || fchmod(copy.Descriptor(), permissions) != 0 ||
       rename(copy.Path().c_str(), path.c_str()) != 0)) {
    code = errno;
  }
  SyncNames(FolderOf(path));  // or else a loss of power would bring the former file back
  return StatusOf(code);
}

class LmdbDriver final : public Driver {
 public:
  Status Open(const fs::path& path, OpenMode mode, std::unique_ptr<File>& file) override;
  Status Create(const fs::path& path, const FileDescription& description) override;
  void Remove(const fs::path& path) override;
  [[nodiscard]] std::vector<EngineVersion> Versions() const override;
  std::unique_ptr<Batch> BeginBatch() override { return BeginThreadBatch(); }
  Status Statistics(const fs::path& path, FileStatistics& statistics) override;
  Status SetOwner(const fs::path& path, std::string_view name, bool allowRead) override;
  Status ClearOwner(const fs::path& path, std::string_view name) override;
  Status Verify(const fs::path& path, std::vector<std::string>& findings,
                const Progress& progress) override;
  Status Compact(const fs::path& path) override;
};

Status LmdbDriver::Open(const fs::path& path, OpenMode mode, std::unique_ptr<File>& file) {
  std::shared_ptr<ThreadView> view;
  const Status status = ThreadView::Of(path, view);
  if (status != StatusSuccess) return status;
  bool readOnly = mode == OpenMode::ReadOnly;
  if (!readOnly && !view->Env().Writable()) return StatusPermission;
  {
    const Reading reading(*view);
    if (reading.Failure() != StatusSuccess) return reading.Failure();
    if (const auto owner = OwnerOf(reading)) {
      if (!owner->allowRead) return StatusInvalidOwner;
      readOnly = true;
    }
  }
  file = std::make_unique<LmdbFile>(std::move(view), readOnly);
  return StatusSuccess;
}

Status LmdbDriver::Create(const fs::path& path, const FileDescription& description) {
  if (path.filename().empty()) return StatusInvalidFileName;
  // Several may be at it.
  const TemporaryFile temporary(HiddenBeside(path, std::to_string(std::random_device{}())));
  if (temporary.Failure() != StatusSuccess) return temporary.Failure();
  const Status status = MakeFile(temporary.Path(), description);
  if (status != StatusSuccess) return status;
  if (fchmod(temporary.Descriptor(), PermissionsIn(FolderOf(path))) != 0)
    return OpenStatusOf(errno);
  if (link(temporary.Path().c_str(), path.c_str()) != 0) {
    return errno == EEXIST ? StatusFileExists : OpenStatusOf(errno);
  }
  SyncNames(FolderOf(path));
  return StatusSuccess;
}

void LmdbDriver::Remove(const fs::path& path) {
  unlink(path.c_str());
  unlink(LockFile::PathFor(path).c_str());
}

std::vector<EngineVersion> LmdbDriver::Versions() const {
  return {{EngineMajor, EngineMinor, 'N'},
          {EngineMajor, EngineMinor, 'S'},
          {EngineMajor, EngineMinor, 'W'}};
}

Status LmdbDriver::Statistics(const fs::path& path, FileStatistics& statistics) {
  std::shared_ptr<ThreadView> view;
  const Status status = ThreadView::Of(path, view);
  if (status != StatusSuccess) return status;
  const Reading reading(*view);
  if (reading.Failure() != StatusSuccess) return reading.Failure();
  const auto owner = OwnerOf(reading);
  const auto counters = ReadCounters(reading.Transaction(), reading.Tree());
  if (!counters) return StatusIOError;
  statistics = {view->Env().Description(), static_cast<std::int64_t>(counters->records),
                static_cast<std::uintmax_t>(view->Env().Size()), owner.has_value(),
                owner && owner->allowRead};
  return StatusSuccess;
}

Status LmdbDriver::SetOwner(const fs::path& path, std::string_view name, bool allowRead) {
  std::shared_ptr<ThreadView> view;
  const Status status = ThreadView::Of(path, view);
  if (status != StatusSuccess) return status;
  if (!view->Env().Writable()) return StatusPermission;
  return WriteOwner(*view, Owner::Make(name, allowRead));
}

Status LmdbDriver::ClearOwner(const fs::path& path, std::string_view name) {
  std::shared_ptr<ThreadView> view;
  const Status status = ThreadView::Of(path, view);
  if (status != StatusSuccess) return status;
  if (!view->Env().Writable()) return StatusPermission;
  {
    const Reading reading(*view);
    if (reading.Failure() != StatusSuccess) return reading.Failure();
    const auto owner = OwnerOf(reading);
    if (!owner) return StatusSuccess;
    if (!owner->IsNamed(name)) return StatusInvalidOwner;
  }
  return WriteOwner(*view, std::nullopt);
}

Status LmdbDriver::Verify(const fs::path& path, std::vector<std::string>& findings,
                          const Progress& progress) {
  DataFile file;
  Status status = file.Open(path);
  if (status != StatusSuccess) return status;
  if (!file.IsLmdb()) return StatusNotARecordFile;
  if (!file.LockReading()) return StatusIOError;
  const auto fault = FindFault(file);
  file.UnlockCommitting();
  if (fault) {
    findings.push_back(*fault);
    return StatusSuccess;
  }
  std::shared_ptr<ThreadView> view;
  status = ThreadView::Of(path, view);
  return status == StatusSuccess ? VerifyFile(*view, findings, progress) : status;
}

Status LmdbDriver::Compact(const fs::path& name) {
  std::error_code failed;
  const fs::path path =
      fs::canonical(name, failed);  // the file itself, and no link that leads there
  if (failed) return OpenStatusOf(failed.value());
  DataFile file;
  const Status status = file.Open(path);
  if (status != StatusSuccess) return status;
  if (!file.Writable()) return StatusPermission;
  if (!file.IsLmdb()) return StatusNotARecordFile;
  if (EnvironmentRef::InUse(file.Identity()) || !file.LockOpening() || !file.LockAlone()) {
    return StatusFileInUse;
  }
  return FindFault(file) ? StatusNotARecordFile : Replace(path, file.Permissions());
}

}  // namespace
}  // namespace lmdb

Driver& DefaultDriver() {
  static lmdb::LmdbDriver driver;
  return driver;
}

}  // namespace larkmoor::store
