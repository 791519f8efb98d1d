#include <cstdint>

#include <larkmoor/error.h>

#include "further/job_data_parts.h"

namespace larkmoor {

// Whoever shows a job wants some number: one that does not fit reads as 0 and raises nothing.
std::int16_t JobData::PercentComplete() {
  try {
    return Variant(PercentComplete2()).ToInteger();
  } catch (const Error&) {
    return 0;
  }
}

void JobData::PercentComplete(std::int16_t value) { PercentComplete2(value); }

}  // namespace larkmoor
