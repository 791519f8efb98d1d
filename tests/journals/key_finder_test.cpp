// How journals search a header of any journal by its key, without its rows: GetForKey and
// GetForKeyL.
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include <larkmoor/status.h>

#include "connection/shared_state.h"
#include "engine/records/jrnl_hdr.h"
#include "engine/runtime_error.h"
#include "support/company.h"
#include "support/errors.h"
#include "support/journal_traits.h"
#include "support/record_files.h"

namespace larkmoor {
namespace {

using test::JournalFiles;
using test::RaisedNumber;

// The finders, one with a number of 16 bits and two with one of 32.
struct ReceiptKey {
  using Journal = CashReceiptJournal;
  using Number = std::int16_t;
  static constexpr auto Find = &Journal::GetForKey;
  static constexpr std::string_view Name = "CashReceiptJournalGetForKey";
};
struct LongReceiptKey {
  using Journal = CashReceiptJournal;
  using Number = std::int32_t;
  static constexpr auto Find = &Journal::GetForKeyL;
  static constexpr std::string_view Name = "CashReceiptJournalGetForKeyL";
};
struct LongDisbursementKey {
  using Journal = CashDisbursementJournal;
  using Number = std::int32_t;
  static constexpr auto Find = &Journal::GetForKeyL;
  static constexpr std::string_view Name = "CashDisbursementJournalGetForKeyL";
};

struct KeyNames {
  template <typename Key>
  static std::string GetName(int) {
    return std::string(Key::Name);
  }
};

template <typename Key>
class KeyFinderTest : public test::SharedJournalFixture<typename Key::Journal> {
 protected:
  Status Find(std::uint8_t subindex1, typename Key::Number number, std::int16_t period,
              std::int16_t code, std::int16_t subindex2) {
    return (this->journal_.*Key::Find)(subindex1, number, period, code, subindex2);
  }
};
using KeyFinders = testing::Types<ReceiptKey, LongReceiptKey, LongDisbursementKey>;
TYPED_TEST_SUITE(KeyFinderTest, KeyFinders, KeyNames);

template <typename Key>
using LongKeyFinderTest = KeyFinderTest<Key>;
using LongKeyFinders = testing::Types<LongReceiptKey, LongDisbursementKey>;
TYPED_TEST_SUITE(LongKeyFinderTest, LongKeyFinders, KeyNames);

TYPED_TEST(KeyFinderTest, ComparesAllFivePartsInEveryRelease) {
  constexpr std::int16_t Own = TestFixture::Code;
  this->InEveryRelease([](const JournalFiles& files, typename TypeParam::Journal& journal) {
    files.AddHeader({.nRecord = 1, .journal = Own, .period = 5, .trxNumber = 300},
                    [](Tovrin2Record& header) {
                      header.SetByte(JrnlHdrRecord::Subindex1, 17);
                      header.SetByte(JrnlHdrRecord::Subindex2, 200);
                    });
    constexpr auto Find = TypeParam::Find;
    EXPECT_EQ((journal.*Find)(17, 300, 5, Own, 200), StatusSuccess);
    EXPECT_EQ((journal.*Find)(16, 300, 5, Own, 200), StatusKeyNotFound);
    EXPECT_EQ((journal.*Find)(17, 301, 5, Own, 200), StatusKeyNotFound);
    EXPECT_EQ((journal.*Find)(17, 300, 6, Own, 200), StatusKeyNotFound);
    EXPECT_EQ((journal.*Find)(17, 300, 5, Own + 1, 200), StatusKeyNotFound);
    EXPECT_EQ((journal.*Find)(17, 300, 5, Own, 201), StatusKeyNotFound);
    EXPECT_EQ(journal.NRecord(), 1);
  });
}

TYPED_TEST(KeyFinderTest, Raises6ForASecondSubindexThatIsNoByte) {
  constexpr std::int16_t Own = TestFixture::Code;
  this->InEveryRelease([](const JournalFiles&, typename TypeParam::Journal& journal) {
    constexpr auto Find = TypeParam::Find;
    constexpr std::int16_t NoBytes[] = {-1, 256};
    for (const std::int16_t subindex : NoBytes) {
      EXPECT_EQ(RaisedNumber([&] { (journal.*Find)(0, 1, 5, Own, subindex); }), errors::Overflow);
    }
    EXPECT_EQ((journal.*Find)(0, 1, 5, Own, 255), StatusKeyNotFound);
  });
}

TYPED_TEST(KeyFinderTest, FindsHeadersOfAnyJournal) {
  this->files_.AddHeader(
      {.nRecord = 1, .journal = tovJournalCodeSales, .period = 5, .trxNumber = 3});
  this->Open();
  ASSERT_EQ(this->Find(0, 3, 5, tovJournalCodeSales, 0), StatusSuccess);
  EXPECT_EQ(this->journal_.JournalID(), tovJournalCodeSales);
}

// It reads the header alone: rows still belong to the transaction before, and a write gives them to
// the header that was found.
TYPED_TEST(KeyFinderTest, LeavesTheRowsOfTheTransactionBefore) {
  this->files_.AddTransaction({.nRecord = 1, .journal = this->Code}, {10, 11});
  for (const std::int16_t code : {this->Code, this->NextCode}) {
    const std::int32_t nRecord = code + 10;
    this->files_.AddTransaction({.nRecord = nRecord, .journal = code, .period = 5, .trxNumber = 3},
                                {20});
    this->Load(1);
    ASSERT_EQ(this->Find(0, 3, 5, code, 0), StatusSuccess);
    EXPECT_EQ(this->journal_.NRecord(), nRecord);
    EXPECT_EQ(this->journal_.NDistributions(), 2);
    EXPECT_EQ(this->journal_.DetailAmount(1), 10);
    ASSERT_EQ(this->journal_.Update(), StatusSuccess);
    EXPECT_EQ(this->files_.Amounts(nRecord), (std::vector<double>{10, 11}));
  }
}

TYPED_TEST(KeyFinderTest, OfAnUnknownKeyAnswers4AndKeepsTheHeaderInHand) {
  this->AddOwn(1, "R1");
  this->Load(1);
  EXPECT_EQ(this->Find(0, 3, 5, this->Code, 0), StatusKeyNotFound);
  EXPECT_EQ(this->Reference(), "R1");
}

TYPED_TEST(KeyFinderTest, IsWhereReadNextGoesOnFrom) {
  this->files_.AddTransaction(
      {.nRecord = 1, .journal = this->Code, .period = 9, .reference = "R1", .trxNumber = 1}, {10});
  this->files_.AddTransaction(
      {.nRecord = 2, .journal = this->Code, .period = 1, .reference = "R2", .trxNumber = 2}, {20});
  this->Open();
  ASSERT_EQ(this->journal_.ReadFirst(0), StatusSuccess);
  ASSERT_EQ(this->Find(0, 1, 9, this->Code, 0), StatusSuccess);
  ASSERT_EQ(this->journal_.ReadNext(), StatusSuccess) << "by number, not by period";
  this->ExpectInHand("R2", 20);
}

TYPED_TEST(KeyFinderTest, NeedsAnOpenFile) {
  EXPECT_EQ(this->Find(0, 1, 5, this->Code, 0), StatusFileNotOpen);
}

TYPED_TEST(KeyFinderTest, FindsTheLargestNumbersBelow13) {
  const test::Company older(12.9);
  const JournalFiles files(older.Folder());
  files.AddHeader({.nRecord = 1, .journal = this->Code, .period = 5, .trxNumber = 32767});
  files.AddHeader({.nRecord = 2, .journal = this->Code, .period = 5, .trxNumber = -32768});
  this->Open();
  ASSERT_EQ(this->Find(0, 32767, 5, this->Code, 0), StatusSuccess);
  EXPECT_EQ(this->journal_.NRecord(), 1);
  ASSERT_EQ(this->Find(0, -32768, 5, this->Code, 0), StatusSuccess);
  EXPECT_EQ(this->journal_.NRecord(), 2);
}

// Below release 13 the number has 16 bits in the key. The release is that of the journal opened
// last, whichever it was.
TYPED_TEST(LongKeyFinderTest, TakesTheNumberInTheBitsThatTheReleaseHasForIt) {
  this->files_.AddHeader({.nRecord = 1, .journal = this->Code, .period = 5, .trxNumber = 32768});
  this->files_.AddHeader({.nRecord = 2, .journal = this->Code, .period = 5, .trxNumber = 40000});
  this->Open();
  constexpr std::int32_t Beyond[] = {32768, 40000, -32769};
  for (const std::int32_t number : Beyond) {
    Shared().gDataVersion = 12.9;
    EXPECT_EQ(RaisedNumber([&] { this->Find(0, number, 5, this->Code, 0); }), errors::Overflow);
    Shared().gDataVersion = 13.0;
    EXPECT_EQ(this->Find(0, number, 5, this->Code, 0),
              number > 0 ? StatusSuccess : StatusKeyNotFound);
  }
}

// From 13 on -1 is not 65535, though both are the same in 16 bits.
TEST(GetForKey, WidensItsNumberFrom13On) {
  const test::Company company(13.0);
  const JournalFiles files(company.Folder());
  constexpr std::int16_t Receipt = tovJournalCodeCashReceipt;
  files.AddHeader({.nRecord = 1, .journal = Receipt, .period = 5, .trxNumber = 65535});
  CashReceiptJournal journal;
  ASSERT_EQ(journal.OpenFile(), StatusSuccess);
  EXPECT_EQ(journal.GetForKey(0, -1, 5, Receipt, 0), StatusKeyNotFound);
  files.AddHeader({.nRecord = 2, .journal = Receipt, .period = 5, .trxNumber = -1});
  ASSERT_EQ(journal.GetForKey(0, -1, 5, Receipt, 0), StatusSuccess);
  EXPECT_EQ(journal.TrxNumberL(), -1);
}

}  // namespace
}  // namespace larkmoor
