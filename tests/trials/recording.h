// What a recorded process has done to its files, in the order in which it did it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

namespace larkmoor::trials {

struct Event {
  enum class Kind : std::uint8_t {
    Write,         ///< bytes at a place of a file
    DurableWrite,  ///< the same, safe against loss of power when it returns
    Resize,        ///< cuts a file off, or lengthens it, at a place
    Extend,        ///< lets a file reach at least to a place
    Sync,          ///< makes all of a file safe
    Rename,        ///< gives a file the name of another, which loses it
    SyncFolder,    ///< makes the names of all files safe
    Said,          ///< a line about the work
  };

  Kind kind;
  std::uint8_t file;    ///< those that were there first, then new ones as they come up, from 0
  std::uint64_t place;  ///< in the file; of a rename the place of the name among the first files
  std::string bytes;    ///< written, or said
};

/// A writer's line that says that all it did to a file was synced.
std::string SyncedLine(std::size_t file);

/// How an event lies in the file of a recording; its bytes follow.
struct EventHead {
  Event::Kind kind;
  std::uint8_t file;
  std::uint64_t place;
  std::uint64_t size;
};

/// All events of a recording. Throws `std::runtime_error` where the file is none.
std::vector<Event> ReadRecording(const std::filesystem::path& path);

}  // namespace larkmoor::trials
