// The addresses of one customer or vendor: 21 rows of the address file, held in memory and written
// back with the record that they belong to.
#pragma once

#include <array>
#include <cstdint>
#include <string>

#include "tables/table_frame.h"

namespace larkmoor {

/// One address in memory.
struct AddressEntry {
  std::int32_t AddressRecordNumber = 0;
  std::int32_t CustomerRecordNumber = 0;
  std::int32_t VendorRecordNumber = 0;
  std::int32_t AddressTypeNumber = 0;
  std::string AddressTypeDesc;
  std::string Name;
  std::string AddressLine1;
  std::string AddressLine2;
  std::string City;
  std::string State;
  std::string Zipcode;
  std::string Country;
  std::string GUID;
  std::string TaxCode;
  std::int32_t LastUpdateCounter = 0;
};

/// In what the addresses of customers and those of vendors differ.
struct AddressKind {
  const Field& ownerID;
  const Field& ownerIndex;
  const Field*
      ownerName;  ///< stands for the name of a first address without one; null: nothing does
  const Field& ownerNumber;  ///< of the address, as is the next
  const Field& otherNumber;
  std::int16_t key;
  std::string_view firstDescription;
  std::string_view otherDescription;  ///< followed by the number of the address
};

extern const AddressKind CustomerAddresses;
extern const AddressKind VendorAddresses;

/// Belongs to one table object and reads that object's record. Below release 13 there are no
/// addresses: they read as blank and drop what is written.
class AddressBook {
 public:
  static constexpr std::int16_t Last = 20;

  AddressBook(const AddressKind& kind, TableFrame& owner);

  /// A field of address `number`, 0 for the first one; those from 1 on are brought into 1 to 20
  /// with `Further`. Loads the addresses of the record in hand where they are not those in memory.
  template <typename T>
  T Get(T AddressEntry::*field, std::int16_t number, double from = FirstRelease) {
    if (owner_.FileVersion() < from) return {};
    Load();
    return Entry(number).*field;
  }
  template <typename T, typename Value>
  void Set(T AddressEntry::*field, std::int16_t number, const Value& value,
           double from = FirstRelease) {
    if (owner_.FileVersion() < from) return;
    Load();
    Entry(number).*field = value;
  }
  static std::int16_t Further(std::int16_t index);

  /// Writes the addresses of the record in hand, where any was looked at since the open. The
  /// address file is let go of afterwards and not opened again before the object's next `OpenFile`,
  /// so that one object saves the addresses of one record.
  void Save();
  /// Forgets that the addresses in memory are to be saved, and the mark of the open file.
  void Unbind();
  /// The same, and forgets whose addresses are in memory.
  void Forget();
  /// Closes the address file. What is in memory stays, to be read and not to be saved.
  void Close();

  /// Whether the addresses in memory will be saved.
  [[nodiscard]] bool IsBound() const { return isBound_; }
  static constexpr double FirstRelease = 13.0;

 private:
  void Load();
  void SaveEntry(std::int16_t number, std::int32_t owner);
  void FillRecord(std::int16_t number, std::int32_t owner);
  AddressEntry& Entry(std::int32_t number);
  Status Find(std::int32_t owner, std::int32_t number, Status (TovrinFile::*read)(std::int16_t));

  const AddressKind& kind_;
  TableFrame& owner_;
  RecordFile file_;
  std::array<AddressEntry, Last + 1> entries_;
  std::string loadedID_;
  bool isBound_ = false;
};

}  // namespace larkmoor
