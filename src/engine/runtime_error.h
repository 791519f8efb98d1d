// The runtime's own errors, with their classic numbers and texts.
#pragma once

#include <cstdint>

namespace larkmoor {

/// The numbers of the runtime's own errors.
namespace errors {
inline constexpr std::int32_t InvalidCall = 5;
inline constexpr std::int32_t Overflow = 6;
inline constexpr std::int32_t OutOfMemory = 7;
inline constexpr std::int32_t SubscriptOutOfRange = 9;
inline constexpr std::int32_t TypeMismatch = 13;
inline constexpr std::int32_t OutOfStackSpace = 28;
inline constexpr std::int32_t InvalidUseOfNull = 94;
inline constexpr std::int32_t CannotCreateObject = 429;
inline constexpr std::int32_t NoSuchMember = 438;
inline constexpr std::int32_t WrongArguments = 450;
}  // namespace errors

/// Raises an `Error` of one of these numbers, with the source "Larkmoor" and the number's text.
[[noreturn]] void RaiseRuntimeError(std::int32_t number);

}  // namespace larkmoor
