// The payroll of the class Employee. Below release 19 the employee's record holds it in arrays;
// from 19 on six further files do, and the same property shows a row of one of them. What is kept
// of the rows from one access to the next is told in employee_payroll_rows_test.cpp, the accounts
// in employee_charts_test.cpp.
#include <cstdint>
#include <optional>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include <larkmoor/masters/employee.h>
#include <larkmoor/status.h>
#include <larkmoor/variant.h>

#include "automation/automation.h"
#include "engine/records/employee.h"
#include "engine/records/employee_aux1.h"
#include "engine/records/employee_aux2.h"
#include "engine/records/employee_aux3.h"
#include "engine/records/employee_aux4.h"
#include "engine/records/employee_aux5.h"
#include "engine/records/employee_aux6.h"
#include "support/errors.h"
#include "support/payroll_company.h"
#include "support/record_files.h"

namespace larkmoor {
namespace {

using test::OpenRecordFile;
using test::PayrollTest;
using test::RaisedNumber;

/// Indexes that no repeating field has.
constexpr std::int16_t Outside[] = {-32768, -1, 32767};

// --- Payroll fields ---

/// Number of the first row of what the employer pays, less 1; rows of what employees pay come
/// first.
constexpr std::int32_t Employer = 40;

/// A property of the payroll fields, and what stands behind it.
struct FieldProperty {
  const char* name;
  std::int32_t rowsBefore;  ///< rows ahead of that of field 1
  const Field* inRecord;    ///< below release 19
  const Field* inRow;       ///< from 19 on, of the employee
  const Field* inDefault;   ///< from 19 on, of the company; null where that does not count
  Variant sample;           ///< anything but the blank value
  std::optional<std::int16_t> element = {};  ///< the second index, where there are two

  [[nodiscard]] std::int32_t Row(std::int32_t number) const { return number + rowsBefore; }
  [[nodiscard]] int Element() const { return element.value_or(0); }
};

void PrintTo(const FieldProperty& property, std::ostream* out) { *out << property.name; }

const FieldProperty FieldProperties[] = {
    {"EEAdjust", 0, &EmployeeRecord::EEAdjust, &EmployeeAux6Record::Adjust,
     &EmployeeAux1Record::Adjust, std::uint8_t{7}, std::int16_t{2}},
    {"EEAmount", 0, &EmployeeRecord::EEAmount, &EmployeeAux6Record::Amount,
     &EmployeeAux1Record::Amount, 11.5},
    {"EECalcName", 0, &EmployeeRecord::EECalcName, &EmployeeAux6Record::CalcName,
     &EmployeeAux1Record::CalcName, "Union dues"},
    {"EECalcOn", 0, &EmployeeRecord::EECalcOn, &EmployeeAux6Record::CalcOn,
     &EmployeeAux1Record::CalcOn, true},
    {"EEUseCustom", 0, &EmployeeRecord::EEUseCustom, &EmployeeAux6Record::UseCustom, nullptr, true},
    {"ERAdjust", Employer, &EmployeeRecord::ERAdjust, &EmployeeAux6Record::Adjust,
     &EmployeeAux1Record::Adjust, std::uint8_t{7}, std::int16_t{1}},
    {"ERCalcName", Employer, &EmployeeRecord::ERCalcName, &EmployeeAux6Record::CalcName,
     &EmployeeAux1Record::CalcName, "Union dues"},
    {"ERCalcOn", Employer, &EmployeeRecord::ERCalcOn, &EmployeeAux6Record::CalcOn,
     &EmployeeAux1Record::CalcOn, true},
    {"ERUseCustom", Employer, &EmployeeRecord::ERUseCustom, &EmployeeAux6Record::UseCustom, nullptr,
     true},
};

std::string NameOfField(const testing::TestParamInfo<FieldProperty>& tested) {
  return tested.param.name;
}

/// The property under test, reached by its name on an object that has ADAMS in hand.
class EmployeeField : public PayrollTest, public testing::WithParamInterface<FieldProperty> {
 protected:
  explicit EmployeeField(double release = 19.0) : PayrollTest(release) {
    EXPECT_EQ(Call("OpenFile"), StatusSuccess);
    EXPECT_EQ(Call("GetEqual", {"ADAMS"}), StatusSuccess);
  }

