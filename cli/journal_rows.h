// Transactions through the class of their journal, with their details.
//
// Which transaction is in hand goes by a file of headers of its own, so that transactions are found
// and walked as the records of any table are. The journal's object loads the one in hand when one
// of its properties is asked for.
//
// Details of several lists are gone through list by list, and come into a new transaction so too.
// The lists share the record that shows a row, and a list that is gone back to would take a row of
// another for its own.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

#include "automation/automation.h"
#include "engine/tovrin_file.h"
#include "engine/tovrin_record.h"
#include "journal_shape.h"
#include "journals/row_file.h"
#include "row_source.h"
#include "transaction_numbers.h"

namespace larkmoor::cli {

class JournalRows : public RowSource {
 public:
  /// Opens an object of the class. Raises a `Failure` where it does not open, and a `UsageError`
  /// for a class that does not keep the rows of a transaction apart.
  explicit JournalRows(const automation::Class& type);

  [[nodiscard]] std::string_view Name() const override { return journal_.Type().name; }
  [[nodiscard]] const RowShape& Shape() const override { return shape_; }
  [[nodiscard]] std::string_view Noun() const override { return "transaction"; }
  TovrinFile& File() override { return headerFile_; }
  [[nodiscard]] bool IsRow() const override;
  void StartRow() override;
  void StartDetail(std::string_view list) override;
  void EndDetail() override;
  bool NextDetail() override;
  Variant Get(const Column& column) override;
  /// A value that the journal would not keep is refused: of another journal's code, of a name that
  /// is not on file, of a property that data of this release does not have.
  void Set(const Column& column, const Variant& value) override;
  // Journals tell nothing of what goes wrong with the rows. The three that write raise a `Failure`
  // where the rows on file are not those that they should be.

  /// Inserts the new transaction, numbered where it has no numbers. Returns 5 for an `NRecord` that
  /// is on file, whose rows the journal would replace.
  Status Insert() override;
  /// Raises a `Failure` where `NRecord` was changed, which would leave the rows behind.
  Status Update() override;
  Status Delete() override;

 private:
  void Open();
  void LoadInHand();
  void TakeList(std::size_t list);
  void TakeDetail(std::int16_t detail);
  [[nodiscard]] const DetailList& List() const { return lists_[list_]; }
  [[nodiscard]] std::int32_t CountOf(const DetailList& list) const;
  [[nodiscard]] std::int32_t DetailCount() const;
  [[nodiscard]] std::vector<Variant> ArgumentsOf(const Column& column) const;
  void Assign(const Column& column, const Variant& value);
  [[nodiscard]] bool IsOwnCode(std::int16_t code) const;
  bool IsOnFile(std::int32_t nRecord);
  Status WithRows(Status status, std::int32_t count);

  automation::Object journal_;
  RowShape shape_;
  std::vector<std::int16_t> codes_;
  std::vector<DetailList> lists_;
  TovrinFile headerFile_;
  Tovrin2Record header_;
  RowFile rows_;
  /// Held open, as the other two are: the journal opens all its files anew for each new
  /// transaction, which costs much where nobody else has them open.
  TovrinFile chart_;
  TransactionNumbers numbers_{journal_};
  /// The transaction that the journal's object holds, unless it is a new one.
  std::optional<std::int32_t> loaded_;
  std::size_t list_ = 0;     ///< the one whose detail is in hand
  std::int16_t detail_ = 0;  ///< the one in hand, from 1; 0 for none
  bool isNew_ = false;
  bool hasNumberInPeriod_ = false;  ///< whether the new transaction was given one
};

}  // namespace larkmoor::cli
