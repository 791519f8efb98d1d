// stat, verify, owner and compact: record files as a whole.
#include <filesystem>
#include <string>

#include <gtest/gtest.h>

#include "cli/larkmoor_command.h"
#include "engine/records/employee_aux3.h"

namespace larkmoor::test {
namespace {

namespace fs = std::filesystem;

fs::path FileOf(const CommandCompany& company, const std::string& name) {
  return fs::path(company.Folder()) / name;
}

TEST(StatCommand, TellsWhatAFileSaysOfItself) {
  const CommandCompany company;
  ASSERT_EQ(company.Run("insert", {"EmployeeAux3", "RowNumber=1"}).exitCode, 0);
  const std::string size = std::to_string(fs::file_size(FileOf(company, "EmployeeAux3.dat")));
  const std::string length = std::to_string(EmployeeAux3Record::Describe().LengthFor(19.0));
  EXPECT_EQ(company.Output("stat", {"EMPLOYEEAUX3.DAT"}),
            "EmployeeAux3.dat\n"
            "  release        19\n"
            "  record length  " +
                length +
                " bytes\n"
                "  records        1\n"
                "  size           " +
                size +
                " bytes\n"
                "  owner          none\n"
                "  key 0\n"
                "    GUID at 0, 16 bytes\n"
                "    Long at 16, 4 bytes\n");
}

TEST(StatCommand, TellsTheFlagsOfKeys) {
  const CommandCompany company;
  EXPECT_TRUE(Contains(company.Output("stat", {"Address.dat"}),
                       "  key 0, unique, auto-increment\n    Long at 0, 4 bytes\n"));
}

TEST(StatCommand, TellsOfAllFilesInAlphabeticalOrder) {
  const CommandCompany company;
  const std::string stat = company.Output("stat");
  EXPECT_LT(stat.find("Address.dat\n"), stat.find("\nCompany.dat\n"));
  EXPECT_LT(stat.find("\nCompany.dat\n"), stat.find("\nGeneral.dat\n"));
}

TEST(StatCommand, GoesOnBehindAForeignFile) {
  const CommandCompany company;
  WriteFile(FileOf(company, "Alien.dat"), "not a record file");
  const ProgramResult result = company.Run("stat");
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_TRUE(Contains(result.err, "larkmoor: Alien.dat: Btrieve error 30")) << result.err;
  EXPECT_TRUE(Contains(result.out, "Company.dat\n"));
}

TEST(FileCommands, FileThatIsNotThereFails) {
  const CommandCompany company;
  for (const std::string command : {"stat", "verify", "compact"}) {
    const ProgramResult result = company.Run(command, {"Nothing.dat"});
    EXPECT_EQ(result.exitCode, 1) << command;
    EXPECT_EQ(result.err, "larkmoor: Nothing.dat: Btrieve error 12: File not found\n") << command;
  }
}

TEST(FileCommands, FolderThatIsNotThereFails) {
  for (const std::string command : {"stat", "verify", "compact"}) {
    const ProgramResult result = Larkmoor({command, "no/such/folder"});
    EXPECT_EQ(result.exitCode, 1) << command;
    EXPECT_EQ(result.err, "larkmoor: no/such/folder: No such file or directory\n") << command;
  }
}

TEST(FileCommands, FolderWithoutRecordFilesFails) {
  const TempFolder folder;
  const ProgramResult result = Larkmoor({"stat", folder.Path().string()});
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_EQ(result.err, "larkmoor: " + folder.Path().string() + " holds no record files\n");
}

TEST(VerifyCommand, FindsNothingInASoundCompany) {
  const CommandCompany company;
  ASSERT_EQ(company.Run("insert", {"Address", "Name=Berg"}).exitCode, 0);
  EXPECT_TRUE(company.Output("verify").ends_with(" files verified\n"));
  EXPECT_EQ(company.Output("verify", {"Address.dat"}), "1 file verified\n");
}

TEST(VerifyCommand, TellsWhatItFindsAndFails) {
  const CommandCompany company;
  ASSERT_EQ(company.Run("insert", {"Address", "AddressRecordNumber=287454020"}).exitCode, 0);
  // Another number in the record than in its key entry, which has the bytes in another order.
  std::string bytes = ReadFile(FileOf(company, "Address.dat"));
  const std::string number = "\x44\x33\x22\x11";
  ASSERT_TRUE(Contains(bytes, number));
  for (std::size_t at = 0; (at = bytes.find(number, at)) != std::string::npos;) bytes[at] = '\x45';
  WriteFile(FileOf(company, "Address.dat"), bytes);

  const ProgramResult result = company.Run("verify");
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_TRUE(result.out.starts_with("Address.dat: ")) << result.out;
  EXPECT_TRUE(Contains(result.out, " files verified\n"));
  EXPECT_TRUE(Contains(result.err, "finding")) << result.err;
}

TEST(VerifyCommand, FailsOnAFileThatIsCutShort) {
  const CommandCompany company;
  fs::resize_file(FileOf(company, "Address.dat"), 100);
  const ProgramResult result = company.Run("verify", {"Address.dat"});
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_TRUE(result.err.starts_with("larkmoor: ")) << result.err;
}

TEST(OwnerCommand, ProtectsAFileFromReadingAndFreesIt) {
  const CommandCompany company;
  EXPECT_EQ(company.Output("owner", {"address.dat", "--set", "kept"}),
            "Address.dat: owner name set\n");
  EXPECT_TRUE(Contains(company.Output("stat", {"Address.dat"}), "  owner          set\n"));
  const ProgramResult list = company.Run("list", {"Address"});
  EXPECT_EQ(list.exitCode, 1);
  EXPECT_TRUE(Contains(list.err, "larkmoor: Address: Btrieve error 51")) << list.err;
  EXPECT_EQ(company.Output("owner", {"Address.dat", "--clear", "kept"}),
            "Address.dat: owner name cleared\n");
  EXPECT_EQ(company.Run("list", {"Address"}).exitCode, 0);
}

TEST(OwnerCommand, MayAllowReading) {
  const CommandCompany company;
  ASSERT_EQ(company.Run("insert", {"Address", "Name=Berg"}).exitCode, 0);
  ASSERT_EQ(company.Run("owner", {"Address.dat", "--set", "kept", "--allow-read"}).exitCode, 0);
  EXPECT_TRUE(
      Contains(company.Output("stat", {"Address.dat"}), "  owner          set, reading allowed\n"));
  EXPECT_EQ(company.Output("list", {"Address", "--fields", "Name", "--format", "csv"}),
            "Name\nBerg\n");
  const ProgramResult insert = company.Run("insert", {"Address"});
  EXPECT_EQ(insert.exitCode, 1);
  EXPECT_TRUE(Contains(insert.err, "larkmoor: Address: Btrieve error 46")) << insert.err;
}

TEST(OwnerCommand, FreesOnlyUnderTheRightName) {
  const CommandCompany company;
  ASSERT_EQ(company.Run("owner", {"Address.dat", "--set", "kept"}).exitCode, 0);
  const ProgramResult result = company.Run("owner", {"Address.dat", "--clear", "guessed"});
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_TRUE(Contains(result.err, "larkmoor: Address.dat: Btrieve error 51")) << result.err;
  EXPECT_EQ(company.Run("list", {"Address"}).exitCode, 1);
}

TEST(OwnerCommand, NeedsOneOfSetAndClear) {
  const CommandCompany company;
  EXPECT_EQ(company.Run("owner", {"Address.dat"}).exitCode, 2);
  EXPECT_EQ(company.Run("owner", {"Address.dat", "--set", "a", "--clear", "a"}).exitCode, 2);
  EXPECT_EQ(company.Run("owner", {"Address.dat", "--allow-read", "--clear", "a"}).exitCode, 2);
  EXPECT_EQ(company.Run("owner", {"Address.dat", "--set", ""}).exitCode, 2);
  EXPECT_EQ(company.Run("list", {"Address"}).exitCode, 0);
}

TEST(CompactCommand, GivesBackTheRoomOfDeletedRecords) {
  const CommandCompany company;
  std::string csv = "Name,City\n";
  for (int i = 0; i < 2000; ++i) csv += "Berg,Oslo\n";
  csv += "Dahl,Moss\n";
  ASSERT_EQ(company.Run("import", {"Address", company.Write("in.csv", csv)}).exitCode, 0);
  ASSERT_EQ(company.Run("delete", {"Address", "--where", "City=Oslo", "--all"}).out,
            "2000 records deleted\n");
  const auto before = fs::file_size(FileOf(company, "Address.dat"));
  const std::string out = company.Output("compact", {"Address.dat"});
  const auto after = fs::file_size(FileOf(company, "Address.dat"));
  EXPECT_LT(after, before);
  EXPECT_EQ(out, "Address.dat: " + std::to_string(after) + " bytes, was " + std::to_string(before) +
                     "\n");
  EXPECT_EQ(company.Output("list", {"Address", "--fields", "Name", "--format", "csv"}),
            "Name\nDahl\n");
  EXPECT_EQ(company.Output("verify", {"Address.dat"}), "1 file verified\n");
}

TEST(CompactCommand, GoesThroughAllFiles) {
  const CommandCompany company;
  EXPECT_TRUE(Contains(company.Output("compact"), "General.dat: "));
  EXPECT_EQ(company.Run("verify").exitCode, 0);
}

TEST(CompactCommand, LeavesAFileAloneThatSomeoneHasOpen) {
  const CommandCompany company;
  TovrinFile open;
  ASSERT_EQ(open.btOpen(FileOf(company, "Address.dat").string(), TovrinFile::NormalMode), 0);
  const ProgramResult result = company.Run("compact", {"Address.dat"});
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_TRUE(Contains(result.err, "larkmoor: Address.dat: Btrieve error 85")) << result.err;
}

}  // namespace
}  // namespace larkmoor::test
