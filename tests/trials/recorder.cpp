#include "trials/recorder.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/uio.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <stdexcept>
#include <string_view>
#include <system_error>

#include "trials/recording.h"

namespace larkmoor::trials {
namespace {

using Kind = Event::Kind;

namespace fs = std::filesystem;

struct Identity {
  dev_t device = 0;
  ino_t inode = 0;

  static Identity Of(const struct stat& status) { return {status.st_dev, status.st_ino}; }
  bool operator==(const Identity&) const = default;
};

/// How the process ends where it would have to leave a gap, since its recording would tell lies.
constexpr int CannotRecord = 2;

/// What is recorded. It is there before any library writes, and after.
struct Recorder {
  int log = -1;
  Identity folder;
  fs::path folderPath;
  std::vector<fs::path> names;  ///< of the files that were there first
  std::vector<Identity> files;
};

Recorder& State() {
  static auto* state = new Recorder;
  return *state;
}

bool IsLockFile(const std::string& path) { return path.ends_with("-lock"); }

/// Where the file of a descriptor lies.
fs::path PathOf(int descriptor) {
  std::error_code unknown;
  return fs::read_symlink("/proc/self/fd/" + std::to_string(descriptor), unknown);
}

/// Which of the recorded files it is; -1 for none.
int FileOf(const Identity& identity) {
  const auto& files = State().files;
  const auto found = std::find(files.begin(), files.end(), identity);
  return found == files.end() ? -1 : static_cast<int>(found - files.begin());
}

int FileOf(int descriptor) {
  struct stat status {};
  if (State().log < 0 || fstat(descriptor, &status) != 0 || !S_ISREG(status.st_mode)) return -1;
  const int known = FileOf(Identity::Of(status));
  if (known >= 0) return known;
  const fs::path path = PathOf(descriptor);
  if (path.parent_path() != State().folderPath || IsLockFile(path)) return -1;
  State().files.push_back(Identity::Of(status));
  return static_cast<int>(State().files.size() - 1);
}

bool IsFolder(int descriptor) {
  struct stat status {};
  return State().log >= 0 && fstat(descriptor, &status) == 0 &&
         Identity::Of(status) == State().folder;
}

/// The kernel's own calls, which nobody comes before.
template <typename... Arguments>
long Call(long number, Arguments... arguments) {
  return syscall(number, arguments...);
}

void Log(Kind kind, int file, std::uint64_t place, std::string_view bytes = {}) {
  EventHead head{kind, static_cast<std::uint8_t>(file), place, bytes.size()};
  const iovec pieces[] = {{&head, sizeof head}, {const_cast<char*>(bytes.data()), bytes.size()}};
  const auto size = static_cast<long>(sizeof head + bytes.size());
  if (Call(SYS_writev, State().log, pieces, 2) != size) _exit(CannotRecord);
}

/// Notes a write that did `done` of its bytes; gives `done`.
ssize_t NoteWrite(int descriptor, const void* bytes, off_t place, long done) {
  const int failure = errno;
  const int file = done > 0 ? FileOf(descriptor) : -1;
  if (file >= 0) {
    const bool durable = (fcntl(descriptor, F_GETFL) & O_DSYNC) != 0;
    Log(durable ? Kind::DurableWrite : Kind::Write, file, static_cast<std::uint64_t>(place),
        {static_cast<const char*>(bytes), static_cast<std::size_t>(done)});
  }
  errno = failure;
  return done;
}

/// Notes a change of a file as a whole, where it was done; gives `result`.
int Note(int descriptor, Kind kind, off_t place, long result) {
  const int failure = errno;
  const int file = result == 0 ? FileOf(descriptor) : -1;
  if (file >= 0) Log(kind, file, static_cast<std::uint64_t>(place));
  errno = failure;
  return static_cast<int>(result);
}

/// Notes a sync of a file or of the folder, where it was done; gives `result`.
int NoteSync(int descriptor, long result) {
  const int failure = errno;
  if (result == 0 && IsFolder(descriptor)) Log(Kind::SyncFolder, 0, 0);
  errno = failure;
  return Note(descriptor, Kind::Sync, 0, result);
}

int FileAt(const char* path) {
  struct stat status {};
  return stat(path, &status) == 0 ? FileOf(Identity::Of(status)) : -1;
}

/// Renames, and notes that a file took the name of one that was there first.
int Rename(const char* from, const char* to) {
  const auto& names = State().names;
  const auto name = std::find(names.begin(), names.end(), fs::path(to));
  const bool isRecorded = State().log >= 0 && name != names.end();
  const int replaced = isRecorded ? FileAt(to) : -1;
  const long result = Call(SYS_renameat2, AT_FDCWD, from, AT_FDCWD, to, 0);
  if (result != 0 || !isRecorded) return static_cast<int>(result);
  const int file = FileAt(to);
  if (file < 0 || replaced < 0) _exit(CannotRecord);
  Log(Kind::Rename, file, static_cast<std::uint64_t>(name - names.begin()));
  // Its number is free for a new file.
  State().files[static_cast<std::size_t>(replaced)] = {};
  return 0;
}

off_t PlaceOf(int descriptor) { return Call(SYS_lseek, descriptor, 0, SEEK_CUR); }

/// Writes piece by piece, each a write of its own.
template <typename WriteOne>
ssize_t WriteEach(const iovec* pieces, int count, WriteOne writeOne) {
  ssize_t total = 0;
  for (int i = 0; i < count; ++i) {
    const ssize_t done = writeOne(pieces[i].iov_base, pieces[i].iov_len, total);
    if (done < 0) return total > 0 ? total : done;
    total += done;
    if (static_cast<std::size_t>(done) < pieces[i].iov_len) break;
  }
  return total;
}

}  // namespace

void StartRecording(const std::string& recording, const std::vector<std::string>& files) {
  Recorder& state = State();
  const auto identify = [](const std::string& path) {
    struct stat status {};
    if (stat(path.c_str(), &status) != 0) throw std::runtime_error("nothing to record: " + path);
    return Identity::Of(status);
  };
  for (const std::string& file : files) {
    state.names.emplace_back(file);
    state.files.push_back(identify(file));
  }
  state.folderPath = state.names.front().parent_path();
  state.folder = identify(state.folderPath);
  state.log = open(recording.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_APPEND | O_CLOEXEC, 0600);
  if (state.log < 0) throw std::runtime_error("cannot record to " + recording);
}

void RecordLine(const std::string& line) { Log(Kind::Said, 0, 0, line); }

}  // namespace larkmoor::trials

