#include "row_mark.h"

#include <bit>
#include <cstring>

namespace larkmoor::cli {
namespace {

static_assert(std::endian::native == std::endian::little, "records are little-endian");

bool HasRoomFor(const RecordBytes& row, const RowMark& mark) {
  return row.size() >= mark.offset + sizeof(mark.value);
}

}  // namespace

bool BearsMark(const RecordDescription& record, const RecordBytes& row) {
  if (record.rowMark == nullptr) return true;
  if (!HasRoomFor(row, *record.rowMark)) return false;
  std::int16_t value = 0;
  std::memcpy(&value, row.data() + record.rowMark->offset, sizeof(value));
  return value == record.rowMark->value;
}

void GiveMark(const RecordDescription& record, RecordBytes& row) {
  const RowMark* mark = record.rowMark;
  if (mark == nullptr || !HasRoomFor(row, *mark)) return;
  std::memcpy(row.data() + mark->offset, &mark->value, sizeof(mark->value));
}

}  // namespace larkmoor::cli
