// The class JrnlRow: the rows of all transactions as one table, walked by transaction, account or
// job. The accounts, cost codes, phases and employees that it shows by ID are told in
// jrnl_row_id_test.cpp.
#include "engine/records/jrnl_row.h"

#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include <larkmoor/date.h>
#include <larkmoor/journals/jrnl_row.h>
#include <larkmoor/status.h>
#include <larkmoor/variant.h>

#include "support/accounts.h"
#include "support/company.h"
#include "support/masters.h"
#include "support/record_files.h"
#include "support/taken_away.h"

namespace larkmoor {
namespace {

using test::Company;
using test::IsHeldOpen;
using test::OpenRecordFile;
using test::TakenAway;

/// A row as the finders see it; its amount tells it from the others.
struct Row {
  double amount = 0;
  std::int32_t transaction = 0;
  std::int32_t account = 0;
  std::int32_t job = 0;
  std::int32_t phase = 0;
  std::int32_t cost = 0;
  double date = 0;
};

class JrnlRowTest : public testing::Test {
 protected:
  explicit JrnlRowTest(double release = 19.0) : company_(release) {}

  std::filesystem::path File(std::string_view name) const { return company_.Folder() / name; }
  std::filesystem::path RowFile() const { return File("JrnlRow.dat"); }

  void AddRow(const Row& row) {
    OpenRecordFile rows(RowFile(), JrnlRowRecord::Describe());
    rows.Add([&](Tovrin2Record& record) {
      record.SetDouble(JrnlRowRecord::Amount, row.amount);
      record.SetLong(JrnlRowRecord::NRecord, row.transaction);
      record.SetLong(JrnlRowRecord::AccountIndex, row.account);
      record.SetLong(JrnlRowRecord::JobIndex, row.job);
      record.SetLong(JrnlRowRecord::PhaseIndex, row.phase);
      record.SetLong(JrnlRowRecord::CostIndex, row.cost);
      record.SetDate(JrnlRowRecord::TrxDate, row.date);
    });
  }

  Company company_;
};

class OpenJrnlRowTest : public JrnlRowTest {
 protected:
  explicit OpenJrnlRowTest(double release = 19.0) : JrnlRowTest(release) {
    EXPECT_EQ(row_.OpenFile(), StatusSuccess);
  }

