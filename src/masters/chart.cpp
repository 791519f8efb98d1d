#include "connection/conversions.h"
#include "connection/status_messages.h"
#include "masters/chart_parts.h"

namespace larkmoor {
namespace {

constexpr std::int16_t ByIndex = 3;
/// From this release on the budget lies in files of its own.
constexpr std::int16_t BudgetFiles = 14;

struct TypeText {
  std::int16_t type;
  std::string_view text;
};

constexpr TypeText TypeTexts[] = {{0, "Cash"},
                                  {1, "Accounts Receivable"},
                                  {2, "Inventory"},
                                  {4, "Other Current Assets"},
                                  {5, "Fixed Assets"},
                                  {6, "Accumulated Depreciation"},
                                  {8, "Other Assets"},
                                  {10, "Accounts Payable"},
                                  {12, "Other Current Liabilities"},
                                  {14, "Long Term Liabilities"},
                                  {16, "Equity-doesn't close"},
                                  {18, "Equity-Retained Earnings"},
                                  {19, "Equity-gets closed"},
                                  {21, "Income"},
                                  {23, "Cost of Sales"},
                                  {24, "Expenses"}};

std::int16_t BudgetPeriod(std::int16_t index, std::int16_t release) {
  constexpr std::int16_t LastBelow11 = 41;
  return Clamp(index, 0, release < 11 ? LastBelow11 : ChartBudget::LastPeriod);
}

}  // namespace

Status Chart::OpenFile() {
  const Status status = parts_->table.OpenFile();
  parts_->table.SetKeyNumber(ByIndex);
  parts_->table.File().KeyLong(0, 0);
  parts_->budget.Forget();
  return status;
}

Status Chart::CloseFile() {
  std::string message;
  Status failure = StatusSuccess;
  parts_->budget.Close(message, failure);
  NoteClose(parts_->table.CloseFile(), "Chart", message, failure);
  if (!message.empty()) RaiseBtrieveError(ErrorClose, message, failure);
  return StatusSuccess;
}

// A budget is written even where the engine refuses the account.
Status Chart::Insert() {
  const Status status = parts_->table.Insert();
  parts_->budget.Write(GUID());
  return status;
}

Status Chart::Update() {
  const Status status = parts_->table.Update();
  parts_->budget.Write(GUID());
  return status;
}

std::string Chart::AccountTypeDescription() {
  const auto found = std::ranges::find(TypeTexts, AccountType(), &TypeText::type);
  return std::string(found == std::end(TypeTexts) ? "<unknown>" : found->text);
}

double Chart::Budget(std::int16_t Index) {
  const std::int16_t release = parts_->Release();
  const std::int16_t period = BudgetPeriod(Index, release);
  if (release >= BudgetFiles) return parts_->budget.Amount(period);
  return parts_->table.Record().GetDouble(ChartRecord::Budget, period);
}

void Chart::Budget(std::int16_t Index, double value) {
  const std::int16_t release = parts_->Release();
  const std::int16_t period = BudgetPeriod(Index, release);
  if (release >= BudgetFiles) return parts_->budget.SetAmount(period, value);
  parts_->table.Record().SetDouble(ChartRecord::Budget, value, period);
}

}  // namespace larkmoor
