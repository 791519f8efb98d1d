// The smaller classes over the company's settings: DefaultStatementData, DefaultTaxTypes,
// DefaultGLAccounts, DefaultInventoryData, DefaultPriceLevels, DefaultShipMethod and
// DefaultJobData. Several of them share a row and rewrite it as a whole, each from a buffer of its
// own. What all settings have in common is in settings_frame_test.cpp, their accounts are in
// settings_accounts_test.cpp.
#include <cstdint>

#include <gtest/gtest.h>

#include <larkmoor/masters/customer.h>
#include <larkmoor/settings/default_customer_data.h>
#include <larkmoor/settings/default_gl_accounts.h>
#include <larkmoor/settings/default_inventory_data.h>
#include <larkmoor/settings/default_job_data.h>
#include <larkmoor/settings/default_price_levels.h>
#include <larkmoor/settings/default_ship_method.h>
#include <larkmoor/settings/default_statement_data.h>
#include <larkmoor/settings/default_tax_types.h>
#include <larkmoor/status.h>

#include "engine/records/default_customer_data.h"
#include "engine/records/default_job_data.h"
#include "engine/records/default_ship_method.h"
#include "engine/runtime_error.h"
#include "engine/tovrin_file.h"
#include "engine/tovrin_file_names.h"
#include "support/accounts.h"
#include "support/company.h"
#include "support/errors.h"
#include "support/settings_row.h"
#include "support/taken_away.h"

namespace larkmoor {
namespace {

using test::AddAccount;
using test::Company;
using test::RaisedNumber;
using test::SettingsRow;
using test::TakenAway;

template <typename Settings>
void OpenAndRead(Settings& settings) {
  ASSERT_EQ(settings.OpenFile(), StatusSuccess);
  ASSERT_EQ(settings.Read(), StatusSuccess);
}

/// Expects error 9 of `call`.
template <typename Call>
void ExpectOutside(Call&& call) {
  EXPECT_EQ(RaisedNumber(call), errors::SubscriptOutOfRange);
}

// --- The row of customers, statements and tax types ---

/// An object of each class over the row, with the row read.
class CustomersRow : public testing::Test {
 protected:
  CustomersRow() {
    OpenAndRead(customers_);
    OpenAndRead(statements_);
    OpenAndRead(taxes_);
  }

  Company company_;
  SettingsRow row_{company_.Folder(), DefaultCustomerDataRecord::Describe()};
  DefaultCustomerData customers_;
  DefaultStatementData statements_;
  DefaultTaxTypes taxes_;
};

using DefaultStatementDataTest = CustomersRow;
using DefaultTaxTypesTest = CustomersRow;

TEST_F(CustomersRow, IsRewrittenAsAWholeByEachClass) {
  customers_.NetDueDays(21);
  ASSERT_EQ(customers_.Update(), StatusSuccess);
  ASSERT_EQ(statements_.Read(), StatusSuccess);
  statements_.PrintOverdueDays(45);
  ASSERT_EQ(statements_.Update(), StatusSuccess);
  ASSERT_EQ(taxes_.Read(), StatusSuccess);
  taxes_.Description(1, "Exempt");
  ASSERT_EQ(taxes_.Update(), StatusSuccess);
  EXPECT_EQ(row_.Value(DefaultCustomerDataRecord::NetDueDays), 21);
  EXPECT_EQ(row_.Value(DefaultCustomerDataRecord::PrintOverdueDays), 45);
  EXPECT_EQ(row_.Value(DefaultCustomerDataRecord::TaxTypeDescription, 1), "Exempt");
}

TEST_F(CustomersRow, IsAnothersForEachClass) {
  row_.Set(DefaultCustomerDataRecord::TaxTypeDescription, "Taxed", 1);
  ASSERT_EQ(customers_.Read(), StatusSuccess);
  ASSERT_EQ(taxes_.Read(), StatusSuccess);
  taxes_.Description(1, "Exempt");
  ASSERT_EQ(customers_.Update(), StatusSuccess);
  EXPECT_EQ(row_.Value(DefaultCustomerDataRecord::TaxTypeDescription, 1), "Taxed")
      << "what another object holds is not written";
  customers_.NetDueDays(21);
  ASSERT_EQ(customers_.Update(), StatusSuccess);
  EXPECT_EQ(taxes_.Update(), StatusRecordConflict);
  EXPECT_EQ(statements_.Update(), StatusRecordConflict);
}

TEST_F(DefaultStatementDataTest, ActualLengthIsThatOfTheRowReadLast) {
  EXPECT_EQ(statements_.ActualLength(), static_cast<std::int32_t>(row_.Bytes().size()));
  EXPECT_EQ(DefaultStatementData().ActualLength(), 0);
}

TEST_F(DefaultTaxTypesTest, LieInTheirOwnFieldsOfTheRow) {
  taxes_.Description(3, "Freight");
  taxes_.Taxable(3, true);
  EXPECT_EQ(taxes_.Unknown(3), 0);
  taxes_.Unknown(3, 7);
  EXPECT_EQ(taxes_.Unknown(3), 0);
  ASSERT_EQ(taxes_.Update(), StatusSuccess);
  EXPECT_EQ(row_.Value(DefaultCustomerDataRecord::TaxTypeDescription, 3), "Freight");
  EXPECT_EQ(row_.Value(DefaultCustomerDataRecord::TaxTypeTaxable, 3), true);
}

// --- The row of items, price levels and ship methods ---

/// An object of each class over the row, with the row read.
class InventoryRow : public testing::Test {
 protected:
  InventoryRow() {
    AddAccount(company_.Folder(), {"4000", 17});
    OpenAndRead(accounts_);
    OpenAndRead(inventory_);
    OpenAndRead(levels_);
    OpenAndRead(methods_);
  }

