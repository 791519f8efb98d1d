// The people and things that a ticket refers to: whom the work was done for, who recorded it, and
// the phase and cost codes. They are shown and assigned by their IDs and stored as indexes. The
// look-up files open when they are needed first; whatever a look-up meets is raised, refused access
// and an unknown ID among it.
#include <cstdint>
#include <filesystem>
#include <initializer_list>
#include <ostream>
#include <string>
#include <string_view>
#include <utility>

#include <gtest/gtest.h>

#include <larkmoor/crossref/ticket.h>
#include <larkmoor/status.h>

#include "connection/status_messages.h"
#include "engine/records/cost.h"
#include "engine/records/customer.h"
#include "engine/records/employee.h"
#include "engine/records/job_data.h"
#include "engine/records/phase.h"
#include "engine/records/vendor.h"
#include "engine/runtime_error.h"
#include "engine/store/driver.h"
#include "engine/tovrin_file.h"
#include "support/child_process.h"
#include "support/company.h"
#include "support/errors.h"
#include "support/failing_disk.h"
#include "support/masters.h"
#include "support/raised_errors.h"
#include "support/read_only_file.h"
#include "support/record_files.h"
#include "support/removed_record.h"
#include "support/taken_away.h"

namespace larkmoor {
namespace {

using test::Company;
using test::ExpectRaised;
using test::IsHeldOpen;
using test::Master;
using test::RaisedNumber;
using test::TakenAway;

// Whom the work was done for.
constexpr std::int16_t ForCustomer = 1;
constexpr std::int16_t ForJob = 2;

// The largest index that a narrowed look-up takes, and the one above it.
constexpr std::int32_t Largest = 32767;
constexpr std::int32_t TooLarge = 32768;

void AddJob(const std::filesystem::path& folder, const Master& job) {
  test::AddMaster(folder, "Project.dat", JobDataRecord::Describe(), JobDataRecord::JobID,
                  JobDataRecord::Index, job);
}

/// A table that tickets refer to, the property that shows it, and how its look-ups speak of their
/// failures.
struct Reference {
  std::string name;
  void (*select)(Ticket& ticket);
  std::string (*get)(Ticket& ticket);
  void (*let)(Ticket& ticket, std::string_view id);
  std::string file;
  const RecordDescription& (*describe)();
  void (*add)(const std::filesystem::path& folder, const Master& record);
  std::string readOpens;
  std::string reads;
  std::string assignOpens;
  std::string assigns;
};

std::ostream& operator<<(std::ostream& out, const Reference& tested) { return out << tested.name; }

const Reference Customers{"Customer",
                          [](Ticket& ticket) { ticket.CustJobAdmin(ForCustomer); },
                          [](Ticket& ticket) { return ticket.CompletedForID(); },
                          [](Ticket& ticket, std::string_view id) { ticket.CompletedForID(id); },
                          "Customer.dat",
                          CustomerRecord::Describe,
                          test::AddCustomer,
                          "Ticket.CompletedForId->Customer.Open",
                          "Ticket.CompletedForID->Customer.GetForIndex(",
                          "Ticket.CompletedForId->Customer.Open",
                          "Ticket.CompletedForID->Customer.GetEqual("};
const Reference Jobs{"Job",
                     [](Ticket& ticket) { ticket.CustJobAdmin(ForJob); },
                     [](Ticket& ticket) { return ticket.CompletedForID(); },
                     [](Ticket& ticket, std::string_view id) { ticket.CompletedForID(id); },
                     "Project.dat",
                     JobDataRecord::Describe,
                     AddJob,
                     "Ticket.CompletedForId->Job.Open",
                     "Ticket.CompletedForID->Job.GetForIndex(",
                     "Ticket.CompletedForId->Job.Open",
                     "Ticket.CompletedForID->Job.GetEqual("};
// Cost and phase codes speak as if they were what the work was done for.
const Reference Costs{"Cost",
                      [](Ticket&) {},
                      [](Ticket& ticket) { return ticket.CostID(); },
                      [](Ticket& ticket, std::string_view id) { ticket.CostID(id); },
                      "Cost.dat",
                      CostRecord::Describe,
                      test::AddCost,
                      "Ticket.CompletedForId->Cost.Open",
                      "Ticket.CompletedForID->Cost.GetForIndex(",
                      "Ticket.CompletedForId->Cost.Open",
                      "Ticket.CompletedForID->Cost.GetEqual("};
const Reference Phases{"Phase",
                       [](Ticket&) {},
                       [](Ticket& ticket) { return ticket.PhaseID(); },
                       [](Ticket& ticket, std::string_view id) { ticket.PhaseID(id); },
                       "Phase.dat",
                       PhaseRecord::Describe,
                       test::AddPhase,
                       "Ticket.CompletedForId->Phase.Open",
                       "Ticket.CompletedForID->Phase.GetForIndex(",
                       "Ticket.CompletedForId->Phase.Open",
                       "Ticket.CompletedForID->Phase.GetEqual("};
const Reference Employees{"Employee",
                          [](Ticket& ticket) { ticket.VendorFlag(false); },
                          [](Ticket& ticket) { return ticket.RecordedByID(); },
                          [](Ticket& ticket, std::string_view id) { ticket.RecordedByID(id); },
                          "Employee.dat",
                          EmployeeRecord::Describe,
                          test::AddEmployee,
                          "Ticket.RecordedByID->Employee.Open",
                          "Ticket.RecordedByID->Employee.GetForIndex(",
                          "Ticket.RecordedById->Employee.Open",
                          "Ticket.RecordedByID->Employee.GetEqual("};
const Reference Vendors{"Vendor",
                        [](Ticket& ticket) { ticket.VendorFlag(true); },
                        [](Ticket& ticket) { return ticket.RecordedByID(); },
                        [](Ticket& ticket, std::string_view id) { ticket.RecordedByID(id); },
                        "Vendor.dat",
                        VendorRecord::Describe,
                        test::AddVendor,
                        "Ticket.RecordedById->Vendor.Open",
                        "Ticket.RecordedByID->Vendor.GetForIndex(",
                        "Ticket.RecordedById->Vendor.Open",
                        "Ticket.RecordedByID->Vendor.GetEqual("};

const Reference* const AllReferences[] = {&Customers, &Jobs, &Costs, &Phases, &Employees, &Vendors};

/// A company with a record "MILLER" of index 12 and a record "SMITH" of index 13 in each table, and
/// an open ticket that refers to none.
class TicketReferencesTest : public testing::Test {
 protected:
  TicketReferencesTest() {
    for (const Reference* to : AllReferences) {
      to->add(company_.Folder(), {"MILLER", 12});
      to->add(company_.Folder(), {"SMITH", 13});
    }
    EXPECT_EQ(ticket_.OpenFile(), StatusSuccess);
  }

