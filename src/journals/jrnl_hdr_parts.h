#pragma once

#include <larkmoor/journals/jrnl_hdr.h>

#include "engine/records/jrnl_hdr.h"
#include "engine/tovrin_file_names.h"
#include "tables/account_look_up.h"
#include "tables/table_frame.h"

namespace larkmoor {

struct JrnlHdr::Parts {
  TableFrame table{JrnlHdrRecord::Describe(), TovrinFileNames::JrnlHdrFile()};
  AccountLookUp accounts{AccountLookUp::OpenedBy::Class};
  MasterLookUp employees{EmployeeTable};
};

}  // namespace larkmoor
