// A file that somebody else than the store has written to.
#include "engine/store/lmdb/soundness.h"

#include <fcntl.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <map>

#include <gtest/gtest.h>

#include <larkmoor/status.h>

#include "support/company.h"
#include "support/sample_files.h"
#include "support/seed.h"

namespace larkmoor::store::lmdb {
namespace {

namespace fs = std::filesystem;
using test::Cursor;
using test::MadeSample;
using test::Sample;

/// A file that is open to changes past the store.
class ForeignHand {
 public:
  explicit ForeignHand(const fs::path& path) : descriptor_(open(path.c_str(), O_RDWR)) {
    EXPECT_GE(descriptor_, 0);
  }
  ~ForeignHand() { close(descriptor_); }
  ForeignHand(const ForeignHand&) = delete;
  ForeignHand& operator=(const ForeignHand&) = delete;

  void Flip(off_t place, std::uint8_t bits) {
    std::uint8_t byte = 0;
    ASSERT_EQ(pread(descriptor_, &byte, 1, place), 1);
    byte ^= bits;
    ASSERT_EQ(pwrite(descriptor_, &byte, 1, place), 1);
  }

 private:
  int descriptor_;
};

class Soundness : public testing::Test {
 protected:
  Soundness() {
    EXPECT_EQ(driver_.Create(path_, test::SampleFile()), StatusSuccess);
    Cursor file(driver_, path_);
    for (std::int32_t i = 1; i <= Records; ++i) test::Fill(file, {MadeSample(i, i)});
    // Some room of deleted records.
    for (std::int32_t i = 3; i <= Records; i += 9) {
      EXPECT_EQ(file.Get(Seek::Equal, test::SampleKey::Number, {.number = i}), StatusSuccess);
      EXPECT_EQ(file.Delete(), StatusSuccess);
    }
    expected_ = test::NumbersByStep(file);
  }

  [[nodiscard]] std::optional<std::string> Fault() const {
    DataFile file;
    EXPECT_EQ(file.Open(path_), StatusSuccess);
    return FindFault(file);
  }

  [[nodiscard]] Status OpenStatus(OpenMode mode = OpenMode::Normal) {
    std::unique_ptr<File> file;
    return driver_.Open(path_, mode, file);
  }

