// The class AssemblyAdjustmentJournal: its accounts, which it looks up in a way of its own, the
// reason that it keeps in a row, and the properties narrower than what is stored. What it shares
// with some journals is tested in files named after it, like journal_close_test.cpp; what it shares
// with all of them, in general_journal_test.cpp and journal_rows_test.cpp.
#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include <larkmoor/journal_code.h>
#include <larkmoor/journals/assembly_adjustment_journal.h>
#include <larkmoor/status.h>

#include "connection/shared_state.h"
#include "connection/status_messages.h"
#include "engine/records/jrnl_hdr.h"
#include "engine/records/jrnl_row.h"
#include "engine/runtime_error.h"
#include "engine/store/driver.h"
#include "engine/tovrin_file.h"
#include "support/accounts.h"
#include "support/company.h"
#include "support/errors.h"
#include "support/journal_fixture.h"
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
using test::RaisedNumber;
using test::TakenAway;

/// The journal, as its headers bear it.
constexpr std::int16_t Assembly = tovJournalCodeAssemblyAdjustment;

using AssemblyAdjustmentJournalTest = test::JournalFixture<AssemblyAdjustmentJournal>;
using AssemblyAdjustmentJournalOpen = AssemblyAdjustmentJournalTest;
using AssemblyAdjustmentJournalHeader = AssemblyAdjustmentJournalTest;
using AssemblyAdjustmentJournalRows = AssemblyAdjustmentJournalTest;

// --- OpenFile ---

TEST_F(AssemblyAdjustmentJournalOpen, HoldsHeadersRowsAndAccounts) {
  Open();
  EXPECT_TRUE(IsHeldOpen(files_.Headers()));
  EXPECT_TRUE(IsHeldOpen(files_.Rows()));
  EXPECT_TRUE(IsHeldOpen(Accounts()));
}

TEST_F(AssemblyAdjustmentJournalOpen, TakesTheReleaseOfTheDataForAllJournals) {
  Shared().gDataVersion = 0;
  const Company older(12.9);
  Open();
  EXPECT_DOUBLE_EQ(Shared().gDataVersion, 12.9);
}

TEST_F(AssemblyAdjustmentJournalOpen, AgainBeginsAnew) {
  Add(Assembly, 1, "A1");
  Load(1);
  Open();
  EXPECT_EQ(journal_.Reference(), "");
  EXPECT_EQ(journal_.NDistributions(), 0);
  EXPECT_EQ(journal_.ReadNext(), StatusInvalidPositioning);
}

TEST_F(AssemblyAdjustmentJournalOpen, WithoutHeadersAnswersTheirStatusAndHoldsNothing) {
  {
    const TakenAway away(files_.Headers());
    EXPECT_EQ(journal_.OpenFile(), StatusFileNotFound);
  }
  test::ProtectFile(files_.Headers(), /*allowRead=*/false);
  EXPECT_EQ(journal_.OpenFile(), StatusInvalidOwner);
  EXPECT_FALSE(IsHeldOpen(files_.Rows()));
  EXPECT_FALSE(IsHeldOpen(Accounts()));
}

