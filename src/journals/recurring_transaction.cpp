#include "connection/conversions.h"
#include "journals/recurring_transaction_parts.h"

namespace larkmoor {

// The day stays as it is. What is stored is the day that was there before, as a number, in the
// counter of changes.
void RecurringTransaction::NextDate(const Variant&) {
  LastUpdateCounter(Variant(DateToRecord(NextDate())).ToLong());
}

}  // namespace larkmoor
