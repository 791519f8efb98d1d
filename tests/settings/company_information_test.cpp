// The class CompanyInformation: a file of one record, which is stepped to and rewritten; and the
// properties that are more than a field of it.
#include <cstdint>
#include <filesystem>
#include <utility>

#include <gtest/gtest.h>

#include <larkmoor/date.h>
#include <larkmoor/settings/company_information.h>
#include <larkmoor/status.h>
#include <larkmoor/variant.h>

#include "automation/automation.h"
#include "engine/records/company.h"
#include "engine/tovrin_file.h"
#include "engine/tovrin_file_names.h"
#include "support/company.h"
#include "support/field_values.h"
#include "support/record_files.h"
#include "support/taken_away.h"

namespace larkmoor {
namespace {

using test::Company;
using test::IsHeldOpen;
using test::OpenRecordFile;
using test::TakenAway;

class CompanyInformationTest : public testing::Test {
 protected:
  std::filesystem::path CompanyFile() const {
    return company_.Folder() / TovrinFileNames::CompanyFile();
  }

  // The one record on file.
  Variant Stored(const Field& field, int index = 0) {
    OpenRecordFile file(CompanyFile(), CompanyRecord::Describe());
    EXPECT_EQ(file.File().btStepFirst(), StatusSuccess);
    return test::ValueOf(file.Record(), field, index);
  }
  void Store(const Field& field, const Variant& value, int index = 0) {
    OpenRecordFile file(CompanyFile(), CompanyRecord::Describe());
    ASSERT_EQ(file.File().btStepFirst(), StatusSuccess);
    test::SetValue(file.Record(), field, value, index);
    ASSERT_EQ(file.File().btUpdate(0), StatusSuccess);
  }

  void OpenAndRead() {
    ASSERT_EQ(information_.OpenFile(), StatusSuccess);
    ASSERT_EQ(information_.StepFirst(), StatusSuccess);
  }

