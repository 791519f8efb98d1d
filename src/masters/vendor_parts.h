#pragma once

#include <larkmoor/masters/vendor.h>

#include "engine/records/vendor.h"
#include "engine/tovrin_file_names.h"
#include "masters/address_book.h"
#include "masters/ship_methods.h"
#include "tables/account_look_up.h"
#include "tables/table_frame.h"

namespace larkmoor {

struct Vendor::Parts {
  TableFrame table{VendorRecord::Describe(), TovrinFileNames::VendorFile()};
  AddressBook addresses{VendorAddresses, table};
  AccountLookUp accounts{AccountLookUp::OpenedBy::FirstUse};
  ShipMethods shipMethods;
};

}  // namespace larkmoor
