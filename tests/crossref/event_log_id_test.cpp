// The ID of the customer, employee or vendor that an event was noted for. Reading it looks the
// stored index up. Assigning it looks the ID up too and then leaves the event's index as it was:
// the empty text alone gets there, as 0. Whatever a look-up meets is raised, refused access too.
#include <cstdint>
#include <filesystem>
#include <initializer_list>
#include <ostream>
#include <string>

#include <gtest/gtest.h>

#include <larkmoor/crossref/event_log.h>
#include <larkmoor/status.h>

#include "connection/status_messages.h"
#include "engine/store/driver.h"
#include "engine/tovrin_file.h"
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

// What an event was noted for.
constexpr std::int16_t OfCustomer = 1;
constexpr std::int16_t OfEmployee = 2;
constexpr std::int16_t OfVendor = 3;

/// A table that events are noted for, and how its look-ups speak of their failures.
struct Target {
  std::string name;
  std::int16_t code;
  std::string file;
  void (*add)(const std::filesystem::path& folder, const Master& record);
  std::string opens;
  std::string reads;
  std::string assigns;
};

std::ostream& operator<<(std::ostream& out, const Target& target) { return out << target.name; }

const Target Customers{"Customer",
                       OfCustomer,
                       "Customer.dat",
                       test::AddCustomer,
                       "Eventlog.ID=>Customer.OpenFile",
                       "Eventlog.ID->Customer.GetForIndex(",
                       "EventLog.ID->Customer.GetEqual("};
// An employee who is read gives himself out for a customer.
const Target Employees{"Employee",
                       OfEmployee,
                       "Employee.dat",
                       test::AddEmployee,
                       "Eventlog.ID=>Employee.OpenFile",
                       "Eventlog.ID->Customer.GetForIndex(",
                       "EventLog.ID->Employee.GetEqual("};
const Target Vendors{"Vendor",
                     OfVendor,
                     "Vendor.dat",
                     test::AddVendor,
                     "Eventlog.ID=>Vendor.OpenFile",
                     "Eventlog.ID->Vendor.GetForIndex(",
                     "EventLog.ID->Vendor.GetEqual("};

/// A company with a record "MILLER" of index 12 and a record "SMITH" of index 13 of each kind, and
/// an event log that is not open yet.
class EventLogIDTest : public testing::Test {
 protected:
  explicit EventLogIDTest(double release = 19.0) : company_(release) {
    for (const Target* target : {&Customers, &Employees, &Vendors}) {
      target->add(company_.Folder(), {"MILLER", 12});
      target->add(company_.Folder(), {"SMITH", 13});
    }
  }

  std::filesystem::path File(const Target& target) const { return company_.Folder() / target.file; }

  void PointAt(std::int16_t code, std::int32_t index) {
    log_.EventType(code);
    log_.Index(index);
  }
  void PointAt(const Target& target, std::int32_t index) { PointAt(target.code, index); }

  static void LiftProtection(const std::filesystem::path& file) {
    ASSERT_EQ(store::DefaultDriver().ClearOwner(file, "someone"), StatusSuccess);
  }

  Company company_;
  EventLog log_;
};

class OpenEventLogIDTest : public EventLogIDTest {
 protected:
  explicit OpenEventLogIDTest(double release = 19.0) : EventLogIDTest(release) {
    EXPECT_EQ(log_.OpenFile(), StatusSuccess);
  }
};

/// The same for one kind of record.
class EventLogIDOfAnyTarget : public OpenEventLogIDTest,
                              public testing::WithParamInterface<Target> {
 protected:
  std::filesystem::path LookUpFile() const { return File(GetParam()); }
  void PointAtIndex(std::int32_t index) { PointAt(GetParam(), index); }
};

std::string TargetName(const testing::TestParamInfo<Target>& tested) { return tested.param.name; }

// --- Reading ---

TEST_P(EventLogIDOfAnyTarget, IsThatOfTheRecordWithTheIndex) {
  PointAtIndex(13);
  EXPECT_EQ(log_.ID(), "SMITH");
  PointAtIndex(12);
  EXPECT_EQ(log_.ID(), "MILLER");
}

