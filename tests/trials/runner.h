// Running a trial's rounds.
#pragma once

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <limits>
#include <string>
#include <vector>

#include "trials/trial.h"

namespace larkmoor::trials {

struct Plan {
  std::uint32_t seed = 1;
  std::uint32_t firstRound = 0;
  std::uint32_t rounds = std::numeric_limits<std::uint32_t>::max();
  /// No further round begins after this time.
  std::chrono::milliseconds time = std::chrono::hours(24);
  /// Where the rounds' folders are made.
  std::filesystem::path folder = std::filesystem::temp_directory_path();
};

struct FailedRound {
  std::uint32_t round;
  std::string finding;
  std::filesystem::path folder;  ///< what the round left
};

struct Outcome {
  std::uint32_t rounds = 0;
  Tally tried = {};
  std::vector<FailedRound> failed = {};
};

/// Runs rounds of a trial as planned. Ends early where enough of them have failed to look at.
Outcome Run(const Trial& trial, const Plan& plan);

}  // namespace larkmoor::trials
