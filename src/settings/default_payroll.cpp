#include "settings/default_payroll.h"

#include "engine/records/employee_aux1.h"
#include "engine/tovrin_file_names.h"

namespace larkmoor {
namespace {

constexpr std::int16_t ByNumber = 0;

}  // namespace

DefaultPayroll::DefaultPayroll(SettingsFrame& settings)
    : settings_(settings),
      rows_(EmployeeAux1Record::Describe(), TovrinFileNames::EmployeeAuxFile1()) {}

Status DefaultPayroll::Open() {
  shown_ = -1;
  isChanged_ = false;
  return rows_.Open();
}

Status DefaultPayroll::Close() {
  if (isChanged_) rows_.File().btUpdate(ByNumber);
  isChanged_ = false;
  return rows_.Close();
}

Tovrin2Record* DefaultPayroll::Row(std::int32_t number) {
  if (number != shown_) {
    rows_.File().KeyLong(number, 0);
    if (rows_.File().btGetEqual(ByNumber) != StatusSuccess) return nullptr;
    shown_ = number;
  }
  return &rows_.Record();
}

}  // namespace larkmoor