  std::filesystem::path File(const Reference& to) const { return company_.Folder() / to.file; }
  std::filesystem::path TicketFile() const { return company_.Folder() / "Ticket.dat"; }

  static void Assign(Ticket& ticket, const Reference& to, std::string_view id) {
    to.select(ticket);
    to.let(ticket, id);
  }
  static std::string Shown(Ticket& ticket, const Reference& to) {
    to.select(ticket);
    return to.get(ticket);
  }
  void Assign(const Reference& to, std::string_view id) { Assign(ticket_, to, id); }
  std::string Shown(const Reference& to) { return Shown(ticket_, to); }

  void AssignAll(std::string_view id) {
    for (const Reference* to : AllReferences) Assign(*to, id);
  }

  /// Puts a ticket on file that refers to that record, and reads it anew with no look-up file open.
  void ReadTicketWith(const Reference& to, std::string_view id) {
    Assign(to, id);
    ASSERT_EQ(ticket_.Insert(), StatusSuccess);
    ASSERT_EQ(ticket_.CloseFile(), StatusSuccess);
    ASSERT_EQ(ticket_.OpenFile(), StatusSuccess);
    ASSERT_EQ(ticket_.StepLast(), StatusSuccess);
    ASSERT_FALSE(IsHeldOpen(File(to)));
  }

  static void LiftProtection(const std::filesystem::path& file) {
    ASSERT_EQ(store::DefaultDriver().ClearOwner(file, "someone"), StatusSuccess);
  }

