#pragma once

#include <array>

#include <larkmoor/journals/jrnl_row.h>

#include "engine/records/jrnl_row.h"
#include "engine/tovrin_file_names.h"
#include "tables/account_look_up.h"
#include "tables/table_frame.h"

namespace larkmoor {

struct JrnlRow::Parts {
  TableFrame table{JrnlRowRecord::Describe(), TovrinFileNames::JrnlRowFile()};
  AccountLookUp accounts{AccountLookUp::OpenedBy::FirstUse};
  MasterLookUp costs{CostTable};
  MasterLookUp phases{PhaseTable};
  MasterLookUp employees{EmployeeTable};

  /// All look-up files, in the order in which they are closed.
  [[nodiscard]] std::array<MasterLookUp*, 4> LookUps() {
    return {&accounts, &costs, &phases, &employees};
  }
};

}  // namespace larkmoor
