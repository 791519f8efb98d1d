// Budgets laid into their files behind the back of the accounts under test, and read from them
// again.
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <numeric>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include <larkmoor/status.h>

#include "engine/records/budget.h"
#include "engine/records/budget_detail.h"
#include "engine/records/chart.h"
#include "engine/tovrin_file_names.h"
#include "support/company.h"
#include "support/record_files.h"

namespace larkmoor::test {

inline constexpr std::string_view BudgetGUID = "B0000000-0000-4000-8000-000000000001";
inline constexpr std::string_view CashGUID = "A0000000-0000-4000-8000-000000000001";
inline constexpr std::string_view RentGUID = "A0000000-0000-4000-8000-000000000002";
inline constexpr std::string_view NoAccount;
inline constexpr std::string_view NoBudget;

inline constexpr std::int32_t Cash = 1;
inline constexpr std::int32_t Rent = 2;

inline constexpr int Periods = 56;
using Amounts = std::vector<double>;

/// An amount for each period, the first of them and then one more each time.
inline Amounts Rising(double first) {
  Amounts amounts(Periods);
  std::iota(amounts.begin(), amounts.end(), first);
  return amounts;
}

/// `amounts` with another amount for one period.
inline Amounts With(Amounts amounts, std::size_t period, double amount) {
  amounts[period] = amount;
  return amounts;
}

/// A company with two accounts, whose own records budget 500 and more, and no budget yet.
class BudgetCompany {
 public:
  explicit BudgetCompany(double release) : company_(release) {
    AddAccount("CASH", Cash, CashGUID);
    AddAccount("RENT", Rent, RentGUID);
  }

  std::filesystem::path ChartFile() const {
    return company_.Folder() / TovrinFileNames::ChartFile();
  }
  std::filesystem::path BudgetFile() const {
    return company_.Folder() / TovrinFileNames::BudgetFile();
  }
  std::filesystem::path DetailFile() const {
    return company_.Folder() / TovrinFileNames::BudgetDetailFile();
  }

  void AddAccount(std::string_view id, std::int32_t index, std::string_view guid) {
    OpenRecordFile(ChartFile(), ChartRecord::Describe()).Add([&](Tovrin2Record& record) {
      record.SetText(ChartRecord::AccountID, id);
      record.SetLong(ChartRecord::Index, index);
      record.SetText(ChartRecord::GUID, guid);
      for (int period = 0; period < Periods; ++period) {
        record.SetDouble(ChartRecord::Budget, 500.0 + period, period);
      }
    });
  }

  void AddBudget(std::string_view id, std::string_view guid = BudgetGUID) {
    OpenRecordFile(BudgetFile(), BudgetRecord::Describe()).Add([&](Tovrin2Record& record) {
      record.SetText(BudgetRecord::BudgetID, id);
      record.SetText(BudgetRecord::BudgetGUID, guid);
    });
  }

  /// Adds what the budget allows an account, rising from `first`.
  void AddAmounts(std::string_view account, double first) {
    OpenRecordFile(DetailFile(), BudgetDetailRecord::Describe()).Add([&](Tovrin2Record& record) {
      record.SetText(BudgetDetailRecord::BudgetGUID, BudgetGUID);
      record.SetText(BudgetDetailRecord::AccountGUID, account);
      SetAmounts(record, Rising(first));
    });
  }

  /// The budget with a row of no account, which is what a new object reads.
  void AddBudgetWithAmounts() {
    AddBudget("Budget");
    AddAmounts(NoAccount, 100);
  }

  /// What is on file for an account; nothing where it has no row.
  Amounts Stored(std::string_view account, std::string_view budget = BudgetGUID) {
    OpenRecordFile details(DetailFile(), BudgetDetailRecord::Describe());
    if (Find(details, budget, account) != StatusSuccess) return {};
    Amounts amounts;
    for (int period = 0; period < Periods; ++period) {
      amounts.push_back(details.Record().GetDouble(BudgetDetailRecord::Amount, period));
    }
    return amounts;
  }

  /// Gives a row that is there other amounts, rising from `first`.
  void Rewrite(std::string_view account, double first) {
    OpenRecordFile details(DetailFile(), BudgetDetailRecord::Describe());
    ASSERT_EQ(Find(details, BudgetGUID, account), StatusSuccess);
    SetAmounts(details.Record(), Rising(first));
    ASSERT_EQ(details.File().btUpdate(0), StatusSuccess);
  }

  std::int32_t StoredRows() {
    return OpenRecordFile(DetailFile(), BudgetDetailRecord::Describe()).File().btRecordCount();
  }

  /// The budget that the account's own record holds on file.
  double StoredInRecord(std::int32_t account, int period) {
    OpenRecordFile accounts(ChartFile(), ChartRecord::Describe());
    accounts.File().KeyLong(account, 0);
    EXPECT_EQ(accounts.File().btGetEqual(3), StatusSuccess);
    return accounts.Record().GetDouble(ChartRecord::Budget, period);
  }

 private:
  static Status Find(OpenRecordFile& details, std::string_view budget, std::string_view account) {
    details.File().KeyText(budget, 0);
    details.File().KeyText(account, 16);
    return details.File().btGetEqual(0);
  }

  static void SetAmounts(Tovrin2Record& record, const Amounts& amounts) {
    int period = 0;
    for (const double amount : amounts) {
      record.SetDouble(BudgetDetailRecord::Amount, amount, period++);
    }
  }

  Company company_;
};

}  // namespace larkmoor::test
