// Reading comma-separated text with a header line: a field may stand in quotes, and then hold
// commas, line breaks and, doubled, quotes. To copy along with the examples.
#pragma once

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <larkmoor/date.h>

namespace example {

/// What all lines of a file share.
struct CsvHeader {
  std::string file;
  std::vector<std::string> columns;
};

/// One line of a file, whose fields are found by the names of the header line. A field that is not
/// what is asked for raises `std::runtime_error`, which names file, line and column.
class CsvRow {
 public:
  CsvRow(std::shared_ptr<const CsvHeader> header, std::size_t line, std::vector<std::string> fields)
      : header_(std::move(header)), line_(line), fields_(std::move(fields)) {
    if (fields_.size() != header_->columns.size()) {
      Fail("has " + std::to_string(fields_.size()) + " fields, not " +
           std::to_string(header_->columns.size()));
    }
  }

  [[nodiscard]] const std::string& Text(std::string_view column) const {
    const auto found = std::ranges::find(header_->columns, column);
    if (found == header_->columns.end()) Fail("has no column " + std::string(column));
    return fields_[static_cast<std::size_t>(found - header_->columns.begin())];
  }

  [[nodiscard]] double Number(std::string_view column) const {
    const std::string& text = Text(column);
    double number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc() || end != text.data() + text.size()) Reject(column, "a number");
    return number;
  }
  [[nodiscard]] std::int16_t Integer(std::string_view column) const {
    const double number = Number(column);
    if (number != std::trunc(number) || std::abs(number) > INT16_MAX) Reject(column, "an integer");
    return static_cast<std::int16_t>(number);
  }
  /// An amount of money in cents: sums of cents are exact, and sums of doubles are not.
  [[nodiscard]] std::int64_t Cents(std::string_view column) const {
    return std::llround(Number(column) * 100);
  }
  [[nodiscard]] larkmoor::Date Day(std::string_view column) const {
    const auto day = larkmoor::Date::FromText(Text(column));
    if (!day) Reject(column, "a date");
    return *day;
  }

  /// Raises what is wrong with this line.
  [[noreturn]] void Fail(const std::string& what) const {
    throw std::runtime_error(header_->file + ":" + std::to_string(line_) + ": " + what);
  }

 private:
  [[noreturn]] void Reject(std::string_view column, const std::string& wanted) const {
    Fail("column " + std::string(column) + ": \"" + Text(column) + "\" is not " + wanted);
  }

  std::shared_ptr<const CsvHeader> header_;
  std::size_t line_;
  std::vector<std::string> fields_;
};

/// Takes the fields of one line after the other off a text.
class CsvParser {
 public:
  explicit CsvParser(std::string text) : text_(std::move(text)) {
    if (text_.starts_with("\xEF\xBB\xBF")) at_ = 3;  // the mark by which some programs tell UTF-8
  }

  [[nodiscard]] bool AtEnd() const { return at_ == text_.size(); }
  /// The line, counted from 1, that the next fields start on.
  [[nodiscard]] std::size_t Line() const { return line_; }

  std::vector<std::string> TakeFields() {
    std::vector<std::string> fields(1);
    bool quoted = false;
    while (!AtEnd()) {
      const char c = text_[at_++];
      if (c == '\n') ++line_;
      if (quoted && c == '"' && text_[at_] == '"') {
        fields.back() += text_[at_++];
      } else if (c == '"') {
        quoted = !quoted;
      } else if (c == ',' && !quoted) {
        fields.emplace_back();
      } else if (c == '\n' && !quoted) {
        break;
      } else if (c != '\r' || quoted) {
        fields.back() += c;
      }
    }
    return fields;
  }

 private:
  std::string text_;
  std::size_t at_ = 0;
  std::size_t line_ = 1;
};

/// All lines of a file.
inline std::vector<CsvRow> ReadCsv(const std::filesystem::path& path) {
  std::ifstream in(path, std::ios::binary);
  if (!in) throw std::runtime_error(path.string() + ": cannot be read");
  CsvParser parser(std::string(std::istreambuf_iterator<char>(in), {}));
  const auto header = std::make_shared<const CsvHeader>(
      CsvHeader{.file = path.string(), .columns = parser.TakeFields()});
  std::vector<CsvRow> rows;
  while (!parser.AtEnd()) {
    const std::size_t line = parser.Line();
    rows.emplace_back(header, line, parser.TakeFields());
  }
  return rows;
}

/// The rows in groups of neighbours that have the same text in `column`.
inline std::vector<std::span<const CsvRow>> GroupBy(std::span<const CsvRow> rows,
                                                    std::string_view column) {
  std::vector<std::span<const CsvRow>> groups;
  while (!rows.empty()) {
    const std::string& text = rows.front().Text(column);
    const auto end =
        std::ranges::find_if(rows, [&](const CsvRow& row) { return row.Text(column) != text; });
    const auto count = static_cast<std::size_t>(end - rows.begin());
    groups.push_back(rows.first(count));
    rows = rows.subspan(count);
  }
  return groups;
}

}  // namespace example
