#include <algorithm>
#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "cli/larkmoor_command.h"

namespace larkmoor::test {
namespace {

std::vector<std::string> Lines(const std::string& text) {
  std::vector<std::string> lines;
  std::istringstream in(text);
  for (std::string line; std::getline(in, line);) lines.push_back(line);
  return lines;
}

bool HasLine(const std::string& text, const std::string& line) {
  const std::vector<std::string> lines = Lines(text);
  return std::ranges::find(lines, line) != lines.end();
}

TEST(ClassesCommand, NamesEveryClassWithItsDocumentation) {
  const ProgramResult result = Larkmoor({"classes"});
  EXPECT_EQ(result.exitCode, 0);
  EXPECT_TRUE(Contains(result.out, "The postal addresses of all customers and vendors.\n"));
  EXPECT_TRUE(Contains(result.out, "\nBtrieve "));
}

TEST(ClassesCommand, TellsAClassWithItsMembers) {
  const ProgramResult result = Larkmoor({"classes", "address"});
  EXPECT_EQ(result.exitCode, 0);
  EXPECT_TRUE(HasLine(result.out, "Address (tables)"));
  EXPECT_TRUE(HasLine(result.out, "  GetEqual(Long AddressRecordNumber) -> Integer"));
  EXPECT_TRUE(HasLine(result.out, "  City -> String, rw"));
  EXPECT_TRUE(HasLine(result.out, "      Town."));
}

TEST(ClassesCommand, TsvHasALineForEachMember) {
  const std::string tsv = Larkmoor({"classes", "--tsv"}).out;
  EXPECT_TRUE(HasLine(tsv, "Address\top\tCloseFile\tInteger\t\t-"));
  EXPECT_TRUE(HasLine(tsv, "Address\top\tGetEqual\tInteger\tLong AddressRecordNumber\t-"));
  EXPECT_TRUE(HasLine(tsv, "Address\tprop\tCity\tString\t\trw"));
  EXPECT_TRUE(HasLine(tsv, "Btrieve\tprop\tErrorMessage\tVariant\tInteger ErrorNumber\tr"));
  EXPECT_TRUE(HasLine(tsv,
                      "Btrieve\top\tbtGetVersion\tInteger\tbyref String ClientVersion;byref String "
                      "RequestorVersion;byref String ServerVersion\t-"));
}

TEST(ClassesCommand, TsvKeepsTheOrderOfTheInterface) {
  const std::string tsv = Larkmoor({"classes", "Address", "--tsv"}).out;
  const std::size_t openFile = tsv.find("\tOpenFile\t");
  const std::size_t remove = tsv.find("\tDelete\t");
  const std::size_t first = tsv.find("\tAddressLine1\t");
  const std::size_t last = tsv.find("\tZipcode\t");
  EXPECT_LT(tsv.find("\tCloseFile\t"), openFile);
  EXPECT_LT(openFile, remove);
  EXPECT_LT(remove, first);
  EXPECT_LT(first, last);
  EXPECT_NE(last, std::string::npos);
}

TEST(ClassesCommand, TsvOfOneClassHasNoOther) {
  for (const std::string& line : Lines(Larkmoor({"classes", "ADDRESS", "--tsv"}).out)) {
    EXPECT_TRUE(line.starts_with("Address\t")) << line;
  }
}

TEST(ClassesCommand, UnknownClassIsWrongUsage) {
  const ProgramResult result = Larkmoor({"classes", "Nothing"});
  EXPECT_EQ(result.exitCode, 2);
  EXPECT_TRUE(Contains(result.err, "larkmoor: there is no class \"Nothing\"\n")) << result.err;
}

}  // namespace
}  // namespace larkmoor::test
