#include "connection/status_messages.h"
#include "masters/line_item_parts.h"

namespace larkmoor {
namespace {

constexpr ReferenceErrors BuyerErrors{{ErrorRead, "LineItem.BuyerID", "->Employee.Open"},
                                      {ErrorRead, "LineItem.BuyerID", "->Employee.Open"},
                                      {ErrorRead, "LineItem.BuyerID", "->Employee.GetForIndex("},
                                      {ErrorAccount, "LineItem.BuyerID", "->Employee.GetEqual("}};

}  // namespace

// --- Operations ---

Status LineItem::OpenFile() {
  const Status status = parts_->table.OpenFile();
  parts_->accounts.Mark(false);
  parts_->employees.Mark(false);
  parts_->bill.Forget();
  return status;
}

Status LineItem::CloseFile() {
  const Status status = parts_->table.CloseFile();
  if (parts_->accounts.IsOpen()) parts_->accounts.Close();
  if (parts_->employees.IsOpen()) parts_->employees.Close();
  parts_->bill.Close();
  return status;
}

// --- Properties ---

std::int32_t LineItem::NRecordBytes() { return parts_->table.File().ActualLength(); }

std::uint8_t LineItem::RecordByte(std::int32_t Index) {
  return parts_->table.File().RecordByte(Index);
}

std::string LineItem::BuyerID() {
  return parts_->employees.ReferenceID(parts_->table.Record().GetLong(LineItemRecord::BuyerIndex),
                                       BuyerErrors);
}

void LineItem::BuyerID(std::string_view value) {
  parts_->table.Record().SetLong(LineItemRecord::BuyerIndex,
                                 parts_->employees.ReferenceIndex(value, BuyerErrors));
}

// A bill of material cannot be changed through the item.

std::int16_t LineItem::NumberOfComponents() {
  if (parts_->HasRevisions()) return parts_->bill.Count();
  return parts_->table.Record().GetInteger(LineItemRecord::NumberOfComponents);
}

void LineItem::NumberOfComponents(std::int16_t value) {
  if (parts_->HasRevisions()) return;
  parts_->table.Record().SetInteger(LineItemRecord::NumberOfComponents, value);
}

std::int32_t LineItem::ComponentIndex(std::int16_t Index) {
  if (parts_->HasRevisions()) return parts_->bill.ItemOf(Index);
  return parts_->table.Record().GetLong(LineItemRecord::ComponentIndex, Index);
}

void LineItem::ComponentIndex(std::int16_t Index, std::int32_t value) {
  if (parts_->HasRevisions()) return;
  parts_->table.Record().SetLong(LineItemRecord::ComponentIndex, value, Index);
}

double LineItem::ComponentQuantity(std::int16_t Index) {
  if (parts_->HasRevisions()) return parts_->bill.QuantityOf(Index);
  return parts_->table.Record().GetDouble(LineItemRecord::ComponentQuantity, Index);
}

void LineItem::ComponentQuantity(std::int16_t Index, double value) {
  if (parts_->HasRevisions()) return;
  parts_->table.Record().SetDouble(LineItemRecord::ComponentQuantity, value, Index);
}

}  // namespace larkmoor
