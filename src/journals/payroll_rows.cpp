#include "journals/payroll_rows.h"

#include "connection/message_boxes.h"

namespace larkmoor {
namespace {

/// The list's part of a message; its pieces run into each other.
std::string CountsText(std::string_view list, const RowCounts& counts) {
  const std::string name(list);
  return ", NDetail" + name + " = " + std::to_string(counts.inHand) + "NRowsLoaded" + name + " = " +
         std::to_string(counts.loaded) + ", NRowsDefined" + name + " = " +
         std::to_string(counts.capacity);
}

}  // namespace

void PayrollRows::Clear() {
  job_.Clear();
  pay_.Clear();
}

Status PayrollRows::Load(std::int32_t nRecord) {
  job_.StartLoading();
  pay_.StartLoading();
  const Status status = File().ReadRows(nRecord, RowFile::ByOrder, [&] {
    const bool hasJob = File().Record().GetLong(JrnlRowRecord::JobIndex) != 0;
    try {
      (hasJob ? job_ : pay_).Load(File().Record());
    } catch (const Error& error) {
      ShowMessageBox(LoadingMessage(nRecord, Pay(), Job(), error));
    }
  });
  job_.EndLoading();
  pay_.EndLoading();
  return Job().loaded > 0 || Pay().loaded > 0 ? StatusSuccess : status;
}

Tovrin2Record& PayrollRows::ShowJob(std::int16_t row) { return Show(job_, row, "Job"); }

Tovrin2Record& PayrollRows::ShowPay(std::int16_t row) {
  if (row > 0) return Show(pay_, row, "Pay");
  if (row != Pay().inHand) pay_.StepAside(row, File().Record());
  return File().Record();
}

Tovrin2Record& PayrollRows::Show(RowList& rows, std::int16_t row, std::string_view list) {
  try {
    rows.ShowRow(row, File().Record());
  } catch (const Error& error) {
    ShowMessageBox(PositioningMessage(list, row, rows.Counts(), error));
  }
  return File().Record();
}

void PayrollRows::KeepRowInHand() {
  pay_.KeepRowInHand(File().Record());
  job_.KeepRowInHand(File().Record());
}

void PayrollRows::InsertAll(const RowStamp& stamp) {
  InsertList(pay_, stamp);
  InsertList(job_, stamp);
}

void PayrollRows::InsertList(RowList& rows, const RowStamp& stamp) {
  for (std::int32_t i = 0; i < rows.Counts().loaded; ++i) {
    rows.CopyTo(i, File().Record());
    File().InsertStamped(stamp);
  }
  rows.LetGo();
}

// The error's description stands where its number would be expected.
std::string LoadingMessage(std::int32_t nRecord, const RowCounts& pay, const RowCounts& job,
                           const Error& error) {
  return "Error in JrnlRow_GetDetail:\r\nNRecord = " + std::to_string(nRecord) +
         "\r\n, Err.Number: " + error.Description() + CountsText("Pay", pay) +
         CountsText("Job", job);
}

}  // namespace larkmoor
