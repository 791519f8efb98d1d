#include "engine/store/lmdb/file_locks.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <utility>

#include "engine/store/lmdb/failure.h"

namespace larkmoor::store::lmdb {
namespace {

/// Bytes of the data file that stand for a lock. To the host a length of 0 means to the end of all
/// files; here it means none.
struct LockPlace {
  off_t start;
  off_t length = 1;
};

// The file is in use by a byte for each lock file: a file of two names may have two of them, and
// those who use the one must know of those who use the other.
constexpr LockPlace InUse{off_t{1} << 62, off_t{1} << 32};
constexpr LockPlace Opening{InUse.start - 1};
constexpr LockPlace Committing{InUse.start - 2};

struct flock Request(short type, LockPlace place) {
  struct flock lock {};
  lock.l_type = type;
  lock.l_whence = SEEK_SET;
  lock.l_start = place.start;
  lock.l_len = place.length;
  return lock;
}

bool Lock(int descriptor, int command, short type, LockPlace place) {
  struct flock lock = Request(type, place);
  int result = 0;
  do {
    result = fcntl(descriptor, command, &lock);
  } while (result != 0 && errno == EINTR);
  return result == 0;
}

bool Unlock(int descriptor, LockPlace place) {
  return place.length == 0 || Lock(descriptor, F_OFD_SETLK, F_UNLCK, place);
}

bool IsLockedByOthers(int descriptor, LockPlace place) {
  struct flock lock = Request(F_WRLCK, place);
  return place.length != 0 &&
         (fcntl(descriptor, F_OFD_GETLK, &lock) != 0 || lock.l_type != F_UNLCK);
}

/// Room for LMDB's readers' table; LMDB makes it as long as the file lets it be. Takes no disk
/// until used. LMDB maps the whole file and unmaps the table: both have to end on the same page, or
/// each open would leave a page mapped.
constexpr off_t ReaderSlot = 64;
constexpr off_t LockTableSize = (off_t{256} << 10) - ReaderSlot;

/// What stands at the end of a lock file, behind the readers' table.
struct Trailer {
  std::array<char, 8> magic{'L', 'K', 'M', 'R', 'L', 'O', 'C', 'K'};
  std::uint64_t device = 0;
  std::uint64_t inode = 0;
  FileMark mark;

