// The properties of the class GeneralJournal that have a rule of their own: the reference in its
// two packed forms, the accounts, and what is counted over all transactions.
#include <bit>
#include <cstdint>
#include <filesystem>
#include <vector>

#include <gtest/gtest.h>

#include <larkmoor/journals/general_journal.h>
#include <larkmoor/status.h>

#include "connection/shared_state.h"
#include "connection/status_messages.h"
#include "engine/records/general_data.h"
#include "engine/records/jrnl_hdr.h"
#include "engine/records/jrnl_row.h"
#include "engine/runtime_error.h"
#include "engine/tovrin_file_names.h"
#include "support/accounts.h"
#include "support/company.h"
#include "support/errors.h"
#include "support/journals.h"
#include "support/raised_errors.h"
#include "support/record_files.h"
#include "support/taken_away.h"

namespace larkmoor {
namespace {

using test::AddAccount;
using test::Company;
using test::ExpectRaised;
using test::IsHeldOpen;
using test::JournalFiles;
using test::RaisedNumber;
using test::TakenAway;

// Codes of journals, as headers bear them.
constexpr std::int16_t General = 0;
constexpr std::int16_t Sales = 3;

class GeneralJournalPropertiesTest : public testing::Test {
 protected:
  void Open() { ASSERT_EQ(journal_.OpenFile(), StatusSuccess); }

  std::filesystem::path Accounts() const { return company_.Folder() / "Chart.dat"; }

