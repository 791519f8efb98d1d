#include "masters/chart_budget.h"

#include "connection/status_messages.h"
#include "engine/records/budget.h"
#include "engine/records/budget_detail.h"
#include "engine/tovrin_file_names.h"
#include "tables/master_look_up.h"

namespace larkmoor {
namespace {

constexpr std::int16_t ByBudgetID = 1;
constexpr std::int16_t ByBudgetAndAccount = 0;
constexpr std::int16_t AccountInKey = 16;

}  // namespace

ChartBudget::ChartBudget()
    : budgets_(BudgetRecord::Describe(), TovrinFileNames::BudgetFile()),
      details_(BudgetDetailRecord::Describe(), TovrinFileNames::BudgetDetailFile()) {}

double ChartBudget::Amount(std::int16_t period) {
  Load();
  return amounts_[static_cast<std::size_t>(period)];
}

void ChartBudget::SetAmount(std::int16_t period, double amount) {
  Load();
  amounts_[static_cast<std::size_t>(period)] = amount;
  isChanged_ = true;
}

void ChartBudget::Load() {
  if (isLoaded_ || isUnavailable_) return;
  if (budgetGUID_.empty()) {
    if (!OpenFiles()) return;
    FindBudget();
    if (budgetGUID_.empty()) return;
  }
  // The account's half of the key stays as it is, so that the amounts do not go by the account.
  details_.File().KeyText(budgetGUID_, 0);
  const bool isFound = details_.File().btGetEqual(ByBudgetAndAccount) == StatusSuccess;
  for (std::int16_t period = 0; period <= LastPeriod; ++period) {
    amounts_[static_cast<std::size_t>(period)] =
        isFound ? details_.Record().GetDouble(BudgetDetailRecord::Amount, period) : 0;
  }
  isLoaded_ = true;
}

/// False where the user is refused.
bool ChartBudget::OpenFiles() {
  if (areFilesOpen_) return true;
  const Status status = budgets_.OpenKeeping();
  if (status != StatusSuccess) {
    budgets_.File().btClose();
    amounts_ = {};
    if (!IsDenial(status)) {
      RaiseBtrieveError(ErrorOpen, "Chart:CacheBudget->btOpen(Budget)", status);
    }
    isLoaded_ = isUnavailable_ = true;
    return false;
  }
  if (details_.OpenKeeping() != StatusSuccess) {
    // What counts is what the close says of a file that did not open.
    const Status closed = details_.File().btClose();
    budgets_.File().btClose();
    RaiseBtrieveError(ErrorOpen, "Chart:CacheBudget->btOpen(BDDetail)", closed);
  }
  areFilesOpen_ = true;
  return true;
}

void ChartBudget::FindBudget() {
  budgets_.File().KeyTerminated("Budget", 0);
  if (budgets_.File().btGetEqual(ByBudgetID) == StatusSuccess) {
    budgetGUID_ = budgets_.Record().GetText(BudgetRecord::BudgetGUID);
  } else {
    budgetGUID_.clear();
    amounts_ = {};
  }
}

void ChartBudget::Write(const std::string& accountGUID) {
  if (!isChanged_ || isUnavailable_) return;
  details_.OpenKeeping();
  TovrinFile& file = details_.File();
  Tovrin2Record& record = details_.Record();
  file.KeyText(budgetGUID_, 0);
  file.KeyText(accountGUID, AccountInKey);
  const Status found = file.btGetEqual(ByBudgetAndAccount);
  for (std::int16_t period = 0; period <= LastPeriod; ++period) {
    record.SetDouble(BudgetDetailRecord::Amount, amounts_[static_cast<std::size_t>(period)],
                     period);
  }
  if (found == StatusSuccess) {
    file.btUpdate(ByBudgetAndAccount);
  } else {
    record.SetText(BudgetDetailRecord::BudgetGUID, budgetGUID_);
    record.SetText(BudgetDetailRecord::AccountGUID, accountGUID);
    file.btInsert(ByBudgetAndAccount);
  }
  // The mark stays: a later close meets a file that is not open, and lets that pass.
  file.btClose();
  isChanged_ = false;
}

void ChartBudget::Forget() {
  if (areFilesOpen_) {
    budgets_.File().btClose();
    details_.File().btClose();
  }
  areFilesOpen_ = isLoaded_ = isChanged_ = isUnavailable_ = false;
  budgetGUID_.clear();
}

void ChartBudget::Close(std::string& message, Status& failure) {
  if (!areFilesOpen_) return;
  NoteClose(budgets_.Close(), "Budget", message, failure);
  NoteClose(details_.Close(), "BDDetail", message, failure);
  areFilesOpen_ = false;
}

void NoteClose(Status status, std::string_view file, std::string& message, Status& failure) {
  if (status == StatusSuccess || status == StatusFileNotOpen) return;
  failure = status;
  message.append("\r\n->btClose(").append(file).append("):").append(std::to_string(status));
}

}  // namespace larkmoor
