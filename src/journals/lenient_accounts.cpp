#include "journals/lenient_accounts.h"

#include "connection/status_messages.h"

namespace larkmoor {
namespace {

AccountLookUp& OpenAccounts(TransactionFrame& frame, std::string_view property) {
  frame.Accounts().OpenOnNeed(TovrinFile::NormalMode, {ErrorOpen, property, "=>Chart.OpenFile"});
  return frame.Accounts();
}

}  // namespace

std::string LenientAccountID(TransactionFrame& frame, std::int32_t index,
                             std::string_view property) {
  if (index == 0 || frame.AreAccountsDenied()) return {};
  AccountLookUp& accounts = OpenAccounts(frame, property);
  return accounts.FindIndex(index) == StatusSuccess ? accounts.ID() : std::string();
}

std::int32_t LenientAccountIndex(TransactionFrame& frame, std::string_view id,
                                 std::string_view property, std::string_view shown) {
  if (id.empty()) return 0;
  AccountLookUp& accounts = OpenAccounts(frame, property);
  const Status status = accounts.FindID(id);
  if (status == StatusSuccess) return accounts.Index();
  Raise({ErrorRead, property, "=>Chart.GetEqual("}, std::string(shown) + ")", status);
}

}  // namespace larkmoor
