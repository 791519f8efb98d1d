// The class Alarm: its file and the look-up files that it holds, its finders, and the fields that
// name a transaction. How the ID of a customer, vendor and so on is shown is told in
// alarm_id_test.cpp.
#include "engine/records/alarm.h"

#include <bit>
#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>
#include <utility>

#include <gtest/gtest.h>

#include <larkmoor/crossref/alarm.h>
#include <larkmoor/status.h>

#include "support/company.h"
#include "support/errors.h"
#include "support/masters.h"
#include "support/record_files.h"
#include "support/taken_away.h"

namespace larkmoor {
namespace {

using test::AddCustomer;
using test::AddItem;
using test::Company;
using test::IsHeldOpen;
using test::RaisedNumber;
using test::TakenAway;

// What an alarm belongs to.
constexpr std::int16_t OfCustomer = 1;
constexpr std::int16_t OfVendor = 2;
constexpr std::int16_t OfEmployee = 3;
constexpr std::int16_t OfItem = 4;
constexpr std::int16_t OfAccount = 5;

constexpr std::int32_t Overflow = 6;

/// The files that the ID of an alarm is looked up in.
constexpr std::string_view LookUpFiles[] = {"Chart.dat", "Customer.dat", "Employee.dat",
                                            "LineItem.dat", "Vendor.dat"};

class AlarmTest : public testing::Test {
 protected:
  std::filesystem::path File(std::string_view name) const { return company_.Folder() / name; }
  std::filesystem::path AlarmFile() const { return File("Alarm.dat"); }

  Company company_;
};

class OpenAlarmTest : public AlarmTest {
 protected:
  OpenAlarmTest() { EXPECT_EQ(alarm_.OpenFile(), StatusSuccess); }

  Alarm alarm_;
};

using AlarmLifecycle = AlarmTest;
using AlarmFields = OpenAlarmTest;
using AlarmReference = OpenAlarmTest;

// --- Opening and closing ---

TEST_F(AlarmLifecycle, CloseFileOnANewObjectAnswers0) {
  Alarm alarm;
  EXPECT_EQ(alarm.CloseFile(), StatusSuccess);
}

TEST_F(AlarmLifecycle, FileIsAlarmDat) {
  Alarm alarm;
  ASSERT_EQ(alarm.OpenFile(), StatusSuccess);
  EXPECT_TRUE(IsHeldOpen(AlarmFile()));
  EXPECT_EQ(alarm.CloseFile(), StatusSuccess);
  EXPECT_FALSE(IsHeldOpen(AlarmFile()));
}

TEST_F(AlarmLifecycle, OpenFileOpensNoLookUpFile) {
  Alarm alarm;
  ASSERT_EQ(alarm.OpenFile(), StatusSuccess);
  for (const std::string_view name : LookUpFiles) EXPECT_FALSE(IsHeldOpen(File(name))) << name;
}

TEST_F(AlarmLifecycle, OpenFileBlanksTheRecord) {
  Alarm alarm;
  ASSERT_EQ(alarm.OpenFile(), StatusSuccess);
  alarm.Index(7);
  ASSERT_EQ(alarm.OpenFile(), StatusSuccess);
  EXPECT_EQ(alarm.Index(), 0);
}

TEST_F(AlarmLifecycle, OpenFileAnswers12WithoutTheFileAndCanBeTriedAgain) {
  Alarm alarm;
  {
    const TakenAway away(AlarmFile());
    EXPECT_EQ(alarm.OpenFile(), StatusFileNotFound);
    EXPECT_EQ(alarm.CloseFile(), StatusSuccess);
    EXPECT_EQ(alarm.StepFirst(), StatusFileNotOpen);
  }
  EXPECT_EQ(alarm.OpenFile(), StatusSuccess);
  EXPECT_EQ(alarm.StepFirst(), StatusEndOfFile);
}

TEST_F(AlarmLifecycle, OpenFileTellsWhatProtectsTheFile) {
  test::ProtectFile(AlarmFile(), /*allowRead=*/false);
  Alarm alarm;
  EXPECT_EQ(alarm.OpenFile(), StatusInvalidOwner);
}

TEST_F(AlarmLifecycle, OpenFileNeedsAFileThatCanBeWritten) {
  test::WhereReadOnly(AlarmFile(), [] {
    Alarm alarm;
    EXPECT_EQ(alarm.OpenFile(), StatusPermission);
  });
}

TEST_F(AlarmLifecycle, OperationsBeforeOpenFileAnswer3) {
  Alarm alarm;
  EXPECT_EQ(alarm.GetEqual(7, OfCustomer), StatusFileNotOpen);
  EXPECT_EQ(alarm.GetCustomer(7), StatusFileNotOpen);
  EXPECT_EQ(alarm.GetItem(7), StatusFileNotOpen);
  EXPECT_EQ(alarm.GetVendor(7), StatusFileNotOpen);
  EXPECT_EQ(alarm.GetFirst(), StatusFileNotOpen);
  EXPECT_EQ(alarm.GetLast(), StatusFileNotOpen);
  EXPECT_EQ(alarm.GetNext(), StatusFileNotOpen);
  EXPECT_EQ(alarm.GetPrevious(), StatusFileNotOpen);
  EXPECT_EQ(alarm.StepFirst(), StatusFileNotOpen);
  EXPECT_EQ(alarm.StepLast(), StatusFileNotOpen);
  EXPECT_EQ(alarm.StepNext(), StatusFileNotOpen);
  EXPECT_EQ(alarm.StepPrevious(), StatusFileNotOpen);
  EXPECT_EQ(alarm.Insert(), StatusFileNotOpen);
  EXPECT_EQ(alarm.Update(), StatusFileNotOpen);
  EXPECT_EQ(alarm.Delete(), StatusFileNotOpen);
  EXPECT_EQ(alarm.RecordCount(), 0);
}

/// An alarm of customer 12 and item 14, with both files open for their IDs.
class AlarmLookUpFiles : public OpenAlarmTest {
 protected:
  AlarmLookUpFiles() {
    AddCustomer(company_.Folder(), {"ADAMS", 12});
    AddItem(company_.Folder(), {"BOLT", 14});
    EXPECT_EQ(ShownID(OfCustomer, 12), "ADAMS");
    EXPECT_EQ(ShownID(OfItem, 14), "BOLT");
    EXPECT_TRUE(IsHeldOpen(CustomerFile()));
    EXPECT_TRUE(IsHeldOpen(ItemFile()));
  }

