#include "row_source.h"

#include <larkmoor/connection/btrieve.h>

#include "class_rows.h"
#include "engine/records/all_records.h"
#include "failure.h"
#include "record_rows.h"
#include "text_tools.h"

namespace larkmoor::cli {

std::unique_ptr<RowSource> OpenRows(const std::string& folder, std::string_view name,
                                    Access access) {
  const automation::Class* type = automation::FindClass(name);
  const RecordDescription* record = type == nullptr ? FindRecord(name) : nullptr;
  if (type == nullptr && record == nullptr) {
    throw UsageError("there is no class and no record description " + Quoted(name));
  }
  Btrieve connection;
  Require(connection.Connect(folder).ToInteger(), folder.empty() ? "no folder" : folder);
  if (type != nullptr) return std::make_unique<ClassRows>(*type);
  return std::make_unique<RecordRows>(*record, access);
}

}  // namespace larkmoor::cli
