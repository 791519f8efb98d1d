#include "tables/account_look_up.h"

#include "connection/status_messages.h"

namespace larkmoor {

std::string AccountLookUp::AccountID(std::int32_t index, std::string_view source) {
  if (index == 0) return {};
  OpenFor(source);
  return IDOf(index, {ErrorRead, source, "->Chart.GetEqual("});
}

std::int32_t AccountLookUp::AccountIndex(std::string_view id, std::string_view source) {
  if (id.empty()) return 0;
  OpenFor(source);
  return IndexOf(id, {ErrorAccount, source, "->Chart.GetForAccountID("});
}

void AccountLookUp::OpenFor(std::string_view source) {
  if (openedBy_ == OpenedBy::Class) return;
  OpenOnNeed(TovrinFile::NormalMode, {ErrorRead, source, "->Chart.Open"});
}

}  // namespace larkmoor
