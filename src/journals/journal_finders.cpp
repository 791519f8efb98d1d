#include "journals/journal_finders.h"

#include "connection/shared_state.h"
#include "journals/header_key.h"
#include "journals/journal_frame.h"

namespace larkmoor {
namespace {

constexpr std::int16_t ByReference = 4;

/// Goes on from a search's status until a transaction of the journal is in hand, and loads its
/// rows.
Status LoadNextOfJournal(JournalFrame& journal, Status status) {
  while (status == StatusSuccess && journal.JournalID() != journal.Code()) {
    status = journal.NextHeader();
  }
  return status == StatusSuccess ? journal.LoadRows() : status;
}

}  // namespace

Status ReadFirstForParty(JournalFrame& journal, std::int32_t index) {
  // The index is written over the upper half of the journal.
  journal.File().KeyLong(journal.Code(), 0);
  journal.File().KeyLong(index, 2);
  journal.File().KeyTerminated("", 6);
  return LoadNextOfJournal(journal, journal.ReadHeader(&TovrinFile::btGetGreaterOrEqual,
                                                       HeaderKey::ByParty(Shared().gDataVersion)));
}

Status ReadNextByParty(JournalFrame& journal) {
  const Status status =
      journal.ReadHeader(&TovrinFile::btGetNext, HeaderKey::ByParty(Shared().gDataVersion));
  if (status != StatusSuccess) return status;
  return journal.JournalID() == journal.Code() ? journal.LoadRows() : StatusEndOfFile;
}

Status GetForReference(JournalFrame& journal, std::string_view reference) {
  journal.File().KeyTerminated(reference, 0);
  return LoadNextOfJournal(journal, journal.ReadHeader(&TovrinFile::btGetEqual, ByReference));
}

}  // namespace larkmoor