  JrnlRow row_;
};

using JrnlRowLifecycle = JrnlRowTest;
using JrnlRowInHand = OpenJrnlRowTest;
using JrnlRowNames = JrnlRowTest;
using JrnlRowWrites = OpenJrnlRowTest;

// --- Opening and closing ---

TEST_F(JrnlRowLifecycle, CloseFileOnANewObjectAnswers0) {
  JrnlRow row;
  EXPECT_EQ(row.CloseFile(), StatusSuccess);
}

TEST_F(JrnlRowLifecycle, OpenFileOpensTheRowsAlone) {
  JrnlRow row;
  ASSERT_EQ(row.OpenFile(), StatusSuccess);
  EXPECT_TRUE(IsHeldOpen(RowFile()));
  for (const char* other : {"JrnlHdr.dat", "Chart.dat", "Cost.dat", "Phase.dat", "Employee.dat"}) {
    EXPECT_FALSE(IsHeldOpen(File(other))) << other;
  }
  EXPECT_EQ(row.CloseFile(), StatusSuccess);
  EXPECT_FALSE(IsHeldOpen(RowFile()));
  EXPECT_EQ(row.CloseFile(), StatusSuccess);
}

TEST_F(JrnlRowLifecycle, OpenFileBlanksTheRecord) {
  JrnlRow row;
  ASSERT_EQ(row.OpenFile(), StatusSuccess);
  row.NRecord(7);
  ASSERT_EQ(row.OpenFile(), StatusSuccess);
  EXPECT_EQ(row.NRecord(), 0);
}

TEST_F(JrnlRowLifecycle, OpenFileAnswers12WithoutTheFileAndCanBeTriedAgain) {
  JrnlRow row;
  {
    const TakenAway away(RowFile());
    EXPECT_EQ(row.OpenFile(), StatusFileNotFound);
    EXPECT_EQ(row.CloseFile(), StatusSuccess);
    EXPECT_EQ(row.StepFirst(), StatusFileNotOpen);
  }
  EXPECT_EQ(row.OpenFile(), StatusSuccess);
}

TEST_F(JrnlRowLifecycle, OpenFileTellsWhatProtectsTheFile) {
  test::ProtectFile(RowFile(), /*allowRead=*/false);
  JrnlRow row;
  EXPECT_EQ(row.OpenFile(), StatusInvalidOwner);
}

TEST_F(JrnlRowLifecycle, OpenFileNeedsAFileThatCanBeWritten) {
  test::WhereReadOnly(RowFile(), [] {
    JrnlRow row;
    EXPECT_EQ(row.OpenFile(), StatusPermission);
  });
}

// A search by transaction that finds nothing of it answers 9, also where nothing can be found.
TEST_F(JrnlRowLifecycle, OperationsBeforeOpenFileAnswer3) {
  JrnlRow row;
  EXPECT_EQ(row.GetFirst(0), StatusFileNotOpen);
  EXPECT_EQ(row.GetFirst(7), StatusEndOfFile);
  EXPECT_EQ(row.GetNext(), StatusFileNotOpen);
  EXPECT_EQ(row.GetFirstForAccount(7), StatusFileNotOpen);
  EXPECT_EQ(row.GetNextByAccount(), StatusFileNotOpen);
  EXPECT_EQ(row.GetFirstForJob(7, "", "", Null), StatusFileNotOpen);
  EXPECT_EQ(row.GetNextByJob(), StatusFileNotOpen);
  EXPECT_EQ(row.StepFirst(), StatusFileNotOpen);
  EXPECT_EQ(row.StepLast(), StatusFileNotOpen);
  EXPECT_EQ(row.StepNext(), StatusFileNotOpen);
  EXPECT_EQ(row.StepPrevious(), StatusFileNotOpen);
  EXPECT_EQ(row.Insert(), StatusFileNotOpen);
  EXPECT_EQ(row.Update(), StatusFileNotOpen);
  EXPECT_EQ(row.Delete(), StatusFileNotOpen);
  EXPECT_EQ(row.RecordCount(), 0);
  EXPECT_EQ(row.ClearRecord(), StatusSuccess);
  EXPECT_EQ(row.ReadBytes(), StatusSuccess);
}

/// An object with all its look-up files open.
class JrnlRowLookUpFiles : public OpenJrnlRowTest {
 protected:
  JrnlRowLookUpFiles() {
    test::AddAccount(company_.Folder(), {"1000", 12});
    test::AddCost(company_.Folder(), {"LABOR", 12});
    test::AddPhase(company_.Folder(), {"ROOF", 12});
    test::AddEmployee(company_.Folder(), {"MILLER", 12});
    UseAll();
    EXPECT_EQ(HeldLookUpFiles(), LookUpFiles);
  }

  void UseAll() {
    row_.AccountID("1000");
    row_.CostID("LABOR");
    row_.PhaseID("ROOF");
    row_.EmployeeID("MILLER");
  }

  std::vector<std::string> HeldLookUpFiles() {
    std::vector<std::string> held;
    for (const std::string& name : LookUpFiles) {
      if (IsHeldOpen(File(name))) held.push_back(name);
    }
    return held;
  }

