#include <larkmoor/error.h>

#include "connection/status_messages.h"
#include "crossref/event_log_parts.h"
#include "engine/records/employee.h"

namespace larkmoor {
namespace {

/// From this release on events know employees.
constexpr double KnowsEmployees = 11.0;
/// From this release on the walk by target has 32-bit numbers, and a key number of its own.
constexpr double WalksByLongNumbers = 17.0;

// The codes of `EventType`.
constexpr std::int16_t OfCustomer = 1;
constexpr std::int16_t OfEmployee = 2;
constexpr std::int16_t OfVendor = 3;

// What `ID` raises. The words differ in case and arrows, and employees are looked up under the
// customers' name.
constexpr ReferenceErrors CustomerErrors{{ErrorOpen, "Eventlog.ID", "=>Customer.OpenFile"},
                                         {ErrorOpen, "Eventlog.ID", "=>Customer.OpenFile"},
                                         {ErrorRead, "Eventlog.ID", "->Customer.GetForIndex("},
                                         {ErrorRead, "EventLog.ID", "->Customer.GetEqual("}};
constexpr ReferenceErrors EmployeeErrors{{ErrorOpen, "Eventlog.ID", "=>Employee.OpenFile"},
                                         {ErrorOpen, "Eventlog.ID", "=>Employee.OpenFile"},
                                         {ErrorRead, "Eventlog.ID", "->Customer.GetForIndex("},
                                         {ErrorRead, "EventLog.ID", "->Employee.GetEqual("}};
constexpr ReferenceErrors VendorErrors{{ErrorOpen, "Eventlog.ID", "=>Vendor.OpenFile"},
                                       {ErrorOpen, "Eventlog.ID", "=>Vendor.OpenFile"},
                                       {ErrorRead, "Eventlog.ID", "->Vendor.GetForIndex("},
                                       {ErrorRead, "EventLog.ID", "->Vendor.GetEqual("}};

/// A stored number as an Integer; 0 where it does not fit, which raises nothing.
std::int16_t NarrowOr0(std::int32_t number) {
  try {
    return Variant(number).ToInteger();
  } catch (const Error&) {
    return 0;
  }
}

}  // namespace

// --- Operations ---

Status EventLog::CloseFile() {
  const Status status = parts_->table.CloseFile();
  for (MasterLookUp* each : parts_->LookUps()) {
    if (each->IsOpen()) each->Close();
  }
  return status;
}

Status EventLog::GetFirst(std::int32_t IDIndex, std::int16_t EventType) {
  TovrinFile& file = parts_->table.File();
  file.KeyLong(IDIndex, 0);
  file.KeyWord(EventType, 4);
  if (parts_->table.FileVersion() >= WalksByLongNumbers) {
    file.KeyLong(0, 6);
    file.KeyWord(0, 10);
    return parts_->table.Read(&TovrinFile::btGetGreaterOrEqual, 5);
  }
  file.KeyWord(0, 6);
  file.KeyWord(0, 8);
  return parts_->table.Read(&TovrinFile::btGetGreaterOrEqual, 0);
}

// --- Properties ---

std::string EventLog::ID() {
  const std::int32_t index = Index();
  if (index == 0) return {};
  switch (EventType()) {
    case OfCustomer:
      return parts_->customers.ReferenceID(index, CustomerErrors);
    case OfEmployee:
      if (parts_->table.FileVersion() < KnowsEmployees) return {};
      return parts_->employees.ReferenceID(index, EmployeeErrors);
    case OfVendor:
      return parts_->vendors.ReferenceID(index, VendorErrors);
    default:
      return {};
  }
}

// What is found goes into the record of the employee that is looked up, and not into the event:
// only the empty text changes the event's index.
void EventLog::ID(std::string_view value) {
  if (value.empty()) return Index(0);
  std::int32_t index = 0;
  switch (EventType()) {
    case OfCustomer:
      index = parts_->customers.ReferenceIndex(value, CustomerErrors);
      break;
    case OfEmployee:
      if (parts_->table.FileVersion() >= KnowsEmployees) {
        index = parts_->employees.ReferenceIndex(value, EmployeeErrors);
      }
      break;
    case OfVendor:
      index = parts_->vendors.ReferenceIndex(value, VendorErrors);
      break;
    default:
      break;
  }
  parts_->employees.Record().SetLong(EmployeeRecord::Index, index);
}

std::int16_t EventLog::EventDaysType() {
  return NarrowOr0(parts_->table.Record().GetLong(EventLogRecord::EventDaysType));
}

std::int16_t EventLog::LineNumber() { return NarrowOr0(LineNumberL()); }

std::int16_t EventLog::TrxNumber() { return NarrowOr0(TrxNumberL()); }

}  // namespace larkmoor
