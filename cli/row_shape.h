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
  /// Whether it stands among all columns.
  bool listed = true;
  /// Set for a property of one detail: of one row of a transaction, whichever is in hand.
  bool ofDetail = false;
  /// Which list of details that one is in, of a record that has several.
  std::string_view detailList = {};
  /// Whether its member is told by an index which detail that is; otherwise it shows the one that
  /// its object has in hand.
  bool takesDetail = false;
  /// Set for a property that tells how many details there are.
  bool countsDetails = false;
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

/// Whether any of the columns is of a detail.
bool AnyOfDetail(const std::vector<Column>& columns);
/// Raises a `UsageError` for a column of a detail, where only a record as a whole is asked for.
void RequireOfRecord(const Column& column);

/// All properties of a class or a record. Its columns are valid as long as it is.
class RowShape {
 public:
  /// `owner` is the name of the class or record, for messages.
  RowShape(std::string_view owner, std::vector<Property> properties);
  RowShape(const RowShape&) = delete;
  RowShape& operator=(const RowShape&) = delete;

  /// The columns of all listed properties, in their order.
  [[nodiscard]] std::vector<Column> AllColumns() const;
  /// The same for a record as a whole, without its details, but with their number.
  [[nodiscard]] std::vector<Column> RecordColumns() const;
  /// The column of that name in any case of letters. Raises a `UsageError` that tells why there is
  /// none.
  [[nodiscard]] Column FindColumn(std::string_view name) const;
  /// The same for a value that is to be set.
  [[nodiscard]] Column FindSettable(std::string_view name) const;
  /// The columns of a list "a,b(1),c"; a repeating property without an index stands for all its
  /// elements. An empty list stands for all columns.
  [[nodiscard]] std::vector<Column> SelectColumns(std::string_view list) const;
  /// The same, but for an empty list, which stands for the columns of a record as a whole.
  [[nodiscard]] std::vector<Column> SelectRecordColumns(std::string_view list) const;

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
