#include <string>

#include <gtest/gtest.h>

#include "automation/automation.h"
#include "cli/larkmoor_command.h"

namespace larkmoor::test {
namespace {

/// A company with three addresses, in another order by customer than by insertion.
class ListCommand : public testing::Test {
 protected:
  ListCommand() {
    Insert({"Name=Müller & Söhne", "City=Hamburg", "CustomerRecordNumber=30"});
    Insert({"Name=Åse Lindqvist", "City=Tromsø", "CustomerRecordNumber=10"});
    Insert({"Name=Jan \"Jens\" Smit, Jr.", "City=Hamburg", "CustomerRecordNumber=20"});
  }

  void Insert(std::vector<std::string> values) {
    values.insert(values.begin(), "Address");
    EXPECT_EQ(company_.Output("insert", values), "1 record inserted\n");
  }

  std::string List(std::vector<std::string> arguments) {
    arguments.insert(arguments.begin(), "Address");
    return company_.Output("list", arguments);
  }

  CommandCompany company_;
};

TEST_F(ListCommand, ShowsAnAlignedTableInTheOrderOfInsertion) {
  EXPECT_EQ(List({"--fields", "AddressRecordNumber,Name,City"}),
            "AddressRecordNumber  Name                  City\n"
            "-------------------  --------------------  -------\n"
            "                  1  Müller & Söhne        Hamburg\n"
            "                  2  Åse Lindqvist         Tromsø\n"
            "                  3  Jan \"Jens\" Smit, Jr.  Hamburg\n");
}

TEST_F(ListCommand, WalksAlongAKey) {
  EXPECT_EQ(List({"--key", "2", "--fields", "CustomerRecordNumber", "--format", "csv"}),
            "CustomerRecordNumber\n10\n20\n30\n");
}

TEST_F(ListCommand, TakesNamesOfClassesAndColumnsInAnyCase) {
  EXPECT_EQ(company_.Output("list", {"ADDRESS", "--fields", "city", "--format", "csv"}),
            "City\nHamburg\nTromsø\nHamburg\n");
}

TEST_F(ListCommand, ShowsAllColumnsOfTheClassWithoutFields) {
  std::string columns;
  for (const automation::Member& member : automation::FindClass("Address")->members) {
    if (!member.isOperation) columns += (columns.empty() ? "" : ",") + std::string(member.name);
  }
  const std::string csv = List({"--format", "csv"});
  EXPECT_EQ(csv.substr(0, csv.find('\n')), columns);
}

TEST_F(ListCommand, WhereKeepsTheRowsThatShowTheValue) {
  EXPECT_EQ(List({"--where", "City=Hamburg", "--fields", "Name", "--format", "csv"}),
            "Name\nMüller & Söhne\n\"Jan \"\"Jens\"\" Smit, Jr.\"\n");
}

TEST_F(ListCommand, SeveralConditionsMustAllHold) {
  EXPECT_EQ(List({"--where", "City=Hamburg", "--where", "CustomerRecordNumber=20", "--fields",
                  "AddressRecordNumber", "--format", "csv"}),
            "AddressRecordNumber\n3\n");
}

TEST_F(ListCommand, ConditionOnTheColumnOfAKeyFindsItsRow) {
  EXPECT_EQ(List({"--where", "AddressRecordNumber= 2 ", "--fields", "Name", "--format", "csv"}),
            "Name\nÅse Lindqvist\n");
  EXPECT_EQ(List({"--where", "AddressRecordNumber=9", "--fields", "Name", "--format", "csv"}),
            "Name\n");
}

TEST_F(ListCommand, ConditionAndAnotherKeyKeepTheOrderOfThatKey) {
  EXPECT_EQ(List({"--where", "City=Hamburg", "--key", "2", "--fields", "CustomerRecordNumber",
                  "--format", "csv"}),
            "CustomerRecordNumber\n20\n30\n");
}

TEST_F(ListCommand, LimitStopsTheWalk) {
  EXPECT_EQ(List({"--limit", "1", "--fields", "City", "--format", "csv"}), "City\nHamburg\n");
  EXPECT_EQ(List({"--limit", "0", "--fields", "City", "--format", "csv"}), "City\n");
}

TEST_F(ListCommand, JsonHasTypedValues) {
  EXPECT_EQ(List({"--fields", "AddressRecordNumber,Name", "--limit", "2", "--format", "json"}),
            "[\n{\"AddressRecordNumber\":1,\"Name\":\"Müller & Söhne\"},\n"
            "{\"AddressRecordNumber\":2,\"Name\":\"Åse Lindqvist\"}\n]\n");
  EXPECT_EQ(List({"--where", "City=Oslo", "--format", "json"}), "[]\n");
}

TEST_F(ListCommand, TableShowsNoControlCharacters) {
  Insert({"Name=two\nlines\x1b[31m"});
  EXPECT_TRUE(Contains(List({"--fields", "Name"}), "\ntwo.lines.[31m\n"));
}

TEST_F(ListCommand, UnknownKeyFailsWithItsStatus) {
  const ProgramResult result = company_.Run("list", {"Address", "--key", "77"});
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_TRUE(Contains(result.err, "larkmoor: Address: Btrieve error 6: Invalid Key Number\n"))
      << result.err;
}

TEST_F(ListCommand, WrongNamesAndValuesAreWrongUsage) {
  const auto refuses = [&](std::vector<std::string> arguments, const std::string& reason) {
    arguments.insert(arguments.begin(), "Address");
    const ProgramResult result = company_.Run("list", arguments);
    EXPECT_EQ(result.exitCode, 2) << reason;
    EXPECT_TRUE(Contains(result.err, "larkmoor: " + reason)) << result.err;
  };
  refuses({"--fields", "Name,Town"}, "Address has no property \"Town\"");
  refuses({"--fields", "Name(1)"}, "Address.Name takes no index");
  refuses({"--fields", "Name(x)"}, "\"Name(x)\" is no name of a column");
  refuses({"--where", "City"}, "\"City\" is not of the form NAME=VALUE");
  refuses({"--where", "Town=Oslo"}, "Address has no property \"Town\"");
  refuses({"--where", "AddressRecordNumber=one"},
          "AddressRecordNumber: \"one\" is no whole number");
  refuses({"--format", "xml"}, "--format");
  refuses({"--limit", "-1"}, "--limit");
}

}  // namespace
}  // namespace larkmoor::test
