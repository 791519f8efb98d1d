// The fields of the class Customer that the record keeps in another form than clients see: two
// accounts and the sales representative, which are texts below release 11 and indexes into other
// files from 11 on, and the ship method, a number below release 13 and from 13 on a text out of the
// company's settings.
#include <array>
#include <cstdint>
#include <filesystem>
#include <ostream>
#include <string>
#include <string_view>

#include <gtest/gtest.h>

#include <larkmoor/masters/customer.h>
#include <larkmoor/status.h>

#include "connection/status_messages.h"
#include "engine/records/chart.h"
#include "engine/records/customer.h"
#include "engine/records/default_ship_method.h"
#include "engine/records/employee.h"
#include "engine/store/driver.h"
#include "engine/tovrin_file_names.h"
#include "support/accounts.h"
#include "support/child_process.h"
#include "support/company.h"
#include "support/errors.h"
#include "support/failing_disk.h"
#include "support/masters.h"
#include "support/raised_errors.h"
#include "support/read_only_file.h"
#include "support/record_files.h"
#include "support/taken_away.h"

namespace larkmoor {
namespace {

using test::AddAccount;
using test::AddEmployee;
using test::Company;
using test::ExpectRaised;
using test::IsHeldOpen;
using test::OpenRecordFile;
using test::RaisedNumber;
using test::TakenAway;

/// A company of a release and an object open on its customers, with a blank record in hand.
class CustomerLookUpTest : public testing::Test {
 protected:
  explicit CustomerLookUpTest(double release = 19.0) : company_(release) {
    EXPECT_EQ(customer_.OpenFile(), StatusSuccess);
    customer_.CustomerID("ADAMS");
  }

  std::filesystem::path File(std::string_view name) const { return company_.Folder() / name; }
  std::filesystem::path ChartFile() const { return File(TovrinFileNames::ChartFile()); }
  std::filesystem::path CustomerFile() const { return File(TovrinFileNames::CustomerFile()); }
  std::filesystem::path EmployeeFile() const { return File(TovrinFileNames::EmployeeFile()); }
  std::filesystem::path GeneralFile() const { return File(TovrinFileNames::GeneralFile()); }

  /// An index of the only customer on file.
  std::int32_t StoredIndex(const Field& field) {
    OpenRecordFile file(CustomerFile(), CustomerRecord::Describe());
    EXPECT_EQ(file.File().btStepFirst(), StatusSuccess);
    return file.Record().GetLong(field);
  }

