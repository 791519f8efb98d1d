#include <larkmoor/journal_code.h>

#include "engine/records/jrnl_hdr.h"
#include "header_walk.h"
#include "money.h"
#include "reports/customers.h"
#include "reports/report_table.h"
#include "reports/reports.h"

namespace larkmoor::cli {
namespace {

using automation::ValueType;

bool IsWithin(const Tovrin2Record& header, const RegisterRange& range) {
  if (header.GetInteger(JrnlHdrRecord::JournalID) != tovJournalCodeSales) return false;
  if (range.period && header.GetInteger(JrnlHdrRecord::Period) != *range.period) return false;
  if (!range.year) return true;
  const Date date(header.GetDate(JrnlHdrRecord::TrxDate));
  return date.IsValid() && static_cast<int>(date.ToYmd().year()) == *range.year;
}

}  // namespace

void WriteRegister(const RegisterRange& range, const std::string& format, std::ostream& out) {
  Customers customers;
  HeaderWalk walk([&](const Tovrin2Record& header) { return IsWithin(header, range); },
                  Output::IsWritten);
  ReportTable table({{"Date", ValueType::Date},
                     {"InvoiceNumber", ValueType::String},
                     {"CustomerID", ValueType::String},
                     {"CustomerName", ValueType::String},
                     {"Amount", ValueType::Currency},
                     {"RunningTotal", ValueType::Currency}},
                    format, out);
  Currency total;
  while (walk.Next()) {
    const Tovrin2Record& header = walk.Header();
    const Currency amount =
        MoneyOf(header.GetDouble(JrnlHdrRecord::Amount), NameOfTransaction(header));
    total = Sum(total, amount);
    table.Write({Date(header.GetDate(JrnlHdrRecord::TrxDate)),
                 header.GetText(JrnlHdrRecord::Reference),
                 customers.Of(header.GetLong(JrnlHdrRecord::IDNumber)).id,
                 header.GetText(JrnlHdrRecord::Description), InCents(amount), InCents(total)});
  }
  table.Finish();
}

}  // namespace larkmoor::cli
