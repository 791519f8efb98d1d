#include "row_walk.h"

#include <algorithm>
#include <utility>

#include "assignment.h"
#include "failure.h"
#include "value_text.h"

namespace larkmoor::cli {
namespace {

using store::KeyDescription;
using store::KeySegment;
using store::SegmentType;

/// Where the column's element lies in the record.
std::size_t OffsetOf(const Column& column) {
  const Field& field = *column.property->field;
  std::size_t element = 0;
  if (!column.indexes.empty()) element = static_cast<std::size_t>(column.indexes[0]);
  if (column.indexes.size() > 1) {
    element = element * field.count2 + static_cast<std::size_t>(column.indexes[1]);
  }
  return field.offset + element * field.width;
}

/// Whether the field's shown text and the segment's bytes tell each other. Dates and floating-point
/// numbers are not among them: several stored values show as one.
bool TellEachOther(FieldType field, SegmentType segment) {
  return (field == FieldType::Byte && segment == SegmentType::Byte) ||
         (field == FieldType::Integer && segment == SegmentType::Integer) ||
         (field == FieldType::Long && segment == SegmentType::Long) ||
         (field == FieldType::Text && segment == SegmentType::ZeroText);
}

bool Finds(const KeyDescription& key, const Column& column) {
  if (column.property->field == nullptr || key.segments.size() != 1) return false;
  const Field& field = *column.property->field;
  const KeySegment& segment = key.segments.front();
  return TellEachOther(field.type, segment.type) && segment.width == field.width &&
         segment.offset == OffsetOf(column);
}

void WriteKey(TovrinFile& file, const Condition& condition) {
  const automation::ValueType type = condition.column.property->type;
  const Variant value = ValueFromText(condition.text, type);
  switch (condition.column.property->field->type) {
    case FieldType::Byte:
      return file.KeyByte(value.ToByte(), 0);
    case FieldType::Integer:
      return file.KeyWord(value.ToInteger(), 0);
    case FieldType::Long:
      return file.KeyLong(value.ToLong(), 0);
    default:
      return file.KeyTerminated(condition.text, 0);
  }
}

}  // namespace

Condition ParseCondition(const RowShape& shape, const std::string& assignment) {
  const Assignment parts = SplitAssignment(assignment);
  const Column column = shape.FindColumn(parts.name);
  if (!column.property->readable) throw UsageError(column.Name() + " cannot be read");
  RequireOfRecord(column);
  return {column, TextOf(ConvertForColumn(column, parts.value))};
}

RowWalk::RowWalk(RowSource& rows, WalkOptions options) : rows_(rows), options_(std::move(options)) {
  if (options_.mayUseKeys) ChooseKey();
}

void RowWalk::ChooseKey() {
  const store::FileDescription* file = rows_.File().Description();
  if (file == nullptr) return;
  for (const Condition& condition : options_.conditions) {
    for (const KeyDescription& key : file->keys) {
      if (options_.key.value_or(key.number) != key.number) continue;
      if (!Finds(key, condition.column)) continue;
      sought_ = &condition;
      options_.key = key.number;
      return;
    }
  }
}

bool RowWalk::Next() {
  if (options_.eachDetail && started_ && rows_.NextDetail()) return true;
  while (Read()) {
    if (sought_ != nullptr && !Meets(*sought_)) return false;
    if (rows_.IsRow() &&
        std::ranges::all_of(options_.conditions, [&](const Condition& c) { return Meets(c); })) {
      return true;
    }
  }
  return false;
}

bool RowWalk::Read() {
  const Status status = std::exchange(started_, true) ? ReadNext() : ReadFirst();
  if (status == StatusEndOfFile || (sought_ != nullptr && status == StatusKeyNotFound))
    return false;
  Require(status, rows_.Name());
  return true;
}

Status RowWalk::ReadFirst() {
  TovrinFile& file = rows_.File();
  if (!options_.key) return file.btStepFirst();
  if (sought_ == nullptr) return file.btGetFirst(*options_.key);
  WriteKey(file, *sought_);
  return file.btGetEqual(*options_.key);
}

Status RowWalk::ReadNext() {
  TovrinFile& file = rows_.File();
  return options_.key ? file.btGetNext(*options_.key) : file.btStepNext();
}

bool RowWalk::Meets(const Condition& condition) const {
  return TextOf(rows_.Get(condition.column)) == condition.text;
}

}  // namespace larkmoor::cli
