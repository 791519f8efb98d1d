// The numbers of transactions that come without them.
#pragma once

#include <cstdint>
#include <map>
#include <optional>

#include "automation/automation.h"

namespace larkmoor::cli {

/// The numbers that new transactions get: one above the highest that the journal knows, and so on
/// from there. The journal is asked once, since its answer takes a walk.
class TransactionNumbers {
 public:
  explicit TransactionNumbers(automation::Object& journal) : journal_(journal) {}

  /// Gives the new transaction an `NRecord`, unless it has one.
  void NumberRecord();
  /// Gives it a `TrxNumberL`, unless that was given by the client.
  void NumberInPeriod(bool isGiven);

 private:
  std::int32_t& LastOfPeriod(std::int16_t period);

  automation::Object& journal_;
  std::optional<std::int32_t> lastRecord_;
  std::map<std::int16_t, std::int32_t> lastOfPeriod_;
};

}  // namespace larkmoor::cli