  Company company_;
  Customer customer_;
};

// --- Accounts ---

/// A property that shows an account.
struct AccountProperty {
  const char* name;
  std::string (Customer::*get)();
  void (Customer::*let)(std::string_view);
  const Field* index;
};

void PrintTo(const AccountProperty& property, std::ostream* out) { *out << property.name; }

const AccountProperty AccountProperties[] = {
    {"GLSalesAccount", &Customer::GLSalesAccount, &Customer::GLSalesAccount,
     &CustomerRecord::GLSalesAccountIndex},
    {"PaymentAccount", &Customer::PaymentAccount, &Customer::PaymentAccount,
     &CustomerRecord::PaymentAccountIndex},
};

std::string NameOfAccount(const testing::TestParamInfo<AccountProperty>& tested) {
  return tested.param.name;
}

class CustomerAccount : public CustomerLookUpTest,
                        public testing::WithParamInterface<AccountProperty> {
 protected:
  explicit CustomerAccount(double release = 19.0) : CustomerLookUpTest(release) {
    AddAccount(company_.Folder(), {"4000", 17});
    AddAccount(company_.Folder(), {"5000", 18});
  }

  std::string Get() { return GetFrom(customer_); }
  void Let(std::string_view id) { (customer_.*GetParam().let)(id); }
  static std::string GetFrom(Customer& customer) { return (customer.*GetParam().get)(); }

  static std::string OpenStep() {
    return "Customer." + std::string(GetParam().name) + "=>Chart.OpenFile";
  }
  static std::string ReadStep(std::int32_t index) {
    return "Customer." + std::string(GetParam().name) + "=>Chart.GetEqual(" +
           std::to_string(index) + ")";
  }

  /// Changes the record of account 17 on file.
  template <typename Change>
  void ChangeAccount(Change&& change) {
    OpenRecordFile chart(ChartFile(), ChartRecord::Describe());
    chart.File().KeyLong(17, 0);
    ASSERT_EQ(chart.File().btGetEqual(3), StatusSuccess);
    change(chart);
  }
  void DeleteAccount() {
    ChangeAccount([](OpenRecordFile& chart) { EXPECT_EQ(chart.File().btDelete(), StatusSuccess); });
  }
};

TEST_P(CustomerAccount, IsStoredAsTheIndexAndShownAsTheID) {
  Let("4000");
  EXPECT_EQ(Get(), "4000");
  ASSERT_EQ(customer_.Insert(), StatusSuccess);
  EXPECT_EQ(StoredIndex(*GetParam().index), 17);
  Customer reader;
  ASSERT_EQ(reader.OpenFile(), StatusSuccess);
  ASSERT_EQ(reader.GetEqual("ADAMS"), StatusSuccess);
  EXPECT_EQ(GetFrom(reader), "4000");
}

TEST_P(CustomerAccount, ShowsTheIDThatTheAccountHasNow) {
  Let("4000");
  ChangeAccount([](OpenRecordFile& chart) {
    chart.Record().SetText(ChartRecord::AccountID, "4100");
    EXPECT_EQ(chart.File().btUpdate(3), StatusSuccess);
  });
  EXPECT_EQ(Get(), "4100");
}

TEST_P(CustomerAccount, OfIndex0IsEmptyAndOpensNoFile) {
  std::filesystem::remove(ChartFile());
  EXPECT_EQ(Get(), "");
}

TEST_P(CustomerAccount, BecomesIndex0ByTheEmptyIDAndOpensNoFile) {
  Let("4000");
  ASSERT_EQ(customer_.Insert(), StatusSuccess);
  ASSERT_EQ(customer_.CloseFile(), StatusSuccess);
  ASSERT_EQ(customer_.OpenFile(), StatusSuccess);
  ASSERT_EQ(customer_.GetEqual("ADAMS"), StatusSuccess);
  std::filesystem::remove(ChartFile());
  Let("");
  EXPECT_EQ(Get(), "");
  ASSERT_EQ(customer_.Update(), StatusSuccess);
  EXPECT_EQ(StoredIndex(*GetParam().index), 0);
}

TEST_P(CustomerAccount, OfAnUnknownIndexRaises) {
  Let("4000");
  DeleteAccount();
  ExpectRaised([&] { return Get(); }, ErrorRead, ReadStep(17), StatusKeyNotFound);
}

// The message names no account, and bears the number of a failing read.
TEST_P(CustomerAccount, AssignedAnUnknownIDRaisesWith0AndStaysAsItWas) {
  Let("4000");
  for (const char* id : {"9999", "400", "40000", "4000 "}) {
    ExpectRaised([&] { Let(id); }, ErrorRead, ReadStep(0), StatusKeyNotFound);
    EXPECT_EQ(Get(), "4000") << id;
  }
}

TEST_P(CustomerAccount, WithoutTheFileRaisesAtEachTryAndStaysAsItWas) {
  Let("4000");
  ASSERT_EQ(customer_.Insert(), StatusSuccess);
  Customer reader;
  ASSERT_EQ(reader.OpenFile(), StatusSuccess);
  ASSERT_EQ(reader.GetEqual("ADAMS"), StatusSuccess);
  {
    const TakenAway away(ChartFile());
    ExpectRaised([&] { return GetFrom(reader); }, ErrorOpen, OpenStep(), StatusFileNotFound);
    ExpectRaised([&] { return GetFrom(reader); }, ErrorOpen, OpenStep(), StatusFileNotFound);
    ExpectRaised([&] { (reader.*GetParam().let)("5000"); }, ErrorOpen, OpenStep(),
                 StatusFileNotFound);
  }
  EXPECT_EQ(GetFrom(reader), "4000");
}

// A file of another owner is no exception here.
TEST_P(CustomerAccount, OfAChartOfAnotherOwnerRaisesAtEachTry) {
  test::ProtectFile(ChartFile(), /*allowRead=*/false);
  ExpectRaised([&] { Let("4000"); }, ErrorOpen, OpenStep(), StatusInvalidOwner);
  ExpectRaised([&] { Let("4000"); }, ErrorOpen, OpenStep(), StatusInvalidOwner);
  ASSERT_EQ(store::DefaultDriver().ClearOwner(ChartFile(), "someone"), StatusSuccess);
  Let("4000");
  EXPECT_EQ(Get(), "4000");
}

TEST_P(CustomerAccount, OfAChartThatCannotBeWrittenRaises) {
  test::WhereOnlyThisIsReadOnly(ChartFile(), [] {
    Customer customer;
    ASSERT_EQ(customer.OpenFile(), StatusSuccess);
    ExpectRaised([&] { (customer.*GetParam().let)("4000"); }, ErrorOpen, OpenStep(),
                 StatusPermission);
  });
}

TEST_P(CustomerAccount, KeepsTheChartOpenUntilCloseFile) {
  EXPECT_FALSE(IsHeldOpen(ChartFile()));
  Let("4000");
  EXPECT_TRUE(IsHeldOpen(ChartFile()));
  EXPECT_EQ(customer_.CloseFile(), StatusSuccess);
  EXPECT_FALSE(IsHeldOpen(ChartFile()));
}

TEST_P(CustomerAccount, KeepsTheChartOpenAfterAnIDThatIsUnknown) {
  EXPECT_EQ(RaisedNumber([&] { Let("9999"); }), ErrorRead);
  EXPECT_TRUE(IsHeldOpen(ChartFile()));
}

TEST_P(CustomerAccount, KeepsNoChartOpenAtDestruction) {
  {
    Customer customer;
    ASSERT_EQ(customer.OpenFile(), StatusSuccess);
    (customer.*GetParam().let)("4000");
    ASSERT_TRUE(IsHeldOpen(ChartFile()));
  }
  EXPECT_FALSE(IsHeldOpen(ChartFile()));
}

INSTANTIATE_TEST_SUITE_P(Customer, CustomerAccount, testing::ValuesIn(AccountProperties),
                         NameOfAccount);

class CustomerAccountBelow11 : public CustomerAccount {
 protected:
  CustomerAccountBelow11() : CustomerAccount(10.9) { std::filesystem::remove(ChartFile()); }
};

TEST_P(CustomerAccountBelow11, IsTheTextItself) {
  Let("no account at all");
  EXPECT_EQ(Get(), "no account at all");
  ASSERT_EQ(customer_.Insert(), StatusSuccess);
  EXPECT_EQ(StoredIndex(*GetParam().index), 0);
  Customer reader;
  ASSERT_EQ(reader.OpenFile(), StatusSuccess);
  ASSERT_EQ(reader.GetEqual("ADAMS"), StatusSuccess);
  EXPECT_EQ(GetFrom(reader), "no account at all");
}

TEST_P(CustomerAccountBelow11, MayBecomeEmpty) {
  Let("4000");
  Let("");
  EXPECT_EQ(Get(), "");
}

INSTANTIATE_TEST_SUITE_P(Customer, CustomerAccountBelow11, testing::ValuesIn(AccountProperties),
                         NameOfAccount);

class CustomerAccountFrom11 : public CustomerAccount {
 protected:
  CustomerAccountFrom11() : CustomerAccount(11.0) {}
};

TEST_P(CustomerAccountFrom11, IsLookedUp) {
  ExpectRaised([&] { Let("no account at all"); }, ErrorRead, ReadStep(0), StatusKeyNotFound);
  EXPECT_EQ(Get(), "");
  Let("4000");
  EXPECT_EQ(Get(), "4000");
}

INSTANTIATE_TEST_SUITE_P(Customer, CustomerAccountFrom11, testing::ValuesIn(AccountProperties),
                         NameOfAccount);

using CustomerAccounts = CustomerLookUpTest;

TEST_F(CustomerAccounts, AreTwo) {
  AddAccount(company_.Folder(), {"4000", 17});
  AddAccount(company_.Folder(), {"1000", 18});
  customer_.GLSalesAccount("4000");
  customer_.PaymentAccount("1000");
  EXPECT_EQ(customer_.GLSalesAccount(), "4000");
  EXPECT_EQ(customer_.PaymentAccount(), "1000");
}

TEST(CustomerAccountTexts, AreTwo) {
  Customer customer;  // an object that was never opened knows no release
  customer.GLSalesAccount("4000");
  customer.PaymentAccount("1000");
  customer.SalesRepID("ROSA");
  EXPECT_EQ(customer.GLSalesAccount(), "4000");
  EXPECT_EQ(customer.PaymentAccount(), "1000");
  EXPECT_EQ(customer.SalesRepID(), "ROSA");
}

// --- Sales representative ---

class CustomerSalesRep : public CustomerLookUpTest {
 protected:
  explicit CustomerSalesRep(double release = 19.0) : CustomerLookUpTest(release) {
    AddEmployee(company_.Folder(), {"ROSA", 7});
    AddEmployee(company_.Folder(), {"TOM", 8});
  }
};

constexpr std::string_view OpenOfEmployees = "Customer.SalesRepID=>Employee.OpenFile";

TEST_F(CustomerSalesRep, IsStoredAsTheIndexAndShownAsTheID) {
  customer_.SalesRepID("ROSA");
  EXPECT_EQ(customer_.SalesRepIndex(), 7);
  EXPECT_EQ(customer_.SalesRepID(), "ROSA");
  customer_.SalesRepIndex(8);
  EXPECT_EQ(customer_.SalesRepID(), "TOM");
  ASSERT_EQ(customer_.Insert(), StatusSuccess);
  EXPECT_EQ(StoredIndex(CustomerRecord::SalesRepIndex), 8);
}

TEST_F(CustomerSalesRep, OfIndex0IsEmptyAndOpensNoFile) {
  std::filesystem::remove(EmployeeFile());
  EXPECT_EQ(customer_.SalesRepID(), "");
}

// Unlike the accounts, it cannot be cleared this way.
TEST_F(CustomerSalesRep, StaysAsItWasByTheEmptyIDAndOpensNoFile) {
  customer_.SalesRepIndex(7);
  {
    const TakenAway away(EmployeeFile());
    customer_.SalesRepID("");
    EXPECT_EQ(customer_.SalesRepIndex(), 7);
  }
  EXPECT_EQ(customer_.SalesRepID(), "ROSA");
}

TEST_F(CustomerSalesRep, OfAnUnknownIndexRaises) {
  customer_.SalesRepIndex(9);
  ExpectRaised([&] { return customer_.SalesRepID(); }, ErrorRead,
               "Customer.SalesRepID=>Employee.GetEqual(9)", StatusKeyNotFound);
}

TEST_F(CustomerSalesRep, AssignedAnUnknownIDRaisesWith0AndStaysAsItWas) {
  customer_.SalesRepID("ROSA");
  for (const char* id : {"NOBODY", "ROS", "ROSAMUND", "Rosa"}) {
    ExpectRaised([&] { customer_.SalesRepID(id); }, ErrorRead,
                 "Customer.SalesRepID=>Employee.GetEqual(0)", StatusKeyNotFound);
    EXPECT_EQ(customer_.SalesRepIndex(), 7) << id;
  }
}

TEST_F(CustomerSalesRep, WithoutTheFileRaisesAtEachTryAndStaysAsItWas) {
  customer_.SalesRepIndex(7);
  {
    const TakenAway away(EmployeeFile());
    ExpectRaised([&] { return customer_.SalesRepID(); }, ErrorOpen, OpenOfEmployees,
                 StatusFileNotFound);
    ExpectRaised([&] { customer_.SalesRepID("TOM"); }, ErrorOpen, OpenOfEmployees,
                 StatusFileNotFound);
  }
  EXPECT_EQ(customer_.SalesRepID(), "ROSA");
}

TEST_F(CustomerSalesRep, OfAFileOfAnotherOwnerRaisesAtEachTry) {
  test::ProtectFile(EmployeeFile(), /*allowRead=*/false);
  for (int tries = 0; tries < 2; ++tries) {
    ExpectRaised([&] { customer_.SalesRepID("ROSA"); }, ErrorOpen, OpenOfEmployees,
                 StatusInvalidOwner);
  }
}

TEST_F(CustomerSalesRep, OfAFileThatCannotBeWrittenRaises) {
  test::WhereOnlyThisIsReadOnly(EmployeeFile(), [] {
    Customer customer;
    ASSERT_EQ(customer.OpenFile(), StatusSuccess);
    ExpectRaised([&] { customer.SalesRepID("ROSA"); }, ErrorOpen, OpenOfEmployees,
                 StatusPermission);
  });
}

TEST_F(CustomerSalesRep, KeepsTheEmployeesOpenUntilCloseFile) {
  EXPECT_FALSE(IsHeldOpen(EmployeeFile()));
  customer_.SalesRepID("ROSA");
  EXPECT_TRUE(IsHeldOpen(EmployeeFile()));
  EXPECT_FALSE(IsHeldOpen(ChartFile()));
  EXPECT_EQ(customer_.CloseFile(), StatusSuccess);
  EXPECT_FALSE(IsHeldOpen(EmployeeFile()));
}

class CustomerSalesRepBelow11 : public CustomerSalesRep {
 protected:
  CustomerSalesRepBelow11() : CustomerSalesRep(10.9) {}
};

TEST_F(CustomerSalesRepBelow11, IsATextBesideTheIndex) {
  std::filesystem::remove(EmployeeFile());
  customer_.SalesRepIndex(7);
  EXPECT_EQ(customer_.SalesRepID(), "");
  customer_.SalesRepID("nobody at all");
  EXPECT_EQ(customer_.SalesRepID(), "nobody at all");
  EXPECT_EQ(customer_.SalesRepIndex(), 7);
  customer_.SalesRepID("");
  EXPECT_EQ(customer_.SalesRepID(), "");
}

class CustomerSalesRepFrom11 : public CustomerSalesRep {
 protected:
  CustomerSalesRepFrom11() : CustomerSalesRep(11.0) {}
};

TEST_F(CustomerSalesRepFrom11, IsLookedUp) {
  customer_.SalesRepIndex(7);
  EXPECT_EQ(customer_.SalesRepID(), "ROSA");
  customer_.SalesRepID("TOM");
  EXPECT_EQ(customer_.SalesRepIndex(), 8);
}

// --- The files of the look-ups over a second OpenFile ---

using CustomerLookUpFiles = CustomerSalesRep;

// OpenFile takes them for closed, so that the CloseFile after it passes them over.
TEST_F(CustomerLookUpFiles, StayOpenFromASecondOpenFileToDestruction) {
  AddAccount(company_.Folder(), {"4000", 17});
  {
    Customer customer;
    ASSERT_EQ(customer.OpenFile(), StatusSuccess);
    customer.GLSalesAccount("4000");
    customer.SalesRepID("ROSA");
    ASSERT_EQ(customer.OpenFile(), StatusSuccess);
    EXPECT_TRUE(IsHeldOpen(ChartFile()));
    EXPECT_TRUE(IsHeldOpen(EmployeeFile()));
    ASSERT_EQ(customer.CloseFile(), StatusSuccess);
    EXPECT_TRUE(IsHeldOpen(ChartFile()));
    EXPECT_TRUE(IsHeldOpen(EmployeeFile()));
  }
  EXPECT_FALSE(IsHeldOpen(ChartFile()));
  EXPECT_FALSE(IsHeldOpen(EmployeeFile()));
}

TEST_F(CustomerLookUpFiles, AreOpenedAgainAfterASecondOpenFile) {
  AddAccount(company_.Folder(), {"4000", 17});
  customer_.GLSalesAccount("4000");
  customer_.SalesRepID("ROSA");
  ASSERT_EQ(customer_.OpenFile(), StatusSuccess);
  customer_.GLSalesAccount("4000");
  customer_.SalesRepID("ROSA");
  EXPECT_EQ(customer_.GLSalesAccount(), "4000");
  EXPECT_EQ(customer_.SalesRepID(), "ROSA");
  EXPECT_EQ(customer_.CloseFile(), StatusSuccess);
  EXPECT_FALSE(IsHeldOpen(ChartFile()));
  EXPECT_FALSE(IsHeldOpen(EmployeeFile()));
}

TEST_F(CustomerLookUpFiles, ThatFailToCloseAreNotTold) {
  test::RunInChild([&] {
    Customer customer;
    ASSERT_EQ(customer.OpenFile(), StatusSuccess);
    customer.SalesRepID("ROSA");
    AddEmployee(company_.Folder(), {"UMA", 9});
    test::BreakDisk(EmployeeFile());
    EXPECT_EQ(customer.CloseFile(), StatusSuccess);
    EXPECT_EQ(customer.CloseFile(), StatusSuccess);
  });
}

// --- Ship method ---

/// The ten ship methods of a company.
using Methods = std::array<std::string_view, 10>;
constexpr Methods TenMethods = {"Airborne", "Courier", "Hand", "Mail",   "Pick-up",
                                "Rail",     "Road",    "Sea",  "Tender", "Van"};
/// The same without the third.
constexpr Methods NineMethods = {"Airborne", "Courier", "",    "Mail",   "Pick-up",
                                 "Rail",     "Road",    "Sea", "Tender", "Van"};

class CustomerShipVia : public CustomerLookUpTest {
 protected:
  explicit CustomerShipVia(double release = 13.0) : CustomerLookUpTest(release) {
    SetMethods(TenMethods);
  }