  Variant Get(std::int16_t number) { return byName_.Get(GetParam().name, Indexes(number)); }
  void Let(std::int16_t number, const Variant& value) {
    byName_.Let(GetParam().name, value, Indexes(number));
  }
  Variant Call(std::string_view operation, std::vector<Variant> arguments = {}) {
    return byName_.Call(operation, std::move(arguments));
  }

  static const Variant& Sample() { return GetParam().sample; }
  static bool IsBlank(const Variant& value) { return value == 0 || value == ""; }
  static bool HasDefault() { return GetParam().inDefault != nullptr; }

  /// Adds a row of a field that has the sample, or is blank.
  void AddRow(std::int32_t employee, std::int32_t number) {
    payroll_.fields.Add(employee, GetParam().Row(number), [](Tovrin2Record& row) {
      test::SetValue(row, *GetParam().inRow, Sample(), GetParam().Element());
    });
  }
  void AddBlankRow(std::int32_t employee, std::int32_t number) {
    payroll_.fields.Add(employee, GetParam().Row(number), [](Tovrin2Record&) {});
  }
  /// Puts the sample into the company's default.
  void SetDefault(std::int32_t number) {
    payroll_.defaults.Change(All, GetParam().Row(number), *GetParam().inDefault, Sample(),
                             GetParam().Element());
  }
  Variant StoredInRow(std::int32_t number) {
    return payroll_.fields.Value(Adams, GetParam().Row(number), *GetParam().inRow,
                                 GetParam().Element());
  }

 private:
  static std::vector<Variant> Indexes(std::int16_t number) {
    if (!GetParam().element) return {number};
    return {number, *GetParam().element};
  }

