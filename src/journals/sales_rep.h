// The sales representative of a transaction: an employee's index in the header, shown as an ID.
#pragma once

#include <string>

#include "engine/tovrin_record.h"
#include "tables/master_look_up.h"

namespace larkmoor {

/// Opens "Employee.dat" for reading only, unless it is open. A failure is raised.
void OpenSalesReps(MasterLookUp& employees);
/// The ID of the header's sales representative, empty for none. The file is opened whatever the
/// header says.
std::string SalesRepOf(const Tovrin2Record& header, MasterLookUp& employees);

}  // namespace larkmoor
