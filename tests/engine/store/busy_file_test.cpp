// Readers beside writers who commit without a pause, more of them than there are processors: each
// is held up anywhere in the middle of a read.
#include <atomic>
#include <chrono>
#include <thread>

#include "engine/store/conformance.h"

namespace larkmoor::test {
namespace {

using store::Seek;
using store::Step;

class BusyFile : public DriverTest {
 protected:
  static constexpr std::int32_t Records = 400;
  static constexpr std::chrono::seconds Time{2};

  BusyFile() {
    const auto batch = Driver().BeginBatch();
    for (std::int32_t i = 1; i <= Records; ++i) Fill(file_, {MadeSample(i, i)});
    EXPECT_EQ(batch->Commit(), StatusSuccess);
  }

  /// Replaces records, so that each commit moves entries of every key.
  void Write() {
    Cursor file(Driver(), file_.Path());
    for (std::int32_t i = 0; !over_; ++i) {
      const std::int32_t number = 1 + i % Records;
      ASSERT_EQ(file.Get(Seek::Equal, SampleKey::Number, {.number = number}), StatusSuccess);
      ASSERT_EQ(file.Delete(), StatusSuccess);
      ASSERT_EQ(file.Insert(SampleKey::Number, MadeSample(number, i)), StatusSuccess);
    }
  }

  void Walk(std::int16_t keyNumber) {
    Cursor file(Driver(), file_.Path());
    while (!over_ && !HasFailure()) {
      Status status = file.Get(Seek::First, keyNumber);
      for (; status == StatusSuccess; status = file.Get(Seek::Next, keyNumber)) {
        const Sample sample = file.InHand();
        ASSERT_EQ(sample, MadeSample(sample.number, sample.stamp));
      }
      ASSERT_EQ(status, StatusEndOfFile);
      ++walks_;
    }
  }

  Cursor file_ = New(SampleFile());
  std::atomic<bool> over_ = false;
  std::atomic<int> walks_ = 0;
};
INSTANTIATE_TEST_SUITE_P(Every, BusyFile, testing::ValuesIn(EveryDriver()), DriverName);

TEST_P(BusyFile, ShowsWholeRecordsToEveryReader) {
  std::vector<std::jthread> workers;
  for (const std::int16_t keyNumber :
       {SampleKey::Name, SampleKey::Amount, SampleKey::Guid, SampleKey::When, SampleKey::Place}) {
    workers.emplace_back([this, keyNumber] { Walk(keyNumber); });
  }
  workers.emplace_back([this] { Write(); });
  std::this_thread::sleep_for(Time);
  over_ = true;
  workers.clear();
  EXPECT_GT(walks_, 5);
  EXPECT_EQ(Findings(file_.Path()), Nothing);
}

}  // namespace
}  // namespace larkmoor::test
