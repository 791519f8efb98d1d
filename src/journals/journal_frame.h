// What every journal is: the transactions of one journal code, one after the other, each with all
// its rows in memory.
//
// A public class owns a frame and forwards the members that all journals share to it. The header
// goes to its record at once; a row is shown by the row record, which is a window on one row at a
// time.
#pragma once

#include "journals/header_key.h"
#include "journals/transaction_frame.h"

namespace larkmoor {

/// A journal, whatever its rows are like.
class JournalFrame : public TransactionFrame {
 public:
  // Operations. Those that read load the rows too.

  Status OpenFile();
  Status GetEqual(std::int32_t nRecord);
  Status ReadFirst(std::int16_t period);
  Status ReadNext();
  /// The first transaction of the journal at or after the party of that index. Skips other journals
  /// and does not compare the index, so that it may be another party's.
  Status ReadFirstForParty(std::int32_t index);
  /// The next one. A transaction of another journal ends the walk.
  Status ReadNextByParty();
  /// The transaction of that reference. Where the reference found is another journal's the search
  /// goes on, and may end at a later reference.
  Status GetForReference(std::string_view reference);
  /// -1, or 0 where the counters' file does not open.
  Status IncrementBatchCount();
  /// Search by the whole reference, and read the header alone.
  Status GetForKey(std::uint8_t Subindex1, std::int16_t TrxNumber, std::int16_t Period,
                   std::int16_t JournalID, std::int16_t Subindex2);
  Status GetForKeyL(std::uint8_t Subindex1, std::int32_t TrxNumber, std::int16_t Period,
                    std::int16_t JournalID, std::int16_t Subindex2);

  // The properties that all journals share and that show no field as it is.

  double Key();
  void Key(double value);
  std::string MainAccount();
  void MainAccount(std::string_view value);
  std::int32_t MaxNRecord();
  std::int16_t MaxTrxNumber(std::int16_t Period);
  std::int32_t MaxTrxNumberL(std::int16_t Period);

  // What the classes' own members stand on.

  /// The `JournalID` of the journal's transactions.
  [[nodiscard]] std::int16_t Code() const { return code_; }
  /// Has `ReadNext`, `Insert` and `Update` use the key of journal and period.
  void GoByPeriod() { SetKeyNumber(HeaderKey::ByPeriod); }
  /// The first header of a journal at or after a period. Leaves the key of `ReadNext` as it is.
  Status SearchPeriod(std::int16_t journal, std::int16_t period);

 protected:
  JournalFrame(std::string_view name, std::int16_t code, TransactionRows& rows,
               FrameBehaviour behaviour)
      : TransactionFrame(name, rows, behaviour), code_(code) {}
  ~JournalFrame() = default;

  /// The first steps of `OpenFile`. Everyone goes by the release of the journals that were opened
  /// last.
  Status OpenTransactions();

 private:
  Status LoadNextOfJournal(Status status);

  std::int16_t code_;
};

/// A journal whose rows are one list: all but payroll.
class ListedJournal final : public JournalFrame {
 public:
  ListedJournal(std::string_view name, std::int16_t code, FrameBehaviour behaviour = {})
      : JournalFrame(name, code, rows_, behaviour) {}

  std::int16_t NDistributions();
  void NDistributions(std::int16_t value) { rows_.SetCount(value); }
  std::string DetailGLAccount(std::int16_t Index);
  void DetailGLAccount(std::int16_t Index, std::string_view value);

  /// The row record with that row in it, counted from 1.
  Tovrin2Record& Row(std::int16_t row) { return rows_.Show(row); }
  [[nodiscard]] std::int32_t RowCount() const { return rows_.Count(); }

 private:
  ListedRows rows_{Rows()};
};

}  // namespace larkmoor
