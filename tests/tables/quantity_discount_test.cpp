// The class QuantityDiscount: the property that moves what it reads, and the finder by number.
#include "engine/records/quantity_discount.h"

#include <gtest/gtest.h>

#include <larkmoor/status.h>
#include <larkmoor/tables/quantity_discount.h>

#include "automation/automation.h"
#include "engine/tovrin_file.h"
#include "engine/tovrin_file_names.h"
#include "support/company.h"
#include "support/record_files.h"

namespace larkmoor {
namespace {

class QuantityDiscountTest : public testing::Test {
 protected:
  QuantityDiscountTest() { EXPECT_EQ(discounts_.OpenFile(), StatusSuccess); }

  test::Company company_;
  QuantityDiscount discounts_;
};

using QuantityDiscountUnused1 = QuantityDiscountTest;
using QuantityDiscountFinder = QuantityDiscountTest;

// --- Unused1 ---

TEST_F(QuantityDiscountUnused1, Reads0AndMovesWhatIsStoredIntoLastUpdateCounter) {
  discounts_.Unused1(17);
  discounts_.LastUpdateCounter(3);
  EXPECT_EQ(discounts_.Unused1(), 0);
  EXPECT_EQ(discounts_.LastUpdateCounter(), 17);
}

TEST_F(QuantityDiscountUnused1, LeavesLastUpdateCounterAsItIsAtASecondRead) {
  discounts_.Unused1(17);
  ASSERT_EQ(discounts_.Unused1(), 0);
  EXPECT_EQ(discounts_.Unused1(), 0);
  EXPECT_EQ(discounts_.LastUpdateCounter(), 17);
}

TEST_F(QuantityDiscountUnused1, StoresWhatIsAssignedAndLeavesLastUpdateCounterAlone) {
  discounts_.LastUpdateCounter(3);
  discounts_.Unused1(17);
  EXPECT_EQ(discounts_.LastUpdateCounter(), 3);
  ASSERT_EQ(discounts_.Insert(), StatusSuccess);
  test::OpenRecordFile file(company_.Folder() / TovrinFileNames::QuantityDiscountFile(),
                            QuantityDiscountRecord::Describe());
  ASSERT_EQ(file.File().btStepFirst(), StatusSuccess);
  EXPECT_EQ(file.Record().GetInteger(QuantityDiscountRecord::Unused1), 17);
  EXPECT_EQ(file.Record().GetInteger(QuantityDiscountRecord::LastUpdateCounter), 3);
}

TEST_F(QuantityDiscountUnused1, OverwritesLastUpdateCounterInTheFileOnlyByAnUpdate) {
  discounts_.Unused1(17);
  discounts_.LastUpdateCounter(3);
  ASSERT_EQ(discounts_.Insert(), StatusSuccess);
  ASSERT_EQ(discounts_.Unused1(), 0);
  QuantityDiscount reader;
  ASSERT_EQ(reader.OpenFile(), StatusSuccess);
  ASSERT_EQ(reader.StepFirst(), StatusSuccess);
  EXPECT_EQ(reader.LastUpdateCounter(), 3);
  ASSERT_EQ(discounts_.Update(), StatusSuccess);
  ASSERT_EQ(reader.StepFirst(), StatusSuccess);
  EXPECT_EQ(reader.LastUpdateCounter(), 17);
}

// --- GetEqual ---

TEST_F(QuantityDiscountFinder, ReadsTheScaleOfThatNumber) {
  for (const char* number : {"1", "10"}) {
    discounts_.RecordNumber(number);
    ASSERT_EQ(discounts_.Insert(), StatusSuccess);
  }
  EXPECT_EQ(discounts_.GetEqual("1"), StatusSuccess);
  EXPECT_EQ(discounts_.RecordNumber(), "1");
  EXPECT_EQ(discounts_.GetEqual("2"), StatusKeyNotFound);
}

TEST_F(QuantityDiscountFinder, MakesTheNextUpdateGoAlongKey1) {
  automation::Object discounts("QuantityDiscount");
  ASSERT_EQ(discounts.Call("OpenFile"), Variant(StatusSuccess));
  discounts.Let("RecordNumber", "1");
  ASSERT_EQ(discounts.Call("Insert"), Variant(StatusSuccess));
  ASSERT_EQ(discounts.Call("GetEqual", {"1"}), Variant(StatusSuccess));
  ASSERT_EQ(discounts.Call("Update"), Variant(StatusSuccess));
  EXPECT_EQ(discounts.File()->btGetNext(0), StatusDifferentKeyNumber);
  EXPECT_EQ(discounts.File()->btGetNext(1), StatusEndOfFile);
}

}  // namespace
}  // namespace larkmoor
