// The addresses of the class Customer: one bill-to and 20 ship-to addresses that lie in the address
// file from release 13 on. The first access to any of them reads them all; a write of the customer
// saves them all, once after each OpenFile.
#include <cstdint>
#include <filesystem>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include <larkmoor/masters/customer.h>
#include <larkmoor/status.h>

#include "engine/guid.h"
#include "engine/records/address.h"
#include "engine/records/customer.h"
#include "engine/store/driver.h"
#include "engine/tovrin_file_names.h"
#include "support/child_process.h"
#include "support/company.h"
#include "support/errors.h"
#include "support/failing_disk.h"
#include "support/masters.h"
#include "support/read_only_file.h"
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

// The customers of every company here.
constexpr std::int32_t Adams = 30;
constexpr std::int32_t Baker = 20;

/// Number of the bill-to address; those of the ship-to addresses are 1 to 20.
constexpr std::int32_t BillTo = 0;
/// The key of the addresses by customer and number.
constexpr std::int16_t ByCustomer = 2;

constexpr std::string_view SomeGUID = "C0000000-0000-4000-8000-000000000001";

using Numbers = std::vector<std::int32_t>;

/// A company with two customers, and an object that has the first of them in hand.
class CustomerAddressTest : public testing::Test {
 protected:
  explicit CustomerAddressTest(double release = 13.0) : company_(release) {
    AddCustomer(company_.Folder(), {"ADAMS", Adams});
    AddCustomer(company_.Folder(), {"BAKER", Baker});
    EXPECT_EQ(customer_.OpenFile(), StatusSuccess);
    EXPECT_EQ(customer_.GetEqual("ADAMS"), StatusSuccess);
  }

  std::filesystem::path AddressFile() const {
    return company_.Folder() / TovrinFileNames::AddressFile();
  }
  std::filesystem::path CustomerFile() const {
    return company_.Folder() / TovrinFileNames::CustomerFile();
  }

  /// The addresses, open beside the object under test.
  struct Addresses : OpenRecordFile {
    explicit Addresses(const std::filesystem::path& path)
        : OpenRecordFile(path, AddressRecord::Describe()) {}
    Status Find(std::int32_t customer, std::int32_t number) {
      File().KeyLong(customer, 0);
      File().KeyLong(number, 4);
      return File().btGetEqual(ByCustomer);
    }
  };

  /// Adds an address that is blank but for what `fill` puts into it.
  template <typename Fill>
  void AddAddress(std::int32_t customer, std::int32_t number, Fill&& fill) {
    Addresses(AddressFile()).Add([&](Tovrin2Record& record) {
      record.SetLong(AddressRecord::CustomerRecordNumber, customer);
      record.SetLong(AddressRecord::AddressTypeNumber, number);
      fill(record);
    });
  }
  void AddAddressIn(std::string_view city, std::int32_t customer, std::int32_t number) {
    AddAddress(customer, number,
               [&](Tovrin2Record& record) { record.SetText(AddressRecord::City, city); });
  }

  /// A field of an address on file, which must be there.
  std::string StoredText(const Field& field, std::int32_t customer, std::int32_t number) {
    Addresses addresses(AddressFile());
    EXPECT_EQ(addresses.Find(customer, number), StatusSuccess) << number;
    return addresses.Record().GetText(field);
  }
  std::int32_t StoredLong(const Field& field, std::int32_t customer, std::int32_t number) {
    Addresses addresses(AddressFile());
    EXPECT_EQ(addresses.Find(customer, number), StatusSuccess) << number;
    return addresses.Record().GetLong(field);
  }
  std::string StoredCity(std::int32_t customer, std::int32_t number) {
    return StoredText(AddressRecord::City, customer, number);
  }

  /// Which addresses of a customer are on file.
  Numbers StoredNumbers(std::int32_t customer) {
    Addresses addresses(AddressFile());
    Numbers numbers;
    for (Status status = addresses.File().btGetFirst(ByCustomer); status == StatusSuccess;
         status = addresses.File().btGetNext(ByCustomer)) {
      if (addresses.Record().GetLong(AddressRecord::CustomerRecordNumber) != customer) continue;
      numbers.push_back(addresses.Record().GetLong(AddressRecord::AddressTypeNumber));
    }
    return numbers;
  }

  /// The name in a customer's own record on file.
  std::string StoredName(std::string_view id) {
    OpenRecordFile customers(CustomerFile(), CustomerRecord::Describe());
    customers.File().KeyTerminated(id, 0);
    EXPECT_EQ(customers.File().btGetEqual(0), StatusSuccess);
    return customers.Record().GetText(CustomerRecord::Name);
  }

