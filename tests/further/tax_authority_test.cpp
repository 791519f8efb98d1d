// The class TaxAuthority: found by its ID, and its account shown and assigned by the account's ID.
// The chart is opened when it is needed first. One that refuses access is passed over in silence
// until the authorities are closed; one that the engine has closed meanwhile is opened again. What
// is raised bears the name of another class.
#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>
#include <utility>

#include <gtest/gtest.h>

#include <larkmoor/further/tax_authority.h>
#include <larkmoor/status.h>

#include "connection/status_messages.h"
#include "engine/records/chart.h"
#include "engine/store/driver.h"
#include "engine/tovrin_file.h"
#include "support/accounts.h"
#include "support/child_process.h"
#include "support/company.h"
#include "support/errors.h"
#include "support/failing_disk.h"
#include "support/raised_errors.h"
#include "support/read_only_file.h"
#include "support/record_files.h"
#include "support/removed_record.h"
#include "support/taken_away.h"

namespace larkmoor {
namespace {

using test::AddAccount;
using test::Company;
using test::ExpectRaised;
using test::IsHeldOpen;
using test::RaisedNumber;
using test::TakenAway;

constexpr std::string_view ReadOpens = "GeneralData.GetAccount->btChart.btOpen";
constexpr std::string_view Reads = "GeneralData.GetAccount->btChart.GetEqual(";
constexpr std::string_view AssignOpens = "GeneralData.LetAccount->oChart.btOpen";
constexpr std::string_view Assigns = "GeneralData.GetAccountIndex->oChart.GetForAccountID(";

std::string About(std::string_view step, std::string_view what) {
  return std::string(step) + std::string(what) + ")";
}

/// A company with the accounts 2300 and 2310, of the indexes 7 and 8.
class TaxAuthorityTest : public testing::Test {
 protected:
  TaxAuthorityTest() {
    AddAccount(company_.Folder(), {"2300", 7});
    AddAccount(company_.Folder(), {"2310", 8});
  }

  std::filesystem::path TaxAuthorityFile() const { return company_.Folder() / "TaxAuthority.dat"; }
  std::filesystem::path ChartFile() const { return company_.Folder() / "Chart.dat"; }

  Company company_;
};

class OpenTaxAuthorityTest : public TaxAuthorityTest {
 protected:
  OpenTaxAuthorityTest() { EXPECT_EQ(authority_.OpenFile(), StatusSuccess); }

  void Add(std::string_view id, std::string_view account) {
    authority_.ID(id);
    authority_.Account(account);
    ASSERT_EQ(authority_.Insert(), StatusSuccess);
  }

  /// Puts an authority with account 2300 on file and reads it anew, the chart not open.
  void ReadAuthorityWithAccount() {
    Add("STATE", "2300");
    ASSERT_EQ(authority_.CloseFile(), StatusSuccess);
    ASSERT_EQ(authority_.OpenFile(), StatusSuccess);
    ASSERT_EQ(authority_.GetEqual("STATE"), StatusSuccess);
    ASSERT_FALSE(IsHeldOpen(ChartFile()));
  }

  void LiftProtection() {
    ASSERT_EQ(store::DefaultDriver().ClearOwner(ChartFile(), "someone"), StatusSuccess);
  }

