#include "progress.h"

#include <unistd.h>

#include <algorithm>
#include <iostream>
#include <utility>

namespace larkmoor::cli {
namespace {

constexpr auto TimeBetweenDrawings = std::chrono::milliseconds(100);
constexpr std::string_view EraseLine = "\r\x1b[K";

std::string Advance(std::int64_t done, std::int64_t total) {
  if (total > 0) {
    return " " + std::to_string(std::clamp<std::int64_t>(done * 100 / total, 0, 100)) + " %";
  }
  return done > 0 ? " " + std::to_string(done) : "";
}

}  // namespace

Progress::Progress(std::string label, Output output)
    : label_(std::move(label)),
      isTerminal_(isatty(STDERR_FILENO) == 1 &&
                  (output == Output::Waits || isatty(STDOUT_FILENO) == 0)) {}

void Progress::Show(std::int64_t done, std::int64_t total) {
  if (!isTerminal_) return;
  const Clock::time_point now = Clock::now();
  if (isDrawn_ && now - lastDrawn_ < TimeBetweenDrawings) return;
  std::cerr << EraseLine << label_ << Advance(done, total) << std::flush;
  isDrawn_ = true;
  lastDrawn_ = now;
}

void Progress::Wipe() {
  if (!isDrawn_) return;
  std::cerr << EraseLine << std::flush;
  isDrawn_ = false;
}

store::Progress Progress::Callback() {
  return [this](std::int64_t done, std::int64_t total) { Show(done, total); };
}

}  // namespace larkmoor::cli
