// The rows of a public class or of a record description, one behind the other in its file.
//
// Everything that the commands do with records they do through this: `ClassRows` goes through a
// class's own properties and operations, `RecordRows` through the fields of a record description.
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include <larkmoor/status.h>
#include <larkmoor/variant.h>

#include "engine/tovrin_file.h"
#include "row_shape.h"

namespace larkmoor::cli {

/// An open file with one row in hand.
///
/// A row of a journal is a transaction, which has details: rows of its own, in one list or in
/// several, one of which is in hand too. A new row starts without any, and a row that was read
/// shows the first.
class RowSource {
 public:
  virtual ~RowSource() = default;

  /// The name of the class or record.
  [[nodiscard]] virtual std::string_view Name() const = 0;
  [[nodiscard]] virtual const RowShape& Shape() const = 0;
  /// What a row is called.
  [[nodiscard]] virtual std::string_view Noun() const { return "record"; }
  /// The file, for reading along its keys and in physical order.
  virtual TovrinFile& File() = 0;
  /// Whether the record in hand is a row of this source; files may hold rows of several kinds.
  [[nodiscard]] virtual bool IsRow() const = 0;

  /// Takes a blank row in hand, for an insert.
  virtual void StartRow() = 0;
  /// Adds a blank detail to that list of a new row and takes it in hand. Raises a `ValueError`
  /// where the row cannot have more of them, or not of that list any more.
  virtual void StartDetail(std::string_view /*list*/) {}
  /// Says that the new detail has all its values. Raises a `ValueError` where it would be read back
  /// as one of another list.
  virtual void EndDetail() {}
  /// Takes the next detail in hand, or else says that there is none.
  virtual bool NextDetail() { return false; }
  /// Empty for a column of a detail where there is none, or where the one in hand is in another
  /// list.
  virtual Variant Get(const Column& column) = 0;
  /// `value` is of the column's type. Raises a `ValueError` for one that the row cannot have.
  virtual void Set(const Column& column, const Variant& value) = 0;

  virtual Status Insert() = 0;
  virtual Status Update() = 0;
  virtual Status Delete() = 0;
};

/// What a command is going to do with the rows.
enum class Access { Read, Write };

/// Connects to the company in `folder` and opens the class, or else the record description, of that
/// name in any case of letters. A class on a medium that can only be read is read by the fields of
/// its record, unless it is a journal. Raises a `UsageError` where there is no such name, a
/// `Failure` with the status where the company or the file does not open.
std::unique_ptr<RowSource> OpenRows(const std::string& folder, std::string_view name,
                                    Access access);

}  // namespace larkmoor::cli
