// The class MemorizedTransactions, whose transactions are patterns for new ones: which files it
// opens and holds, its walk, and the one row that it has in memory for all rows of a pattern. Its
// properties are in memorized_transactions_properties_test.cpp.
#include <cstdint>
#include <filesystem>

#include <gtest/gtest.h>

#include <larkmoor/date.h>
#include <larkmoor/journal_code.h>
#include <larkmoor/journals/memorized_transactions.h>
#include <larkmoor/status.h>

#include "connection/status_messages.h"
#include "engine/records/jrnl_hdr.h"
#include "engine/records/jrnl_row.h"
#include "engine/tovrin_file.h"
#include "support/accounts.h"
#include "support/child_process.h"
#include "support/failing_disk.h"
#include "support/journals.h"
#include "support/masters.h"
#include "support/memorized.h"
#include "support/raised_errors.h"
#include "support/read_only_file.h"
#include "support/record_files.h"
#include "support/taken_away.h"
#include "support/watched_records.h"

namespace larkmoor {
namespace {

using test::AddAccount;
using test::AddCustomer;
using test::AddVendor;
using test::ExpectRaised;
using test::IsHeldOpen;
using test::JournalFiles;
using test::TakenAway;

// Journals, as headers bear them.
constexpr std::int16_t Invoice = tovJournalCodeSales;
constexpr std::int16_t Bill = tovJournalCodePurchase;

using MemorizedTransactionsOpen = test::MemorizedFixture;
using MemorizedTransactionsClose = test::MemorizedFixture;
using MemorizedTransactionsWalk = test::MemorizedFixture;
using MemorizedTransactionsRow = test::MemorizedFixture;
using MemorizedTransactionsCount = test::MemorizedFixture;
using MemorizedTransactionsWrites = test::MemorizedFixture;

// --- OpenFile ---

TEST_F(MemorizedTransactionsOpen, HoldsThePatternsTheirRowsAndTheAccounts) {
  const JournalFiles transactions(company_.Folder());
  Open();
  EXPECT_TRUE(IsHeldOpen(files_.Headers()));
  EXPECT_TRUE(IsHeldOpen(files_.Rows()));
  EXPECT_TRUE(IsHeldOpen(Accounts()));
  EXPECT_FALSE(IsHeldOpen(Customers()));
  EXPECT_FALSE(IsHeldOpen(Vendors()));
  EXPECT_FALSE(IsHeldOpen(transactions.Headers()));
  EXPECT_FALSE(IsHeldOpen(transactions.Rows()));
}

TEST_F(MemorizedTransactionsOpen, IsNeededByAllThatTouchesAFile) {
  EXPECT_EQ(patterns_.StepFirst(), StatusFileNotOpen);
  EXPECT_EQ(patterns_.StepLast(), StatusFileNotOpen);
  EXPECT_EQ(patterns_.StepNext(), StatusFileNotOpen);
  EXPECT_EQ(patterns_.StepPrevious(), StatusFileNotOpen);
  EXPECT_EQ(patterns_.Insert(), StatusFileNotOpen);
  EXPECT_EQ(patterns_.Update(), StatusFileNotOpen);
  EXPECT_EQ(patterns_.Delete(), StatusFileNotOpen);
  EXPECT_EQ(patterns_.ClearRecord(), StatusSuccess);
  EXPECT_EQ(patterns_.NDistributions(), 0);
  EXPECT_EQ(patterns_.CloseFile(), StatusSuccess);
}

TEST_F(MemorizedTransactionsOpen, WithoutPatternsAnswersTheirStatusAndHoldsNothing) {
  {
    const TakenAway away(files_.Headers());
    EXPECT_EQ(patterns_.OpenFile(), StatusFileNotFound);
  }
  test::ProtectFile(files_.Headers(), /*allowRead=*/false);
  EXPECT_EQ(patterns_.OpenFile(), StatusInvalidOwner);
  EXPECT_FALSE(IsHeldOpen(files_.Rows()));
  EXPECT_FALSE(IsHeldOpen(Accounts()));
}

TEST_F(MemorizedTransactionsOpen, WithoutRowsAnswersTheirStatusAndClosesThePatterns) {
  {
    const TakenAway away(files_.Rows());
    EXPECT_EQ(patterns_.OpenFile(), StatusFileNotFound);
    EXPECT_FALSE(IsHeldOpen(files_.Headers()));
  }
  test::ProtectFile(files_.Rows(), /*allowRead=*/false);
  EXPECT_EQ(patterns_.OpenFile(), StatusInvalidOwner);
  EXPECT_FALSE(IsHeldOpen(files_.Headers()));
  EXPECT_FALSE(IsHeldOpen(Accounts()));
}

// The caller sees the status of the accounts, and works with the patterns all the same.
TEST_F(MemorizedTransactionsOpen, WithoutAccountsAnswersTheirStatusAndCanBeUsed) {
  files_.AddTransaction({.nRecord = Ours}, {10});
  const TakenAway away(Accounts());
  EXPECT_EQ(patterns_.OpenFile(), StatusFileNotFound);
  EXPECT_EQ(patterns_.StepFirst(), StatusSuccess);
  EXPECT_EQ(patterns_.DetailAmount(1), 10);
  EXPECT_EQ(patterns_.Update(), StatusSuccess);
  EXPECT_EQ(patterns_.CloseFile(), StatusSuccess);
}

TEST_F(MemorizedTransactionsOpen, WithProtectedAccountsAnswers51AndCanBeUsed) {
  files_.AddTransaction({.nRecord = Ours}, {10});
  test::ProtectFile(Accounts(), /*allowRead=*/false);
  EXPECT_EQ(patterns_.OpenFile(), StatusInvalidOwner);
  EXPECT_EQ(patterns_.StepFirst(), StatusSuccess);
  EXPECT_EQ(patterns_.CloseFile(), StatusSuccess);
}

TEST_F(MemorizedTransactionsOpen, OpensAllThreeFilesForWriting) {
  files_.AddTransaction({.nRecord = Ours}, {10});
  AddAccount(company_.Folder(), {"1100", 5});
  for (const auto& path : {files_.Headers(), files_.Rows(), Accounts()}) {
    test::WhereOnlyThisIsReadOnly(path, [&] {
      EXPECT_EQ(patterns_.OpenFile(), StatusPermission) << path;
      const Status found = path == Accounts() ? StatusSuccess : StatusFileNotOpen;
      EXPECT_EQ(patterns_.StepFirst(), found) << path;
    });
    std::filesystem::permissions(path, std::filesystem::perms::owner_write,
                                 std::filesystem::perm_options::add);
  }
}

// --- CloseFile and the end of the object ---

TEST_F(MemorizedTransactionsClose, LeavesNothingOpenAndMayBeCalledAgain) {
  AddCustomer(company_.Folder(), {"HARRIS", 3});
  AddVendor(company_.Folder(), {"STONE", 3});
  LoadFor(Invoice, 3);
  EXPECT_EQ(patterns_.ID(), "HARRIS");
  patterns_.JournalID(Bill);
  EXPECT_EQ(patterns_.ID(), "STONE");
  patterns_.NDistributions(4);
  EXPECT_EQ(patterns_.CloseFile(), StatusSuccess);
  for (const auto& path : {files_.Headers(), files_.Rows(), Accounts(), Customers(), Vendors()}) {
    EXPECT_FALSE(IsHeldOpen(path)) << path;
  }
  EXPECT_EQ(patterns_.NRecord(), 0);
  EXPECT_EQ(patterns_.NDistributions(), 0);
  EXPECT_EQ(patterns_.CloseFile(), StatusSuccess);
}

TEST_F(MemorizedTransactionsClose, OfFilesThatTheEngineClosedAnswers0) {
  Open();
  ASSERT_EQ(TovrinFile().btReset(), StatusSuccess);
  EXPECT_EQ(patterns_.CloseFile(), StatusSuccess);
}

// The headers and rows go by other names there than in the journals.
TEST_F(MemorizedTransactionsClose, RaisesWithTheNamesOfTheFilesThatFailInTheirOrder) {
  test::RunInChild([&] {
    LoadFor(Invoice, 3);
    AddCustomer(company_.Folder(), {"HARRIS", 3});
    AddVendor(company_.Folder(), {"STONE", 3});
    EXPECT_EQ(patterns_.ID(), "HARRIS");
    patterns_.JournalID(Bill);
    EXPECT_EQ(patterns_.ID(), "STONE");
    AddCustomer(company_.Folder(), {"LAKE", 4});
    AddVendor(company_.Folder(), {"LAKE", 4});
    AddAccount(company_.Folder(), {"1100", 5});
    files_.AddTransaction({.nRecord = Theirs}, {10});
    for (const auto& path : {files_.Headers(), files_.Rows(), Accounts(), Customers(), Vendors()}) {
      test::BreakDisk(path);
    }
    ExpectRaised([&] { return patterns_.CloseFile(); }, ErrorClose,
                 "MemorizedTransactions.CloseFile: "
                 "\r\nMemorizedTransactions.CloseFile->Chart.CloseFile"
                 "\r\nMemorizedTransactions.CloseFile->Customer.CloseFile"
                 "\r\nMemorizedTransactions.CloseFile->Vendor.CloseFile"
                 "\r\nMemorizedTransactions.CloseFile->StxHdr.CloseFile"
                 "\r\nMemorizedTransactions.CloseFile->StxRow.CloseFile",
                 StatusIOError);
    EXPECT_EQ(patterns_.CloseFile(), StatusSuccess) << "all are closed all the same";
  });
}

// The rows close last and without trouble: the error bears their 0.
TEST_F(MemorizedTransactionsClose, RaisesWithTheStatusOfTheLastFileWhateverFailed) {
  test::RunInChild([&] {
    Open();
    files_.AddHeader({.nRecord = Ours});
    test::BreakDisk(files_.Headers());
    ExpectRaised([&] { return patterns_.CloseFile(); }, ErrorClose,
                 "MemorizedTransactions.CloseFile: "
                 "\r\nMemorizedTransactions.CloseFile->StxHdr.CloseFile",
                 StatusSuccess);
    EXPECT_FALSE(IsHeldOpen(files_.Rows()));
  });
}

TEST_F(MemorizedTransactionsClose, IsWhatTheEndOfTheObjectDoes) {
  {
    MemorizedTransactions brief;
    ASSERT_EQ(brief.OpenFile(), StatusSuccess);
    ASSERT_TRUE(IsHeldOpen(files_.Headers()));
  }
  EXPECT_FALSE(IsHeldOpen(files_.Headers()));
  EXPECT_FALSE(IsHeldOpen(files_.Rows()));
  EXPECT_FALSE(IsHeldOpen(Accounts()));
}

// --- The walk ---

TEST_F(MemorizedTransactionsWalk, GoesInTheOrderOfInsertionOverAllJournals) {
  files_.AddTransaction({.nRecord = 3, .journal = Invoice}, {30, 31});
  files_.AddTransaction({.nRecord = 1, .journal = Bill}, {10});
  files_.AddTransaction({.nRecord = 2, .journal = 12}, {20, 21, 22});
  Open();
  ASSERT_EQ(patterns_.StepFirst(), StatusSuccess);
  EXPECT_EQ(patterns_.NRecord(), 3);
  EXPECT_EQ(patterns_.NDistributions(), 2);
  ASSERT_EQ(patterns_.StepNext(), StatusSuccess);
  EXPECT_EQ(patterns_.NRecord(), 1);
  EXPECT_EQ(patterns_.NDistributions(), 1);
  ASSERT_EQ(patterns_.StepLast(), StatusSuccess);
  EXPECT_EQ(patterns_.NRecord(), 2);
  EXPECT_EQ(patterns_.NDistributions(), 3);
  ASSERT_EQ(patterns_.StepPrevious(), StatusSuccess);
  EXPECT_EQ(patterns_.NRecord(), 1);
  EXPECT_EQ(patterns_.NDistributions(), 1);
}

TEST_F(MemorizedTransactionsWalk, KeepsThePatternInHandAtItsEnd) {
  LoadAlone({1, 2, 3});
  EXPECT_EQ(patterns_.StepNext(), StatusEndOfFile);
  EXPECT_EQ(patterns_.NRecord(), Ours);
  EXPECT_EQ(patterns_.NDistributions(), 3);
  EXPECT_EQ(patterns_.StepPrevious(), StatusEndOfFile);
}

TEST_F(MemorizedTransactionsWalk, OverNoPatternsIsAtItsEnd) {
  Open();
  EXPECT_EQ(patterns_.StepFirst(), StatusEndOfFile);
  EXPECT_EQ(patterns_.StepLast(), StatusEndOfFile);
}

// The header was found and is in hand, but the answer is that of the rows.
TEST_F(MemorizedTransactionsWalk, AnswersTheStatusOfTheRows) {
  files_.AddHeader({.nRecord = 1});
  files_.AddTransaction({.nRecord = 2}, {10});
  files_.AddHeader({.nRecord = 3});
  Open();
  EXPECT_EQ(patterns_.StepFirst(), StatusSuccess) << "the rows of a later pattern were met";
  EXPECT_EQ(patterns_.NDistributions(), 0);
  EXPECT_EQ(patterns_.StepLast(), StatusEndOfFile);
  EXPECT_EQ(patterns_.NRecord(), 3);
  EXPECT_EQ(patterns_.NDistributions(), 0);
}

// --- The one row in memory ---

// Whatever its number, it is what the loading read last: the row behind the pattern.
TEST_F(MemorizedTransactionsRow, IsTheOneBehindThePatternUnderEveryNumber) {
  Load({10, 20, 30});
  EXPECT_EQ(patterns_.NDistributions(), 3);
  EXPECT_EQ(patterns_.DetailAmount(1), TheirAmount);
  EXPECT_EQ(patterns_.DetailAmount(3), TheirAmount);
  EXPECT_EQ(patterns_.DetailNRecord(2), Theirs);
}

TEST_F(MemorizedTransactionsRow, IsTheLastOfThePatternWhereNoneFollows) {
  LoadAlone({10, 20, 30});
  EXPECT_EQ(patterns_.NDistributions(), 3);
  EXPECT_EQ(patterns_.DetailAmount(1), 30);
  EXPECT_EQ(patterns_.DetailAmount(3), 30);
}

TEST_F(MemorizedTransactionsRow, ShowsUnderEveryNumberWhatWasAssignedUnderOne) {
  LoadAlone({10, 20, 30});
  patterns_.DetailAmount(1, 99);
  patterns_.DetailDescription(2, "Rent");
  EXPECT_EQ(patterns_.DetailAmount(3), 99);
  EXPECT_EQ(patterns_.DetailDescription(1), "Rent");
}

// There is no index that it cannot be reached by, and so no message box.
TEST_F(MemorizedTransactionsRow, IsReachedByAnyIndex) {
  LoadAlone({10, 20});
  EXPECT_EQ(patterns_.DetailAmount(0), 20);
  EXPECT_EQ(patterns_.DetailAmount(-7), 20);
  patterns_.DetailAmount(-32768, 99);
  EXPECT_EQ(patterns_.DetailAmount(1), 99);
  EXPECT_EQ(patterns_.NDistributions(), 2);
  EXPECT_EQ(messages_.Texts(), Messages{});
}

TEST_F(MemorizedTransactionsRow, StaysWhereClearRecordBlanksTheHeader) {
  LoadAlone({10, 20});
  EXPECT_EQ(patterns_.ClearRecord(), StatusSuccess);
  EXPECT_EQ(patterns_.NRecord(), 0);
  EXPECT_EQ(patterns_.NDistributions(), 2);
  EXPECT_EQ(patterns_.DetailAmount(1), 20);
}

// --- How many rows there are ---

TEST_F(MemorizedTransactionsCount, GrowsByTheFirstIndexWithoutRoom) {
  LoadAlone({1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11});
  patterns_.DetailAmount(20);
  EXPECT_EQ(patterns_.NDistributions(), 11) << "there is room by tens";
  patterns_.DetailAmount(21);
  EXPECT_EQ(patterns_.NDistributions(), 21);
  patterns_.DetailAmount(23);
  EXPECT_EQ(patterns_.NDistributions(), 23);
}

TEST_F(MemorizedTransactionsCount, OfANewPatternGrowsOneByOne) {
  Open();
  patterns_.DetailAmount(1, 10);
  EXPECT_EQ(patterns_.NDistributions(), 1);
  patterns_.DetailAmount(2, 20);
  EXPECT_EQ(patterns_.NDistributions(), 2);
  EXPECT_EQ(patterns_.DetailAmount(1), 20);
}

TEST_F(MemorizedTransactionsCount, AssignedMakesRoom) {
  LoadAlone({1, 2});
  patterns_.NDistributions(12);
  EXPECT_EQ(patterns_.NDistributions(), 12);
  patterns_.DetailAmount(12);
  EXPECT_EQ(patterns_.NDistributions(), 12);
  patterns_.DetailAmount(13);
  EXPECT_EQ(patterns_.NDistributions(), 13);
}

TEST_F(MemorizedTransactionsCount, AssignedKeepsTheRoomThatThereWas) {
  LoadAlone({1, 2, 3});
  patterns_.NDistributions(1);
  patterns_.DetailAmount(10);
  EXPECT_EQ(patterns_.NDistributions(), 1);
}

// --- Writing ---

// Before a row is written, those on file are read and deleted through the one row buffer. Of what
// was assigned nothing is left then.
TEST_F(MemorizedTransactionsWrites, UpdateWritesTheRowBehindThePatternForEachOfItsRows) {
  Load({10, 20, 30});
  patterns_.DetailAmount(1, 99);
  patterns_.DetailDescription(1, "Rent");
  ASSERT_EQ(patterns_.Update(), StatusSuccess);
  EXPECT_EQ(OurAmounts(), (Amounts{TheirAmount, TheirAmount, TheirAmount}));
  files_.OfRows(Ours, [](Tovrin2Record& row) {
    EXPECT_EQ(row.GetText(JrnlRowRecord::Description), "");
    return true;
  });
  EXPECT_EQ(files_.Amounts(Theirs), (Amounts{TheirAmount, 78}));
}

TEST_F(MemorizedTransactionsWrites, UpdateWritesTheLastRowForEachWhereNoneFollows) {
  LoadAlone({10, 20, 30});
  patterns_.DetailAmount(1, 99);
  ASSERT_EQ(patterns_.Update(), StatusSuccess);
  EXPECT_EQ(OurAmounts(), (Amounts{30, 30, 30}));
  ASSERT_EQ(patterns_.Update(), StatusSuccess);
  EXPECT_EQ(OurAmounts(), (Amounts{30, 30, 30}));
}

TEST_F(MemorizedTransactionsWrites, UpdateWritesAsManyRowsAsAreCounted) {
  LoadAlone({10, 20, 30});
  patterns_.NDistributions(2);
  ASSERT_EQ(patterns_.Update(), StatusSuccess);
  EXPECT_EQ(OurAmounts(), (Amounts{30, 30}));
  patterns_.NDistributions(0);
  ASSERT_EQ(patterns_.Update(), StatusSuccess);
  EXPECT_EQ(OurAmounts(), Amounts{});
}

// Only where no row of that number or above is on file does the row in memory reach it.
TEST_F(MemorizedTransactionsWrites, InsertBehindAllOthersWritesTheRowInMemoryForEach) {
  files_.AddTransaction({.nRecord = 1}, {10});
  Open();
  patterns_.NRecord(Ours);
  patterns_.DetailAmount(1, 50);
  patterns_.DetailAmount(2, 60);
  patterns_.DetailDescription(2, "Rent");
  ASSERT_EQ(patterns_.Insert(), StatusSuccess);
  EXPECT_EQ(OurAmounts(), (Amounts{60, 60}));
  files_.OfRows(Ours, [](Tovrin2Record& row) {
    EXPECT_EQ(row.GetText(JrnlRowRecord::Description), "Rent");
    return true;
  });
}

TEST_F(MemorizedTransactionsWrites, InsertBeforeAnotherPatternWritesThatOnesRow) {
  files_.AddTransaction({.nRecord = Theirs}, {TheirAmount, 78});
  Open();
  patterns_.NRecord(Ours);
  patterns_.DetailAmount(1, 50);
  patterns_.DetailAmount(2, 60);
  ASSERT_EQ(patterns_.Insert(), StatusSuccess);
  EXPECT_EQ(OurAmounts(), (Amounts{TheirAmount, TheirAmount}));
  EXPECT_EQ(patterns_.DetailAmount(1), TheirAmount);
  EXPECT_EQ(files_.Amounts(Theirs), (Amounts{TheirAmount, 78}));
}

TEST_F(MemorizedTransactionsWrites, RowsBearTheNumberJournalAndDayOfTheirHeader) {
  const Date day = Date::FromYmd(2024, 3, 15);
  files_.AddHeader({.nRecord = Ours, .journal = Bill}, [&](Tovrin2Record& header) {
    header.SetDate(JrnlHdrRecord::TrxDate, day.Serial());
  });
  files_.AddRows(Ours, {10});
  files_.AddTransaction({.nRecord = Theirs, .journal = Invoice}, {TheirAmount});
  Open();
  ASSERT_EQ(patterns_.StepFirst(), StatusSuccess);
  ASSERT_EQ(patterns_.Update(), StatusSuccess);
  ASSERT_EQ(OurAmounts(), Amounts{TheirAmount});
  files_.OfRows(Ours, [&](Tovrin2Record& row) {
    EXPECT_EQ(row.GetLong(JrnlRowRecord::JournalID), Bill);
    EXPECT_EQ(row.GetDate(JrnlRowRecord::TrxDate), day.Serial());
    return true;
  });
}

TEST_F(MemorizedTransactionsWrites, DeleteTakesTheRowsWithTheHeader) {
  Load({10, 20});
  ASSERT_EQ(patterns_.Delete(), StatusSuccess);
  EXPECT_FALSE(files_.HasHeader(Ours));
  EXPECT_EQ(OurAmounts(), Amounts{});
  EXPECT_EQ(files_.Amounts(Theirs), (Amounts{TheirAmount, 78}));
  EXPECT_EQ(patterns_.NDistributions(), 2);
  ASSERT_EQ(patterns_.StepNext(), StatusSuccess);
  EXPECT_EQ(patterns_.NRecord(), Theirs);
}

// The rows go first: a header that is refused has its rows on file all the same.
TEST_F(MemorizedTransactionsWrites, OfAHeaderThatIsRefusedAnswerForItAndLeaveTheRows) {
  files_.AddTransaction({.nRecord = Ours}, {10, 20});
  test::ProtectFile(files_.Headers(), /*allowRead=*/true);
  Open();
  ASSERT_EQ(patterns_.StepFirst(), StatusSuccess);
  EXPECT_EQ(patterns_.Update(), StatusAccessDenied);
  EXPECT_EQ(OurAmounts(), (Amounts{20, 20}));
  EXPECT_EQ(patterns_.Delete(), StatusAccessDenied);
  EXPECT_EQ(OurAmounts(), Amounts{});
}

// Nobody is told that the rows did not change.
TEST_F(MemorizedTransactionsWrites, OfRowsThatAreRefusedAnswerForTheHeader) {
  files_.AddTransaction({.nRecord = Ours}, {10, 20});
  test::ProtectFile(files_.Rows(), /*allowRead=*/true);
  Open();
  ASSERT_EQ(patterns_.StepFirst(), StatusSuccess);
  patterns_.MemorizedID("RENT");
  EXPECT_EQ(patterns_.Update(), StatusSuccess);
  EXPECT_EQ(files_.Text(Ours, JrnlHdrRecord::MemorizedID), "RENT");
  EXPECT_EQ(OurAmounts(), (Amounts{10, 20}));
  EXPECT_EQ(messages_.Texts(), Messages{});
}

TEST_F(MemorizedTransactionsWrites, AreSeenByOthersAsAWhole) {
  LoadAlone({1, 2, 3, 4, 5});
  const auto seen = test::CountsSeenDuring(files_.Rows(), JrnlRowRecord::Describe(), [&] {
    for (int i = 0; i < 100; ++i) {
      patterns_.NDistributions(i % 2 != 0 ? 5 : 2);
      EXPECT_EQ(patterns_.Update(), StatusSuccess);
    }
  });
  for (const std::int32_t count : seen) EXPECT_TRUE(count == 2 || count == 5) << count << " rows";
}

}  // namespace
}  // namespace larkmoor
