// The `larkmoor` command under test, and a company to use it on.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include "support/company.h"
#include "support/record_files.h"
#include "support/run_program.h"

namespace larkmoor::test {

/// Runs `larkmoor` with these arguments.
inline ProgramResult Larkmoor(std::vector<std::string> arguments) {
  arguments.insert(arguments.begin(), LARKMOOR_CLI);
  return RunProgram(arguments);
}

/// A company made by the command, in a folder of its own.
class CommandCompany {
 public:
  explicit CommandCompany(const std::string& release = "19") {
    const ProgramResult result = Larkmoor({"create", Folder(), "--release", release});
    EXPECT_EQ(result.exitCode, 0) << result.err;
  }

  [[nodiscard]] std::string Folder() const { return (folder_.Path() / "company").string(); }
  /// A path beside the company.
  [[nodiscard]] std::string Beside(const std::string& name) const {
    return (folder_.Path() / name).string();
  }
  /// Writes a file beside the company and gives its path.
  std::string Write(const std::string& name, std::string_view text) const {
    WriteFile(Beside(name), text);
    return Beside(name);
  }

  /// Runs `larkmoor COMMAND FOLDER ARGUMENTS`.
  [[nodiscard]] ProgramResult Run(const std::string& command,
                                  std::vector<std::string> arguments = {}) const {
    arguments.insert(arguments.begin(), {command, Folder()});
    return Larkmoor(arguments);
  }
  /// The same for a command that has to succeed without a word on standard error. Gives its output.
  [[nodiscard]] std::string Output(const std::string& command,
                                   std::vector<std::string> arguments = {}) const {
    const ProgramResult result = Run(command, std::move(arguments));
    EXPECT_EQ(result.exitCode, 0) << command;
    EXPECT_EQ(result.err, "") << command;
    return result.out;
  }

  /// Imports lines for a class, from "new.csv" beside the company.
  [[nodiscard]] ProgramResult Import(const std::string& className, std::string_view csv,
                                     std::vector<std::string> options = {}) const {
    options.insert(options.begin(), {className, Write("new.csv", csv)});
    return Run("import", options);
  }
  /// The same for lines that have to be without a fault.
  void Take(const std::string& className, std::string_view csv, const std::string& said) const {
    const ProgramResult result = Import(className, csv);
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.err, "");
    EXPECT_EQ(result.out, said);
  }

 private:
  TempFolder folder_;
};

inline bool Contains(std::string_view text, std::string_view part) {
  return text.find(part) != std::string_view::npos;
}

}  // namespace larkmoor::test
