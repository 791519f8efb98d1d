#include "streams.h"

#include <cerrno>
#include <filesystem>
#include <system_error>
#include <utility>

#include "failure.h"

namespace larkmoor::cli {
namespace {

[[noreturn]] void RaiseFileFailure(const std::string& path, int error) {
  throw Failure(path + ": " + std::generic_category().message(error));
}

}  // namespace

InputFile::InputFile(const std::string& path) {
  std::error_code ignored;
  if (std::filesystem::is_directory(path, ignored)) RaiseFileFailure(path, EISDIR);
  errno = 0;
  stream_.open(path, std::ios::binary);
  if (!stream_) RaiseFileFailure(path, errno);
  if (std::filesystem::is_regular_file(path, ignored)) {
    total_ = static_cast<std::int64_t>(std::filesystem::file_size(path, ignored));
  }
}

std::int64_t InputFile::Done() {
  return total_ == 0 ? 0
                     : static_cast<std::int64_t>(
                           stream_.rdbuf()->pubseekoff(0, std::ios::cur, std::ios::in));
}

OutputFile::OutputFile(std::string path) : path_(std::move(path)) {
  errno = 0;
  stream_.open(path_, std::ios::binary | std::ios::trunc);
  if (!stream_) RaiseFileFailure(path_, errno);
}

void OutputFile::Close() {
  errno = 0;
  stream_.close();
  if (!stream_) RaiseFileFailure(path_, errno == 0 ? EIO : errno);
}

}  // namespace larkmoor::cli