  /// A customer object newly opened, with that customer in hand.
  static Customer Reader(std::string_view id) {
    Customer reader;
    EXPECT_EQ(reader.OpenFile(), StatusSuccess);
    EXPECT_EQ(reader.GetEqual(id), StatusSuccess);
    return reader;
  }

  Company company_;
  Customer customer_;
};

using CustomerShipTo = CustomerAddressTest;
using CustomerAddressLoad = CustomerAddressTest;
using CustomerAddressSave = CustomerAddressTest;
using CustomerAddressSaveOnce = CustomerAddressTest;
using CustomerAddressFile = CustomerAddressTest;
using CustomerWithoutIndex = CustomerAddressTest;

// --- The properties ---

/// The two properties over one text field of an address.
struct AddressText {
  const char* name;
  const Field* field;
  std::string (Customer::*billTo)();
  void (Customer::*setBillTo)(std::string_view);
  std::string (Customer::*shipTo)(std::int16_t);
  void (Customer::*setShipTo)(std::int16_t, std::string_view);
  std::string_view sample = "sample";
};

void PrintTo(const AddressText& text, std::ostream* out) { *out << text.name; }

const AddressText AddressTexts[] = {
    {"Address1", &AddressRecord::AddressLine1, &Customer::BillToAddress1, &Customer::BillToAddress1,
     &Customer::ShipToAddress1, &Customer::ShipToAddress1},
    {"Address2", &AddressRecord::AddressLine2, &Customer::BillToAddress2, &Customer::BillToAddress2,
     &Customer::ShipToAddress2, &Customer::ShipToAddress2},
    {"City", &AddressRecord::City, &Customer::BillToCity, &Customer::BillToCity,
     &Customer::ShipToCity, &Customer::ShipToCity},
    {"Country", &AddressRecord::Country, &Customer::BillToCountry, &Customer::BillToCountry,
     &Customer::ShipToCountry, &Customer::ShipToCountry},
    {"GUID", &AddressRecord::GUID, &Customer::BillToGUID, &Customer::BillToGUID,
     &Customer::ShipToGUID, &Customer::ShipToGUID, SomeGUID},
    {"Name", &AddressRecord::Name, &Customer::BillToName, &Customer::BillToName,
     &Customer::ShipToName, &Customer::ShipToName},
    {"SalesTaxCode", &AddressRecord::TaxCode, &Customer::BillToSalesTaxCode,
     &Customer::BillToSalesTaxCode, &Customer::ShipToSalesTaxCode, &Customer::ShipToSalesTaxCode},
    {"State", &AddressRecord::State, &Customer::BillToState, &Customer::BillToState,
     &Customer::ShipToState, &Customer::ShipToState},
    {"Zipcode", &AddressRecord::Zipcode, &Customer::BillToZipcode, &Customer::BillToZipcode,
     &Customer::ShipToZipcode, &Customer::ShipToZipcode},
};

std::string NameOfText(const testing::TestParamInfo<AddressText>& tested) {
  return tested.param.name;
}

class CustomerAddressText : public CustomerAddressTest,
                            public testing::WithParamInterface<AddressText> {
 protected:
  explicit CustomerAddressText(double release = 13.0) : CustomerAddressTest(release) {}

  static std::string_view Sample() { return GetParam().sample; }
  static const Field& StoredField() { return *GetParam().field; }
  std::string Bill() { return (customer_.*GetParam().billTo)(); }
  void Bill(std::string_view value) { (customer_.*GetParam().setBillTo)(value); }
  std::string Ship(std::int16_t index) { return (customer_.*GetParam().shipTo)(index); }
  void Ship(std::int16_t index, std::string_view value) {
    (customer_.*GetParam().setShipTo)(index, value);
  }
};

TEST_P(CustomerAddressText, ShowsItsFieldOfTheAddressOfThatNumber) {
  for (const std::int32_t number : {BillTo, 1, 20}) {
    AddAddress(Adams, number,
               [](Tovrin2Record& record) { record.SetText(StoredField(), Sample()); });
  }
  EXPECT_EQ(Bill(), Sample());
  EXPECT_EQ(Ship(1), Sample());
  EXPECT_EQ(Ship(2), "");
  EXPECT_EQ(Ship(20), Sample());
}

