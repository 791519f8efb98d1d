// The commands of `larkmoor`. Each function adds one to the program: its arguments, its help, and
// what it does when it is chosen. A command that fails throws; see failure.h.
#pragma once

#include <string>

#include <CLI/CLI.hpp>

namespace larkmoor::cli {

/// Adds an argument without dashes that has to be given.
CLI::Option* AddArgument(CLI::App& command, const std::string& name, std::string& value,
                         const std::string& help);

/// Adds `--format`, as `MakeRowWriter` takes it.
CLI::Option* AddTableFormatOption(CLI::App& command, std::string& format);

// The company and the classes.
void AddCreateCommand(CLI::App& app);
void AddClassesCommand(CLI::App& app);

// Rows of a class or a record description, and what they add up to.
void AddListCommand(CLI::App& app);
void AddGetCommand(CLI::App& app);
void AddSetCommand(CLI::App& app);
void AddInsertCommand(CLI::App& app);
void AddDeleteCommand(CLI::App& app);
void AddImportCommand(CLI::App& app);
void AddExportCommand(CLI::App& app);
void AddReportCommand(CLI::App& app);

// Record files.
void AddStatCommand(CLI::App& app);
void AddVerifyCommand(CLI::App& app);
void AddOwnerCommand(CLI::App& app);
void AddCompactCommand(CLI::App& app);
void AddSaveCommand(CLI::App& app);
void AddLoadCommand(CLI::App& app);

}  // namespace larkmoor::cli
