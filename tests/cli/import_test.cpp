#include <string>

#include <gtest/gtest.h>

#include "cli/larkmoor_command.h"

namespace larkmoor::test {
namespace {

class ImportCommand : public testing::Test {
 protected:
  ProgramResult Import(std::string_view csv, std::vector<std::string> options = {}) {
    return company_.Import("Address", csv, std::move(options));
  }

  /// What a report about the file begins with.
  std::string Place(const std::string& place) {
    return "larkmoor: " + company_.Beside("new.csv") + ": " + place;
  }

  std::string Addresses(const std::string& fields = "Name,City") {
    return company_.Output("list", {"Address", "--fields", fields, "--format", "csv"});
  }

  void ExpectNothingImported(const ProgramResult& result) {
    EXPECT_NE(result.exitCode, 0);
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(Addresses(), "Name,City\n");
  }

  CommandCompany company_;
};

TEST_F(ImportCommand, TakesColumnsThatBearNamesOfProperties) {
  const ProgramResult result = Import("city,Name,CustomerRecordNumber\nOslo,Berg,7\n,Dahl,\n");
  EXPECT_EQ(result.exitCode, 0) << result.err;
  EXPECT_EQ(result.out, "2 records imported\n");
  EXPECT_EQ(result.err, "");
  EXPECT_EQ(Addresses("AddressRecordNumber,Name,City,CustomerRecordNumber"),
            "AddressRecordNumber,Name,City,CustomerRecordNumber\n1,Berg,Oslo,7\n2,Dahl,,0\n");
}

TEST_F(ImportCommand, ReadsQuotedFieldsLineEndsOfAllKindsAndAByteOrderMark) {
  const ProgramResult result = Import(
      "\xEF\xBB\xBF\"Name\",City\r\n"
      "\"Berg, \"\"B\"\"\",\"Os\r\nlo\"\r\n"
      "\r\n"
      "Dahl,\"\"\r"
      "Lund,Moss");
  EXPECT_EQ(result.exitCode, 0) << result.err;
  EXPECT_EQ(Addresses(), "Name,City\n\"Berg, \"\"B\"\"\",\"Os\r\nlo\"\nDahl,\nLund,Moss\n");
}

TEST_F(ImportCommand, TakesACharacterThatBeginsLikeAByteOrderMarkForText) {
  const ProgramResult result =
      Import("\uFF2E\uFF21,City\nBerg,Oslo\n", {"--map", "\uFF2E\uFF21=Name"});
  EXPECT_EQ(result.exitCode, 0) << result.err;
  EXPECT_EQ(Addresses(), "Name,City\nBerg,Oslo\n");
}

TEST_F(ImportCommand, MapsColumnsAndPassesOverTheOthers) {
  const ProgramResult result =
      Import("who,Remark,City,a=b\nBerg,none,Oslo,NO\n", {"--map", "who=Name", "a=b=Country"});
  EXPECT_EQ(result.exitCode, 0) << result.err;
  EXPECT_EQ(result.err, Place("columns passed over: Remark\n"));
  EXPECT_EQ(Addresses("Name,City,Country"), "Name,City,Country\nBerg,Oslo,NO\n");
}

TEST_F(ImportCommand, TakesMapsAheadOfTheOtherArgumentsToo) {
  const std::string file = company_.Write("new.csv", "who,town\nBerg,Oslo\n");
  EXPECT_EQ(Larkmoor({"import", "--map", "who=Name", "--map", "town=City", company_.Folder(),
                      "Address", file})
                .out,
            "1 record imported\n");
  EXPECT_EQ(Addresses(), "Name,City\nBerg,Oslo\n");
}

TEST_F(ImportCommand, AMapGoesBeforeAColumnOfThePropertysName) {
  const ProgramResult result = Import("Name,who\nWrong,Right\n", {"--map", "who=Name"});
  EXPECT_EQ(result.err, Place("columns passed over: Name\n"));
  EXPECT_EQ(Addresses(), "Name,City\nRight,\n");
}

TEST_F(ImportCommand, UnknownColumnFailsWhereNothingIsMapped) {
  const ProgramResult result = Import("Name,Town\nBerg,Oslo\n");
  ExpectNothingImported(result);
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_TRUE(Contains(result.err, "column \"Town\": Address has no property \"Town\"\n"))
      << result.err;
}

TEST_F(ImportCommand, MapsThatDoNotFitAreWrongUsage) {
  const auto refuses = [&](std::vector<std::string> maps, const std::string& reason) {
    maps.insert(maps.begin(), "--map");
    const ProgramResult result = Import("who,town\nBerg,Oslo\n", maps);
    ExpectNothingImported(result);
    EXPECT_EQ(result.exitCode, 2) << reason;
    EXPECT_TRUE(Contains(result.err, "larkmoor: " + reason)) << result.err;
  };
  refuses({"whom=Name"}, "the file has no column \"whom\"");
  refuses({"who=Town"}, "Address has no property \"Town\"");
  refuses({"who"}, "\"who\" is not of the form COLUMN=PROPERTY");
  refuses({"who=Name", "town=Name"}, "two columns are mapped to Name");
}

TEST_F(ImportCommand, BadLinesAreReportedWithTheirNumberAndNothingIsWritten) {
  const ProgramResult result = Import(
      "Name,CustomerRecordNumber\n"
      "\"Be\nrg\",1\n"
      "Dahl,many\n"
      "Lund\n"
      "\"Vik\"er,4\n"
      "\xff,5\n");
  ExpectNothingImported(result);
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_EQ(result.err,
            Place("line 4: column CustomerRecordNumber: \"many\" is no whole number from "
                  "-2147483648 to 2147483647\n") +
                Place("line 5: 1 field where the header has 2\n") +
                Place("line 6: text behind a closing quotation mark\n") +
                Place("line 7: column Name: \".\" is not UTF-8 text\n") +
                "larkmoor: nothing was imported: 4 bad lines\n");
}

TEST_F(ImportCommand, ARecordThatTheFileRefusesIsABadLine) {
  const ProgramResult result = Import("AddressRecordNumber,Name\n1,Berg\n2,Dahl\n1,Lund\n");
  ExpectNothingImported(result);
  EXPECT_EQ(result.err, Place("line 4: Btrieve error 5: Duplicate Key Value\n") +
                            "larkmoor: nothing was imported: 1 bad line\n");
}

TEST_F(ImportCommand, KeepGoingImportsTheGoodLines) {
  const ProgramResult result =
      Import("AddressRecordNumber,Name\n1,Berg\nx,Dahl\n1,Twin\n3,Lund\n", {"--keep-going"});
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_EQ(result.out, "2 records imported\n");
  EXPECT_TRUE(Contains(result.err, Place("line 3: column AddressRecordNumber"))) << result.err;
  EXPECT_TRUE(result.err.ends_with("larkmoor: 2 bad lines left out\n")) << result.err;
  EXPECT_EQ(Addresses("AddressRecordNumber,Name"), "AddressRecordNumber,Name\n1,Berg\n3,Lund\n");
}

TEST_F(ImportCommand, AQuotationMarkThatIsNeverClosedIsABadLine) {
  const ProgramResult result = Import("Name,City\nBerg,Oslo\n\"Dahl,Moss\nLund,Bergen\n");
  ExpectNothingImported(result);
  EXPECT_TRUE(Contains(result.err, Place("line 3: the quotation mark is never closed\n")))
      << result.err;
}

TEST_F(ImportCommand, TextThatDoesNotFitIsImportedAsFarAsItDoesAndReported) {
  const ProgramResult result =
      Import("Name,Zipcode,GUID\nStanisław,1234567890123456789üx,seventeen letters\n");
  EXPECT_EQ(result.exitCode, 0);
  EXPECT_EQ(result.out, "1 record imported\n");
  EXPECT_EQ(result.err,
            Place("line 2: column Name: \"Stanisław\" has a character that Windows-1252 lacks: "
                  "stored as \"?\"\n") +
                Place("line 2: column Zipcode: \"1234567890123456789üx\" is longer than the 20 "
                      "characters of its field: cut\n") +
                Place("line 2: column GUID: \"seventeen letters\" is longer than the 16 characters "
                      "of its field: cut\n"));
  EXPECT_EQ(Addresses("Name,Zipcode,GUID"),
            "Name,Zipcode,GUID\nStanis?aw,1234567890123456789ü,seventeen letter\n");
}

TEST_F(ImportCommand, AZeroCharacterInATextIsReported) {
  const ProgramResult result = Import(std::string_view("Name\nBe\0rg\n", 11));
  EXPECT_EQ(result.exitCode, 0);
  EXPECT_EQ(result.err,
            Place("line 2: column Name: \"Be.rg\" holds a zero character: cut there\n"));
  EXPECT_EQ(Addresses("Name"), "Name\nBe\n");
}

TEST_F(ImportCommand, AFileWithoutLinesImportsNothing) {
  const ProgramResult result = Import("Name,City\n");
  EXPECT_EQ(result.exitCode, 0);
  EXPECT_EQ(result.out, "0 records imported\n");
}

TEST_F(ImportCommand, AFileWithoutAUsableHeaderFails) {
  ExpectNothingImported(Import(""));
  ExpectNothingImported(Import("\n\n"));
  ExpectNothingImported(Import("Name,Name\nBerg,Dahl\n"));
  ExpectNothingImported(Import("\"Name\nBerg\n"));
  ExpectNothingImported(Import("who,town\nBerg,Oslo\n"));
}

TEST_F(ImportCommand, AFileThatCannotBeReadFails) {
  const ProgramResult missing = company_.Run("import", {"Address", company_.Beside("no.csv")});
  EXPECT_EQ(missing.exitCode, 1);
  EXPECT_EQ(missing.err,
            "larkmoor: " + company_.Beside("no.csv") + ": No such file or directory\n");
  const ProgramResult folder = company_.Run("import", {"Address", company_.Folder()});
  EXPECT_EQ(folder.exitCode, 1);
  EXPECT_EQ(folder.err, "larkmoor: " + company_.Folder() + ": Is a directory\n");
}

TEST_F(ImportCommand, AFileThatRefusesAllWritesEndsAtTheFirstLine) {
  ASSERT_EQ(company_.Run("owner", {"Address.dat", "--set", "kept", "--allow-read"}).exitCode, 0);
  const ProgramResult result = Import("Name\nBerg\nDahl\n", {"--keep-going"});
  ExpectNothingImported(result);
  EXPECT_EQ(result.err, "larkmoor: nothing was imported: " + company_.Beside("new.csv") +
                            ": line 2: Btrieve error 46: Access to File Denied\n");
}

TEST_F(ImportCommand, RowsOfARecordDescriptionBearTheMarkOfTheirKind) {
  ASSERT_EQ(company_.Run("delete", {"DefaultW2Data", "--where", "RowType=5"}).exitCode, 0);
  const std::string good = company_.Write("row.csv", "FUTA_ER\n2024\n");
  EXPECT_EQ(company_.Output("import", {"DefaultW2Data", good}), "1 record imported\n");
  EXPECT_EQ(
      company_.Output("list", {"DefaultW2Data", "--fields", "RowType,FUTA_ER", "--format", "csv"}),
      "RowType,FUTA_ER\n5,2024\n");
  const std::string bad = company_.Write("row.csv", "RowType\n4\n");
  const ProgramResult result = company_.Run("import", {"DefaultW2Data", bad});
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_TRUE(Contains(result.err, "line 2: column RowType: a row of DefaultW2Data bears the mark"))
      << result.err;
}

}  // namespace
}  // namespace larkmoor::test
