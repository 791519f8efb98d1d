#include "connection/status_messages.h"
#include "journals/jrnl_row_parts.h"

namespace larkmoor {
namespace {

constexpr std::int16_t ByTransaction = 0;
constexpr std::int16_t ByJob = 6;

constexpr ReferenceErrors CostErrors{{ErrorRead, "JrnlRow.CostID", "->Cost.Open"},
                                     {ErrorRead, "JrnlRow.CostID", "->Cost.Open"},
                                     {ErrorRead, "JrnlRow.CostID", "->Cost.GetForIndex("},
                                     {ErrorAccount, "JrnlRow.CostID", "->Cost.GetEqual("}};
constexpr ReferenceErrors PhaseErrors{{ErrorRead, "JrnlRow.PhaseID", "->Phase.Open"},
                                      {ErrorRead, "JrnlRow.PhaseID", "->Phase.Open"},
                                      {ErrorRead, "JrnlRow.PhaseID", "->Phase.GetForIndex("},
                                      {ErrorAccount, "JrnlRow.PhaseID", "->Phase.GetEqual("}};
constexpr ReferenceErrors EmployeeErrors{
    {ErrorRead, "JrnlRow.EmployeeID", "->Employee.Open"},
    {ErrorRead, "JrnlRow.EmployeeID", "->Employee.Open"},
    {ErrorRead, "JrnlRow.EmployeeID", "->Employee.GetForIndex("},
    {ErrorAccount, "JrnlRow.EmployeeID", "->Employee.GetEqual("}};

}  // namespace

// --- Operations ---

Status JrnlRow::OpenFile() {
  const Status status = parts_->table.OpenFile();
  if (status != StatusSuccess) return status;
  for (MasterLookUp* each : parts_->LookUps()) each->Mark(false);
  return status;
}

Status JrnlRow::CloseFile() {
  const Status status = parts_->table.CloseFile();
  for (MasterLookUp* each : parts_->LookUps()) {
    if (each->IsOpen()) each->Close();
  }
  return status;
}

Status JrnlRow::ClearRecord() {
  parts_->table.Record().ClearBuffer();
  return StatusSuccess;
}

// A transaction without rows reads as the end of the file, so that clients get a clean answer.
Status JrnlRow::GetFirst(std::int32_t transaction) {
  parts_->table.File().KeyLong(transaction, 0);
  const Status status = parts_->table.Read(&TovrinFile::btGetGreaterOrEqual, ByTransaction);
  return NRecord() == transaction ? status : StatusEndOfFile;
}

// The search starts at the job's first row, whatever phase, cost code and date are named.
Status JrnlRow::GetFirstForJob(std::int32_t JobIndex, std::string_view, std::string_view,
                               const Variant&) {
  TovrinFile& file = parts_->table.File();
  file.KeyLong(JobIndex, 0);
  if (parts_->table.FileVersion() >= 17.0) {
    file.KeyDouble(0, 4);
  } else {
    file.KeyLong(0, 4);
    file.KeyLong(0, 8);
    file.KeyDouble(0, 12);
  }
  return parts_->table.Read(&TovrinFile::btGetGreaterOrEqual, ByJob);
}

// --- Properties ---

std::int32_t JrnlRow::ActualLength() { return parts_->table.File().ActualLength(); }

std::uint8_t JrnlRow::RecordByte(std::int32_t Index) {
  return parts_->table.File().RecordByte(Index);
}

std::string JrnlRow::CostID() {
  const std::int32_t index = parts_->table.Record().GetLong(JrnlRowRecord::CostIndex);
  if (index == 0) return {};
  MasterLookUp& costs = parts_->costs;
  costs.OpenOnNeed(TovrinFile::NormalMode, CostErrors.open);
  if (costs.FindIndex(index) == StatusSuccess) return costs.ID();
  // Cost codes, and they alone, get a second chance on a file opened anew.
  costs.Close();
  costs.OpenKeeping();
  costs.Bind();
  return costs.IDOf(index, CostErrors.byIndex);
}

void JrnlRow::CostID(std::string_view value) {
  parts_->table.Record().SetLong(JrnlRowRecord::CostIndex,
                                 parts_->costs.ReferenceIndex(value, CostErrors));
}

std::string JrnlRow::PhaseID() {
  return parts_->phases.ReferenceID(parts_->table.Record().GetLong(JrnlRowRecord::PhaseIndex),
                                    PhaseErrors);
}

void JrnlRow::PhaseID(std::string_view value) {
  parts_->table.Record().SetLong(JrnlRowRecord::PhaseIndex,
                                 parts_->phases.ReferenceIndex(value, PhaseErrors));
}

std::string JrnlRow::EmployeeID() {
  return parts_->employees.ReferenceID(parts_->table.Record().GetLong(JrnlRowRecord::EmployeeIndex),
                                       EmployeeErrors);
}

void JrnlRow::EmployeeID(std::string_view value) {
  parts_->table.Record().SetLong(JrnlRowRecord::EmployeeIndex,
                                 parts_->employees.ReferenceIndex(value, EmployeeErrors));
}

}  // namespace larkmoor
