// What was ordered, in the rows of sales and purchase orders.
#pragma once

#include "connection/shared_state.h"
#include "engine/records/jrnl_row.h"

namespace larkmoor {

/// The row's field for it, which is another one from release 19 on.
inline const Field& OrderedQuantity() {
  return Shared().gDataVersion >= 19.0 ? JrnlRowRecord::Quantity : JrnlRowRecord::QuantityOrdered;
}

}  // namespace larkmoor
