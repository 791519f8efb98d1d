// What the transactions of the connected company add up to. All reports read the records themselves
// and write to no file, so that a company on a medium that can only be read has them too.
#pragma once

#include <cstdint>
#include <optional>
#include <ostream>
#include <string>

#include <larkmoor/date.h>

namespace larkmoor::cli {

/// Which invoices a register shows.
struct RegisterRange {
  std::optional<std::int16_t> period;
  std::optional<std::int32_t> year;  ///< of their dates
};

/// The invoices by date, with a running total.
void WriteRegister(const RegisterRange& range, const std::string& format, std::ostream& out);

/// One invoice with its addresses and rows. Raises a `Failure` where there is none of that number.
void WriteInvoice(const std::string& number, const std::string& format, std::ostream& out);

/// The balance of every account that is posted to, by ID.
void WriteTrialBalance(const std::string& format, std::ostream& out);

/// What each customer owes of the invoices up to a day, by how long it has been due on that day.
void WriteAgedReceivables(const Date& asOf, const std::string& format, std::ostream& out);

}  // namespace larkmoor::cli
