// The general ledger as plain text, in the form that the programs ledger and hledger read.
#pragma once

#include <ostream>

#include "progress.h"

namespace larkmoor::cli {

/// Writes the accounts of the connected company and all transactions that post. One that is out of
/// balance gets a further posting that evens it out, and is reported on standard error. `output`
/// tells whether `out` is standard output.
void WriteLedgerText(std::ostream& out, Output output);

}  // namespace larkmoor::cli
