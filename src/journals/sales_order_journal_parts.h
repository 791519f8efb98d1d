#pragma once

#include <larkmoor/journal_code.h>
#include <larkmoor/journals/sales_order_journal.h>

#include "journals/journal_frame.h"
#include "tables/master_look_up.h"

namespace larkmoor {

struct SalesOrderJournal::Parts {
  ListedJournal journal{"SalesOrderJournal", tovJournalCodeSalesOrder};
  MasterLookUp employees{EmployeeTable};
};

}  // namespace larkmoor
