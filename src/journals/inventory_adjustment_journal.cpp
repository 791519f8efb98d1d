#include "journals/inventory_adjustment_journal_parts.h"

namespace larkmoor {

// Rows have no such mark of their own: it shows whether the transaction is reversed, with the row
// in hand all the same.

bool InventoryAdjustmentJournal::DetailPosted(std::int16_t Index) {
  parts_->journal.Row(Index);
  return parts_->journal.Record().GetBoolean(JrnlHdrRecord::Reversed);
}

void InventoryAdjustmentJournal::DetailPosted(std::int16_t Index, bool value) {
  parts_->journal.Row(Index);
  parts_->journal.Record().SetBoolean(JrnlHdrRecord::Reversed, value);
}

}  // namespace larkmoor
