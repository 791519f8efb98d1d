// Customers of a foreign program, whose columns know nothing of Larkmoor: 59 of them from 24
// countries, kept beside the checkout where there is a copy.
#include <algorithm>
#include <filesystem>
#include <iostream>
#include <sstream>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "cli/larkmoor_command.h"

namespace larkmoor::test {
namespace {

std::filesystem::path Customers() {
  return std::filesystem::path(LARKMOOR_SOURCE_DIR) / "../shared/data/chinook/Customer.csv";
}

using Rows = std::vector<std::vector<std::string>>;

/// The fields of comma-separated text without line breaks in its fields.
Rows ParseCsv(const std::string& text) {
  Rows rows;
  std::istringstream in(text);
  for (std::string line; std::getline(in, line);) {
    std::vector<std::string>& row = rows.emplace_back(1);
    bool quoted = false;
    for (const char c : line) {
      if (c == '"') {
        quoted = !quoted;
      } else if (c == ',' && !quoted) {
        row.emplace_back();
      } else {
        row.back() += c;
      }
    }
  }
  return rows;
}

/// The column of that name without its title.
std::vector<std::string> ColumnOf(const Rows& rows, const std::string& title) {
  const auto found = std::ranges::find(rows.front(), title);
  EXPECT_NE(found, rows.front().end()) << title;
  const auto place = static_cast<std::size_t>(found - rows.front().begin());
  std::vector<std::string> column;
  for (std::size_t i = 1; i < rows.size(); ++i) column.push_back(rows[i].at(place));
  return column;
}

/// A text as Windows-1252 can hold it: of all letters of the file it lacks one.
std::string WithoutTheLetter(std::string text) {
  for (std::size_t at = 0; (at = text.find("ł", at)) != std::string::npos;) {
    text.replace(at, std::string_view("ł").size(), "?");
  }
  return text;
}

using Maps = std::vector<std::pair<std::string, std::string>>;

/// Imports the file with these maps and compares every mapped column with what `export` gives back.
/// Gives what the import reported.
std::string ImportAndCompare(const Maps& maps) {
  const CommandCompany company;
  std::vector<std::string> arguments = {"Address", Customers().string(), "--map"};
  for (const auto& [column, property] : maps) arguments.push_back(column + "=" + property);
  const ProgramResult imported = company.Run("import", arguments);
  EXPECT_EQ(imported.exitCode, 0);
  EXPECT_EQ(imported.out, "59 records imported\n");

  const Rows original = ParseCsv(ReadFile(Customers()));
  const Rows exported = ParseCsv(company.Output("export", {"Address"}));
  EXPECT_EQ(exported.size(), 60U);
  for (const auto& [column, property] : maps) {
    std::vector<std::string> expected = ColumnOf(original, column);
    std::ranges::transform(expected, expected.begin(), WithoutTheLetter);
    EXPECT_EQ(ColumnOf(exported, property), expected) << column;
  }
  return imported.err;
}

bool HasNoCustomers() {
  if (std::filesystem::exists(Customers())) return false;
  std::cout << "skipped: no chinook data beside the checkout\n";
  return true;
}

TEST(ChinookCustomers, ComeBackFieldByFieldAndTheLetterThatIsLackingIsReportedWithItsLine) {
  if (HasNoCustomers()) return;
  const std::string reported = ImportAndCompare({{"CustomerId", "AddressRecordNumber"},
                                                 {"FirstName", "Name"},
                                                 {"LastName", "AddressTypeDesc"},
                                                 {"Company", "AddressLine2"},
                                                 {"Address", "AddressLine1"},
                                                 {"City", "City"},
                                                 {"State", "State"},
                                                 {"Country", "Country"},
                                                 {"PostalCode", "Zipcode"},
                                                 {"Phone", "TaxCode"},
                                                 {"SupportRepId", "CustomerRecordNumber"}});
  const std::string place = "larkmoor: " + Customers().string() + ": ";
  EXPECT_EQ(reported, place + "columns passed over: Fax, Email\n" + place +
                          "line 50: column FirstName: \"Stanisław\" has a character that "
                          "Windows-1252 lacks: stored as \"?\"\n");
}

TEST(ChinookCustomers, ColumnsWithoutAPlaceOfTheirOwnComeBackToo) {
  if (HasNoCustomers()) return;
  const std::string reported =
      ImportAndCompare({{"Fax", "TaxCode"}, {"Email", "AddressLine1"}, {"LastName", "Name"}});
  EXPECT_TRUE(Contains(reported, "line 50: column Email: \"stanisław.wójcik@wp.pl\"")) << reported;
}

}  // namespace
}  // namespace larkmoor::test
