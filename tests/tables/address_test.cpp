// The class Address, and on it what every table object does: its life from OpenFile to CloseFile,
// what each finder reads, which key path a write goes on, and how fields show text.
#include "engine/records/address.h"

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>

#include <gtest/gtest.h>

#include <larkmoor/status.h>
#include <larkmoor/tables/address.h>

#include "connection/shared_state.h"
#include "engine/tovrin_file.h"
#include "engine/tovrin_file_names.h"
#include "support/company.h"
#include "support/errors.h"
#include "support/record_files.h"

namespace larkmoor {
namespace {

using test::Company;
using test::IsHeldOpen;
using test::RaisedNumber;

/// A company, with no table open yet.
class AddressTest : public testing::Test {
 protected:
  std::filesystem::path AddressFile() const {
    return company_.Folder() / TovrinFileNames::AddressFile();
  }

  Company company_;
};

using AddressLifecycle = AddressTest;

/// An open table without records.
class OpenAddressTest : public AddressTest {
 protected:
  OpenAddressTest() { EXPECT_EQ(address_.OpenFile(), StatusSuccess); }

  Address address_;
};

using AddressRecords = OpenAddressTest;
using AddressText = OpenAddressTest;
using AddressGuid = OpenAddressTest;

/// Who an address belongs to.
struct Owner {
  std::int32_t customer;
  std::int32_t vendor;
  std::int32_t type = 0;
};

void AddRecord(Address& address, const Owner& owner) {
  address.AddressRecordNumber(0);
  address.CustomerRecordNumber(owner.customer);
  address.VendorRecordNumber(owner.vendor);
  address.AddressTypeNumber(owner.type);
  ASSERT_EQ(address.Insert(), StatusSuccess);
}

/// Four addresses, number 1 to 4: of customer 5 two and of customer 6 one, of vendor 7 two and of
/// vendor 9 one. They are laid by an object of their own, so that `address_` comes fresh.
class FilledAddressTest : public OpenAddressTest {
 protected:
  FilledAddressTest() {
    Address writer;
    EXPECT_EQ(writer.OpenFile(), StatusSuccess);
    AddRecord(writer, {.customer = 5, .vendor = 0, .type = 0});
    AddRecord(writer, {.customer = 0, .vendor = 7, .type = 0});
    AddRecord(writer, {.customer = 5, .vendor = 7, .type = 1});
    AddRecord(writer, {.customer = 6, .vendor = 9, .type = 0});
  }

