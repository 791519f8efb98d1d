#include "tables/settings_accounts.h"

#include "connection/status_messages.h"

namespace larkmoor {

/// A reset closes files under the objects that have them open.
template <typename Search>
Status SettingsAccounts::SearchAgainWhereClosed(Search search) {
  const Status status = search();
  if (status != StatusFileNotOpen) return status;
  file_.OpenKeeping();
  file_.Bind();
  return search();
}

std::string SettingsAccounts::AccountID(std::int32_t index, std::string_view) {
  if (index == 0 || !file_.OpenUnlessDenied(TovrinFile::NormalMode,
                                            {ErrorOpen, owner_, ".GetAccount->btChart.btOpen"})) {
    return {};
  }
  const Status status = SearchAgainWhereClosed([&] { return file_.FindIndex(index); });
  if (status == StatusSuccess) return file_.ID();
  if (status == StatusKeyNotFound && missing_ == Missing::ReadsEmpty) return {};
  Raise({ErrorRead, owner_, ".GetAccount->btChart.GetEqual("}, std::to_string(index) + ")", status);
}

std::int32_t SettingsAccounts::AccountIndex(std::string_view id, std::string_view) {
  if (id.empty() || !file_.OpenUnlessDenied(TovrinFile::NormalMode,
                                            {ErrorOpen, owner_, ".LetAccount->oChart.btOpen"})) {
    return 0;
  }
  const Status status = SearchAgainWhereClosed([&] { return file_.FindID(id); });
  if (status == StatusSuccess) return file_.Index();
  Raise({ErrorAccount, owner_, ".GetAccountIndex->oChart.GetForAccountID("}, std::string(id) + ")",
        status);
}

Status SettingsAccounts::Close() { return file_.IsOpen() ? file_.Close() : StatusSuccess; }

}  // namespace larkmoor
