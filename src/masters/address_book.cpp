#include "masters/address_book.h"

#include "connection/conversions.h"
#include "engine/records/address.h"
#include "engine/records/customer.h"
#include "engine/records/vendor.h"
#include "engine/runtime_error.h"
#include "engine/store/driver.h"

namespace larkmoor {
namespace {

void CopyFrom(const Tovrin2Record& record, AddressEntry& entry) {
  entry = {record.GetLong(AddressRecord::AddressRecordNumber),
           record.GetLong(AddressRecord::CustomerRecordNumber),
           record.GetLong(AddressRecord::VendorRecordNumber),
           record.GetLong(AddressRecord::AddressTypeNumber),
           record.GetText(AddressRecord::AddressTypeDesc),
           record.GetText(AddressRecord::Name),
           record.GetText(AddressRecord::AddressLine1),
           record.GetText(AddressRecord::AddressLine2),
           record.GetText(AddressRecord::City),
           record.GetText(AddressRecord::State),
           record.GetText(AddressRecord::Zipcode),
           record.GetText(AddressRecord::Country),
           record.GetText(AddressRecord::GUID),
           record.GetText(AddressRecord::TaxCode),
           record.GetLong(AddressRecord::LastUpdateCounter)};
}

/// An address without any of these counts as absent, whatever else it says.
bool IsAbsent(const AddressEntry& entry) {
  return entry.AddressLine1.empty() && entry.Name.empty() && entry.City.empty();
}

}  // namespace

const AddressKind CustomerAddresses{CustomerRecord::CustomerID,
                                    CustomerRecord::Index,
                                    nullptr,
                                    AddressRecord::CustomerRecordNumber,
                                    AddressRecord::VendorRecordNumber,
                                    2,
                                    "Bill To",
                                    "Ship to "};

const AddressKind VendorAddresses{VendorRecord::VendorID,
                                  VendorRecord::Index,
                                  &VendorRecord::Name,
                                  AddressRecord::VendorRecordNumber,
                                  AddressRecord::CustomerRecordNumber,
                                  1,
                                  "Mail To",
                                  "Remit to "};

AddressBook::AddressBook(const AddressKind& kind, TableFrame& owner)
    : kind_(kind), owner_(owner), file_(AddressRecord::Describe(), "Address.dat") {}

std::int16_t AddressBook::Further(std::int16_t index) { return Clamp(index, 1, Last); }

void AddressBook::Load() {
  const std::string id = owner_.Record().GetText(kind_.ownerID);
  if (id == loadedID_) return;
  loadedID_ = id;
  entries_ = {};
  isBound_ = true;
  const std::int32_t owner = owner_.Record().GetLong(kind_.ownerIndex);
  if (owner == 0) return;
  if (!file_.IsOpen() && file_.Open() != StatusSuccess) return;
  file_.Bind();
  for (Status status = Find(owner, 0, &TovrinFile::btGetGreaterOrEqual);
       status == StatusSuccess && file_.Record().GetLong(kind_.ownerNumber) == owner;
       status = file_.File().btGetNext(kind_.key)) {
    CopyFrom(file_.Record(), Entry(file_.Record().GetLong(AddressRecord::AddressTypeNumber)));
  }
}

void AddressBook::Save() {
  if (!isBound_) return;
  const std::int32_t owner = owner_.Record().GetLong(kind_.ownerIndex);
  if (owner == 0) return;
  if (file_.IsOpen() || file_.Open() == StatusSuccess) {
    file_.Bind();
    const auto batch = store::DefaultDriver().BeginBatch();
    for (std::int16_t number = 0; number <= Last; ++number) SaveEntry(number, owner);
    batch->Commit();
  }
  file_.Release();
}

void AddressBook::SaveEntry(std::int16_t number, std::int32_t owner) {
  const Status found = Find(owner, number, &TovrinFile::btGetEqual);
  if (IsAbsent(Entry(number))) {
    if (found == StatusSuccess) file_.File().btDelete();
    return;
  }
  FillRecord(number, owner);
  if (found == StatusSuccess) {
    file_.File().btUpdate(kind_.key);
  } else {
    file_.Record().SetLong(AddressRecord::AddressRecordNumber, 0);
    file_.File().btInsert(kind_.key);
  }
}

void AddressBook::FillRecord(std::int16_t number, std::int32_t owner) {
  const AddressEntry& entry = Entry(number);
  Tovrin2Record& record = file_.Record();
  record.SetLong(AddressRecord::AddressTypeNumber, number);
  record.SetText(AddressRecord::AddressTypeDesc,
                 number == 0 ? std::string(kind_.firstDescription)
                             : std::string(kind_.otherDescription) + std::to_string(number));
  record.SetLong(kind_.ownerNumber, owner);
  record.SetLong(kind_.otherNumber, 0);
  const bool takesName = number == 0 && entry.Name.empty() && kind_.ownerName != nullptr;
  record.SetText(AddressRecord::Name,
                 takesName ? owner_.Record().GetText(*kind_.ownerName) : entry.Name);
  record.SetText(AddressRecord::AddressLine1, entry.AddressLine1);
  record.SetText(AddressRecord::AddressLine2, entry.AddressLine2);
  record.SetText(AddressRecord::City, entry.City);
  record.SetText(AddressRecord::State, entry.State);
  record.SetText(AddressRecord::Zipcode, entry.Zipcode);
  record.SetText(AddressRecord::Country, entry.Country);
  record.SetText(AddressRecord::TaxCode, entry.TaxCode);
  record.SetText(AddressRecord::GUID, entry.GUID.empty() ? owner_.File().btNewGUID() : entry.GUID);
  record.SetLong(AddressRecord::LastUpdateCounter, entry.LastUpdateCounter);
}

void AddressBook::Unbind() {
  file_.Mark(false);
  isBound_ = false;
}

void AddressBook::Forget() {
  Unbind();
  loadedID_.clear();
}

void AddressBook::Close() {
  if (!file_.IsOpen()) return;
  file_.Close();
  isBound_ = false;
}

AddressEntry& AddressBook::Entry(std::int32_t number) {
  if (number < 0 || number > Last) RaiseRuntimeError(errors::SubscriptOutOfRange);
  return entries_[static_cast<std::size_t>(number)];
}

Status AddressBook::Find(std::int32_t owner, std::int32_t number,
                         Status (TovrinFile::*read)(std::int16_t)) {
  file_.File().KeyLong(owner, 0);
  file_.File().KeyLong(number, 4);
  return (file_.File().*read)(kind_.key);
}

}  // namespace larkmoor
