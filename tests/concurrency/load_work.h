// The kinds of work of which the company load consists. Each looks at every status and at all that
// it reads, and throws `LoadFailure` where anything is not as promised.
#pragma once

#include <cstdint>
#include <filesystem>
#include <initializer_list>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include <larkmoor/status.h>

#include "concurrency/load_ledger.h"
#include "support/dice.h"

namespace larkmoor::test {

class LoadFailure : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

void Require(bool holds, const std::string& otherwise);

/// A thread of the load: its number from 0, its luck, and what it tells.
struct Worker {
  std::int32_t number;
  Dice dice;
  WorkerTally& tally;
  LoadLedger& ledger;

  /// Counts an operation by its kind and hands its status on. It must be 0 or one of `others`; a
  /// status of 80 is counted as a conflict.
  Status Count(Kind kind, Status status, std::string_view what,
               std::initializer_list<Status> others = {});
};

class Work {
 public:
  virtual ~Work() = default;
  [[nodiscard]] virtual const char* Name() const = 0;
  /// Does one piece.
  virtual void Do() = 0;
  /// Closes the files and opens them again.
  virtual void Reopen() = 0;
  /// Compares what is on file with what the worker alone wrote.
  virtual void Finish() {}
};

using WorkList = std::vector<std::unique_ptr<Work>>;

/// The works that only read, and those that write too. The thread is connected to the company.
WorkList ReadingWorks(Worker& worker);
WorkList WritingWorks(Worker& worker);

/// Puts the records in place that all workers share. The thread is connected to the company.
void PrepareCompany(LoadLedger& ledger);
/// Compares the whole company with what all workers were told.
void CompareCompany(const LoadLedger& ledger);

}  // namespace larkmoor::test
