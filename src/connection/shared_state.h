// The facts that all objects of a thread share.
#pragma once

#include <cstdint>
#include <string>

namespace larkmoor {

/// One instance a thread, alive from the first access to the thread's end. Nothing resets it.
struct SharedState {
  std::string gCompanyPath;
  std::string gPreferredIni;
  double gDataVersion = 0;
  std::int32_t gConnectCount = 0;
  std::int32_t gErrorNumber = 0;  ///< nothing sets it: clients see 0
  std::string gErrorText;         ///< nothing sets it: clients see the empty text
  bool gJrnlHdrReadMode = false;
};

/// The calling thread's instance.
SharedState& Shared();

}  // namespace larkmoor
