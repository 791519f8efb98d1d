// How a record lies in its entry: what goes in comes out, however its zero bytes are spread, and
// bytes that nobody wrote are refused.
#include "engine/store/lmdb/record_value.h"

#include <random>

#include <gtest/gtest.h>

#include "support/seed.h"

namespace larkmoor::store::lmdb {
namespace {

using Record = std::vector<std::byte>;

constexpr Stamp SomeStamp = 0x0123456789ABCDEF;

Record Filled(std::size_t size, std::size_t from, std::size_t count) {
  Record record(size);
  std::fill_n(record.begin() + static_cast<std::ptrdiff_t>(from), count, std::byte{7});
  return record;
}

Record ThroughEntry(const Record& record) {
  Record read(record.size(), std::byte{0xAA});
  Stamp stamp = 0;
  EXPECT_TRUE(ReadRecordValue(RecordValue(SomeStamp, record), stamp, read));
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
  EXPECT_EQ(RecordValue(SomeStamp, Record(5000)).size(), sizeof(Stamp));
  EXPECT_LT(RecordValue(SomeStamp, Filled(5000, 2000, 40)).size(), sizeof(Stamp) + 40 + 16);
}

TEST(RecordValue, RefusesPiecesThatDoNotAddUpAndChangesNothing) {
  const Record written = Filled(64, 20, 10);
  const Record value = RecordValue(SomeStamp, written);
  for (std::size_t size = 0; size < value.size(); ++size) {
    if (size == sizeof(Stamp)) continue;  // a blank record
    Record read(written.size(), std::byte{0xAA});
    Stamp stamp = 1;
    EXPECT_FALSE(ReadRecordValue(std::span(value).first(size), stamp, read)) << size;
    EXPECT_EQ(stamp, 1U);
    EXPECT_EQ(read, Record(written.size(), std::byte{0xAA}));
  }
}

TEST(RecordValue, RefusesPiecesBeyondTheRecord) {
  Record read(29, std::byte{0xAA});
  Stamp stamp = 1;
  EXPECT_FALSE(ReadRecordValue(RecordValue(SomeStamp, Filled(64, 20, 10)), stamp, read));
  EXPECT_EQ(read, Record(29, std::byte{0xAA}));
}

}  // namespace
}  // namespace larkmoor::store::lmdb
