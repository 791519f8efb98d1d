// Accounts by their IDs.
//
// Records bear the index of an account, clients see its ID. 0 and the empty text stand for no
// account and touch no file. An account that does not exist is an error in both directions.
#pragma once

#include "tables/master_look_up.h"

namespace larkmoor {

/// "Chart.dat" as a class looks into it. `source` is the name of the property that asks, and opens
/// the message of every failure.
class AccountLookUp : public MasterLookUp {
 public:
  /// Who opens the file: the class itself in its `OpenFile`, or the first look-up.
  enum class OpenedBy { Class, FirstUse };

  explicit AccountLookUp(OpenedBy openedBy) : MasterLookUp(AccountTable), openedBy_(openedBy) {}

  std::string AccountID(std::int32_t index, std::string_view source);
  std::int32_t AccountIndex(std::string_view id, std::string_view source);

 private:
  void OpenFor(std::string_view source);

  OpenedBy openedBy_;
};

}  // namespace larkmoor
