// The class eCheckData, which has the shape of a table and no file.
#include <gtest/gtest.h>

#include <larkmoor/tables/e_check_data.h>

namespace larkmoor {
namespace {

TEST(ECheckDataTest, ReadAnswers9SoThatAWalkEndsAtOnce) {
  eCheckData checks;
  ASSERT_EQ(checks.OpenFile(), StatusSuccess);
  EXPECT_EQ(checks.Read(), StatusEndOfFile);
  EXPECT_EQ(checks.Read(), StatusEndOfFile);
}

TEST(ECheckDataTest, OtherOperationsAnswer0WithoutACompany) {
  eCheckData checks;
  EXPECT_EQ(checks.CloseFile(), StatusSuccess);
  EXPECT_EQ(checks.OpenFile(), StatusSuccess);
  EXPECT_EQ(checks.Update(), StatusSuccess);
  EXPECT_EQ(checks.Delete(), StatusSuccess);
  EXPECT_EQ(checks.CloseFile(), StatusSuccess);
}

TEST(ECheckDataTest, PropertiesDropWhatIsAssigned) {
  eCheckData checks;
  checks.MasterBusinessID(12);
  checks.SecurityCode("secret");
  checks.TransmissionPhone("555-0100");
  checks.Unknown(3, 7);
  EXPECT_EQ(checks.MasterBusinessID(), 0);
  EXPECT_EQ(checks.SecurityCode(), "");
  EXPECT_EQ(checks.TransmissionPhone(), "");
  EXPECT_EQ(checks.Unknown(3), 0);
}

TEST(ECheckDataTest, UnknownTakesAnyIndex) {
  eCheckData checks;
  EXPECT_EQ(checks.Unknown(-1), 0);
  EXPECT_EQ(checks.Unknown(32767), 0);
}

}  // namespace
}  // namespace larkmoor
