// One line on a terminal that tells how far long work has come.
#pragma once

#include <chrono>
#include <cstdint>
#include <string>

#include "engine/store/driver.h"

namespace larkmoor::cli {

/// What happens to standard output while the work is under way.
enum class Output { Waits, IsWritten };

/// Redraws its line on standard error a few times a second, and wipes it at the end. Where standard
/// error is no terminal it writes nothing, nor where output would run into the line on one.
class Progress {
 public:
  /// `label` says what is being done.
  explicit Progress(std::string label, Output output = Output::Waits);
  ~Progress() { Wipe(); }
  Progress(const Progress&) = delete;
  Progress& operator=(const Progress&) = delete;

  /// `total` is 0 where nobody knows it.
  void Show(std::int64_t done, std::int64_t total);
  /// Takes the line away, so that something else can be written. The next `Show` draws it anew.
  void Wipe();
  /// What the engine's long operations call. Valid as long as this object.
  store::Progress Callback();

 private:
  using Clock = std::chrono::steady_clock;

  std::string label_;
  bool isTerminal_;
  bool isDrawn_ = false;
  Clock::time_point lastDrawn_;
};

}  // namespace larkmoor::cli
