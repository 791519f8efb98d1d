// The account, cost code, phase and employee of a row: stored by index and shown by ID. Each
// look-up file opens when it is needed first. Whatever fails is raised, a refused access too.
#include <cstdint>
#include <filesystem>
#include <ostream>
#include <string>
#include <string_view>

#include <gtest/gtest.h>

#include <larkmoor/journals/jrnl_row.h>
#include <larkmoor/status.h>

#include "connection/status_messages.h"
#include "engine/records/cost.h"
#include "engine/records/employee.h"
#include "engine/records/jrnl_row.h"
#include "engine/records/phase.h"
#include "engine/store/driver.h"
#include "support/accounts.h"
#include "support/company.h"
#include "support/errors.h"
#include "support/masters.h"
#include "support/raised_errors.h"
#include "support/read_only_file.h"
#include "support/record_files.h"
#include "support/taken_away.h"

namespace larkmoor {
namespace {

using test::Company;
using test::ExpectRaised;
using test::IsHeldOpen;
using test::Master;
using test::OpenRecordFile;
using test::RaisedNumber;
using test::TakenAway;
using test::WhereOnlyThisIsReadOnly;

void AddAccount(const std::filesystem::path& folder, const Master& account) {
  test::AddAccount(folder, {account.id, account.index});
}

/// One of the IDs of a row, and how its look-up speaks of its failures.
struct ID {
  std::string name;
  std::string (JrnlRow::*get)();
  void (JrnlRow::*let)(std::string_view);
  const Field* index;
  std::string file;
  void (*add)(const std::filesystem::path& folder, const Master& record);
  std::string opens;
  std::string reads;
  std::string assigns;
};

std::ostream& operator<<(std::ostream& out, const ID& id) { return out << id.name; }

const ID AccountID{"AccountID",
                   &JrnlRow::AccountID,
                   &JrnlRow::AccountID,
                   &JrnlRowRecord::AccountIndex,
                   "Chart.dat",
                   AddAccount,
                   "JrnlRow.AccountID->Chart.Open",
                   "JrnlRow.AccountID->Chart.GetEqual(",
                   "JrnlRow.AccountID->Chart.GetForAccountID("};
const ID CostID{"CostID",
                &JrnlRow::CostID,
                &JrnlRow::CostID,
                &JrnlRowRecord::CostIndex,
                "Cost.dat",
                test::AddCost,
                "JrnlRow.CostID->Cost.Open",
                "JrnlRow.CostID->Cost.GetForIndex(",
                "JrnlRow.CostID->Cost.GetEqual("};
const ID PhaseID{"PhaseID",
                 &JrnlRow::PhaseID,
                 &JrnlRow::PhaseID,
                 &JrnlRowRecord::PhaseIndex,
                 "Phase.dat",
                 test::AddPhase,
                 "JrnlRow.PhaseID->Phase.Open",
                 "JrnlRow.PhaseID->Phase.GetForIndex(",
                 "JrnlRow.PhaseID->Phase.GetEqual("};
const ID EmployeeID{"EmployeeID",
                    &JrnlRow::EmployeeID,
                    &JrnlRow::EmployeeID,
                    &JrnlRowRecord::EmployeeIndex,
                    "Employee.dat",
                    test::AddEmployee,
                    "JrnlRow.EmployeeID->Employee.Open",
                    "JrnlRow.EmployeeID->Employee.GetForIndex(",
                    "JrnlRow.EmployeeID->Employee.GetEqual("};

/// A company with records "FIRST" and "SECOND" of the indexes 12 and 13 in every look-up file, and
/// rows with the indexes 0, 12, 13, 99 and -7 in every ID, in that order.
class JrnlRowIDTest : public testing::Test {
 protected:
  JrnlRowIDTest() {
    for (const ID* id : {&AccountID, &CostID, &PhaseID, &EmployeeID}) {
      id->add(company_.Folder(), {"FIRST", 12});
      id->add(company_.Folder(), {"SECOND", 13});
    }
    OpenRecordFile rows(RowFile(), JrnlRowRecord::Describe());
    for (const std::int32_t index : {0, 12, 13, 99, -7}) {
      rows.Add([&](Tovrin2Record& record) {
        record.SetLong(JrnlRowRecord::NRecord, 100 + index);
        for (const ID* id : {&AccountID, &CostID, &PhaseID, &EmployeeID}) {
          record.SetLong(*id->index, index);
        }
      });
    }
  }

