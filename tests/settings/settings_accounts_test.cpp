// The accounts of the company's settings, which are stored as indexes into the chart and shown as
// IDs. The chart is opened where it is first needed. One that refuses access is passed over in
// silence until the next OpenFile; one that the engine has closed meanwhile is opened again. An
// index that no account has reads as empty in GeneralData and raises in all other classes.
#include <cstdint>
#include <filesystem>
#include <optional>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include <larkmoor/status.h>
#include <larkmoor/variant.h>

#include "automation/automation.h"
#include "connection/status_messages.h"
#include "engine/records/chart.h"
#include "engine/records/default_customer_data.h"
#include "engine/records/default_employee_data.h"
#include "engine/records/default_ship_method.h"
#include "engine/records/default_vendor_data.h"
#include "engine/records/general_data.h"
#include "engine/store/driver.h"
#include "engine/tovrin_file.h"
#include "engine/tovrin_file_names.h"
#include "support/accounts.h"
#include "support/child_process.h"
#include "support/company.h"
#include "support/errors.h"
#include "support/failing_disk.h"
#include "support/raised_errors.h"
#include "support/read_only_file.h"
#include "support/record_files.h"
#include "support/settings_row.h"
#include "support/taken_away.h"

namespace larkmoor {
namespace {

using automation::Object;
using test::AddAccount;
using test::Company;
using test::ExpectRaised;
using test::IsHeldOpen;
using test::OpenRecordFile;
using test::RaisedNumber;
using test::SettingsRow;
using test::TakenAway;

// The accounts of every company here, and one that it has not.
constexpr std::int32_t Cash = 17;
constexpr std::int32_t Rent = 18;
constexpr std::int32_t Unknown = 99;

/// A property that shows an account, and the field behind it.
struct AccountProperty {
  std::string_view className;
  std::string_view name;
  const RecordDescription& (*record)();
  const Field* field;
  std::optional<std::int16_t> index = {};
};

void PrintTo(const AccountProperty& property, std::ostream* out) {
  *out << property.className << '.' << property.name;
}

std::string NameOf(const testing::TestParamInfo<AccountProperty>& tested) {
  return std::string(tested.param.className) + "_" + std::string(tested.param.name);
}

const AccountProperty AllProperties[] = {
    {"GeneralData", "BankRecAccount", GeneralDataRecord::Describe,
     &GeneralDataRecord::BankRecAccountIndex},
    {"GeneralData", "BBEquityAccount", GeneralDataRecord::Describe,
     &GeneralDataRecord::BBEquityAccountIndex},
    {"GeneralData", "CashAcnt", GeneralDataRecord::Describe, &GeneralDataRecord::CashAcntIndex},
    {"GeneralData", "LastAcntCashAcntReg", GeneralDataRecord::Describe,
     &GeneralDataRecord::LastAcntCashAcntRegIndex},
    {"GeneralData", "LastActRecAccnt", GeneralDataRecord::Describe,
     &GeneralDataRecord::LastActRecAccntIndex},
    {"GeneralData", "RoundingAccount", GeneralDataRecord::Describe,
     &GeneralDataRecord::RoundingAccountIndex},

    {"DefaultCustomerData", "ARAccount", DefaultCustomerDataRecord::Describe,
     &DefaultCustomerDataRecord::ARAccountIndex},
    {"DefaultCustomerData", "CashAccount", DefaultCustomerDataRecord::Describe,
     &DefaultCustomerDataRecord::CashAccountIndex},
    {"DefaultCustomerData", "DiscountGLAccount", DefaultCustomerDataRecord::Describe,
     &DefaultCustomerDataRecord::DiscountGLAccountIndex},
    {"DefaultCustomerData", "FCGLAccount", DefaultCustomerDataRecord::Describe,
     &DefaultCustomerDataRecord::FCGLAccountIndex},
    {"DefaultCustomerData", "GLSalesAccount", DefaultCustomerDataRecord::Describe,
     &DefaultCustomerDataRecord::GLSalesAccountIndex},
    {"DefaultCustomerData", "TaxAccount", DefaultCustomerDataRecord::Describe,
     &DefaultCustomerDataRecord::TaxAccountIndex},

    {"DefaultVendorData", "APAccount", DefaultVendorDataRecord::Describe,
     &DefaultVendorDataRecord::APAccountIndex},
    {"DefaultVendorData", "CashAccount", DefaultVendorDataRecord::Describe,
     &DefaultVendorDataRecord::CashAccountIndex},
    {"DefaultVendorData", "DiscountGLAccount", DefaultVendorDataRecord::Describe,
     &DefaultVendorDataRecord::DiscountGLAccountIndex},
    {"DefaultVendorData", "PurchaseAccount", DefaultVendorDataRecord::Describe,
     &DefaultVendorDataRecord::PurchaseAccountIndex},
    {"DefaultVendorData", "WriteCheckCashAccount", DefaultVendorDataRecord::Describe,
     &DefaultVendorDataRecord::WriteCheckCashAccountIndex},

    {"DefaultGLAccounts", "GLCostOfSales", DefaultShipMethodRecord::Describe,
     &DefaultShipMethodRecord::GLCostOfSalesIndex, 3},
    {"DefaultGLAccounts", "GLInventoryWage", DefaultShipMethodRecord::Describe,
     &DefaultShipMethodRecord::GLInventoryWageIndex, 3},
    {"DefaultGLAccounts", "GLSales", DefaultShipMethodRecord::Describe,
     &DefaultShipMethodRecord::GLSalesIndex, 3},

    {"DefaultInventoryData", "GLFreightAccount", DefaultShipMethodRecord::Describe,
     &DefaultShipMethodRecord::GLFreightAccountIndex},

    {"DefaultEmployeeData", "EEContraAccount", DefaultEmployeeDataRecord::Describe,
     &DefaultEmployeeDataRecord::EEContraAccountIndex, 3},
    {"DefaultEmployeeData", "EEGLAccount", DefaultEmployeeDataRecord::Describe,
     &DefaultEmployeeDataRecord::EEGLAccountIndex, 3},
    {"DefaultEmployeeData", "ERExpenseAccount", DefaultEmployeeDataRecord::Describe,
     &DefaultEmployeeDataRecord::ERExpenseAccountIndex, 3},
    {"DefaultEmployeeData", "ERLiabilityAccount", DefaultEmployeeDataRecord::Describe,
     &DefaultEmployeeDataRecord::ERLiabilityAccountIndex, 3},
    {"DefaultEmployeeData", "HoursGLAccount", DefaultEmployeeDataRecord::Describe,
     &DefaultEmployeeDataRecord::HoursGLAccountIndex, 3},
    {"DefaultEmployeeData", "PayrollCashAccount", DefaultEmployeeDataRecord::Describe,
     &DefaultEmployeeDataRecord::PayrollCashAccountIndex},
    {"DefaultEmployeeData", "SalaryGLAccount", DefaultEmployeeDataRecord::Describe,
     &DefaultEmployeeDataRecord::SalaryGLAccountIndex, 3},
};

/// The first property of each class.
std::vector<AccountProperty> OneOfEachClass() {
  std::vector<AccountProperty> properties;
  for (const AccountProperty& property : AllProperties) {
    const bool isOfNewClass =
        properties.empty() || properties.back().className != property.className;
    if (isOfNewClass) properties.push_back(property);
  }
  return properties;
}

/// A company with two accounts, the first of them in the row of the property under test, and an
/// object that has read it. Up to release 18 all accounts of the settings lie in its rows.
class SettingsAccount : public testing::TestWithParam<AccountProperty> {
 protected:
  SettingsAccount() {
    AddAccount(company_.Folder(), {"1000", Cash});
    AddAccount(company_.Folder(), {"6000", Rent});
    Store(Cash);
    OpenAndRead(settings_);
  }

