// Records in the sequential form: each its length in decimal, a comma, its bytes, and a carriage
// return with a line feed.
#pragma once

#include <cstdint>
#include <istream>
#include <optional>
#include <ostream>
#include <string>

#include <larkmoor/status.h>

#include "engine/store/driver.h"
#include "engine/tovrin_file.h"

namespace larkmoor {

/// What became of a save or a load.
struct SequentialResult {
  /// The status that ended the work, 0 where none did.
  Status status = StatusSuccess;
  /// What is wrong in words, with the number of the record; empty where nothing is.
  std::string problem = {};
  /// Records written to the stream, or added to the file.
  std::int64_t records = 0;
};

/// Writes all records of an open file along a key, or without one in physical order.
SequentialResult SaveSequential(TovrinFile& file, std::optional<std::int16_t> keyNumber,
                                std::ostream& out, const store::Progress& progress = {});

/// Adds all records of the stream to an open file, in one commit. A byte 26 may end the stream.
/// Where a record is malformed, is not of the file's record length or is refused by the file, none
/// is added. `progress` is called with the records read so far; their number in all is not known
/// and told as 0.
SequentialResult LoadSequential(TovrinFile& file, std::istream& in,
                                const store::Progress& progress = {});

}  // namespace larkmoor
