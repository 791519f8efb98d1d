#pragma once

#include <larkmoor/journal_code.h>
#include <larkmoor/journals/cash_receipt_journal.h>

#include "journals/journal_frame.h"
#include "tables/master_look_up.h"

namespace larkmoor {

struct CashReceiptJournal::Parts {
  ListedJournal journal{"CashReceiptJournal", tovJournalCodeCashReceipt};
  MasterLookUp employees{EmployeeTable};
};

}  // namespace larkmoor
