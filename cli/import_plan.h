// Which column of a CSV file goes into which property.
#pragma once

#include <string>
#include <vector>

#include "row_source.h"

namespace larkmoor::cli {

/// One field of each CSV line and the property that it goes into.
struct ImportTarget {
  std::size_t field;   ///< its place in the line, from 0
  std::string header;  ///< the name of its column in the file
  Column column;
};

struct ImportPlan {
  std::size_t fieldCount = 0;  ///< of the header, and so of every line
  std::vector<ImportTarget> targets;
  /// Columns that are not taken over: without a property of their name, or with one that keeps
  /// nothing.
  std::vector<std::string> passedOver;

  /// Whether a line holds a detail of its record.
  [[nodiscard]] bool HasDetails() const;
};

/// Plans an import of a file with that header line. `maps` holds "COLUMN=PROPERTY" texts.
///
/// A column goes into the property that it is mapped to, or else into the one of its own name. A
/// property that is read-only or dead is passed over, so that what `export` wrote can be imported.
/// A column without a property is passed over where there are maps, since the file is then known to
/// be a foreign one; otherwise it is taken for a mistake.
///
/// Raises a `UsageError` for a map that does not fit the file or the class, and a `Failure` for a
/// header that does not fit.
ImportPlan PlanImport(const std::vector<std::string>& header, const std::vector<std::string>& maps,
                      const RowShape& shape);

}  // namespace larkmoor::cli