// In the place of the C library's.
extern "C" {

using namespace larkmoor::trials;  // NOLINT(google-build-using-namespace)

ssize_t pwrite(int descriptor, const void* bytes, size_t size, off_t place) {
  return NoteWrite(descriptor, bytes, place, Call(SYS_pwrite64, descriptor, bytes, size, place));
}

ssize_t write(int descriptor, const void* bytes, size_t size) {
  const off_t place = PlaceOf(descriptor);
  return NoteWrite(descriptor, bytes, place, Call(SYS_write, descriptor, bytes, size));
}

ssize_t pwritev(int descriptor, const iovec* pieces, int count, off_t place) {
  return WriteEach(pieces, count, [=](const void* bytes, size_t size, ssize_t before) {
    return pwrite(descriptor, bytes, size, place + before);
  });
}

ssize_t writev(int descriptor, const iovec* pieces, int count) {
  return WriteEach(pieces, count, [=](const void* bytes, size_t size, ssize_t) {
    return write(descriptor, bytes, size);
  });
}

int ftruncate(int descriptor, off_t size) noexcept {
  return Note(descriptor, Event::Kind::Resize, size, Call(SYS_ftruncate, descriptor, size));
}

int fallocate(int descriptor, int mode, off_t place, off_t size) {
  if (mode != 0 && FileOf(descriptor) >= 0) _exit(CannotRecord);
  return Note(descriptor, Event::Kind::Extend, place + size,
              Call(SYS_fallocate, descriptor, mode, place, size));
}

int fdatasync(int descriptor) { return NoteSync(descriptor, Call(SYS_fdatasync, descriptor)); }

int fsync(int descriptor) { return NoteSync(descriptor, Call(SYS_fsync, descriptor)); }

int rename(const char* from, const char* to) noexcept { return Rename(from, to); }

}  // extern "C"
