#include "import_entries.h"

#include <string>
#include <string_view>
#include <utility>

#include "engine/text.h"
#include "journal_shape.h"
#include "text_tools.h"

namespace larkmoor::cli {
namespace {

std::string_view TextIn(const CsvRecord& line, const ImportTarget& target) {
  return TrimBlanks(line.fields[target.field]);
}

/// The line's `NRecord`, empty where it is to be given one.
std::string_view NumberIn(const CsvRecord& line, const ImportPlan& plan) {
  for (const ImportTarget& target : plan.targets) {
    if (target.column.property->name != JournalProperty::NRecord) continue;
    const std::string_view number = TextIn(line, target);
    return number == "0" ? std::string_view() : number;
  }
  return {};
}

}  // namespace

std::string ProblemOf(const CsvRecord& line, const ImportPlan& plan) {
  if (!line.problem.empty() || line.fields.size() == plan.fieldCount) return line.problem;
  return Counted(static_cast<std::int64_t>(line.fields.size()), "field") +
         " where the header has " + std::to_string(plan.fieldCount);
}

std::string DisagreementOf(const CsvRecord& first, const CsvRecord& line, const ImportPlan& plan) {
  for (const ImportTarget& target : plan.targets) {
    if (target.column.property->ofDetail) continue;
    if (TextIn(first, target) != TextIn(line, target)) return target.header;
  }
  return {};
}

EntryReader::EntryReader(CsvReader& reader, const ImportPlan& plan)
    : reader_(reader), plan_(plan) {}

std::vector<CsvRecord> EntryReader::Next() {
  if (!ahead_) ahead_ = reader_.Next();
  std::vector<CsvRecord> lines;
  while (ahead_ && (lines.empty() || Continues(lines.back(), *ahead_))) {
    lines.push_back(*std::exchange(ahead_, std::nullopt));
    ahead_ = reader_.Next();
  }
  return lines;
}

bool EntryReader::Continues(const CsvRecord& last, const CsvRecord& next) const {
  if (!plan_.HasDetails()) return false;
  if (!ProblemOf(last, plan_).empty() || !ProblemOf(next, plan_).empty()) return true;
  const std::string_view number = NumberIn(last, plan_);
  if (!number.empty()) return NumberIn(next, plan_) == number;
  return DisagreementOf(last, next, plan_).empty();
}

}  // namespace larkmoor::cli
