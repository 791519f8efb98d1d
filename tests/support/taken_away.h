// A file that is not where it belongs for a while.
#pragma once

#include <filesystem>
#include <system_error>
#include <utility>

namespace larkmoor::test {

/// Takes a file of a company away for the lifetime of the object and puts it back then, in place of
/// whatever stands there. Objects that have it open go on with it.
class TakenAway {
 public:
  explicit TakenAway(std::filesystem::path path) : path_(std::move(path)), aside_(path_) {
    aside_ += ".aside";
    std::filesystem::rename(path_, aside_);
  }
  ~TakenAway() {
    std::error_code ignored;
    std::filesystem::rename(aside_, path_, ignored);
  }
  TakenAway(const TakenAway&) = delete;
  TakenAway& operator=(const TakenAway&) = delete;

  /// Where the file is in the meantime.
  [[nodiscard]] const std::filesystem::path& Aside() const { return aside_; }

 private:
  std::filesystem::path path_;
  std::filesystem::path aside_;
};

}  // namespace larkmoor::test
