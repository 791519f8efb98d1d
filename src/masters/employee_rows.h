// What data from release 19 on keeps of an employee beside the employee's record: pay levels,
// payroll fields with the company's defaults, and the quarters of the year, in six files.
#pragma once

#include <array>
#include <cstdint>

#include "tables/table_frame.h"

namespace larkmoor {

/// Belongs to one employee object and reads that object's record. A row that is not there is a null
/// pointer. Rows are numbered from 1 as clients do; employer-paid fields follow the employee's.
class EmployeeRows {
 public:
  /// How far the employer's fields lie behind the employee's.
  static constexpr std::int16_t EmployerFields = 40;

  explicit EmployeeRows(TableFrame& employees);

  /// Opens all six files. Returns 0, or the status of the last one that failed; then none is open.
  Status Open();
  /// Writes a pay level that was changed, and closes all.
  void Close();

  // Pay levels and fields are remembered by their number, and not by the employee: the row read
  // last serves every employee until another number is asked for.

  Tovrin2Record* Level(std::int32_t number);
  Tovrin2Record* Field(std::int32_t number);
  Tovrin2Record* DefaultField(std::int32_t number);
  /// Has the pay level in hand written when another is read, or at the close.
  void NoteLevelChanged() { isLevelChanged_ = true; }

  Tovrin2Record* Quarter(std::int16_t quarter);
  Tovrin2Record* QuarterLevel(std::int16_t quarter, std::int16_t number);
  Tovrin2Record* QuarterField(std::int16_t quarter, std::int32_t number);
  // Write the row in hand. The status is not told.
  void UpdateQuarter();
  void UpdateQuarterLevel();
  void UpdateQuarterField();

 private:
  [[nodiscard]] std::array<RecordFile*, 6> Files();
  Tovrin2Record* Find(RecordFile& file, std::int32_t number, std::int32_t& remembered);
  Tovrin2Record* FindInQuarter(RecordFile& file, std::int32_t number);
  void WriteQuarterKey(std::int16_t quarter);
  void WriteChangedLevel();
  [[nodiscard]] std::int32_t Employee();

  TableFrame& employees_;
  RecordFile levels_;
  RecordFile fields_;
  RecordFile defaults_;
  RecordFile quarters_;
  RecordFile quarterFields_;
  RecordFile quarterLevels_;
  std::int32_t level_ = -1;
  std::int32_t field_ = -1;
  std::int32_t default_ = -1;
  bool isLevelChanged_ = false;
};

}  // namespace larkmoor
