// The ID of the customer, vendor, employee, item or account that an alarm belongs to: shown and
// assigned as text, stored as an index. The look-up files open when they are needed first; one that
// refuses access is passed over in silence, every other failure is raised.
#include <cstdint>
#include <filesystem>
#include <initializer_list>
#include <ostream>
#include <string>
#include <string_view>

#include <gtest/gtest.h>

#include <larkmoor/crossref/alarm.h>
#include <larkmoor/status.h>

#include "connection/status_messages.h"
#include "engine/store/driver.h"
#include "support/accounts.h"
#include "support/company.h"
#include "support/errors.h"
#include "support/masters.h"
#include "support/raised_errors.h"
#include "support/read_only_file.h"
#include "support/record_files.h"
#include "support/taken_away.h"

namespace larkmoor {
namespace {

using test::Company;
using test::ExpectRaised;
using test::IsHeldOpen;
using test::Master;
using test::RaisedNumber;
using test::TakenAway;
using test::WhereOnlyThisIsReadOnly;

// What an alarm belongs to.
constexpr std::int16_t OfCustomer = 1;
constexpr std::int16_t OfVendor = 2;
constexpr std::int16_t OfEmployee = 3;
constexpr std::int16_t OfItem = 4;
constexpr std::int16_t OfAccount = 5;

void AddAccount(const std::filesystem::path& folder, const Master& account) {
  test::AddAccount(folder, {account.id, account.index});
}

/// A table that alarms belong to, and how its look-ups speak of their failures.
struct Target {
  std::string name;
  std::int16_t code;
  std::string file;
  void (*add)(const std::filesystem::path& folder, const Master& record);
  bool readsReadOnly;
  std::string readOpens;
  std::string reads;
  std::int32_t readError;
  std::string assignOpens;
  std::string assigns;
};

std::ostream& operator<<(std::ostream& out, const Target& target) { return out << target.name; }

const Target Customers{"Customer",
                       OfCustomer,
                       "Customer.dat",
                       test::AddCustomer,
                       true,
                       "Alarm.ID->Customer.OpenFile",
                       "Alarm.ID->Customer.GetForIndex(",
                       ErrorOpen,
                       "Alarm.ID->Customer.OpenFile",
                       "Alarm.ID->Customer.GetEqual("};
const Target Vendors{"Vendor",
                     OfVendor,
                     "Vendor.dat",
                     test::AddVendor,
                     true,
                     "Alarm.ID->Vendor.OpenFile",
                     "Alarm.ID->Vendor.GetForIndex(",
                     ErrorOpen,
                     "Alarm.ID->Vendor.OpenFile",
                     "Alarm.ID->Vendor.GetEqual("};
const Target Employees{"Employee",
                       OfEmployee,
                       "Employee.dat",
                       test::AddEmployee,
                       false,
                       "Alarm.ID->Employee.OpenFile",
                       "Alarm.ID->Employee.GetForIndex(",
                       ErrorOpen,
                       "Alarm.ID->Employee.OpenFile",
                       "Alarm.ID->Employee.GetEqual("};
// The two directions name the items differently.
const Target Items{"Item",
                   OfItem,
                   "LineItem.dat",
                   test::AddItem,
                   false,
                   "Alarm.ID->Item.OpenFile",
                   "Alarm.ID->EItem.GetForIndex(",
                   ErrorOpen,
                   "Alarm.ID->LineItem.OpenFile",
                   "Alarm.ID->Item.GetEqual("};
const Target Accounts{"Account",
                      OfAccount,
                      "Chart.dat",
                      AddAccount,
                      false,
                      "Alarm.ID->Chart.OpenFile",
                      "Alarm.ID->Chart.GetEqual(",
                      ErrorRead,
                      "Alarm.ID->Chart.OpenFile",
                      "Alarm.ID->Chart.GetForAccountID("};

/// A company with a record "MILLER" of index 12 and a record "SMITH" of index 13 of each kind, and
/// an alarm that is not open yet.
class AlarmIDTest : public testing::Test {
 protected:
  explicit AlarmIDTest(double release = 19.0) : company_(release) {
    for (const Target* target : {&Customers, &Vendors, &Employees, &Items, &Accounts}) {
      target->add(company_.Folder(), {"MILLER", 12});
      target->add(company_.Folder(), {"SMITH", 13});
    }
  }

