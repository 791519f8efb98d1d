// What the classes over one row of the company's settings have in common: the row is always there,
// and is opened, read, rewritten as a whole and closed. The accounts that some of them show are
// told of in settings_accounts_test.cpp, and DefaultEmployeeData, which has two rows, in a file of
// its own.
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include <larkmoor/status.h>
#include <larkmoor/variant.h>

#include "automation/automation.h"
#include "engine/records/default_customer_data.h"
#include "engine/records/default_job_data.h"
#include "engine/records/default_ship_method.h"
#include "engine/records/default_vendor_data.h"
#include "engine/records/general_data.h"
#include "engine/records/general_row.h"
#include "engine/tovrin_file.h"
#include "engine/tovrin_file_names.h"
#include "support/child_process.h"
#include "support/company.h"
#include "support/failing_disk.h"
#include "support/record_files.h"
#include "support/settings_row.h"
#include "support/taken_away.h"

namespace larkmoor {
namespace {

using automation::Object;
using test::Company;
using test::IsHeldOpen;
using test::OpenRecordFile;
using test::SettingsRow;
using test::TakenAway;

/// A class, the record of its row, and one of its properties with the field behind it.
struct SettingsClass {
  const char* name;
  const RecordDescription& (*record)();
  const char* property;
  const Field* field;
  Variant value;       ///< one that the property may have
  Variant otherValue;  ///< another one
  std::optional<std::int16_t> index = {};
};

void PrintTo(const SettingsClass& type, std::ostream* out) { *out << type.name; }

const SettingsClass Classes[] = {
    {"GeneralData", GeneralDataRecord::Describe, "CalendarYear", &GeneralDataRecord::CalendarYear,
     std::int16_t{2012}, std::int16_t{2013}},
    {"DefaultCustomerData", DefaultCustomerDataRecord::Describe, "NetDueDays",
     &DefaultCustomerDataRecord::NetDueDays, std::int16_t{21}, std::int16_t{22}},
    {"DefaultStatementData", DefaultCustomerDataRecord::Describe, "PrintOverdueDays",
     &DefaultCustomerDataRecord::PrintOverdueDays, std::int16_t{45}, std::int16_t{46}},
    {"DefaultTaxTypes", DefaultCustomerDataRecord::Describe, "Description",
     &DefaultCustomerDataRecord::TaxTypeDescription, "Freight out", "Other services", 3},
    {"DefaultVendorData", DefaultVendorDataRecord::Describe, "DiscountDays",
     &DefaultVendorDataRecord::DiscountDays, std::int16_t{9}, std::int16_t{11}},
    {"DefaultGLAccounts", DefaultShipMethodRecord::Describe, "Costing",
     &DefaultShipMethodRecord::Costing, std::int16_t{1}, std::int16_t{2}, 4},
    {"DefaultInventoryData", DefaultShipMethodRecord::Describe, "NextWorkTicketNo",
     &DefaultShipMethodRecord::NextWorkTicketNo, "WT-100", "WT-101"},
    {"DefaultPriceLevels", DefaultShipMethodRecord::Describe, "Amount",
     &DefaultShipMethodRecord::PriceLevelAmount, 12.5, 13.5, 5},
    {"DefaultShipMethod", DefaultShipMethodRecord::Describe, "Description",
     &DefaultShipMethodRecord::Description, "Mail boat", "Sledge", 10},
    {"DefaultJobData", DefaultJobDataRecord::Describe, "LaborBurdenPercent",
     &DefaultJobDataRecord::LaborBurdenPercent, 17.5, 18.5},
};

std::string NameOf(const testing::TestParamInfo<SettingsClass>& tested) {
  return tested.param.name;
}

/// An object that is not open, and its row on file with a value in it.
class SettingsFrame : public testing::TestWithParam<SettingsClass> {
 protected:
  SettingsFrame() { Store(GetParam().value); }

  std::filesystem::path File(std::string_view name) const { return company_.Folder() / name; }
  std::filesystem::path GeneralFile() const { return File(TovrinFileNames::GeneralFile()); }

  // The property under test.
  static std::vector<Variant> Index() {
    if (!GetParam().index) return {};
    return {*GetParam().index};
  }
  static Variant Get(Object& object) { return object.Get(GetParam().property, Index()); }
  static void Let(Object& object, const Variant& value) {
    object.Let(GetParam().property, value, Index());
  }

  // What it shows, on file.
  void Store(const Variant& value) {
    row_.Set(*GetParam().field, value, GetParam().index.value_or(0));
  }
  Variant Stored() { return row_.Value(*GetParam().field, GetParam().index.value_or(0)); }

  /// The bytes of all rows but the one under test.
  std::vector<RecordBytes> OtherRows() {
    std::vector<RecordBytes> rows;
    OpenRecordFile file(GeneralFile(), GeneralRowRecord::Describe());
    for (Status status = file.File().btStepFirst(); status == StatusSuccess;
         status = file.File().btStepNext()) {
      const bool isUnderTest =
          file.Record().GetInteger(GeneralRowRecord::RowType) == GetParam().record().rowMark->value;
      if (!isUnderTest) rows.push_back(file.Record().Bytes());
    }
    return rows;
  }

