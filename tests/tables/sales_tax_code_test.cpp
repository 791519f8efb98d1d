// The class SalesTaxCode: its finder, and the property that bears the name of the class.
#include <gtest/gtest.h>

#include <larkmoor/status.h>
#include <larkmoor/tables/sales_tax_code.h>

#include "automation/automation.h"
#include "support/company.h"

namespace larkmoor {
namespace {

TEST(SalesTaxCodeTest, GetEqualReadsTheCodeOfThatName) {
  const test::Company company;
  SalesTaxCode codes;
  ASSERT_EQ(codes.OpenFile(), StatusSuccess);
  codes.SalesTaxCode_("GA");
  codes.Authority(1, "ATLANTA");
  ASSERT_EQ(codes.Insert(), StatusSuccess);
  codes.SalesTaxCode_("");
  EXPECT_EQ(codes.GetEqual("GEORGIA"), StatusKeyNotFound);
  EXPECT_EQ(codes.GetEqual("GA"), StatusSuccess);
  EXPECT_EQ(codes.SalesTaxCode_(), "GA");
  EXPECT_EQ(codes.Authority(1), "ATLANTA");
}

TEST(SalesTaxCodeTest, PropertyOfTheNameOfTheClassKeepsItsNameAtRunTime) {
  automation::Object code("SalesTaxCode");
  code.Let("SalesTaxCode", "GA");
  EXPECT_EQ(code.Get("SalesTaxCode"), Variant("GA"));
}

}  // namespace
}  // namespace larkmoor