TEST_P(EventLogIDOfAnyTarget, OfIndex0IsEmptyAndOpensNothing) {
  PointAtIndex(0);
  EXPECT_EQ(log_.ID(), "");
  EXPECT_FALSE(IsHeldOpen(LookUpFile()));
  const TakenAway away(LookUpFile());
  EXPECT_EQ(log_.ID(), "");
}

TEST_P(EventLogIDOfAnyTarget, OfAnUnknownIndexRaises) {
  PointAtIndex(99);
  ExpectRaised([&] { return log_.ID(); }, ErrorRead, GetParam().reads + "99)", StatusKeyNotFound);
  PointAtIndex(-7);
  ExpectRaised([&] { return log_.ID(); }, ErrorRead, GetParam().reads + "-7)", StatusKeyNotFound);
  PointAtIndex(13);
  EXPECT_EQ(log_.ID(), "SMITH") << "nothing is remembered of the failure";
}

TEST_P(EventLogIDOfAnyTarget, ReadLeavesItsFileOpen) {
  PointAtIndex(13);
  EXPECT_EQ(log_.ID(), "SMITH");
  EXPECT_TRUE(IsHeldOpen(LookUpFile()));
  const TakenAway away(LookUpFile());
  PointAtIndex(12);
  EXPECT_EQ(log_.ID(), "MILLER");
}

TEST_P(EventLogIDOfAnyTarget, ReadWithoutTheFileRaisesAndIsTriedAgain) {
  PointAtIndex(13);
  {
    const TakenAway away(LookUpFile());
    ExpectRaised([&] { return log_.ID(); }, ErrorOpen, GetParam().opens, StatusFileNotFound);
  }
  EXPECT_EQ(log_.ID(), "SMITH");
}

TEST_P(EventLogIDOfAnyTarget, ReadWhereAccessIsRefusedRaisesEachTimeAndIsTriedAgain) {
  test::ProtectFile(LookUpFile(), /*allowRead=*/false);
  PointAtIndex(13);
  for (int time = 1; time <= 2; ++time) {
    ExpectRaised([&] { return log_.ID(); }, ErrorOpen, GetParam().opens, StatusInvalidOwner);
  }
  LiftProtection(LookUpFile());
  EXPECT_EQ(log_.ID(), "SMITH");
}

// The engine may close all files of the thread; the log goes on taking its own for open.
TEST_P(EventLogIDOfAnyTarget, ReadAfterTheEngineClosedTheFileRaises) {
  PointAtIndex(13);
  EXPECT_EQ(log_.ID(), "SMITH");
  ASSERT_EQ(TovrinFile().btReset(), StatusSuccess);
  ExpectRaised([&] { return log_.ID(); }, ErrorRead, GetParam().reads + "13)", StatusFileNotOpen);
}

// --- Assigning ---

TEST_P(EventLogIDOfAnyTarget, AssignedLeavesTheIndexAsItWas) {
  PointAtIndex(12);
  log_.ID("SMITH");
  EXPECT_EQ(log_.Index(), 12);
  EXPECT_EQ(log_.ID(), "MILLER");
  PointAtIndex(0);
  log_.ID("SMITH");
  EXPECT_EQ(log_.Index(), 0);
}

TEST_P(EventLogIDOfAnyTarget, AssignedAndUpdatedLeavesTheIndexOnFileAsItWas) {
  PointAtIndex(12);
  ASSERT_EQ(log_.Insert(), StatusSuccess);
  log_.ID("SMITH");
  ASSERT_EQ(log_.Update(), StatusSuccess);
  EventLog reader;
  ASSERT_EQ(reader.OpenFile(), StatusSuccess);
  ASSERT_EQ(reader.StepFirst(), StatusSuccess);
  EXPECT_EQ(reader.Index(), 12);
}

