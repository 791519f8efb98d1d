// The class Employee: its file and the six payroll files that go with it from release 19 on, its
// finders, and the fields that show the record in another form. Payroll is told in
// employee_payroll_test.cpp and employee_payroll_rows_test.cpp, accounts in
// employee_charts_test.cpp.
#include "engine/records/employee.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <string>

#include <gtest/gtest.h>

#include <larkmoor/masters/employee.h>
#include <larkmoor/status.h>

#include "engine/records/employee_aux5.h"
#include "engine/store/driver.h"
#include "engine/tovrin_file.h"
#include "engine/tovrin_file_names.h"
#include "support/child_process.h"
#include "support/company.h"
#include "support/errors.h"
#include "support/failing_disk.h"
#include "support/masters.h"
#include "support/payroll_files.h"
#include "support/read_only_file.h"
#include "support/record_files.h"
#include "support/taken_away.h"

namespace larkmoor {
namespace {

using test::AddEmployee;
using test::Company;
using test::IsHeldOpen;
using test::OpenRecordFile;
using test::PayrollFiles;
using test::RaisedNumber;
using test::TakenAway;

class EmployeeTest : public testing::Test {
 protected:
  explicit EmployeeTest(double release = 19.0) : company_(release) {
    AddEmployee(company_.Folder(), {"BAKER", 20});
    AddEmployee(company_.Folder(), {"ADAMS", 30});
    AddEmployee(company_.Folder(), {"CLARK", 10});
  }

  std::filesystem::path EmployeeFile() const {
    return company_.Folder() / TovrinFileNames::EmployeeFile();
  }

  /// Whether any of the object's seven files is open.
  bool IsAnyHeldOpen() const {
    return IsHeldOpen(EmployeeFile()) || std::ranges::any_of(payroll_.All(), IsHeldOpen);
  }

  Company company_;
  PayrollFiles payroll_{company_.Folder()};
};

/// An object open on the employees.
class OpenEmployeeTest : public EmployeeTest {
 protected:
  explicit OpenEmployeeTest(double release = 19.0) : EmployeeTest(release) {
    EXPECT_EQ(employee_.OpenFile(), StatusSuccess);
  }