  void SetMethods(const Methods& methods) {
    ChangeRow([&](OpenRecordFile& general) {
      int number = 1;
      for (const std::string_view method : methods) {
        general.Record().SetText(DefaultShipMethodRecord::Description, method, number++);
      }
      EXPECT_EQ(general.File().btUpdate(0), StatusSuccess);
    });
  }
  void DeleteRow() {
    ChangeRow([](OpenRecordFile& general) { EXPECT_EQ(general.File().btDelete(), StatusSuccess); });
  }

  /// The text of the ship method of a customer on file.
  std::string StoredText(std::string_view id) {
    OpenRecordFile file(CustomerFile(), CustomerRecord::Describe());
    file.File().KeyTerminated(id, 0);
    EXPECT_EQ(file.File().btGetEqual(0), StatusSuccess) << id;
    return file.Record().GetText(CustomerRecord::ShipViaText);
  }

  /// Adds a customer with that text on file and reads it into `customer_`.
  void ReadCustomerThatShipsBy(std::string_view text) {
    OpenRecordFile(CustomerFile(), CustomerRecord::Describe()).Add([&](Tovrin2Record& record) {
      record.SetText(CustomerRecord::CustomerID, text);
      record.SetText(CustomerRecord::ShipViaText, text);
    });
    ASSERT_EQ(customer_.GetEqual(text), StatusSuccess);
  }