  const std::vector<std::string> LookUpFiles{"Chart.dat", "Cost.dat", "Phase.dat", "Employee.dat"};
  const std::vector<std::string> None;
};

TEST_F(JrnlRowLookUpFiles, AreClosedByCloseFile) {
  EXPECT_EQ(row_.CloseFile(), StatusSuccess);
  EXPECT_FALSE(IsHeldOpen(RowFile()));
  EXPECT_EQ(HeldLookUpFiles(), None);
  EXPECT_EQ(row_.CloseFile(), StatusSuccess);
}

TEST_F(JrnlRowLookUpFiles, AreClosedByDestruction) {
  { const JrnlRow gone = std::move(row_); }
  EXPECT_FALSE(IsHeldOpen(RowFile()));
  EXPECT_EQ(HeldLookUpFiles(), None);
}

// OpenFile forgets them without closing them: nothing but the object's end gives them up.
TEST_F(JrnlRowLookUpFiles, OutliveCloseFileWhereOpenFileWasCalledAgain) {
  ASSERT_EQ(row_.OpenFile(), StatusSuccess);
  EXPECT_EQ(row_.CloseFile(), StatusSuccess);
  EXPECT_EQ(HeldLookUpFiles(), LookUpFiles);
  { const JrnlRow gone = std::move(row_); }
  EXPECT_EQ(HeldLookUpFiles(), None);
}

TEST_F(JrnlRowLookUpFiles, AreOpenedAnewWhenNeededAfterASecondOpenFile) {
  ASSERT_EQ(row_.OpenFile(), StatusSuccess);
  UseAll();
  EXPECT_EQ(row_.CloseFile(), StatusSuccess);
  EXPECT_EQ(HeldLookUpFiles(), None);
}

// The object still takes its rows for open, and closes a file that is not; the close of the others,
// which succeeds, does not count.
TEST_F(JrnlRowLookUpFiles, AreClosedAfterASecondOpenFileThatFailedWhileTheRowsAnswer3) {
  {
    const TakenAway away(RowFile());
    ASSERT_EQ(row_.OpenFile(), StatusFileNotFound);
  }
  EXPECT_EQ(HeldLookUpFiles(), LookUpFiles);
  EXPECT_EQ(row_.CloseFile(), StatusFileNotOpen);
  EXPECT_EQ(HeldLookUpFiles(), None);
}

// --- The record in hand ---

TEST_F(JrnlRowInHand, ClearRecordBlanksIt) {
  AddRow({.amount = 9.5, .transaction = 7});
  ASSERT_EQ(row_.GetFirst(7), StatusSuccess);
  EXPECT_EQ(row_.ClearRecord(), StatusSuccess);
  EXPECT_EQ(row_.NRecord(), 0);
  EXPECT_EQ(row_.Amount(), 0);
  EXPECT_TRUE(row_.TrxDate().IsNull());
}

TEST_F(JrnlRowInHand, ReadBytesLeavesItAsItIs) {
  row_.NRecord(7);
  EXPECT_EQ(row_.ReadBytes(), StatusSuccess);
  EXPECT_EQ(row_.NRecord(), 7);
}

TEST_F(JrnlRowInHand, BytesAreThe514ThatWereRead) {
  AddRow({.amount = 9.5, .transaction = 7});
  EXPECT_EQ(row_.ActualLength(), 0) << "nothing was read yet";
  ASSERT_EQ(row_.GetFirst(7), StatusSuccess);
  EXPECT_EQ(row_.ActualLength(), 514);
  OpenRecordFile rows(RowFile(), JrnlRowRecord::Describe());
  ASSERT_EQ(rows.File().btStepFirst(), StatusSuccess);
  for (std::int32_t i = 0; i < 514; ++i) {
    ASSERT_EQ(row_.RecordByte(i), rows.File().RecordByte(i)) << i;
  }
  EXPECT_EQ(row_.RecordByte(-1), 0);
  EXPECT_EQ(row_.RecordByte(514), 0);
}

// --- Two names of one field ---

TEST_F(JrnlRowNames, SecondMarkIsFlag2AndReimbursableExpense) {
  JrnlRow row;
  row.Flag2(true);
  EXPECT_TRUE(row.ReimbursableExpense());
  row.ReimbursableExpense(false);
  EXPECT_FALSE(row.Flag2());
  row.Flag1(true);
  EXPECT_FALSE(row.Flag2()) << "the first mark is another";
}

TEST_F(JrnlRowNames, LinkIsLinkToOtherTrxIndexAndUnusedInteger2) {
  JrnlRow row;
  row.LinkToOtherTrxIndex(7);
  EXPECT_EQ(row.UnusedInteger2(), 7);
  row.UnusedInteger2(8);
  EXPECT_EQ(row.LinkToOtherTrxIndex(), 8);
}

TEST_F(JrnlRowNames, JournalTakes32Bits) {
  JrnlRow row;
  row.JournalID(70000);
  EXPECT_EQ(row.JournalID(), 70000);
}

// --- Finders, in data of all releases ---

class JrnlRowFinders : public OpenJrnlRowTest, public testing::WithParamInterface<double> {
 protected:
  JrnlRowFinders() : OpenJrnlRowTest(GetParam()) {}
};

TEST_P(JrnlRowFinders, GetFirstReadsTheFirstRowOfTheTransaction) {
  AddRow({.amount = 1, .transaction = 8});
  AddRow({.amount = 2, .transaction = 7});
  AddRow({.amount = 3, .transaction = 7});
  ASSERT_EQ(row_.GetFirst(7), StatusSuccess);
  EXPECT_EQ(row_.Amount(), 2);
  ASSERT_EQ(row_.GetNext(), StatusSuccess);
  EXPECT_EQ(row_.Amount(), 3);
}

TEST_P(JrnlRowFinders, GetNextRunsOnIntoTheNextTransaction) {
  AddRow({.amount = 1, .transaction = 8});
  AddRow({.amount = 2, .transaction = 7});
  ASSERT_EQ(row_.GetFirst(7), StatusSuccess);
  ASSERT_EQ(row_.GetNext(), StatusSuccess);
  EXPECT_EQ(row_.NRecord(), 8);
  EXPECT_EQ(row_.GetNext(), StatusEndOfFile);
}

// The engine finds the next transaction's row, which stays in hand; the answer is 9 all the same.
TEST_P(JrnlRowFinders, GetFirstOfATransactionWithoutRowsAnswers9) {
  AddRow({.amount = 1, .transaction = 5});
  AddRow({.amount = 2, .transaction = 8});
  AddRow({.amount = 3, .transaction = 9});
  EXPECT_EQ(row_.GetFirst(7), StatusEndOfFile);
  EXPECT_EQ(row_.NRecord(), 8);
  ASSERT_EQ(row_.GetNext(), StatusSuccess);
  EXPECT_EQ(row_.NRecord(), 9);
  EXPECT_EQ(row_.GetFirst(10), StatusEndOfFile);
}

TEST_P(JrnlRowFinders, GetFirstForAccountReadsTheEarliestRowOfTheAccount) {
  AddRow({.amount = 1, .account = 7, .date = 40002});
  AddRow({.amount = 2, .account = 7, .date = 40001});
  AddRow({.amount = 3, .account = 6, .date = 40000});
  ASSERT_EQ(row_.GetFirstForAccount(7), StatusSuccess);
  EXPECT_EQ(row_.Amount(), 2);
  ASSERT_EQ(row_.GetNextByAccount(), StatusSuccess);
  EXPECT_EQ(row_.Amount(), 1);
}

TEST_P(JrnlRowFinders, RowsOfAnAccountOnOneDayGoByTransaction) {
  AddRow({.amount = 1, .transaction = 9, .account = 7, .date = 40001});
  AddRow({.amount = 2, .transaction = 8, .account = 7, .date = 40001});
  ASSERT_EQ(row_.GetFirstForAccount(7), StatusSuccess);
  EXPECT_EQ(row_.Amount(), 2);
  ASSERT_EQ(row_.GetNextByAccount(), StatusSuccess);
  EXPECT_EQ(row_.Amount(), 1);
}

TEST_P(JrnlRowFinders, GetFirstForAccountRunsOnIntoTheNextAccount) {
  AddRow({.amount = 1, .account = 8});
  AddRow({.amount = 2, .account = 9});
  ASSERT_EQ(row_.GetFirstForAccount(7), StatusSuccess);
  EXPECT_EQ(row_.AccountIndex(), 8);
  ASSERT_EQ(row_.GetNextByAccount(), StatusSuccess);
  EXPECT_EQ(row_.AccountIndex(), 9);
  EXPECT_EQ(row_.GetNextByAccount(), StatusEndOfFile);
  EXPECT_EQ(row_.GetFirstForAccount(10), StatusEndOfFile);
}

TEST_P(JrnlRowFinders, GetFirstForJobReadsTheFirstRowOfTheJobWhateverElseIsAskedFor) {
  AddRow({.amount = 1, .job = 7, .phase = 2, .cost = 3, .date = 40002});
  AddRow({.amount = 2, .job = 7, .phase = 1, .cost = 1, .date = 40001});
  AddRow({.amount = 3, .job = 6, .date = 40000});
  test::AddPhase(company_.Folder(), {"P1", 2});
  test::AddCost(company_.Folder(), {"C1", 3});
  ASSERT_EQ(row_.GetFirstForJob(7, "", "", Null), StatusSuccess);
  EXPECT_EQ(row_.Amount(), 2);
  ASSERT_EQ(row_.GetFirstForJob(7, "P1", "C1", Date(40002)), StatusSuccess);
  EXPECT_EQ(row_.Amount(), 2);
  ASSERT_EQ(row_.GetFirstForJob(7, "no such phase", "no such cost", "no date"), StatusSuccess);
  EXPECT_EQ(row_.Amount(), 2);
  EXPECT_FALSE(IsHeldOpen(File("Phase.dat")));
  EXPECT_FALSE(IsHeldOpen(File("Cost.dat")));
}

TEST_P(JrnlRowFinders, GetFirstForJobRunsOnIntoTheNextJob) {
  AddRow({.amount = 1, .job = 8});
  AddRow({.amount = 2, .job = 9});
  ASSERT_EQ(row_.GetFirstForJob(7, "", "", Null), StatusSuccess);
  EXPECT_EQ(row_.JobIndex(), 8);
  ASSERT_EQ(row_.GetNextByJob(), StatusSuccess);
  EXPECT_EQ(row_.JobIndex(), 9);
  EXPECT_EQ(row_.GetNextByJob(), StatusEndOfFile);
  EXPECT_EQ(row_.GetFirstForJob(10, "", "", Null), StatusEndOfFile);
}

TEST_P(JrnlRowFinders, WalksWithoutAPlaceAnswer8) {
  AddRow({});
  EXPECT_EQ(row_.GetNext(), StatusInvalidPositioning);
  EXPECT_EQ(row_.GetNextByAccount(), StatusInvalidPositioning);
  EXPECT_EQ(row_.GetNextByJob(), StatusInvalidPositioning);
}

TEST_P(JrnlRowFinders, WalksAlongAnotherPathThanTheSearchAnswer7) {
  AddRow({.transaction = 7, .account = 7, .job = 7});
  ASSERT_EQ(row_.GetFirst(7), StatusSuccess);
  EXPECT_EQ(row_.GetNextByAccount(), StatusDifferentKeyNumber);
  EXPECT_EQ(row_.GetNextByJob(), StatusDifferentKeyNumber);
  ASSERT_EQ(row_.GetFirstForAccount(7), StatusSuccess);
  EXPECT_EQ(row_.GetNext(), StatusDifferentKeyNumber);
  ASSERT_EQ(row_.GetFirstForJob(7, "", "", Null), StatusSuccess);
  EXPECT_EQ(row_.GetNext(), StatusDifferentKeyNumber);
}

TEST_P(JrnlRowFinders, StepsGoInTheOrderOfInsertion) {
  AddRow({.amount = 1, .transaction = 9});
  AddRow({.amount = 2, .transaction = 7});
  EXPECT_EQ(row_.RecordCount(), 2);
  ASSERT_EQ(row_.StepFirst(), StatusSuccess);
  EXPECT_EQ(row_.Amount(), 1);
  ASSERT_EQ(row_.StepNext(), StatusSuccess);
  EXPECT_EQ(row_.Amount(), 2);
  EXPECT_EQ(row_.StepNext(), StatusEndOfFile);
  ASSERT_EQ(row_.StepPrevious(), StatusSuccess);
  EXPECT_EQ(row_.Amount(), 1);
  ASSERT_EQ(row_.StepLast(), StatusSuccess);
  EXPECT_EQ(row_.Amount(), 2);
}

INSTANTIATE_TEST_SUITE_P(Releases, JrnlRowFinders, testing::Values(8.0, 16.9, 17.0, 19.0),
                         [](const auto& tested) {
                           return "Release" + std::to_string(static_cast<int>(tested.param * 10));
                         });

// --- The order of a job's rows, which changed with release 17 ---

class JrnlRowJobTest : public OpenJrnlRowTest {
 protected:
  using OpenJrnlRowTest::OpenJrnlRowTest;

