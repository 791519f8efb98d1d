// The class JrnlSNo: a table that is read by walking it.
#include <gtest/gtest.h>

#include <larkmoor/date.h>
#include <larkmoor/journals/jrnl_s_no.h>

#include "support/company.h"

namespace larkmoor {
namespace {

TEST(JrnlSNoTest, CloseFileOnANewObjectAnswers0) {
  JrnlSNo serials;
  EXPECT_EQ(serials.CloseFile(), StatusSuccess);
}

TEST(JrnlSNoTest, WalkReadsTheRowsInTheOrderOfInsertion) {
  const test::Company company;
  JrnlSNo serials;
  ASSERT_EQ(serials.OpenFile(), StatusSuccess);
  for (const char* number : {"SN-2", "SN-1"}) {
    serials.SerialNumber(number);
    ASSERT_EQ(serials.Insert(), StatusSuccess);
  }
  ASSERT_EQ(serials.StepFirst(), StatusSuccess);
  EXPECT_EQ(serials.SerialNumber(), "SN-2");
  ASSERT_EQ(serials.StepNext(), StatusSuccess);
  EXPECT_EQ(serials.SerialNumber(), "SN-1");
  EXPECT_EQ(serials.StepNext(), StatusEndOfFile);
}

TEST(JrnlSNoTest, TransactionDateIsNullUntilItIsSet) {
  JrnlSNo serials;
  EXPECT_TRUE(serials.TransactionDate().IsNull());
  serials.TransactionDate(Date::FromYmd(2012, 2, 29));
  EXPECT_EQ(serials.TransactionDate(), Variant(Date::FromYmd(2012, 2, 29)));
  serials.TransactionDate(Null);
  EXPECT_TRUE(serials.TransactionDate().IsNull());
}

}  // namespace
}  // namespace larkmoor
