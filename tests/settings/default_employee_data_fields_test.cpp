// The payroll fields of the class DefaultEmployeeData. Below release 19 they are arrays of the
// first row; from 19 on each is a row of a file of its own, the employer's behind the 40 that
// employees pay. One such row is in hand at a time: it is read when another one is asked for, and
// written by CloseFile if it was changed, and not before.
#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include <larkmoor/masters/employee.h>
#include <larkmoor/settings/default_employee_data.h>
#include <larkmoor/status.h>
#include <larkmoor/variant.h>

#include "automation/automation.h"
#include "connection/status_messages.h"
#include "engine/records/default_employee_data.h"
#include "engine/records/employee_aux1.h"
#include "engine/tovrin_file.h"
#include "engine/tovrin_file_names.h"
#include "support/accounts.h"
#include "support/company.h"
#include "support/masters.h"
#include "support/payroll_files.h"
#include "support/protection.h"
#include "support/raised_errors.h"
#include "support/record_files.h"
#include "support/settings_row.h"
#include "support/taken_away.h"

namespace larkmoor {
namespace {

using automation::Object;
using test::AddAccount;
using test::AddEmployee;
using test::Company;
using test::ExpectRaised;
using test::IsHeldOpen;
using test::PayrollFiles;
using test::Protection;
using test::SettingsRow;
using test::TakenAway;

/// The rows of the payroll fields by the numbers that they bear, which start at 0.
class FieldRows {
 public:
  explicit FieldRows(const std::filesystem::path& folder) : rows_(PayrollFiles(folder).defaults) {}

  [[nodiscard]] const std::filesystem::path& Path() const { return rows_.Path(); }

  void Set(std::int32_t row, const Field& field, const Variant& value, int index = 0) const {
    rows_.Change({}, row + 1, field, value, index);
  }
  [[nodiscard]] Variant Value(std::int32_t row, const Field& field, int index = 0) const {
    return rows_.Value({}, row + 1, field, index);
  }
  void Delete(std::int32_t row) const { rows_.Delete({}, row + 1); }
  [[nodiscard]] std::int32_t Count() const { return rows_.Count(); }

 private:
  test::PayrollRows<test::WholeCompany> rows_;  // these count from 1
};

// --- Every property in either place ---

/// A property, its array below release 19 and its field in a row from 19 on.
struct FieldProperty {
  std::string_view name;
  const Field* inRecord;
  const Field* inRow;
};

const FieldProperty Properties[] = {
    {"EEAdjust", &DefaultEmployeeDataRecord::EEAdjust, &EmployeeAux1Record::Adjust},
    {"EEAmount", &DefaultEmployeeDataRecord::EEAmount, &EmployeeAux1Record::Amount},
    {"EECalc", &DefaultEmployeeDataRecord::EECalc, &EmployeeAux1Record::CalcOn},
    {"EECalcName", &DefaultEmployeeDataRecord::EECalcName, &EmployeeAux1Record::CalcName},
    {"EECategory", &DefaultEmployeeDataRecord::EECategory, &EmployeeAux1Record::Category},
    {"EEDescription", &DefaultEmployeeDataRecord::EEDescription, &EmployeeAux1Record::Description},
    {"EEEmployer", &DefaultEmployeeDataRecord::EEEmployer, &EmployeeAux1Record::Employer},
    {"EEMemo", &DefaultEmployeeDataRecord::EEMemo, &EmployeeAux1Record::Memo},
    {"EERelatedField", &DefaultEmployeeDataRecord::EERelatedField,
     &EmployeeAux1Record::RelatedField},
    {"EERun", &DefaultEmployeeDataRecord::EERun, &EmployeeAux1Record::Run},
    {"EESequence", &DefaultEmployeeDataRecord::EESequence, &EmployeeAux1Record::Sequence},
    {"EEStatus", &DefaultEmployeeDataRecord::EEStatus, &EmployeeAux1Record::Status},
    {"EESubcategory", &DefaultEmployeeDataRecord::EESubcategory, &EmployeeAux1Record::Subcategory},
    {"ERAdjust", &DefaultEmployeeDataRecord::ERAdjust, &EmployeeAux1Record::Adjust},
    {"ERAmount", &DefaultEmployeeDataRecord::ERAmount, &EmployeeAux1Record::Amount},
    {"ERCalc", &DefaultEmployeeDataRecord::ERCalc, &EmployeeAux1Record::CalcOn},
    {"ERCalcName", &DefaultEmployeeDataRecord::ERCalcName, &EmployeeAux1Record::CalcName},
    {"ERCategory", &DefaultEmployeeDataRecord::ERCategory, &EmployeeAux1Record::Category},
    {"ERDescription", &DefaultEmployeeDataRecord::ERDescription, &EmployeeAux1Record::Description},
    {"EREmployer", &DefaultEmployeeDataRecord::EREmployer, &EmployeeAux1Record::Employer},
    {"ERRelatedField", &DefaultEmployeeDataRecord::ERRelatedField,
     &EmployeeAux1Record::RelatedField},
    {"ERRun", &DefaultEmployeeDataRecord::ERRun, &EmployeeAux1Record::Run},
    {"ERSequence", &DefaultEmployeeDataRecord::ERSequence, &EmployeeAux1Record::Sequence},
    {"ERStatus", &DefaultEmployeeDataRecord::ERStatus, &EmployeeAux1Record::Status},
    {"ERSubcategory", &DefaultEmployeeDataRecord::ERSubcategory, &EmployeeAux1Record::Subcategory},
};

/// An object that shows a property, and the two places where its value may lie; of an adjustment,
/// for the third field that it is reckoned from.
class Payroll {
 public:
  Payroll(const FieldProperty& property, const std::filesystem::path& folder)
      : property_(property),
        settings_(folder, DefaultEmployeeDataRecord::Describe()),
        rows_(folder) {}

