// The class EventLog: its file and the look-up files that it holds, the walk along the events of a
// customer, employee or vendor, and its fields. How their ID is shown is told in
// event_log_id_test.cpp.
#include "engine/records/event_log.h"

#include <cstdint>
#include <filesystem>
#include <limits>
#include <string>
#include <string_view>
#include <utility>

#include <gtest/gtest.h>

#include <larkmoor/crossref/event_log.h>
#include <larkmoor/status.h>

#include "engine/tovrin_file.h"
#include "support/child_process.h"
#include "support/company.h"
#include "support/failing_disk.h"
#include "support/masters.h"
#include "support/record_files.h"
#include "support/taken_away.h"

namespace larkmoor {
namespace {

using test::AddCustomer;
using test::AddEmployee;
using test::AddVendor;
using test::Company;
using test::IsHeldOpen;
using test::TakenAway;

// What an event was noted for.
constexpr std::int16_t OfCustomer = 1;
constexpr std::int16_t OfEmployee = 2;
constexpr std::int16_t OfVendor = 3;

/// The files that the ID of an event is looked up in.
constexpr std::string_view LookUpFiles[] = {"Customer.dat", "Employee.dat", "Vendor.dat"};

class EventLogTest : public testing::Test {
 protected:
  explicit EventLogTest(double release = 19.0) : company_(release) {}

  std::filesystem::path File(std::string_view name) const { return company_.Folder() / name; }
  std::filesystem::path EventLogFile() const { return File("EventLog.dat"); }

  Company company_;
};

class OpenEventLogTest : public EventLogTest {
 protected:
  explicit OpenEventLogTest(double release = 19.0) : EventLogTest(release) {
    EXPECT_EQ(log_.OpenFile(), StatusSuccess);
  }

  EventLog log_;
};

using EventLogLifecycle = EventLogTest;
using EventLogFields = OpenEventLogTest;

// --- Opening and closing ---

TEST_F(EventLogLifecycle, CloseFileOnANewObjectAnswers0) {
  EventLog log;
  EXPECT_EQ(log.CloseFile(), StatusSuccess);
}

TEST_F(EventLogLifecycle, FileIsEventLogDat) {
  EventLog log;
  ASSERT_EQ(log.OpenFile(), StatusSuccess);
  EXPECT_TRUE(IsHeldOpen(EventLogFile()));
  EXPECT_EQ(log.CloseFile(), StatusSuccess);
  EXPECT_FALSE(IsHeldOpen(EventLogFile()));
  EXPECT_EQ(log.CloseFile(), StatusSuccess);
}

TEST_F(EventLogLifecycle, OpenFileOpensNoLookUpFile) {
  EventLog log;
  ASSERT_EQ(log.OpenFile(), StatusSuccess);
  for (const std::string_view name : LookUpFiles) EXPECT_FALSE(IsHeldOpen(File(name))) << name;
}

TEST_F(EventLogLifecycle, OpenFileBlanksTheRecord) {
  EventLog log;
  ASSERT_EQ(log.OpenFile(), StatusSuccess);
  log.Index(7);
  ASSERT_EQ(log.OpenFile(), StatusSuccess);
  EXPECT_EQ(log.Index(), 0);
}

TEST_F(EventLogLifecycle, OpenFileAnswers12WithoutTheFileAndCanBeTriedAgain) {
  EventLog log;
  {
    const TakenAway away(EventLogFile());
    EXPECT_EQ(log.OpenFile(), StatusFileNotFound);
    EXPECT_EQ(log.CloseFile(), StatusSuccess);
    EXPECT_EQ(log.StepFirst(), StatusFileNotOpen);
  }
  EXPECT_EQ(log.OpenFile(), StatusSuccess);
  EXPECT_EQ(log.StepFirst(), StatusEndOfFile);
}

TEST_F(EventLogLifecycle, OpenFileTellsWhatProtectsTheFile) {
  test::ProtectFile(EventLogFile(), /*allowRead=*/false);
  EventLog log;
  EXPECT_EQ(log.OpenFile(), StatusInvalidOwner);
}

TEST_F(EventLogLifecycle, OpenFileNeedsAFileThatCanBeWritten) {
  test::WhereReadOnly(EventLogFile(), [] {
    EventLog log;
    EXPECT_EQ(log.OpenFile(), StatusPermission);
  });
}

TEST_F(EventLogLifecycle, OperationsBeforeOpenFileAnswer3) {
  EventLog log;
  EXPECT_EQ(log.GetFirst(7, OfCustomer), StatusFileNotOpen);
  EXPECT_EQ(log.GetNext(), StatusFileNotOpen);
  EXPECT_EQ(log.StepFirst(), StatusFileNotOpen);
  EXPECT_EQ(log.StepLast(), StatusFileNotOpen);
  EXPECT_EQ(log.StepNext(), StatusFileNotOpen);
  EXPECT_EQ(log.StepPrevious(), StatusFileNotOpen);
  EXPECT_EQ(log.Insert(), StatusFileNotOpen);
  EXPECT_EQ(log.Update(), StatusFileNotOpen);
  EXPECT_EQ(log.Delete(), StatusFileNotOpen);
  EXPECT_EQ(log.RecordCount(), 0);
}

TEST_F(EventLogLifecycle, CloseFileOfAFileThatTheEngineClosedAnswers3) {
  EventLog log;
  ASSERT_EQ(log.OpenFile(), StatusSuccess);
  ASSERT_EQ(TovrinFile().btReset(), StatusSuccess);
  EXPECT_EQ(log.CloseFile(), StatusFileNotOpen);
  EXPECT_EQ(log.CloseFile(), StatusSuccess);
}

// --- The look-up files ---

/// An event log that has looked up a customer, an employee and a vendor of index 12.
class EventLogLookUpFiles : public OpenEventLogTest {
 protected:
  EventLogLookUpFiles() {
    AddCustomer(company_.Folder(), {"ADAMS", 12});
    AddEmployee(company_.Folder(), {"BROWN", 12});
    AddVendor(company_.Folder(), {"CLARK", 12});
    LookUpAll(log_);
    ExpectHeld(true);
  }

