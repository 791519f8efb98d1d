#include "connection/shared_routines.h"
#include "journals/cash_receipt_journal_parts.h"
#include "journals/sales_rep.h"

namespace larkmoor {

Status CashReceiptJournal::CloseFile() {
  return parts_->journal.CloseFile({{parts_->employees, "Employee"}});
}

std::uint8_t CashReceiptJournal::RecordByte(std::int32_t Index) {
  return parts_->journal.File().RecordByte(Index);
}

std::string CashReceiptJournal::SalesRepID() {
  return SalesRepOf(parts_->journal.Record(), parts_->employees);
}

void CashReceiptJournal::SalesRepID(std::string_view value) {
  parts_->journal.Record().SetLong(JrnlHdrRecord::SalesRepIndex, EmployeeIndexFromID(value));
}

}  // namespace larkmoor
