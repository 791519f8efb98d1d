// Payroll data of an employee in either of its two forms: below release 19 arrays of the employee's
// record, from then on rows of other files.
#pragma once

#include <string>
#include <string_view>

#include "masters/employee_accounts.h"
#include "masters/employee_rows.h"

namespace larkmoor {

/// Where a payroll value lies: a field of a record, and its element. Where there is no row there is
/// no record: reads give a blank, and writes are dropped.
struct PayrollPlace {
  Tovrin2Record* record = nullptr;
  const Field* field = nullptr;
  int index = 0;
  int index2 = 0;

  explicit operator bool() const { return record != nullptr; }
  [[nodiscard]] std::uint8_t Byte() const;
  [[nodiscard]] bool Boolean(bool otherwise = false) const;
  [[nodiscard]] std::int32_t Long() const;
  [[nodiscard]] double Double() const;
  [[nodiscard]] std::string Text() const;
  void SetByte(std::uint8_t value) const;
  void SetBoolean(bool value) const;
  void SetLong(std::int32_t value) const;
  void SetDouble(double value) const;
  void SetText(std::string_view value) const;
};

/// A payroll field's value: in the employee's record, in the employee's row, and in the row of the
/// company's default.
struct PayrollField {
  const Field& inRecord;
  const Field& inRow;
  const Field* inDefault;  ///< null: no default stands in
};

class EmployeePayroll {
 public:
  explicit EmployeePayroll(TableFrame& employees) : employees_(employees), rows_(employees) {}

  /// From this release on payroll data lies in rows.
  [[nodiscard]] bool HasRows() const { return employees_.FileVersion() >= 19.0; }
  /// From this release on payroll data has accounts.
  [[nodiscard]] bool HasAccounts() const { return employees_.FileVersion() >= 12.0; }
  [[nodiscard]] EmployeeRows& Rows() { return rows_; }
  [[nodiscard]] EmployeeAccounts& Accounts() { return accounts_; }

  /// A value of a pay level, counted from 1; `index` is its element in the record.
  PayrollPlace OfLevel(std::int16_t level, const Field& inRecord, const Field& inRow, int index);
  /// The same for a write: the row will be written to its file later.
  PayrollPlace OfChangedLevel(std::int16_t level, const Field& inRecord, const Field& inRow,
                              int index);
  /// Where a payroll field is written: `row` is the number of its row, from 1, `index` its element
  /// in the record; `element` one of several values of a field.
  PayrollPlace Own(const PayrollField& field, int row, int index, int element = 0);
  /// Where it is read: where the employee has no row, the company's default stands in.
  PayrollPlace Any(const PayrollField& field, int row, int index, int element = 0);
  /// The sum of a payroll field in a quarter, and a value of a pay level there.
  PayrollPlace OfQuarterField(std::int16_t quarter, std::int16_t index, const Field& inRecord,
                              int row);
  PayrollPlace OfQuarterLevel(std::int16_t quarter, std::int16_t index, const Field& inRecord,
                              const Field& inRow);

  // The same for writes, which reach the row's file at once.
  void SetQuarterField(std::int16_t quarter, std::int16_t index, const Field& inRecord, int row,
                       double value);
  void SetQuarterLevel(std::int16_t quarter, std::int16_t index, const Field& inRecord,
                       const Field& inRow, double value);

  /// The ID of the account whose index lies there; empty where there is no row.
  std::string AccountAt(const PayrollPlace& place, std::string_view source);

 private:
  PayrollPlace InRecord(const Field& field, int index, int index2 = 0);

  TableFrame& employees_;
  EmployeeRows rows_;
  EmployeeAccounts accounts_;
};

}  // namespace larkmoor
