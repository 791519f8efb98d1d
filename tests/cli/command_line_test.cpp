// What all commands have in common: help, exit codes, and errors on standard error.
#include <iostream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "cli/larkmoor_command.h"
#include "support/child_process.h"

namespace larkmoor::test {
namespace {

const std::vector<std::string> Commands = {"create", "classes", "list",    "get",    "set",
                                           "insert", "delete",  "import",  "export", "stat",
                                           "verify", "owner",   "compact", "save",   "load"};

TEST(CommandLine, HelpNamesEveryCommandAndTheExitCodes) {
  const ProgramResult result = Larkmoor({"--help"});
  EXPECT_EQ(result.exitCode, 0);
  EXPECT_EQ(result.err, "");
  for (const std::string& command : Commands) {
    EXPECT_TRUE(Contains(result.out, "\n  " + command + " ")) << command;
  }
  EXPECT_TRUE(Contains(result.out, "Exit codes: 0 success; 1 the command failed; 2"));
}

TEST(CommandLine, EveryCommandHasHelpOfItsOwn) {
  for (const std::string& command : Commands) {
    const ProgramResult result = Larkmoor({command, "--help"});
    EXPECT_EQ(result.exitCode, 0) << command;
    EXPECT_TRUE(Contains(result.out, "larkmoor " + command)) << result.out;
  }
}

TEST(CommandLine, NoCommandIsWrongUsage) {
  const ProgramResult result = Larkmoor({});
  EXPECT_EQ(result.exitCode, 2);
  EXPECT_EQ(result.out, "");
  EXPECT_TRUE(result.err.starts_with("larkmoor: ")) << result.err;
}

TEST(CommandLine, UnknownCommandIsWrongUsage) { EXPECT_EQ(Larkmoor({"frobnicate"}).exitCode, 2); }

TEST(CommandLine, UnknownOptionIsWrongUsage) {
  const ProgramResult result = Larkmoor({"stat", "nowhere", "--colour"});
  EXPECT_EQ(result.exitCode, 2);
  EXPECT_TRUE(Contains(result.err, "--colour")) << result.err;
}

TEST(CommandLine, MissingArgumentIsWrongUsage) {
  const ProgramResult result = Larkmoor({"list", "nowhere"});
  EXPECT_EQ(result.exitCode, 2);
  EXPECT_TRUE(Contains(result.err, "CLASS")) << result.err;
}

TEST(CommandLine, UnknownClassIsWrongUsage) {
  const CommandCompany company;
  for (const std::string command : {"list", "export", "insert"}) {
    const ProgramResult result = company.Run(command, {"Adress"});
    EXPECT_EQ(result.exitCode, 2) << command;
    EXPECT_TRUE(
        Contains(result.err, "larkmoor: there is no class and no record description \"Adress\"\n"))
        << result.err;
  }
}

TEST(CommandLine, ClassWithoutARecordFileIsWrongUsage) {
  const CommandCompany company;
  const ProgramResult result = company.Run("list", {"Btrieve"});
  EXPECT_EQ(result.exitCode, 2);
  EXPECT_TRUE(Contains(result.err, "Btrieve is a class without a record file")) << result.err;
}

TEST(CommandLine, FolderWithoutACompanyFailsWithTheStatusOfTheConnection) {
  const TempFolder folder;
  const std::string path = folder.Path().string();
  const ProgramResult result = Larkmoor({"list", path, "Address"});
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_EQ(result.err, "larkmoor: " + path + ": Btrieve error 11: Invalid File Name\n");
  EXPECT_EQ(result.out, "");
}

TEST(CommandLine, EmptyFolderFailsWithTheStatusOfTheConnection) {
  const ProgramResult result = Larkmoor({"list", "", "Address"});
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_EQ(result.err, "larkmoor: no folder: Btrieve error 11: Invalid File Name\n");
}

TEST(CommandLine, MissingRecordFileFailsWithItsStatus) {
  const CommandCompany company;
  std::filesystem::remove(std::filesystem::path(company.Folder()) / "Address.dat");
  const ProgramResult result = company.Run("list", {"Address"});
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_EQ(result.err, "larkmoor: Address: Btrieve error 12: File not found\n");
}

TEST(CommandLine, ForeignRecordFileFailsWithItsStatus) {
  const CommandCompany company;
  WriteFile(std::filesystem::path(company.Folder()) / "Address.dat", "this is no record file");
  const ProgramResult result = company.Run("list", {"Address"});
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_TRUE(Contains(result.err, "larkmoor: Address: Btrieve error 30")) << result.err;
}

TEST(CommandLine, CompanyOnAReadOnlyMediumCanBeRead) {
  if (!CanMount()) {
    std::cout << "skipped: no right to mount\n";
    return;
  }
  const CommandCompany company;
  ASSERT_EQ(company.Run("insert", {"Address", "Name=Berg"}).exitCode, 0);
  RunInChild([&] {
    MountReadOnly(company.Folder());
    for (const std::string command : {"list", "export", "get"}) {
      std::vector<std::string> arguments = {"Address", "--fields", "Name", "--where", "Name=Berg"};
      EXPECT_TRUE(Contains(company.Output(command, arguments), "Berg")) << command;
    }
    EXPECT_EQ(company.Output("verify", {"Address.dat"}), "1 file verified\n");
    const ProgramResult insert = company.Run("insert", {"Address", "Name=Dahl"});
    EXPECT_EQ(insert.exitCode, 1);
    EXPECT_EQ(insert.err, "larkmoor: Address: Btrieve error 94: Permission Error\n");
  });
}

TEST(CommandLine, FolderMayBearTheNameOfACommand) {
  const TempFolder folder;
  const ProgramResult result =
      RunProgram({"/bin/sh", "-c",
                  "cd '" + folder.Path().string() + "' && '" + LARKMOOR_CLI + "' create list && '" +
                      LARKMOOR_CLI + "' list list Address --fields Name"});
  EXPECT_EQ(result.exitCode, 0) << result.err;
}

TEST(CommandLine, OutputThatCannotBeWrittenFails) {
  if (!std::filesystem::exists("/dev/full")) return;
  const CommandCompany company;
  const ProgramResult result =
      RunProgram({"/bin/sh", "-c", std::string(LARKMOOR_CLI) + " classes --tsv >/dev/full"});
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_EQ(result.err, "larkmoor: the output could not be written\n");
}

}  // namespace
}  // namespace larkmoor::test
