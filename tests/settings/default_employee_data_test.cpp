// The class DefaultEmployeeData: two rows of the settings that are opened, read and rewritten
// together and answer with one number, and from release 19 on a file of payroll fields beside them.
// The payroll fields are told of in default_employee_data_fields_test.cpp, the accounts in
// settings_accounts_test.cpp.
#include "engine/records/default_employee_data.h"

#include <cstdint>
#include <filesystem>
#include <ostream>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include <larkmoor/settings/default_employee_data.h>
#include <larkmoor/status.h>
#include <larkmoor/variant.h>

#include "automation/automation.h"
#include "engine/records/default_w2_data.h"
#include "engine/records/employee_aux1.h"
#include "engine/runtime_error.h"
#include "engine/tovrin_file.h"
#include "engine/tovrin_file_names.h"
#include "support/child_process.h"
#include "support/company.h"
#include "support/errors.h"
#include "support/failing_disk.h"
#include "support/payroll_files.h"
#include "support/protection.h"
#include "support/read_only_file.h"
#include "support/record_files.h"
#include "support/settings_row.h"
#include "support/taken_away.h"

namespace larkmoor {
namespace {

using test::CapturedMessages;
using test::Company;
using test::IsHeldOpen;
using test::Protection;
using test::RaisedNumber;
using test::SettingsRow;
using test::TakenAway;

/// A company of a release and an object that is not open.
class DefaultEmployeeDataTest : public testing::Test {
 protected:
  explicit DefaultEmployeeDataTest(double release = 19.0) : company_(release) {}

  std::filesystem::path File(std::string_view name) const { return company_.Folder() / name; }
  std::filesystem::path GeneralFile() const { return File(TovrinFileNames::GeneralFile()); }
  std::filesystem::path FieldsFile() const { return File(TovrinFileNames::EmployeeAuxFile1()); }

  void OpenAndRead() {
    ASSERT_EQ(payroll_.OpenFile(), StatusSuccess);
    ASSERT_EQ(payroll_.Read(), StatusSuccess);
  }

  Company company_;
  SettingsRow first_{company_.Folder(), DefaultEmployeeDataRecord::Describe()};
  SettingsRow second_{company_.Folder(), DefaultW2DataRecord::Describe()};
  DefaultEmployeeData payroll_;
};

/// Data below release 19, in which payroll fields are arrays of the first row.
class DefaultEmployeeDataBelow19 : public DefaultEmployeeDataTest {
 protected:
  DefaultEmployeeDataBelow19() : DefaultEmployeeDataTest(18.9) {}
};

/// An object with both rows in hand, and values in them on file.
class DefaultEmployeeDataRows : public DefaultEmployeeDataTest {
 protected:
  DefaultEmployeeDataRows() {
    first_.Set(DefaultEmployeeDataRecord::NextCheck, "100");
    second_.Set(DefaultW2DataRecord::State, "GA");
    OpenAndRead();
  }

