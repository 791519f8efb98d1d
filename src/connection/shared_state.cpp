#include "connection/shared_state.h"

namespace larkmoor {

SharedState& Shared() {
  thread_local SharedState state;
  return state;
}

}  // namespace larkmoor
