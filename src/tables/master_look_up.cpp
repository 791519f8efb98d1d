#include "tables/master_look_up.h"

#include "connection/status_messages.h"
#include "engine/records/chart.h"
#include "engine/records/cost.h"
#include "engine/records/customer.h"
#include "engine/records/employee.h"
#include "engine/records/job_data.h"
#include "engine/records/line_item.h"
#include "engine/records/phase.h"
#include "engine/records/vendor.h"

namespace larkmoor {

const MasterTable AccountTable{ChartRecord::Describe, "Chart.dat", ChartRecord::AccountID,
                               ChartRecord::Index, 3};
const MasterTable CostTable{CostRecord::Describe, "Cost.dat", CostRecord::CostID, CostRecord::Index,
                            1};
const MasterTable CustomerTable{CustomerRecord::Describe, "Customer.dat",
                                CustomerRecord::CustomerID, CustomerRecord::Index, 4};
const MasterTable EmployeeTable{EmployeeRecord::Describe, "Employee.dat",
                                EmployeeRecord::EmployeeID, EmployeeRecord::Index, 4};
const MasterTable ItemTable{LineItemRecord::Describe, "LineItem.dat", LineItemRecord::ItemID,
                            LineItemRecord::Index, 2};
const MasterTable JobTable{JobDataRecord::Describe, "Project.dat", JobDataRecord::JobID,
                           JobDataRecord::Index, 1};
const MasterTable PhaseTable{PhaseRecord::Describe, "Phase.dat", PhaseRecord::PhaseID,
                             PhaseRecord::Index, 1};
const MasterTable VendorTable{VendorRecord::Describe, "Vendor.dat", VendorRecord::VendorID,
                              VendorRecord::Index, 5};

void Raise(const LookUpError& error, std::string_view sought, Status status) {
  RaiseBtrieveError(error.number, std::string(error.property).append(error.step).append(sought),
                    status);
}

MasterLookUp::MasterLookUp(const MasterTable& table)
    : RecordFile(table.describe(), table.fileName), table_(table) {}

Status MasterLookUp::FindIndex(std::int32_t index) {
  File().KeyLong(index, 0);
  return File().btGetEqual(table_.indexKey);
}

Status MasterLookUp::FindID(std::string_view id) {
  File().KeyTerminated(id, 0);
  return File().btGetEqual(0);
}

std::string MasterLookUp::ID() { return Record().GetText(table_.id); }

std::int32_t MasterLookUp::Index() { return Record().GetLong(table_.index); }

void MasterLookUp::OpenOnNeed(std::int16_t mode, const LookUpError& error) {
  if (IsOpen()) return;
  const Status status = Open(mode);
  if (status != StatusSuccess) Raise(error, "", status);
}

std::string MasterLookUp::IDOf(std::int32_t index, const LookUpError& error) {
  const Status status = FindIndex(index);
  if (status == StatusSuccess) return ID();
  Raise(error, std::to_string(index) + ")", status);
}

std::int32_t MasterLookUp::IndexOf(std::string_view id, const LookUpError& error) {
  const Status status = FindID(id);
  if (status == StatusSuccess) return Index();
  Raise(error, std::string(id) + ")", status);
}

std::string MasterLookUp::ReferenceID(std::int32_t index, const ReferenceErrors& errors) {
  if (index == 0) return {};
  OpenOnNeed(TovrinFile::NormalMode, errors.open);
  return IDOf(index, errors.byIndex);
}

std::int32_t MasterLookUp::ReferenceIndex(std::string_view id, const ReferenceErrors& errors) {
  if (id.empty()) return 0;
  OpenOnNeed(TovrinFile::NormalMode, errors.openByID);
  return IndexOf(id, errors.byID);
}

}  // namespace larkmoor
