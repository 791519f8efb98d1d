#include "settings/company_information_parts.h"

namespace larkmoor {

std::string CompanyInformation::BusinessType() {
  switch (BusinessTypeCode()) {
    case 0:
      return "Corporation";
    case 1:
      return "S Corporation";
    case 2:
      return "Partnership";
    case 3:
      return "Sole Proprietership";
    default:
      return "Limited Liability Company";
  }
}

bool CompanyInformation::RealTime() {
  return parts_->table.Record().GetByte(CompanyRecord::RealTime) == 1;
}

void CompanyInformation::RealTime(bool value) {
  parts_->table.Record().SetByte(CompanyRecord::RealTime, value ? 1 : 0);
}

std::int32_t CompanyInformation::StructureLength() {
  return static_cast<std::int32_t>(
      CompanyRecord::Describe().LengthFor(parts_->table.FileVersion()));
}

}  // namespace larkmoor
