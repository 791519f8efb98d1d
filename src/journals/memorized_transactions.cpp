#include <larkmoor/journal_code.h>

#include "connection/status_messages.h"
#include "journals/header_fields.h"
#include "journals/lenient_accounts.h"
#include "journals/memorized_transactions_parts.h"

namespace larkmoor {
namespace {

constexpr std::string_view AccountProperty = "MemorizedTransactions.Account";
constexpr std::string_view IDProperty = "MemorizedTransactions.ID";

/// The `TrxType` of a row that is freight.
constexpr std::int32_t Freight = 6;
/// The header's `JournalID` of a quote.
constexpr std::int16_t QuoteCode = 12;

/// The journals by `RecordType`.
constexpr std::int16_t RecordTypes[] = {tovJournalCodeSales, tovJournalCodeCashDisbursement,
                                        QuoteCode, tovJournalCodePurchaseOrder,
                                        tovJournalCodeGeneral};

/// An account's index; the message of one that is not there has always shown a 0.
std::int32_t AccountIndexOf(TransactionFrame& frame, std::string_view id) {
  return LenientAccountIndex(frame, id, AccountProperty, "0");
}

std::string IDOf(GuardedLookUp& table, std::int32_t index, std::string_view open) {
  // One text serves customers and vendors alike.
  return table.ResolvedID(
      index, TovrinFile::NormalMode,
      {{ErrorOpen, IDProperty, open}, {ErrorRead, IDProperty, "->Customer.GetForIndex("}});
}

}  // namespace

std::string MemorizedTransactions::Account() {
  return LenientAccountID(parts_->journal,
                          parts_->journal.Record().GetLong(JrnlHdrRecord::MainAccountIndex),
                          AccountProperty);
}

void MemorizedTransactions::Account(std::string_view value) {
  parts_->journal.Record().SetLong(JrnlHdrRecord::MainAccountIndex,
                                   AccountIndexOf(parts_->journal, value));
}

std::string MemorizedTransactions::DetailGLAccount(std::int16_t Index) {
  return LenientAccountID(parts_->journal,
                          parts_->journal.Row(Index).GetLong(JrnlRowRecord::AccountIndex),
                          AccountProperty);
}

void MemorizedTransactions::DetailGLAccount(std::int16_t Index, std::string_view value) {
  Tovrin2Record& row = parts_->journal.Row(Index);
  row.SetLong(JrnlRowRecord::AccountIndex, AccountIndexOf(parts_->journal, value));
}

bool MemorizedTransactions::DetailFreightFlag(std::int16_t Index) {
  return parts_->journal.Row(Index).GetLong(JrnlRowRecord::TrxType) == Freight;
}

void MemorizedTransactions::DetailFreightFlag(std::int16_t Index, bool value) {
  parts_->journal.Row(Index).SetLong(JrnlRowRecord::TrxType, value ? Freight : 0);
}

std::uint8_t MemorizedTransactions::DropShip() { return DropShipByte(parts_->journal.Record()); }

void MemorizedTransactions::DropShip(std::uint8_t value) {
  parts_->journal.Record().SetBoolean(JrnlHdrRecord::DropShip, value != 0);
}

std::string MemorizedTransactions::ID() {
  switch (JournalID()) {
    case tovJournalCodeCashReceipt:
    case tovJournalCodeSales:
    case tovJournalCodeSalesOrder:
      return IDOf(parts_->journal.Customers(), Index(), "->Customer.OpenFile");
    case tovJournalCodeCashDisbursement:
    case tovJournalCodePurchase:
    case tovJournalCodePurchaseOrder:
      return IDOf(parts_->journal.Vendors(), Index(), "->Vendor.OpenFile");
    default:
      return {};
  }
}

// `Index` is the way to say whose transaction it is.
void MemorizedTransactions::ID(std::string_view) {}

std::int16_t MemorizedTransactions::RecordType() {
  const auto found = std::ranges::find(RecordTypes, JournalID());
  return found == std::end(RecordTypes)
             ? std::int16_t{0}
             : static_cast<std::int16_t>(found - std::begin(RecordTypes));
}

void MemorizedTransactions::RecordType(std::int16_t value) {
  const bool isKnown = value >= 0 && value < std::ssize(RecordTypes);
  JournalID(isKnown ? RecordTypes[value] : std::int16_t{tovJournalCodeGeneral});
}

}  // namespace larkmoor
