// The class Customer: its file, its finders and the key that they go along, and the fields that
// show the record in another form. Its addresses are told in customer_addresses_test.cpp; accounts,
// sales representative and ship method in customer_look_ups_test.cpp.
#include "engine/records/customer.h"

#include <cstdint>
#include <filesystem>
#include <functional>
#include <string>
#include <string_view>

#include <gtest/gtest.h>

#include <larkmoor/masters/customer.h>
#include <larkmoor/status.h>

#include "engine/tovrin_file.h"
#include "engine/tovrin_file_names.h"
#include "support/child_process.h"
#include "support/company.h"
#include "support/errors.h"
#include "support/failing_disk.h"
#include "support/masters.h"
#include "support/record_files.h"
#include "support/taken_away.h"

namespace larkmoor {
namespace {

using test::AddCustomer;
using test::Company;
using test::IsHeldOpen;
using test::OpenRecordFile;
using test::RaisedNumber;
using test::TakenAway;

class CustomerTest : public testing::Test {
 protected:
  std::filesystem::path CustomerFile() const {
    return company_.Folder() / TovrinFileNames::CustomerFile();
  }

  Company company_;
};

/// Three customers whose indexes go against their IDs, laid in a third order, and an object open on
/// them.
class OpenCustomerTest : public CustomerTest {
 protected:
  OpenCustomerTest() {
    AddCustomer(company_.Folder(), {"BAKER", 20});
    AddCustomer(company_.Folder(), {"ADAMS", 30});
    AddCustomer(company_.Folder(), {"CLARK", 10});
    EXPECT_EQ(customer_.OpenFile(), StatusSuccess);
  }

