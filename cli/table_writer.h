// Rows as an aligned table.
#pragma once

#include <ostream>
#include <string>
#include <vector>

#include "row_writer.h"

namespace larkmoor::cli {

/// Columns are as wide as the widest of the first rows, so that a table of any length is written in
/// little memory; a wider cell further down pushes its line.
class TableWriter : public RowWriter {
 public:
  TableWriter(std::ostream& out, const std::vector<Column>& columns);
  void Write(const std::vector<Variant>& row) override;
  void WriteTotals(const std::vector<Variant>& row) override;
  void Finish() override;

 private:
  struct TableColumn {
    std::string title;
    bool isNumber;
    std::size_t width;
  };

  void Measure(const std::vector<std::string>& cells);
  void WriteHeld();
  void WriteRule();
  void WriteLine(const std::vector<std::string>& cells);

  std::ostream& out_;
  std::vector<TableColumn> columns_;
  std::vector<std::vector<std::string>> held_;
  bool started_ = false;
};

}  // namespace larkmoor::cli
