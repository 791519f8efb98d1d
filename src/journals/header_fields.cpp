#include "journals/header_fields.h"

#include "connection/conversions.h"
#include "tables/transaction_key.h"

namespace larkmoor {

std::uint8_t DropShipByte(const Tovrin2Record& header) {
  return static_cast<std::uint8_t>(header.GetInteger(JrnlHdrRecord::DropShip));
}

double KeyOfHeader(const Tovrin2Record& header) {
  return TransactionKey{header.GetByte(JrnlHdrRecord::Subindex1), 0,
                        LongToInteger(header.GetLong(JrnlHdrRecord::TrxNumberL)),
                        header.GetInteger(JrnlHdrRecord::Period),
                        header.GetInteger(JrnlHdrRecord::JournalID)}
      .Packed();
}

void TakeKey(double packed, Tovrin2Record& header) {
  const TransactionKey key = TransactionKey::Of(packed);
  header.SetByte(JrnlHdrRecord::Subindex1, key.subindex1);
  header.SetLong(JrnlHdrRecord::TrxNumberL, key.trxNumber);
  header.SetInteger(JrnlHdrRecord::Period, key.period);
  header.SetInteger(JrnlHdrRecord::JournalID, key.journalID);
  header.SetByte(JrnlHdrRecord::Subindex2, 0);
}

}  // namespace larkmoor