  Status Do(std::string_view operation) { return object_.Call(operation).ToInteger(); }
  void OpenAndRead() {
    EXPECT_EQ(Do("OpenFile"), StatusSuccess);
    EXPECT_EQ(Do("Read"), StatusSuccess);
  }

  Variant Get(std::int16_t number) { return object_.Get(property_.name, Indexes(number)); }
  void Let(std::int16_t number, const Variant& value) {
    object_.Let(property_.name, value, Indexes(number));
  }
  /// A value that the property may have and that is not blank.
  [[nodiscard]] Variant Sample() const {
    switch (property_.inRecord->type) {
      case FieldType::Boolean:
        return true;
      case FieldType::Double:
        return 12.5;
      case FieldType::Text:
        return "Medicare";
      default:
        return std::uint8_t{7};
    }
  }

  // The settings on file.
  void Store(int number, const Variant& value) {
    settings_.Set(*property_.inRecord, value, number, SecondPlace());
  }
  Variant Stored(int number) { return settings_.Value(*property_.inRecord, number, SecondPlace()); }

  // The rows on file, by the number of the field.
  void StoreInRow(std::int32_t number, const Variant& value) {
    rows_.Set(Row(number), *property_.inRow, value, SecondPlace());
  }
  Variant StoredInRow(std::int32_t number) {
    return rows_.Value(Row(number), *property_.inRow, SecondPlace());
  }

 private:
  static constexpr std::int16_t Second = 3;

  [[nodiscard]] bool HasTwoIndexes() const { return property_.inRecord->count2 != 0; }
  [[nodiscard]] int SecondPlace() const { return HasTwoIndexes() ? Second : 0; }
  [[nodiscard]] std::vector<Variant> Indexes(std::int16_t number) const {
    if (HasTwoIndexes()) return {number, Second};
    return {number};
  }
  [[nodiscard]] std::int32_t Row(std::int32_t number) const {
    return property_.name.starts_with("ER") ? number + 40 : number;
  }

  const FieldProperty& property_;
  SettingsRow settings_;
  FieldRows rows_;
  Object object_{"DefaultEmployeeData"};
};

class PayrollField : public testing::Test {
 protected:
  static constexpr std::int16_t At = 5;
  static constexpr std::int16_t Next = 6;

  explicit PayrollField(double release) : company_(release) {}

