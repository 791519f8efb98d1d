#include <cstdint>
#include <limits>
#include <locale>
#include <sstream>
#include <string>

#include <gtest/gtest.h>

#include <larkmoor/variant.h>

#include "support/errors.h"

namespace larkmoor {
namespace {

using test::RaisedNumber;
using Kind = Variant::Kind;

constexpr double NotANumber = std::numeric_limits<double>::quiet_NaN();
constexpr double Infinity = std::numeric_limits<double>::infinity();

Currency Money(std::int64_t tenThousandths) { return Currency::FromScaled(tenThousandths); }

std::string Printed(const Variant& value) {
  std::ostringstream out;
  out << value;
  return out.str();
}

TEST(Variant, KnowsItsKind) {
  EXPECT_EQ(Variant().GetKind(), Kind::Empty);
  EXPECT_EQ(Variant(Null).GetKind(), Kind::Null);
  EXPECT_EQ(Variant(std::int16_t{1}).GetKind(), Kind::Integer);
  EXPECT_EQ(Variant(std::int32_t{1}).GetKind(), Kind::Long);
  EXPECT_EQ(Variant(1.0F).GetKind(), Kind::Single);
  EXPECT_EQ(Variant(1.0).GetKind(), Kind::Double);
  EXPECT_EQ(Variant(Money(1)).GetKind(), Kind::Currency);
  EXPECT_EQ(Variant(Date(1)).GetKind(), Kind::Date);
  EXPECT_EQ(Variant(std::string("a")).GetKind(), Kind::String);
  EXPECT_EQ(Variant(std::string_view("a")).GetKind(), Kind::String);
  EXPECT_EQ(Variant("a").GetKind(), Kind::String);
  EXPECT_EQ(Variant(true).GetKind(), Kind::Boolean);
  EXPECT_EQ(Variant(std::uint8_t{1}).GetKind(), Kind::Byte);
}

TEST(Variant, OnlyNullIsNullAndOnlyEmptyIsEmpty) {
  EXPECT_TRUE(Variant(Null).IsNull());
  EXPECT_FALSE(Variant(Null).IsEmpty());
  EXPECT_TRUE(Variant().IsEmpty());
  EXPECT_FALSE(Variant().IsNull());
  EXPECT_FALSE(Variant("").IsEmpty());
  EXPECT_FALSE(Variant(0).IsEmpty());
}

TEST(Variant, EveryConversionOfNullRaises94) {
  const Variant null = Null;
  EXPECT_EQ(RaisedNumber([&] { return null.ToInteger(); }), 94);
  EXPECT_EQ(RaisedNumber([&] { return null.ToLong(); }), 94);
  EXPECT_EQ(RaisedNumber([&] { return null.ToByte(); }), 94);
  EXPECT_EQ(RaisedNumber([&] { return null.ToSingle(); }), 94);
  EXPECT_EQ(RaisedNumber([&] { return null.ToDouble(); }), 94);
  EXPECT_EQ(RaisedNumber([&] { return null.ToCurrency(); }), 94);
  EXPECT_EQ(RaisedNumber([&] { return null.ToBoolean(); }), 94);
  EXPECT_EQ(RaisedNumber([&] { return null.ToText(); }), 94);
  EXPECT_EQ(RaisedNumber([&] { return null.ToDate(); }), 94);
}

TEST(Variant, EmptyConvertsToTheBlankOfEachKind) {
  const Variant empty;
  EXPECT_EQ(empty.ToInteger(), 0);
  EXPECT_EQ(empty.ToLong(), 0);
  EXPECT_EQ(empty.ToByte(), 0);
  EXPECT_EQ(empty.ToSingle(), 0);
  EXPECT_EQ(empty.ToDouble(), 0);
  EXPECT_EQ(empty.ToCurrency(), Money(0));
  EXPECT_FALSE(empty.ToBoolean());
  EXPECT_EQ(empty.ToText(), "");
  EXPECT_EQ(empty.ToDate(), Date(0));
}

TEST(Variant, HalvesRoundToTheEvenNeighbour) {
  EXPECT_EQ(Variant(0.5).ToInteger(), 0);
  EXPECT_EQ(Variant(1.5).ToInteger(), 2);
  EXPECT_EQ(Variant(2.5).ToInteger(), 2);
  EXPECT_EQ(Variant(-2.5).ToLong(), -2);
  EXPECT_EQ(Variant(-3.5F).ToLong(), -4);
  EXPECT_EQ(Variant(2.5).ToByte(), 2);
  EXPECT_EQ(Variant("4.5").ToInteger(), 4);
  EXPECT_EQ(Variant(Money(25000)).ToLong(), 2);
  EXPECT_EQ(Variant(Money(25001)).ToLong(), 3);
  EXPECT_EQ(Variant(0.00005).ToCurrency(), Money(0));
  EXPECT_EQ(Variant(0.00025).ToCurrency(), Money(2));
}

TEST(Variant, NumbersBeyondTheRangeRaise6) {
  EXPECT_EQ(Variant(32767.49).ToInteger(), 32767);
  EXPECT_EQ(RaisedNumber([] { return Variant(32767.5).ToInteger(); }), 6);
  EXPECT_EQ(Variant(-32768.5).ToInteger(), -32768);
  EXPECT_EQ(RaisedNumber([] { return Variant(-32769).ToInteger(); }), 6);
  EXPECT_EQ(Variant(2147483647.4).ToLong(), 2147483647);
  EXPECT_EQ(RaisedNumber([] { return Variant(2147483647.5).ToLong(); }), 6);
  EXPECT_EQ(Variant(-2147483648.5).ToLong(), std::numeric_limits<std::int32_t>::min());
  EXPECT_EQ(RaisedNumber([] { return Variant("-2147483649").ToLong(); }), 6);
  EXPECT_EQ(Variant(255).ToByte(), 255);
  EXPECT_EQ(RaisedNumber([] { return Variant(256).ToByte(); }), 6);
  EXPECT_EQ(RaisedNumber([] { return Variant(-1).ToByte(); }), 6);
  EXPECT_EQ(RaisedNumber([] { return Variant(1e39).ToSingle(); }), 6);
  EXPECT_EQ(RaisedNumber([] { return Variant(-1e39).ToSingle(); }), 6);
}

TEST(Variant, MoneyBeyondTheRangeRaises6) {
  EXPECT_EQ(RaisedNumber([] { return Variant(922337203685477.6).ToCurrency(); }), 6);
  EXPECT_EQ(RaisedNumber([] { return Variant(1e300).ToCurrency(); }), 6);
  EXPECT_EQ(RaisedNumber([] { return Variant("922337203685477.5808").ToCurrency(); }), 6);
  EXPECT_EQ(RaisedNumber([] { return Variant("-922337203685478").ToCurrency(); }), 6);
  EXPECT_EQ(Variant("-922337203685477.5808").ToCurrency(),
            Money(std::numeric_limits<std::int64_t>::min()));
}

TEST(Variant, WhatIsNoFiniteNumberFitsNoWholeKind) {
  for (const double value : {NotANumber, Infinity, -Infinity}) {
    EXPECT_EQ(RaisedNumber([&] { return Variant(value).ToInteger(); }), 6) << value;
    EXPECT_EQ(RaisedNumber([&] { return Variant(value).ToLong(); }), 6) << value;
    EXPECT_EQ(RaisedNumber([&] { return Variant(value).ToByte(); }), 6) << value;
    EXPECT_EQ(RaisedNumber([&] { return Variant(value).ToCurrency(); }), 6) << value;
    EXPECT_EQ(RaisedNumber([&] { return Variant(value).ToDate(); }), 6) << value;
  }
}

TEST(Variant, TextIsReadAsADecimalNumber) {
  EXPECT_EQ(Variant("42").ToInteger(), 42);
  EXPECT_EQ(Variant("  -1.5 ").ToDouble(), -1.5);
  EXPECT_EQ(Variant("+7").ToLong(), 7);
  EXPECT_EQ(Variant("2e3").ToDouble(), 2000);
  EXPECT_EQ(Variant("25E-1").ToDouble(), 2.5);
  EXPECT_EQ(Variant(".5").ToDouble(), 0.5);
  EXPECT_EQ(Variant("0.1").ToSingle(), 0.1F);
  EXPECT_EQ(Variant("0.1").ToDouble(), 0.1);
}

TEST(Variant, TextThatIsNoNumberRaises13) {
  for (const char* text :
       {"",    "  ",   "a",   "1a",       "1 2", "1,5",  "1,000", "$1",        "--1",
        "+-1", "-+1",  "++1", "+",        "-",   ".",    "1e",    "1.2.3",     "0x10",
        "inf", "-inf", "nan", "infinity", "NAN", "True", "\t1",   "2024-02-29"}) {
    EXPECT_EQ(RaisedNumber([&] { return Variant(text).ToDouble(); }), 13) << text;
    EXPECT_EQ(RaisedNumber([&] { return Variant(text).ToLong(); }), 13) << text;
    EXPECT_EQ(RaisedNumber([&] { return Variant(text).ToCurrency(); }), 13) << text;
  }
}

TEST(Variant, TextOfANumberTooLargeForADoubleRaises6) {
  EXPECT_EQ(RaisedNumber([] { return Variant("1e400").ToDouble(); }), 6);
}

TEST(Variant, NumbersReadTheSameInEveryLocale) {
  // A locale in which the comma is the decimal point.
  struct Comma : std::numpunct<char> {
    char do_decimal_point() const override { return ','; }
    char do_thousands_sep() const override { return '.'; }
    std::string do_grouping() const override { return "\3"; }
  };
  const std::locale before = std::locale::global(std::locale(std::locale(), new Comma));
  EXPECT_EQ(Variant("1.5").ToDouble(), 1.5);
  EXPECT_EQ(Variant(1234.5).ToText(), "1234.5");
  EXPECT_EQ(Printed(Variant(1234567)), "1234567");
  std::locale::global(before);
}

TEST(Variant, TrueIsMinusOneAsANumberAnd255AsAByte) {
  EXPECT_EQ(Variant(true).ToInteger(), -1);
  EXPECT_EQ(Variant(true).ToLong(), -1);
  EXPECT_EQ(Variant(true).ToSingle(), -1);
  EXPECT_EQ(Variant(true).ToDouble(), -1);
  EXPECT_EQ(Variant(true).ToCurrency(), Money(-10000));
  EXPECT_EQ(Variant(true).ToByte(), 255);
  EXPECT_EQ(Variant(false).ToInteger(), 0);
  EXPECT_EQ(Variant(false).ToByte(), 0);
}

TEST(Variant, AnyNumberButZeroIsTrue) {
  EXPECT_TRUE(Variant(2).ToBoolean());
  EXPECT_TRUE(Variant(-0.25).ToBoolean());
  EXPECT_TRUE(Variant(Money(1)).ToBoolean());
  EXPECT_TRUE(Variant(Date(1)).ToBoolean());
  EXPECT_FALSE(Variant(0.0).ToBoolean());
  EXPECT_FALSE(Variant(std::uint8_t{0}).ToBoolean());
}

TEST(Variant, TextIsTrueOrFalseByNameOrByNumber) {
  EXPECT_TRUE(Variant("True").ToBoolean());
  EXPECT_TRUE(Variant(" tRUE ").ToBoolean());
  EXPECT_FALSE(Variant("False").ToBoolean());
  EXPECT_FALSE(Variant("FALSE").ToBoolean());
  EXPECT_TRUE(Variant("-1").ToBoolean());
  EXPECT_FALSE(Variant("0.0").ToBoolean());
  EXPECT_EQ(RaisedNumber([] { return Variant("yes").ToBoolean(); }), 13);
  EXPECT_EQ(RaisedNumber([] { return Variant("").ToBoolean(); }), 13);
}

TEST(Variant, DatesAreTheirSerialNumbers) {
  EXPECT_EQ(Variant(Date(36525.75)).ToDouble(), 36525.75);
  EXPECT_EQ(Variant(Date(36525.75)).ToLong(), 36526);
  EXPECT_EQ(RaisedNumber([] { return Variant(Date(36525)).ToInteger(); }), 6);
  EXPECT_EQ(Variant(36525.75).ToDate(), Date(36525.75));
  EXPECT_EQ(Variant(std::int16_t{2}).ToDate(), Date(2));
  EXPECT_EQ(Variant(Money(15000)).ToDate(), Date(1.5));
  EXPECT_EQ(Variant(true).ToDate(), Date(-1));
}

TEST(Variant, NumbersOutsideTheYears100To9999AreNoDates) {
  EXPECT_EQ(Variant(2958465).ToDate(), Date::FromYmd(9999, 12, 31));
  EXPECT_EQ(RaisedNumber([] { return Variant(2958466).ToDate(); }), 6);
  EXPECT_EQ(Variant(-657434).ToDate(), Date::FromYmd(100, 1, 1));
  EXPECT_EQ(RaisedNumber([] { return Variant(-657435).ToDate(); }), 6);
}

TEST(Variant, ADateStaysWhatItIsEvenOutsideTheYears100To9999) {
  EXPECT_EQ(Variant(Date(1e10)).ToDate(), Date(1e10));
}

TEST(Variant, TextIsADateInIsoFormOnly) {
  EXPECT_EQ(Variant("2024-02-29").ToDate(), Date::FromYmd(2024, 2, 29));
  EXPECT_EQ(Variant(" 2024-02-29T13:45 ").ToDate(), Date::FromYmd(2024, 2, 29, 13, 45));
  for (const char* text : {"", "45351", "2023-02-29", "0099-01-01", "29.2.2024", "soon"}) {
    EXPECT_EQ(RaisedNumber([&] { return Variant(text).ToDate(); }), 13) << text;
  }
}

TEST(Variant, WholeNumbersPrintTheirDigits) {
  EXPECT_EQ(Variant(std::int16_t{-32768}).ToText(), "-32768");
  EXPECT_EQ(Variant(2147483647).ToText(), "2147483647");
  EXPECT_EQ(Variant(std::uint8_t{65}).ToText(), "65");
}

TEST(Variant, FloatsPrintTheShortestTextThatReadsBack) {
  EXPECT_EQ(Variant(0.1).ToText(), "0.1");
  EXPECT_EQ(Variant(0.1F).ToText(), "0.1");
  EXPECT_EQ(Variant(0.1 + 0.2).ToText(), "0.30000000000000004");
  EXPECT_EQ(Variant(-2.5).ToText(), "-2.5");
  EXPECT_EQ(Variant(100.0).ToText(), "100");
  EXPECT_EQ(Variant(0.0).ToText(), "0");
  EXPECT_EQ(Variant(-0.0).ToText(), "0");
}

TEST(Variant, OnlyHugeAndTinyFloatsPrintAnExponent) {
  EXPECT_EQ(Variant(1500000.0).ToText(), "1500000");
  EXPECT_EQ(Variant(1e15).ToText(), "1000000000000000");
  EXPECT_EQ(Variant(9007199254740993.0).ToText(), "9007199254740992");
  EXPECT_EQ(Variant(1e16).ToText(), "1E+16");
  EXPECT_EQ(Variant(-1.25e20).ToText(), "-1.25E+20");
  EXPECT_EQ(Variant(0.0000001).ToText(), "0.0000001");
  EXPECT_EQ(Variant(0.00000001).ToText(), "1E-08");
  EXPECT_EQ(Variant(1500000.0F).ToText(), "1500000");
}

TEST(Variant, FloatsReadBackFromTheirText) {
  for (const double value : {1.0 / 3, 12345678.9, 1e-7 / 3, 9.999999999999998e15, 1e16,
                             1.7976931348623157e308, 2.2250738585072014e-308, -657434.123456789}) {
    EXPECT_EQ(Variant(Variant(value).ToText()).ToDouble(), value);
  }
  for (const float value : {1.0F / 3, 16777217.0F, 3.4028235e38F, 1.1754944e-38F, 123456.79F}) {
    EXPECT_EQ(Variant(Variant(value).ToText()).ToSingle(), value);
  }
}

TEST(Variant, MoneyPrintsItsDecimalsWithoutTheZerosBehind) {
  EXPECT_EQ(Variant(Money(0)).ToText(), "0");
  EXPECT_EQ(Variant(Money(10000)).ToText(), "1");
  EXPECT_EQ(Variant(Money(1000000)).ToText(), "100");
  EXPECT_EQ(Variant(Money(12500)).ToText(), "1.25");
  EXPECT_EQ(Variant(Money(1)).ToText(), "0.0001");
  EXPECT_EQ(Variant(Money(-5000)).ToText(), "-0.5");
  EXPECT_EQ(Variant(Money(std::numeric_limits<std::int64_t>::max())).ToText(),
            "922337203685477.5807");
  EXPECT_EQ(Variant(Money(std::numeric_limits<std::int64_t>::min())).ToText(),
            "-922337203685477.5808");
}

TEST(Variant, MoneyReadsBackFromItsTextToTheLastDigit) {
  for (const std::int64_t scaled :
       {std::int64_t{0}, std::int64_t{1}, std::int64_t{-1}, std::int64_t{-5000},
        std::int64_t{90071992547409931}, std::numeric_limits<std::int64_t>::max(),
        std::numeric_limits<std::int64_t>::min()}) {
    EXPECT_EQ(Variant(Variant(Money(scaled)).ToText()).ToCurrency(), Money(scaled)) << scaled;
  }
}

TEST(Variant, TextOfMoneyMayHaveAnyFormOfANumber) {
  EXPECT_EQ(Variant(" +12.5 ").ToCurrency(), Money(125000));
  EXPECT_EQ(Variant("-.5").ToCurrency(), Money(-5000));
  EXPECT_EQ(Variant("3.").ToCurrency(), Money(30000));
  EXPECT_EQ(Variant("1.5e3").ToCurrency(), Money(15000000));
  EXPECT_EQ(Variant("1e2").ToCurrency(), Money(1000000));
  EXPECT_EQ(Variant("0.12346").ToCurrency(), Money(1235));
  EXPECT_EQ(Variant("1e-9").ToCurrency(), Money(0));
}

TEST(Variant, OtherKindsPrintAsTheirOwnText) {
  EXPECT_EQ(Variant(true).ToText(), "True");
  EXPECT_EQ(Variant(false).ToText(), "False");
  EXPECT_EQ(Variant(" as it is ").ToText(), " as it is ");
  EXPECT_EQ(Variant(Date::FromYmd(2024, 2, 29, 8)).ToText(), "2024-02-29 08:00:00");
}

TEST(Variant, NumbersOfAllKindsAreEqualByValue) {
  EXPECT_EQ(Variant(std::int16_t{2}), Variant(2));
  EXPECT_EQ(Variant(2), Variant(2.0));
  EXPECT_EQ(Variant(std::uint8_t{2}), Variant(2.0F));
  EXPECT_EQ(Variant(Money(25000)), Variant(2.5));
  EXPECT_EQ(Variant(Date(2)), Variant(2));
  EXPECT_EQ(Variant(Date(2)), Variant(Money(20000)));
  EXPECT_EQ(Variant(true), Variant(-1));
  EXPECT_NE(Variant(true), Variant(1));
  EXPECT_NE(Variant(2), Variant(3));
  EXPECT_NE(Variant(NotANumber), Variant(NotANumber));
}

TEST(Variant, ComparesWithPlainValuesOnEitherSide) {
  EXPECT_TRUE(Variant(4) == 4);
  EXPECT_TRUE(std::int16_t{4} == Variant(4.0));
  EXPECT_TRUE(Variant("a") == "a");
  EXPECT_TRUE(Variant(Date(2)) == Date(2));
  EXPECT_TRUE(Variant(4) != 5);
}

TEST(Variant, LargeAmountsAreEqualOnlyInAllTheirDigits) {
  const std::int64_t large = std::numeric_limits<std::int64_t>::max();
  EXPECT_EQ(Variant(Money(large)), Variant(Money(large)));
  EXPECT_NE(Variant(Money(large)), Variant(Money(large - 1)));
}

TEST(Variant, TextEqualsOnlyTheSameText) {
  EXPECT_EQ(Variant("abc"), Variant("abc"));
  EXPECT_NE(Variant("abc"), Variant("ABC"));
  EXPECT_NE(Variant("1"), Variant(1));
  EXPECT_NE(Variant("True"), Variant(true));
  EXPECT_NE(Variant("2024-02-29"), Variant(Date::FromYmd(2024, 2, 29)));
}

TEST(Variant, EmptyEqualsZeroAndTheEmptyText) {
  const Variant empty;
  EXPECT_EQ(empty, Variant());
  EXPECT_EQ(empty, Variant(0));
  EXPECT_EQ(empty, Variant(0.0));
  EXPECT_EQ(empty, Variant(false));
  EXPECT_EQ(empty, Variant(Date(0)));
  EXPECT_EQ(empty, Variant(""));
  EXPECT_EQ(Variant(""), empty);
  EXPECT_NE(empty, Variant(1));
  EXPECT_NE(empty, Variant("0"));
  EXPECT_NE(Variant(""), Variant(0)) << "both equal Empty, but not each other";
}

TEST(Variant, NullEqualsNothing) {
  EXPECT_FALSE(Variant(Null) == Variant(Null));
  EXPECT_FALSE(Variant(Null) == Variant());
  EXPECT_FALSE(Variant(Null) == Variant(0));
  EXPECT_FALSE(Variant("") == Variant(Null));
}

TEST(Variant, PrintsEveryKindAndNeverRaises) {
  EXPECT_EQ(Printed(Null), "Null");
  EXPECT_EQ(Printed(Variant()), "");
  EXPECT_EQ(Printed(std::uint8_t{65}), "65");
  EXPECT_EQ(Printed(true), "True");
  EXPECT_EQ(Printed("text"), "text");
  EXPECT_EQ(Printed(Money(12500)), "1.25");
  EXPECT_EQ(Printed(Date::FromYmd(2024, 2, 29)), "2024-02-29");
  EXPECT_EQ(Printed(Date(1e300)), "1E+300");
  EXPECT_EQ(Printed(Infinity), "inf");
}

}  // namespace
}  // namespace larkmoor
