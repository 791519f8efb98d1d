#include "row_shape.h"

#include <algorithm>
#include <charconv>
#include <utility>

#include "engine/text.h"
#include "failure.h"
#include "field_access.h"
#include "text_tools.h"

namespace larkmoor::cli {
namespace {

using automation::Argument;
using automation::Member;
using automation::Storage;
using automation::ValueType;

/// A column's name taken apart.
struct NameParts {
  std::string_view name;
  std::vector<std::int32_t> indexes;
};

[[noreturn]] void RaiseBadName(std::string_view name) {
  throw UsageError(Quoted(name) + " is no name of a column: Name, Name(1) or Name(1,2) is");
}

/// The numbers of "1,2".
std::vector<std::int32_t> ParseIndexes(std::string_view list, std::string_view name) {
  std::vector<std::int32_t> indexes;
  const char* at = list.data();
  const char* const end = at + list.size();
  while (true) {
    std::int32_t index = 0;
    const auto [stop, error] = std::from_chars(at, end, index);
    if (error != std::errc()) RaiseBadName(name);
    indexes.push_back(index);
    if (stop == end) return indexes;
    if (*stop != ',') RaiseBadName(name);
    at = stop + 1;
  }
}

NameParts ParseName(std::string_view text) {
  const std::string_view name = TrimBlanks(text);
  const std::size_t open = name.find('(');
  if (open == std::string_view::npos) return {name, {}};
  if (name.back() != ')') RaiseBadName(text);
  return {name.substr(0, open), ParseIndexes(name.substr(open + 1, name.size() - open - 2), text)};
}

/// The pieces of a list between its commas, but for those within parentheses.
std::vector<std::string_view> SplitList(std::string_view list) {
  std::vector<std::string_view> pieces;
  std::size_t start = 0;
  bool within = false;
  for (std::size_t i = 0; i < list.size(); ++i) {
    if (list[i] == '(') within = true;
    if (list[i] == ')') within = false;
    if (list[i] != ',' || within) continue;
    pieces.push_back(list.substr(start, i - start));
    start = i + 1;
  }
  pieces.push_back(list.substr(start));
  return pieces;
}

/// Adds a column for each element, the last index running fastest.
void AddElements(const Property& property, std::vector<std::int32_t>& indexes,
                 std::vector<Column>& columns) {
  if (indexes.size() == property.indexCount) {
    columns.push_back({&property, indexes});
    return;
  }
  const IndexRange range = property.ranges[indexes.size()];
  for (std::int32_t index = range.first; index <= range.last; ++index) {
    indexes.push_back(index);
    AddElements(property, indexes, columns);
    indexes.pop_back();
  }
}

void AddElements(const Property& property, std::vector<Column>& columns) {
  if (property.ranges.size() < property.indexCount) return;
  std::vector<std::int32_t> indexes;
  AddElements(property, indexes, columns);
}

std::vector<IndexRange> RangesOf(const Field& field) {
  std::vector<IndexRange> ranges;
  if (field.count > 0) ranges.push_back({0, field.count - 1});
  if (field.count2 > 0) ranges.push_back({0, field.count2 - 1});
  return ranges;
}

std::vector<IndexRange> RangesOf(const Member& member) {
  std::vector<IndexRange> ranges;
  if (member.field != nullptr) ranges = RangesOf(*member.field);
  if (member.clamps && ranges.empty()) ranges.emplace_back();
  if (member.clamps) ranges.front() = {member.clampLow, member.clampHigh};
  if (ranges.size() != member.arguments.size()) ranges.clear();
  return ranges;
}

bool IsIndex(const Argument& argument) {
  return !argument.byref &&
         (argument.type == ValueType::Integer || argument.type == ValueType::Long);
}

Property PropertyOf(const Member& member) {
  return {.name = member.name,
          .type = member.storage == Storage::Date ? ValueType::Date : member.type,
          .readable = member.get != nullptr,
          .writable = member.let != nullptr,
          .keeps = member.storage != Storage::Dead,
          .listed = member.get != nullptr && member.storage != Storage::Dead,
          .ofDetail = member.ofRow,
          .detailList = member.rowList,
          .indexCount = member.arguments.size(),
          .ranges = RangesOf(member),
          .field = member.field};
}

}  // namespace

std::string Column::Name() const {
  std::string name(property->name);
  for (std::size_t i = 0; i < indexes.size(); ++i) {
    name += i == 0 ? '(' : ',';
    name += std::to_string(indexes[i]);
  }
  return indexes.empty() ? name : name + ")";
}

bool AnyOfDetail(const std::vector<Column>& columns) {
  return std::ranges::any_of(columns, [](const Column& c) { return c.property->ofDetail; });
}

void RequireOfRecord(const Column& column) {
  if (!column.property->ofDetail) return;
  throw UsageError(column.Name() +
                   " is of the rows of a transaction, and here the transaction as "
                   "a whole is meant; list, export and import go through its rows");
}

RowShape::RowShape(std::string_view owner, std::vector<Property> properties)
    : owner_(owner), properties_(std::move(properties)) {}

std::vector<Column> RowShape::AllColumns() const {
  std::vector<Column> columns;
  for (const Property& property : properties_) {
    if (property.listed) AddElements(property, columns);
  }
  return columns;
}

std::vector<Column> RowShape::RecordColumns() const {
  std::vector<Column> columns;
  for (const Property& property : properties_) {
    if (property.ofDetail) continue;
    if (property.listed || property.countsDetails) AddElements(property, columns);
  }
  return columns;
}

const Property& RowShape::FindProperty(std::string_view name) const {
  const auto found = std::ranges::find_if(
      properties_, [&](const Property& p) { return EqualIgnoringCase(p.name, name); });
  if (found == properties_.end()) {
    throw UsageError(owner_ + " has no property " + Quoted(name));
  }
  return *found;
}

Column RowShape::FindColumn(std::string_view name) const {
  const NameParts parts = ParseName(name);
  const Property& property = FindProperty(parts.name);
  const std::string label = owner_ + "." + std::string(property.name);
  if (parts.indexes.size() != property.indexCount) {
    if (property.indexCount == 0) throw UsageError(label + " takes no index");
    throw UsageError(label + " takes " + std::to_string(property.indexCount) +
                     (property.indexCount == 1 ? " index" : " indexes") + ", as in " +
                     std::string(property.name) + (property.indexCount == 1 ? "(1)" : "(1,2)"));
  }
  for (std::size_t i = 0; i < property.ranges.size(); ++i) {
    const IndexRange range = property.ranges[i];
    if (parts.indexes[i] >= range.first && parts.indexes[i] <= range.last) continue;
    throw UsageError(label + " has no element " + std::to_string(parts.indexes[i]) + ": only " +
                     std::to_string(range.first) + " to " + std::to_string(range.last));
  }
  return {&property, parts.indexes};
}

Column RowShape::FindSettable(std::string_view name) const {
  Column column = FindColumn(name);
  const std::string label = owner_ + "." + std::string(column.property->name);
  if (!column.property->writable) throw UsageError(label + " is read-only");
  if (!column.property->keeps) throw UsageError(label + " keeps nothing that is written to it");
  return column;
}

std::vector<Column> RowShape::ColumnsNamed(std::string_view name) const {
  const NameParts parts = ParseName(name);
  const Property& property = FindProperty(parts.name);
  std::vector<Column> columns;
  if (parts.indexes.empty()) AddElements(property, columns);
  if (columns.empty()) columns.push_back(FindColumn(name));
  if (!property.readable) {
    throw UsageError(owner_ + "." + std::string(property.name) + " cannot be read");
  }
  return columns;
}

std::vector<Column> RowShape::SelectColumns(std::string_view list) const {
  if (list.empty()) return AllColumns();
  std::vector<Column> columns;
  for (const std::string_view name : SplitList(list)) {
    const std::vector<Column> named = ColumnsNamed(name);
    columns.insert(columns.end(), named.begin(), named.end());
  }
  return columns;
}

std::vector<Column> RowShape::SelectRecordColumns(std::string_view list) const {
  return list.empty() ? RecordColumns() : SelectColumns(list);
}

std::vector<Property> PropertiesOf(const automation::Class& type) {
  std::vector<Property> properties;
  for (const Member& member : type.members) {
    if (member.isOperation || !std::ranges::all_of(member.arguments, IsIndex)) continue;
    properties.push_back(PropertyOf(member));
  }
  return properties;
}

std::vector<Property> PropertiesOf(const RecordDescription& record) {
  std::vector<Property> properties;
  for (const Field& field : record.fields) {
    std::vector<IndexRange> ranges = RangesOf(field);
    const std::size_t indexCount = ranges.size();
    properties.push_back({.name = field.name,
                          .type = TypeOf(field),
                          .indexCount = indexCount,
                          .ranges = std::move(ranges),
                          .field = &field});
  }
  return properties;
}

}  // namespace larkmoor::cli