  /// The number of the record in hand.
  std::int32_t Number() { return address_.AddressRecordNumber(); }
};

using AddressFinders = FilledAddressTest;
using AddressSteps = FilledAddressTest;
using AddressKeyPath = FilledAddressTest;
using AddressConflict = FilledAddressTest;

// --- Before OpenFile ---

TEST_F(AddressLifecycle, OperationsOnANewObjectAnswer3) {
  Address address;
  EXPECT_EQ(address.Delete(), StatusFileNotOpen);
  EXPECT_EQ(address.GetEqual(1), StatusFileNotOpen);
  EXPECT_EQ(address.GetFirstForCustomer(1), StatusFileNotOpen);
  EXPECT_EQ(address.GetFirstForVendor(1), StatusFileNotOpen);
  EXPECT_EQ(address.GetNextByCustomer(), StatusFileNotOpen);
  EXPECT_EQ(address.GetNextByVendor(), StatusFileNotOpen);
  EXPECT_EQ(address.Insert(), StatusFileNotOpen);
  EXPECT_EQ(address.Update(), StatusFileNotOpen);
  EXPECT_EQ(address.StepFirst(), StatusFileNotOpen);
  EXPECT_EQ(address.StepLast(), StatusFileNotOpen);
  EXPECT_EQ(address.StepNext(), StatusFileNotOpen);
  EXPECT_EQ(address.StepPrevious(), StatusFileNotOpen);
  EXPECT_EQ(address.RecordCount(), 0);
}

TEST_F(AddressLifecycle, CloseFileOnANewObjectAnswers0) {
  Address address;
  EXPECT_EQ(address.CloseFile(), StatusSuccess);
  EXPECT_EQ(address.CloseFile(), StatusSuccess);
}

TEST_F(AddressLifecycle, CloseFileAfterOtherOperationsOnANewObjectAnswers0) {
  Address address;
  ASSERT_EQ(address.StepFirst(), StatusFileNotOpen);
  EXPECT_EQ(address.CloseFile(), StatusSuccess);
}

TEST_F(AddressLifecycle, PropertiesOfANewObjectAreBlankAndHoldWhatIsAssigned) {
  Address address;
  EXPECT_EQ(address.City(), "");
  EXPECT_EQ(address.GUID(), "");
  EXPECT_EQ(address.AddressRecordNumber(), 0);
  address.City("Ghent");
  address.AddressRecordNumber(12);
  EXPECT_EQ(address.City(), "Ghent");
  EXPECT_EQ(address.AddressRecordNumber(), 12);
}

TEST_F(AddressLifecycle, NeedsNoCompanyToBeMade) {
  Shared().gCompanyPath.clear();
  Address address;
  EXPECT_EQ(address.City(), "");
  EXPECT_EQ(address.CloseFile(), StatusSuccess);
}

// --- OpenFile and CloseFile ---

TEST_F(AddressLifecycle, OpenFileBlanksTheRecord) {
  Address address;
  address.City("Ghent");
  ASSERT_EQ(address.OpenFile(), StatusSuccess);
  EXPECT_EQ(address.City(), "");
}

TEST_F(AddressLifecycle, OpenFileHoldsTheFileUntilCloseFile) {
  Address address;
  ASSERT_EQ(address.OpenFile(), StatusSuccess);
  EXPECT_TRUE(IsHeldOpen(AddressFile()));
  EXPECT_EQ(address.CloseFile(), StatusSuccess);
  EXPECT_FALSE(IsHeldOpen(AddressFile()));
}

// Other tables answer 0: here the mark of an open file outlives the close.
TEST_F(AddressLifecycle, EveryFurtherCloseFileAnswers3) {
  Address address;
  ASSERT_EQ(address.OpenFile(), StatusSuccess);
  EXPECT_EQ(address.CloseFile(), StatusSuccess);
  EXPECT_EQ(address.CloseFile(), StatusFileNotOpen);
  EXPECT_EQ(address.CloseFile(), StatusFileNotOpen);
}

TEST_F(AddressLifecycle, ObjectIsBlankAndClosedAfterCloseFile) {
  Address address;
  ASSERT_EQ(address.OpenFile(), StatusSuccess);
  address.City("Ghent");
  ASSERT_EQ(address.Insert(), StatusSuccess);
  ASSERT_EQ(address.CloseFile(), StatusSuccess);
  EXPECT_EQ(address.City(), "");
  EXPECT_EQ(address.StepFirst(), StatusFileNotOpen);
  EXPECT_EQ(address.RecordCount(), 0);
  address.City("Bruges");
  EXPECT_EQ(address.City(), "Bruges");
}

TEST_F(AddressLifecycle, ObjectCanBeOpenedAgain) {
  Address address;
  ASSERT_EQ(address.OpenFile(), StatusSuccess);
  ASSERT_EQ(address.CloseFile(), StatusSuccess);
  ASSERT_EQ(address.CloseFile(), StatusFileNotOpen);
  EXPECT_EQ(address.OpenFile(), StatusSuccess);
  EXPECT_EQ(address.Insert(), StatusSuccess);
  EXPECT_EQ(address.CloseFile(), StatusSuccess);
}

TEST_F(AddressLifecycle, FailedOpenFileLeavesAClosedObjectThatCanTryAgain) {
  const std::filesystem::path elsewhere = company_.Folder() / "taken away";
  std::filesystem::rename(AddressFile(), elsewhere);
  Address address;
  EXPECT_EQ(address.OpenFile(), StatusFileNotFound);
  EXPECT_EQ(address.CloseFile(), StatusSuccess);
  EXPECT_EQ(address.StepFirst(), StatusFileNotOpen);
  EXPECT_EQ(address.RecordCount(), 0);

  std::filesystem::rename(elsewhere, AddressFile());
  EXPECT_EQ(address.OpenFile(), StatusSuccess);
  EXPECT_EQ(address.Insert(), StatusSuccess);
  EXPECT_EQ(address.CloseFile(), StatusSuccess);
}

TEST_F(AddressLifecycle, FailedOpenFileKeepsWhatTheRecordHolds) {
  std::filesystem::remove(AddressFile());
  Address address;
  address.City("Ghent");
  ASSERT_EQ(address.OpenFile(), StatusFileNotFound);
  EXPECT_EQ(address.City(), "Ghent");
}

TEST_F(AddressLifecycle, OpenFileAnswersWhatTheEngineAnswers) {
  Address address;
  test::ProtectFile(AddressFile(), /*allowRead=*/false);
  EXPECT_EQ(address.OpenFile(), StatusInvalidOwner);
  test::WriteFile(AddressFile(), "This is no record file.");
  EXPECT_EQ(address.OpenFile(), StatusNotARecordFile);
  Shared().gCompanyPath = "/no/such/company/";
  EXPECT_EQ(address.OpenFile(), StatusFileNotFound);
}

TEST_F(AddressLifecycle, FileThatMayOnlyBeReadOpensAndRefusesWrites) {
  {
    Address address;
    ASSERT_EQ(address.OpenFile(), StatusSuccess);
    ASSERT_EQ(address.Insert(), StatusSuccess);
  }
  test::ProtectFile(AddressFile(), /*allowRead=*/true);
  Address address;
  ASSERT_EQ(address.OpenFile(), StatusSuccess);
  ASSERT_EQ(address.StepFirst(), StatusSuccess);
  EXPECT_EQ(address.Update(), StatusAccessDenied);
  EXPECT_EQ(address.Delete(), StatusAccessDenied);
  address.AddressRecordNumber(0);
  EXPECT_EQ(address.Insert(), StatusAccessDenied);
  EXPECT_EQ(address.RecordCount(), 1);
}

TEST_F(AddressLifecycle, ReadOnlyFileDoesNotOpen) {
  test::WhereReadOnly(AddressFile(), [&] {
    Address address;
    EXPECT_EQ(address.OpenFile(), StatusPermission);
  });
}

TEST_F(AddressLifecycle, SecondOpenFileStartsAnew) {
  Address address;
  ASSERT_EQ(address.OpenFile(), StatusSuccess);
  AddRecord(address, {.customer = 5, .vendor = 0});
  ASSERT_EQ(address.GetFirstForCustomer(5), StatusSuccess);
  EXPECT_EQ(address.OpenFile(), StatusSuccess);
  EXPECT_EQ(address.CustomerRecordNumber(), 0);
  EXPECT_EQ(address.GetNextByCustomer(), StatusInvalidPositioning);
  EXPECT_EQ(address.Update(), StatusInvalidPositioning);
  EXPECT_EQ(address.CloseFile(), StatusSuccess);
  EXPECT_FALSE(IsHeldOpen(AddressFile()));
}

TEST_F(AddressLifecycle, SecondOpenFileGoesToTheCompanyOfThatMoment) {
  Address address;
  ASSERT_EQ(address.OpenFile(), StatusSuccess);
  ASSERT_EQ(address.Insert(), StatusSuccess);
  const Company other;
  EXPECT_EQ(address.RecordCount(), 1) << "the path is read by OpenFile only";
  EXPECT_EQ(address.OpenFile(), StatusSuccess);
  EXPECT_EQ(address.RecordCount(), 0);
  EXPECT_FALSE(IsHeldOpen(AddressFile()));
}

// The failed open has closed the file and dropped it, but the mark of an open file stays.
TEST_F(AddressLifecycle, SecondOpenFileThatFailsLeavesTheObjectClosed) {
  Address address;
  ASSERT_EQ(address.OpenFile(), StatusSuccess);
  Shared().gCompanyPath = "/no/such/company/";
  EXPECT_EQ(address.OpenFile(), StatusFileNotFound);
  EXPECT_EQ(address.StepFirst(), StatusFileNotOpen);
  EXPECT_FALSE(IsHeldOpen(AddressFile()));
  EXPECT_EQ(address.CloseFile(), StatusFileNotOpen);
}

TEST_F(AddressLifecycle, DestructionClosesTheFile) {
  {
    Address address;
    ASSERT_EQ(address.OpenFile(), StatusSuccess);
    ASSERT_TRUE(IsHeldOpen(AddressFile()));
  }
  EXPECT_FALSE(IsHeldOpen(AddressFile()));
}

// --- Moving ---

static_assert(std::is_nothrow_move_constructible_v<Address>);
static_assert(std::is_nothrow_move_assignable_v<Address>);
static_assert(!std::is_copy_constructible_v<Address> && !std::is_copy_assignable_v<Address>);

TEST_F(AddressLifecycle, MovedObjectGoesOnWhereItWas) {
  std::optional<Address> address(std::in_place);
  ASSERT_EQ(address->OpenFile(), StatusSuccess);
  AddRecord(*address, {.customer = 5, .vendor = 0});
  AddRecord(*address, {.customer = 6, .vendor = 0});
  ASSERT_EQ(address->GetFirstForCustomer(5), StatusSuccess);
  Address moved(std::move(*address));
  address.reset();
  EXPECT_EQ(moved.CustomerRecordNumber(), 5);
  EXPECT_EQ(moved.GetNextByCustomer(), StatusSuccess);
  EXPECT_EQ(moved.CustomerRecordNumber(), 6);
  EXPECT_EQ(moved.CloseFile(), StatusSuccess);
}

TEST_F(AddressLifecycle, MoveAssignmentClosesWhatTheTargetHeld) {
  Address target;
  ASSERT_EQ(target.OpenFile(), StatusSuccess);
  const Company other;
  Address source;
  ASSERT_EQ(source.OpenFile(), StatusSuccess);
  ASSERT_EQ(source.Insert(), StatusSuccess);
  target = std::move(source);
  EXPECT_FALSE(IsHeldOpen(AddressFile()));
  EXPECT_EQ(target.RecordCount(), 1);
}

// --- Records ---

TEST_F(AddressRecords, AllPropertiesComeBackFromTheFile) {
  address_.AddressLine1("12 Mill Lane");
  address_.AddressLine2("Back door");
  address_.AddressRecordNumber(40);
  address_.AddressTypeDesc("Ship to 2");
  address_.AddressTypeNumber(-2);
  address_.City("Ghent");
  address_.Country("Belgium");
  address_.CustomerRecordNumber(2147483647);
  address_.GUID("00112233-4455-6677-8899-AABBCCDDEEFF");
  address_.LastUpdateCounter(77);
  address_.Name("A. Baker");
  address_.State("East Flanders");
  address_.TaxCode("VAT21");
  address_.VendorRecordNumber(-2147483647 - 1);
  address_.Zipcode("B-9000");
  ASSERT_EQ(address_.Insert(), StatusSuccess);

  Address reader;
  ASSERT_EQ(reader.OpenFile(), StatusSuccess);
  ASSERT_EQ(reader.GetEqual(40), StatusSuccess);
  EXPECT_EQ(reader.AddressLine1(), "12 Mill Lane");
  EXPECT_EQ(reader.AddressLine2(), "Back door");
  EXPECT_EQ(reader.AddressRecordNumber(), 40);
  EXPECT_EQ(reader.AddressTypeDesc(), "Ship to 2");
  EXPECT_EQ(reader.AddressTypeNumber(), -2);
  EXPECT_EQ(reader.City(), "Ghent");
  EXPECT_EQ(reader.Country(), "Belgium");
  EXPECT_EQ(reader.CustomerRecordNumber(), 2147483647);
  EXPECT_EQ(reader.GUID(), "00112233-4455-6677-8899-AABBCCDDEEFF");
  EXPECT_EQ(reader.LastUpdateCounter(), 77);
  EXPECT_EQ(reader.Name(), "A. Baker");
  EXPECT_EQ(reader.State(), "East Flanders");
  EXPECT_EQ(reader.TaxCode(), "VAT21");
  EXPECT_EQ(reader.VendorRecordNumber(), -2147483647 - 1);
  EXPECT_EQ(reader.Zipcode(), "B-9000");
}

TEST_F(AddressRecords, InsertNumbersARecordThatHasNoNumber) {
  ASSERT_EQ(address_.Insert(), StatusSuccess);
  EXPECT_EQ(address_.AddressRecordNumber(), 1);
  address_.AddressRecordNumber(0);
  ASSERT_EQ(address_.Insert(), StatusSuccess);
  EXPECT_EQ(address_.AddressRecordNumber(), 2);
}

TEST_F(AddressRecords, InsertKeepsAGivenNumberAndGoesOnAboveTheHighest) {
  address_.AddressRecordNumber(40);
  ASSERT_EQ(address_.Insert(), StatusSuccess);
  EXPECT_EQ(address_.AddressRecordNumber(), 40);
  address_.AddressRecordNumber(0);
  ASSERT_EQ(address_.Insert(), StatusSuccess);
  EXPECT_EQ(address_.AddressRecordNumber(), 41);
}

TEST_F(AddressRecords, InsertOfANumberThatIsTakenAnswers5) {
  address_.AddressRecordNumber(40);
  ASSERT_EQ(address_.Insert(), StatusSuccess);
  EXPECT_EQ(address_.Insert(), StatusDuplicateKey);
  EXPECT_EQ(address_.RecordCount(), 1);
}

TEST_F(AddressRecords, AssignmentReachesTheFileByUpdateOnly) {
  address_.City("Ghent");
  ASSERT_EQ(address_.Insert(), StatusSuccess);
  address_.City("Bruges");
  Address reader;
  ASSERT_EQ(reader.OpenFile(), StatusSuccess);
  ASSERT_EQ(reader.GetEqual(1), StatusSuccess);
  EXPECT_EQ(reader.City(), "Ghent");
  ASSERT_EQ(address_.Update(), StatusSuccess);
  ASSERT_EQ(reader.GetEqual(1), StatusSuccess);
  EXPECT_EQ(reader.City(), "Bruges");
}

TEST_F(AddressRecords, UpdateAndDeleteWithoutACurrentRecordAnswer8) {
  EXPECT_EQ(address_.Update(), StatusInvalidPositioning);
  EXPECT_EQ(address_.Delete(), StatusInvalidPositioning);
}

TEST_F(AddressRecords, DeleteTakesTheCurrentRecordAway) {
  ASSERT_EQ(address_.Insert(), StatusSuccess);
  EXPECT_EQ(address_.Delete(), StatusSuccess);
  EXPECT_EQ(address_.RecordCount(), 0);
  EXPECT_EQ(address_.Delete(), StatusInvalidPositioning);
  EXPECT_EQ(address_.GetEqual(1), StatusKeyNotFound);
}

TEST_F(AddressRecords, RecordCountFollowsInsertsAndDeletes) {
  EXPECT_EQ(address_.RecordCount(), 0);
  AddRecord(address_, {.customer = 5, .vendor = 0});
  AddRecord(address_, {.customer = 5, .vendor = 0, .type = 1});
  EXPECT_EQ(address_.RecordCount(), 2);
  ASSERT_EQ(address_.Delete(), StatusSuccess);
  EXPECT_EQ(address_.RecordCount(), 1);
}

TEST_F(AddressRecords, ReadsOnAnEmptyFileFindNothing) {
  EXPECT_EQ(address_.GetEqual(1), StatusKeyNotFound);
  EXPECT_EQ(address_.GetFirstForCustomer(0), StatusEndOfFile);
  EXPECT_EQ(address_.GetFirstForVendor(0), StatusEndOfFile);
  EXPECT_EQ(address_.StepFirst(), StatusEndOfFile);
  EXPECT_EQ(address_.StepLast(), StatusEndOfFile);
}

// --- Finders ---

TEST_F(AddressFinders, GetEqualReadsTheRecordOfThatNumber) {
  ASSERT_EQ(address_.GetEqual(3), StatusSuccess);
  EXPECT_EQ(Number(), 3);
  EXPECT_EQ(address_.AddressTypeNumber(), 1);
}

TEST_F(AddressFinders, FailedReadKeepsTheRecordAndThePlace) {
  ASSERT_EQ(address_.GetFirstForCustomer(5), StatusSuccess);
  EXPECT_EQ(address_.GetEqual(99), StatusKeyNotFound);
  EXPECT_EQ(Number(), 1);
  EXPECT_EQ(address_.GetNextByCustomer(), StatusSuccess);
  EXPECT_EQ(Number(), 3);
}

TEST_F(AddressFinders, GetFirstForCustomerReadsTheFirstOfTheCustomer) {
  ASSERT_EQ(address_.GetFirstForCustomer(5), StatusSuccess);
  EXPECT_EQ(Number(), 1);
}

TEST_F(AddressFinders, GetFirstForVendorReadsTheFirstOfTheVendor) {
  ASSERT_EQ(address_.GetFirstForVendor(7), StatusSuccess);
  EXPECT_EQ(Number(), 2);
}

TEST_F(AddressFinders, GetFirstForOneWithoutAddressesReadsTheNextOneOnFile) {
  ASSERT_EQ(address_.GetFirstForCustomer(2), StatusSuccess);
  EXPECT_EQ(address_.CustomerRecordNumber(), 5);
  ASSERT_EQ(address_.GetFirstForVendor(8), StatusSuccess);
  EXPECT_EQ(address_.VendorRecordNumber(), 9);
}

TEST_F(AddressFinders, GetFirstBeyondAllAnswers9) {
  EXPECT_EQ(address_.GetFirstForCustomer(7), StatusEndOfFile);
  EXPECT_EQ(address_.GetFirstForVendor(10), StatusEndOfFile);
}

// The search begins at type 0 of the owner.
TEST_F(AddressFinders, GetFirstPassesOverTypesBelow0) {
  AddRecord(address_, {.customer = 6, .vendor = 9, .type = -1});
  ASSERT_EQ(address_.GetFirstForCustomer(6), StatusSuccess);
  EXPECT_EQ(address_.AddressTypeNumber(), 0);
  ASSERT_EQ(address_.GetFirstForVendor(9), StatusSuccess);
  EXPECT_EQ(address_.AddressTypeNumber(), 0);
}

TEST_F(AddressFinders, GetNextByCustomerRunsOnIntoTheNextCustomerToTheEnd) {
  ASSERT_EQ(address_.GetFirstForCustomer(5), StatusSuccess);
  ASSERT_EQ(address_.GetNextByCustomer(), StatusSuccess);
  EXPECT_EQ(Number(), 3);
  ASSERT_EQ(address_.GetNextByCustomer(), StatusSuccess);
  EXPECT_EQ(address_.CustomerRecordNumber(), 6);
  EXPECT_EQ(address_.GetNextByCustomer(), StatusEndOfFile);
  EXPECT_EQ(Number(), 4) << "the record in hand stays";
}

TEST_F(AddressFinders, GetNextByVendorRunsOnIntoTheNextVendorToTheEnd) {
  ASSERT_EQ(address_.GetFirstForVendor(7), StatusSuccess);
  ASSERT_EQ(address_.GetNextByVendor(), StatusSuccess);
  EXPECT_EQ(Number(), 3);
  ASSERT_EQ(address_.GetNextByVendor(), StatusSuccess);
  EXPECT_EQ(address_.VendorRecordNumber(), 9);
  EXPECT_EQ(address_.GetNextByVendor(), StatusEndOfFile);
}

TEST_F(AddressFinders, GetNextWithoutAPlaceAnswers8) {
  EXPECT_EQ(address_.GetNextByCustomer(), StatusInvalidPositioning);
  EXPECT_EQ(address_.GetNextByVendor(), StatusInvalidPositioning);
}

TEST_F(AddressFinders, GetNextOnAnotherPathAnswers7) {
  ASSERT_EQ(address_.GetFirstForCustomer(5), StatusSuccess);
  EXPECT_EQ(address_.GetNextByVendor(), StatusDifferentKeyNumber);
  ASSERT_EQ(address_.GetFirstForVendor(7), StatusSuccess);
  EXPECT_EQ(address_.GetNextByCustomer(), StatusDifferentKeyNumber);
  ASSERT_EQ(address_.GetEqual(1), StatusSuccess);
  EXPECT_EQ(address_.GetNextByCustomer(), StatusDifferentKeyNumber);
}

TEST_F(AddressFinders, GetNextAfterADeleteGoesOnFromThere) {
  ASSERT_EQ(address_.GetFirstForCustomer(5), StatusSuccess);
  ASSERT_EQ(address_.Delete(), StatusSuccess);
  ASSERT_EQ(address_.GetNextByCustomer(), StatusSuccess);
  EXPECT_EQ(Number(), 3);
}

TEST_F(AddressFinders, TwoObjectsHaveTheirOwnPlacesAndRecords) {
  Address other;
  ASSERT_EQ(other.OpenFile(), StatusSuccess);
  ASSERT_EQ(address_.GetFirstForCustomer(5), StatusSuccess);
  ASSERT_EQ(other.GetFirstForVendor(9), StatusSuccess);
  EXPECT_EQ(Number(), 1);
  EXPECT_EQ(address_.GetNextByCustomer(), StatusSuccess);
  EXPECT_EQ(other.AddressRecordNumber(), 4);
}

// --- Steps ---

TEST_F(AddressSteps, GoThroughTheFileInTheOrderOfInsertion) {
  ASSERT_EQ(address_.StepFirst(), StatusSuccess);
  for (int number = 1; number <= 3; ++number) {
    EXPECT_EQ(Number(), number);
    ASSERT_EQ(address_.StepNext(), StatusSuccess);
  }
  EXPECT_EQ(Number(), 4);
  EXPECT_EQ(address_.StepNext(), StatusEndOfFile);
}

TEST_F(AddressSteps, GoBackToo) {
  ASSERT_EQ(address_.StepLast(), StatusSuccess);
  EXPECT_EQ(Number(), 4);
  ASSERT_EQ(address_.StepPrevious(), StatusSuccess);
  EXPECT_EQ(Number(), 3);
  ASSERT_EQ(address_.StepFirst(), StatusSuccess);
  EXPECT_EQ(address_.StepPrevious(), StatusEndOfFile);
}

TEST_F(AddressSteps, GoOnFromAKeyedRead) {
  ASSERT_EQ(address_.GetEqual(2), StatusSuccess);
  ASSERT_EQ(address_.StepNext(), StatusSuccess);
  EXPECT_EQ(Number(), 3);
}

TEST_F(AddressSteps, LeaveNoPlaceOnAKeyPath) {
  ASSERT_EQ(address_.GetFirstForCustomer(5), StatusSuccess);
  ASSERT_EQ(address_.StepNext(), StatusSuccess);
  EXPECT_EQ(address_.GetNextByCustomer(), StatusInvalidPositioning);
}

// --- The key path of a write ---
//
// Insert and Update go on the key path of the last finder. A next record is read on that path
// alone: on any other the engine answers 7.

TEST_F(AddressKeyPath, OfUpdateAfterGetFirstForCustomerIsByCustomer) {
  ASSERT_EQ(address_.GetFirstForCustomer(5), StatusSuccess);
  ASSERT_EQ(address_.Update(), StatusSuccess);
  EXPECT_EQ(address_.GetNextByVendor(), StatusDifferentKeyNumber);
  EXPECT_EQ(address_.GetNextByCustomer(), StatusSuccess);
  EXPECT_EQ(Number(), 3);
}

TEST_F(AddressKeyPath, OfUpdateAfterGetFirstForVendorIsByVendor) {
  ASSERT_EQ(address_.GetFirstForVendor(7), StatusSuccess);
  ASSERT_EQ(address_.Update(), StatusSuccess);
  EXPECT_EQ(address_.GetNextByCustomer(), StatusDifferentKeyNumber);
  EXPECT_EQ(address_.GetNextByVendor(), StatusSuccess);
  EXPECT_EQ(Number(), 3);
}

TEST_F(AddressKeyPath, OfUpdateAfterGetEqualIsByNumber) {
  ASSERT_EQ(address_.GetFirstForCustomer(5), StatusSuccess);
  ASSERT_EQ(address_.GetEqual(1), StatusSuccess);
  ASSERT_EQ(address_.Update(), StatusSuccess);
  EXPECT_EQ(address_.GetNextByCustomer(), StatusDifferentKeyNumber);
  EXPECT_EQ(address_.GetNextByVendor(), StatusDifferentKeyNumber);
}

TEST_F(AddressKeyPath, OfUpdateAfterAStepIsThatOfTheLastFinder) {
  ASSERT_EQ(address_.GetFirstForCustomer(5), StatusSuccess);
  ASSERT_EQ(address_.StepFirst(), StatusSuccess);
  ASSERT_EQ(address_.Update(), StatusSuccess);
  EXPECT_EQ(address_.GetNextByVendor(), StatusDifferentKeyNumber);
  EXPECT_EQ(address_.GetNextByCustomer(), StatusSuccess);
}

TEST_F(AddressKeyPath, OfUpdateAfterStepsAloneIsByNumber) {
  ASSERT_EQ(address_.StepFirst(), StatusSuccess);
  ASSERT_EQ(address_.StepNext(), StatusSuccess);
  ASSERT_EQ(address_.Update(), StatusSuccess);
  EXPECT_EQ(address_.GetNextByCustomer(), StatusDifferentKeyNumber);
}

TEST_F(AddressKeyPath, IsThatOfAFinderThatFoundNothing) {
  ASSERT_EQ(address_.GetEqual(1), StatusSuccess);
  ASSERT_EQ(address_.GetFirstForVendor(99), StatusEndOfFile);
  ASSERT_EQ(address_.Update(), StatusSuccess);
  EXPECT_EQ(address_.GetNextByCustomer(), StatusDifferentKeyNumber);
}

TEST_F(AddressKeyPath, IsThatOfANextThatTheEngineRefused) {
  ASSERT_EQ(address_.GetEqual(3), StatusSuccess);
  ASSERT_EQ(address_.GetNextByCustomer(), StatusDifferentKeyNumber);
  ASSERT_EQ(address_.Update(), StatusSuccess);
  EXPECT_EQ(address_.GetNextByCustomer(), StatusSuccess);
  EXPECT_EQ(address_.CustomerRecordNumber(), 6);

  ASSERT_EQ(address_.GetEqual(3), StatusSuccess);
  ASSERT_EQ(address_.GetNextByVendor(), StatusDifferentKeyNumber);
  ASSERT_EQ(address_.Update(), StatusSuccess);
  EXPECT_EQ(address_.GetNextByVendor(), StatusSuccess);
  EXPECT_EQ(address_.VendorRecordNumber(), 9);
}

TEST_F(AddressKeyPath, OfInsertOnANewObjectIsByNumber) {
  AddRecord(address_, {.customer = 1, .vendor = 1});
  EXPECT_EQ(address_.GetNextByCustomer(), StatusDifferentKeyNumber);
  EXPECT_EQ(address_.GetNextByVendor(), StatusDifferentKeyNumber);
}

TEST_F(AddressKeyPath, OfInsertIsThatOfTheLastFinder) {
  ASSERT_EQ(address_.GetFirstForVendor(7), StatusSuccess);
  AddRecord(address_, {.customer = 1, .vendor = 8});
  EXPECT_EQ(address_.GetNextByVendor(), StatusSuccess);
  EXPECT_EQ(address_.VendorRecordNumber(), 9);
}

TEST_F(AddressKeyPath, LastsOverCloseFileAndOpenFile) {
  ASSERT_EQ(address_.GetFirstForCustomer(5), StatusSuccess);
  ASSERT_EQ(address_.CloseFile(), StatusSuccess);
  ASSERT_EQ(address_.OpenFile(), StatusSuccess);
  ASSERT_EQ(address_.StepFirst(), StatusSuccess);
  ASSERT_EQ(address_.Update(), StatusSuccess);
  EXPECT_EQ(address_.GetNextByCustomer(), StatusSuccess);
}

TEST_F(AddressKeyPath, IsThatOfAFinderOnAClosedObject) {
  Address address;
  ASSERT_EQ(address.GetFirstForVendor(7), StatusFileNotOpen);
  ASSERT_EQ(address.OpenFile(), StatusSuccess);
  ASSERT_EQ(address.StepLast(), StatusSuccess);
  ASSERT_EQ(address.Update(), StatusSuccess);
  EXPECT_EQ(address.GetNextByVendor(), StatusEndOfFile);
}

// --- Two writers ---

TEST_F(AddressConflict, UpdateOfARecordThatChangedAnswers80UntilItIsReadAgain) {
  Address other;
  ASSERT_EQ(other.OpenFile(), StatusSuccess);
  ASSERT_EQ(address_.GetEqual(1), StatusSuccess);
  ASSERT_EQ(other.GetEqual(1), StatusSuccess);
  other.City("Ghent");
  ASSERT_EQ(other.Update(), StatusSuccess);

  address_.City("Bruges");
  EXPECT_EQ(address_.Update(), StatusRecordConflict);
  EXPECT_EQ(address_.City(), "Bruges");
  ASSERT_EQ(address_.GetEqual(1), StatusSuccess);
  EXPECT_EQ(address_.City(), "Ghent");
  address_.City("Bruges");
  EXPECT_EQ(address_.Update(), StatusSuccess);
}

TEST_F(AddressConflict, DeleteOfARecordThatChangedAnswers80) {
  Address other;
  ASSERT_EQ(other.OpenFile(), StatusSuccess);
  ASSERT_EQ(address_.GetEqual(1), StatusSuccess);
  ASSERT_EQ(other.GetEqual(1), StatusSuccess);
  other.City("Ghent");
  ASSERT_EQ(other.Update(), StatusSuccess);
  EXPECT_EQ(address_.Delete(), StatusRecordConflict);
  EXPECT_EQ(address_.RecordCount(), 4);
}

TEST_F(AddressConflict, UpdateOfARecordThatWasDeletedAnswers80) {
  Address other;
  ASSERT_EQ(other.OpenFile(), StatusSuccess);
  ASSERT_EQ(address_.GetEqual(1), StatusSuccess);
  ASSERT_EQ(other.GetEqual(1), StatusSuccess);
  ASSERT_EQ(other.Delete(), StatusSuccess);
  EXPECT_EQ(address_.Update(), StatusRecordConflict);
  EXPECT_EQ(address_.Delete(), StatusRecordConflict);
}

TEST_F(AddressConflict, OwnUpdatesFollowEachOther) {
  ASSERT_EQ(address_.GetEqual(1), StatusSuccess);
  for (const char* city : {"Ghent", "Bruges", "Ypres"}) {
    address_.City(city);
    EXPECT_EQ(address_.Update(), StatusSuccess);
  }
}

// --- Text ---

/// A text property with the width of its field.
struct TextProperty {
  const char* name;
  std::string (Address::*get)();
  void (Address::*let)(std::string_view);
  std::size_t width;
};

const TextProperty TextProperties[] = {
    {"AddressLine1", &Address::AddressLine1, &Address::AddressLine1,
     AddressRecord::AddressLine1.width},
    {"AddressLine2", &Address::AddressLine2, &Address::AddressLine2,
     AddressRecord::AddressLine2.width},
    {"AddressTypeDesc", &Address::AddressTypeDesc, &Address::AddressTypeDesc,
     AddressRecord::AddressTypeDesc.width},
    {"City", &Address::City, &Address::City, AddressRecord::City.width},
    {"Country", &Address::Country, &Address::Country, AddressRecord::Country.width},
    {"Name", &Address::Name, &Address::Name, AddressRecord::Name.width},
    {"State", &Address::State, &Address::State, AddressRecord::State.width},
    {"TaxCode", &Address::TaxCode, &Address::TaxCode, AddressRecord::TaxCode.width},
    {"Zipcode", &Address::Zipcode, &Address::Zipcode, AddressRecord::Zipcode.width},
};

std::string Repeated(std::string_view text, std::size_t times) {
  std::string result;
  for (std::size_t i = 0; i < times; ++i) result += text;
  return result;
}

TEST_F(AddressText, FillsTheWholeWidthAndIsCutThere) {
  for (const TextProperty& property : TextProperties) {
    const std::string full(property.width, 'x');
    (address_.*property.let)(full);
    EXPECT_EQ((address_.*property.get)(), full) << property.name;
    (address_.*property.let)(full + "y");
    EXPECT_EQ((address_.*property.get)(), full) << property.name;
  }
}

TEST_F(AddressText, IsCutByCharactersAndNotByTheBytesOfItsAccents) {
  for (const TextProperty& property : TextProperties) {
    (address_.*property.let)(Repeated("\u00e9", property.width + 1));
    EXPECT_EQ((address_.*property.get)(), Repeated("\u00e9", property.width)) << property.name;
  }
}

TEST_F(AddressText, CutDoesNotRunIntoTheNextField) {
  for (const TextProperty& property : TextProperties) {
    (address_.*property.let)(std::string(200, 'x'));
    for (const TextProperty& other : TextProperties) {
      if (&other == &property) continue;
      EXPECT_EQ((address_.*other.get)(), "") << property.name << " wrote to " << other.name;
    }
    (address_.*property.let)("");
  }
}

TEST_F(AddressText, KeepsItsBlanksAndLeavesNothingOfALongerOne) {
  address_.City("Ghent on the Leie");
  address_.City("  B ");
  EXPECT_EQ(address_.City(), "  B ");
  address_.City("");
  EXPECT_EQ(address_.City(), "");
}

TEST_F(AddressText, EndsAtAZeroCharacter) {
  address_.City(std::string_view("Ghent\0Bruges", 12));
  EXPECT_EQ(address_.City(), "Ghent");
}

TEST_F(AddressText, KeepsAccentsAndTheSignsOfWindows1252) {
  const std::string name = "Zo\u00eb & Fran\u00e7ois \u2014 \u20ac5 \u201cStra\u00dfe\u201d";
  address_.Name(name);
  ASSERT_EQ(address_.Insert(), StatusSuccess);
  address_.Name("");
  ASSERT_EQ(address_.GetEqual(1), StatusSuccess);
  EXPECT_EQ(address_.Name(), name);
}

TEST_F(AddressText, ShowsAQuestionMarkForWhatWindows1252DoesNotHave) {
  address_.City("\u6771\u4eac");
  EXPECT_EQ(address_.City(), "??");
  address_.City("\U0001F3E0 Ghent");
  EXPECT_EQ(address_.City(), "? Ghent");
}

TEST_F(AddressText, ThatIsNoUtf8Raises13AndTheRecordStaysAsItWas) {
  for (const TextProperty& property : TextProperties) {
    (address_.*property.let)("before");
    for (const char* spoilt : {"\xff\xfe", "Zo\xeb", "\xc3", "\xc0\x80"}) {
      EXPECT_EQ(RaisedNumber([&] { (address_.*property.let)(spoilt); }), 13) << property.name;
      EXPECT_EQ((address_.*property.get)(), "before") << property.name;
    }
  }
}

// --- GUIDs ---

TEST_F(AddressGuid, OfANewRecordIsEmpty) { EXPECT_EQ(address_.GUID(), ""); }

TEST_F(AddressGuid, ReadsInUpperCaseWithoutBraces) {
  for (const char* form :
       {"00112233-4455-6677-8899-AABBCCDDEEFF", "00112233-4455-6677-8899-aabbccddeeff",
        "{00112233-4455-6677-8899-aabbccddeeff}", "{00112233-4455-6677-8899-AaBbCcDdEeFf}"}) {
    address_.GUID("");
    address_.GUID(form);
    EXPECT_EQ(address_.GUID(), "00112233-4455-6677-8899-AABBCCDDEEFF") << form;
  }
}

TEST_F(AddressGuid, OfZeroBytesReadsEmpty) {
  address_.GUID("00112233-4455-6677-8899-AABBCCDDEEFF");
  address_.GUID("00000000-0000-0000-0000-000000000000");
  EXPECT_EQ(address_.GUID(), "");
}

TEST_F(AddressGuid, CanBeTakenAway) {
  address_.GUID("00112233-4455-6677-8899-AABBCCDDEEFF");
  address_.GUID("");
  EXPECT_EQ(address_.GUID(), "");
}

TEST_F(AddressGuid, KeepsAShortTextThatIsNone) {
  for (const char* text : {"customer-17", "x", "ABCDEFGHIJKLMNOP", "Zo\u00eb"}) {
    address_.GUID(text);
    EXPECT_EQ(address_.GUID(), text);
  }
}

TEST_F(AddressGuid, ComesBackFromTheFile) {
  address_.GUID("{f0f1f2f3-0405-0607-0809-0a0b0c0d0e0f}");
  ASSERT_EQ(address_.Insert(), StatusSuccess);
  address_.GUID("");
  ASSERT_EQ(address_.GetEqual(1), StatusSuccess);
  EXPECT_EQ(address_.GUID(), "F0F1F2F3-0405-0607-0809-0A0B0C0D0E0F");
}

TEST_F(AddressGuid, ThatTheEngineMakesIsTakenAsItIs) {
  const std::string guid = TovrinFile().btNewGUID();
  address_.GUID(guid);
  EXPECT_EQ(address_.GUID(), guid);
}

TEST_F(AddressGuid, ThatIsNoUtf8Raises13AndTheRecordStaysAsItWas) {
  address_.GUID("customer-17");
  EXPECT_EQ(RaisedNumber([&] { address_.GUID("\xff\xfe"); }), 13);
  EXPECT_EQ(address_.GUID(), "customer-17");
}

// --- Numbers at their limits ---

TEST_F(AddressRecords, NumbersKeepTheirSignAndWidth) {
  for (const std::int32_t number : {0, 1, -1, 2147483647, -2147483647 - 1}) {
    address_.LastUpdateCounter(number);
    EXPECT_EQ(address_.LastUpdateCounter(), number);
  }
}

}  // namespace
}  // namespace larkmoor
