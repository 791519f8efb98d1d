#include "row_source.h"

#include <larkmoor/status.h>

#include "class_rows.h"
#include "company_files.h"
#include "engine/records/all_records.h"
#include "failure.h"
#include "journal_rows.h"
#include "journal_shape.h"
#include "record_rows.h"
#include "text_tools.h"

namespace larkmoor::cli {
namespace {

/// A class opens its file for writing. On a medium that refuses it, the fields of its record can
/// still be read.
std::unique_ptr<RowSource> OpenClass(const automation::Class& type, Access access) {
  if (IsJournal(type)) return std::make_unique<JournalRows>(type);
  try {
    return std::make_unique<ClassRows>(type);
  } catch (const Failure& failure) {
    const bool isRefused = failure.BtrieveStatus() == StatusPermission;
    if (!isRefused || access == Access::Write || type.record == nullptr) throw;
    return std::make_unique<RecordRows>(*type.record, access);
  }
}

}  // namespace

std::unique_ptr<RowSource> OpenRows(const std::string& folder, std::string_view name,
                                    Access access) {
  const automation::Class* type = automation::FindClass(name);
  const RecordDescription* record = type == nullptr ? FindRecord(name) : nullptr;
  if (type == nullptr && record == nullptr) {
    throw UsageError("there is no class and no record description " + Quoted(name));
  }
  Connect(folder);
  if (type != nullptr) return OpenClass(*type, access);
  return std::make_unique<RecordRows>(*record, access);
}

}  // namespace larkmoor::cli
