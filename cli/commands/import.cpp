#include <algorithm>
#include <array>
#include <iostream>
#include <memory>

#include <larkmoor/bulk_write.h>
#include <larkmoor/error.h>
#include <larkmoor/status.h>

#include "commands/row_arguments.h"
#include "csv.h"
#include "failure.h"
#include "import_plan.h"
#include "progress.h"
#include "streams.h"
#include "text_tools.h"
#include "value_text.h"

namespace larkmoor::cli {
namespace {

struct Arguments {
  RowArguments rows;
  std::string file;
  std::vector<std::string> maps;
  bool keepGoing = false;
};

/// A line that cannot be imported. The message tells why, with the column where one is at fault.
class BadLine : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// Whether a refused insert says something of the record; otherwise no line after it can fare
/// better.
bool IsFaultOfRecord(Status status) {
  constexpr std::array FaultsOfFile = {StatusIOError,      StatusFileNotOpen,  StatusDiskFull,
                                       StatusAccessDenied, StatusInvalidOwner, StatusPermission};
  return std::ranges::find(FaultsOfFile, status) == FaultsOfFile.end();
}

std::string Join(const std::vector<std::string>& names) {
  std::string text;
  for (const std::string& name : names) text += (text.empty() ? "" : ", ") + name;
  return text;
}

class Import {
 public:
  Import(const Arguments& arguments, RowSource& rows)
      : arguments_(arguments), rows_(rows), file_(arguments.file), reader_(file_.Stream()) {}

  void Run() {
    ReadHeader();
    BulkWrite bulk;
    while (const std::optional<CsvRecord> record = reader_.Next()) {
      progress_.Show(file_.Done(), file_.Total());
      Take(*record);
    }
    progress_.Wipe();
    if (badLines_ > 0 && !arguments_.keepGoing) {
      throw Failure("nothing was imported: " + Counted(badLines_, "bad line"));
    }
    Require(bulk.Commit(), rows_.Name());
    std::cout << Counted(imported_, "record") << " imported\n";
    if (badLines_ > 0) throw Failure(Counted(badLines_, "bad line") + " left out");
  }

 private:
  void ReadHeader() {
    const std::optional<CsvRecord> header = reader_.Next();
    if (!header) throw Failure(arguments_.file + " has no header line");
    if (!header->problem.empty()) throw Failure(arguments_.file + ": header: " + header->problem);
    plan_ = PlanImport(header->fields, arguments_.maps, rows_.Shape());
    if (!plan_.passedOver.empty()) {
      Report(arguments_.file + ": columns passed over: " + Join(plan_.passedOver));
    }
  }

  void Take(const CsvRecord& record) {
    try {
      RequireWellFormed(record);
      FillRow(record);
      InsertRow(record);
      ++imported_;
    } catch (const BadLine& bad) {
      ++badLines_;
      ReportLine(record, bad.what());
    }
  }

  void RequireWellFormed(const CsvRecord& record) const {
    if (!record.problem.empty()) throw BadLine(record.problem);
    if (record.fields.size() == plan_.fieldCount) return;
    throw BadLine(Counted(static_cast<std::int64_t>(record.fields.size()), "field") +
                  " where the header has " + std::to_string(plan_.fieldCount));
  }

  void FillRow(const CsvRecord& record) {
    rows_.StartRow();
    for (const ImportTarget& target : plan_.targets) {
      try {
        SetColumn(record, target);
      } catch (const ValueError& error) {
        throw BadLine(InColumn(target) + error.what());
      } catch (const Error& error) {
        throw BadLine(InColumn(target) + Printable(error.Description()));
      }
    }
  }

  void SetColumn(const CsvRecord& record, const ImportTarget& target) {
    const std::string& text = record.fields[target.field];
    const Property& property = *target.column.property;
    rows_.Set(target.column, ValueFromText(text, property.type));
    for (const std::string& loss : LossesOf(text, property, rows_.File().RecordBuffer()->size())) {
      ReportLine(record, InColumn(target) + loss);
    }
  }

  void InsertRow(const CsvRecord& record) {
    const Status status = rows_.Insert();
    if (status == StatusSuccess) return;
    if (IsFaultOfRecord(status)) throw BadLine(StatusTitle(status));
    Require(status,
            "nothing was imported: " + arguments_.file + ": line " + std::to_string(record.line));
  }

  static std::string InColumn(const ImportTarget& target) {
    return "column " + target.header + ": ";
  }

  void ReportLine(const CsvRecord& record, const std::string& message) {
    progress_.Wipe();
    Report(arguments_.file + ": line " + std::to_string(record.line) + ": " + message);
  }

  const Arguments& arguments_;
  RowSource& rows_;
  InputFile file_;
  CsvReader reader_;
  Progress progress_{"importing"};
  ImportPlan plan_;
  std::int64_t imported_ = 0;
  std::int64_t badLines_ = 0;
};

}  // namespace

void AddImportCommand(CLI::App& app) {
  auto arguments = std::make_shared<Arguments>();
  CLI::App* command = app.add_subcommand("import", "Add the lines of a CSV file as records");
  AddRowArguments(*command, arguments->rows);
  AddArgument(*command, "FILE", arguments->file,
              "The CSV file, UTF-8; its first line names columns");
  command
      ->add_option("--map", arguments->maps, "Where columns go that do not bear a property's name")
      ->type_name("COLUMN=PROPERTY");
  command->add_flag("--keep-going", arguments->keepGoing,
                    "Import the good lines although there are bad ones");
  command->footer(
      "Where a line is bad nothing is imported; with --keep-going the good ones are, and the exit\n"
      "code is 1 all the same. With --map, columns that belong to no property are passed over.\n\n"
      "Dates are in ISO form, truth values true and false, an element of a repeating property is\n"
      "the column Name(1). Text is cut at the width of its field, and what Windows-1252 lacks\n"
      "becomes \"?\": both are reported with line and column.");
  command->callback([arguments] {
    const std::unique_ptr<RowSource> rows = arguments->rows.Open(Access::Write);
    Import(*arguments, *rows).Run();
  });
}

}  // namespace larkmoor::cli
