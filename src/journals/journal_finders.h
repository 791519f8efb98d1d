// Searches that several journals share: by the customer or vendor, and by the reference.
#pragma once

#include <cstdint>
#include <string_view>

#include <larkmoor/status.h>

namespace larkmoor {

class JournalFrame;

/// The first transaction of the journal at or after the party of that index, with its rows. Skips
/// other journals and does not compare the index, so that it may be another party's.
Status ReadFirstForParty(JournalFrame& journal, std::int32_t index);
/// The next one. A transaction of another journal ends the walk.
Status ReadNextByParty(JournalFrame& journal);

/// The transaction of that reference, with its rows. Where the reference found is another journal's
/// the search goes on, and may end at a later reference.
Status GetForReference(JournalFrame& journal, std::string_view reference);

}  // namespace larkmoor
