// The record base: typed fields over a record buffer.

#include "engine/tovrin_record.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <filesystem>
#include <limits>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include <larkmoor/status.h>

#include "engine/record_description.h"
#include "engine/store/driver.h"
#include "engine/tovrin_file.h"
#include "support/company.h"
#include "support/errors.h"

namespace larkmoor::test {
namespace {

// A record with a field of every type, each between bytes that must not change.
struct Made {
  static constexpr Field Before{"Before", FieldType::Byte, 0, 1};
  static constexpr Field Flag{"Flag", FieldType::Boolean, 1, 2};
  static constexpr Field Small{"Small", FieldType::Integer, 3, 2};
  static constexpr Field Large{"Large", FieldType::Long, 5, 4};
  static constexpr Field Rate{"Rate", FieldType::Single, 9, 4};
  static constexpr Field Amount{"Amount", FieldType::Double, 13, 8};
  static constexpr Field Price{"Price", FieldType::Currency, 21, 8};
  static constexpr Field When{"When", FieldType::Date, 29, 8};
  static constexpr Field Day{"Day", FieldType::Day, 37, 4};
  static constexpr Field Name{"Name", FieldType::Text, 41, 5};
  static constexpr Field Behind{"Behind", FieldType::Byte, 46, 1};
  static constexpr Field Id{"Id", FieldType::Guid, 47, 16};
  static constexpr Field Months{"Months", FieldType::Double, 63, 8, 3};
  static constexpr Field Lines{"Lines", FieldType::Text, 87, 4, 2};
  static constexpr Field Table{"Table", FieldType::Integer, 95, 2, 3, 2};
  static constexpr Field Last{"Last", FieldType::Byte, 107, 1};
  static constexpr std::uint32_t Length = 108;

  static constexpr std::array<Field, 16> Fields = {Before, Flag,  Small, Large, Rate,   Amount,
                                                   Price,  When,  Day,   Name,  Behind, Id,
                                                   Months, Lines, Table, Last};
  static constexpr std::array<store::KeySegment, 1> LargeSegment = {
      {{store::SegmentType::Long, 5, 4}}};
  static constexpr std::array<store::KeySegment, 2> FlagAndSmall = {
      {{store::SegmentType::Integer, 1, 2}, {store::SegmentType::Integer, 3, 2}}};
  static constexpr std::array<RecordKey, 4> Keys = {{
      {0, true, true, true, LargeSegment},
      {2, false, false, false, FlagAndSmall, 0, 13.0},
      {2, false, true, false, LargeSegment, 13.0},
      {5, false, true, false, FlagAndSmall, 11.5, 17.0},
  }};
  static constexpr std::array<RecordLength, 3> Lengths = {{{8.0, 50}, {12.0, 79}, {17.0, Length}}};

  static const RecordDescription& Description() {
    static const RecordDescription description{
        .name = "Made",
        .doc = "A record with a field of every type.",
        .fileName = "Made.dat",
        .fields = Fields,
        .keys = Keys,
        .lengths = Lengths,
    };
    return description;
  }
};

class RecordTest : public testing::Test {
 protected:
  RecordTest() : record_(Made::Description()) { record_.AttachBuffer(buffer_); }

  /// Fills the buffer, so that every byte that a let changes shows.
  void FillWith(std::uint8_t value) {
    std::fill(buffer_->begin(), buffer_->end(), std::byte{value});
  }

  [[nodiscard]] std::vector<int> BytesAt(std::size_t offset, std::size_t count) const {
    std::vector<int> values;
    for (std::size_t i = 0; i < count; ++i) {
      values.push_back(std::to_integer<int>((*buffer_)[offset + i]));
    }
    return values;
  }

  /// Expects all bytes but those of one stretch to be as `FillWith` left them.
  void ExpectUntouchedBut(std::uint32_t offset, std::uint32_t width, std::uint8_t filled) const {
    for (std::size_t i = 0; i < buffer_->size(); ++i) {
      if (i >= offset && i < offset + width) continue;
      EXPECT_EQ((*buffer_)[i], std::byte{filled}) << "byte " << i;
    }
  }

