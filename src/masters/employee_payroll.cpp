#include "masters/employee_payroll.h"

#include "engine/records/employee_aux3.h"

namespace larkmoor {

// --- A value ---

std::uint8_t PayrollPlace::Byte() const {
  return record != nullptr ? record->GetByte(*field, index, index2) : std::uint8_t{0};
}

bool PayrollPlace::Boolean(bool otherwise) const {
  return record != nullptr ? record->GetBoolean(*field, index) : otherwise;
}

std::int32_t PayrollPlace::Long() const {
  return record != nullptr ? record->GetLong(*field, index) : 0;
}

double PayrollPlace::Double() const {
  return record != nullptr ? record->GetDouble(*field, index, index2) : 0;
}

std::string PayrollPlace::Text() const {
  return record != nullptr ? record->GetText(*field, index) : std::string();
}

void PayrollPlace::SetByte(std::uint8_t value) const {
  if (record != nullptr) record->SetByte(*field, value, index, index2);
}

void PayrollPlace::SetBoolean(bool value) const {
  if (record != nullptr) record->SetBoolean(*field, value, index);
}

void PayrollPlace::SetLong(std::int32_t value) const {
  if (record != nullptr) record->SetLong(*field, value, index);
}

void PayrollPlace::SetDouble(double value) const {
  if (record != nullptr) record->SetDouble(*field, value, index, index2);
}

void PayrollPlace::SetText(std::string_view value) const {
  if (record != nullptr) record->SetText(*field, value, index);
}

// --- Where values lie ---

PayrollPlace EmployeePayroll::InRecord(const Field& field, int index, int index2) {
  return {&employees_.Record(), &field, index, index2};
}

PayrollPlace EmployeePayroll::OfLevel(std::int16_t level, const Field& inRecord, const Field& inRow,
                                      int index) {
  if (!HasRows()) return InRecord(inRecord, index);
  return {rows_.Level(level), &inRow};
}

PayrollPlace EmployeePayroll::OfChangedLevel(std::int16_t level, const Field& inRecord,
                                             const Field& inRow, int index) {
  const PayrollPlace place = OfLevel(level, inRecord, inRow, index);
  if (place && HasRows()) rows_.NoteLevelChanged();
  return place;
}

PayrollPlace EmployeePayroll::Own(const PayrollField& field, int row, int index, int element) {
  if (!HasRows()) return InRecord(field.inRecord, index, element);
  return {rows_.Field(row), &field.inRow, element};
}

PayrollPlace EmployeePayroll::Any(const PayrollField& field, int row, int index, int element) {
  const PayrollPlace own = Own(field, row, index, element);
  if (own || field.inDefault == nullptr) return own;
  return {rows_.DefaultField(row), field.inDefault, element};
}

PayrollPlace EmployeePayroll::OfQuarterField(std::int16_t quarter, std::int16_t index,
                                             const Field& inRecord, int row) {
  if (!HasRows()) return InRecord(inRecord, quarter, index);
  return {rows_.QuarterField(quarter, row), &EmployeeAux3Record::Amount};
}

PayrollPlace EmployeePayroll::OfQuarterLevel(std::int16_t quarter, std::int16_t index,
                                             const Field& inRecord, const Field& inRow) {
  if (!HasRows()) return InRecord(inRecord, quarter, index);
  return {rows_.QuarterLevel(quarter, index), &inRow};
}

void EmployeePayroll::SetQuarterField(std::int16_t quarter, std::int16_t index,
                                      const Field& inRecord, int row, double value) {
  const PayrollPlace place = OfQuarterField(quarter, index, inRecord, row);
  place.SetDouble(value);
  if (place && HasRows()) rows_.UpdateQuarterField();
}

void EmployeePayroll::SetQuarterLevel(std::int16_t quarter, std::int16_t index,
                                      const Field& inRecord, const Field& inRow, double value) {
  const PayrollPlace place = OfQuarterLevel(quarter, index, inRecord, inRow);
  place.SetDouble(value);
  if (place && HasRows()) rows_.UpdateQuarterLevel();
}

std::string EmployeePayroll::AccountAt(const PayrollPlace& place, std::string_view source) {
  return accounts_.AccountID(place.Long(), source);
}

}  // namespace larkmoor
