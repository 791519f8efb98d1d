#include "masters/employee_rows.h"

#include "engine/records/employee.h"
#include "engine/records/employee_aux1.h"
#include "engine/records/employee_aux2.h"
#include "engine/records/employee_aux3.h"
#include "engine/records/employee_aux4.h"
#include "engine/records/employee_aux5.h"
#include "engine/records/employee_aux6.h"
#include "engine/tovrin_file_names.h"

namespace larkmoor {
namespace {

constexpr std::int16_t ByEmployee = 3;
constexpr std::int16_t ByNumber = 0;
constexpr std::int16_t ByQuarterAndNumber = 0;
constexpr std::int32_t None = -1;

}  // namespace

EmployeeRows::EmployeeRows(TableFrame& employees)
    : employees_(employees),
      levels_(EmployeeAux5Record::Describe(), TovrinFileNames::EmployeeAuxFile5()),
      fields_(EmployeeAux6Record::Describe(), TovrinFileNames::EmployeeAuxFile6()),
      defaults_(EmployeeAux1Record::Describe(), TovrinFileNames::EmployeeAuxFile1()),
      quarters_(EmployeeAux2Record::Describe(), TovrinFileNames::EmployeeAuxFile2()),
      quarterFields_(EmployeeAux3Record::Describe(), TovrinFileNames::EmployeeAuxFile3()),
      quarterLevels_(EmployeeAux4Record::Describe(), TovrinFileNames::EmployeeAuxFile4()) {}

/// In the order in which they are opened.
std::array<RecordFile*, 6> EmployeeRows::Files() {
  return {&levels_, &fields_, &defaults_, &quarters_, &quarterFields_, &quarterLevels_};
}

Status EmployeeRows::Open() {
  Status failure = StatusSuccess;
  for (RecordFile* file : Files()) {
    const bool isDefaults = file == &defaults_;
    const Status status =
        file->Open(isDefaults ? TovrinFile::ReadOnlyMode : TovrinFile::NormalMode);
    if (status != StatusSuccess) failure = status;
  }
  if (failure != StatusSuccess) {
    for (RecordFile* file : Files()) file->Close();
    return failure;
  }
  level_ = field_ = default_ = None;
  isLevelChanged_ = false;
  return failure;
}

void EmployeeRows::Close() {
  WriteChangedLevel();
  for (RecordFile* file : Files()) file->Close();
}

Tovrin2Record* EmployeeRows::Level(std::int32_t number) {
  if (number != level_) WriteChangedLevel();
  return Find(levels_, number, level_);
}

Tovrin2Record* EmployeeRows::Field(std::int32_t number) { return Find(fields_, number, field_); }

Tovrin2Record* EmployeeRows::Find(RecordFile& file, std::int32_t number, std::int32_t& remembered) {
  if (number != remembered) {
    file.File().KeyLong(Employee(), 0);
    file.File().KeyLong(number - 1, 4);
    if (file.File().btGetEqual(ByEmployee) != StatusSuccess) return nullptr;
    remembered = number;
  }
  return &file.Record();
}

Tovrin2Record* EmployeeRows::DefaultField(std::int32_t number) {
  if (number != default_) {
    defaults_.File().KeyLong(number - 1, 0);
    if (defaults_.File().btGetEqual(ByNumber) != StatusSuccess) return nullptr;
    default_ = number;
  }
  return &defaults_.Record();
}

Tovrin2Record* EmployeeRows::Quarter(std::int16_t quarter) {
  WriteQuarterKey(quarter);
  const bool isFound = quarters_.File().btGetEqual(ByEmployee) == StatusSuccess;
  return isFound ? &quarters_.Record() : nullptr;
}

Tovrin2Record* EmployeeRows::QuarterLevel(std::int16_t quarter, std::int16_t number) {
  return Quarter(quarter) == nullptr ? nullptr : FindInQuarter(quarterLevels_, number);
}

// The quarter is searched for in the file of its fields, which has no such key: there is no row.
// Clients see sums of 0 from release 19 on, and cannot change them.
Tovrin2Record* EmployeeRows::QuarterField(std::int16_t quarter, std::int32_t number) {
  WriteQuarterKey(quarter);
  const bool isFound = quarterFields_.File().btGetEqual(ByEmployee) == StatusSuccess;
  return isFound ? FindInQuarter(quarterFields_, number) : nullptr;
}

Tovrin2Record* EmployeeRows::FindInQuarter(RecordFile& file, std::int32_t number) {
  file.File().KeyText(quarters_.Record().GetText(EmployeeAux2Record::GUID), 0);
  file.File().KeyLong(number - 1, 16);
  const bool isFound = file.File().btGetEqual(ByQuarterAndNumber) == StatusSuccess;
  return isFound ? &file.Record() : nullptr;
}

void EmployeeRows::UpdateQuarter() { quarters_.File().btUpdate(ByEmployee); }

void EmployeeRows::UpdateQuarterLevel() { quarterLevels_.File().btUpdate(ByQuarterAndNumber); }

void EmployeeRows::UpdateQuarterField() { quarterFields_.File().btUpdate(ByQuarterAndNumber); }

void EmployeeRows::WriteQuarterKey(std::int16_t quarter) {
  quarters_.File().KeyLong(Employee(), 0);
  quarters_.File().KeyLong(quarter, 4);
}

void EmployeeRows::WriteChangedLevel() {
  if (isLevelChanged_) levels_.File().btUpdate(ByEmployee);
  isLevelChanged_ = false;
}

std::int32_t EmployeeRows::Employee() { return employees_.Record().GetLong(EmployeeRecord::Index); }

}  // namespace larkmoor
