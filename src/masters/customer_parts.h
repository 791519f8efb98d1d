#pragma once

#include <larkmoor/masters/customer.h>

#include "engine/records/customer.h"
#include "engine/tovrin_file_names.h"
#include "masters/address_book.h"
#include "masters/ship_methods.h"
#include "tables/master_look_up.h"
#include "tables/table_frame.h"

namespace larkmoor {

struct Customer::Parts {
  TableFrame table{CustomerRecord::Describe(), TovrinFileNames::CustomerFile()};
  AddressBook addresses{CustomerAddresses, table};
  MasterLookUp accounts{AccountTable};
  MasterLookUp employees{EmployeeTable};
  ShipMethods shipMethods;
};

}  // namespace larkmoor