  /// Runs `body(payroll)` for each property, with an object that has read the settings.
  template <typename Body>
  void ForEachProperty(Body&& body) {
    for (const FieldProperty& property : Properties) {
      SCOPED_TRACE(property.name);
      Payroll payroll(property, company_.Folder());
      payroll.OpenAndRead();
      body(payroll);
    }
  }

  const Variant blank_ = {};  ///< equal to 0, to False and to the empty text
  Company company_;
  SettingsRow settings_{company_.Folder(), DefaultEmployeeDataRecord::Describe()};
  FieldRows rows_{company_.Folder()};
};

class PayrollFieldBelow19 : public PayrollField {
 protected:
  PayrollFieldBelow19() : PayrollField(18.9) {}
};

class PayrollFieldFrom19 : public PayrollField {
 protected:
  PayrollFieldFrom19() : PayrollField(19.0) {}

  void DeleteRows(std::int32_t number) {
    rows_.Delete(number);
    rows_.Delete(number + 40);
  }
};

TEST_F(PayrollFieldBelow19, LiesInTheSettingsAtItsNumber) {
  const TakenAway noRows(rows_.Path());
  ForEachProperty([&](Payroll& payroll) {
    payroll.Store(At, payroll.Sample());
    payroll.Store(Next, blank_);
    ASSERT_EQ(payroll.Do("Read"), StatusSuccess);
    EXPECT_EQ(payroll.Get(At), payroll.Sample());
    EXPECT_EQ(payroll.Get(Next), blank_);
    payroll.Let(Next, payroll.Sample());
    EXPECT_EQ(payroll.Get(Next), payroll.Sample());
    ASSERT_EQ(payroll.Do("Update"), StatusSuccess);
    EXPECT_EQ(payroll.Stored(Next), payroll.Sample());
  });
}

TEST_F(PayrollFieldFrom19, LiesInTheRowOfItsNumber) {
  ForEachProperty([&](Payroll& payroll) {
    payroll.StoreInRow(At, payroll.Sample());
    payroll.StoreInRow(Next, blank_);
    EXPECT_EQ(payroll.Get(At), payroll.Sample());
    EXPECT_EQ(payroll.Get(Next), blank_);
    payroll.Let(Next, payroll.Sample());
    EXPECT_EQ(payroll.Get(Next), payroll.Sample());
    ASSERT_EQ(payroll.Do("CloseFile"), StatusSuccess);
    EXPECT_EQ(payroll.StoredInRow(Next), payroll.Sample());
  });
}

TEST_F(PayrollFieldFrom19, LeavesTheSettingsAlone) {
  ForEachProperty([&](Payroll& payroll) {
    payroll.Store(At, payroll.Sample());
    payroll.StoreInRow(At, blank_);
    ASSERT_EQ(payroll.Do("Read"), StatusSuccess);
    const RecordBytes before = settings_.Bytes();
    EXPECT_EQ(payroll.Get(At), blank_);
    payroll.Let(Next, payroll.Sample());
    ASSERT_EQ(payroll.Do("Update"), StatusSuccess);
    ASSERT_EQ(payroll.Do("CloseFile"), StatusSuccess);
    EXPECT_TRUE(settings_.Bytes() == before);
  });
}

TEST_F(PayrollFieldFrom19, WithoutARowIsBlankAndDropsWhatIsAssigned) {
  DeleteRows(At);
  const std::int32_t rows = rows_.Count();
  ForEachProperty([&](Payroll& payroll) {
    EXPECT_EQ(payroll.Get(At), blank_);
    payroll.Let(At, payroll.Sample());
    EXPECT_EQ(payroll.Get(At), blank_);
    ASSERT_EQ(payroll.Do("CloseFile"), StatusSuccess);
  });
  EXPECT_EQ(rows_.Count(), rows);
}

TEST_F(PayrollFieldFrom19, WithoutARowLeavesTheRowInHandAlone) {
  DeleteRows(At);
  ForEachProperty([&](Payroll& payroll) {
    payroll.StoreInRow(Next, blank_);
    EXPECT_EQ(payroll.Get(Next), blank_);
    EXPECT_EQ(payroll.Get(At), blank_);
    payroll.Let(At, payroll.Sample());
    EXPECT_EQ(payroll.Get(Next), blank_);
    ASSERT_EQ(payroll.Do("CloseFile"), StatusSuccess);
    EXPECT_EQ(payroll.StoredInRow(Next), blank_);
  });
}

// --- Frequencies, which release 19 has no more ---

class PayrollFrequency : public testing::TestWithParam<double> {
 protected:
  PayrollFrequency() {
    settings_.Set(DefaultEmployeeDataRecord::EEFrequency, "monthly", 1);
    settings_.Set(DefaultEmployeeDataRecord::ERFrequency, "yearly", 1);
    EXPECT_EQ(payroll_.OpenFile(), StatusSuccess);
    EXPECT_EQ(payroll_.Read(), StatusSuccess);
  }

