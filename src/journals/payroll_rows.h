// The rows of a paycheck: pay rows, one for each payroll field, and job rows, which charge labor to
// jobs. They lie in one file and go through one record, and each list keeps its own row in hand.
#pragma once

#include <string>
#include <string_view>

#include "journals/transaction_rows.h"

namespace larkmoor {

class PayrollRows final : public TransactionRows {
 public:
  using TransactionRows::TransactionRows;

  void Clear() override;
  /// Loads both lists: a row with a job is a job row, every other a pay row.
  Status Load(std::int32_t nRecord) override;

  /// The record with that row of the list in it, counted from 1. A job row below 1 is told in a
  /// message box; a pay row below 1 lets go of the row in hand. In both cases the record stays as
  /// it is.
  Tovrin2Record& ShowJob(std::int16_t row);
  Tovrin2Record& ShowPay(std::int16_t row);

  // Says how many rows a list has, making room for them and leaving its capacity as it was.
  void SetJobCount(std::int16_t rows) { job_.SetCountWithinCapacity(rows); }
  void SetPayCount(std::int16_t rows) { pay_.SetCountWithinCapacity(rows); }
  [[nodiscard]] const RowCounts& Job() const { return job_.Counts(); }
  [[nodiscard]] const RowCounts& Pay() const { return pay_.Counts(); }

 private:
  void KeepRowInHand() override;
  void InsertAll(const RowStamp& stamp) override;
  void InsertList(RowList& rows, const RowStamp& stamp);
  Tovrin2Record& Show(RowList& rows, std::int16_t row, std::string_view list);

  RowList job_;
  RowList pay_;
};

/// What the message box of `PayrollRows::Load` shows.
std::string LoadingMessage(std::int32_t nRecord, const RowCounts& pay, const RowCounts& job,
                           const Error& error);

}  // namespace larkmoor