TEST_P(EventLogIDOfAnyTarget, AssignedEmptyAndUpdatedStores0) {
  PointAtIndex(12);
  ASSERT_EQ(log_.Insert(), StatusSuccess);
  log_.ID("");
  EXPECT_EQ(log_.Index(), 0);
  ASSERT_EQ(log_.Update(), StatusSuccess);
  EventLog reader;
  ASSERT_EQ(reader.OpenFile(), StatusSuccess);
  ASSERT_EQ(reader.StepFirst(), StatusSuccess);
  EXPECT_EQ(reader.Index(), 0);
}

TEST_P(EventLogIDOfAnyTarget, AssignedEmptyOpensNothing) {
  PointAtIndex(12);
  const TakenAway away(LookUpFile());
  log_.ID("");
  EXPECT_EQ(log_.Index(), 0);
}

TEST_P(EventLogIDOfAnyTarget, AssignedUnknownRaisesAndKeepsTheIndex) {
  PointAtIndex(12);
  for (const char* id : {"NOBODY", "Smith", "SMITH ", "SMIT"}) {
    ExpectRaised([&] { log_.ID(id); }, ErrorRead, GetParam().assigns + id + ")", StatusKeyNotFound);
  }
  EXPECT_EQ(log_.Index(), 12);
}

TEST_P(EventLogIDOfAnyTarget, AssignedLeavesItsFileOpen) {
  PointAtIndex(13);
  log_.ID("MILLER");
  EXPECT_TRUE(IsHeldOpen(LookUpFile()));
  const TakenAway away(LookUpFile());
  EXPECT_EQ(log_.ID(), "SMITH");
}

TEST_P(EventLogIDOfAnyTarget, AssignedWithoutTheFileRaisesAndIsTriedAgain) {
  PointAtIndex(12);
  {
    const TakenAway away(LookUpFile());
    ExpectRaised([&] { log_.ID("SMITH"); }, ErrorOpen, GetParam().opens, StatusFileNotFound);
    EXPECT_EQ(log_.Index(), 12);
  }
  EXPECT_EQ(RaisedNumber([&] { log_.ID("SMITH"); }), 0);
}

TEST_P(EventLogIDOfAnyTarget, AssignedWhereAccessIsRefusedRaisesEachTimeAndKeepsTheIndex) {
  test::ProtectFile(LookUpFile(), /*allowRead=*/false);
  PointAtIndex(12);
  for (int time = 1; time <= 2; ++time) {
    ExpectRaised([&] { log_.ID("SMITH"); }, ErrorOpen, GetParam().opens, StatusInvalidOwner);
  }
  EXPECT_EQ(log_.Index(), 12);
  LiftProtection(LookUpFile());
  EXPECT_EQ(RaisedNumber([&] { log_.ID("SMITH"); }), 0);
}

TEST_P(EventLogIDOfAnyTarget, AssignedAfterTheEngineClosedTheFileRaises) {
  PointAtIndex(13);
  log_.ID("SMITH");
  ASSERT_EQ(TovrinFile().btReset(), StatusSuccess);
  ExpectRaised([&] { log_.ID("SMITH"); }, ErrorRead, GetParam().assigns + "SMITH)",
               StatusFileNotOpen);
}

// --- Both ways ---

TEST_P(EventLogIDOfAnyTarget, NeedsAFileThatCanBeWritten) {
  ASSERT_EQ(log_.CloseFile(), StatusSuccess);
  WhereOnlyThisIsReadOnly(LookUpFile(), [&] {
    EventLog log;
    ASSERT_EQ(log.OpenFile(), StatusSuccess);
    log.EventType(GetParam().code);
    log.Index(13);
    ExpectRaised([&] { return log.ID(); }, ErrorOpen, GetParam().opens, StatusPermission);
    ExpectRaised([&] { log.ID("SMITH"); }, ErrorOpen, GetParam().opens, StatusPermission);
  });
}

INSTANTIATE_TEST_SUITE_P(Targets, EventLogIDOfAnyTarget,
                         testing::Values(Customers, Employees, Vendors), TargetName);

// --- Where the index of an assigned ID goes ---

using EventLogIDOfEmployee = OpenEventLogIDTest;

