#include "connection/shared_routines.h"
#include "journals/order_quantity.h"
#include "journals/sales_order_journal_parts.h"
#include "journals/sales_rep.h"

namespace larkmoor {
namespace {

/// The tax type of lines that `DetailTaxFlag` is true of.
constexpr std::int16_t FlaggedTaxType = 5;

/// What old clients are given for a number of lines: its digits with "255" behind them, as a Byte.
/// Only 0 survives, as 255; all else raises error 6.
std::uint8_t WithMaximumAppended(std::int16_t number) {
  return Variant(std::to_string(number) + "255").ToByte();
}

}  // namespace

// --- Operations ---

Status SalesOrderJournal::CloseFile() {
  return parts_->journal.CloseFile({{parts_->employees, "Employee"}});
}

// --- Properties ---

double SalesOrderJournal::DetailQuantity(std::int16_t Index) {
  return parts_->journal.Row(Index).GetDouble(OrderedQuantity());
}

void SalesOrderJournal::DetailQuantity(std::int16_t Index, double value) {
  parts_->journal.Row(Index).SetDouble(OrderedQuantity(), value);
}

// The row that was in hand before is the one that answers.
bool SalesOrderJournal::DetailTaxFlag(std::int16_t Index) {
  const std::int16_t type = parts_->journal.RowInHand().GetInteger(JrnlRowRecord::TaxType);
  parts_->journal.Row(Index);
  return type == FlaggedTaxType;
}

void SalesOrderJournal::DetailTaxFlag(std::int16_t, bool) {}

std::uint8_t SalesOrderJournal::NumSOLines() { return WithMaximumAppended(NumSOLines2()); }

void SalesOrderJournal::NumSOLines(std::uint8_t value) { NumSOLines2(value); }

std::uint8_t SalesOrderJournal::DetailSOLine(std::int16_t Index) {
  return WithMaximumAppended(DetailSOLine2(Index));
}

void SalesOrderJournal::DetailSOLine(std::int16_t Index, std::uint8_t value) {
  DetailSOLine2(Index, value);
}

std::string SalesOrderJournal::SalesRepID() {
  return SalesRepOf(parts_->journal.Record(), parts_->employees);
}

void SalesOrderJournal::SalesRepID(std::string_view value) {
  parts_->journal.Record().SetLong(JrnlHdrRecord::SalesRepIndex, EmployeeIndexFromID(value));
}

std::string SalesOrderJournal::NextSONumber() { return ReadNextSONumber(); }

void SalesOrderJournal::NextSONumber(std::string_view value) { WriteNextSONumber(value); }

}  // namespace larkmoor
