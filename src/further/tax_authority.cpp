#include "further/tax_authority_parts.h"

namespace larkmoor {

Status TaxAuthority::CloseFile() {
  const Status status = parts_->table.CloseFile();
  parts_->accounts.Close();
  parts_->accounts.ForgetDenial();
  return status;
}

}  // namespace larkmoor
