// Rows through a record description, for files and kinds of rows that no public class stands for.
#pragma once

#include <string_view>

#include "engine/tovrin_record.h"
#include "row_source.h"

namespace larkmoor::cli {

/// A description of one kind of row in a shared file restricts to the rows of that kind, and
/// inserts rows of that kind.
class RecordRows : public RowSource {
 public:
  /// Opens the description's file in the connected company. Raises a `Failure` where it does not
  /// open.
  RecordRows(const RecordDescription& description, Access access);

  [[nodiscard]] std::string_view Name() const override { return record_.Description().name; }
  [[nodiscard]] const RowShape& Shape() const override { return shape_; }
  TovrinFile& File() override { return file_; }
  [[nodiscard]] bool IsRow() const override;
  void StartRow() override;
  Variant Get(const Column& column) override;
  /// A value that would make the row one of another kind is refused: its readers would lose it.
  void Set(const Column& column, const Variant& value) override;
  Status Insert() override { return file_.btInsert(0); }
  Status Update() override { return file_.btUpdate(0); }
  Status Delete() override { return file_.btDelete(); }

 private:
  TovrinFile file_;
  Tovrin2Record record_;
  RowShape shape_;
};

}  // namespace larkmoor::cli
