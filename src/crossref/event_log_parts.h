#pragma once

#include <array>

#include <larkmoor/crossref/event_log.h>

#include "engine/records/event_log.h"
#include "engine/tovrin_file_names.h"
#include "tables/master_look_up.h"
#include "tables/table_frame.h"

namespace larkmoor {

struct EventLog::Parts {
  TableFrame table{EventLogRecord::Describe(), TovrinFileNames::EventLogFile()};
  MasterLookUp customers{CustomerTable};
  MasterLookUp employees{EmployeeTable};
  MasterLookUp vendors{VendorTable};

  /// All look-up files, in the order in which they are closed.
  [[nodiscard]] std::array<MasterLookUp*, 3> LookUps() {
    return {&customers, &employees, &vendors};
  }
};

}  // namespace larkmoor
