#pragma once

#include <larkmoor/masters/line_item.h>

#include "engine/records/line_item.h"
#include "engine/tovrin_file_names.h"
#include "masters/bill_of_material.h"
#include "tables/account_look_up.h"
#include "tables/table_frame.h"

namespace larkmoor {

struct LineItem::Parts {
  TableFrame table{LineItemRecord::Describe(), TovrinFileNames::LineItemFile()};
  AccountLookUp accounts{AccountLookUp::OpenedBy::FirstUse};
  MasterLookUp employees{EmployeeTable};
  BillOfMaterial bill{table};

  /// From this release on the components lie in the file of revisions, before in the item's record.
  [[nodiscard]] bool HasRevisions() const { return table.FileVersion() >= 11.5; }
};

}  // namespace larkmoor
