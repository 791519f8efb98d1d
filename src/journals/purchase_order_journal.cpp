#include "connection/shared_routines.h"
#include "journals/order_quantity.h"
#include "journals/purchase_order_journal_parts.h"

namespace larkmoor {

double PurchaseOrderJournal::DetailQuantity(std::int16_t Index) {
  return parts_->journal.Row(Index).GetDouble(OrderedQuantity());
}

void PurchaseOrderJournal::DetailQuantity(std::int16_t Index, double value) {
  parts_->journal.Row(Index).SetDouble(OrderedQuantity(), value);
}

// Line 300 reads as 44: old clients have a byte for it. `DetailPOLine2` reads every line.
std::uint8_t PurchaseOrderJournal::DetailPOLine(std::int16_t Index) {
  return static_cast<std::uint8_t>(DetailPOLine2(Index));
}

void PurchaseOrderJournal::DetailPOLine(std::int16_t Index, std::uint8_t value) {
  DetailPOLine2(Index, value);
}

std::string PurchaseOrderJournal::LastPONumber() { return ReadLastPONumber(); }

void PurchaseOrderJournal::LastPONumber(std::string_view value) { WriteLastPONumber(value); }

}  // namespace larkmoor
