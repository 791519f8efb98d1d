// A company with vendors whose addresses are under test.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include <larkmoor/masters/vendor.h>
#include <larkmoor/status.h>

#include "support/addresses.h"
#include "support/company.h"
#include "support/masters.h"

namespace larkmoor::test {

/// A company with two vendors, and an object that has the first of them in hand.
class VendorAddressTest : public testing::Test {
 protected:
  static constexpr std::int32_t Adams = 30;
  static constexpr std::int32_t Baker = 20;

  /// Number of the mailing address; those of the remit-to addresses are 1 to 20.
  static constexpr std::int32_t MailTo = 0;

  static constexpr std::string_view SomeGUID = "C0000000-0000-4000-8000-000000000001";
  static constexpr std::string_view OtherGUID = "C0000000-0000-4000-8000-000000000002";

  using Numbers = std::vector<std::int32_t>;

  explicit VendorAddressTest(double release = 14.0) : company_(release) {
    AddVendor(company_.Folder(), {"ADAMS", Adams});
    AddVendor(company_.Folder(), {"BAKER", Baker});
    EXPECT_EQ(vendor_.OpenFile(), StatusSuccess);
    EXPECT_EQ(vendor_.GetEqual("ADAMS"), StatusSuccess);
  }

  std::filesystem::path AddressFile() const { return addresses_.Path(); }

  /// A vendor object newly opened, with that vendor in hand.
  static Vendor Reader(std::string_view id) {
    Vendor reader;
    EXPECT_EQ(reader.OpenFile(), StatusSuccess);
    EXPECT_EQ(reader.GetEqual(id), StatusSuccess);
    return reader;
  }

  Company company_;
  AddressRows addresses_ = AddressRows::OfVendors(company_.Folder());
  Vendor vendor_;
};

}  // namespace larkmoor::test
