// Record descriptions in place of classes: rows that no public class stands for.
#include <string>

#include <gtest/gtest.h>

#include "cli/larkmoor_command.h"

namespace larkmoor::test {
namespace {

TEST(RecordDescriptionRows, OfAnAuxiliaryFileCanBeFilledSeenChangedAndDeleted) {
  const CommandCompany company;
  EXPECT_EQ(company.Output("insert", {"employeeaux5", "EmployeeIndex=7", "RowNumber=2",
                                      "UseStandard=yes", "PayRateAmount=12.75"}),
            "1 record inserted\n");
  EXPECT_EQ(company.Output("list", {"EmployeeAux5", "--format", "csv"}),
            "EmployeeIndex,RowNumber,GLAccountIndex,UseStandard,PayRateAmount\n"
            "7,2,0,true,12.75\n");
  EXPECT_EQ(company.Output("set", {"EmployeeAux5", "--where", "UseStandard=-1", "UseStandard=No"}),
            "1 record changed\n");
  EXPECT_EQ(company.Output("get", {"EmployeeAux5", "--where", "EmployeeIndex=7", "--format", "json",
                                   "--fields", "UseStandard,PayRateAmount"}),
            "{\n  \"UseStandard\": false,\n  \"PayRateAmount\": 12.75\n}\n");
  EXPECT_EQ(company.Output("delete", {"EmployeeAux5", "--where", "RowNumber=2"}),
            "1 record deleted\n");
  EXPECT_EQ(company.Output("list", {"EmployeeAux5", "--format", "json"}), "[]\n");
}

TEST(RecordDescriptionRows, OfASharedFileAreThoseOfTheirKind) {
  const CommandCompany company;
  EXPECT_EQ(company.Output("list", {"GeneralData", "--fields", "RowType", "--format", "csv"}),
            "RowType\n4\n");
  const std::string all =
      company.Output("list", {"GeneralRow", "--fields", "RowType", "--format", "csv"});
  EXPECT_TRUE(Contains(all, "\n1\n")) << all;
  EXPECT_TRUE(Contains(all, "\n4\n")) << all;
}

TEST(RecordDescriptionRows, BearTheMarkOfTheirKindFromTheInsertOn) {
  const CommandCompany company;
  ASSERT_EQ(company.Output("delete", {"GeneralData", "--where", "RowType=4"}),
            "1 record deleted\n");
  EXPECT_EQ(company.Output("insert", {"GeneralData", "CalendarYear=2024"}), "1 record inserted\n");
  EXPECT_EQ(
      company.Output("get", {"GeneralData", "--where", "CalendarYear=2024", "--fields", "RowType"}),
      "RowType: 4\n");
}

TEST(RecordDescriptionRows, KeepTheMarkOfTheirKind) {
  const CommandCompany company;
  const ProgramResult result =
      company.Run("set", {"GeneralData", "--where", "RowType=4", "RowType=9"});
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_EQ(result.err, "larkmoor: a row of GeneralData bears the mark of its kind, 4\n");
  EXPECT_EQ(company.Output("list", {"GeneralData", "--fields", "RowType", "--format", "csv"}),
            "RowType\n4\n");
}

TEST(RecordDescriptionRows, RepeatingFieldsHaveAColumnForEachElement) {
  const CommandCompany company;
  EXPECT_EQ(company.Output("set", {"GeneralData", "--where", "RowType=4",
                                   "PeriodStartDate(1)=2024-02-29", "BatchEntryCount(12)=-5"}),
            "1 record changed\n");
  EXPECT_EQ(company.Output("get", {"GeneralData", "--where", "RowType=4", "--fields",
                                   "PeriodStartDate(0),PeriodStartDate(1),BatchEntryCount(12)"}),
            "PeriodStartDate(0): \nPeriodStartDate(1): 2024-02-29\nBatchEntryCount(12): -5\n");
  const std::string all =
      company.Output("get", {"GeneralData", "--where", "RowType=4", "--fields", "BatchEntryCount"});
  EXPECT_TRUE(all.starts_with("BatchEntryCount(0): 0\nBatchEntryCount(1): 0\n")) << all;
  EXPECT_TRUE(all.ends_with("BatchEntryCount(12): -5\n")) << all;
}

TEST(RecordDescriptionRows, DatesAreInIsoFormAndEmptyWhereThereIsNone) {
  const CommandCompany company;
  const auto oldestOrder = [&] {
    return company.Output("get", {"GeneralData", "--where", "RowType=4", "--fields", "OldestPO"});
  };
  const auto setOldestOrder = [&](const std::string& date) {
    return company.Run("set", {"GeneralData", "--where", "RowType=4", "OldestPO=" + date});
  };
  EXPECT_EQ(oldestOrder(), "OldestPO: \n");
  EXPECT_EQ(setOldestOrder("1999-12-31").exitCode, 0);
  EXPECT_EQ(oldestOrder(), "OldestPO: 1999-12-31\n");
  EXPECT_EQ(setOldestOrder("2024-02-29 13:45:10").exitCode, 0);
  EXPECT_EQ(oldestOrder(), "OldestPO: 2024-02-29 13:45:10\n");
  EXPECT_EQ(setOldestOrder("").exitCode, 0);
  EXPECT_EQ(oldestOrder(), "OldestPO: \n");
  const ProgramResult wrong = setOldestOrder("2023-02-29");
  EXPECT_EQ(wrong.exitCode, 2);
  EXPECT_TRUE(Contains(wrong.err, "OldestPO: \"2023-02-29\" is no date")) << wrong.err;
}

TEST(RecordDescriptionRows, TruthValuesAreTakenInEveryForm) {
  const CommandCompany company;
  const auto stored = [&](const std::string& value) {
    const ProgramResult set =
        company.Run("set", {"GeneralData", "--where", "RowType=4", "JrnlsPreserved=" + value});
    if (set.exitCode != 0) return set.err;
    return company.Output("get",
                          {"GeneralData", "--where", "RowType=4", "--fields", "JrnlsPreserved"});
  };
  for (const std::string yes : {"true", "YES", "-1", "1"}) {
    EXPECT_EQ(stored(yes), "JrnlsPreserved: true\n") << yes;
  }
  for (const std::string no : {"False", "no", "0", ""}) {
    EXPECT_EQ(stored(no), "JrnlsPreserved: false\n") << no;
  }
  EXPECT_TRUE(Contains(stored("maybe"), "\"maybe\" is no truth value"));
}

TEST(RecordDescriptionRows, IndexOutOfTheFieldIsWrongUsage) {
  const CommandCompany company;
  for (const std::string index : {"13", "-1"}) {
    const ProgramResult result =
        company.Run("list", {"GeneralData", "--fields", "BatchFlag(" + index + ")"});
    EXPECT_EQ(result.exitCode, 2);
    EXPECT_TRUE(
        Contains(result.err, "GeneralData.BatchFlag has no element " + index + ": only 0 to 12\n"))
        << result.err;
  }
  EXPECT_EQ(company.Run("insert", {"GeneralData", "BatchFlag=1"}).exitCode, 2);
}

}  // namespace
}  // namespace larkmoor::test
