#include "connection/number_text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <optional>
#include <system_error>

#include "engine/runtime_error.h"
#include "engine/text.h"

namespace larkmoor {
namespace {

// Sizes that people write out. Beyond them the zeros would hide the number.
constexpr double SmallestWrittenOut = 1e-7;
constexpr double LargestWrittenOut = 1e16;

constexpr std::size_t CurrencyDecimals = 4;

template <typename Real>
std::string RealText(Real number) {
  if (number == 0) return "0";  // never "-0"
  const Real size = std::abs(number);
  const bool writtenOut = size >= Real(SmallestWrittenOut) && size < Real(LargestWrittenOut);
  std::array<char, 64> buffer{};
  const auto [end, error] =
      std::to_chars(buffer.data(), buffer.data() + buffer.size(), number,
                    writtenOut ? std::chars_format::fixed : std::chars_format::scientific);
  std::string text(buffer.data(), end);
  std::replace(text.begin(), text.end(), 'e', 'E');
  return text;
}

// The blanks and a plus sign taken off, which the standard library does not read.
std::string_view NumberPart(std::string_view text) {
  text = TrimBlanks(text);
  if (text.starts_with('+') && !text.starts_with("+-")) text.remove_prefix(1);
  return text;
}

// The ten-thousandths of a text of at most four decimals, by moving its point: a double would lose
// the last digits of a large amount. Nothing for other texts.
std::optional<std::int64_t> TenThousandths(std::string_view number) {
  const std::size_t point = std::min(number.find('.'), number.size());
  const std::string_view decimals = number.substr(std::min(point + 1, number.size()));
  if (decimals.size() > CurrencyDecimals) return std::nullopt;
  std::string digits(number.substr(0, point));
  digits.append(decimals).append(CurrencyDecimals - decimals.size(), '0');
  std::int64_t scaled = 0;
  const char* const last = digits.data() + digits.size();
  const auto [end, error] = std::from_chars(digits.data(), last, scaled);
  if (error != std::errc{} || end != last) return std::nullopt;
  return scaled;
}

}  // namespace

std::string NumberText(float number) { return RealText(number); }

std::string NumberText(double number) { return RealText(number); }

std::string NumberText(Currency amount) {
  const bool isNegative = amount.Scaled() < 0;
  // Unsigned, since the lowest amount has no positive counterpart.
  const auto scaled = static_cast<std::uint64_t>(amount.Scaled());
  std::string digits = std::to_string(isNegative ? 0 - scaled : scaled);
  digits.insert(0, CurrencyDecimals + 1 - std::min(digits.size(), CurrencyDecimals + 1), '0');
  digits.insert(digits.size() - CurrencyDecimals, 1, '.');
  digits.erase(digits.find_last_not_of('0') + 1);
  if (digits.back() == '.') digits.pop_back();
  return isNegative ? '-' + digits : digits;
}

double NumberFromText(std::string_view text) {
  text = NumberPart(text);
  double number = 0;
  const char* const last = text.data() + text.size();
  const auto [end, error] = std::from_chars(text.data(), last, number);
  if (error == std::errc::invalid_argument || end != last) RaiseRuntimeError(errors::TypeMismatch);
  if (error == std::errc::result_out_of_range) RaiseRuntimeError(errors::Overflow);
  // The words for infinity and for no number at all are no numbers to a client.
  if (!std::isfinite(number)) RaiseRuntimeError(errors::TypeMismatch);
  return number;
}

Currency CurrencyFromText(std::string_view text) {
  const double number = NumberFromText(text);
  if (const auto scaled = TenThousandths(NumberPart(text))) return Currency::FromScaled(*scaled);
  return CurrencyFromNumber(number);
}

Currency CurrencyFromNumber(double number) {
  constexpr double End = 0x1p63;  // one beyond the highest count of ten-thousandths
  const double scaled = number * 10000.0;
  if (!(scaled >= -End && scaled < End)) RaiseRuntimeError(errors::Overflow);
  return Currency(number);
}

}  // namespace larkmoor
