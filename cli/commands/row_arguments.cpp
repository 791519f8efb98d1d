#include "commands/row_arguments.h"

namespace larkmoor::cli {

std::unique_ptr<RowSource> RowArguments::Open(Access access) const {
  return OpenRows(folder, name, access);
}

std::vector<Condition> RowArguments::Conditions(const RowSource& rows) const {
  std::vector<Condition> conditions;
  for (const std::string& condition : where) {
    conditions.push_back(ParseCondition(rows.Shape(), condition));
  }
  return conditions;
}

CLI::Option* AddRowArguments(CLI::App& command, RowArguments& arguments) {
  AddArgument(command, "FOLDER", arguments.folder, "The company's folder");
  return AddArgument(command, "CLASS", arguments.name, "A public class, or a record description");
}

CLI::Option* AddWhereOption(CLI::App& command, RowArguments& arguments) {
  return command
      .add_option("--where", arguments.where,
                  "Only rows that show this value there; repeat it to ask for several")
      ->type_name("FIELD=VALUE")
      ->allow_extra_args(false);
}

}  // namespace larkmoor::cli
