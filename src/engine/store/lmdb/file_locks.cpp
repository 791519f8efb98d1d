#include "engine/store/lmdb/file_locks.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdint>
#include <cstring>
#include <utility>

#include "engine/store/lmdb/failure.h"

namespace larkmoor::store::lmdb {
namespace {

// Bytes of the data file that stand for the three locks.
constexpr off_t InUse = off_t{1} << 62;
constexpr off_t Opening = InUse + 1;
constexpr off_t Writing = InUse + 2;

bool Lock(int descriptor, int command, short type, off_t place) {
  struct flock lock {};
  lock.l_type = type;
  lock.l_whence = SEEK_SET;
  lock.l_start = place;
  lock.l_len = 1;
  int result = 0;
  do {
    result = fcntl(descriptor, command, &lock);
  } while (result != 0 && errno == EINTR);
  return result == 0;
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

  explicit Trailer(const FileIdentity& identity) : device(identity.device), inode(identity.inode) {}
  bool operator==(const Trailer&) const = default;
};
static_assert(sizeof(Trailer) < ReaderSlot);

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
  descriptor_ = open(path.c_str(), O_RDWR | O_CLOEXEC);
  if (descriptor_ < 0 && (errno == EACCES || errno == EPERM || errno == EROFS)) {
    writable_ = false;
    descriptor_ = open(path.c_str(), O_RDONLY | O_CLOEXEC);
  }
  struct stat status {};
  if (descriptor_ < 0 || fstat(descriptor_, &status) != 0) return OpenStatusOf(errno);
  if (!S_ISREG(status.st_mode)) return OpenStatusOf(EISDIR);
  identity_ = {status.st_dev, status.st_ino};
  return StatusSuccess;
}

bool DataFile::IsLmdb() const {
  constexpr std::uint32_t Magic = 0xBEEFC0DE;
  constexpr off_t BehindPageHeader = 16;
  std::uint32_t found = 0;
  return pread(descriptor_, &found, sizeof found, BehindPageHeader) == sizeof found &&
         found == Magic;
}

off_t DataFile::Size() const {
  struct stat status {};
  return fstat(descriptor_, &status) == 0 ? status.st_size : 0;
}

mode_t DataFile::Permissions() const {
  struct stat status {};
  return fstat(descriptor_, &status) == 0 ? status.st_mode & 0666U : 0600U;
}

bool DataFile::Extend(off_t size) { return fallocate(descriptor_, 0, size - 1, 1) == 0; }

bool DataFile::Cut(off_t size) { return ftruncate(descriptor_, size) == 0; }

bool DataFile::IsAt(const std::filesystem::path& path) const {
  struct stat status {};
  return stat(path.c_str(), &status) == 0 &&
         FileIdentity{status.st_dev, status.st_ino} == identity_;
}

bool DataFile::LockOpening() { return Lock(descriptor_, F_OFD_SETLKW, F_WRLCK, Opening); }
void DataFile::UnlockOpening() { Lock(descriptor_, F_OFD_SETLK, F_UNLCK, Opening); }
bool DataFile::LockInUse() { return Lock(descriptor_, F_OFD_SETLKW, F_RDLCK, InUse); }
bool DataFile::LockAlone() { return Lock(descriptor_, F_OFD_SETLK, F_WRLCK, InUse); }
bool DataFile::LockWriting() { return Lock(descriptor_, F_OFD_SETLKW, F_WRLCK, Writing); }
bool DataFile::LockReading() { return Lock(descriptor_, F_OFD_SETLKW, F_RDLCK, Writing); }
void DataFile::UnlockWriting() { Lock(descriptor_, F_OFD_SETLK, F_UNLCK, Writing); }

std::filesystem::path LockFileOf(const std::filesystem::path& path) {
  return std::filesystem::path(path.native() + "-lock");
}

bool BelongsTo(const std::filesystem::path& lockFile, const FileIdentity& identity) {
  const int descriptor = open(lockFile.c_str(), O_RDONLY | O_CLOEXEC | O_NOFOLLOW);
  if (descriptor < 0) return false;
  Trailer found{{}};
  const off_t end = lseek(descriptor, 0, SEEK_END);
  const auto size = static_cast<off_t>(sizeof found);
  const bool read = end >= size && pread(descriptor, &found, sizeof found, end - size) == size;
  close(descriptor);
  return read && found == Trailer(identity);
}

bool MakeLockFile(const std::filesystem::path& lockFile, const FileIdentity& identity,
                  mode_t permissions) {
  unlink(lockFile.c_str());
  const int descriptor =
      open(lockFile.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, permissions);
  if (descriptor < 0) return false;
  const Trailer trailer(identity);
  const bool done = fchmod(descriptor, permissions) == 0 &&
                    ftruncate(descriptor, LockTableSize) == 0 &&
                    pwrite(descriptor, &trailer, sizeof trailer, LockTableSize) ==
                        static_cast<ssize_t>(sizeof trailer);
  const int failure = errno;
  close(descriptor);
  errno = failure;
  return done;
}

}  // namespace larkmoor::store::lmdb
