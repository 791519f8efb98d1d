#include "tables/quantity_discount_parts.h"

namespace larkmoor {

// Clients know this property as one that reads 0 and overwrites LastUpdateCounter in the record in
// hand.
std::int16_t QuantityDiscount::Unused1() {
  LastUpdateCounter(parts_->table.Record().GetInteger(QuantityDiscountRecord::Unused1));
  return 0;
}

}  // namespace larkmoor
