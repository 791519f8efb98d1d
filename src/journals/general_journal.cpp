#include <larkmoor/journals/general_journal.h>

#include "journals/general_journal_parts.h"

namespace larkmoor {

// Rows have no such marks of their own: both show whether the transaction is reversed, with the row
// in hand all the same.

bool GeneralJournal::DetailPosted(std::int16_t Index) { return DetailReversed(Index); }

void GeneralJournal::DetailPosted(std::int16_t Index, bool value) { DetailReversed(Index, value); }

bool GeneralJournal::DetailReversed(std::int16_t Index) {
  parts_->journal.Row(Index);
  return Reversed();
}

void GeneralJournal::DetailReversed(std::int16_t Index, bool value) {
  parts_->journal.Row(Index);
  Reversed(value);
}

}  // namespace larkmoor
