#include "connection/conversions.h"
#include "connection/status_messages.h"
#include "masters/customer_parts.h"

namespace larkmoor {
namespace {

/// From this release on accounts and sales representatives are stored as an index, before as text.
constexpr double StoresIndexes = 11.0;
/// From this release on the ship method is stored as text, before as a number.
constexpr double StoresShipMethodText = 13.0;

constexpr std::int32_t OnPaper = 1;
constexpr std::int32_t ByMail = 4;

/// A field that shows an index of another file as an ID.
struct ResolvedField {
  const Field& text;
  const Field& index;
  LookUpError open;
  LookUpError search;
};

constexpr ResolvedField SalesAccount{CustomerRecord::GLSalesAccountText,
                                     CustomerRecord::GLSalesAccountIndex,
                                     {ErrorOpen, "Customer.GLSalesAccount", "=>Chart.OpenFile"},
                                     {ErrorRead, "Customer.GLSalesAccount", "=>Chart.GetEqual("}};
constexpr ResolvedField ReceiptAccount{CustomerRecord::PaymentAccountText,
                                       CustomerRecord::PaymentAccountIndex,
                                       {ErrorOpen, "Customer.PaymentAccount", "=>Chart.OpenFile"},
                                       {ErrorRead, "Customer.PaymentAccount", "=>Chart.GetEqual("}};
constexpr ResolvedField SalesRep{CustomerRecord::SalesRepText,
                                 CustomerRecord::SalesRepIndex,
                                 {ErrorOpen, "Customer.SalesRepID", "=>Employee.OpenFile"},
                                 {ErrorRead, "Customer.SalesRepID", "=>Employee.GetEqual("}};

std::string IDOf(TableFrame& table, MasterLookUp& master, const ResolvedField& field) {
  if (table.FileVersion() < StoresIndexes) return table.Record().GetText(field.text);
  const std::int32_t index = table.Record().GetLong(field.index);
  if (index == 0) return {};
  master.OpenOnNeed(TovrinFile::NormalMode, field.open);
  return master.IDOf(index, field.search);
}

void TakeID(TableFrame& table, MasterLookUp& master, const ResolvedField& field,
            std::string_view id) {
  if (table.FileVersion() < StoresIndexes) return table.Record().SetText(field.text, id);
  if (id.empty()) return table.Record().SetLong(field.index, 0);
  master.OpenOnNeed(TovrinFile::NormalMode, field.open);
  // The message has always shown a 0 in place of the ID that is not there.
  const Status status = master.FindID(id);
  if (status != StatusSuccess) Raise(field.search, "0)", status);
  table.Record().SetLong(field.index, master.Index());
}

}  // namespace

// --- Operations ---

Status Customer::OpenFile() {
  const Status status = parts_->table.OpenFile();
  if (status != StatusSuccess) return status;
  parts_->table.SetKeyNumber(0);
  parts_->addresses.Forget();
  parts_->accounts.Mark(false);
  parts_->employees.Mark(false);
  parts_->shipMethods.Forget();
  return status;
}

Status Customer::CloseFile() {
  const Status status = parts_->table.CloseFile();
  parts_->addresses.Close();
  if (parts_->accounts.IsOpen()) parts_->accounts.Close();
  if (parts_->employees.IsOpen()) parts_->employees.Close();
  parts_->shipMethods.Forget();
  return status;
}

Status Customer::Insert() {
  const Status status = parts_->table.Insert();
  if (status == StatusSuccess && parts_->table.FileVersion() >= AddressBook::FirstRelease) {
    parts_->addresses.Save();
  }
  return status;
}

Status Customer::Update() {
  const Status status = parts_->table.Update();
  if (status == StatusSuccess) parts_->addresses.Save();
  return status;
}

// --- Properties ---

// The customer's own name has no property of its own: it follows that of the bill-to address.
void Customer::BillToName(std::string_view value) {
  if (parts_->table.FileVersion() < AddressBook::FirstRelease) return;
  parts_->addresses.Set(&AddressEntry::Name, 0, value);
  parts_->table.Record().SetText(CustomerRecord::Name, value);
}

std::string Customer::GLSalesAccount() {
  return IDOf(parts_->table, parts_->accounts, SalesAccount);
}

void Customer::GLSalesAccount(std::string_view value) {
  TakeID(parts_->table, parts_->accounts, SalesAccount, value);
}

std::string Customer::PaymentAccount() {
  return IDOf(parts_->table, parts_->accounts, ReceiptAccount);
}

void Customer::PaymentAccount(std::string_view value) {
  TakeID(parts_->table, parts_->accounts, ReceiptAccount, value);
}

std::string Customer::SalesRepID() { return IDOf(parts_->table, parts_->employees, SalesRep); }

// Unlike an account, a sales representative is not taken away by the empty text.
void Customer::SalesRepID(std::string_view value) {
  if (value.empty() && parts_->table.FileVersion() >= StoresIndexes) return;
  TakeID(parts_->table, parts_->employees, SalesRep, value);
}

// It is counted from 0 where it is read and from 1 where it is written, and clients reckon with
// that.
std::uint8_t Customer::ShipVia() {
  Tovrin2Record& record = parts_->table.Record();
  if (parts_->table.FileVersion() < StoresShipMethodText) {
    return record.GetByte(CustomerRecord::ShipViaNumber);
  }
  return static_cast<std::uint8_t>(
      parts_->shipMethods.PlaceOf(record.GetText(CustomerRecord::ShipViaText)));
}

void Customer::ShipVia(std::uint8_t value) {
  Tovrin2Record& record = parts_->table.Record();
  if (parts_->table.FileVersion() < StoresShipMethodText) {
    return record.SetByte(CustomerRecord::ShipViaNumber, value);
  }
  record.SetText(CustomerRecord::ShipViaText, parts_->shipMethods.TextOf(value));
}

// Stored from 0, shown from 1.
std::uint8_t Customer::PricingLevel() {
  return Variant(parts_->table.Record().GetByte(CustomerRecord::PricingLevel) + 1).ToByte();
}

void Customer::PricingLevel(std::uint8_t value) {
  parts_->table.Record().SetByte(CustomerRecord::PricingLevel, Variant(value - 1).ToByte());
}

std::int32_t Customer::FormDeliveryFlags() {
  Tovrin2Record& record = parts_->table.Record();
  return record.GetLong(CustomerRecord::FormDeliveryFlags) +
         (record.GetBoolean(CustomerRecord::FormDeliveryFlag4) ? ByMail : 0);
}

// Any flag at all sets the second field too, so that 1 reads back as 5.
void Customer::FormDeliveryFlags(std::int32_t value) {
  Tovrin2Record& record = parts_->table.Record();
  record.SetLong(CustomerRecord::FormDeliveryFlags, value & OnPaper);
  record.SetBoolean(CustomerRecord::FormDeliveryFlag4, value != 0);
}

}  // namespace larkmoor
