// How a record lies in its entry: what goes in comes out, however its zero bytes are spread, and
// bytes that nobody wrote are refused.
#include "engine/store/lmdb/record_value.h"

#include <random>

#include <gtest/gtest.h>

#include "support/seed.h"

namespace larkmoor::store::lmdb {
namespace {

using Record = std::vector<std::byte>;

constexpr RecordNumber SomeNumber = 12;
constexpr Stamp SomeStamp = 0x0123456789ABCDEF;
/// What an entry has ahead of its pieces.
constexpr std::size_t Head = sizeof(std::uint32_t) + sizeof(Stamp);

Record Filled(std::size_t size, std::size_t from, std::size_t count) {
  Record record(size);
  std::fill_n(record.begin() + static_cast<std::ptrdiff_t>(from), count, std::byte{7});
  return record;
}

Record ThroughEntry(const Record& record) {
  Record read(record.size(), std::byte{0xAA});
  Stamp stamp = 0;
  EXPECT_TRUE(ReadRecordValue(SomeNumber, RecordValue(SomeNumber, SomeStamp, record), stamp, read));
  EXPECT_EQ(stamp, SomeStamp);
  return read;
}

TEST(RecordValue, GivesBackWhatWentIn) {
  for (const Record& record :
       {Record{}, Record(1), Record(5000), Filled(1, 0, 1), Filled(100, 0, 100), Filled(100, 0, 3),
        Filled(100, 97, 3), Filled(100, 7, 1), Filled(200'000, 0, 200'000),
        Filled(200'000, 199'999, 1), Filled(65'536, 65'535, 1), Filled(65'535, 0, 65'535)}) {
    EXPECT_EQ(ThroughEntry(record), record) << record.size();
  }
}

TEST(RecordValue, GivesBackWhateverTheZeroBytes) {
  std::mt19937 random(test::Seed());
  for (int round = 0; round < 200; ++round) {
    Record record(random() % 600);
    const auto share = static_cast<unsigned>(1 + random() % 30);
    bool zero = true;
    for (std::byte& each : record) {
      if (random() % share == 0) zero = !zero;
      each = zero ? std::byte{0} : static_cast<std::byte>(random());
    }
    ASSERT_EQ(ThroughEntry(record), record);
  }
}

TEST(RecordValue, LeavesLongRunsOfZeroBytesOut) {
  EXPECT_EQ(RecordValue(SomeNumber, SomeStamp, Record(5000)).size(), Head);
  EXPECT_LT(RecordValue(SomeNumber, SomeStamp, Filled(5000, 2000, 40)).size(), Head + 40 + 16);
}

class RefusedValue : public testing::Test {
 protected:
  void ExpectRefused(std::span<const std::byte> value, RecordNumber number = SomeNumber) {
    Record read(written_.size(), std::byte{0xAA});
    Stamp stamp = 1;
    EXPECT_FALSE(ReadRecordValue(number, value, stamp, read));
    EXPECT_EQ(stamp, 1U);
    EXPECT_EQ(read, Record(written_.size(), std::byte{0xAA}));
  }

  const Record written_ = Filled(64, 20, 10);
  Record value_ = RecordValue(SomeNumber, SomeStamp, written_);
};

TEST_F(RefusedValue, IsOneThatWasCutShortAndNothingChanges) {
  for (std::size_t size = 0; size < value_.size(); ++size) {
    ExpectRefused(std::span(value_).first(size));
  }
}

TEST_F(RefusedValue, IsOneOfWhichAnyByteChanged) {
  for (std::byte& each : value_) {
    each ^= std::byte{0x10};
    ExpectRefused(value_);
    each ^= std::byte{0x10};
  }
}

TEST_F(RefusedValue, IsThatOfAnotherRecord) { ExpectRefused(value_, SomeNumber + 1); }

TEST(RecordValue, RefusesPiecesBeyondTheRecordAndChangesNothing) {
  Record read(29, std::byte{0xAA});
  Stamp stamp = 1;
  EXPECT_FALSE(ReadRecordValue(SomeNumber, RecordValue(SomeNumber, SomeStamp, Filled(64, 20, 10)),
                               stamp, read));
  EXPECT_EQ(stamp, 1U);
  EXPECT_EQ(read, Record(29, std::byte{0xAA}));
}

}  // namespace
}  // namespace larkmoor::store::lmdb