  /// Lays rows of job 7 and gives their amounts in the order of the walk.
  std::vector<double> WalkOfJob() {
    AddRow({.amount = 1, .job = 7, .phase = 2, .cost = 1, .date = 40001});
    AddRow({.amount = 2, .job = 7, .phase = 1, .cost = 2, .date = 40002});
    AddRow({.amount = 3, .job = 7, .phase = 1, .cost = 1, .date = 40004});
    AddRow({.amount = 4, .job = 7, .phase = 1, .cost = 1, .date = 40003});
    std::vector<double> walk;
    Status status = row_.GetFirstForJob(7, "", "", Null);
    for (; status == StatusSuccess; status = row_.GetNextByJob()) walk.push_back(row_.Amount());
    EXPECT_EQ(status, StatusEndOfFile);
    return walk;
  }
};

class JrnlRowJobBelow17 : public JrnlRowJobTest {
 protected:
  JrnlRowJobBelow17() : JrnlRowJobTest(16.9) {}
};

class JrnlRowJobFrom17 : public JrnlRowJobTest {
 protected:
  JrnlRowJobFrom17() : JrnlRowJobTest(17.0) {}
};

TEST_F(JrnlRowJobBelow17, RowsGoByPhaseThenCostThenDate) {
  EXPECT_EQ(WalkOfJob(), (std::vector<double>{4, 3, 2, 1}));
}

TEST_F(JrnlRowJobFrom17, RowsGoByDate) {
  EXPECT_EQ(WalkOfJob(), (std::vector<double>{1, 2, 4, 3}));
}

// --- Writes ---

TEST_F(JrnlRowWrites, InsertUpdateAndDeleteChangeTheFile) {
  row_.NRecord(7);
  row_.Amount(9.5);
  ASSERT_EQ(row_.Insert(), StatusSuccess);
  EXPECT_EQ(row_.RecordCount(), 1);
  ASSERT_EQ(row_.GetFirst(7), StatusSuccess);
  row_.NRecord(8);
  ASSERT_EQ(row_.Update(), StatusSuccess);
  EXPECT_EQ(row_.GetFirst(7), StatusEndOfFile);
  ASSERT_EQ(row_.GetFirst(8), StatusSuccess);
  EXPECT_EQ(row_.Amount(), 9.5);
  ASSERT_EQ(row_.Delete(), StatusSuccess);
  EXPECT_EQ(row_.RecordCount(), 0);
}

TEST_F(JrnlRowWrites, InsertByANewObjectTakesItsPlaceInTheWalkByTransaction) {
  AddRow({.amount = 1, .transaction = 8});
  row_.NRecord(7);
  ASSERT_EQ(row_.Insert(), StatusSuccess);
  ASSERT_EQ(row_.GetNext(), StatusSuccess);
  EXPECT_EQ(row_.NRecord(), 8);
}

TEST_F(JrnlRowWrites, InsertTakesItsPlaceInTheWalkOfTheLastSearch) {
  AddRow({.transaction = 1, .account = 7});
  AddRow({.transaction = 2, .account = 9});
  ASSERT_EQ(row_.GetFirstForAccount(7), StatusSuccess);
  row_.AccountIndex(8);
  ASSERT_EQ(row_.Insert(), StatusSuccess);
  ASSERT_EQ(row_.GetNextByAccount(), StatusSuccess);
  EXPECT_EQ(row_.AccountIndex(), 9);
}

TEST_F(JrnlRowWrites, UpdateAfterAStepTakesItsPlaceInTheWalkOfTheLastSearch) {
  AddRow({.transaction = 1, .job = 7});
  AddRow({.transaction = 2, .job = 8});
  ASSERT_EQ(row_.GetFirstForJob(8, "", "", Null), StatusSuccess);
  ASSERT_EQ(row_.StepFirst(), StatusSuccess);
  ASSERT_EQ(row_.Update(), StatusSuccess);
  ASSERT_EQ(row_.GetNextByJob(), StatusSuccess);
  EXPECT_EQ(row_.JobIndex(), 8);
}

// A walk that was refused is the last search all the same.
TEST_F(JrnlRowWrites, UpdateTakesItsPlaceInAWalkThatWasRefused) {
  AddRow({.transaction = 1, .account = 7});
  AddRow({.transaction = 2, .account = 8});
  ASSERT_EQ(row_.GetFirst(1), StatusSuccess);
  ASSERT_EQ(row_.GetNextByAccount(), StatusDifferentKeyNumber);
  ASSERT_EQ(row_.Update(), StatusSuccess);
  ASSERT_EQ(row_.GetNextByAccount(), StatusSuccess);
  EXPECT_EQ(row_.AccountIndex(), 8);
}

}  // namespace
}  // namespace larkmoor
