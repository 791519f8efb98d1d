#include <algorithm>
#include <utility>
#include <vector>

#include "ledger.h"
#include "money.h"
#include "reports/report_table.h"
#include "reports/reports.h"

namespace larkmoor::cli {
namespace {

using automation::ValueType;

struct Line {
  Account account;
  Currency balance;
};

/// By ID, what belongs to no account behind them.
std::vector<Line> Lines() {
  const std::map<std::int32_t, Account> accounts = ReadAccounts();
  std::vector<Line> lines;
  for (const auto& [index, balance] : AccountBalances()) {
    lines.push_back({AccountOf(accounts, index), balance});
  }
  std::ranges::stable_sort(lines, {}, [](const Line& line) {
    return std::pair(line.account.type == Account::UnknownType, line.account.id);
  });
  return lines;
}

bool IsDebit(const Line& line) { return line.balance >= Currency(); }

/// The balance without its sign.
Currency SizeOf(const Line& line) {
  return IsDebit(line) ? line.balance : Difference(Currency(), line.balance);
}

/// On the side that the account does not stand on a person sees a blank, and a program a number.
std::vector<Variant> RowOf(const Line& line, const std::string& format) {
  std::vector<Variant> row = {line.account.id, line.account.description, line.account.TypeText()};
  for (const bool isDebitSide : {true, false}) {
    if (IsDebit(line) == isDebitSide) {
      row.emplace_back(InCents(SizeOf(line)));
    } else if (format == "table") {
      row.emplace_back();
    } else {
      row.emplace_back(Currency());
    }
  }
  return row;
}

}  // namespace

void WriteTrialBalance(const std::string& format, std::ostream& out) {
  const std::vector<Line> lines = Lines();
  ReportTable table({{"AccountID", ValueType::String},
                     {"Description", ValueType::String},
                     {"Type", ValueType::String},
                     {"Debit", ValueType::Currency},
                     {"Credit", ValueType::Currency}},
                    format, out);
  Currency debits;
  Currency credits;
  for (const Line& line : lines) {
    Currency& total = IsDebit(line) ? debits : credits;
    total = Sum(total, SizeOf(line));
    table.Write(RowOf(line, format));
  }
  table.WriteTotals({"Total", {}, {}, InCents(debits), InCents(credits)});
  table.Finish();
}

}  // namespace larkmoor::cli
