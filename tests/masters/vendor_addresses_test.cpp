// The addresses of the class Vendor: a mailing address and 20 remit-to addresses that lie in the
// address file from release 13 on. The first access to any of them reads them all. How they are
// saved is told in vendor_addresses_saved_test.cpp.
#include "support/vendor_addresses.h"

#include <cstdint>
#include <ostream>
#include <string>
#include <string_view>

#include <gtest/gtest.h>

#include <larkmoor/masters/vendor.h>
#include <larkmoor/status.h>

#include "engine/records/address.h"
#include "support/addresses.h"
#include "support/company.h"
#include "support/errors.h"
#include "support/record_files.h"

namespace larkmoor {
namespace {

using test::AddressRows;
using test::Company;
using test::IsHeldOpen;
using test::RaisedNumber;
using test::VendorAddressTest;

using VendorRemitTo = VendorAddressTest;
using VendorAddressName = VendorAddressTest;
using VendorAddressLoad = VendorAddressTest;

// --- The mailing address ---

/// A text of the mailing address.
struct MailText {
  const char* name;
  const Field* field;
  std::string (Vendor::*get)();
  void (Vendor::*let)(std::string_view);
  double from = 13.0;  ///< the first release that shows it
  std::string_view sample = "sample";
};

void PrintTo(const MailText& text, std::ostream* out) { *out << text.name; }

const MailText MailTexts[] = {
    {"Address1", &AddressRecord::AddressLine1, &Vendor::Address1, &Vendor::Address1},
    {"Address2", &AddressRecord::AddressLine2, &Vendor::Address2, &Vendor::Address2},
    {"AddressGUID", &AddressRecord::GUID, &Vendor::AddressGUID, &Vendor::AddressGUID, 14.0,
     "C0000000-0000-4000-8000-000000000003"},
    {"City", &AddressRecord::City, &Vendor::City, &Vendor::City},
    {"Country", &AddressRecord::Country, &Vendor::Country, &Vendor::Country},
    {"State", &AddressRecord::State, &Vendor::State, &Vendor::State},
    {"Zipcode", &AddressRecord::Zipcode, &Vendor::Zipcode, &Vendor::Zipcode},
};

std::string NameOfMailText(const testing::TestParamInfo<MailText>& tested) {
  return tested.param.name;
}

class VendorMailText : public VendorAddressTest, public testing::WithParamInterface<MailText> {
 protected:
  explicit VendorMailText(double release = GetParam().from) : VendorAddressTest(release) {}