TEST_P(CustomerAddressText, IsSavedByAnUpdate) {
  customer_.BillToCity("Ghent");
  customer_.ShipToCity(3, "Bruges");
  Bill(Sample());
  Ship(3, Sample());
  EXPECT_EQ(Bill(), Sample());
  EXPECT_EQ(Ship(3), Sample());
  ASSERT_EQ(customer_.Update(), StatusSuccess);
  EXPECT_EQ(StoredNumbers(Adams), (Numbers{BillTo, 3}));
  EXPECT_EQ(StoredText(StoredField(), Adams, BillTo), Sample());
  EXPECT_EQ(StoredText(StoredField(), Adams, 3), Sample());
}

TEST_P(CustomerAddressText, OfAShipToAddressOutsideIsThatOfTheNearest) {
  Ship(1, Sample());
  EXPECT_EQ(Ship(0), Sample());
  EXPECT_EQ(Ship(-32768), Sample());
  EXPECT_EQ(Bill(), "") << "0 is no way to the bill-to address";
  Ship(0, "");
  EXPECT_EQ(Ship(1), "");
  Ship(25, Sample());
  EXPECT_EQ(Ship(20), Sample());
  EXPECT_EQ(Ship(21), Sample());
  EXPECT_EQ(Ship(32767), Sample());
}

INSTANTIATE_TEST_SUITE_P(Customer, CustomerAddressText, testing::ValuesIn(AddressTexts),
                         NameOfText);

class CustomerAddressTextBelow13 : public CustomerAddressText {
 protected:
  CustomerAddressTextBelow13() : CustomerAddressText(12.9) {}
};

TEST_P(CustomerAddressTextBelow13, IsEmptyAndDropsWhatIsAssigned) {
  AddAddress(Adams, BillTo, [](Tovrin2Record& record) { record.SetText(StoredField(), Sample()); });
  EXPECT_EQ(Bill(), "");
  Bill("other");
  EXPECT_EQ(Bill(), "");
  Ship(3, "other");
  EXPECT_EQ(Ship(3), "");
  EXPECT_FALSE(IsHeldOpen(AddressFile()));
  ASSERT_EQ(customer_.Update(), StatusSuccess);
  EXPECT_EQ(StoredNumbers(Adams), Numbers{BillTo});
  EXPECT_EQ(StoredText(StoredField(), Adams, BillTo), Sample());
  EXPECT_EQ(StoredName("ADAMS"), "");
}

INSTANTIATE_TEST_SUITE_P(Customer, CustomerAddressTextBelow13, testing::ValuesIn(AddressTexts),
                         NameOfText);

TEST_F(CustomerShipTo, UpdateCountersAreKeptLikeTheTexts) {
  AddAddress(Adams, BillTo, [](Tovrin2Record& record) {
    record.SetText(AddressRecord::City, "Ghent");
    record.SetLong(AddressRecord::LastUpdateCounter, 70000);
  });
  EXPECT_EQ(customer_.BillToLastUpdateCounter(), 70000);
  EXPECT_EQ(customer_.ShipToLastUpdateCounter(1), 0);
  customer_.BillToLastUpdateCounter(70001);
  customer_.ShipToCity(1, "Bruges");
  customer_.ShipToLastUpdateCounter(0, 5);
  EXPECT_EQ(customer_.ShipToLastUpdateCounter(1), 5);
  customer_.ShipToLastUpdateCounter(21, 6);
  EXPECT_EQ(customer_.ShipToLastUpdateCounter(20), 6);
  ASSERT_EQ(customer_.Update(), StatusSuccess);
  EXPECT_EQ(StoredLong(AddressRecord::LastUpdateCounter, Adams, BillTo), 70001);
  EXPECT_EQ(StoredLong(AddressRecord::LastUpdateCounter, Adams, 1), 5);
}

TEST(CustomerShipToBelow13, UpdateCountersAre0) {
  const Company company(12.9);
  Customer customer;
  ASSERT_EQ(customer.OpenFile(), StatusSuccess);
  customer.BillToLastUpdateCounter(5);
  EXPECT_EQ(customer.BillToLastUpdateCounter(), 0);
  customer.ShipToLastUpdateCounter(1, 5);
  EXPECT_EQ(customer.ShipToLastUpdateCounter(1), 0);
}

TEST_F(CustomerShipTo, NamesOutsideReadTheNearest) {
  AddAddress(Adams, 1, [](Tovrin2Record& record) { record.SetText(AddressRecord::Name, "first"); });
  AddAddress(Adams, 20, [](Tovrin2Record& record) { record.SetText(AddressRecord::Name, "last"); });
  EXPECT_EQ(customer_.ShipToName(0), customer_.ShipToName(1));
  EXPECT_EQ(customer_.ShipToName(0), "first");
  EXPECT_EQ(customer_.ShipToName(21), customer_.ShipToName(20));
  EXPECT_EQ(customer_.ShipToName(21), "last");
}

