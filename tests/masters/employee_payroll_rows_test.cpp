// What the class Employee keeps of its payroll rows from one access to the next, from release 19
// on: one row of each kind, whoever's it is, until another one is read. What is assigned to a pay
// level is written when that happens or at CloseFile; what is assigned to a payroll field never is.
#include <cstdint>

#include <gtest/gtest.h>

#include <larkmoor/masters/employee.h>
#include <larkmoor/status.h>

#include "engine/records/employee_aux1.h"
#include "engine/records/employee_aux5.h"
#include "engine/records/employee_aux6.h"
#include "support/payroll_company.h"
#include "support/record_files.h"

namespace larkmoor {
namespace {

using test::PayrollTest;

// --- Pay levels ---

/// Both employees have the first two pay levels.
class EmployeeLevelRow : public PayrollTest {
 protected:
  EmployeeLevelRow() {
    payroll_.levels.Add(Adams, 1, Rate, 11.5);
    payroll_.levels.Add(Adams, 2, Rate, 12.5);
    payroll_.levels.Add(Baker, 1, Rate, 21.5);
    payroll_.levels.Add(Baker, 2, Rate, 22.5);
  }

  static constexpr const Field& Rate = EmployeeAux5Record::PayRateAmount;

  double OnFile(std::int32_t employee, std::int32_t level) {
    return payroll_.levels.Value(employee, level, Rate).ToDouble();
  }
  void ChangeOnFile(std::int32_t employee, std::int32_t level, double rate) {
    payroll_.levels.Change(employee, level, Rate, rate);
  }
};

using EmployeeLevelRowChanged = EmployeeLevelRow;

TEST_F(EmployeeLevelRow, IsNotReadAgainWhileItIsInHand) {
  EXPECT_EQ(employee_.PayRateAmount(1), 11.5);
  ChangeOnFile(Adams, 1, 99.5);
  EXPECT_EQ(employee_.PayRateAmount(1), 11.5);
  EXPECT_EQ(employee_.PayRateAmount(0), 11.5);
  EXPECT_EQ(employee_.PayRateAmount(2), 12.5);
  EXPECT_EQ(employee_.PayRateAmount(1), 99.5);
}

TEST_F(EmployeeLevelRow, StaysInHandAfterOneThatIsMissing) {
  EXPECT_EQ(employee_.PayRateAmount(1), 11.5);
  ChangeOnFile(Adams, 1, 99.5);
  EXPECT_EQ(employee_.PayRateAmount(3), 0);
  EXPECT_EQ(employee_.PayRateAmount(1), 11.5);
}

TEST_F(EmployeeLevelRow, ThatIsMissingIsLookedForEachTime) {
  EXPECT_EQ(employee_.PayRateAmount(3), 0);
  payroll_.levels.Add(Adams, 3, Rate, 13.5);
  EXPECT_EQ(employee_.PayRateAmount(3), 13.5);
}

TEST_F(EmployeeLevelRow, OfTheEmployeeBeforeIsShownUntilAnotherIsRead) {
  EXPECT_EQ(employee_.PayRateAmount(1), 11.5);
  ASSERT_EQ(employee_.GetEqual("BAKER"), StatusSuccess);
  EXPECT_EQ(employee_.PayRateAmount(1), 11.5);
  EXPECT_EQ(employee_.PayRateAmount(2), 22.5);
  EXPECT_EQ(employee_.PayRateAmount(1), 21.5);
}

TEST_F(EmployeeLevelRow, OfTheEmployeeBeforeIsShownForOneWithoutRows) {
  EXPECT_EQ(employee_.PayRateAmount(1), 11.5);
  employee_.EmployeeID("DUNN");
  employee_.Index(0);
  ASSERT_EQ(employee_.Insert(), StatusSuccess);
  EXPECT_EQ(employee_.PayRateAmount(1), 11.5);
  EXPECT_EQ(employee_.PayRateAmount(2), 0);
}

TEST_F(EmployeeLevelRow, IsForgottenByOpenFile) {
  EXPECT_EQ(employee_.PayRateAmount(1), 11.5);
  ASSERT_EQ(employee_.OpenFile(), StatusSuccess);
  ASSERT_EQ(employee_.GetEqual("BAKER"), StatusSuccess);
  EXPECT_EQ(employee_.PayRateAmount(1), 21.5);
}

TEST_F(EmployeeLevelRow, ThatWasOnlyReadIsNotWritten) {
  EXPECT_EQ(employee_.PayRateAmount(1), 11.5);
  ChangeOnFile(Adams, 1, 99.5);
  EXPECT_EQ(employee_.PayRateAmount(2), 12.5);
  ASSERT_EQ(employee_.CloseFile(), StatusSuccess);
  EXPECT_EQ(OnFile(Adams, 1), 99.5);
}

// --- Pay levels that were changed ---

TEST_F(EmployeeLevelRowChanged, IsWrittenWhenAnotherIsRead) {
  employee_.PayRateAmount(1, 15.5);
  EXPECT_EQ(employee_.PayRateAmount(1), 15.5);
  EXPECT_EQ(OnFile(Adams, 1), 11.5);
  EXPECT_EQ(employee_.PayRateAmount(2), 12.5);
  EXPECT_EQ(OnFile(Adams, 1), 15.5);
}

TEST_F(EmployeeLevelRowChanged, IsWrittenWhenAnotherIsAssigned) {
  employee_.PayRateAmount(1, 15.5);
  employee_.PayRateAmount(2, 16.5);
  EXPECT_EQ(OnFile(Adams, 1), 15.5);
  EXPECT_EQ(OnFile(Adams, 2), 12.5);
  ASSERT_EQ(employee_.CloseFile(), StatusSuccess);
  EXPECT_EQ(OnFile(Adams, 2), 16.5);
}

TEST_F(EmployeeLevelRowChanged, IsWrittenAlsoWhenTheOtherIsMissing) {
  employee_.PayRateAmount(1, 15.5);
  EXPECT_EQ(employee_.PayRateAmount(3), 0);
  EXPECT_EQ(OnFile(Adams, 1), 15.5);
  employee_.PayRateAmount(1, 17.5);
  ASSERT_EQ(employee_.CloseFile(), StatusSuccess);
  EXPECT_EQ(OnFile(Adams, 1), 17.5) << "it stayed in hand";
}

TEST_F(EmployeeLevelRowChanged, IsWrittenAtDestruction) {
  {
    Employee employee;
    ASSERT_EQ(employee.OpenFile(), StatusSuccess);
    ASSERT_EQ(employee.GetEqual("BAKER"), StatusSuccess);
    employee.PayRateAmount(2, 25.5);
  }
  EXPECT_EQ(OnFile(Baker, 2), 25.5);
}

TEST_F(EmployeeLevelRowChanged, IsNotWrittenByAWriteOfTheEmployee) {
  employee_.PayRateAmount(1, 15.5);
  ASSERT_EQ(employee_.Update(), StatusSuccess);
  ASSERT_EQ(employee_.GetEqual("BAKER"), StatusSuccess);
  EXPECT_EQ(OnFile(Adams, 1), 11.5);
}

TEST_F(EmployeeLevelRowChanged, IsNotWrittenByLookingAtOtherRows) {
  payroll_.fields.Add(Adams, 2, [](Tovrin2Record&) {});
  employee_.PayRateAmount(1, 15.5);
  EXPECT_EQ(employee_.EEAmount(2), 0);
  EXPECT_EQ(employee_.PayrollWeeks(2), 0);
  EXPECT_EQ(OnFile(Adams, 1), 11.5);
}

TEST_F(EmployeeLevelRowChanged, IsLostByOpenFile) {
  employee_.PayRateAmount(1, 15.5);
  ASSERT_EQ(employee_.OpenFile(), StatusSuccess);
  ASSERT_EQ(employee_.GetEqual("ADAMS"), StatusSuccess);
  EXPECT_EQ(employee_.PayRateAmount(1), 11.5);
  ASSERT_EQ(employee_.CloseFile(), StatusSuccess);
  EXPECT_EQ(OnFile(Adams, 1), 11.5);
}

TEST_F(EmployeeLevelRowChanged, IsWrittenWithAllThatWasAssigned) {
  employee_.PayRateAmount(1, 15.5);
  employee_.AcctDataUseStandard(1, true);
  EXPECT_EQ(employee_.PayRateAmount(2), 12.5);
  EXPECT_EQ(OnFile(Adams, 1), 15.5);
  EXPECT_EQ(payroll_.levels.Value(Adams, 1, EmployeeAux5Record::UseStandard), true);
}

TEST_F(EmployeeLevelRowChanged, IsWrittenForWhatAnyPropertyAssigned) {
  employee_.AcctDataUseStandard(1, true);
  EXPECT_EQ(employee_.PayRateAmount(2), 12.5);
  EXPECT_EQ(payroll_.levels.Value(Adams, 1, EmployeeAux5Record::UseStandard), true);
}

TEST_F(EmployeeLevelRowChanged, GoesToTheEmployeeBeforeWhoseRowIsInHand) {
  EXPECT_EQ(employee_.PayRateAmount(1), 11.5);
  ASSERT_EQ(employee_.GetEqual("BAKER"), StatusSuccess);
  employee_.PayRateAmount(1, 99.5);
  ASSERT_EQ(employee_.CloseFile(), StatusSuccess);
  EXPECT_EQ(OnFile(Adams, 1), 99.5);
  EXPECT_EQ(OnFile(Baker, 1), 21.5);
}

TEST_F(EmployeeLevelRowChanged, ByOthersTooIsLostWithoutATrace) {
  employee_.PayRateAmount(1, 15.5);
  ChangeOnFile(Adams, 1, 99.5);
  EXPECT_EQ(employee_.PayRateAmount(2), 12.5);
  EXPECT_EQ(OnFile(Adams, 1), 99.5);
  EXPECT_EQ(employee_.PayRateAmount(1), 99.5);
  EXPECT_EQ(employee_.CloseFile(), StatusSuccess);
  EXPECT_EQ(OnFile(Adams, 1), 99.5);
}

TEST_F(EmployeeLevelRowChanged, ThatTheFileRefusesIsLostWithoutATrace) {
  ASSERT_EQ(employee_.CloseFile(), StatusSuccess);
  test::ProtectFile(payroll_.levels.Path(), /*allowRead=*/true);
  ASSERT_EQ(employee_.OpenFile(), StatusSuccess);
  ASSERT_EQ(employee_.GetEqual("ADAMS"), StatusSuccess);
  employee_.PayRateAmount(1, 15.5);
  EXPECT_EQ(employee_.PayRateAmount(2), 12.5);
  EXPECT_EQ(employee_.PayRateAmount(1), 11.5);
  employee_.PayRateAmount(1, 15.5);
  EXPECT_EQ(employee_.CloseFile(), StatusSuccess);
  EXPECT_EQ(OnFile(Adams, 1), 11.5);
}

// --- Payroll fields ---

/// Both employees have the fields 5 and 6, the company defaults for 7 and 8.
class EmployeeFieldRow : public PayrollTest {
 protected:
  EmployeeFieldRow() {
    payroll_.fields.Add(Adams, 5, Amount, 15.5);
    payroll_.fields.Add(Adams, 6, Amount, 16.5);
    payroll_.fields.Add(Baker, 5, Amount, 25.5);
    payroll_.fields.Add(Baker, 6, Amount, 26.5);
    payroll_.defaults.Change(All, 7, DefaultAmount, 7.5);
    payroll_.defaults.Change(All, 8, DefaultAmount, 8.5);
  }

