#include <string>

#include <gtest/gtest.h>

#include "cli/larkmoor_command.h"

namespace larkmoor::test {
namespace {

constexpr std::string_view EraseLine = "\r\x1b[K";

std::string ThreeAddresses(const CommandCompany& company) {
  return company.Write("in.csv", "Name\nBerg\nDahl\nLund\n");
}

TEST(Progress, IsOneLineOnATerminalThatIsGoneAtTheEnd) {
  const CommandCompany company;
  const ProgramResult result = RunProgramOnTerminal(
      {LARKMOOR_CLI, "import", company.Folder(), "Address", ThreeAddresses(company)});
  EXPECT_EQ(result.exitCode, 0);
  EXPECT_EQ(result.out, "3 records imported\n");
  EXPECT_TRUE(result.err.starts_with(std::string(EraseLine) + "importing ")) << result.err;
  EXPECT_TRUE(Contains(result.err, " %"));
  EXPECT_TRUE(result.err.ends_with(EraseLine)) << result.err;
  EXPECT_FALSE(Contains(result.err, "\n"));
}

TEST(Progress, IsShownByExportVerifyAndLoad) {
  const CommandCompany company;
  ASSERT_EQ(company.Run("import", {"Address", ThreeAddresses(company)}).exitCode, 0);
  const std::string saved = company.Beside("a.seq");
  ASSERT_EQ(company.Run("save", {"Address.dat", saved}).exitCode, 0);
  const auto shown = [&](std::vector<std::string> arguments) {
    arguments.insert(arguments.begin(), LARKMOOR_CLI);
    return RunProgramOnTerminal(arguments).err;
  };
  EXPECT_TRUE(Contains(shown({"export", company.Folder(), "Address"}), "exporting 33 %"));
  EXPECT_TRUE(
      Contains(shown({"verify", company.Folder(), "Address.dat"}), "verifying Address.dat"));
  const CommandCompany other;
  EXPECT_TRUE(Contains(shown({"load", other.Folder(), "Address.dat", saved}), "loading "));
}

TEST(Progress, GivesWayToMessages) {
  const CommandCompany company;
  const std::string file = company.Write("in.csv", "Name\nStanisław\n");
  const ProgramResult result =
      RunProgramOnTerminal({LARKMOOR_CLI, "import", company.Folder(), "Address", file});
  EXPECT_TRUE(Contains(result.err, std::string(EraseLine) + "larkmoor: " + file + ": line 2"))
      << result.err;
}

TEST(Progress, IsQuietWhereStandardErrorIsNoTerminal) {
  const CommandCompany company;
  EXPECT_EQ(company.Output("import", {"Address", ThreeAddresses(company)}), "3 records imported\n");
}

}  // namespace
}  // namespace larkmoor::test