class CustomerName : public CustomerAddressTest {};

TEST_F(CustomerName, IsThatOfTheBillToAddressToo) {
  customer_.BillToName("Harbour Trading");
  ASSERT_EQ(customer_.Update(), StatusSuccess);
  EXPECT_EQ(StoredName("ADAMS"), "Harbour Trading");
  EXPECT_EQ(StoredText(AddressRecord::Name, Adams, BillTo), "Harbour Trading");
}

TEST_F(CustomerName, IsNoShipToName) {
  customer_.ShipToName(1, "Warehouse");
  ASSERT_EQ(customer_.Update(), StatusSuccess);
  EXPECT_EQ(StoredName("ADAMS"), "");
}

TEST_F(CustomerName, IsNotShownByBillToName) {
  customer_.BillToName("Harbour Trading");
  ASSERT_EQ(customer_.Update(), StatusSuccess);
  Addresses addresses(AddressFile());
  ASSERT_EQ(addresses.Find(Adams, BillTo), StatusSuccess);
  addresses.Record().SetText(AddressRecord::Name, "Accounts Department");
  ASSERT_EQ(addresses.File().btUpdate(ByCustomer), StatusSuccess);
  EXPECT_EQ(Reader("ADAMS").BillToName(), "Accounts Department");
}

// --- Loading ---

TEST_F(CustomerAddressLoad, TakesTheAddressesOfTheCustomerAlone) {
  AddAddressIn("Hamme", Baker, BillTo);
  AddAddressIn("Bruges", Adams, 2);
  AddAddressIn("Ghent", Adams, BillTo);
  AddAddressIn("Ieper", Adams + 1, BillTo);
  EXPECT_EQ(customer_.BillToCity(), "Ghent");
  EXPECT_EQ(customer_.ShipToCity(1), "");
  EXPECT_EQ(customer_.ShipToCity(2), "Bruges");
  ASSERT_EQ(customer_.GetEqual("BAKER"), StatusSuccess);
  EXPECT_EQ(customer_.BillToCity(), "Hamme");
  EXPECT_EQ(customer_.ShipToCity(2), "");
}

TEST_F(CustomerAddressLoad, PassesOverTheAddressesOfVendors) {
  AddAddress(0, BillTo, [](Tovrin2Record& record) {
    record.SetLong(AddressRecord::VendorRecordNumber, Adams);
    record.SetText(AddressRecord::City, "Ghent");
  });
  EXPECT_EQ(customer_.BillToCity(), "");
}

TEST_F(CustomerAddressLoad, HappensOnceForACustomer) {
  AddAddressIn("Ghent", Adams, BillTo);
  EXPECT_EQ(customer_.BillToCity(), "Ghent");
  AddAddressIn("Bruges", Adams, 2);
  EXPECT_EQ(customer_.ShipToCity(2), "");
  ASSERT_EQ(customer_.GetEqual("ADAMS"), StatusSuccess);
  EXPECT_EQ(customer_.ShipToCity(2), "") << "nor by reading the customer again";
}

TEST_F(CustomerAddressLoad, HappensAgainForAnotherCustomerAndLosesWhatIsNotSaved) {
  AddAddressIn("Ghent", Adams, BillTo);
  AddAddressIn("Hamme", Baker, BillTo);
  customer_.BillToCity("Ostend");
  ASSERT_EQ(customer_.GetEqual("BAKER"), StatusSuccess);
  EXPECT_EQ(customer_.BillToCity(), "Hamme");
  ASSERT_EQ(customer_.GetEqual("ADAMS"), StatusSuccess);
  EXPECT_EQ(customer_.BillToCity(), "Ghent");
}

TEST_F(CustomerAddressLoad, HappensAgainAfterOpenFile) {
  AddAddressIn("Ghent", Adams, BillTo);
  customer_.BillToCity("Ostend");
  ASSERT_EQ(customer_.OpenFile(), StatusSuccess);
  ASSERT_EQ(customer_.GetEqual("ADAMS"), StatusSuccess);
  EXPECT_EQ(customer_.BillToCity(), "Ghent");
}

// The addresses are those of an ID: a new one makes them another customer's.
TEST_F(CustomerAddressLoad, HappensAgainWhereTheIDIsAssigned) {
  AddAddressIn("Ghent", Adams, BillTo);
  customer_.BillToCity("Ostend");
  customer_.CustomerID("ADAMSON");
  EXPECT_EQ(customer_.BillToCity(), "Ghent");
}