  void Assign() {
    payroll_.EEFrequency(1, "weekly");
    payroll_.ERFrequency(1, "daily");
  }
  /// Expects these frequencies to be read, and on file after an update.
  void ExpectStored(std::string_view employees, std::string_view employers) {
    ASSERT_EQ(payroll_.Update(), StatusSuccess);
    EXPECT_EQ(settings_.Value(DefaultEmployeeDataRecord::EEFrequency, 1), employees);
    EXPECT_EQ(settings_.Value(DefaultEmployeeDataRecord::ERFrequency, 1), employers);
  }

  Company company_{GetParam()};
  SettingsRow settings_{company_.Folder(), DefaultEmployeeDataRecord::Describe()};
  DefaultEmployeeData payroll_;
};

using PayrollFrequencyBelow19 = PayrollFrequency;
using PayrollFrequencyFrom19 = PayrollFrequency;

TEST_P(PayrollFrequencyBelow19, LiesInTheSettings) {
  EXPECT_EQ(payroll_.EEFrequency(1), "monthly");
  EXPECT_EQ(payroll_.ERFrequency(1), "yearly");
  Assign();
  EXPECT_EQ(payroll_.EEFrequency(1), "weekly");
  EXPECT_EQ(payroll_.ERFrequency(1), "daily");
  ExpectStored("weekly", "daily");
}

INSTANTIATE_TEST_SUITE_P(Releases, PayrollFrequencyBelow19, testing::Values(8.0, 18.9));

TEST_P(PayrollFrequencyFrom19, IsEmptyAndDropsWhatIsAssigned) {
  EXPECT_EQ(payroll_.EEFrequency(1), "");
  EXPECT_EQ(payroll_.ERFrequency(1), "");
  Assign();
  EXPECT_EQ(payroll_.EEFrequency(1), "");
  EXPECT_EQ(payroll_.ERFrequency(1), "");
  ExpectStored("monthly", "yearly");
}

INSTANTIATE_TEST_SUITE_P(Releases, PayrollFrequencyFrom19, testing::Values(19.0));

TEST(PayrollFrequencyReleases, AreToldApartAtEachOpenFile) {
  const Company newer(19.0);
  DefaultEmployeeData payroll;
  ASSERT_EQ(payroll.OpenFile(), StatusSuccess);
  payroll.EEFrequency(1, "weekly");
  EXPECT_EQ(payroll.EEFrequency(1), "");
  ASSERT_EQ(payroll.CloseFile(), StatusSuccess);
  const Company older(18.9);
  ASSERT_EQ(payroll.OpenFile(), StatusSuccess);
  payroll.EEFrequency(1, "weekly");
  EXPECT_EQ(payroll.EEFrequency(1), "weekly");
}

// --- The row in hand ---

/// A company of release 19 whose rows 1 to 4 have the amounts 1.5 to 4.5.
class PayrollFieldRow : public testing::Test {
 protected:
  PayrollFieldRow() {
    for (const std::int32_t row : {1, 2, 3, 4}) SetOnFile(row, row + 0.5);
    EXPECT_EQ(payroll_.OpenFile(), StatusSuccess);
    EXPECT_EQ(payroll_.Read(), StatusSuccess);
  }

