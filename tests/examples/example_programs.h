// What the tests of the example programs share: a folder to work in, and a second opinion on sums.
#pragma once

#include <cmath>
#include <cstdint>
#include <filesystem>
#include <map>
#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include <larkmoor/connection/btrieve.h>
#include <larkmoor/status.h>

#include "connection/shared_state.h"
#include "support/company.h"
#include "support/run_program.h"

namespace larkmoor::test {

/// A company folder that an example program makes and the test then reads.
class ExampleCompany {
 public:
  ExampleCompany() : pathBefore_(Shared().gCompanyPath) {}
  ~ExampleCompany() { Shared().gCompanyPath = pathBefore_; }
  ExampleCompany(const ExampleCompany&) = delete;
  ExampleCompany& operator=(const ExampleCompany&) = delete;

  [[nodiscard]] std::string Folder() const { return (folder_.Path() / "company").string(); }

  /// Runs `program FOLDER ARGUMENTS`.
  [[nodiscard]] ProgramResult Run(const std::string& program,
                                  const std::vector<std::string>& arguments) const {
    std::vector<std::string> command = {program, Folder()};
    command.insert(command.end(), arguments.begin(), arguments.end());
    return RunProgram(command);
  }
  /// The same for a program that has to succeed; connects to the company. Gives its output.
  std::string Output(const std::string& program, const std::vector<std::string>& arguments) const {
    const ProgramResult result = Run(program, arguments);
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.err, "");
    Btrieve connection;
    EXPECT_EQ(connection.Connect(Folder()), StatusSuccess);
    return result.out;
  }

 private:
  std::string pathBefore_;
  TempFolder folder_;
};

inline std::int64_t ToCents(double amount) { return std::llround(amount * 100); }

/// The balance of each account in cents.
using Balances = std::map<std::string, std::int64_t>;

inline constexpr auto Sqlite = "/usr/bin/sqlite3";

#define SKIP_WITHOUT_SQLITE() \
  if (!std::filesystem::exists(Sqlite)) GTEST_SKIP() << "skipped: no sqlite3"

/// CSV files by the names of the tables that a query knows them by.
using CsvTables = std::map<std::string, std::filesystem::path>;

/// Asks sqlite3. Gives the answer's lines with their fields.
inline std::vector<std::vector<std::string>> AskSqlite(const CsvTables& tables,
                                                       const std::string& query) {
  std::vector<std::string> command = {Sqlite, "-tabs", ":memory:"};
  for (const auto& [table, file] : tables) {
    command.push_back(".import --csv \"" + file.string() + "\" " + table);
  }
  command.push_back(query);
  const ProgramResult result = RunProgram(command);
  EXPECT_EQ(result.exitCode, 0) << result.err;

  std::vector<std::vector<std::string>> answer;
  std::istringstream lines(result.out);
  for (std::string line; std::getline(lines, line);) {
    std::istringstream fields(line);
    answer.emplace_back();
    for (std::string field; std::getline(fields, field, '\t');) answer.back().push_back(field);
  }
  return answer;
}

}  // namespace larkmoor::test
