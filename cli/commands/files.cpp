// stat, verify, owner and compact: what is done with record files as a whole.
#include <filesystem>
#include <iostream>
#include <memory>
#include <string>
#include <vector>

#include "commands/commands.h"
#include "company_files.h"
#include "engine/store/driver.h"
#include "failure.h"
#include "progress.h"
#include "text_tools.h"

namespace larkmoor::cli {
namespace {

namespace fs = std::filesystem;
using store::DefaultDriver;
using store::FileStatistics;
using store::KeyDescription;
using store::KeySegment;
using store::SegmentType;

struct FileArguments {
  std::string folder;
  std::string file;
};

struct OwnerArguments {
  FileArguments place;
  std::string set;
  std::string clear;
  bool allowRead = false;
};

/// Does `work` to each file. One that fails among several is reported and the others go on; a
/// `Failure` at the end tells of it.
template <typename Work>
void ForEachFile(const FileArguments& arguments, Work work) {
  const std::vector<fs::path> files = RecordFiles(arguments.folder, arguments.file);
  if (files.size() == 1) return Require(work(files.front()), files.front().filename().string());
  std::size_t failed = 0;
  for (const fs::path& path : files) {
    const Status status = work(path);
    if (status == StatusSuccess) continue;
    Report(path.filename().string() + ": " + StatusTitle(status));
    ++failed;
  }
  if (failed == 0) return;
  throw Failure(std::to_string(failed) + " of " + Counted(std::ssize(files), "file") + " failed");
}

std::string_view NameOf(SegmentType type) {
  switch (type) {
    case SegmentType::Byte:
      return "Byte";
    case SegmentType::Integer:
      return "Integer";
    case SegmentType::Long:
      return "Long";
    case SegmentType::Double:
      return "Double";
    case SegmentType::Date:
      return "Date";
    case SegmentType::Day:
      return "Day";
    case SegmentType::ZeroText:
      return "zero-terminated text";
    case SegmentType::Text:
      return "text";
    case SegmentType::Guid:
      break;
  }
  return "GUID";
}

void WriteKey(const KeyDescription& key) {
  std::cout << "  key " << key.number;
  if (key.unique) std::cout << ", unique";
  if (!key.modifiable) std::cout << ", not modifiable";
  if (key.autoIncrement) std::cout << ", auto-increment";
  std::cout << '\n';
  for (const KeySegment& segment : key.segments) {
    std::cout << "    " << NameOf(segment.type) << " at " << segment.offset << ", "
              << Counted(segment.width, "byte") << '\n';
  }
}

std::string_view OwnerOf(const FileStatistics& statistics) {
  if (!statistics.hasOwner) return "none";
  return statistics.ownerAllowsRead ? "set, reading allowed" : "set";
}

Status ShowStatistics(const fs::path& path) {
  FileStatistics statistics;
  const Status status = DefaultDriver().Statistics(path, statistics);
  if (status != StatusSuccess) return status;
  std::cout << path.filename().string() << '\n'
            << "  release        " << statistics.description.release << '\n'
            << "  record length  " << statistics.description.recordLength << " bytes\n"
            << "  records        " << statistics.records << '\n'
            << "  size           " << statistics.bytes << " bytes\n"
            << "  owner          " << OwnerOf(statistics) << '\n';
  for (const KeyDescription& key : statistics.description.keys) WriteKey(key);
  return StatusSuccess;
}

void Verify(const FileArguments& arguments) {
  std::int64_t files = 0;
  std::size_t found = 0;
  ForEachFile(arguments, [&](const fs::path& path) {
    const std::string name = path.filename().string();
    Progress progress("verifying " + name);
    progress.Show(0, 0);
    std::vector<std::string> findings;
    const Status status = DefaultDriver().Verify(path, findings, progress.Callback());
    progress.Wipe();
    for (const std::string& finding : findings) std::cout << name << ": " << finding << '\n';
    found += findings.size();
    ++files;
    return status;
  });
  std::cout << Counted(files, "file") << " verified\n";
  if (found > 0) throw Failure(Counted(static_cast<std::int64_t>(found), "finding"));
}

void Compact(const FileArguments& arguments) {
  ForEachFile(arguments, [](const fs::path& path) {
    const std::uintmax_t before = fs::file_size(path);
    const Status status = DefaultDriver().Compact(path);
    if (status != StatusSuccess) return status;
    std::cout << path.filename().string() << ": " << fs::file_size(path) << " bytes, was " << before
              << '\n';
    return status;
  });
}

void ChangeOwner(const OwnerArguments& arguments) {
  const fs::path path = FindRecordFile(arguments.place.folder, arguments.place.file);
  const bool clears = arguments.set.empty();
  const Status status = clears ? DefaultDriver().ClearOwner(path, arguments.clear)
                               : DefaultDriver().SetOwner(path, arguments.set, arguments.allowRead);
  Require(status, path.filename().string());
  std::cout << path.filename().string()
            << (clears ? ": owner name cleared\n" : ": owner name set\n");
}

/// A command over all files of a folder or one of them.
template <typename Work>
void AddFilesCommand(CLI::App& app, const std::string& name, const std::string& help, Work work) {
  auto arguments = std::make_shared<FileArguments>();
  CLI::App* command = app.add_subcommand(name, help);
  AddArgument(*command, "FOLDER", arguments->folder, "The company's folder");
  AddArgument(*command, "FILE", arguments->file, "Only this record file, such as Address.dat")
      ->required(false);
  command->callback([arguments, work] { work(*arguments); });
}

}  // namespace

void AddStatCommand(CLI::App& app) {
  AddFilesCommand(app, "stat", "Tell what record files say of themselves",
                  [](const FileArguments& arguments) { ForEachFile(arguments, ShowStatistics); });
}

void AddVerifyCommand(CLI::App& app) {
  AddFilesCommand(app, "verify",
                  "Check that every key entry has its record and every record its entries", Verify);
}

void AddCompactCommand(CLI::App& app) {
  AddFilesCommand(app, "compact", "Rewrite record files without the room of deleted records",
                  Compact);
}

void AddOwnerCommand(CLI::App& app) {
  auto arguments = std::make_shared<OwnerArguments>();
  CLI::App* command = app.add_subcommand("owner", "Protect a record file by a name, or free it");
  AddArgument(*command, "FOLDER", arguments->place.folder, "The company's folder");
  AddArgument(*command, "FILE", arguments->place.file, "The record file, such as Address.dat");
  CLI::Option* set = command->add_option("--set", arguments->set, "Protect the file by this name")
                         ->type_name("NAME");
  CLI::Option* clear =
      command->add_option("--clear", arguments->clear, "Free the file, which has this name")
          ->type_name("NAME");
  command->add_flag("--allow-read", arguments->allowRead, "Let everyone read the file")->needs(set);
  command->footer(
      "Whoever does not give the name cannot open the file (status 51); with --allow-read the\n"
      "file opens, and writes are refused (status 46).");
  set->excludes(clear);
  command->callback([arguments] {
    if (arguments->set.empty() && arguments->clear.empty()) {
      throw UsageError("owner: one of --set NAME and --clear NAME is needed");
    }
    ChangeOwner(*arguments);
  });
}

}  // namespace larkmoor::cli
