#include "engine/store/lmdb/environment.h"

#include <linux/magic.h>
#include <sys/vfs.h>
#include <unistd.h>

#include <cerrno>
#include <csetjmp>
#include <cstring>
#include <map>
#include <mutex>
#include <utility>

#include <pthread.h>

#include <larkmoor/status.h>

#include "engine/store/lmdb/failure.h"

namespace larkmoor::store::lmdb {
namespace {

/// Address space for one file, and so how large a file can grow. Takes no memory and no disk by
/// itself.
constexpr std::size_t MapSize = std::size_t{32} << 30;
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

/// Whether every entry can be reached and the records are as many as they should be.
bool WalkTree(MDB_txn* transaction) {
  MDB_dbi tree = 0;
  MDB_cursor* cursor = nullptr;
  if (mdb_dbi_open(transaction, nullptr, 0, &tree) != MDB_SUCCESS) return false;
  if (mdb_cursor_open(transaction, tree, &cursor) != MDB_SUCCESS) return false;
  std::uint64_t records = 0;
  MDB_val key;
  MDB_val value;
  int code = mdb_cursor_get(cursor, &key, &value, MDB_FIRST);
  for (; code == MDB_SUCCESS; code = mdb_cursor_get(cursor, &key, &value, MDB_NEXT)) {
    if (key.mv_size == 0) break;
    if (IsRecord(key)) ++records;
  }
  mdb_cursor_close(cursor);
  return code == MDB_NOTFOUND && records == ReadCounters(transaction, tree).records;
}

}  // namespace

Counters ReadCounters(MDB_txn* transaction, MDB_dbi tree) {
  Counters counters;
  const auto bytes = ReadEntry(transaction, tree, EntryKey::OfCounters());
  if (bytes && bytes->size() == sizeof counters) {
    std::memcpy(&counters, bytes->data(), sizeof counters);
  }
  return counters;
}

std::optional<std::string_view> ReadEntry(MDB_txn* transaction, MDB_dbi tree, const EntryKey& key) {
  MDB_val name = key.Value();
  MDB_val value;
  if (mdb_get(transaction, tree, &name, &value) != MDB_SUCCESS) return std::nullopt;
  return std::string_view(static_cast<const char*>(value.mv_data), value.mv_size);
}

Status OpenAlone(const std::filesystem::path& path, unsigned flags, MDB_env*& handle) {
  int code = mdb_env_create(&handle);
  if (code != MDB_SUCCESS) return OpenStatusOf(code);
  mdb_env_set_mapsize(handle, MapSize);
  code = mdb_env_open(handle, path.c_str(), MDB_NOSUBDIR | MDB_NOLOCK | flags, 0600);
  if (code == MDB_SUCCESS) return StatusSuccess;
  mdb_env_close(handle);
  return OpenStatusOf(code);
}

Status Environment::Sync() {
  if (!unsynced_.exchange(false)) return StatusSuccess;
  const int code = mdb_env_sync(Handle(), 1);
  if (code != MDB_SUCCESS) unsynced_ = true;
  return StatusOf(code);
}

off_t Environment::LengthOfTree() const {
  MDB_envinfo info{};
  MDB_stat stat{};
  mdb_env_info(Handle(), &info);
  mdb_env_stat(Handle(), &stat);
  return static_cast<off_t>(info.me_last_pgno + 1) * static_cast<off_t>(stat.ms_psize);
}

void Environment::Reach() {
  const off_t length = LengthOfTree();
  if (file_.Size() < length) file_.Extend(length);
}

Status Environment::Open(const std::filesystem::path& path, DataFile file) {
  file_ = std::move(file);
  folder_ = path.parent_path().empty() ? std::filesystem::path(".") : path.parent_path();
  lockFile_ = LockFileOf(path);
  if (!file_.IsLmdb()) return StatusNotARecordFile;  // of an empty file LMDB would make a new one
  if (OnNetworkFileSystem(path)) return StatusIOError;
  if (!file_.Writable()) {
    Status status = OpenHandle(path);
    if (status == StatusSuccess) status = CheckLength();
    return status == StatusSuccess ? ReadDescription() : status;
  }
  if (!file_.LockOpening()) return StatusIOError;
  const bool paired = BelongsTo(lockFile_, file_.Identity());
  Status status = StatusSuccess;
  if (!paired && !file_.LockAlone()) {
    status = StatusFileInUse;  // by others, through a lock file that is no longer beside it
  } else if (!paired && !MakeLockFile(lockFile_, file_.Identity(), file_.Permissions())) {
    status = OpenStatusOf(errno);
  } else {
    status = OpenHandle(path);
    if (!file_.LockInUse()) status = StatusIOError;
  }
  file_.UnlockOpening();
  if (status == StatusSuccess) status = CheckLength();
  return status == StatusSuccess ? ReadDescription() : status;
}

Status Environment::OpenHandle(const std::filesystem::path& path) {
  MDB_env* handle = nullptr;
  if (!file_.Writable()) {
    const Status status = OpenAlone(path, MDB_RDONLY | MDB_NOTLS, handle);
    if (status == StatusSuccess) handle_.reset(handle);
    return status;
  }
  int code = mdb_env_create(&handle);
  if (code != MDB_SUCCESS) return OpenStatusOf(code);
  std::unique_ptr<MDB_env, Closer> opening(handle);
  mdb_env_set_mapsize(handle, MapSize);
  // Without the second sync of a commit: after loss of power the file may be one commit old, never
  // damaged.
  code = mdb_env_open(handle, path.c_str(), MDB_NOSUBDIR | MDB_NOMETASYNC | MDB_NOTLS,
                      file_.Permissions());
  if (code != MDB_SUCCESS) return OpenStatusOf(code);
  handle_ = std::move(opening);
  return StatusSuccess;
}

Status Environment::CheckLength() {
  const off_t size = file_.Size();
  const off_t length = LengthOfTree();
  if (size >= length) return StatusSuccess;
  // Cut off, or its writer died between a commit and `Reach`. The tree tells which; those who have
  // the file open already have asked it.
  if (!file_.Writable()) return StatusNotARecordFile;
  if (!file_.LockAlone()) return StatusSuccess;
  const bool whole = file_.Extend(length) && TreeIsWhole();
  if (!whole) file_.Cut(size);
  file_.LockInUse();
  return whole ? StatusSuccess : StatusNotARecordFile;
}

bool Environment::TreeIsWhole() const {
  // LMDB asserts where it finds a page that is none; the walk then ends here instead of the
  // process.
  static thread_local std::jmp_buf foundDamage;
  MDB_txn* transaction = nullptr;
  if (mdb_txn_begin(Handle(), nullptr, MDB_RDONLY, &transaction) != MDB_SUCCESS) return false;
  mdb_env_set_assert(Handle(), [](MDB_env*, const char*) { std::longjmp(foundDamage, 1); });
  bool whole = false;
  if (setjmp(foundDamage) == 0) whole = WalkTree(transaction);
  mdb_env_set_assert(Handle(), nullptr);
  mdb_txn_abort(transaction);
  return whole;
}

Status Environment::ReadDescription() {
  MDB_txn* transaction = nullptr;
  int code = mdb_txn_begin(Handle(), nullptr, MDB_RDONLY, &transaction);
  if (code != MDB_SUCCESS) return OpenStatusOf(code);
  code = mdb_dbi_open(transaction, nullptr, 0, &tree_);
  std::optional<FileDescription> description;
  if (code == MDB_SUCCESS) {
    const auto text = ReadEntry(transaction, tree_, EntryKey::OfHeader(DescriptionName));
    if (text) description = DescriptionFromText(*text);
  }
  mdb_txn_abort(transaction);
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
