// The ship methods of a company, in their row of the general file.
#pragma once

#include <array>
#include <cstdint>
#include <filesystem>
#include <string_view>
#include <utility>

#include <gtest/gtest.h>

#include <larkmoor/status.h>

#include "engine/records/default_ship_method.h"
#include "engine/tovrin_file_names.h"
#include "support/record_files.h"

namespace larkmoor::test {

/// The ten ship methods of a company.
using ShipMethodTexts = std::array<std::string_view, 10>;

inline constexpr ShipMethodTexts TenShipMethods = {
    "Airborne", "Courier", "Hand", "Mail", "Pick-up", "Rail", "Road", "Sea", "Tender", "Van"};

/// Reads the row of the ship methods and has `change` work on it.
template <typename Change>
void ChangeShipMethodRow(const std::filesystem::path& folder, Change&& change) {
  constexpr std::int16_t ShipMethodRow = 7;
  OpenRecordFile general(folder / TovrinFileNames::GeneralFile(),
                         DefaultShipMethodRecord::Describe());
  ASSERT_EQ(general.ReadRow(ShipMethodRow), StatusSuccess);
  std::forward<Change>(change)(general);
}

inline void SetShipMethods(const std::filesystem::path& folder, const ShipMethodTexts& methods) {
  ChangeShipMethodRow(folder, [&](OpenRecordFile& general) {
    int number = 1;
    for (const std::string_view method : methods) {
      general.Record().SetText(DefaultShipMethodRecord::Description, method, number++);
    }
    EXPECT_EQ(general.File().btUpdate(0), StatusSuccess);
  });
}

inline void DeleteShipMethods(const std::filesystem::path& folder) {
  ChangeShipMethodRow(
      folder, [](OpenRecordFile& general) { EXPECT_EQ(general.File().btDelete(), StatusSuccess); });
}

}  // namespace larkmoor::test
