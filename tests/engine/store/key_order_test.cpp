// How keys compare: each kind of segment, and segments side by side.

#include <cstdint>
#include <limits>
#include <memory>
#include <numeric>
#include <span>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "engine/store/conformance.h"

namespace larkmoor::test {
namespace {

using store::Seek;

class KeyOrder : public DriverTest {
 protected:
  /// Expects the records to lie on the key path in the order in which they are given, whatever the
  /// order of insertion, and each to be found by its own key.
  void ExpectOrder(std::int16_t keyNumber, std::vector<Sample> samples) {
    Cursor file = New(SampleFile());
    std::int32_t number = 0;
    for (Sample& sample : samples) sample.number = ++number;
    const std::vector<Sample> turnedRound(samples.rbegin(), samples.rend());
    for (const Sample& sample : turnedRound) {
      ASSERT_EQ(file.Insert(keyNumber, sample), StatusSuccess);
    }
    Numbers expected(samples.size());
    std::iota(expected.begin(), expected.end(), 1);
    EXPECT_EQ(NumbersByKey(file, keyNumber), expected);
    for (const Sample& sample : samples) {
      EXPECT_EQ(file.Get(Seek::Equal, keyNumber, sample), StatusSuccess) << sample;
      EXPECT_EQ(file.InHand(), sample);
      const Status status = file.Get(Seek::Greater, keyNumber, sample);
      EXPECT_EQ(status, sample == samples.back() ? StatusEndOfFile : StatusSuccess) << sample;
      if (status == StatusSuccess) {
        EXPECT_EQ(file.InHand().number, sample.number + 1);
      }
    }
    EXPECT_EQ(Findings(file.Path()), Nothing);
  }
};
INSTANTIATE_TEST_SUITE_P(Every, KeyOrder, testing::ValuesIn(EveryDriver()), DriverName);

TEST_P(KeyOrder, BytesHaveNoSign) {
  ExpectOrder(SampleKey::Group,
              {{.group = 0}, {.group = 1}, {.group = 127}, {.group = 128}, {.group = 255}});
}

TEST_P(KeyOrder, IntegersHaveASign) {
  ExpectOrder(SampleKey::Kind, {{.kind = std::numeric_limits<std::int16_t>::min()},
                                {.kind = -256},
                                {.kind = -1},
                                {.kind = 0},
                                {.kind = 1},
                                {.kind = 255},
                                {.kind = 256},
                                {.kind = std::numeric_limits<std::int16_t>::max()}});
}

TEST_P(KeyOrder, LongsHaveASign) {
  ExpectOrder(SampleKey::Place, {{.account = std::numeric_limits<std::int32_t>::min()},
                                 {.account = -65536},
                                 {.account = -1},
                                 {.account = 0},
                                 {.account = 255},
                                 {.account = 65536},
                                 {.account = std::numeric_limits<std::int32_t>::max()}});
}

TEST_P(KeyOrder, DoublesLieOnTheNumberLine) {
  ExpectOrder(SampleKey::Amount, {{.amount = -std::numeric_limits<double>::infinity()},
                                  {.amount = std::numeric_limits<double>::lowest()},
                                  {.amount = -2.5},
                                  {.amount = -2.25},
                                  {.amount = -std::numeric_limits<double>::denorm_min()},
                                  {.amount = 0},
                                  {.amount = std::numeric_limits<double>::denorm_min()},
                                  {.amount = 0.1},
                                  {.amount = 100},
                                  {.amount = std::numeric_limits<double>::max()},
                                  {.amount = std::numeric_limits<double>::infinity()}});
}

TEST_P(KeyOrder, MinusZeroIsZero) {
  Cursor file = New(SampleFile());
  Fill(file, {{.number = 1, .amount = -0.0}, {.number = 2, .amount = 0.0}});
  EXPECT_EQ(file.Get(Seek::Equal, SampleKey::Amount, {.amount = 0.0}), StatusSuccess);
  EXPECT_EQ(file.InHand().number, 1);
  EXPECT_EQ(file.Get(Seek::Less, SampleKey::Amount, {.amount = 0.0}), StatusEndOfFile);
  EXPECT_EQ(file.Get(Seek::Greater, SampleKey::Amount, {.amount = -0.0}), StatusEndOfFile);
}

TEST_P(KeyOrder, ANumberThatIsNoneCanBeStoredReadChangedAndDeleted) {
  Cursor file = New(SampleFile());
  const double notANumber = std::numeric_limits<double>::quiet_NaN();
  Fill(file, {{.number = 1, .amount = notANumber}, {.number = 2, .amount = 1}});
  EXPECT_EQ(NumbersByKey(file, SampleKey::Amount).size(), 2U);
  ASSERT_EQ(file.Get(Seek::Equal, SampleKey::Amount, {.amount = notANumber}), StatusSuccess);
  EXPECT_EQ(file.InHand().number, 1);
  EXPECT_EQ(file.Update(SampleKey::Amount, {.number = 1, .amount = 2}), StatusSuccess);
  EXPECT_EQ(file.Update(SampleKey::Amount, {.number = 1, .amount = notANumber}), StatusSuccess);
  EXPECT_EQ(file.Delete(), StatusSuccess);
  EXPECT_EQ(NumbersByKey(file, SampleKey::Amount), (Numbers{2}));
  EXPECT_EQ(Findings(file.Path()), Nothing);
}

TEST_P(KeyOrder, DatesCountTheirTimeOfDay) {
  ExpectOrder(SampleKey::When, {{.when = -1.25},
                                {.when = 0},
                                {.when = 2.0},
                                {.when = 45000.0},
                                {.when = 45000.5},
                                {.when = 45001.0},
                                {.when = 65537.0}});
}

TEST_P(KeyOrder, DaysHaveASign) {
  ExpectOrder(SampleKey::Due, {{.due = -1}, {.due = 0}, {.due = 2}, {.due = 256}, {.due = 65537}});
}

TEST_P(KeyOrder, TextComparesByteByByte) {
  ExpectOrder(SampleKey::Name, {{.name = ""},
                                {.name = " "},
                                {.name = "10"},
                                {.name = "9"},
                                {.name = "A"},
                                {.name = "A "},
                                {.name = "AB"},
                                {.name = "ABCDEFGH"},
                                {.name = "AC"},
                                {.name = "B"},
                                {.name = "a"},
                                {.name = "\xC4"},
                                {.name = "\xE9"},
                                {.name = "\xFF"}});
}

TEST_P(KeyOrder, CaseAndTrailingBlanksCount) {
  Cursor file = New(SampleFile());
  Fill(file, {{.number = 1, .name = "Smith"}});
  EXPECT_EQ(file.Get(Seek::Equal, SampleKey::Name, {.name = "Smith"}), StatusSuccess);
  EXPECT_EQ(file.Get(Seek::Equal, SampleKey::Name, {.name = "SMITH"}), StatusKeyNotFound);
  EXPECT_EQ(file.Get(Seek::Equal, SampleKey::Name, {.name = "Smith "}), StatusKeyNotFound);
}

TEST_P(KeyOrder, WhatLiesBehindTheEndOfAZeroTextDoesNotCount) {
  Cursor file = New(SampleFile());
  Bytes record = Sample{.number = 1, .name = "AB"}.ToBytes();
  PokeText(std::span(record).subspan(SampleOffset::Name + 3), 0, 5, "later");
  ASSERT_EQ(file.File().Insert(SampleKey::Number, record), StatusSuccess);
  EXPECT_EQ(file.Get(Seek::Equal, SampleKey::Name, {.name = "AB"}), StatusSuccess);
  EXPECT_EQ(file.Buffer(), record);

  Bytes key(KeyBufferLength);
  PokeText(key, 0, 2, "AB");
  PokeText(key, 3, 5, "other");
  EXPECT_EQ(file.File().Get(Seek::Equal, SampleKey::Name, key, file.Buffer()), StatusSuccess);
  EXPECT_EQ(file.File().Get(Seek::Greater, SampleKey::Name, key, file.Buffer()), StatusEndOfFile);
  EXPECT_EQ(file.File().Get(Seek::Less, SampleKey::Name, key, file.Buffer()), StatusEndOfFile);
}

TEST_P(KeyOrder, WhatLiesBehindTheKeyInTheBufferDoesNotCount) {
  Cursor file = New(SampleFile());
  Fill(file, {{.number = 1, .kind = 5}});
  Bytes key(KeyBufferLength, std::byte{0xFF});
  Poke(key, 0, std::int16_t{5});
  EXPECT_EQ(file.File().Get(Seek::Equal, SampleKey::Kind, key, file.Buffer()), StatusSuccess);
}

TEST_P(KeyOrder, AZeroTextMayFillItsWidth) {
  Cursor file = New(SampleFile());
  Fill(file, {{.number = 1, .name = "ABCDEFGH"}});
  Bytes key(KeyBufferLength, std::byte{'X'});
  PokeText(key, 0, 8, "ABCDEFGH");
  EXPECT_EQ(file.File().Get(Seek::Equal, SampleKey::Name, key, file.Buffer()), StatusSuccess);
  EXPECT_EQ(file.Get(Seek::Equal, SampleKey::Name, {.name = "ABCDEFG"}), StatusKeyNotFound);
}

TEST_P(KeyOrder, FixedTextComparesOverItsWholeWidth) {
  Cursor file = New(SampleFile());
  const std::string codes[] = {std::string("A\0\0\0", 4), std::string("A\0\0x", 4),
                               std::string("A\0B\0", 4), "A ", "AB"};
  for (std::int32_t number = 5; number >= 1; --number) {
    Bytes record = Sample{.number = number}.ToBytes();
    PokeText(record, SampleOffset::Code, 4, codes[number - 1]);
    ASSERT_EQ(file.File().Insert(SampleKey::Number, record), StatusSuccess);
  }
  EXPECT_EQ(NumbersByKey(file, SampleKey::Code), (Numbers{1, 2, 3, 4, 5}));
  for (std::int32_t number = 1; number <= 5; ++number) {
    Bytes key(KeyBufferLength);
    PokeText(key, 0, 4, codes[number - 1]);
    EXPECT_EQ(file.File().Get(Seek::Equal, SampleKey::Code, key, file.Buffer()), StatusSuccess);
    EXPECT_EQ(file.InHand().number, number);
  }
}

TEST_P(KeyOrder, GuidsCompareByteByByte) {
  ExpectOrder(SampleKey::Guid, {{},
                                {.guid = {0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 1}},
                                {.guid = {0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0x80}},
                                {.guid = {0, 1}},
                                {.guid = {1, 0, 2}},
                                {.guid = {1, 1}},
                                {.guid = {0xFF}}});
}

TEST_P(KeyOrder, SegmentsCompareOneAfterTheOther) {
  ExpectOrder(SampleKey::Place, {{.account = 9, .group = 1, .name = "Z"},
                                 {.account = -1, .group = 2, .name = "Z"},
                                 {.account = 3, .group = 2, .name = ""},
                                 {.account = 3, .group = 2, .name = "A"},
                                 {.account = 3, .group = 2, .name = "AA"},
                                 {.account = 4, .group = 2, .name = ""},
                                 {.account = -9, .group = 200, .name = ""}});
}

TEST_P(KeyOrder, AShorterTextComesFirstWhateverFollowsIt) {
  store::FileDescription description = SampleFile();
  description.name = "TextFirst";
  description.keys = {
      {.number = 0,
       .segments = {{store::SegmentType::ZeroText, SampleOffset::Name, 8},
                    {store::SegmentType::Byte, SampleOffset::Group, 1},
                    {store::SegmentType::Long, SampleOffset::Account, 4}}},
  };
  Cursor file = New(description);
  const Sample ordered[] = {
      {.number = 1, .account = -1, .group = 0, .name = "A"},
      {.number = 2, .account = 5, .group = 255, .name = "A"},
      {.number = 3, .account = -1, .group = 0, .name = "AB"},
      {.number = 4, .account = 1, .group = 0, .name = "ABCDEFGH"},
      {.number = 5, .account = 1, .group = 0, .name = "B"},
  };
  for (const int i : {3, 1, 4, 0, 2}) ASSERT_EQ(file.Insert(0, ordered[i]), StatusSuccess);
  EXPECT_EQ(NumbersByKey(file, 0), (Numbers{1, 2, 3, 4, 5}));
  for (const Sample& sample : ordered) {
    EXPECT_EQ(file.Get(Seek::Equal, 0, sample), StatusSuccess) << sample;
    EXPECT_EQ(file.InHand(), sample);
  }
}

TEST_P(KeyOrder, AKeyMayBe255BytesWide) {
  const store::FileDescription description{
      .name = "Wide",
      .release = 19,
      .recordLength = 300,
      .keys = {{.number = 0, .segments = {{store::SegmentType::Text, 20, 255}}}},
  };
  const auto file = [&] {
    std::unique_ptr<store::File> opened;
    EXPECT_EQ(Driver().Open(Make(description), store::OpenMode::Normal, opened), StatusSuccess);
    return opened;
  }();
  ASSERT_NE(file, nullptr);
  Bytes first(300, std::byte{'a'});
  Bytes second = first;
  second[20 + 254] = std::byte{'b'};
  ASSERT_EQ(file->Insert(0, second), StatusSuccess);
  ASSERT_EQ(file->Insert(0, first), StatusSuccess);
  Bytes record(300);
  const Bytes key(255, std::byte{'a'});
  ASSERT_EQ(file->Get(Seek::Equal, 0, key, record), StatusSuccess);
  EXPECT_EQ(record, first);
  ASSERT_EQ(file->Get(Seek::Next, 0, key, record), StatusSuccess);
  EXPECT_EQ(record, second);
}

}  // namespace
}  // namespace larkmoor::test
