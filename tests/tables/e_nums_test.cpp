// The class ENums, and the journal codes that it stands for.
#include <cstdint>
#include <type_traits>

#include <gtest/gtest.h>

#include <larkmoor/journal_code.h>
#include <larkmoor/tables/e_nums.h>

#include "automation/automation.h"

namespace larkmoor {
namespace {

// Clients hand the codes to properties and compare them with what properties give, without a cast.
static_assert(std::is_same_v<std::underlying_type_t<tovJournalCode>, std::int32_t>);
static_assert(std::is_convertible_v<tovJournalCode, std::int32_t>);
static_assert(std::int16_t{tovJournalCodeSales} == tovJournalCodeSales);

TEST(JournalCode, HasTheValuesThatLieInTheRecords) {
  EXPECT_EQ(tovJournalCodeGeneral, 0);
  EXPECT_EQ(tovJournalCodeCashReceipt, 1);
  EXPECT_EQ(tovJournalCodeCashDisbursement, 2);
  EXPECT_EQ(tovJournalCodeSales, 3);
  EXPECT_EQ(tovJournalCodePurchase, 4);
  EXPECT_EQ(tovJournalCodePayroll, 5);
  EXPECT_EQ(tovJournalCodeInventoryAdjustment, 7);
  EXPECT_EQ(tovJournalCodeAssemblyAdjustment, 8);
  EXPECT_EQ(tovJournalCodePurchaseOrder, 10);
  EXPECT_EQ(tovJournalCodeSalesOrder, 11);
}

TEST(ENumsTest, ObjectByNameHasNoMembers) {
  const automation::Object object("ENums");
  EXPECT_TRUE(object.Type().members.empty());
  EXPECT_EQ(object.File(), nullptr);
}

}  // namespace
}  // namespace larkmoor
