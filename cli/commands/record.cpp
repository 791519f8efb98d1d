// get, set, insert and delete of one record.
#include <algorithm>
#include <iostream>
#include <memory>

#include <larkmoor/bulk_write.h>

#include "assignment.h"
#include "commands/row_arguments.h"
#include "failure.h"
#include "row_writer.h"
#include "text_tools.h"

namespace larkmoor::cli {
namespace {

struct GetArguments {
  RowArguments rows;
  std::string fields;
  std::string format = "text";
};

struct ChangeArguments {
  RowArguments rows;
  std::vector<std::string> values;
  bool all = false;
};

[[noreturn]] void RaiseNoMatch(const RowSource& rows) {
  throw Failure("no " + std::string(rows.Noun()) + " of " + std::string(rows.Name()) + " matches");
}

void Get(const GetArguments& arguments) {
  const std::unique_ptr<RowSource> rows = arguments.rows.Open(Access::Read);
  const std::vector<Column> columns = rows->Shape().SelectRecordColumns(arguments.fields);
  std::ranges::for_each(columns, RequireOfRecord);
  RowWalk walk(*rows, {.conditions = arguments.rows.Conditions(*rows)});
  if (!walk.Next()) RaiseNoMatch(*rows);
  WriteSingleRow(arguments.format, std::cout, columns, ValuesOf(*rows, columns));
}

/// Refuses to change more than one record unless that was asked for.
void RequireSingleMatch(RowSource& rows, const std::vector<Condition>& conditions) {
  RowWalk walk(rows, {.conditions = conditions});
  if (!walk.Next()) RaiseNoMatch(rows);
  if (!walk.Next()) return;
  throw Failure("several " + std::string(rows.Noun()) + "s of " + std::string(rows.Name()) +
                " match; say --all to change them all");
}

/// Applies `change` to every match, all in one commit. Returns how many there were.
template <typename Change>
std::int64_t ChangeMatches(RowSource& rows, std::vector<Condition> conditions, Change change) {
  BulkWrite bulk;
  RowWalk walk(rows, {.conditions = std::move(conditions), .mayUseKeys = false});
  std::int64_t count = 0;
  for (; walk.Next(); ++count) Require(change(), rows.Name());
  if (count == 0) RaiseNoMatch(rows);
  Require(bulk.Commit(), rows.Name());
  return count;
}

/// The same for the one match, which a key may find.
template <typename Change>
void ChangeMatch(RowSource& rows, std::vector<Condition> conditions, Change change) {
  RequireSingleMatch(rows, conditions);
  RowWalk walk(rows, {.conditions = std::move(conditions)});
  if (!walk.Next()) RaiseNoMatch(rows);
  Require(change(), rows.Name());
}

template <typename Change>
std::int64_t ChangeRecords(const ChangeArguments& arguments, RowSource& rows, Change change) {
  std::vector<Condition> conditions = arguments.rows.Conditions(rows);
  if (arguments.all) return ChangeMatches(rows, std::move(conditions), change);
  ChangeMatch(rows, std::move(conditions), change);
  return 1;
}

void Set(const ChangeArguments& arguments) {
  const std::unique_ptr<RowSource> rows = arguments.rows.Open(Access::Write);
  const RowValues values(*rows, arguments.values);
  const std::int64_t count = ChangeRecords(arguments, *rows, [&] {
    values.SetIn(*rows);
    return rows->Update();
  });
  std::cout << Counted(count, rows->Noun()) << " changed\n";
}

/// A record with details does not fit into a list of values.
void RequireNoDetails(const RowSource& rows) {
  if (!AnyOfDetail(rows.Shape().AllColumns())) return;
  throw UsageError("a " + std::string(rows.Noun()) + " of " + std::string(rows.Name()) +
                   " has rows: import it from a file");
}

void Insert(const ChangeArguments& arguments) {
  const std::unique_ptr<RowSource> rows = arguments.rows.Open(Access::Write);
  RequireNoDetails(*rows);
  const RowValues values(*rows, arguments.values);
  rows->StartRow();
  values.SetIn(*rows);
  Require(rows->Insert(), rows->Name());
  std::cout << Counted(1, rows->Noun()) << " inserted\n";
}

void Delete(const ChangeArguments& arguments) {
  const std::unique_ptr<RowSource> rows = arguments.rows.Open(Access::Write);
  const std::int64_t count = ChangeRecords(arguments, *rows, [&] { return rows->Delete(); });
  std::cout << Counted(count, rows->Noun()) << " deleted\n";
}

CLI::Option* AddValues(CLI::App& command, ChangeArguments& arguments) {
  return command
      .add_option("NAME=VALUE", arguments.values,
                  "Values; an element of a repeating property is named as in Amount(1)")
      ->type_name("");
}

}  // namespace

void AddGetCommand(CLI::App& app) {
  auto arguments = std::make_shared<GetArguments>();
  CLI::App* command = app.add_subcommand("get", "Show the first record that matches");
  AddRowArguments(*command, arguments->rows);
  AddWhereOption(*command, arguments->rows)->required();
  command->add_option("--fields", arguments->fields, "Only these columns, as in City,Amount(1)")
      ->type_name("LIST");
  command->add_option("--format", arguments->format, "text or json")
      ->type_name("FORMAT")
      ->capture_default_str()
      ->check(CLI::IsMember({"text", "json"}).description(""));
  command->footer(
      "Of a journal it shows a transaction, and NDistributions tells how many rows it has; of a\n"
      "paycheck how many pay rows, and NLaborDistributions how many job rows.");
  command->callback([arguments] { Get(*arguments); });
}

void AddSetCommand(CLI::App& app) {
  auto arguments = std::make_shared<ChangeArguments>();
  CLI::App* command = app.add_subcommand("set", "Change the record that matches");
  AddRowArguments(*command, arguments->rows);
  AddWhereOption(*command, arguments->rows)->required();
  AddValues(*command, *arguments)->required();
  command->add_flag("--all", arguments->all, "Change all that match; either all are or none is");
  command->footer("Of a journal it changes the transaction as a whole, and leaves its rows.");
  command->callback([arguments] { Set(*arguments); });
}

void AddInsertCommand(CLI::App& app) {
  auto arguments = std::make_shared<ChangeArguments>();
  CLI::App* command = app.add_subcommand("insert", "Add a record");
  AddRowArguments(*command, arguments->rows);
  AddValues(*command, *arguments);
  command->footer("Transactions have rows and are added by import.");
  command->callback([arguments] { Insert(*arguments); });
}

void AddDeleteCommand(CLI::App& app) {
  auto arguments = std::make_shared<ChangeArguments>();
  CLI::App* command = app.add_subcommand("delete", "Delete the record that matches");
  AddRowArguments(*command, arguments->rows);
  AddWhereOption(*command, arguments->rows)->required();
  command->add_flag("--all", arguments->all, "Delete all that match; either all are or none is");
  command->footer("A transaction of a journal goes with its rows.");
  command->callback([arguments] { Delete(*arguments); });
}

}  // namespace larkmoor::cli
