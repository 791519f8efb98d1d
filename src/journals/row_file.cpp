#include "journals/row_file.h"

namespace larkmoor {

Status RowFile::FindFirst(std::int32_t nRecord, std::int16_t keyNumber) {
  keyNumber_ = keyNumber;
  File().KeyLong(nRecord, 0);
  if (keyNumber_ == ByOrder) File().KeyWord(0, 4);
  return File().btGetGreaterOrEqual(keyNumber_);
}

bool RowFile::BelongsTo(std::int32_t nRecord) {
  return Record().GetLong(JrnlRowRecord::NRecord) == nRecord;
}

void RowFile::DeleteRows(std::int32_t nRecord) {
  // Who may not write to the file is told so by each delete.
  File().Claim();
  Status status = FindFirst(nRecord, ByTransaction);
  while (status == StatusSuccess && BelongsTo(nRecord) && File().btDelete() == StatusSuccess) {
    status = File().btGetNext(keyNumber_);
  }
}

Status RowFile::InsertStamped(const RowStamp& stamp) {
  Tovrin2Record& row = Record();
  row.SetLong(JrnlRowRecord::NRecord, stamp.nRecord);
  row.SetLong(JrnlRowRecord::JournalID, stamp.journalID);
  row.SetDate(JrnlRowRecord::TrxDate, stamp.trxDate);
  return File().btInsert(keyNumber_);
}

}  // namespace larkmoor
