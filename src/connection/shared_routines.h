// Routines that open a company file for the length of one call, on file and record objects of their
// own, so that they disturb no position that a client holds. All work in `gCompanyPath`.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include <larkmoor/status.h>

namespace larkmoor {

/// Index of the employee with that ID; 0 for the empty text. Where the look-up fails a message box
/// tells it and the result is 0.
std::int32_t EmployeeIndexFromID(std::string_view id);

/// Counts one more entry for a journal (its code is the index) in the batch counters of the general
/// file. False only where the file does not open.
bool IncrementBatchEntry(std::int16_t index);

/// Largest record number of the journal headers; 1 where there is none, -1 where the file does not
/// open.
std::int32_t MaxNRecord();

/// Largest transaction number of a journal in a period, over the unbroken run of key 0 that begins
/// at transaction 1; 0 where there is none, -1 where the file does not open.
std::int32_t MaxTrxNumber(std::int16_t period, std::int16_t journal);

// The last and next document numbers in the general file. A read gives the empty text where the
// file or its row cannot be read. A write returns 3 where the file does not open, 4 where the row
// is not there, otherwise the status of the update.
std::string ReadLastPONumber();
Status WriteLastPONumber(std::string_view value);
std::string ReadNextInvoiceNumber();
Status WriteNextInvoiceNumber(std::string_view value);
std::string ReadNextQuoteNumber();
Status WriteNextQuoteNumber(std::string_view value);
std::string ReadNextSONumber();
Status WriteNextSONumber(std::string_view value);

}  // namespace larkmoor
