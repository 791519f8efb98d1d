// Accounts by their IDs, as an employee's many accounts want them: from the file, or from memory,
// so that a walk over all employees does not read the file for each.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "tables/master_look_up.h"

namespace larkmoor {

class EmployeeAccounts {
 public:
  /// Reads all accounts into memory; where they are there already, or `cache` is false, forgets
  /// them. Returns 0, or the status of a failed open.
  Status Cache(bool cache);
  void Forget();

  /// From memory an account that is not there reads as empty, or 0; from the file it raises
  /// 0x80040204 by index and 0x80040205 by ID. `source` opens the message.
  std::string AccountID(std::int32_t index, std::string_view source);
  std::int32_t AccountIndex(std::string_view id, std::string_view source);

  /// Forgets the mark of the open file and what is in memory.
  void Reset();
  void Close();

 private:
  struct Account {
    std::int32_t index;
    std::string id;
  };

  void ReadAll();

  MasterLookUp file_{AccountTable};
  std::vector<Account> accounts_;  // in physical order
  bool areCached_ = false;
};

}  // namespace larkmoor
