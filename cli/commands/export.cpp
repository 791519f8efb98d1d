#include <iostream>
#include <memory>

#include "commands/row_arguments.h"
#include "company_files.h"
#include "failure.h"
#include "ledger_text.h"
#include "progress.h"
#include "row_writer.h"
#include "streams.h"

namespace larkmoor::cli {
namespace {

struct Arguments {
  RowArguments rows;
  std::optional<std::int16_t> key;
  std::string fields;
  std::string form = "csv";
  std::string file;
};

void WriteRows(const Arguments& arguments, std::ostream& out, Output output) {
  if (arguments.rows.name.empty()) throw UsageError("CLASS is required");
  const std::unique_ptr<RowSource> rows = arguments.rows.Open(Access::Read);
  const std::vector<Column> columns = rows->Shape().SelectColumns(arguments.fields);
  const bool eachDetail = AnyOfDetail(columns);
  RowWalk walk(*rows, {.key = arguments.key,
                       .conditions = arguments.rows.Conditions(*rows),
                       .eachDetail = eachDetail});
  const auto writer = MakeRowWriter("csv", out, columns);
  const std::int64_t total = eachDetail ? 0 : rows->File().btRecordCount();
  Progress progress("exporting", output);
  for (std::int64_t count = 1; walk.Next(); ++count) {
    progress.Show(count, total);
    writer->Write(ValuesOf(*rows, columns));
  }
  writer->Finish();
}

void WriteLedger(const Arguments& arguments, std::ostream& out, Output output) {
  const bool isNarrowed = !arguments.rows.name.empty() || !arguments.rows.where.empty() ||
                          arguments.key || !arguments.fields.empty();
  if (isNarrowed) {
    throw UsageError("--as ledger writes the whole ledger: no CLASS, --where, --key or --fields");
  }
  Connect(arguments.rows.folder);
  WriteLedgerText(out, output);
}

void Write(const Arguments& arguments, std::ostream& out, Output output) {
  if (arguments.form == "ledger") return WriteLedger(arguments, out, output);
  WriteRows(arguments, out, output);
}

void Export(const Arguments& arguments) {
  if (arguments.file.empty()) return Write(arguments, std::cout, Output::IsWritten);
  OutputFile file(arguments.file);
  Write(arguments, file.Stream(), Output::Waits);
  file.Close();
}

}  // namespace

void AddExportCommand(CLI::App& app) {
  auto arguments = std::make_shared<Arguments>();
  CLI::App* command = app.add_subcommand(
      "export", "Write rows as CSV that import takes unchanged, or the ledger as plain text");
  AddRowArguments(*command, arguments->rows)->required(false);
  AddWhereOption(*command, arguments->rows);
  command
      ->add_option("--key", arguments->key,
                   "Walk along this key; otherwise the order is that of insertion")
      ->type_name("NUMBER");
  command->add_option("--fields", arguments->fields, "Only these columns, as in City,Amount(1)")
      ->type_name("LIST");
  command->add_option("--as", arguments->form, "csv, or ledger for all postings in plain text")
      ->type_name("FORM")
      ->capture_default_str()
      ->check(CLI::IsMember({"csv", "ledger"}).description(""));
  command->add_option("-o,--output", arguments->file, "Write to this file")->type_name("FILE");
  command->footer(
      "Of a journal there is a line for each row of a transaction, with the columns of the\n"
      "transaction repeated; one without rows is a line with empty row columns. The lines of a\n"
      "paycheck are its pay rows and then its job rows, each with the columns of the other list\n"
      "empty. JobEmployeeID is not among the columns: it reads another employee than it was "
      "given.\n\n"
      "--as ledger takes no CLASS. It writes the general ledger in the form that the programs\n"
      "ledger and hledger read: the accounts, then all transactions by date with their numbers,\n"
      "names and postings. Orders and quotes post nothing and are not among them.");
  command->callback([arguments] { Export(*arguments); });
}

}  // namespace larkmoor::cli
