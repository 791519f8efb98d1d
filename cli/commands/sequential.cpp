// save and load: the records of a file in the sequential form.
#include "engine/sequential.h"

#include <iostream>
#include <memory>
#include <optional>

#include "commands/commands.h"
#include "company_files.h"
#include "engine/tovrin_file.h"
#include "failure.h"
#include "progress.h"
#include "streams.h"
#include "text_tools.h"

namespace larkmoor::cli {
namespace {

struct Arguments {
  std::string folder;
  std::string file;
  std::string other;  ///< the sequential file
  std::optional<std::int16_t> key;
};

void OpenFile(TovrinFile& file, const Arguments& arguments, std::int16_t mode) {
  const std::filesystem::path path = FindRecordFile(arguments.folder, arguments.file);
  Require(file.btOpen(path.string(), mode), path.filename().string());
}

void RequireSuccess(const SequentialResult& result, const std::string& what) {
  const std::string where = result.problem.empty() ? what : what + ": " + result.problem;
  Require(result.status, where);
  if (!result.problem.empty()) throw Failure(where);
}

void Save(const Arguments& arguments) {
  TovrinFile file;
  OpenFile(file, arguments, TovrinFile::ReadOnlyMode);
  OutputFile out(arguments.other);
  const SequentialResult result = SaveSequential(file, arguments.key, out.Stream());
  RequireSuccess(result, arguments.other);
  out.Close();
  std::cout << Counted(result.records, "record") << " saved\n";
}

void Load(const Arguments& arguments) {
  TovrinFile file;
  OpenFile(file, arguments, TovrinFile::NormalMode);
  InputFile in(arguments.other);
  Progress progress("loading");
  const SequentialResult result = LoadSequential(
      file, in.Stream(), [&](std::int64_t, std::int64_t) { progress.Show(in.Done(), in.Total()); });
  progress.Wipe();
  RequireSuccess(result, arguments.other);
  std::cout << Counted(result.records, "record") << " loaded\n";
}

CLI::App* AddCommand(CLI::App& app, const std::string& name, const std::string& help,
                     Arguments& arguments) {
  CLI::App* command = app.add_subcommand(name, help);
  AddArgument(*command, "FOLDER", arguments.folder, "The company's folder");
  AddArgument(*command, "FILE", arguments.file, "The record file, such as Address.dat");
  command->footer(
      "In the sequential form each record is its length in decimal, a comma, its bytes, and a\n"
      "line end.");
  return command;
}

}  // namespace

void AddSaveCommand(CLI::App& app) {
  auto arguments = std::make_shared<Arguments>();
  CLI::App* command =
      AddCommand(app, "save", "Write a record file's records in the sequential form", *arguments);
  AddArgument(*command, "OUT", arguments->other, "The file to write");
  command
      ->add_option("--key", arguments->key,
                   "In the order of this key; otherwise the order is that of insertion")
      ->type_name("NUMBER");
  command->callback([arguments] { Save(*arguments); });
}

void AddLoadCommand(CLI::App& app) {
  auto arguments = std::make_shared<Arguments>();
  CLI::App* command = AddCommand(
      app, "load", "Add the records of a file in the sequential form, all of them or none",
      *arguments);
  AddArgument(*command, "IN", arguments->other, "The file to read");
  command->callback([arguments] { Load(*arguments); });
}

}  // namespace larkmoor::cli