TEST_F(CustomerAddressLoad, DoesNotHappenWhereTheIDIsAssignedAndBackAgain) {
  customer_.BillToCity("Ostend");
  customer_.CustomerID("ADAMSON");
  customer_.CustomerID("ADAMS");
  EXPECT_EQ(customer_.BillToCity(), "Ostend");
}

TEST_F(CustomerAddressLoad, OfANumberAbove20Raises9OnceAndKeepsThoseBefore) {
  AddAddressIn("Ghent", Adams, BillTo);
  AddAddressIn("Bruges", Adams, 20);
  AddAddressIn("Ostend", Adams, 21);
  EXPECT_EQ(RaisedNumber([&] { return customer_.BillToCity(); }), 9);
  EXPECT_EQ(customer_.BillToCity(), "Ghent");
  EXPECT_EQ(customer_.ShipToCity(20), "Bruges");
}

// --- Saving ---

TEST_F(CustomerAddressSave, FillsTheWholeRecordOfANewAddress) {
  customer_.BillToCity("Ghent");
  customer_.ShipToCity(3, "Bruges");
  ASSERT_EQ(customer_.Update(), StatusSuccess);
  EXPECT_EQ(StoredText(AddressRecord::AddressTypeDesc, Adams, BillTo), "Bill To");
  EXPECT_EQ(StoredText(AddressRecord::AddressTypeDesc, Adams, 3), "Ship to 3");
  EXPECT_EQ(StoredLong(AddressRecord::VendorRecordNumber, Adams, 3), 0);
  EXPECT_EQ(StoredLong(AddressRecord::AddressRecordNumber, Adams, BillTo), 1);
  EXPECT_EQ(StoredLong(AddressRecord::AddressRecordNumber, Adams, 3), 2);
}

TEST_F(CustomerAddressSave, CountsShipToAddressesUpTo20) {
  for (std::int16_t number = 1; number <= 20; ++number) customer_.ShipToCity(number, "Ghent");
  ASSERT_EQ(customer_.Update(), StatusSuccess);
  EXPECT_EQ(StoredNumbers(Adams).size(), 20U);
  EXPECT_EQ(StoredText(AddressRecord::AddressTypeDesc, Adams, 20), "Ship to 20");
}

TEST_F(CustomerAddressSave, RewritesAnAddressInItsPlace) {
  AddAddressIn("Hamme", Baker, BillTo);
  AddAddress(Adams, 2, [](Tovrin2Record& record) {
    record.SetText(AddressRecord::City, "Ghent");
    record.SetText(AddressRecord::AddressTypeDesc, "Warehouse");
    record.SetLong(AddressRecord::VendorRecordNumber, 77);
    record.SetText(AddressRecord::GUID, SomeGUID);
  });
  customer_.ShipToCity(2, "Bruges");
  ASSERT_EQ(customer_.Update(), StatusSuccess);
  EXPECT_EQ(StoredNumbers(Adams), Numbers{2});
  EXPECT_EQ(StoredCity(Adams, 2), "Bruges");
  EXPECT_EQ(StoredLong(AddressRecord::AddressRecordNumber, Adams, 2), 2);
  EXPECT_EQ(StoredText(AddressRecord::GUID, Adams, 2), SomeGUID);
  EXPECT_EQ(StoredText(AddressRecord::AddressTypeDesc, Adams, 2), "Ship to 2");
  EXPECT_EQ(StoredLong(AddressRecord::VendorRecordNumber, Adams, 2), 0);
  EXPECT_EQ(StoredCity(Baker, BillTo), "Hamme");
}

TEST_F(CustomerAddressSave, GivesAnAddressWithoutGUIDANewOne) {
  AddAddressIn("Ghent", Adams, BillTo);
  customer_.ShipToCity(1, "Bruges");
  ASSERT_EQ(customer_.Update(), StatusSuccess);
  const std::string first = StoredText(AddressRecord::GUID, Adams, BillTo);
  const std::string second = StoredText(AddressRecord::GUID, Adams, 1);
  EXPECT_TRUE(ParseGuid(first).has_value()) << first;
  EXPECT_TRUE(ParseGuid(second).has_value()) << second;
  EXPECT_NE(first, second);
}