  Company company_;
  Ticket ticket_;
};

// --- What holds of every reference ---

class TicketAnyReference : public TicketReferencesTest,
                           public testing::WithParamInterface<Reference> {
 protected:
  TicketAnyReference() { GetParam().select(ticket_); }

  std::filesystem::path LookUpFile() const { return File(GetParam()); }
  std::string ID() { return GetParam().get(ticket_); }
  void ID(std::string_view id) { GetParam().let(ticket_, id); }
};

using TicketAnyReferenceAssigned = TicketAnyReference;

std::string ReferenceName(const testing::TestParamInfo<Reference>& tested) {
  return tested.param.name;
}

TEST_P(TicketAnyReference, OfIndex0IsEmptyAndOpensNothing) {
  EXPECT_EQ(ID(), "");
  EXPECT_FALSE(IsHeldOpen(LookUpFile()));
  const TakenAway away(LookUpFile());
  EXPECT_EQ(ID(), "");
}

TEST_P(TicketAnyReference, IsThatOfTheRecordWithTheIndex) {
  ReadTicketWith(GetParam(), "SMITH");
  EXPECT_EQ(ID(), "SMITH");
  test::RemoveRecord(LookUpFile(), GetParam().describe(), "SMITH");
  GetParam().add(company_.Folder(), {"BAKER", 13});
  EXPECT_EQ(ID(), "BAKER");
}

TEST_P(TicketAnyReference, OfAnUnknownIndexRaises) {
  ReadTicketWith(GetParam(), "SMITH");
  test::RemoveRecord(LookUpFile(), GetParam().describe(), "SMITH");
  for (int time = 1; time <= 2; ++time) {
    ExpectRaised([&] { return ID(); }, ErrorRead, GetParam().reads + "13)", StatusKeyNotFound);
  }
  GetParam().add(company_.Folder(), {"BAKER", 13});
  EXPECT_EQ(ID(), "BAKER") << "nothing is remembered of the failure";
}

TEST_P(TicketAnyReference, ReadLeavesItsFileOpen) {
  ReadTicketWith(GetParam(), "SMITH");
  EXPECT_EQ(ID(), "SMITH");
  EXPECT_TRUE(IsHeldOpen(LookUpFile()));
  const TakenAway away(LookUpFile());
  EXPECT_EQ(ID(), "SMITH");
}

TEST_P(TicketAnyReference, ReadWithoutTheFileRaisesAndIsTriedAgain) {
  ReadTicketWith(GetParam(), "SMITH");
  {
    const TakenAway away(LookUpFile());
    ExpectRaised([&] { return ID(); }, ErrorOpen, GetParam().readOpens, StatusFileNotFound);
  }
  EXPECT_EQ(ID(), "SMITH");
}

TEST_P(TicketAnyReference, ReadWhereAccessIsRefusedRaisesEachTimeAndIsTriedAgain) {
  ReadTicketWith(GetParam(), "SMITH");
  test::ProtectFile(LookUpFile(), /*allowRead=*/false);
  for (int time = 1; time <= 2; ++time) {
    ExpectRaised([&] { return ID(); }, ErrorOpen, GetParam().readOpens, StatusInvalidOwner);
  }
  LiftProtection(LookUpFile());
  EXPECT_EQ(ID(), "SMITH");
}

// The engine may close all files of the thread; the ticket goes on taking its own for open.
TEST_P(TicketAnyReference, ReadAfterTheEngineClosedTheFileRaises) {
  ID("SMITH");
  ASSERT_EQ(TovrinFile().btReset(), StatusSuccess);
  ExpectRaised([&] { return ID(); }, ErrorRead, GetParam().reads + "13)", StatusFileNotOpen);
}

TEST_P(TicketAnyReference, NeedsAFileThatCanBeWritten) {
  ReadTicketWith(GetParam(), "SMITH");
  ASSERT_EQ(ticket_.CloseFile(), StatusSuccess);
  test::WhereOnlyThisIsReadOnly(LookUpFile(), [&] {
    Ticket ticket;
    ASSERT_EQ(ticket.OpenFile(), StatusSuccess);
    ASSERT_EQ(ticket.StepLast(), StatusSuccess);
    ExpectRaised([&] { return Shown(ticket, GetParam()); }, ErrorOpen, GetParam().readOpens,
                 StatusPermission);
    ExpectRaised([&] { Assign(ticket, GetParam(), "MILLER"); }, ErrorOpen, GetParam().assignOpens,
                 StatusPermission);
  });
}

TEST_P(TicketAnyReferenceAssigned, ShowsTheRecordOfThatID) {
  ID("SMITH");
  EXPECT_EQ(ID(), "SMITH");
  ID("MILLER");
  EXPECT_EQ(ID(), "MILLER");
}

TEST_P(TicketAnyReferenceAssigned, UnknownRaisesAndKeepsTheIndex) {
  ID("SMITH");
  for (const char* id : {"NOBODY", "Smith", "SMITH ", "SMIT"}) {
    ExpectRaised([&] { ID(id); }, ErrorRead, GetParam().assigns + id + ")", StatusKeyNotFound);
  }
  EXPECT_EQ(ID(), "SMITH");
}

TEST_P(TicketAnyReferenceAssigned, LeavesItsFileOpen) {
  ID("SMITH");
  EXPECT_TRUE(IsHeldOpen(LookUpFile()));
  const TakenAway away(LookUpFile());
  ID("MILLER");
  EXPECT_EQ(ID(), "MILLER");
}

TEST_P(TicketAnyReferenceAssigned, WithoutTheFileRaisesAndIsTriedAgain) {
  {
    const TakenAway away(LookUpFile());
    ExpectRaised([&] { ID("SMITH"); }, ErrorOpen, GetParam().assignOpens, StatusFileNotFound);
  }
  ID("SMITH");
  EXPECT_EQ(ID(), "SMITH");
}

TEST_P(TicketAnyReferenceAssigned, WhereAccessIsRefusedRaisesEachTimeAndIsTriedAgain) {
  test::ProtectFile(LookUpFile(), /*allowRead=*/false);
  for (int time = 1; time <= 2; ++time) {
    ExpectRaised([&] { ID("SMITH"); }, ErrorOpen, GetParam().assignOpens, StatusInvalidOwner);
  }
  LiftProtection(LookUpFile());
  ID("SMITH");
  EXPECT_EQ(ID(), "SMITH");
}

TEST_P(TicketAnyReferenceAssigned, AfterTheEngineClosedTheFileRaises) {
  ID("SMITH");
  ASSERT_EQ(TovrinFile().btReset(), StatusSuccess);
  ExpectRaised([&] { ID("MILLER"); }, ErrorRead, GetParam().assigns + "MILLER)", StatusFileNotOpen);
}

TEST_P(TicketAnyReferenceAssigned, EmptyOpensNothing) {
  const TakenAway away(LookUpFile());
  EXPECT_EQ(RaisedNumber([&] { ID(""); }), 0);
  EXPECT_EQ(ID(), "");
}

INSTANTIATE_TEST_SUITE_P(Tables, TicketAnyReference,
                         testing::Values(Customers, Jobs, Costs, Phases, Employees, Vendors),
                         ReferenceName);
INSTANTIATE_TEST_SUITE_P(Tables, TicketAnyReferenceAssigned,
                         testing::Values(Customers, Jobs, Costs, Phases, Employees, Vendors),
                         ReferenceName);

// --- A failed open while assigning ---

class TicketReferenceKept : public TicketAnyReference {};

TEST_P(TicketReferenceKept, WhereItsFileDoesNotOpenForAnAssignment) {
  ReadTicketWith(GetParam(), "SMITH");
  {
    const TakenAway away(LookUpFile());
    EXPECT_EQ(RaisedNumber([&] { ID("MILLER"); }), ErrorOpen);
  }
  EXPECT_EQ(ID(), "SMITH");
}

INSTANTIATE_TEST_SUITE_P(Tables, TicketReferenceKept,
                         testing::Values(Jobs, Costs, Phases, Employees, Vendors), ReferenceName);

class TicketCompletedForID : public TicketReferencesTest {
 protected:
  /// Refers to customer 13 and job 12, with neither file open.
  void ReadTicketWithBoth() {
    Assign(Jobs, "MILLER");
    ReadTicketWith(Customers, "SMITH");
  }
};

TEST_F(TicketCompletedForID, LosesItsCustomerWhereTheCustomersDoNotOpenForAnAssignment) {
  ReadTicketWithBoth();
  {
    const TakenAway away(File(Customers));
    ExpectRaised([&] { Assign(Customers, "MILLER"); }, ErrorOpen, Customers.assignOpens,
                 StatusFileNotFound);
  }
  EXPECT_EQ(Shown(Customers), "");
  EXPECT_EQ(Shown(Jobs), "MILLER");
}

TEST_F(TicketCompletedForID, LosesItsCustomerWhereTheCustomersAreRefused) {
  ReadTicketWithBoth();
  test::ProtectFile(File(Customers), /*allowRead=*/false);
  ExpectRaised([&] { Assign(Customers, "MILLER"); }, ErrorOpen, Customers.assignOpens,
               StatusInvalidOwner);
  LiftProtection(File(Customers));
  EXPECT_EQ(Shown(Customers), "");
}

TEST_F(TicketCompletedForID, KeepsItsCustomerWhereTheJobsDoNotOpenForAnAssignment) {
  ReadTicketWithBoth();
  {
    const TakenAway away(File(Jobs));
    EXPECT_EQ(RaisedNumber([&] { Assign(Jobs, "SMITH"); }), ErrorOpen);
  }
  EXPECT_EQ(Shown(Customers), "SMITH");
  EXPECT_EQ(Shown(Jobs), "MILLER");
}

TEST_F(TicketCompletedForID, KeepsItsCustomerWhereTheCustomersDoNotOpenForReading) {
  ReadTicketWithBoth();
  {
    const TakenAway away(File(Customers));
    EXPECT_EQ(RaisedNumber([&] { return Shown(Customers); }), ErrorOpen);
  }
  EXPECT_EQ(Shown(Customers), "SMITH");
}

// --- Customers and jobs ---

TEST_F(TicketCompletedForID, KeepsCustomerAndJobApart) {
  Assign(Customers, "SMITH");
  EXPECT_EQ(Shown(Jobs), "");
  Assign(Jobs, "MILLER");
  EXPECT_EQ(Shown(Customers), "SMITH");
  EXPECT_EQ(Shown(Jobs), "MILLER");
}

TEST_F(TicketCompletedForID, ForNeitherCustomerNorJobIsEmptyAndKeepsNothing) {
  ReadTicketWithBoth();
  for (const std::int16_t neither : std::initializer_list<std::int16_t>{0, 3, -1, 32767}) {
    ticket_.CustJobAdmin(neither);
    EXPECT_EQ(ticket_.CompletedForID(), "") << neither;
    ticket_.CompletedForID("MILLER");
    ticket_.CompletedForID("NOBODY");
    EXPECT_EQ(ticket_.CompletedForID(), "") << neither;
  }
  EXPECT_FALSE(IsHeldOpen(File(Customers)));
  EXPECT_FALSE(IsHeldOpen(File(Jobs)));
  EXPECT_EQ(Shown(Customers), "SMITH");
  EXPECT_EQ(Shown(Jobs), "MILLER");
}

TEST_F(TicketCompletedForID, AssignedEmptyDropsTheCustomerAndNeverTheJob) {
  for (const std::int16_t whom : std::initializer_list<std::int16_t>{ForCustomer, ForJob, 0, 3}) {
    Assign(Customers, "SMITH");
    Assign(Jobs, "MILLER");
    ticket_.CustJobAdmin(whom);
    ticket_.CompletedForID("");
    EXPECT_EQ(Shown(Customers), "") << whom;
    EXPECT_EQ(Shown(Jobs), "MILLER") << whom;
  }
}

// --- Cost and phase codes ---

using TicketCodes = TicketReferencesTest;

TEST_F(TicketCodes, AssignedEmptyAreDroppedEachByItself) {
  AssignAll("SMITH");
  ticket_.CostID("");
  EXPECT_EQ(ticket_.CostID(), "");
  EXPECT_EQ(ticket_.PhaseID(), "SMITH");
  ticket_.CostID("MILLER");
  ticket_.PhaseID("");
  EXPECT_EQ(ticket_.PhaseID(), "");
  EXPECT_EQ(ticket_.CostID(), "MILLER");
  EXPECT_EQ(Shown(Customers), "SMITH");
  EXPECT_EQ(Shown(Jobs), "SMITH");
  EXPECT_EQ(Shown(Vendors), "SMITH");
}

// --- Who recorded it ---

using TicketRecordedByID = TicketReferencesTest;

TEST_F(TicketRecordedByID, IsOneIndexForEmployeesAndVendors) {
  test::AddEmployee(company_.Folder(), {"EMPLOYEE", 14});
  test::AddVendor(company_.Folder(), {"VENDOR", 14});
  Assign(Employees, "EMPLOYEE");
  EXPECT_EQ(Shown(Vendors), "VENDOR");
  Assign(Vendors, "SMITH");
  EXPECT_EQ(Shown(Employees), "SMITH");
}

// The empty text ends up at the customer.
TEST_F(TicketRecordedByID, AssignedEmptyDropsTheCustomerAndNothingElse) {
  for (const Reference* by : {&Employees, &Vendors}) {
    AssignAll("SMITH");
    Assign(*by, "");
    EXPECT_EQ(Shown(*by), "SMITH");
    EXPECT_EQ(Shown(Customers), "");
    EXPECT_EQ(Shown(Jobs), "SMITH");
    EXPECT_EQ(ticket_.CostID(), "SMITH");
    EXPECT_EQ(ticket_.PhaseID(), "SMITH");
  }
}

// --- Indexes beyond 16 bits ---

class TicketNarrowReference : public TicketAnyReference {};

TEST_P(TicketNarrowReference, OfAnIndexBeyond16BitsRaises6) {
  GetParam().add(company_.Folder(), {"LARGEST", Largest});
  GetParam().add(company_.Folder(), {"TOO LARGE", TooLarge});
  GetParam().add(company_.Folder(), {"FAR", 40000});
  ID("LARGEST");
  EXPECT_EQ(ID(), "LARGEST");
  for (const char* id : {"TOO LARGE", "FAR"}) {
    ID(id);
    EXPECT_EQ(RaisedNumber([&] { return ID(); }), errors::Overflow) << id;
  }
  ID("SMITH");
  EXPECT_EQ(ID(), "SMITH");
}

TEST_P(TicketNarrowReference, OfAnUnknownIndexBeyond16BitsRaises6) {
  GetParam().add(company_.Folder(), {"FAR", 40000});
  ID("FAR");
  test::RemoveRecord(LookUpFile(), GetParam().describe(), "FAR");
  EXPECT_EQ(RaisedNumber([&] { return ID(); }), errors::Overflow);
}

INSTANTIATE_TEST_SUITE_P(Tables, TicketNarrowReference, testing::Values(Customers, Jobs, Employees),
                         ReferenceName);

class TicketWideReference : public TicketAnyReference {};

TEST_P(TicketWideReference, OfAnIndexBeyond16BitsIsLookedUp) {
  for (const std::int32_t index : {TooLarge, 40000, 65536 + 12}) {
    const std::string id = "NO " + std::to_string(index);
    GetParam().add(company_.Folder(), {id, index});
    ID(id);
    EXPECT_EQ(ID(), id);
    test::RemoveRecord(LookUpFile(), GetParam().describe(), id);
    ExpectRaised([&] { return ID(); }, ErrorRead, GetParam().reads + std::to_string(index) + ")",
                 StatusKeyNotFound);
  }
}

INSTANTIATE_TEST_SUITE_P(Tables, TicketWideReference, testing::Values(Costs, Phases),
                         ReferenceName);

TEST_F(TicketRecordedByID, OfAVendorBeyond16BitsCannotBeAssigned) {
  test::AddVendor(company_.Folder(), {"LARGEST", Largest});
  test::AddVendor(company_.Folder(), {"TOO LARGE", TooLarge});
  test::AddVendor(company_.Folder(), {"FAR", 40000});
  Assign(Vendors, "LARGEST");
  for (const char* id : {"TOO LARGE", "FAR"}) {
    EXPECT_EQ(RaisedNumber([&] { Assign(Vendors, id); }), errors::Overflow) << id;
    EXPECT_EQ(Shown(Vendors), "LARGEST");
  }
}

TEST_F(TicketRecordedByID, OfAVendorBeyond16BitsRaises6WhereItCameFromAnEmployee) {
  test::AddEmployee(company_.Folder(), {"FAR", 40000});
  test::AddVendor(company_.Folder(), {"FAR", 40000});
  Assign(Employees, "FAR");
  EXPECT_EQ(RaisedNumber([&] { return Shown(Vendors); }), errors::Overflow);
}

// --- The look-up files ---

/// A ticket with all six look-up files open.
class TicketLookUpFiles : public TicketReferencesTest {
 protected:
  TicketLookUpFiles() {
    AssignAll("SMITH");
    ExpectHeld(true);
  }

