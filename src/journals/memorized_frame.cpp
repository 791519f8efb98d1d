#include "journals/memorized_frame.h"

namespace larkmoor {

Status CountedRows::Load(std::int32_t nRecord) {
  counts_.StartLoading();
  const Status status = File().ReadRows(nRecord, RowFile::ByTransaction, [this] { counts_.Add(); });
  return Count() > 0 ? StatusSuccess : status;
}

Tovrin2Record& CountedRows::Show(std::int16_t row) {
  if (row > counts_.capacity) counts_.GrowTo(row);
  counts_.inHand = row;
  return File().Record();
}

void CountedRows::SetCount(std::int16_t rows) {
  counts_.capacity = std::max<std::int32_t>(counts_.capacity, rows);
  counts_.loaded = rows;
}

// The one row there is goes in as often as there are rows.
void CountedRows::InsertAll(const RowStamp& stamp) {
  for (std::int32_t i = 0; i < Count(); ++i) File().InsertStamped(stamp);
  counts_.inHand = 0;
}

MemorizedFrame::MemorizedFrame()
    : TransactionFrame("MemorizedTransactions", rows_, {},
                       {.headers = TovrinFileNames::MemorizedHdrFile(),
                        .rows = TovrinFileNames::MemorizedRowFile(),
                        .headerWord = "StxHdr",
                        .rowWord = "StxRow"}) {}

Status MemorizedFrame::CloseFile() {
  rows_.Clear();
  return TransactionFrame::CloseFile({{customers_, "Customer"}, {vendors_, "Vendor"}});
}

}  // namespace larkmoor