TEST_F(CustomerAddressSave, KeepsAnAddressWithNameFirstLineOrCityOnly) {
  customer_.ShipToName(1, "Warehouse");
  customer_.ShipToAddress1(2, "Quay 4");
  customer_.ShipToCity(3, "Ghent");
  customer_.ShipToAddress2(4, "Third floor");
  customer_.ShipToState(5, "East Flanders");
  customer_.ShipToZipcode(6, "9000");
  customer_.ShipToCountry(7, "Belgium");
  customer_.ShipToSalesTaxCode(8, "FREE");
  customer_.ShipToGUID(9, SomeGUID);
  ASSERT_EQ(customer_.Update(), StatusSuccess);
  EXPECT_EQ(StoredNumbers(Adams), (Numbers{1, 2, 3}));
}

TEST_F(CustomerAddressSave, DeletesAnAddressThatLostNameFirstLineAndCity) {
  AddAddressIn("Ghent", Adams, BillTo);
  AddAddress(Adams, 3, [](Tovrin2Record& record) {
    record.SetText(AddressRecord::Name, "Warehouse");
    record.SetText(AddressRecord::AddressLine1, "Quay 4");
    record.SetText(AddressRecord::AddressLine2, "Third floor");
    record.SetText(AddressRecord::City, "Bruges");
    record.SetText(AddressRecord::Zipcode, "8000");
  });
  AddAddressIn("Hamme", Baker, 3);
  customer_.ShipToName(3, "");
  customer_.ShipToAddress1(3, "");
  customer_.ShipToCity(3, "");
  ASSERT_EQ(customer_.Update(), StatusSuccess);
  EXPECT_EQ(StoredNumbers(Adams), Numbers{BillTo});
  EXPECT_EQ(StoredNumbers(Baker), Numbers{3});
}

TEST_F(CustomerAddressSave, NeedsAnAccessToAnyAddressBefore) {
  AddAddressIn("", Adams, 5);
  ASSERT_EQ(customer_.Update(), StatusSuccess);
  EXPECT_EQ(StoredNumbers(Adams), Numbers{5}) << "an empty address would have been deleted";
  EXPECT_FALSE(IsHeldOpen(AddressFile()));
  EXPECT_EQ(customer_.BillToState(), "");
  ASSERT_EQ(customer_.Update(), StatusSuccess);
  EXPECT_EQ(StoredNumbers(Adams), Numbers{});
}

TEST_F(CustomerAddressSave, NeedsAWriteThatSucceeds) {
  customer_.BillToCity("Ghent");
  EXPECT_EQ(customer_.Insert(), StatusDuplicateKey);
  EXPECT_EQ(StoredNumbers(Adams), Numbers{});
  Customer other = Reader("ADAMS");
  other.Contact("Rosa");
  ASSERT_EQ(other.Update(), StatusSuccess);
  EXPECT_EQ(customer_.Update(), StatusRecordConflict);
  EXPECT_EQ(StoredNumbers(Adams), Numbers{});
}

// The addresses in hand go to whichever customer is written.
TEST_F(CustomerAddressSave, OfAnotherCustomerWritesTheAddressesInHand) {
  AddAddressIn("Ghent", Adams, BillTo);
  AddAddressIn("Hamme", Baker, BillTo);
  AddAddressIn("Mechelen", Baker, 2);
  EXPECT_EQ(customer_.BillToCity(), "Ghent");
  ASSERT_EQ(customer_.GetEqual("BAKER"), StatusSuccess);
  ASSERT_EQ(customer_.Update(), StatusSuccess);
  EXPECT_EQ(StoredNumbers(Baker), Numbers{BillTo});
  EXPECT_EQ(StoredCity(Baker, BillTo), "Ghent");
  EXPECT_EQ(StoredCity(Adams, BillTo), "Ghent");
}

TEST_F(CustomerAddressSave, IsNotForgottenWhereTheFileWasMissing) {
  {
    const TakenAway away(AddressFile());
    customer_.BillToCity("Ghent");
    EXPECT_EQ(customer_.Update(), StatusSuccess);
  }
  EXPECT_EQ(StoredNumbers(Adams), Numbers{});
  EXPECT_EQ(customer_.Update(), StatusSuccess);
  EXPECT_EQ(StoredCity(Adams, BillTo), "Ghent");
}

TEST_F(CustomerAddressSave, ThatTheFileRefusesIsPassedOver) {
  AddAddressIn("Ghent", Adams, BillTo);
  test::ProtectFile(AddressFile(), /*allowRead=*/true);
  EXPECT_EQ(customer_.BillToCity(), "Ghent");
  customer_.BillToCity("Bruges");
  customer_.ShipToCity(1, "Ostend");
  EXPECT_EQ(customer_.Update(), StatusSuccess);
  EXPECT_EQ(StoredNumbers(Adams), Numbers{BillTo});
  EXPECT_EQ(StoredCity(Adams, BillTo), "Ghent");
}

