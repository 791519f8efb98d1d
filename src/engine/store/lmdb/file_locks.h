// The locks that tell who has a data file open, and the lock file that belongs to it.
//
// LMDB keeps its readers' table and its writers' mutex in a second file beside the data file. That
// pair must never come apart: a data file that was taken away and replaced must not be used with
// the lock file of the old one, nor one data file with two lock files. So a lock file bears the
// identity of its data file at its end, and a new one is made only by whoever can prove that nobody
// has the data file open.
#pragma once

#include <sys/types.h>

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <span>
#include <string_view>

#include <larkmoor/status.h>

namespace larkmoor::store::lmdb {

/// What a data file is, whatever its name.
struct FileIdentity {
  dev_t device = 0;
  ino_t inode = 0;

  auto operator<=>(const FileIdentity&) const = default;
};

/// The state of a data file as the host tells it: whoever writes to the file changes it.
struct FileMark {
  std::int64_t size = 0;
  std::int64_t seconds = 0;
  std::int64_t nanoseconds = 0;

  bool operator==(const FileMark&) const = default;
};

class LockFile;

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
  /// Fills `bytes` from that place on; false where the file ends before.
  [[nodiscard]] bool Read(std::span<std::byte> bytes, std::uint64_t place) const;
  /// How far the file reaches at this moment.
  [[nodiscard]] off_t Size() const;
  [[nodiscard]] FileMark Mark() const;
  /// Who may read and write it.
  [[nodiscard]] mode_t Permissions() const;
  /// Makes the file reach that far, unless it does already. Never cuts off what others may have
  /// written.
  bool Extend(off_t size);
  /// Whether there is room for what LMDB writes in one piece.
  [[nodiscard]] bool CanGrow() const;
  /// Whether the path still names this very file.
  [[nodiscard]] bool IsAt(const std::filesystem::path& path) const;

  // Being opened: one at a time, so that the pair of files is looked at and made in peace.
  bool LockOpening();
  void UnlockOpening();
  // In use: shared by all who have the file open, through one lock file. `LockAlone` answers at
  // once whether nobody else has it.
  bool LockInUse(const LockFile& through);
  [[nodiscard]] bool InUseThroughAnother(const LockFile& lockFile) const;
  bool LockAlone();
  // Being committed, against those who read without a place in the readers' table because they may
  // not write to it: they hold it over each read. A writer holds it over each commit; and waits at
  // it before a write, since the pages that the last commit set free are written over from then on.
  bool LockCommitting();
  bool LockReading();
  void UnlockCommitting();

 private:
  int descriptor_ = -1;
  bool writable_ = false;
  FileIdentity identity_;
};

/// A hidden file beside a data file, told from others by its last part.
std::filesystem::path HiddenBeside(const std::filesystem::path& dataFile, std::string_view last);
/// Where compaction makes the file that is to take the place of this one. Whoever has locked the
/// opening of the file knows that one that is there is left of a process that died.
std::filesystem::path CompactedCopyOf(const std::filesystem::path& dataFile);

/// The lock file beside a data file. It also keeps the mark that the data file had after the
/// store's last write, by which a file that others have written to is known.
///
/// An object of it must outlive LMDB's use of the same file: a process that closes a file gives up
/// its locks on it.
class LockFile {
 public:
  static std::filesystem::path PathFor(const std::filesystem::path& dataFile);

  LockFile() = default;
  ~LockFile();
  LockFile(LockFile&& other) noexcept;
  LockFile& operator=(LockFile&& other) noexcept;

  /// Opens the one that is there; false where there is none, or one of another data file.
  bool Open(const std::filesystem::path& path, const DataFile& dataFile);
  /// Makes a new one in place of any that is there.
  bool Make(const std::filesystem::path& path, const DataFile& dataFile);

  [[nodiscard]] bool Tells(const FileMark& mark) const;
  void Note(const FileMark& mark);
  /// A number of this lock file.
  [[nodiscard]] std::uint32_t Number() const;

 private:
  int descriptor_ = -1;
};

}  // namespace larkmoor::store::lmdb
