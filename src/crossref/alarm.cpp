#include "connection/shared_state.h"
#include "connection/status_messages.h"
#include "crossref/alarm_parts.h"
#include "crossref/applies_to.h"
#include "engine/runtime_error.h"
#include "tables/transaction_key.h"

namespace larkmoor {
namespace {

/// From this release on alarms know employees and accounts.
constexpr double KnowsEmployeesAndAccounts = 11.0;

constexpr std::string_view Property = "Alarm.ID";

/// How `ID` looks into a table, and what it raises.
struct Target {
  std::int16_t modeByIndex;
  LookUpError open;
  LookUpError openByID;
  LookUpError byIndex;
  LookUpError byID;
};

constexpr LookUpError Opening(std::string_view step) { return {ErrorOpen, Property, step}; }
constexpr LookUpError Reading(std::string_view step) { return {ErrorRead, Property, step}; }

// A search by index has the number of a failed open, but for accounts.
constexpr Target Customers{TovrinFile::ReadOnlyMode, Opening("->Customer.OpenFile"),
                           Opening("->Customer.OpenFile"), Opening("->Customer.GetForIndex("),
                           Reading("->Customer.GetEqual(")};
constexpr Target Vendors{TovrinFile::ReadOnlyMode, Opening("->Vendor.OpenFile"),
                         Opening("->Vendor.OpenFile"), Opening("->Vendor.GetForIndex("),
                         Reading("->Vendor.GetEqual(")};
constexpr Target Employees{TovrinFile::NormalMode, Opening("->Employee.OpenFile"),
                           Opening("->Employee.OpenFile"), Opening("->Employee.GetForIndex("),
                           Reading("->Employee.GetEqual(")};
constexpr Target Items{TovrinFile::NormalMode, Opening("->Item.OpenFile"),
                       Opening("->LineItem.OpenFile"), Opening("->EItem.GetForIndex("),
                       Reading("->Item.GetEqual(")};
constexpr Target Accounts{TovrinFile::NormalMode, Opening("->Chart.OpenFile"),
                          Opening("->Chart.OpenFile"), Reading("->Chart.GetEqual("),
                          Reading("->Chart.GetForAccountID(")};

std::string IDOf(GuardedLookUp& table, std::int32_t index, const Target& target) {
  return table.ResolvedID(index, target.modeByIndex, {target.open, target.byIndex});
}

std::int32_t IndexOf(GuardedLookUp& table, std::string_view id, const Target& target) {
  return table.ResolvedIndex(id, {target.openByID, target.byID});
}

/// Looks an employee's index up in the vendors' file, unless the ID was assigned before: the
/// employees are never opened for reading, and clients know what comes of it.
std::string EmployeeIDOf(GuardedLookUp& employees, std::int32_t index) {
  if (index == 0 || employees.IsDenied()) return {};
  if (!employees.IsOpen()) {
    employees.File().btOpen(Shared().gCompanyPath + "Vendor.dat", TovrinFile::NormalMode);
    employees.Bind();
  }
  return employees.SearchedID(index, Employees.byIndex);
}

/// An account that is not there stands for the next one by ID.
std::int32_t AccountIndexOf(GuardedLookUp& accounts, std::string_view id) {
  if (id.empty() || !accounts.OpenUnlessDenied(TovrinFile::NormalMode, Accounts.openByID)) return 0;
  return accounts.SearchedIndex(id, &TovrinFile::btGetGreaterOrEqual, Accounts.byID);
}

}  // namespace

// --- Operations ---

Status Alarm::OpenFile() {
  for (GuardedLookUp* each : parts_->LookUps()) each->Reset();
  return parts_->table.OpenFile();
}

Status Alarm::CloseFile() {
  for (GuardedLookUp* each : parts_->LookUps()) {
    if (each->IsOpen()) each->Close();
  }
  return parts_->table.CloseFile();
}

// --- Properties ---

Variant Alarm::ApplyToDescription(std::int16_t Index) { return AppliesToText(Index); }

std::string Alarm::ID() {
  const bool knowsAll = parts_->table.FileVersion() >= KnowsEmployeesAndAccounts;
  switch (ApplyTo()) {
    case AppliesToCustomer:
      return IDOf(parts_->customers, Index(), Customers);
    case AppliesToVendor:
      return IDOf(parts_->vendors, Index(), Vendors);
    case AppliesToEmployee:
      return knowsAll ? EmployeeIDOf(parts_->employees, Index()) : std::string();
    case AppliesToItem:
      return IDOf(parts_->items, Index(), Items);
    case AppliesToAccount:
      return knowsAll ? IDOf(parts_->accounts, Index(), Accounts) : std::string();
    default:
      return {};
  }
}

void Alarm::ID(std::string_view value) {
  const bool knowsAll = parts_->table.FileVersion() >= KnowsEmployeesAndAccounts;
  switch (ApplyTo()) {
    case AppliesToCustomer:
      return Index(IndexOf(parts_->customers, value, Customers));
    case AppliesToVendor:
      return Index(IndexOf(parts_->vendors, value, Vendors));
    case AppliesToEmployee:
      return Index(knowsAll ? IndexOf(parts_->employees, value, Employees) : 0);
    case AppliesToItem:
      return Index(IndexOf(parts_->items, value, Items));
    case AppliesToAccount:
      return Index(knowsAll ? AccountIndexOf(parts_->accounts, value) : 0);
    default:
      return Index(0);
  }
}

double Alarm::Key() {
  return TransactionKey{Subindex1(), 0, TrxNumber(), Period(), JournalID()}.Packed();
}

void Alarm::Key(double value) {
  const TransactionKey key = TransactionKey::Of(value);
  Subindex1(key.subindex1);
  TrxNumber(key.trxNumber);
  Period(key.period);
  JournalID(key.journalID);
  Subindex2(0);
}

// A stored number with its top bit set does not survive the two conversions of old.
std::int16_t Alarm::TrxNumber() {
  const std::int16_t number = parts_->table.Record().GetInteger(AlarmRecord::TrxNumber);
  if (number < 0) RaiseRuntimeError(errors::Overflow);
  return number;
}

void Alarm::TrxNumber(std::int16_t value) {
  parts_->table.Record().SetInteger(AlarmRecord::TrxNumber, value);
}

std::int32_t Alarm::TrxNumberL() {
  return parts_->table.Record().GetInteger(AlarmRecord::TrxNumber);
}

void Alarm::TrxNumberL(std::int32_t value) { TrxNumber(Variant(value).ToInteger()); }

}  // namespace larkmoor
