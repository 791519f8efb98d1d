#include <larkmoor/error.h>
#include <larkmoor/journal_code.h>

#include "connection/conversions.h"
#include "connection/shared_routines.h"
#include "connection/shared_state.h"
#include "connection/status_messages.h"
#include "engine/runtime_error.h"
#include "journals/header_fields.h"
#include "journals/header_key.h"
#include "journals/jrnl_hdr_parts.h"
#include "journals/sales_rep.h"

namespace larkmoor {
namespace {

/// The element of `Unknown1` that is the authorisation status.
constexpr std::int16_t AuthStatusElement = 3;

void OpenEmployees(MasterLookUp& employees) {
  employees.OpenOnNeed(TovrinFile::NormalMode,
                       {ErrorOpen, "JrnlHdr.IDText", "->Employee.OpenFile"});
}

}  // namespace

// --- Operations ---

// The status of the accounts stands for both, so that a client sees that they are missing.
Status JrnlHdr::OpenFile() {
  const Status status = parts_->table.OpenFile();
  return status == StatusSuccess ? parts_->accounts.OpenKeeping() : status;
}

Status JrnlHdr::CloseFile() {
  const Status status = parts_->table.CloseFile();
  if (parts_->accounts.IsOpen()) parts_->accounts.Close();
  if (parts_->employees.IsOpen()) parts_->employees.Close();
  return status;
}

Status JrnlHdr::ClearRecord() {
  parts_->table.Record().ClearBuffer();
  return StatusSuccess;
}

Status JrnlHdr::GetEqual(std::int32_t NRecord) {
  parts_->table.File().KeyLong(NRecord, 0);
  return parts_->table.Read(&TovrinFile::btGetEqual,
                            HeaderKey::ByNRecord(parts_->table.FileVersion()));
}

Status JrnlHdr::GetForKeyL(std::uint8_t Subindex1, std::int32_t TrxNumber, std::int16_t Period,
                           std::int16_t JournalID, std::int16_t Subindex2) {
  HeaderKey::Write(parts_->table.File(), parts_->table.FileVersion(),
                   {Subindex1, TrxNumber, Period, JournalID, Subindex2});
  return parts_->table.Read(&TovrinFile::btGetEqual, HeaderKey::Whole);
}

Status JrnlHdr::ReadFirst(std::int16_t JrnlCode, std::int16_t Period) {
  Shared().gJrnlHdrReadMode = JrnlCode == tovJournalCodeSales;
  TovrinFile& file = parts_->table.File();
  file.KeyWord(JrnlCode, 0);
  file.KeyWord(Clamp(Period, 0, HighestPeriod), 2);
  file.KeyTerminated("", 4);
  return parts_->table.Read(&TovrinFile::btGetGreaterOrEqual, HeaderKey::ByPeriod);
}

Status JrnlHdr::ReadFirstForInvoice(std::string_view Invoice) {
  parts_->table.File().KeyTerminated(Invoice, 0);
  return parts_->table.Read(&TovrinFile::btGetGreaterOrEqual,
                            HeaderKey::ByReference(parts_->table.FileVersion()));
}

Status JrnlHdr::ReadNextForInvoice() {
  return parts_->table.Read(&TovrinFile::btGetNext,
                            HeaderKey::ByReference(parts_->table.FileVersion()));
}

// --- Properties ---

std::int32_t JrnlHdr::ActualLength() { return parts_->table.File().ActualLength(); }

std::uint8_t JrnlHdr::RecordByte(std::int32_t Index) {
  return parts_->table.File().RecordByte(Index);
}

std::uint8_t JrnlHdr::Unknown1(std::int16_t Index) {
  return Index == AuthStatusElement ? CCFlag() : 0;
}

// The value is masked with the old status, and then its low byte is cleared: 0 remains.
void JrnlHdr::Unknown1(std::int16_t Index, std::uint8_t) {
  if (Index == AuthStatusElement) CCAuthStatus(0);
}

std::uint8_t JrnlHdr::DropShip() { return DropShipByte(parts_->table.Record()); }

void JrnlHdr::DropShip(std::uint8_t value) {
  parts_->table.Record().SetBoolean(JrnlHdrRecord::DropShip, value != 0);
}

double JrnlHdr::Key() { return KeyOfHeader(parts_->table.Record()); }

void JrnlHdr::Key(double value) { TakeKey(value, parts_->table.Record()); }

std::int32_t JrnlHdr::MaxNRecord() { return larkmoor::MaxNRecord(); }

std::int32_t JrnlHdr::MaxTrxNumberL(std::int16_t Period, std::int16_t JournalCode) {
  return MaxTrxNumber(Period, JournalCode);
}

std::string JrnlHdr::MainAccount() {
  if (!HasMainAccount(parts_->table.FileVersion())) return {};
  return parts_->accounts.AccountID(parts_->table.Record().GetLong(JrnlHdrRecord::MainAccountIndex),
                                    MainAccountSource);
}

void JrnlHdr::MainAccount(std::string_view value) {
  if (!HasMainAccount(parts_->table.FileVersion())) return;
  parts_->table.Record().SetLong(JrnlHdrRecord::MainAccountIndex,
                                 parts_->accounts.AccountIndex(value, MainAccountSource));
}

std::string JrnlHdr::SalesRepID() { return SalesRepOf(parts_->table.Record(), parts_->employees); }

void JrnlHdr::SalesRepID(std::string_view value) {
  try {
    OpenSalesReps(parts_->employees);
  } catch (const Error&) {
    // Clearing the property wants the same file, which cannot be opened, and so on without end.
    RaiseRuntimeError(errors::OutOfStackSpace);
  }
  const std::int32_t index =
      value.empty() ? 0
                    : parts_->employees.IndexOf(
                          value, {ErrorRead, "JrnlHdr.SalesRepID", "->Employee.GetEqual("});
  parts_->table.Record().SetLong(JrnlHdrRecord::SalesRepIndex, index);
}

std::string JrnlHdr::IDText() {
  const std::int32_t index = JournalID() == tovJournalCodePayroll ? IDNumber() : 0;
  if (index == 0) return {};
  OpenEmployees(parts_->employees);
  return parts_->employees.IDOf(index, {ErrorRead, "JrnlHdr.IDText", "->Employee.GetForIndex("});
}

// The journal is not looked at here: whatever the transaction, an employee is meant.
void JrnlHdr::IDText(std::string_view value) {
  if (value.empty()) return IDNumber(0);
  try {
    OpenEmployees(parts_->employees);
  } catch (const Error&) {
    IDNumber(0);
    throw;
  }
  IDNumber(parts_->employees.IndexOf(value, {ErrorRead, "JrnlHdr.IDText", "->Employee.GetEqual("}));
}

}  // namespace larkmoor
