#include "connection/conversions.h"
#include "engine/records/employee_aux1.h"
#include "engine/records/employee_aux2.h"
#include "engine/records/employee_aux4.h"
#include "engine/records/employee_aux5.h"
#include "engine/records/employee_aux6.h"
#include "masters/employee_parts.h"

namespace larkmoor {
namespace {

constexpr std::int16_t ByIndex = 4;

// The payroll fields of the employee.
constexpr PayrollField EmployeeAdjust{EmployeeRecord::EEAdjust, EmployeeAux6Record::Adjust,
                                      &EmployeeAux1Record::Adjust};
constexpr PayrollField EmployeeAmount{EmployeeRecord::EEAmount, EmployeeAux6Record::Amount,
                                      &EmployeeAux1Record::Amount};
constexpr PayrollField EmployeeCalcName{EmployeeRecord::EECalcName, EmployeeAux6Record::CalcName,
                                        &EmployeeAux1Record::CalcName};
constexpr PayrollField EmployeeCalcOn{EmployeeRecord::EECalcOn, EmployeeAux6Record::CalcOn,
                                      &EmployeeAux1Record::CalcOn};
constexpr PayrollField EmployeeAccount{EmployeeRecord::EEGLAccountIndex,
                                       EmployeeAux6Record::GLAccountIndex,
                                       &EmployeeAux1Record::GLAccountIndex};
constexpr PayrollField EmployeeCustom{EmployeeRecord::EEUseCustom, EmployeeAux6Record::UseCustom,
                                      nullptr};

// Those of the employer.
constexpr PayrollField EmployerAdjust{EmployeeRecord::ERAdjust, EmployeeAux6Record::Adjust,
                                      &EmployeeAux1Record::Adjust};
constexpr PayrollField EmployerCalcName{EmployeeRecord::ERCalcName, EmployeeAux6Record::CalcName,
                                        &EmployeeAux1Record::CalcName};
constexpr PayrollField EmployerCalcOn{EmployeeRecord::ERCalcOn, EmployeeAux6Record::CalcOn,
                                      &EmployeeAux1Record::CalcOn};
constexpr PayrollField EmployerExpense{EmployeeRecord::ERExpenseAccountIndex,
                                       EmployeeAux6Record::ExpenseAccountIndex,
                                       &EmployeeAux1Record::ExpenseAccountIndex};
constexpr PayrollField EmployerLiability{EmployeeRecord::ERLiabilityAccountIndex,
                                         EmployeeAux6Record::GLAccountIndex,
                                         &EmployeeAux1Record::GLAccountIndex};
constexpr PayrollField EmployerCustom{EmployeeRecord::ERUseCustom, EmployeeAux6Record::UseCustom,
                                      nullptr};

std::int16_t Level(std::int16_t index) { return Clamp(index, 1, 20); }

/// The row of an employer-paid field.
int EmployerRow(std::int16_t index) { return index + EmployeeRows::EmployerFields; }

}  // namespace

// --- Operations ---

Status Employee::CacheCharts(bool Flag) {
  constexpr double HasAccountIndexes = 11.0;
  return parts_->payroll.Accounts().Cache(Flag && parts_->table.FileVersion() >= HasAccountIndexes);
}

Status Employee::OpenFile() {
  parts_->payroll.Accounts().Forget();
  const bool wasOpen = parts_->table.IsOpen();
  Status status = parts_->table.OpenFile();
  if (status != StatusSuccess) return status;
  if (parts_->payroll.HasRows()) {
    status = parts_->payroll.Rows().Open();
    if (status != StatusSuccess) {
      parts_->table.TakeBackOpen(wasOpen);
      return status;
    }
  }
  parts_->payroll.Accounts().Reset();
  return status;
}

Status Employee::CloseFile() {
  parts_->payroll.Accounts().Close();
  if (parts_->payroll.HasRows()) parts_->payroll.Rows().Close();
  return parts_->table.CloseFile();
}

// The one operation that opens a closed object.
Status Employee::GetForIndex(std::int32_t Index) {
  constexpr double HasIndexes = 11.0;
  if (parts_->table.FileVersion() < HasIndexes) return StatusEndOfFile;
  parts_->table.File().KeyLong(Index, 0);
  const Status status = parts_->table.Read(&TovrinFile::btGetEqual, ByIndex);
  if (status != StatusFileNotOpen) return status;
  OpenFile();
  return parts_->table.Read(&TovrinFile::btGetEqual, ByIndex);
}

// --- Pay levels ---

std::string Employee::AcctDataGLAccount(std::int16_t Index) {
  EmployeePayroll& payroll = parts_->payroll;
  if (!payroll.HasAccounts()) return {};
  return payroll.AccountAt(payroll.OfLevel(Level(Index), EmployeeRecord::AcctDataGLAccountIndex,
                                           EmployeeAux5Record::GLAccountIndex, Level(Index)),
                           "Employee.AcctDataGLAccount");
}

// An account is always looked up before its row: one that is not there raises even where there is
// no row to take it.
void Employee::AcctDataGLAccount(std::int16_t Index, std::string_view value) {
  EmployeePayroll& payroll = parts_->payroll;
  if (!payroll.HasAccounts()) return;
  const std::int32_t account = payroll.Accounts().AccountIndex(value, "Employee.AcctDataGLAccount");
  payroll
      .OfChangedLevel(Level(Index), EmployeeRecord::AcctDataGLAccountIndex,
                      EmployeeAux5Record::GLAccountIndex, Level(Index))
      .SetLong(account);
}

// A level without a row goes to the standard account.
bool Employee::AcctDataUseStandard(std::int16_t Index) {
  return parts_->payroll
      .OfLevel(Level(Index), EmployeeRecord::AcctDataUseStandard, EmployeeAux5Record::UseStandard,
               Level(Index))
      .Boolean(true);
}

void Employee::AcctDataUseStandard(std::int16_t Index, bool value) {
  parts_->payroll
      .OfChangedLevel(Level(Index), EmployeeRecord::AcctDataUseStandard,
                      EmployeeAux5Record::UseStandard, Level(Index))
      .SetBoolean(value);
}

// The record takes the index as it is, which here alone is not brought into the range of the
// levels.
double Employee::PayRateAmount(std::int16_t Index) {
  return parts_->payroll
      .OfLevel(Level(Index), EmployeeRecord::PayRateAmount, EmployeeAux5Record::PayRateAmount,
               Index)
      .Double();
}

void Employee::PayRateAmount(std::int16_t Index, double value) {
  parts_->payroll
      .OfChangedLevel(Level(Index), EmployeeRecord::PayRateAmount,
                      EmployeeAux5Record::PayRateAmount, Index)
      .SetDouble(value);
}

// --- Payroll fields of the employee ---
//
// From release 19 on what is assigned to a payroll field stays in memory until another row is read:
// it never reaches the file.

std::uint8_t Employee::EEAdjust(std::int16_t Index1, std::int16_t Index2) {
  return parts_->payroll.Any(EmployeeAdjust, Index1, Index1, Index2).Byte();
}

void Employee::EEAdjust(std::int16_t Index1, std::int16_t Index2, std::uint8_t value) {
  parts_->payroll.Own(EmployeeAdjust, Index1, Index1, Index2).SetByte(value);
}

double Employee::EEAmount(std::int16_t Index) {
  return parts_->payroll.Any(EmployeeAmount, Index, Index).Double();
}

void Employee::EEAmount(std::int16_t Index, double value) {
  parts_->payroll.Own(EmployeeAmount, Index, Index).SetDouble(value);
}

std::string Employee::EECalcName(std::int16_t Index) {
  return parts_->payroll.Any(EmployeeCalcName, Index, Index).Text();
}

void Employee::EECalcName(std::int16_t Index, std::string_view value) {
  parts_->payroll.Own(EmployeeCalcName, Index, Index).SetText(value);
}

bool Employee::EECalcOn(std::int16_t Index) {
  return parts_->payroll.Any(EmployeeCalcOn, Index, Index).Boolean();
}

void Employee::EECalcOn(std::int16_t Index, bool value) {
  parts_->payroll.Own(EmployeeCalcOn, Index, Index).SetBoolean(value);
}

bool Employee::EEUseCustom(std::int16_t Index) {
  return parts_->payroll.Any(EmployeeCustom, Index, Index).Boolean();
}

void Employee::EEUseCustom(std::int16_t Index, bool value) {
  parts_->payroll.Own(EmployeeCustom, Index, Index).SetBoolean(value);
}

std::string Employee::EEGLAccount(std::int16_t Index) {
  EmployeePayroll& payroll = parts_->payroll;
  if (!payroll.HasAccounts()) return {};
  return payroll.AccountAt(payroll.Any(EmployeeAccount, Index, Index), "Employee.EEGLAccount");
}

void Employee::EEGLAccount(std::int16_t Index, std::string_view value) {
  EmployeePayroll& payroll = parts_->payroll;
  if (!payroll.HasAccounts()) return;
  const std::int32_t account = payroll.Accounts().AccountIndex(value, "Employee.EEGLAccount");
  payroll.Own(EmployeeAccount, Index, Index).SetLong(account);
}

// --- Payroll fields of the employer ---

std::uint8_t Employee::ERAdjust(std::int16_t Index1, std::int16_t Index2) {
  return parts_->payroll.Any(EmployerAdjust, EmployerRow(Index1), Index1, Index2).Byte();
}

void Employee::ERAdjust(std::int16_t Index1, std::int16_t Index2, std::uint8_t value) {
  parts_->payroll.Own(EmployerAdjust, EmployerRow(Index1), Index1, Index2).SetByte(value);
}

std::string Employee::ERCalcName(std::int16_t Index) {
  return parts_->payroll.Any(EmployerCalcName, EmployerRow(Index), Index).Text();
}

void Employee::ERCalcName(std::int16_t Index, std::string_view value) {
  parts_->payroll.Own(EmployerCalcName, EmployerRow(Index), Index).SetText(value);
}

bool Employee::ERCalcOn(std::int16_t Index) {
  return parts_->payroll.Any(EmployerCalcOn, EmployerRow(Index), Index).Boolean();
}

void Employee::ERCalcOn(std::int16_t Index, bool value) {
  parts_->payroll.Own(EmployerCalcOn, EmployerRow(Index), Index).SetBoolean(value);
}

bool Employee::ERUseCustom(std::int16_t Index) {
  return parts_->payroll.Any(EmployerCustom, EmployerRow(Index), Index).Boolean();
}

void Employee::ERUseCustom(std::int16_t Index, bool value) {
  parts_->payroll.Own(EmployerCustom, EmployerRow(Index), Index).SetBoolean(value);
}

// Reading names the employee's account in the message of a failure.
std::string Employee::ERExpenseAccount(std::int16_t Index) {
  EmployeePayroll& payroll = parts_->payroll;
  if (!payroll.HasAccounts()) return {};
  return payroll.AccountAt(payroll.Any(EmployerExpense, EmployerRow(Index), Index),
                           "Employee.EEGLAccount");
}

void Employee::ERExpenseAccount(std::int16_t Index, std::string_view value) {
  EmployeePayroll& payroll = parts_->payroll;
  if (!payroll.HasAccounts()) return;
  const std::int32_t account = payroll.Accounts().AccountIndex(value, "Employee.ERExpenseAccount");
  payroll.Own(EmployerExpense, EmployerRow(Index), Index).SetLong(account);
}

std::string Employee::ERLiabilityAccount(std::int16_t Index) {
  EmployeePayroll& payroll = parts_->payroll;
  if (!payroll.HasAccounts()) return {};
  return payroll.AccountAt(payroll.Any(EmployerLiability, EmployerRow(Index), Index),
                           "Employee.ERLiabilityAccount");
}

void Employee::ERLiabilityAccount(std::int16_t Index, std::string_view value) {
  EmployeePayroll& payroll = parts_->payroll;
  if (!payroll.HasAccounts()) return;
  const std::int32_t account =
      payroll.Accounts().AccountIndex(value, "Employee.ERLiabilityAccount");
  payroll.Own(EmployerLiability, EmployerRow(Index), Index).SetLong(account);
}

// --- Quarters ---

double Employee::PayrollEE(std::int16_t Quarter, std::int16_t Index) {
  return parts_->payroll.OfQuarterField(Quarter, Index, EmployeeRecord::PayrollEE, Index).Double();
}

void Employee::PayrollEE(std::int16_t Quarter, std::int16_t Index, double value) {
  parts_->payroll.SetQuarterField(Quarter, Index, EmployeeRecord::PayrollEE, Index, value);
}

double Employee::PayrollER(std::int16_t Quarter, std::int16_t Index) {
  return parts_->payroll
      .OfQuarterField(Quarter, Index, EmployeeRecord::PayrollER, EmployerRow(Index))
      .Double();
}

void Employee::PayrollER(std::int16_t Quarter, std::int16_t Index, double value) {
  parts_->payroll.SetQuarterField(Quarter, Index, EmployeeRecord::PayrollER, EmployerRow(Index),
                                  value);
}

double Employee::PayrollHoursLevel(std::int16_t Quarter, std::int16_t Index) {
  return parts_->payroll
      .OfQuarterLevel(Quarter, Index, EmployeeRecord::PayrollHoursLevel,
                      EmployeeAux4Record::HoursLevel)
      .Double();
}

void Employee::PayrollHoursLevel(std::int16_t Quarter, std::int16_t Index, double value) {
  parts_->payroll.SetQuarterLevel(Quarter, Index, EmployeeRecord::PayrollHoursLevel,
                                  EmployeeAux4Record::HoursLevel, value);
}

double Employee::PayrollPayLevel(std::int16_t Quarter, std::int16_t Index) {
  return parts_->payroll
      .OfQuarterLevel(Quarter, Index, EmployeeRecord::PayrollPayLevel, EmployeeAux4Record::PayLevel)
      .Double();
}

void Employee::PayrollPayLevel(std::int16_t Quarter, std::int16_t Index, double value) {
  parts_->payroll.SetQuarterLevel(Quarter, Index, EmployeeRecord::PayrollPayLevel,
                                  EmployeeAux4Record::PayLevel, value);
}

// Whole weeks are stored: as an Integer in the record, as a Long in the quarter's row.
double Employee::PayrollWeeks(std::int16_t Quarter) {
  EmployeePayroll& payroll = parts_->payroll;
  if (!payroll.HasRows()) {
    return parts_->table.Record().GetInteger(EmployeeRecord::PayrollWeeks, Quarter);
  }
  const Tovrin2Record* quarter = payroll.Rows().Quarter(Quarter);
  return quarter == nullptr ? 0 : quarter->GetLong(EmployeeAux2Record::Weeks);
}

void Employee::PayrollWeeks(std::int16_t Quarter, double value) {
  EmployeePayroll& payroll = parts_->payroll;
  if (!payroll.HasRows()) {
    return parts_->table.Record().SetInteger(EmployeeRecord::PayrollWeeks,
                                             Variant(value).ToInteger(), Quarter);
  }
  Tovrin2Record* quarter = payroll.Rows().Quarter(Quarter);
  if (quarter == nullptr) return;
  quarter->SetLong(EmployeeAux2Record::Weeks, Variant(value).ToLong());
  payroll.Rows().UpdateQuarter();
}

// --- Single fields ---

// A number that clients have as a text.
std::string Employee::DEPFSAStatus() {
  return std::to_string(parts_->table.Record().GetLong(EmployeeRecord::DEPFSAStatus));
}

void Employee::DEPFSAStatus(std::string_view value) {
  parts_->table.Record().SetLong(EmployeeRecord::DEPFSAStatus, Variant(value).ToLong());
}

// The last one of the earlier years.

double Employee::PrevUnused() {
  return parts_->table.Record().GetDouble(EmployeeRecord::PrevUnused, 0);
}

void Employee::PrevUnused(double value) {
  parts_->table.Record().SetDouble(EmployeeRecord::PrevUnused, value, 0);
}

std::int16_t Employee::PrevWeeks() {
  return parts_->table.Record().GetInteger(EmployeeRecord::PrevWeeks, 0);
}

void Employee::PrevWeeks(std::int16_t value) {
  parts_->table.Record().SetInteger(EmployeeRecord::PrevWeeks, value, 0);
}

}  // namespace larkmoor
