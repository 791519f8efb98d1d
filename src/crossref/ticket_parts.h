#pragma once

#include <array>

#include <larkmoor/crossref/ticket.h>

#include "engine/records/ticket.h"
#include "engine/tovrin_file_names.h"
#include "tables/master_look_up.h"
#include "tables/table_frame.h"

namespace larkmoor {

struct Ticket::Parts {
  TableFrame table{TicketRecord::Describe(), TovrinFileNames::TicketFile()};
  MasterLookUp costs{CostTable};
  MasterLookUp customers{CustomerTable};
  MasterLookUp employees{EmployeeTable};
  MasterLookUp jobs{JobTable};
  MasterLookUp phases{PhaseTable};
  MasterLookUp vendors{VendorTable};

  /// All look-up files, in the order in which they are closed.
  [[nodiscard]] std::array<MasterLookUp*, 6> LookUps() {
    return {&costs, &customers, &employees, &jobs, &phases, &vendors};
  }
};

}  // namespace larkmoor