  std::filesystem::path File(const ID& id) const { return company_.Folder() / id.file; }
  std::filesystem::path RowFile() const { return company_.Folder() / "JrnlRow.dat"; }

  /// Reads the row with that index.
  static void ReadRow(JrnlRow& row, std::int32_t index) {
    ASSERT_EQ(row.GetFirst(100 + index), StatusSuccess);
  }

  /// The index on file in the row that was laid with `index`.
  std::int32_t StoredIndex(const ID& id, std::int32_t index) {
    OpenRecordFile rows(RowFile(), JrnlRowRecord::Describe());
    rows.File().KeyLong(100 + index, 0);
    EXPECT_EQ(rows.File().btGetEqual(0), StatusSuccess);
    return rows.Record().GetLong(*id.index);
  }

  Company company_;
};

class OpenJrnlRowIDTest : public JrnlRowIDTest {
 protected:
  OpenJrnlRowIDTest() { EXPECT_EQ(row_.OpenFile(), StatusSuccess); }

  void ReadRow(std::int32_t index) { JrnlRowIDTest::ReadRow(row_, index); }

  JrnlRow row_;
};

// --- What holds of all four ---

class JrnlRowID : public OpenJrnlRowIDTest, public testing::WithParamInterface<ID> {
 protected:
  std::filesystem::path LookUpFile() const { return File(GetParam()); }
  std::string Get() { return Get(row_); }
  void Let(std::string_view id) { Let(row_, id); }

