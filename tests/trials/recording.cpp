#include "trials/recording.h"

#include <fstream>
#include <stdexcept>
#include <utility>

namespace larkmoor::trials {

std::string SyncedLine(std::size_t file) { return "synced " + std::to_string(file); }

std::vector<Event> ReadRecording(const std::filesystem::path& path) {
  std::ifstream input(path, std::ios::binary);
  if (!input) throw std::runtime_error("nothing was recorded");
  std::vector<Event> events;
  for (EventHead head{}; input.read(reinterpret_cast<char*>(&head), sizeof head);) {
    Event event{head.kind, head.file, head.place, std::string(head.size, '\0')};
    if (!input.read(event.bytes.data(), static_cast<std::streamsize>(head.size))) {
      throw std::runtime_error("a recording breaks off");
    }
    events.push_back(std::move(event));
  }
  return events;
}

}  // namespace larkmoor::trials
