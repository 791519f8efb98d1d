// The company's defaults of the payroll fields: arrays of the settings' row below release 19, rows
// of a file of their own from then on.
#pragma once

#include <type_traits>

#include "settings/settings_frame.h"

namespace larkmoor {

class DefaultPayroll {
 public:
  explicit DefaultPayroll(SettingsFrame& settings);

  /// From this release on the defaults are rows.
  [[nodiscard]] bool HasRows() const { return settings_.FileVersion() >= 19.0; }
  Status Open();
  /// Writes the row in hand where it was changed, and closes the file.
  Status Close();

  /// A value of a field: `index` is its element in older data's array, and with `firstRow` added
  /// the number of its row. Blank where there is no such row.
  template <typename T>
  T Get(T (Tovrin2Record::*get)(const Field&, int, int) const, const Field& inRecord,
        const Field& inRow, int firstRow, int index, int element = 0) {
    if (!HasRows()) return (settings_.Record().*get)(inRecord, index, element);
    const Tovrin2Record* row = Row(index + firstRow);
    return row == nullptr ? T{} : (row->*get)(inRow, element, 0);
  }
  /// Dropped where there is no such row. The row is written by `Close`, and lost where another one
  /// is shown before.
  template <typename T>
  void Set(void (Tovrin2Record::*set)(const Field&, T, int, int), const Field& inRecord,
           const Field& inRow, int firstRow, std::type_identity_t<T> value, int index,
           int element = 0) {
    if (!HasRows()) return (settings_.Record().*set)(inRecord, value, index, element);
    Tovrin2Record* row = Row(index + firstRow);
    if (row == nullptr) return;
    (row->*set)(inRow, value, element, 0);
    isChanged_ = true;
  }

 private:
  /// The row of that number, counted from 0, or null.
  Tovrin2Record* Row(std::int32_t number);

  SettingsFrame& settings_;
  RecordFile rows_;
  std::int32_t shown_ = -1;
  bool isChanged_ = false;
};

}  // namespace larkmoor
