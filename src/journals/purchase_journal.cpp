#include "journals/purchase_journal_parts.h"

namespace larkmoor {

// Reading shows the row all the same.
bool PurchaseJournal::DetailApplyToPO(std::int16_t Index) {
  parts_->journal.Row(Index);
  return false;
}

void PurchaseJournal::DetailApplyToPO(std::int16_t, bool) {}

}  // namespace larkmoor
