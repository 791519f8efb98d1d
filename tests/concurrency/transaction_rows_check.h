// Transactions whose rows tell whether they are of one state.
#pragma once

#include <cstdint>
#include <string>

#include "concurrency/load_work.h"

namespace larkmoor::test {

/// Puts rows into the journal object that all bear the mark and their number, and add up to 0.
template <typename Journal>
void FillRows(Journal& journal, const std::string& mark, Dice& dice) {
  constexpr int MostRows = 6;
  const auto rows = static_cast<std::int16_t>(2 + dice.Below(MostRows - 1));
  const std::string text = mark + "/" + std::to_string(rows);
  journal.NDistributions(rows);
  double sum = 0;
  for (std::int16_t row = 1; row <= rows; ++row) {
    const double amount = row < rows ? dice.Below(10'000) : -sum;
    sum += amount;
    journal.DetailDescription(row, text);
    journal.DetailAmount(row, amount);
  }
}

/// The mark of the rows that the journal object has read, with their number; empty where there is
/// no row. All must be rows of one state.
template <typename Journal>
std::string MarkOfRows(Journal& journal) {
  const std::int16_t rows = journal.NDistributions();
  if (rows == 0) return {};
  const std::string text = journal.DetailDescription(1);
  double sum = 0;
  bool areOfOneState = text.ends_with("/" + std::to_string(rows));
  std::string all;
  for (std::int16_t row = 1; row <= rows; ++row) {
    all += " " + journal.DetailDescription(row);
    areOfOneState = areOfOneState && journal.DetailDescription(row) == text;
    sum += journal.DetailAmount(row);
  }
  Require(areOfOneState && sum == 0, "a torn transaction, its rows bear:" + all);
  return text;
}

}  // namespace larkmoor::test
