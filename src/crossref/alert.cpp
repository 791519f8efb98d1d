#include <array>

#include "crossref/alert_parts.h"
#include "crossref/applies_to.h"

namespace larkmoor {
namespace {

/// What an alert watches, by `TypeIndex`.
constexpr std::array<std::string_view, 10> TypeTexts = {
    "Balance",      "Credit limit",     "Last invoice date", "Last payment date", "Pay amount",
    "Hours worked", "Quantity on hand", "Quantity sold",     "Unit cost",         "Budget"};

/// How it is compared, by `Condition`.
constexpr std::array<std::string_view, 5> ConditionTexts = {
    "Less than", "Less than or equal to", "Equal to", "Greater than or equal to", "Greater than"};

template <std::size_t Size>
std::string TextOf(const std::array<std::string_view, Size>& texts, std::int16_t code) {
  const auto place = static_cast<std::size_t>(code);
  return code >= 0 && place < Size ? std::string(texts[place]) : std::string();
}

}  // namespace

std::string Alert::ApplyToDescription(std::int16_t Index) { return AppliesToText(Index); }

std::string Alert::ConditionDescription(std::int16_t Index) {
  return TextOf(ConditionTexts, Index);
}

std::string Alert::TypeDescription(std::int16_t Index) { return TextOf(TypeTexts, Index); }

}  // namespace larkmoor
