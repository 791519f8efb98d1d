// What the rows of a class or of a record description have: properties, and the columns that they
// make, one for each element of a repeating one.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "automation/automation.h"
#include "engine/record_description.h"

namespace larkmoor::cli {

/// The range of an index, first and last included.
struct IndexRange {
  std::int32_t first = 0;
  std::int32_t last = -1;
};

/// A property of a class or a field of a record.
struct Property {
  std::string_view name;
  automation::ValueType type;  ///< `Date` also for a Variant that holds a date or Null
  bool readable = true;
  bool writable = true;
  /// Whether it keeps what is written. A dead property does not.
  bool keeps = true;
  std::size_t indexCount = 0;
  /// One for each index; empty where the class alone knows them.
  std::vector<IndexRange> ranges = {};
  /// The record's field behind it, or null.
  const Field* field = nullptr;

  /// Whether a value that is set will be there when it is read again.
  [[nodiscard]] bool CanSet() const { return writable && keeps; }
};

/// A property, or one element of a repeating one.
struct Column {
  const Property* property;
  std::vector<std::int32_t> indexes;

  /// "Name", "Name(1)" or "Name(1,2)".
  [[nodiscard]] std::string Name() const;
  bool operator==(const Column&) const = default;
};

/// All properties of a class or a record. Its columns are valid as long as it is.
class RowShape {
 public:
  /// `owner` is the name of the class or record, for messages.
  RowShape(std::string_view owner, std::vector<Property> properties);
  RowShape(const RowShape&) = delete;
  RowShape& operator=(const RowShape&) = delete;

  /// Every column that can be read and keeps something, in the order of the properties.
  [[nodiscard]] std::vector<Column> AllColumns() const;
  /// The column of that name in any case of letters. Raises a `UsageError` that tells why there is
  /// none.
  [[nodiscard]] Column FindColumn(std::string_view name) const;
  /// The same for a value that is to be set.
  [[nodiscard]] Column FindSettable(std::string_view name) const;
  /// The columns of a list "a,b(1),c"; a repeating property without an index stands for all its
  /// elements. An empty list stands for all columns.
  [[nodiscard]] std::vector<Column> SelectColumns(std::string_view list) const;

 private:
  [[nodiscard]] const Property& FindProperty(std::string_view name) const;
  [[nodiscard]] std::vector<Column> ColumnsNamed(std::string_view name) const;

  std::string owner_;
  std::vector<Property> properties_;
};

/// The properties of a public class that can stand in a column.
std::vector<Property> PropertiesOf(const automation::Class& type);
/// The fields of a record, one property each.
std::vector<Property> PropertiesOf(const RecordDescription& record);

}  // namespace larkmoor::cli
