// The statuses that operations answer with.
#pragma once

#include <cstdint>

namespace larkmoor {

/// What an operation answers: a plain Btrieve status number, 0 for success.
using Status = std::int16_t;

/// The operation did what it was asked for.
inline constexpr Status StatusSuccess = 0;
/// A disk could not be read or written.
inline constexpr Status StatusIOError = 2;
/// The object's file is not open.
inline constexpr Status StatusFileNotOpen = 3;
/// No record has the key that was searched for.
inline constexpr Status StatusKeyNotFound = 4;
/// A write would repeat a key that is unique.
inline constexpr Status StatusDuplicateKey = 5;
/// The file has no key of that number.
inline constexpr Status StatusInvalidKeyNumber = 6;
/// A walk goes on along another key than the one that it began on.
inline constexpr Status StatusDifferentKeyNumber = 7;
/// There is no current record to update or delete, or no place to go on from.
inline constexpr Status StatusInvalidPositioning = 8;
/// The walk is past the last record, or before the first.
inline constexpr Status StatusEndOfFile = 9;
/// An update would change a key that must not change.
inline constexpr Status StatusKeyNotModifiable = 10;
/// The path is empty or impossible, or the folder holds no readable version file.
inline constexpr Status StatusInvalidFileName = 11;
/// There is no such file or folder.
inline constexpr Status StatusFileNotFound = 12;
/// The disk is full; nothing was written.
inline constexpr Status StatusDiskFull = 18;
/// The file is no record file of this kind, or a damaged one.
inline constexpr Status StatusNotARecordFile = 30;
/// The file was opened read-only, or is protected by an owner name and lets others only read.
inline constexpr Status StatusAccessDenied = 46;
/// The file is protected by an owner name that was not given.
inline constexpr Status StatusInvalidOwner = 51;
/// There is a file of that name already.
inline constexpr Status StatusFileExists = 59;
/// Someone else changed or deleted the record since it was read.
inline constexpr Status StatusRecordConflict = 80;
/// Someone else has the file open, and that stands in the way.
inline constexpr Status StatusFileInUse = 85;
/// The file system does not let the file be written.
inline constexpr Status StatusPermission = 94;

}  // namespace larkmoor
