#include "trials/statuses.h"

#include <initializer_list>

namespace larkmoor::trials {
namespace {

bool IsOneOf(Operation operation, std::initializer_list<Operation> operations) {
  for (const Operation each : operations) {
    if (each == operation) return true;
  }
  return false;
}

bool Writes(Operation operation) {
  return IsOneOf(operation,
                 {Operation::Insert, Operation::Update, Operation::Delete, Operation::Claim});
}

bool TakesKey(Operation operation) {
  return IsOneOf(operation, {Operation::Search, Operation::Seek, Operation::GoOn, Operation::Insert,
                             Operation::Update, Operation::Percentage, Operation::GetByPercentage});
}

bool TakesCurrent(Operation operation) {
  return IsOneOf(operation, {Operation::Update, Operation::Delete, Operation::Percentage});
}

/// What an object cannot do whatever the file holds; nothing where it can.
std::optional<Status> Refusal(Operation operation, const Position& position) {
  if (Writes(operation) && position.isReadOnly) return StatusAccessDenied;
  if (TakesKey(operation) && !position.hasKey) return StatusInvalidKeyNumber;
  if (TakesCurrent(operation) && !position.hasCurrent) return StatusInvalidPositioning;
  if (operation == Operation::GoOn) {
    if (!position.onThatPath) return StatusInvalidPositioning;
    if (!*position.onThatPath) return StatusDifferentKeyNumber;
  }
  return std::nullopt;
}

/// What the operation may answer of a sound file.
std::set<Status> Answers(Operation operation) {
  switch (operation) {
    case Operation::Search:
      return {StatusSuccess, StatusKeyNotFound};
    case Operation::Seek:
    case Operation::GoOn:
    case Operation::Step:
    case Operation::GetByPercentage:
      return {StatusSuccess, StatusEndOfFile};
    case Operation::Insert:
      return {StatusSuccess, StatusDuplicateKey};
    case Operation::Update:
      return {StatusSuccess, StatusDuplicateKey, StatusKeyNotModifiable};
    case Operation::Create:
      return {StatusSuccess, StatusFileExists};
    case Operation::ClearOwner:
      return {StatusSuccess, StatusInvalidOwner};
    default:
      return {StatusSuccess};
  }
}

}  // namespace

std::set<Status> Allowed(Operation operation, const Position& position,
                         const Surroundings& surroundings) {
  if (const auto refusal = Refusal(operation, position)) return {*refusal};
  std::set<Status> allowed = Answers(operation);
  const bool opens =
      IsOneOf(operation, {Operation::Open, Operation::Statistics, Operation::Verify,
                          Operation::SetOwner, Operation::ClearOwner, Operation::Compact});
  const bool takesRoom =
      Writes(operation) || opens || IsOneOf(operation, {Operation::Create, Operation::Commit});
  if (surroundings.hasOthers && TakesCurrent(operation)) allowed.insert(StatusRecordConflict);
  // A file that is being compacted goes from one name to another.
  if (surroundings.hasOthers && opens) allowed.insert(StatusFileInUse);
  if (surroundings.isFull && takesRoom) allowed.insert(StatusDiskFull);
  if (surroundings.isDamaged) allowed.insert(StatusIOError);
  if (surroundings.isDamaged && opens) allowed.insert(StatusNotARecordFile);
  // A protection that cannot be read protects against everyone.
  if (surroundings.isDamaged && surroundings.isProtected && operation == Operation::Open) {
    allowed.insert(StatusInvalidOwner);
  }
  return allowed;
}

}  // namespace larkmoor::trials