  static Object Made() { return Object(GetParam().name); }
  static Status Do(Object& object, std::string_view operation) {
    return object.Call(operation).ToInteger();
  }
  Status OpenFile() { return Do(settings_, "OpenFile"); }
  Status Read() { return Do(settings_, "Read"); }
  Status Update() { return Do(settings_, "Update"); }
  Status CloseFile() { return Do(settings_, "CloseFile"); }
  Variant Get() { return Get(settings_); }
  void Let(const Variant& value) { Let(settings_, value); }

  void OpenAndRead() {
    ASSERT_EQ(OpenFile(), StatusSuccess);
    ASSERT_EQ(Read(), StatusSuccess);
  }

  const Variant blank_ = {};  ///< equal to 0 and to the empty text
  Company company_;
  SettingsRow row_{company_.Folder(), GetParam().record()};
  Object settings_ = Made();
};

// --- Opening ---

TEST_P(SettingsFrame, OpensTheGeneralFileAndNoOther) {
  const TakenAway noChart(File(TovrinFileNames::ChartFile()));
  ASSERT_EQ(OpenFile(), StatusSuccess);
  EXPECT_TRUE(IsHeldOpen(File("General.dat")));
  EXPECT_EQ(Read(), StatusSuccess);
  EXPECT_EQ(Update(), StatusSuccess);
  EXPECT_EQ(CloseFile(), StatusSuccess);
}

TEST_P(SettingsFrame, OperationsBeforeOpenFileAnswer3) {
  EXPECT_EQ(Read(), StatusFileNotOpen);
  EXPECT_EQ(Update(), StatusFileNotOpen);
  EXPECT_EQ(CloseFile(), StatusSuccess);
}

TEST_P(SettingsFrame, OpenFileShowsABlankRow) {
  ASSERT_EQ(OpenFile(), StatusSuccess);
  EXPECT_EQ(Get(), blank_);
}

TEST_P(SettingsFrame, OpenFileAnswers12WithoutTheFileAndCanBeTriedAgain) {
  {
    const TakenAway away(GeneralFile());
    EXPECT_EQ(OpenFile(), StatusFileNotFound);
    EXPECT_EQ(Read(), StatusFileNotOpen);
    EXPECT_EQ(CloseFile(), StatusSuccess);
  }
  ASSERT_NO_FATAL_FAILURE(OpenAndRead());
  EXPECT_EQ(Get(), GetParam().value);
}

TEST_P(SettingsFrame, OpenFileTellsWhatProtectsTheFile) {
  test::ProtectFile(GeneralFile(), /*allowRead=*/false);
  EXPECT_EQ(OpenFile(), StatusInvalidOwner);
}

TEST_P(SettingsFrame, OpenFileNeedsAFileThatCanBeWritten) {
  test::WhereReadOnly(GeneralFile(), [] {
    Object settings = Made();
    EXPECT_EQ(Do(settings, "OpenFile"), StatusPermission);
  });
}

TEST_P(SettingsFrame, SecondOpenFileStartsAnew) {
  ASSERT_NO_FATAL_FAILURE(OpenAndRead());
  EXPECT_EQ(OpenFile(), StatusSuccess);
  EXPECT_EQ(Get(), blank_);
  EXPECT_EQ(Update(), StatusInvalidPositioning);
  EXPECT_EQ(CloseFile(), StatusSuccess);
  EXPECT_FALSE(IsHeldOpen(GeneralFile()));
}

// It still counts as open, so the next CloseFile meets a file that is not.
TEST_P(SettingsFrame, FailedSecondOpenFileReleasesTheFileAndKeepsTheMark) {
  ASSERT_EQ(OpenFile(), StatusSuccess);
  {
    const TakenAway away(GeneralFile());
    EXPECT_EQ(OpenFile(), StatusFileNotFound);
  }
  EXPECT_FALSE(IsHeldOpen(GeneralFile()));
  EXPECT_EQ(Read(), StatusFileNotOpen);
  EXPECT_EQ(CloseFile(), StatusFileNotOpen);
  EXPECT_EQ(CloseFile(), StatusSuccess);
}

// --- Reading ---

TEST_P(SettingsFrame, ReadShowsTheRowOfTheClass) {
  ASSERT_NO_FATAL_FAILURE(OpenAndRead());
  EXPECT_EQ(Get(), GetParam().value);
}

TEST_P(SettingsFrame, ReadAgainShowsWhatIsOnFileAndDropsWhatWasAssigned) {
  ASSERT_NO_FATAL_FAILURE(OpenAndRead());
  Let(GetParam().otherValue);
  EXPECT_EQ(Read(), StatusSuccess);
  EXPECT_EQ(Get(), GetParam().value);
  Store(GetParam().otherValue);
  EXPECT_EQ(Get(), GetParam().value);
  EXPECT_EQ(Read(), StatusSuccess);
  EXPECT_EQ(Get(), GetParam().otherValue);
}

TEST_P(SettingsFrame, ReadAnswers4WithoutTheRowAndKeepsWhatIsInHand) {
  ASSERT_NO_FATAL_FAILURE(OpenAndRead());
  row_.Delete();
  EXPECT_EQ(Read(), StatusKeyNotFound);
  EXPECT_EQ(Get(), GetParam().value);
}

// --- Writing ---

TEST_P(SettingsFrame, UpdateRewritesTheRowAndNoOther) {
  const std::vector<RecordBytes> otherRows = OtherRows();
  ASSERT_NO_FATAL_FAILURE(OpenAndRead());
  Let(GetParam().otherValue);
  EXPECT_EQ(Stored(), GetParam().value);
  ASSERT_EQ(Update(), StatusSuccess);
  EXPECT_EQ(Stored(), GetParam().otherValue);
  EXPECT_TRUE(OtherRows() == otherRows);
}

TEST_P(SettingsFrame, UpdateMayBeRepeatedWithoutAnotherRead) {
  ASSERT_NO_FATAL_FAILURE(OpenAndRead());
  Let(GetParam().otherValue);
  ASSERT_EQ(Update(), StatusSuccess);
  Let(GetParam().value);
  ASSERT_EQ(Update(), StatusSuccess);
  EXPECT_EQ(Stored(), GetParam().value);
}

TEST_P(SettingsFrame, UpdateWithoutReadAnswers8) {
  ASSERT_EQ(OpenFile(), StatusSuccess);
  Let(GetParam().otherValue);
  EXPECT_EQ(Update(), StatusInvalidPositioning);
  EXPECT_EQ(Stored(), GetParam().value);
}

TEST_P(SettingsFrame, UpdateAnswers80WhereAnotherChangedTheRowSince) {
  ASSERT_NO_FATAL_FAILURE(OpenAndRead());
  Object another = Made();
  ASSERT_EQ(Do(another, "OpenFile"), StatusSuccess);
  ASSERT_EQ(Do(another, "Read"), StatusSuccess);
  Let(another, GetParam().otherValue);
  EXPECT_EQ(Get(), GetParam().value) << "each has a row of its own in hand";
  ASSERT_EQ(Do(another, "Update"), StatusSuccess);
  EXPECT_EQ(Update(), StatusRecordConflict);
  EXPECT_EQ(Stored(), GetParam().otherValue);
  ASSERT_EQ(Read(), StatusSuccess);
  EXPECT_EQ(Update(), StatusSuccess);
}

TEST_P(SettingsFrame, UpdateAnswers46WhereOthersMayOnlyRead) {
  test::ProtectFile(GeneralFile(), /*allowRead=*/true);
  ASSERT_NO_FATAL_FAILURE(OpenAndRead());
  EXPECT_EQ(Get(), GetParam().value);
  EXPECT_EQ(Update(), StatusAccessDenied);
}

// --- Closing ---

TEST_P(SettingsFrame, CloseFileClosesAndAnswers0EachTime) {
  ASSERT_NO_FATAL_FAILURE(OpenAndRead());
  EXPECT_EQ(CloseFile(), StatusSuccess);
  EXPECT_FALSE(IsHeldOpen(GeneralFile()));
  EXPECT_EQ(Get(), blank_);
  EXPECT_EQ(Read(), StatusFileNotOpen);
  EXPECT_EQ(Update(), StatusFileNotOpen);
  EXPECT_EQ(CloseFile(), StatusSuccess);
}

TEST_P(SettingsFrame, CloseFileAnswersWhatTheEngineAnswersAndClosesAllTheSame) {
  ASSERT_EQ(OpenFile(), StatusSuccess);
  ASSERT_EQ(TovrinFile().btReset(), StatusSuccess);
  EXPECT_EQ(CloseFile(), StatusFileNotOpen);
  EXPECT_EQ(CloseFile(), StatusSuccess);
}

TEST_P(SettingsFrame, CloseFileThatFailsTellsItsStatusAndClosesAllTheSame) {
  test::RunInChild([&] {
    ASSERT_NO_FATAL_FAILURE(OpenAndRead());
    Let(GetParam().otherValue);
    ASSERT_EQ(Update(), StatusSuccess);
    test::BreakDisk(GeneralFile());
    EXPECT_EQ(CloseFile(), StatusIOError);
    EXPECT_EQ(Read(), StatusFileNotOpen);
    EXPECT_EQ(CloseFile(), StatusSuccess);
  });
}

TEST_P(SettingsFrame, DestructionClosesTheFileAndWritesNothing) {
  {
    Object settings = Made();
    ASSERT_EQ(Do(settings, "OpenFile"), StatusSuccess);
    ASSERT_EQ(Do(settings, "Read"), StatusSuccess);
    Let(settings, GetParam().otherValue);
    ASSERT_TRUE(IsHeldOpen(GeneralFile()));
  }
  EXPECT_FALSE(IsHeldOpen(GeneralFile()));
  EXPECT_EQ(Stored(), GetParam().value);
}

INSTANTIATE_TEST_SUITE_P(Settings, SettingsFrame, testing::ValuesIn(Classes), NameOf);

}  // namespace
}  // namespace larkmoor
