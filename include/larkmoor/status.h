// The statuses that operations answer with.
#pragma once

#include <cstdint>

namespace larkmoor {

/// What an operation answers: a plain Btrieve status number, 0 for success.
using Status = std::int16_t;

/// The operation did what it was asked for.
inline constexpr Status StatusSuccess = 0;
/// The object's file is not open.
inline constexpr Status StatusFileNotOpen = 3;
/// No record has the key that was searched for.
inline constexpr Status StatusKeyNotFound = 4;
/// The walk is past the last record, or before the first.
inline constexpr Status StatusEndOfFile = 9;
/// The path is empty, or the folder holds no readable version file.
inline constexpr Status StatusInvalidFileName = 11;
/// The file was opened read-only, or is protected by an owner name and lets others only read.
inline constexpr Status StatusAccessDenied = 46;
/// The file is protected by an owner name that was not given.
inline constexpr Status StatusInvalidOwner = 51;

}  // namespace larkmoor