TEST_F(AssemblyAdjustmentJournalOpen, WithoutRowsAnswersTheirStatusAndHoldsNothing) {
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

TEST_F(AssemblyAdjustmentJournalOpen, WithoutAccountsAnswersTheirStatusAndCanBeUsed) {
  Add(Assembly, 1, "A1");
  {
    const TakenAway away(Accounts());
    EXPECT_EQ(journal_.OpenFile(), StatusFileNotFound);
  }
  EXPECT_EQ(journal_.ReadFirst(0), StatusSuccess);
  EXPECT_EQ(journal_.DetailAmount(1), 1);
  EXPECT_EQ(journal_.Update(), StatusSuccess);
  test::ProtectFile(Accounts(), /*allowRead=*/false);
  EXPECT_EQ(journal_.OpenFile(), StatusInvalidOwner);
  EXPECT_EQ(journal_.ReadFirst(0), StatusSuccess);
  EXPECT_EQ(journal_.CloseFile(), StatusSuccess);
  EXPECT_FALSE(IsHeldOpen(files_.Headers()));
}

TEST_F(AssemblyAdjustmentJournalOpen, OpensAllThreeFilesForWriting) {
  Add(Assembly, 1, "A1");
  AddAccount(company_.Folder(), {"1100", 5});
  for (const auto& path : {files_.Headers(), files_.Rows(), Accounts()}) {
    test::WhereOnlyThisIsReadOnly(path, [&] {
      EXPECT_EQ(journal_.OpenFile(), StatusPermission) << path;
      const Status found = path == Accounts() ? StatusSuccess : StatusFileNotOpen;
      EXPECT_EQ(journal_.GetEqual(1), found) << path;
    });
    std::filesystem::permissions(path, std::filesystem::perms::owner_write,
                                 std::filesystem::perm_options::add);
  }
}

TEST_F(AssemblyAdjustmentJournalOpen, NeedsNoOtherFiles) {
  const TakenAway costs(company_.Folder() / "Cost.dat");
  const TakenAway customers(company_.Folder() / "Customer.dat");
  const TakenAway phases(company_.Folder() / "Phase.dat");
  const TakenAway vendors(company_.Folder() / "Vendor.dat");
  EXPECT_EQ(journal_.OpenFile(), StatusSuccess);
  EXPECT_EQ(journal_.CloseFile(), StatusSuccess);
}

// --- Accounts ---

/// With account 1100, number 5, and transaction 1, whose header and one row are posted to it.
class AssemblyAdjustmentJournalAccounts : public AssemblyAdjustmentJournalTest {
 protected:
  static constexpr std::string_view OpenStep = "AssemblyAdjustmentJournal.Account=>Chart.OpenFile";

  AssemblyAdjustmentJournalAccounts() {
    AddAccount(company_.Folder(), {"1100", 5});
    AddTransaction(/*account=*/5);
  }

  /// Lays one more transaction of one row, with that account in both.
  void AddTransaction(std::int32_t account) {
    files_.AddHeader({.nRecord = ++transactions_, .journal = Assembly}, [&](Tovrin2Record& header) {
      header.SetLong(JrnlHdrRecord::MainAccountIndex, account);
    });
    files_.AddRow(transactions_,
                  [&](Tovrin2Record& row) { row.SetLong(JrnlRowRecord::AccountIndex, account); });
  }

  /// Opens the journal while the chart of accounts is missing, and reads a transaction.
  void LoadWithoutAccounts(std::int32_t nRecord) {
    const TakenAway away(Accounts());
    ASSERT_EQ(journal_.OpenFile(), StatusFileNotFound);
    ASSERT_EQ(journal_.GetEqual(nRecord), StatusSuccess);
  }

  /// Expects all four look-ups to raise that the accounts do not open.
  void ExpectNotOpened(Status status) {
    ExpectRaised([&] { return journal_.MainAccount(); }, ErrorOpen, OpenStep, status);
    ExpectRaised([&] { return journal_.DetailGLAccount(1); }, ErrorOpen, OpenStep, status);
    ExpectRaised([&] { journal_.MainAccount("1100"); }, ErrorOpen, OpenStep, status);
    ExpectRaised([&] { journal_.DetailGLAccount(1, "1100"); }, ErrorOpen, OpenStep, status);
  }

  std::int32_t transactions_ = 0;
};

TEST_F(AssemblyAdjustmentJournalAccounts, AreShownByTheirIdAndStoredByTheirIndex) {
  AddAccount(company_.Folder(), {"1200", 6});
  Load(1);
  EXPECT_EQ(journal_.MainAccount(), "1100");
  EXPECT_EQ(journal_.DetailGLAccount(1), "1100");
  journal_.MainAccount("1200");
  journal_.DetailGLAccount(1, "1200");
  journal_.DetailGLAccount(2, "1100");
  EXPECT_EQ(journal_.DetailGLAccount(1), "1200") << "each row has its own";
  journal_.DetailGLAccount(2, "");
  journal_.NDistributions(2);
  ASSERT_EQ(journal_.Update(), StatusSuccess);
  EXPECT_EQ(files_.Long(1, JrnlHdrRecord::MainAccountIndex), 6);
  EXPECT_EQ(RowLongs(1, JrnlRowRecord::AccountIndex), (std::vector<std::int32_t>{6, 0}));
}

// Other journals raise.
TEST_F(AssemblyAdjustmentJournalAccounts, OfAnUnknownIndexReadEmpty) {
  AddTransaction(/*account=*/77);
  Load(2);
  EXPECT_EQ(journal_.MainAccount(), "");
  EXPECT_EQ(journal_.DetailGLAccount(1), "");
  EXPECT_EQ(messages_.Texts(), Messages{});
  AddAccount(company_.Folder(), {"1300", 77});
  EXPECT_EQ(journal_.MainAccount(), "1300");
  EXPECT_EQ(journal_.DetailGLAccount(1), "1300");
}

// The number is that of a failed read, not that of other journals.
TEST_F(AssemblyAdjustmentJournalAccounts, AssignedAnUnknownIdRaiseAndStayAsTheyWere) {
  Load(1);
  constexpr std::string_view Step = "AssemblyAdjustmentJournal.Account=>Chart.GetEqual(9999)";
  ExpectRaised([&] { journal_.MainAccount("9999"); }, ErrorRead, Step, StatusKeyNotFound);
  ExpectRaised([&] { journal_.DetailGLAccount(1, "9999"); }, ErrorRead, Step, StatusKeyNotFound);
  EXPECT_EQ(journal_.MainAccount(), "1100");
  EXPECT_EQ(journal_.DetailGLAccount(1), "1100");
}

TEST_F(AssemblyAdjustmentJournalAccounts, WhoseFileTheEngineClosedReadEmptyAndRaiseAssigned) {
  Load(1);
  ASSERT_EQ(TovrinFile().btReset(), StatusSuccess);
  EXPECT_EQ(journal_.MainAccount(), "");
  EXPECT_EQ(journal_.DetailGLAccount(1), "");
  ExpectRaised([&] { journal_.MainAccount("1100"); }, ErrorRead,
               "AssemblyAdjustmentJournal.Account=>Chart.GetEqual(1100)", StatusFileNotOpen);
}

// Other journals never try again.
TEST_F(AssemblyAdjustmentJournalAccounts, MissingAtOpenFileAreTriedAgainByEveryLookUp) {
  LoadWithoutAccounts(1);
  {
    const TakenAway away(Accounts());
    ExpectNotOpened(StatusFileNotFound);
    ExpectNotOpened(StatusFileNotFound);
  }
  EXPECT_FALSE(IsHeldOpen(Accounts()));
  EXPECT_EQ(journal_.DetailGLAccount(1), "1100");
  EXPECT_EQ(journal_.MainAccount(), "1100");
  EXPECT_TRUE(IsHeldOpen(Accounts()));
  EXPECT_EQ(journal_.CloseFile(), StatusSuccess);
  EXPECT_FALSE(IsHeldOpen(Accounts()));
}

TEST_F(AssemblyAdjustmentJournalAccounts, MissingAtOpenFileAreOpenedByAnAssignmentToo) {
  LoadWithoutAccounts(1);
  AddAccount(company_.Folder(), {"1200", 6});
  journal_.DetailGLAccount(1, "1200");
  EXPECT_TRUE(IsHeldOpen(Accounts()));
  EXPECT_EQ(journal_.DetailGLAccount(1), "1200");
}

TEST_F(AssemblyAdjustmentJournalAccounts, ThatAreEmptyAreNotLookedUp) {
  AddTransaction(/*account=*/0);
  LoadWithoutAccounts(2);
  const TakenAway away(Accounts());
  EXPECT_EQ(journal_.MainAccount(), "");
  EXPECT_EQ(journal_.DetailGLAccount(1), "");
  journal_.MainAccount("");
  journal_.DetailGLAccount(1, "");
  EXPECT_EQ(messages_.Texts(), Messages{});
}

TEST_F(AssemblyAdjustmentJournalAccounts, RefusedAtOpenFileReadEmptyAndRaiseAssigned) {
  test::ProtectFile(Accounts(), /*allowRead=*/false);
  ASSERT_EQ(journal_.OpenFile(), StatusInvalidOwner);
  ASSERT_EQ(journal_.GetEqual(1), StatusSuccess);
  EXPECT_EQ(journal_.MainAccount(), "");
  EXPECT_EQ(journal_.DetailGLAccount(1), "");
  ExpectRaised([&] { journal_.MainAccount("1100"); }, ErrorOpen, OpenStep, StatusInvalidOwner);
  ExpectRaised([&] { journal_.DetailGLAccount(1, "1100"); }, ErrorOpen, OpenStep,
               StatusInvalidOwner);
}

// An assignment does not ask whether the accounts were refused, and opens them. Reading does, and
// goes on giving the empty text.
TEST_F(AssemblyAdjustmentJournalAccounts, RefusedAtOpenFileReadEmptyUntilTheNextOne) {
  AddAccount(company_.Folder(), {"1200", 6});
  test::ProtectFile(Accounts(), /*allowRead=*/false);
  ASSERT_EQ(journal_.OpenFile(), StatusInvalidOwner);
  ASSERT_EQ(journal_.GetEqual(1), StatusSuccess);
  ASSERT_EQ(store::DefaultDriver().ClearOwner(Accounts(), "someone"), StatusSuccess);
  EXPECT_EQ(journal_.MainAccount(), "");
  EXPECT_FALSE(IsHeldOpen(Accounts())) << "reading does not try again";
  journal_.MainAccount("1200");
  EXPECT_TRUE(IsHeldOpen(Accounts()));
  EXPECT_EQ(journal_.MainAccount(), "");
  EXPECT_EQ(journal_.DetailGLAccount(1), "");
  ASSERT_EQ(journal_.Update(), StatusSuccess);
  EXPECT_EQ(files_.Long(1, JrnlHdrRecord::MainAccountIndex), 6);
  Load(1);
  EXPECT_EQ(journal_.MainAccount(), "1200");
  EXPECT_EQ(journal_.DetailGLAccount(1), "1100");
}

// Only OpenFile takes note of a refusal.
TEST_F(AssemblyAdjustmentJournalAccounts, RefusedAtALookUpRaiseEachTime) {
  LoadWithoutAccounts(1);
  test::ProtectFile(Accounts(), /*allowRead=*/false);
  ExpectNotOpened(StatusInvalidOwner);
  ExpectNotOpened(StatusInvalidOwner);
}

TEST_F(AssemblyAdjustmentJournalAccounts, NeedToBeWritable) {
  test::WhereOnlyThisIsReadOnly(Accounts(), [&] {
    ASSERT_EQ(journal_.OpenFile(), StatusPermission);
    ASSERT_EQ(journal_.GetEqual(1), StatusSuccess);
    ExpectNotOpened(StatusPermission);
  });
}

// An object that is not open looks up accounts like any other.
TEST_F(AssemblyAdjustmentJournalAccounts, AreOpenedWithoutOpenFile) {
  Shared().gDataVersion = 19.0;
  journal_.MainAccount("1100");
  EXPECT_EQ(journal_.MainAccount(), "1100");
  EXPECT_TRUE(IsHeldOpen(Accounts()));
  EXPECT_EQ(journal_.CloseFile(), StatusSuccess);
  EXPECT_FALSE(IsHeldOpen(Accounts()));
}

TEST_F(AssemblyAdjustmentJournalAccounts, OfAHeaderAreInUseFromRelease12On) {
  LoadWithoutAccounts(1);
  // The release is that of the journal opened last, whichever it was.
  Shared().gDataVersion = 11.9;
  {
    const TakenAway away(Accounts());
    EXPECT_EQ(journal_.MainAccount(), "");
    journal_.MainAccount("9999");
    EXPECT_EQ(RaisedNumber([&] { return journal_.DetailGLAccount(1); }), ErrorOpen)
        << "those of rows are always in use";
  }
  Shared().gDataVersion = 12.0;
  EXPECT_EQ(journal_.MainAccount(), "1100");
}

TEST_F(AssemblyAdjustmentJournalAccounts, OfARowMoveToTheRow) {
  Load(1);
  EXPECT_EQ(journal_.DetailGLAccount(11), "");
  EXPECT_EQ(journal_.NDistributions(), 11);
  journal_.DetailGLAccount(12, "1100");
  EXPECT_EQ(journal_.NDistributions(), 12);
}

// --- The header ---

TEST_F(AssemblyAdjustmentJournalHeader, NamesFieldsInTheWordsOfAnAssembly) {
  Open();
  journal_.NRecord(1);
  journal_.AmountAdjusted(1.5);
  journal_.ItemIndex(7);
  ASSERT_EQ(journal_.Insert(), StatusSuccess);
  files_.OfHeader(1, [](Tovrin2Record& header) {
    EXPECT_EQ(header.GetDouble(JrnlHdrRecord::Amount), 1.5);
    EXPECT_EQ(header.GetLong(JrnlHdrRecord::IDNumber), 7);
  });
  EXPECT_EQ(journal_.AmountAdjusted(), 1.5);
  EXPECT_EQ(journal_.ItemIndex(), 7);
}

TEST_F(AssemblyAdjustmentJournalHeader, SuperRecordNumberIsAByteAndOverflowsOfMore) {
  constexpr std::int32_t Numbers[] = {0, 255, 256, -1};
  for (const std::int32_t number : Numbers) {
    files_.AddHeader({.nRecord = number + 10, .journal = Assembly}, [&](Tovrin2Record& header) {
      header.SetLong(JrnlHdrRecord::SuperRecordNumber, number);
    });
    files_.AddRows(number + 10, {10});
  }
  Load(10);
  EXPECT_EQ(journal_.SuperRecordNumber(), 0);
  ASSERT_EQ(journal_.GetEqual(265), StatusSuccess);
  EXPECT_EQ(journal_.SuperRecordNumber(), 255);
  constexpr std::int32_t Beyond[] = {266, 9};
  for (const std::int32_t nRecord : Beyond) {
    ASSERT_EQ(journal_.GetEqual(nRecord), StatusSuccess);
    EXPECT_EQ(RaisedNumber([&] { return journal_.SuperRecordNumber(); }), errors::Overflow);
  }
}

TEST_F(AssemblyAdjustmentJournalHeader, SuperRecordNumberAssignedReplacesTheWholeNumber) {
  files_.AddHeader({.nRecord = 1, .journal = Assembly}, [](Tovrin2Record& header) {
    header.SetLong(JrnlHdrRecord::SuperRecordNumber, -1);
  });
  files_.AddRows(1, {10});
  Load(1);
  journal_.SuperRecordNumber(255);
  EXPECT_EQ(journal_.SuperRecordNumber(), 255);
  ASSERT_EQ(journal_.Update(), StatusSuccess);
  EXPECT_EQ(files_.Long(1, JrnlHdrRecord::SuperRecordNumber), 255);
}

// --- The rows ---

TEST_F(AssemblyAdjustmentJournalRows, NameTheItemInTheWordsOfAnAssembly) {
  Open();
  journal_.NRecord(1);
  journal_.DetailComponentItemIndex(1, 7);
  ASSERT_EQ(journal_.Insert(), StatusSuccess);
  EXPECT_EQ(RowLongs(1, JrnlRowRecord::ItemIndex), std::vector<std::int32_t>{7});
}

TEST_F(AssemblyAdjustmentJournalRows, DetailTrxTypeIsAnIntegerAndOverflowsOfMore) {
  files_.AddHeader({.nRecord = 1, .journal = Assembly});
  constexpr std::int32_t Types[] = {32767, -32768, 32768, -32769};
  for (const std::int32_t type : Types) {
    files_.AddRow(1, [&](Tovrin2Record& row) { row.SetLong(JrnlRowRecord::TrxType, type); });
  }
  Load(1);
  EXPECT_EQ(journal_.DetailTrxType(1), 32767);
  EXPECT_EQ(journal_.DetailTrxType(2), -32768);
  EXPECT_EQ(RaisedNumber([&] { return journal_.DetailTrxType(3); }), errors::Overflow);
  EXPECT_EQ(RaisedNumber([&] { return journal_.DetailTrxType(4); }), errors::Overflow);
  journal_.DetailTrxType(3, -2);
  EXPECT_EQ(journal_.DetailTrxType(3), -2);
  ASSERT_EQ(journal_.Update(), StatusSuccess);
  EXPECT_EQ(RowLongs(1, JrnlRowRecord::TrxType),
            (std::vector<std::int32_t>{32767, -32768, -2, -32769}));
}

TEST_F(AssemblyAdjustmentJournalRows, DetailTrxTypeMovesToTheRow) {
  Open();
  journal_.DetailTrxType(3, 1);
  EXPECT_EQ(journal_.NDistributions(), 3);
  EXPECT_EQ(journal_.DetailTrxType(4), 0);
  EXPECT_EQ(journal_.NDistributions(), 4);
}

// --- ReasonForBuild ---

class AssemblyAdjustmentJournalReason : public AssemblyAdjustmentJournalTest {
 protected:
  /// Lays an assembly with a row for each of these lines, described as row 1, row 2 and so on, and
  /// loads it.
  void LoadLines(const std::vector<std::int16_t>& lines) {
    files_.AddHeader({.nRecord = 1, .journal = Assembly});
    int number = 0;
    for (const std::int16_t line : lines) {
      files_.AddRow(1, [&](Tovrin2Record& row) {
        row.SetInteger(JrnlRowRecord::LineNo, line);
        row.SetText(JrnlRowRecord::Description, "row " + std::to_string(++number));
      });
    }
    files_.AddRows(2, {99});  // so that an assembly without rows loads too
    Load(1);
  }

  /// Writes the assembly and gives the descriptions that its rows have on file.
  std::vector<std::string> Written() {
    EXPECT_EQ(journal_.Update(), StatusSuccess);
    return RowTexts(1, JrnlRowRecord::Description);
  }

  /// Expects that row to be in hand, as the message about a bad index tells it.
  void ExpectRowInHand(int number) {
    journal_.DetailAmount(0);
    ASSERT_FALSE(messages_.Texts().empty());
    EXPECT_EQ(messages_.Texts().back(),
              "Error in PositionOnDetail(0): NRowsDefined = 10, NDetail = " +
                  std::to_string(number) + ", j = 0\r\n9 : Subscript out of range");
  }

  using Texts = std::vector<std::string>;
};

TEST_F(AssemblyAdjustmentJournalReason, IsTheDescriptionOfTheFirstRowOnLine0) {
  LoadLines({1, 0, 0, 2});
  EXPECT_EQ(journal_.ReasonForBuild(), "row 2");
  journal_.ReasonForBuild("for the fair");
  EXPECT_EQ(journal_.ReasonForBuild(), "for the fair");
  EXPECT_EQ(journal_.DetailDescription(2), "for the fair");
  EXPECT_EQ(Written(), (Texts{"row 1", "for the fair", "row 3", "row 4"}));
}

TEST_F(AssemblyAdjustmentJournalReason, WithoutSuchARowIsEmptyAndAssignedIsLost) {
  LoadLines({1, 2, -1});
  EXPECT_EQ(journal_.ReasonForBuild(), "");
  EXPECT_NO_THROW(journal_.ReasonForBuild("for the fair"));
  EXPECT_EQ(journal_.ReasonForBuild(), "");
  EXPECT_EQ(messages_.Texts(), Messages{});
  EXPECT_EQ(Written(), (Texts{"row 1", "row 2", "row 3"}));
}

TEST_F(AssemblyAdjustmentJournalReason, WithoutRowsIsEmptyAndAssignedAddsNone) {
  LoadLines({});
  EXPECT_EQ(journal_.ReasonForBuild(), "");
  journal_.ReasonForBuild("for the fair");
  EXPECT_EQ(journal_.NDistributions(), 0);
  EXPECT_EQ(journal_.ReasonForBuild(), "");
  EXPECT_EQ(messages_.Texts(), Messages{});
  ExpectRowInHand(-1);
}

TEST_F(AssemblyAdjustmentJournalReason, MovesToTheRowWhereItStops) {
  LoadLines({1, 0, 2});
  journal_.ReasonForBuild();
  ExpectRowInHand(2);
  journal_.DetailAmount(1);
  journal_.ReasonForBuild("for the fair");
  ExpectRowInHand(2);
}

TEST_F(AssemblyAdjustmentJournalReason, MovesToTheLastRowWhereNoneIsOnLine0) {
  LoadLines({1, 2, 3});
  journal_.ReasonForBuild();
  ExpectRowInHand(3);
  journal_.DetailAmount(1);
  journal_.ReasonForBuild("for the fair");
  ExpectRowInHand(3);
}

TEST_F(AssemblyAdjustmentJournalReason, KeepsWhatWasAssignedToTheRowInHand) {
  LoadLines({1, 0, 2});
  journal_.DetailDescription(3, "third");
  EXPECT_EQ(journal_.ReasonForBuild(), "row 2");
  EXPECT_EQ(Written(), (Texts{"row 1", "row 2", "third"}));
}

TEST_F(AssemblyAdjustmentJournalReason, LooksAtTheRowsAsTheyAreInMemory) {
  LoadLines({1, 0});
  journal_.DetailLineNo(1, 0);
  EXPECT_EQ(journal_.ReasonForBuild(), "row 1");
  journal_.DetailLineNo(1, 1);
  EXPECT_EQ(journal_.ReasonForBuild(), "row 2");
}

// Places behind the last row are blank, on line 0, and belong to no transaction.
TEST_F(AssemblyAdjustmentJournalReason, IsNotLookedForBehindTheLastRow) {
  LoadLines({1, 2, 0});
  journal_.NDistributions(2);
  EXPECT_EQ(journal_.ReasonForBuild(), "");
  journal_.ReasonForBuild("for the fair");
  journal_.NDistributions(3);
  EXPECT_EQ(journal_.ReasonForBuild(), "row 3");
}

// A blank row is on line 0.
TEST_F(AssemblyAdjustmentJournalReason, OfANewAssemblyIsKeptInItsFirstRow) {
  Open();
  journal_.NRecord(1);
  journal_.NDistributions(2);
  journal_.ReasonForBuild("for the fair");
  EXPECT_EQ(journal_.DetailDescription(1), "for the fair");
  ASSERT_EQ(journal_.Insert(), StatusSuccess);
  EXPECT_EQ(RowTexts(1, JrnlRowRecord::Description), (Texts{"for the fair", ""}));
}

}  // namespace
}  // namespace larkmoor
