// The `larkmoor` command: companies, their records and their files from a shell.
#include <cstdio>
#include <exception>
#include <iostream>
#include <string>

#include <larkmoor/error.h>

#include "commands/commands.h"
#include "failure.h"

namespace larkmoor::cli {
namespace {

void AddCommands(CLI::App& app) {
  for (const auto add : {AddCreateCommand, AddClassesCommand, AddListCommand, AddGetCommand,
                         AddSetCommand, AddInsertCommand, AddDeleteCommand, AddImportCommand,
                         AddExportCommand, AddReportCommand, AddStatCommand, AddVerifyCommand,
                         AddOwnerCommand, AddCompactCommand, AddSaveCommand, AddLoadCommand}) {
    add(app);
  }
  for (CLI::App* command : app.get_subcommands({})) command->group("Commands");
}

/// A raised error in one line: what failed, and the title of the status where there is one.
std::string MessageOf(const Error& error) {
  const std::string& text = error.Description();
  const std::string what = text.substr(0, text.find_first_of("\r\n"));
  return error.BtrieveStatus() == StatusSuccess ? what
                                                : what + ": " + StatusTitle(error.BtrieveStatus());
}

int ReportUsage(const std::string& message) {
  Report(message);
  std::cerr << "Run larkmoor --help, or larkmoor COMMAND --help.\n";
  return ExitUsage;
}

int ReportFailure(const std::string& message) {
  Report(message);
  return ExitFailure;
}

int Parse(CLI::App& app, int argc, char** argv) {
  try {
    app.parse(argc, argv);
  } catch (const CLI::Success& help) {
    return app.exit(help);
  } catch (const CLI::ParseError& error) {
    return ReportUsage(error.what());
  } catch (const UsageError& error) {
    return ReportUsage(error.what());
  } catch (const Error& error) {
    return ReportFailure(MessageOf(error));
  } catch (const std::exception& error) {
    return ReportFailure(error.what());
  }
  std::cout.flush();
  return std::cout ? ExitSuccess : ReportFailure("the output could not be written");
}

int Run(int argc, char** argv) {
  std::ios::sync_with_stdio(false);
  CLI::App app("Companies, their records and their files", "larkmoor");
  app.require_subcommand(1);
  app.get_formatter()->label("SUBCOMMAND", "COMMAND");
  app.get_formatter()->label("REQUIRED", "");
  app.footer(
      "Exit codes: 0 success; 1 the command failed; 2 the command line is wrong, or names a "
      "class,\n"
      "a column or a value that there is not. Errors go to standard error.");
  AddCommands(app);
  return Parse(app, argc, argv);
}

}  // namespace
}  // namespace larkmoor::cli

int main(int argc, char** argv) {
  try {
    return larkmoor::cli::Run(argc, argv);
  } catch (...) {
    // Whatever a command raises has been reported by now: memory itself has run out.
    std::fputs("larkmoor: out of memory\n", stderr);
    return larkmoor::cli::ExitFailure;
  }
}
