#include "engine/store/lmdb/environment.h"

#include <linux/magic.h>
#include <sys/vfs.h>
#include <unistd.h>

#include <cerrno>
#include <map>
#include <mutex>
#include <utility>

#include <pthread.h>

#include <larkmoor/status.h>

#include "engine/store/lmdb/failure.h"
#include "engine/store/lmdb/soundness.h"

namespace larkmoor::store::lmdb {
namespace {

/// One opened file and how many share it.
struct Shared {
  std::unique_ptr<Environment> environment;
  int users = 0;
};

/// The process's open files. LMDB must not open a file twice in one process.
class Registry {
 public:
  static Registry& Instance() {
    // Never destroyed, as objects of clients may close files after this would have gone.
    static auto* registry = new Registry;
    return *registry;
  }

  std::mutex mutex;
  std::map<FileIdentity, Shared> files;

 private:
  Registry() {
    // A forked child must not touch its parent's environments, nor find them here.
    pthread_atfork([] { Instance().mutex.lock(); }, [] { Instance().mutex.unlock(); },
                   [] {
                     for (auto& [identity, shared] : Instance().files) {
                       static_cast<void>(shared.environment.release());
                     }
                     Instance().files.clear();
                     Instance().mutex.unlock();
                   });
  }
};

/// LMDB's locks and its memory map do not hold across machines.
bool OnNetworkFileSystem(const std::filesystem::path& path) {
  constexpr long Cifs = 0xFF534D42L;
  constexpr long Smb2 = 0xFE534D42L;
  struct statfs status {};
  if (statfs(path.c_str(), &status) != 0) return false;
  const auto type = static_cast<long>(status.f_type & 0xFFFFFFFFL);
  return type == NFS_SUPER_MAGIC || type == SMB_SUPER_MAGIC || type == Cifs || type == Smb2 ||
         type == AFS_SUPER_MAGIC || type == CODA_SUPER_MAGIC || type == NCP_SUPER_MAGIC;
}

/// An environment handle of the file; `permissions` are for what LMDB makes.
Status OpenWith(const std::filesystem::path& path, unsigned flags, mode_t permissions,
                MDB_env*& handle) {
  int code = mdb_env_create(&handle);
  if (code != MDB_SUCCESS) return OpenStatusOf(code);
  mdb_env_set_mapsize(handle, MapSize);
  code = mdb_env_open(handle, path.c_str(), MDB_NOSUBDIR | flags, permissions);
  if (code == MDB_SUCCESS) return StatusSuccess;
  mdb_env_close(handle);
  return OpenStatusOf(code);
}

}  // namespace

std::optional<Counters> ReadCounters(MDB_txn* transaction, MDB_dbi tree) {
  const auto bytes = ReadEntry(transaction, tree, EntryKey::OfCounters());
  return bytes ? CountersFromBytes(*bytes) : Counters();  // there are none before the first record
}

std::optional<std::string_view> ReadEntry(MDB_txn* transaction, MDB_dbi tree, const EntryKey& key) {
  MDB_val name = key.Value();
  MDB_val value;
  if (mdb_get(transaction, tree, &name, &value) != MDB_SUCCESS) return std::nullopt;
  return std::string_view(static_cast<const char*>(value.mv_data), value.mv_size);
}

Status OpenAlone(const std::filesystem::path& path, unsigned flags, MDB_env*& handle) {
  constexpr mode_t OwnerOnly = 0600;
  return OpenWith(path, MDB_NOLOCK | flags, OwnerOnly, handle);
}

Status Environment::Sync() {
  if (!unsynced_.exchange(false)) return StatusSuccess;
  const int code = mdb_env_sync(Handle(), 1);
  if (code != MDB_SUCCESS) unsynced_ = true;
  return StatusOf(code);
}

std::size_t Environment::LastCommit() const {
  MDB_envinfo info{};
  mdb_env_info(Handle(), &info);
  return info.me_last_txnid;
}

bool Environment::BeginPlainRead() {
  if (Writable()) return true;
  const std::lock_guard lock(plainReadsMutex_);
  if (plainReads_ == 0 && !file_.LockReading()) return false;
  ++plainReads_;
  return true;
}

void Environment::EndPlainRead() {
  if (Writable()) return;
  const std::lock_guard lock(plainReadsMutex_);
  if (--plainReads_ == 0) file_.UnlockCommitting();
}

void Environment::NoteCommit() {
  unsynced_ = true;
  NoteState();
}

void Environment::NoteState() {
  Reach();
  lockFile_.Note(file_.Mark());
}

/// Makes the file reach as far as its pages are given out, though the last ones may be free: so a
/// reader never meets the end of the file.
void Environment::Reach() {
  MDB_envinfo info{};
  MDB_stat stat{};
  mdb_env_info(Handle(), &info);
  mdb_env_stat(Handle(), &stat);
  const auto length = static_cast<off_t>((info.me_last_pgno + 1) * stat.ms_psize);
  if (file_.Size() < length) file_.Extend(length);
}

Status Environment::Open(const std::filesystem::path& name, DataFile file) {
  // The lock file lies beside the file itself, whatever links lead there.
  std::error_code failed;
  const std::filesystem::path path = std::filesystem::canonical(name, failed);
  if (failed) return OpenStatusOf(failed.value());
  file_ = std::move(file);
  folder_ = path.parent_path();
  if (!file_.IsLmdb()) return StatusNotARecordFile;  // of an empty file LMDB would make a new one
  if (OnNetworkFileSystem(path)) return StatusIOError;
  const Status status = file_.Writable() ? OpenToWrite(path) : OpenToRead(path);
  return status == StatusSuccess ? ReadDescription() : status;
}

Status Environment::OpenToWrite(const std::filesystem::path& path) {
  if (!file_.LockOpening()) return StatusIOError;
  unlink(CompactedCopyOf(path).c_str());
  Status status = PairWithLockFile(path);
  if (status == StatusSuccess) status = CheckAlone();
  if (status == StatusSuccess) status = OpenHandle(path);
  if (status == StatusSuccess && !lockFile_.Tells(file_.Mark())) NoteState();
  if (status == StatusSuccess && !file_.LockInUse(lockFile_)) status = StatusIOError;
  file_.UnlockOpening();
  return status;
}

Status Environment::OpenToRead(const std::filesystem::path& path) {
  lockFile_.Open(LockFile::PathFor(path), file_);
  const Status status = CheckBesideWriters();
  return status == StatusSuccess ? OpenHandle(path) : status;
}

Status Environment::PairWithLockFile(const std::filesystem::path& path) {
  const std::filesystem::path lockPath = LockFile::PathFor(path);
  if (lockFile_.Open(lockPath, file_)) {
    return file_.InUseThroughAnother(lockFile_) ? StatusFileInUse : StatusSuccess;
  }
  // Others may have it open through a lock file that is no longer beside it.
  if (!file_.LockAlone()) return StatusFileInUse;
  return lockFile_.Make(lockPath, file_) ? StatusSuccess : OpenStatusOf(errno);
}

/// LMDB is not to meet what others than the store have written. Whoever has the file open has
/// looked already.
Status Environment::CheckAlone() {
  if (lockFile_.Tells(file_.Mark()) || !file_.LockAlone()) return StatusSuccess;
  return FindFault(file_) ? StatusNotARecordFile : StatusSuccess;
}

/// The same where nothing can be noted, nor writers be kept away for long. A file on which nobody
/// leaves a mark is looked at once in the life of the process.
Status Environment::CheckBesideWriters() {
  static std::map<FileIdentity, FileMark> lookedAt;  // guarded by the registry's mutex
  constexpr int Tries = 3;
  for (int i = 0; i < Tries; ++i) {
    if (!file_.LockReading()) return StatusIOError;
    const FileMark mark = file_.Mark();
    const auto known = lookedAt.find(file_.Identity());
    const bool sound = lockFile_.Tells(mark) ||
                       (known != lookedAt.end() && known->second == mark) || !FindFault(file_);
    const bool changed = file_.Mark() != mark;
    file_.UnlockCommitting();
    if (sound) lookedAt[file_.Identity()] = mark;
    if (sound) return StatusSuccess;
    if (!changed) break;
  }
  return StatusNotARecordFile;
}

Status Environment::OpenHandle(const std::filesystem::path& path) {
  // Without the second sync of a commit: after loss of power the file may be one commit old, never
  // damaged.
  constexpr unsigned ToWrite = MDB_NOMETASYNC | MDB_NOTLS;
  constexpr unsigned ToRead = MDB_RDONLY | MDB_NOTLS;
  MDB_env* handle = nullptr;
  const Status status = file_.Writable() ? OpenWith(path, ToWrite, file_.Permissions(), handle)
                                         : OpenAlone(path, ToRead, handle);
  if (status == StatusSuccess) handle_.reset(handle);
  return status;
}

Status Environment::ReadDescription() {
  if (!BeginPlainRead()) return StatusIOError;
  MDB_txn* transaction = nullptr;
  int code = mdb_txn_begin(Handle(), nullptr, MDB_RDONLY, &transaction);
  if (code == MDB_SUCCESS) code = mdb_dbi_open(transaction, nullptr, 0, &tree_);
  std::optional<FileDescription> description;
  if (code == MDB_SUCCESS) {
    const auto text = ReadEntry(transaction, tree_, EntryKey::OfHeader(DescriptionName));
    if (text) description = DescriptionFromBytes(*text);
  }
  mdb_txn_abort(transaction);
  EndPlainRead();
  if (code != MDB_SUCCESS) return OpenStatusOf(code);
  if (!description) return StatusNotARecordFile;
  description_ = std::move(*description);
  return StatusSuccess;
}

EnvironmentRef::EnvironmentRef(EnvironmentRef&& other) noexcept { *this = std::move(other); }

EnvironmentRef& EnvironmentRef::operator=(EnvironmentRef&& other) noexcept {
  std::swap(environment_, other.environment_);
  return *this;
}

Status EnvironmentRef::Acquire(const std::filesystem::path& path, EnvironmentRef& ref) {
  ref.Release();
  Registry& registry = Registry::Instance();
  const std::lock_guard lock(registry.mutex);
  DataFile file;
  Status status = file.Open(path);
  if (status != StatusSuccess) return status;
  Shared& shared = registry.files[file.Identity()];
  if (shared.environment == nullptr) {
    const FileIdentity identity = file.Identity();
    std::unique_ptr<Environment> environment(new Environment);
    status = environment->Open(path, std::move(file));
    // While waiting for others the file may have been replaced by its compacted form.
    if (status == StatusSuccess && !environment->file_.IsAt(path)) status = StatusFileInUse;
    if (status != StatusSuccess) {
      registry.files.erase(identity);
      return status;
    }
    shared.environment = std::move(environment);
  }
  ++shared.users;
  ref.environment_ = shared.environment.get();
  return StatusSuccess;
}

bool EnvironmentRef::InUse(const FileIdentity& identity) {
  Registry& registry = Registry::Instance();
  const std::lock_guard lock(registry.mutex);
  return registry.files.contains(identity);
}

void EnvironmentRef::Release() {
  if (environment_ == nullptr) return;
  Registry& registry = Registry::Instance();
  const std::lock_guard lock(registry.mutex);
  const auto found = registry.files.find(environment_->file_.Identity());
  environment_ = nullptr;
  if (found != registry.files.end() && --found->second.users == 0) registry.files.erase(found);
}

}  // namespace larkmoor::store::lmdb
