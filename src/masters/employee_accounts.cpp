#include "masters/employee_accounts.h"

#include "connection/status_messages.h"

namespace larkmoor {

Status EmployeeAccounts::Cache(bool cache) {
  if (!cache || areCached_) {
    Forget();
    return StatusSuccess;
  }
  if (!file_.IsOpen()) {
    const Status status = file_.Open();
    if (status != StatusSuccess) return status;
  }
  ReadAll();
  areCached_ = true;
  file_.Close();
  return StatusSuccess;
}

/// No more than were counted at first: others may be adding accounts meanwhile.
void EmployeeAccounts::ReadAll() {
  accounts_.clear();
  const auto count = static_cast<std::size_t>(file_.File().btRecordCount());
  accounts_.reserve(count);
  for (Status status = file_.File().btStepFirst();
       status == StatusSuccess && accounts_.size() < count; status = file_.File().btStepNext()) {
    accounts_.push_back({file_.Index(), file_.ID()});
  }
}

void EmployeeAccounts::Forget() {
  accounts_.clear();
  areCached_ = false;
}

std::string EmployeeAccounts::AccountID(std::int32_t index, std::string_view source) {
  if (index == 0) return {};
  if (areCached_) {
    const auto found = std::ranges::find(accounts_, index, &Account::index);
    return found == accounts_.end() ? std::string() : found->id;
  }
  file_.OpenOnNeed(TovrinFile::NormalMode, {ErrorOpen, source, "->Chart.OpenFile"});
  return file_.IDOf(index, {ErrorRead, source, "->Chart.GetEqual("});
}

std::int32_t EmployeeAccounts::AccountIndex(std::string_view id, std::string_view source) {
  if (id.empty()) return 0;
  if (areCached_) {
    const auto found = std::ranges::find(accounts_, id, &Account::id);
    return found == accounts_.end() ? 0 : found->index;
  }
  file_.OpenOnNeed(TovrinFile::NormalMode, {ErrorOpen, source, "->Chart.Open"});
  return file_.IndexOf(id, {ErrorAccount, source, "->Chart.GetForAccountID("});
}

void EmployeeAccounts::Reset() {
  Forget();
  file_.Mark(false);
}

void EmployeeAccounts::Close() {
  Forget();
  if (file_.IsOpen()) file_.Close();
}

}  // namespace larkmoor