  Customer customer_;
};

using CustomerLifecycle = CustomerTest;
using CustomerFinders = OpenCustomerTest;
using CustomerKeyNumber = OpenCustomerTest;
using CustomerPercentage = OpenCustomerTest;
using CustomerWrites = OpenCustomerTest;
using CustomerStoredFields = CustomerTest;

// --- Opening and closing ---

TEST_F(CustomerLifecycle, FileIsCustomerDat) {
  Customer customer;
  ASSERT_EQ(customer.OpenFile(), StatusSuccess);
  EXPECT_TRUE(IsHeldOpen(company_.Folder() / "Customer.dat"));
}

TEST_F(CustomerLifecycle, OperationsBeforeOpenFileAnswer3) {
  Customer customer;
  EXPECT_EQ(customer.GetEqual("ADAMS"), StatusFileNotOpen);
  EXPECT_EQ(customer.GetForIndex(1), StatusFileNotOpen);
  EXPECT_EQ(customer.GetGreaterThan(""), StatusFileNotOpen);
  EXPECT_EQ(customer.GetLessThan("Z"), StatusFileNotOpen);
  EXPECT_EQ(customer.GetLast(), StatusFileNotOpen);
  EXPECT_EQ(customer.GetNext(), StatusFileNotOpen);
  EXPECT_EQ(customer.GetPrevious(), StatusFileNotOpen);
  EXPECT_EQ(customer.GetByPercent(50), StatusFileNotOpen);
  EXPECT_EQ(customer.StepFirst(), StatusFileNotOpen);
  EXPECT_EQ(customer.Insert(), StatusFileNotOpen);
  EXPECT_EQ(customer.Update(), StatusFileNotOpen);
  EXPECT_EQ(customer.Delete(), StatusFileNotOpen);
  EXPECT_EQ(customer.RecordCount(), 0);
  EXPECT_EQ(customer.CloseFile(), StatusSuccess);
}

TEST_F(CustomerLifecycle, FailedOpenFileLeavesItClosed) {
  Customer customer;
  {
    const TakenAway away(CustomerFile());
    EXPECT_EQ(customer.OpenFile(), StatusFileNotFound);
    EXPECT_EQ(customer.StepFirst(), StatusFileNotOpen);
    EXPECT_EQ(customer.CloseFile(), StatusSuccess);
  }
  EXPECT_EQ(customer.OpenFile(), StatusSuccess);
}

TEST_F(CustomerLifecycle, FileOfAnotherOwnerAnswers51) {
  test::ProtectFile(CustomerFile(), /*allowRead=*/false);
  EXPECT_EQ(Customer().OpenFile(), StatusInvalidOwner);
}

TEST_F(CustomerLifecycle, ReadOnlyFileDoesNotOpen) {
  test::WhereReadOnly(CustomerFile(), [] { EXPECT_EQ(Customer().OpenFile(), StatusPermission); });
}

TEST_F(CustomerLifecycle, CloseFileClosesAndAnswers0EachTime) {
  Customer customer;
  ASSERT_EQ(customer.OpenFile(), StatusSuccess);
  EXPECT_EQ(customer.CloseFile(), StatusSuccess);
  EXPECT_FALSE(IsHeldOpen(CustomerFile()));
  EXPECT_EQ(customer.CloseFile(), StatusSuccess);
}

TEST_F(CustomerLifecycle, CloseFileOfAFileThatIsNoLongerOpenAnswers3) {
  Customer customer;
  ASSERT_EQ(customer.OpenFile(), StatusSuccess);
  ASSERT_EQ(TovrinFile().btReset(), StatusSuccess);
  EXPECT_EQ(customer.CloseFile(), StatusFileNotOpen);
  EXPECT_EQ(customer.CloseFile(), StatusSuccess);
}

TEST_F(CustomerLifecycle, CloseFileThatFailsAnswersItsStatusAndClosesAllTheSame) {
  test::RunInChild([&] {
    Customer customer;
    ASSERT_EQ(customer.OpenFile(), StatusSuccess);
    ASSERT_EQ(customer.Insert(), StatusSuccess);
    test::BreakDisk(CustomerFile());
    EXPECT_EQ(customer.CloseFile(), StatusIOError);
    EXPECT_EQ(customer.CloseFile(), StatusSuccess);
  });
}

TEST_F(CustomerLifecycle, FailedSecondOpenFileReleasesTheFileAndKeepsTheMark) {
  Customer customer;
  ASSERT_EQ(customer.OpenFile(), StatusSuccess);
  {
    const TakenAway away(CustomerFile());
    EXPECT_EQ(customer.OpenFile(), StatusFileNotFound);
  }
  EXPECT_FALSE(IsHeldOpen(CustomerFile()));
  EXPECT_EQ(customer.StepFirst(), StatusFileNotOpen);
  EXPECT_EQ(customer.CloseFile(), StatusFileNotOpen);
  EXPECT_EQ(customer.CloseFile(), StatusSuccess);
}

TEST_F(CustomerLifecycle, SecondOpenFileStartsAnew) {
  AddCustomer(company_.Folder(), {"ADAMS", 7});
  Customer customer;
  ASSERT_EQ(customer.OpenFile(), StatusSuccess);
  ASSERT_EQ(customer.GetForIndex(7), StatusSuccess);
  EXPECT_EQ(customer.OpenFile(), StatusSuccess);
  EXPECT_EQ(customer.CustomerID(), "");
  EXPECT_EQ(customer.Update(), StatusInvalidPositioning);
  EXPECT_EQ(customer.CloseFile(), StatusSuccess);
  EXPECT_FALSE(IsHeldOpen(CustomerFile()));
}

TEST_F(CustomerLifecycle, DestructionClosesTheFile) {
  {
    Customer customer;
    ASSERT_EQ(customer.OpenFile(), StatusSuccess);
    ASSERT_TRUE(IsHeldOpen(CustomerFile()));
  }
  EXPECT_FALSE(IsHeldOpen(CustomerFile()));
}

// --- Finders ---

TEST_F(CustomerFinders, GetEqualReadsTheCustomerOfExactlyThatID) {
  ASSERT_EQ(customer_.GetEqual("ADAMS"), StatusSuccess);
  EXPECT_EQ(customer_.Index(), 30);
  for (const char* id : {"ADAM", "ADAMSON", "Adams", "ADAMS ", ""}) {
    EXPECT_EQ(customer_.GetEqual(id), StatusKeyNotFound) << id;
  }
  EXPECT_EQ(customer_.CustomerID(), "ADAMS") << "a read that finds nothing leaves the record";
}

TEST_F(CustomerFinders, GetGreaterThanReadsTheNextHigherID) {
  ASSERT_EQ(customer_.GetGreaterThan(""), StatusSuccess);
  EXPECT_EQ(customer_.CustomerID(), "ADAMS");
  ASSERT_EQ(customer_.GetGreaterThan("ADAMS"), StatusSuccess);
  EXPECT_EQ(customer_.CustomerID(), "BAKER");
  ASSERT_EQ(customer_.GetGreaterThan("BAKE"), StatusSuccess);
  EXPECT_EQ(customer_.CustomerID(), "BAKER");
  EXPECT_EQ(customer_.GetGreaterThan("CLARK"), StatusEndOfFile);
}

TEST_F(CustomerFinders, GetLessThanReadsTheNextLowerID) {
  ASSERT_EQ(customer_.GetLessThan("ZZZ"), StatusSuccess);
  EXPECT_EQ(customer_.CustomerID(), "CLARK");
  ASSERT_EQ(customer_.GetLessThan("CLARK"), StatusSuccess);
  EXPECT_EQ(customer_.CustomerID(), "BAKER");
  EXPECT_EQ(customer_.GetLessThan("ADAMS"), StatusEndOfFile);
}

TEST_F(CustomerFinders, GetForIndexReadsTheCustomerOfThatIndex) {
  ASSERT_EQ(customer_.GetForIndex(20), StatusSuccess);
  EXPECT_EQ(customer_.CustomerID(), "BAKER");
  EXPECT_EQ(customer_.GetForIndex(21), StatusKeyNotFound);
}

TEST_F(CustomerFinders, StepsGoInTheOrderOfInsertion) {
  ASSERT_EQ(customer_.StepFirst(), StatusSuccess);
  EXPECT_EQ(customer_.CustomerID(), "BAKER");
  ASSERT_EQ(customer_.StepNext(), StatusSuccess);
  EXPECT_EQ(customer_.CustomerID(), "ADAMS");
  ASSERT_EQ(customer_.StepLast(), StatusSuccess);
  EXPECT_EQ(customer_.CustomerID(), "CLARK");
  EXPECT_EQ(customer_.StepNext(), StatusEndOfFile);
  ASSERT_EQ(customer_.StepPrevious(), StatusSuccess);
  EXPECT_EQ(customer_.CustomerID(), "ADAMS");
  EXPECT_EQ(customer_.GetNext(), StatusInvalidPositioning) << "a step leaves no place on a key";
}

// --- The key that walks and writes go along ---

TEST_F(CustomerKeyNumber, OfANewObjectIsThatOfTheIDs) {
  EXPECT_EQ(customer_.GetNext(), StatusInvalidPositioning);
  ASSERT_EQ(customer_.GetLast(), StatusSuccess);
  EXPECT_EQ(customer_.CustomerID(), "CLARK");
  ASSERT_EQ(customer_.GetPrevious(), StatusSuccess);
  EXPECT_EQ(customer_.CustomerID(), "BAKER");
}

TEST_F(CustomerKeyNumber, FollowsTheFindersByID) {
  const std::function<Status()> finders[] = {[&] { return customer_.GetEqual("BAKER"); },
                                             [&] { return customer_.GetGreaterThan("ADAMS"); },
                                             [&] { return customer_.GetLessThan("CLARK"); }};
  for (const auto& find : finders) {
    ASSERT_EQ(customer_.GetForIndex(20), StatusSuccess);
    ASSERT_EQ(find(), StatusSuccess);
    ASSERT_EQ(customer_.CustomerID(), "BAKER");
    ASSERT_EQ(customer_.GetNext(), StatusSuccess);
    EXPECT_EQ(customer_.CustomerID(), "CLARK");
    EXPECT_EQ(customer_.GetNext(), StatusEndOfFile);
  }
}

TEST_F(CustomerKeyNumber, FollowsTheFinderByIndex) {
  ASSERT_EQ(customer_.GetForIndex(20), StatusSuccess);
  ASSERT_EQ(customer_.GetNext(), StatusSuccess);
  EXPECT_EQ(customer_.CustomerID(), "ADAMS");
  ASSERT_EQ(customer_.GetPrevious(), StatusSuccess);
  ASSERT_EQ(customer_.GetPrevious(), StatusSuccess);
  EXPECT_EQ(customer_.CustomerID(), "CLARK");
  EXPECT_EQ(customer_.GetPrevious(), StatusEndOfFile);
  ASSERT_EQ(customer_.GetLast(), StatusSuccess);
  EXPECT_EQ(customer_.CustomerID(), "ADAMS");
}

TEST_F(CustomerKeyNumber, FollowsAFinderThatFindsNothing) {
  ASSERT_EQ(customer_.GetForIndex(99), StatusKeyNotFound);
  ASSERT_EQ(customer_.GetLast(), StatusSuccess);
  EXPECT_EQ(customer_.CustomerID(), "ADAMS");
}

TEST_F(CustomerKeyNumber, IsNotTouchedBySteps) {
  ASSERT_EQ(customer_.GetForIndex(20), StatusSuccess);
  ASSERT_EQ(customer_.StepFirst(), StatusSuccess);
  ASSERT_EQ(customer_.GetLast(), StatusSuccess);
  EXPECT_EQ(customer_.CustomerID(), "ADAMS");
}

TEST_F(CustomerKeyNumber, IsThatOfTheNextWrite) {
  ASSERT_EQ(customer_.GetForIndex(20), StatusSuccess);
  ASSERT_EQ(customer_.Update(), StatusSuccess);
  ASSERT_EQ(customer_.GetNext(), StatusSuccess);
  EXPECT_EQ(customer_.CustomerID(), "ADAMS");
  customer_.CustomerID("AMES");
  customer_.Index(25);
  ASSERT_EQ(customer_.Insert(), StatusSuccess);
  ASSERT_EQ(customer_.GetPrevious(), StatusSuccess);
  EXPECT_EQ(customer_.CustomerID(), "BAKER");
}

TEST_F(CustomerKeyNumber, IsSetBackByOpenFile) {
  ASSERT_EQ(customer_.GetForIndex(20), StatusSuccess);
  ASSERT_EQ(customer_.OpenFile(), StatusSuccess);
  ASSERT_EQ(customer_.GetLast(), StatusSuccess);
  EXPECT_EQ(customer_.CustomerID(), "CLARK");
}

// --- Percentages ---

TEST_F(CustomerPercentage, OfTheFirstIs0AndOfTheLast100AlongTheKeyInUse) {
  ASSERT_EQ(customer_.GetEqual("ADAMS"), StatusSuccess);
  EXPECT_EQ(customer_.FindByPercent(), 0);
  ASSERT_EQ(customer_.GetLast(), StatusSuccess);
  EXPECT_EQ(customer_.FindByPercent(), 100);
  ASSERT_EQ(customer_.GetForIndex(10), StatusSuccess);
  ASSERT_EQ(customer_.CustomerID(), "CLARK");
  EXPECT_EQ(customer_.FindByPercent(), 0);
}

// What FindByPercent gives is no status.
TEST_F(CustomerPercentage, OfNoRecordIs0) {
  EXPECT_EQ(customer_.FindByPercent(), 0);
  EXPECT_EQ(Customer().FindByPercent(), 0);
}

TEST_F(CustomerPercentage, IsWhereGetByPercentReads) {
  ASSERT_EQ(customer_.GetByPercent(100), StatusSuccess);
  EXPECT_EQ(customer_.CustomerID(), "CLARK");
  ASSERT_EQ(customer_.GetByPercent(0), StatusSuccess);
  EXPECT_EQ(customer_.CustomerID(), "ADAMS");
  ASSERT_EQ(customer_.GetNext(), StatusSuccess);
  EXPECT_EQ(customer_.CustomerID(), "BAKER");
  ASSERT_EQ(customer_.GetForIndex(20), StatusSuccess);
  ASSERT_EQ(customer_.GetByPercent(0), StatusSuccess);
  EXPECT_EQ(customer_.CustomerID(), "CLARK");
}

// --- Writes ---

TEST_F(CustomerWrites, InsertGivesTheNextIndex) {
  customer_.CustomerID("DUNN");
  ASSERT_EQ(customer_.Insert(), StatusSuccess);
  EXPECT_EQ(customer_.Index(), 31);
  EXPECT_EQ(customer_.RecordCount(), 4);
}

TEST_F(CustomerWrites, InsertOfAnIDThatIsThereAnswers5) {
  customer_.CustomerID("ADAMS");
  EXPECT_EQ(customer_.Insert(), StatusDuplicateKey);
  EXPECT_EQ(customer_.RecordCount(), 3);
}

TEST_F(CustomerWrites, UpdateRewritesAndDeleteTakesAwayTheCustomerInHand) {
  ASSERT_EQ(customer_.GetEqual("BAKER"), StatusSuccess);
  customer_.Contact("Rosa");
  ASSERT_EQ(customer_.Update(), StatusSuccess);
  Customer other;
  ASSERT_EQ(other.OpenFile(), StatusSuccess);
  ASSERT_EQ(other.GetForIndex(20), StatusSuccess);
  EXPECT_EQ(other.Contact(), "Rosa");
  ASSERT_EQ(other.Delete(), StatusSuccess);
  EXPECT_EQ(other.RecordCount(), 2);
  EXPECT_EQ(customer_.Update(), StatusRecordConflict);
}

// --- Fields in another form ---

TEST(CustomerPricingLevel, CountsFrom1WhatTheRecordCountsFrom0) {
  const Company company;
  Customer customer;
  ASSERT_EQ(customer.OpenFile(), StatusSuccess);
  EXPECT_EQ(customer.PricingLevel(), 1);
  customer.PricingLevel(10);
  EXPECT_EQ(customer.PricingLevel(), 10);
  ASSERT_EQ(customer.Insert(), StatusSuccess);
  OpenRecordFile file(company.Folder() / TovrinFileNames::CustomerFile(),
                      CustomerRecord::Describe());
  ASSERT_EQ(file.File().btStepFirst(), StatusSuccess);
  EXPECT_EQ(file.Record().GetByte(CustomerRecord::PricingLevel), 9);
}

TEST(CustomerPricingLevel, GoesUpTo255) {
  Customer customer;
  customer.PricingLevel(255);
  EXPECT_EQ(customer.PricingLevel(), 255);
}

TEST(CustomerPricingLevel, Of0Raises6AndKeepsTheLevel) {
  Customer customer;
  customer.PricingLevel(4);
  EXPECT_EQ(RaisedNumber([&] { customer.PricingLevel(0); }), 6);
  EXPECT_EQ(customer.PricingLevel(), 4);
}

TEST_F(CustomerStoredFields, PricingLevelBeyondAByteRaises6) {
  OpenRecordFile(CustomerFile(), CustomerRecord::Describe()).Add([](Tovrin2Record& record) {
    record.SetByte(CustomerRecord::PricingLevel, 255);
  });
  Customer customer;
  ASSERT_EQ(customer.OpenFile(), StatusSuccess);
  ASSERT_EQ(customer.StepFirst(), StatusSuccess);
  EXPECT_EQ(RaisedNumber([&] { return customer.PricingLevel(); }), 6);
}

// The lowest bit is stored as it is, and anything at all sets the bit of value 4.
TEST(CustomerFormDeliveryFlags, KeepTheLowestBitAndGain4) {
  Customer customer;
  EXPECT_EQ(customer.FormDeliveryFlags(), 0);
  const struct {
    std::int32_t written;
    std::int32_t read;
  } samples[] = {{1, 5}, {4, 4}, {2, 4},  {3, 5},  {5, 5},
                 {6, 4}, {7, 5}, {-1, 5}, {-2, 4}, {256, 4}};
  for (const auto& sample : samples) {
    customer.FormDeliveryFlags(sample.written);
    EXPECT_EQ(customer.FormDeliveryFlags(), sample.read) << sample.written;
  }
  customer.FormDeliveryFlags(0);
  EXPECT_EQ(customer.FormDeliveryFlags(), 0);
}

TEST(CustomerFormDeliveryFlags, AreNotThoseOfFormDeliveryFlags2) {
  Customer customer;
  customer.FormDeliveryFlags2(6);
  customer.FormDeliveryFlags(1);
  EXPECT_EQ(customer.FormDeliveryFlags2(), 6);
  customer.FormDeliveryFlags2(0);
  EXPECT_EQ(customer.FormDeliveryFlags(), 5);
}

TEST_F(CustomerStoredFields, FormDeliveryFlagsOfAnotherWriterReadAsTheyStand) {
  OpenRecordFile(CustomerFile(), CustomerRecord::Describe()).Add([](Tovrin2Record& record) {
    record.SetLong(CustomerRecord::FormDeliveryFlags, 3);
  });
  Customer customer;
  ASSERT_EQ(customer.OpenFile(), StatusSuccess);
  ASSERT_EQ(customer.StepFirst(), StatusSuccess);
  EXPECT_EQ(customer.FormDeliveryFlags(), 3);
}

TEST_F(CustomerStoredFields, FormDeliveryFlagsAreStoredWithTheCustomer) {
  Customer customer;
  ASSERT_EQ(customer.OpenFile(), StatusSuccess);
  customer.FormDeliveryFlags(1);
  ASSERT_EQ(customer.Insert(), StatusSuccess);
  Customer reader;
  ASSERT_EQ(reader.OpenFile(), StatusSuccess);
  ASSERT_EQ(reader.StepFirst(), StatusSuccess);
  EXPECT_EQ(reader.FormDeliveryFlags(), 5);
}

/// Indexes that no repeating field has.
constexpr std::int16_t Outside[] = {-32768, -1, 32767};

// Unlike those of the ship-to addresses, these indexes are not brought into range.
TEST(CustomerRepeatingFields, OfAnIndexOutsideRaise9) {
  Customer customer;
  for (const std::int16_t index : Outside) {
    EXPECT_EQ(RaisedNumber([&] { return customer.CustomField(index); }), 9) << index;
    EXPECT_EQ(RaisedNumber([&] { customer.CustomField(index, "x"); }), 9) << index;
    EXPECT_EQ(RaisedNumber([&] { return customer.Receipts(index); }), 9) << index;
    EXPECT_EQ(RaisedNumber([&] { customer.Receipts(index, 1.5); }), 9) << index;
    EXPECT_EQ(RaisedNumber([&] { return customer.Sales(index); }), 9) << index;
    EXPECT_EQ(RaisedNumber([&] { customer.Sales(index, 1.5); }), 9) << index;
    EXPECT_EQ(RaisedNumber([&] { return customer.Unknown2(index); }), 9) << index;
    EXPECT_EQ(RaisedNumber([&] { customer.Unknown2(index, 7); }), 9) << index;
  }
}

TEST(CustomerUnknowns, Read0AndDropWrites) {
  Customer customer;
  for (const std::int16_t index : Outside) {
    customer.Unknown1(index, 7);
    EXPECT_EQ(customer.Unknown1(index), 0) << index;
  }
  customer.Unknown1(0, 7);
  EXPECT_EQ(customer.Unknown1(0), 0);
  customer.Unknown3(7);
  EXPECT_EQ(customer.Unknown3(), 0);
  customer.Unknown4(7);
  EXPECT_EQ(customer.Unknown4(), 0);
  customer.Unused5(7);
  EXPECT_EQ(customer.Unused5(), 0);
}

TEST(CustomerUnknowns, Unused1AndUnknown2AreStored) {
  Customer customer;
  customer.Unused1(7);
  EXPECT_EQ(customer.Unused1(), 7);
  customer.Unknown2(0, 8);
  EXPECT_EQ(customer.Unknown2(0), 8);
}

}  // namespace
}  // namespace larkmoor
