// save and load.
#include <string>

#include <gtest/gtest.h>

#include "cli/larkmoor_command.h"
#include "engine/records/address.h"

namespace larkmoor::test {
namespace {

std::size_t AddressLength() { return AddressRecord::Describe().LengthFor(19.0); }

/// The length of a record and a comma, as each record begins.
std::string Length() { return std::to_string(AddressLength()) + ","; }

std::string Numbers(const CommandCompany& company) {
  return company.Output("list",
                        {"Address", "--fields", "AddressRecordNumber,Name", "--format", "csv"});
}

CommandCompany& WithTwoAddresses(CommandCompany& company) {
  EXPECT_EQ(company.Run("insert", {"Address", "AddressRecordNumber=9", "Name=Åse"}).exitCode, 0);
  EXPECT_EQ(company.Run("insert", {"Address", "AddressRecordNumber=4", "Name=a\nb"}).exitCode, 0);
  return company;
}

TEST(SaveCommand, WritesLengthCommaBytesAndLineEndOfEachRecord) {
  CommandCompany company;
  WithTwoAddresses(company);
  const std::string file = company.Beside("address.seq");
  EXPECT_EQ(company.Output("save", {"address.dat", file}), "2 records saved\n");
  const std::string saved = ReadFile(file);
  const std::size_t record = Length().size() + AddressLength() + 2;
  EXPECT_EQ(saved.size(), 2 * record);
  EXPECT_EQ(saved.substr(0, record).find(Length() + std::string("\x09\0\0\0", 4)), 0U);
  EXPECT_EQ(saved.substr(record).find(Length() + std::string("\x04\0\0\0", 4)), 0U);
  EXPECT_EQ(saved.substr(record - 2, 2), "\r\n");
  EXPECT_TRUE(saved.ends_with("\r\n"));
}

TEST(SaveCommand, WritesInTheOrderOfAKey) {
  CommandCompany company;
  WithTwoAddresses(company);
  const std::string file = company.Beside("address.seq");
  EXPECT_EQ(company.Output("save", {"Address.dat", file, "--key", "0"}), "2 records saved\n");
  EXPECT_EQ(ReadFile(file)[4], '\x04');
}

TEST(SaveCommand, FailsWithTheStatusOfTheFile) {
  const CommandCompany company;
  const std::string file = company.Beside("address.seq");
  const ProgramResult key = company.Run("save", {"Address.dat", file, "--key", "7"});
  EXPECT_EQ(key.exitCode, 1);
  EXPECT_TRUE(Contains(key.err, "Btrieve error 6: Invalid Key Number\n")) << key.err;
  const ProgramResult missing = company.Run("save", {"Nothing.dat", file});
  EXPECT_EQ(missing.exitCode, 1);
  EXPECT_TRUE(Contains(missing.err, "Btrieve error 12: File not found\n")) << missing.err;
  const ProgramResult folder = company.Run("save", {"Address.dat", company.Beside("no/a.seq")});
  EXPECT_EQ(folder.exitCode, 1);
  EXPECT_TRUE(Contains(folder.err, "No such file or directory\n")) << folder.err;
}

TEST(LoadCommand, AddsTheRecordsThatSaveWrote) {
  CommandCompany first;
  WithTwoAddresses(first);
  const std::string file = first.Beside("address.seq");
  ASSERT_EQ(first.Run("save", {"Address.dat", file}).exitCode, 0);
  const CommandCompany second;
  EXPECT_EQ(second.Output("load", {"Address.dat", file}), "2 records loaded\n");
  EXPECT_EQ(Numbers(second), Numbers(first));
}

TEST(LoadCommand, AddsNothingWhereARecordIsMalformed) {
  CommandCompany company;
  WithTwoAddresses(company);
  const std::string record = Length() + std::string(AddressLength(), '\0') + "\r\n";
  const std::string file = company.Write("bad.seq", record + "12,twelve bytes\r\n");
  const ProgramResult result = company.Run("load", {"Address.dat", file});
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_EQ(result.out, "");
  EXPECT_EQ(result.err, "larkmoor: " + file + ": record 2 has 12 bytes, the file's records have " +
                            std::to_string(AddressLength()) + "\n");
  EXPECT_EQ(Numbers(company), "AddressRecordNumber,Name\n9,Åse\n4,\"a\nb\"\n");
}

TEST(LoadCommand, AddsNothingWhereTheFileRefusesARecord) {
  CommandCompany company;
  WithTwoAddresses(company);
  const std::string file = company.Beside("address.seq");
  ASSERT_EQ(company.Run("save", {"Address.dat", file}).exitCode, 0);
  ASSERT_EQ(company.Run("delete", {"Address", "--where", "AddressRecordNumber=9"}).exitCode, 0);
  const ProgramResult result = company.Run("load", {"Address.dat", file});
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_EQ(result.err,
            "larkmoor: " + file + ": record 2 was refused: Btrieve error 5: Duplicate Key Value\n");
  EXPECT_EQ(Numbers(company), "AddressRecordNumber,Name\n4,\"a\nb\"\n");
}

TEST(LoadCommand, AFileThatCannotBeReadFails) {
  const CommandCompany company;
  const ProgramResult result = company.Run("load", {"Address.dat", company.Beside("no.seq")});
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_TRUE(Contains(result.err, "no.seq: No such file or directory\n")) << result.err;
}

}  // namespace
}  // namespace larkmoor::test
