// A file that belongs to someone else for a while.
#pragma once

#include <filesystem>
#include <utility>

#include <gtest/gtest.h>

#include <larkmoor/status.h>

#include "engine/store/driver.h"
#include "support/record_files.h"

namespace larkmoor::test {

/// `ProtectFile` until it is lifted, at the latest at the end of the object.
class Protection {
 public:
  Protection(std::filesystem::path path, bool allowRead) : path_(std::move(path)) {
    ProtectFile(path_, allowRead);
  }
  ~Protection() { Lift(); }
  Protection(const Protection&) = delete;
  Protection& operator=(const Protection&) = delete;

  void Lift() {
    if (!std::exchange(isInForce_, false)) return;
    EXPECT_EQ(store::DefaultDriver().ClearOwner(path_, "someone"), StatusSuccess);
  }

 private:
  std::filesystem::path path_;
  bool isInForce_ = true;
};

}  // namespace larkmoor::test
