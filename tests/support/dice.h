// Random choices that a seed repeats.
#pragma once

#include <cstddef>
#include <cstdint>
#include <random>

namespace larkmoor::test {

class Dice {
 public:
  explicit Dice(std::uint32_t seed) : random_(seed) {}

  /// From 0 to `end` - 1.
  int Below(int end) { return std::uniform_int_distribution<int>(0, end - 1)(random_); }
  /// The place of an element among so many.
  std::size_t PlaceIn(std::size_t count) {
    return std::uniform_int_distribution<std::size_t>(0, count - 1)(random_);
  }
  bool OneIn(int times) { return Below(times) == 0; }
  /// A seed for other dice.
  std::uint32_t Seed() { return static_cast<std::uint32_t>(random_()); }

  template <typename T, std::size_t Size>
  const T& OneOf(const T (&values)[Size]) {
    return values[PlaceIn(Size)];
  }

 private:
  std::mt19937 random_;
};

}  // namespace larkmoor::test