  std::string ShownID(std::int16_t applyTo, std::int32_t index) {
    alarm_.ApplyTo(applyTo);
    alarm_.Index(index);
    return alarm_.ID();
  }

  std::filesystem::path CustomerFile() const { return File("Customer.dat"); }
  std::filesystem::path ItemFile() const { return File("LineItem.dat"); }
};

TEST_F(AlarmLookUpFiles, AreClosedByCloseFile) {
  EXPECT_EQ(alarm_.CloseFile(), StatusSuccess);
  EXPECT_FALSE(IsHeldOpen(AlarmFile()));
  EXPECT_FALSE(IsHeldOpen(CustomerFile()));
  EXPECT_FALSE(IsHeldOpen(ItemFile()));
  EXPECT_EQ(alarm_.CloseFile(), StatusSuccess);
}

TEST_F(AlarmLookUpFiles, AreClosedByDestruction) {
  { const Alarm gone = std::move(alarm_); }
  EXPECT_FALSE(IsHeldOpen(AlarmFile()));
  EXPECT_FALSE(IsHeldOpen(CustomerFile()));
  EXPECT_FALSE(IsHeldOpen(ItemFile()));
}

// Only what went before is forgotten, not closed: nothing but the object's end gives it up.
TEST_F(AlarmLookUpFiles, OutliveCloseFileWhereOpenFileWasCalledAgain) {
  ASSERT_EQ(alarm_.OpenFile(), StatusSuccess);
  EXPECT_TRUE(IsHeldOpen(CustomerFile()));
  EXPECT_EQ(alarm_.CloseFile(), StatusSuccess);
  EXPECT_FALSE(IsHeldOpen(AlarmFile()));
  EXPECT_TRUE(IsHeldOpen(CustomerFile()));
  EXPECT_TRUE(IsHeldOpen(ItemFile()));
  { const Alarm gone = std::move(alarm_); }
  EXPECT_FALSE(IsHeldOpen(CustomerFile()));
  EXPECT_FALSE(IsHeldOpen(ItemFile()));
}

TEST_F(AlarmLookUpFiles, AreForgottenByAnOpenFileThatFailsToo) {
  {
    const TakenAway away(AlarmFile());
    ASSERT_EQ(alarm_.OpenFile(), StatusFileNotFound);
    alarm_.CloseFile();
  }
  EXPECT_TRUE(IsHeldOpen(CustomerFile()));
  EXPECT_TRUE(IsHeldOpen(ItemFile()));
}

TEST_F(AlarmLookUpFiles, AreOpenedAnewWhenNeededAfterASecondOpenFile) {
  ASSERT_EQ(alarm_.OpenFile(), StatusSuccess);
  EXPECT_EQ(ShownID(OfCustomer, 12), "ADAMS");
  EXPECT_EQ(alarm_.CloseFile(), StatusSuccess);
  EXPECT_FALSE(IsHeldOpen(CustomerFile())) << "open again, and so closed";
  EXPECT_TRUE(IsHeldOpen(ItemFile())) << "not needed since, and so forgotten";
}

// The object still takes itself for open, and closes a file that is not.
TEST_F(OpenAlarmTest, CloseFileAfterASecondOpenFileThatFailedAnswers3) {
  {
    const TakenAway away(AlarmFile());
    ASSERT_EQ(alarm_.OpenFile(), StatusFileNotFound);
    EXPECT_FALSE(IsHeldOpen(away.Aside()));
  }
  EXPECT_EQ(alarm_.CloseFile(), StatusFileNotOpen);
  EXPECT_EQ(alarm_.CloseFile(), StatusSuccess);
}

// --- Finders ---

/// An alarm of each code for the indexes 7 and 8, numbered by index and code as 71 to 85, laid in
/// an order that is not that of the key.
class AlarmFinders : public OpenAlarmTest {
 protected:
  AlarmFinders() {
    test::OpenRecordFile alarms(AlarmFile(), AlarmRecord::Describe());
    for (const std::int32_t index : {8, 7}) {
      for (const std::int16_t applyTo : {OfAccount, OfItem, OfEmployee, OfVendor, OfCustomer}) {
        alarms.Add([&](Tovrin2Record& record) {
          record.SetLong(AlarmRecord::Index, index);
          record.SetInteger(AlarmRecord::ApplyTo, applyTo);
          record.SetLong(AlarmRecord::AlarmIndex, 10 * index + applyTo);
        });
      }
    }
  }
};

TEST_F(AlarmFinders, GetEqualComparesIndexAndWhatItIsOf) {
  for (const std::int32_t index : {7, 8}) {
    for (const std::int16_t applyTo : {OfCustomer, OfVendor, OfEmployee, OfItem, OfAccount}) {
      ASSERT_EQ(alarm_.GetEqual(index, applyTo), StatusSuccess);
      EXPECT_EQ(alarm_.AlarmIndex(), 10 * index + applyTo);
    }
  }
  EXPECT_EQ(alarm_.GetEqual(9, OfCustomer), StatusKeyNotFound);
  EXPECT_EQ(alarm_.GetEqual(7, 6), StatusKeyNotFound);
  EXPECT_EQ(alarm_.AlarmIndex(), 85) << "a search in vain leaves the record in hand";
}

TEST_F(AlarmFinders, ShortCutsFindTheAlarmOfACustomerVendorOrItem) {
  ASSERT_EQ(alarm_.GetCustomer(7), StatusSuccess);
  EXPECT_EQ(alarm_.AlarmIndex(), 71);
  ASSERT_EQ(alarm_.GetVendor(8), StatusSuccess);
  EXPECT_EQ(alarm_.AlarmIndex(), 82);
  ASSERT_EQ(alarm_.GetItem(7), StatusSuccess);
  EXPECT_EQ(alarm_.AlarmIndex(), 74);
  EXPECT_EQ(alarm_.GetCustomer(9), StatusKeyNotFound);
  EXPECT_EQ(alarm_.GetVendor(9), StatusKeyNotFound);
  EXPECT_EQ(alarm_.GetItem(9), StatusKeyNotFound);
}

TEST_F(AlarmFinders, WalkGoesByIndexAndThenByWhatItIsOf) {
  ASSERT_EQ(alarm_.GetFirst(), StatusSuccess);
  EXPECT_EQ(alarm_.AlarmIndex(), 71);
  for (const std::int32_t next : {72, 73, 74, 75, 81, 82, 83, 84, 85}) {
    ASSERT_EQ(alarm_.GetNext(), StatusSuccess);
    EXPECT_EQ(alarm_.AlarmIndex(), next);
  }
  EXPECT_EQ(alarm_.GetNext(), StatusEndOfFile);
}

TEST_F(AlarmFinders, WalkGoesBackwardsFromTheLast) {
  ASSERT_EQ(alarm_.GetLast(), StatusSuccess);
  EXPECT_EQ(alarm_.AlarmIndex(), 85);
  ASSERT_EQ(alarm_.GetPrevious(), StatusSuccess);
  EXPECT_EQ(alarm_.AlarmIndex(), 84);
  ASSERT_EQ(alarm_.GetFirst(), StatusSuccess);
  EXPECT_EQ(alarm_.GetPrevious(), StatusEndOfFile);
}

TEST_F(AlarmFinders, WalkGoesOnFromWhatWasFound) {
  ASSERT_EQ(alarm_.GetItem(7), StatusSuccess);
  ASSERT_EQ(alarm_.GetNext(), StatusSuccess);
  EXPECT_EQ(alarm_.AlarmIndex(), 75);
  ASSERT_EQ(alarm_.GetVendor(8), StatusSuccess);
  ASSERT_EQ(alarm_.GetPrevious(), StatusSuccess);
  EXPECT_EQ(alarm_.AlarmIndex(), 81);
}

TEST_F(AlarmFinders, WalkPassesThroughAllAlarmsOfOneCustomer) {
  alarm_.Index(7);
  alarm_.ApplyTo(OfCustomer);
  alarm_.AlarmIndex(100);
  ASSERT_EQ(alarm_.Insert(), StatusSuccess);
  ASSERT_EQ(alarm_.GetCustomer(7), StatusSuccess);
  EXPECT_EQ(alarm_.AlarmIndex(), 71);
  ASSERT_EQ(alarm_.GetNext(), StatusSuccess);
  EXPECT_EQ(alarm_.AlarmIndex(), 100);
}

TEST_F(AlarmFinders, WalkWithoutAPlaceAnswers8) {
  EXPECT_EQ(alarm_.GetNext(), StatusInvalidPositioning);
  EXPECT_EQ(alarm_.GetPrevious(), StatusInvalidPositioning);
  ASSERT_EQ(alarm_.GetFirst(), StatusSuccess);
  ASSERT_EQ(alarm_.StepFirst(), StatusSuccess);
  EXPECT_EQ(alarm_.GetNext(), StatusInvalidPositioning) << "a step leaves the walk";
}

TEST_F(AlarmFinders, StepsGoInTheOrderOfInsertion) {
  ASSERT_EQ(alarm_.StepFirst(), StatusSuccess);
  EXPECT_EQ(alarm_.AlarmIndex(), 85);
  ASSERT_EQ(alarm_.StepNext(), StatusSuccess);
  EXPECT_EQ(alarm_.AlarmIndex(), 84);
  ASSERT_EQ(alarm_.StepPrevious(), StatusSuccess);
  EXPECT_EQ(alarm_.StepPrevious(), StatusEndOfFile);
  ASSERT_EQ(alarm_.StepLast(), StatusSuccess);
  EXPECT_EQ(alarm_.AlarmIndex(), 71);
  EXPECT_EQ(alarm_.StepNext(), StatusEndOfFile);
}

TEST_F(AlarmFinders, InsertUpdateAndDeleteChangeTheFile) {
  alarm_.Index(9);
  alarm_.ApplyTo(OfCustomer);
  ASSERT_EQ(alarm_.Insert(), StatusSuccess);
  EXPECT_EQ(alarm_.RecordCount(), 11);
  ASSERT_EQ(alarm_.GetCustomer(9), StatusSuccess);
  alarm_.Index(10);
  ASSERT_EQ(alarm_.Update(), StatusSuccess);
  EXPECT_EQ(alarm_.GetCustomer(9), StatusKeyNotFound);
  ASSERT_EQ(alarm_.GetCustomer(10), StatusSuccess);
  ASSERT_EQ(alarm_.Delete(), StatusSuccess);
  EXPECT_EQ(alarm_.GetCustomer(10), StatusKeyNotFound);
  EXPECT_EQ(alarm_.RecordCount(), 10);
}

TEST_F(AlarmFinders, WritesTakeTheirPlaceInTheWalk) {
  alarm_.Index(7);
  alarm_.ApplyTo(6);
  ASSERT_EQ(alarm_.Insert(), StatusSuccess);
  ASSERT_EQ(alarm_.GetNext(), StatusSuccess);
  EXPECT_EQ(alarm_.AlarmIndex(), 81);
  ASSERT_EQ(alarm_.StepFirst(), StatusSuccess);
  ASSERT_EQ(alarm_.Update(), StatusSuccess);
  EXPECT_EQ(alarm_.GetNext(), StatusEndOfFile) << "85 is the last of the walk";
}

// --- Fields ---

TEST_F(AlarmFields, UnknownReads0AndKeepsNothing) {
  alarm_.Unknown(7);
  EXPECT_EQ(alarm_.Unknown(), 0);
}

TEST_F(AlarmFields, ApplyToDescriptionIsTheTextOfTheCodeAskedFor) {
  const Variant customer = alarm_.ApplyToDescription(OfCustomer);
  EXPECT_EQ(customer.GetKind(), Variant::Kind::String);
  EXPECT_NE(customer, Variant(""));
  EXPECT_FALSE(customer == alarm_.ApplyToDescription(OfVendor));
  alarm_.ApplyTo(OfVendor);
  EXPECT_EQ(alarm_.ApplyToDescription(OfCustomer), customer) << "whatever the record holds";
}

// --- The transaction that an alarm belongs to ---

TEST_F(AlarmReference, NumberHasTwoNames) {
  alarm_.TrxNumber(300);
  EXPECT_EQ(alarm_.TrxNumberL(), 300);
  alarm_.TrxNumberL(32767);
  EXPECT_EQ(alarm_.TrxNumber(), 32767);
}

TEST_F(AlarmReference, NumberBelow0ReadsByItsLongNameAlone) {
  alarm_.TrxNumberL(-5);
  EXPECT_EQ(alarm_.TrxNumberL(), -5);
  EXPECT_EQ(RaisedNumber([&] { return alarm_.TrxNumber(); }), Overflow);
  EXPECT_EQ(RaisedNumber([&] { return alarm_.Key(); }), Overflow);
  alarm_.TrxNumber(-32768);
  EXPECT_EQ(alarm_.TrxNumberL(), -32768);
  EXPECT_EQ(RaisedNumber([&] { return alarm_.TrxNumber(); }), Overflow);
}

TEST_F(AlarmReference, NumberBeyond16BitsRaises6AndChangesNothing) {
  alarm_.TrxNumberL(300);
  for (const std::int32_t number : {32768, 40000, 65536, -32769}) {
    EXPECT_EQ(RaisedNumber([&] { alarm_.TrxNumberL(number); }), Overflow) << number;
  }
  EXPECT_EQ(alarm_.TrxNumberL(), 300);
}

/// The bytes of a key, the lowest in front.
constexpr std::uint64_t PackedKey = 0x0003'0005'012C'0011;  // journal 3, period 5, 300, subindex 17

TEST_F(AlarmReference, KeyPacksJournalPeriodNumberAndSubindex) {
  alarm_.Subindex1(17);
  alarm_.TrxNumber(300);
  alarm_.Period(5);
  alarm_.JournalID(3);
  EXPECT_EQ(std::bit_cast<std::uint64_t>(alarm_.Key()), PackedKey);
}

TEST_F(AlarmReference, KeyLeavesOutTheSecondSubindex) {
  alarm_.Subindex2(7);
  EXPECT_EQ(std::bit_cast<std::uint64_t>(alarm_.Key()), 0U);
}

TEST_F(AlarmReference, AssignedKeySetsItsFourFields) {
  alarm_.Key(std::bit_cast<double>(PackedKey));
  EXPECT_EQ(alarm_.Subindex1(), 17);
  EXPECT_EQ(alarm_.TrxNumber(), 300);
  EXPECT_EQ(alarm_.Period(), 5);
  EXPECT_EQ(alarm_.JournalID(), 3);
}

TEST_F(AlarmReference, SecondByteOfAnAssignedKeyIsIgnored) {
  alarm_.Key(std::bit_cast<double>(PackedKey | 0xFF00));
  EXPECT_EQ(std::bit_cast<std::uint64_t>(alarm_.Key()), PackedKey);
}

TEST_F(AlarmReference, KeyAssignedToItselfClearsTheSecondSubindexAlone) {
  alarm_.Key(std::bit_cast<double>(PackedKey));
  alarm_.Subindex2(7);
  alarm_.Index(12);
  alarm_.Key(alarm_.Key());
  EXPECT_EQ(alarm_.Subindex2(), 0);
  EXPECT_EQ(std::bit_cast<std::uint64_t>(alarm_.Key()), PackedKey);
  EXPECT_EQ(alarm_.Index(), 12);
}

TEST_F(AlarmReference, NumberAboveTheSignBitIsStoredByKeyAsBelow0) {
  alarm_.Key(std::bit_cast<double>(std::uint64_t{0x0003'0005'FFFB'0000}));
  EXPECT_EQ(alarm_.TrxNumberL(), -5);
  EXPECT_EQ(RaisedNumber([&] { return alarm_.Key(); }), Overflow);
}

}  // namespace
}  // namespace larkmoor
