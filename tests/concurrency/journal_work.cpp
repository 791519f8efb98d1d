#include "concurrency/journal_work.h"

#include <iterator>

#include <larkmoor/journal_code.h>

#include "concurrency/transaction_rows_check.h"

namespace larkmoor::test {
namespace {

/// Transactions that one walk reads at most.
constexpr int WalkLength = 20;
/// The accounting periods of the invoices.
constexpr int Periods = 12;
/// Numbers of transactions that each worker has to itself.
constexpr std::int32_t NumbersOfAWorker = 1'000'000;

template <typename Journal>
void OpenJournal(Journal& journal) {
  Require(journal.OpenFile() == StatusSuccess, "a journal does not open");
}

/// Between the rows and the header of a transaction that is taken away there is a moment in which
/// the header has none.
constexpr std::initializer_list<Status> WithoutRows = {StatusEndOfFile};

}  // namespace

void PostSharedEntries(Worker& worker) {
  GeneralJournal journal;
  OpenJournal(journal);
  for (std::int32_t number = 1; number <= SharedEntries; ++number) {
    journal.ClearRecord();
    journal.JournalID(tovJournalCodeGeneral);
    journal.NRecord(number);
    journal.Period(1);
    journal.Reference("0");
    FillRows(journal, "start", worker.dice);
    Require(journal.Insert() == StatusSuccess, "an entry cannot be posted");
  }
  Require(journal.CloseFile() == StatusSuccess, "a journal does not close");
}

// --- Entries that all rewrite ---

void EntryWork::Open() { OpenJournal(journal_); }

void EntryWork::Reopen() {
  journal_.CloseFile();
  Open();
}

void EntryWork::Do() {
  if (!writes_ && worker_.dice.OneIn(4)) return Walk();
  const auto number = 1 + worker_.dice.PlaceIn(SharedEntries);
  worker_.Count(Kind::Read, journal_.GetEqual(static_cast<std::int32_t>(number)), "GetEqual");
  Require(!MarkOfRows(journal_).empty(), "an entry without rows");
  const int times = std::stoi(journal_.Reference());
  Require(times >= seen_[number], "a header went back to an older state");
  seen_[number] = times;
  if (writes_) Rewrite(number);
}

void EntryWork::Rewrite(std::size_t number) {
  FillRows(journal_, std::to_string(worker_.number) + "." + std::to_string(++serial_),
           worker_.dice);
  journal_.Reference(std::to_string(seen_[number] + 1));
  const Status status = worker_.Count(Kind::Transaction, journal_.Update(), "Update of an entry",
                                      {StatusRecordConflict});
  if (status != StatusSuccess) return;
  ++worker_.tally.raised[static_cast<std::size_t>(Counted::Entry)][number];
}

// A reference is a part of the key on which the walk goes: an entry that is rewritten meanwhile may
// be met again further on, or not at all.
void EntryWork::Walk() {
  Status status = worker_.Count(Kind::Read, journal_.ReadFirst(1), "ReadFirst", WithoutRows);
  for (int step = 0; status == StatusSuccess && step < WalkLength; ++step) {
    Require(!MarkOfRows(journal_).empty(), "an entry without rows");
    status = worker_.Count(Kind::Read, journal_.ReadNext(), "ReadNext", {StatusEndOfFile});
  }
}

// --- Invoices of the worker's own ---

void InvoiceWork::Open() { OpenJournal(journal_); }

void InvoiceWork::Reopen() {
  journal_.CloseFile();
  Open();
}

void InvoiceWork::Do() {
  if (marks_.empty() || worker_.dice.OneIn(3)) return Post();
  const auto any = std::next(marks_.begin(), worker_.dice.Below(static_cast<int>(marks_.size())));
  const std::int32_t nRecord = any->first;
  ReadBack(nRecord);
  if (worker_.dice.OneIn(4)) {
    Take(nRecord);
  } else {
    Change(nRecord);
  }
}

std::string InvoiceWork::NewMark() {
  return std::to_string(worker_.number) + "." + std::to_string(++serial_);
}

void InvoiceWork::Post() {
  const std::string mark = NewMark();
  const std::int32_t nRecord = (worker_.number + 1) * NumbersOfAWorker + serial_;
  journal_.ClearRecord();
  journal_.JournalID(tovJournalCodeSales);
  journal_.NRecord(nRecord);
  journal_.Period(static_cast<std::int16_t>(1 + worker_.dice.Below(Periods)));
  journal_.InvoiceNumber(mark);
  FillRows(journal_, mark, worker_.dice);
  worker_.Count(Kind::Transaction, journal_.Insert(), "Insert of an invoice");
  marks_[nRecord] = journal_.DetailDescription(1);
  ++worker_.tally.invoices;
}

void InvoiceWork::Change(std::int32_t nRecord) {
  FillRows(journal_, NewMark(), worker_.dice);
  worker_.Count(Kind::Transaction, journal_.Update(), "Update of an invoice");
  marks_[nRecord] = journal_.DetailDescription(1);
}

void InvoiceWork::Take(std::int32_t nRecord) {
  worker_.Count(Kind::Transaction, journal_.Delete(), "Delete of an invoice");
  marks_.erase(nRecord);
  --worker_.tally.invoices;
}

void InvoiceWork::ReadBack(std::int32_t nRecord) {
  worker_.Count(Kind::Read, journal_.GetEqual(nRecord), "GetEqual of an invoice");
  Require(MarkOfRows(journal_) == marks_.at(nRecord), "an invoice is not as its writer left it");
}

void InvoiceWork::Finish() {
  for (const auto& [nRecord, mark] : marks_) ReadBack(nRecord);
}

// --- Walks over everyone's invoices ---

void InvoiceWalk::Open() { OpenJournal(journal_); }

void InvoiceWalk::Reopen() {
  journal_.CloseFile();
  Open();
}

void InvoiceWalk::Do() {
  const auto period = static_cast<std::int16_t>(1 + worker_.dice.Below(Periods));
  Status status =
      worker_.Count(Kind::Read, journal_.ReadFirst(period), "ReadFirst", {StatusEndOfFile});
  for (int step = 0; status == StatusSuccess && step < WalkLength; ++step) {
    Require(journal_.Period() >= period, "a walk goes back");
    MarkOfRows(journal_);
    status = worker_.Count(Kind::Read, journal_.ReadNext(), "ReadNext", {StatusEndOfFile});
  }
}

}  // namespace larkmoor::test
