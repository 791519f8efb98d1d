// Values taken from a fuzzer's input, and what is said where something does not hold.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <stdexcept>
#include <string>
#include <string_view>

#include "fuzz/targets.h"

namespace larkmoor::fuzz {

/// Ends the target where something that must hold does not.
inline void Must(bool holds, const char* what) {
  if (!holds) throw std::logic_error(std::string("does not hold: ") + what);
}

inline std::string_view TextOf(Input input) {
  return {reinterpret_cast<const char*>(input.data()), input.size()};
}

/// Takes values off the front of an input. Behind its end there are zeros.
class InputReader {
 public:
  explicit InputReader(Input input) : rest_(input) {}

  [[nodiscard]] bool AtEnd() const { return rest_.empty(); }

  template <typename T>
  T Take() {
    T value{};
    const Input bytes = TakeBytes(sizeof value);
    if (!bytes.empty()) std::memcpy(&value, bytes.data(), bytes.size());
    return value;
  }

  /// One of `count` choices, from 0.
  std::size_t TakeChoice(std::size_t count) { return Take<std::uint8_t>() % count; }

  /// So many bytes, or as many as there are left.
  Input TakeBytes(std::size_t count) {
    const Input taken = rest_.first(std::min(count, rest_.size()));
    rest_ = rest_.subspan(taken.size());
    return taken;
  }

  /// A text with its length, of one byte, ahead of it.
  std::string_view TakeText() { return TextOf(TakeBytes(Take<std::uint8_t>())); }

  /// All that is left.
  Input TakeRest() { return TakeBytes(rest_.size()); }

 private:
  Input rest_;
};

}  // namespace larkmoor::fuzz
