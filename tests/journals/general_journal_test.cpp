// The class GeneralJournal, the plainest of the journals: how it opens and closes its files, how it
// finds transactions, and how it writes their headers. Its properties are in
// general_journal_properties_test.cpp; the life of the rows, which is the same in all journals, is
// in journal_rows_test.cpp.
#include <cstdint>
#include <filesystem>
#include <string>

#include <gtest/gtest.h>

#include <larkmoor/journals/general_journal.h>
#include <larkmoor/status.h>

#include "connection/shared_state.h"
#include "connection/status_messages.h"
#include "engine/records/jrnl_hdr.h"
#include "engine/tovrin_file.h"
#include "support/accounts.h"
#include "support/child_process.h"
#include "support/company.h"
#include "support/failing_disk.h"
#include "support/journals.h"
#include "support/raised_errors.h"
#include "support/read_only_file.h"
#include "support/record_files.h"
#include "support/taken_away.h"

namespace larkmoor {
namespace {

using test::AddAccount;
using test::Company;
using test::ExpectRaised;
using test::IsHeldOpen;
using test::JournalFiles;
using test::TakenAway;

/// Code of another journal, as its headers bear it.
constexpr std::int16_t Sales = 3;

class GeneralJournalTest : public testing::Test {
 protected:
  void Open() { ASSERT_EQ(journal_.OpenFile(), StatusSuccess); }

  std::filesystem::path Accounts() const { return company_.Folder() / "Chart.dat"; }

