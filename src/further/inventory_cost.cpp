#include <cstdint>

#include "further/inventory_cost_parts.h"

namespace larkmoor {
namespace {

constexpr std::int16_t ByItem = 0;
/// The `RecordCode` of layers that are not on hand.
constexpr std::int16_t NotOnHand = 15;

}  // namespace

Status InventoryCost::GetFirst(std::int32_t Index) {
  TovrinFile& file = parts_->table.File();
  file.KeyLong(Index, 0);
  file.KeyWord(0, 4);
  // Peachtree's own files have four more parts in this key, and are searched from these values on.
  // Ours ends before them, so that they narrow nothing, and a layer of which nothing but the item
  // is set is found.
  file.KeyByte(1, 6);
  file.KeyByte(1, 7);
  file.KeyByte(0, 8);
  file.KeyLong(0, 9);
  return parts_->table.Read(&TovrinFile::btGetGreaterOrEqual, ByItem);
}

double InventoryCost::QuantityOnHand(std::int32_t item) {
  double total = 0;
  for (Status status = GetFirst(item); status == StatusSuccess && Index() <= item;
       status = GetNext()) {
    if (Index() == item && RecordCode() != NotOnHand) total += Quantity1();
  }
  return total;
}

}  // namespace larkmoor
