// "NAME=VALUE" on the command line.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "row_source.h"

namespace larkmoor::cli {

struct Assignment {
  std::string name;
  std::string value;
};

/// Takes "NAME=VALUE" apart at the first "=". Raises a `UsageError` where there is none.
Assignment SplitAssignment(const std::string& text);

/// The value of a text for a column. Raises a `UsageError` that names the column where it does not
/// convert.
Variant ConvertForColumn(const Column& column, std::string_view text);

/// The values that "NAME=VALUE"s give to columns.
class RowValues {
 public:
  /// Raises a `UsageError` for a name that cannot be set and a value that does not convert. What
  /// the record cannot hold of a text is reported on standard error.
  RowValues(RowSource& rows, const std::vector<std::string>& assignments);

  /// Sets them in the row in hand.
  void SetIn(RowSource& rows) const;

 private:
  struct Value {
    Column column;
    Variant value;
  };
  std::vector<Value> values_;
};

}  // namespace larkmoor::cli
