// What the examples that post transactions share: numbers for them, and cents. To copy along.
#pragma once

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <iomanip>
#include <map>
#include <sstream>
#include <stdexcept>
#include <string>
#include <utility>

#include <larkmoor/date.h>
#include <larkmoor/journals/jrnl_hdr.h>
#include <larkmoor/status.h>

#include "check.h"

namespace example {

/// Gives new transactions the numbers that no other one has.
class TransactionNumbers {
 public:
  TransactionNumbers() { Check(headers_.OpenFile(), "Opening the headers"); }

  /// A number of its own for a transaction, whatever its journal. Where there is none yet the
  /// highest counts as 1, so that the first number is 2.
  std::int32_t NextNRecord() { return Known(headers_.MaxNRecord()) + 1; }

  /// The next free transaction number of a journal in a period. The highest number that
  /// `MaxTrxNumberL` knows of ends where another period or journal has that number too, and so it
  /// is only where the search begins.
  std::int32_t NextTrxNumber(std::int16_t journal, std::int16_t period) {
    const auto [last, isFirst] = last_.try_emplace({journal, period});
    if (isFirst) last->second = Known(headers_.MaxTrxNumberL(period, journal));
    do ++last->second;
    while (IsTaken(journal, period, last->second));
    return last->second;
  }

 private:
  bool IsTaken(std::int16_t journal, std::int16_t period, std::int32_t number) {
    const larkmoor::Status status = headers_.GetForKeyL(0, number, period, journal, 0);
    if (status != larkmoor::StatusKeyNotFound) Check(status, "Looking for a free number");
    return status == larkmoor::StatusSuccess;
  }

  // A highest number of -1 says that it could not be looked for.
  static std::int32_t Known(std::int32_t highest) {
    if (highest < 0) throw std::runtime_error("The headers cannot be read.");
    return highest;
  }

  larkmoor::JrnlHdr headers_;
  std::map<std::pair<std::int16_t, std::int16_t>, std::int32_t> last_;
};

/// Starts a transaction in `journal`: a blank header, but for the journal's code, the period, the
/// day and the numbers. The rows of the transaction before stay in memory: whoever sets one
/// property of a row sets it in every row of every transaction.
template <typename Journal>
void StartTransaction(Journal& journal, TransactionNumbers& numbers, std::int16_t code,
                      std::int16_t period, larkmoor::Date day) {
  Check(journal.ClearRecord(), "Clearing the header");
  journal.JournalID(code);
  journal.Period(period);
  journal.TrxDate(day);
  journal.NRecord(numbers.NextNRecord());
  journal.TrxNumberL(numbers.NextTrxNumber(code, period));
}

/// The number behind that of a document: "10400" is followed by "10401", and "Q-99" by "Q-100".
inline std::string NumberAfter(std::string number) {
  std::size_t at = number.size();
  while (at > 0 && number[at - 1] == '9') number[--at] = '0';
  const bool isDigit = at > 0 && number[at - 1] >= '0' && number[at - 1] <= '8';
  if (isDigit) {
    ++number[at - 1];
  } else {
    number.insert(at, 1, '1');
  }
  return number;
}

/// An amount of money in cents: sums of cents are exact, and sums of doubles are not.
inline std::int64_t ToCents(double amount) { return std::llround(amount * 100); }

/// An amount in cents as a property takes it.
inline double ToDollars(std::int64_t cents) { return static_cast<double>(cents) / 100.0; }

/// An amount in cents as people read it: "1204.50".
inline std::string DollarText(std::int64_t cents) {
  std::ostringstream text;
  text << std::fixed << std::setprecision(2) << ToDollars(cents);
  return text.str();
}

}  // namespace example
