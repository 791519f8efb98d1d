#include "assignment.h"

#include "failure.h"
#include "text_tools.h"
#include "value_text.h"

namespace larkmoor::cli {

Assignment SplitAssignment(const std::string& text) {
  const std::size_t equals = text.find('=');
  if (equals == std::string::npos || equals == 0) {
    throw UsageError(Quoted(text) + " is not of the form NAME=VALUE");
  }
  return {text.substr(0, equals), text.substr(equals + 1)};
}

Variant ConvertForColumn(const Column& column, std::string_view text) {
  try {
    return ValueFromText(text, column.property->type);
  } catch (const ValueError& error) {
    throw UsageError(column.Name() + ": " + error.what());
  }
}

RowValues::RowValues(RowSource& rows, const std::vector<std::string>& assignments) {
  const std::size_t recordLength = rows.File().RecordBuffer()->size();
  for (const std::string& assignment : assignments) {
    const Assignment parts = SplitAssignment(assignment);
    const Column column = rows.Shape().FindSettable(parts.name);
    RequireOfRecord(column);
    values_.push_back({column, ConvertForColumn(column, parts.value)});
    for (const std::string& loss : LossesOf(parts.value, *column.property, recordLength)) {
      Report(column.Name() + ": " + loss);
    }
  }
}

void RowValues::SetIn(RowSource& rows) const {
  for (const Value& value : values_) rows.Set(value.column, value.value);
}

}  // namespace larkmoor::cli