  Company company_;
  SettingsRow row_{company_.Folder(), DefaultShipMethodRecord::Describe()};
  DefaultGLAccounts accounts_;
  DefaultInventoryData inventory_;
  DefaultPriceLevels levels_;
  DefaultShipMethod methods_;
};

using DefaultGLAccountsTest = InventoryRow;
using DefaultInventoryDataTest = InventoryRow;
using DefaultPriceLevelsTest = InventoryRow;
using DefaultShipMethodTest = InventoryRow;

TEST_F(InventoryRow, IsRewrittenAsAWholeByEachClass) {
  accounts_.Costing(2, 1);
  ASSERT_EQ(accounts_.Update(), StatusSuccess);
  ASSERT_EQ(inventory_.Read(), StatusSuccess);
  inventory_.DefaultClass(4);
  ASSERT_EQ(inventory_.Update(), StatusSuccess);
  ASSERT_EQ(levels_.Read(), StatusSuccess);
  levels_.Name(3, "Retail");
  ASSERT_EQ(levels_.Update(), StatusSuccess);
  ASSERT_EQ(methods_.Read(), StatusSuccess);
  methods_.Description(10, "Sledge");
  ASSERT_EQ(methods_.Update(), StatusSuccess);
  EXPECT_EQ(row_.Value(DefaultShipMethodRecord::Costing, 2), 1);
  EXPECT_EQ(row_.Value(DefaultShipMethodRecord::DefaultClass), 4);
  EXPECT_EQ(row_.Value(DefaultShipMethodRecord::PriceLevelName, 3), "Retail");
  EXPECT_EQ(row_.Value(DefaultShipMethodRecord::Description, 10), "Sledge");
}

TEST_F(InventoryRow, IsAnothersForEachClass) {
  methods_.Description(10, "Sledge");
  ASSERT_EQ(methods_.Update(), StatusSuccess);
  EXPECT_EQ(accounts_.Update(), StatusRecordConflict);
  EXPECT_EQ(inventory_.Update(), StatusRecordConflict);
  EXPECT_EQ(levels_.Update(), StatusRecordConflict);
  EXPECT_EQ(row_.Value(DefaultShipMethodRecord::Description, 10), "Sledge");
}

TEST_F(DefaultGLAccountsTest, IndexIsTheItemClass) {
  row_.Change([](Tovrin2Record& row) {
    for (const int itemClass : {1, 2, 3}) {
      row.SetLong(DefaultShipMethodRecord::GLSalesIndex, 0, itemClass);
      row.SetLong(DefaultShipMethodRecord::GLInventoryWageIndex, 0, itemClass);
      row.SetLong(DefaultShipMethodRecord::GLCostOfSalesIndex, 0, itemClass);
    }
  });
  ASSERT_EQ(accounts_.Read(), StatusSuccess);
  accounts_.GLSales(1, "4000");
  accounts_.GLInventoryWage(2, "4000");
  accounts_.GLCostOfSales(3, "4000");
  EXPECT_EQ(accounts_.GLSales(1), "4000");
  EXPECT_EQ(accounts_.GLSales(2), "");
  EXPECT_EQ(accounts_.GLInventoryWage(2), "4000");
  EXPECT_EQ(accounts_.GLInventoryWage(3), "");
  EXPECT_EQ(accounts_.GLCostOfSales(3), "4000");
  EXPECT_EQ(accounts_.GLCostOfSales(2), "");
  ASSERT_EQ(accounts_.Update(), StatusSuccess);
  EXPECT_EQ(row_.Value(DefaultShipMethodRecord::GLSalesIndex, 1), 17);
  EXPECT_EQ(row_.Value(DefaultShipMethodRecord::GLInventoryWageIndex, 2), 17);
  EXPECT_EQ(row_.Value(DefaultShipMethodRecord::GLCostOfSalesIndex, 3), 17);
  EXPECT_EQ(row_.Value(DefaultShipMethodRecord::GLSalesIndex, 2), 0);
}

TEST_F(DefaultGLAccountsTest, ItemClassOutsideRaises9AndChangesNothing) {
  const RecordBytes before = row_.Bytes();
  for (const std::int16_t itemClass : {std::int16_t{-1}, std::int16_t{99}}) {
    ExpectOutside([&] { return accounts_.GLSales(itemClass); });
    ExpectOutside([&] { accounts_.GLSales(itemClass, "4000"); });
    ExpectOutside([&] { return accounts_.GLInventoryWage(itemClass); });
    ExpectOutside([&] { accounts_.GLInventoryWage(itemClass, "4000"); });
    ExpectOutside([&] { return accounts_.GLCostOfSales(itemClass); });
    ExpectOutside([&] { accounts_.GLCostOfSales(itemClass, ""); });
  }
  ASSERT_EQ(accounts_.Update(), StatusSuccess);
  EXPECT_TRUE(row_.Bytes() == before);
}

TEST_F(DefaultInventoryDataTest, NLabelsShowsWhatIsOnFile) {
  row_.Set(DefaultShipMethodRecord::NLabels, std::int16_t{3});
  ASSERT_EQ(inventory_.Read(), StatusSuccess);
  EXPECT_EQ(inventory_.NLabels(), 3);
}

TEST_F(DefaultPriceLevelsTest, LieInTheirOwnFieldsOfTheRow) {
  levels_.Name(3, "Retail");
  levels_.Enabled(3, 11);
  levels_.Level(3, 12);
  levels_.Use(3, 13);
  levels_.Method(3, 14);
  levels_.Rounding(3, 15);
  levels_.Amount(3, 16.5);
  levels_.RoundBy(3, 17.5);
  ASSERT_EQ(levels_.Update(), StatusSuccess);
  EXPECT_EQ(row_.Value(DefaultShipMethodRecord::PriceLevelName, 3), "Retail");
  EXPECT_EQ(row_.Value(DefaultShipMethodRecord::PriceLevelEnabled, 3), 11);
  EXPECT_EQ(row_.Value(DefaultShipMethodRecord::PriceLevelLevel, 3), 12);
  EXPECT_EQ(row_.Value(DefaultShipMethodRecord::PriceLevelUse, 3), 13);
  EXPECT_EQ(row_.Value(DefaultShipMethodRecord::PriceLevelMethod, 3), 14);
  EXPECT_EQ(row_.Value(DefaultShipMethodRecord::PriceLevelRounding, 3), 15);
  EXPECT_EQ(row_.Value(DefaultShipMethodRecord::PriceLevelAmount, 3), 16.5);
  EXPECT_EQ(row_.Value(DefaultShipMethodRecord::PriceLevelRoundBy, 3), 17.5);
}

TEST_F(DefaultShipMethodTest, AreThoseThatCustomersChooseFrom) {
  methods_.Description(1, "Mail boat");
  methods_.Description(2, "Sledge");
  ASSERT_EQ(methods_.Update(), StatusSuccess);
  Customer customer;
  ASSERT_EQ(customer.OpenFile(), StatusSuccess);
  customer.ShipVia(2);
  EXPECT_EQ(customer.ShipVia(), 1) << "customers count them from 1 and show them from 0";
}

// --- The row of jobs ---

class DefaultJobDataTest : public testing::Test {
 protected:
  DefaultJobDataTest() { OpenAndRead(jobs_); }

