#include "connection/conversions.h"
#include "masters/vendor_parts.h"

namespace larkmoor {
namespace {

/// From this release on the ship method is stored as text, before as a number.
constexpr double StoresShipMethodText = 13.0;

}  // namespace

// --- Operations ---

// Which addresses are in memory is not forgotten: those of the vendor that was in hand before serve
// the same vendor again, to be read and not to be saved.
Status Vendor::OpenFile() {
  const Status status = parts_->table.OpenFile();
  if (status != StatusSuccess) return status;
  parts_->table.SetKeyNumber(0);
  parts_->addresses.Unbind();
  parts_->accounts.Mark(false);
  parts_->shipMethods.Forget();
  return status;
}

Status Vendor::CloseFile() {
  const Status status = parts_->table.CloseFile();
  parts_->addresses.Close();
  if (parts_->accounts.IsOpen()) parts_->accounts.Close();
  parts_->shipMethods.Forget();
  return status;
}

Status Vendor::Insert() {
  const Status status = parts_->table.Insert();
  if (status == StatusSuccess && parts_->table.FileVersion() >= AddressBook::FirstRelease) {
    parts_->addresses.Save();
  }
  return status;
}

Status Vendor::Update() {
  const Status status = parts_->table.Update();
  if (status == StatusSuccess) parts_->addresses.Save();
  return status;
}

// --- Properties ---

std::int16_t Vendor::ShipVia() {
  Tovrin2Record& record = parts_->table.Record();
  if (parts_->table.FileVersion() < StoresShipMethodText) {
    return record.GetInteger(VendorRecord::ShipViaNumber);
  }
  return parts_->shipMethods.PlaceOf(record.GetText(VendorRecord::ShipViaText));
}

// Counted from 0 both ways, unlike that of a customer; -1 takes the method away.
void Vendor::ShipVia(std::int16_t value) {
  Tovrin2Record& record = parts_->table.Record();
  if (parts_->table.FileVersion() < StoresShipMethodText) {
    return record.SetInteger(VendorRecord::ShipViaNumber, value);
  }
  record.SetText(VendorRecord::ShipViaText, parts_->shipMethods.AreThere()
                                                ? parts_->shipMethods.TextOf(value + 1)
                                                : std::string());
}

// Unlike other dates it is no date that is refused: a Null, and what reads as one, raises error 94.
void Vendor::VendorSinceDate(const Variant& value) {
  const Variant shown = DateFromRecord(value.ToDate().Serial());
  parts_->table.Record().SetDate(VendorRecord::VendorSinceDate, shown.ToDate().Serial());
}

}  // namespace larkmoor
