// One data file, open once in the process however many objects use it.
#pragma once

#include <atomic>
#include <cstddef>
#include <filesystem>
#include <memory>
#include <mutex>
#include <optional>

#include <lmdb.h>

#include <larkmoor/status.h>

#include "engine/store/file_description.h"
#include "engine/store/lmdb/file_locks.h"
#include "engine/store/lmdb/format.h"

namespace larkmoor::store::lmdb {

/// Address space for one file, and so how large a file can grow. Takes no memory and no disk by
/// itself.
constexpr std::size_t MapSize = std::size_t{32} << 30;

/// The LMDB environment of one data file. Shared by all threads of the process.
class Environment {
 public:
  Environment(const Environment&) = delete;
  Environment& operator=(const Environment&) = delete;

  [[nodiscard]] MDB_env* Handle() const { return handle_.get(); }
  [[nodiscard]] MDB_dbi Tree() const { return tree_; }
  [[nodiscard]] const FileDescription& Description() const { return description_; }
  [[nodiscard]] bool Writable() const { return file_.Writable(); }
  [[nodiscard]] const std::filesystem::path& Folder() const { return folder_; }
  [[nodiscard]] off_t Size() const { return file_.Size(); }
  DataFile& File() { return file_; }
  /// The number of the last commit.
  [[nodiscard]] std::size_t LastCommit() const;

  // Around each read of those who may not write to the file, nor to the readers' table; nothing for
  // the others.
  bool BeginPlainRead();
  void EndPlainRead();
  /// Ends a commit, which may not yet be safe against loss of power.
  void NoteCommit();
  /// Takes the file as it is for what the store has left.
  void NoteState();
  Status Sync();

 private:
  friend class EnvironmentRef;
  struct Closer {
    void operator()(MDB_env* env) const { mdb_env_close(env); }
  };

  Environment() = default;
  Status Open(const std::filesystem::path& name, DataFile file);
  Status OpenToWrite(const std::filesystem::path& path);
  Status OpenToRead(const std::filesystem::path& path);
  Status PairWithLockFile(const std::filesystem::path& path);
  Status CheckAlone();
  Status CheckBesideWriters();
  Status OpenHandle(const std::filesystem::path& path);
  Status ReadDescription();
  void Reach();

  DataFile file_;
  std::filesystem::path folder_;
  LockFile lockFile_;  // closed behind the handle
  std::unique_ptr<MDB_env, Closer> handle_;
  MDB_dbi tree_ = 0;
  FileDescription description_;
  std::atomic<bool> unsynced_ = false;
  std::mutex plainReadsMutex_;
  int plainReads_ = 0;  ///< under way in all threads, which share one lock
};

/// A share in an environment. The last one to go closes it.
class EnvironmentRef {
 public:
  EnvironmentRef() = default;
  ~EnvironmentRef() { Release(); }
  EnvironmentRef(EnvironmentRef&& other) noexcept;
  EnvironmentRef& operator=(EnvironmentRef&& other) noexcept;

  /// Opens the file at a path, or joins those of the process who have that very file open.
  static Status Acquire(const std::filesystem::path& path, EnvironmentRef& ref);
  /// Whether anyone in the process has that very file open.
  static bool InUse(const FileIdentity& identity);

  Environment* operator->() const { return environment_; }
  Environment& operator*() const { return *environment_; }
  [[nodiscard]] Environment* Get() const { return environment_; }

 private:
  void Release();

  Environment* environment_ = nullptr;
};

/// The value of an entry, or nothing. The bytes last as long as the transaction.
std::optional<std::string_view> ReadEntry(MDB_txn* transaction, MDB_dbi tree, const EntryKey& key);

/// The counters of a file; nothing where they are damaged.
std::optional<Counters> ReadCounters(MDB_txn* transaction, MDB_dbi tree);

/// An environment handle of a file that nobody has open, or that is being made: no lock file, no
/// readers.
Status OpenAlone(const std::filesystem::path& path, unsigned flags, MDB_env*& handle);

}  // namespace larkmoor::store::lmdb
