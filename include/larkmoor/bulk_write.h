// Many writes in one commit.
#pragma once

#include <memory>

#include <larkmoor/status.h>

namespace larkmoor {

/// Gathers all writes of the calling thread, on whatever objects, into one commit a file. Loading
/// thousands of records this way costs a small part of what single writes cost.
///
///     larkmoor::BulkWrite bulk;
///     for (const auto& line : lines) { ...; table.Insert(); }
///     if (bulk.Commit() != larkmoor::StatusSuccess) { ... }
///
/// The thread's own reads see the gathered writes at once; everyone else sees them at `Commit`.
/// From the first write on, other writers of the files concerned, and other bulk writers of the
/// folder, wait. A thread has one `BulkWrite` at a time, and it must end on the thread that made
/// it.
class BulkWrite {
 public:
  /// Starts gathering. Raises error 5 ("Invalid procedure call or argument") where the thread has
  /// a `BulkWrite` already.
  BulkWrite();
  /// Drops what was gathered since the last `Commit`.
  ~BulkWrite();
  BulkWrite(const BulkWrite&) = delete;
  BulkWrite& operator=(const BulkWrite&) = delete;

  /// Writes what was gathered, one commit a file in the order in which the files were first
  /// written to, and goes on gathering. Returns 0, or the status of the first commit that failed
  /// (18 for a full disk): that file and those after it keep nothing of what was gathered.
  Status Commit();

 private:
  struct State;
  std::unique_ptr<State> state_;
};

}  // namespace larkmoor
