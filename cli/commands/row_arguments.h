// The arguments that the commands over rows have in common.
#pragma once

#include <string>
#include <vector>

#include "commands/commands.h"
#include "row_walk.h"

namespace larkmoor::cli {

/// Which rows of which company.
struct RowArguments {
  std::string folder;
  std::string name;
  std::vector<std::string> where;

  /// Connects to the company and opens the class or record.
  [[nodiscard]] std::unique_ptr<RowSource> Open(Access access) const;
  /// The conditions of `--where`.
  [[nodiscard]] std::vector<Condition> Conditions(const RowSource& rows) const;
};

/// Adds FOLDER and CLASS, and gives the latter.
CLI::Option* AddRowArguments(CLI::App& command, RowArguments& arguments);
/// Adds `--where`, once for each condition.
CLI::Option* AddWhereOption(CLI::App& command, RowArguments& arguments);

}  // namespace larkmoor::cli
