#include "journals/header_key.h"

#include <larkmoor/variant.h>

namespace larkmoor {
namespace {

/// From this release on transactions are numbered in 32 bits, and two keys have other numbers.
constexpr double LongNumbers = 13.0;

}  // namespace

std::int16_t HeaderKey::ByNRecord(double release) { return release < LongNumbers ? 5 : 1; }

std::int16_t HeaderKey::ByReference(double release) { return release < LongNumbers ? 2 : 4; }

std::int16_t HeaderKey::ByParty(double release) {
  if (release >= 19.0) return 15;
  return release >= 18.0 ? 16 : 19;
}

void HeaderKey::Write(TovrinFile& headers, double release, const TransactionReference& reference) {
  const std::uint8_t subindex2 = Variant(reference.subindex2).ToByte();
  headers.KeyByte(reference.subindex1, 0);
  std::int16_t next = 5;
  if (release < LongNumbers) {
    headers.KeyWord(Variant(reference.trxNumber).ToInteger(), 1);
    next = 3;
  } else {
    headers.KeyLong(reference.trxNumber, 1);
  }
  headers.KeyWord(reference.period, next);
  headers.KeyWord(reference.journalID, static_cast<std::int16_t>(next + 2));
  headers.KeyByte(subindex2, static_cast<std::int16_t>(next + 4));
}

}  // namespace larkmoor
