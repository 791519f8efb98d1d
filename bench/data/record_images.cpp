#include "data/record_images.h"

#include "engine/records/jrnl_hdr.h"
#include "engine/records/jrnl_row.h"

namespace larkmoor::bench {
namespace {

using Header = JrnlHdrRecord;
using Row = JrnlRowRecord;

void FillPay(std::span<std::byte> record, const Line& line) {
  PutField(record, Row::PayrollItemIndex, static_cast<std::int16_t>(line.item));
  PutField(record, Row::StockingUnitPrice, line.quantity);
}

void FillGoods(std::span<std::byte> record, const Field& party, const Transaction& from,
               const Line& line) {
  PutField(record, party, from.party);
  PutField(record, Row::ItemIndex, line.item);
  PutField(record, Row::TaxType, line.taxType);
  PutField(record, Row::Quantity, line.quantity);
  PutField(record, Row::UnitPrice, line.unitPrice);
  PutField(record, Row::StockingQuantity, line.quantity);
  PutField(record, Row::StockingUnitPrice, line.unitPrice);
}

}  // namespace

void FillHeader(std::span<std::byte> record, std::int16_t journal, const Transaction& from) {
  constexpr std::int16_t True = -1;
  PutField(record, Header::NRecord, from.number);
  PutField(record, Header::TrxNumberL, from.number);
  PutField(record, Header::Period, from.period);
  PutField(record, Header::JournalID, journal);
  PutTextField(record, Header::Reference, from.reference);
  PutTextField(record, Header::PurchaseOrderNumber, from.purchaseOrder);
  PutField(record, Header::IDNumber, from.party);
  PutTextField(record, Header::Description, from.partyName);
  PutTextField(record, Header::ShipToName, from.shipName);
  PutTextField(record, Header::ShipToAddress1, from.street);
  PutTextField(record, Header::ShipToCity, from.city);
  PutTextField(record, Header::ShipToState, from.state);
  PutTextField(record, Header::ShipToZipcode, from.zipcode);
  PutTextField(record, Header::ShipVia, from.shipMethod);
  PutTextField(record, Header::Terms, from.terms);
  PutTextField(record, Header::SalesTaxCode, from.taxCode);
  PutField(record, Header::TrxDate, from.date);
  PutField(record, Header::DateDue, from.dateDue);
  PutField(record, Header::PayPeriodEnd, from.periodEnd);
  PutField(record, Header::Amount, from.amount);
  PutField(record, Header::MainAccountIndex, from.mainAccount);
  PutField(record, Header::Posted, True);
}

void FillRow(std::span<std::byte> record, std::int16_t journal, const Transaction& from,
             const Line& line, std::int16_t number) {
  PutField(record, Row::NRecord, from.number);
  PutField(record, Row::JournalID, std::int32_t{journal});
  PutField(record, Row::TrxDate, static_cast<std::int32_t>(from.date));
  PutField(record, Row::LineNo, number);
  PutTextField(record, Row::Description, line.description);
  PutField(record, Row::AccountIndex, line.account);
  PutField(record, Row::Amount, line.amount);
  if (journal == Paychecks::Code) return FillPay(record, line);
  FillGoods(record, journal == Sales::Code ? Row::CustomerIndex : Row::VendorIndex, from, line);
}

}  // namespace larkmoor::bench
