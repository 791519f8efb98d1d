#include "record_rows.h"

#include <bit>
#include <cstddef>
#include <cstring>
#include <string>

#include "connection/shared_state.h"
#include "failure.h"
#include "field_access.h"
#include "value_text.h"

namespace larkmoor::cli {
namespace {

static_assert(std::endian::native == std::endian::little, "records are little-endian");

bool HasRoomFor(const RecordBytes& bytes, const RowMark& mark) {
  return bytes.size() >= mark.offset + sizeof(mark.value);
}

}  // namespace

RecordRows::RecordRows(const RecordDescription& description, Access access)
    : record_(description), shape_(description.name, PropertiesOf(description)) {
  const std::string path = Shared().gCompanyPath + std::string(description.fileName);
  const auto mode = access == Access::Read ? TovrinFile::ReadOnlyMode : TovrinFile::NormalMode;
  Require(file_.btOpen(path, mode), description.fileName);
  record_.AttachBuffer(file_.RecordBuffer());
  record_.ClearBuffer();
}

bool RecordRows::IsRow() const {
  const RowMark* mark = record_.Description().rowMark;
  if (mark == nullptr) return true;
  if (!HasRoomFor(record_.Bytes(), *mark)) return false;
  std::int16_t value = 0;
  std::memcpy(&value, record_.Bytes().data() + mark->offset, sizeof(value));
  return value == mark->value;
}

void RecordRows::SetRowMark() {
  const RowMark* mark = record_.Description().rowMark;
  if (mark == nullptr || !HasRoomFor(record_.Bytes(), *mark)) return;
  std::memcpy(record_.Bytes().data() + mark->offset, &mark->value, sizeof(mark->value));
}

void RecordRows::StartRow() {
  record_.ClearBuffer();
  SetRowMark();
}

Variant RecordRows::Get(const Column& column) {
  return GetField(record_, *column.property->field, column.indexes);
}

void RecordRows::Set(const Column& column, const Variant& value) {
  SetField(record_, *column.property->field, column.indexes, value);
  if (IsRow()) return;
  SetRowMark();
  throw ValueError("a row of " + std::string(Name()) + " bears the mark of its kind, " +
                   std::to_string(record_.Description().rowMark->value));
}

}  // namespace larkmoor::cli
