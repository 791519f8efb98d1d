#include "money.h"

#include <cstdint>

#include <larkmoor/error.h>
#include <larkmoor/variant.h>

#include "failure.h"

namespace larkmoor::cli {
namespace {

constexpr std::int64_t PerCent = 100;  // ten-thousandths in a cent
constexpr std::size_t Cents = 2;
constexpr std::size_t PartsOfCents = 4;

[[noreturn]] void RaiseTooLarge() { throw Failure("a sum is too large to be exact"); }

}  // namespace

Currency Sum(Currency left, Currency right) {
  std::int64_t sum = 0;
  if (__builtin_add_overflow(left.Scaled(), right.Scaled(), &sum)) RaiseTooLarge();
  return Currency::FromScaled(sum);
}

Currency Difference(Currency left, Currency right) {
  std::int64_t difference = 0;
  if (__builtin_sub_overflow(left.Scaled(), right.Scaled(), &difference)) RaiseTooLarge();
  return Currency::FromScaled(difference);
}

Currency MoneyOf(double amount, const std::string& owner) {
  try {
    return Variant(amount).ToCurrency();
  } catch (const Error&) {
    throw Failure(owner + ": " + Variant(amount).ToText() + " is no amount of money");
  }
}

Currency InCents(Currency amount) {
  const std::int64_t scaled = amount.Scaled();
  const std::int64_t rest = scaled % PerCent;
  const std::int64_t awayFromZero = rest <= -PerCent / 2 ? -1 : rest >= PerCent / 2 ? 1 : 0;
  return Sum(Currency::FromScaled(scaled - rest), Currency::FromScaled(awayFromZero * PerCent));
}

std::string MoneyText(Currency amount) {
  std::string text = Variant(amount).ToText();
  if (text.find('.') == std::string::npos) text += '.';
  const std::size_t decimals = text.size() - text.find('.') - 1;
  return text.append((decimals > Cents ? PartsOfCents : Cents) - decimals, '0');
}

}  // namespace larkmoor::cli