  automation::Object byName_{"Employee"};
};

class EmployeeFieldBelow19 : public EmployeeField {
 protected:
  EmployeeFieldBelow19() : EmployeeField(18.9) {}
};

TEST_P(EmployeeFieldBelow19, IsShownFromTheRecord) {
  Store(Sample(), *GetParam().inRecord, 5, GetParam().Element());
  ASSERT_EQ(Call("GetEqual", {"ADAMS"}), StatusSuccess);
  EXPECT_EQ(Get(5), Sample());
  EXPECT_TRUE(IsBlank(Get(4)));
  EXPECT_TRUE(IsBlank(Get(6)));
}

TEST_P(EmployeeFieldBelow19, IsStoredInTheRecord) {
  Let(40, Sample());
  EXPECT_EQ(Get(40), Sample());
  ASSERT_EQ(Call("Update"), StatusSuccess);
  EXPECT_EQ(Stored(*GetParam().inRecord, 40, GetParam().Element()), Sample());
  EXPECT_TRUE(IsBlank(Stored(*GetParam().inRecord, 39, GetParam().Element())));
}

TEST_P(EmployeeFieldBelow19, OfAnIndexOutsideRaises9) {
  for (const std::int16_t number : Outside) {
    EXPECT_EQ(RaisedNumber([&] { return Get(number); }), 9) << number;
    EXPECT_EQ(RaisedNumber([&] { Let(number, Sample()); }), 9) << number;
  }
}

INSTANTIATE_TEST_SUITE_P(Employee, EmployeeFieldBelow19, testing::ValuesIn(FieldProperties),
                         NameOfField);

TEST_P(EmployeeField, IsThatOfTheEmployeesRow) {
  AddRow(Adams, 5);
  EXPECT_EQ(Get(5), Sample());
  EXPECT_TRUE(IsBlank(Get(4)));
  EXPECT_TRUE(IsBlank(Get(6)));
}

TEST_P(EmployeeField, IsNotThatOfAnotherEmployee) {
  AddRow(Baker, 5);
  EXPECT_TRUE(IsBlank(Get(5)));
}

TEST_P(EmployeeField, IsNoLongerThatOfTheRecord) {
  Store(Sample(), *GetParam().inRecord, 5, GetParam().Element());
  ASSERT_EQ(Call("GetEqual", {"ADAMS"}), StatusSuccess);
  EXPECT_TRUE(IsBlank(Get(5)));
}

TEST_P(EmployeeField, WithoutARowIsTheCompanysDefaultWhereThereIsOne) {
  if (!HasDefault()) {
    EXPECT_EQ(Get(5), false);
    return;
  }
  SetDefault(5);
  EXPECT_EQ(Get(5), Sample());
  EXPECT_TRUE(IsBlank(Get(6)));
}

TEST_P(EmployeeField, WithARowIsNotTheDefaultThoughTheRowIsBlank) {
  if (HasDefault()) SetDefault(5);
  AddBlankRow(Adams, 5);
  EXPECT_TRUE(IsBlank(Get(5)));
}

TEST_P(EmployeeField, WithNeitherRowNorDefaultIsBlank) {
  payroll_.defaults.Delete(All, GetParam().Row(5));
  EXPECT_TRUE(IsBlank(Get(5)));
  EXPECT_TRUE(IsBlank(Get(0)));
  EXPECT_TRUE(IsBlank(Get(-32768)));
  EXPECT_TRUE(IsBlank(Get(32000)));
}

TEST_P(EmployeeField, AssignedWithoutARowIsDropped) {
  Let(5, Sample());
  EXPECT_TRUE(IsBlank(Get(5)));
  ASSERT_EQ(Call("CloseFile"), StatusSuccess);
  EXPECT_EQ(payroll_.fields.Count(), 0);
  if (!HasDefault()) return;
  EXPECT_TRUE(IsBlank(payroll_.defaults.Value(All, GetParam().Row(5), *GetParam().inDefault,
                                              GetParam().Element())));
}

TEST_P(EmployeeField, AssignedIsShownUntilAnotherRowIsRead) {
  AddBlankRow(Adams, 5);
  AddBlankRow(Adams, 6);
  Let(5, Sample());
  EXPECT_EQ(Get(5), Sample());
  EXPECT_TRUE(IsBlank(Get(6)));
  EXPECT_TRUE(IsBlank(Get(5)));
}

TEST_P(EmployeeField, AssignedIsStillShownAfterARowThatIsMissing) {
  AddBlankRow(Adams, 5);
  Let(5, Sample());
  EXPECT_TRUE(IsBlank(Get(7)));
  EXPECT_EQ(Get(5), Sample());
}

TEST_P(EmployeeField, AssignedIsNeverWritten) {
  AddBlankRow(Adams, 5);
  AddBlankRow(Adams, 6);
  Let(5, Sample());
  EXPECT_TRUE(IsBlank(Get(6)));
  EXPECT_TRUE(IsBlank(StoredInRow(5)));
  Let(6, Sample());
  ASSERT_EQ(Call("Update"), StatusSuccess);
  ASSERT_EQ(Call("CloseFile"), StatusSuccess);
  EXPECT_TRUE(IsBlank(StoredInRow(6)));
}

INSTANTIATE_TEST_SUITE_P(Employee, EmployeeField, testing::ValuesIn(FieldProperties), NameOfField);

using EmployeeFields = PayrollTest;

TEST_F(EmployeeFields, OfTheEmployerFollowThe40OfTheEmployee) {
  payroll_.fields.Add(Adams, 41, EmployeeAux6Record::CalcName, "Insurance");
  EXPECT_EQ(employee_.ERCalcName(1), "Insurance");
  EXPECT_EQ(employee_.EECalcName(41), "Insurance") << "the index is not brought into range";
}

TEST_F(EmployeeFields, ERAdjustOf2IsInRow42) {
  payroll_.fields.Add(Adams, 42,
                      [](Tovrin2Record& row) { row.SetByte(EmployeeAux6Record::Adjust, 9, 1); });
  EXPECT_EQ(employee_.ERAdjust(2, 1), 9);
  EXPECT_EQ(employee_.ERAdjust(2, 2), 0);
  EXPECT_EQ(employee_.ERAdjust(1, 2), 0);
}

TEST_F(EmployeeFields, AdjustOfASecondIndexOutsideRaises9InARowOnly) {
  payroll_.fields.Add(Adams, 5, [](Tovrin2Record&) {});
  payroll_.defaults.Delete(All, 6);
  for (const std::int16_t element : Outside) {
    EXPECT_EQ(RaisedNumber([&] { return employee_.EEAdjust(5, element); }), 9) << element;
    EXPECT_EQ(RaisedNumber([&] { employee_.EEAdjust(5, element, 7); }), 9) << element;
    EXPECT_EQ(employee_.EEAdjust(6, element), 0) << element;
    employee_.EEAdjust(6, element, 7);
  }
}

// --- Pay levels ---

/// Releases whose records hold the pay levels.
class EmployeeLevelsBelow19 : public PayrollTest, public testing::WithParamInterface<double> {
 protected:
  EmployeeLevelsBelow19() : PayrollTest(GetParam()) {}
};

TEST_P(EmployeeLevelsBelow19, LieInTheRecord) {
  employee_.AcctDataUseStandard(3, true);
  employee_.PayRateAmount(3, 11.5);
  EXPECT_TRUE(employee_.AcctDataUseStandard(3));
  EXPECT_FALSE(employee_.AcctDataUseStandard(2));
  EXPECT_EQ(employee_.PayRateAmount(3), 11.5);
  ASSERT_EQ(employee_.Update(), StatusSuccess);
  EXPECT_EQ(Stored(EmployeeRecord::AcctDataUseStandard, 3), true);
  EXPECT_EQ(Stored(EmployeeRecord::PayRateAmount, 3), 11.5);
}

TEST_P(EmployeeLevelsBelow19, UseStandardBringsTheIndexIntoRange) {
  Store(true, EmployeeRecord::AcctDataUseStandard, 0);
  EXPECT_FALSE(employee_.AcctDataUseStandard(0));
  employee_.AcctDataUseStandard(0, true);
  EXPECT_TRUE(employee_.AcctDataUseStandard(1));
  EXPECT_TRUE(employee_.AcctDataUseStandard(-32768));
  employee_.AcctDataUseStandard(25, true);
  EXPECT_TRUE(employee_.AcctDataUseStandard(20));
  EXPECT_TRUE(employee_.AcctDataUseStandard(32767));
  EXPECT_FALSE(employee_.AcctDataUseStandard(19));
}

TEST_P(EmployeeLevelsBelow19, PayRatesTakeTheIndexAsItIs) {
  employee_.PayRateAmount(25, 25.5);
  employee_.PayRateAmount(0, 0.5);
  EXPECT_EQ(employee_.PayRateAmount(25), 25.5);
  EXPECT_EQ(employee_.PayRateAmount(20), 0);
  EXPECT_EQ(employee_.PayRateAmount(1), 0);
  ASSERT_EQ(employee_.Update(), StatusSuccess);
  EXPECT_EQ(Stored(EmployeeRecord::PayRateAmount, 25), 25.5);
  EXPECT_EQ(Stored(EmployeeRecord::PayRateAmount, 0), 0.5);
  for (const std::int16_t level : Outside) {
    EXPECT_EQ(RaisedNumber([&] { return employee_.PayRateAmount(level); }), 9) << level;
    EXPECT_EQ(RaisedNumber([&] { employee_.PayRateAmount(level, 1.5); }), 9) << level;
  }
}

INSTANTIATE_TEST_SUITE_P(Employee, EmployeeLevelsBelow19, testing::Values(8.0, 12.0, 18.9));

using EmployeeLevels = PayrollTest;

TEST_F(EmployeeLevels, AreThoseOfTheEmployeesRows) {
  payroll_.levels.Add(Baker, 3, EmployeeAux5Record::PayRateAmount, 99.5);
  payroll_.levels.Add(Adams, 3, EmployeeAux5Record::PayRateAmount, 11.5);
  payroll_.levels.Add(Adams, 4, EmployeeAux5Record::UseStandard, true);
  EXPECT_EQ(employee_.PayRateAmount(3), 11.5);
  EXPECT_FALSE(employee_.AcctDataUseStandard(3));
  EXPECT_EQ(employee_.PayRateAmount(4), 0);
  EXPECT_TRUE(employee_.AcctDataUseStandard(4));
}

TEST_F(EmployeeLevels, WithoutARowGoToTheStandardAccountAndHaveNoRate) {
  payroll_.levels.Add(Baker, 3, EmployeeAux5Record::PayRateAmount, 99.5);
  EXPECT_TRUE(employee_.AcctDataUseStandard(3));
  EXPECT_EQ(employee_.PayRateAmount(3), 0);
}

TEST_F(EmployeeLevels, AreNoLongerThoseOfTheRecord) {
  Store(11.5, EmployeeRecord::PayRateAmount, 3);
  EXPECT_EQ(employee_.PayRateAmount(3), 0);
}

TEST_F(EmployeeLevels, OfAnIndexOutsideAreTheNearest) {
  payroll_.levels.Add(Adams, 1, EmployeeAux5Record::PayRateAmount, 1.5);
  payroll_.levels.Add(Adams, 20, EmployeeAux5Record::PayRateAmount, 20.5);
  payroll_.levels.Add(Adams, 25, EmployeeAux5Record::PayRateAmount, 25.5);
  for (const std::int16_t level : {std::int16_t{0}, std::int16_t{-32768}}) {
    EXPECT_EQ(employee_.PayRateAmount(level), 1.5) << level;
    EXPECT_FALSE(employee_.AcctDataUseStandard(level)) << level;
  }
  for (const std::int16_t level : {std::int16_t{25}, std::int16_t{32767}}) {
    EXPECT_EQ(employee_.PayRateAmount(level), 20.5) << level;
    EXPECT_FALSE(employee_.AcctDataUseStandard(level)) << level;
  }
}

TEST_F(EmployeeLevels, AssignedAreWrittenAtCloseFile) {
  payroll_.levels.Add(Adams, 1, [](Tovrin2Record&) {});
  employee_.PayRateAmount(0, 11.5);
  employee_.AcctDataUseStandard(1, true);
  ASSERT_EQ(employee_.CloseFile(), StatusSuccess);
  EXPECT_EQ(payroll_.levels.Value(Adams, 1, EmployeeAux5Record::PayRateAmount), 11.5);
  EXPECT_EQ(payroll_.levels.Value(Adams, 1, EmployeeAux5Record::UseStandard), true);
}

TEST_F(EmployeeLevels, AssignedWithoutARowAreDropped) {
  employee_.PayRateAmount(1, 11.5);
  employee_.AcctDataUseStandard(1, false);
  EXPECT_EQ(employee_.PayRateAmount(1), 0);
  EXPECT_TRUE(employee_.AcctDataUseStandard(1));
  ASSERT_EQ(employee_.Update(), StatusSuccess);
  ASSERT_EQ(employee_.CloseFile(), StatusSuccess);
  EXPECT_EQ(payroll_.levels.Count(), 0);
  EXPECT_EQ(Stored(EmployeeRecord::PayRateAmount, 1), 0.0);
}

// --- Quarters in the record ---

class EmployeeQuartersBelow19 : public PayrollTest {
 protected:
  EmployeeQuartersBelow19() : PayrollTest(18.9) {}
};

TEST_F(EmployeeQuartersBelow19, LieInTheRecord) {
  employee_.PayrollEE(2, 5, 1.5);
  employee_.PayrollER(2, 5, 2.5);
  employee_.PayrollHoursLevel(2, 5, 3.5);
  employee_.PayrollPayLevel(2, 5, 4.5);
  employee_.PayrollWeeks(2, 13);
  EXPECT_EQ(employee_.PayrollEE(2, 5), 1.5);
  EXPECT_EQ(employee_.PayrollER(2, 5), 2.5);
  EXPECT_EQ(employee_.PayrollHoursLevel(2, 5), 3.5);
  EXPECT_EQ(employee_.PayrollPayLevel(2, 5), 4.5);
  EXPECT_EQ(employee_.PayrollWeeks(2), 13);
  EXPECT_EQ(employee_.PayrollEE(1, 5), 0);
  EXPECT_EQ(employee_.PayrollEE(2, 4), 0);
  ASSERT_EQ(employee_.Update(), StatusSuccess);
  EXPECT_EQ(Stored(EmployeeRecord::PayrollEE, 2, 5), 1.5);
  EXPECT_EQ(Stored(EmployeeRecord::PayrollER, 2, 5), 2.5);
  EXPECT_EQ(Stored(EmployeeRecord::PayrollHoursLevel, 2, 5), 3.5);
  EXPECT_EQ(Stored(EmployeeRecord::PayrollPayLevel, 2, 5), 4.5);
  EXPECT_EQ(Stored(EmployeeRecord::PayrollWeeks, 2), 13);
}

TEST_F(EmployeeQuartersBelow19, OfAnIndexOutsideRaise9) {
  for (const std::int16_t index : Outside) {
    EXPECT_EQ(RaisedNumber([&] { return employee_.PayrollEE(index, 1); }), 9) << index;
    EXPECT_EQ(RaisedNumber([&] { return employee_.PayrollER(1, index); }), 9) << index;
    EXPECT_EQ(RaisedNumber([&] { employee_.PayrollHoursLevel(1, index, 1.5); }), 9) << index;
    EXPECT_EQ(RaisedNumber([&] { employee_.PayrollPayLevel(index, 1, 1.5); }), 9) << index;
    EXPECT_EQ(RaisedNumber([&] { return employee_.PayrollWeeks(index); }), 9) << index;
  }
}

TEST_F(EmployeeQuartersBelow19, WeeksAreWholeAndOf16Bits) {
  const struct {
    double written;
    double read;
  } samples[] = {{12.4, 12}, {12.5, 12}, {13.5, 14}, {-0.6, -1}, {32767, 32767}, {-32768, -32768}};
  for (const auto& sample : samples) {
    employee_.PayrollWeeks(1, sample.written);
    EXPECT_EQ(employee_.PayrollWeeks(1), sample.read) << sample.written;
  }
  for (const double weeks : {32768.0, -32769.0, 1e10}) {
    EXPECT_EQ(RaisedNumber([&] { employee_.PayrollWeeks(1, weeks); }), 6) << weeks;
    EXPECT_EQ(employee_.PayrollWeeks(1), -32768) << weeks;
  }
}

// --- Quarters in files of their own ---

/// ADAMS has a second and a third quarter.
class EmployeeQuarters : public PayrollTest {
 protected:
  static constexpr std::string_view Second = "40000000-0000-4000-8000-000000000002";
  static constexpr std::string_view Third = "40000000-0000-4000-8000-000000000003";