  Employee employee_;
};

using EmployeeLifecycle = EmployeeTest;
using EmployeePayrollFiles = EmployeeTest;
using EmployeeClosed = EmployeeTest;
using EmployeeFinders = OpenEmployeeTest;
using EmployeeWrites = OpenEmployeeTest;
using EmployeeStoredFields = OpenEmployeeTest;

// --- Opening and closing ---

TEST_F(EmployeeLifecycle, FileIsEmployeeDat) {
  Employee employee;
  ASSERT_EQ(employee.OpenFile(), StatusSuccess);
  EXPECT_TRUE(IsHeldOpen(company_.Folder() / "Employee.dat"));
}

TEST_F(EmployeeLifecycle, OperationsBeforeOpenFileAnswer3) {
  Employee employee;
  EXPECT_EQ(employee.GetEqual("ADAMS"), StatusFileNotOpen);
  EXPECT_EQ(employee.StepFirst(), StatusFileNotOpen);
  EXPECT_EQ(employee.StepLast(), StatusFileNotOpen);
  EXPECT_EQ(employee.StepNext(), StatusFileNotOpen);
  EXPECT_EQ(employee.StepPrevious(), StatusFileNotOpen);
  EXPECT_EQ(employee.Insert(), StatusFileNotOpen);
  EXPECT_EQ(employee.Update(), StatusFileNotOpen);
  EXPECT_EQ(employee.Delete(), StatusFileNotOpen);
  EXPECT_EQ(employee.RecordCount(), 0);
  EXPECT_EQ(employee.CloseFile(), StatusSuccess);
}

TEST_F(EmployeeLifecycle, FailedOpenFileLeavesItClosed) {
  Employee employee;
  {
    const TakenAway away(EmployeeFile());
    EXPECT_EQ(employee.OpenFile(), StatusFileNotFound);
    EXPECT_EQ(employee.StepFirst(), StatusFileNotOpen);
    EXPECT_EQ(employee.CloseFile(), StatusSuccess);
  }
  EXPECT_FALSE(IsAnyHeldOpen());
  EXPECT_EQ(employee.OpenFile(), StatusSuccess);
}

TEST_F(EmployeeLifecycle, FileOfAnotherOwnerAnswers51) {
  test::ProtectFile(EmployeeFile(), /*allowRead=*/false);
  EXPECT_EQ(Employee().OpenFile(), StatusInvalidOwner);
}

TEST_F(EmployeeLifecycle, ReadOnlyFileDoesNotOpen) {
  test::WhereOnlyThisIsReadOnly(EmployeeFile(),
                                [] { EXPECT_EQ(Employee().OpenFile(), StatusPermission); });
}

TEST_F(EmployeeLifecycle, CloseFileClosesAllAndAnswers0EachTime) {
  Employee employee;
  ASSERT_EQ(employee.OpenFile(), StatusSuccess);
  for (const auto& path : payroll_.All()) EXPECT_TRUE(IsHeldOpen(path)) << path;
  EXPECT_EQ(employee.CloseFile(), StatusSuccess);
  EXPECT_FALSE(IsAnyHeldOpen());
  EXPECT_EQ(employee.CloseFile(), StatusSuccess);
}

TEST_F(EmployeeLifecycle, CloseFileOfAFileThatIsNoLongerOpenAnswers3) {
  Employee employee;
  ASSERT_EQ(employee.OpenFile(), StatusSuccess);
  ASSERT_EQ(TovrinFile().btReset(), StatusSuccess);
  EXPECT_EQ(employee.CloseFile(), StatusFileNotOpen);
  EXPECT_EQ(employee.CloseFile(), StatusSuccess);
}

TEST_F(EmployeeLifecycle, CloseFileThatFailsAnswersItsStatusAndClosesAllTheSame) {
  test::RunInChild([&] {
    Employee employee;
    ASSERT_EQ(employee.OpenFile(), StatusSuccess);
    ASSERT_EQ(employee.Insert(), StatusSuccess);
    test::BreakDisk(EmployeeFile());
    EXPECT_EQ(employee.CloseFile(), StatusIOError);
    EXPECT_EQ(employee.CloseFile(), StatusSuccess);
  });
}

TEST_F(EmployeeLifecycle, FailedSecondOpenFileReleasesTheFileAndKeepsTheMark) {
  Employee employee;
  ASSERT_EQ(employee.OpenFile(), StatusSuccess);
  {
    const TakenAway away(EmployeeFile());
    EXPECT_EQ(employee.OpenFile(), StatusFileNotFound);
  }
  EXPECT_FALSE(IsHeldOpen(EmployeeFile()));
  EXPECT_EQ(employee.StepFirst(), StatusFileNotOpen);
  EXPECT_EQ(employee.CloseFile(), StatusFileNotOpen);
  EXPECT_EQ(employee.CloseFile(), StatusSuccess);
  EXPECT_FALSE(IsAnyHeldOpen());
}

TEST_F(EmployeeLifecycle, SecondOpenFileStartsAnew) {
  Employee employee;
  ASSERT_EQ(employee.OpenFile(), StatusSuccess);
  ASSERT_EQ(employee.GetEqual("ADAMS"), StatusSuccess);
  EXPECT_EQ(employee.OpenFile(), StatusSuccess);
  EXPECT_EQ(employee.EmployeeID(), "");
  EXPECT_EQ(employee.Update(), StatusInvalidPositioning);
  EXPECT_EQ(employee.CloseFile(), StatusSuccess);
  EXPECT_FALSE(IsAnyHeldOpen());
}

TEST_F(EmployeeLifecycle, DestructionClosesAllFiles) {
  {
    Employee employee;
    ASSERT_EQ(employee.OpenFile(), StatusSuccess);
    ASSERT_TRUE(IsAnyHeldOpen());
  }
  EXPECT_FALSE(IsAnyHeldOpen());
}

// --- The payroll files ---

TEST(EmployeeBelow19, OpensNoPayrollFile) {
  const Company company(18.9);
  for (const auto& path : PayrollFiles(company.Folder()).All()) std::filesystem::remove(path);
  Employee employee;
  EXPECT_EQ(employee.OpenFile(), StatusSuccess);
  EXPECT_EQ(employee.CloseFile(), StatusSuccess);
}

TEST_F(EmployeePayrollFiles, AreNeededEachOfThem) {
  for (const auto& path : payroll_.All()) {
    const TakenAway away(path);
    Employee employee;
    EXPECT_EQ(employee.OpenFile(), StatusFileNotFound) << path;
    EXPECT_EQ(employee.StepFirst(), StatusFileNotOpen) << path;
    EXPECT_FALSE(IsHeldOpen(EmployeeFile())) << path;
    for (const auto& other : payroll_.All()) {
      if (other == path) continue;
      EXPECT_FALSE(IsHeldOpen(other)) << other << " without " << path;
    }
    EXPECT_EQ(employee.CloseFile(), StatusSuccess) << path;
  }
}

// A file of another owner is no exception here.
TEST_F(EmployeePayrollFiles, OfAnotherOwnerFailTheOpen) {
  for (const auto& path : payroll_.All()) {
    test::ProtectFile(path, /*allowRead=*/false);
    EXPECT_EQ(Employee().OpenFile(), StatusInvalidOwner) << path;
    ASSERT_EQ(store::DefaultDriver().ClearOwner(path, "someone"), StatusSuccess);
  }
  EXPECT_EQ(Employee().OpenFile(), StatusSuccess);
}

// Of several failures the last one is told: all six are tried, in their order.
TEST_F(EmployeePayrollFiles, ThatFailLastGiveTheStatus) {
  const std::array<std::filesystem::path, 6> inOrder = payroll_.All();
  for (std::size_t i = 0; i + 1 < inOrder.size(); ++i) {
    const auto& earlier = inOrder[i];
    const auto& later = inOrder[i + 1];
    {
      const TakenAway away(earlier);
      test::ProtectFile(later, /*allowRead=*/false);
      EXPECT_EQ(Employee().OpenFile(), StatusInvalidOwner) << later;
      ASSERT_EQ(store::DefaultDriver().ClearOwner(later, "someone"), StatusSuccess);
    }
    const TakenAway away(later);
    test::ProtectFile(earlier, /*allowRead=*/false);
    EXPECT_EQ(Employee().OpenFile(), StatusFileNotFound) << later;
    ASSERT_EQ(store::DefaultDriver().ClearOwner(earlier, "someone"), StatusSuccess);
  }
}

TEST_F(EmployeePayrollFiles, AreOpenedForWritingButForTheDefaults) {
  // Whoever opens a file first leaves a lock file beside it, which this user may not make.
  ASSERT_EQ(Employee().OpenFile(), StatusSuccess);
  for (const auto& path : payroll_.All()) {
    const Status status = path == payroll_.defaults.Path() ? StatusSuccess : StatusPermission;
    test::WhereOnlyThisIsReadOnly(path, [&] { EXPECT_EQ(Employee().OpenFile(), status) << path; });
  }
}

TEST_F(EmployeePayrollFiles, ThatFailAtASecondOpenFileCloseAll) {
  Employee employee;
  ASSERT_EQ(employee.OpenFile(), StatusSuccess);
  {
    const TakenAway away(payroll_.quarters.Path());
    EXPECT_EQ(employee.OpenFile(), StatusFileNotFound);
  }
  EXPECT_FALSE(IsAnyHeldOpen());
  EXPECT_EQ(employee.StepFirst(), StatusFileNotOpen);
  EXPECT_EQ(employee.OpenFile(), StatusSuccess);
}

TEST_F(EmployeePayrollFiles, ThatFailToCloseAreNotTold) {
  test::RunInChild([&] {
    Employee employee;
    ASSERT_EQ(employee.OpenFile(), StatusSuccess);
    payroll_.levels.Add(30, 1, EmployeeAux5Record::PayRateAmount, 11.5);
    test::BreakDisk(payroll_.levels.Path());
    EXPECT_EQ(employee.CloseFile(), StatusSuccess);
  });
}

// --- Finders ---

TEST_F(EmployeeFinders, GetEqualReadsTheEmployeeOfExactlyThatID) {
  ASSERT_EQ(employee_.GetEqual("ADAMS"), StatusSuccess);
  EXPECT_EQ(employee_.Index(), 30);
  for (const char* id : {"ADAM", "ADAMSON", "Adams", "ADAMS ", ""}) {
    EXPECT_EQ(employee_.GetEqual(id), StatusKeyNotFound) << id;
  }
  EXPECT_EQ(employee_.EmployeeID(), "ADAMS") << "a read that finds nothing leaves the record";
}

TEST_F(EmployeeFinders, GetForIndexReadsTheEmployeeOfThatIndex) {
  ASSERT_EQ(employee_.GetForIndex(20), StatusSuccess);
  EXPECT_EQ(employee_.EmployeeID(), "BAKER");
  EXPECT_EQ(employee_.GetForIndex(21), StatusKeyNotFound);
  EXPECT_EQ(employee_.EmployeeID(), "BAKER");
}

TEST_F(EmployeeFinders, StepsGoInTheOrderOfInsertion) {
  ASSERT_EQ(employee_.StepFirst(), StatusSuccess);
  EXPECT_EQ(employee_.EmployeeID(), "BAKER");
  ASSERT_EQ(employee_.StepNext(), StatusSuccess);
  EXPECT_EQ(employee_.EmployeeID(), "ADAMS");
  ASSERT_EQ(employee_.StepLast(), StatusSuccess);
  EXPECT_EQ(employee_.EmployeeID(), "CLARK");
  EXPECT_EQ(employee_.StepNext(), StatusEndOfFile);
  ASSERT_EQ(employee_.StepPrevious(), StatusSuccess);
  EXPECT_EQ(employee_.EmployeeID(), "ADAMS");
}

// --- GetForIndex on old data and on a closed object ---

class EmployeeBelow11 : public OpenEmployeeTest {
 protected:
  EmployeeBelow11() : OpenEmployeeTest(10.9) {}
};

TEST_F(EmployeeBelow11, GetForIndexAnswers9AndReadsNothing) {
  ASSERT_EQ(employee_.GetEqual("ADAMS"), StatusSuccess);
  EXPECT_EQ(employee_.GetForIndex(20), StatusEndOfFile);
  EXPECT_EQ(employee_.EmployeeID(), "ADAMS");
  ASSERT_EQ(employee_.CloseFile(), StatusSuccess);
  EXPECT_EQ(employee_.GetForIndex(20), StatusEndOfFile);
  EXPECT_FALSE(IsHeldOpen(EmployeeFile()));
}

class EmployeeFrom11 : public OpenEmployeeTest {
 protected:
  EmployeeFrom11() : OpenEmployeeTest(11.0) {}
};

TEST_F(EmployeeFrom11, GetForIndexReads) {
  ASSERT_EQ(employee_.GetForIndex(20), StatusSuccess);
  EXPECT_EQ(employee_.EmployeeID(), "BAKER");
}

// Such an object knows no release yet.
TEST_F(EmployeeClosed, GetForIndexOfAnObjectThatNeverWasOpenAnswers9) {
  Employee employee;
  EXPECT_EQ(employee.GetForIndex(20), StatusEndOfFile);
  EXPECT_FALSE(IsAnyHeldOpen());
}

TEST_F(EmployeeClosed, GetForIndexOpensItAgainAndReads) {
  Employee employee;
  ASSERT_EQ(employee.OpenFile(), StatusSuccess);
  ASSERT_EQ(employee.CloseFile(), StatusSuccess);
  EXPECT_EQ(employee.GetForIndex(20), StatusSuccess);
  EXPECT_EQ(employee.EmployeeID(), "BAKER");
  for (const auto& path : payroll_.All()) EXPECT_TRUE(IsHeldOpen(path)) << path;
  EXPECT_EQ(employee.CloseFile(), StatusSuccess);
  EXPECT_FALSE(IsAnyHeldOpen());
}

TEST_F(EmployeeClosed, GetForIndexOpensItAgainAlsoToFindNothing) {
  Employee employee;
  ASSERT_EQ(employee.OpenFile(), StatusSuccess);
  ASSERT_EQ(employee.CloseFile(), StatusSuccess);
  EXPECT_EQ(employee.GetForIndex(21), StatusKeyNotFound);
  EXPECT_EQ(employee.StepFirst(), StatusSuccess);
}

TEST_F(EmployeeClosed, GetForIndexOpensItAgainAfterAReset) {
  Employee employee;
  ASSERT_EQ(employee.OpenFile(), StatusSuccess);
  ASSERT_EQ(TovrinFile().btReset(), StatusSuccess);
  EXPECT_EQ(employee.GetForIndex(20), StatusSuccess);
  EXPECT_EQ(employee.EmployeeID(), "BAKER");
}

// What is answered is the second read's 3, not what the open met.
TEST_F(EmployeeClosed, GetForIndexThatCannotOpenItAnswers3) {
  Employee employee;
  ASSERT_EQ(employee.OpenFile(), StatusSuccess);
  ASSERT_EQ(employee.CloseFile(), StatusSuccess);
  for (const auto& path : {EmployeeFile(), payroll_.fields.Path()}) {
    const TakenAway away(path);
    EXPECT_EQ(employee.GetForIndex(20), StatusFileNotOpen) << path;
  }
  EXPECT_FALSE(IsAnyHeldOpen());
}

TEST_F(EmployeeClosed, NoOtherReadOpensIt) {
  Employee employee;
  ASSERT_EQ(employee.OpenFile(), StatusSuccess);
  ASSERT_EQ(employee.CloseFile(), StatusSuccess);
  EXPECT_EQ(employee.GetEqual("ADAMS"), StatusFileNotOpen);
  EXPECT_EQ(employee.StepFirst(), StatusFileNotOpen);
  EXPECT_FALSE(IsAnyHeldOpen());
}

// --- Writes ---

TEST_F(EmployeeWrites, InsertGivesTheNextIndex) {
  employee_.EmployeeID("DUNN");
  ASSERT_EQ(employee_.Insert(), StatusSuccess);
  EXPECT_EQ(employee_.Index(), 31);
  EXPECT_EQ(employee_.RecordCount(), 4);
}

TEST_F(EmployeeWrites, InsertOfAnIDThatIsThereAnswers5) {
  employee_.EmployeeID("ADAMS");
  EXPECT_EQ(employee_.Insert(), StatusDuplicateKey);
  EXPECT_EQ(employee_.RecordCount(), 3);
}

TEST_F(EmployeeWrites, UpdateRewritesAndDeleteTakesAwayTheEmployeeInHand) {
  ASSERT_EQ(employee_.GetForIndex(20), StatusSuccess);
  employee_.JobTitle("Foreman");
  ASSERT_EQ(employee_.Update(), StatusSuccess);
  Employee other;
  ASSERT_EQ(other.OpenFile(), StatusSuccess);
  ASSERT_EQ(other.GetEqual("BAKER"), StatusSuccess);
  EXPECT_EQ(other.JobTitle(), "Foreman");
  ASSERT_EQ(other.Delete(), StatusSuccess);
  EXPECT_EQ(other.RecordCount(), 2);
  EXPECT_EQ(employee_.Update(), StatusRecordConflict);
}

TEST_F(EmployeeWrites, AddAndTakeAwayNoPayrollRows) {
  payroll_.levels.Add(30, 1, EmployeeAux5Record::PayRateAmount, 11.5);
  employee_.EmployeeID("DUNN");
  ASSERT_EQ(employee_.Insert(), StatusSuccess);
  EXPECT_EQ(payroll_.levels.Count(), 1);
  EXPECT_EQ(payroll_.fields.Count(), 0);
  EXPECT_EQ(payroll_.quarters.Count(), 0);
  ASSERT_EQ(employee_.GetEqual("ADAMS"), StatusSuccess);
  ASSERT_EQ(employee_.Delete(), StatusSuccess);
  EXPECT_EQ(payroll_.levels.Count(), 1) << "the rows outlive their employee";
}

// --- Fields in another form ---

TEST(EmployeeDEPFSAStatus, IsANumberShownAsText) {
  Employee employee;
  EXPECT_EQ(employee.DEPFSAStatus(), "0");
  const struct {
    const char* written;
    const char* read;
  } samples[] = {
      {"2", "2"},     {"-70000", "-70000"}, {" 7 ", "7"},    {"007", "7"},
      {"12.5", "12"}, {"13.5", "14"},       {"2e3", "2000"}, {"2147483647", "2147483647"}};
  for (const auto& sample : samples) {
    employee.DEPFSAStatus(sample.written);
    EXPECT_EQ(employee.DEPFSAStatus(), sample.read) << sample.written;
  }
}

TEST(EmployeeDEPFSAStatus, OfATextThatIsNoSuchNumberRaisesAndStaysAsItWas) {
  Employee employee;
  employee.DEPFSAStatus("2");
  EXPECT_EQ(RaisedNumber([&] { employee.DEPFSAStatus("joint"); }), 13);
  EXPECT_EQ(RaisedNumber([&] { employee.DEPFSAStatus(""); }), 13);
  EXPECT_EQ(RaisedNumber([&] { employee.DEPFSAStatus("2147483648"); }), 6);
  EXPECT_EQ(employee.DEPFSAStatus(), "2");
}

TEST_F(EmployeeStoredFields, DEPFSAStatusIsStoredAsANumber) {
  employee_.DEPFSAStatus("3");
  ASSERT_EQ(employee_.Insert(), StatusSuccess);
  OpenRecordFile file(EmployeeFile(), EmployeeRecord::Describe());
  ASSERT_EQ(file.File().btStepLast(), StatusSuccess);
  EXPECT_EQ(file.Record().GetLong(EmployeeRecord::DEPFSAStatus), 3);
}

TEST_F(EmployeeStoredFields, PrevWeeksAndPrevUnusedAreThoseOfTheFirstElement) {
  OpenRecordFile file(EmployeeFile(), EmployeeRecord::Describe());
  file.Add([](Tovrin2Record& record) {
    record.SetText(EmployeeRecord::EmployeeID, "DUNN");
    record.SetInteger(EmployeeRecord::PrevWeeks, 50, 0);
    record.SetInteger(EmployeeRecord::PrevWeeks, 51, 1);
    record.SetDouble(EmployeeRecord::PrevUnused, 2.5, 0);
    record.SetDouble(EmployeeRecord::PrevUnused, 3.5, 1);
  });
  ASSERT_EQ(employee_.GetEqual("DUNN"), StatusSuccess);
  EXPECT_EQ(employee_.PrevWeeks(), 50);
  EXPECT_EQ(employee_.PrevUnused(), 2.5);
  employee_.PrevWeeks(40);
  employee_.PrevUnused(4.5);
  ASSERT_EQ(employee_.Update(), StatusSuccess);
  ASSERT_EQ(file.File().btStepLast(), StatusSuccess);
  EXPECT_EQ(file.Record().GetInteger(EmployeeRecord::PrevWeeks, 0), 40);
  EXPECT_EQ(file.Record().GetInteger(EmployeeRecord::PrevWeeks, 1), 51);
  EXPECT_EQ(file.Record().GetDouble(EmployeeRecord::PrevUnused, 0), 4.5);
  EXPECT_EQ(file.Record().GetDouble(EmployeeRecord::PrevUnused, 1), 3.5);
}

TEST(EmployeeUnused, Reads0AndDropsWrites) {
  Employee employee;
  for (const std::int16_t index : {std::int16_t{-1}, std::int16_t{0}, std::int16_t{32767}}) {
    employee.Unused0(index, 7);
    EXPECT_EQ(employee.Unused0(index), 0) << index;
    employee.Unused2(index, 7);
    EXPECT_EQ(employee.Unused2(index), 0) << index;
    employee.Unused4(index, 7);
    EXPECT_EQ(employee.Unused4(index), 0) << index;
    employee.Unknown8(index, 7);
    EXPECT_EQ(employee.Unknown8(index), 0) << index;
    employee.Unknown9(index, 7);
    EXPECT_EQ(employee.Unknown9(index), 0) << index;
    employee.EEUnused(index, 1, 7);
    EXPECT_EQ(employee.EEUnused(index, 1), 0) << index;
  }
  employee.Unused1(7);
  EXPECT_EQ(employee.Unused1(), 0);
  employee.Unused3(7);
  EXPECT_EQ(employee.Unused3(), 0);
  employee.Unknown5(7);
  EXPECT_EQ(employee.Unknown5(), 0);
  employee.Unknown6(7);
  EXPECT_EQ(employee.Unknown6(), 0);
  employee.Unused7(7);
  EXPECT_EQ(employee.Unused7(), 0);
}

// What has no file of its own stays in the record in every release.
TEST_F(EmployeeStoredFields, EarlierYearsAndDirectDepositStayInTheRecord) {
  employee_.PrevPayLevel(20, 1.5);
  employee_.PrevYearsEE(40, 2.5);
  employee_.PreviousYearsER(1, 3.5);
  employee_.PayrollUnused(4, 4.5);
  employee_.DirDepRoutingAccount(1, "12-345");
  ASSERT_EQ(employee_.Insert(), StatusSuccess);
  OpenRecordFile file(EmployeeFile(), EmployeeRecord::Describe());
  ASSERT_EQ(file.File().btStepLast(), StatusSuccess);
  EXPECT_EQ(file.Record().GetDouble(EmployeeRecord::PrevPayLevel, 20), 1.5);
  EXPECT_EQ(file.Record().GetDouble(EmployeeRecord::PrevYearsEE, 40), 2.5);
  EXPECT_EQ(file.Record().GetDouble(EmployeeRecord::PreviousYearsER, 1), 3.5);
  EXPECT_EQ(file.Record().GetDouble(EmployeeRecord::PayrollUnused, 4), 4.5);
  EXPECT_EQ(file.Record().GetText(EmployeeRecord::DirDepRoutingAccount, 1), "12-345");
}

TEST_F(EmployeeStoredFields, IndexesOfTheseAreNotBroughtIntoRange) {
  for (const std::int16_t index : {std::int16_t{-1}, std::int16_t{32767}}) {
    EXPECT_EQ(RaisedNumber([&] { return employee_.PrevPayLevel(index); }), 9) << index;
    EXPECT_EQ(RaisedNumber([&] { employee_.PrevHoursLevel(index, 1.5); }), 9) << index;
    EXPECT_EQ(RaisedNumber([&] { return employee_.PrevYearsEE(index); }), 9) << index;
    EXPECT_EQ(RaisedNumber([&] { return employee_.PayrollUnused(index); }), 9) << index;
    EXPECT_EQ(RaisedNumber([&] { return employee_.CustomField(index); }), 9) << index;
  }
}

}  // namespace
}  // namespace larkmoor
