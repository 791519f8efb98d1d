// Going through rows: in physical order or along a key, all of them or those that match.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "row_source.h"

namespace larkmoor::cli {

/// "the column shows this text".
struct Condition {
  Column column;
  std::string text;
};

/// The condition of a "NAME=VALUE". The value is first brought into the form that is shown, so that
/// "yes" finds "true". Raises a `UsageError` where the column is not there or the value does not
/// convert.
Condition ParseCondition(const RowShape& shape, const std::string& assignment);

struct WalkOptions {
  /// The key to walk along; physical order without one.
  std::optional<std::int16_t> key = {};
  std::vector<Condition> conditions = {};
  /// Whether a key that holds a condition's column alone may find the rows at once. Off where the
  /// walk changes rows, since a change could move them along that key.
  bool mayUseKeys = true;
  /// Whether a row that has details is taken once for each of them, the next one in hand each time.
  bool eachDetail = false;
};

/// A walk over the rows of a source. Rows that are changed or deleted in its course leave its
/// place.
class RowWalk {
 public:
  RowWalk(RowSource& rows, WalkOptions options);
  RowWalk(const RowWalk&) = delete;
  RowWalk& operator=(const RowWalk&) = delete;

  /// Takes the next row in hand that meets all conditions; false at the end. Raises a `Failure` for
  /// a status that is no end.
  bool Next();

 private:
  bool Read();
  Status ReadFirst();
  Status ReadNext();
  [[nodiscard]] bool Meets(const Condition& condition) const;
  void ChooseKey();

  RowSource& rows_;
  WalkOptions options_;
  /// The condition that the key buffer finds, or null.
  const Condition* sought_ = nullptr;
  bool started_ = false;
};

}  // namespace larkmoor::cli
