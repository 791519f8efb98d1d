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
};

/// A list of a transaction's rows, and the properties by which it is gone through.
struct DetailList {
  std::string_view name;   ///< as the class's members tell it; empty where there is but one list
  std::string_view count;  ///< how many rows there are
  /// One of those that take a row in hand, which some others only show.
  std::string_view position;
  /// Set where a row is told from those of the list ahead by it: it is not 0.
  std::string_view mark = {};
};

/// The lists that the transactions of a journal have, in the order in which their rows are written.
std::vector<DetailList> DetailListsOf(const automation::Class& type);

/// Whether the class shows transactions: whether it has properties of their rows.
bool IsJournal(const automation::Class& type);

/// The properties of a journal's transactions. Listed are those that stand for a stored value, each
/// value under one name; the others can be asked for.
std::vector<Property> JournalPropertiesOf(const automation::Class& type);

}  // namespace larkmoor::cli
