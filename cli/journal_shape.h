// What the transactions of a journal have: which of the class's properties are columns, and which
// of these are of the rows.
#pragma once

#include <string_view>
#include <vector>

#include "automation/automation.h"
#include "row_shape.h"

namespace larkmoor::cli {

/// Properties that all journals have.
struct JournalProperty {
  /// What a transaction is told by from all others of the company.
  static constexpr std::string_view NRecord = "NRecord";
  static constexpr std::string_view JournalID = "JournalID";
  static constexpr std::string_view Period = "Period";
  static constexpr std::string_view TrxNumberL = "TrxNumberL";
  /// How many rows there are.
  static constexpr std::string_view NDistributions = "NDistributions";
  /// One of those that take a row in hand, which some others only show.
  static constexpr std::string_view DetailAmount = "DetailAmount";
};

/// Whether the class shows transactions: whether it has properties of their rows.
bool IsJournal(const automation::Class& type);

/// The properties of a journal's transactions. Listed are those that stand for a stored value, each
/// value under one name; the others can be asked for.
std::vector<Property> JournalPropertiesOf(const automation::Class& type);

}  // namespace larkmoor::cli