  void SetOnFile(std::int32_t row, double amount) {
    rows_.Set(row, EmployeeAux1Record::Amount, amount);
  }
  double OnFile(std::int32_t row) {
    return rows_.Value(row, EmployeeAux1Record::Amount).ToDouble();
  }

  Company company_;
  FieldRows rows_{company_.Folder()};
  DefaultEmployeeData payroll_;
};

using PayrollFieldRowNumbers = PayrollFieldRow;
using PayrollFieldRowChanged = PayrollFieldRow;

TEST_F(PayrollFieldRowNumbers, StartAt0AndTheEmployersAt40) {
  SetOnFile(0, 100.5);
  SetOnFile(40, 140.5);
  EXPECT_EQ(payroll_.EEAmount(0), 100.5);
  EXPECT_EQ(payroll_.ERAmount(0), 140.5);
  EXPECT_EQ(payroll_.EEAmount(1), 1.5);
}

TEST_F(PayrollFieldRowNumbers, KnowNoBounds) {
  SetOnFile(40, 140.5);
  SetOnFile(79, 179.5);
  SetOnFile(0, 100.5);
  EXPECT_EQ(payroll_.EEAmount(40), 140.5);
  EXPECT_EQ(payroll_.EEAmount(79), 179.5);
  EXPECT_EQ(payroll_.ERAmount(39), 179.5);
  EXPECT_EQ(payroll_.ERAmount(-40), 100.5);
  EXPECT_EQ(payroll_.EEAmount(80), 0);
  EXPECT_EQ(payroll_.EEAmount(-2), 0);
}

TEST_F(PayrollFieldRowNumbers, AreOneLessThanThoseOfEmployees) {
  AddEmployee(company_.Folder(), {"ADAMS", 30});
  payroll_.EEAmount(1, 9.5);
  ASSERT_EQ(payroll_.CloseFile(), StatusSuccess);
  Employee employee;
  ASSERT_EQ(employee.OpenFile(), StatusSuccess);
  ASSERT_EQ(employee.GetEqual("ADAMS"), StatusSuccess);
  EXPECT_EQ(employee.EEAmount(2), 9.5);
  EXPECT_EQ(employee.EEAmount(3), 2.5);
}

// A new object has no row in hand, and calls that number -1.
TEST_F(PayrollFieldRowNumbers, FindABlankRowOfNumberMinus1InANewObject) {
  EXPECT_EQ(payroll_.EEAmount(-1), 0);
  payroll_.EEAmount(-1, 9.5);
  EXPECT_EQ(payroll_.EEAmount(-1), 9.5);
  EXPECT_EQ(payroll_.ERAmount(-41), 9.5);
  const std::int32_t rows = rows_.Count();
  EXPECT_EQ(payroll_.CloseFile(), StatusSuccess);
  EXPECT_EQ(rows_.Count(), rows) << "there is no such row on file, and none is made";
}

TEST_F(PayrollFieldRowNumbers, FindNoRowOfNumberMinus1AfterAnother) {
  EXPECT_EQ(payroll_.EEAmount(1), 1.5);
  payroll_.EEAmount(-1, 9.5);
  EXPECT_EQ(payroll_.EEAmount(-1), 0);
  ASSERT_EQ(payroll_.CloseFile(), StatusSuccess);
  EXPECT_EQ(OnFile(1), 1.5);
}

TEST_F(PayrollFieldRow, IsNotReadAgainWhileItIsInHand) {
  EXPECT_EQ(payroll_.EEAmount(1), 1.5);
  SetOnFile(1, 9.5);
  EXPECT_EQ(payroll_.EEAmount(1), 1.5);
  EXPECT_EQ(payroll_.EEAmount(2), 2.5);
  EXPECT_EQ(payroll_.EEAmount(1), 9.5);
}

TEST_F(PayrollFieldRow, StaysInHandAfterOneThatIsMissing) {
  rows_.Delete(3);
  EXPECT_EQ(payroll_.EEAmount(1), 1.5);
  SetOnFile(1, 9.5);
  EXPECT_EQ(payroll_.EEAmount(3), 0);
  EXPECT_EQ(payroll_.EEAmount(1), 1.5);
}

TEST_F(PayrollFieldRow, IsForgottenByOpenFile) {
  EXPECT_EQ(payroll_.EEAmount(1), 1.5);
  SetOnFile(1, 9.5);
  ASSERT_EQ(payroll_.OpenFile(), StatusSuccess);
  EXPECT_EQ(payroll_.EEAmount(1), 9.5);
}

TEST_F(PayrollFieldRow, StaysInHandOverReadAndUpdate) {
  EXPECT_EQ(payroll_.EEAmount(1), 1.5);
  SetOnFile(1, 9.5);
  ASSERT_EQ(payroll_.Read(), StatusSuccess);
  ASSERT_EQ(payroll_.Update(), StatusSuccess);
  EXPECT_EQ(payroll_.EEAmount(1), 1.5);
}

TEST_F(PayrollFieldRow, ThatWasOnlyReadIsNotWritten) {
  EXPECT_EQ(payroll_.EEAmount(1), 1.5);
  ASSERT_EQ(payroll_.CloseFile(), StatusSuccess);
  EXPECT_EQ(OnFile(1), 1.5);
}

TEST_F(PayrollFieldRow, NeedsNoReadOfTheSettings) {
  DefaultEmployeeData payroll;
  ASSERT_EQ(payroll.OpenFile(), StatusSuccess);
  EXPECT_EQ(payroll.EEAmount(1), 1.5);
}

// --- A row that was changed ---

TEST_F(PayrollFieldRowChanged, IsWrittenByCloseFileAndNotBefore) {
  payroll_.EEAmount(1, 9.5);
  EXPECT_EQ(payroll_.EEAmount(1), 9.5);
  ASSERT_EQ(payroll_.Update(), StatusSuccess);
  EXPECT_EQ(OnFile(1), 1.5);
  ASSERT_EQ(payroll_.Read(), StatusSuccess);
  EXPECT_EQ(payroll_.EEAmount(1), 9.5);
  ASSERT_EQ(payroll_.CloseFile(), StatusSuccess);
  EXPECT_EQ(OnFile(1), 9.5);
}

TEST_F(PayrollFieldRowChanged, IsWrittenByDestruction) {
  {
    DefaultEmployeeData payroll;
    ASSERT_EQ(payroll.OpenFile(), StatusSuccess);
    payroll.EEAmount(1, 9.5);
  }
  EXPECT_EQ(OnFile(1), 9.5);
}

TEST_F(PayrollFieldRowChanged, IsWrittenWithAllThatWasAssigned) {
  payroll_.EEAmount(1, 9.5);
  payroll_.EECategory(1, 7);
  payroll_.EERun(1, true);
  ASSERT_EQ(payroll_.CloseFile(), StatusSuccess);
  EXPECT_EQ(OnFile(1), 9.5);
  EXPECT_EQ(rows_.Value(1, EmployeeAux1Record::Category), 7);
  EXPECT_EQ(rows_.Value(1, EmployeeAux1Record::Run), true);
}

TEST_F(PayrollFieldRowChanged, IsLostWhenAnotherIsRead) {
  payroll_.EEAmount(1, 9.5);
  EXPECT_EQ(payroll_.EEAmount(2), 2.5);
  EXPECT_EQ(payroll_.EEAmount(1), 1.5);
  ASSERT_EQ(payroll_.CloseFile(), StatusSuccess);
  EXPECT_EQ(OnFile(1), 1.5);
  EXPECT_EQ(OnFile(2), 2.5);
}

TEST_F(PayrollFieldRowChanged, IsLostWhenTheEmployersOfItsNumberIsRead) {
  SetOnFile(41, 41.5);
  payroll_.EEAmount(1, 9.5);
  EXPECT_EQ(payroll_.ERAmount(1), 41.5);
  ASSERT_EQ(payroll_.CloseFile(), StatusSuccess);
  EXPECT_EQ(OnFile(1), 1.5);
}

TEST_F(PayrollFieldRowChanged, IsLostWhenAnotherIsChanged) {
  payroll_.EEAmount(1, 8.5);
  payroll_.EEAmount(2, 9.5);
  ASSERT_EQ(payroll_.CloseFile(), StatusSuccess);
  EXPECT_EQ(OnFile(1), 1.5);
  EXPECT_EQ(OnFile(2), 9.5);
}

TEST_F(PayrollFieldRowChanged, IsNotLostWhenTheOtherIsMissing) {
  rows_.Delete(3);
  payroll_.EEAmount(1, 9.5);
  EXPECT_EQ(payroll_.EEAmount(3), 0);
  ASSERT_EQ(payroll_.CloseFile(), StatusSuccess);
  EXPECT_EQ(OnFile(1), 9.5);
}

TEST_F(PayrollFieldRowChanged, IsLostByOpenFile) {
  payroll_.EEAmount(1, 9.5);
  ASSERT_EQ(payroll_.OpenFile(), StatusSuccess);
  EXPECT_EQ(payroll_.EEAmount(1), 1.5);
  ASSERT_EQ(payroll_.CloseFile(), StatusSuccess);
  EXPECT_EQ(OnFile(1), 1.5);
}

TEST_F(PayrollFieldRowChanged, ByOthersTooIsLostWithoutATrace) {
  payroll_.EEAmount(1, 9.5);
  SetOnFile(1, 8.5);
  EXPECT_EQ(payroll_.CloseFile(), StatusSuccess);
  EXPECT_EQ(OnFile(1), 8.5);
}

TEST_F(PayrollFieldRowChanged, ThatTheFileRefusesIsLostWithoutATrace) {
  ASSERT_EQ(payroll_.CloseFile(), StatusSuccess);
  test::ProtectFile(rows_.Path(), /*allowRead=*/true);
  ASSERT_EQ(payroll_.OpenFile(), StatusSuccess);
  payroll_.EEAmount(1, 9.5);
  EXPECT_EQ(payroll_.EEAmount(1), 9.5);
  EXPECT_EQ(payroll_.CloseFile(), StatusSuccess);
  EXPECT_EQ(OnFile(1), 1.5);
}

// --- Accounts of the rows ---

/// A property that shows an account of a row.
struct RowAccount {
  const char* name;
  std::string (DefaultEmployeeData::*get)(std::int16_t);
  void (DefaultEmployeeData::*let)(std::int16_t, std::string_view);
  const Field* field;
  std::int32_t row;  ///< of number 5
};

// Contra and expense accounts share a field of the rows, and so do the other two.
const RowAccount RowAccounts[] = {
    {"EEContraAccount", &DefaultEmployeeData::EEContraAccount,
     &DefaultEmployeeData::EEContraAccount, &EmployeeAux1Record::ExpenseAccountIndex, 5},
    {"EEGLAccount", &DefaultEmployeeData::EEGLAccount, &DefaultEmployeeData::EEGLAccount,
     &EmployeeAux1Record::GLAccountIndex, 5},
    {"ERExpenseAccount", &DefaultEmployeeData::ERExpenseAccount,
     &DefaultEmployeeData::ERExpenseAccount, &EmployeeAux1Record::ExpenseAccountIndex, 45},
    {"ERLiabilityAccount", &DefaultEmployeeData::ERLiabilityAccount,
     &DefaultEmployeeData::ERLiabilityAccount, &EmployeeAux1Record::GLAccountIndex, 45},
};

/// An object that shows an account, and the row on file.
class PayrollAccounts {
 public:
  PayrollAccounts(const RowAccount& account, const std::filesystem::path& folder)
      : account_(account), rows_(folder) {}

