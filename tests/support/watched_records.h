// What others see of a file while someone writes to it.
#pragma once

#include <atomic>
#include <cstdint>
#include <filesystem>
#include <set>
#include <thread>
#include <utility>

#include "engine/record_description.h"
#include "support/record_files.h"

namespace larkmoor::test {

/// The numbers of records that another thread finds in the file while `body` runs.
template <typename Body>
std::set<std::int32_t> CountsSeenDuring(const std::filesystem::path& path,
                                        const RecordDescription& description, Body&& body) {
  std::atomic<bool> watching = false;
  std::atomic<bool> done = false;
  std::set<std::int32_t> seen;
  std::thread watcher([&] {
    OpenRecordFile file(path, description);
    while (!done) {
      seen.insert(file.File().btRecordCount());
      watching = true;
    }
  });
  while (!watching) std::this_thread::yield();
  std::forward<Body>(body)();
  done = true;
  watcher.join();
  return seen;
}

}  // namespace larkmoor::test
