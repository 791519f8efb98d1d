#include "record_rows.h"

#include <string>

#include "connection/shared_state.h"
#include "failure.h"
#include "field_access.h"
#include "row_mark.h"
#include "value_text.h"

namespace larkmoor::cli {
RecordRows::RecordRows(const RecordDescription& description, Access access)
    : record_(description), shape_(description.name, PropertiesOf(description)) {
  const std::string path = Shared().gCompanyPath + std::string(description.fileName);
  const auto mode = access == Access::Read ? TovrinFile::ReadOnlyMode : TovrinFile::NormalMode;
  Require(file_.btOpen(path, mode), description.fileName);
  record_.AttachBuffer(file_.RecordBuffer());
  record_.ClearBuffer();
}

bool RecordRows::IsRow() const { return BearsMark(record_.Description(), record_.Bytes()); }

void RecordRows::StartRow() {
  record_.ClearBuffer();
  GiveMark(record_.Description(), record_.Bytes());
}

Variant RecordRows::Get(const Column& column) {
  return GetField(record_, *column.property->field, column.indexes);
}

void RecordRows::Set(const Column& column, const Variant& value) {
  SetField(record_, *column.property->field, column.indexes, value);
  if (IsRow()) return;
  GiveMark(record_.Description(), record_.Bytes());
  throw ValueError("a row of " + std::string(Name()) + " bears the mark of its kind, " +
                   std::to_string(record_.Description().rowMark->value));
}

}  // namespace larkmoor::cli
