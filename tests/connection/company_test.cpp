// Making a company folder: what it holds at each release, and what is refused.
#include "engine/records/company.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <filesystem>
#include <initializer_list>
#include <limits>
#include <map>
#include <string>

#include <gtest/gtest.h>

#include <larkmoor/company.h>
#include <larkmoor/connection/btrieve.h>
#include <larkmoor/error.h>
#include <larkmoor/status.h>
#include <larkmoor/tables/address.h>

#include "connection/company_version.h"
#include "connection/shared_state.h"
#include "engine/records/all_records.h"
#include "engine/records/employee_aux1.h"
#include "engine/records/general_row.h"
#include "engine/tovrin_file_names.h"
#include "support/company.h"
#include "support/record_files.h"

namespace larkmoor {
namespace {

using test::OpenRecordFile;
using test::TempFolder;

/// Each file of a folder with its bytes.
using Content = std::map<std::filesystem::path, std::string>;

Content ContentOf(const std::filesystem::path& folder) {
  Content content;
  for (const auto& entry : std::filesystem::recursive_directory_iterator(folder)) {
    content[entry.path()] = entry.is_regular_file() ? test::ReadFile(entry.path()) : "";
  }
  return content;
}

/// Whether making a company there raises an error.
bool IsRefused(const std::filesystem::path& folder, double release = 19.0) {
  try {
    CreateCompany(folder, {.Release = release});
  } catch (const Error& error) {
    EXPECT_NE(error.Description(), "");
    return true;
  }
  return false;
}

/// A folder in which to make companies.
class CreateCompanyTest : public testing::Test {
 protected:
  CreateCompanyTest() { Shared() = SharedState{}; }

  std::filesystem::path Folder() const { return parent_.Path() / "company"; }

  /// The key of a number in a file of the company, null where the file has none.
  static const store::KeyDescription* Key(OpenRecordFile& file, std::int16_t number) {
    return file.File().Description()->FindKey(number);
  }

  TempFolder parent_;
};

/// What holds at every release.
class CreateCompanyOf : public CreateCompanyTest, public testing::WithParamInterface<double> {
 protected:
  CreateCompanyOf() { CreateCompany(Folder(), {.Release = GetParam(), .Name = "Mill & Sons"}); }