  DefaultEmployeeData& Object() { return object_; }
  std::string Get() { return (object_.*account_.get)(5); }
  void Let(std::string_view id) { (object_.*account_.let)(5, id); }
  void Store(std::int32_t account) { rows_.Set(account_.row, *account_.field, account); }
  Variant Stored() { return rows_.Value(account_.row, *account_.field); }

 private:
  const RowAccount& account_;
  FieldRows rows_;
  DefaultEmployeeData object_;
};

class PayrollFieldAccount : public testing::Test {
 protected:
  static constexpr std::int32_t Wages = 17;
  static constexpr std::int32_t Taxes = 18;

  PayrollFieldAccount() {
    AddAccount(company_.Folder(), {"7100", Wages});
    AddAccount(company_.Folder(), {"7200", Taxes});
  }

  std::filesystem::path ChartFile() const {
    return company_.Folder() / TovrinFileNames::ChartFile();
  }

  /// Runs `body(accounts)` for each property, with an open object.
  template <typename Body>
  void ForEachProperty(Body&& body) {
    for (const RowAccount& account : RowAccounts) {
      SCOPED_TRACE(account.name);
      PayrollAccounts accounts(account, company_.Folder());
      ASSERT_EQ(accounts.Object().OpenFile(), StatusSuccess);
      body(accounts);
    }
  }

