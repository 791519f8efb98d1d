// The class SortJob, which has the shape of a table and no file: every operation succeeds.
#include <gtest/gtest.h>

#include <larkmoor/further/sort_job.h>

namespace larkmoor {
namespace {

// A loop that waits for another status never ends. Clients know it, and rely on the 0.
TEST(SortJob, StepNextAnswers0ForEver) {
  SortJob lines;
  ASSERT_EQ(lines.OpenFile(), StatusSuccess);
  for (int i = 0; i < 1000; ++i) ASSERT_EQ(lines.StepNext(), StatusSuccess);
}

TEST(SortJob, EveryOperationAnswers0) {
  SortJob lines;
  EXPECT_EQ(lines.OpenFile(), StatusSuccess);
  EXPECT_EQ(lines.Insert(), StatusSuccess);
  EXPECT_EQ(lines.Update(), StatusSuccess);
  EXPECT_EQ(lines.Delete(), StatusSuccess);
  EXPECT_EQ(lines.StepFirst(), StatusSuccess);
  EXPECT_EQ(lines.StepLast(), StatusSuccess);
  EXPECT_EQ(lines.StepPrevious(), StatusSuccess);
  EXPECT_EQ(lines.RecordCount(), 0);
  EXPECT_EQ(lines.CloseFile(), StatusSuccess);
}

TEST(SortJob, TrxDateReadsEmpty) {
  SortJob lines;
  EXPECT_TRUE(lines.TrxDate().IsEmpty());
  lines.TrxDate(Date::FromYmd(2024, 2, 29));
  EXPECT_TRUE(lines.TrxDate().IsEmpty());
}

TEST(SortJob, DropsWhatIsAssigned) {
  SortJob lines;
  lines.Account("1200");
  lines.Amount(12.5);
  lines.NRecord(3);
  lines.Posted(1);
  EXPECT_EQ(lines.Account(), "");
  EXPECT_EQ(lines.Amount(), 0);
  EXPECT_EQ(lines.NRecord(), 0);
  EXPECT_EQ(lines.Posted(), 0);
}

}  // namespace
}  // namespace larkmoor