  Company company_;
  CompanyInformation information_;
};

/// An object with the record in hand.
class CompanyInformationRead : public CompanyInformationTest {
 protected:
  CompanyInformationRead() { OpenAndRead(); }
};

using CompanyInformationLifecycle = CompanyInformationTest;

// --- Opening and closing ---

TEST_F(CompanyInformationLifecycle, FileIsCompanyDatAndNoOtherIsNeeded) {
  const TakenAway noChart(company_.Folder() / TovrinFileNames::ChartFile());
  EXPECT_EQ(information_.CloseFile(), StatusSuccess);
  ASSERT_EQ(information_.OpenFile(), StatusSuccess);
  EXPECT_TRUE(IsHeldOpen(company_.Folder() / "Company.dat"));
  EXPECT_EQ(information_.CloseFile(), StatusSuccess);
  EXPECT_FALSE(IsHeldOpen(CompanyFile()));
  EXPECT_EQ(information_.CloseFile(), StatusSuccess);
}

TEST_F(CompanyInformationLifecycle, OperationsBeforeOpenFileAnswer3) {
  EXPECT_EQ(information_.StepFirst(), StatusFileNotOpen);
  EXPECT_EQ(information_.Update(), StatusFileNotOpen);
}

TEST_F(CompanyInformationLifecycle, OpenFileAnswers12WithoutTheFileAndCanBeTriedAgain) {
  {
    const TakenAway away(CompanyFile());
    EXPECT_EQ(information_.OpenFile(), StatusFileNotFound);
    EXPECT_EQ(information_.StepFirst(), StatusFileNotOpen);
    EXPECT_EQ(information_.CloseFile(), StatusSuccess);
  }
  ASSERT_NO_FATAL_FAILURE(OpenAndRead());
}

TEST_F(CompanyInformationLifecycle, OpenFileTellsWhatProtectsTheFile) {
  test::ProtectFile(CompanyFile(), /*allowRead=*/false);
  EXPECT_EQ(information_.OpenFile(), StatusInvalidOwner);
}

TEST_F(CompanyInformationLifecycle, OpenFileNeedsAFileThatCanBeWritten) {
  test::WhereReadOnly(CompanyFile(),
                      [] { EXPECT_EQ(CompanyInformation().OpenFile(), StatusPermission); });
}

TEST_F(CompanyInformationLifecycle, CloseFileOfAFileThatIsNoLongerOpenAnswers3) {
  ASSERT_EQ(information_.OpenFile(), StatusSuccess);
  ASSERT_EQ(TovrinFile().btReset(), StatusSuccess);
  EXPECT_EQ(information_.CloseFile(), StatusFileNotOpen);
  EXPECT_EQ(information_.CloseFile(), StatusSuccess);
}

TEST_F(CompanyInformationLifecycle, DestructionClosesTheFile) {
  ASSERT_EQ(information_.OpenFile(), StatusSuccess);
  { const CompanyInformation gone = std::move(information_); }
  EXPECT_FALSE(IsHeldOpen(CompanyFile()));
}

// --- The one record ---

TEST_F(CompanyInformationLifecycle, StepFirstReadsTheRecord) {
  ASSERT_EQ(information_.OpenFile(), StatusSuccess);
  EXPECT_EQ(information_.CompanyName(), "");
  ASSERT_EQ(information_.StepFirst(), StatusSuccess);
  EXPECT_EQ(information_.CompanyName(), "Harbour Trading");
}

TEST_F(CompanyInformationLifecycle, UpdateWithoutStepFirstAnswers8) {
  ASSERT_EQ(information_.OpenFile(), StatusSuccess);
  information_.CompanyName("Fjord Tools");
  EXPECT_EQ(information_.Update(), StatusInvalidPositioning);
  EXPECT_EQ(Stored(CompanyRecord::CompanyName), "Harbour Trading");
}

TEST_F(CompanyInformationRead, UpdateRewritesTheRecordAlsoUnderAnotherName) {
  information_.CompanyName("Fjord Tools");
  information_.AddrCity("Bergen");
  EXPECT_EQ(Stored(CompanyRecord::CompanyName), "Harbour Trading");
  ASSERT_EQ(information_.Update(), StatusSuccess);
  EXPECT_EQ(Stored(CompanyRecord::CompanyName), "Fjord Tools");
  EXPECT_EQ(Stored(CompanyRecord::AddrCity), "Bergen");
  OpenRecordFile file(CompanyFile(), CompanyRecord::Describe());
  EXPECT_EQ(file.File().btRecordCount(), 1);
}

TEST_F(CompanyInformationRead, StepFirstAgainDropsWhatWasAssigned) {
  information_.CompanyName("Fjord Tools");
  ASSERT_EQ(information_.StepFirst(), StatusSuccess);
  EXPECT_EQ(information_.CompanyName(), "Harbour Trading");
}

TEST_F(CompanyInformationRead, UpdateAnswers80WhereAnotherChangedTheRecordSince) {
  Store(CompanyRecord::AddrCity, "Bergen");
  information_.AddrCity("Oslo");
  EXPECT_EQ(information_.Update(), StatusRecordConflict);
  EXPECT_EQ(Stored(CompanyRecord::AddrCity), "Bergen");
}

TEST(CompanyInformationWrites, UpdateTakesItsPlaceOnKey0) {
  const Company company;
  automation::Object information("CompanyInformation");
  ASSERT_EQ(information.Call("OpenFile"), StatusSuccess);
  ASSERT_EQ(information.Call("StepFirst"), StatusSuccess);
  EXPECT_EQ(information.File()->btGetNext(0), StatusInvalidPositioning);
  ASSERT_EQ(information.Call("Update"), StatusSuccess);
  EXPECT_EQ(information.File()->btGetNext(0), StatusEndOfFile);
}

// --- What tells of the file ---

TEST_F(CompanyInformationTest, ActualLengthIsThatOfTheRecordReadLast) {
  ASSERT_EQ(information_.OpenFile(), StatusSuccess);
  EXPECT_EQ(information_.ActualLength(), 0);
  ASSERT_EQ(information_.StepFirst(), StatusSuccess);
  EXPECT_EQ(information_.ActualLength(), 1202);
}

TEST(CompanyInformationOfOldData, ActualLengthIsThatOfTheRelease) {
  const Company company(8.0);
  CompanyInformation information;
  ASSERT_EQ(information.OpenFile(), StatusSuccess);
  ASSERT_EQ(information.StepFirst(), StatusSuccess);
  EXPECT_EQ(information.ActualLength(), 1064);
}

TEST_F(CompanyInformationRead, IndexIs0) { EXPECT_EQ(information_.Index(), 0); }

TEST(CompanyInformationBeforeOpenFile, IsOfRelease0) {
  CompanyInformation information;
  EXPECT_EQ(information.Version(), 0);
  EXPECT_EQ(information.StructureLength(), 1064);
  EXPECT_EQ(information.ActualLength(), 0);
}

TEST(CompanyInformationReleases, VersionAndStructureLengthAreTakenAtOpenFileAndKept) {
  const std::pair<double, std::int32_t> releases[] = {{8.0, 1064},  {8.9, 1064},  {9.0, 1171},
                                                      {11.9, 1171}, {12.0, 1175}, {12.9, 1175},
                                                      {13.0, 1202}, {19.0, 1202}};
  for (const auto& [release, length] : releases) {
    const Company company(release);
    CompanyInformation information;
    ASSERT_EQ(information.OpenFile(), StatusSuccess);
    EXPECT_DOUBLE_EQ(information.Version(), release);
    EXPECT_EQ(information.StructureLength(), length) << release;
    ASSERT_EQ(information.CloseFile(), StatusSuccess);
    EXPECT_DOUBLE_EQ(information.Version(), release);
    EXPECT_EQ(information.StructureLength(), length) << release;
  }
}

TEST_F(CompanyInformationTest, CompanyVersionShowsWhatIsOnFile) {
  Store(CompanyRecord::CompanyVersion, "19.0.01");
  ASSERT_NO_FATAL_FAILURE(OpenAndRead());
  EXPECT_EQ(information_.CompanyVersion(), "19.0.01");
}

// --- Fields with a rule ---

TEST_F(CompanyInformationRead, BusinessTypeSpellsOutTheCode) {
  const std::pair<std::uint8_t, const char*> types[] = {
      {0, "Corporation"},
      {1, "S Corporation"},
      {2, "Partnership"},
      {3, "Sole Proprietership"},  // spelled so
      {4, "Limited Liability Company"},
      {200, "Limited Liability Company"},
      {255, "Limited Liability Company"},
  };
  for (const auto& [code, text] : types) {
    information_.BusinessTypeCode(code);
    EXPECT_EQ(information_.BusinessType(), text) << int{code};
  }
}

TEST_F(CompanyInformationRead, RealTimeIsStoredAs1AndNotAsMinus1) {
  information_.RealTime(true);
  EXPECT_TRUE(information_.RealTime());
  ASSERT_EQ(information_.Update(), StatusSuccess);
  EXPECT_EQ(Stored(CompanyRecord::RealTime), 1);
  information_.RealTime(false);
  EXPECT_FALSE(information_.RealTime());
  ASSERT_EQ(information_.Update(), StatusSuccess);
  EXPECT_EQ(Stored(CompanyRecord::RealTime), 0);
}

TEST_F(CompanyInformationRead, RealTimeIsTrueOf1Alone) {
  constexpr std::uint8_t Bytes[] = {0, 1, 2, 254, 255};
  for (const std::uint8_t stored : Bytes) {
    Store(CompanyRecord::RealTime, stored);
    ASSERT_EQ(information_.StepFirst(), StatusSuccess);
    EXPECT_EQ(information_.RealTime(), stored == 1) << int{stored};
  }
}

// Two properties reach their fields by name.
TEST_F(CompanyInformationRead, RecordOffersTheFieldsThatAreAskedForByName) {
  const Field* active = CompanyRecord::Describe().FindField("DirDepAccountActive");
  const Field* payday = CompanyRecord::Describe().FindField("DirDepPayRDate");
  ASSERT_NE(active, nullptr);
  ASSERT_NE(payday, nullptr);
  information_.DirDepAccountActive(true);
  information_.DirDepPayRDate(Date::FromYmd(2012, 2, 29));
  ASSERT_EQ(information_.Update(), StatusSuccess);
  EXPECT_EQ(Stored(*active), true);
  EXPECT_EQ(Stored(*payday), Date::FromYmd(2012, 2, 29));
}

TEST_F(CompanyInformationRead, AccountsOfDirectDepositAreIndexesThatNobodyLooksUp) {
  const TakenAway noChart(company_.Folder() / TovrinFileNames::ChartFile());
  information_.DirDepCashAccount(99);
  information_.DirDepFeeExpAccount(-98);
  ASSERT_EQ(information_.Update(), StatusSuccess);
  ASSERT_EQ(information_.StepFirst(), StatusSuccess);
  EXPECT_EQ(information_.DirDepCashAccount(), 99);
  EXPECT_EQ(information_.DirDepFeeExpAccount(), -98);
}

TEST_F(CompanyInformationRead, TextsWithoutAFieldAreEmpty) {
  information_.CompanySpecial1a("a");
  information_.CompanySpecial1b("b");
  information_.CompanySpecial1c("c");
  information_.CompanySpecial1d("d");
  EXPECT_EQ(information_.CompanySpecial1a(), "");
  EXPECT_EQ(information_.CompanySpecial1b(), "");
  EXPECT_EQ(information_.CompanySpecial1c(), "");
  EXPECT_EQ(information_.CompanySpecial1d(), "");
}

}  // namespace
}  // namespace larkmoor
