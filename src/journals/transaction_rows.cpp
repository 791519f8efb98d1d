#include "journals/transaction_rows.h"

#include "connection/message_boxes.h"
#include "engine/store/driver.h"

namespace larkmoor {
namespace {

std::string NumberAndText(const Error& error) {
  return std::to_string(error.Number()) + " : " + error.Description();
}

}  // namespace

void TransactionRows::Write(const RowStamp& stamp) {
  KeepRowInHand();
  const auto batch = store::DefaultDriver().BeginBatch();
  file_.DeleteRows(stamp.nRecord);
  InsertAll(stamp);
  batch->Commit();
}

void TransactionRows::DeleteFromFile(std::int32_t nRecord) {
  const auto batch = store::DefaultDriver().BeginBatch();
  file_.DeleteRows(nRecord);
  batch->Commit();
}

Status ListedRows::Load(std::int32_t nRecord) {
  rows_.StartLoading();
  const Status status = File().ReadRows(nRecord, RowFile::ByOrder, [&] {
    try {
      rows_.Load(File().Record());
    } catch (const Error& error) {
      ShowMessageBox(LoadingMessage(nRecord, rows_.Counts(), error));
    }
  });
  rows_.EndLoading();
  return Count() > 0 ? StatusSuccess : status;
}

Tovrin2Record& ListedRows::Show(std::int16_t row) {
  try {
    rows_.ShowRow(row, File().Record());
  } catch (const Error& error) {
    ShowMessageBox(PositioningMessage("", row, rows_.Counts(), error));
  }
  return File().Record();
}

void ListedRows::InsertAll(const RowStamp& stamp) {
  for (std::int32_t i = 0; i < Count(); ++i) {
    rows_.CopyTo(i, File().Record());
    File().InsertStamped(stamp);
  }
  rows_.LetGo();
}

// The copy always stops at its first byte.
std::string PositioningMessage(std::string_view list, std::int16_t row, const RowCounts& counts,
                               const Error& error) {
  const std::string name(list);
  return "Error in PositionOnDetail" + name + "(" + std::to_string(row) + "): NRowsDefined" + name +
         " = " + std::to_string(counts.capacity) + ", NDetail" + name + " = " +
         std::to_string(counts.inHand) + ", j = 0\r\n" + NumberAndText(error);
}

// The pieces run into each other, as users have come to know them.
std::string LoadingMessage(std::int32_t nRecord, const RowCounts& counts, const Error& error) {
  return "Error in JrnlRow_GetDetail:\r\nNRecord = " + std::to_string(nRecord) +
         ", NDetail = " + std::to_string(counts.inHand) +
         "NRowsLoaded = " + std::to_string(counts.loaded) +
         ", NRowsDefined = " + std::to_string(counts.capacity) + NumberAndText(error);
}

}  // namespace larkmoor
