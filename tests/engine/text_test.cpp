#include "engine/text.h"

#include <string>
#include <string_view>

#include <gtest/gtest.h>

#include "support/errors.h"

namespace larkmoor {
namespace {

using test::RaisedNumber;

std::string AllBytes() {
  std::string bytes;
  for (int byte = 0; byte < 256; ++byte) bytes.push_back(static_cast<char>(byte));
  return bytes;
}

TEST(Windows1252, EveryByteComesBackAfterATripThroughUtf8) {
  EXPECT_EQ(ToWindows1252(FromWindows1252(AllBytes())), AllBytes());
}

TEST(Windows1252, KnowsItsOwnCharacters) {
  EXPECT_EQ(FromWindows1252("\x80\x8A\x92\x96\x9F"), "€Š’–Ÿ");
  EXPECT_EQ(FromWindows1252("Caf\xE9 \xA3\x35 \xFF"), "Café £5 ÿ");
  EXPECT_EQ(ToWindows1252("€uro, naïve, œuvre™"), "\x80uro, na\xEFve, \x9Cuvre\x99");
}

TEST(Windows1252, OpenBytesStandForTheControlCharactersOfTheSameNumber) {
  EXPECT_EQ(FromWindows1252("\x81\x8D\x8F\x90\x9D"), "\xC2\x81\xC2\x8D\xC2\x8F\xC2\x90\xC2\x9D");
  EXPECT_EQ(ToWindows1252("\xC2\x81\xC2\x9D"), "\x81\x9D");
}

TEST(Windows1252, OneQuestionMarkStandsForEachCharacterThatDoesNotFit) {
  EXPECT_EQ(ToWindows1252("Łódź"),
            "?\xF3"
            "d?");
  EXPECT_EQ(ToWindows1252("日本"), "??");
  EXPECT_EQ(ToWindows1252("a\xF0\x9F\x98\x80z"), "a?z");
  EXPECT_EQ(ToWindows1252("\xC2\x80"), "?") << "the control character of number 0x80 is no euro";
  EXPECT_EQ(ToWindows1252("\xF4\x8F\xBF\xBF"), "?") << "U+10FFFF, the last character of all";
}

TEST(Windows1252, ZeroBytesAreCharactersLikeOthers) {
  EXPECT_EQ(ToWindows1252(std::string_view("a\0b", 3)), std::string("a\0b", 3));
  EXPECT_EQ(FromWindows1252(std::string_view("\0", 1)), std::string("\0", 1));
}

TEST(Windows1252, WhatIsNotUtf8Raises13) {
  const std::string_view notUtf8[] = {
      "\x80",              // a continuation without a start
      "a\xE9z",            // Windows-1252 taken for UTF-8
      "\xC3",              // cut short
      "\xE2\x82",          // cut short
      "\xF0\x9F\x98",      // cut short
      "\xE2\x82zz",        // a letter where a continuation should be
      "\xC0\x80",          // overlong zero
      "\xC1\xBF",          // overlong, two bytes
      "\xE0\x9F\xBF",      // overlong, three bytes
      "\xF0\x8F\xBF\xBF",  // overlong, four bytes
      "\xED\xA0\x80",      // the first surrogate
      "\xED\xBF\xBF",      // the last surrogate
      "\xF4\x90\x80\x80",  // beyond U+10FFFF
      "\xF8\x88\x80\x80\x80",
      "\xFF",
  };
  for (const std::string_view text : notUtf8) {
    EXPECT_EQ(RaisedNumber([&] { return ToWindows1252(text); }), 13)
        << testing::PrintToString(text);
    EXPECT_EQ(RaisedNumber([&] { return FitsWindows1252(text); }), 13);
  }
}

TEST(Windows1252, CharactersAtTheEdgesOfTheForbiddenRangesAreUtf8) {
  for (const char* text :
       {"\xC2\x80", "\xE0\xA0\x80", "\xED\x9F\xBF", "\xEE\x80\x80", "\xF0\x90\x80\x80"}) {
    EXPECT_EQ(ToWindows1252(text), "?");
  }
}

TEST(FitsWindows1252, TellsWhetherAnythingWouldBeLost) {
  EXPECT_TRUE(FitsWindows1252(""));
  EXPECT_TRUE(FitsWindows1252("Müller & Søn €"));
  EXPECT_FALSE(FitsWindows1252("Ł"));
  EXPECT_FALSE(FitsWindows1252("abc → def"));
}

TEST(FitsWindows1252, LooksAtTheWholeTextForWhatIsNotUtf8) {
  EXPECT_EQ(RaisedNumber([] { return FitsWindows1252("Ł\xFF"); }), 13);
}

TEST(EqualIgnoringCase, PassesOverTheCaseOfAsciiLettersOnly) {
  EXPECT_TRUE(EqualIgnoringCase("Vendor.DAT", "vENDOR.dat"));
  EXPECT_TRUE(EqualIgnoringCase("", ""));
  EXPECT_FALSE(EqualIgnoringCase("É", "é"));
  EXPECT_FALSE(EqualIgnoringCase("a", "ab"));
  EXPECT_FALSE(EqualIgnoringCase("[", "{")) << "they differ by the same bit as letters do";
}

TEST(TrimBlanks, CutsBothEndsAndNothingWithin) {
  EXPECT_EQ(TrimBlanks("  a b "), "a b");
  EXPECT_EQ(TrimBlanks("ab"), "ab");
  EXPECT_EQ(TrimBlanks("   "), "");
  EXPECT_EQ(TrimBlanks(""), "");
  EXPECT_EQ(TrimBlanks(" \ta\n"), "\ta\n");
}

}  // namespace
}  // namespace larkmoor
