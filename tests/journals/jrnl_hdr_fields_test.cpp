// The fields of JrnlHdr that have a rule of their own: two names of one field, fields that store
// nothing, numbers that do not fit, and the packed reference of a transaction.
#include <bit>
#include <cstdint>
#include <string>

#include <gtest/gtest.h>

#include <larkmoor/journals/jrnl_hdr.h>
#include <larkmoor/status.h>

#include "engine/records/jrnl_hdr.h"
#include "engine/tovrin_file_names.h"
#include "support/company.h"
#include "support/errors.h"
#include "support/record_files.h"

namespace larkmoor {
namespace {

using test::RaisedNumber;

// Errors of the runtime.
constexpr std::int32_t Overflow = 6;

/// A header that is not in any file.
class JrnlHdrFieldTest : public testing::Test {
 protected:
  JrnlHdr header_;
};

using JrnlHdrNames = JrnlHdrFieldTest;
using JrnlHdrEmptyFields = JrnlHdrFieldTest;
using JrnlHdrAuthorization = JrnlHdrFieldTest;
using JrnlHdrTransactionNumber = JrnlHdrFieldTest;
using JrnlHdrDropShip = JrnlHdrFieldTest;
using JrnlHdrPayLevel = JrnlHdrFieldTest;
using JrnlHdrKey = JrnlHdrFieldTest;

// --- Two names of one field ---

TEST_F(JrnlHdrNames, CardTextIsCCEncryptedCardAndCCNumber) {
  header_.CCEncryptedCard("encrypted");
  EXPECT_EQ(header_.CCNumber(), "encrypted");
  header_.CCNumber("other");
  EXPECT_EQ(header_.CCEncryptedCard(), "other");
}

TEST_F(JrnlHdrNames, RegisterMarkIsBFromRegisterAndUnknown17) {
  header_.bFromRegister(200);
  EXPECT_EQ(header_.Unknown17(), 200);
  header_.Unknown17(7);
  EXPECT_EQ(header_.bFromRegister(), 7);
}

TEST_F(JrnlHdrNames, PartnerMarkIsHasPartnerAndReimbursableExpense) {
  header_.HasPartner(true);
  EXPECT_TRUE(header_.ReimbursableExpense());
  header_.ReimbursableExpense(false);
  EXPECT_FALSE(header_.HasPartner());
}

TEST_F(JrnlHdrNames, TypeExtensionIsJrnlTypeExAndUnknownLong12) {
  header_.JrnlTypeEx(70000);
  EXPECT_EQ(header_.UnknownLong12(), 70000);
  header_.UnknownLong12(-1);
  EXPECT_EQ(header_.JrnlTypeEx(), -1);
}

TEST_F(JrnlHdrNames, ReadOnlyMarkIsTrxIsReadOnlyAndUnusedInteger3) {
  header_.TrxIsReadOnly(1);
  EXPECT_EQ(header_.UnusedInteger3(), 1);
  header_.UnusedInteger3(2);
  EXPECT_EQ(header_.TrxIsReadOnly(), 2);
}

TEST_F(JrnlHdrNames, VoidingTransactionIsTrxVoidedByAndUnknownLong11) {
  header_.TrxVoidedBy(70000);
  EXPECT_EQ(header_.UnknownLong11(), 70000);
  header_.UnknownLong11(7);
  EXPECT_EQ(header_.TrxVoidedBy(), 7);
}

// --- Fields that store nothing ---

TEST_F(JrnlHdrEmptyFields, DirDepDistributionKeepsNothing) {
  header_.DirDepDistribution("half");
  EXPECT_EQ(header_.DirDepDistribution(), "");
}

TEST_F(JrnlHdrEmptyFields, DirDepDistributionIsEmptyWhateverTheRecordHolds) {
  const test::Company company;
  {
    test::OpenRecordFile headers(company.Folder() / TovrinFileNames::JrnlHdrFile(),
                                 JrnlHdrRecord::Describe());
    headers.Add(
        [](Tovrin2Record& record) { record.SetText(JrnlHdrRecord::DirDepDistribution, "stored"); });
  }
  ASSERT_EQ(header_.OpenFile(), StatusSuccess);
  ASSERT_EQ(header_.StepFirst(), StatusSuccess);
  EXPECT_EQ(header_.DirDepDistribution(), "");
}

TEST_F(JrnlHdrEmptyFields, UnknownBytesKeepNothingAtAnyIndex) {
  header_.UnusedByte10(7);
  EXPECT_EQ(header_.UnusedByte10(), 0);
  for (const std::int16_t index : {std::int16_t{-1}, std::int16_t{0}, std::int16_t{32767}}) {
    header_.Unknown13(index, 7);
    header_.Unknown14(index, 7);
    header_.Unknown15(index, 7);
    header_.Unknown16(index, 7);
    header_.Unknown18(index, 7);
    header_.Unknown19(index, 7);
    EXPECT_EQ(header_.Unknown13(index), 0) << index;
    EXPECT_EQ(header_.Unknown14(index), 0) << index;
    EXPECT_EQ(header_.Unknown15(index), 0) << index;
    EXPECT_EQ(header_.Unknown16(index), 0) << index;
    EXPECT_EQ(header_.Unknown18(index), 0) << index;
    EXPECT_EQ(header_.Unknown19(index), 0) << index;
  }
}

// --- State of a card's authorization ---

TEST_F(JrnlHdrAuthorization, IsCCAuthStatusAndCCFlagAndTheThirdUnknownByte) {
  header_.CCAuthStatus(7);
  EXPECT_EQ(header_.CCFlag(), 7);
  EXPECT_EQ(header_.Unknown1(3), 7);
  header_.CCFlag(255);
  EXPECT_EQ(header_.CCAuthStatus(), 255);
  EXPECT_EQ(header_.Unknown1(3), 255);
}

TEST_F(JrnlHdrAuthorization, ThatIsNoByteRaises6ByItsByteNames) {
  for (const std::int16_t status : {std::int16_t{256}, std::int16_t{-1}}) {
    header_.CCAuthStatus(status);
    EXPECT_EQ(RaisedNumber([&] { return header_.CCFlag(); }), Overflow) << status;
    EXPECT_EQ(RaisedNumber([&] { return header_.Unknown1(3); }), Overflow) << status;
  }
}

TEST_F(JrnlHdrAuthorization, IsSetTo0ByTheThirdUnknownByteWhateverTheValue) {
  header_.Unknown1(3, 7);
  EXPECT_EQ(header_.CCAuthStatus(), 0);
  header_.CCAuthStatus(7);
  header_.Unknown1(3, 7);
  EXPECT_EQ(header_.CCAuthStatus(), 0);
  header_.CCAuthStatus(0x1234);
  header_.Unknown1(3, 255);
  EXPECT_EQ(header_.CCAuthStatus(), 0);
}

TEST_F(JrnlHdrAuthorization, IsNotReachedByTheOtherUnknownBytes) {
  header_.CCAuthStatus(7);
  for (const std::int16_t index :
       {std::int16_t{-1}, std::int16_t{0}, std::int16_t{2}, std::int16_t{4}}) {
    EXPECT_EQ(header_.Unknown1(index), 0) << index;
    header_.Unknown1(index, 9);
    EXPECT_EQ(header_.Unknown1(index), 0) << index;
  }
  EXPECT_EQ(header_.CCAuthStatus(), 7);
}

// --- Number of the transaction ---

TEST_F(JrnlHdrTransactionNumber, HasALongAndAShortName) {
  header_.TrxNumber(300);
  EXPECT_EQ(header_.TrxNumberL(), 300);
  header_.TrxNumberL(-32768);
  EXPECT_EQ(header_.TrxNumber(), -32768);
}

TEST_F(JrnlHdrTransactionNumber, Beyond16BitsRaises6ByItsShortName) {
  for (const std::int32_t number : {32768, 70000, -32769}) {
    header_.TrxNumberL(number);
    EXPECT_EQ(header_.TrxNumberL(), number);
    EXPECT_EQ(RaisedNumber([&] { return header_.TrxNumber(); }), Overflow) << number;
  }
}

TEST_F(JrnlHdrTransactionNumber, Below0IsStoredWithItsSign) {
  header_.TrxNumberL(70000);
  header_.TrxNumber(-5);
  EXPECT_EQ(header_.TrxNumberL(), -5);
}

// --- Drop shipments ---

TEST_F(JrnlHdrDropShip, AnyByteButZeroIsStoredAsTrueAndReads255) {
  EXPECT_EQ(header_.DropShip(), 0);
  header_.DropShip(5);
  EXPECT_EQ(header_.DropShip(), 255);
  header_.DropShip(0);
  EXPECT_EQ(header_.DropShip(), 0);
  header_.DropShip(255);
  EXPECT_EQ(header_.DropShip(), 255);
}

TEST_F(JrnlHdrDropShip, IsTrueInTheRecord) {
  const test::Company company;
  ASSERT_EQ(header_.OpenFile(), StatusSuccess);
  header_.DropShip(1);
  ASSERT_EQ(header_.Insert(), StatusSuccess);
  test::OpenRecordFile headers(company.Folder() / TovrinFileNames::JrnlHdrFile(),
                               JrnlHdrRecord::Describe());
  ASSERT_EQ(headers.File().btStepFirst(), StatusSuccess);
  EXPECT_EQ(headers.Record().GetInteger(JrnlHdrRecord::DropShip), -1);
}

// --- Pay levels ---

TEST_F(JrnlHdrPayLevel, CountsFrom1To20) {
  for (std::int16_t level = 1; level <= 20; ++level) header_.PayLevel(level, level + 0.5);
  for (std::int16_t level = 1; level <= 20; ++level) {
    EXPECT_EQ(header_.PayLevel(level), level + 0.5);
  }
}

TEST_F(JrnlHdrPayLevel, BelowTheFirstIsTheFirst) {
  header_.PayLevel(0, 40);
  EXPECT_EQ(header_.PayLevel(1), 40);
  header_.PayLevel(1, 41);
  EXPECT_EQ(header_.PayLevel(0), 41);
  EXPECT_EQ(header_.PayLevel(-32768), 41);
  EXPECT_EQ(header_.PayLevel(2), 0);
}

TEST_F(JrnlHdrPayLevel, BeyondTheLastIsTheLast) {
  header_.PayLevel(25, 40);
  EXPECT_EQ(header_.PayLevel(20), 40);
  header_.PayLevel(20, 41);
  EXPECT_EQ(header_.PayLevel(21), 41);
  EXPECT_EQ(header_.PayLevel(32767), 41);
  EXPECT_EQ(header_.PayLevel(19), 0);
}

// --- The packed reference ---

/// Journal 3, period 5, number 300, subindex 17; the lowest byte in front.
constexpr std::uint64_t PackedKey = 0x0003'0005'012C'0011;

TEST_F(JrnlHdrKey, PacksJournalPeriodNumberAndSubindex) {
  header_.Subindex1(17);
  header_.TrxNumberL(300);
  header_.Period(5);
  header_.JournalID(3);
  EXPECT_EQ(std::bit_cast<std::uint64_t>(header_.Key()), PackedKey);
}

TEST_F(JrnlHdrKey, HoldsTheLow16BitsOfTheNumber) {
  header_.TrxNumberL(40000);
  EXPECT_EQ(std::bit_cast<std::uint64_t>(header_.Key()), 0x9C40'0000U);
  header_.TrxNumberL(65536 + 300);
  EXPECT_EQ(std::bit_cast<std::uint64_t>(header_.Key()), 0x012C'0000U);
}

TEST_F(JrnlHdrKey, LeavesOutTheSecondSubindex) {
  header_.Subindex2(7);
  EXPECT_EQ(std::bit_cast<std::uint64_t>(header_.Key()), 0U);
}

TEST_F(JrnlHdrKey, AssignedSetsItsFourFields) {
  header_.TrxNumberL(70000);
  header_.Key(std::bit_cast<double>(PackedKey));
  EXPECT_EQ(header_.Subindex1(), 17);
  EXPECT_EQ(header_.TrxNumberL(), 300);
  EXPECT_EQ(header_.Period(), 5);
  EXPECT_EQ(header_.JournalID(), 3);
}

TEST_F(JrnlHdrKey, AssignedIgnoresItsSecondByte) {
  header_.Key(std::bit_cast<double>(PackedKey | 0xFF00));
  EXPECT_EQ(std::bit_cast<std::uint64_t>(header_.Key()), PackedKey);
}

TEST_F(JrnlHdrKey, AssignedToItselfClearsTheSecondSubindexAlone) {
  header_.Key(std::bit_cast<double>(PackedKey));
  header_.Subindex2(1);
  header_.NRecord(7);
  header_.Key(header_.Key());
  EXPECT_EQ(header_.Subindex2(), 0);
  EXPECT_EQ(std::bit_cast<std::uint64_t>(header_.Key()), PackedKey);
  EXPECT_EQ(header_.NRecord(), 7);
}

}  // namespace
}  // namespace larkmoor
