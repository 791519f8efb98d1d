// What a compaction leaves that died on its way.
#include <filesystem>
#include <fstream>

#include <gtest/gtest.h>

#include <larkmoor/status.h>

#include "support/company.h"
#include "support/sample_files.h"

namespace larkmoor::store::lmdb {
namespace {

class HalfACopy : public testing::Test {
 protected:
  HalfACopy() {
    EXPECT_EQ(DefaultDriver().Create(path_, test::SampleFile()), StatusSuccess);
    std::ofstream(copy_) << "half a copy";
  }

  test::TempFolder folder_;
  const std::filesystem::path path_ = folder_.Path() / "Sample.dat";
  const std::filesystem::path copy_ = folder_.Path() / ".Sample.dat.compacted";
};

TEST_F(HalfACopy, GoesAwayWithTheNextOpen) {
  const test::Cursor file(DefaultDriver(), path_);
  EXPECT_FALSE(exists(copy_));
}

TEST_F(HalfACopy, IsNotInTheWayOfTheNextCompaction) {
  EXPECT_EQ(DefaultDriver().Compact(path_), StatusSuccess);
  EXPECT_FALSE(exists(copy_));
}

}  // namespace
}  // namespace larkmoor::store::lmdb
