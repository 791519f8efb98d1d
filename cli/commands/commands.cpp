#include "commands/commands.h"

namespace larkmoor::cli {

CLI::Option* AddArgument(CLI::App& command, const std::string& name, std::string& value,
                         const std::string& help) {
  return command.add_option(name, value, help)->required()->type_name("");
}

CLI::Option* AddTableFormatOption(CLI::App& command, std::string& format) {
  return command.add_option("--format", format, "table, csv or json")
      ->type_name("FORMAT")
      ->capture_default_str()
      ->check(CLI::IsMember({"table", "csv", "json"}).description(""));
}

}  // namespace larkmoor::cli