  std::filesystem::path File(const Target& target) const { return company_.Folder() / target.file; }

  void PointAt(std::int16_t code, std::int32_t index) {
    alarm_.ApplyTo(code);
    alarm_.Index(index);
  }
  void PointAt(const Target& target, std::int32_t index) { PointAt(target.code, index); }

  static void LiftProtection(const std::filesystem::path& file) {
    ASSERT_EQ(store::DefaultDriver().ClearOwner(file, "someone"), StatusSuccess);
  }

  Company company_;
  Alarm alarm_;
};

/// The same for one kind of record, the alarm's file open.
class AlarmIDOfTarget : public AlarmIDTest, public testing::WithParamInterface<Target> {
 protected:
  AlarmIDOfTarget() { EXPECT_EQ(alarm_.OpenFile(), StatusSuccess); }

  std::filesystem::path LookUpFile() const { return File(GetParam()); }
  void PointAtIndex(std::int32_t index) { PointAt(GetParam(), index); }
};

std::string TargetName(const testing::TestParamInfo<Target>& tested) { return tested.param.name; }

// --- What holds of every kind of record ---

class AlarmIDOfAnyTarget : public AlarmIDOfTarget {};

TEST_P(AlarmIDOfAnyTarget, OfIndex0IsEmptyAndOpensNothing) {
  PointAtIndex(0);
  EXPECT_EQ(alarm_.ID(), "");
  EXPECT_FALSE(IsHeldOpen(LookUpFile()));
  const TakenAway away(LookUpFile());
  EXPECT_EQ(alarm_.ID(), "");
}

TEST_P(AlarmIDOfAnyTarget, AssignedStoresTheIndexOfTheRecordWithThatID) {
  PointAtIndex(0);
  alarm_.ID("SMITH");
  EXPECT_EQ(alarm_.Index(), 13);
  EXPECT_EQ(alarm_.ID(), "SMITH");
  alarm_.ID("MILLER");
  EXPECT_EQ(alarm_.Index(), 12);
  EXPECT_EQ(alarm_.ID(), "MILLER");
}

TEST_P(AlarmIDOfAnyTarget, AssignedEmptyStores0AndOpensNothing) {
  PointAtIndex(12);
  const TakenAway away(LookUpFile());
  alarm_.ID("");
  EXPECT_EQ(alarm_.Index(), 0);
}

TEST_P(AlarmIDOfAnyTarget, AssignedLeavesItsFileOpen) {
  PointAtIndex(0);
  alarm_.ID("SMITH");
  EXPECT_TRUE(IsHeldOpen(LookUpFile()));
  const TakenAway away(LookUpFile());
  EXPECT_EQ(alarm_.ID(), "SMITH");
  alarm_.ID("MILLER");
  EXPECT_EQ(alarm_.Index(), 12);
}

TEST_P(AlarmIDOfAnyTarget, AssignedWithoutTheFileRaisesAndIsTriedAgain) {
  PointAtIndex(12);
  {
    const TakenAway away(LookUpFile());
    ExpectRaised([&] { alarm_.ID("SMITH"); }, ErrorOpen, GetParam().assignOpens,
                 StatusFileNotFound);
    EXPECT_EQ(alarm_.Index(), 12);
  }
  alarm_.ID("SMITH");
  EXPECT_EQ(alarm_.Index(), 13);
}

TEST_P(AlarmIDOfAnyTarget, AssignedWhereAccessIsRefusedStores0InSilence) {
  test::ProtectFile(LookUpFile(), /*allowRead=*/false);
  PointAtIndex(12);
  alarm_.ID("SMITH");
  EXPECT_EQ(alarm_.Index(), 0);
}

TEST_P(AlarmIDOfAnyTarget, IsNotLookedUpAgainOnceAccessWasRefusedToAnAssignment) {
  test::ProtectFile(LookUpFile(), /*allowRead=*/false);
  PointAtIndex(0);
  alarm_.ID("SMITH");
  LiftProtection(LookUpFile());
  PointAtIndex(12);
  EXPECT_EQ(alarm_.ID(), "");
  alarm_.ID("SMITH");
  EXPECT_EQ(alarm_.Index(), 0);
  EXPECT_FALSE(IsHeldOpen(LookUpFile()));
}

TEST_P(AlarmIDOfAnyTarget, IsLookedUpAgainAfterTheNextOpenFileAndNotAfterCloseFile) {
  test::ProtectFile(LookUpFile(), /*allowRead=*/false);
  PointAtIndex(0);
  alarm_.ID("SMITH");
  LiftProtection(LookUpFile());
  ASSERT_EQ(alarm_.CloseFile(), StatusSuccess);
  PointAtIndex(12);
  alarm_.ID("SMITH");
  EXPECT_EQ(alarm_.Index(), 0);
  ASSERT_EQ(alarm_.OpenFile(), StatusSuccess);
  PointAtIndex(12);
  alarm_.ID("SMITH");
  EXPECT_EQ(alarm_.Index(), 13);
}

TEST_P(AlarmIDOfAnyTarget, IsLookedUpAgainAfterAnOpenFileThatFailed) {
  test::ProtectFile(LookUpFile(), /*allowRead=*/false);
  PointAtIndex(0);
  alarm_.ID("SMITH");
  LiftProtection(LookUpFile());
  {
    const TakenAway away(company_.Folder() / "Alarm.dat");
    ASSERT_EQ(alarm_.OpenFile(), StatusFileNotFound);
  }
  PointAtIndex(12);
  alarm_.ID("SMITH");
  EXPECT_EQ(alarm_.Index(), 13);
}

TEST_P(AlarmIDOfAnyTarget, AssignedNeedsAFileThatCanBeWritten) {
  ASSERT_EQ(alarm_.CloseFile(), StatusSuccess);
  WhereOnlyThisIsReadOnly(LookUpFile(), [&] {
    Alarm alarm;
    ASSERT_EQ(alarm.OpenFile(), StatusSuccess);
    alarm.ApplyTo(GetParam().code);
    ExpectRaised([&] { alarm.ID("SMITH"); }, ErrorOpen, GetParam().assignOpens, StatusPermission);
  });
}

INSTANTIATE_TEST_SUITE_P(Targets, AlarmIDOfAnyTarget,
                         testing::Values(Customers, Vendors, Employees, Items, Accounts),
                         TargetName);

// --- Reading the ID of anything but an employee ---

class AlarmIDRead : public AlarmIDOfTarget {};

TEST_P(AlarmIDRead, IsThatOfTheRecordWithTheIndex) {
  PointAtIndex(13);
  EXPECT_EQ(alarm_.ID(), "SMITH");
  PointAtIndex(12);
  EXPECT_EQ(alarm_.ID(), "MILLER");
}

TEST_P(AlarmIDRead, OfAnUnknownIndexRaises) {
  PointAtIndex(99);
  ExpectRaised([&] { return alarm_.ID(); }, GetParam().readError, GetParam().reads + "99)",
               StatusKeyNotFound);
  PointAtIndex(-7);
  ExpectRaised([&] { return alarm_.ID(); }, GetParam().readError, GetParam().reads + "-7)",
               StatusKeyNotFound);
  PointAtIndex(13);
  EXPECT_EQ(alarm_.ID(), "SMITH") << "nothing is remembered of the failure";
}

TEST_P(AlarmIDRead, LeavesItsFileOpen) {
  PointAtIndex(13);
  EXPECT_EQ(alarm_.ID(), "SMITH");
  EXPECT_TRUE(IsHeldOpen(LookUpFile()));
  const TakenAway away(LookUpFile());
  PointAtIndex(12);
  EXPECT_EQ(alarm_.ID(), "MILLER");
}

TEST_P(AlarmIDRead, WithoutTheFileRaisesAndIsTriedAgain) {
  PointAtIndex(13);
  {
    const TakenAway away(LookUpFile());
    ExpectRaised([&] { return alarm_.ID(); }, ErrorOpen, GetParam().readOpens, StatusFileNotFound);
  }
  EXPECT_EQ(alarm_.ID(), "SMITH");
}

TEST_P(AlarmIDRead, WhereAccessIsRefusedIsEmptyFromThenOnUntilOpenFile) {
  test::ProtectFile(LookUpFile(), /*allowRead=*/false);
  PointAtIndex(13);
  EXPECT_EQ(alarm_.ID(), "");
  EXPECT_EQ(alarm_.Index(), 13);
  LiftProtection(LookUpFile());
  EXPECT_EQ(alarm_.ID(), "");
  EXPECT_FALSE(IsHeldOpen(LookUpFile()));
  ASSERT_EQ(alarm_.CloseFile(), StatusSuccess);
  PointAtIndex(13);
  EXPECT_EQ(alarm_.ID(), "");
  ASSERT_EQ(alarm_.OpenFile(), StatusSuccess);
  PointAtIndex(13);
  EXPECT_EQ(alarm_.ID(), "SMITH");
}

TEST_P(AlarmIDRead, RefusedMakesAssignmentsStore0) {
  test::ProtectFile(LookUpFile(), /*allowRead=*/false);
  PointAtIndex(13);
  EXPECT_EQ(alarm_.ID(), "");
  LiftProtection(LookUpFile());
  alarm_.ID("MILLER");
  EXPECT_EQ(alarm_.Index(), 0);
}

TEST_P(AlarmIDRead, OfAnotherTableGoesOnWhereOneIsRefused) {
  test::ProtectFile(LookUpFile(), /*allowRead=*/false);
  PointAtIndex(13);
  EXPECT_EQ(alarm_.ID(), "");
  const Target& other = GetParam().code == OfVendor ? Customers : Vendors;
  PointAt(other, 13);
  EXPECT_EQ(alarm_.ID(), "SMITH");
}

TEST_P(AlarmIDRead, NeedsNoMoreThanReadingOfCustomersAndVendorsAlone) {
  ASSERT_EQ(alarm_.CloseFile(), StatusSuccess);
  WhereOnlyThisIsReadOnly(LookUpFile(), [&] {
    Alarm alarm;
    ASSERT_EQ(alarm.OpenFile(), StatusSuccess);
    alarm.ApplyTo(GetParam().code);
    alarm.Index(13);
    if (GetParam().readsReadOnly) {
      EXPECT_EQ(alarm.ID(), "SMITH");
    } else {
      ExpectRaised([&] { return alarm.ID(); }, ErrorOpen, GetParam().readOpens, StatusPermission);
    }
  });
}

INSTANTIATE_TEST_SUITE_P(Targets, AlarmIDRead, testing::Values(Customers, Vendors, Items, Accounts),
                         TargetName);

// What a read opened read-only is enough for an assignment too.
TEST_F(AlarmIDTest, AssignmentGoesOnWithTheFileThatAReadOpened) {
  WhereOnlyThisIsReadOnly(File(Customers), [] {
    Alarm alarm;
    alarm.ApplyTo(OfCustomer);
    alarm.Index(13);
    ASSERT_EQ(alarm.ID(), "SMITH");
    alarm.ID("MILLER");
    EXPECT_EQ(alarm.Index(), 12);
  });
}

// --- Assigning an ID that is not on file ---

class AlarmIDAssignedUnknown : public AlarmIDOfTarget {};

TEST_P(AlarmIDAssignedUnknown, RaisesAndKeepsTheIndex) {
  PointAtIndex(12);
  ExpectRaised([&] { alarm_.ID("NOBODY"); }, ErrorRead, GetParam().assigns + "NOBODY)",
               StatusKeyNotFound);
  EXPECT_EQ(alarm_.Index(), 12);
}

TEST_P(AlarmIDAssignedUnknown, TakesCaseAndTrailingBlanksForDifferences) {
  PointAtIndex(12);
  for (const char* id : {"Smith", "SMITH ", "SMIT"}) {
    EXPECT_EQ(RaisedNumber([&] { alarm_.ID(id); }), ErrorRead) << id;
  }
  EXPECT_EQ(alarm_.Index(), 12);
}

INSTANTIATE_TEST_SUITE_P(Targets, AlarmIDAssignedUnknown,
                         testing::Values(Customers, Vendors, Employees, Items), TargetName);

class OpenAlarmIDTest : public AlarmIDTest {
 protected:
  OpenAlarmIDTest() { EXPECT_EQ(alarm_.OpenFile(), StatusSuccess); }
};

using AlarmIDOfAccount = OpenAlarmIDTest;
using AlarmIDOfEmployee = OpenAlarmIDTest;
using AlarmIDOfNothing = OpenAlarmIDTest;

TEST_F(AlarmIDOfAccount, AssignedUnknownTakesTheNextAccountInTheOrderOfIDs) {
  PointAt(OfAccount, 0);
  alarm_.ID("NOBODY");
  EXPECT_EQ(alarm_.Index(), 13);
  EXPECT_EQ(alarm_.ID(), "SMITH");
  alarm_.ID("A");
  EXPECT_EQ(alarm_.Index(), 12);
}

TEST_F(AlarmIDOfAccount, AssignedBeyondTheLastAccountRaisesAndKeepsTheIndex) {
  PointAt(OfAccount, 12);
  ExpectRaised([&] { alarm_.ID("Z"); }, ErrorRead, "Alarm.ID->Chart.GetForAccountID(Z)",
               StatusEndOfFile);
  EXPECT_EQ(alarm_.Index(), 12);
}

// --- Reading the ID of an employee opens the vendors ---

TEST_F(AlarmIDOfEmployee, ReadFirstOpensTheVendorsAndFindsNoSuchKeyThere) {
  PointAt(OfEmployee, 12);
  ExpectRaised([&] { return alarm_.ID(); }, ErrorOpen, "Alarm.ID->Employee.GetForIndex(12)",
               StatusInvalidKeyNumber);
  EXPECT_TRUE(IsHeldOpen(File(Vendors)));
  EXPECT_FALSE(IsHeldOpen(File(Employees)));
}

TEST_F(AlarmIDOfEmployee, ReadFirstAndThenAssignedIsLookedForAmongTheVendors) {
  PointAt(OfEmployee, 12);
  EXPECT_EQ(RaisedNumber([&] { return alarm_.ID(); }), ErrorOpen);
  test::AddEmployee(company_.Folder(), {"EMPLOYEE ONLY", 14});
  ExpectRaised([&] { alarm_.ID("EMPLOYEE ONLY"); }, ErrorRead,
               "Alarm.ID->Employee.GetEqual(EMPLOYEE ONLY)", StatusKeyNotFound);
  EXPECT_FALSE(IsHeldOpen(File(Employees)));
}

TEST_F(AlarmIDOfEmployee, AssignedFirstAndThenReadIsFoundAmongTheEmployees) {
  test::AddEmployee(company_.Folder(), {"EMPLOYEE ONLY", 14});
  PointAt(OfEmployee, 0);
  alarm_.ID("SMITH");
  EXPECT_FALSE(IsHeldOpen(File(Vendors)));
  PointAt(OfEmployee, 14);
  EXPECT_EQ(alarm_.ID(), "EMPLOYEE ONLY");
  PointAt(OfEmployee, 99);
  ExpectRaised([&] { return alarm_.ID(); }, ErrorOpen, "Alarm.ID->Employee.GetForIndex(99)",
               StatusKeyNotFound);
}

// Nobody looks at how the vendors' file opened; the look-up then meets a file that is not open.
TEST_F(AlarmIDOfEmployee, ReadWithoutTheVendorsFailsInTheLookUp) {
  const TakenAway away(File(Vendors));
  PointAt(OfEmployee, 12);
  ExpectRaised([&] { return alarm_.ID(); }, ErrorOpen, "Alarm.ID->Employee.GetForIndex(12)",
               StatusFileNotOpen);
}

TEST_F(AlarmIDOfEmployee, ReadWhereTheVendorsRefuseAccessFailsInTheLookUp) {
  test::ProtectFile(File(Vendors), /*allowRead=*/false);
  PointAt(OfEmployee, 12);
  ExpectRaised([&] { return alarm_.ID(); }, ErrorOpen, "Alarm.ID->Employee.GetForIndex(12)",
               StatusFileNotOpen);
}

TEST_F(AlarmIDOfEmployee, ReadDoesNotMindThatTheEmployeesAreMissing) {
  const TakenAway away(File(Employees));
  PointAt(OfEmployee, 12);
  ExpectRaised([&] { return alarm_.ID(); }, ErrorOpen, "Alarm.ID->Employee.GetForIndex(12)",
               StatusInvalidKeyNumber);
}

TEST_F(AlarmIDOfEmployee, ReadFirstOpensTheVendorsForWriting) {
  ASSERT_EQ(alarm_.CloseFile(), StatusSuccess);
  WhereOnlyThisIsReadOnly(File(Vendors), [] {
    Alarm alarm;
    ASSERT_EQ(alarm.OpenFile(), StatusSuccess);
    alarm.ApplyTo(OfEmployee);
    alarm.Index(12);
    ExpectRaised([&] { return alarm.ID(); }, ErrorOpen, "Alarm.ID->Employee.GetForIndex(12)",
                 StatusFileNotOpen);
  });
}

TEST_F(AlarmIDOfEmployee, LooksIntoTheVendorsWithoutDisturbingTheVendorsOwnLookUp) {
  PointAt(OfVendor, 13);
  EXPECT_EQ(alarm_.ID(), "SMITH");
  PointAt(OfEmployee, 12);
  EXPECT_EQ(RaisedNumber([&] { return alarm_.ID(); }), ErrorOpen);
  PointAt(OfVendor, 12);
  EXPECT_EQ(alarm_.ID(), "MILLER");
}

TEST_F(AlarmIDOfEmployee, ReadFirstLeavesTheVendorsToCloseFile) {
  PointAt(OfEmployee, 12);
  EXPECT_EQ(RaisedNumber([&] { return alarm_.ID(); }), ErrorOpen);
  ASSERT_EQ(alarm_.CloseFile(), StatusSuccess);
  EXPECT_FALSE(IsHeldOpen(File(Vendors)));
}

// --- Codes that stand for nothing ---

TEST_F(AlarmIDOfNothing, IsEmptyAndStores0) {
  for (const std::int16_t code : std::initializer_list<std::int16_t>{0, 6, -1, 32767}) {
    PointAt(code, 12);
    EXPECT_EQ(alarm_.ID(), "") << code;
    alarm_.ID("SMITH");
    EXPECT_EQ(alarm_.Index(), 0) << code;
  }
  for (const Target* target : {&Customers, &Vendors, &Employees, &Items, &Accounts}) {
    EXPECT_FALSE(IsHeldOpen(File(*target))) << *target;
  }
}

// --- Releases ---

class AlarmIDBelow11 : public AlarmIDTest {
 protected:
  AlarmIDBelow11() : AlarmIDTest(10.9) { EXPECT_EQ(alarm_.OpenFile(), StatusSuccess); }
};

TEST_F(AlarmIDBelow11, OfAnEmployeeOrAccountStandsForNothing) {
  for (const Target* target : {&Employees, &Accounts}) {
    PointAt(*target, 12);
    EXPECT_EQ(alarm_.ID(), "") << *target;
    alarm_.ID("SMITH");
    EXPECT_EQ(alarm_.Index(), 0) << *target;
    EXPECT_FALSE(IsHeldOpen(File(*target))) << *target;
  }
  EXPECT_FALSE(IsHeldOpen(File(Vendors)));
}

TEST_F(AlarmIDBelow11, OfACustomerVendorOrItemIsLookedUp) {
  for (const Target* target : {&Customers, &Vendors, &Items}) {
    PointAt(*target, 12);
    EXPECT_EQ(alarm_.ID(), "MILLER") << *target;
    alarm_.ID("SMITH");
    EXPECT_EQ(alarm_.Index(), 13) << *target;
  }
}

class AlarmIDFrom11 : public AlarmIDTest {
 protected:
  AlarmIDFrom11() : AlarmIDTest(11.0) { EXPECT_EQ(alarm_.OpenFile(), StatusSuccess); }
};

TEST_F(AlarmIDFrom11, OfAnEmployeeOrAccountIsLookedUp) {
  for (const Target* target : {&Employees, &Accounts}) {
    PointAt(*target, 0);
    alarm_.ID("SMITH");
    EXPECT_EQ(alarm_.Index(), 13) << *target;
    EXPECT_EQ(alarm_.ID(), "SMITH") << *target;
  }
}

// The release comes with the alarms' file; the look-ups need nothing else of it.
TEST_F(AlarmIDTest, BeforeOpenFileIsLookedUpAsOfAnOldRelease) {
  PointAt(OfCustomer, 12);
  EXPECT_EQ(alarm_.ID(), "MILLER");
  PointAt(OfAccount, 12);
  EXPECT_EQ(alarm_.ID(), "");
  alarm_.ID("SMITH");
  EXPECT_EQ(alarm_.Index(), 0);
}

TEST_F(OpenAlarmIDTest, AfterCloseFileIsLookedUpAsOfTheReleaseThatWasOpen) {
  ASSERT_EQ(alarm_.CloseFile(), StatusSuccess);
  PointAt(OfAccount, 12);
  EXPECT_EQ(alarm_.ID(), "MILLER");
}

}  // namespace
}  // namespace larkmoor
