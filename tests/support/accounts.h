// Accounts laid into the chart behind the back of the objects under test.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string_view>

#include "engine/records/chart.h"
#include "engine/tovrin_file_names.h"
#include "support/record_files.h"

namespace larkmoor::test {

struct Account {
  std::string_view id;
  std::int32_t index;
};

/// Adds an account to the chart of the company in `folder`.
inline void AddAccount(const std::filesystem::path& folder, const Account& account) {
  OpenRecordFile chart(folder / TovrinFileNames::ChartFile(), ChartRecord::Describe());
  chart.Add([&](Tovrin2Record& record) {
    record.SetText(ChartRecord::AccountID, account.id);
    record.SetLong(ChartRecord::Index, account.index);
  });
}

}  // namespace larkmoor::test
