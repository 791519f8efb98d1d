// The lines of a CSV file that make one record together.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "csv.h"
#include "import_plan.h"

namespace larkmoor::cli {

/// Reads a file record by record. Of a table each line is one; of a journal neighbouring lines make
/// a transaction with a row a line: those with the same `NRecord`, or where a line has none, those
/// that agree in all columns of the transaction.
///
/// A malformed line may belong to the transaction ahead of it or to the one behind it: all of them
/// are given together, so that neither is taken for whole.
class EntryReader {
 public:
  /// Reads the lines that `reader` has not read yet. Both arguments outlive the object.
  EntryReader(CsvReader& reader, const ImportPlan& plan);

  /// The lines of the next record, none at the end.
  std::vector<CsvRecord> Next();

 private:
  [[nodiscard]] bool Continues(const CsvRecord& last, const CsvRecord& next) const;

  CsvReader& reader_;
  const ImportPlan& plan_;
  std::optional<CsvRecord> ahead_;
};

/// Why a line cannot be read by the plan, or empty.
std::string ProblemOf(const CsvRecord& line, const ImportPlan& plan);
/// What a line says of the record as a whole, but otherwise than the first line of the record; the
/// name of a column, or empty.
std::string DisagreementOf(const CsvRecord& first, const CsvRecord& line, const ImportPlan& plan);

}  // namespace larkmoor::cli