  static std::string Get(JrnlRow& row) { return (row.*GetParam().get)(); }
  static void Let(JrnlRow& row, std::string_view id) { (row.*GetParam().let)(id); }
};

TEST_P(JrnlRowID, IsThatOfTheRecordWithTheIndex) {
  ReadRow(13);
  EXPECT_EQ(Get(), "SECOND");
  ReadRow(12);
  EXPECT_EQ(Get(), "FIRST");
}

TEST_P(JrnlRowID, AssignedStoresTheIndexOfTheRecord) {
  ReadRow(0);
  Let("SECOND");
  EXPECT_EQ(Get(), "SECOND");
  ASSERT_EQ(row_.Update(), StatusSuccess);
  EXPECT_EQ(StoredIndex(GetParam(), 0), 13);
}

TEST_P(JrnlRowID, OfIndex0IsEmptyAndOpensNothing) {
  ReadRow(0);
  EXPECT_EQ(Get(), "");
  EXPECT_FALSE(IsHeldOpen(LookUpFile()));
  const TakenAway away(LookUpFile());
  EXPECT_EQ(Get(), "");
}

TEST_P(JrnlRowID, AssignedEmptyStores0AndOpensNothing) {
  ReadRow(13);
  const TakenAway away(LookUpFile());
  Let("");
  EXPECT_EQ(Get(), "");
  ASSERT_EQ(row_.Update(), StatusSuccess);
  EXPECT_EQ(StoredIndex(GetParam(), 13), 0);
}

TEST_P(JrnlRowID, OfAnUnknownIndexRaises) {
  ReadRow(99);
  ExpectRaised([&] { return Get(); }, ErrorRead, GetParam().reads + "99)", StatusKeyNotFound);
  ReadRow(-7);
  ExpectRaised([&] { return Get(); }, ErrorRead, GetParam().reads + "-7)", StatusKeyNotFound);
  ReadRow(13);
  EXPECT_EQ(Get(), "SECOND") << "nothing is remembered of the failure";
}

TEST_P(JrnlRowID, AssignedUnknownRaisesAndKeepsTheIndex) {
  ReadRow(13);
  ExpectRaised([&] { Let("NONE"); }, ErrorAccount, GetParam().assigns + "NONE)", StatusKeyNotFound);
  EXPECT_EQ(Get(), "SECOND");
}

TEST_P(JrnlRowID, TakesCaseAndTrailingBlanksForDifferences) {
  ReadRow(13);
  for (const char* id : {"First", "FIRST ", "FIRS"}) {
    EXPECT_EQ(RaisedNumber([&] { Let(id); }), ErrorAccount) << id;
  }
  EXPECT_EQ(Get(), "SECOND");
}

TEST_P(JrnlRowID, LeavesItsFileOpen) {
  ReadRow(13);
  EXPECT_EQ(Get(), "SECOND");
  EXPECT_TRUE(IsHeldOpen(LookUpFile()));
  const TakenAway away(LookUpFile());
  Let("FIRST");
  EXPECT_EQ(Get(), "FIRST");
}

TEST_P(JrnlRowID, ReadWithoutTheFileRaisesAndIsTriedAgain) {
  ReadRow(13);
  {
    const TakenAway away(LookUpFile());
    ExpectRaised([&] { return Get(); }, ErrorRead, GetParam().opens, StatusFileNotFound);
  }
  EXPECT_EQ(Get(), "SECOND");
}

TEST_P(JrnlRowID, AssignedWithoutTheFileRaisesKeepsTheIndexAndIsTriedAgain) {
  ReadRow(13);
  {
    const TakenAway away(LookUpFile());
    ExpectRaised([&] { Let("FIRST"); }, ErrorRead, GetParam().opens, StatusFileNotFound);
  }
  EXPECT_EQ(Get(), "SECOND");
  Let("FIRST");
  EXPECT_EQ(Get(), "FIRST");
}

TEST_P(JrnlRowID, WhereAccessIsRefusedRaisesBothWays) {
  test::ProtectFile(LookUpFile(), /*allowRead=*/false);
  ReadRow(13);
  ExpectRaised([&] { return Get(); }, ErrorRead, GetParam().opens, StatusInvalidOwner);
  ExpectRaised([&] { Let("FIRST"); }, ErrorRead, GetParam().opens, StatusInvalidOwner);
}

TEST_P(JrnlRowID, NeedsAFileThatCanBeWrittenBothWays) {
  ASSERT_EQ(row_.CloseFile(), StatusSuccess);
  WhereOnlyThisIsReadOnly(LookUpFile(), [&] {
    JrnlRow row;
    ASSERT_EQ(row.OpenFile(), StatusSuccess);
    JrnlRowIDTest::ReadRow(row, 13);
    ExpectRaised([&] { return Get(row); }, ErrorRead, GetParam().opens, StatusPermission);
    ExpectRaised([&] { Let(row, "FIRST"); }, ErrorRead, GetParam().opens, StatusPermission);
  });
}

TEST_P(JrnlRowID, NeedsNoOpenRows) {
  JrnlRow row;
  Let(row, "SECOND");
  EXPECT_EQ(Get(row), "SECOND");
}

INSTANTIATE_TEST_SUITE_P(IDs, JrnlRowID, testing::Values(AccountID, CostID, PhaseID, EmployeeID),
                         [](const auto& tested) { return tested.param.name; });

// --- The second chance of a cost code ---

/// An object with its look-up file open on a file that another one then takes the place of, which
/// holds "NEW" of the index 99 alone.
class JrnlRowSecondChance : public OpenJrnlRowIDTest {
 protected:
  void PutNewFile(const ID& id, const RecordDescription& description) {
    const std::filesystem::path path = File(id);
    std::filesystem::rename(path, OldFile(id));
    ASSERT_EQ(store::DefaultDriver().Create(path, description.FileFor(19.0)), StatusSuccess);
    id.add(company_.Folder(), {"NEW", 99});
  }

