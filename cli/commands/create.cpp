#include <iostream>
#include <memory>
#include <optional>
#include <string>

#include <larkmoor/company.h>

#include "commands/commands.h"
#include "failure.h"

namespace larkmoor::cli {
namespace {

struct Arguments {
  std::string folder;
  std::string fiscalYear;
  CompanyOptions options;
};

Date FirstDay(const std::string& text) {
  const std::optional<Date> date = Date::FromText(text);
  if (!date) throw UsageError("--fiscal-year: \"" + text + "\" is no date");
  return *date;
}

void Create(Arguments& arguments) {
  if (!arguments.fiscalYear.empty()) {
    arguments.options.FiscalYearStart = FirstDay(arguments.fiscalYear);
  }
  CreateCompany(arguments.folder, arguments.options);
  std::cout << "a company of release " << arguments.options.Release << " in " << arguments.folder
            << '\n';
}

}  // namespace

void AddCreateCommand(CLI::App& app) {
  auto arguments = std::make_shared<Arguments>();
  CLI::App* command = app.add_subcommand("create", "Make a company in a new folder");
  AddArgument(*command, "FOLDER", arguments->folder, "The folder; it must not hold a company yet");
  command
      ->add_option("--release", arguments->options.Release,
                   "Release of the data, 8.0 to 19.0, fractions among them")
      ->type_name("NUMBER")
      ->capture_default_str();
  command->add_option("--name", arguments->options.Name, "Name of the company")->type_name("TEXT");
  command
      ->add_option("--fiscal-year", arguments->fiscalYear,
                   "First day of the fiscal year; the first of January where it is left out")
      ->type_name("DATE");
  command->callback([arguments] { Create(*arguments); });
}

}  // namespace larkmoor::cli
