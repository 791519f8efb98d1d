#include "journals/sales_rep.h"

#include "connection/status_messages.h"
#include "engine/records/jrnl_hdr.h"

namespace larkmoor {
namespace {

constexpr std::string_view Property = "JrnlHdr.SalesRepID";

}  // namespace

void OpenSalesReps(MasterLookUp& employees) {
  employees.OpenOnNeed(TovrinFile::ReadOnlyMode, {ErrorOpen, Property, "->Employee.OpenFile"});
}

std::string SalesRepOf(const Tovrin2Record& header, MasterLookUp& employees) {
  OpenSalesReps(employees);
  const std::int32_t index = header.GetLong(JrnlHdrRecord::SalesRepIndex);
  if (index == 0) return {};
  return employees.IDOf(index, {ErrorRead, Property, "->Employee.GetForIndex("});
}

}  // namespace larkmoor