  std::filesystem::path OldFile(const ID& id) const {
    return company_.Folder() / ("Old" + id.file);
  }
};

TEST_F(JrnlRowSecondChance, OfACostCodeOpensTheFileAnew) {
  row_.CostID("FIRST");
  PutNewFile(CostID, CostRecord::Describe());
  ReadRow(99);
  EXPECT_EQ(row_.CostID(), "NEW");
  EXPECT_TRUE(IsHeldOpen(File(CostID)));
  EXPECT_FALSE(IsHeldOpen(OldFile(CostID)));
}

TEST_F(JrnlRowSecondChance, IsNotTakenWhereTheFirstLookUpSucceeds) {
  row_.CostID("FIRST");
  PutNewFile(CostID, CostRecord::Describe());
  ReadRow(13);
  EXPECT_EQ(row_.CostID(), "SECOND");
  EXPECT_FALSE(IsHeldOpen(File(CostID)));
}

TEST_F(JrnlRowSecondChance, IsNotTakenByAnAssignment) {
  row_.CostID("FIRST");
  PutNewFile(CostID, CostRecord::Describe());
  EXPECT_EQ(RaisedNumber([&] { row_.CostID("NEW"); }), ErrorAccount);
  EXPECT_FALSE(IsHeldOpen(File(CostID)));
}

TEST_F(JrnlRowSecondChance, IsNotGivenToAPhase) {
  row_.PhaseID("FIRST");
  PutNewFile(PhaseID, PhaseRecord::Describe());
  ReadRow(99);
  ExpectRaised([&] { return row_.PhaseID(); }, ErrorRead, "JrnlRow.PhaseID->Phase.GetForIndex(99)",
               StatusKeyNotFound);
  EXPECT_FALSE(IsHeldOpen(File(PhaseID)));
}

TEST_F(JrnlRowSecondChance, IsNotGivenToAnEmployee) {
  row_.EmployeeID("FIRST");
  PutNewFile(EmployeeID, EmployeeRecord::Describe());
  ReadRow(99);
  ExpectRaised([&] { return row_.EmployeeID(); }, ErrorRead,
               "JrnlRow.EmployeeID->Employee.GetForIndex(99)", StatusKeyNotFound);
  EXPECT_FALSE(IsHeldOpen(File(EmployeeID)));
}

// Nobody looks at whether the file opens again; the second look-up then meets one that is not open,
// and the next read finds its way back by the same second chance.
TEST_F(JrnlRowSecondChance, WithoutTheFileAnswers3AndIsTakenAgain) {
  row_.CostID("FIRST");
  {
    const TakenAway away(File(CostID));
    ReadRow(99);
    ExpectRaised([&] { return row_.CostID(); }, ErrorRead, "JrnlRow.CostID->Cost.GetForIndex(99)",
                 StatusFileNotOpen);
    EXPECT_FALSE(IsHeldOpen(away.Aside()));
  }
  ReadRow(13);
  EXPECT_EQ(row_.CostID(), "SECOND");
}

TEST_F(JrnlRowSecondChance, ThatLeftTheFileClosedLeavesAssignmentsWithoutIt) {
  row_.CostID("FIRST");
  {
    const TakenAway away(File(CostID));
    ReadRow(99);
    ASSERT_EQ(RaisedNumber([&] { return row_.CostID(); }), ErrorRead);
  }
  ExpectRaised([&] { row_.CostID("FIRST"); }, ErrorAccount, "JrnlRow.CostID->Cost.GetEqual(FIRST)",
               StatusFileNotOpen);
}

// The cost codes' close answers 3, the rows' 0.
TEST_F(JrnlRowSecondChance, ThatLeftTheFileClosedDoesNotCountInCloseFile) {
  row_.CostID("FIRST");
  {
    const TakenAway away(File(CostID));
    ReadRow(99);
    ASSERT_EQ(RaisedNumber([&] { return row_.CostID(); }), ErrorRead);
  }
  EXPECT_EQ(row_.CloseFile(), StatusSuccess);
}

}  // namespace
}  // namespace larkmoor
