#include "table_writer.h"

#include <algorithm>

#include "text_tools.h"
#include "value_text.h"

namespace larkmoor::cli {
namespace {

constexpr std::size_t RowsMeasured = 1000;

std::string Padded(const std::string& cell, std::size_t width, bool atRight) {
  const std::string blanks(width - std::min(width, DisplayWidth(cell)), ' ');
  return atRight ? blanks + cell : cell + blanks;
}

std::vector<std::string> CellsOf(const std::vector<Variant>& row) {
  std::vector<std::string> cells;
  for (const Variant& value : row) cells.push_back(Printable(TextOf(value)));
  return cells;
}

}  // namespace

TableWriter::TableWriter(std::ostream& out, const std::vector<Column>& columns) : out_(out) {
  for (const Column& column : columns) {
    const std::string title = column.Name();
    columns_.push_back({title, IsNumber(column.property->type), DisplayWidth(title)});
  }
}

void TableWriter::Write(const std::vector<Variant>& row) {
  std::vector<std::string> cells = CellsOf(row);
  if (started_) return WriteLine(cells);
  Measure(cells);
  held_.push_back(std::move(cells));
  if (held_.size() == RowsMeasured) WriteHeld();
}

void TableWriter::WriteTotals(const std::vector<Variant>& row) {
  const std::vector<std::string> cells = CellsOf(row);
  if (!started_) {
    Measure(cells);
    WriteHeld();
  }
  WriteRule();
  WriteLine(cells);
}

void TableWriter::Finish() {
  if (!started_) WriteHeld();
}

void TableWriter::Measure(const std::vector<std::string>& cells) {
  for (std::size_t i = 0; i < cells.size(); ++i) {
    columns_[i].width = std::max(columns_[i].width, DisplayWidth(cells[i]));
  }
}

void TableWriter::WriteHeld() {
  started_ = true;
  std::vector<std::string> titles;
  for (const TableColumn& column : columns_) titles.push_back(column.title);
  WriteLine(titles);
  WriteRule();
  for (const std::vector<std::string>& cells : held_) WriteLine(cells);
  held_.clear();
}

void TableWriter::WriteRule() {
  std::vector<std::string> rules;
  for (const TableColumn& column : columns_) rules.emplace_back(column.width, '-');
  WriteLine(rules);
}

void TableWriter::WriteLine(const std::vector<std::string>& cells) {
  std::string line;
  for (std::size_t i = 0; i < cells.size(); ++i) {
    if (i > 0) line += "  ";
    line += Padded(cells[i], columns_[i].width, columns_[i].isNumber);
  }
  line.resize(line.find_last_not_of(' ') + 1);
  out_ << line << '\n';
}

}  // namespace larkmoor::cli