  OpenRecordFile Open(std::string_view name, const RecordDescription& description) const {
    return OpenRecordFile(Folder() / name, description);
  }
};

TEST_P(CreateCompanyOf, MakesAFolderThatConnects) {
  Btrieve btrieve;
  EXPECT_EQ(btrieve.Connect(Folder().string()), Variant(StatusSuccess));
  Address address;
  EXPECT_EQ(address.OpenFile(), StatusSuccess);
}

TEST_P(CreateCompanyOf, WritesTheVersionThatReadsBackAsTheRelease) {
  Shared().gCompanyPath = Folder().string() + "/";
  EXPECT_NEAR(ReadCompanyVersion(), GetParam(), 1e-9);
}

TEST_P(CreateCompanyOf, MakesEveryRecordFileForTheRelease) {
  for (const RecordDescription* description : AllRecords()) {
    if (description->base != nullptr) continue;
    OpenRecordFile file(Folder() / description->fileName, *description);
    ASSERT_NE(file.File().Description(), nullptr) << description->fileName;
    EXPECT_DOUBLE_EQ(file.File().btDataVersion(), GetParam()) << description->fileName;
    EXPECT_EQ(file.File().Description()->recordLength, description->LengthFor(GetParam()))
        << description->fileName;
    EXPECT_NE(Key(file, 0), nullptr) << description->fileName << " has a key number 0";
  }
}

TEST_P(CreateCompanyOf, WritesTheCompanyRecordWithTheName) {
  OpenRecordFile company(Folder() / TovrinFileNames::CompanyFile(), CompanyRecord::Describe());
  EXPECT_EQ(company.File().btRecordCount(), 1);
  ASSERT_EQ(company.File().btStepFirst(), StatusSuccess);
  EXPECT_EQ(company.Record().GetText(CompanyRecord::CompanyName), "Mill & Sons");
}

TEST_P(CreateCompanyOf, WritesTheRowsOfTheGeneralFile) {
  OpenRecordFile general(Folder() / TovrinFileNames::GeneralFile(), GeneralRowRecord::Describe());
  for (const std::int16_t row : std::initializer_list<std::int16_t>{1, 2, 3, 4, 5, 7, 8}) {
    EXPECT_EQ(general.ReadRow(row), StatusSuccess) << row;
    EXPECT_EQ(general.Record().GetInteger(GeneralRowRecord::RowType), row);
  }
  EXPECT_EQ(general.File().btRecordCount(), 7);
}

TEST_P(CreateCompanyOf, WritesThePayrollFieldsFromRelease19On) {
  OpenRecordFile fields(Folder() / TovrinFileNames::EmployeeAuxFile1(),
                        EmployeeAux1Record::Describe());
  const std::int32_t expected = GetParam() >= 19.0 ? 80 : 0;
  EXPECT_EQ(fields.File().btRecordCount(), expected);
  std::int32_t number = 0;
  for (Status status = fields.File().btGetFirst(0); status == StatusSuccess;
       status = fields.File().btGetNext(0)) {
    EXPECT_EQ(fields.Record().GetLong(EmployeeAux1Record::RowNumber), number++);
  }
}

TEST_P(CreateCompanyOf, LeavesTheOtherFilesEmpty) {
  Shared().gCompanyPath = Folder().string() + "/";
  Address address;
  ASSERT_EQ(address.OpenFile(), StatusSuccess);
  EXPECT_EQ(address.RecordCount(), 0);
}

TEST_P(CreateCompanyOf, LeavesNoFileOpen) {
  for (const RecordDescription* description : AllRecords()) {
    if (description->base != nullptr) continue;
    EXPECT_FALSE(test::IsHeldOpen(Folder() / description->fileName)) << description->fileName;
  }
}

TEST_P(CreateCompanyOf, IsNotDoneTwice) {
  const Content before = ContentOf(Folder());
  EXPECT_TRUE(IsRefused(Folder(), GetParam()));
  EXPECT_TRUE(ContentOf(Folder()) == before);
}

INSTANTIATE_TEST_SUITE_P(Releases, CreateCompanyOf,
                         testing::Values(8.0, 8.5, 10.9, 11.5, 12.9, 13.0, 18.0, 19.0),
                         [](const auto& tested) {
                           return "Release" + std::to_string(std::lround(tested.param * 10));
                         });

// --- Options ---

TEST_F(CreateCompanyTest, MakesRelease19WithoutANameWhereNothingIsSaid) {
  CreateCompany(Folder());
  OpenRecordFile company(Folder() / TovrinFileNames::CompanyFile(), CompanyRecord::Describe());
  EXPECT_EQ(company.File().btDataVersion(), 19.0);
  ASSERT_EQ(company.File().btStepFirst(), StatusSuccess);
  EXPECT_EQ(company.Record().GetText(CompanyRecord::CompanyName), "");
}

TEST_F(CreateCompanyTest, TakesANameWithAccents) {
  CreateCompany(Folder(), {.Name = "Soci\u00e9t\u00e9 G\u00e9n\u00e9rale"});
  OpenRecordFile company(Folder() / TovrinFileNames::CompanyFile(), CompanyRecord::Describe());
  ASSERT_EQ(company.File().btStepFirst(), StatusSuccess);
  EXPECT_EQ(company.Record().GetText(CompanyRecord::CompanyName),
            "Soci\u00e9t\u00e9 G\u00e9n\u00e9rale");
}

TEST_F(CreateCompanyTest, MakesTheFoldersAboveToo) {
  CreateCompany(Folder() / "of" / "many");
  EXPECT_TRUE(std::filesystem::exists(Folder() / "of" / "many" / "VERSION.TXT"));
}

TEST_F(CreateCompanyTest, ChangesNothingOfTheThreadsConnection) {
  const test::Company current;
  Address address;
  ASSERT_EQ(address.OpenFile(), StatusSuccess);
  ASSERT_EQ(address.Insert(), StatusSuccess);
  CreateCompany(Folder());
  EXPECT_EQ(Shared().gCompanyPath, current.Path());
  EXPECT_EQ(Shared().gConnectCount, 0);
  EXPECT_EQ(address.StepFirst(), StatusSuccess);
}

// --- Keys by release ---

TEST_F(CreateCompanyTest, Below13TransactionNumbersTakeTwoBytesOfTheKey) {
  CreateCompany(Folder(), {.Release = 12.9});
  OpenRecordFile headers(Folder() / TovrinFileNames::JrnlHdrFile(), *FindRecord("JrnlHdr"));
  ASSERT_NE(Key(headers, 0), nullptr);
  EXPECT_EQ(Key(headers, 0)->Width(), 8U);
  EXPECT_NE(Key(headers, 5), nullptr) << "the record number's own key";
  EXPECT_NE(Key(headers, 2), nullptr) << "the reference's own key";
}

TEST_F(CreateCompanyTest, From13OnTransactionNumbersTakeFourBytesOfTheKey) {
  CreateCompany(Folder(), {.Release = 13.0});
  OpenRecordFile headers(Folder() / TovrinFileNames::JrnlHdrFile(), *FindRecord("JrnlHdr"));
  ASSERT_NE(Key(headers, 0), nullptr);
  EXPECT_EQ(Key(headers, 0)->Width(), 10U);
  EXPECT_NE(Key(headers, 1), nullptr) << "the record number's key";
  EXPECT_NE(Key(headers, 4), nullptr) << "the reference's key";
}

// --- What is refused ---

TEST_F(CreateCompanyTest, RefusesReleasesOutOfRangeAndLeavesNothing) {
  for (const double release :
       {7.99, 0.0, -8.0, 19.1, 1e300, std::numeric_limits<double>::infinity(),
        std::numeric_limits<double>::quiet_NaN()}) {
    EXPECT_TRUE(IsRefused(Folder(), release)) << release;
    EXPECT_FALSE(std::filesystem::exists(Folder())) << release;
  }
}

TEST_F(CreateCompanyTest, RefusesAFolderWithAVersionFileAndLeavesItAsItWas) {
  std::filesystem::create_directory(Folder());
  test::WriteFile(Folder() / "VERSION.TXT", "12.00");
  const Content before = ContentOf(Folder());
  EXPECT_TRUE(IsRefused(Folder()));
  EXPECT_TRUE(ContentOf(Folder()) == before);
}

TEST_F(CreateCompanyTest, RefusesAFolderWithARecordFileAndLeavesItAsItWas) {
  std::filesystem::create_directory(Folder());
  test::WriteFile(Folder() / "Address.dat", "somebody's addresses");
  const Content before = ContentOf(Folder());
  EXPECT_TRUE(IsRefused(Folder()));
  EXPECT_TRUE(ContentOf(Folder()) == before);
}

// File names are the same whatever their case, so this one stands in the way of "Address.dat".
TEST_F(CreateCompanyTest, RefusesAFolderWithARecordFileInAnotherCase) {
  std::filesystem::create_directory(Folder());
  test::WriteFile(Folder() / "ADDRESS.DAT", "somebody's addresses");
  const Content before = ContentOf(Folder());
  EXPECT_TRUE(IsRefused(Folder()));
  EXPECT_TRUE(ContentOf(Folder()) == before);
}

TEST_F(CreateCompanyTest, RefusesAFileInPlaceOfTheFolderAndLeavesItAsItWas) {
  test::WriteFile(Folder(), "no folder");
  EXPECT_TRUE(IsRefused(Folder()));
  EXPECT_EQ(test::ReadFile(Folder()), "no folder");
  EXPECT_TRUE(IsRefused(Folder() / "below"));
  EXPECT_EQ(test::ReadFile(Folder()), "no folder");
}

TEST_F(CreateCompanyTest, RefusesAnEmptyPath) { EXPECT_TRUE(IsRefused({})); }

TEST_F(CreateCompanyTest, KeepsOtherFilesOfTheFolder) {
  std::filesystem::create_directory(Folder());
  test::WriteFile(Folder() / "Notes.txt", "to be read first");
  CreateCompany(Folder());
  EXPECT_EQ(test::ReadFile(Folder() / "Notes.txt"), "to be read first");
  Btrieve btrieve;
  EXPECT_EQ(btrieve.Connect(Folder().string()), Variant(StatusSuccess));
}

TEST_F(CreateCompanyTest, RefusesANameThatIsNoUtf8AndLeavesNothing) {
  EXPECT_THROW(CreateCompany(Folder(), {.Name = "\xff\xfe"}), Error);
  EXPECT_FALSE(std::filesystem::exists(Folder()));
}

}  // namespace
}  // namespace larkmoor
