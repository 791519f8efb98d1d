// The class JobEstimate: its finder over three indexes.
#include <cstdint>

#include <gtest/gtest.h>

#include <larkmoor/further/job_estimate.h>

#include "support/company.h"

namespace larkmoor {
namespace {

/// An open table with an estimate of 100 for job 1, of 200 for its phase 2 and of 300 for cost code
/// 3 of that phase.
class JobEstimateTest : public testing::Test {
 protected:
  JobEstimateTest() {
    EXPECT_EQ(estimates_.OpenFile(), StatusSuccess);
    Add(1, 0, 0, 100);
    Add(1, 2, 0, 200);
    Add(1, 2, 3, 300);
  }

  void Add(std::int32_t job, std::int32_t phase, std::int32_t cost, double expenses) {
    estimates_.JobIndex(job);
    estimates_.PhaseIndex(phase);
    estimates_.CostIndex(cost);
    estimates_.Expenses(expenses);
    EXPECT_EQ(estimates_.Insert(), StatusSuccess);
  }

  Status Find(std::int32_t job, std::int32_t phase, std::int32_t cost) {
    return estimates_.GetEqual(job, phase, cost);
  }

  test::Company company_;
  JobEstimate estimates_;
};

TEST_F(JobEstimateTest, GetEqualComparesJobPhaseAndCost) {
  ASSERT_EQ(Find(1, 2, 0), StatusSuccess);
  EXPECT_EQ(estimates_.Expenses(), 200);
  ASSERT_EQ(Find(1, 2, 3), StatusSuccess);
  EXPECT_EQ(estimates_.Expenses(), 300);
  ASSERT_EQ(Find(1, 0, 0), StatusSuccess);
  EXPECT_EQ(estimates_.Expenses(), 100);
  EXPECT_EQ(Find(1, 0, 3), StatusKeyNotFound);
  EXPECT_EQ(Find(2, 2, 3), StatusKeyNotFound);
}

TEST_F(JobEstimateTest, GetEqualLeavesItsArguments) {
  std::int32_t phase = 2;
  std::int32_t cost = 3;
  ASSERT_EQ(estimates_.GetEqual(1, phase, cost), StatusSuccess);
  EXPECT_EQ(phase, 2);
  EXPECT_EQ(cost, 3);
}

}  // namespace
}  // namespace larkmoor