  [[nodiscard]] bool IsOf(const FileIdentity& identity) const {
    return magic == Trailer{}.magic && device == identity.device && inode == identity.inode;
  }
};
static_assert(sizeof(Trailer) < ReaderSlot);
constexpr off_t LockFileSize = LockTableSize + static_cast<off_t>(sizeof(Trailer));
constexpr off_t MarkPlace = LockTableSize + static_cast<off_t>(offsetof(Trailer, mark));

bool ReadAt(int descriptor, std::span<std::byte> bytes, off_t place) {
  while (!bytes.empty()) {
    const ssize_t got = pread(descriptor, bytes.data(), bytes.size(), place);
    if (got < 0 && errno == EINTR) continue;
    if (got <= 0) return false;
    bytes = bytes.subspan(static_cast<std::size_t>(got));
    place += got;
  }
  return true;
}

}  // namespace

DataFile::~DataFile() {
  if (descriptor_ >= 0) close(descriptor_);
}

DataFile::DataFile(DataFile&& other) noexcept { *this = std::move(other); }

DataFile& DataFile::operator=(DataFile&& other) noexcept {
  std::swap(descriptor_, other.descriptor_);
  std::swap(writable_, other.writable_);
  std::swap(identity_, other.identity_);
  return *this;
}

Status DataFile::Open(const std::filesystem::path& path) {
  writable_ = true;
  // What is no regular file must not be waited for.
  constexpr int Flags = O_CLOEXEC | O_NONBLOCK | O_NOCTTY;
  descriptor_ = open(path.c_str(), O_RDWR | Flags);
  if (descriptor_ < 0 && (errno == EACCES || errno == EPERM || errno == EROFS)) {
    writable_ = false;
    descriptor_ = open(path.c_str(), O_RDONLY | Flags);
  }
  struct stat status {};
  if (descriptor_ < 0 || fstat(descriptor_, &status) != 0) return OpenStatusOf(errno);
  if (!S_ISREG(status.st_mode)) return OpenStatusOf(EISDIR);
  identity_ = {status.st_dev, status.st_ino};
  return StatusSuccess;
}

bool DataFile::IsLmdb() const {
  constexpr std::uint32_t Magic = 0xBEEFC0DE;
  constexpr std::uint64_t BehindPageHeader = 16;
  std::uint32_t found = 0;
  return Read(std::as_writable_bytes(std::span(&found, 1)), BehindPageHeader) && found == Magic;
}

bool DataFile::Read(std::span<std::byte> bytes, std::uint64_t place) const {
  constexpr std::uint64_t FarthestPlace = std::uint64_t{1} << 60;
  return place <= FarthestPlace && ReadAt(descriptor_, bytes, static_cast<off_t>(place));
}

off_t DataFile::Size() const {
  struct stat status {};
  return fstat(descriptor_, &status) == 0 ? status.st_size : 0;
}

FileMark DataFile::Mark() const {
  struct stat status {};
  if (fstat(descriptor_, &status) != 0) return {};
  return {status.st_size, status.st_ctim.tv_sec, status.st_ctim.tv_nsec};
}

mode_t DataFile::Permissions() const {
  struct stat status {};
  return fstat(descriptor_, &status) == 0 ? status.st_mode & 0666U : 0600U;
}

bool DataFile::Extend(off_t size) { return fallocate(descriptor_, 0, size - 1, 1) == 0; }

bool DataFile::CanGrow() const {
  constexpr off_t Piece = off_t{1} << 20;
  return fallocate(descriptor_, 0, Size(), Piece) == 0;
}

bool DataFile::IsAt(const std::filesystem::path& path) const {
  struct stat status {};
  return stat(path.c_str(), &status) == 0 &&
         FileIdentity{status.st_dev, status.st_ino} == identity_;
}

bool DataFile::LockOpening() { return Lock(descriptor_, F_OFD_SETLKW, F_WRLCK, Opening); }
void DataFile::UnlockOpening() { Unlock(descriptor_, Opening); }

bool DataFile::LockInUse(const LockFile& through) {
  const LockPlace place{InUse.start + through.Number()};
  // What else of `LockAlone` is left is given up on both sides of it.
  const off_t before = place.start - InUse.start;
  return Lock(descriptor_, F_OFD_SETLKW, F_RDLCK, place) &&
         Unlock(descriptor_, {InUse.start, before}) &&
         Unlock(descriptor_, {place.start + 1, InUse.length - before - 1});
}

bool DataFile::InUseThroughAnother(const LockFile& lockFile) const {
  const off_t before = lockFile.Number();
  return IsLockedByOthers(descriptor_, {InUse.start, before}) ||
         IsLockedByOthers(descriptor_, {InUse.start + before + 1, InUse.length - before - 1});
}

bool DataFile::LockAlone() { return Lock(descriptor_, F_OFD_SETLK, F_WRLCK, InUse); }
bool DataFile::LockCommitting() { return Lock(descriptor_, F_OFD_SETLKW, F_WRLCK, Committing); }
bool DataFile::LockReading() { return Lock(descriptor_, F_OFD_SETLKW, F_RDLCK, Committing); }
void DataFile::UnlockCommitting() { Unlock(descriptor_, Committing); }

LockFile::~LockFile() {
  if (descriptor_ >= 0) close(descriptor_);
}

LockFile::LockFile(LockFile&& other) noexcept { *this = std::move(other); }

LockFile& LockFile::operator=(LockFile&& other) noexcept {
  std::swap(descriptor_, other.descriptor_);
  return *this;
}

std::filesystem::path HiddenBeside(const std::filesystem::path& dataFile, std::string_view last) {
  return dataFile.parent_path() / ("." + dataFile.filename().native() + "." + std::string(last));
}

std::filesystem::path CompactedCopyOf(const std::filesystem::path& dataFile) {
  return HiddenBeside(dataFile, "compacted");
}

std::filesystem::path LockFile::PathFor(const std::filesystem::path& dataFile) {
  return std::filesystem::path(dataFile.native() + "-lock");
}

bool LockFile::Open(const std::filesystem::path& path, const DataFile& dataFile) {
  const int mode = dataFile.Writable() ? O_RDWR : O_RDONLY;
  descriptor_ = open(path.c_str(), mode | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK);
  struct stat status {};
  Trailer trailer;
  if (descriptor_ >= 0 && fstat(descriptor_, &status) == 0 && status.st_size == LockFileSize &&
      ReadAt(descriptor_, std::as_writable_bytes(std::span(&trailer, 1)), LockTableSize) &&
      trailer.IsOf(dataFile.Identity())) {
    return true;
  }
  *this = LockFile();
  return false;
}

bool LockFile::Make(const std::filesystem::path& path, const DataFile& dataFile) {
  unlink(path.c_str());
  const mode_t permissions = dataFile.Permissions();
  descriptor_ = open(path.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, permissions);
  if (descriptor_ < 0) return false;
  Trailer trailer;
  trailer.device = dataFile.Identity().device;
  trailer.inode = dataFile.Identity().inode;
  return fchmod(descriptor_, permissions) == 0 && ftruncate(descriptor_, LockTableSize) == 0 &&
         pwrite(descriptor_, &trailer, sizeof trailer, LockTableSize) ==
             static_cast<ssize_t>(sizeof trailer);
}

std::uint32_t LockFile::Number() const {
  struct stat status {};
  return fstat(descriptor_, &status) == 0 ? static_cast<std::uint32_t>(status.st_ino) : 0;
}

bool LockFile::Tells(const FileMark& mark) const {
  FileMark told;
  return ReadAt(descriptor_, std::as_writable_bytes(std::span(&told, 1)), MarkPlace) &&
         told == mark;
}

void LockFile::Note(const FileMark& mark) {
  // Where it cannot be noted, the next to open looks at the whole file.
  [[maybe_unused]] const ssize_t written = pwrite(descriptor_, &mark, sizeof mark, MarkPlace);
}

}  // namespace larkmoor::store::lmdb
