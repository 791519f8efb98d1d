#include <iostream>
#include <memory>

#include "commands/row_arguments.h"
#include "progress.h"
#include "row_writer.h"
#include "streams.h"

namespace larkmoor::cli {
namespace {

struct Arguments {
  RowArguments rows;
  std::optional<std::int16_t> key;
  std::string fields;
  std::string file;
};

void WriteRows(const Arguments& arguments, RowSource& rows, std::ostream& out) {
  const std::vector<Column> columns = rows.Shape().SelectColumns(arguments.fields);
  RowWalk walk(rows, {.key = arguments.key, .conditions = arguments.rows.Conditions(rows)});
  const auto writer = MakeRowWriter("csv", out, columns);
  const std::int64_t total = rows.File().btRecordCount();
  Progress progress("exporting");
  for (std::int64_t count = 1; walk.Next(); ++count) {
    progress.Show(count, total);
    writer->Write(ValuesOf(rows, columns));
  }
  writer->Finish();
}

void Export(const Arguments& arguments) {
  const std::unique_ptr<RowSource> rows = arguments.rows.Open(Access::Read);
  if (arguments.file.empty()) return WriteRows(arguments, *rows, std::cout);
  OutputFile file(arguments.file);
  WriteRows(arguments, *rows, file.Stream());
  file.Close();
}

}  // namespace

void AddExportCommand(CLI::App& app) {
  auto arguments = std::make_shared<Arguments>();
  CLI::App* command = app.add_subcommand("export", "Write rows as CSV that import takes unchanged");
  AddRowArguments(*command, arguments->rows);
  AddWhereOption(*command, arguments->rows);
  command
      ->add_option("--key", arguments->key,
                   "Walk along this key; otherwise the order is that of insertion")
      ->type_name("NUMBER");
  command->add_option("--fields", arguments->fields, "Only these columns, as in City,Amount(1)")
      ->type_name("LIST");
  command->add_option("-o,--output", arguments->file, "Write to this file")->type_name("FILE");
  command->callback([arguments] { Export(*arguments); });
}

}  // namespace larkmoor::cli
