// A memorized transaction: a header and rows in files of their own, walked in physical order.
#pragma once

#include "journals/transaction_frame.h"
#include "tables/guarded_look_up.h"

namespace larkmoor {

/// The rows of a memorized transaction are counted, and not kept: the row record is the only row
/// there is, whatever row a client names. Clients count on it.
class CountedRows final : public TransactionRows {
 public:
  using TransactionRows::TransactionRows;

  void Clear() override { counts_ = {}; }
  Status Load(std::int32_t nRecord) override;

  /// Takes a row for the one in hand, counted from 1, and gives the record.
  Tovrin2Record& Show(std::int16_t row);
  [[nodiscard]] std::int32_t Count() const { return counts_.loaded; }
  void SetCount(std::int16_t rows);

 private:
  void KeepRowInHand() override {}
  void InsertAll(const RowStamp& stamp) override;

  RowCounts counts_;
};

class MemorizedFrame final : public TransactionFrame {
 public:
  MemorizedFrame();

  Status CloseFile();

  std::int16_t NDistributions() { return Variant(rows_.Count()).ToInteger(); }
  void NDistributions(std::int16_t value) { rows_.SetCount(value); }

  Tovrin2Record& Row(std::int16_t row) { return rows_.Show(row); }
  [[nodiscard]] GuardedLookUp& Customers() { return customers_; }
  [[nodiscard]] GuardedLookUp& Vendors() { return vendors_; }

 private:
  CountedRows rows_{Rows()};
  GuardedLookUp customers_{CustomerTable};
  GuardedLookUp vendors_{VendorTable};
};

}  // namespace larkmoor
