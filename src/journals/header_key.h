// The keys of the header file, whose numbers and layout changed with the releases of the data.
#pragma once

#include <cstdint>

#include "engine/tovrin_file.h"

namespace larkmoor {

/// A transaction's whole reference, as key 0 has it.
struct TransactionReference {
  std::uint8_t subindex1;
  std::int32_t trxNumber;
  std::int16_t period;
  std::int16_t journalID;
  std::int16_t subindex2;
};

/// Searches by period do not go beyond this one.
inline constexpr std::int16_t HighestPeriod = 41;

struct HeaderKey {
  static constexpr std::int16_t Whole = 0;
  static constexpr std::int16_t ByPeriod = 7;
  static std::int16_t ByNRecord(double release);
  static std::int16_t ByReference(double release);
  /// The walk along the transactions of a customer or vendor.
  static std::int16_t ByParty(double release);

  /// Writes key 0. Below release 13 the number has 16 bits there: one that does not fit raises
  /// error 6, as does a `subindex2` beyond a Byte in every release.
  static void Write(TovrinFile& headers, double release, const TransactionReference& reference);
};

}  // namespace larkmoor
