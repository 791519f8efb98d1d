// Customers by the index that transactions bear.
#pragma once

#include <cstdint>
#include <map>
#include <string>

#include "tables/master_look_up.h"

namespace larkmoor::cli {

struct CustomerName {
  std::string id;
  std::string name;
};

class Customers {
 public:
  /// Opens the file of the connected company. Raises a `Failure` where it does not open.
  Customers();

  /// The customer of an index; one without an ID where there is none.
  const CustomerName& Of(std::int32_t index);

 private:
  CustomerName Read(std::int32_t index);

  MasterLookUp file_;
  std::map<std::int32_t, CustomerName> known_;
};

}  // namespace larkmoor::cli
