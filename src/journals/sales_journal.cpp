#include "connection/conversions.h"
#include "connection/shared_routines.h"
#include "journals/header_key.h"
#include "journals/sales_journal_parts.h"
#include "journals/sales_rep.h"

namespace larkmoor {
namespace {

/// The header's `JournalID` of a quote.
constexpr std::int16_t QuoteCode = 12;

}  // namespace

// --- Operations ---

Status SalesJournal::CloseFile() {
  return parts_->journal.CloseFile({{parts_->employees, "Employee"}});
}

// Invoices first, quotes where there is none.
Status SalesJournal::ReadFirst(std::int16_t Period) {
  JournalFrame& journal = parts_->journal;
  journal.GoByPeriod();
  parts_->walked = tovJournalCodeSales;
  parts_->period = Clamp(Period, 0, HighestPeriod);
  Status status = journal.SearchPeriod(parts_->walked, parts_->period);
  if (JournalID() != tovJournalCodeSales || status == StatusEndOfFile) {
    status = journal.SearchPeriod(QuoteCode, parts_->period);
    if (JournalID() != QuoteCode) status = StatusEndOfFile;
  }
  if (status != StatusSuccess) return status;
  if (JournalID() != tovJournalCodeSales) parts_->walked = QuoteCode;
  return journal.LoadRows();
}

Status SalesJournal::ReadNext() {
  JournalFrame& journal = parts_->journal;
  Status status = journal.NextHeader();
  if (JournalID() != parts_->walked || status == StatusEndOfFile) {
    if (parts_->walked != tovJournalCodeSales) return StatusEndOfFile;
    parts_->walked = QuoteCode;
    status = journal.SearchPeriod(QuoteCode, parts_->period);
  }
  if (status != StatusSuccess) return status;
  return JournalID() == parts_->walked ? journal.LoadRows() : StatusEndOfFile;
}

// --- Properties ---

bool SalesJournal::Quote() { return JournalID() == QuoteCode; }

void SalesJournal::Quote(bool) {}

std::string SalesJournal::SalesRepID() {
  return SalesRepOf(parts_->journal.Record(), parts_->employees);
}

void SalesJournal::SalesRepID(std::string_view value) {
  parts_->journal.Record().SetLong(JrnlHdrRecord::SalesRepIndex, EmployeeIndexFromID(value));
}

std::string SalesJournal::NextInvoiceNumber() { return ReadNextInvoiceNumber(); }

void SalesJournal::NextInvoiceNumber(std::string_view value) { WriteNextInvoiceNumber(value); }

std::string SalesJournal::NextQuoteNumber() { return ReadNextQuoteNumber(); }

void SalesJournal::NextQuoteNumber(std::string_view value) { WriteNextQuoteNumber(value); }

}  // namespace larkmoor