  Company company_;
  JournalFiles files_{company_.Folder()};
  GeneralJournal journal_;
};

using GeneralJournalOpen = GeneralJournalTest;
using GeneralJournalClose = GeneralJournalTest;
using GeneralJournalReadFirst = GeneralJournalTest;
using GeneralJournalReadNext = GeneralJournalTest;
using GeneralJournalGetEqual = GeneralJournalTest;
using GeneralJournalWrites = GeneralJournalTest;

// --- OpenFile ---

TEST_F(GeneralJournalOpen, HoldsHeadersRowsAndAccounts) {
  Open();
  EXPECT_TRUE(IsHeldOpen(files_.Headers()));
  EXPECT_TRUE(IsHeldOpen(files_.Rows()));
  EXPECT_TRUE(IsHeldOpen(Accounts()));
}

TEST_F(GeneralJournalOpen, IsNeededByAllThatTouchesAFile) {
  EXPECT_EQ(journal_.ReadFirst(1), StatusFileNotOpen);
  EXPECT_EQ(journal_.ReadNext(), StatusFileNotOpen);
  EXPECT_EQ(journal_.GetEqual(1), StatusFileNotOpen);
  EXPECT_EQ(journal_.Insert(), StatusFileNotOpen);
  EXPECT_EQ(journal_.Update(), StatusFileNotOpen);
  EXPECT_EQ(journal_.Delete(), StatusFileNotOpen);
  EXPECT_EQ(journal_.ClearRecord(), StatusSuccess);
  EXPECT_EQ(journal_.NDistributions(), 0);
  EXPECT_EQ(journal_.CloseFile(), StatusSuccess);
}

TEST_F(GeneralJournalOpen, TakesTheReleaseOfTheDataForAllJournals) {
  Shared().gDataVersion = 0;
  const Company older(12.9);
  Open();
  EXPECT_DOUBLE_EQ(Shared().gDataVersion, 12.9);
}

TEST_F(GeneralJournalOpen, AgainBeginsAnew) {
  files_.AddTransaction({.nRecord = 1, .reference = "A"}, {10, 20});
  Open();
  ASSERT_EQ(journal_.GetEqual(1), StatusSuccess);
  Open();
  EXPECT_EQ(journal_.Reference(), "");
  EXPECT_EQ(journal_.NDistributions(), 0);
  EXPECT_EQ(journal_.ReadNext(), StatusInvalidPositioning);
  EXPECT_EQ(journal_.CloseFile(), StatusSuccess);
  EXPECT_FALSE(IsHeldOpen(files_.Headers()));
  EXPECT_FALSE(IsHeldOpen(files_.Rows()));
  EXPECT_FALSE(IsHeldOpen(Accounts()));
}

TEST_F(GeneralJournalOpen, WithoutHeadersAnswersTheirStatusAndHoldsNothing) {
  {
    const TakenAway away(files_.Headers());
    EXPECT_EQ(journal_.OpenFile(), StatusFileNotFound);
  }
  test::ProtectFile(files_.Headers(), /*allowRead=*/false);
  EXPECT_EQ(journal_.OpenFile(), StatusInvalidOwner);
  EXPECT_FALSE(IsHeldOpen(files_.Rows()));
  EXPECT_FALSE(IsHeldOpen(Accounts()));
}

TEST_F(GeneralJournalOpen, WithoutRowsAnswersTheirStatusAndClosesTheHeaders) {
  {
    const TakenAway away(files_.Rows());
    EXPECT_EQ(journal_.OpenFile(), StatusFileNotFound);
    EXPECT_FALSE(IsHeldOpen(files_.Headers()));
  }
  test::ProtectFile(files_.Rows(), /*allowRead=*/false);
  EXPECT_EQ(journal_.OpenFile(), StatusInvalidOwner);
  EXPECT_FALSE(IsHeldOpen(files_.Headers()));
  EXPECT_FALSE(IsHeldOpen(Accounts()));
}

// The caller sees the status of the accounts, and works with the transactions all the same.
TEST_F(GeneralJournalOpen, WithoutAccountsAnswersTheirStatusAndCanBeUsed) {
  files_.AddTransaction({.nRecord = 1, .reference = "A"}, {10});
  const TakenAway away(Accounts());
  EXPECT_EQ(journal_.OpenFile(), StatusFileNotFound);
  EXPECT_EQ(journal_.ReadFirst(0), StatusSuccess);
  EXPECT_EQ(journal_.Reference(), "A");
  EXPECT_EQ(journal_.DetailAmount(1), 10);
  EXPECT_EQ(journal_.Update(), StatusSuccess);
  EXPECT_EQ(journal_.CloseFile(), StatusSuccess);
}

TEST_F(GeneralJournalOpen, WithProtectedAccountsAnswers51AndCanBeUsed) {
  files_.AddTransaction({.nRecord = 1, .reference = "A"}, {10});
  test::ProtectFile(Accounts(), /*allowRead=*/false);
  EXPECT_EQ(journal_.OpenFile(), StatusInvalidOwner);
  EXPECT_EQ(journal_.ReadFirst(0), StatusSuccess);
  EXPECT_EQ(journal_.Reference(), "A");
  EXPECT_EQ(journal_.CloseFile(), StatusSuccess);
}

TEST_F(GeneralJournalOpen, OpensAllThreeFilesForWriting) {
  files_.AddTransaction({.nRecord = 1}, {10});
  AddAccount(company_.Folder(), {"1100", 5});
  for (const auto& path : {files_.Headers(), files_.Rows(), Accounts()}) {
    test::WhereOnlyThisIsReadOnly(path, [&] {
      EXPECT_EQ(journal_.OpenFile(), StatusPermission) << path;
      const Status found = path == Accounts() ? StatusSuccess : StatusFileNotOpen;
      EXPECT_EQ(journal_.ReadFirst(0), found) << path;
    });
    std::filesystem::permissions(path, std::filesystem::perms::owner_write,
                                 std::filesystem::perm_options::add);
  }
}

TEST_F(GeneralJournalOpen, NeedsNoMoreThanReadingFromAnothersAccounts) {
  AddAccount(company_.Folder(), {"1100", 5});
  test::ProtectFile(Accounts(), /*allowRead=*/true);
  Open();
  journal_.MainAccount("1100");
  EXPECT_EQ(journal_.MainAccount(), "1100");
}

TEST_F(GeneralJournalOpen, ThatFailsDropsTheRowsInHandAndTheHeadersOnly) {
  files_.AddTransaction({.nRecord = 1}, {10, 20});
  Open();
  ASSERT_EQ(journal_.GetEqual(1), StatusSuccess);
  const TakenAway away(files_.Headers());
  EXPECT_EQ(journal_.OpenFile(), StatusFileNotFound);
  EXPECT_EQ(journal_.NDistributions(), 0);
  EXPECT_EQ(journal_.GetEqual(1), StatusFileNotOpen);
  EXPECT_TRUE(IsHeldOpen(files_.Rows()));
  EXPECT_TRUE(IsHeldOpen(Accounts()));
  // The journal still counts its headers as open, but takes a file that is not open for closed.
  EXPECT_EQ(journal_.CloseFile(), StatusSuccess);
  EXPECT_FALSE(IsHeldOpen(files_.Rows()));
  EXPECT_FALSE(IsHeldOpen(Accounts()));
}

TEST_F(GeneralJournalOpen, ThatFindsNoRowsLeavesTheAccountsOfTheLastOneOpen) {
  Open();
  const TakenAway away(files_.Rows());
  EXPECT_EQ(journal_.OpenFile(), StatusFileNotFound);
  EXPECT_FALSE(IsHeldOpen(files_.Headers()));
  EXPECT_TRUE(IsHeldOpen(Accounts()));
  EXPECT_EQ(journal_.CloseFile(), StatusSuccess);
  EXPECT_FALSE(IsHeldOpen(Accounts()));
}

// --- CloseFile and the end of the object ---

// The rows close last and without trouble: the error bears their 0.
TEST_F(GeneralJournalClose, RaisesWithTheStatusOfTheLastFileWhateverFailed) {
  test::RunInChild([&] {
    Open();
    files_.AddHeader({.nRecord = 1});
    test::BreakDisk(files_.Headers());
    ExpectRaised([&] { return journal_.CloseFile(); }, ErrorClose,
                 "GeneralJournal.CloseFile: \r\nGeneralJournal.CloseFile->JrnlHdr.CloseFile",
                 StatusSuccess);
    EXPECT_FALSE(IsHeldOpen(files_.Rows()));
    EXPECT_FALSE(IsHeldOpen(Accounts()));
  });
}

TEST_F(GeneralJournalClose, ThatFailsAtTheEndOfTheObjectDisturbsNobody) {
  test::RunInChild([&] {
    {
      GeneralJournal brief;
      ASSERT_EQ(brief.OpenFile(), StatusSuccess);
      files_.AddHeader({.nRecord = 1});
      test::BreakDisk(files_.Headers());
    }
    EXPECT_FALSE(IsHeldOpen(files_.Rows()));
  });
}

// --- ReadFirst ---

TEST_F(GeneralJournalReadFirst, ReadsTheFirstTransactionAtOrAfterThePeriod) {
  files_.AddTransaction({.nRecord = 1, .period = 5, .reference = "A"}, {10});
  files_.AddTransaction({.nRecord = 2, .period = 3, .reference = "C"}, {20, 21});
  files_.AddTransaction({.nRecord = 3, .period = 3, .reference = "B"}, {30, 31, 32});
  Open();
  ASSERT_EQ(journal_.ReadFirst(3), StatusSuccess);
  EXPECT_EQ(journal_.Reference(), "B");
  EXPECT_EQ(journal_.NDistributions(), 3);
  EXPECT_EQ(journal_.DetailAmount(3), 32);
  ASSERT_EQ(journal_.ReadFirst(4), StatusSuccess);
  EXPECT_EQ(journal_.Reference(), "A");
  EXPECT_EQ(journal_.NDistributions(), 1);
  EXPECT_EQ(journal_.ReadFirst(6), StatusEndOfFile);
}

TEST_F(GeneralJournalReadFirst, BeyondPeriod41ReadsPeriod41) {
  files_.AddTransaction({.nRecord = 1, .period = 40, .reference = "A"}, {10});
  files_.AddTransaction({.nRecord = 2, .period = 41, .reference = "B"}, {10});
  files_.AddTransaction({.nRecord = 3, .period = 50, .reference = "C"}, {10});
  Open();
  ASSERT_EQ(journal_.ReadFirst(50), StatusSuccess);
  EXPECT_EQ(journal_.Reference(), "B");
}

TEST_F(GeneralJournalReadFirst, BelowPeriod0ReadsPeriod0) {
  files_.AddTransaction({.nRecord = 1, .period = -1, .reference = "A"}, {10});
  files_.AddTransaction({.nRecord = 2, .period = 0, .reference = "B"}, {10});
  Open();
  ASSERT_EQ(journal_.ReadFirst(-5), StatusSuccess);
  EXPECT_EQ(journal_.Reference(), "B");
}

TEST_F(GeneralJournalReadFirst, OfAJournalWithoutTransactionsIsItsEnd) {
  Open();
  EXPECT_EQ(journal_.ReadFirst(0), StatusEndOfFile);
  files_.AddTransaction({.nRecord = 1, .journal = Sales, .reference = "INV"}, {10});
  EXPECT_EQ(journal_.ReadFirst(0), StatusEndOfFile);
  EXPECT_EQ(journal_.NDistributions(), 0) << "the rows of another journal are not loaded";
  EXPECT_EQ(journal_.Reference(), "INV") << "but its header is in hand";
}

// The journal of the header in hand is looked at before the status of the read.
TEST_F(GeneralJournalReadFirst, ThatFailsIsTheEndWhereAnotherJournalsHeaderIsInHand) {
  files_.AddTransaction({.nRecord = 1, .journal = Sales}, {10});
  files_.AddTransaction({.nRecord = 2}, {10});
  Open();
  ASSERT_EQ(journal_.GetEqual(1), StatusSuccess);
  ASSERT_EQ(TovrinFile().btReset(), StatusSuccess);
  EXPECT_EQ(journal_.ReadFirst(0), StatusEndOfFile);

  Open();
  ASSERT_EQ(journal_.GetEqual(2), StatusSuccess);
  ASSERT_EQ(TovrinFile().btReset(), StatusSuccess);
  EXPECT_EQ(journal_.ReadFirst(0), StatusFileNotOpen);
}

// --- ReadNext ---

TEST_F(GeneralJournalReadNext, WalksThePeriodsToTheEndOfTheFile) {
  files_.AddTransaction({.nRecord = 1, .period = 5, .reference = "A"}, {10});
  files_.AddTransaction({.nRecord = 2, .period = 3, .reference = "C"}, {20, 21});
  files_.AddTransaction({.nRecord = 3, .period = 3, .reference = "B"}, {30, 31, 32});
  Open();
  ASSERT_EQ(journal_.ReadFirst(3), StatusSuccess);
  ASSERT_EQ(journal_.ReadNext(), StatusSuccess);
  EXPECT_EQ(journal_.Reference(), "C");
  EXPECT_EQ(journal_.NDistributions(), 2);
  EXPECT_EQ(journal_.DetailAmount(1), 20);
  ASSERT_EQ(journal_.ReadNext(), StatusSuccess) << "the walk does not stop at the period";
  EXPECT_EQ(journal_.Reference(), "A");
  EXPECT_EQ(journal_.ReadNext(), StatusEndOfFile);
  EXPECT_EQ(journal_.Reference(), "A");
}

TEST_F(GeneralJournalReadNext, EndsAtAnotherJournalAndKeepsTheRows) {
  files_.AddTransaction({.nRecord = 1, .reference = "A"}, {10, 11});
  files_.AddTransaction({.nRecord = 2, .journal = Sales, .reference = "INV"}, {20});
  Open();
  ASSERT_EQ(journal_.ReadFirst(0), StatusSuccess);
  EXPECT_EQ(journal_.ReadNext(), StatusEndOfFile);
  EXPECT_EQ(journal_.Reference(), "INV") << "the other journal's header is in hand";
  EXPECT_EQ(journal_.NDistributions(), 2);
  EXPECT_EQ(journal_.DetailAmount(2), 11);
}

TEST_F(GeneralJournalReadNext, AfterOpenFileHasNoPlaceToGoOnFrom) {
  files_.AddTransaction({.nRecord = 1}, {10});
  Open();
  EXPECT_EQ(journal_.ReadNext(), StatusInvalidPositioning);
}

// Unlike ReadFirst it looks at the status of the read first.
TEST_F(GeneralJournalReadNext, ThatFailsAnswersTheStatusWhateverIsInHand) {
  files_.AddTransaction({.nRecord = 1, .journal = Sales}, {10});
  Open();
  ASSERT_EQ(journal_.GetEqual(1), StatusSuccess);
  ASSERT_EQ(TovrinFile().btReset(), StatusSuccess);
  EXPECT_EQ(journal_.ReadNext(), StatusFileNotOpen);
}

TEST_F(GeneralJournalReadNext, AfterGetEqualWalksTheRecordNumbers) {
  files_.AddTransaction({.nRecord = 1, .period = 9, .reference = "A"}, {10});
  files_.AddTransaction({.nRecord = 2, .period = 1, .reference = "B"}, {20});
  files_.AddTransaction({.nRecord = 3, .journal = Sales, .period = 1}, {30});
  files_.AddTransaction({.nRecord = 4, .period = 9, .reference = "D"}, {40});
  Open();
  ASSERT_EQ(journal_.GetEqual(1), StatusSuccess);
  ASSERT_EQ(journal_.ReadNext(), StatusSuccess);
  EXPECT_EQ(journal_.Reference(), "B");
  EXPECT_EQ(journal_.ReadNext(), StatusEndOfFile) << "record 3 belongs to another journal";
  EXPECT_EQ(journal_.ReadNext(), StatusSuccess) << "and can be walked over";
  EXPECT_EQ(journal_.Reference(), "D");
}

// --- GetEqual ---

TEST_F(GeneralJournalGetEqual, LoadsATransactionOfAnyJournal) {
  files_.AddTransaction({.nRecord = 7, .journal = Sales, .reference = "INV"}, {10, 20});
  Open();
  ASSERT_EQ(journal_.GetEqual(7), StatusSuccess);
  EXPECT_EQ(journal_.JournalID(), Sales);
  EXPECT_EQ(journal_.Reference(), "INV");
  EXPECT_EQ(journal_.NDistributions(), 2);
  EXPECT_EQ(journal_.DetailAmount(2), 20);
}

TEST_F(GeneralJournalGetEqual, OfAnUnknownNumberAnswers4AndKeepsTheTransactionInHand) {
  files_.AddTransaction({.nRecord = 7, .reference = "A"}, {10, 20});
  Open();
  ASSERT_EQ(journal_.GetEqual(7), StatusSuccess);
  journal_.DetailAmount(2, 21);
  EXPECT_EQ(journal_.GetEqual(8), StatusKeyNotFound);
  EXPECT_EQ(journal_.Reference(), "A");
  EXPECT_EQ(journal_.NDistributions(), 2);
  EXPECT_EQ(journal_.DetailAmount(1), 10);
  EXPECT_EQ(journal_.DetailAmount(2), 21);
}

// Data of this release has no key 5, which served below 13.
TEST_F(GeneralJournalGetEqual, ChoosesTheKeyByTheReleaseThatWasOpenedLast) {
  files_.AddTransaction({.nRecord = 7}, {10});
  Open();
  Shared().gDataVersion = 12.9;
  EXPECT_EQ(journal_.GetEqual(7), StatusInvalidKeyNumber);
  Shared().gDataVersion = 13.0;
  EXPECT_EQ(journal_.GetEqual(7), StatusSuccess);
  {
    const Company older(12.9);
    GeneralJournal other;
    ASSERT_EQ(other.OpenFile(), StatusSuccess);
  }
  EXPECT_EQ(journal_.GetEqual(7), StatusInvalidKeyNumber);
}

class GeneralJournalReleases : public testing::TestWithParam<double> {
 protected:
  Company company_{GetParam()};
  JournalFiles files_{company_.Folder()};
  GeneralJournal journal_;
};

TEST_P(GeneralJournalReleases, AreReadAndWrittenAlike) {
  files_.AddTransaction({.nRecord = 1, .period = 2, .reference = "A"}, {10});
  files_.AddTransaction({.nRecord = 2, .period = 1, .reference = "B"}, {20, 21});
  ASSERT_EQ(journal_.OpenFile(), StatusSuccess);
  ASSERT_EQ(journal_.ReadFirst(0), StatusSuccess);
  EXPECT_EQ(journal_.Reference(), "B");
  ASSERT_EQ(journal_.ReadNext(), StatusSuccess);
  EXPECT_EQ(journal_.Reference(), "A");
  ASSERT_EQ(journal_.GetEqual(1), StatusSuccess);
  ASSERT_EQ(journal_.ReadNext(), StatusSuccess);
  EXPECT_EQ(journal_.Reference(), "B");
  journal_.DetailAmount(2, 22);
  ASSERT_EQ(journal_.Update(), StatusSuccess);
  EXPECT_EQ(files_.Amounts(2), (std::vector<double>{20, 22}));
  journal_.NRecord(3);
  ASSERT_EQ(journal_.Insert(), StatusSuccess);
  EXPECT_EQ(files_.Amounts(3), (std::vector<double>{20, 22}));
  ASSERT_EQ(journal_.Delete(), StatusSuccess);
  EXPECT_EQ(files_.Amounts(3), std::vector<double>{});
}

INSTANTIATE_TEST_SUITE_P(Data, GeneralJournalReleases,
                         testing::Values(8.0, 11.0, 12.9, 13.0, 17.0, 18.0, 19.0),
                         [](const testing::TestParamInfo<double>& tested) {
                           return "Release" + std::to_string(static_cast<int>(tested.param * 10));
                         });

// --- ClearRecord, Insert, Update, Delete of the header ---

TEST_F(GeneralJournalWrites, ClearRecordBlanksTheHeaderAndKeepsTheRows) {
  files_.AddTransaction({.nRecord = 7, .reference = "A"}, {10, 20});
  Open();
  ASSERT_EQ(journal_.GetEqual(7), StatusSuccess);
  journal_.DetailAmount(2, 21);
  EXPECT_EQ(journal_.ClearRecord(), StatusSuccess);
  EXPECT_EQ(journal_.NRecord(), 0);
  EXPECT_EQ(journal_.Reference(), "");
  EXPECT_EQ(journal_.NDistributions(), 2);
  EXPECT_EQ(journal_.DetailAmount(2), 21);
  EXPECT_EQ(journal_.DetailAmount(1), 10);
}

TEST_F(GeneralJournalWrites, PropertiesReachTheFileWithTheNextWriteOnly) {
  files_.AddHeader({.nRecord = 7, .reference = "A"});
  Open();
  journal_.GetEqual(7);
  journal_.Reference("B");
  EXPECT_EQ(files_.Text(7, JrnlHdrRecord::Reference), "A");
  EXPECT_EQ(journal_.Update(), StatusSuccess);
  EXPECT_EQ(files_.Text(7, JrnlHdrRecord::Reference), "B");
}

// The numbers are the client's business.
TEST_F(GeneralJournalWrites, InsertGivesNoNumbers) {
  files_.AddHeader({.nRecord = 7, .period = 3, .trxNumber = 2});
  Open();
  ASSERT_EQ(journal_.Insert(), StatusSuccess);
  EXPECT_EQ(journal_.NRecord(), 0);
  EXPECT_EQ(journal_.TrxNumberL(), 0);
  EXPECT_EQ(journal_.Period(), 0);
  EXPECT_EQ(journal_.GUID(), "");
  EXPECT_TRUE(files_.HasHeader(0));
}

TEST_F(GeneralJournalWrites, InsertGoesOnAlongTheKeyOfTheLastRead) {
  files_.AddTransaction({.nRecord = 1, .period = 2, .reference = "A", .trxNumber = 3}, {10});
  files_.AddTransaction({.nRecord = 2, .period = 4, .reference = "B", .trxNumber = 1}, {10});
  Open();
  // After OpenFile: key 0, which begins with the transaction's number.
  journal_.NRecord(3);
  journal_.Period(3);
  journal_.TrxNumberL(2);
  journal_.NDistributions(1);
  ASSERT_EQ(journal_.Insert(), StatusSuccess);
  ASSERT_EQ(journal_.ReadNext(), StatusSuccess);
  EXPECT_EQ(journal_.Reference(), "A");
  // After ReadFirst: by period.
  ASSERT_EQ(journal_.ReadFirst(2), StatusSuccess);
  journal_.NRecord(4);
  journal_.Period(3);
  journal_.Reference("Z");
  ASSERT_EQ(journal_.Insert(), StatusSuccess);
  ASSERT_EQ(journal_.ReadNext(), StatusSuccess);
  EXPECT_EQ(journal_.Reference(), "B");
}

TEST_F(GeneralJournalWrites, UpdateGoesOnFromWhereTheHeaderNowLies) {
  files_.AddTransaction({.nRecord = 1, .period = 1, .reference = "A"}, {10});
  files_.AddTransaction({.nRecord = 2, .period = 2, .reference = "B"}, {10});
  files_.AddTransaction({.nRecord = 3, .period = 3, .reference = "C"}, {10});
  Open();
  ASSERT_EQ(journal_.ReadFirst(1), StatusSuccess);
  journal_.Period(2);
  journal_.Reference("Z");
  ASSERT_EQ(journal_.Update(), StatusSuccess);
  ASSERT_EQ(journal_.ReadNext(), StatusSuccess);
  EXPECT_EQ(journal_.Reference(), "C");
}

TEST_F(GeneralJournalWrites, InsertOfATakenNumberAnswers5) {
  files_.AddHeader({.nRecord = 7, .reference = "A"});
  Open();
  journal_.NRecord(7);
  EXPECT_EQ(journal_.Insert(), StatusDuplicateKey);
  EXPECT_EQ(files_.Text(7, JrnlHdrRecord::Reference), "A");
}

TEST_F(GeneralJournalWrites, UpdateAndDeleteNeedACurrentHeader) {
  files_.AddHeader({.nRecord = 7});
  Open();
  journal_.NRecord(7);
  EXPECT_EQ(journal_.Update(), StatusInvalidPositioning);
  EXPECT_EQ(journal_.Delete(), StatusInvalidPositioning);
  EXPECT_TRUE(files_.HasHeader(7));
}

TEST_F(GeneralJournalWrites, OfAHeaderThatSomeoneElseChangedAnswer80) {
  files_.AddTransaction({.nRecord = 7}, {10});
  Open();
  ASSERT_EQ(journal_.GetEqual(7), StatusSuccess);
  GeneralJournal other;
  ASSERT_EQ(other.OpenFile(), StatusSuccess);
  ASSERT_EQ(other.GetEqual(7), StatusSuccess);
  other.Reference("theirs");
  ASSERT_EQ(other.Update(), StatusSuccess);
  journal_.Reference("mine");
  EXPECT_EQ(journal_.Update(), StatusRecordConflict);
  EXPECT_EQ(journal_.Delete(), StatusRecordConflict);
  EXPECT_EQ(files_.Text(7, JrnlHdrRecord::Reference), "theirs");
}

TEST_F(GeneralJournalWrites, DeleteTakesTheHeaderInHandAndKeepsThePlace) {
  files_.AddTransaction({.nRecord = 1, .period = 1, .reference = "A"}, {10});
  files_.AddTransaction({.nRecord = 2, .period = 2, .reference = "B"}, {20});
  files_.AddTransaction({.nRecord = 3, .period = 3, .reference = "C"}, {30});
  Open();
  ASSERT_EQ(journal_.ReadFirst(2), StatusSuccess);
  ASSERT_EQ(journal_.Delete(), StatusSuccess);
  EXPECT_FALSE(files_.HasHeader(2));
  EXPECT_EQ(journal_.Reference(), "B") << "what was deleted is still in hand";
  ASSERT_EQ(journal_.ReadNext(), StatusSuccess);
  EXPECT_EQ(journal_.Reference(), "C");
}

}  // namespace
}  // namespace larkmoor
