// Documents in CSV files, and what posting them came to. To copy along with the examples.
#pragma once

#include <cstddef>
#include <cstdint>
#include <ostream>
#include <span>

#include "csv_reader.h"
#include "posting.h"

namespace example {

/// The rows of one document, one after the other in their file.
using Document = std::span<const CsvRow>;

/// How many documents of a kind were posted, and what they come to.
struct Posted {
  std::ptrdiff_t documents = 0;
  std::ptrdiff_t rows = 0;
  std::int64_t cents = 0;
};

inline std::ostream& operator<<(std::ostream& out, const Posted& posted) {
  return out << posted.documents << " with " << posted.rows << " rows, " << DollarText(posted.cents)
             << " in all";
}

}  // namespace example
