// Ties the classes to the run-time member table.
#pragma once

namespace larkmoor {

/// The library's own way to an object's record file; nothing for clients.
template <typename Class>
struct MemberAccess;

}  // namespace larkmoor
