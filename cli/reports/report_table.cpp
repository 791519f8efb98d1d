#include "reports/report_table.h"

namespace larkmoor::cli {
namespace {

std::vector<Property> PropertiesOf(std::initializer_list<ReportColumn> columns) {
  std::vector<Property> properties;
  for (const ReportColumn& column : columns) {
    properties.push_back({.name = column.name, .type = column.type});
  }
  return properties;
}

}  // namespace

ReportShape::ReportShape(std::initializer_list<ReportColumn> columns)
    : shape_("report", PropertiesOf(columns)) {}

ReportTable::ReportTable(std::initializer_list<ReportColumn> columns, const std::string& format,
                         std::ostream& out)
    : shape_(columns), writer_(MakeRowWriter(format, out, shape_.Columns())) {}

}  // namespace larkmoor::cli
