#include "commands/commands.h"

namespace larkmoor::cli {

CLI::Option* AddArgument(CLI::App& command, const std::string& name, std::string& value,
                         const std::string& help) {
  return command.add_option(name, value, help)->required()->type_name("");
}

}  // namespace larkmoor::cli
