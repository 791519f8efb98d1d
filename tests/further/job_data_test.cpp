// The class JobData: the two forms of a job's percentage, and its finders.
#include <cstdint>
#include <limits>
#include <string_view>

#include <gtest/gtest.h>

#include <larkmoor/further/job_data.h>
#include <larkmoor/status.h>

#include "support/company.h"
#include "support/record_files.h"

namespace larkmoor {
namespace {

class JobDataTest : public testing::Test {
 protected:
  JobDataTest() { EXPECT_EQ(jobs_.OpenFile(), StatusSuccess); }

  void Add(std::string_view id) {
    jobs_.JobID(id);
    jobs_.Index(0);
    ASSERT_EQ(jobs_.Insert(), StatusSuccess);
  }

  test::Company company_;
  JobData jobs_;
};

using JobDataFile = JobDataTest;
using JobDataFinders = JobDataTest;

TEST_F(JobDataFile, IsProjectDat) {
  EXPECT_TRUE(test::IsHeldOpen(company_.Folder() / "Project.dat"));
}

// --- Percentages ---

/// `PercentComplete` of a job whose stored percentage is `stored`.
std::int16_t Shown(double stored) {
  JobData job;
  job.PercentComplete2(stored);
  const std::int16_t shown = job.PercentComplete();
  EXPECT_EQ(job.PercentComplete2(), stored) << "the read leaves what is stored";
  return shown;
}

TEST(JobDataPercentComplete, RoundsHalvesToTheEvenNeighbour) {
  EXPECT_EQ(Shown(33.5), 34);
  EXPECT_EQ(Shown(32.5), 32);
  EXPECT_EQ(Shown(-0.5), 0);
  EXPECT_EQ(Shown(-1.5), -2);
}

TEST(JobDataPercentComplete, RoundsToTheNearest) {
  EXPECT_EQ(Shown(33.4), 33);
  EXPECT_EQ(Shown(32.6), 33);
}

TEST(JobDataPercentComplete, BeyondAnIntegerReads0WithoutAnError) {
  EXPECT_EQ(Shown(1000000.0), 0);
  EXPECT_EQ(Shown(-1000000.0), 0);
  EXPECT_EQ(Shown(std::numeric_limits<double>::infinity()), 0);
}

TEST(JobDataPercentComplete, LooksAtTheRangeAfterRounding) {
  EXPECT_EQ(Shown(32767.4), 32767);
  EXPECT_EQ(Shown(32767.5), 0);
  EXPECT_EQ(Shown(-32768.5), -32768);
  EXPECT_EQ(Shown(-32769.0), 0);
}

TEST(JobDataPercentComplete, AssignedIsStoredAsADouble) {
  JobData job;
  job.PercentComplete2(33.5);
  job.PercentComplete(-7);
  EXPECT_EQ(job.PercentComplete2(), -7.0);
  EXPECT_EQ(job.PercentComplete(), -7);
}

TEST_F(JobDataTest, PercentageComesBackFromTheFileWithItsFraction) {
  jobs_.PercentComplete2(33.25);
  Add("Harbour");
  jobs_.PercentComplete2(0);
  ASSERT_EQ(jobs_.GetEqual("Harbour"), StatusSuccess);
  EXPECT_EQ(jobs_.PercentComplete2(), 33.25);
  EXPECT_EQ(jobs_.PercentComplete(), 33);
}

// --- Finders ---

TEST_F(JobDataFinders, InsertNumbersJobsFrom1) {
  Add("Harbour");
  EXPECT_EQ(jobs_.Index(), 1);
  Add("Bridge");
  EXPECT_EQ(jobs_.Index(), 2);
}

TEST_F(JobDataFinders, GetEqualComparesLetterByLetter) {
  Add("Harbour");
  Add("Bridge");
  ASSERT_EQ(jobs_.GetEqual("Harbour"), StatusSuccess);
  EXPECT_EQ(jobs_.Index(), 1);
  EXPECT_EQ(jobs_.GetEqual("HARBOUR"), StatusKeyNotFound);
  EXPECT_EQ(jobs_.GetEqual("Harbour "), StatusKeyNotFound);
  EXPECT_EQ(jobs_.GetEqual("Harb"), StatusKeyNotFound);
}

TEST_F(JobDataFinders, GetForIndexReadsTheJobOfThatIndex) {
  Add("Harbour");
  Add("Bridge");
  ASSERT_EQ(jobs_.GetForIndex(2), StatusSuccess);
  EXPECT_EQ(jobs_.JobID(), "Bridge");
}

TEST_F(JobDataFinders, GetForIndex0GoesToTheEngineLikeAnyOther) {
  Add("Harbour");
  EXPECT_EQ(jobs_.GetForIndex(0), StatusKeyNotFound);
  EXPECT_EQ(jobs_.JobID(), "Harbour") << "the record in hand stays";
  JobData closed;
  EXPECT_EQ(closed.GetForIndex(0), StatusFileNotOpen);
}

TEST_F(JobDataFinders, SecondJobOfAnIdIsRefused) {
  Add("Harbour");
  jobs_.Index(0);
  EXPECT_EQ(jobs_.Insert(), StatusDuplicateKey);
  EXPECT_EQ(jobs_.RecordCount(), 1);
}

}  // namespace
}  // namespace larkmoor
