#include "journals/payroll_frame.h"

namespace larkmoor {

Status PayrollFrame::OpenFile() {
  Status status = OpenTransactions();
  if (status != StatusSuccess) return status;
  OpenAccounts();
  if (AreAccountsDenied()) Accounts().Mark(false);
  status = employees_.Open();
  if (IsDenial(status)) employees_.Mark(false);
  if (IsDenial(status) || status == StatusSuccess) areEmployeesDenied_ = IsDenial(status);
  return status;
}

Status PayrollFrame::CloseFile() {
  rows_.Clear();
  return JournalFrame::CloseFile({{employees_, "Employee"}});
}

}  // namespace larkmoor
