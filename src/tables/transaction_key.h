// A transaction's reference in one Double: how clients carry it from an alarm to a journal and
// back.
#pragma once

#include <bit>
#include <cstdint>

namespace larkmoor {

/// The eight bytes are reinterpreted and not converted. The second one is 0 and not looked at.
struct TransactionKey {
  std::uint8_t subindex1;
  std::uint8_t unused;
  std::int16_t trxNumber;
  std::int16_t period;
  std::int16_t journalID;

  static TransactionKey Of(double packed) { return std::bit_cast<TransactionKey>(packed); }
  [[nodiscard]] double Packed() const { return std::bit_cast<double>(*this); }
};

}  // namespace larkmoor
