#include "row_writer.h"

#include <nlohmann/json.hpp>

#include "csv.h"
#include "table_writer.h"
#include "text_tools.h"
#include "value_text.h"

namespace larkmoor::cli {
namespace {

using nlohmann::ordered_json;

std::vector<std::string> TextsOf(const std::vector<Variant>& row) {
  std::vector<std::string> texts;
  for (const Variant& value : row) texts.push_back(TextOf(value));
  return texts;
}

class CsvWriter : public RowWriter {
 public:
  CsvWriter(std::ostream& out, const std::vector<Column>& columns) : out_(out) {
    std::vector<std::string> titles;
    for (const Column& column : columns) titles.push_back(column.Name());
    WriteCsv(out_, titles);
  }
  void Write(const std::vector<Variant>& row) override { WriteCsv(out_, TextsOf(row)); }
  void Finish() override {}

 private:
  std::ostream& out_;
};

ordered_json JsonValue(const Variant& value) {
  switch (value.GetKind()) {
    case Variant::Kind::Empty:
    case Variant::Kind::Null:
      return nullptr;
    case Variant::Kind::Byte:
    case Variant::Kind::Integer:
    case Variant::Kind::Long:
      return value.ToLong();
    case Variant::Kind::Single:
    case Variant::Kind::Double:
    case Variant::Kind::Currency:
      return value.ToDouble();
    case Variant::Kind::Boolean:
      return value.ToBoolean();
    case Variant::Kind::Date: {
      const std::string text = TextOf(value);
      return text.empty() ? ordered_json(nullptr) : ordered_json(text);
    }
    case Variant::Kind::String:
      break;
  }
  return value.ToText();
}

/// An array with an object a line.
class JsonWriter : public RowWriter {
 public:
  JsonWriter(std::ostream& out, const std::vector<Column>& columns)
      : out_(out), columns_(columns) {}
  void Write(const std::vector<Variant>& row) override {
    out_ << (empty_ ? "[\n" : ",\n") << JsonText(JsonOf(columns_, row));
    empty_ = false;
  }
  void Finish() override { out_ << (empty_ ? "[]\n" : "\n]\n"); }

 private:
  std::ostream& out_;
  std::vector<Column> columns_;
  bool empty_ = true;
};

}  // namespace

std::unique_ptr<RowWriter> MakeRowWriter(const std::string& format, std::ostream& out,
                                         const std::vector<Column>& columns) {
  if (format == "csv") return std::make_unique<CsvWriter>(out, columns);
  if (format == "json") return std::make_unique<JsonWriter>(out, columns);
  return std::make_unique<TableWriter>(out, columns);
}

ordered_json JsonOf(const std::vector<Column>& columns, const std::vector<Variant>& row) {
  ordered_json object = ordered_json::object();
  for (std::size_t i = 0; i < row.size(); ++i) object[columns[i].Name()] = JsonValue(row[i]);
  return object;
}

std::string JsonText(const ordered_json& json, int indent) {
  return json.dump(indent, ' ', false, ordered_json::error_handler_t::replace);
}

void WriteSingleRow(const std::string& format, std::ostream& out,
                    const std::vector<Column>& columns, const std::vector<Variant>& row) {
  if (format == "json") {
    out << JsonText(JsonOf(columns, row), JsonIndent) << '\n';
    return;
  }
  for (std::size_t i = 0; i < row.size(); ++i) {
    out << columns[i].Name() << ": " << Printable(TextOf(row[i])) << '\n';
  }
}

std::vector<Variant> ValuesOf(RowSource& rows, const std::vector<Column>& columns) {
  std::vector<Variant> values;
  values.reserve(columns.size());
  for (const Column& column : columns) values.push_back(rows.Get(column));
  return values;
}

}  // namespace larkmoor::cli
