#pragma once

#include <larkmoor/journal_code.h>
#include <larkmoor/journals/assembly_adjustment_journal.h>

#include "journals/journal_frame.h"

namespace larkmoor {

struct AssemblyAdjustmentJournal::Parts {
  ListedJournal journal{"AssemblyAdjustmentJournal", tovJournalCodeAssemblyAdjustment};

  /// The row that tells why the assemblies are built, 0 where there is none. Every row on the way
  /// to it is in hand once.
  std::int16_t ReasonRow() {
    for (std::int16_t row = 1; row <= journal.RowCount(); ++row) {
      if (journal.Row(row).GetInteger(JrnlRowRecord::LineNo) == 0) return row;
    }
    return 0;
  }
};

}  // namespace larkmoor
