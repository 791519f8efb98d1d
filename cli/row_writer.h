// Rows on their way out: a table for a person, CSV or JSON for programs.
#pragma once

#include <memory>
#include <ostream>
#include <string>
#include <vector>

#include <nlohmann/json_fwd.hpp>

#include <larkmoor/variant.h>

#include "row_source.h"

namespace larkmoor::cli {

/// Writes rows as they come. What one row holds is in the order of the columns.
class RowWriter {
 public:
  virtual ~RowWriter() = default;
  virtual void Write(const std::vector<Variant>& row) = 0;
  /// Writes sums below the rows, for a person: programs make their own, and would count them twice.
  /// Called at most once, behind the last row.
  virtual void WriteTotals(const std::vector<Variant>& /*row*/) {}
  /// Writes what is still to be written. Called once, behind the last row.
  virtual void Finish() = 0;
};

/// A writer of the format "table", "csv" or "json". `out` outlives it.
std::unique_ptr<RowWriter> MakeRowWriter(const std::string& format, std::ostream& out,
                                         const std::vector<Column>& columns);

/// The values by the names of their columns.
nlohmann::ordered_json JsonOf(const std::vector<Column>& columns, const std::vector<Variant>& row);
/// The text of a JSON value, in one line or, with `JsonIndent`, for a person.
std::string JsonText(const nlohmann::ordered_json& json, int indent = -1);
inline constexpr int JsonIndent = 2;

/// One row as a JSON object where `format` is "json", otherwise as a "NAME: value" line a column.
void WriteSingleRow(const std::string& format, std::ostream& out,
                    const std::vector<Column>& columns, const std::vector<Variant>& row);

/// The values of the row in hand.
std::vector<Variant> ValuesOf(RowSource& rows, const std::vector<Column>& columns);

}  // namespace larkmoor::cli