  Company company_;
  JournalFiles files_{company_.Folder()};
  GeneralJournal journal_;
};

using GeneralJournalHeader = GeneralJournalPropertiesTest;
using GeneralJournalAccounts = GeneralJournalPropertiesTest;
using GeneralJournalCounters = GeneralJournalPropertiesTest;

// --- The header ---

TEST_F(GeneralJournalHeader, NamesTwoFieldsInItsOwnWords) {
  Open();
  journal_.NRecord(1);
  journal_.MainAmount(12.5);
  journal_.BeginningBalanceFlag(true);
  ASSERT_EQ(journal_.Insert(), StatusSuccess);
  files_.OfHeader(1, [](Tovrin2Record& header) {
    EXPECT_EQ(header.GetDouble(JrnlHdrRecord::Amount), 12.5);
    EXPECT_TRUE(header.GetBoolean(JrnlHdrRecord::BeginningBalance));
  });
  EXPECT_EQ(journal_.MainAmount(), 12.5);
  EXPECT_TRUE(journal_.BeginningBalanceFlag());
}

// A row has no such marks. Both names reach the one mark of the header, and none reaches Posted.
TEST_F(GeneralJournalHeader, DetailPostedAndDetailReversedAreItsReversed) {
  Open();
  journal_.DetailPosted(1, true);
  EXPECT_TRUE(journal_.Reversed());
  EXPECT_FALSE(journal_.Posted());
  EXPECT_TRUE(journal_.DetailReversed(2));
  journal_.DetailReversed(1, false);
  EXPECT_FALSE(journal_.Reversed());
  EXPECT_FALSE(journal_.DetailPosted(1));
  journal_.Posted(true);
  EXPECT_FALSE(journal_.DetailPosted(1));
  journal_.Reversed(true);
  EXPECT_TRUE(journal_.DetailPosted(1));
}

TEST_F(GeneralJournalHeader, DetailPostedAndDetailReversedMoveToTheRow) {
  Open();
  journal_.DetailPosted(3, true);
  EXPECT_EQ(journal_.NDistributions(), 3);
  EXPECT_TRUE(journal_.DetailPosted(4));
  EXPECT_EQ(journal_.NDistributions(), 4);
  journal_.DetailReversed(5, true);
  EXPECT_EQ(journal_.NDistributions(), 5);
  EXPECT_TRUE(journal_.DetailReversed(6));
  EXPECT_EQ(journal_.NDistributions(), 6);
}

TEST_F(GeneralJournalHeader, TrxNumberIsTheNumberInSixteenBits) {
  Open();
  journal_.TrxNumber(-1);
  EXPECT_EQ(journal_.TrxNumberL(), -1);
  journal_.TrxNumberL(32767);
  EXPECT_EQ(journal_.TrxNumber(), 32767);
  journal_.TrxNumberL(40000);
  EXPECT_EQ(RaisedNumber([&] { return journal_.TrxNumber(); }), errors::Overflow);
}

/// A transaction's reference as the bytes of a Double.
double PackedKey(std::uint8_t subindex1, std::uint16_t number, std::uint16_t period,
                 std::uint16_t journal) {
  return std::bit_cast<double>(std::uint64_t{journal} << 48 | std::uint64_t{period} << 32 |
                               std::uint64_t{number} << 16 | std::uint64_t{subindex1});
}

TEST_F(GeneralJournalHeader, KeyPacksTheReferenceAndTheLowBitsOfItsNumber) {
  Open();
  journal_.Subindex1(7);
  journal_.TrxNumberL(300);
  journal_.Period(5);
  journal_.JournalID(Sales);
  journal_.Subindex2(1);
  EXPECT_EQ(std::bit_cast<std::uint64_t>(journal_.Key()),
            std::bit_cast<std::uint64_t>(PackedKey(7, 300, 5, 3)));
  journal_.TrxNumberL(0x29C40);
  EXPECT_EQ(std::bit_cast<std::uint64_t>(journal_.Key()),
            std::bit_cast<std::uint64_t>(PackedKey(7, 0x9C40, 5, 3)));
}

TEST_F(GeneralJournalHeader, KeyAssignedSetsTheReferenceAndClearsSubindex2) {
  Open();
  journal_.Subindex2(1);
  journal_.Key(PackedKey(9, 12, 6, 4));
  EXPECT_EQ(journal_.Subindex1(), 9);
  EXPECT_EQ(journal_.TrxNumberL(), 12);
  EXPECT_EQ(journal_.Period(), 6);
  EXPECT_EQ(journal_.JournalID(), 4);
  EXPECT_EQ(journal_.Subindex2(), 0);
}

// --- Accounts ---

TEST_F(GeneralJournalAccounts, MainAccountIsShownByItsId) {
  AddAccount(company_.Folder(), {"1100", 5});
  Open();
  EXPECT_EQ(journal_.MainAccount(), "");
  journal_.NRecord(1);
  journal_.MainAccount("1100");
  EXPECT_EQ(journal_.MainAccount(), "1100");
  ASSERT_EQ(journal_.Insert(), StatusSuccess);
  EXPECT_EQ(files_.Long(1, JrnlHdrRecord::MainAccountIndex), 5);
  journal_.MainAccount("");
  ASSERT_EQ(journal_.Update(), StatusSuccess);
  EXPECT_EQ(files_.Long(1, JrnlHdrRecord::MainAccountIndex), 0);
}

TEST_F(GeneralJournalAccounts, UnknownMainAccountRaises) {
  files_.AddHeader({.nRecord = 1}, [](Tovrin2Record& header) {
    header.SetLong(JrnlHdrRecord::MainAccountIndex, 77);
  });
  Open();
  journal_.GetEqual(1);
  ExpectRaised([&] { return journal_.MainAccount(); }, ErrorRead,
               "JrnlHdr.MainAccount->Chart.GetEqual(77)", StatusKeyNotFound);
  ExpectRaised([&] { journal_.MainAccount("9999"); }, ErrorAccount,
               "JrnlHdr.MainAccount->Chart.GetForAccountID(9999)", StatusKeyNotFound);
  ASSERT_EQ(journal_.Update(), StatusSuccess);
  EXPECT_EQ(files_.Long(1, JrnlHdrRecord::MainAccountIndex), 77);
}

TEST_F(GeneralJournalAccounts, MainAccountIsInUseFromRelease12On) {
  AddAccount(company_.Folder(), {"1100", 5});
  files_.AddHeader({.nRecord = 1}, [](Tovrin2Record& header) {
    header.SetLong(JrnlHdrRecord::MainAccountIndex, 5);
  });
  Open();
  journal_.GetEqual(1);
  // The release is that of the journal opened last, whichever it was.
  Shared().gDataVersion = 11.9;
  EXPECT_EQ(journal_.MainAccount(), "");
  journal_.MainAccount("");
  journal_.MainAccount("9999");
  Shared().gDataVersion = 12.0;
  EXPECT_EQ(journal_.MainAccount(), "1100");
}

TEST_F(GeneralJournalAccounts, MainAccountOfOlderDataIsEmpty) {
  for (const double release : {8.0, 11.9}) {
    const Company older(release);
    AddAccount(older.Folder(), {"1100", 5});
    GeneralJournal journal;
    ASSERT_EQ(journal.OpenFile(), StatusSuccess);
    journal.MainAccount("1100");
    EXPECT_EQ(journal.MainAccount(), "") << release;
  }
}

TEST_F(GeneralJournalAccounts, DetailGLAccountIsShownByItsId) {
  AddAccount(company_.Folder(), {"1100", 5});
  AddAccount(company_.Folder(), {"1200", 6});
  Open();
  journal_.NRecord(1);
  journal_.DetailGLAccount(1, "1100");
  journal_.DetailGLAccount(2, "1200");
  journal_.DetailGLAccount(3, "1200");
  journal_.DetailGLAccount(3, "");
  EXPECT_EQ(journal_.DetailGLAccount(1), "1100");
  EXPECT_EQ(journal_.DetailGLAccount(2), "1200");
  EXPECT_EQ(journal_.DetailGLAccount(3), "");
  ASSERT_EQ(journal_.Insert(), StatusSuccess);
  EXPECT_EQ(
      files_.OfRows(1, [](Tovrin2Record& row) { return row.GetLong(JrnlRowRecord::AccountIndex); }),
      (std::vector<std::int32_t>{5, 6, 0}));
}

TEST_F(GeneralJournalAccounts, UnknownDetailGLAccountRaisesAndStaysAsItWas) {
  files_.AddHeader({.nRecord = 1});
  files_.AddRow(1, [](Tovrin2Record& row) { row.SetLong(JrnlRowRecord::AccountIndex, 77); });
  Open();
  ASSERT_EQ(journal_.GetEqual(1), StatusSuccess);
  ExpectRaised([&] { return journal_.DetailGLAccount(1); }, ErrorRead,
               "DetailGLAccount->Chart.GetEqual(77)", StatusKeyNotFound);
  ExpectRaised([&] { journal_.DetailGLAccount(1, "9999"); }, ErrorAccount,
               "DetailGLAccount->Chart.GetForAccountID(9999)", StatusKeyNotFound);
  AddAccount(company_.Folder(), {"1300", 77});
  EXPECT_EQ(journal_.DetailGLAccount(1), "1300");
}

// A journal opens the accounts with its other files and never later.
TEST_F(GeneralJournalAccounts, ThatWereMissingAtOpenFileStayMissing) {
  AddAccount(company_.Folder(), {"1100", 5});
  files_.AddHeader({.nRecord = 1});
  files_.AddRow(1, [](Tovrin2Record& row) { row.SetLong(JrnlRowRecord::AccountIndex, 5); });
  {
    const TakenAway away(Accounts());
    ASSERT_EQ(journal_.OpenFile(), StatusFileNotFound);
  }
  ASSERT_EQ(journal_.GetEqual(1), StatusSuccess);
  EXPECT_EQ(RaisedNumber([&] { return journal_.DetailGLAccount(1); }), ErrorRead);
  EXPECT_EQ(RaisedNumber([&] { journal_.DetailGLAccount(1, "1100"); }), ErrorAccount);
  EXPECT_EQ(RaisedNumber([&] { journal_.MainAccount("1100"); }), ErrorAccount);
  EXPECT_FALSE(IsHeldOpen(Accounts()));
  Open();
  ASSERT_EQ(journal_.GetEqual(1), StatusSuccess);
  EXPECT_EQ(journal_.DetailGLAccount(1), "1100");
}

// The refusal makes accounts read empty in other classes, not here.
TEST_F(GeneralJournalAccounts, ThatAreRefusedRaiseLikeMissingOnes) {
  AddAccount(company_.Folder(), {"1100", 5});
  files_.AddHeader({.nRecord = 1});
  files_.AddRow(1, [](Tovrin2Record& row) { row.SetLong(JrnlRowRecord::AccountIndex, 5); });
  test::ProtectFile(Accounts(), /*allowRead=*/false);
  ASSERT_EQ(journal_.OpenFile(), StatusInvalidOwner);
  ASSERT_EQ(journal_.GetEqual(1), StatusSuccess);
  EXPECT_EQ(RaisedNumber([&] { return journal_.DetailGLAccount(1); }), ErrorRead);
  EXPECT_EQ(RaisedNumber([&] { journal_.DetailGLAccount(1, "1100"); }), ErrorAccount);
}

TEST_F(GeneralJournalAccounts, ThatAreEmptyNeedNoFile) {
  const TakenAway away(Accounts());
  ASSERT_EQ(journal_.OpenFile(), StatusFileNotFound);
  journal_.DetailGLAccount(1, "");
  EXPECT_EQ(journal_.DetailGLAccount(1), "");
  journal_.MainAccount("");
  EXPECT_EQ(journal_.MainAccount(), "");
}

// --- Counters ---

TEST_F(GeneralJournalCounters, MaxNRecordIsThatOfAllJournals) {
  EXPECT_EQ(journal_.MaxNRecord(), 1) << "an empty file counts as one";
  files_.AddHeader({.nRecord = 7});
  files_.AddHeader({.nRecord = 300, .journal = Sales});
  EXPECT_EQ(journal_.MaxNRecord(), 300);
  const TakenAway away(files_.Headers());
  EXPECT_EQ(journal_.MaxNRecord(), -1);
}

TEST_F(GeneralJournalCounters, MaxTrxNumberIsThatOfTheGeneralJournalInThePeriod) {
  files_.AddHeader({.nRecord = 1, .journal = General, .period = 5, .trxNumber = 3});
  files_.AddHeader({.nRecord = 2, .journal = General, .period = 5, .trxNumber = 4});
  files_.AddHeader({.nRecord = 3, .journal = Sales, .period = 5, .trxNumber = 9});
  EXPECT_EQ(journal_.MaxTrxNumberL(5), 4);
  EXPECT_EQ(journal_.MaxTrxNumber(5), 4);
  EXPECT_EQ(journal_.MaxTrxNumberL(6), 0);
  EXPECT_EQ(journal_.MaxTrxNumber(6), 0);
}

TEST_F(GeneralJournalCounters, MaxTrxNumberIsCutTo16Bits) {
  files_.AddHeader({.nRecord = 1, .period = 5, .trxNumber = 40000});
  EXPECT_EQ(journal_.MaxTrxNumberL(5), 40000);
  EXPECT_EQ(journal_.MaxTrxNumber(5), -25536);
}

/// Entries counted for the general journal.
std::int16_t BatchEntries(const Company& company) {
  constexpr std::int16_t BatchCounters = 4;
  test::OpenRecordFile general(company.Folder() / TovrinFileNames::GeneralFile(),
                               GeneralDataRecord::Describe());
  EXPECT_EQ(general.ReadRow(BatchCounters), StatusSuccess);
  return general.Record().GetInteger(GeneralDataRecord::BatchEntryCount, General);
}

TEST_F(GeneralJournalCounters, IncrementBatchCountCountsAnEntryAndAnswersTrue) {
  EXPECT_EQ(journal_.IncrementBatchCount(), -1);
  EXPECT_EQ(journal_.IncrementBatchCount(), -1);
  EXPECT_EQ(BatchEntries(company_), 2);
}

TEST_F(GeneralJournalCounters, IncrementBatchCountAnswersFalseWithoutTheGeneralFile) {
  const TakenAway away(company_.Folder() / TovrinFileNames::GeneralFile());
  EXPECT_EQ(journal_.IncrementBatchCount(), 0);
}

TEST_F(GeneralJournalCounters, WritesLeaveTheBatchCountAlone) {
  Open();
  journal_.NRecord(1);
  ASSERT_EQ(journal_.Insert(), StatusSuccess);
  ASSERT_EQ(journal_.Update(), StatusSuccess);
  ASSERT_EQ(journal_.Delete(), StatusSuccess);
  EXPECT_EQ(BatchEntries(company_), 0);
}

}  // namespace
}  // namespace larkmoor
