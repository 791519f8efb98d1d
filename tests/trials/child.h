// Work that might crash or hang.
#pragma once

#include <chrono>
#include <functional>

#include "trials/trial.h"

namespace larkmoor::trials {

/// Runs `body` in a forked child, on a round that goes on from the given one, and adds what it
/// tried. Throws a `Finding` where `body` throws, where the child crashes, and where it is not done
/// in that time; it has the first of what the child wrote to its standard error.
void InChild(Round& round, std::chrono::seconds time, const std::function<void(Round&)>& body);

}  // namespace larkmoor::trials