  Variant StoredNextCheck() { return first_.Value(DefaultEmployeeDataRecord::NextCheck); }
  Variant StoredState() { return second_.Value(DefaultW2DataRecord::State); }
};

using DefaultEmployeeDataOpening = DefaultEmployeeDataTest;
using DefaultEmployeeDataReading = DefaultEmployeeDataRows;
using DefaultEmployeeDataWriting = DefaultEmployeeDataRows;
using DefaultEmployeeDataClosing = DefaultEmployeeDataRows;

// --- Opening ---

TEST_F(DefaultEmployeeDataOpening, OpensThePayrollFieldsFromRelease19On) {
  const TakenAway noChart(File(TovrinFileNames::ChartFile()));
  ASSERT_EQ(payroll_.OpenFile(), StatusSuccess);
  EXPECT_TRUE(IsHeldOpen(File("General.dat")));
  EXPECT_TRUE(IsHeldOpen(File("EmployeeAux1.dat")));
}

TEST_F(DefaultEmployeeDataBelow19, OpensNoPayrollFields) {
  const TakenAway away(FieldsFile());
  ASSERT_EQ(payroll_.OpenFile(), StatusSuccess);
  EXPECT_TRUE(IsHeldOpen(GeneralFile()));
  EXPECT_EQ(payroll_.Read(), StatusSuccess);
  EXPECT_EQ(payroll_.Update(), StatusSuccess);
  EXPECT_EQ(payroll_.CloseFile(), StatusSuccess);
}

TEST_F(DefaultEmployeeDataOpening, OperationsBeforeOpenFileAnswerForBothRows) {
  EXPECT_EQ(payroll_.Read(), 3003);
  EXPECT_EQ(payroll_.Update(), 3003);
  EXPECT_EQ(payroll_.CloseFile(), StatusSuccess);
}

TEST_F(DefaultEmployeeDataOpening, ShowsBlankRows) {
  first_.Set(DefaultEmployeeDataRecord::NextCheck, "100");
  second_.Set(DefaultW2DataRecord::State, "GA");
  ASSERT_EQ(payroll_.OpenFile(), StatusSuccess);
  EXPECT_EQ(payroll_.NextCheck(), "");
  EXPECT_EQ(payroll_.State(), "");
}

TEST_F(DefaultEmployeeDataOpening, AnswersForBothRowsAndCanBeTriedAgain) {
  {
    const TakenAway away(GeneralFile());
    EXPECT_EQ(payroll_.OpenFile(), 12012);
    EXPECT_EQ(payroll_.Read(), 3003);
    EXPECT_EQ(payroll_.CloseFile(), StatusSuccess);
  }
  ASSERT_NO_FATAL_FAILURE(OpenAndRead());
}

TEST_F(DefaultEmployeeDataOpening, AnswersForBothRowsOfAFileOfAnotherKind) {
  test::WriteFile(GeneralFile(), std::string(8192, 'x'));
  EXPECT_EQ(payroll_.OpenFile(), 30030);
}

// 51 of both rows is 51051, and no Integer.
TEST_F(DefaultEmployeeDataOpening, OverflowsWhereBothRowsAnswer33OrMore) {
  {
    const Protection protection(GeneralFile(), /*allowRead=*/false);
    EXPECT_EQ(RaisedNumber([&] { return payroll_.OpenFile(); }), errors::Overflow);
    EXPECT_EQ(payroll_.CloseFile(), StatusSuccess);
  }
  ASSERT_NO_FATAL_FAILURE(OpenAndRead());
}

TEST_F(DefaultEmployeeDataOpening, NeedsSettingsThatCanBeWritten) {
  test::WhereOnlyThisIsReadOnly(GeneralFile(), [] {
    DefaultEmployeeData payroll;
    EXPECT_EQ(RaisedNumber([&] { return payroll.OpenFile(); }), errors::Overflow);
  });
}

TEST_F(DefaultEmployeeDataOpening, OverflowsWithoutThePayrollFieldsAndCanBeTriedAgain) {
  {
    const TakenAway away(FieldsFile());
    EXPECT_EQ(RaisedNumber([&] { return payroll_.OpenFile(); }), errors::Overflow);
  }
  ASSERT_NO_FATAL_FAILURE(OpenAndRead());
}

TEST_F(DefaultEmployeeDataOpening, OverflowsWherePayrollFieldsAreProtected) {
  test::ProtectFile(FieldsFile(), /*allowRead=*/false);
  EXPECT_EQ(RaisedNumber([&] { return payroll_.OpenFile(); }), errors::Overflow);
}

// Employees open the file for reading only; here it is written to.
TEST_F(DefaultEmployeeDataOpening, OverflowsWherePayrollFieldsCannotBeWritten) {
  test::WhereOnlyThisIsReadOnly(FieldsFile(), [] {
    DefaultEmployeeData payroll;
    EXPECT_EQ(RaisedNumber([&] { return payroll.OpenFile(); }), errors::Overflow);
  });
}

TEST_F(DefaultEmployeeDataRows, SecondOpenFileStartsAnew) {
  EXPECT_EQ(payroll_.OpenFile(), StatusSuccess);
  EXPECT_EQ(payroll_.NextCheck(), "");
  EXPECT_EQ(payroll_.State(), "");
  EXPECT_EQ(payroll_.Update(), 8008);
  EXPECT_EQ(payroll_.CloseFile(), StatusSuccess);
  EXPECT_FALSE(IsHeldOpen(GeneralFile()));
  EXPECT_FALSE(IsHeldOpen(FieldsFile()));
}

// It still counts as open, so the next CloseFile meets files that are not.
TEST_F(DefaultEmployeeDataBelow19, FailedSecondOpenFileReleasesTheRowsAndKeepsTheMark) {
  ASSERT_EQ(payroll_.OpenFile(), StatusSuccess);
  {
    const TakenAway away(GeneralFile());
    EXPECT_EQ(payroll_.OpenFile(), 12012);
  }
  EXPECT_FALSE(IsHeldOpen(GeneralFile()));
  EXPECT_EQ(payroll_.Read(), 3003);
  EXPECT_EQ(payroll_.CloseFile(), StatusFileNotOpen);
  EXPECT_EQ(payroll_.CloseFile(), StatusSuccess);
}

// --- Reading ---

TEST_F(DefaultEmployeeDataReading, ShowsBothRows) {
  EXPECT_EQ(payroll_.NextCheck(), "100");
  EXPECT_EQ(payroll_.State(), "GA");
}

TEST_F(DefaultEmployeeDataReading, AnswersWithTheStatusOfTheFirstRow) {
  first_.Delete();
  second_.Set(DefaultW2DataRecord::State, "AL");
  EXPECT_EQ(payroll_.Read(), 4);
  EXPECT_EQ(payroll_.NextCheck(), "100") << "what is in hand stays";
  EXPECT_EQ(payroll_.State(), "AL");
}

TEST_F(DefaultEmployeeDataReading, AnswersWith1000TimesTheStatusOfTheSecondRow) {
  second_.Delete();
  first_.Set(DefaultEmployeeDataRecord::NextCheck, "101");
  EXPECT_EQ(payroll_.Read(), 4000);
  EXPECT_EQ(payroll_.NextCheck(), "101");
  EXPECT_EQ(payroll_.State(), "GA") << "what is in hand stays";
}

TEST_F(DefaultEmployeeDataReading, AnswersForBothRows) {
  first_.Delete();
  second_.Delete();
  EXPECT_EQ(payroll_.Read(), 4004);
}

TEST_F(DefaultEmployeeDataReading, DropsWhatWasAssigned) {
  payroll_.NextCheck("101");
  payroll_.State("AL");
  ASSERT_EQ(payroll_.Read(), StatusSuccess);
  EXPECT_EQ(payroll_.NextCheck(), "100");
  EXPECT_EQ(payroll_.State(), "GA");
}

// --- Writing ---

TEST_F(DefaultEmployeeDataWriting, RewritesBothRows) {
  payroll_.NextCheck("101");
  payroll_.State("AL");
  ASSERT_EQ(payroll_.Update(), StatusSuccess);
  EXPECT_EQ(StoredNextCheck(), "101");
  EXPECT_EQ(StoredState(), "AL");
}

TEST_F(DefaultEmployeeDataWriting, NeedsBothRowsRead) {
  ASSERT_EQ(payroll_.OpenFile(), StatusSuccess);
  EXPECT_EQ(payroll_.Update(), 8008);
  second_.Delete();
  ASSERT_EQ(payroll_.Read(), 4000);
  payroll_.NextCheck("101");
  EXPECT_EQ(payroll_.Update(), 8000);
  EXPECT_EQ(StoredNextCheck(), "101") << "the first row is written all the same";
}

TEST_F(DefaultEmployeeDataWriting, OfAFirstRowThatAnotherChangedAnswers80AndWritesTheSecond) {
  first_.Set(DefaultEmployeeDataRecord::NextCheck, "102");
  payroll_.NextCheck("101");
  payroll_.State("AL");
  EXPECT_EQ(payroll_.Update(), StatusRecordConflict);
  EXPECT_EQ(StoredNextCheck(), "102");
  EXPECT_EQ(StoredState(), "AL");
}

TEST_F(DefaultEmployeeDataWriting, OfASecondRowThatAnotherChangedOverflowsAndWritesTheFirst) {
  second_.Set(DefaultW2DataRecord::State, "FL");
  payroll_.NextCheck("101");
  payroll_.State("AL");
  EXPECT_EQ(RaisedNumber([&] { return payroll_.Update(); }), errors::Overflow);
  EXPECT_EQ(StoredNextCheck(), "101");
  EXPECT_EQ(StoredState(), "FL");
}

TEST_F(DefaultEmployeeDataWriting, OverflowsWhereOthersMayOnlyRead) {
  ASSERT_EQ(payroll_.CloseFile(), StatusSuccess);
  test::ProtectFile(GeneralFile(), /*allowRead=*/true);
  ASSERT_NO_FATAL_FAILURE(OpenAndRead());
  payroll_.NextCheck("101");
  EXPECT_EQ(RaisedNumber([&] { return payroll_.Update(); }), errors::Overflow);
  EXPECT_EQ(StoredNextCheck(), "100");
}

// --- Closing ---

TEST_F(DefaultEmployeeDataClosing, ClosesAllAndAnswers0EachTime) {
  EXPECT_EQ(payroll_.CloseFile(), StatusSuccess);
  EXPECT_FALSE(IsHeldOpen(GeneralFile()));
  EXPECT_FALSE(IsHeldOpen(FieldsFile()));
  EXPECT_EQ(payroll_.NextCheck(), "");
  EXPECT_EQ(payroll_.State(), "");
  EXPECT_EQ(payroll_.Read(), 3003);
  EXPECT_EQ(payroll_.CloseFile(), StatusSuccess);
}

TEST_F(DefaultEmployeeDataClosing, AnswersWhatTheEngineAnswersAndClosesAllTheSame) {
  ASSERT_EQ(TovrinFile().btReset(), StatusSuccess);
  EXPECT_EQ(payroll_.CloseFile(), StatusFileNotOpen);
  EXPECT_EQ(payroll_.CloseFile(), StatusSuccess);
}

TEST_F(DefaultEmployeeDataClosing, ByDestructionClosesAllAndWritesNoRow) {
  ASSERT_EQ(payroll_.CloseFile(), StatusSuccess);
  {
    DefaultEmployeeData payroll;
    ASSERT_EQ(payroll.OpenFile(), StatusSuccess);
    ASSERT_EQ(payroll.Read(), StatusSuccess);
    payroll.NextCheck("101");
    ASSERT_TRUE(IsHeldOpen(FieldsFile()));
  }
  EXPECT_FALSE(IsHeldOpen(GeneralFile()));
  EXPECT_FALSE(IsHeldOpen(FieldsFile()));
  EXPECT_EQ(StoredNextCheck(), "100");
}

// The payroll fields are closed last, and theirs is the status.
TEST_F(DefaultEmployeeDataClosing, ThatFailsForTheRowsIsNotTold) {
  ASSERT_EQ(payroll_.CloseFile(), StatusSuccess);
  test::RunInChild([&] {
    ASSERT_NO_FATAL_FAILURE(OpenAndRead());
    payroll_.NextCheck("101");
    payroll_.State("AL");
    ASSERT_EQ(payroll_.Update(), StatusSuccess);
    test::BreakDisk(GeneralFile());
    EXPECT_EQ(payroll_.CloseFile(), StatusSuccess);
    EXPECT_EQ(payroll_.Read(), 3003);
  });
}

TEST_F(DefaultEmployeeDataClosing, ThatFailsForThePayrollFieldsTellsTheirStatus) {
  ASSERT_EQ(payroll_.CloseFile(), StatusSuccess);
  test::RunInChild([&] {
    ASSERT_NO_FATAL_FAILURE(OpenAndRead());
    test::PayrollFiles(company_.Folder())
        .defaults.Change({}, 1, EmployeeAux1Record::Amount, Variant(5.5));
    test::BreakDisk(FieldsFile());
    EXPECT_EQ(payroll_.CloseFile(), StatusIOError);
    EXPECT_FALSE(IsHeldOpen(GeneralFile()));
    EXPECT_EQ(payroll_.CloseFile(), StatusSuccess);
  });
}

// --- Which row a property lies in ---

/// A property and the field behind it.
struct Shown {
  std::string_view property;
  std::string_view field = property;
};

const Shown OfTheFirstRow[] = {
    {"CustomFieldLabel"}, {"EmployeeStatus"},   {"GUID_PR", "GUID"}, {"HoursDescription"},
    {"NextCheck"},        {"PRDeductAddOrder"}, {"ReviewRating"},    {"SalaryDescription"},
};

// The second row has also the number of the first row's last change.
const Shown OfTheSecondRow[] = {
    {"Box12Code"},
    {"Box14Name"},
    {"CustomFieldEnabled"},
    {"DisplayLastNameFirst"},
    {"EEDisability"},
    {"EEStateUnemployment"},
    {"EETrainingTax"},
    {"FederalFields"},
    {"FUTA_ER"},
    {"GUID_W2", "GUID"},
    {"LastUpdateCounter_PR"},
    {"LastUpdateCounter_W2"},
    {"Locality"},
    {"MultiCash"},
    {"PRHrPayTypesOrder"},
    {"PRSalPayTypesOrder"},
    {"PRWizBookmark"},
    {"PRWizHighBookmark"},
    {"ReclassificationReq"},
    {"SDI"},
    {"State"},
    {"StateFields"},
    {"StateSpecialA"},
    {"StateSpecialB"},
    {"StateTrainingTax"},
    {"SUI_ER"},
    {"W2Box"},
    {"W2Field2"},
    {"W2Field4"},
    {"W2Field6"},
    {"W2Field7"},
    {"W2Field8"},
    {"W2Field9"},
    {"W2Field10"},
    {"W2Field11"},
    {"W2Field12"},
    {"W2Field13C1"},
    {"W2Field13C2"},
    {"W2Field13C3"},
    {"W2Field13C4"},
    {"W2Field13F1"},
    {"W2Field13F2"},
    {"W2Field13F3"},
    {"W2Field13F4"},
    {"W2Field14"},
    {"W2Field14B"},
    {"W2Field18"},
    {"W2Field21"},
    {"W2Text"},
    {"W2Text2"},
};

/// A row, and what shows its fields.
struct RowShown {
  const char* name;
  const RecordDescription& (*record)();
  std::span<const Shown> properties;
};

void PrintTo(const RowShown& row, std::ostream* out) { *out << row.name; }

class DefaultEmployeeDataRow : public testing::TestWithParam<RowShown> {
 protected:
  /// The element that is looked at where a property repeats.
  static constexpr std::int16_t At = 2;

