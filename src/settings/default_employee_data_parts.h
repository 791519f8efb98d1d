#pragma once

#include <larkmoor/settings/default_employee_data.h>

#include "engine/records/default_employee_data.h"
#include "engine/records/default_w2_data.h"
#include "engine/records/employee_aux1.h"
#include "engine/tovrin_file_names.h"
#include "settings/default_payroll.h"
#include "settings/settings_frame.h"

namespace larkmoor {

struct DefaultEmployeeData::Parts {
  SettingsFrame settings{DefaultEmployeeDataRecord::Describe(), "DefaultEmployeeData"};
  RecordFile w2{DefaultW2DataRecord::Describe(), TovrinFileNames::GeneralFile()};
  DefaultPayroll payroll{settings};
};

}  // namespace larkmoor