  EmployeeQuarters() {
    AddQuarter(Adams, 2, Second, 13);
    AddQuarter(Adams, 3, Third, 12);
  }

  void AddQuarter(std::int32_t employee, std::int32_t quarter, std::string_view guid,
                  std::int32_t weeks) {
    payroll_.quarters.Add(employee, quarter, [&](Tovrin2Record& row) {
      row.SetText(EmployeeAux2Record::GUID, guid);
      row.SetLong(EmployeeAux2Record::Weeks, weeks);
    });
  }
  void AddLevel(std::string_view quarter, std::int32_t level, double hours, double pay) {
    payroll_.quarterLevels.Add(quarter, level, [&](Tovrin2Record& row) {
      row.SetDouble(EmployeeAux4Record::HoursLevel, hours);
      row.SetDouble(EmployeeAux4Record::PayLevel, pay);
    });
  }
};

TEST_F(EmployeeQuarters, ShowTheWeeksOfTheEmployeesRow) {
  EXPECT_EQ(employee_.PayrollWeeks(2), 13);
  EXPECT_EQ(employee_.PayrollWeeks(3), 12);
  EXPECT_EQ(employee_.PayrollWeeks(1), 0);
  ASSERT_EQ(employee_.GetEqual("BAKER"), StatusSuccess);
  EXPECT_EQ(employee_.PayrollWeeks(2), 0);
}

TEST_F(EmployeeQuarters, ReadTheWeeksEachTime) {
  EXPECT_EQ(employee_.PayrollWeeks(2), 13);
  payroll_.quarters.Change(Adams, 2, EmployeeAux2Record::Weeks, 14);
  EXPECT_EQ(employee_.PayrollWeeks(2), 14);
}

TEST_F(EmployeeQuarters, WriteTheWeeksAtOnceAndWhole) {
  employee_.PayrollWeeks(2, 12.5);
  EXPECT_EQ(payroll_.quarters.Value(Adams, 2, EmployeeAux2Record::Weeks), 12);
  employee_.PayrollWeeks(2, 13.5);
  EXPECT_EQ(payroll_.quarters.Value(Adams, 2, EmployeeAux2Record::Weeks), 14);
  employee_.PayrollWeeks(2, 40000);
  EXPECT_EQ(employee_.PayrollWeeks(2), 40000) << "32 bits here";
  EXPECT_EQ(payroll_.quarters.Value(Adams, 3, EmployeeAux2Record::Weeks), 12);
}

TEST_F(EmployeeQuarters, OfMoreWeeksThan32BitsRaise6) {
  EXPECT_EQ(RaisedNumber([&] { employee_.PayrollWeeks(2, 3e9); }), 6);
  EXPECT_EQ(payroll_.quarters.Value(Adams, 2, EmployeeAux2Record::Weeks), 13);
}

TEST_F(EmployeeQuarters, WithoutARowDropTheWeeks) {
  employee_.PayrollWeeks(1, 13);
  EXPECT_EQ(employee_.PayrollWeeks(1), 0);
  EXPECT_EQ(payroll_.quarters.Count(), 2);
}

TEST_F(EmployeeQuarters, AreNotBroughtIntoRange) {
  AddQuarter(Adams, 5, "40000000-0000-4000-8000-000000000005", 11);
  AddLevel("40000000-0000-4000-8000-000000000005", 25, 3.5, 4.5);
  EXPECT_EQ(employee_.PayrollWeeks(5), 11);
  EXPECT_EQ(employee_.PayrollWeeks(0), 0);
  EXPECT_EQ(employee_.PayrollWeeks(-32768), 0);
  EXPECT_EQ(employee_.PayrollHoursLevel(5, 25), 3.5);
  EXPECT_EQ(employee_.PayrollPayLevel(5, 25), 4.5);
  EXPECT_EQ(employee_.PayrollPayLevel(5, -32768), 0);
}

TEST_F(EmployeeQuarters, ShowTheLevelsThatBearTheirGUID) {
  AddLevel(Second, 1, 3.5, 4.5);
  AddLevel(Third, 1, 5.5, 6.5);
  AddLevel(Second, 20, 7.5, 8.5);
  EXPECT_EQ(employee_.PayrollHoursLevel(2, 1), 3.5);
  EXPECT_EQ(employee_.PayrollPayLevel(3, 1), 6.5);
  EXPECT_EQ(employee_.PayrollHoursLevel(3, 1), 5.5);
  EXPECT_EQ(employee_.PayrollPayLevel(2, 20), 8.5);
}

TEST_F(EmployeeQuarters, WithoutALevelShow0) {
  AddLevel(Second, 1, 3.5, 4.5);
  EXPECT_EQ(employee_.PayrollHoursLevel(2, 2), 0);
  EXPECT_EQ(employee_.PayrollPayLevel(3, 1), 0) << "another quarter has none";
  EXPECT_EQ(employee_.PayrollPayLevel(1, 1), 0) << "there is no such quarter";
  ASSERT_EQ(employee_.GetEqual("BAKER"), StatusSuccess);
  EXPECT_EQ(employee_.PayrollHoursLevel(2, 1), 0);
}

TEST_F(EmployeeQuarters, ReadTheLevelsEachTime) {
  AddLevel(Second, 1, 3.5, 4.5);
  EXPECT_EQ(employee_.PayrollHoursLevel(2, 1), 3.5);
  payroll_.quarterLevels.Change(Second, 1, EmployeeAux4Record::HoursLevel, 9.5);
  EXPECT_EQ(employee_.PayrollHoursLevel(2, 1), 9.5);
}

TEST_F(EmployeeQuarters, WriteTheLevelsAtOnce) {
  AddLevel(Second, 1, 3.5, 4.5);
  employee_.PayrollHoursLevel(2, 1, 38.25);
  EXPECT_EQ(payroll_.quarterLevels.Value(Second, 1, EmployeeAux4Record::HoursLevel), 38.25);
  EXPECT_EQ(payroll_.quarterLevels.Value(Second, 1, EmployeeAux4Record::PayLevel), 4.5);
  employee_.PayrollPayLevel(2, 1, 900.5);
  EXPECT_EQ(payroll_.quarterLevels.Value(Second, 1, EmployeeAux4Record::HoursLevel), 38.25);
  EXPECT_EQ(payroll_.quarterLevels.Value(Second, 1, EmployeeAux4Record::PayLevel), 900.5);
}

TEST_F(EmployeeQuarters, WithoutALevelDropWhatIsAssigned) {
  AddLevel(Second, 1, 3.5, 4.5);
  employee_.PayrollHoursLevel(2, 2, 38.25);
  employee_.PayrollPayLevel(1, 1, 900.5);
  EXPECT_EQ(payroll_.quarterLevels.Count(), 1);
  EXPECT_EQ(payroll_.quarterLevels.Value(Second, 1, EmployeeAux4Record::HoursLevel), 3.5);
  EXPECT_EQ(payroll_.quarterLevels.Value(Second, 1, EmployeeAux4Record::PayLevel), 4.5);
}

TEST_F(EmployeeQuarters, ThatTheFileRefusesToChangeStayAsTheyWere) {
  AddLevel(Second, 1, 3.5, 4.5);
  ASSERT_EQ(employee_.CloseFile(), StatusSuccess);
  test::ProtectFile(payroll_.quarterLevels.Path(), /*allowRead=*/true);
  test::ProtectFile(payroll_.quarters.Path(), /*allowRead=*/true);
  ASSERT_EQ(employee_.OpenFile(), StatusSuccess);
  ASSERT_EQ(employee_.GetEqual("ADAMS"), StatusSuccess);
  employee_.PayrollHoursLevel(2, 1, 38.25);
  employee_.PayrollWeeks(2, 1);
  EXPECT_EQ(employee_.PayrollHoursLevel(2, 1), 3.5);
  EXPECT_EQ(employee_.PayrollWeeks(2), 13);
}

// The sums of payroll fields do not look for the quarter, and so find no row by themselves.

TEST_F(EmployeeQuarters, SumsOfFieldsDoNotLookForTheQuarter) {
  payroll_.quarterFields.Add(Second, 5, EmployeeAux3Record::Amount, 1.5);
  payroll_.quarterFields.Add(Second, 45, EmployeeAux3Record::Amount, 2.5);
  EXPECT_EQ(employee_.PayrollEE(2, 5), 0);
  EXPECT_EQ(employee_.PayrollER(2, 5), 0);
}

TEST_F(EmployeeQuarters, SumsOfFieldsThatHaveNoRowAreDropped) {
  payroll_.quarterFields.Add(Second, 5, EmployeeAux3Record::Amount, 1.5);
  payroll_.quarterFields.Add(Second, 45, EmployeeAux3Record::Amount, 2.5);
  employee_.PayrollEE(2, 5, 9.5);
  employee_.PayrollER(2, 5, 9.5);
  EXPECT_EQ(payroll_.quarterFields.Count(), 2);
  EXPECT_EQ(payroll_.quarterFields.Value(Second, 5, EmployeeAux3Record::Amount), 1.5);
  EXPECT_EQ(payroll_.quarterFields.Value(Second, 45, EmployeeAux3Record::Amount), 2.5);
}

TEST_F(EmployeeQuarters, SumsOfFieldsAreNoLongerThoseOfTheRecord) {
  Store(1.5, EmployeeRecord::PayrollEE, 2, 5);
  Store(2.5, EmployeeRecord::PayrollER, 2, 5);
  EXPECT_EQ(employee_.PayrollEE(2, 5), 0);
  EXPECT_EQ(employee_.PayrollER(2, 5), 0);
}

}  // namespace
}  // namespace larkmoor