 private:
  template <typename Change>
  void ChangeRow(Change&& change) {
    OpenRecordFile general(GeneralFile(), DefaultShipMethodRecord::Describe());
    constexpr std::int16_t ShipMethodRow = 7;
    ASSERT_EQ(general.ReadRow(ShipMethodRow), StatusSuccess);
    change(general);
  }
};

TEST_F(CustomerShipVia, ReadsOneLessThanTheNumberOfTheMethod) {
  ReadCustomerThatShipsBy("Airborne");
  EXPECT_EQ(customer_.ShipVia(), 0);
  ReadCustomerThatShipsBy("Courier");
  EXPECT_EQ(customer_.ShipVia(), 1);
  ReadCustomerThatShipsBy("Van");
  EXPECT_EQ(customer_.ShipVia(), 9);
}

TEST_F(CustomerShipVia, IsAssignedTheNumberOfTheMethodItself) {
  customer_.ShipVia(2);
  EXPECT_EQ(customer_.ShipVia(), 1);
  ASSERT_EQ(customer_.Insert(), StatusSuccess);
  EXPECT_EQ(StoredText("ADAMS"), "Courier");
}

TEST_F(CustomerShipVia, ReadsOneLessThanWasAssigned) {
  for (std::uint8_t method = 1; method <= 10; ++method) {
    customer_.ShipVia(method);
    EXPECT_EQ(customer_.ShipVia(), method - 1);
  }
}

TEST_F(CustomerShipVia, IsClearedBy0) {
  ReadCustomerThatShipsBy("Courier");
  customer_.ShipVia(0);
  EXPECT_EQ(customer_.ShipVia(), 0);
  ASSERT_EQ(customer_.Update(), StatusSuccess);
  EXPECT_EQ(StoredText("Courier"), "");
}

TEST_F(CustomerShipVia, Above10Raises9AndStaysAsItWas) {
  customer_.ShipVia(5);
  for (const std::uint8_t method : {std::uint8_t{11}, std::uint8_t{255}}) {
    EXPECT_EQ(RaisedNumber([&] { customer_.ShipVia(method); }), 9);
    EXPECT_EQ(customer_.ShipVia(), 4);
  }
}

TEST_F(CustomerShipVia, OfATextThatNoMethodIsReads0) {
  for (const char* text : {"Balloon", "courier", "Courier ", "Cour"}) {
    ReadCustomerThatShipsBy(text);
    EXPECT_EQ(customer_.ShipVia(), 0) << text;
  }
}

TEST_F(CustomerShipVia, WithoutATextIsTheFirstMethodWithoutOne) {
  EXPECT_EQ(customer_.ShipVia(), 0);
  SetMethods(NineMethods);
  ASSERT_EQ(customer_.OpenFile(), StatusSuccess);
  EXPECT_EQ(customer_.ShipVia(), 2);
}

TEST_F(CustomerShipVia, IsTheFirstOfTwoMethodsOfOneName) {
  Methods methods = TenMethods;
  methods[7] = "Courier";
  SetMethods(methods);
  customer_.ShipVia(8);
  EXPECT_EQ(customer_.ShipVia(), 1);
}

TEST_F(CustomerShipVia, ReadsTheMethodsOnceAndAgainAfterOpenFile) {
  EXPECT_EQ(customer_.ShipVia(), 0);
  SetMethods({"Balloon"});
  customer_.ShipVia(2);
  EXPECT_EQ(customer_.ShipVia(), 1);
  ASSERT_EQ(customer_.OpenFile(), StatusSuccess);
  customer_.ShipVia(1);
  ASSERT_EQ(customer_.Insert(), StatusSuccess);
  EXPECT_EQ(StoredText(""), "Balloon");
}

TEST_F(CustomerShipVia, LeavesTheFileOfTheMethodsClosed) {
  EXPECT_EQ(customer_.ShipVia(), 0);
  EXPECT_FALSE(IsHeldOpen(GeneralFile()));
}

TEST_F(CustomerShipVia, WithoutTheFileTakesAllMethodsForEmptyUntilOpenFile) {
  ReadCustomerThatShipsBy("Courier");
  {
    const TakenAway away(GeneralFile());
    EXPECT_EQ(customer_.ShipVia(), 0);
  }
  EXPECT_EQ(customer_.ShipVia(), 0) << "a failure is not tried again";
  customer_.ShipVia(4);
  ASSERT_EQ(customer_.Update(), StatusSuccess);
  EXPECT_EQ(StoredText("Courier"), "") << "a method that is not known clears the text";
  ASSERT_EQ(customer_.OpenFile(), StatusSuccess);
  customer_.ShipVia(2);
  EXPECT_EQ(customer_.ShipVia(), 1);
}

TEST_F(CustomerShipVia, WithoutTheRowTakesAllMethodsForEmpty) {
  DeleteRow();
  ReadCustomerThatShipsBy("Courier");
  EXPECT_EQ(customer_.ShipVia(), 0);
  EXPECT_FALSE(IsHeldOpen(GeneralFile()));
}

TEST_F(CustomerShipVia, OfAFileOfAnotherOwnerTakesAllMethodsForEmpty) {
  test::ProtectFile(GeneralFile(), /*allowRead=*/false);
  ReadCustomerThatShipsBy("Courier");
  EXPECT_EQ(customer_.ShipVia(), 0);
}

TEST_F(CustomerShipVia, OfAFileThatCannotBeWrittenTakesAllMethodsForEmpty) {
  ReadCustomerThatShipsBy("Courier");
  test::WhereOnlyThisIsReadOnly(GeneralFile(), [] {
    Customer customer;
    ASSERT_EQ(customer.OpenFile(), StatusSuccess);
    ASSERT_EQ(customer.GetEqual("Courier"), StatusSuccess);
    EXPECT_EQ(customer.ShipVia(), 0);
  });
}

class CustomerShipViaBelow13 : public CustomerShipVia {
 protected:
  CustomerShipViaBelow13() : CustomerShipVia(12.9) {}
};

TEST_F(CustomerShipViaBelow13, IsTheNumberItself) {
  std::filesystem::remove(GeneralFile());
  for (const std::uint8_t method : {std::uint8_t{2}, std::uint8_t{11}, std::uint8_t{255}}) {
    customer_.ShipVia(method);
    EXPECT_EQ(customer_.ShipVia(), method);
  }
  ASSERT_EQ(customer_.Insert(), StatusSuccess);
  EXPECT_EQ(StoredText("ADAMS"), "");
}

TEST_F(CustomerShipViaBelow13, DoesNotLookAtTheText) {
  ReadCustomerThatShipsBy("Courier");
  EXPECT_EQ(customer_.ShipVia(), 0);
}

}  // namespace
}  // namespace larkmoor
