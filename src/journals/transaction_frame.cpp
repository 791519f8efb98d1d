#include "journals/transaction_frame.h"

#include "connection/status_messages.h"

namespace larkmoor {
namespace {

/// The close of a file that was not open, or that may not be seen, is none to speak of.
bool IsCloseFailure(Status status) {
  return status != StatusSuccess && status != StatusFileNotOpen && status != StatusAccessDenied;
}

}  // namespace

TransactionFrame::TransactionFrame(std::string_view name, TransactionRows& rows,
                                   FrameBehaviour behaviour, const TransactionFiles& files)
    : name_(name),
      behaviour_(behaviour),
      files_(files),
      rows_(rows),
      headers_(JrnlHdrRecord::Describe(), files.headers),
      rowFile_(files.rows) {}

Status TransactionFrame::OpenFile() {
  const Status status = OpenTransactions();
  return status == StatusSuccess ? OpenAccounts() : status;
}

Status TransactionFrame::OpenTransactions() {
  areAccountsDenied_ = false;
  rows_.Clear();
  keyNumber_ = 0;
  rowFile_.ResetKeyNumber();
  const bool wereOpen = headers_.IsOpen();
  Status status = headers_.OpenKeeping();
  if (status != StatusSuccess) {
    if (!behaviour_.failedOpenKeepsFile) headers_.Release();
    return status;
  }
  status = rowFile_.OpenKeeping();
  if (status != StatusSuccess) {
    headers_.Mark(wereOpen);
    if (behaviour_.failedOpenKeepsFile) return status;
    headers_.Release();
    rowFile_.Release();
    return status;
  }
  if (behaviour_.openSetsNoMark) {
    headers_.Mark(false);
    rowFile_.Mark(false);
  }
  Record().ClearBuffer();
  return status;
}

Status TransactionFrame::OpenAccounts() {
  const Status status = accounts_.Open();
  areAccountsDenied_ = IsDenial(status);
  return status;
}

Status TransactionFrame::CloseFile(std::initializer_list<FurtherFile> further) {
  std::string message;
  Status status = StatusSuccess;
  const auto close = [&](RecordFile& file, std::string_view word) {
    if (!file.IsOpen()) return;
    status = file.Close();
    if (!IsCloseFailure(status)) return;
    message.append("\r\n").append(name_).append(".CloseFile->").append(word).append(".CloseFile");
  };
  close(accounts_, "Chart");
  for (const FurtherFile& each : further) close(each.file, each.word);
  close(headers_, files_.headerWord);
  if (rowFile_.IsOpen()) rows_.Clear();
  close(rowFile_, files_.rowWord);
  if (message.empty()) return StatusSuccess;
  RaiseBtrieveError(ErrorClose, std::string(name_) + ".CloseFile: " + message, status);
}

Status TransactionFrame::ClearRecord() {
  Record().ClearBuffer();
  return StatusSuccess;
}

Status TransactionFrame::Insert() {
  rows_.Write(Stamp());
  return File().btInsert(keyNumber_);
}

Status TransactionFrame::Update() {
  rows_.Write(Stamp());
  return File().btUpdate(keyNumber_);
}

Status TransactionFrame::Delete() {
  rows_.DeleteFromFile(Record().GetLong(JrnlHdrRecord::NRecord));
  return File().btDelete();
}

Status TransactionFrame::Step(Status (TovrinFile::*step)()) {
  const Status status = (File().*step)();
  return status == StatusSuccess ? LoadRows() : status;
}

Status TransactionFrame::ReadHeader(Status (TovrinFile::*read)(std::int16_t),
                                    std::int16_t keyNumber) {
  keyNumber_ = keyNumber;
  return (File().*read)(keyNumber);
}

RowStamp TransactionFrame::Stamp() {
  return {Record().GetLong(JrnlHdrRecord::NRecord), JournalID(),
          Record().GetDate(JrnlHdrRecord::TrxDate)};
}

}  // namespace larkmoor
