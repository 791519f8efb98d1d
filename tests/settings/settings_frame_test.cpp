// What the classes over one row of the company's settings have in common: the row is always there,
// and is opened, read, rewritten as a whole and closed. The accounts that some of them show are
// told of in settings_accounts_test.cpp, and DefaultEmployeeData, which has two rows, in a file of
// its own.
#include <cstdint>
#include <filesystem>
#include <optional>
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
#include "support/protection.h"
#include "support/record_files.h"
#include "support/settings_row.h"
#include "support/taken_away.h"

namespace larkmoor {
namespace {

using automation::Object;
using test::Company;
using test::IsHeldOpen;
using test::OpenRecordFile;
using test::Protection;
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

/// An object of a class, and its row on file.
class Settings {
 public:
  Settings(const SettingsClass& type, const std::filesystem::path& folder)
      : type_(type), row_(folder, type.record()), object_(type.name) {}

  Status OpenFile() { return Do("OpenFile"); }
  Status Read() { return Do("Read"); }
  Status Update() { return Do("Update"); }
  Status CloseFile() { return Do("CloseFile"); }
  void OpenAndRead() {
    ASSERT_EQ(OpenFile(), StatusSuccess);
    ASSERT_EQ(Read(), StatusSuccess);
  }

  // The property, in the object and on file.
  Variant Get() { return object_.Get(type_.property, Indexes()); }
  void Let(const Variant& value) { object_.Let(type_.property, value, Indexes()); }
  Variant Stored() { return row_.Value(*type_.field, type_.index.value_or(0)); }
  void Store(const Variant& value) { row_.Set(*type_.field, value, type_.index.value_or(0)); }

  const SettingsRow& Row() { return row_; }
  std::int16_t RowType() { return type_.record().rowMark->value; }
  /// Another object of the class.
  Settings Another(const std::filesystem::path& folder) { return Settings(type_, folder); }

 private:
  Status Do(std::string_view operation) { return object_.Call(operation).ToInteger(); }
  std::vector<Variant> Indexes() {
    if (!type_.index) return {};
    return {*type_.index};
  }

  const SettingsClass& type_;
  SettingsRow row_;
  Object object_;
};

class SettingsFrame : public testing::Test {
 protected:
  std::filesystem::path File(std::string_view name) const { return company_.Folder() / name; }
  std::filesystem::path GeneralFile() const { return File(TovrinFileNames::GeneralFile()); }

  /// Runs `body(settings, value, otherValue)` for each class, with an object that is not open and a
  /// row in which its property has the value.
  template <typename Body>
  void ForEachClass(Body&& body) {
    for (const SettingsClass& type : Classes) {
      SCOPED_TRACE(type.name);
      Settings settings(type, company_.Folder());
      settings.Store(type.value);
      body(settings, type.value, type.otherValue);
    }
  }

  /// The bytes of all rows but that of the settings.
  std::vector<RecordBytes> RowsBut(Settings& settings) {
    std::vector<RecordBytes> rows;
    OpenRecordFile file(GeneralFile(), GeneralRowRecord::Describe());
    for (Status status = file.File().btStepFirst(); status == StatusSuccess;
         status = file.File().btStepNext()) {
      const std::int16_t rowType = file.Record().GetInteger(GeneralRowRecord::RowType);
      if (rowType != settings.RowType()) rows.push_back(file.Record().Bytes());
    }
    return rows;
  }

