#include <iostream>
#include <limits>
#include <memory>

#include "commands/row_arguments.h"
#include "row_writer.h"

namespace larkmoor::cli {
namespace {

struct Arguments {
  RowArguments rows;
  std::optional<std::int16_t> key;
  std::string fields;
  std::int64_t limit = std::numeric_limits<std::int64_t>::max();
  std::string format = "table";
};

void List(const Arguments& arguments) {
  const std::unique_ptr<RowSource> rows = arguments.rows.Open(Access::Read);
  const std::vector<Column> columns = rows->Shape().SelectRecordColumns(arguments.fields);
  RowWalk walk(*rows, {.key = arguments.key,
                       .conditions = arguments.rows.Conditions(*rows),
                       .eachDetail = AnyOfDetail(columns)});
  const auto writer = MakeRowWriter(arguments.format, std::cout, columns);
  for (std::int64_t count = 0; count < arguments.limit && walk.Next(); ++count) {
    writer->Write(ValuesOf(*rows, columns));
  }
  writer->Finish();
}

}  // namespace

void AddListCommand(CLI::App& app) {
  auto arguments = std::make_shared<Arguments>();
  CLI::App* command = app.add_subcommand("list", "Show rows");
  AddRowArguments(*command, arguments->rows);
  AddWhereOption(*command, arguments->rows);
  command
      ->add_option("--key", arguments->key,
                   "Walk along this key; otherwise the order is that of insertion")
      ->type_name("NUMBER");
  command
      ->add_option("--fields", arguments->fields,
                   "Only these columns, as in City,Zipcode,Amount(1)")
      ->type_name("LIST");
  command->add_option("--limit", arguments->limit, "At most so many rows")
      ->type_name("NUMBER")
      ->check(CLI::NonNegativeNumber.description(""));
  AddTableFormatOption(*command, arguments->format);
  command->footer(
      "Of a journal the rows shown are transactions, NDistributions telling how many rows each "
      "has,\n"
      "of a paycheck how many pay rows, and NLaborDistributions how many job rows; with a column\n"
      "such as DetailAmount, PayAmount or JobAmount among the --fields they are the rows of\n"
      "transactions.");
  command->callback([arguments] { List(*arguments); });
}

}  // namespace larkmoor::cli