TEST_F(CustomerAddressSave, DoesNotHappenAtCloseFile) {
  customer_.BillToCity("Ghent");
  ASSERT_EQ(customer_.CloseFile(), StatusSuccess);
  EXPECT_EQ(StoredNumbers(Adams), Numbers{});
}

TEST_F(CustomerAddressSave, DoesNotHappenAtDelete) {
  AddAddressIn("Ghent", Adams, BillTo);
  EXPECT_EQ(customer_.BillToCity(), "Ghent");
  ASSERT_EQ(customer_.Delete(), StatusSuccess);
  EXPECT_EQ(StoredNumbers(Adams), Numbers{BillTo}) << "the addresses outlive their customer";
}

// --- One save for each OpenFile ---

// The save releases the file and goes on to take it for open.
TEST_F(CustomerAddressSaveOnce, SecondSaveWritesNothing) {
  customer_.BillToCity("Ghent");
  ASSERT_EQ(customer_.Update(), StatusSuccess);
  customer_.BillToCity("Bruges");
  EXPECT_EQ(customer_.BillToCity(), "Bruges");
  EXPECT_EQ(customer_.Update(), StatusSuccess);
  EXPECT_EQ(StoredCity(Adams, BillTo), "Ghent");
}

TEST_F(CustomerAddressSaveOnce, OtherCustomersHaveEmptyAddressesAfterIt) {
  AddAddressIn("Hamme", Baker, BillTo);
  customer_.BillToCity("Ghent");
  ASSERT_EQ(customer_.Update(), StatusSuccess);
  ASSERT_EQ(customer_.GetEqual("BAKER"), StatusSuccess);
  EXPECT_EQ(customer_.BillToCity(), "");
  ASSERT_EQ(customer_.Update(), StatusSuccess);
  EXPECT_EQ(StoredCity(Baker, BillTo), "Hamme") << "nor does a save delete them";
}

TEST_F(CustomerAddressSaveOnce, OpenFileMakesRoomForTheNext) {
  customer_.BillToCity("Ghent");
  ASSERT_EQ(customer_.Update(), StatusSuccess);
  ASSERT_EQ(customer_.OpenFile(), StatusSuccess);
  ASSERT_EQ(customer_.GetEqual("ADAMS"), StatusSuccess);
  EXPECT_EQ(customer_.BillToCity(), "Ghent");
  customer_.BillToCity("Bruges");
  ASSERT_EQ(customer_.Update(), StatusSuccess);
  EXPECT_EQ(StoredCity(Adams, BillTo), "Bruges");
}

// --- The address file ---

TEST_F(CustomerAddressFile, StaysOpenFromTheFirstAccessToCloseFile) {
  EXPECT_FALSE(IsHeldOpen(AddressFile()));
  EXPECT_EQ(customer_.BillToCity(), "");
  EXPECT_TRUE(IsHeldOpen(AddressFile()));
  EXPECT_EQ(customer_.CloseFile(), StatusSuccess);
  EXPECT_FALSE(IsHeldOpen(AddressFile()));
}

TEST_F(CustomerAddressFile, IsReleasedByASave) {
  customer_.BillToCity("Ghent");
  EXPECT_TRUE(IsHeldOpen(AddressFile()));
  ASSERT_EQ(customer_.Update(), StatusSuccess);
  EXPECT_FALSE(IsHeldOpen(AddressFile()));
  EXPECT_EQ(customer_.CloseFile(), StatusSuccess);
}

TEST_F(CustomerAddressFile, StaysOpenFromASecondOpenFileToDestruction) {
  {
    Customer customer = Reader("ADAMS");
    EXPECT_EQ(customer.BillToCity(), "");
    ASSERT_EQ(customer.OpenFile(), StatusSuccess);
    EXPECT_TRUE(IsHeldOpen(AddressFile()));
    ASSERT_EQ(customer.CloseFile(), StatusSuccess);
    EXPECT_TRUE(IsHeldOpen(AddressFile()));
  }
  EXPECT_FALSE(IsHeldOpen(AddressFile()));
}

TEST_F(CustomerAddressFile, ThatIsMissingIsTriedAgainForTheNextCustomer) {
  AddAddressIn("Ghent", Adams, BillTo);
  AddAddressIn("Hamme", Baker, BillTo);
  {
    const TakenAway away(AddressFile());
    EXPECT_EQ(customer_.BillToCity(), "");
  }
  EXPECT_EQ(customer_.BillToCity(), "");
  ASSERT_EQ(customer_.GetEqual("BAKER"), StatusSuccess);
  EXPECT_EQ(customer_.BillToCity(), "Hamme");
  ASSERT_EQ(customer_.GetEqual("ADAMS"), StatusSuccess);
  EXPECT_EQ(customer_.BillToCity(), "Ghent");
}