  const Variant blank_ = {};  ///< equal to 0 and to the empty text
  Company company_;
};

// --- Opening ---

TEST_F(SettingsFrame, OpensTheGeneralFileAndNoOther) {
  const TakenAway noChart(File(TovrinFileNames::ChartFile()));
  ForEachClass([&](Settings& settings, const Variant&, const Variant&) {
    ASSERT_EQ(settings.OpenFile(), StatusSuccess);
    EXPECT_TRUE(IsHeldOpen(File("General.dat")));
    EXPECT_EQ(settings.Read(), StatusSuccess);
    EXPECT_EQ(settings.Update(), StatusSuccess);
    EXPECT_EQ(settings.CloseFile(), StatusSuccess);
  });
}

TEST_F(SettingsFrame, OperationsBeforeOpenFileAnswer3) {
  ForEachClass([](Settings& settings, const Variant&, const Variant&) {
    EXPECT_EQ(settings.Read(), StatusFileNotOpen);
    EXPECT_EQ(settings.Update(), StatusFileNotOpen);
    EXPECT_EQ(settings.CloseFile(), StatusSuccess);
  });
}

TEST_F(SettingsFrame, OpenFileShowsABlankRow) {
  ForEachClass([&](Settings& settings, const Variant&, const Variant&) {
    ASSERT_EQ(settings.OpenFile(), StatusSuccess);
    EXPECT_EQ(settings.Get(), blank_);
  });
}

TEST_F(SettingsFrame, OpenFileAnswers12WithoutTheFileAndCanBeTriedAgain) {
  ForEachClass([&](Settings& settings, const Variant& value, const Variant&) {
    {
      const TakenAway away(GeneralFile());
      EXPECT_EQ(settings.OpenFile(), StatusFileNotFound);
      EXPECT_EQ(settings.Read(), StatusFileNotOpen);
      EXPECT_EQ(settings.CloseFile(), StatusSuccess);
    }
    ASSERT_NO_FATAL_FAILURE(settings.OpenAndRead());
    EXPECT_EQ(settings.Get(), value);
  });
}

TEST_F(SettingsFrame, OpenFileTellsWhatProtectsTheFile) {
  ForEachClass([&](Settings& settings, const Variant&, const Variant&) {
    const Protection protection(GeneralFile(), /*allowRead=*/false);
    EXPECT_EQ(settings.OpenFile(), StatusInvalidOwner);
  });
}

TEST_F(SettingsFrame, OpenFileNeedsAFileThatCanBeWritten) {
  test::WhereReadOnly(GeneralFile(), [&] {
    for (const SettingsClass& type : Classes) {
      SCOPED_TRACE(type.name);
      EXPECT_EQ(Settings(type, company_.Folder()).OpenFile(), StatusPermission);
    }
  });
}

TEST_F(SettingsFrame, SecondOpenFileStartsAnew) {
  ForEachClass([&](Settings& settings, const Variant&, const Variant&) {
    ASSERT_NO_FATAL_FAILURE(settings.OpenAndRead());
    EXPECT_EQ(settings.OpenFile(), StatusSuccess);
    EXPECT_EQ(settings.Get(), blank_);
    EXPECT_EQ(settings.Update(), StatusInvalidPositioning);
    EXPECT_EQ(settings.CloseFile(), StatusSuccess);
    EXPECT_FALSE(IsHeldOpen(GeneralFile()));
  });
}

// It still counts as open, so the next CloseFile meets a file that is not.
TEST_F(SettingsFrame, FailedSecondOpenFileReleasesTheFileAndKeepsTheMark) {
  ForEachClass([&](Settings& settings, const Variant&, const Variant&) {
    ASSERT_EQ(settings.OpenFile(), StatusSuccess);
    {
      const TakenAway away(GeneralFile());
      EXPECT_EQ(settings.OpenFile(), StatusFileNotFound);
    }
    EXPECT_FALSE(IsHeldOpen(GeneralFile()));
    EXPECT_EQ(settings.Read(), StatusFileNotOpen);
    EXPECT_EQ(settings.CloseFile(), StatusFileNotOpen);
    EXPECT_EQ(settings.CloseFile(), StatusSuccess);
  });
}

// --- Reading ---

TEST_F(SettingsFrame, ReadShowsTheRowOfTheClass) {
  ForEachClass([](Settings& settings, const Variant& value, const Variant&) {
    ASSERT_NO_FATAL_FAILURE(settings.OpenAndRead());
    EXPECT_EQ(settings.Get(), value);
  });
}

TEST_F(SettingsFrame, ReadAgainShowsWhatIsOnFileAndDropsWhatWasAssigned) {
  ForEachClass([](Settings& settings, const Variant& value, const Variant& otherValue) {
    ASSERT_NO_FATAL_FAILURE(settings.OpenAndRead());
    settings.Let(otherValue);
    EXPECT_EQ(settings.Read(), StatusSuccess);
    EXPECT_EQ(settings.Get(), value);
    settings.Store(otherValue);
    EXPECT_EQ(settings.Get(), value);
    EXPECT_EQ(settings.Read(), StatusSuccess);
    EXPECT_EQ(settings.Get(), otherValue);
  });
}

TEST_F(SettingsFrame, ReadAnswers4WithoutTheRowAndKeepsWhatIsInHand) {
  ForEachClass([](Settings& settings, const Variant& value, const Variant&) {
    ASSERT_NO_FATAL_FAILURE(settings.OpenAndRead());
    settings.Row().Delete();
    EXPECT_EQ(settings.Read(), StatusKeyNotFound);
    EXPECT_EQ(settings.Get(), value);
    settings.Row().Insert();
    EXPECT_EQ(settings.Read(), StatusSuccess);
  });
}

// --- Writing ---

TEST_F(SettingsFrame, UpdateRewritesTheRowAndNoOther) {
  ForEachClass([&](Settings& settings, const Variant& value, const Variant& otherValue) {
    const std::vector<RecordBytes> otherRows = RowsBut(settings);
    ASSERT_NO_FATAL_FAILURE(settings.OpenAndRead());
    settings.Let(otherValue);
    EXPECT_EQ(settings.Stored(), value);
    ASSERT_EQ(settings.Update(), StatusSuccess);
    EXPECT_EQ(settings.Stored(), otherValue);
    EXPECT_TRUE(RowsBut(settings) == otherRows);
  });
}

TEST_F(SettingsFrame, UpdateMayBeRepeatedWithoutAnotherRead) {
  ForEachClass([](Settings& settings, const Variant& value, const Variant& otherValue) {
    ASSERT_NO_FATAL_FAILURE(settings.OpenAndRead());
    settings.Let(otherValue);
    ASSERT_EQ(settings.Update(), StatusSuccess);
    settings.Let(value);
    ASSERT_EQ(settings.Update(), StatusSuccess);
    EXPECT_EQ(settings.Stored(), value);
  });
}

TEST_F(SettingsFrame, UpdateWithoutReadAnswers8) {
  ForEachClass([](Settings& settings, const Variant& value, const Variant& otherValue) {
    ASSERT_EQ(settings.OpenFile(), StatusSuccess);
    settings.Let(otherValue);
    EXPECT_EQ(settings.Update(), StatusInvalidPositioning);
    EXPECT_EQ(settings.Stored(), value);
  });
}

TEST_F(SettingsFrame, UpdateAnswers80WhereAnotherChangedTheRowSince) {
  ForEachClass([&](Settings& settings, const Variant& value, const Variant& otherValue) {
    ASSERT_NO_FATAL_FAILURE(settings.OpenAndRead());
    Settings another = settings.Another(company_.Folder());
    ASSERT_NO_FATAL_FAILURE(another.OpenAndRead());
    another.Let(otherValue);
    EXPECT_EQ(settings.Get(), value) << "each has a row of its own in hand";
    ASSERT_EQ(another.Update(), StatusSuccess);
    EXPECT_EQ(settings.Update(), StatusRecordConflict);
    EXPECT_EQ(settings.Stored(), otherValue);
    ASSERT_EQ(settings.Read(), StatusSuccess);
    EXPECT_EQ(settings.Update(), StatusSuccess);
  });
}

TEST_F(SettingsFrame, UpdateAnswers46WhereOthersMayOnlyRead) {
  ForEachClass([&](Settings& settings, const Variant& value, const Variant& otherValue) {
    const Protection protection(GeneralFile(), /*allowRead=*/true);
    ASSERT_NO_FATAL_FAILURE(settings.OpenAndRead());
    EXPECT_EQ(settings.Get(), value);
    settings.Let(otherValue);
    EXPECT_EQ(settings.Update(), StatusAccessDenied);
    EXPECT_EQ(settings.CloseFile(), StatusSuccess);
  });
}

// --- Closing ---

TEST_F(SettingsFrame, CloseFileClosesAndAnswers0EachTime) {
  ForEachClass([&](Settings& settings, const Variant&, const Variant&) {
    ASSERT_NO_FATAL_FAILURE(settings.OpenAndRead());
    EXPECT_EQ(settings.CloseFile(), StatusSuccess);
    EXPECT_FALSE(IsHeldOpen(GeneralFile()));
    EXPECT_EQ(settings.Get(), blank_);
    EXPECT_EQ(settings.Read(), StatusFileNotOpen);
    EXPECT_EQ(settings.Update(), StatusFileNotOpen);
    EXPECT_EQ(settings.CloseFile(), StatusSuccess);
  });
}

TEST_F(SettingsFrame, CloseFileAnswersWhatTheEngineAnswersAndClosesAllTheSame) {
  ForEachClass([](Settings& settings, const Variant&, const Variant&) {
    ASSERT_EQ(settings.OpenFile(), StatusSuccess);
    ASSERT_EQ(TovrinFile().btReset(), StatusSuccess);
    EXPECT_EQ(settings.CloseFile(), StatusFileNotOpen);
    EXPECT_EQ(settings.CloseFile(), StatusSuccess);
  });
}

TEST_F(SettingsFrame, CloseFileThatFailsTellsItsStatusAndClosesAllTheSame) {
  ForEachClass([&](Settings& settings, const Variant&, const Variant& otherValue) {
    test::RunInChild([&] {
      ASSERT_NO_FATAL_FAILURE(settings.OpenAndRead());
      settings.Let(otherValue);
      ASSERT_EQ(settings.Update(), StatusSuccess);
      test::BreakDisk(GeneralFile());
      EXPECT_EQ(settings.CloseFile(), StatusIOError);
      EXPECT_EQ(settings.Read(), StatusFileNotOpen);
      EXPECT_EQ(settings.CloseFile(), StatusSuccess);
    });
  });
}

TEST_F(SettingsFrame, DestructionClosesTheFileAndWritesNothing) {
  ForEachClass([&](Settings& settings, const Variant& value, const Variant& otherValue) {
    {
      Settings gone = settings.Another(company_.Folder());
      ASSERT_NO_FATAL_FAILURE(gone.OpenAndRead());
      gone.Let(otherValue);
      ASSERT_TRUE(IsHeldOpen(GeneralFile()));
    }
    EXPECT_FALSE(IsHeldOpen(GeneralFile()));
    EXPECT_EQ(settings.Stored(), value);
  });
}

}  // namespace
}  // namespace larkmoor
