// The rows of a paycheck in memory. They lie in two lists, pay rows and labor rows, each with
// numbers, room and a row in hand of its own; but there is one row buffer for both, so that the row
// in hand of one list is soon taken for that of the other. How they are written and deleted is in
// payroll_rows_on_file_test.cpp.
#include <cstddef>
#include <cstdint>
#include <numeric>
#include <vector>

#include <gtest/gtest.h>

#include <larkmoor/journal_code.h>
#include <larkmoor/status.h>

#include "engine/records/jrnl_row.h"
#include "support/paychecks.h"

namespace larkmoor {
namespace {

using test::AddLabor;

/// The amounts 1 to `count`.
std::vector<double> UpTo(int count) {
  std::vector<double> amounts(static_cast<std::size_t>(count));
  std::iota(amounts.begin(), amounts.end(), 1.0);
  return amounts;
}

using PayrollRowsLoaded = test::PaycheckFixture;
using PayrollRowsPositioned = test::PaycheckFixture;
using PayrollRowsPutAway = test::PaycheckFixture;
using PayrollRowsMixed = test::PaycheckFixture;
using PayrollRowsGrowing = test::PaycheckFixture;
using PayrollRowsCounted = test::PaycheckFixture;
using PayrollRowsMessage = test::PaycheckFixture;

// --- Loading ---

TEST_F(PayrollRowsLoaded, AreTwoListsWhateverTheirOrderOnFile) {
  files_.AddHeader({.nRecord = Ours, .journal = tovJournalCodePayroll});
  AddLabor(files_, Ours, 10);
  files_.AddRows(Ours, {1, 2});
  AddLabor(files_, Ours, 20);
  files_.AddRows(Ours, {3});
  LoadOurs();
  EXPECT_EQ(journal_.NDistributions(), 3);
  EXPECT_EQ(journal_.NLaborDistributions(), 2);
  EXPECT_EQ(PayHeld(), (Amounts{1, 2, 3}));
  EXPECT_EQ(LaborHeld(), (Amounts{10, 20}));
}

// Whatever else a row bears, and be the job no job on file.
TEST_F(PayrollRowsLoaded, AreLaborRowsWhereTheyBearAJobAndPayRowsElse) {
  files_.AddHeader({.nRecord = Ours, .journal = tovJournalCodePayroll});
  AddLabor(files_, Ours, 10, /*job=*/-1);
  files_.AddRow(Ours, [](Tovrin2Record& row) {
    row.SetDouble(JrnlRowRecord::Amount, 1);
    row.SetLong(JrnlRowRecord::PhaseIndex, 3);
    row.SetLong(JrnlRowRecord::CostIndex, 4);
    row.SetLong(JrnlRowRecord::JournalRowEx, 5);
    row.SetInteger(JrnlRowRecord::LineNo, 6);
  });
  LoadOurs();
  EXPECT_EQ(PayHeld(), Amounts{1});
  EXPECT_EQ(LaborHeld(), Amounts{10});
  EXPECT_EQ(journal_.JobJobIndex(1), -1);
}

TEST_F(PayrollRowsLoaded, OfOneKindAloneAnswer0ThoughTheFileEnded) {
  LoadAlone({}, {10, 20});
  EXPECT_EQ(journal_.NDistributions(), 0);
  EXPECT_EQ(LaborHeld(), (Amounts{10, 20}));
  files_.AddTransaction({.nRecord = Theirs, .journal = tovJournalCodePayroll}, {1});
  ASSERT_EQ(journal_.GetEqual(Theirs), StatusSuccess);
  EXPECT_EQ(PayHeld(), Amounts{1});
  EXPECT_EQ(journal_.NLaborDistributions(), 0);
}

TEST_F(PayrollRowsLoaded, OfAHeaderWithoutRowsAnswerTheReadThatFoundTheNextPaycheck) {
  Load({}, {});
  EXPECT_EQ(journal_.NDistributions(), 0);
  EXPECT_EQ(journal_.NLaborDistributions(), 0);
}

// The header was found and is in hand, but the answer is that of the rows.
TEST_F(PayrollRowsLoaded, OfAHeaderWithoutRowsAtTheEndOfTheFileAnswer9) {
  Lay({}, {});
  Open();
  EXPECT_EQ(journal_.GetEqual(Ours), StatusEndOfFile);
  EXPECT_EQ(journal_.NRecord(), Ours);
  ASSERT_EQ(journal_.ClearRecord(), StatusSuccess);
  EXPECT_EQ(journal_.ReadFirst(0), StatusEndOfFile);
  EXPECT_EQ(journal_.NRecord(), Ours);
}

TEST_F(PayrollRowsLoaded, MayBeMoreThanAHundredOfEachKind) {
  Load(UpTo(137), UpTo(112));
  EXPECT_EQ(PayHeld(), UpTo(137));
  EXPECT_EQ(LaborHeld(), UpTo(112));
}

TEST_F(PayrollRowsLoaded, ReplaceWhatWasInHand) {
  Load(UpTo(12), {10, 20});
  journal_.PayAmount(2, 99);
  ASSERT_EQ(journal_.GetEqual(Theirs), StatusSuccess);
  EXPECT_EQ(PayHeld(), (Amounts{TheirAmount, 78}));
  EXPECT_EQ(journal_.NLaborDistributions(), 0);
  EXPECT_EQ(journal_.PayAmount(3), 0) << "nothing is left of the longer paycheck";
  EXPECT_EQ(journal_.JobAmount(1), 0);
  ASSERT_EQ(journal_.GetEqual(Ours), StatusSuccess);
  EXPECT_EQ(PayHeld(), UpTo(12)) << "what was not written is gone";
}

// --- The row in hand of one list ---

TEST_F(PayrollRowsPositioned, KeepWhatWasAssignedToThem) {
  Load({1, 2, 3}, {});
  journal_.PayAmount(1, 5);
  journal_.PayDescription(1, "first");
  journal_.PayAmount(2, 6);
  EXPECT_EQ(PayHeld(), (Amounts{5, 6, 3}));
  EXPECT_EQ(journal_.PayDescription(1), "first");
  EXPECT_EQ(journal_.PayDescription(2), "");
  ASSERT_EQ(journal_.Update(), StatusSuccess);
  EXPECT_EQ(PayOnFile(), (Amounts{5, 6, 3}));
}

TEST_F(PayrollRowsPositioned, AreWrittenWithTheRowInHand) {
  Load({1, 2}, {});
  journal_.PayAmount(1, 5);
  journal_.PayAmount(2, 6);
  ASSERT_EQ(journal_.Update(), StatusSuccess);
  EXPECT_EQ(PayOnFile(), (Amounts{5, 6}));
}

TEST_F(PayrollRowsPositioned, OfLaborDoSoToo) {
  Load({}, {10, 20, 30});
  journal_.JobAmount(1, 15);
  journal_.JobHours(1, 8);
  journal_.JobAmount(2, 25);
  EXPECT_EQ(LaborHeld(), (Amounts{15, 25, 30}));
  EXPECT_EQ(journal_.JobHours(1), 8);
  journal_.JobAmount(3, 35);
  ASSERT_EQ(journal_.Update(), StatusSuccess);
  EXPECT_EQ(LaborOnFile(), (Amounts{15, 25, 35}));
}

// After loading no row of the paycheck is in hand, and -1 stands for that in both lists. What the
// last read met is still in the row buffer.
TEST_F(PayrollRowsPositioned, AtIndexMinus1AfterLoadingAreTheRowBehindThePaycheck) {
  Load({1, 2}, {10});
  EXPECT_EQ(journal_.PayAmount(-1), TheirAmount);
  EXPECT_EQ(journal_.JobAmount(-1), TheirAmount);
  EXPECT_EQ(messages_.Texts(), Messages{});
}

// What is written there belongs to no row.
TEST_F(PayrollRowsPositioned, AtIndexMinus1AfterLoadingAreNotSaved) {
  LoadAlone({1, 2}, {10});
  journal_.JobAmount(-1, 99);
  EXPECT_EQ(journal_.PayAmount(-1), 99);
  ASSERT_EQ(journal_.Update(), StatusSuccess);
  EXPECT_EQ(PayOnFile(), (Amounts{1, 2}));
  EXPECT_EQ(LaborOnFile(), Amounts{10});
}

// After a write 0 stands for no row in hand, and the row written last is in the row buffer.
TEST_F(PayrollRowsPositioned, AtIndex0AfterAWriteAreTheRowWrittenLast) {
  Load({1, 2}, {10, 20});
  journal_.PayAmount(1, 5);
  ASSERT_EQ(journal_.Update(), StatusSuccess);
  EXPECT_EQ(journal_.PayAmount(0), 20);
  EXPECT_EQ(journal_.JobAmount(0), 20);
  journal_.JobAmount(0, 99);
  EXPECT_EQ(PayHeld(), (Amounts{5, 2}));
  EXPECT_EQ(LaborHeld(), (Amounts{10, 20}));
  EXPECT_EQ(messages_.Texts(), Messages{});
}

TEST_F(PayrollRowsPositioned, AtIndex0AfterAWriteOfNoRowsAreWhatTheDeletionReadLast) {
  Load({1, 2}, {10});
  journal_.NDistributions(0);
  journal_.NLaborDistributions(0);
  ASSERT_EQ(journal_.Update(), StatusSuccess);
  EXPECT_EQ(journal_.PayAmount(0), TheirAmount);
}

TEST_F(PayrollRowsPositioned, AtIndex0AfterOpenFileAreBlankWithoutAMessage) {
  Open();
  EXPECT_EQ(journal_.PayAmount(0), 0);
  EXPECT_EQ(journal_.JobAmount(0), 0);
  EXPECT_EQ(messages_.Texts(), Messages{});
}

// --- A pay row put away ---

// An index below 1 of the pay list saves the row in hand and takes none: the way to leave the pay
// rows before the labor rows are touched.
TEST_F(PayrollRowsPutAway, ByIndex0AreSaved) {
  Load({1, 2, 3}, {10, 20});
  journal_.PayAmount(2, 25);
  EXPECT_EQ(journal_.PayAmount(0), 25) << "the row buffer still shows it";
  journal_.JobAmount(1, 15);
  EXPECT_EQ(journal_.PayAmount(2), 25);
  EXPECT_EQ(messages_.Texts(), Messages{});
}

TEST_F(PayrollRowsPutAway, ByIndex0LeaveTheLaborRowInHandToItself) {
  Load({1, 2, 3}, {10, 20});
  journal_.PayAmount(2, 25);
  journal_.PayAmount(0);
  journal_.JobAmount(2, 15);
  ASSERT_EQ(journal_.Update(), StatusSuccess);
  EXPECT_EQ(PayOnFile(), (Amounts{1, 25, 3}));
  EXPECT_EQ(LaborOnFile(), (Amounts{10, 15}));
}

TEST_F(PayrollRowsPutAway, ByAnyIndexBelow1AreSaved) {
  Load({1, 2, 3}, {10});
  journal_.PayAmount(2, 25);
  EXPECT_EQ(journal_.PayAmount(-5), 25);
  EXPECT_EQ(journal_.PayAmount(-6), 25);
  EXPECT_EQ(PayHeld(), (Amounts{1, 25, 3}));
  EXPECT_EQ(messages_.Texts(), Messages{});
}

TEST_F(PayrollRowsPutAway, AreOutOfReachOfWhatIsAssignedNext) {
  Load({1, 2, 3}, {});
  journal_.PayAmount(2, 25);
  journal_.PayAmount(0, 99);
  EXPECT_EQ(journal_.PayAmount(0), 99);
  EXPECT_EQ(journal_.PayAmount(2), 25);
  journal_.PayAmount(-1, 98);
  ASSERT_EQ(journal_.Update(), StatusSuccess);
  EXPECT_EQ(PayOnFile(), (Amounts{1, 25, 3}));
}

// Where none was in hand, the index alone is taken over and the row buffer is as it was.
TEST_F(PayrollRowsPutAway, AfterLoadingAreTheRowBehindThePaycheck) {
  Load({1, 2}, {10});
  EXPECT_EQ(journal_.PayAmount(0), TheirAmount);
  EXPECT_EQ(journal_.PayAmount(-7), TheirAmount);
  EXPECT_EQ(PayHeld(), (Amounts{1, 2}));
  EXPECT_EQ(messages_.Texts(), Messages{});
}

// --- One row buffer for both lists ---

// A labor row takes the place of the pay row in hand, what was assigned to that is lost, and from
// then on the labor row goes by the pay row's number too.
TEST_F(PayrollRowsMixed, PayRowInHandGivesWayToALaborRow) {
  Load({1, 2, 3}, {10, 20});
  journal_.PayAmount(2, 25);
  EXPECT_EQ(journal_.JobAmount(1), 10);
  EXPECT_EQ(journal_.PayAmount(2), 10);
  journal_.PayAmount(2, 15);
  EXPECT_EQ(journal_.JobAmount(1), 15);
  EXPECT_EQ(messages_.Texts(), Messages{});
}

TEST_F(PayrollRowsMixed, PayRowInHandIsSavedAsTheLaborRowThatTookItsPlace) {
  Load({1, 2, 3}, {10, 20});
  journal_.PayAmount(2, 25);
  journal_.JobAmount(1, 15);
  journal_.PayAmount(3);
  EXPECT_EQ(journal_.PayAmount(2), 15);
}

TEST_F(PayrollRowsMixed, BothRowsInHandAreWrittenAsTheOneInTheBuffer) {
  Load({1, 2, 3}, {10, 20});
  journal_.PayAmount(2, 25);
  journal_.JobAmount(1, 15);
  ASSERT_EQ(journal_.Update(), StatusSuccess);
  EXPECT_EQ(AllOnFile(), (Amounts{1, 15, 3, 15, 20}));
  EXPECT_EQ(LaborOnFile(), (Amounts{15, 15, 20})) << "what was a pay row bears a job now";
  ASSERT_EQ(journal_.GetEqual(Ours), StatusSuccess);
  EXPECT_EQ(journal_.NDistributions(), 2);
  EXPECT_EQ(journal_.NLaborDistributions(), 3);
}

TEST_F(PayrollRowsMixed, LaborRowInHandGivesWayToAPayRow) {
  Load({1, 2, 3}, {10, 20});
  journal_.JobAmount(2, 25);
  EXPECT_EQ(journal_.PayAmount(1), 1);
  EXPECT_EQ(journal_.JobAmount(2), 1);
  EXPECT_EQ(journal_.JobAmount(1), 10);
  EXPECT_EQ(journal_.JobAmount(2), 1);
  ASSERT_EQ(journal_.Update(), StatusSuccess);
  EXPECT_EQ(AllOnFile(), (Amounts{1, 2, 3, 10, 1}));
  EXPECT_EQ(LaborOnFile(), Amounts{10}) << "what was a labor row bears no job";
}

// --- Growing ---

TEST_F(PayrollRowsGrowing, OfANewPaycheckAreAddedOneByOne) {
  Open();
  journal_.NRecord(Ours);
  journal_.PayAmount(1, 1);
  EXPECT_EQ(journal_.NDistributions(), 1);
  journal_.PayAmount(2, 2);
  EXPECT_EQ(journal_.NDistributions(), 2);
  journal_.PayAmount(0);  // puts the pay row away
  EXPECT_EQ(journal_.NLaborDistributions(), 0);
  journal_.JobAmount(1, 10);
  journal_.JobJobIndex(1, 7);
  EXPECT_EQ(journal_.NLaborDistributions(), 1);
  journal_.JobAmount(2, 20);
  journal_.JobJobIndex(2, 7);
  ASSERT_EQ(journal_.Insert(), StatusSuccess);
  EXPECT_EQ(PayOnFile(), (Amounts{1, 2}));
  EXPECT_EQ(LaborOnFile(), (Amounts{10, 20}));
}

TEST_F(PayrollRowsGrowing, InTheLaborListWithoutAJobAreReadBackAsPayRows) {
  Load({1}, {10});
  journal_.JobAmount(11, 20);
  EXPECT_EQ(journal_.NLaborDistributions(), 11);
  ASSERT_EQ(journal_.Update(), StatusSuccess);
  ASSERT_EQ(journal_.GetEqual(Ours), StatusSuccess);
  EXPECT_EQ(journal_.NLaborDistributions(), 1);
  EXPECT_EQ(PayHeld(), (Amounts{1, 0, 0, 0, 0, 0, 0, 0, 0, 0, 20}));
}

TEST_F(PayrollRowsGrowing, HaveRoomByTensInEachListForItself) {
  Load(UpTo(11), {10, 20});
  EXPECT_EQ(journal_.PayAmount(20), 0);
  EXPECT_EQ(journal_.NDistributions(), 11) << "the last index with room adds no row";
  EXPECT_EQ(journal_.JobAmount(10), 0);
  EXPECT_EQ(journal_.NLaborDistributions(), 2);
  EXPECT_EQ(journal_.JobAmount(11), 0);
  EXPECT_EQ(journal_.NLaborDistributions(), 11) << "the first one without room does";
  EXPECT_EQ(journal_.NDistributions(), 11);
  EXPECT_EQ(journal_.PayAmount(21), 0);
  EXPECT_EQ(journal_.NDistributions(), 21);
  EXPECT_EQ(journal_.NLaborDistributions(), 11);
}

TEST_F(PayrollRowsGrowing, DoNotCountBehindTheLastWhereThereIsRoom) {
  Load({1, 2}, {10});
  journal_.PayAmount(5, 50);
  EXPECT_EQ(journal_.PayAmount(1), 1);
  EXPECT_EQ(journal_.PayAmount(5), 50);
  ASSERT_EQ(journal_.Update(), StatusSuccess);
  EXPECT_EQ(PayOnFile(), (Amounts{1, 2}));
  EXPECT_EQ(LaborOnFile(), Amounts{10});
}

TEST_F(PayrollRowsGrowing, ByALaterIndexCountAllBetweenAsBlank) {
  Open();
  journal_.PayAmount(4, 40);
  EXPECT_EQ(PayHeld(), (Amounts{0, 0, 0, 40}));
  journal_.JobAmount(3, 30);
  EXPECT_EQ(LaborHeld(), (Amounts{0, 0, 30}));
}

TEST_F(PayrollRowsGrowing, SaveTheRowInHandFirst) {
  Load({1, 2}, {10, 20});
  journal_.JobAmount(2, 25);
  journal_.JobAmount(30, 300);
  EXPECT_EQ(journal_.JobAmount(2), 25);
  EXPECT_EQ(journal_.JobAmount(30), 300);
}

// --- NDistributions and NLaborDistributions ---

TEST_F(PayrollRowsCounted, CutEachListShort) {
  Load({1, 2, 3}, {10, 20, 30});
  journal_.NDistributions(2);
  journal_.NLaborDistributions(1);
  ASSERT_EQ(journal_.Update(), StatusSuccess);
  EXPECT_EQ(PayOnFile(), (Amounts{1, 2}));
  EXPECT_EQ(LaborOnFile(), Amounts{10});
}

TEST_F(PayrollRowsCounted, CutShortComeBackWhenCountedAgain) {
  Load({1, 2, 3}, {10, 20, 30});
  journal_.NDistributions(1);
  journal_.NLaborDistributions(0);
  journal_.NDistributions(3);
  journal_.NLaborDistributions(2);
  EXPECT_EQ(PayHeld(), (Amounts{1, 2, 3}));
  EXPECT_EQ(LaborHeld(), (Amounts{10, 20}));
}

TEST_F(PayrollRowsCounted, BeyondTheRoomAreWrittenAsBlanks) {
  Load({1}, {10});
  journal_.NDistributions(12);
  journal_.NLaborDistributions(11);
  ASSERT_EQ(journal_.Update(), StatusSuccess);
  Amounts pay(12 + 10);  // the blank labor rows bear no job
  pay[0] = 1;
  EXPECT_EQ(PayOnFile(), pay);
  EXPECT_EQ(LaborOnFile(), Amounts{10});
}

// Unlike in the other journals the number makes no room that lasts: the first row that is reached
// beyond the old room makes the list end there.
TEST_F(PayrollRowsCounted, BeyondTheRoomEndAtTheRowThatIsReached) {
  Load({1, 2, 3}, {10});
  journal_.NDistributions(20);
  EXPECT_EQ(journal_.NDistributions(), 20);
  journal_.PayAmount(10, 5);
  EXPECT_EQ(journal_.NDistributions(), 20) << "there was room for ten";
  journal_.PayAmount(15, 1);
  EXPECT_EQ(journal_.NDistributions(), 15);
  ASSERT_EQ(journal_.Update(), StatusSuccess);
  EXPECT_EQ(PayOnFile(), (Amounts{1, 2, 3, 0, 0, 0, 0, 0, 0, 5, 0, 0, 0, 0, 1}));
}

TEST_F(PayrollRowsCounted, OfLaborBeyondTheRoomEndAtTheRowThatIsReachedToo) {
  Load({1}, {10, 20});
  journal_.NLaborDistributions(20);
  EXPECT_EQ(journal_.NLaborDistributions(), 20);
  journal_.JobAmount(15);
  EXPECT_EQ(journal_.NLaborDistributions(), 15);
  EXPECT_EQ(journal_.NDistributions(), 1);
}

TEST_F(PayrollRowsCounted, OfANewPaycheckAreForgottenAtTheFirstRowThatIsReached) {
  Open();
  journal_.NRecord(Ours);
  journal_.NDistributions(3);
  EXPECT_EQ(journal_.NDistributions(), 3);
  journal_.PayAmount(1, 5);
  EXPECT_EQ(journal_.NDistributions(), 1);
  ASSERT_EQ(journal_.Insert(), StatusSuccess);
  EXPECT_EQ(PayOnFile(), Amounts{5});
}

TEST_F(PayrollRowsCounted, BelowZeroWriteNone) {
  Load({1, 2}, {10});
  journal_.NDistributions(-3);
  journal_.NLaborDistributions(-4);
  EXPECT_EQ(journal_.NDistributions(), -3);
  EXPECT_EQ(journal_.NLaborDistributions(), -4);
  ASSERT_EQ(journal_.Update(), StatusSuccess);
  EXPECT_EQ(AllOnFile(), Amounts{});
}

TEST_F(PayrollRowsCounted, DoNotTouchTheRowInHand) {
  Load({1, 2, 3}, {});
  journal_.PayAmount(2, 20);
  journal_.NDistributions(25);
  EXPECT_EQ(journal_.PayAmount(2), 20);
  journal_.NDistributions(2);
  ASSERT_EQ(journal_.Update(), StatusSuccess);
  EXPECT_EQ(PayOnFile(), (Amounts{1, 20}));
}

// --- The message box ---

TEST_F(PayrollRowsMessage, TellsOfALaborIndexBelow1AndReadsTheRowThatIsThere) {
  Load({1, 2}, {10});
  EXPECT_EQ(journal_.JobAmount(0), TheirAmount);
  EXPECT_EQ(messages_.Texts(), Messages{"Error in PositionOnDetailJob(0): NRowsDefinedJob = 10, "
                                        "NDetailJob = -1, j = 0\r\n"
                                        "9 : Subscript out of range"});
}

TEST_F(PayrollRowsMessage, NamesTheLaborRowInHandAndTheRoom) {
  Load({1}, UpTo(11));
  journal_.JobAmount(3);
  journal_.JobAmount(-7);
  EXPECT_EQ(messages_.Texts(), Messages{"Error in PositionOnDetailJob(-7): NRowsDefinedJob = 20, "
                                        "NDetailJob = 3, j = 0\r\n"
                                        "9 : Subscript out of range"});
}

TEST_F(PayrollRowsMessage, OfAJournalWithoutAPaycheckNamesNoRow) {
  Open();
  journal_.JobAmount(-1);
  EXPECT_EQ(messages_.Texts(), Messages{"Error in PositionOnDetailJob(-1): NRowsDefinedJob = 0, "
                                        "NDetailJob = 0, j = 0\r\n"
                                        "9 : Subscript out of range"});
}

TEST_F(PayrollRowsMessage, ComesWithEveryAccess) {
  Load({1}, {10});
  journal_.JobAmount(0);
  journal_.JobAmount(0, 99);
  journal_.JobEmployeeID(0);
  EXPECT_EQ(messages_.Texts().size(), 3U);
}

TEST_F(PayrollRowsMessage, LeavesTheLaborRowInHandWhereItWas) {
  Load({1}, {10, 20});
  journal_.JobAmount(2, 25);
  EXPECT_EQ(journal_.JobAmount(0), 25);
  journal_.JobAmount(0, 26);
  EXPECT_EQ(journal_.JobAmount(2), 26) << "the row in hand took what was meant for index 0";
  ASSERT_EQ(journal_.Update(), StatusSuccess);
  EXPECT_EQ(LaborOnFile(), (Amounts{10, 26}));
  EXPECT_EQ(PayOnFile(), Amounts{1});
}

TEST_F(PayrollRowsMessage, LeavesAPayRowInHandToWhatIsAssigned) {
  Load({1, 2}, {10});
  journal_.PayAmount(2);
  journal_.JobAmount(0, 25);
  EXPECT_EQ(journal_.PayAmount(2), 25);
  ASSERT_EQ(journal_.Update(), StatusSuccess);
  EXPECT_EQ(PayOnFile(), (Amounts{1, 25}));
  EXPECT_EQ(LaborOnFile(), Amounts{10});
}

}  // namespace
}  // namespace larkmoor
