// The class ArchivedBudgetSummary, whose file stays open until the object goes.
#include <filesystem>

#include <gtest/gtest.h>

#include <larkmoor/status.h>
#include <larkmoor/tables/archived_budget_summary.h>

#include "engine/tovrin_file_names.h"
#include "support/company.h"
#include "support/record_files.h"

namespace larkmoor {
namespace {

using test::IsHeldOpen;

class ArchivedBudgetSummaryTest : public testing::Test {
 protected:
  std::filesystem::path File() const {
    return company_.Folder() / TovrinFileNames::ArchivedBudgetSummaryFile();
  }

  test::Company company_;
};

TEST_F(ArchivedBudgetSummaryTest, CloseFileAnswers0AndKeepsTheFileOpen) {
  ArchivedBudgetSummary summary;
  ASSERT_EQ(summary.OpenFile(), StatusSuccess);
  summary.Amount(12.5);
  ASSERT_EQ(summary.Insert(), StatusSuccess);
  EXPECT_EQ(summary.CloseFile(), StatusSuccess);
  EXPECT_EQ(summary.CloseFile(), StatusSuccess);
  EXPECT_TRUE(IsHeldOpen(File()));
  EXPECT_EQ(summary.Amount(), 12.5);
  EXPECT_EQ(summary.StepFirst(), StatusSuccess);
  EXPECT_EQ(summary.RecordCount(), 1);
}

TEST_F(ArchivedBudgetSummaryTest, EndOfTheObjectReleasesTheFile) {
  {
    ArchivedBudgetSummary summary;
    ASSERT_EQ(summary.OpenFile(), StatusSuccess);
    ASSERT_EQ(summary.CloseFile(), StatusSuccess);
  }
  EXPECT_FALSE(IsHeldOpen(File()));
}

TEST_F(ArchivedBudgetSummaryTest, FailedOpenFileLeavesAnObjectThatCanTryAgain) {
  const std::filesystem::path elsewhere = company_.Folder() / "taken away";
  std::filesystem::rename(File(), elsewhere);
  ArchivedBudgetSummary summary;
  EXPECT_EQ(summary.OpenFile(), StatusFileNotFound);
  EXPECT_EQ(summary.StepFirst(), StatusFileNotOpen);
  EXPECT_EQ(summary.CloseFile(), StatusSuccess);
  std::filesystem::rename(elsewhere, File());
  EXPECT_EQ(summary.OpenFile(), StatusSuccess);
  EXPECT_EQ(summary.Insert(), StatusSuccess);
}

}  // namespace
}  // namespace larkmoor
