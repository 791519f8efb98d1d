// Numbers as text and back, the same in every locale.
#pragma once

#include <string>
#include <string_view>

#include <larkmoor/currency.h>

namespace larkmoor {

// The shortest decimal text that reads back as the same number. Only huge and tiny floats have an
// exponent ("1E+20"); an amount of money has its decimals without the zeros behind them.
std::string NumberText(float number);
std::string NumberText(double number);
std::string NumberText(Currency amount);

/// The number that a text holds: decimal digits with an optional sign, point and exponent, blanks
/// around them passed over. Raises error 13 where it holds none, 6 where a double cannot hold it.
double NumberFromText(std::string_view text);

/// The same as an amount of money, exact for all texts of up to four decimals. Raises error 6
/// beyond the range of Currency.
Currency CurrencyFromText(std::string_view text);

/// The amount nearest to a number, halves to the even neighbour. Raises error 6 beyond the range of
/// Currency.
Currency CurrencyFromNumber(double number);

}  // namespace larkmoor