  void ExpectHeld(bool held) {
    for (const Reference* to : AllReferences) EXPECT_EQ(IsHeldOpen(File(*to)), held) << *to;
  }
};

TEST_F(TicketReferencesTest, OpenFileOpensNoLookUpFile) {
  for (const Reference* to : AllReferences) EXPECT_FALSE(IsHeldOpen(File(*to))) << *to;
}

TEST_F(TicketLookUpFiles, AreClosedByCloseFile) {
  EXPECT_EQ(ticket_.CloseFile(), StatusSuccess);
  EXPECT_FALSE(IsHeldOpen(TicketFile()));
  ExpectHeld(false);
  EXPECT_EQ(ticket_.CloseFile(), StatusSuccess);
}

TEST_F(TicketLookUpFiles, AreClosedByDestruction) {
  { const Ticket gone = std::move(ticket_); }
  EXPECT_FALSE(IsHeldOpen(TicketFile()));
  ExpectHeld(false);
}

TEST_F(TicketLookUpFiles, AreOpenedAnewAfterCloseFile) {
  ASSERT_EQ(ticket_.CloseFile(), StatusSuccess);
  ASSERT_EQ(ticket_.OpenFile(), StatusSuccess);
  AssignAll("SMITH");
  ExpectHeld(true);
}

TEST_F(TicketLookUpFiles, AreClosedByCloseFileWhereTheTicketsAreNotOpen) {
  ASSERT_EQ(ticket_.CloseFile(), StatusSuccess);
  AssignAll("SMITH");
  ExpectHeld(true);
  EXPECT_EQ(ticket_.CloseFile(), StatusSuccess);
  ExpectHeld(false);
}

// What went before is forgotten, not closed: nothing but the object's end gives it up.
TEST_F(TicketLookUpFiles, OutliveCloseFileWhereOpenFileWasCalledAgain) {
  ASSERT_EQ(ticket_.OpenFile(), StatusSuccess);
  ExpectHeld(true);
  EXPECT_EQ(ticket_.CloseFile(), StatusSuccess);
  EXPECT_FALSE(IsHeldOpen(TicketFile()));
  ExpectHeld(true);
  { const Ticket gone = std::move(ticket_); }
  ExpectHeld(false);
}

TEST_F(TicketLookUpFiles, AreOpenedAnewWhenNeededAfterASecondOpenFile) {
  ASSERT_EQ(ticket_.OpenFile(), StatusSuccess);
  for (const Reference* to : AllReferences) {
    const TakenAway away(File(*to));
    ExpectRaised([&] { Assign(*to, "SMITH"); }, ErrorOpen, to->assignOpens, StatusFileNotFound);
  }
  AssignAll("SMITH");
  EXPECT_EQ(ticket_.CloseFile(), StatusSuccess);
  ExpectHeld(false);
}

TEST_F(TicketLookUpFiles, StayInUseOverAnOpenFileThatFailed) {
  {
    const TakenAway away(TicketFile());
    ASSERT_EQ(ticket_.OpenFile(), StatusFileNotFound);
  }
  for (const Reference* to : AllReferences) {
    const TakenAway away(File(*to));
    Assign(*to, "MILLER");
    EXPECT_EQ(Shown(*to), "MILLER") << *to;
  }
}

TEST_F(TicketLookUpFiles, AreClosedAlsoWhereTheTicketsFailToClose) {
  ASSERT_EQ(ticket_.CloseFile(), StatusSuccess);
  test::RunInChild([&] {
    ASSERT_EQ(ticket_.OpenFile(), StatusSuccess);
    AssignAll("SMITH");
    ASSERT_EQ(ticket_.Insert(), StatusSuccess);
    test::BreakDisk(TicketFile());
    EXPECT_EQ(ticket_.CloseFile(), StatusIOError);
    ExpectHeld(false);
    EXPECT_EQ(ticket_.CloseFile(), StatusSuccess);
  });
}

TEST_F(TicketLookUpFiles, ThatFailToCloseAreNotTold) {
  ASSERT_EQ(ticket_.CloseFile(), StatusSuccess);
  test::RunInChild([&] {
    ASSERT_EQ(ticket_.OpenFile(), StatusSuccess);
    AssignAll("SMITH");
    for (const Reference* to : AllReferences) {
      to->add(company_.Folder(), {"JONES", 14});
      test::BreakDisk(File(*to));
    }
    EXPECT_EQ(ticket_.CloseFile(), StatusSuccess);
  });
}

TEST_F(TicketLookUpFiles, AreGivenUpWhereTheEngineClosedAllFiles) {
  ASSERT_EQ(TovrinFile().btReset(), StatusSuccess);
  EXPECT_EQ(ticket_.CloseFile(), StatusFileNotOpen);
  EXPECT_EQ(ticket_.CloseFile(), StatusSuccess);
  ASSERT_EQ(ticket_.OpenFile(), StatusSuccess);
  AssignAll("MILLER");
  ExpectHeld(true);
}

}  // namespace
}  // namespace larkmoor
