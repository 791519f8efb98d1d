// The class ReceiptTag: the link of a receipt to a sale. Most of its fields have several names, and
// some of these convert; the reference of each transaction is also packed into one number, under
// the letter of the other.
#include <bit>
#include <cstdint>
#include <filesystem>
#include <initializer_list>

#include <gtest/gtest.h>

#include <larkmoor/date.h>
#include <larkmoor/further/receipt_tag.h>
#include <larkmoor/status.h>
#include <larkmoor/variant.h>

#include "engine/runtime_error.h"
#include "support/company.h"
#include "support/errors.h"
#include "support/record_files.h"
#include "support/taken_away.h"

namespace larkmoor {
namespace {

using test::Company;
using test::IsHeldOpen;
using test::RaisedNumber;
using test::TakenAway;

class ReceiptTagTest : public testing::Test {
 protected:
  std::filesystem::path ReceiptTagFile() const { return company_.Folder() / "ReceiptTag.dat"; }

  Company company_;
};

class OpenReceiptTagTest : public ReceiptTagTest {
 protected:
  OpenReceiptTagTest() { EXPECT_EQ(tag_.OpenFile(), StatusSuccess); }

  ReceiptTag tag_;
};

using ReceiptTagLifecycle = ReceiptTagTest;
using ReceiptTagSteps = OpenReceiptTagTest;
using ReceiptTagNames = OpenReceiptTagTest;
using ReceiptTagTrxNumber = OpenReceiptTagTest;
using ReceiptTagPosted = OpenReceiptTagTest;
using ReceiptTagKey = OpenReceiptTagTest;
using ReceiptTagNumDistSale = OpenReceiptTagTest;

// --- The file ---

TEST_F(ReceiptTagLifecycle, FileIsReceiptTagDat) {
  ReceiptTag tag;
  EXPECT_EQ(tag.CloseFile(), StatusSuccess);
  ASSERT_EQ(tag.OpenFile(), StatusSuccess);
  EXPECT_TRUE(IsHeldOpen(ReceiptTagFile()));
  EXPECT_EQ(tag.CloseFile(), StatusSuccess);
  EXPECT_FALSE(IsHeldOpen(ReceiptTagFile()));
  EXPECT_EQ(tag.CloseFile(), StatusSuccess);
}

TEST_F(ReceiptTagLifecycle, OpenFileAnswers12WithoutTheFileAndCanBeTriedAgain) {
  ReceiptTag tag;
  {
    const TakenAway away(ReceiptTagFile());
    EXPECT_EQ(tag.OpenFile(), StatusFileNotFound);
    EXPECT_EQ(tag.CloseFile(), StatusSuccess);
    EXPECT_EQ(tag.StepFirst(), StatusFileNotOpen);
  }
  EXPECT_EQ(tag.OpenFile(), StatusSuccess);
}

TEST_F(ReceiptTagSteps, GoInTheOrderOfInsertionAndLeadToWhatIsWritten) {
  for (const std::int32_t number : {3, 1, 2}) {
    tag_.NRecordA(number);
    ASSERT_EQ(tag_.Insert(), StatusSuccess);
  }
  ASSERT_EQ(tag_.StepFirst(), StatusSuccess);
  EXPECT_EQ(tag_.NRecordA(), 3);
  ASSERT_EQ(tag_.StepNext(), StatusSuccess);
  EXPECT_EQ(tag_.NRecordA(), 1);
  tag_.PercentSale(25);
  ASSERT_EQ(tag_.Update(), StatusSuccess);
  ASSERT_EQ(tag_.StepLast(), StatusSuccess);
  EXPECT_EQ(tag_.NRecordA(), 2);
  EXPECT_EQ(tag_.PercentSale(), 0);
  EXPECT_EQ(tag_.StepNext(), StatusEndOfFile);
  ASSERT_EQ(tag_.StepPrevious(), StatusSuccess);
  EXPECT_EQ(tag_.PercentSale(), 25);
  ASSERT_EQ(tag_.Delete(), StatusSuccess);
  EXPECT_EQ(tag_.RecordCount(), 2);
}

// --- Names ---

TEST_F(ReceiptTagNames, OfTheFirstTransactionAreTwoForEachField) {
  tag_.SP_JournalID(1);
  tag_.SP_Period(2);
  tag_.SP_Subindex1(3);
  tag_.SP_Subindex2(4);
  tag_.SP_TrxNumberL(5);
  EXPECT_EQ(tag_.JournalIDA(), 1);
  EXPECT_EQ(tag_.PeriodA(), 2);
  EXPECT_EQ(tag_.SubIndex1A(), 3);
  EXPECT_EQ(tag_.SubIndex2A(), 4);
  EXPECT_EQ(tag_.TrxNumberLA(), 5);
  tag_.JournalIDA(11);
  tag_.PeriodA(12);
  tag_.SubIndex1A(13);
  tag_.SubIndex2A(14);
  tag_.TrxNumberLA(70000);
  EXPECT_EQ(tag_.SP_JournalID(), 11);
  EXPECT_EQ(tag_.SP_Period(), 12);
  EXPECT_EQ(tag_.SP_Subindex1(), 13);
  EXPECT_EQ(tag_.SP_Subindex2(), 14);
  EXPECT_EQ(tag_.SP_TrxNumberL(), 70000);
}

TEST_F(ReceiptTagNames, OfTheSecondTransactionAreTwoForEachField) {
  tag_.RP_JournalID(1);
  tag_.RP_Period(2);
  tag_.RP_Subindex1(3);
  tag_.RP_Subindex2(4);
  tag_.RP_TrxNumberL(5);
  EXPECT_EQ(tag_.JournalIDB(), 1);
  EXPECT_EQ(tag_.PeriodB(), 2);
  EXPECT_EQ(tag_.SubIndex1B(), 3);
  EXPECT_EQ(tag_.SubIndex2B(), 4);
  EXPECT_EQ(tag_.TrxNumberLB(), 5);
  tag_.JournalIDB(11);
  tag_.PeriodB(12);
  tag_.SubIndex1B(13);
  tag_.SubIndex2B(14);
  tag_.TrxNumberLB(70000);
  EXPECT_EQ(tag_.RP_JournalID(), 11);
  EXPECT_EQ(tag_.RP_Period(), 12);
  EXPECT_EQ(tag_.RP_Subindex1(), 13);
  EXPECT_EQ(tag_.RP_Subindex2(), 14);
  EXPECT_EQ(tag_.RP_TrxNumberL(), 70000);
}

TEST_F(ReceiptTagNames, OfOneTransactionLeaveTheOtherAlone) {
  tag_.SP_JournalID(1);
  tag_.SP_Period(2);
  tag_.SP_Subindex1(3);
  tag_.SP_Subindex2(4);
  tag_.SP_TrxNumberL(5);
  EXPECT_EQ(tag_.RP_JournalID(), 0);
  EXPECT_EQ(tag_.RP_Period(), 0);
  EXPECT_EQ(tag_.RP_Subindex1(), 0);
  EXPECT_EQ(tag_.RP_Subindex2(), 0);
  EXPECT_EQ(tag_.RP_TrxNumberL(), 0);
  tag_.TrxNumberB(6);
  EXPECT_EQ(tag_.TrxNumberA(), 5);
}

TEST_F(ReceiptTagNames, OfDateAndPercentAreTwo) {
  const Date day = Date::FromYmd(2004, 3, 1);
  tag_.DateRecpt(day);
  EXPECT_EQ(tag_.UnknownDate(), Variant(day));
  tag_.UnknownDate(Null);
  EXPECT_TRUE(tag_.DateRecpt().IsNull());
  tag_.PercentSale(12.5);
  EXPECT_EQ(tag_.Unknown2(), 12.5);
  tag_.Unknown2(-0.25);
  EXPECT_EQ(tag_.PercentSale(), -0.25);
}

TEST_F(ReceiptTagNames, OfTheIndexAreTwo) {
  tag_.IndexRecpt(-300);
  EXPECT_EQ(tag_.Unknown1(), -300);
  tag_.Unknown1(300);
  EXPECT_EQ(tag_.IndexRecpt(), 300);
}

// --- Transaction numbers ---

TEST_F(ReceiptTagTrxNumber, HasANarrowNameThatRaises6BeyondItsRange) {
  for (const std::int32_t number : {0, 5, -5, 32767, -32768}) {
    tag_.TrxNumberLA(number);
    tag_.TrxNumberLB(-1 - number);
    EXPECT_EQ(tag_.TrxNumberA(), number);
    EXPECT_EQ(tag_.TrxNumberB(), -1 - number);
  }
  for (const std::int32_t number : {32768, 40000, 65536 + 5, -32769}) {
    tag_.TrxNumberLA(number);
    tag_.TrxNumberLB(number);
    EXPECT_EQ(RaisedNumber([&] { return tag_.TrxNumberA(); }), errors::Overflow) << number;
    EXPECT_EQ(RaisedNumber([&] { return tag_.TrxNumberB(); }), errors::Overflow) << number;
  }
}

TEST_F(ReceiptTagTrxNumber, AssignedByItsNarrowNameIsWidened) {
  tag_.TrxNumberLA(70000);
  tag_.TrxNumberLB(70000);
  tag_.TrxNumberA(-5);
  tag_.TrxNumberB(32767);
  EXPECT_EQ(tag_.TrxNumberLA(), -5);
  EXPECT_EQ(tag_.TrxNumberLB(), 32767);
}

// --- Numbers that are marks under another name ---

// The number of the sale is the mark of the receipt, and the other way round.
TEST_F(ReceiptTagPosted, MarksAreTheNumbersOfTheOtherSide) {
  tag_.PostedRecpt(true);
  EXPECT_EQ(tag_.NRecordSale(), -1);
  EXPECT_EQ(tag_.Unknown4(), -1);
  EXPECT_EQ(tag_.NRecordRecpt(), 0);
  EXPECT_FALSE(tag_.PostedSale());
  tag_.PostedRecpt(false);
  tag_.PostedSale(true);
  EXPECT_EQ(tag_.NRecordSale(), 0);
  EXPECT_FALSE(tag_.PostedRecpt());
  EXPECT_EQ(tag_.NRecordRecpt(), -1);
  EXPECT_EQ(tag_.Unknown3(), -1);
}

TEST_F(ReceiptTagPosted, AnyNumberBut0IsAMark) {
  for (const std::int32_t number : {1, -1, 7, 65536, -70000}) {
    tag_.NRecordSale(number);
    tag_.NRecordRecpt(number);
    EXPECT_TRUE(tag_.PostedRecpt()) << number;
    EXPECT_TRUE(tag_.PostedSale()) << number;
  }
  tag_.NRecordSale(0);
  tag_.NRecordRecpt(0);
  EXPECT_FALSE(tag_.PostedRecpt());
  EXPECT_FALSE(tag_.PostedSale());
}

TEST_F(ReceiptTagPosted, NumbersAreReadAs16BitsWhereTheyFit) {
  tag_.NRecordSale(-300);
  tag_.NRecordRecpt(300);
  EXPECT_EQ(tag_.Unknown4(), -300);
  EXPECT_EQ(tag_.Unknown3(), 300);
  tag_.NRecordSale(32768);
  tag_.NRecordRecpt(-32769);
  EXPECT_EQ(RaisedNumber([&] { return tag_.Unknown4(); }), errors::Overflow);
  EXPECT_EQ(RaisedNumber([&] { return tag_.Unknown3(); }), errors::Overflow);
}

TEST_F(ReceiptTagPosted, NumbersAssignedAs16BitsAreWidened) {
  tag_.NRecordSale(70000);
  tag_.NRecordRecpt(70000);
  tag_.Unknown4(-300);
  tag_.Unknown3(300);
  EXPECT_EQ(tag_.NRecordSale(), -300);
  EXPECT_EQ(tag_.NRecordRecpt(), 300);
}

TEST_F(ReceiptTagPosted, NumbersOfTheHeadersAreFieldsOfTheirOwn) {
  tag_.NRecordA(1);
  tag_.NRecordB(2);
  tag_.NRecordSale(3);
  tag_.NRecordRecpt(4);
  EXPECT_EQ(tag_.NRecordA(), 1);
  EXPECT_EQ(tag_.NRecordB(), 2);
  EXPECT_EQ(tag_.NRecordSale(), 3);
  EXPECT_EQ(tag_.NRecordRecpt(), 4);
}

// --- Packed references ---

/// The bytes of a key, the lowest in front.
constexpr std::uint64_t PackedKey = 0x0003'0005'012C'0011;  // journal 3, period 5, 300, subindex 17
constexpr std::uint64_t OtherKey = 0x0001'0006'0007'0012;   // journal 1, period 6, 7, subindex 18

std::uint64_t Bits(double key) { return std::bit_cast<std::uint64_t>(key); }

TEST_F(ReceiptTagKey, ShowsTheNumberOfTheOtherLetterInBytes2And3) {
  tag_.TrxNumberB(7);
  EXPECT_EQ(Bits(tag_.KeyA()), 0x0000'0000'0007'0000U);
  EXPECT_EQ(Bits(tag_.KeyB()), 0U);
  tag_.TrxNumberB(0);
  tag_.TrxNumberA(8);
  EXPECT_EQ(Bits(tag_.KeyA()), 0U);
  EXPECT_EQ(Bits(tag_.KeyB()), 0x0000'0000'0008'0000U);
}

TEST_F(ReceiptTagKey, PacksJournalPeriodNumberAndSubindexOfTheOtherLetter) {
  tag_.SubIndex1B(17);
  tag_.TrxNumberB(300);
  tag_.PeriodB(5);
  tag_.JournalIDB(3);
  tag_.SubIndex1A(18);
  tag_.TrxNumberA(7);
  tag_.PeriodA(6);
  tag_.JournalIDA(1);
  EXPECT_EQ(Bits(tag_.KeyA()), PackedKey);
  EXPECT_EQ(Bits(tag_.KeyB()), OtherKey);
}

TEST_F(ReceiptTagKey, LeavesOutTheSecondSubindex) {
  tag_.SubIndex2A(7);
  tag_.SubIndex2B(8);
  EXPECT_EQ(Bits(tag_.KeyA()), 0U);
  EXPECT_EQ(Bits(tag_.KeyB()), 0U);
}

TEST_F(ReceiptTagKey, OfLetterASetsTheReferenceBAndClearsItsSecondSubindex) {
  tag_.SubIndex2A(7);
  tag_.SubIndex2B(8);
  tag_.KeyA(std::bit_cast<double>(PackedKey));
  EXPECT_EQ(tag_.SubIndex1B(), 17);
  EXPECT_EQ(tag_.TrxNumberLB(), 300);
  EXPECT_EQ(tag_.PeriodB(), 5);
  EXPECT_EQ(tag_.JournalIDB(), 3);
  EXPECT_EQ(tag_.SubIndex2B(), 0);
  EXPECT_EQ(Bits(tag_.KeyB()), 0U) << "reference A is as it was";
  EXPECT_EQ(tag_.SubIndex2A(), 7);
}

TEST_F(ReceiptTagKey, OfLetterBSetsTheReferenceAAndClearsItsSecondSubindex) {
  tag_.SubIndex2A(7);
  tag_.SubIndex2B(8);
  tag_.KeyB(std::bit_cast<double>(PackedKey));
  EXPECT_EQ(tag_.SubIndex1A(), 17);
  EXPECT_EQ(tag_.TrxNumberLA(), 300);
  EXPECT_EQ(tag_.PeriodA(), 5);
  EXPECT_EQ(tag_.JournalIDA(), 3);
  EXPECT_EQ(tag_.SubIndex2A(), 0);
  EXPECT_EQ(Bits(tag_.KeyA()), 0U) << "reference B is as it was";
  EXPECT_EQ(tag_.SubIndex2B(), 8);
}

TEST_F(ReceiptTagKey, IgnoresItsSecondByteWhereItIsAssigned) {
  tag_.KeyA(std::bit_cast<double>(PackedKey | 0xFF00));
  tag_.KeyB(std::bit_cast<double>(OtherKey | 0xFF00));
  EXPECT_EQ(Bits(tag_.KeyA()), PackedKey);
  EXPECT_EQ(Bits(tag_.KeyB()), OtherKey);
}

// The 16 bits of a key are a signed number in the field, which has 32.
TEST_F(ReceiptTagKey, StoresANumberAboveTheSignBitAsBelow0) {
  constexpr std::uint64_t MinusFive = 0x0003'0005'FFFB'0000;
  tag_.KeyA(std::bit_cast<double>(MinusFive));
  tag_.KeyB(std::bit_cast<double>(MinusFive));
  EXPECT_EQ(tag_.TrxNumberLB(), -5);
  EXPECT_EQ(tag_.TrxNumberLA(), -5);
}

// --- The bytes of NumDistSale ---

TEST_F(ReceiptTagNumDistSale, DividedBy256IsUnknown5RoundedHalvesToEven) {
  struct Case {
    std::int16_t stored;
    int shown;
  };
  for (const Case& tested : std::initializer_list<Case>{
           {0, 0},
           {127, 0},
           {128, 0},
           {129, 1},
           {256, 1},
           {383, 1},
           {384, 2},
           {640, 2},
           {641, 3},
           {32767, 128},
           {-128, 0},
       }) {
    tag_.NumDistSale(tested.stored);
    EXPECT_EQ(tag_.Unknown5(), tested.shown) << tested.stored;
  }
}

TEST_F(ReceiptTagNumDistSale, BelowMinusOneHalfOf256RaisesOnUnknown5) {
  for (const std::int16_t stored : std::initializer_list<std::int16_t>{-129, -256, -32768}) {
    tag_.NumDistSale(stored);
    EXPECT_EQ(RaisedNumber([&] { return tag_.Unknown5(); }), errors::Overflow) << stored;
  }
}

TEST_F(ReceiptTagNumDistSale, ReadsAsUnknown6WhereItFitsIntoAByte) {
  for (const std::int16_t stored : std::initializer_list<std::int16_t>{0, 1, 200, 255}) {
    tag_.NumDistSale(stored);
    EXPECT_EQ(tag_.Unknown6(), stored);
  }
  for (const std::int16_t stored : std::initializer_list<std::int16_t>{256, 300, -1, -32768}) {
    tag_.NumDistSale(stored);
    EXPECT_EQ(RaisedNumber([&] { return tag_.Unknown6(); }), errors::Overflow) << stored;
  }
}

TEST_F(ReceiptTagNumDistSale, AssignedByUnknown6IsThatByteAlone) {
  tag_.NumDistSale(0x1234);
  tag_.Unknown6(200);
  EXPECT_EQ(tag_.NumDistSale(), 200);
  tag_.Unknown6(255);
  EXPECT_EQ(tag_.NumDistSale(), 255);
}

// What is meant for the upper byte ends as a mark in the number of the sale.
TEST_F(ReceiptTagNumDistSale, IsNotWhatUnknown5Assigns) {
  struct Case {
    std::int16_t stored;
    std::uint8_t assigned;
    std::int32_t mark;
  };
  for (const Case& tested : std::initializer_list<Case>{
           {0, 0, 0},
           {0, 1, -1},
           {0, 127, -1},
           {5, 0, -1},
           {256, 0, 0},
           {300, 0, -1},
           {300, 2, -1},
       }) {
    tag_.NumDistSale(tested.stored);
    tag_.NRecordSale(70000);
    tag_.NRecordRecpt(70000);
    tag_.Unknown5(tested.assigned);
    EXPECT_EQ(tag_.NRecordSale(), tested.mark) << tested.stored << ", " << int{tested.assigned};
    EXPECT_EQ(tag_.PostedRecpt(), tested.mark != 0);
    EXPECT_EQ(tag_.NumDistSale(), tested.stored);
    EXPECT_EQ(tag_.NRecordRecpt(), 70000);
  }
}

}  // namespace
}  // namespace larkmoor
