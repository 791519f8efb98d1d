// The addresses of customers or of vendors behind the back of the objects under test: rows laid
// into the address file and read from it again.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include <larkmoor/status.h>

#include "engine/records/address.h"
#include "engine/tovrin_file_names.h"
#include "support/record_files.h"

namespace larkmoor::test {

/// The addresses whose owners are of one kind.
class AddressRows {
 public:
  static AddressRows OfCustomers(const std::filesystem::path& folder) {
    return {folder, &AddressRecord::CustomerRecordNumber, 2};
  }
  static AddressRows OfVendors(const std::filesystem::path& folder) {
    return {folder, &AddressRecord::VendorRecordNumber, 1};
  }

  [[nodiscard]] const std::filesystem::path& Path() const { return path_; }

  /// Adds an address that is blank but for what `fill` puts into it.
  template <typename Fill>
  void Add(std::int32_t owner, std::int32_t number, Fill&& fill) const {
    OpenRecordFile(path_, AddressRecord::Describe()).Add([&](Tovrin2Record& record) {
      record.SetLong(*ownerField_, owner);
      record.SetLong(AddressRecord::AddressTypeNumber, number);
      fill(record);
    });
  }
  void AddIn(std::string_view city, std::int32_t owner, std::int32_t number) const {
    Add(owner, number, [&](Tovrin2Record& record) { record.SetText(AddressRecord::City, city); });
  }

  /// What `value` tells of an address on file, which must be there.
  template <typename Value>
  auto Of(std::int32_t owner, std::int32_t number, Value&& value) const {
    OpenRecordFile file(path_, AddressRecord::Describe());
    file.File().KeyLong(owner, 0);
    file.File().KeyLong(number, 4);
    EXPECT_EQ(file.File().btGetEqual(key_), StatusSuccess) << "no address " << number;
    return std::forward<Value>(value)(file.Record());
  }

  // One field of that address.
  [[nodiscard]] std::string Text(const Field& field, std::int32_t owner,
                                 std::int32_t number) const {
    return Of(owner, number, [&](Tovrin2Record& record) { return record.GetText(field); });
  }
  [[nodiscard]] std::int32_t Long(const Field& field, std::int32_t owner,
                                  std::int32_t number) const {
    return Of(owner, number, [&](Tovrin2Record& record) { return record.GetLong(field); });
  }
  [[nodiscard]] std::string City(std::int32_t owner, std::int32_t number) const {
    return Text(AddressRecord::City, owner, number);
  }

  /// Which addresses of an owner are on file.
  [[nodiscard]] std::vector<std::int32_t> Numbers(std::int32_t owner) const {
    OpenRecordFile file(path_, AddressRecord::Describe());
    std::vector<std::int32_t> numbers;
    for (Status status = file.File().btGetFirst(key_); status == StatusSuccess;
         status = file.File().btGetNext(key_)) {
      if (file.Record().GetLong(*ownerField_) != owner) continue;
      numbers.push_back(file.Record().GetLong(AddressRecord::AddressTypeNumber));
    }
    return numbers;
  }

 private:
  AddressRows(const std::filesystem::path& folder, const Field* ownerField, std::int16_t key)
      : path_(folder / TovrinFileNames::AddressFile()), ownerField_(ownerField), key_(key) {}

  std::filesystem::path path_;
  const Field* ownerField_;
  std::int16_t key_;  ///< by owner and number
};

}  // namespace larkmoor::test
