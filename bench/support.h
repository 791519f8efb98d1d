// What all benchmarks stand on: folders that go away, a company in one, checks.
#pragma once

#include <cstdlib>
#include <filesystem>
#include <stdexcept>
#include <string>
#include <system_error>

#include <larkmoor/company.h>
#include <larkmoor/connection/btrieve.h>
#include <larkmoor/status.h>

namespace larkmoor::bench {

/// Ends the run where something that was to be measured did not work: `main` tells what, and all
/// folders go away on the way there.
inline void Check(bool good, const char* what) {
  if (!good) throw std::runtime_error(what);
}

/// Where files lie on a disk, so that a commit costs what it costs: the folder that TMPDIR names.
inline std::filesystem::path OnDisk() { return std::filesystem::temp_directory_path(); }

/// Where files lie in memory, so that no disk blurs a read; on a disk where there is no such place.
inline std::filesystem::path InMemory() {
  const std::filesystem::path memory = "/dev/shm";
  return std::filesystem::is_directory(memory) ? memory : OnDisk();
}

/// A folder that goes away with the program.
class Folder {
 public:
  explicit Folder(const std::filesystem::path& parent = OnDisk())
      : path_((parent / "larkmoor-bench-XXXXXX").string()) {
    Check(mkdtemp(path_.data()) != nullptr, "temporary folder");
  }
  ~Folder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
  }
  Folder(const Folder&) = delete;
  Folder& operator=(const Folder&) = delete;

  [[nodiscard]] std::filesystem::path Path() const { return path_; }

 private:
  std::string path_;
};

/// A new company in a folder of its own.
class Company {
 public:
  explicit Company(const std::filesystem::path& parent = OnDisk()) : folder_(parent) {
    CreateCompany(Path());
  }

  /// Makes it the one that objects open. Benchmarks with other companies may have run before.
  void Connect() const {
    // One for the whole program: a new one closes all files that are open.
    static Btrieve connection;
    Check(connection.Connect(Path().string()) == StatusSuccess, "connect");
  }

  [[nodiscard]] std::filesystem::path Path() const { return folder_.Path() / "company"; }

 private:
  Folder folder_;
};

}  // namespace larkmoor::bench