  static const Field& FieldOf(const Shown& shown) {
    const Field* field = GetParam().record().FindField(shown.field);
    if (field == nullptr) throw std::runtime_error("no field " + std::string(shown.field));
    return *field;
  }
  static int PlaceIn(const Field& field) { return field.count == 0 ? 0 : At; }
  static std::vector<Variant> Indexes(const Field& field) {
    if (field.count == 0) return {};
    return {At};
  }

  /// A value for the property of that number.
  static Variant Sample(const Field& field, std::uint8_t number) {
    switch (field.type) {
      case FieldType::Boolean:
        return true;
      case FieldType::Guid:
        return "C0000000-0000-4000-8000-0000000000" + std::to_string(10 + number);
      case FieldType::Text:
        return "T" + std::to_string(number);
      default:
        return number;
    }
  }

  /// Calls `body(shown, field, sample)` for each property.
  template <typename Body>
  static void ForEach(Body&& body) {
    std::uint8_t number = 10;
    for (const Shown& shown : GetParam().properties) {
      SCOPED_TRACE(shown.property);
      const Field& field = FieldOf(shown);
      body(shown, field, Sample(field, number++));
    }
  }

  Company company_;
  SettingsRow row_{company_.Folder(), GetParam().record()};
  automation::Object payroll_{"DefaultEmployeeData"};
};

TEST_P(DefaultEmployeeDataRow, IsShownFieldByField) {
  ForEach([&](const Shown&, const Field& field, const Variant& sample) {
    row_.Set(field, sample, PlaceIn(field));
  });
  ASSERT_EQ(payroll_.Call("OpenFile"), StatusSuccess);
  ASSERT_EQ(payroll_.Call("Read"), StatusSuccess);
  ForEach([&](const Shown& shown, const Field& field, const Variant& sample) {
    EXPECT_EQ(payroll_.Get(shown.property, Indexes(field)), sample);
  });
}

TEST_P(DefaultEmployeeDataRow, IsWrittenFieldByField) {
  ASSERT_EQ(payroll_.Call("OpenFile"), StatusSuccess);
  ASSERT_EQ(payroll_.Call("Read"), StatusSuccess);
  ForEach([&](const Shown& shown, const Field& field, const Variant& sample) {
    payroll_.Let(shown.property, sample, Indexes(field));
  });
  ASSERT_EQ(payroll_.Call("Update"), StatusSuccess);
  ForEach([&](const Shown&, const Field& field, const Variant& sample) {
    EXPECT_EQ(row_.Value(field, PlaceIn(field)), sample);
  });
}

INSTANTIATE_TEST_SUITE_P(
    Rows, DefaultEmployeeDataRow,
    testing::Values(RowShown{"First", DefaultEmployeeDataRecord::Describe, OfTheFirstRow},
                    RowShown{"Second", DefaultW2DataRecord::Describe, OfTheSecondRow}),
    [](const testing::TestParamInfo<RowShown>& tested) { return std::string(tested.param.name); });

TEST_F(DefaultEmployeeDataRows, NLabelsIsShownOfTheSecondRow) {
  second_.Set(DefaultW2DataRecord::NLabels, std::int16_t{3});
  ASSERT_EQ(payroll_.Read(), StatusSuccess);
  EXPECT_EQ(payroll_.NLabels(), 3);
}

TEST_F(DefaultEmployeeDataRows, PropertiesWithoutAFieldRead0) {
  payroll_.Unknown1(7);
  payroll_.Unknown2(7);
  payroll_.Unknown3(99, 7);
  EXPECT_EQ(payroll_.Unknown1(), 0);
  EXPECT_EQ(payroll_.Unknown2(), 0);
  EXPECT_EQ(payroll_.Unknown3(99), 0);
}

// --- The order of deductions, which tells of a wrong index in a box ---

using DefaultEmployeeDataOrder = DefaultEmployeeDataRows;

TEST_F(DefaultEmployeeDataOrder, IsReadAndAssignedWithoutABox) {
  const CapturedMessages messages;
  payroll_.PRDeductAddOrder(0, 5);
  payroll_.PRDeductAddOrder(40, 6);
  EXPECT_EQ(payroll_.PRDeductAddOrder(0), 5);
  EXPECT_EQ(payroll_.PRDeductAddOrder(40), 6);
  EXPECT_TRUE(messages.Texts().empty());
}

TEST_F(DefaultEmployeeDataOrder, OfAnIndexOutsideShowsABoxAndReads0) {
  const CapturedMessages messages;
  EXPECT_EQ(payroll_.PRDeductAddOrder(99), 0);
  EXPECT_EQ(payroll_.PRDeductAddOrder(-1), 0);
  const std::vector<std::string> expected = {
      "PRDeductAddOrder = 99\r\n9 : Subscript out of range",
      "PRDeductAddOrder = -1\r\n9 : Subscript out of range",
  };
  EXPECT_EQ(messages.Texts(), expected);
}

TEST_F(DefaultEmployeeDataOrder, AssignedAtAnIndexOutsideRaises9WithoutABox) {
  const CapturedMessages messages;
  EXPECT_EQ(RaisedNumber([&] { payroll_.PRDeductAddOrder(99, 5); }), errors::SubscriptOutOfRange);
  EXPECT_TRUE(messages.Texts().empty());
}

TEST_F(DefaultEmployeeDataOrder, AloneHasABox) {
  const CapturedMessages messages;
  EXPECT_EQ(RaisedNumber([&] { return payroll_.HoursDescription(99); }),
            errors::SubscriptOutOfRange);
  EXPECT_EQ(RaisedNumber([&] { return payroll_.PRHrPayTypesOrder(99); }),
            errors::SubscriptOutOfRange);
  EXPECT_TRUE(messages.Texts().empty());
}

}  // namespace
}  // namespace larkmoor
