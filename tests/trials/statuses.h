// Which statuses the operations of a driver may answer.
#pragma once

#include <cstdint>
#include <optional>
#include <set>

#include <larkmoor/status.h>

namespace larkmoor::trials {

enum class Operation {
  Open,
  Create,
  Search,  ///< for an equal key
  Seek,    ///< the other searches, first and last
  GoOn,    ///< next and previous
  Step,
  Insert,
  Update,
  Delete,
  Percentage,
  GetByPercentage,
  Sync,
  Commit,
  Claim,
  Statistics,
  SetOwner,
  ClearOwner,
  Verify,
  Compact,
};

/// What the object itself has to do with the answer.
struct Position {
  bool isReadOnly = false;
  bool hasKey = true;       ///< whether the file has a key of the number asked for
  bool hasCurrent = false;  ///< whether there is a current record
  /// Whether the place is on the path of that key; nothing where there is no place.
  std::optional<bool> onThatPath = {};
};

/// What else there is around a file.
struct Surroundings {
  bool hasOthers = false;    ///< others have it open, and write to it
  bool isFull = false;       ///< its disk may be full
  bool isDamaged = false;    ///< someone else than the store may have written to it
  bool isProtected = false;  ///< by an owner name that lets others read
};

/// The statuses that the operation may answer.
std::set<Status> Allowed(Operation operation, const Position& position,
                         const Surroundings& surroundings);

}  // namespace larkmoor::trials
