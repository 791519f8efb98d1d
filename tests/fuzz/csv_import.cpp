// A CSV file, imported into a class, exported, and imported again.
//
// The first byte of an input tells the class. What is written is gathered in a batch, which is
// dropped, so that each run finds the company as it was made.
#include <algorithm>
#include <array>
#include <iostream>
#include <memory>
#include <optional>
#include <sstream>
#include <string>
#include <vector>

#include <larkmoor/company.h>
#include <larkmoor/error.h>

#include "commands/commands.h"
#include "company_files.h"
#include "csv.h"
#include "engine/store/driver.h"
#include "failure.h"
#include "fuzz/input_reader.h"
#include "fuzz/restored_file.h"
#include "fuzz/shared_state_kept.h"
#include "support/company.h"

namespace larkmoor::fuzz {
namespace {

constexpr std::array<const char*, 8> Classes = {"Address",      "Customer",       "GeneralJournal",
                                                "SalesJournal", "PayrollJournal", "JrnlRow",
                                                "Contact",      "EventLog"};

// Text --------------------------------------------------------------------------------------------

std::vector<std::vector<std::string>> RecordsIn(const std::string& text) {
  std::istringstream in(text);
  cli::CsvReader reader(in);
  std::vector<std::vector<std::string>> records;
  while (const auto record = reader.Next()) {
    if (record->problem.empty()) records.push_back(record->fields);
  }
  return records;
}

void CheckText(const std::string& text) {
  std::vector<std::vector<std::string>> records = RecordsIn(text);
  // What begins a file may be read as a byte order mark; all that is written begins with titles.
  records.insert(records.begin(), {"Title"});
  std::ostringstream out;
  for (const std::vector<std::string>& record : records) cli::WriteCsv(out, record);
  Must(RecordsIn(out.str()) == records, "records that were written read the same");
}

// Records -----------------------------------------------------------------------------------------

/// Catches what is written to a stream.
class Caught {
 public:
  explicit Caught(std::ostream& stream) : stream_(stream), before_(stream.rdbuf(text_.rdbuf())) {}
  ~Caught() { stream_.rdbuf(before_); }
  Caught(const Caught&) = delete;
  Caught& operator=(const Caught&) = delete;

  [[nodiscard]] std::string Text() const { return text_.str(); }

 private:
  std::ostream& stream_;
  std::ostringstream text_;
  std::streambuf* before_;
};

/// A company and the commands on it.
class Commands {
 public:
  Commands() {
    CreateCompany(Company(), {.Name = "Harbour Trading"});
    for (const auto& file : cli::RecordFiles(Company(), {})) {
      store::DefaultDriver().Open(file, store::OpenMode::Normal, open_.emplace_back());
    }
  }

  /// Imports the good lines of the text, and tells whether all of it was good.
  [[nodiscard]] bool Import(const std::string& name, const std::string& text) const {
    Overwrite(File(), text);
    return Run(cli::AddImportCommand, {"import", Company(), name, File(), "--keep-going"})
        .has_value();
  }

  [[nodiscard]] std::optional<std::string> Export(const std::string& name) const {
    return Run(cli::AddExportCommand, {"export", Company(), name});
  }

 private:
  [[nodiscard]] std::string Company() const { return (folder_.Path() / "company").string(); }
  [[nodiscard]] std::string File() const { return (folder_.Path() / "lines.csv").string(); }

  /// What the command prints; nothing where it fails in a way that a command may.
  static std::optional<std::string> Run(void (*addCommand)(CLI::App&),
                                        std::vector<std::string> arguments) {
    CLI::App app;
    addCommand(app);
    const Caught output(std::cout);
    const Caught errors(std::cerr);
    std::ranges::reverse(arguments);  // as the parser wants them
    try {
      app.parse(arguments);
    } catch (const cli::Failure&) {
      return std::nullopt;
    } catch (const Error&) {
      return std::nullopt;
    }
    return output.Text();
  }

  test::TempFolder folder_;
  /// All files of the company. To open what is open already costs little.
  std::vector<std::unique_ptr<store::File>> open_;
};

struct Imported {
  bool isWhole;
  std::string exported;
};

/// Imports a text into the class's empty table, and exports all of it.
Imported ImportAndExport(const std::string& name, const std::string& text) {
  static const Commands commands;
  const auto dropped = store::DefaultDriver().BeginBatch();
  const bool isWhole = commands.Import(name, text);
  const std::optional<std::string> exported = commands.Export(name);
  Must(exported.has_value(), "what was imported can be exported");
  return {isWhole, *exported};
}

}  // namespace

void CsvImport(Input input) {
  const SharedStateKept kept;
  InputReader reader(input);
  const std::string name = Classes[reader.TakeChoice(Classes.size())];
  const std::string text(TextOf(reader.TakeRest()));
  CheckText(text);
  const Imported first = ImportAndExport(name, text);
  const Imported second = ImportAndExport(name, first.exported);
  Must(second.isWhole, "what was exported can be imported");
  Must(second.exported == first.exported, "what was exported is the same after an import");
}

}  // namespace larkmoor::fuzz
