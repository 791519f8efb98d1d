#include "connection/conversions.h"
#include "further/receipt_tag_parts.h"
#include "tables/transaction_key.h"

namespace larkmoor {

// The letters cross over: `KeyA` is the second transaction, `KeyB` the first.

double ReceiptTag::KeyA() {
  return TransactionKey{SubIndex1B(), 0, LongToInteger(TrxNumberLB()), PeriodB(), JournalIDB()}
      .Packed();
}

void ReceiptTag::KeyA(double value) {
  const TransactionKey key = TransactionKey::Of(value);
  SubIndex1B(key.subindex1);
  TrxNumberLB(key.trxNumber);
  PeriodB(key.period);
  JournalIDB(key.journalID);
  SubIndex2B(0);
}

double ReceiptTag::KeyB() {
  return TransactionKey{SubIndex1A(), 0, LongToInteger(TrxNumberLA()), PeriodA(), JournalIDA()}
      .Packed();
}

void ReceiptTag::KeyB(double value) {
  const TransactionKey key = TransactionKey::Of(value);
  SubIndex1A(key.subindex1);
  TrxNumberLA(key.trxNumber);
  PeriodA(key.period);
  JournalIDA(key.journalID);
  SubIndex2A(0);
}

std::uint8_t ReceiptTag::Unknown5() { return Variant(NumDistSale() / 256.0).ToByte(); }

// What is assigned marks the sale, and leaves the number of its lines.
void ReceiptTag::Unknown5(std::uint8_t value) {
  PostedRecpt(value * 256 + (NumDistSale() & 0xFF) != 0);
}

}  // namespace larkmoor