  std::filesystem::path File(std::string_view name) const { return company_.Folder() / name; }
  std::filesystem::path ChartFile() const { return File(TovrinFileNames::ChartFile()); }
  std::filesystem::path GeneralFile() const { return File(TovrinFileNames::GeneralFile()); }

  // The property under test.
  static std::vector<Variant> Index() {
    if (!GetParam().index) return {};
    return {*GetParam().index};
  }
  static std::string Get(Object& object) { return object.Get(GetParam().name, Index()).ToText(); }
  static void Let(Object& object, std::string_view id) { object.Let(GetParam().name, id, Index()); }

  // What is on file of it.
  void Store(std::int32_t account) {
    row_.Set(*GetParam().field, account, GetParam().index.value_or(0));
  }
  std::int32_t Stored() {
    return row_.Value(*GetParam().field, GetParam().index.value_or(0)).ToLong();
  }

  static Object Made() { return Object(GetParam().className); }
  static Status Do(Object& object, std::string_view operation) {
    return object.Call(operation).ToInteger();
  }
  static void OpenAndRead(Object& object) {
    EXPECT_EQ(Do(object, "OpenFile"), StatusSuccess);
    EXPECT_EQ(Do(object, "Read"), StatusSuccess);
  }
  Status OpenFile() { return Do(settings_, "OpenFile"); }
  Status Read() { return Do(settings_, "Read"); }
  Status Update() { return Do(settings_, "Update"); }
  Status CloseFile() { return Do(settings_, "CloseFile"); }
  std::string Get() { return Get(settings_); }
  void Let(std::string_view id) { Let(settings_, id); }

