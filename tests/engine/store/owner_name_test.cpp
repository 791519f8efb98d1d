// What a file keeps of its owner name: enough to know it again, and nothing to learn it from.
#include <algorithm>
#include <filesystem>
#include <string>

#include <gtest/gtest.h>

#include "engine/store/conformance.h"
#include "support/record_files.h"

namespace larkmoor::test {
namespace {

namespace fs = std::filesystem;

const std::string Name = "Blakeney Harbour";

class OwnerName : public DriverTest {
 protected:
  /// Whether any file of the folder has the name in its bytes, whatever the case of its letters.
  bool IsInTheFolder() {
    const auto sameLetter = [](char a, char b) { return (a | 0x20) == (b | 0x20); };
    return std::ranges::any_of(fs::directory_iterator(Folder()), [&](const auto& entry) {
      const std::string bytes = ReadFile(entry.path());
      return std::search(bytes.begin(), bytes.end(), Name.begin(), Name.end(), sameLetter) !=
             bytes.end();
    });
  }

  /// Opens the file, so that there is a lock file, and writes to it in a few commits.
  void Work(const fs::path& path) {
    Cursor file(Driver(), path);
    for (std::int32_t number = 1; number <= 20; ++number) {
      Fill(file, {MadeSample(0, number)});
    }
  }
};
INSTANTIATE_TEST_SUITE_P(Every, OwnerName, testing::ValuesIn(EveryDriver()), DriverName);

TEST_P(OwnerName, IsInNoFileAsLongAsItIsInForce) {
  const fs::path path = Make(SampleFile());
  Work(path);
  ASSERT_EQ(Driver().SetOwner(path, Name, false), StatusSuccess);
  EXPECT_FALSE(IsInTheFolder());
  EXPECT_EQ(Driver().ClearOwner(path, "Blakeney"), StatusInvalidOwner);
  EXPECT_FALSE(IsInTheFolder());
}

// What was written once may stay in pages that are free.
TEST_P(OwnerName, LeavesNothingWhenItIsTakenAway) {
  const fs::path path = Make(SampleFile());
  ASSERT_EQ(Driver().SetOwner(path, Name, true), StatusSuccess);
  ASSERT_EQ(Driver().ClearOwner(path, Name), StatusSuccess);
  EXPECT_FALSE(IsInTheFolder());
  Work(path);
  EXPECT_FALSE(IsInTheFolder());
  ASSERT_EQ(Driver().Compact(path), StatusSuccess);
  EXPECT_FALSE(IsInTheFolder());
}

TEST_P(OwnerName, IsKeptInAnotherFormInEveryFile) {
  const fs::path one = Make(SampleFile());
  const fs::path other = Folder() / "Other.dat";
  fs::copy_file(one, other);
  ASSERT_EQ(Driver().SetOwner(one, Name, false), StatusSuccess);
  ASSERT_EQ(Driver().SetOwner(other, Name, false), StatusSuccess);
  EXPECT_TRUE(ReadFile(one) != ReadFile(other));
  EXPECT_EQ(Driver().ClearOwner(other, Name), StatusSuccess);
}

}  // namespace
}  // namespace larkmoor::test
