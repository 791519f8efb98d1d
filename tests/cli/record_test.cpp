// get, set, insert and delete of one record.
#include <string>

#include <gtest/gtest.h>

#include "cli/larkmoor_command.h"

namespace larkmoor::test {
namespace {

class RecordCommands : public testing::Test {
 protected:
  RecordCommands() {
    EXPECT_EQ(Run("insert", {"Name=Berg", "City=Oslo"}).exitCode, 0);
    EXPECT_EQ(Run("insert", {"Name=Dahl", "City=Oslo"}).exitCode, 0);
    EXPECT_EQ(Run("insert", {"Name=Lund", "City=Bergen"}).exitCode, 0);
  }

  ProgramResult Run(const std::string& command, std::vector<std::string> arguments) {
    arguments.insert(arguments.begin(), "Address");
    return company_.Run(command, arguments);
  }

  /// Name and town of every address.
  std::string Addresses() {
    return company_.Output("list", {"Address", "--fields", "Name,City", "--format", "csv"});
  }

  CommandCompany company_;
};

TEST_F(RecordCommands, GetShowsTheFirstMatchAsLines) {
  const ProgramResult result =
      Run("get", {"--where", "City=Oslo", "--fields", "AddressRecordNumber,Name,State"});
  EXPECT_EQ(result.exitCode, 0);
  EXPECT_EQ(result.out, "AddressRecordNumber: 1\nName: Berg\nState: \n");
}

TEST_F(RecordCommands, GetShowsAllColumnsWithoutFields) {
  const ProgramResult result = Run("get", {"--where", "Name=Lund"});
  EXPECT_TRUE(Contains(result.out, "\nCity: Bergen\n"));
  EXPECT_TRUE(Contains(result.out, "\nVendorRecordNumber: 0\n"));
}

TEST_F(RecordCommands, GetShowsTheMatchAsJson) {
  const ProgramResult result = Run(
      "get", {"--where", "Name=Lund", "--fields", "AddressRecordNumber,City", "--format", "json"});
  EXPECT_EQ(result.out, "{\n  \"AddressRecordNumber\": 3,\n  \"City\": \"Bergen\"\n}\n");
}

TEST_F(RecordCommands, NothingThatMatchesFails) {
  for (const std::string command : {"get", "set", "delete"}) {
    std::vector<std::string> arguments = {"--where", "City=Rome"};
    if (command == "set") arguments.emplace_back("City=Roma");
    const ProgramResult result = Run(command, arguments);
    EXPECT_EQ(result.exitCode, 1) << command;
    EXPECT_EQ(result.err, "larkmoor: no record of Address matches\n") << command;
    EXPECT_EQ(result.out, "") << command;
  }
}

TEST_F(RecordCommands, SetChangesTheMatchAndNothingElse) {
  const ProgramResult result = Run("set", {"--where", "Name=Dahl", "City=Moss", "State=Ø=F"});
  EXPECT_EQ(result.out, "1 record changed\n") << result.err;
  EXPECT_EQ(Addresses(), "Name,City\nBerg,Oslo\nDahl,Moss\nLund,Bergen\n");
  EXPECT_EQ(Run("get", {"--where", "Name=Dahl", "--fields", "State"}).out, "State: Ø=F\n");
}

TEST_F(RecordCommands, SetTakesTheConditionBehindTheValuesToo) {
  EXPECT_EQ(Run("set", {"City=-x", "State=MO", "--where", "Name=Dahl"}).out, "1 record changed\n");
  EXPECT_EQ(Addresses(), "Name,City\nBerg,Oslo\nDahl,-x\nLund,Bergen\n");
}

TEST_F(RecordCommands, SetByTheColumnOfAKeyMayChangeThatColumn) {
  EXPECT_EQ(Run("set", {"--where", "AddressRecordNumber=2", "AddressRecordNumber=20"}).exitCode, 0);
  EXPECT_EQ(Run("get", {"--where", "AddressRecordNumber=20", "--fields", "Name"}).out,
            "Name: Dahl\n");
}

TEST_F(RecordCommands, SetAndDeleteRefuseSeveralMatches) {
  const ProgramResult set = Run("set", {"--where", "City=Oslo", "City=Moss"});
  EXPECT_EQ(set.exitCode, 1);
  EXPECT_TRUE(Contains(set.err, "larkmoor: several records of Address match; say --all"));
  EXPECT_EQ(Run("delete", {"--where", "City=Oslo"}).exitCode, 1);
  EXPECT_EQ(Addresses(), "Name,City\nBerg,Oslo\nDahl,Oslo\nLund,Bergen\n");
}

TEST_F(RecordCommands, SetWithAllChangesEveryMatch) {
  EXPECT_EQ(Run("set", {"--where", "City=Oslo", "City=Moss", "--all"}).out, "2 records changed\n");
  EXPECT_EQ(Addresses(), "Name,City\nBerg,Moss\nDahl,Moss\nLund,Bergen\n");
}

TEST_F(RecordCommands, SetWithAllChangesNothingWhereOneIsRefused) {
  // The second change repeats the unique number that the first one gave.
  const ProgramResult result =
      Run("set", {"--where", "City=Oslo", "AddressRecordNumber=50", "--all"});
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_EQ(result.err, "larkmoor: Address: Btrieve error 5: Duplicate Key Value\n");
  EXPECT_EQ(Run("get", {"--where", "AddressRecordNumber=50"}).exitCode, 1);
}

TEST_F(RecordCommands, DeleteTakesTheMatchAway) {
  EXPECT_EQ(Run("delete", {"--where", "Name=Dahl"}).out, "1 record deleted\n");
  EXPECT_EQ(Addresses(), "Name,City\nBerg,Oslo\nLund,Bergen\n");
}

TEST_F(RecordCommands, DeleteWithAllTakesEveryMatchAway) {
  EXPECT_EQ(Run("delete", {"--where", "City=Oslo", "--all"}).out, "2 records deleted\n");
  EXPECT_EQ(Addresses(), "Name,City\nLund,Bergen\n");
}

TEST_F(RecordCommands, InsertWithoutValuesAddsABlankRecordWithTheNextNumber) {
  EXPECT_EQ(Run("insert", {}).out, "1 record inserted\n");
  EXPECT_EQ(Run("get", {"--where", "AddressRecordNumber=4", "--fields", "Name"}).out, "Name: \n");
}

TEST_F(RecordCommands, InsertOfANumberThatExistsFailsWithItsStatus) {
  const ProgramResult result = Run("insert", {"AddressRecordNumber=1"});
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_EQ(result.err, "larkmoor: Address: Btrieve error 5: Duplicate Key Value\n");
}

TEST_F(RecordCommands, TextThatDoesNotFitIsStoredAsFarAsItDoesAndReported) {
  const ProgramResult result =
      Run("insert", {"Name=Stanisław", "Zipcode=123456789012345678901234"});
  EXPECT_EQ(result.exitCode, 0);
  EXPECT_EQ(result.err,
            "larkmoor: Name: \"Stanisław\" has a character that Windows-1252 lacks: stored as "
            "\"?\"\n"
            "larkmoor: Zipcode: \"123456789012345678901234\" is longer than the 20 characters of "
            "its field: cut\n");
  EXPECT_EQ(Run("get", {"--where", "AddressRecordNumber=4", "--fields", "Name,Zipcode"}).out,
            "Name: Stanis?aw\nZipcode: 12345678901234567890\n");
}

TEST_F(RecordCommands, ValuesThatDoNotConvertAreWrongUsageAndChangeNothing) {
  const auto refuses = [&](const std::string& value, const std::string& reason) {
    const ProgramResult result = Run("set", {"--where", "Name=Berg", "City=Moss", value});
    EXPECT_EQ(result.exitCode, 2) << value;
    EXPECT_TRUE(Contains(result.err, "larkmoor: " + reason)) << result.err;
  };
  refuses("AddressRecordNumber=1.5", "AddressRecordNumber: \"1.5\" is no whole number");
  refuses("AddressRecordNumber=2147483648",
          "AddressRecordNumber: \"2147483648\" is no whole number from -2147483648 to 2147483647");
  refuses("Name=\xff\xfe", "Name: \"..\" is not UTF-8 text");
  refuses("Town=Moss", "Address has no property \"Town\"");
  refuses("=Moss", "\"=Moss\" is not of the form NAME=VALUE");
  refuses("Moss", "\"Moss\" is not of the form NAME=VALUE");
  EXPECT_EQ(Addresses(), "Name,City\nBerg,Oslo\nDahl,Oslo\nLund,Bergen\n");
}

TEST_F(RecordCommands, WithoutAConditionTheyAreWrongUsage) {
  EXPECT_EQ(Run("get", {}).exitCode, 2);
  EXPECT_EQ(Run("set", {"City=Moss"}).exitCode, 2);
  EXPECT_EQ(Run("delete", {}).exitCode, 2);
}

}  // namespace
}  // namespace larkmoor::test
