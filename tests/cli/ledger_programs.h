// The programs that read the ledger as plain text, and the balances that they find in it.
#pragma once

#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <map>
#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "support/run_program.h"

namespace larkmoor::test {

/// Where a program is, or empty.
inline std::string FindProgram(const std::string& name) {
  std::istringstream folders(std::getenv("PATH"));
  for (std::string folder; std::getline(folders, folder, ':');) {
    const std::filesystem::path program = std::filesystem::path(folder) / name;
    if (std::filesystem::exists(program)) return program.string();
  }
  return {};
}

/// The programs that read such text, as far as they are here.
inline std::vector<std::string> LedgerPrograms() {
  std::vector<std::string> found;
  for (const char* name : {"ledger", "hledger"}) {
    const std::string program = FindProgram(name);
    if (!program.empty()) found.push_back(program);
  }
  return found;
}

/// Runs a program that does not have to know the locale of the test.
inline std::string OutputOf(const std::vector<std::string>& command) {
  std::vector<std::string> inUtf8 = {"/usr/bin/env", "LC_ALL=C.UTF-8"};
  inUtf8.insert(inUtf8.end(), command.begin(), command.end());
  const ProgramResult result = RunProgram(inUtf8);
  EXPECT_EQ(result.exitCode, 0) << result.err;
  EXPECT_EQ(result.err, "");
  return result.out;
}

/// In cents, by the name that the ledger gives an account.
using LedgerBalances = std::map<std::string, std::int64_t>;

inline std::int64_t CentsOf(const std::string& amount) {
  return std::llround(std::stod(amount) * 100);
}

/// The lines "AMOUNT  NAME" of a balance, up to the rule.
inline LedgerBalances ParseBalances(const std::string& text) {
  LedgerBalances balances;
  std::istringstream lines(text);
  for (std::string line; std::getline(lines, line) && !line.starts_with("---");) {
    std::istringstream words(line);
    std::string amount;
    std::string name;
    words >> amount >> std::ws;
    std::getline(words, name);
    balances[name] = CentsOf(amount);
  }
  return balances;
}

/// What one of these programs finds in a file.
inline LedgerBalances BalancesBy(const std::string& program, const std::string& file) {
  return ParseBalances(OutputOf({program, "-f", file, "balance", "--flat", "--empty"}));
}

}  // namespace larkmoor::test