  static const Field& StoredField() { return *GetParam().field; }
  static std::string_view Sample() { return GetParam().sample; }
  std::string Get() { return (vendor_.*GetParam().get)(); }
  void Let(std::string_view value) { (vendor_.*GetParam().let)(value); }
};

TEST_P(VendorMailText, ShowsItsFieldOfTheAddressOfNumber0) {
  addresses_.Add(Adams, 1, [](Tovrin2Record& row) { row.SetText(StoredField(), OtherGUID); });
  addresses_.Add(Adams, MailTo, [](Tovrin2Record& row) { row.SetText(StoredField(), Sample()); });
  EXPECT_EQ(Get(), Sample());
}

TEST_P(VendorMailText, IsSavedByAnUpdate) {
  vendor_.City("Ghent");
  Let(Sample());
  EXPECT_EQ(Get(), Sample());
  ASSERT_EQ(vendor_.Update(), StatusSuccess);
  EXPECT_EQ(addresses_.Numbers(Adams), Numbers{MailTo});
  EXPECT_EQ(addresses_.Text(StoredField(), Adams, MailTo), Sample());
}

INSTANTIATE_TEST_SUITE_P(Vendor, VendorMailText, testing::ValuesIn(MailTexts), NameOfMailText);

class VendorMailTextBefore : public VendorMailText {
 protected:
  VendorMailTextBefore() : VendorMailText(GetParam().from - 0.1) {}
};

TEST_P(VendorMailTextBefore, IsEmptyAndDropsWhatIsAssigned) {
  addresses_.Add(Adams, MailTo, [](Tovrin2Record& row) { row.SetText(StoredField(), Sample()); });
  EXPECT_EQ(Get(), "");
  Let(OtherGUID);
  EXPECT_EQ(Get(), "");
  EXPECT_FALSE(IsHeldOpen(AddressFile()));
  ASSERT_EQ(vendor_.Update(), StatusSuccess);
  EXPECT_EQ(addresses_.Numbers(Adams), Numbers{MailTo});
  EXPECT_EQ(addresses_.Text(StoredField(), Adams, MailTo), Sample());
}

INSTANTIATE_TEST_SUITE_P(Vendor, VendorMailTextBefore, testing::ValuesIn(MailTexts),
                         NameOfMailText);

/// Data that shows the mailing address and not yet its identity.
class VendorMailingAddressBelow14 : public VendorAddressTest {
 protected:
  VendorMailingAddressBelow14() : VendorAddressTest(13.9) {
    addresses_.Add(Adams, MailTo, [](Tovrin2Record& row) {
      row.SetText(AddressRecord::AddressLine1, "Quay 4");
      row.SetText(AddressRecord::GUID, SomeGUID);
      row.SetLong(AddressRecord::LastUpdateCounter, 70000);
    });
    EXPECT_EQ(vendor_.Address1(), "Quay 4");
  }
};

TEST_F(VendorMailingAddressBelow14, ShowsNeitherGUIDNorUpdateCounter) {
  EXPECT_EQ(vendor_.AddressGUID(), "");
  EXPECT_EQ(vendor_.AddressLastUpdateCounter(), 0);
}

TEST_F(VendorMailingAddressBelow14, KeepsBothOverASave) {
  vendor_.AddressGUID(OtherGUID);
  vendor_.AddressLastUpdateCounter(5);
  vendor_.Address1("Quay 5");
  ASSERT_EQ(vendor_.Update(), StatusSuccess);
  EXPECT_EQ(addresses_.Text(AddressRecord::AddressLine1, Adams, MailTo), "Quay 5");
  EXPECT_EQ(addresses_.Text(AddressRecord::GUID, Adams, MailTo), SomeGUID);
  EXPECT_EQ(addresses_.Long(AddressRecord::LastUpdateCounter, Adams, MailTo), 70000);
}

TEST_F(VendorMailingAddressBelow14, ShowsBothOfARemitToAddress) {
  vendor_.RemitToGUID(1, SomeGUID);
  EXPECT_EQ(vendor_.RemitToGUID(1), SomeGUID);
  vendor_.RemitToLastUpdateCounter(1, 5);
  EXPECT_EQ(vendor_.RemitToLastUpdateCounter(1), 5);
}

// --- The remit-to addresses ---

/// A text of the remit-to addresses.
struct RemitText {
  const char* name;
  const Field* field;
  std::string (Vendor::*get)(std::int16_t);
  void (Vendor::*let)(std::int16_t, std::string_view);
  std::string_view sample = "sample";
};

void PrintTo(const RemitText& text, std::ostream* out) { *out << text.name; }

const RemitText RemitTexts[] = {
    {"Address1", &AddressRecord::AddressLine1, &Vendor::RemitToAddress1, &Vendor::RemitToAddress1},
    {"Address2", &AddressRecord::AddressLine2, &Vendor::RemitToAddress2, &Vendor::RemitToAddress2},
    {"City", &AddressRecord::City, &Vendor::RemitToCity, &Vendor::RemitToCity},
    {"Country", &AddressRecord::Country, &Vendor::RemitToCountry, &Vendor::RemitToCountry},
    {"GUID", &AddressRecord::GUID, &Vendor::RemitToGUID, &Vendor::RemitToGUID,
     "C0000000-0000-4000-8000-000000000003"},
    {"Name", &AddressRecord::Name, &Vendor::RemitToName, &Vendor::RemitToName},
    {"State", &AddressRecord::State, &Vendor::RemitToState, &Vendor::RemitToState},
    {"Zipcode", &AddressRecord::Zipcode, &Vendor::RemitToZipcode, &Vendor::RemitToZipcode},
};

std::string NameOfRemitText(const testing::TestParamInfo<RemitText>& tested) {
  return tested.param.name;
}

class VendorRemitText : public VendorAddressTest, public testing::WithParamInterface<RemitText> {
 protected:
  explicit VendorRemitText(double release = 13.0) : VendorAddressTest(release) {}

