#include "ledger.h"

#include <larkmoor/masters/chart.h>

#include "engine/records/chart.h"
#include "engine/records/jrnl_hdr.h"
#include "engine/tovrin_file_names.h"
#include "failure.h"
#include "journals.h"
#include "journals/header_fields.h"
#include "money.h"
#include "text_tools.h"

namespace larkmoor::cli {
namespace {

/// The key along which the rows of a transaction lie in their order.
constexpr std::int16_t InOrder = 1;

bool IsPosted(Tovrin2Record& header) { return Posts(header.GetInteger(JrnlHdrRecord::JournalID)); }

}  // namespace

// --- Accounts ---

std::string Account::TypeText() const {
  if (type == UnknownType) return {};
  Chart chart;
  chart.AccountType(type);
  return chart.AccountTypeDescription();
}

std::map<std::int32_t, Account> ReadAccounts() {
  RecordFile chart(ChartRecord::Describe(), TovrinFileNames::ChartFile());
  OpenForReading(chart);
  std::map<std::int32_t, Account> accounts;
  const Tovrin2Record& record = chart.Record();
  Status status = chart.File().btStepFirst();
  for (; status == StatusSuccess; status = chart.File().btStepNext()) {
    accounts[record.GetLong(ChartRecord::Index)] = {record.GetText(ChartRecord::AccountID),
                                                    record.GetText(ChartRecord::AccountDescription),
                                                    record.GetInteger(ChartRecord::AccountType)};
  }
  if (status != StatusEndOfFile) Require(status, TovrinFileNames::ChartFile());
  return accounts;
}

Account AccountOf(const std::map<std::int32_t, Account>& accounts, std::int32_t index) {
  const auto found = accounts.find(index);
  if (found != accounts.end()) return found->second;
  return {.id = {},
          .description =
              index == 0 ? "no account" : "no account on file, index " + std::to_string(index)};
}

// --- Postings ---

Currency LedgerEntry::Total() const {
  Currency total;
  for (const Posting& posting : postings) total = Sum(total, posting.amount);
  return total;
}

LedgerWalk::LedgerWalk(Output output)
    : headers_(IsPosted, output), rows_(TovrinFileNames::JrnlRowFile()) {
  OpenForReading(rows_);
}

bool LedgerWalk::Next() {
  if (!headers_.Next()) return false;
  Fill();
  if (entry_.Total() != Currency()) outOfBalance_.push_back(entry_.nRecord);
  return true;
}

void LedgerWalk::Fill() {
  const Tovrin2Record& header = headers_.Header();
  entry_ = {.nRecord = header.GetLong(JrnlHdrRecord::NRecord),
            .date = Date(header.GetDate(JrnlHdrRecord::TrxDate)),
            .number = header.GetText(JrnlHdrRecord::Reference),
            .name = header.GetText(JrnlHdrRecord::Description),
            .postings = {}};
  const std::int32_t mainAccount =
      HasMainAccount(headers_.Release()) ? header.GetLong(JrnlHdrRecord::MainAccountIndex) : 0;
  Post(mainAccount, header.GetDouble(JrnlHdrRecord::Amount), {});
  AddRows();
}

void LedgerWalk::AddRows() {
  const Tovrin2Record& row = rows_.Record();
  const Status status = rows_.ReadRows(entry_.nRecord, InOrder, [&] {
    Post(row.GetLong(JrnlRowRecord::AccountIndex), row.GetDouble(JrnlRowRecord::Amount),
         row.GetText(JrnlRowRecord::Description));
  });
  if (status != StatusEndOfFile) Require(status, TovrinFileNames::JrnlRowFile());
}

/// Rows that name neither account nor amount are mere text.
void LedgerWalk::Post(std::int32_t account, double amount, const std::string& text) {
  const Currency money = MoneyOf(amount, NameOfTransaction(headers_.Header()));
  if (account != 0 || money != Currency()) entry_.postings.push_back({account, money, text});
}

void LedgerWalk::ReportImbalances() const {
  if (outOfBalance_.empty()) return;
  const auto count = static_cast<long long>(outOfBalance_.size());
  Report(Counted(count, "transaction") + (count == 1 ? " does" : " do") +
         " not add up to 0.00, the first of them that of NRecord " +
         std::to_string(outOfBalance_.front()));
}

std::map<std::int32_t, Currency> AccountBalances() {
  std::map<std::int32_t, Currency> balances;
  LedgerWalk walk(Output::Waits);
  while (walk.Next()) {
    for (const Posting& posting : walk.Entry().postings) {
      Currency& balance = balances[posting.account];
      balance = Sum(balance, posting.amount);
    }
  }
  walk.ReportImbalances();
  return balances;
}

}  // namespace larkmoor::cli
