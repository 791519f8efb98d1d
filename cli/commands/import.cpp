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
#include "import_entries.h"
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
    EntryReader entries(reader_, plan_);
    for (Lines lines = entries.Next(); !lines.empty(); lines = entries.Next()) {
      progress_.Show(file_.Done(), file_.Total());
      Take(lines);
    }
    progress_.Wipe();
    if (badLines_ > 0 && !arguments_.keepGoing) {
      throw Failure("nothing was imported: " + Counted(badLines_, "bad line"));
    }
    Require(bulk.Commit(), rows_.Name());
    std::cout << Counted(imported_, rows_.Noun()) << " imported\n";
    if (badLines_ > 0) throw Failure(LeftOut());
  }

 private:
  using Lines = std::vector<CsvRecord>;

  void ReadHeader() {
    const std::optional<CsvRecord> header = reader_.Next();
    if (!header) throw Failure(arguments_.file + " has no header line");
    if (!header->problem.empty()) throw Failure(arguments_.file + ": header: " + header->problem);
    plan_ = PlanImport(header->fields, arguments_.maps, rows_.Shape());
    if (!plan_.passedOver.empty()) {
      Report(arguments_.file + ": columns passed over: " + Join(plan_.passedOver));
    }
  }

  /// Takes the lines of one record. Where one is bad, none of them is imported.
  void Take(const Lines& lines) {
    const std::int64_t badBefore = badLines_;
    const auto isGood = [&] { return badLines_ == badBefore; };
    TryEach(lines, [&](const CsvRecord& line) { RequireWellFormed(line); });
    if (isGood()) {
      rows_.StartRow();
      TryEach(lines, [&](const CsvRecord& line) { FillFrom(line, lines.front()); });
    }
    if (isGood()) TryEach({lines.front()}, [&](const CsvRecord& line) { InsertRow(line); });
    if (isGood()) {
      ++imported_;
    } else {
      goodLinesLeftOut_ += std::ssize(lines) - (badLines_ - badBefore);
    }
  }

  /// Reports each line that `work` finds bad.
  template <typename Work>
  void TryEach(const Lines& lines, Work work) {
    for (const CsvRecord& line : lines) {
      try {
        work(line);
      } catch (const BadLine& bad) {
        ++badLines_;
        ReportLine(line, bad.what());
      }
    }
  }

  void RequireWellFormed(const CsvRecord& line) const {
    const std::string problem = ProblemOf(line, plan_);
    if (!problem.empty()) throw BadLine(problem);
  }

  /// The first line of a record tells of it as a whole, and each line of one detail.
  void FillFrom(const CsvRecord& line, const CsvRecord& first) {
    if (&line == &first) {
      SetColumns(line, false);
    } else {
      RequireAgreement(line, first);
    }
    if (const Property* property = DetailIn(line)) AddDetail(line, property->detailList);
  }

  void AddDetail(const CsvRecord& line, std::string_view list) {
    try {
      rows_.StartDetail(list);
      SetColumns(line, true);
      rows_.EndDetail();
    } catch (const ValueError& error) {
      throw BadLine(error.what());
    }
  }

  void RequireAgreement(const CsvRecord& line, const CsvRecord& first) const {
    const std::string column = DisagreementOf(first, line, plan_);
    if (column.empty()) return;
    throw BadLine("column " + column + ": differs from line " + std::to_string(first.line) +
                  " of the same " + std::string(rows_.Noun()));
  }

  /// A property that the line gives of a detail, or null where it holds none. All that it gives are
  /// of one list.
  const Property* DetailIn(const CsvRecord& line) const {
    const ImportTarget* first = nullptr;
    for (const ImportTarget& target : plan_.targets) {
      if (!target.column.property->ofDetail || line.fields[target.field].empty()) continue;
      if (first == nullptr) first = &target;
      RequireOneList(*first, target);
    }
    return first == nullptr ? nullptr : first->column.property;
  }

  static void RequireOneList(const ImportTarget& first, const ImportTarget& other) {
    const std::string_view list = first.column.property->detailList;
    const std::string_view otherList = other.column.property->detailList;
    if (list == otherList) return;
    throw BadLine("columns " + first.header + " and " + other.header + ": one is of a " +
                  std::string(list) + " row and one of a " + std::string(otherList) +
                  " row, and a line holds one row");
  }

  void SetColumns(const CsvRecord& line, bool ofDetail) {
    for (const ImportTarget& target : plan_.targets) {
      if (target.column.property->ofDetail != ofDetail) continue;
      try {
        SetColumn(line, target);
      } catch (const ValueError& error) {
        throw BadLine(InColumn(target) + error.what());
      } catch (const Error& error) {
        throw BadLine(InColumn(target) + Printable(error.Description()));
      }
    }
  }

  void SetColumn(const CsvRecord& record, const ImportTarget& target) {
    const std::string& text = record.fields[target.field];
    if (text.empty()) return;  // as the blank row has it
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

  [[nodiscard]] std::string LeftOut() const {
    const std::string bad = Counted(badLines_, "bad line") + " left out";
    if (goodLinesLeftOut_ == 0) return bad;
    return bad + ", and with them " + Counted(goodLinesLeftOut_, "line") +
           " that may belong to the "
           "same " +
           std::string(rows_.Noun()) + "s";
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
  std::int64_t goodLinesLeftOut_ = 0;
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
      "the column Name(1). An empty field sets nothing. Text is cut at the width of its field, "
      "and\n"
      "what Windows-1252 lacks becomes \"?\": both are reported with line and column.\n\n"
      "Of a journal a line is one row of a transaction, in columns such as DetailAmount, and "
      "bears\n"
      "the columns of the transaction too. Neighbouring lines make one transaction where they "
      "have\n"
      "the same NRecord, or else agree in all columns of the transaction; a line without any "
      "value\n"
      "of a row adds none. A transaction without NRecord gets MaxNRecord + 1, one without "
      "TrxNumberL\n"
      "MaxTrxNumberL(Period) + 1, and so on from there. A transaction with a bad line is left out "
      "as\n"
      "a whole.\n\n"
      "A line of a paycheck is a pay row where it has a value in a column such as PayAmount, and "
      "a\n"
      "job row where it has one in a column such as JobAmount; it cannot be both. The pay rows "
      "stand\n"
      "ahead of the job rows, and each job row has a JobJobIndex. JobEmployeeID cannot be set: it\n"
      "reads another employee than it is given.");
  command->callback([arguments] {
    const std::unique_ptr<RowSource> rows = arguments->rows.Open(Access::Write);
    Import(*arguments, *rows).Run();
  });
}

}  // namespace larkmoor::cli
