// How the class Vendor saves its addresses: a write of the vendor saves them all, once after each
// OpenFile. They stay in memory over an OpenFile, and are then shown and not saved until another
// vendor's were read. What they show is told in vendor_addresses_test.cpp.
#include <cstdint>
#include <string>

#include <gtest/gtest.h>

#include <larkmoor/masters/vendor.h>
#include <larkmoor/status.h>

#include "engine/guid.h"
#include "engine/records/address.h"
#include "engine/store/driver.h"
#include "support/addresses.h"
#include "support/child_process.h"
#include "support/failing_disk.h"
#include "support/read_only_file.h"
#include "support/record_files.h"
#include "support/taken_away.h"
#include "support/vendor_addresses.h"

namespace larkmoor {
namespace {

using test::AddressRows;
using test::IsHeldOpen;
using test::TakenAway;
using test::VendorAddressTest;

using VendorAddressSave = VendorAddressTest;
using VendorAddressSaveOnce = VendorAddressTest;
using VendorReopened = VendorAddressTest;
using VendorAddressFile = VendorAddressTest;
using VendorWithoutIndex = VendorAddressTest;

// --- Saving ---

TEST_F(VendorAddressSave, FillsTheWholeRecordOfANewAddress) {
  vendor_.City("Ghent");
  vendor_.RemitToCity(3, "Bruges");
  ASSERT_EQ(vendor_.Update(), StatusSuccess);
  EXPECT_EQ(addresses_.Text(AddressRecord::AddressTypeDesc, Adams, MailTo), "Mail To");
  EXPECT_EQ(addresses_.Text(AddressRecord::AddressTypeDesc, Adams, 3), "Remit to 3");
  EXPECT_EQ(addresses_.Long(AddressRecord::CustomerRecordNumber, Adams, 3), 0);
  EXPECT_EQ(addresses_.Long(AddressRecord::AddressRecordNumber, Adams, MailTo), 1);
  EXPECT_EQ(addresses_.Long(AddressRecord::AddressRecordNumber, Adams, 3), 2);
}

TEST_F(VendorAddressSave, CountsRemitToAddressesUpTo20) {
  for (std::int16_t number = 1; number <= 20; ++number) vendor_.RemitToCity(number, "Ghent");
  ASSERT_EQ(vendor_.Update(), StatusSuccess);
  EXPECT_EQ(addresses_.Numbers(Adams).size(), 20U);
  EXPECT_EQ(addresses_.Text(AddressRecord::AddressTypeDesc, Adams, 20), "Remit to 20");
}

TEST_F(VendorAddressSave, RewritesAnAddressInItsPlace) {
  addresses_.AddIn("Hamme", Baker, MailTo);
  addresses_.Add(Adams, 2, [](Tovrin2Record& row) {
    row.SetText(AddressRecord::City, "Ghent");
    row.SetText(AddressRecord::AddressTypeDesc, "Warehouse");
    row.SetText(AddressRecord::TaxCode, "FREE");
    row.SetLong(AddressRecord::CustomerRecordNumber, 77);
    row.SetText(AddressRecord::GUID, SomeGUID);
  });
  vendor_.RemitToCity(2, "Bruges");
  ASSERT_EQ(vendor_.Update(), StatusSuccess);
  EXPECT_EQ(addresses_.Numbers(Adams), Numbers{2});
  EXPECT_EQ(addresses_.City(Adams, 2), "Bruges");
  EXPECT_EQ(addresses_.Long(AddressRecord::AddressRecordNumber, Adams, 2), 2);
  EXPECT_EQ(addresses_.Text(AddressRecord::GUID, Adams, 2), SomeGUID);
  EXPECT_EQ(addresses_.Text(AddressRecord::AddressTypeDesc, Adams, 2), "Remit to 2");
  EXPECT_EQ(addresses_.Text(AddressRecord::TaxCode, Adams, 2), "FREE");
  EXPECT_EQ(addresses_.Long(AddressRecord::CustomerRecordNumber, Adams, 2), 0);
  EXPECT_EQ(addresses_.City(Baker, MailTo), "Hamme");
}

TEST_F(VendorAddressSave, GivesAnAddressWithoutGUIDANewOne) {
  addresses_.AddIn("Ghent", Adams, MailTo);
  vendor_.RemitToCity(1, "Bruges");
  ASSERT_EQ(vendor_.Update(), StatusSuccess);
  const std::string first = addresses_.Text(AddressRecord::GUID, Adams, MailTo);
  const std::string second = addresses_.Text(AddressRecord::GUID, Adams, 1);
  EXPECT_TRUE(ParseGuid(first).has_value()) << first;
  EXPECT_TRUE(ParseGuid(second).has_value()) << second;
  EXPECT_NE(first, second);
}

TEST_F(VendorAddressSave, KeepsAnAddressWithNameFirstLineOrCityOnly) {
  vendor_.RemitToName(1, "Warehouse");
  vendor_.RemitToAddress1(2, "Quay 4");
  vendor_.RemitToCity(3, "Ghent");
  vendor_.RemitToAddress2(4, "Third floor");
  vendor_.RemitToState(5, "East Flanders");
  vendor_.RemitToZipcode(6, "9000");
  vendor_.RemitToCountry(7, "Belgium");
  vendor_.RemitToGUID(8, SomeGUID);
  ASSERT_EQ(vendor_.Update(), StatusSuccess);
  EXPECT_EQ(addresses_.Numbers(Adams), (Numbers{1, 2, 3}));
}

TEST_F(VendorAddressSave, DeletesAnAddressThatLostNameFirstLineAndCity) {
  addresses_.AddIn("Ghent", Adams, MailTo);
  addresses_.Add(Adams, 3, [](Tovrin2Record& row) {
    row.SetText(AddressRecord::Name, "Warehouse");
    row.SetText(AddressRecord::AddressLine1, "Quay 4");
    row.SetText(AddressRecord::AddressLine2, "Third floor");
    row.SetText(AddressRecord::City, "Bruges");
    row.SetText(AddressRecord::Zipcode, "8000");
  });
  addresses_.AddIn("Hamme", Baker, 3);
  vendor_.RemitToName(3, "");
  vendor_.RemitToAddress1(3, "");
  vendor_.RemitToCity(3, "");
  ASSERT_EQ(vendor_.Update(), StatusSuccess);
  EXPECT_EQ(addresses_.Numbers(Adams), Numbers{MailTo});
  EXPECT_EQ(addresses_.Numbers(Baker), Numbers{3});
}

TEST_F(VendorAddressSave, LeavesTheAddressesOfCustomersAlone) {
  const AddressRows customers = AddressRows::OfCustomers(company_.Folder());
  customers.AddIn("Hamme", Adams, MailTo);
  customers.AddIn("", Adams, 3);
  vendor_.City("Ghent");
  ASSERT_EQ(vendor_.Update(), StatusSuccess);
  EXPECT_EQ(customers.Numbers(Adams), (Numbers{MailTo, 3}));
  EXPECT_EQ(customers.City(Adams, MailTo), "Hamme");
}

TEST_F(VendorAddressSave, NeedsAnAccessToAnyAddressBefore) {
  addresses_.AddIn("", Adams, 5);
  ASSERT_EQ(vendor_.Update(), StatusSuccess);
  EXPECT_EQ(addresses_.Numbers(Adams), Numbers{5}) << "an empty address would have been deleted";
  EXPECT_FALSE(IsHeldOpen(AddressFile()));
  EXPECT_EQ(vendor_.State(), "");
  ASSERT_EQ(vendor_.Update(), StatusSuccess);
  EXPECT_EQ(addresses_.Numbers(Adams), Numbers{});
}

TEST_F(VendorAddressSave, NeedsAWriteThatSucceeds) {
  vendor_.City("Ghent");
  EXPECT_EQ(vendor_.Insert(), StatusDuplicateKey);
  EXPECT_EQ(addresses_.Numbers(Adams), Numbers{});
  Vendor other = Reader("ADAMS");
  other.Contact("Rosa");
  ASSERT_EQ(other.Update(), StatusSuccess);
  EXPECT_EQ(vendor_.Update(), StatusRecordConflict);
  EXPECT_EQ(addresses_.Numbers(Adams), Numbers{});
}

// The addresses in hand go to whichever vendor is written.
TEST_F(VendorAddressSave, OfAnotherVendorWritesTheAddressesInHand) {
  addresses_.AddIn("Ghent", Adams, MailTo);
  addresses_.AddIn("Hamme", Baker, MailTo);
  addresses_.AddIn("Mechelen", Baker, 2);
  EXPECT_EQ(vendor_.City(), "Ghent");
  ASSERT_EQ(vendor_.GetEqual("BAKER"), StatusSuccess);
  ASSERT_EQ(vendor_.Update(), StatusSuccess);
  EXPECT_EQ(addresses_.Numbers(Baker), Numbers{MailTo});
  EXPECT_EQ(addresses_.City(Baker, MailTo), "Ghent");
  EXPECT_EQ(addresses_.City(Adams, MailTo), "Ghent");
}

TEST_F(VendorAddressSave, IsNotForgottenWhereTheFileWasMissing) {
  {
    const TakenAway away(AddressFile());
    vendor_.City("Ghent");
    EXPECT_EQ(vendor_.Update(), StatusSuccess);
  }
  EXPECT_EQ(addresses_.Numbers(Adams), Numbers{});
  EXPECT_EQ(vendor_.Update(), StatusSuccess);
  EXPECT_EQ(addresses_.City(Adams, MailTo), "Ghent");
}

TEST_F(VendorAddressSave, ThatTheFileRefusesIsPassedOver) {
  addresses_.AddIn("Ghent", Adams, MailTo);
  test::ProtectFile(AddressFile(), /*allowRead=*/true);
  EXPECT_EQ(vendor_.City(), "Ghent");
  vendor_.City("Bruges");
  vendor_.RemitToCity(1, "Ostend");
  EXPECT_EQ(vendor_.Update(), StatusSuccess);
  EXPECT_EQ(addresses_.Numbers(Adams), Numbers{MailTo});
  EXPECT_EQ(addresses_.City(Adams, MailTo), "Ghent");
}

TEST_F(VendorAddressSave, DoesNotHappenAtCloseFile) {
  vendor_.City("Ghent");
  ASSERT_EQ(vendor_.CloseFile(), StatusSuccess);
  EXPECT_EQ(addresses_.Numbers(Adams), Numbers{});
}

TEST_F(VendorAddressSave, DoesNotHappenAtDelete) {
  addresses_.AddIn("Ghent", Adams, MailTo);
  EXPECT_EQ(vendor_.City(), "Ghent");
  ASSERT_EQ(vendor_.Delete(), StatusSuccess);
  EXPECT_EQ(addresses_.Numbers(Adams), Numbers{MailTo}) << "the addresses outlive their vendor";
}

// --- One save for each OpenFile ---

// The save releases the file and goes on to take it for open.
TEST_F(VendorAddressSaveOnce, SecondSaveWritesNothing) {
  vendor_.City("Ghent");
  ASSERT_EQ(vendor_.Update(), StatusSuccess);
  vendor_.City("Bruges");
  EXPECT_EQ(vendor_.City(), "Bruges");
  EXPECT_EQ(vendor_.Update(), StatusSuccess);
  EXPECT_EQ(addresses_.City(Adams, MailTo), "Ghent");
}

TEST_F(VendorAddressSaveOnce, OtherVendorsHaveEmptyAddressesAfterIt) {
  addresses_.AddIn("Hamme", Baker, MailTo);
  vendor_.City("Ghent");
  ASSERT_EQ(vendor_.Update(), StatusSuccess);
  ASSERT_EQ(vendor_.GetEqual("BAKER"), StatusSuccess);
  EXPECT_EQ(vendor_.City(), "");
  ASSERT_EQ(vendor_.Update(), StatusSuccess);
  EXPECT_EQ(addresses_.City(Baker, MailTo), "Hamme") << "nor does a save delete them";
}

TEST_F(VendorAddressSaveOnce, OpenFileMakesRoomForTheNextVendorAndNotForThisOne) {
  vendor_.City("Ghent");
  ASSERT_EQ(vendor_.Update(), StatusSuccess);
  ASSERT_EQ(vendor_.OpenFile(), StatusSuccess);
  ASSERT_EQ(vendor_.GetEqual("ADAMS"), StatusSuccess);
  vendor_.City("Bruges");
  ASSERT_EQ(vendor_.Update(), StatusSuccess);
  EXPECT_EQ(addresses_.City(Adams, MailTo), "Ghent");
  ASSERT_EQ(vendor_.GetEqual("BAKER"), StatusSuccess);
  vendor_.City("Hamme");
  ASSERT_EQ(vendor_.Update(), StatusSuccess);
  EXPECT_EQ(addresses_.City(Baker, MailTo), "Hamme");
}

// --- The addresses of an earlier OpenFile ---

// OpenFile does not forget whose addresses are in memory. Those of the same vendor are shown from
// there, as they were left, and belong to no save.

TEST_F(VendorReopened, ShowsTheAddressesInMemoryOfTheSameVendor) {
  addresses_.AddIn("Ghent", Adams, MailTo);
  vendor_.RemitToCity(2, "Bruges");
  ASSERT_EQ(vendor_.CloseFile(), StatusSuccess);
  ASSERT_EQ(vendor_.OpenFile(), StatusSuccess);
  ASSERT_EQ(vendor_.GetEqual("ADAMS"), StatusSuccess);
  EXPECT_EQ(vendor_.City(), "Ghent");
  EXPECT_EQ(vendor_.RemitToCity(2), "Bruges") << "though it was never saved";
  EXPECT_FALSE(IsHeldOpen(AddressFile()));
}

TEST_F(VendorReopened, DoesNotSeeWhatOthersWroteInTheMeantime) {
  EXPECT_EQ(vendor_.City(), "");
  addresses_.AddIn("Ghent", Adams, MailTo);
  ASSERT_EQ(vendor_.CloseFile(), StatusSuccess);
  ASSERT_EQ(vendor_.OpenFile(), StatusSuccess);
  ASSERT_EQ(vendor_.GetEqual("ADAMS"), StatusSuccess);
  EXPECT_EQ(vendor_.City(), "");
  EXPECT_EQ(Reader("ADAMS").City(), "Ghent");
}

TEST_F(VendorReopened, SavesNoAddressOfTheSameVendor) {
  addresses_.AddIn("Ghent", Adams, MailTo);
  EXPECT_EQ(vendor_.City(), "Ghent");
  ASSERT_EQ(vendor_.CloseFile(), StatusSuccess);
  ASSERT_EQ(vendor_.OpenFile(), StatusSuccess);
  ASSERT_EQ(vendor_.GetEqual("ADAMS"), StatusSuccess);
  vendor_.City("Bruges");
  EXPECT_EQ(vendor_.City(), "Bruges");
  EXPECT_EQ(vendor_.Update(), StatusSuccess);
  EXPECT_EQ(addresses_.City(Adams, MailTo), "Ghent");
}

TEST_F(VendorReopened, WithoutCloseFileDoesTheSame) {
  addresses_.AddIn("Ghent", Adams, MailTo);
  vendor_.City("Ostend");
  ASSERT_EQ(vendor_.OpenFile(), StatusSuccess);
  ASSERT_EQ(vendor_.GetEqual("ADAMS"), StatusSuccess);
  EXPECT_EQ(vendor_.City(), "Ostend");
  EXPECT_EQ(vendor_.Update(), StatusSuccess);
  EXPECT_EQ(addresses_.City(Adams, MailTo), "Ghent");
}

TEST_F(VendorReopened, ReadsAndSavesAgainAfterAnotherVendor) {
  addresses_.AddIn("Ghent", Adams, MailTo);
  vendor_.City("Ostend");
  ASSERT_EQ(vendor_.OpenFile(), StatusSuccess);
  ASSERT_EQ(vendor_.GetEqual("BAKER"), StatusSuccess);
  EXPECT_EQ(vendor_.City(), "");
  ASSERT_EQ(vendor_.GetEqual("ADAMS"), StatusSuccess);
  EXPECT_EQ(vendor_.City(), "Ghent");
  vendor_.City("Bruges");
  ASSERT_EQ(vendor_.Update(), StatusSuccess);
  EXPECT_EQ(addresses_.City(Adams, MailTo), "Bruges");
}

// The blank record has another ID too.
TEST_F(VendorReopened, ReadsAgainAfterAnAccessWithTheBlankRecord) {
  addresses_.AddIn("Ghent", Adams, MailTo);
  vendor_.City("Ostend");
  ASSERT_EQ(vendor_.OpenFile(), StatusSuccess);
  EXPECT_EQ(vendor_.City(), "");
  ASSERT_EQ(vendor_.GetEqual("ADAMS"), StatusSuccess);
  EXPECT_EQ(vendor_.City(), "Ghent");
}

// --- The address file ---

TEST_F(VendorAddressFile, StaysOpenFromTheFirstAccessToCloseFile) {
  EXPECT_FALSE(IsHeldOpen(AddressFile()));
  EXPECT_EQ(vendor_.City(), "");
  EXPECT_TRUE(IsHeldOpen(AddressFile()));
  EXPECT_EQ(vendor_.CloseFile(), StatusSuccess);
  EXPECT_FALSE(IsHeldOpen(AddressFile()));
}

TEST_F(VendorAddressFile, IsReleasedByASave) {
  vendor_.City("Ghent");
  EXPECT_TRUE(IsHeldOpen(AddressFile()));
  ASSERT_EQ(vendor_.Update(), StatusSuccess);
  EXPECT_FALSE(IsHeldOpen(AddressFile()));
  EXPECT_EQ(vendor_.CloseFile(), StatusSuccess);
}

TEST_F(VendorAddressFile, StaysOpenFromASecondOpenFileToDestruction) {
  {
    Vendor vendor = Reader("ADAMS");
    EXPECT_EQ(vendor.City(), "");
    ASSERT_EQ(vendor.OpenFile(), StatusSuccess);
    EXPECT_TRUE(IsHeldOpen(AddressFile()));
    ASSERT_EQ(vendor.CloseFile(), StatusSuccess);
    EXPECT_TRUE(IsHeldOpen(AddressFile()));
  }
  EXPECT_FALSE(IsHeldOpen(AddressFile()));
}

TEST_F(VendorAddressFile, ThatIsMissingIsTriedAgainForTheNextVendor) {
  addresses_.AddIn("Ghent", Adams, MailTo);
  addresses_.AddIn("Hamme", Baker, MailTo);
  {
    const TakenAway away(AddressFile());
    EXPECT_EQ(vendor_.City(), "");
  }
  EXPECT_EQ(vendor_.City(), "");
  ASSERT_EQ(vendor_.GetEqual("BAKER"), StatusSuccess);
  EXPECT_EQ(vendor_.City(), "Hamme");
  ASSERT_EQ(vendor_.GetEqual("ADAMS"), StatusSuccess);
  EXPECT_EQ(vendor_.City(), "Ghent");
}

// The save finds empty addresses in hand, and the file there again.
TEST_F(VendorAddressFile, ThatWasMissingLosesTheAddressesAtTheSave) {
  addresses_.AddIn("Ghent", Adams, MailTo);
  {
    const TakenAway away(AddressFile());
    EXPECT_EQ(vendor_.City(), "");
  }
  ASSERT_EQ(vendor_.Update(), StatusSuccess);
  EXPECT_EQ(addresses_.Numbers(Adams), Numbers{});
}

TEST_F(VendorAddressFile, OfAnotherOwnerReadsEmptyAndIsNotWritten) {
  addresses_.AddIn("Ghent", Adams, MailTo);
  test::ProtectFile(AddressFile(), /*allowRead=*/false);
  EXPECT_EQ(vendor_.City(), "");
  vendor_.City("Bruges");
  EXPECT_EQ(vendor_.Update(), StatusSuccess);
  EXPECT_EQ(vendor_.CloseFile(), StatusSuccess);
  ASSERT_EQ(store::DefaultDriver().ClearOwner(AddressFile(), "someone"), StatusSuccess);
  EXPECT_EQ(addresses_.City(Adams, MailTo), "Ghent");
}

TEST_F(VendorAddressFile, ThatCannotBeWrittenReadsEmpty) {
  addresses_.AddIn("Ghent", Adams, MailTo);
  test::WhereOnlyThisIsReadOnly(AddressFile(), [] {
    Vendor vendor = Reader("ADAMS");
    EXPECT_EQ(vendor.City(), "");
    vendor.City("Bruges");
    EXPECT_EQ(vendor.Update(), StatusSuccess);
  });
  EXPECT_EQ(addresses_.City(Adams, MailTo), "Ghent");
}

TEST_F(VendorAddressFile, ThatFailsToCloseIsNotTold) {
  test::RunInChild([&] {
    Vendor vendor = Reader("ADAMS");
    EXPECT_EQ(vendor.City(), "");
    addresses_.AddIn("Hamme", Baker, MailTo);
    test::BreakDisk(AddressFile());
    EXPECT_EQ(vendor.CloseFile(), StatusSuccess);
  });
}

// --- Vendors that were never saved ---

TEST_F(VendorWithoutIndex, HasEmptyAddressesAndOpensNoFile) {
  addresses_.AddIn("Ghent", 0, MailTo);
  vendor_.VendorID("DUNN");
  vendor_.Index(0);
  EXPECT_EQ(vendor_.City(), "");
  EXPECT_EQ(vendor_.RemitToCity(20), "");
  EXPECT_FALSE(IsHeldOpen(AddressFile()));
}

TEST_F(VendorWithoutIndex, SavesItsAddressesByTheIndexThatInsertGives) {
  ASSERT_EQ(vendor_.OpenFile(), StatusSuccess);
  vendor_.VendorID("DUNN");
  vendor_.City("Ghent");
  vendor_.RemitToCity(2, "Bruges");
  ASSERT_EQ(vendor_.Insert(), StatusSuccess);
  ASSERT_EQ(vendor_.Index(), Adams + 1);
  EXPECT_EQ(addresses_.Numbers(Adams + 1), (Numbers{MailTo, 2}));
  EXPECT_EQ(addresses_.City(Adams + 1, 2), "Bruges");
}

TEST_F(VendorWithoutIndex, WithoutAnIDEitherHasEmptyAddressesThatAreNotSaved) {
  ASSERT_EQ(vendor_.OpenFile(), StatusSuccess);
  EXPECT_EQ(vendor_.City(), "");
  EXPECT_EQ(vendor_.RemitToCity(20), "");
  EXPECT_EQ(vendor_.AddressLastUpdateCounter(), 0);
  vendor_.City("Ghent");
  ASSERT_EQ(vendor_.Insert(), StatusSuccess);
  EXPECT_EQ(addresses_.Numbers(vendor_.Index()), Numbers{});
  EXPECT_FALSE(IsHeldOpen(AddressFile()));
}

TEST_F(VendorWithoutIndex, GivenAnIDLosesTheAddressesAssignedBefore) {
  ASSERT_EQ(vendor_.OpenFile(), StatusSuccess);
  vendor_.City("Ghent");
  vendor_.VendorID("DUNN");
  EXPECT_EQ(vendor_.City(), "");
}

}  // namespace
}  // namespace larkmoor