  static constexpr const Field& Amount = EmployeeAux6Record::Amount;
  static constexpr const Field& DefaultAmount = EmployeeAux1Record::Amount;
};

using EmployeeDefaultRow = EmployeeFieldRow;

TEST_F(EmployeeFieldRow, IsNotReadAgainWhileItIsInHand) {
  EXPECT_EQ(employee_.EEAmount(5), 15.5);
  payroll_.fields.Change(Adams, 5, Amount, 99.5);
  EXPECT_EQ(employee_.EEAmount(5), 15.5);
  EXPECT_EQ(employee_.EEAmount(7), 7.5);
  EXPECT_EQ(employee_.EEAmount(5), 15.5) << "a default takes no place";
  EXPECT_EQ(employee_.EEAmount(6), 16.5);
  EXPECT_EQ(employee_.EEAmount(5), 99.5);
}

TEST_F(EmployeeFieldRow, OfTheEmployeeBeforeIsShownUntilAnotherIsRead) {
  EXPECT_EQ(employee_.EEAmount(5), 15.5);
  ASSERT_EQ(employee_.GetEqual("BAKER"), StatusSuccess);
  EXPECT_EQ(employee_.EEAmount(5), 15.5);
  EXPECT_EQ(employee_.EEAmount(6), 26.5);
  EXPECT_EQ(employee_.EEAmount(5), 25.5);
}

TEST_F(EmployeeFieldRow, AssignedIsShownForTheNextEmployeeToo) {
  employee_.EEAmount(5, 99.5);
  ASSERT_EQ(employee_.GetEqual("BAKER"), StatusSuccess);
  EXPECT_EQ(employee_.EEAmount(5), 99.5);
}

TEST_F(EmployeeFieldRow, IsForgottenByOpenFileWithWhatWasAssigned) {
  employee_.EEAmount(5, 99.5);
  ASSERT_EQ(employee_.OpenFile(), StatusSuccess);
  ASSERT_EQ(employee_.GetEqual("ADAMS"), StatusSuccess);
  EXPECT_EQ(employee_.EEAmount(5), 15.5);
}

TEST_F(EmployeeFieldRow, OfTheEmployerIsAnotherThanOfTheEmployee) {
  payroll_.fields.Add(Adams, 45, EmployeeAux6Record::CalcName, "Insurance");
  EXPECT_EQ(employee_.EECalcName(5), "");
  EXPECT_EQ(employee_.ERCalcName(5), "Insurance");
  EXPECT_EQ(employee_.EECalcName(5), "");
}

TEST_F(EmployeeFieldRow, IsAnotherThanThePayLevelOfItsNumber) {
  payroll_.levels.Add(Adams, 5, EmployeeAux5Record::PayRateAmount, 11.5);
  EXPECT_EQ(employee_.EEAmount(5), 15.5);
  EXPECT_EQ(employee_.PayRateAmount(5), 11.5);
  EXPECT_EQ(employee_.EEAmount(5), 15.5);
}

TEST_F(EmployeeDefaultRow, IsNotReadAgainWhileItIsInHand) {
  EXPECT_EQ(employee_.EEAmount(7), 7.5);
  payroll_.defaults.Change(All, 7, DefaultAmount, 99.5);
  EXPECT_EQ(employee_.EEAmount(7), 7.5);
  ASSERT_EQ(employee_.GetEqual("BAKER"), StatusSuccess);
  EXPECT_EQ(employee_.EEAmount(7), 7.5);
  EXPECT_EQ(employee_.EEAmount(8), 8.5);
  EXPECT_EQ(employee_.EEAmount(7), 99.5);
}

TEST_F(EmployeeDefaultRow, StaysInHandAfterOneThatIsMissing) {
  payroll_.defaults.Delete(All, 9);
  EXPECT_EQ(employee_.EEAmount(7), 7.5);
  payroll_.defaults.Change(All, 7, DefaultAmount, 99.5);
  EXPECT_EQ(employee_.EEAmount(9), 0);
  EXPECT_EQ(employee_.EEAmount(7), 7.5);
}

TEST_F(EmployeeDefaultRow, GivesWayToARowOfTheEmployeeAsSoonAsThereIsOne) {
  EXPECT_EQ(employee_.EEAmount(7), 7.5);
  payroll_.fields.Add(Adams, 7, Amount, 17.5);
  EXPECT_EQ(employee_.EEAmount(7), 17.5);
}

TEST_F(EmployeeDefaultRow, IsForgottenByOpenFile) {
  EXPECT_EQ(employee_.EEAmount(7), 7.5);
  payroll_.defaults.Change(All, 7, DefaultAmount, 99.5);
  ASSERT_EQ(employee_.OpenFile(), StatusSuccess);
  ASSERT_EQ(employee_.GetEqual("ADAMS"), StatusSuccess);
  EXPECT_EQ(employee_.EEAmount(7), 99.5);
}

}  // namespace
}  // namespace larkmoor