// It goes into the employee that was looked up last, which is never written.
TEST_F(EventLogIDOfEmployee, IsNotDisturbedByTheIDsThatAreAssigned) {
  PointAt(OfEmployee, 13);
  EXPECT_EQ(log_.ID(), "SMITH");
  PointAt(OfVendor, 13);
  log_.ID("MILLER");
  PointAt(OfEmployee, 13);
  EXPECT_EQ(log_.ID(), "SMITH");
  PointAt(OfEmployee, 12);
  EXPECT_EQ(log_.ID(), "MILLER");
}

TEST_F(EventLogIDOfEmployee, IsNotOpenedForWhatOtherIDsLeaveThere) {
  const TakenAway away(File(Employees));
  PointAt(OfCustomer, 12);
  log_.ID("SMITH");
  PointAt(OfVendor, 12);
  log_.ID("SMITH");
  EXPECT_EQ(log_.Index(), 12);
}

// --- Codes that stand for nothing ---

using EventLogIDOfNothing = OpenEventLogIDTest;

TEST_F(EventLogIDOfNothing, IsEmptyAndLeavesTheIndexUnlessAssignedEmpty) {
  for (const std::int16_t code : std::initializer_list<std::int16_t>{0, 4, 5, -1, 32767}) {
    PointAt(code, 12);
    EXPECT_EQ(log_.ID(), "") << code;
    log_.ID("SMITH");
    EXPECT_EQ(log_.Index(), 12) << code;
    log_.ID("");
    EXPECT_EQ(log_.Index(), 0) << code;
  }
  for (const Target* target : {&Customers, &Employees, &Vendors}) {
    EXPECT_FALSE(IsHeldOpen(File(*target))) << *target;
  }
}

// --- Releases ---

class EventLogIDBelow11 : public OpenEventLogIDTest, public testing::WithParamInterface<double> {
 protected:
  EventLogIDBelow11() : OpenEventLogIDTest(GetParam()) {}
};

TEST_P(EventLogIDBelow11, OfAnEmployeeStandsForNothing) {
  PointAt(OfEmployee, 12);
  EXPECT_EQ(log_.ID(), "");
  log_.ID("NOBODY");
  EXPECT_EQ(log_.Index(), 12);
  log_.ID("");
  EXPECT_EQ(log_.Index(), 0);
  EXPECT_FALSE(IsHeldOpen(File(Employees)));
}

TEST_P(EventLogIDBelow11, OfACustomerOrVendorIsLookedUp) {
  for (const Target* target : {&Customers, &Vendors}) {
    PointAt(*target, 12);
    EXPECT_EQ(log_.ID(), "MILLER") << *target;
    EXPECT_EQ(RaisedNumber([&] { log_.ID("NOBODY"); }), ErrorRead) << *target;
  }
}

INSTANTIATE_TEST_SUITE_P(Releases, EventLogIDBelow11, testing::Values(10.0, 10.9));

class EventLogIDFrom11 : public OpenEventLogIDTest {
 protected:
  EventLogIDFrom11() : OpenEventLogIDTest(11.0) {}
};

TEST_F(EventLogIDFrom11, OfAnEmployeeIsLookedUp) {
  PointAt(OfEmployee, 12);
  EXPECT_EQ(log_.ID(), "MILLER");
  EXPECT_EQ(RaisedNumber([&] { log_.ID("NOBODY"); }), ErrorRead);
}

// The release comes with the log's file; the look-ups need nothing else of it.
TEST_F(EventLogIDTest, BeforeOpenFileIsLookedUpAsOfAnOldRelease) {
  PointAt(OfCustomer, 12);
  EXPECT_EQ(log_.ID(), "MILLER");
  PointAt(OfEmployee, 12);
  EXPECT_EQ(log_.ID(), "");
}

TEST_F(OpenEventLogIDTest, AfterCloseFileIsLookedUpAsOfTheReleaseThatWasOpen) {
  ASSERT_EQ(log_.CloseFile(), StatusSuccess);
  PointAt(OfEmployee, 12);
  EXPECT_EQ(log_.ID(), "MILLER");
}

}  // namespace
}  // namespace larkmoor