  static std::string ShownID(EventLog& log, std::int16_t eventType, std::int32_t index) {
    log.EventType(eventType);
    log.Index(index);
    return log.ID();
  }
  static void LookUpAll(EventLog& log) {
    EXPECT_EQ(ShownID(log, OfCustomer, 12), "ADAMS");
    EXPECT_EQ(ShownID(log, OfEmployee, 12), "BROWN");
    EXPECT_EQ(ShownID(log, OfVendor, 12), "CLARK");
  }

  void ExpectHeld(bool held) {
    for (const std::string_view name : LookUpFiles) EXPECT_EQ(IsHeldOpen(File(name)), held) << name;
  }
};

TEST_F(EventLogLookUpFiles, AreClosedByCloseFile) {
  EXPECT_EQ(log_.CloseFile(), StatusSuccess);
  EXPECT_FALSE(IsHeldOpen(EventLogFile()));
  ExpectHeld(false);
  EXPECT_EQ(log_.CloseFile(), StatusSuccess);
}

TEST_F(EventLogLookUpFiles, AreClosedByDestruction) {
  { const EventLog gone = std::move(log_); }
  EXPECT_FALSE(IsHeldOpen(EventLogFile()));
  ExpectHeld(false);
}

TEST_F(EventLogLookUpFiles, AreOpenedAnewAfterCloseFile) {
  ASSERT_EQ(log_.CloseFile(), StatusSuccess);
  ASSERT_EQ(log_.OpenFile(), StatusSuccess);
  LookUpAll(log_);
  ExpectHeld(true);
}

TEST_F(EventLogLookUpFiles, AreClosedByCloseFileWhereTheLogItselfIsNotOpen) {
  ASSERT_EQ(log_.CloseFile(), StatusSuccess);
  EXPECT_EQ(ShownID(log_, OfCustomer, 12), "ADAMS");
  EXPECT_TRUE(IsHeldOpen(File("Customer.dat")));
  EXPECT_EQ(log_.CloseFile(), StatusSuccess);
  ExpectHeld(false);
}

// Neither does it open them anew.
TEST_F(EventLogLookUpFiles, StayInUseOverASecondOpenFile) {
  ASSERT_EQ(log_.OpenFile(), StatusSuccess);
  {
    const TakenAway customers(File("Customer.dat"));
    const TakenAway employees(File("Employee.dat"));
    const TakenAway vendors(File("Vendor.dat"));
    LookUpAll(log_);
  }
  EXPECT_EQ(log_.CloseFile(), StatusSuccess);
  ExpectHeld(false);
}

TEST_F(EventLogLookUpFiles, AreClosedAlsoWhereTheLogItselfFailsToClose) {
  ASSERT_EQ(log_.CloseFile(), StatusSuccess);
  test::RunInChild([&] {
    EventLog log;
    ASSERT_EQ(log.OpenFile(), StatusSuccess);
    LookUpAll(log);
    ASSERT_EQ(log.Insert(), StatusSuccess);
    test::BreakDisk(EventLogFile());
    EXPECT_EQ(log.CloseFile(), StatusIOError);
    ExpectHeld(false);
    EXPECT_EQ(log.CloseFile(), StatusSuccess);
  });
}

TEST_F(EventLogLookUpFiles, ThatFailToCloseAreNotTold) {
  ASSERT_EQ(log_.CloseFile(), StatusSuccess);
  test::RunInChild([&] {
    EventLog log;
    ASSERT_EQ(log.OpenFile(), StatusSuccess);
    LookUpAll(log);
    AddCustomer(company_.Folder(), {"DAVIS", 13});
    AddEmployee(company_.Folder(), {"EVANS", 13});
    AddVendor(company_.Folder(), {"FRANK", 13});
    for (const std::string_view name : LookUpFiles) test::BreakDisk(File(name));
    EXPECT_EQ(log.CloseFile(), StatusSuccess);
  });
}

// --- Finders ---

/// Events are told apart by their NRecord, which no key of theirs looks at.
class EventLogFindersTest : public OpenEventLogTest {
 protected:
  using OpenEventLogTest::OpenEventLogTest;