  Company company_;
  SettingsRow row_{company_.Folder(), DefaultJobDataRecord::Describe()};
  DefaultJobData jobs_;
};

TEST_F(DefaultJobDataTest, AccountsAreIndexesThatNobodyLooksUp) {
  const TakenAway noChart(company_.Folder() / TovrinFileNames::ChartFile());
  jobs_.AppLaborBurdenAccount(96);
  jobs_.LaborBurdenAccount(97);
  jobs_.PayRetainageAccount(98);
  jobs_.RecRetainageAccount(-99);
  ASSERT_EQ(jobs_.Update(), StatusSuccess);
  EXPECT_EQ(row_.Value(DefaultJobDataRecord::AppLaborBurdenAccount), 96);
  EXPECT_EQ(row_.Value(DefaultJobDataRecord::LaborBurdenAccount), 97);
  EXPECT_EQ(row_.Value(DefaultJobDataRecord::PayRetainageAccount), 98);
  EXPECT_EQ(row_.Value(DefaultJobDataRecord::RecRetainageAccount), -99);
  ASSERT_EQ(jobs_.Read(), StatusSuccess);
  EXPECT_EQ(jobs_.RecRetainageAccount(), -99);
}

TEST_F(DefaultJobDataTest, NLabelsShowsWhatIsOnFile) {
  row_.Set(DefaultJobDataRecord::NLabels, std::int16_t{3});
  ASSERT_EQ(jobs_.Read(), StatusSuccess);
  EXPECT_EQ(jobs_.NLabels(), 3);
}

}  // namespace
}  // namespace larkmoor
