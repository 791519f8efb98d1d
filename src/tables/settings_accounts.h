// Accounts by their IDs, as the company's settings and the tax authorities show them: quiet where
// the user may not see the chart of accounts, and steady where its file was closed under the
// object.
#pragma once

#include <string>
#include <string_view>

#include "tables/guarded_look_up.h"

namespace larkmoor {

class SettingsAccounts {
 public:
  /// What an index that no account has does on reading.
  enum class Missing { Raises, ReadsEmpty };

  /// `owner` is the name of the class, which opens every message.
  SettingsAccounts(std::string_view owner, Missing missing) : owner_(owner), missing_(missing) {}

  /// Empty for no account and where the user is refused. The message names the class and not the
  /// property that asks.
  std::string AccountID(std::int32_t index, std::string_view property);
  /// 0 for the empty text and where the user is refused. An ID that is not there raises 0x80040205.
  std::int32_t AccountIndex(std::string_view id, std::string_view property);

  /// Has a refusal forgotten, for the class's `OpenFile`.
  void ForgetDenial() { file_.ForgetDenial(); }
  /// Returns the status of the close, 0 where the file was not looked into.
  Status Close();

 private:
  template <typename Search>
  Status SearchAgainWhereClosed(Search search);

  std::string_view owner_;
  Missing missing_;
  GuardedLookUp file_{AccountTable};
};

}  // namespace larkmoor
