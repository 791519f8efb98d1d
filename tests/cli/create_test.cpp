#include <filesystem>

#include <gtest/gtest.h>

#include "cli/larkmoor_command.h"

namespace larkmoor::test {
namespace {

TEST(CreateCommand, MakesACompanyOfTheReleaseThatIsAskedFor) {
  const CommandCompany company("11.5");
  const std::string stat = company.Output("stat", {"Address.dat"});
  EXPECT_TRUE(Contains(stat, "  release        11.5\n")) << stat;
}

TEST(CreateCommand, MakesACompanyOfRelease19WhereNoneIsAskedFor) {
  const TempFolder folder;
  const std::string path = (folder.Path() / "new").string();
  ASSERT_EQ(Larkmoor({"create", path}).exitCode, 0);
  const ProgramResult stat = Larkmoor({"stat", path, "Address.dat"});
  EXPECT_TRUE(Contains(stat.out, "  release        19\n")) << stat.out;
}

TEST(CreateCommand, StoresTheNameOfTheCompany) {
  const TempFolder folder;
  const std::string path = (folder.Path() / "new").string();
  ASSERT_EQ(Larkmoor({"create", path, "--name", "Käthe & Söhne"}).exitCode, 0);
  const ProgramResult list =
      Larkmoor({"list", path, "Company", "--fields", "CompanyName", "--format", "csv"});
  EXPECT_EQ(list.out, "CompanyName\nKäthe & Söhne\n") << list.err;
}

TEST(CreateCommand, TakesTheFirstDayOfTheFiscalYear) {
  const TempFolder folder;
  const std::string path = (folder.Path() / "new").string();
  ASSERT_EQ(Larkmoor({"create", path, "--fiscal-year", "2025-07-01"}).exitCode, 0);
  const ProgramResult list =
      Larkmoor({"list", path, "GeneralData", "--fields",
                "CalendarYear,PeriodStartDate(1),PeriodEndDate(12)", "--format", "csv"});
  EXPECT_EQ(list.out,
            "CalendarYear,PeriodStartDate(1),PeriodEndDate(12)\n2025,2025-07-01,2026-06-30\n")
      << list.err;
  const ProgramResult wrong = Larkmoor({"create", path + "2", "--fiscal-year", "July"});
  EXPECT_EQ(wrong.exitCode, 2);
  EXPECT_TRUE(Contains(wrong.err, "\"July\" is no date")) << wrong.err;
}

TEST(CreateCommand, RefusesAFolderThatHoldsACompany) {
  const CommandCompany company;
  ASSERT_EQ(company.Run("insert", {"Address", "Name=Kept"}).exitCode, 0);
  const ProgramResult result = company.Run("create");
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_TRUE(result.err.starts_with("larkmoor: ")) << result.err;
  EXPECT_EQ(company.Output("list", {"Address", "--fields", "Name", "--format", "csv"}),
            "Name\nKept\n");
}

TEST(CreateCommand, RefusesAReleaseOutOfRange) {
  const TempFolder folder;
  const std::string path = (folder.Path() / "new").string();
  for (const std::string release : {"7.9", "19.1", "nan", "-1"}) {
    const ProgramResult result = Larkmoor({"create", path, "--release=" + release});
    EXPECT_EQ(result.exitCode, 1) << release;
    EXPECT_TRUE(result.err.starts_with("larkmoor: ")) << result.err;
  }
  EXPECT_FALSE(std::filesystem::exists(path));
}

TEST(CreateCommand, TakesNothingButANumberForTheRelease) {
  EXPECT_EQ(Larkmoor({"create", "nowhere", "--release", "new"}).exitCode, 2);
}

}  // namespace
}  // namespace larkmoor::test
