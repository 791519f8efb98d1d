// The files of a transaction: headers, rows, and the chart of accounts; and how a transaction comes
// from them and goes back.
#pragma once

#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>

#include <larkmoor/status.h>
#include <larkmoor/variant.h>

#include "engine/records/jrnl_hdr.h"
#include "engine/tovrin_file_names.h"
#include "journals/transaction_rows.h"
#include "tables/account_look_up.h"
#include "tables/table_frame.h"

namespace larkmoor {

/// A further file of a class that `CloseFile` closes, and the word for it in messages.
struct FurtherFile {
  RecordFile& file;
  std::string_view word;
};

/// The record files of a transaction, and the words for them in messages.
struct TransactionFiles {
  std::string_view headers = TovrinFileNames::JrnlHdrFile();
  std::string_view rows = TovrinFileNames::JrnlRowFile();
  std::string_view headerWord = "JrnlHdr";
  std::string_view rowWord = "JrnlRow";
};

/// What every class over transactions owns in one form or another. A form brings its rows.
class TransactionFrame {
 public:
  // The operations. Each answers with the engine's status.

  /// Opens headers, rows and the chart of accounts. Returns the status of the last open, so that a
  /// status other than 0 may mean that only the accounts are missing.
  Status OpenFile();
  /// Closes the chart, the further files, headers and rows. Raises 0x80040202 where a close fails.
  Status CloseFile(std::initializer_list<FurtherFile> further = {});
  /// Blanks the header and leaves the rows.
  Status ClearRecord();
  /// Writes the rows, then the header; returns the header's status alone.
  Status Insert();
  Status Update();
  Status Delete();
  /// Takes one step in physical order, through all transactions on file, and loads the rows.
  Status StepFirst() { return Step(&TovrinFile::btStepFirst); }
  Status StepLast() { return Step(&TovrinFile::btStepLast); }
  Status StepNext() { return Step(&TovrinFile::btStepNext); }
  Status StepPrevious() { return Step(&TovrinFile::btStepPrevious); }

  // What the classes' own members stand on.

  [[nodiscard]] TovrinFile& File() { return headers_.File(); }
  [[nodiscard]] Tovrin2Record& Record() { return headers_.Record(); }
  /// The row record as it stands.
  [[nodiscard]] Tovrin2Record& RowInHand() { return rowFile_.Record(); }
  [[nodiscard]] AccountLookUp& Accounts() { return accounts_; }
  /// Whether the user was refused the chart of accounts at the open.
  [[nodiscard]] bool AreAccountsDenied() const { return areAccountsDenied_; }
  [[nodiscard]] std::int16_t JournalID() { return Record().GetInteger(JrnlHdrRecord::JournalID); }
  /// Reads a header on a key and keeps the key's number for `ReadNext`, `Insert` and `Update`.
  Status ReadHeader(Status (TovrinFile::*read)(std::int16_t), std::int16_t keyNumber);
  /// Goes on along the key of the last read.
  Status NextHeader() { return File().btGetNext(keyNumber_); }
  /// Takes the rows of the header in hand into memory.
  Status LoadRows() { return rows_.Load(Record().GetLong(JrnlHdrRecord::NRecord)); }

 protected:
  /// `name` is the class's name, which opens the message of a failed close.
  TransactionFrame(std::string_view name, TransactionRows& rows, FrameBehaviour behaviour = {},
                   const TransactionFiles& files = {});
  ~TransactionFrame() = default;

  /// The steps of `OpenFile`.
  Status OpenTransactions();
  Status OpenAccounts();

  [[nodiscard]] RowFile& Rows() { return rowFile_; }
  void SetKeyNumber(std::int16_t keyNumber) { keyNumber_ = keyNumber; }

 private:
  Status Step(Status (TovrinFile::*step)());
  RowStamp Stamp();

  std::string_view name_;
  FrameBehaviour behaviour_;
  TransactionFiles files_;
  TransactionRows& rows_;
  RecordFile headers_;
  RowFile rowFile_;
  AccountLookUp accounts_{AccountLookUp::OpenedBy::Class};
  std::int16_t keyNumber_ = 0;
  bool areAccountsDenied_ = false;
};

}  // namespace larkmoor
