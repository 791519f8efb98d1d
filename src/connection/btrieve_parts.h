// What a `Btrieve` object holds.
#pragma once

#include <string>

#include <larkmoor/connection/btrieve.h>

namespace larkmoor {

struct Btrieve::Parts {
  /// Asks the engine for its versions and resets the thread's engine state.
  Parts();

  std::string clientVersion;
  std::string requestorVersion;
  std::string serverVersion;
};

}  // namespace larkmoor
