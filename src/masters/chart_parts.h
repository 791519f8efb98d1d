#pragma once

#include <larkmoor/masters/chart.h>

#include "engine/records/chart.h"
#include "engine/tovrin_file_names.h"
#include "masters/chart_budget.h"
#include "tables/table_frame.h"

namespace larkmoor {

struct Chart::Parts {
  TableFrame table{ChartRecord::Describe(), TovrinFileNames::ChartFile()};
  ChartBudget budget;

  /// The release as a whole number, which is how budgets go by it.
  [[nodiscard]] std::int16_t Release() const { return Variant(table.FileVersion()).ToInteger(); }
};

}  // namespace larkmoor
