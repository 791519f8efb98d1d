// The locks that tell who has a data file open, and the lock file that belongs to it.
//
// LMDB keeps its readers' table and its writers' mutex in a second file beside the data file. That
// pair must never come apart: a data file that was taken away and replaced must not be used with
// the lock file of the old one, nor one data file with two lock files. So a lock file bears the
// identity of its data file at its end, and a new one is made only by whoever can prove that nobody
// has the data file open.
#pragma once

#include <sys/types.h>

#include <filesystem>

#include <larkmoor/status.h>

namespace larkmoor::store::lmdb {

/// What a data file is, whatever its name.
struct FileIdentity {
  dev_t device = 0;
  ino_t inode = 0;

  auto operator<=>(const FileIdentity&) const = default;
};

/// An open descriptor of the data file and the byte-range locks on it. They lie far beyond any
/// data, belong to the descriptor, and end with the process.
class DataFile {
 public:
  DataFile() = default;
  ~DataFile();
  DataFile(DataFile&& other) noexcept;
  DataFile& operator=(DataFile&& other) noexcept;

  /// Opens the file, for writing too where the host allows it.
  Status Open(const std::filesystem::path& path);
  [[nodiscard]] bool Writable() const { return writable_; }
  [[nodiscard]] const FileIdentity& Identity() const { return identity_; }
  /// Whether the file begins as LMDB's files do.
  [[nodiscard]] bool IsLmdb() const;
  /// How far the file reaches at this moment.
  [[nodiscard]] off_t Size() const;
  /// Who may read and write it.
  [[nodiscard]] mode_t Permissions() const;
  /// Makes the file reach that far, unless it does already. Never cuts off what others may have
  /// written.
  bool Extend(off_t size);
  /// Cuts the file off. Nobody else may have it open.
  bool Cut(off_t size);
  /// Whether the path still names this very file.
  [[nodiscard]] bool IsAt(const std::filesystem::path& path) const;

  // Being opened: one at a time, so that the pair of files is looked at and made in peace.
  bool LockOpening();
  void UnlockOpening();
  // In use: shared by all who have the file open. `LockAlone` answers at once whether nobody else
  // has it.
  bool LockInUse();
  bool LockAlone();
  // Being written: held over each write, and over each read by those who may not write to the
  // readers' table.
  bool LockWriting();
  bool LockReading();
  void UnlockWriting();

 private:
  int descriptor_ = -1;
  bool writable_ = false;
  FileIdentity identity_;
};

/// The lock file beside a data file.
std::filesystem::path LockFileOf(const std::filesystem::path& path);
/// Whether the lock file at that path is there and was made for that data file.
bool BelongsTo(const std::filesystem::path& lockFile, const FileIdentity& identity);
/// Makes the lock file for a data file, in place of any that is there. LMDB must not have it open:
/// a process that closes a file gives up its locks on it.
bool MakeLockFile(const std::filesystem::path& lockFile, const FileIdentity& identity,
                  mode_t permissions);

}  // namespace larkmoor::store::lmdb
