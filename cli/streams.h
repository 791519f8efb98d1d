// The files that commands read and write beside the company's own.
#pragma once

#include <cstdint>
#include <fstream>
#include <string>

namespace larkmoor::cli {

/// A file opened for reading. Raises a `Failure` with the system's reason where it does not open.
class InputFile {
 public:
  explicit InputFile(const std::string& path);
  std::istream& Stream() { return stream_; }
  /// Bytes read so far, and bytes in all; 0 where the file is no plain one.
  std::int64_t Done();
  [[nodiscard]] std::int64_t Total() const { return total_; }

 private:
  std::ifstream stream_;
  std::int64_t total_ = 0;
};

/// A file opened for writing, its old contents gone. Raises a `Failure` where it does not open.
class OutputFile {
 public:
  explicit OutputFile(std::string path);
  std::ostream& Stream() { return stream_; }
  /// Raises a `Failure` where not everything could be written.
  void Close();

 private:
  std::string path_;
  std::ofstream stream_;
};

}  // namespace larkmoor::cli
