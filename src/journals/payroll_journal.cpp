#include <larkmoor/journal_code.h>

#include "connection/shared_state.h"
#include "connection/status_messages.h"
#include "journals/payroll_journal_parts.h"

namespace larkmoor {
namespace {

constexpr std::string_view EmployeeProperty = "JrnlHdr.IDText";

/// The field of a labor row's hours.
const Field& HoursField() {
  return Shared().gDataVersion >= 13.0 ? JrnlRowRecord::StockingUnitPrice
                                       : JrnlRowRecord::UnitPrice;
}

/// Employee and account indexes of rows go through 16 bits: one that does not fit raises error 6.
std::int16_t Narrow(std::int32_t index) { return Variant(index).ToInteger(); }

/// The index of an employee; 0 for the empty text and for an ID that is not there.
std::int32_t EmployeeIndexOf(MasterLookUp& employees, std::string_view id) {
  if (id.empty() || employees.FindID(id) != StatusSuccess) return 0;
  return Narrow(employees.Index());
}

/// The ID of an employee; empty where there is none of that index.
std::string EmployeeIDOf(MasterLookUp& employees, std::int32_t index) {
  return employees.FindIndex(index) == StatusSuccess ? employees.ID() : std::string();
}

}  // namespace

std::string PayrollJournal::EmployeeID() {
  PayrollFrame& journal = parts_->journal;
  const std::int32_t index =
      JournalID() == tovJournalCodePayroll ? journal.Record().GetLong(JrnlHdrRecord::IDNumber) : 0;
  if (index == 0 || journal.AreEmployeesDenied()) return {};
  return journal.Employees().IDOf(index, {ErrorRead, EmployeeProperty, "->Employee.GetForIndex("});
}

void PayrollJournal::EmployeeID(std::string_view value) {
  PayrollFrame& journal = parts_->journal;
  if (value.empty()) return journal.Record().SetLong(JrnlHdrRecord::IDNumber, 0);
  if (journal.AreEmployeesDenied()) return;
  journal.Record().SetLong(
      JrnlHdrRecord::IDNumber,
      journal.Employees().IndexOf(value, {ErrorRead, EmployeeProperty, "->Employee.GetEqual("}));
}

// --- Labor rows ---

std::string PayrollJournal::JobAccount(std::int16_t Index) {
  const std::int16_t index =
      Narrow(parts_->journal.JobRow(Index).GetLong(JrnlRowRecord::AccountIndex));
  return parts_->journal.Accounts().AccountID(index, "JobAccount");
}

void PayrollJournal::JobAccount(std::int16_t Index, std::string_view value) {
  Tovrin2Record& row = parts_->journal.JobRow(Index);
  row.SetLong(JrnlRowRecord::AccountIndex,
              parts_->journal.Accounts().AccountIndex(value, "JobAccount"));
}

// It is the row's number that is looked up, as if it were the employee's.
std::string PayrollJournal::JobEmployeeID(std::int16_t Index) {
  Narrow(parts_->journal.JobRow(Index).GetLong(JrnlRowRecord::EmployeeIndex));
  return EmployeeIDOf(parts_->journal.Employees(), Index);
}

void PayrollJournal::JobEmployeeID(std::int16_t Index, std::string_view value) {
  Tovrin2Record& row = parts_->journal.JobRow(Index);
  row.SetLong(JrnlRowRecord::EmployeeIndex, EmployeeIndexOf(parts_->journal.Employees(), value));
}

double PayrollJournal::JobHours(std::int16_t Index) {
  return parts_->journal.JobRow(Index).GetDouble(HoursField());
}

void PayrollJournal::JobHours(std::int16_t Index, double value) {
  parts_->journal.JobRow(Index).SetDouble(HoursField(), value);
}

// Stored from 1, shown from 0.
std::int16_t PayrollJournal::JobLevel(std::int16_t Index) {
  return Narrow(parts_->journal.JobRow(Index).GetInteger(JrnlRowRecord::LineNo) - 1);
}

void PayrollJournal::JobLevel(std::int16_t Index, std::int16_t value) {
  Tovrin2Record& row = parts_->journal.JobRow(Index);
  row.SetInteger(JrnlRowRecord::LineNo, Narrow(value + 1));
}

std::int16_t PayrollJournal::JobLineNo(std::int16_t Index) { return Index; }

void PayrollJournal::JobLineNo(std::int16_t, std::int16_t) {}

// --- Pay rows ---

std::string PayrollJournal::PayAccount(std::int16_t Index) {
  return parts_->journal.Accounts().AccountID(
      parts_->journal.PayRow(Index).GetLong(JrnlRowRecord::AccountIndex), "PayAccount");
}

void PayrollJournal::PayAccount(std::int16_t Index, std::string_view value) {
  Tovrin2Record& row = parts_->journal.PayRow(Index);
  row.SetLong(JrnlRowRecord::AccountIndex,
              parts_->journal.Accounts().AccountIndex(value, "PayAccount"));
}

std::string PayrollJournal::PayEmployeeID(std::int16_t Index) {
  return EmployeeIDOf(parts_->journal.Employees(),
                      Narrow(parts_->journal.PayRow(Index).GetLong(JrnlRowRecord::EmployeeIndex)));
}

void PayrollJournal::PayEmployeeID(std::int16_t Index, std::string_view value) {
  Tovrin2Record& row = parts_->journal.PayRow(Index);
  row.SetLong(JrnlRowRecord::EmployeeIndex, EmployeeIndexOf(parts_->journal.Employees(), value));
}

}  // namespace larkmoor
