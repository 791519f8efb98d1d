// A recorded piece of work, and what a loss of power within it could have left.
#pragma once

#include <string>
#include <vector>

#include "trials/recording.h"
#include "trials/trial.h"

namespace larkmoor::trials {

struct RecordedWork {
  std::vector<std::string> before;  ///< each file's bytes at the start
  std::vector<Event> events;
};

/// Has a process work on new files in the round's folder, and records it.
RecordedWork RecordWork(Round& round);

/// Cuts the power at random moments of the work, and looks at the files that this could have left.
void CutPower(Round& round, const RecordedWork& work);

}  // namespace larkmoor::trials