  static const Field& StoredField() { return *GetParam().field; }
  static std::string_view Sample() { return GetParam().sample; }
  std::string Get(std::int16_t index) { return (vendor_.*GetParam().get)(index); }
  void Let(std::int16_t index, std::string_view value) { (vendor_.*GetParam().let)(index, value); }
};

TEST_P(VendorRemitText, ShowsItsFieldOfTheAddressOfThatNumber) {
  for (const std::int32_t number : {1, 20}) {
    addresses_.Add(Adams, number, [](Tovrin2Record& row) { row.SetText(StoredField(), Sample()); });
  }
  EXPECT_EQ(Get(1), Sample());
  EXPECT_EQ(Get(2), "");
  EXPECT_EQ(Get(20), Sample());
}

TEST_P(VendorRemitText, IsSavedByAnUpdate) {
  vendor_.RemitToCity(3, "Bruges");
  Let(3, Sample());
  EXPECT_EQ(Get(3), Sample());
  ASSERT_EQ(vendor_.Update(), StatusSuccess);
  EXPECT_EQ(addresses_.Numbers(Adams), Numbers{3});
  EXPECT_EQ(addresses_.Text(StoredField(), Adams, 3), Sample());
}

TEST_P(VendorRemitText, OfAnIndexOutsideIsThatOfTheNearest) {
  Let(1, Sample());
  EXPECT_EQ(Get(0), Sample());
  EXPECT_EQ(Get(-32768), Sample());
  Let(0, "");
  EXPECT_EQ(Get(1), "");
  Let(25, Sample());
  EXPECT_EQ(Get(20), Sample());
  EXPECT_EQ(Get(21), Sample());
  EXPECT_EQ(Get(32767), Sample());
}

INSTANTIATE_TEST_SUITE_P(Vendor, VendorRemitText, testing::ValuesIn(RemitTexts), NameOfRemitText);

class VendorRemitTextBelow13 : public VendorRemitText {
 protected:
  VendorRemitTextBelow13() : VendorRemitText(12.9) {}
};

TEST_P(VendorRemitTextBelow13, IsEmptyAndDropsWhatIsAssigned) {
  addresses_.Add(Adams, 3, [](Tovrin2Record& row) { row.SetText(StoredField(), Sample()); });
  EXPECT_EQ(Get(3), "");
  Let(3, OtherGUID);
  EXPECT_EQ(Get(3), "");
  EXPECT_FALSE(IsHeldOpen(AddressFile()));
  ASSERT_EQ(vendor_.Update(), StatusSuccess);
  EXPECT_EQ(addresses_.Numbers(Adams), Numbers{3});
  EXPECT_EQ(addresses_.Text(StoredField(), Adams, 3), Sample());
}

INSTANTIATE_TEST_SUITE_P(Vendor, VendorRemitTextBelow13, testing::ValuesIn(RemitTexts),
                         NameOfRemitText);

TEST_F(VendorRemitTo, Index0IsNoWayToTheMailingAddress) {
  vendor_.RemitToCity(0, "Bruges");
  EXPECT_EQ(vendor_.City(), "");
  EXPECT_EQ(vendor_.RemitToCity(1), "Bruges");
}

TEST_F(VendorRemitTo, UpdateCountersAreKeptLikeTheTexts) {
  addresses_.Add(Adams, MailTo, [](Tovrin2Record& row) {
    row.SetText(AddressRecord::City, "Ghent");
    row.SetLong(AddressRecord::LastUpdateCounter, 70000);
  });
  EXPECT_EQ(vendor_.AddressLastUpdateCounter(), 70000);
  EXPECT_EQ(vendor_.RemitToLastUpdateCounter(1), 0);
  vendor_.AddressLastUpdateCounter(70001);
  vendor_.RemitToCity(1, "Bruges");
  vendor_.RemitToLastUpdateCounter(0, 5);
  EXPECT_EQ(vendor_.RemitToLastUpdateCounter(1), 5);
  vendor_.RemitToLastUpdateCounter(21, 6);
  EXPECT_EQ(vendor_.RemitToLastUpdateCounter(20), 6);
  ASSERT_EQ(vendor_.Update(), StatusSuccess);
  EXPECT_EQ(addresses_.Long(AddressRecord::LastUpdateCounter, Adams, MailTo), 70001);
  EXPECT_EQ(addresses_.Long(AddressRecord::LastUpdateCounter, Adams, 1), 5);
}

TEST(VendorRemitToBelow13, UpdateCountersAre0) {
  const Company company(12.9);
  Vendor vendor;
  ASSERT_EQ(vendor.OpenFile(), StatusSuccess);
  vendor.AddressLastUpdateCounter(5);
  EXPECT_EQ(vendor.AddressLastUpdateCounter(), 0);
  vendor.RemitToLastUpdateCounter(1, 5);
  EXPECT_EQ(vendor.RemitToLastUpdateCounter(1), 0);
}

// --- The name on the mailing address ---

TEST_F(VendorAddressName, OfAMailingAddressWithoutOneIsTheVendors) {
  vendor_.Name("Harbour Supplies");
  vendor_.City("Ghent");
  vendor_.RemitToCity(1, "Bruges");
  ASSERT_EQ(vendor_.Update(), StatusSuccess);
  EXPECT_EQ(addresses_.Text(AddressRecord::Name, Adams, MailTo), "Harbour Supplies");
  EXPECT_EQ(addresses_.Text(AddressRecord::Name, Adams, 1), "") << "a remit-to address has its own";
}

TEST_F(VendorAddressName, OfAMailingAddressThatHasOneStays) {
  addresses_.Add(Adams, MailTo, [](Tovrin2Record& row) {
    row.SetText(AddressRecord::Name, "Accounts Department");
    row.SetText(AddressRecord::City, "Ghent");
  });
  vendor_.Name("Harbour Supplies");
  vendor_.City("Ostend");
  ASSERT_EQ(vendor_.Update(), StatusSuccess);
  EXPECT_EQ(addresses_.City(Adams, MailTo), "Ostend");
  EXPECT_EQ(addresses_.Text(AddressRecord::Name, Adams, MailTo), "Accounts Department");
}

TEST_F(VendorAddressName, DoesNotFollowALaterNameOfTheVendor) {
  vendor_.Name("Harbour Supplies");
  vendor_.City("Ghent");
  ASSERT_EQ(vendor_.Update(), StatusSuccess);
  Vendor later = Reader("ADAMS");
  later.Name("Harbour and Sons");
  later.City("Ostend");
  ASSERT_EQ(later.Update(), StatusSuccess);
  EXPECT_EQ(addresses_.City(Adams, MailTo), "Ostend");
  EXPECT_EQ(addresses_.Text(AddressRecord::Name, Adams, MailTo), "Harbour Supplies");
}

TEST_F(VendorAddressName, OfTheVendorAloneKeepsNoMailingAddress) {
  addresses_.Add(Adams, MailTo,
                 [](Tovrin2Record& row) { row.SetText(AddressRecord::Zipcode, "9000"); });
  vendor_.Name("Harbour Supplies");
  EXPECT_EQ(vendor_.Zipcode(), "9000");
  ASSERT_EQ(vendor_.Update(), StatusSuccess);
  EXPECT_EQ(addresses_.Numbers(Adams), Numbers{});
}

TEST_F(VendorAddressName, OnFileKeepsAMailingAddressThatNobodyCanName) {
  addresses_.Add(Adams, MailTo, [](Tovrin2Record& row) {
    row.SetText(AddressRecord::Name, "Accounts Department");
  });
  EXPECT_EQ(vendor_.City(), "");
  ASSERT_EQ(vendor_.Update(), StatusSuccess);
  EXPECT_EQ(addresses_.Numbers(Adams), Numbers{MailTo});
}

TEST_F(VendorAddressName, IsNotTheVendorsName) {
  vendor_.Name("Harbour Supplies");
  addresses_.Add(Adams, MailTo, [](Tovrin2Record& row) {
    row.SetText(AddressRecord::Name, "Accounts Department");
  });
  EXPECT_EQ(vendor_.City(), "");
  EXPECT_EQ(vendor_.Name(), "Harbour Supplies");
}

// --- Loading ---

TEST_F(VendorAddressLoad, TakesTheAddressesOfTheVendorAlone) {
  addresses_.AddIn("Hamme", Baker, MailTo);
  addresses_.AddIn("Bruges", Adams, 2);
  addresses_.AddIn("Ghent", Adams, MailTo);
  addresses_.AddIn("Ieper", Adams + 1, MailTo);
  EXPECT_EQ(vendor_.City(), "Ghent");
  EXPECT_EQ(vendor_.RemitToCity(1), "");
  EXPECT_EQ(vendor_.RemitToCity(2), "Bruges");
  ASSERT_EQ(vendor_.GetEqual("BAKER"), StatusSuccess);
  EXPECT_EQ(vendor_.City(), "Hamme");
  EXPECT_EQ(vendor_.RemitToCity(2), "");
}

TEST_F(VendorAddressLoad, PassesOverTheAddressesOfCustomers) {
  AddressRows::OfCustomers(company_.Folder()).AddIn("Ghent", Adams, MailTo);
  EXPECT_EQ(vendor_.City(), "");
}

TEST_F(VendorAddressLoad, HappensOnceForAVendor) {
  addresses_.AddIn("Ghent", Adams, MailTo);
  EXPECT_EQ(vendor_.City(), "Ghent");
  addresses_.AddIn("Bruges", Adams, 2);
  EXPECT_EQ(vendor_.RemitToCity(2), "");
  ASSERT_EQ(vendor_.GetEqual("ADAMS"), StatusSuccess);
  EXPECT_EQ(vendor_.RemitToCity(2), "") << "nor by reading the vendor again";
}

TEST_F(VendorAddressLoad, HappensAgainForAnotherVendorAndLosesWhatIsNotSaved) {
  addresses_.AddIn("Ghent", Adams, MailTo);
  addresses_.AddIn("Hamme", Baker, MailTo);
  vendor_.City("Ostend");
  ASSERT_EQ(vendor_.GetEqual("BAKER"), StatusSuccess);
  EXPECT_EQ(vendor_.City(), "Hamme");
  ASSERT_EQ(vendor_.GetEqual("ADAMS"), StatusSuccess);
  EXPECT_EQ(vendor_.City(), "Ghent");
}

// The addresses are those of an ID: a new one makes them another vendor's.
TEST_F(VendorAddressLoad, HappensAgainWhereTheIDIsAssigned) {
  addresses_.AddIn("Ghent", Adams, MailTo);
  vendor_.City("Ostend");
  vendor_.VendorID("ADAMSON");
  EXPECT_EQ(vendor_.City(), "Ghent");
}

TEST_F(VendorAddressLoad, DoesNotHappenWhereTheIDIsAssignedAndBackAgain) {
  vendor_.City("Ostend");
  vendor_.VendorID("ADAMSON");
  vendor_.VendorID("ADAMS");
  EXPECT_EQ(vendor_.City(), "Ostend");
}

TEST_F(VendorAddressLoad, OfANumberAbove20Raises9OnceAndKeepsThoseBefore) {
  addresses_.AddIn("Ghent", Adams, MailTo);
  addresses_.AddIn("Bruges", Adams, 20);
  addresses_.AddIn("Ostend", Adams, 21);
  EXPECT_EQ(RaisedNumber([&] { return vendor_.City(); }), 9);
  EXPECT_EQ(vendor_.City(), "Ghent");
  EXPECT_EQ(vendor_.RemitToCity(20), "Bruges");
}

}  // namespace
}  // namespace larkmoor
