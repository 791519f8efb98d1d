// A disk that takes no more.
#pragma once

#include <fcntl.h>
#include <unistd.h>

#include <filesystem>
#include <string>
#include <system_error>
#include <vector>

#include <gtest/gtest.h>

namespace larkmoor::test {

/// From now on nothing that this process wrote to the record file reaches the disk: who closes it
/// next is answered 2, provided that something was written to it since the last close. For use
/// inside `RunInChild`, since the file is lost to the process.
inline void BreakDisk(const std::filesystem::path& path) {
  std::vector<int> descriptors;
  for (const auto& entry : std::filesystem::directory_iterator("/proc/self/fd")) {
    std::error_code closedMeanwhile;
    if (std::filesystem::equivalent(entry, path, closedMeanwhile)) {
      descriptors.push_back(std::stoi(entry.path().filename()));
    }
  }
  ASSERT_FALSE(descriptors.empty()) << path << " is not open";
  // What is no file cannot be synced.
  const int nowhere = open("/dev/null", O_RDWR);
  for (const int descriptor : descriptors) ASSERT_EQ(dup2(nowhere, descriptor), descriptor);
  close(nowhere);
}

}  // namespace larkmoor::test
