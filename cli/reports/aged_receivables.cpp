#include <algorithm>
#include <array>
#include <cmath>
#include <iterator>
#include <map>

#include <larkmoor/journal_code.h>

#include "engine/records/jrnl_hdr.h"
#include "header_walk.h"
#include "money.h"
#include "reports/customers.h"
#include "reports/report_table.h"
#include "reports/reports.h"
#include "value_text.h"

namespace larkmoor::cli {
namespace {

using automation::ValueType;

/// Days due up to which an amount stands in a column; the last column holds all others.
constexpr std::array LastDays = {0.0, 30.0, 60.0, 90.0};
using Ages = std::array<Currency, LastDays.size() + 1>;

double DayOf(const Tovrin2Record& header, const Field& field) {
  return std::floor(header.GetDate(field));
}

/// An invoice without a day on which it is to be paid is due at once.
double DueDayOf(const Tovrin2Record& header) {
  const bool hasDay = !TextOf(Date(header.GetDate(JrnlHdrRecord::DateDue))).empty();
  return DayOf(header, hasDay ? JrnlHdrRecord::DateDue : JrnlHdrRecord::TrxDate);
}

Currency OpenAmountOf(const Tovrin2Record& header) {
  const std::string name = NameOfTransaction(header);
  return Difference(MoneyOf(header.GetDouble(JrnlHdrRecord::Amount), name),
                    MoneyOf(header.GetDouble(JrnlHdrRecord::PaidOnInvoice), name));
}

std::size_t AgeOf(double daysDue) {
  return static_cast<std::size_t>(
      std::ranges::distance(LastDays.begin(), std::ranges::lower_bound(LastDays, daysDue)));
}

void Add(Ages& ages, std::size_t age, Currency amount) { ages[age] = Sum(ages[age], amount); }

/// The open amounts by the customer's index; none of a customer whose invoices are all paid.
std::map<std::int32_t, Ages> OpenAmounts(double asOf) {
  HeaderWalk walk(
      [&](const Tovrin2Record& header) {
        return header.GetInteger(JrnlHdrRecord::JournalID) == tovJournalCodeSales &&
               DayOf(header, JrnlHdrRecord::TrxDate) <= asOf;
      },
      Output::Waits);
  std::map<std::int32_t, Ages> open;
  while (walk.Next()) {
    const Tovrin2Record& header = walk.Header();
    const Currency amount = OpenAmountOf(header);
    if (amount == Currency()) continue;
    Add(open[header.GetLong(JrnlHdrRecord::IDNumber)], AgeOf(asOf - DueDayOf(header)), amount);
  }
  return open;
}

std::vector<Variant> RowOf(std::string_view id, std::string_view name, const Ages& ages) {
  std::vector<Variant> row = {id, name};
  Currency total;
  for (const Currency amount : ages) {
    row.emplace_back(InCents(amount));
    total = Sum(total, amount);
  }
  row.emplace_back(InCents(total));
  return row;
}

}  // namespace

void WriteAgedReceivables(const Date& asOf, const std::string& format, std::ostream& out) {
  Customers customers;
  std::multimap<std::string, std::vector<Variant>> rowsByID;
  Ages totals;
  for (const auto& [index, ages] : OpenAmounts(std::floor(asOf.Serial()))) {
    const CustomerName& customer = customers.Of(index);
    rowsByID.emplace(customer.id, RowOf(customer.id, customer.name, ages));
    for (std::size_t age = 0; age < ages.size(); ++age) Add(totals, age, ages[age]);
  }
  ReportTable table({{"CustomerID", ValueType::String},
                     {"CustomerName", ValueType::String},
                     {"NotDue", ValueType::Currency},
                     {"Days1To30", ValueType::Currency},
                     {"Days31To60", ValueType::Currency},
                     {"Days61To90", ValueType::Currency},
                     {"Over90", ValueType::Currency},
                     {"Total", ValueType::Currency}},
                    format, out);
  for (const auto& [id, row] : rowsByID) table.Write(row);
  table.WriteTotals(RowOf("Total", {}, totals));
  table.Finish();
}

}  // namespace larkmoor::cli
