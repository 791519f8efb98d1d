// What alarms and alerts are about.
#pragma once

#include <cstdint>
#include <string>

namespace larkmoor {

// The codes of `ApplyTo`.
inline constexpr std::int16_t AppliesToCustomer = 1;
inline constexpr std::int16_t AppliesToVendor = 2;
inline constexpr std::int16_t AppliesToEmployee = 3;
inline constexpr std::int16_t AppliesToItem = 4;
inline constexpr std::int16_t AppliesToAccount = 5;

/// The word for a code; empty where there is none.
std::string AppliesToText(std::int16_t code);

}  // namespace larkmoor
