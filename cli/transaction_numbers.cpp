#include "transaction_numbers.h"

#include <algorithm>
#include <limits>

#include "failure.h"
#include "journal_shape.h"

namespace larkmoor::cli {
namespace {

std::int32_t Successor(std::int32_t number) {
  if (number == std::numeric_limits<std::int32_t>::max()) {
    throw Failure("there is no number left for a further transaction");
  }
  return number + 1;
}

}  // namespace

void TransactionNumbers::NumberRecord() {
  const std::int32_t given = journal_.Get(JournalProperty::NRecord).ToLong();
  if (given != 0) {
    if (lastRecord_) lastRecord_ = std::max(*lastRecord_, given);
    return;
  }
  if (!lastRecord_) lastRecord_ = journal_.Get("MaxNRecord").ToLong();
  lastRecord_ = Successor(*lastRecord_);
  journal_.Let(JournalProperty::NRecord, *lastRecord_);
}

void TransactionNumbers::NumberInPeriod(bool isGiven) {
  std::int32_t& last = LastOfPeriod(journal_.Get(JournalProperty::Period).ToInteger());
  if (isGiven) {
    last = std::max(last, journal_.Get(JournalProperty::TrxNumberL).ToLong());
  } else {
    last = Successor(last);
    journal_.Let(JournalProperty::TrxNumberL, last);
  }
}

std::int32_t& TransactionNumbers::LastOfPeriod(std::int16_t period) {
  const auto [at, isNew] = lastOfPeriod_.try_emplace(period);
  if (isNew) at->second = journal_.Get("MaxTrxNumberL", {period}).ToLong();
  return at->second;
}

}  // namespace larkmoor::cli
