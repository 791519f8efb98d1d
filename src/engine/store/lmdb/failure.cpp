#include "engine/store/lmdb/failure.h"

#include <cerrno>

#include <lmdb.h>

#include <larkmoor/status.h>

namespace larkmoor::store::lmdb {

Status StatusOf(int code) {
  switch (code) {
    case MDB_SUCCESS:
      return StatusSuccess;
    case MDB_MAP_FULL:
    case ENOSPC:
    case EDQUOT:
    case EFBIG:
      return StatusDiskFull;
    default:
      return StatusIOError;
  }
}

Status OpenStatusOf(int code) {
  switch (code) {
    case ENOENT:
    case ENOTDIR:
      return StatusFileNotFound;
    case ENAMETOOLONG:
      return StatusInvalidFileName;
    case EACCES:
    case EPERM:
    case EROFS:
      return StatusPermission;
    case EISDIR:
    case MDB_INVALID:
    case MDB_VERSION_MISMATCH:
    case MDB_CORRUPTED:
    case MDB_PAGE_NOTFOUND:
    case MDB_NOTFOUND:
      return StatusNotARecordFile;
    default:
      return StatusOf(code);
  }
}

}  // namespace larkmoor::store::lmdb
