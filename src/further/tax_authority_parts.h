#pragma once

#include <larkmoor/further/tax_authority.h>

#include "engine/records/tax_authority.h"
#include "engine/tovrin_file_names.h"
#include "tables/settings_accounts.h"
#include "tables/table_frame.h"

namespace larkmoor {

struct TaxAuthority::Parts {
  TableFrame table{TaxAuthorityRecord::Describe(), TovrinFileNames::TaxAuthorityFile()};
  // Messages name the settings, whose way of looking accounts up this is.
  SettingsAccounts accounts{"GeneralData", SettingsAccounts::Missing::ReadsEmpty};
};

}  // namespace larkmoor