  const RecordBufferHandle buffer_ = std::make_shared<RecordBytes>(Made::Length);
  Tovrin2Record record_;
};

using Values = std::vector<int>;

// Round trips ------------------------------------------------------------------------------------

TEST_F(RecordTest, BytesKeepTheirRange) {
  FillWith(0xAA);
  for (const int value : {0, 1, 127, 128, 255}) {
    record_.SetByte(Made::Behind, static_cast<std::uint8_t>(value));
    EXPECT_EQ(record_.GetByte(Made::Behind), value);
  }
  ExpectUntouchedBut(46, 1, 0xAA);
}

TEST_F(RecordTest, BooleansAreMinusOneAndZero) {
  FillWith(0xAA);
  record_.SetBoolean(Made::Flag, true);
  EXPECT_TRUE(record_.GetBoolean(Made::Flag));
  EXPECT_EQ(BytesAt(1, 2), (Values{0xFF, 0xFF}));
  record_.SetBoolean(Made::Flag, false);
  EXPECT_FALSE(record_.GetBoolean(Made::Flag));
  EXPECT_EQ(BytesAt(1, 2), (Values{0, 0}));
  ExpectUntouchedBut(1, 2, 0xAA);
}

TEST_F(RecordTest, AnyBooleanButZeroIsTrue) {
  (*buffer_)[1] = std::byte{1};
  EXPECT_TRUE(record_.GetBoolean(Made::Flag));
  (*buffer_)[1] = std::byte{0};
  (*buffer_)[2] = std::byte{1};
  EXPECT_TRUE(record_.GetBoolean(Made::Flag));
}

TEST_F(RecordTest, IntegersKeepTheirRange) {
  FillWith(0xAA);
  for (const int value : {-32768, -1, 0, 1, 32767}) {
    record_.SetInteger(Made::Small, static_cast<std::int16_t>(value));
    EXPECT_EQ(record_.GetInteger(Made::Small), value);
  }
  record_.SetInteger(Made::Small, 0x0102);
  EXPECT_EQ(BytesAt(3, 2), (Values{2, 1}));
  ExpectUntouchedBut(3, 2, 0xAA);
}

TEST_F(RecordTest, LongsKeepTheirRange) {
  FillWith(0xAA);
  for (const std::int32_t value : {std::numeric_limits<std::int32_t>::min(), -1, 0, 65536,
                                   std::numeric_limits<std::int32_t>::max()}) {
    record_.SetLong(Made::Large, value);
    EXPECT_EQ(record_.GetLong(Made::Large), value);
  }
  record_.SetLong(Made::Large, 0x01020304);
  EXPECT_EQ(BytesAt(5, 4), (Values{4, 3, 2, 1}));
  ExpectUntouchedBut(5, 4, 0xAA);
}

TEST_F(RecordTest, SinglesKeepTheirRange) {
  FillWith(0xAA);
  using Limits = std::numeric_limits<float>;
  for (const float value : {Limits::lowest(), -0.1F, 0.0F, Limits::denorm_min(), 0.1F,
                            Limits::max(), Limits::infinity()}) {
    record_.SetSingle(Made::Rate, value);
    EXPECT_EQ(record_.GetSingle(Made::Rate), value);
  }
  ExpectUntouchedBut(9, 4, 0xAA);
}

TEST_F(RecordTest, DoublesKeepTheirRange) {
  FillWith(0xAA);
  using Limits = std::numeric_limits<double>;
  for (const double value : {Limits::lowest(), -0.1, 0.0, Limits::denorm_min(), 0.1, Limits::max(),
                             Limits::infinity()}) {
    record_.SetDouble(Made::Amount, value);
    EXPECT_EQ(record_.GetDouble(Made::Amount), value);
  }
  record_.SetDouble(Made::Amount, -2.5);
  EXPECT_EQ(BytesAt(13, 8), (Values{0, 0, 0, 0, 0, 0, 0x04, 0xC0}));
  ExpectUntouchedBut(13, 8, 0xAA);
}

TEST_F(RecordTest, CurrenciesKeepTheirRange) {
  FillWith(0xAA);
  for (const std::int64_t scaled :
       {std::numeric_limits<std::int64_t>::min(), std::int64_t{-1}, std::int64_t{0},
        std::int64_t{12345}, std::numeric_limits<std::int64_t>::max()}) {
    record_.SetCurrency(Made::Price, Currency::FromScaled(scaled));
    EXPECT_EQ(record_.GetCurrency(Made::Price).Scaled(), scaled);
  }
  record_.SetCurrency(Made::Price, Currency(2.5));
  EXPECT_EQ(BytesAt(21, 8), (Values{0xA8, 0x61, 0, 0, 0, 0, 0, 0}));
  ExpectUntouchedBut(21, 8, 0xAA);
}

TEST_F(RecordTest, DatesKeepTheirTimeOfDay) {
  FillWith(0xAA);
  for (const double value : {-657434.0, -1.25, 2.0, 45000.75, 65537.0, 2958465.999}) {
    record_.SetDate(Made::When, value);
    EXPECT_EQ(record_.GetDate(Made::When), value);
  }
  ExpectUntouchedBut(29, 8, 0xAA);
}

TEST_F(RecordTest, DaysDropTheTimeOfDay) {
  FillWith(0xAA);
  record_.SetDate(Made::Day, 45000.75);
  EXPECT_EQ(record_.GetDate(Made::Day), 45000.0);
  EXPECT_EQ(BytesAt(37, 4), (Values{0xC8, 0xAF, 0, 0}));
  for (const double value : {-657434.0, 2.0, 65537.0, 2958465.0}) {
    record_.SetDate(Made::Day, value);
    EXPECT_EQ(record_.GetDate(Made::Day), value);
  }
  ExpectUntouchedBut(37, 4, 0xAA);
}

TEST_F(RecordTest, ADateOfZeroBytesReadsAsTheEmptyDate) {
  EXPECT_EQ(record_.GetDate(Made::When), 2.0);
  EXPECT_EQ(record_.GetDate(Made::Day), 2.0);
}

// Text -------------------------------------------------------------------------------------------

TEST_F(RecordTest, TextIsHeldInOneByteACharacter) {
  FillWith(0xAA);
  record_.SetText(Made::Name, "\u00C9t\u20AC");
  EXPECT_EQ(BytesAt(41, 5), (Values{0xC9, 't', 0x80, 0, 0}));
  EXPECT_EQ(record_.GetText(Made::Name), "\u00C9t\u20AC");
  ExpectUntouchedBut(41, 5, 0xAA);
}

TEST_F(RecordTest, TextIsCutAtItsWidthAndLeavesItsNeighbour) {
  FillWith(0xAA);
  record_.SetText(Made::Name, "Longbottom");
  EXPECT_EQ(record_.GetText(Made::Name), "Longb");
  ExpectUntouchedBut(41, 5, 0xAA);
  record_.SetText(Made::Name, "\u00E9\u00E9\u00E9\u00E9\u00E9\u00E9");
  EXPECT_EQ(record_.GetText(Made::Name), "\u00E9\u00E9\u00E9\u00E9\u00E9");
  ExpectUntouchedBut(41, 5, 0xAA);
}

TEST_F(RecordTest, AShorterTextLeavesNothingOfALongerOne) {
  record_.SetText(Made::Name, "ABCDE");
  record_.SetText(Made::Name, "X");
  EXPECT_EQ(BytesAt(41, 5), (Values{'X', 0, 0, 0, 0}));
}

TEST_F(RecordTest, TextKeepsItsBlanks) {
  record_.SetText(Made::Name, " a  ");
  EXPECT_EQ(record_.GetText(Made::Name), " a  ");
}

TEST_F(RecordTest, TextEndsAtItsFirstZeroByte) {
  record_.SetText(Made::Name, "ABCDE");
  (*buffer_)[43] = std::byte{0};
  EXPECT_EQ(record_.GetText(Made::Name), "AB");
}

TEST_F(RecordTest, WhatTheCharacterSetHasNotBecomesAQuestionMark) {
  record_.SetText(Made::Name, "a\u6F22\U0001F600b");
  EXPECT_EQ(record_.GetText(Made::Name), "a??b");
}

TEST_F(RecordTest, TextThatIsNotUtf8Raises13AndChangesNothing) {
  record_.SetText(Made::Name, "kept");
  record_.SetText(Made::Id, "kept");
  const RecordBytes before = *buffer_;
  for (const std::string_view text : {"\xC3", "ab\xFF", "\xED\xA0\x80", "\xC0\xAF"}) {
    EXPECT_EQ(RaisedNumber([&] { record_.SetText(Made::Name, text); }), 13);
    EXPECT_EQ(RaisedNumber([&] { record_.SetText(Made::Id, text); }), 13);
    // Also where the fault lies behind what the field would hold.
    EXPECT_EQ(RaisedNumber([&] { record_.SetText(Made::Name, "longer" + std::string(text)); }), 13);
    EXPECT_EQ(*buffer_, before);
  }
}

// GUIDs ------------------------------------------------------------------------------------------

TEST_F(RecordTest, GuidsAreTakenInAnyFormAndReadInOne) {
  FillWith(0xAA);
  const char* standard = "3F2504E0-4F89-41D3-9A0C-0305E82C3301";
  for (const char* text : {standard, "3f2504e0-4f89-41d3-9a0c-0305e82c3301",
                           "{3F2504E0-4F89-41D3-9A0C-0305E82C3301}"}) {
    record_.SetText(Made::Id, "");
    record_.SetText(Made::Id, text);
    EXPECT_EQ(record_.GetText(Made::Id), standard);
  }
  EXPECT_EQ(BytesAt(47, 16), (Values{0x3F, 0x25, 0x04, 0xE0, 0x4F, 0x89, 0x41, 0xD3, 0x9A, 0x0C,
                                     0x03, 0x05, 0xE8, 0x2C, 0x33, 0x01}));
  ExpectUntouchedBut(47, 16, 0xAA);
}

TEST_F(RecordTest, AGuidOfZeroBytesIsTheEmptyText) {
  EXPECT_EQ(record_.GetText(Made::Id), "");
  record_.SetText(Made::Id, "3F2504E0-4F89-41D3-9A0C-0305E82C3301");
  record_.SetText(Made::Id, "");
  EXPECT_EQ(record_.GetText(Made::Id), "");
  EXPECT_EQ(BytesAt(47, 16), Values(16, 0));
}

TEST_F(RecordTest, AGuidFieldKeepsOtherTextUpTo16Characters) {
  FillWith(0xAA);
  for (const char* text : {"A", "old key \u00E9", "0123456789ABCDEF"}) {
    record_.SetText(Made::Id, text);
    EXPECT_EQ(record_.GetText(Made::Id), text);
  }
  record_.SetText(Made::Id, "0123456789ABCDEFGH");
  EXPECT_EQ(record_.GetText(Made::Id), "0123456789ABCDEF");
  ExpectUntouchedBut(47, 16, 0xAA);
}

// Repeating fields -------------------------------------------------------------------------------

TEST_F(RecordTest, ElementsLieOneBehindTheOther) {
  FillWith(0xAA);
  for (int i = 0; i < 3; ++i) record_.SetDouble(Made::Months, 1.5 * i - 1, i);
  for (int i = 0; i < 3; ++i) EXPECT_EQ(record_.GetDouble(Made::Months, i), 1.5 * i - 1);
  ExpectUntouchedBut(63, 24, 0xAA);
  record_.SetText(Made::Lines, "first line", 0);
  record_.SetText(Made::Lines, "xy", 1);
  EXPECT_EQ(record_.GetText(Made::Lines, 0), "firs");
  EXPECT_EQ(record_.GetText(Made::Lines, 1), "xy");
}

TEST_F(RecordTest, ATableLiesRowByRow) {
  FillWith(0xAA);
  for (int row = 0; row < 3; ++row) {
    for (int column = 0; column < 2; ++column) {
      record_.SetInteger(Made::Table, static_cast<std::int16_t>(10 * row + column), row, column);
    }
  }
  EXPECT_EQ(BytesAt(95, 12), (Values{0, 0, 1, 0, 10, 0, 11, 0, 20, 0, 21, 0}));
  EXPECT_EQ(record_.GetInteger(Made::Table, 2, 1), 21);
  ExpectUntouchedBut(95, 12, 0xAA);
}

TEST_F(RecordTest, AnIndexOutOfRangeRaises9AndChangesNothing) {
  FillWith(0xAA);
  const RecordBytes before = *buffer_;
  for (const int index : {-1, 3, 100, std::numeric_limits<int>::min()}) {
    EXPECT_EQ(RaisedNumber([&] { return record_.GetDouble(Made::Months, index); }), 9) << index;
    EXPECT_EQ(RaisedNumber([&] { record_.SetDouble(Made::Months, 1, index); }), 9) << index;
    EXPECT_EQ(RaisedNumber([&] { return record_.GetText(Made::Lines, index); }), 9) << index;
    EXPECT_EQ(RaisedNumber([&] { record_.SetText(Made::Lines, "x", index); }), 9) << index;
    EXPECT_EQ(RaisedNumber([&] { return record_.GetInteger(Made::Table, index, 0); }), 9) << index;
    EXPECT_EQ(RaisedNumber([&] { record_.SetInteger(Made::Table, 1, index, 0); }), 9) << index;
  }
  // A second index beyond its own range is not one of the next row.
  for (const int index : {-1, 2}) {
    EXPECT_EQ(RaisedNumber([&] { return record_.GetInteger(Made::Table, 1, index); }), 9) << index;
    EXPECT_EQ(RaisedNumber([&] { record_.SetInteger(Made::Table, 1, 1, index); }), 9) << index;
  }
  EXPECT_EQ(*buffer_, before);
}

TEST_F(RecordTest, TheErrorOfAnIndexIsTheRuntimesOwn) {
  try {
    record_.SetDouble(Made::Months, 1, 3);
    FAIL() << "nothing was raised";
  } catch (const Error& error) {
    EXPECT_EQ(error.Number(), 9);
    EXPECT_EQ(error.Source(), "Larkmoor");
    EXPECT_EQ(error.Description(), "Subscript out of range");
    EXPECT_EQ(error.BtrieveStatus(), StatusSuccess);
  }
}

// Shorter records --------------------------------------------------------------------------------

TEST_F(RecordTest, AFieldBeyondTheRecordReadsBlankAndDropsWhatIsWritten) {
  const auto shorter = std::make_shared<RecordBytes>(9, std::byte{0xAA});
  record_.AttachBuffer(shorter);
  record_.SetBoolean(Made::Flag, true);
  record_.SetSingle(Made::Rate, 1);
  record_.SetDouble(Made::Amount, 1);
  record_.SetCurrency(Made::Price, Currency(1));
  record_.SetDate(Made::When, 45000);
  record_.SetDate(Made::Day, 45000);
  record_.SetText(Made::Name, "x");
  record_.SetByte(Made::Behind, 1);
  record_.SetText(Made::Id, "x");
  record_.SetDouble(Made::Months, 1, 2);
  record_.SetInteger(Made::Table, 1, 2, 1);
  RecordBytes expected(9, std::byte{0xAA});
  expected[1] = expected[2] = std::byte{0xFF};
  EXPECT_EQ(*shorter, expected);

  EXPECT_TRUE(record_.GetBoolean(Made::Flag));
  EXPECT_EQ(record_.GetSingle(Made::Rate), 0);
  EXPECT_EQ(record_.GetDouble(Made::Amount), 0);
  EXPECT_EQ(record_.GetCurrency(Made::Price).Scaled(), 0);
  EXPECT_EQ(record_.GetDate(Made::When), 2.0);
  EXPECT_EQ(record_.GetDate(Made::Day), 2.0);
  EXPECT_EQ(record_.GetText(Made::Name), "");
  EXPECT_EQ(record_.GetByte(Made::Behind), 0);
  EXPECT_EQ(record_.GetText(Made::Id), "");
  EXPECT_EQ(record_.GetDouble(Made::Months, 2), 0);
  EXPECT_EQ(record_.GetInteger(Made::Table, 2, 1), 0);
}

TEST_F(RecordTest, ARepeatingFieldMayLieBeyondTheRecordInPart) {
  record_.AttachBuffer(std::make_shared<RecordBytes>(79));
  for (int i = 0; i < 3; ++i) record_.SetDouble(Made::Months, 7, i);
  EXPECT_EQ(record_.GetDouble(Made::Months, 0), 7);
  EXPECT_EQ(record_.GetDouble(Made::Months, 1), 7);
  EXPECT_EQ(record_.GetDouble(Made::Months, 2), 0);
  EXPECT_EQ(RaisedNumber([&] { return record_.GetDouble(Made::Months, 3); }), 9);
}

TEST_F(RecordTest, AFieldAcrossTheEndOfTheRecordStaysInside) {
  const auto shorter = std::make_shared<RecordBytes>(43, std::byte{0xAA});
  record_.AttachBuffer(shorter);
  record_.SetText(Made::Name, "ABCDE");
  EXPECT_EQ(shorter->size(), 43U);
  for (std::size_t i = 0; i < 41; ++i) EXPECT_EQ((*shorter)[i], std::byte{0xAA}) << i;
  EXPECT_LE(record_.GetText(Made::Name).size(), 2U);
}

// Buffers ----------------------------------------------------------------------------------------

TEST_F(RecordTest, ClearBufferGivesZeroBytes) {
  FillWith(0xAA);
  record_.ClearBuffer();
  EXPECT_EQ(*buffer_, RecordBytes(Made::Length));
}

TEST_F(RecordTest, RecordsOnOneBufferShareTheirFields) {
  Tovrin2Record other(Made::Description());
  other.AttachBuffer(buffer_);
  record_.SetLong(Made::Large, 77);
  EXPECT_EQ(other.GetLong(Made::Large), 77);
  other.ClearBuffer();
  EXPECT_EQ(record_.GetLong(Made::Large), 0);
}

TEST_F(RecordTest, ARecordBoundToNoBufferWorksOnABlankOneOfItsOwn) {
  Tovrin2Record unbound(Made::Description());
  EXPECT_EQ(unbound.GetByte(Made::Last), 0);
  EXPECT_EQ(unbound.GetText(Made::Name), "");
  EXPECT_EQ(unbound.GetDate(Made::When), 2.0);
  unbound.SetByte(Made::Last, 200);
  unbound.SetText(Made::Name, "own");
  EXPECT_EQ(unbound.GetByte(Made::Last), 200);
  EXPECT_EQ(unbound.GetText(Made::Name), "own");
  Tovrin2Record another(Made::Description());
  EXPECT_EQ(another.GetByte(Made::Last), 0);
  unbound.ClearBuffer();
  EXPECT_EQ(unbound.GetByte(Made::Last), 0);
}

TEST_F(RecordTest, BindingLeavesWhatTheBufferHolds) {
  record_.SetLong(Made::Large, 5);
  Tovrin2Record other(Made::Description());
  other.SetLong(Made::Large, 6);
  other.AttachBuffer(buffer_);
  EXPECT_EQ(other.GetLong(Made::Large), 5);
}

TEST_F(RecordTest, ARecordKeepsItsBufferAlive) {
  auto own = std::make_shared<RecordBytes>(Made::Length);
  record_.AttachBuffer(own);
  record_.SetLong(Made::Large, 5);
  own.reset();
  EXPECT_EQ(record_.GetLong(Made::Large), 5);
}

TEST(RecordOverFile, LetsReachTheFileAndReadsReachTheFields) {
  TempFolder folder;
  const std::filesystem::path path = folder.Path() / "Made.dat";
  ASSERT_EQ(store::DefaultDriver().Create(path, Made::Description().FileFor(12.0)), StatusSuccess);
  TovrinFile file;
  ASSERT_EQ(file.btOpen(path.string(), TovrinFile::NormalMode), StatusSuccess);
  Tovrin2Record record(Made::Description());
  record.AttachBuffer(file.RecordBuffer());
  record.ClearBuffer();
  record.SetText(Made::Name, "kept");
  record.SetDouble(Made::Months, 5, 1);
  record.SetDouble(Made::Months, 6, 2);  // beyond the record of this release
  ASSERT_EQ(file.btInsert(0), StatusSuccess);
  EXPECT_EQ(record.GetLong(Made::Large), 1);
  record.ClearBuffer();
  file.KeyLong(1, 0);
  ASSERT_EQ(file.btGetEqual(0), StatusSuccess);
  EXPECT_EQ(record.GetText(Made::Name), "kept");
  EXPECT_EQ(record.GetDouble(Made::Months, 1), 5);
  EXPECT_EQ(record.GetDouble(Made::Months, 2), 0);
}

// Descriptions -----------------------------------------------------------------------------------

TEST(RecordDescription, FindsItsFieldsByName) {
  const Field* field = Made::Description().FindField("Months");
  ASSERT_NE(field, nullptr);
  EXPECT_EQ(field->offset, 63U);
  EXPECT_EQ(Made::Description().FindField("None"), nullptr);
}

TEST(RecordDescription, ALengthHoldsFromItsReleaseOn) {
  const RecordDescription& description = Made::Description();
  EXPECT_EQ(description.LengthFor(8.0), 50U);
  EXPECT_EQ(description.LengthFor(11.9), 50U);
  EXPECT_EQ(description.LengthFor(12.0), 79U);
  EXPECT_EQ(description.LengthFor(16.5), 79U);
  EXPECT_EQ(description.LengthFor(17.0), Made::Length);
  EXPECT_EQ(description.LengthFor(19.0), Made::Length);
}

TEST(RecordDescription, AFileHasTheKeysOfItsRelease) {
  const store::FileDescription early = Made::Description().FileFor(8.0);
  EXPECT_EQ(early.release, 8.0);
  EXPECT_EQ(early.recordLength, 50U);
  ASSERT_EQ(early.keys.size(), 2U);
  const store::KeyDescription* number = early.FindKey(0);
  ASSERT_NE(number, nullptr);
  EXPECT_TRUE(number->unique);
  EXPECT_TRUE(number->modifiable);
  EXPECT_TRUE(number->autoIncrement);
  ASSERT_NE(early.FindKey(2), nullptr);
  EXPECT_FALSE(early.FindKey(2)->modifiable);
  EXPECT_EQ(early.FindKey(2)->Width(), 4U);
  EXPECT_EQ(early.FindKey(2)->segments.size(), 2U);

  const store::FileDescription middle = Made::Description().FileFor(13.0);
  EXPECT_EQ(middle.keys.size(), 3U);
  ASSERT_NE(middle.FindKey(2), nullptr);
  EXPECT_TRUE(middle.FindKey(2)->modifiable);
  EXPECT_EQ(middle.FindKey(2)->segments.size(), 1U);
  EXPECT_NE(middle.FindKey(5), nullptr);

  EXPECT_NE(Made::Description().FileFor(11.5).FindKey(5), nullptr);
  EXPECT_EQ(Made::Description().FileFor(11.4).FindKey(5), nullptr);
  EXPECT_EQ(Made::Description().FileFor(17.0).FindKey(5), nullptr);
}

}  // namespace
}  // namespace larkmoor::test
