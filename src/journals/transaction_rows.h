// The rows of the transaction that a journal object shows: how they come from the row file, how a
// client reaches them, how they go back.
#pragma once

#include <cstdint>
#include <string>

#include <larkmoor/error.h>

#include "journals/row_file.h"
#include "journals/row_list.h"

namespace larkmoor {

/// What the frame of a journal asks of its rows.
class TransactionRows {
 public:
  explicit TransactionRows(RowFile& file) : file_(file) {}
  virtual ~TransactionRows() = default;
  TransactionRows(const TransactionRows&) = delete;
  TransactionRows& operator=(const TransactionRows&) = delete;

  /// Forgets all rows.
  virtual void Clear() = 0;
  /// Takes the rows of a transaction into memory. Returns 0 where there is at least one, otherwise
  /// the status of the search: a transaction without rows may answer 9 or 0.
  virtual Status Load(std::int32_t nRecord) = 0;
  /// Replaces the transaction's rows on file by those in memory, in one commit, so that nobody ever
  /// sees half of them. What goes wrong with a row is not told.
  void Write(const RowStamp& stamp);
  /// Deletes the transaction's rows on file, in one commit, and leaves those in memory.
  void DeleteFromFile(std::int32_t nRecord);

 protected:
  [[nodiscard]] RowFile& File() { return file_; }

 private:
  /// Keeps what was changed in the record.
  virtual void KeepRowInHand() = 0;
  /// Inserts all rows, and lets go of the one in hand.
  virtual void InsertAll(const RowStamp& stamp) = 0;

  RowFile& file_;
};

/// The rows of most journals: one list.
class ListedRows final : public TransactionRows {
 public:
  using TransactionRows::TransactionRows;

  void Clear() override { rows_.Clear(); }
  Status Load(std::int32_t nRecord) override;

  /// The record with that row in it, counted from 1. A row that cannot be shown is told in a
  /// message box, and the record is left as it is.
  Tovrin2Record& Show(std::int16_t row);

  std::int32_t Count() const { return rows_.Counts().loaded; }
  void SetCount(std::int16_t rows) { rows_.SetCount(rows); }

 private:
  void KeepRowInHand() override { rows_.KeepRowInHand(File().Record()); }
  void InsertAll(const RowStamp& stamp) override;

  RowList rows_;
};

/// What the message box shows where a row cannot be put into the record; `list` names the list of a
/// transaction that has several.
std::string PositioningMessage(std::string_view list, std::int16_t row, const RowCounts& counts,
                               const Error& error);
/// What the message box of `ListedRows::Load` shows.
std::string LoadingMessage(std::int32_t nRecord, const RowCounts& counts, const Error& error);

}  // namespace larkmoor
