#include <string>

#include <gtest/gtest.h>

#include "cli/larkmoor_command.h"

namespace larkmoor::test {
namespace {

const char* const Awkward =
    "AddressRecordNumber,Name,City,Zipcode,GUID\n"
    "5,\"Berg, \"\"B\"\"\",\"two\nlines\",  00501 ,\n"
    "3,É–€,,-1,00112233-4455-6677-8899-AABBCCDDEEFF\n"
    "4,,,,plain text\n";

TEST(ExportCommand, GivesBackWhatWasImported) {
  const CommandCompany company;
  const std::string file = company.Write("in.csv", Awkward);
  ASSERT_EQ(company.Output("import", {"Address", file}), "3 records imported\n");
  EXPECT_EQ(company.Output("export",
                           {"Address", "--fields", "AddressRecordNumber,Name,City,Zipcode,GUID"}),
            Awkward);
}

TEST(ExportCommand, OfAllColumnsIsImportedUnchanged) {
  const CommandCompany first;
  ASSERT_EQ(first.Run("import", {"Address", first.Write("in.csv", Awkward)}).exitCode, 0);
  const std::string exported = first.Output("export", {"Address"});
  const CommandCompany second;
  EXPECT_EQ(second.Output("import", {"Address", second.Write("in.csv", exported)}),
            "3 records imported\n");
  EXPECT_EQ(second.Output("export", {"Address"}), exported);
}

TEST(ExportCommand, OfARecordDescriptionIsImportedUnchanged) {
  const CommandCompany company;
  ASSERT_EQ(
      company
          .Run("set", {"DefaultW2Data", "--where", "RowType=5", "FUTA_ER=2024", "Box12Code(40)=D",
                       "FederalFields(3)=255", "CustomFieldEnabled(1)=true", "W2Text=a;b"})
          .exitCode,
      0);
  const std::string exported = company.Output("export", {"DefaultW2Data"});
  EXPECT_TRUE(Contains(exported, ",Box12Code(40),"));
  ASSERT_EQ(company.Run("delete", {"DefaultW2Data", "--where", "RowType=5"}).exitCode, 0);
  EXPECT_EQ(company.Output("import", {"DefaultW2Data", company.Write("in.csv", exported)}),
            "1 record imported\n");
  EXPECT_EQ(company.Output("export", {"DefaultW2Data"}), exported);
}

TEST(ExportCommand, WalksAlongAKey) {
  const CommandCompany company;
  ASSERT_EQ(company.Run("import", {"Address", company.Write("in.csv", Awkward)}).exitCode, 0);
  EXPECT_EQ(company.Output("export", {"Address", "--key", "0", "--fields", "AddressRecordNumber"}),
            "AddressRecordNumber\n3\n4\n5\n");
}

TEST(ExportCommand, ARowOfOneEmptyFieldIsNoEmptyLine) {
  const CommandCompany company;
  ASSERT_EQ(company.Run("insert", {"Address"}).exitCode, 0);
  const std::string exported = company.Output("export", {"Address", "--fields", "Name"});
  EXPECT_EQ(exported, "Name\n\"\"\n");
  EXPECT_EQ(company.Output("import", {"Address", company.Write("in.csv", exported)}),
            "1 record imported\n");
}

TEST(ExportCommand, WritesToAFile) {
  const CommandCompany company;
  ASSERT_EQ(company.Run("insert", {"Address", "Name=Berg"}).exitCode, 0);
  const std::string file = company.Write("out.csv", "something longer that stood there before");
  EXPECT_EQ(company.Output("export", {"Address", "--fields", "Name", "-o", file}), "");
  EXPECT_EQ(ReadFile(file), "Name\nBerg\n");
}

TEST(ExportCommand, AFileThatCannotBeWrittenFails) {
  const CommandCompany company;
  const std::string file = company.Beside("no/such/folder.csv");
  const ProgramResult result = company.Run("export", {"Address", "-o", file});
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_EQ(result.err, "larkmoor: " + file + ": No such file or directory\n");
  if (!std::filesystem::exists("/dev/full")) return;
  const ProgramResult full = company.Run("export", {"Address", "-o", "/dev/full"});
  EXPECT_EQ(full.exitCode, 1);
  EXPECT_EQ(full.err, "larkmoor: /dev/full: No space left on device\n");
}

}  // namespace
}  // namespace larkmoor::test
