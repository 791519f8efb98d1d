// Memorized transactions: patterns in the company's files, and the object that reads them.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include <larkmoor/journals/memorized_transactions.h>
#include <larkmoor/status.h>

#include "engine/tovrin_file_names.h"
#include "support/company.h"
#include "support/journals.h"

namespace larkmoor::test {

/// A pattern that is loaded, and another one that may lie behind it in the file.
class MemorizedFixture : public testing::Test {
 protected:
  using Amounts = std::vector<double>;
  using Messages = std::vector<std::string>;

  static constexpr std::int32_t Ours = 5;
  static constexpr std::int32_t Theirs = 9;
  /// Amount of the first row of `Theirs`, which no row of `Ours` has.
  static constexpr double TheirAmount = 77;

  void Open() { ASSERT_EQ(patterns_.OpenFile(), StatusSuccess); }

  /// Loads our pattern with rows of these amounts, and theirs behind it.
  void Load(const Amounts& amounts) {
    files_.AddTransaction({.nRecord = Ours}, amounts);
    files_.AddTransaction({.nRecord = Theirs}, {TheirAmount, 78});
    Open();
    ASSERT_EQ(patterns_.StepFirst(), StatusSuccess);
  }
  /// The same with nothing behind it.
  void LoadAlone(const Amounts& amounts) {
    files_.AddTransaction({.nRecord = Ours}, amounts);
    Open();
    ASSERT_EQ(patterns_.StepFirst(), StatusSuccess);
  }
  /// Loads a pattern without rows, of that journal and that customer or vendor.
  void LoadFor(std::int16_t journal, std::int32_t party) {
    files_.AddHeader({.nRecord = Ours, .journal = journal, .idNumber = party});
    Open();
    patterns_.StepFirst();
  }

  [[nodiscard]] Amounts OurAmounts() const { return files_.Amounts(Ours); }

  [[nodiscard]] std::filesystem::path Accounts() const { return company_.Folder() / "Chart.dat"; }
  [[nodiscard]] std::filesystem::path Customers() const {
    return company_.Folder() / "Customer.dat";
  }
  [[nodiscard]] std::filesystem::path Vendors() const { return company_.Folder() / "Vendor.dat"; }

  Company company_;
  JournalFiles files_{company_.Folder(), TovrinFileNames::MemorizedHdrFile(),
                      TovrinFileNames::MemorizedRowFile()};
  CapturedMessages messages_;
  MemorizedTransactions patterns_;
};

}  // namespace larkmoor::test
