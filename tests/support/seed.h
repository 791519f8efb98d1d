// Seeds of the tests that do random work.
#pragma once

#include <cstdint>
#include <cstdlib>
#include <iostream>
#include <random>
#include <string>

#include <gtest/gtest.h>

namespace larkmoor::test {

/// The seed of the running test: the environment variable LARKMOOR_SEED, or a new one each time.
/// It is printed and kept in the test report, so that a failure can be run again.
inline std::uint32_t Seed() {
  const char* given = std::getenv("LARKMOOR_SEED");
  const std::uint32_t seed =
      given != nullptr ? static_cast<std::uint32_t>(std::stoul(given)) : std::random_device{}();
  std::cout << "LARKMOOR_SEED=" << seed << '\n';
  testing::Test::RecordProperty("seed", std::to_string(seed));
  return seed;
}

}  // namespace larkmoor::test