  TaxAuthority authority_;
};

using TaxAuthorityLifecycle = TaxAuthorityTest;
using TaxAuthorityFinders = OpenTaxAuthorityTest;
using TaxAuthorityAccount = OpenTaxAuthorityTest;
using TaxAuthorityChart = OpenTaxAuthorityTest;

// --- Opening and closing ---

TEST_F(TaxAuthorityLifecycle, FileIsTaxAuthorityDat) {
  TaxAuthority authority;
  EXPECT_EQ(authority.CloseFile(), StatusSuccess);
  ASSERT_EQ(authority.OpenFile(), StatusSuccess);
  EXPECT_TRUE(IsHeldOpen(TaxAuthorityFile()));
  EXPECT_FALSE(IsHeldOpen(ChartFile()));
  EXPECT_EQ(authority.CloseFile(), StatusSuccess);
  EXPECT_FALSE(IsHeldOpen(TaxAuthorityFile()));
  EXPECT_EQ(authority.CloseFile(), StatusSuccess);
}

TEST_F(TaxAuthorityLifecycle, OpenFileAnswers12WithoutTheFileAndCanBeTriedAgain) {
  TaxAuthority authority;
  {
    const TakenAway away(TaxAuthorityFile());
    EXPECT_EQ(authority.OpenFile(), StatusFileNotFound);
    EXPECT_EQ(authority.CloseFile(), StatusSuccess);
    EXPECT_EQ(authority.StepFirst(), StatusFileNotOpen);
  }
  EXPECT_EQ(authority.OpenFile(), StatusSuccess);
}

TEST_F(TaxAuthorityLifecycle, OpenFileTellsWhatProtectsTheFile) {
  test::ProtectFile(TaxAuthorityFile(), /*allowRead=*/false);
  EXPECT_EQ(TaxAuthority().OpenFile(), StatusInvalidOwner);
}

TEST_F(TaxAuthorityLifecycle, OpenFileNeedsAFileThatCanBeWritten) {
  test::WhereReadOnly(TaxAuthorityFile(),
                      [] { EXPECT_EQ(TaxAuthority().OpenFile(), StatusPermission); });
}

TEST_F(TaxAuthorityLifecycle, OperationsBeforeOpenFileAnswer3) {
  TaxAuthority authority;
  EXPECT_EQ(authority.GetEqual("STATE"), StatusFileNotOpen);
  EXPECT_EQ(authority.StepFirst(), StatusFileNotOpen);
  EXPECT_EQ(authority.StepLast(), StatusFileNotOpen);
  EXPECT_EQ(authority.StepNext(), StatusFileNotOpen);
  EXPECT_EQ(authority.StepPrevious(), StatusFileNotOpen);
  EXPECT_EQ(authority.Insert(), StatusFileNotOpen);
  EXPECT_EQ(authority.Update(), StatusFileNotOpen);
  EXPECT_EQ(authority.Delete(), StatusFileNotOpen);
  EXPECT_EQ(authority.RecordCount(), 0);
}

// --- Finders and writes ---

TEST_F(TaxAuthorityFinders, GetEqualFindsTheAuthorityOfThatID) {
  Add("STATE", "2300");
  Add("CITY", "2310");
  ASSERT_EQ(authority_.GetEqual("STATE"), StatusSuccess);
  EXPECT_EQ(authority_.Account(), "2300");
  ASSERT_EQ(authority_.GetEqual("CITY"), StatusSuccess);
  EXPECT_EQ(authority_.Account(), "2310");
  for (const char* id : {"State", "STATE ", "STAT", ""}) {
    EXPECT_EQ(authority_.GetEqual(id), StatusKeyNotFound) << id;
  }
  EXPECT_EQ(authority_.ID(), "CITY") << "a search in vain leaves the record in hand";
}

TEST_F(TaxAuthorityFinders, SecondAuthorityOfAnIDIsRefused) {
  Add("STATE", "");
  EXPECT_EQ(authority_.Insert(), StatusDuplicateKey);
  EXPECT_EQ(authority_.RecordCount(), 1);
}

TEST_F(TaxAuthorityFinders, StepsGoInTheOrderOfInsertion) {
  Add("STATE", "");
  Add("CITY", "");
  ASSERT_EQ(authority_.StepFirst(), StatusSuccess);
  EXPECT_EQ(authority_.ID(), "STATE");
  ASSERT_EQ(authority_.StepNext(), StatusSuccess);
  EXPECT_EQ(authority_.ID(), "CITY");
  EXPECT_EQ(authority_.StepNext(), StatusEndOfFile);
  ASSERT_EQ(authority_.StepLast(), StatusSuccess);
  ASSERT_EQ(authority_.StepPrevious(), StatusSuccess);
  EXPECT_EQ(authority_.ID(), "STATE");
}

TEST_F(TaxAuthorityFinders, UpdateAndDeleteChangeTheAuthorityThatWasFound) {
  Add("STATE", "2300");
  Add("CITY", "2300");
  ASSERT_EQ(authority_.GetEqual("STATE"), StatusSuccess);
  authority_.Account("2310");
  ASSERT_EQ(authority_.Update(), StatusSuccess);
  ASSERT_EQ(authority_.GetEqual("CITY"), StatusSuccess);
  EXPECT_EQ(authority_.Account(), "2300");
  ASSERT_EQ(authority_.Delete(), StatusSuccess);
  EXPECT_EQ(authority_.GetEqual("CITY"), StatusKeyNotFound);
  ASSERT_EQ(authority_.GetEqual("STATE"), StatusSuccess);
  EXPECT_EQ(authority_.Account(), "2310");
}

// --- The account ---

TEST_F(TaxAuthorityAccount, OfIndex0IsEmptyAndOpensNothing) {
  EXPECT_EQ(authority_.Account(), "");
  EXPECT_FALSE(IsHeldOpen(ChartFile()));
  const TakenAway away(ChartFile());
  EXPECT_EQ(authority_.Account(), "");
}

TEST_F(TaxAuthorityAccount, IsStoredAsTheIndexOfTheAccount) {
  ReadAuthorityWithAccount();
  EXPECT_EQ(authority_.Account(), "2300");
  test::RemoveRecord(ChartFile(), ChartRecord::Describe(), "2300");
  AddAccount(company_.Folder(), {"2399", 7});
  EXPECT_EQ(authority_.Account(), "2399");
}

TEST_F(TaxAuthorityAccount, ThatNoLongerExistsIsEmpty) {
  ReadAuthorityWithAccount();
  test::RemoveRecord(ChartFile(), ChartRecord::Describe(), "2300");
  EXPECT_EQ(authority_.Account(), "");
  AddAccount(company_.Folder(), {"2399", 7});
  EXPECT_EQ(authority_.Account(), "2399") << "its index is kept";
}

TEST_F(TaxAuthorityAccount, AssignedEmptyStores0AndOpensNothing) {
  ReadAuthorityWithAccount();
  const TakenAway away(ChartFile());
  authority_.Account("");
  EXPECT_EQ(authority_.Account(), "");
}

TEST_F(TaxAuthorityAccount, AssignedUnknownRaisesAndKeepsTheAccount) {
  authority_.Account("2300");
  for (const char* id : {"2305", "9999", "230", "2300 ", "A"}) {
    ExpectRaised([&] { authority_.Account(id); }, ErrorAccount, About(Assigns, id),
                 StatusKeyNotFound);
  }
  EXPECT_EQ(authority_.Account(), "2300");
}

// --- The chart ---

TEST_F(TaxAuthorityChart, StaysOpenOnceItWasRead) {
  ReadAuthorityWithAccount();
  EXPECT_EQ(authority_.Account(), "2300");
  EXPECT_TRUE(IsHeldOpen(ChartFile()));
  const TakenAway away(ChartFile());
  EXPECT_EQ(authority_.Account(), "2300");
  authority_.Account("2310");
  EXPECT_EQ(authority_.Account(), "2310");
}

TEST_F(TaxAuthorityChart, StaysOpenOnceAnAccountWasAssigned) {
  authority_.Account("2310");
  EXPECT_TRUE(IsHeldOpen(ChartFile()));
  const TakenAway away(ChartFile());
  EXPECT_EQ(authority_.Account(), "2310");
}

TEST_F(TaxAuthorityChart, ThatIsMissingRaisesWhereItIsReadAndIsTriedAgain) {
  ReadAuthorityWithAccount();
  {
    const TakenAway away(ChartFile());
    ExpectRaised([&] { return authority_.Account(); }, ErrorOpen, ReadOpens, StatusFileNotFound);
  }
  EXPECT_EQ(authority_.Account(), "2300");
}

TEST_F(TaxAuthorityChart, ThatIsMissingRaisesWhereAnAccountIsAssignedAndIsTriedAgain) {
  ReadAuthorityWithAccount();
  {
    const TakenAway away(ChartFile());
    ExpectRaised([&] { authority_.Account("2310"); }, ErrorOpen, AssignOpens, StatusFileNotFound);
  }
  EXPECT_EQ(authority_.Account(), "2300");
  authority_.Account("2310");
  EXPECT_EQ(authority_.Account(), "2310");
}

TEST_F(TaxAuthorityChart, MustBeWritable) {
  ReadAuthorityWithAccount();
  ASSERT_EQ(authority_.CloseFile(), StatusSuccess);
  test::WhereOnlyThisIsReadOnly(ChartFile(), [] {
    TaxAuthority authority;
    ASSERT_EQ(authority.OpenFile(), StatusSuccess);
    ASSERT_EQ(authority.GetEqual("STATE"), StatusSuccess);
    ExpectRaised([&] { return authority.Account(); }, ErrorOpen, ReadOpens, StatusPermission);
    ExpectRaised([&] { authority.Account("2310"); }, ErrorOpen, AssignOpens, StatusPermission);
  });
}

// --- A chart that refuses access ---

TEST_F(TaxAuthorityChart, ThatRefusesAccessReadsEmptyUntilCloseFile) {
  ReadAuthorityWithAccount();
  test::ProtectFile(ChartFile(), /*allowRead=*/false);
  EXPECT_EQ(authority_.Account(), "");
  LiftProtection();
  EXPECT_EQ(authority_.Account(), "");
  EXPECT_FALSE(IsHeldOpen(ChartFile()));
  ASSERT_EQ(authority_.OpenFile(), StatusSuccess);
  ASSERT_EQ(authority_.GetEqual("STATE"), StatusSuccess);
  EXPECT_EQ(authority_.Account(), "") << "an OpenFile forgets nothing";
  ASSERT_EQ(authority_.CloseFile(), StatusSuccess);
  ASSERT_EQ(authority_.OpenFile(), StatusSuccess);
  ASSERT_EQ(authority_.GetEqual("STATE"), StatusSuccess);
  EXPECT_EQ(authority_.Account(), "2300");
}

TEST_F(TaxAuthorityChart, ThatRefusesAccessMakesAssignmentsStore0UntilCloseFile) {
  ReadAuthorityWithAccount();
  test::ProtectFile(ChartFile(), /*allowRead=*/false);
  authority_.Account("2310");
  LiftProtection();
  authority_.Account("2310");
  EXPECT_FALSE(IsHeldOpen(ChartFile()));
  ASSERT_EQ(authority_.Update(), StatusSuccess);
  ASSERT_EQ(authority_.CloseFile(), StatusSuccess);
  ASSERT_EQ(authority_.OpenFile(), StatusSuccess);
  ASSERT_EQ(authority_.GetEqual("STATE"), StatusSuccess);
  EXPECT_EQ(authority_.Account(), "") << "0 was stored";
  EXPECT_FALSE(IsHeldOpen(ChartFile()));
  authority_.Account("2310");
  EXPECT_EQ(authority_.Account(), "2310");
}

TEST_F(TaxAuthorityChart, RefusedToAReadIsRefusedToAssignmentsToo) {
  ReadAuthorityWithAccount();
  test::ProtectFile(ChartFile(), /*allowRead=*/false);
  EXPECT_EQ(authority_.Account(), "");
  LiftProtection();
  authority_.Account("2310");
  ASSERT_EQ(authority_.Update(), StatusSuccess);
  TaxAuthority reader;
  ASSERT_EQ(reader.OpenFile(), StatusSuccess);
  ASSERT_EQ(reader.GetEqual("STATE"), StatusSuccess);
  EXPECT_EQ(reader.Account(), "");
}

TEST_F(TaxAuthorityChart, RefusedToAnAssignmentIsRefusedToReadsToo) {
  ReadAuthorityWithAccount();
  test::ProtectFile(ChartFile(), /*allowRead=*/false);
  authority_.Account("2310");
  LiftProtection();
  ASSERT_EQ(authority_.GetEqual("STATE"), StatusSuccess);
  EXPECT_EQ(authority_.Account(), "");
}

TEST_F(TaxAuthorityChart, RefusedToOneObjectIsTriedByAnother) {
  ReadAuthorityWithAccount();
  test::ProtectFile(ChartFile(), /*allowRead=*/false);
  EXPECT_EQ(authority_.Account(), "");
  LiftProtection();
  TaxAuthority another;
  ASSERT_EQ(another.OpenFile(), StatusSuccess);
  ASSERT_EQ(another.GetEqual("STATE"), StatusSuccess);
  EXPECT_EQ(another.Account(), "2300");
}

// --- A chart that the engine has closed under the object ---

TEST_F(TaxAuthorityChart, ClosedByTheEngineIsOpenedAgainToBeRead) {
  authority_.Account("2300");
  ASSERT_EQ(TovrinFile().btReset(), StatusSuccess);
  EXPECT_EQ(authority_.Account(), "2300");
  EXPECT_TRUE(IsHeldOpen(ChartFile()));
}

TEST_F(TaxAuthorityChart, ClosedByTheEngineIsOpenedAgainForAnAssignment) {
  authority_.Account("2300");
  ASSERT_EQ(TovrinFile().btReset(), StatusSuccess);
  authority_.Account("2310");
  EXPECT_TRUE(IsHeldOpen(ChartFile()));
  EXPECT_EQ(authority_.Account(), "2310");
}

TEST_F(TaxAuthorityChart, OpenedAgainMayStillLackTheAccount) {
  authority_.Account("2300");
  ASSERT_EQ(TovrinFile().btReset(), StatusSuccess);
  ExpectRaised([&] { authority_.Account("9999"); }, ErrorAccount, About(Assigns, "9999"),
               StatusKeyNotFound);
  test::RemoveRecord(ChartFile(), ChartRecord::Describe(), "2300");
  ASSERT_EQ(TovrinFile().btReset(), StatusSuccess);
  EXPECT_EQ(authority_.Account(), "");
}

// Nobody looks at how the second open went: the search then meets a file that is not open.
TEST_F(TaxAuthorityChart, ClosedByTheEngineAndThenMissingFailsInTheSearch) {
  authority_.Account("2300");
  ASSERT_EQ(TovrinFile().btReset(), StatusSuccess);
  {
    const TakenAway away(ChartFile());
    ExpectRaised([&] { return authority_.Account(); }, ErrorRead, About(Reads, "7"),
                 StatusFileNotOpen);
    ExpectRaised([&] { authority_.Account("2310"); }, ErrorAccount, About(Assigns, "2310"),
                 StatusFileNotOpen);
  }
  EXPECT_EQ(authority_.Account(), "2300") << "and is opened again as soon as it is there";
}

TEST_F(TaxAuthorityChart, ClosedByTheEngineAndThenRefusedFailsInTheSearchAndIsNotPassedOver) {
  authority_.Account("2300");
  ASSERT_EQ(TovrinFile().btReset(), StatusSuccess);
  test::ProtectFile(ChartFile(), /*allowRead=*/false);
  ExpectRaised([&] { return authority_.Account(); }, ErrorRead, About(Reads, "7"),
               StatusFileNotOpen);
  ExpectRaised([&] { authority_.Account("2310"); }, ErrorAccount, About(Assigns, "2310"),
               StatusFileNotOpen);
  LiftProtection();
  EXPECT_EQ(authority_.Account(), "2300");
}

// --- The end of the chart ---

TEST_F(TaxAuthorityChart, IsClosedByCloseFile) {
  authority_.Account("2300");
  EXPECT_EQ(authority_.CloseFile(), StatusSuccess);
  EXPECT_FALSE(IsHeldOpen(TaxAuthorityFile()));
  EXPECT_FALSE(IsHeldOpen(ChartFile()));
  EXPECT_EQ(authority_.CloseFile(), StatusSuccess);
}

TEST_F(TaxAuthorityChart, IsClosedByDestruction) {
  authority_.Account("2300");
  { const TaxAuthority gone = std::move(authority_); }
  EXPECT_FALSE(IsHeldOpen(TaxAuthorityFile()));
  EXPECT_FALSE(IsHeldOpen(ChartFile()));
}

TEST_F(TaxAuthorityChart, StaysInUseOverASecondOpenFile) {
  authority_.Account("2300");
  ASSERT_EQ(authority_.OpenFile(), StatusSuccess);
  {
    const TakenAway away(ChartFile());
    authority_.Account("2310");
    EXPECT_EQ(authority_.Account(), "2310");
  }
  EXPECT_EQ(authority_.CloseFile(), StatusSuccess);
  EXPECT_FALSE(IsHeldOpen(ChartFile()));
}

TEST_F(TaxAuthorityChart, IsClosedAlsoWhereTheAuthoritiesFailToClose) {
  ASSERT_EQ(authority_.CloseFile(), StatusSuccess);
  test::RunInChild([&] {
    ASSERT_EQ(authority_.OpenFile(), StatusSuccess);
    Add("STATE", "2300");
    test::BreakDisk(TaxAuthorityFile());
    EXPECT_EQ(authority_.CloseFile(), StatusIOError);
    EXPECT_FALSE(IsHeldOpen(ChartFile()));
    EXPECT_EQ(authority_.CloseFile(), StatusSuccess);
  });
}

TEST_F(TaxAuthorityChart, ThatFailsToCloseIsNotTold) {
  ASSERT_EQ(authority_.CloseFile(), StatusSuccess);
  test::RunInChild([&] {
    ASSERT_EQ(authority_.OpenFile(), StatusSuccess);
    authority_.Account("2300");
    AddAccount(company_.Folder(), {"2320", 9});
    test::BreakDisk(ChartFile());
    EXPECT_EQ(authority_.CloseFile(), StatusSuccess);
  });
}

TEST_F(TaxAuthorityChart, IsGivenUpWhereTheEngineClosedAllFiles) {
  authority_.Account("2300");
  ASSERT_EQ(TovrinFile().btReset(), StatusSuccess);
  EXPECT_EQ(authority_.CloseFile(), StatusFileNotOpen);
  EXPECT_EQ(authority_.CloseFile(), StatusSuccess);
  ASSERT_EQ(authority_.OpenFile(), StatusSuccess);
  const TakenAway away(ChartFile());
  EXPECT_EQ(RaisedNumber([&] { authority_.Account("2300"); }), ErrorOpen)
      << "it is opened as if for the first time";
}

}  // namespace
}  // namespace larkmoor
