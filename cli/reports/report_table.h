// The table of a report: columns of its own, written in any of the formats of rows.
#pragma once

#include <initializer_list>
#include <memory>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

#include "automation/automation.h"
#include "row_writer.h"

namespace larkmoor::cli {

struct ReportColumn {
  std::string_view name;
  automation::ValueType type;
};

/// The columns of a report as writers of rows take them.
class ReportShape {
 public:
  ReportShape(std::initializer_list<ReportColumn> columns);
  [[nodiscard]] std::vector<Column> Columns() const { return shape_.AllColumns(); }

 private:
  RowShape shape_;
};

/// Rows are handed over one by one, sums behind the last, and `Finish` ends the table.
class ReportTable {
 public:
  ReportTable(std::initializer_list<ReportColumn> columns, const std::string& format,
              std::ostream& out);

  void Write(const std::vector<Variant>& row) { writer_->Write(row); }
  void WriteTotals(const std::vector<Variant>& row) { writer_->WriteTotals(row); }
  void Finish() { writer_->Finish(); }

 private:
  ReportShape shape_;
  std::unique_ptr<RowWriter> writer_;
};

}  // namespace larkmoor::cli
