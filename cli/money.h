// Exact sums of money.
//
// Records hold amounts as floating-point numbers, whose sums drift. Each amount is taken as a
// Currency first, and all further work is in whole numbers.
#pragma once

#include <string>

#include <larkmoor/currency.h>

namespace larkmoor::cli {

/// The sum. Raises a `Failure` beyond the range of Currency, as the next two do.
Currency Sum(Currency left, Currency right);
Currency Difference(Currency left, Currency right);
/// The amount of a record. `owner` names the record for the message of the failure.
Currency MoneyOf(double amount, const std::string& owner);

/// The amount in whole cents, halves away from zero.
Currency InCents(Currency amount);
/// With two decimals, or four where there are parts of a cent: "1250.00", "-0.0050".
std::string MoneyText(Currency amount);

}  // namespace larkmoor::cli
