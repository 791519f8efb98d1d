// From the errors of LMDB and the host to statuses.
#pragma once

#include <larkmoor/status.h>

namespace larkmoor::store::lmdb {

/// The status of a return code of LMDB, which is an errno or one of its own; 0 for success.
Status StatusOf(int code);

/// The same for a code met while opening: no access is 94 there, and a strange file 30.
Status OpenStatusOf(int code);

}  // namespace larkmoor::store::lmdb
