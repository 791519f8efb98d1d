// The ship methods of the company, as customers and vendors name them.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

namespace larkmoor {

class ShipMethods {
 public:
  static constexpr std::int16_t Last = 10;

  /// Place of a text among the methods, counted from 0; 0 also where there is none like it.
  std::int16_t PlaceOf(std::string_view text);
  /// The text of method `number`, counted from 1; of 0 it is empty. Outside 0 to 10 error 9 is
  /// raised.
  const std::string& TextOf(std::int32_t number);
  /// Whether the company's methods could be read.
  bool AreThere();
  /// Has the methods read anew when they are next asked for.
  void Forget() { areLoaded_ = false; }

 private:
  void LoadOnce();

  std::array<std::string, Last + 1> texts_;
  bool areLoaded_ = false;
  bool areThere_ = false;
};

}  // namespace larkmoor
