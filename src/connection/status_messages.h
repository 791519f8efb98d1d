// The message of each status, and the one way in which failures behind a property are raised.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include <larkmoor/status.h>

namespace larkmoor {

// What a raised error failed at.
inline constexpr std::int32_t ErrorOpen = static_cast<std::int32_t>(0x80040201U);
inline constexpr std::int32_t ErrorClose = static_cast<std::int32_t>(0x80040202U);
inline constexpr std::int32_t ErrorRead = static_cast<std::int32_t>(0x80040204U);
inline constexpr std::int32_t ErrorAccount = static_cast<std::int32_t>(0x80040205U);

/// "Btrieve error " with the number, and for a status of the table its title and lines. Line breaks
/// are carriage return and line feed.
std::string BtrieveErrorText(Status status);

/// Raises an `Error` of that number with the source "Tovrin"; its description is `source`, a blank
/// line and the status's message.
[[noreturn]] void RaiseBtrieveError(std::int32_t number, std::string_view source, Status status);

}  // namespace larkmoor
