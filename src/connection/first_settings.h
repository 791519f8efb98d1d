// What the settings of a new company say, so that it works at once: a fiscal calendar, terms, aging
// classes, ship methods, price levels and the next numbers of its papers.
#pragma once

#include <span>

#include <larkmoor/company.h>

#include "engine/record_description.h"
#include "engine/tovrin_record.h"

namespace larkmoor {

/// One row of the general file, and what fills it.
struct FirstSettings {
  const RecordDescription& (*describe)();
  void (*fill)(Tovrin2Record& record, const CompanyOptions& options);
};

/// Every row of the general file. Classes read and update them, and insert none.
std::span<const FirstSettings> AllFirstSettings();

}  // namespace larkmoor
