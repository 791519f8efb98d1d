#include "engine/guid.h"

#include <set>
#include <string>

#include <gtest/gtest.h>

#include "engine/text.h"
#include "support/errors.h"

namespace larkmoor {
namespace {

using test::RaisedNumber;

constexpr std::string_view Standard = "3F2504E0-4F89-41D3-9A0C-0305E82C3301";

std::string StoredAndRead(std::string_view text) {
  return GuidFieldToText(GuidFieldFromText(text));
}

TEST(ParseGuid, TakesEitherCaseWithAndWithoutBraces) {
  const std::optional<GuidBytes> bytes = ParseGuid(Standard);
  ASSERT_TRUE(bytes);
  EXPECT_EQ(ParseGuid("3f2504e0-4f89-41d3-9a0c-0305e82c3301"), bytes);
  EXPECT_EQ(ParseGuid("{3F2504E0-4F89-41d3-9A0C-0305E82C3301}"), bytes);
}

TEST(ParseGuid, KeepsTheOrderOfTheText) {
  const std::optional<GuidBytes> bytes = ParseGuid("00112233-4455-6677-8899-AABBCCDDEEFF");
  ASSERT_TRUE(bytes);
  for (std::size_t i = 0; i < bytes->size(); ++i) {
    EXPECT_EQ(std::to_integer<std::size_t>((*bytes)[i]), i * 0x11);
  }
}

TEST(ParseGuid, RefusesWhateverHasAnotherShape) {
  for (const char* text :
       {"", "{}", "3F2504E0", "3F2504E04F8941D39A0C0305E82C3301",
        "{3F2504E0-4F89-41D3-9A0C-0305E82C3301", "3F2504E0-4F89-41D3-9A0C-0305E82C3301}",
        "(3F2504E0-4F89-41D3-9A0C-0305E82C3301}", "3F2504E0-4F89-41D3-9A0C-0305E82C330",
        "3F2504E0-4F89-41D3-9A0C-0305E82C33011", "3F2504E0-4F89-41D3-9A0C-0305E82C330G",
        "3F2504E04-F89-41D3-9A0C-0305E82C3301", "3F2504E0-4F89-41D3-9A0C 0305E82C3301",
        " 3F2504E0-4F89-41D3-9A0C-0305E82C330"}) {
    EXPECT_FALSE(ParseGuid(text)) << text;
  }
}

TEST(FormatGuid, WritesUpperCaseDigitsWithoutBraces) {
  EXPECT_EQ(FormatGuid(*ParseGuid("{3f2504e0-4f89-41d3-9a0c-0305e82c3301}")), Standard);
}

TEST(NewGuid, HasTheLayoutOfARandomGuid) {
  for (int i = 0; i < 100; ++i) {
    const std::string text = FormatGuid(NewGuid());
    EXPECT_EQ(text[14], '4') << text;
    EXPECT_NE(std::string("89AB").find(text[19]), std::string::npos) << text;
  }
}

TEST(NewGuid, NeverGivesTheSameTwice) {
  std::set<GuidBytes> seen;
  for (int i = 0; i < 1000; ++i) EXPECT_TRUE(seen.insert(NewGuid()).second);
}

TEST(NewGuid, ReadsBackFromAFieldAsAGuid) {
  for (int i = 0; i < 1000; ++i) {
    const GuidBytes bytes = NewGuid();
    EXPECT_EQ(GuidFieldToText(bytes), FormatGuid(bytes));
  }
}

TEST(GuidField, ZeroBytesReadAsTheEmptyText) {
  EXPECT_EQ(GuidFieldToText(GuidBytes{}), "");
  EXPECT_EQ(GuidFieldFromText(""), GuidBytes{});
  EXPECT_EQ(StoredAndRead("00000000-0000-0000-0000-000000000000"), "");
}

TEST(GuidField, GuidsReadInTheirTextForm) {
  EXPECT_EQ(StoredAndRead("{3f2504e0-4f89-41d3-9a0c-0305e82c3301}"), Standard);
}

TEST(GuidField, GuidsNumberedByHandReadInTheirTextForm) {
  for (const char* text :
       {"00000000-0000-0000-0000-000000000001", "11111111-1111-1111-1111-111111111111",
        "12345678-1234-1234-1234-123456789ABC", "01234567-89AB-CDEF-0123-456789ABCDEF",
        "AAAAAAAA-BBBB-CCCC-DDDD-EEEEEEEEEEEE", "01000000-0000-0000-0000-000000000000",
        "FFFFFFFF-FFFF-FFFF-FFFF-FFFFFFFFFFFF"}) {
    EXPECT_EQ(StoredAndRead(text), text);
  }
}

TEST(GuidField, GuidsOfTheStandardLayoutAreNoTextsEvenWhereTheirBytesCouldBe) {
  // As characters: ABCDEFGHI and zero bytes, but for the 0x80 that marks the variant.
  EXPECT_EQ(StoredAndRead("41424344-4546-4748-8000-000000000000"),
            "41424344-4546-4748-8000-000000000000");
}

TEST(GuidField, AnyOtherVersionThanOneToFiveIsNotTheStandardLayout) {
  EXPECT_EQ(StoredAndRead("41424344-4546-6748-8000-000000000000"), "ABCDEFgH€");
}

TEST(GuidField, TextsOfUpTo16CharactersAreKeptAsTheyAre) {
  for (const char* text : {"A", "~", "no guid", "INV-2024/0017", "Übergröße", "€ 15", "  x ",
                           "fifteen letters", "sixteen letters!", "0123456789ABCDEF"}) {
    EXPECT_EQ(StoredAndRead(text), text);
  }
}

TEST(GuidField, LongerTextsAreCutTo16Characters) {
  EXPECT_EQ(StoredAndRead("seventeen letters"), "seventeen letter");
  EXPECT_EQ(GuidFieldFromText("ééééééééééééééééé"), GuidFieldFromText("éééééééééééééééé"));
}

TEST(GuidField, CharactersThatDoNotFitBecomeQuestionMarks) {
  EXPECT_EQ(StoredAndRead("Łódź 1"), "?ód? 1");
}

TEST(GuidField, BytesThatNoTextHasReadAsAGuid) {
  EXPECT_EQ(GuidFieldToText(GuidFieldFromText("a\tb")), "61096200-0000-0000-0000-000000000000");
  EXPECT_EQ(GuidFieldToText(GuidFieldFromText("a\xC2\x81")),
            "61810000-0000-0000-0000-000000000000");
  EXPECT_EQ(GuidFieldToText(*ParseGuid("41004200-0000-0000-0000-000000000000")),
            "41004200-0000-0000-0000-000000000000");
}

TEST(GuidField, BytesWithoutAPlainCharacterReadAsAGuid) {
  EXPECT_EQ(StoredAndRead("E9E90000-0000-0000-0000-000000000000"),
            "E9E90000-0000-0000-0000-000000000000");
}

TEST(GuidField, A16CharacterTextMustBePlain) {
  EXPECT_EQ(StoredAndRead("sixteen letterÿ!"), "73697874-6565-6E20-6C65-74746572FF21");
}

TEST(GuidField, WhatIsNotUtf8Raises13) {
  EXPECT_EQ(RaisedNumber([] { return GuidFieldFromText("\xFF"); }), 13);
}

}  // namespace
}  // namespace larkmoor
