// Money as a scaled integer.
#pragma once

#include <cmath>
#include <compare>
#include <cstdint>

namespace larkmoor {

/// An amount of money in ten-thousandths, as a 64-bit integer: exact to four decimals, from
/// -922,337,203,685,477.5808 to 922,337,203,685,477.5807.
class Currency {
 public:
  Currency() = default;
  /// The amount nearest to `value`, halves to the even neighbour.
  explicit Currency(double value)
      : scaled_(static_cast<std::int64_t>(std::nearbyint(value * 10000.0))) {}
  /// An amount of that many ten-thousandths.
  static Currency FromScaled(std::int64_t tenThousandths) {
    Currency result;
    result.scaled_ = tenThousandths;
    return result;
  }
  /// The amount in ten-thousandths.
  [[nodiscard]] std::int64_t Scaled() const { return scaled_; }
  /// The amount as a double, exact to about 15 digits.
  [[nodiscard]] double ToDouble() const { return static_cast<double>(scaled_) / 10000.0; }

  auto operator<=>(const Currency&) const = default;

 private:
  std::int64_t scaled_ = 0;
};

}  // namespace larkmoor
