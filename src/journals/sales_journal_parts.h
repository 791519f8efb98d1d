#pragma once

#include <larkmoor/journal_code.h>
#include <larkmoor/journals/sales_journal.h>

#include "journals/journal_frame.h"
#include "tables/master_look_up.h"

namespace larkmoor {

struct SalesJournal::Parts {
  ListedJournal journal{"SalesJournal", tovJournalCodeSales};
  MasterLookUp employees{EmployeeTable};
  std::int16_t period = 0;  ///< of the last `ReadFirst`
  std::int16_t walked = 0;  ///< the journal under way: invoices, then quotes
};

}  // namespace larkmoor
