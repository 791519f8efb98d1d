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
  EXPECT_EQ(company.Output("list", {"DefaultW2Data", "--fields", "RowType", "--format", "csv"}),
            "RowType\n5\n");
  const std::string all =
      company.Output("list", {"GeneralRow", "--fields", "RowType", "--format", "csv"});
  EXPECT_TRUE(Contains(all, "\n1\n")) << all;
  EXPECT_TRUE(Contains(all, "\n4\n")) << all;
}

TEST(RecordDescriptionRows, BearTheMarkOfTheirKindFromTheInsertOn) {
  const CommandCompany company;
  ASSERT_EQ(company.Output("delete", {"DefaultW2Data", "--where", "RowType=5"}),
            "1 record deleted\n");
  EXPECT_EQ(company.Output("insert", {"DefaultW2Data", "FUTA_ER=2024"}), "1 record inserted\n");
  EXPECT_EQ(
      company.Output("get", {"DefaultW2Data", "--where", "FUTA_ER=2024", "--fields", "RowType"}),
      "RowType: 5\n");
}

TEST(RecordDescriptionRows, KeepTheMarkOfTheirKind) {
  const CommandCompany company;
  const ProgramResult result =
      company.Run("set", {"DefaultW2Data", "--where", "RowType=5", "RowType=9"});
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_EQ(result.err, "larkmoor: a row of DefaultW2Data bears the mark of its kind, 5\n");
  EXPECT_EQ(company.Output("list", {"DefaultW2Data", "--fields", "RowType", "--format", "csv"}),
            "RowType\n5\n");
}

TEST(RecordDescriptionRows, RepeatingFieldsHaveAColumnForEachElement) {
  const CommandCompany company;
  EXPECT_EQ(company.Output("set", {"DefaultW2Data", "--where", "RowType=5", "Box12Code(1)=D",
                                   "PRHrPayTypesOrder(20)=-5"}),
            "1 record changed\n");
  EXPECT_EQ(company.Output("get", {"DefaultW2Data", "--where", "RowType=5", "--fields",
                                   "Box12Code(0),Box12Code(1),PRHrPayTypesOrder(20)"}),
            "Box12Code(0): \nBox12Code(1): D\nPRHrPayTypesOrder(20): -5\n");
  const std::string all = company.Output(
      "get", {"DefaultW2Data", "--where", "RowType=5", "--fields", "PRHrPayTypesOrder"});
  EXPECT_TRUE(all.starts_with("PRHrPayTypesOrder(0): 0\nPRHrPayTypesOrder(1): 0\n")) << all;
  EXPECT_TRUE(all.ends_with("PRHrPayTypesOrder(20): -5\n")) << all;
}

TEST(RecordDescriptionRows, DatesAreInIsoFormAndEmptyWhereThereIsNone) {
  const CommandCompany company;
  ASSERT_EQ(company.Run("insert", {"MemorizedHdr", "NRecord=1"}).exitCode, 0);
  const auto dueDate = [&] {
    return company.Output("get", {"MemorizedHdr", "--where", "NRecord=1", "--fields", "DateDue"});
  };
  const auto setDueDate = [&](const std::string& date) {
    return company.Run("set", {"MemorizedHdr", "--where", "NRecord=1", "DateDue=" + date});
  };
  EXPECT_EQ(dueDate(), "DateDue: \n");
  EXPECT_EQ(setDueDate("1999-12-31").exitCode, 0);
  EXPECT_EQ(dueDate(), "DateDue: 1999-12-31\n");
  EXPECT_EQ(setDueDate("2024-02-29 13:45:10").exitCode, 0);
  EXPECT_EQ(dueDate(), "DateDue: 2024-02-29 13:45:10\n");
  EXPECT_EQ(setDueDate("").exitCode, 0);
  EXPECT_EQ(dueDate(), "DateDue: \n");
  const ProgramResult wrong = setDueDate("2023-02-29");
  EXPECT_EQ(wrong.exitCode, 2);
  EXPECT_TRUE(Contains(wrong.err, "DateDue: \"2023-02-29\" is no date")) << wrong.err;
}

TEST(RecordDescriptionRows, TruthValuesAreTakenInEveryForm) {
  const CommandCompany company;
  const auto stored = [&](const std::string& value) {
    const ProgramResult set =
        company.Run("set", {"DefaultW2Data", "--where", "RowType=5", "MultiCash=" + value});
    if (set.exitCode != 0) return set.err;
    return company.Output("get",
                          {"DefaultW2Data", "--where", "RowType=5", "--fields", "MultiCash"});
  };
  for (const std::string yes : {"true", "YES", "-1", "1"}) {
    EXPECT_EQ(stored(yes), "MultiCash: true\n") << yes;
  }
  for (const std::string no : {"False", "no", "0", ""}) {
    EXPECT_EQ(stored(no), "MultiCash: false\n") << no;
  }
  EXPECT_TRUE(Contains(stored("maybe"), "\"maybe\" is no truth value"));
}

TEST(RecordDescriptionRows, IndexOutOfTheFieldIsWrongUsage) {
  const CommandCompany company;
  for (const std::string index : {"81", "-1"}) {
    const ProgramResult result =
        company.Run("list", {"DefaultW2Data", "--fields", "FederalFields(" + index + ")"});
    EXPECT_EQ(result.exitCode, 2);
    EXPECT_TRUE(Contains(
        result.err, "DefaultW2Data.FederalFields has no element " + index + ": only 0 to 80\n"))
        << result.err;
  }
  EXPECT_EQ(company.Run("insert", {"DefaultW2Data", "FederalFields=1"}).exitCode, 2);
}

TEST(RowsOfAClass, OfASharedFileAreThoseOfTheirKind) {
  const CommandCompany company;
  EXPECT_EQ(
      company.Output("list", {"GeneralData", "--fields", "NumberOfPeriods", "--format", "csv"}),
      "NumberOfPeriods\n12\n");
  EXPECT_EQ(company.Output(
                "set", {"DefaultVendorData", "--where", "LastPONumber=1000", "LastPONumber=77"}),
            "1 record changed\n");
  EXPECT_EQ(company.Output("get", {"DefaultVendorData", "--where", "LastPONumber=77", "--fields",
                                   "LastPONumber"}),
            "LastPONumber: 77\n");
}

}  // namespace
}  // namespace larkmoor::test