  void Add(std::int32_t nRecord, std::int32_t index, std::int16_t eventType,
           std::int32_t trxNumber = 0, std::int32_t lineNumber = 0) {
    log_.NRecord(nRecord);
    log_.Index(index);
    log_.EventType(eventType);
    log_.TrxNumberL(trxNumber);
    log_.LineNumberL(lineNumber);
    ASSERT_EQ(log_.Insert(), StatusSuccess);
  }
};

/// The walk is the same in all releases, though its key is not.
class EventLogFinders : public EventLogFindersTest, public testing::WithParamInterface<double> {
 protected:
  EventLogFinders() : EventLogFindersTest(GetParam()) {}
};

TEST_P(EventLogFinders, GetFirstReadsTheFirstEventOfThatIndexAndType) {
  Add(1, 8, OfCustomer);
  Add(2, 7, OfVendor);
  Add(3, 7, OfCustomer, 5);
  Add(4, 7, OfCustomer, 4);
  ASSERT_EQ(log_.GetFirst(7, OfCustomer), StatusSuccess);
  EXPECT_EQ(log_.NRecord(), 4);
  ASSERT_EQ(log_.GetFirst(7, OfVendor), StatusSuccess);
  EXPECT_EQ(log_.NRecord(), 2);
  ASSERT_EQ(log_.GetFirst(8, OfCustomer), StatusSuccess);
  EXPECT_EQ(log_.NRecord(), 1);
}

TEST_P(EventLogFinders, GetFirstWhereThereIsNoneReadsTheNextOneOnFile) {
  Add(1, 7, OfCustomer);
  Add(2, 7, OfVendor);
  ASSERT_EQ(log_.GetFirst(6, OfVendor), StatusSuccess);
  EXPECT_EQ(log_.NRecord(), 1);
  ASSERT_EQ(log_.GetFirst(7, OfEmployee), StatusSuccess);
  EXPECT_EQ(log_.NRecord(), 2);
  EXPECT_EQ(log_.GetFirst(8, OfCustomer), StatusEndOfFile);
  EXPECT_EQ(log_.NRecord(), 2) << "a search in vain leaves the record in hand";
}

TEST_P(EventLogFinders, GetNextGoesByTransactionAndLineAndOnIntoTheNextTarget) {
  Add(1, 8, OfCustomer, 1, 1);
  Add(2, 7, OfVendor, 1, 1);
  Add(3, 7, OfCustomer, 2, 1);
  Add(4, 7, OfCustomer, 1, 2);
  Add(5, 7, OfCustomer, 1, 1);
  ASSERT_EQ(log_.GetFirst(7, OfCustomer), StatusSuccess);
  EXPECT_EQ(log_.NRecord(), 5);
  for (const std::int32_t next : {4, 3, 2, 1}) {
    ASSERT_EQ(log_.GetNext(), StatusSuccess);
    EXPECT_EQ(log_.NRecord(), next);
  }
  EXPECT_EQ(log_.GetNext(), StatusEndOfFile);
}

TEST_P(EventLogFinders, WritesTakeTheirPlaceInTheWalk) {
  Add(1, 7, OfCustomer);
  Add(2, 9, OfCustomer);
  ASSERT_EQ(log_.GetFirst(7, OfCustomer), StatusSuccess);
  Add(3, 8, OfCustomer);
  ASSERT_EQ(log_.GetNext(), StatusSuccess);
  EXPECT_EQ(log_.NRecord(), 2);
  log_.Index(6);
  ASSERT_EQ(log_.Update(), StatusSuccess);
  ASSERT_EQ(log_.GetNext(), StatusSuccess);
  EXPECT_EQ(log_.NRecord(), 1);
}

TEST_P(EventLogFinders, GetNextWithoutAPlaceAnswers8) {
  Add(1, 7, OfCustomer);
  EventLog reader;
  ASSERT_EQ(reader.OpenFile(), StatusSuccess);
  EXPECT_EQ(reader.GetNext(), StatusInvalidPositioning);
  ASSERT_EQ(reader.GetFirst(7, OfCustomer), StatusSuccess);
  ASSERT_EQ(reader.StepFirst(), StatusSuccess);
  EXPECT_EQ(reader.GetNext(), StatusInvalidPositioning) << "a step leaves the walk";
}

TEST_P(EventLogFinders, StepsGoInTheOrderOfInsertion) {
  Add(1, 8, OfCustomer);
  Add(2, 7, OfVendor);
  Add(3, 7, OfCustomer);
  ASSERT_EQ(log_.StepFirst(), StatusSuccess);
  EXPECT_EQ(log_.NRecord(), 1);
  ASSERT_EQ(log_.StepNext(), StatusSuccess);
  EXPECT_EQ(log_.NRecord(), 2);
  ASSERT_EQ(log_.StepPrevious(), StatusSuccess);
  EXPECT_EQ(log_.StepPrevious(), StatusEndOfFile);
  ASSERT_EQ(log_.StepLast(), StatusSuccess);
  EXPECT_EQ(log_.NRecord(), 3);
  EXPECT_EQ(log_.StepNext(), StatusEndOfFile);
}

TEST_P(EventLogFinders, DeleteRemovesTheEventThatWasFound) {
  Add(1, 7, OfCustomer);
  Add(2, 8, OfCustomer);
  ASSERT_EQ(log_.GetFirst(7, OfCustomer), StatusSuccess);
  ASSERT_EQ(log_.Delete(), StatusSuccess);
  EXPECT_EQ(log_.RecordCount(), 1);
  ASSERT_EQ(log_.GetNext(), StatusSuccess) << "the walk goes on from there";
  EXPECT_EQ(log_.NRecord(), 2);
}

INSTANTIATE_TEST_SUITE_P(Releases, EventLogFinders,
                         testing::Values(10.9, 16.0, 16.9, 17.0, 18.0, 19.0));

class EventLogBelow17 : public EventLogFindersTest, public testing::WithParamInterface<double> {
 protected:
  EventLogBelow17() : EventLogFindersTest(GetParam()) {}
};

class EventLogFrom17 : public EventLogFindersTest, public testing::WithParamInterface<double> {
 protected:
  EventLogFrom17() : EventLogFindersTest(GetParam()) {}
};

constexpr std::int32_t JustAbove16Bits = 65536 + 1;

// The old key has room for 16 bits of a transaction's number.
TEST_P(EventLogBelow17, WalkGoesByTheLow16BitsOfTheTransaction) {
  Add(1, 7, OfCustomer, 300);
  Add(2, 7, OfCustomer, JustAbove16Bits);
  ASSERT_EQ(log_.GetFirst(7, OfCustomer), StatusSuccess);
  EXPECT_EQ(log_.NRecord(), 2);
  ASSERT_EQ(log_.GetNext(), StatusSuccess);
  EXPECT_EQ(log_.NRecord(), 1);
}

TEST_P(EventLogFrom17, WalkGoesByTheWholeNumberOfTheTransaction) {
  Add(1, 7, OfCustomer, JustAbove16Bits);
  Add(2, 7, OfCustomer, 300);
  ASSERT_EQ(log_.GetFirst(7, OfCustomer), StatusSuccess);
  EXPECT_EQ(log_.NRecord(), 2);
  ASSERT_EQ(log_.GetNext(), StatusSuccess);
  EXPECT_EQ(log_.NRecord(), 1);
}

INSTANTIATE_TEST_SUITE_P(Releases, EventLogBelow17, testing::Values(16.0, 16.9));
INSTANTIATE_TEST_SUITE_P(Releases, EventLogFrom17, testing::Values(17.0, 19.0));

// --- Fields ---

TEST_F(EventLogFields, TransactionNumberHasANarrowNameThatReads0BeyondItsRange) {
  log_.TrxNumber(-300);
  EXPECT_EQ(log_.TrxNumberL(), -300);
  EXPECT_EQ(log_.TrxNumber(), -300);
  for (const std::int32_t number : {32767, -32768}) {
    log_.TrxNumberL(number);
    EXPECT_EQ(log_.TrxNumber(), number);
  }
  for (const std::int32_t number : {32768, 40000, 65536 + 7, -32769}) {
    log_.TrxNumberL(number);
    EXPECT_EQ(log_.TrxNumber(), 0) << number;
    EXPECT_EQ(log_.TrxNumberL(), number);
  }
}

TEST_F(EventLogFields, LineNumberHasANarrowNameThatReads0BeyondItsRange) {
  log_.LineNumber(-300);
  EXPECT_EQ(log_.LineNumberL(), -300);
  EXPECT_EQ(log_.LineNumber(), -300);
  for (const std::int32_t number : {32767, -32768}) {
    log_.LineNumberL(number);
    EXPECT_EQ(log_.LineNumber(), number);
  }
  for (const std::int32_t number : {32768, 40000, 65536 + 7, -32769}) {
    log_.LineNumberL(number);
    EXPECT_EQ(log_.LineNumber(), 0) << number;
    EXPECT_EQ(log_.LineNumberL(), number);
  }
}

TEST_F(EventLogFields, EventDaysTypeReads0WhereTheFileHoldsMoreThanFits) {
  for (const std::int32_t stored : {32767, -32768, 32768, 65536 + 7, -32769}) {
    test::OpenRecordFile events(EventLogFile(), EventLogRecord::Describe());
    events.Add(
        [&](Tovrin2Record& record) { record.SetLong(EventLogRecord::EventDaysType, stored); });
  }
  ASSERT_EQ(log_.StepFirst(), StatusSuccess);
  EXPECT_EQ(log_.EventDaysType(), 32767);
  for (const std::int16_t shown : {std::numeric_limits<std::int16_t>::min(), std::int16_t{0},
                                   std::int16_t{0}, std::int16_t{0}}) {
    ASSERT_EQ(log_.StepNext(), StatusSuccess);
    EXPECT_EQ(log_.EventDaysType(), shown);
  }
}

TEST_F(EventLogFields, EventDaysTypeKeepsEveryIntegerAssigned) {
  for (const int days : {-32768, -1, 0, 7, 32767}) {
    log_.EventDaysType(static_cast<std::int16_t>(days));
    EXPECT_EQ(log_.EventDaysType(), days);
  }
}

TEST_F(EventLogFields, RecurrenceHasSecondNames) {
  log_.RecurringSeriesNum(5);
  EXPECT_EQ(log_.Unused1(), 5);
  log_.Unused1(6);
  EXPECT_EQ(log_.RecurringSeriesNum(), 6);
  log_.EventRecurFreq(70000);
  EXPECT_EQ(log_.Unknown5(), 70000);
  log_.Unknown5(-70000);
  EXPECT_EQ(log_.EventRecurFreq(), -70000);
}

TEST_F(EventLogFields, WithoutAMeaningRead0AndKeepNothing) {
  log_.Subindex1(3);
  log_.Period(4);
  log_.JournalID(5);
  log_.TrxNumber(6);
  EXPECT_EQ(log_.Key(), 0);
  log_.Key(7.5);
  log_.Unused2(7);
  log_.Unused3(7);
  log_.Unused4(7);
  EXPECT_EQ(log_.Key(), 0);
  EXPECT_EQ(log_.Unused2(), 0);
  EXPECT_EQ(log_.Unused3(), 0);
  EXPECT_EQ(log_.Unused4(), 0);
  EXPECT_EQ(log_.Subindex1(), 3);
  EXPECT_EQ(log_.Period(), 4);
  EXPECT_EQ(log_.JournalID(), 5);
  EXPECT_EQ(log_.TrxNumber(), 6);
}

}  // namespace
}  // namespace larkmoor