  [[nodiscard]] std::string Bytes() const {
    std::ifstream file(path_, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
  }

  /// Whether a walk told of damage. What it showed until then must be true.
  bool WalkTells(const std::function<Status(Cursor&, bool isStart)>& move) {
    Cursor file(driver_, path_);
    std::size_t shown = 0;
    Status status = move(file, true);
    for (; status == StatusSuccess; status = move(file, false), ++shown) {
      const Sample sample = file.InHand();
      EXPECT_EQ(sample, MadeSample(sample.number, sample.number));
    }
    if (status == StatusIOError) return true;
    EXPECT_EQ(status, StatusEndOfFile);
    EXPECT_EQ(shown, expected_.size());
    return false;
  }

  /// Whether the damage is told by an open or by any read.
  bool IsTold() {
    const Status opened = OpenStatus();
    if (opened != StatusSuccess) return opened == StatusNotARecordFile;
    bool told = WalkTells(
        [](Cursor& file, bool isStart) { return file.StepTo(isStart ? Step::First : Step::Next); });
    for (const KeyDescription& key : test::SampleFile().keys) {
      told |= WalkTells([&](Cursor& file, bool isStart) {
        return file.Get(isStart ? Seek::First : Seek::Next, key.number);
      });
    }
    return told;
  }

  static constexpr std::int32_t Records = 150;

  test::TempFolder folder_;
  fs::path path_ = folder_.Path() / "Sample.dat";
  Driver& driver_ = DefaultDriver();
  std::vector<std::int32_t> expected_;
};

TEST_F(Soundness, AFileOfTheStoreHasNoFault) {
  EXPECT_EQ(Fault(), std::nullopt);
  EXPECT_GT(fs::file_size(path_), 10U * 4096);
}

// Of most bytes of a used page the change is told. Where it is not, nothing is lost by it, and
// every read shows what was written.
TEST_F(Soundness, AChangedByteIsToldOrDoesNotMatter) {
  ForeignHand hand(path_);
  const auto size = static_cast<off_t>(fs::file_size(path_));
  std::map<bool, int> told;
  constexpr off_t Stride = 251;
  for (off_t place = test::Seed() % Stride; place < size && !HasFailure(); place += Stride) {
    SCOPED_TRACE(testing::Message() << "byte " << place);
    const auto bits = static_cast<std::uint8_t>(1U << place % 8);
    hand.Flip(place, bits);
    ++told[IsTold()];
    hand.Flip(place, bits);
  }
  EXPECT_GT(told[true], told[false] / 4);
  EXPECT_FALSE(IsTold());
}

TEST_F(Soundness, AFaultyFileAnswers30InBothModesAndVerifyTellsWhy) {
  // The kind of a page that holds entries.
  constexpr off_t Place = 18;
  const auto size = static_cast<off_t>(fs::file_size(path_));
  ForeignHand hand(path_);
  for (off_t page = 2; page * 4096 < size; ++page) hand.Flip(page * 4096 + Place, 0x04);
  ASSERT_NE(Fault(), std::nullopt);
  EXPECT_EQ(OpenStatus(), StatusNotARecordFile);
  EXPECT_EQ(OpenStatus(OpenMode::ReadOnly), StatusNotARecordFile);
  EXPECT_EQ(driver_.Compact(path_), StatusNotARecordFile);
  std::vector<std::string> findings;
  EXPECT_EQ(driver_.Verify(path_, findings, {}), StatusSuccess);
  ASSERT_EQ(findings.size(), 1U);
  EXPECT_EQ(findings[0], *Fault());
}

TEST_F(Soundness, ARecordThatWentBadAnswers2AndTheOthersAreRead) {
  Sample bad = MadeSample(1000, 1);
  bad.name = "Damaged!";
  {
    Cursor file(driver_, path_);
    test::Fill(file, {bad, MadeSample(1001, 1001)});
  }
  // The text in its record: ahead of it in the entries of keys there is no zero byte.
  const std::string text = std::string(1, '\0') + bad.name;
  const std::string bytes = Bytes();
  ForeignHand hand(path_);
  for (auto at = bytes.find(text); at != std::string::npos; at = bytes.find(text, at + 1)) {
    hand.Flip(static_cast<off_t>(at) + 1, 0x20);
  }

  Cursor file(driver_, path_);
  ASSERT_EQ(file.Get(Seek::Equal, test::SampleKey::Number, {.number = 1}), StatusSuccess);
  EXPECT_EQ(file.Get(Seek::Equal, test::SampleKey::Number, {.number = 1000}), StatusIOError);
  EXPECT_EQ(file.InHand(), MadeSample(1, 1));
  EXPECT_EQ(file.Get(Seek::Equal, test::SampleKey::Number, {.number = 1001}), StatusSuccess);
  EXPECT_EQ(file.InHand(), MadeSample(1001, 1001));
  std::vector<std::string> findings;
  EXPECT_EQ(driver_.Verify(path_, findings, {}), StatusSuccess);
  EXPECT_EQ(findings.size(), 1U) << testing::PrintToString(findings);
}

// A check of a whole file takes the longer the longer the file is, and so is not made at each open.
TEST_F(Soundness, AFileIsLookedAtOnlyWhereOthersHaveWrittenToIt) {
  const auto mark = [this] {
    DataFile file;
    EXPECT_EQ(file.Open(path_), StatusSuccess);
    LockFile lockFile;
    EXPECT_TRUE(lockFile.Open(LockFile::PathFor(path_), file));
    return lockFile.Tells(file.Mark());
  };
  EXPECT_TRUE(mark());
  {
    Cursor file(driver_, path_);
    test::Fill(file, {MadeSample(2000, 1)});
  }
  EXPECT_TRUE(mark());
  ForeignHand(path_).Flip(static_cast<off_t>(fs::file_size(path_)) - 1, 0);
  EXPECT_FALSE(mark());
  EXPECT_EQ(OpenStatus(), StatusSuccess);
  EXPECT_TRUE(mark());
}

TEST_F(Soundness, AFileThatLostItsLastPagesAnswers30OrHasLostNothing) {
  const std::uintmax_t size = fs::file_size(path_);
  for (std::uintmax_t pages = 1; pages < size / 4096; ++pages) {
    SCOPED_TRACE(testing::Message() << pages << " pages");
    const fs::path whole = folder_.Path() / "Whole.dat";
    fs::copy_file(path_, whole);
    fs::resize_file(path_, pages * 4096);
    if (OpenStatus() == StatusSuccess) {
      EXPECT_FALSE(IsTold());
    }
    fs::rename(whole, path_);
  }
}

}  // namespace
}  // namespace larkmoor::store::lmdb
