#pragma once

#include <array>

#include <larkmoor/crossref/alarm.h>

#include "engine/records/alarm.h"
#include "engine/tovrin_file_names.h"
#include "tables/guarded_look_up.h"
#include "tables/table_frame.h"

namespace larkmoor {

struct Alarm::Parts {
  TableFrame table{AlarmRecord::Describe(), TovrinFileNames::AlarmFile()};
  GuardedLookUp accounts{AccountTable};
  GuardedLookUp customers{CustomerTable};
  GuardedLookUp employees{EmployeeTable};
  GuardedLookUp items{ItemTable};
  GuardedLookUp vendors{VendorTable};

  /// All look-up files, in the order in which they are closed.
  [[nodiscard]] std::array<GuardedLookUp*, 5> LookUps() {
    return {&accounts, &customers, &employees, &items, &vendors};
  }
};

}  // namespace larkmoor