// The save finds empty addresses in hand, and the file there again.
TEST_F(CustomerAddressFile, ThatWasMissingLosesTheAddressesAtTheSave) {
  AddAddressIn("Ghent", Adams, BillTo);
  {
    const TakenAway away(AddressFile());
    EXPECT_EQ(customer_.BillToCity(), "");
  }
  ASSERT_EQ(customer_.Update(), StatusSuccess);
  EXPECT_EQ(StoredNumbers(Adams), Numbers{});
}

TEST_F(CustomerAddressFile, OfAnotherOwnerReadsEmptyAndIsNotWritten) {
  AddAddressIn("Ghent", Adams, BillTo);
  test::ProtectFile(AddressFile(), /*allowRead=*/false);
  EXPECT_EQ(customer_.BillToCity(), "");
  customer_.BillToCity("Bruges");
  EXPECT_EQ(customer_.Update(), StatusSuccess);
  EXPECT_EQ(customer_.CloseFile(), StatusSuccess);
  ASSERT_EQ(store::DefaultDriver().ClearOwner(AddressFile(), "someone"), StatusSuccess);
  EXPECT_EQ(StoredCity(Adams, BillTo), "Ghent");
}

TEST_F(CustomerAddressFile, ThatCannotBeWrittenReadsEmpty) {
  AddAddressIn("Ghent", Adams, BillTo);
  test::WhereOnlyThisIsReadOnly(AddressFile(), [] {
    Customer customer = Reader("ADAMS");
    EXPECT_EQ(customer.BillToCity(), "");
    customer.BillToCity("Bruges");
    EXPECT_EQ(customer.Update(), StatusSuccess);
  });
  EXPECT_EQ(StoredCity(Adams, BillTo), "Ghent");
}

TEST_F(CustomerAddressFile, ThatFailsToCloseIsNotTold) {
  test::RunInChild([&] {
    Customer customer = Reader("ADAMS");
    EXPECT_EQ(customer.BillToCity(), "");
    AddAddressIn("Hamme", Baker, BillTo);
    test::BreakDisk(AddressFile());
    EXPECT_EQ(customer.CloseFile(), StatusSuccess);
  });
}

// --- Customers that were never saved ---

TEST_F(CustomerWithoutIndex, HasEmptyAddressesAndOpensNoFile) {
  AddAddressIn("Ghent", 0, BillTo);
  customer_.CustomerID("DUNN");
  customer_.Index(0);
  EXPECT_EQ(customer_.BillToCity(), "");
  EXPECT_EQ(customer_.ShipToCity(20), "");
  EXPECT_FALSE(IsHeldOpen(AddressFile()));
}

TEST_F(CustomerWithoutIndex, SavesItsAddressesByTheIndexThatInsertGives) {
  ASSERT_EQ(customer_.OpenFile(), StatusSuccess);
  customer_.CustomerID("DUNN");
  customer_.BillToCity("Ghent");
  customer_.ShipToCity(2, "Bruges");
  ASSERT_EQ(customer_.Insert(), StatusSuccess);
  ASSERT_EQ(customer_.Index(), Adams + 1);
  EXPECT_EQ(StoredNumbers(Adams + 1), (Numbers{BillTo, 2}));
  EXPECT_EQ(StoredCity(Adams + 1, 2), "Bruges");
}

TEST_F(CustomerWithoutIndex, WithoutAnIDEitherHasEmptyAddressesThatAreNotSaved) {
  ASSERT_EQ(customer_.OpenFile(), StatusSuccess);
  EXPECT_EQ(customer_.BillToCity(), "");
  EXPECT_EQ(customer_.ShipToCity(20), "");
  EXPECT_EQ(customer_.BillToLastUpdateCounter(), 0);
  customer_.BillToCity("Ghent");
  ASSERT_EQ(customer_.Insert(), StatusSuccess);
  EXPECT_EQ(StoredNumbers(customer_.Index()), Numbers{});
  EXPECT_FALSE(IsHeldOpen(AddressFile()));
}

TEST_F(CustomerWithoutIndex, GivenAnIDLosesTheAddressesAssignedBefore) {
  ASSERT_EQ(customer_.OpenFile(), StatusSuccess);
  customer_.BillToCity("Ghent");
  customer_.CustomerID("DUNN");
  EXPECT_EQ(customer_.BillToCity(), "");
}

}  // namespace
}  // namespace larkmoor
