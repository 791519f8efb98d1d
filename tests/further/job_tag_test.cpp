// The class JobTag, which has the shape of a table and no file: walks over it end at once.
#include <filesystem>
#include <iterator>

#include <gtest/gtest.h>

#include <larkmoor/further/job_tag.h>

#include "support/company.h"

namespace larkmoor {
namespace {

TEST(JobTag, OpensAndClosesWithoutAnyFile) {
  JobTag tags;
  EXPECT_EQ(tags.OpenFile(), StatusSuccess);
  EXPECT_EQ(tags.CloseFile(), StatusSuccess);
  EXPECT_EQ(tags.RecordCount(), 0);
}

TEST(JobTag, MakesNoFileInTheCompany) {
  const test::Company company;
  const auto countFiles = [&] {
    return std::distance(std::filesystem::directory_iterator(company.Folder()), {});
  };
  const auto before = countFiles();
  JobTag tags;
  ASSERT_EQ(tags.OpenFile(), StatusSuccess);
  tags.Insert();
  EXPECT_EQ(countFiles(), before);
}

TEST(JobTag, GetFirstAnswers9WhateverItsArguments) {
  JobTag tags;
  EXPECT_EQ(tags.GetFirst(0, 0, 0, Null), StatusEndOfFile);
  EXPECT_EQ(tags.GetFirst(1, 2, 3, Date::FromYmd(2024, 2, 29)), StatusEndOfFile);
  EXPECT_EQ(tags.GetFirst(-1, -1, -1, "no date"), StatusEndOfFile);
}

TEST(JobTag, EveryReadAndWriteAnswers9) {
  JobTag tags;
  ASSERT_EQ(tags.OpenFile(), StatusSuccess);
  EXPECT_EQ(tags.GetNext(), StatusEndOfFile);
  EXPECT_EQ(tags.StepFirst(), StatusEndOfFile);
  EXPECT_EQ(tags.StepLast(), StatusEndOfFile);
  EXPECT_EQ(tags.StepNext(), StatusEndOfFile);
  EXPECT_EQ(tags.StepPrevious(), StatusEndOfFile);
  EXPECT_EQ(tags.Insert(), StatusEndOfFile);
  EXPECT_EQ(tags.Update(), StatusEndOfFile);
  EXPECT_EQ(tags.Delete(), StatusEndOfFile);
}

TEST(JobTag, GLAccountIDReadsTheText0) {
  JobTag tags;
  EXPECT_EQ(tags.GLAccountID(), "0");
  tags.GLAccountID("1200");
  EXPECT_EQ(tags.GLAccountID(), "0");
}

TEST(JobTag, EntryDateReadsAnInteger0) {
  JobTag tags;
  tags.EntryDate(Date::FromYmd(2024, 2, 29));
  EXPECT_EQ(tags.EntryDate().GetKind(), Variant::Kind::Integer);
  EXPECT_EQ(tags.EntryDate().ToInteger(), 0);
}

TEST(JobTag, DropsWhatIsAssigned) {
  JobTag tags;
  tags.Amount(12.5);
  tags.JobIndex(3);
  tags.StockItem(true);
  tags.Subindex1(7);
  EXPECT_EQ(tags.Amount(), 0);
  EXPECT_EQ(tags.JobIndex(), 0);
  EXPECT_FALSE(tags.StockItem());
  EXPECT_EQ(tags.Subindex1(), 0);
}

}  // namespace
}  // namespace larkmoor
