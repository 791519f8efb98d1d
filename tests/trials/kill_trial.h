// What the processes of the trial by killing say to each other.
#pragma once

#include <cstdint>

#include "support/told_work.h"

namespace larkmoor::trials {

inline constexpr const char* ReadyLine = "ready";
inline constexpr const char* ThroughLine = "through";

/// The records of the writer of that number, from 0.
inline test::Share ShareOf(std::int32_t writer) {
  constexpr std::int32_t Each = 1'000'000;
  return {writer * Each + 1, (writer + 1) * Each};
}

}  // namespace larkmoor::trials
