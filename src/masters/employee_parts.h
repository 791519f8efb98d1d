#pragma once

#include <larkmoor/masters/employee.h>

#include "engine/records/employee.h"
#include "engine/tovrin_file_names.h"
#include "masters/employee_payroll.h"
#include "tables/table_frame.h"

namespace larkmoor {

struct Employee::Parts {
  TableFrame table{EmployeeRecord::Describe(), TovrinFileNames::EmployeeFile()};
  EmployeePayroll payroll{table};
};

}  // namespace larkmoor