  Company company_;
};

TEST_F(PayrollFieldAccount, IsStoredAsTheIndexAndShownAsTheID) {
  ForEachProperty([](PayrollAccounts& accounts) {
    accounts.Store(Wages);
    EXPECT_EQ(accounts.Get(), "7100");
    accounts.Let("7200");
    EXPECT_EQ(accounts.Get(), "7200");
    ASSERT_EQ(accounts.Object().CloseFile(), StatusSuccess);
    EXPECT_EQ(accounts.Stored(), Taxes);
  });
}

TEST_F(PayrollFieldAccount, AssignedEmptyIsStoredAs0) {
  const TakenAway noChart(ChartFile());
  ForEachProperty([](PayrollAccounts& accounts) {
    accounts.Store(Wages);
    accounts.Let("");
    EXPECT_EQ(accounts.Get(), "");
    ASSERT_EQ(accounts.Object().CloseFile(), StatusSuccess);
    EXPECT_EQ(accounts.Stored(), 0);
  });
}

TEST_F(PayrollFieldAccount, WithoutARowIsEmptyAndDropsWhatIsAssigned) {
  const FieldRows rows(company_.Folder());
  rows.Delete(5);
  rows.Delete(45);
  const std::int32_t count = rows.Count();
  ForEachProperty([&](PayrollAccounts& accounts) {
    EXPECT_EQ(accounts.Get(), "");
    EXPECT_FALSE(IsHeldOpen(ChartFile()));
    accounts.Let("7200");
    EXPECT_EQ(accounts.Get(), "");
    ASSERT_EQ(accounts.Object().CloseFile(), StatusSuccess);
  });
  EXPECT_EQ(rows.Count(), count);
}

TEST_F(PayrollFieldAccount, OfAnUnknownIndexRaises) {
  ForEachProperty([](PayrollAccounts& accounts) {
    accounts.Store(99);
    ExpectRaised([&] { return accounts.Get(); }, ErrorRead,
                 "DefaultEmployeeData.GetAccount->btChart.GetEqual(99)", StatusKeyNotFound);
  });
}

TEST_F(PayrollFieldAccount, AssignedAnUnknownIDRaisesAndStaysAsItWas) {
  ForEachProperty([](PayrollAccounts& accounts) {
    accounts.Store(Wages);
    ExpectRaised([&] { accounts.Let("9999"); }, ErrorAccount,
                 "DefaultEmployeeData.GetAccountIndex->oChart.GetForAccountID(9999)",
                 StatusKeyNotFound);
    EXPECT_EQ(accounts.Get(), "7100");
    ASSERT_EQ(accounts.Object().CloseFile(), StatusSuccess);
    EXPECT_EQ(accounts.Stored(), Wages);
  });
}

TEST_F(PayrollFieldAccount, IsEmptyAndStoredAs0WhereTheChartRefusesAccess) {
  const Protection protection(ChartFile(), /*allowRead=*/false);
  ForEachProperty([](PayrollAccounts& accounts) {
    accounts.Store(Wages);
    EXPECT_EQ(accounts.Get(), "");
    accounts.Let("7200");
    ASSERT_EQ(accounts.Object().CloseFile(), StatusSuccess);
    EXPECT_EQ(accounts.Stored(), 0);
  });
}

}  // namespace
}  // namespace larkmoor