  // What messages say of a failing step.
  static std::string Step(std::string_view step) {
    return std::string(GetParam().className) + "." + std::string(step);
  }
  static std::string OpeningToRead() { return Step("GetAccount->btChart.btOpen"); }
  static std::string OpeningToAssign() { return Step("LetAccount->oChart.btOpen"); }
  static std::string Reading(std::int32_t index) {
    return Step("GetAccount->btChart.GetEqual(") + std::to_string(index) + ")";
  }
  static std::string Assigning(std::string_view id) {
    return Step("GetAccountIndex->oChart.GetForAccountID(") + std::string(id) + ")";
  }

  void ProtectChart() { test::ProtectFile(ChartFile(), /*allowRead=*/false); }
  void LiftProtection() {
    ASSERT_EQ(store::DefaultDriver().ClearOwner(ChartFile(), "someone"), StatusSuccess);
  }

  Company company_{18.9};
  SettingsRow row_{company_.Folder(), GetParam().record()};
  Object settings_ = Made();
};

using SettingsChart = SettingsAccount;

// --- Every account ---

TEST_P(SettingsAccount, IsStoredAsTheIndexAndShownAsTheID) {
  EXPECT_EQ(Get(), "1000");
  Let("6000");
  EXPECT_EQ(Get(), "6000");
  ASSERT_EQ(Update(), StatusSuccess);
  EXPECT_EQ(Stored(), Rent);
}

TEST_P(SettingsAccount, AssignedEmptyIsStoredAs0AndNeedsNoChart) {
  const TakenAway away(ChartFile());
  Let("");
  EXPECT_EQ(Get(), "");
  ASSERT_EQ(Update(), StatusSuccess);
  EXPECT_EQ(Stored(), 0);
}

TEST_P(SettingsAccount, OfAnUnknownIndexRaisesButInGeneralDataIsEmpty) {
  for (const std::int32_t index : {Unknown, -1}) {
    Store(index);
    ASSERT_EQ(Read(), StatusSuccess);
    if (GetParam().className == "GeneralData") {
      EXPECT_EQ(Get(), "");
    } else {
      ExpectRaised([&] { return Get(); }, ErrorRead, Reading(index), StatusKeyNotFound);
    }
    ASSERT_EQ(Update(), StatusSuccess);
    EXPECT_EQ(Stored(), index) << "it is kept";
  }
}

TEST_P(SettingsAccount, AssignedAnUnknownIDRaisesAndStaysAsItWas) {
  for (const char* id : {"9999", "100", "10000", "1000 ", "?"}) {
    ExpectRaised([&] { Let(id); }, ErrorAccount, Assigning(id), StatusKeyNotFound);
    EXPECT_EQ(Get(), "1000") << id;
  }
}

INSTANTIATE_TEST_SUITE_P(Settings, SettingsAccount, testing::ValuesIn(AllProperties), NameOf);

// --- The chart is opened where it is needed ---

TEST_P(SettingsChart, IsNotOpenedByOpenFileOrRead) { EXPECT_FALSE(IsHeldOpen(ChartFile())); }

TEST_P(SettingsChart, IsNotOpenedForAnAccountOfIndex0) {
  Store(0);
  ASSERT_EQ(Read(), StatusSuccess);
  const TakenAway away(ChartFile());
  EXPECT_EQ(Get(), "");
}

TEST_P(SettingsChart, StaysOpenOnceItWasRead) {
  EXPECT_EQ(Get(), "1000");
  EXPECT_TRUE(IsHeldOpen(ChartFile()));
  const TakenAway away(ChartFile());
  EXPECT_EQ(Get(), "1000");
  Let("6000");
  EXPECT_EQ(Get(), "6000");
}

TEST_P(SettingsChart, StaysOpenOnceAnAccountWasAssigned) {
  Let("6000");
  EXPECT_TRUE(IsHeldOpen(ChartFile()));
  const TakenAway away(ChartFile());
  EXPECT_EQ(Get(), "6000");
}

TEST_P(SettingsChart, StaysOpenAfterAnIDThatIsUnknown) {
  EXPECT_EQ(RaisedNumber([&] { Let("9999"); }), ErrorAccount);
  EXPECT_TRUE(IsHeldOpen(ChartFile()));
}

TEST_P(SettingsChart, ShowsTheIDThatTheAccountHasNow) {
  EXPECT_EQ(Get(), "1000");
  OpenRecordFile chart(ChartFile(), ChartRecord::Describe());
  chart.File().KeyLong(Cash, 0);
  ASSERT_EQ(chart.File().btGetEqual(3), StatusSuccess);
  chart.Record().SetText(ChartRecord::AccountID, "1010");
  ASSERT_EQ(chart.File().btUpdate(3), StatusSuccess);
  EXPECT_EQ(Get(), "1010");
}

TEST_P(SettingsChart, ThatIsMissingRaisesAndIsTriedAgain) {
  {
    const TakenAway away(ChartFile());
    for (int tries = 0; tries < 2; ++tries) {
      ExpectRaised([&] { return Get(); }, ErrorOpen, OpeningToRead(), StatusFileNotFound);
      ExpectRaised([&] { Let("6000"); }, ErrorOpen, OpeningToAssign(), StatusFileNotFound);
    }
  }
  EXPECT_EQ(Get(), "1000");
  Let("6000");
  EXPECT_EQ(Get(), "6000");
}

TEST_P(SettingsChart, MustBeWritable) {
  ASSERT_EQ(CloseFile(), StatusSuccess);
  test::WhereOnlyThisIsReadOnly(ChartFile(), [] {
    Object settings = Made();
    OpenAndRead(settings);
    ExpectRaised([&] { return Get(settings); }, ErrorOpen, OpeningToRead(), StatusPermission);
    ExpectRaised([&] { Let(settings, "6000"); }, ErrorOpen, OpeningToAssign(), StatusPermission);
  });
}

TEST_P(SettingsChart, ThatOthersMayReadIsReadLikeAnyOther) {
  test::ProtectFile(ChartFile(), /*allowRead=*/true);
  EXPECT_EQ(Get(), "1000");
  Let("6000");
  EXPECT_EQ(Get(), "6000");
}

// --- A chart that refuses access ---

TEST_P(SettingsChart, RefusedReadsEmptyUntilTheNextOpenFile) {
  ProtectChart();
  EXPECT_EQ(Get(), "");
  LiftProtection();
  EXPECT_EQ(Get(), "");
  ASSERT_EQ(Read(), StatusSuccess);
  EXPECT_EQ(Get(), "") << "a Read forgets nothing";
  EXPECT_FALSE(IsHeldOpen(ChartFile()));
  OpenAndRead(settings_);
  EXPECT_EQ(Get(), "1000");
}

TEST_P(SettingsChart, RefusedMakesAssignmentsStore0UntilTheNextOpenFile) {
  ProtectChart();
  Let("6000");
  ASSERT_EQ(Update(), StatusSuccess);
  EXPECT_EQ(Stored(), 0);
  LiftProtection();
  Store(Cash);
  ASSERT_EQ(Read(), StatusSuccess);
  Let("6000");
  EXPECT_FALSE(IsHeldOpen(ChartFile()));
  ASSERT_EQ(Update(), StatusSuccess);
  EXPECT_EQ(Stored(), 0);
  OpenAndRead(settings_);
  Let("6000");
  ASSERT_EQ(Update(), StatusSuccess);
  EXPECT_EQ(Stored(), Rent);
}

TEST_P(SettingsChart, RefusedAcceptsIDsThatNoAccountHas) {
  ProtectChart();
  Let("9999");
  ASSERT_EQ(Update(), StatusSuccess);
  EXPECT_EQ(Stored(), 0);
}

TEST_P(SettingsChart, RefusedToAReadIsRefusedToAssignmentsToo) {
  ProtectChart();
  EXPECT_EQ(Get(), "");
  LiftProtection();
  Let("6000");
  ASSERT_EQ(Update(), StatusSuccess);
  EXPECT_EQ(Stored(), 0);
}

TEST_P(SettingsChart, RefusedToAnAssignmentIsRefusedToReadsToo) {
  ProtectChart();
  Let("6000");
  LiftProtection();
  ASSERT_EQ(Read(), StatusSuccess);
  EXPECT_EQ(Get(), "");
}

TEST_P(SettingsChart, RefusedIsForgottenAlsoByAnOpenFileThatFails) {
  ProtectChart();
  EXPECT_EQ(Get(), "");
  LiftProtection();
  {
    const TakenAway away(GeneralFile());
    ASSERT_NE(OpenFile(), StatusSuccess);
  }
  Let("6000");
  EXPECT_EQ(Get(), "6000");
}

TEST_P(SettingsChart, RefusedIsNotForgottenByCloseFile) {
  ProtectChart();
  EXPECT_EQ(Get(), "");
  LiftProtection();
  ASSERT_EQ(CloseFile(), StatusSuccess);
  Let("6000");
  EXPECT_EQ(Get(), "");
  EXPECT_FALSE(IsHeldOpen(ChartFile()));
}

TEST_P(SettingsChart, RefusedToOneObjectIsTriedByAnother) {
  ProtectChart();
  EXPECT_EQ(Get(), "");
  LiftProtection();
  Object another = Made();
  OpenAndRead(another);
  EXPECT_EQ(Get(another), "1000");
}

// --- A chart that the engine has closed under the object ---

TEST_P(SettingsChart, ClosedByTheEngineIsOpenedAgainToBeRead) {
  EXPECT_EQ(Get(), "1000");
  ASSERT_EQ(TovrinFile().btReset(), StatusSuccess);
  EXPECT_EQ(Get(), "1000");
  EXPECT_TRUE(IsHeldOpen(ChartFile()));
}

TEST_P(SettingsChart, ClosedByTheEngineIsOpenedAgainForAnAssignment) {
  EXPECT_EQ(Get(), "1000");
  ASSERT_EQ(TovrinFile().btReset(), StatusSuccess);
  Let("6000");
  EXPECT_TRUE(IsHeldOpen(ChartFile()));
  EXPECT_EQ(Get(), "6000");
}

TEST_P(SettingsChart, OpenedAgainMayStillLackTheAccount) {
  EXPECT_EQ(Get(), "1000");
  ASSERT_EQ(TovrinFile().btReset(), StatusSuccess);
  ExpectRaised([&] { Let("9999"); }, ErrorAccount, Assigning("9999"), StatusKeyNotFound);
}

// Nobody looks at how the second open went: the search then meets a file that is not open.
TEST_P(SettingsChart, ClosedByTheEngineAndThenMissingFailsInTheSearch) {
  EXPECT_EQ(Get(), "1000");
  ASSERT_EQ(TovrinFile().btReset(), StatusSuccess);
  {
    const TakenAway away(ChartFile());
    ExpectRaised([&] { return Get(); }, ErrorRead, Reading(Cash), StatusFileNotOpen);
    ExpectRaised([&] { Let("6000"); }, ErrorAccount, Assigning("6000"), StatusFileNotOpen);
  }
  EXPECT_EQ(Get(), "1000") << "and is opened again as soon as it is there";
}

TEST_P(SettingsChart, ClosedByTheEngineAndThenRefusedFailsInTheSearchAndIsNotPassedOver) {
  EXPECT_EQ(Get(), "1000");
  ASSERT_EQ(TovrinFile().btReset(), StatusSuccess);
  ProtectChart();
  ExpectRaised([&] { return Get(); }, ErrorRead, Reading(Cash), StatusFileNotOpen);
  ExpectRaised([&] { Let("6000"); }, ErrorAccount, Assigning("6000"), StatusFileNotOpen);
  LiftProtection();
  EXPECT_EQ(Get(), "1000");
}

// --- The end of the chart ---

TEST_P(SettingsChart, IsClosedByCloseFile) {
  EXPECT_EQ(Get(), "1000");
  EXPECT_EQ(CloseFile(), StatusSuccess);
  EXPECT_FALSE(IsHeldOpen(GeneralFile()));
  EXPECT_FALSE(IsHeldOpen(ChartFile()));
  EXPECT_EQ(CloseFile(), StatusSuccess);
}

TEST_P(SettingsChart, IsClosedByDestruction) {
  {
    Object settings = Made();
    OpenAndRead(settings);
    EXPECT_EQ(Get(settings), "1000");
    ASSERT_TRUE(IsHeldOpen(ChartFile()));
  }
  EXPECT_FALSE(IsHeldOpen(ChartFile()));
}

TEST_P(SettingsChart, StaysInUseOverASecondOpenFile) {
  EXPECT_EQ(Get(), "1000");
  OpenAndRead(settings_);
  {
    const TakenAway away(ChartFile());
    EXPECT_EQ(Get(), "1000");
  }
  EXPECT_EQ(CloseFile(), StatusSuccess);
  EXPECT_FALSE(IsHeldOpen(ChartFile()));
}

TEST_P(SettingsChart, IsOpenedAndClosedAlsoWhereTheSettingsAreNotOpen) {
  Object settings = Made();
  Let(settings, "6000");
  EXPECT_EQ(Get(settings), "6000");
  EXPECT_TRUE(IsHeldOpen(ChartFile()));
  EXPECT_EQ(Do(settings, "CloseFile"), StatusSuccess);
  EXPECT_FALSE(IsHeldOpen(ChartFile()));
}

TEST_P(SettingsChart, ThatFailsToCloseIsNotTold) {
  ASSERT_EQ(CloseFile(), StatusSuccess);
  test::RunInChild([&] {
    OpenAndRead(settings_);
    EXPECT_EQ(Get(), "1000");
    AddAccount(company_.Folder(), {"7000", 19});
    test::BreakDisk(ChartFile());
    EXPECT_EQ(CloseFile(), StatusSuccess);
  });
}

// The payroll setup answers with its last close, whichever that was; others with that of the row.
TEST_P(SettingsChart, ThatFailsToCloseAloneIsToldByThePayrollSetupOnly) {
  Object settings = Made();
  Let(settings, "6000");
  ASSERT_EQ(TovrinFile().btReset(), StatusSuccess);
  const bool isPayroll = GetParam().className == "DefaultEmployeeData";
  EXPECT_EQ(Do(settings, "CloseFile"), isPayroll ? StatusFileNotOpen : StatusSuccess);
  EXPECT_EQ(Do(settings, "CloseFile"), StatusSuccess);
}

TEST_P(SettingsChart, IsGivenUpWhereTheEngineClosedAllFiles) {
  EXPECT_EQ(Get(), "1000");
  ASSERT_EQ(TovrinFile().btReset(), StatusSuccess);
  EXPECT_EQ(CloseFile(), StatusFileNotOpen);
  EXPECT_EQ(CloseFile(), StatusSuccess);
  OpenAndRead(settings_);
  const TakenAway away(ChartFile());
  EXPECT_EQ(RaisedNumber([&] { return Get(); }), ErrorOpen)
      << "it is opened as if for the first time";
}

INSTANTIATE_TEST_SUITE_P(Settings, SettingsChart, testing::ValuesIn(OneOfEachClass()), NameOf);

}  // namespace
}  // namespace larkmoor
