// The engine's statuses by name, beside those that clients see.
#pragma once

#include <larkmoor/status.h>

namespace larkmoor {

inline constexpr Status StatusIOError = 2;
inline constexpr Status StatusDuplicateKey = 5;
inline constexpr Status StatusInvalidKeyNumber = 6;
inline constexpr Status StatusDifferentKeyNumber = 7;
inline constexpr Status StatusInvalidPositioning = 8;
inline constexpr Status StatusKeyNotModifiable = 10;
inline constexpr Status StatusFileNotFound = 12;
inline constexpr Status StatusDiskFull = 18;
inline constexpr Status StatusNotARecordFile = 30;
inline constexpr Status StatusFileExists = 59;
inline constexpr Status StatusRecordConflict = 80;
inline constexpr Status StatusFileInUse = 85;
inline constexpr Status StatusPermission = 94;

}  // namespace larkmoor
