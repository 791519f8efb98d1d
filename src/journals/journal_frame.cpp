#include "journals/journal_frame.h"

#include "connection/conversions.h"
#include "connection/shared_routines.h"
#include "connection/shared_state.h"
#include "journals/header_fields.h"

namespace larkmoor {

// --- Operations ---

Status JournalFrame::OpenFile() {
  const Status status = OpenTransactions();
  return status == StatusSuccess ? OpenAccounts() : status;
}

Status JournalFrame::OpenTransactions() {
  const Status status = TransactionFrame::OpenTransactions();
  if (status == StatusSuccess) Shared().gDataVersion = File().btDataVersion();
  return status;
}

Status JournalFrame::GetEqual(std::int32_t nRecord) {
  File().KeyLong(nRecord, 0);
  const Status status =
      ReadHeader(&TovrinFile::btGetEqual, HeaderKey::ByNRecord(Shared().gDataVersion));
  return status == StatusSuccess ? LoadRows() : status;
}

// The journal is looked at before the status: a failed search whose record shows another journal's
// transaction ends the walk too.
Status JournalFrame::ReadFirst(std::int16_t period) {
  GoByPeriod();
  const Status status = SearchPeriod(code_, Clamp(period, 0, HighestPeriod));
  if (JournalID() != code_) return StatusEndOfFile;
  return status == StatusSuccess ? LoadRows() : status;
}

Status JournalFrame::ReadNext() {
  const Status status = NextHeader();
  if (status != StatusSuccess) return status;
  return JournalID() == code_ ? LoadRows() : StatusEndOfFile;
}

Status JournalFrame::ReadFirstForParty(std::int32_t index) {
  // The index is written over the upper half of the journal.
  File().KeyLong(code_, 0);
  File().KeyLong(index, 2);
  File().KeyTerminated("", 6);
  return LoadNextOfJournal(
      ReadHeader(&TovrinFile::btGetGreaterOrEqual, HeaderKey::ByParty(Shared().gDataVersion)));
}

Status JournalFrame::ReadNextByParty() {
  const Status status =
      ReadHeader(&TovrinFile::btGetNext, HeaderKey::ByParty(Shared().gDataVersion));
  if (status != StatusSuccess) return status;
  return JournalID() == code_ ? LoadRows() : StatusEndOfFile;
}

// The key of newer data, whatever the release: older data has one of that number too.
Status JournalFrame::GetForReference(std::string_view reference) {
  constexpr std::int16_t ByReference = 4;
  File().KeyTerminated(reference, 0);
  return LoadNextOfJournal(ReadHeader(&TovrinFile::btGetEqual, ByReference));
}

/// Goes on from a search's status until a transaction of the journal is in hand.
Status JournalFrame::LoadNextOfJournal(Status status) {
  while (status == StatusSuccess && JournalID() != code_) status = NextHeader();
  return status == StatusSuccess ? LoadRows() : status;
}

Status JournalFrame::IncrementBatchCount() { return IncrementBatchEntry(code_) ? -1 : 0; }

Status JournalFrame::GetForKey(std::uint8_t Subindex1, std::int16_t TrxNumber, std::int16_t Period,
                               std::int16_t JournalID, std::int16_t Subindex2) {
  return GetForKeyL(Subindex1, TrxNumber, Period, JournalID, Subindex2);
}

Status JournalFrame::GetForKeyL(std::uint8_t Subindex1, std::int32_t TrxNumber, std::int16_t Period,
                                std::int16_t JournalID, std::int16_t Subindex2) {
  HeaderKey::Write(File(), Shared().gDataVersion,
                   {Subindex1, TrxNumber, Period, JournalID, Subindex2});
  return ReadHeader(&TovrinFile::btGetEqual, HeaderKey::Whole);
}

// --- Properties ---

double JournalFrame::Key() { return KeyOfHeader(Record()); }

void JournalFrame::Key(double value) { TakeKey(value, Record()); }

std::string JournalFrame::MainAccount() {
  if (!HasMainAccount(Shared().gDataVersion)) return {};
  return Accounts().AccountID(Record().GetLong(JrnlHdrRecord::MainAccountIndex), MainAccountSource);
}

void JournalFrame::MainAccount(std::string_view value) {
  if (!HasMainAccount(Shared().gDataVersion)) return;
  Record().SetLong(JrnlHdrRecord::MainAccountIndex,
                   Accounts().AccountIndex(value, MainAccountSource));
}

std::int32_t JournalFrame::MaxNRecord() { return larkmoor::MaxNRecord(); }

std::int16_t JournalFrame::MaxTrxNumber(std::int16_t Period) {
  return LongToInteger(MaxTrxNumberL(Period));
}

std::int32_t JournalFrame::MaxTrxNumberL(std::int16_t Period) {
  return larkmoor::MaxTrxNumber(Period, code_);
}

Status JournalFrame::SearchPeriod(std::int16_t journal, std::int16_t period) {
  File().KeyWord(journal, 0);
  File().KeyWord(period, 2);
  File().KeyTerminated("", 4);
  return File().btGetGreaterOrEqual(HeaderKey::ByPeriod);
}

// --- A journal with one list of rows ---

std::int16_t ListedJournal::NDistributions() { return Variant(rows_.Count()).ToInteger(); }

std::string ListedJournal::DetailGLAccount(std::int16_t Index) {
  return Accounts().AccountID(Row(Index).GetLong(JrnlRowRecord::AccountIndex), "DetailGLAccount");
}

void ListedJournal::DetailGLAccount(std::int16_t Index, std::string_view value) {
  Tovrin2Record& row = Row(Index);
  row.SetLong(JrnlRowRecord::AccountIndex, Accounts().AccountIndex(value, "DetailGLAccount"));
}

}  // namespace larkmoor
