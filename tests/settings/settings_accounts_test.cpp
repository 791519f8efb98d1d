// The accounts of the company's settings, which are stored as indexes into the chart and shown as
// IDs. The chart is opened where it is first needed. One that refuses access is passed over in
// silence until the next OpenFile; one that the engine has closed meanwhile is opened again. An
// index that no account has reads as empty in GeneralData and raises in all other classes.
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include <larkmoor/settings/general_data.h>
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
#include "engine/tovrin_file.h"
#include "engine/tovrin_file_names.h"
#include "support/accounts.h"
#include "support/child_process.h"
#include "support/company.h"
#include "support/errors.h"
#include "support/failing_disk.h"
#include "support/protection.h"
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
using test::Protection;
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

/// An object that shows an account, and its row on file.
class Settings {
 public:
  Settings(const AccountProperty& property, const std::filesystem::path& folder)
      : property_(property),
        folder_(folder),
        row_(folder, property.record()),
        object_(property.className) {}

  [[nodiscard]] bool IsOf(std::string_view className) const {
    return property_.className == className;
  }
  /// Another object of the class.
  [[nodiscard]] Settings Another() const { return Settings(property_, folder_); }

  Status OpenFile() { return Do("OpenFile"); }
  Status Read() { return Do("Read"); }
  Status Update() { return Do("Update"); }
  Status CloseFile() { return Do("CloseFile"); }
  void OpenAndRead() {
    EXPECT_EQ(OpenFile(), StatusSuccess);
    EXPECT_EQ(Read(), StatusSuccess);
  }

  // The account's ID in the object, and its index on file.
  std::string Get() { return object_.Get(property_.name, Indexes()).ToText(); }
  void Let(std::string_view id) { object_.Let(property_.name, id, Indexes()); }
  void Store(std::int32_t account) {
    row_.Set(*property_.field, account, property_.index.value_or(0));
  }
  std::int32_t Stored() {
    return row_.Value(*property_.field, property_.index.value_or(0)).ToLong();
  }

  // What messages say of a failing step.
  std::string OpeningToRead() { return Step("GetAccount->btChart.btOpen"); }
  std::string OpeningToAssign() { return Step("LetAccount->oChart.btOpen"); }
  std::string Reading(std::int32_t index) {
    return Step("GetAccount->btChart.GetEqual(" + std::to_string(index) + ")");
  }
  std::string Assigning(std::string_view id) {
    return Step("GetAccountIndex->oChart.GetForAccountID(" + std::string(id) + ")");
  }

 private:
  Status Do(std::string_view operation) { return object_.Call(operation).ToInteger(); }
  std::vector<Variant> Indexes() {
    if (!property_.index) return {};
    return {*property_.index};
  }
  std::string Step(std::string_view step) {
    return std::string(property_.className) + "." + std::string(step);
  }

  const AccountProperty& property_;
  std::filesystem::path folder_;
  SettingsRow row_;
  Object object_;
};

/// A company with two accounts. Up to release 18 all accounts of the settings lie in its rows.
class SettingsAccount : public testing::Test {
 protected:
  SettingsAccount() {
    AddAccount(company_.Folder(), {"1000", Cash});
    AddAccount(company_.Folder(), {"6000", Rent});
  }

  std::filesystem::path File(std::string_view name) const { return company_.Folder() / name; }
  std::filesystem::path ChartFile() const { return File(TovrinFileNames::ChartFile()); }
  std::filesystem::path GeneralFile() const { return File(TovrinFileNames::GeneralFile()); }

  /// Runs `body(settings)` for each property, with an object that has read its row with the first
  /// account.
  template <typename Properties, typename Body>
  void ForEachOf(const Properties& properties, Body&& body) {
    for (const AccountProperty& property : properties) {
      SCOPED_TRACE(std::string(property.className) + "." + std::string(property.name));
      Settings settings(property, company_.Folder());
      settings.Store(Cash);
      settings.OpenAndRead();
      body(settings);
    }
  }
  template <typename Body>
  void ForEachAccount(Body&& body) {
    ForEachOf(AllProperties, std::forward<Body>(body));
  }
  template <typename Body>
  void ForEachClass(Body&& body) {
    ForEachOf(OneOfEachClass(), std::forward<Body>(body));
  }

  Company company_{18.9};
};

using SettingsChart = SettingsAccount;

// --- Every account ---

TEST_F(SettingsAccount, IsStoredAsTheIndexAndShownAsTheID) {
  ForEachAccount([](Settings& settings) {
    EXPECT_EQ(settings.Get(), "1000");
    settings.Let("6000");
    EXPECT_EQ(settings.Get(), "6000");
    ASSERT_EQ(settings.Update(), StatusSuccess);
    EXPECT_EQ(settings.Stored(), Rent);
  });
}

TEST_F(SettingsAccount, AssignedEmptyIsStoredAs0AndNeedsNoChart) {
  const TakenAway away(ChartFile());
  ForEachAccount([](Settings& settings) {
    settings.Let("");
    EXPECT_EQ(settings.Get(), "");
    ASSERT_EQ(settings.Update(), StatusSuccess);
    EXPECT_EQ(settings.Stored(), 0);
  });
}

TEST_F(SettingsAccount, OfAnUnknownIndexRaisesButInGeneralDataIsEmpty) {
  ForEachAccount([](Settings& settings) {
    for (const std::int32_t index : {Unknown, -1}) {
      settings.Store(index);
      ASSERT_EQ(settings.Read(), StatusSuccess);
      if (settings.IsOf("GeneralData")) {
        EXPECT_EQ(settings.Get(), "");
      } else {
        ExpectRaised([&] { return settings.Get(); }, ErrorRead, settings.Reading(index),
                     StatusKeyNotFound);
      }
      ASSERT_EQ(settings.Update(), StatusSuccess);
      EXPECT_EQ(settings.Stored(), index) << "it is kept";
    }
  });
}

TEST_F(SettingsAccount, AssignedAnUnknownIDRaisesAndStaysAsItWas) {
  ForEachAccount([](Settings& settings) {
    for (const char* id : {"9999", "100", "10000", "1000 ", "?"}) {
      ExpectRaised([&] { settings.Let(id); }, ErrorAccount, settings.Assigning(id),
                   StatusKeyNotFound);
      EXPECT_EQ(settings.Get(), "1000") << id;
    }
  });
}

// --- The chart is opened where it is needed ---

TEST_F(SettingsChart, IsNotOpenedByOpenFileOrRead) {
  ForEachClass([&](Settings&) { EXPECT_FALSE(IsHeldOpen(ChartFile())); });
}

TEST_F(SettingsChart, IsNotOpenedForAnAccountOfIndex0) {
  const TakenAway away(ChartFile());
  ForEachClass([](Settings& settings) {
    settings.Store(0);
    ASSERT_EQ(settings.Read(), StatusSuccess);
    EXPECT_EQ(settings.Get(), "");
  });
}

TEST_F(SettingsChart, StaysOpenOnceItWasRead) {
  ForEachClass([&](Settings& settings) {
    EXPECT_EQ(settings.Get(), "1000");
    EXPECT_TRUE(IsHeldOpen(ChartFile()));
    const TakenAway away(ChartFile());
    EXPECT_EQ(settings.Get(), "1000");
    settings.Let("6000");
    EXPECT_EQ(settings.Get(), "6000");
  });
}

TEST_F(SettingsChart, StaysOpenOnceAnAccountWasAssigned) {
  ForEachClass([&](Settings& settings) {
    settings.Let("6000");
    EXPECT_TRUE(IsHeldOpen(ChartFile()));
    const TakenAway away(ChartFile());
    EXPECT_EQ(settings.Get(), "6000");
  });
}

TEST_F(SettingsChart, StaysOpenAfterAnIDThatIsUnknown) {
  ForEachClass([&](Settings& settings) {
    EXPECT_EQ(RaisedNumber([&] { settings.Let("9999"); }), ErrorAccount);
    EXPECT_TRUE(IsHeldOpen(ChartFile()));
  });
}

TEST_F(SettingsChart, ShowsTheIDThatTheAccountHasNow) {
  ForEachClass([&](Settings& settings) {
    for (const char* id : {"1010", "1000"}) {
      OpenRecordFile chart(ChartFile(), ChartRecord::Describe());
      chart.File().KeyLong(Cash, 0);
      ASSERT_EQ(chart.File().btGetEqual(3), StatusSuccess);
      chart.Record().SetText(ChartRecord::AccountID, id);
      ASSERT_EQ(chart.File().btUpdate(3), StatusSuccess);
      EXPECT_EQ(settings.Get(), id);
    }
  });
}

TEST_F(SettingsChart, ThatIsMissingRaisesAndIsTriedAgain) {
  ForEachClass([&](Settings& settings) {
    {
      const TakenAway away(ChartFile());
      for (int tries = 0; tries < 2; ++tries) {
        ExpectRaised([&] { return settings.Get(); }, ErrorOpen, settings.OpeningToRead(),
                     StatusFileNotFound);
        ExpectRaised([&] { settings.Let("6000"); }, ErrorOpen, settings.OpeningToAssign(),
                     StatusFileNotFound);
      }
    }
    EXPECT_EQ(settings.Get(), "1000");
    settings.Let("6000");
    EXPECT_EQ(settings.Get(), "6000");
  });
}

TEST_F(SettingsChart, MustBeWritable) {
  test::WhereOnlyThisIsReadOnly(ChartFile(), [&] {
    ForEachClass([](Settings& settings) {
      ExpectRaised([&] { return settings.Get(); }, ErrorOpen, settings.OpeningToRead(),
                   StatusPermission);
      ExpectRaised([&] { settings.Let("6000"); }, ErrorOpen, settings.OpeningToAssign(),
                   StatusPermission);
    });
  });
}

TEST_F(SettingsChart, ThatOthersMayReadIsReadLikeAnyOther) {
  const Protection protection(ChartFile(), /*allowRead=*/true);
  ForEachClass([](Settings& settings) {
    EXPECT_EQ(settings.Get(), "1000");
    settings.Let("6000");
    EXPECT_EQ(settings.Get(), "6000");
  });
}

// --- A chart that refuses access ---

TEST_F(SettingsChart, RefusedReadsEmptyUntilTheNextOpenFile) {
  ForEachClass([&](Settings& settings) {
    Protection protection(ChartFile(), /*allowRead=*/false);
    EXPECT_EQ(settings.Get(), "");
    protection.Lift();
    EXPECT_EQ(settings.Get(), "");
    ASSERT_EQ(settings.Read(), StatusSuccess);
    EXPECT_EQ(settings.Get(), "") << "a Read forgets nothing";
    EXPECT_FALSE(IsHeldOpen(ChartFile()));
    settings.OpenAndRead();
    EXPECT_EQ(settings.Get(), "1000");
  });
}

TEST_F(SettingsChart, RefusedMakesAssignmentsStore0UntilTheNextOpenFile) {
  ForEachClass([&](Settings& settings) {
    Protection protection(ChartFile(), /*allowRead=*/false);
    settings.Let("6000");
    ASSERT_EQ(settings.Update(), StatusSuccess);
    EXPECT_EQ(settings.Stored(), 0);
    protection.Lift();
    settings.Store(Cash);
    ASSERT_EQ(settings.Read(), StatusSuccess);
    settings.Let("6000");
    EXPECT_FALSE(IsHeldOpen(ChartFile()));
    ASSERT_EQ(settings.Update(), StatusSuccess);
    EXPECT_EQ(settings.Stored(), 0);
    settings.OpenAndRead();
    settings.Let("6000");
    ASSERT_EQ(settings.Update(), StatusSuccess);
    EXPECT_EQ(settings.Stored(), Rent);
  });
}

TEST_F(SettingsChart, RefusedAcceptsIDsThatNoAccountHas) {
  const Protection protection(ChartFile(), /*allowRead=*/false);
  ForEachClass([](Settings& settings) {
    settings.Let("9999");
    ASSERT_EQ(settings.Update(), StatusSuccess);
    EXPECT_EQ(settings.Stored(), 0);
  });
}

TEST_F(SettingsChart, RefusedToAReadIsRefusedToAssignmentsToo) {
  ForEachClass([&](Settings& settings) {
    Protection protection(ChartFile(), /*allowRead=*/false);
    EXPECT_EQ(settings.Get(), "");
    protection.Lift();
    settings.Let("6000");
    ASSERT_EQ(settings.Update(), StatusSuccess);
    EXPECT_EQ(settings.Stored(), 0);
  });
}

TEST_F(SettingsChart, RefusedToAnAssignmentIsRefusedToReadsToo) {
  ForEachClass([&](Settings& settings) {
    Protection protection(ChartFile(), /*allowRead=*/false);
    settings.Let("6000");
    protection.Lift();
    ASSERT_EQ(settings.Read(), StatusSuccess);
    EXPECT_EQ(settings.Get(), "");
  });
}

TEST_F(SettingsChart, RefusedIsForgottenAlsoByAnOpenFileThatFails) {
  ForEachClass([&](Settings& settings) {
    Protection protection(ChartFile(), /*allowRead=*/false);
    EXPECT_EQ(settings.Get(), "");
    protection.Lift();
    {
      const TakenAway away(GeneralFile());
      ASSERT_NE(settings.OpenFile(), StatusSuccess);
    }
    settings.Let("6000");
    EXPECT_EQ(settings.Get(), "6000");
  });
}

TEST_F(SettingsChart, RefusedIsNotForgottenByCloseFile) {
  ForEachClass([&](Settings& settings) {
    Protection protection(ChartFile(), /*allowRead=*/false);
    EXPECT_EQ(settings.Get(), "");
    protection.Lift();
    ASSERT_EQ(settings.CloseFile(), StatusSuccess);
    settings.Let("6000");
    EXPECT_EQ(settings.Get(), "");
    EXPECT_FALSE(IsHeldOpen(ChartFile()));
  });
}

TEST_F(SettingsChart, RefusedToOneAccountIsRefusedToAllOfTheObject) {
  GeneralData general;
  ASSERT_EQ(general.OpenFile(), StatusSuccess);
  ASSERT_EQ(general.Read(), StatusSuccess);
  Protection protection(ChartFile(), /*allowRead=*/false);
  general.RoundingAccount("6000");
  protection.Lift();
  general.CashAcnt("6000");
  EXPECT_EQ(general.CashAcnt(), "");
  EXPECT_FALSE(IsHeldOpen(ChartFile()));
}

TEST_F(SettingsChart, RefusedToOneObjectIsTriedByAnother) {
  ForEachClass([&](Settings& settings) {
    Protection protection(ChartFile(), /*allowRead=*/false);
    EXPECT_EQ(settings.Get(), "");
    protection.Lift();
    Settings another = settings.Another();
    another.OpenAndRead();
    EXPECT_EQ(another.Get(), "1000");
  });
}

// --- A chart that the engine has closed under the object ---

TEST_F(SettingsChart, ClosedByTheEngineIsOpenedAgainToBeRead) {
  ForEachClass([&](Settings& settings) {
    EXPECT_EQ(settings.Get(), "1000");
    ASSERT_EQ(TovrinFile().btReset(), StatusSuccess);
    EXPECT_EQ(settings.Get(), "1000");
    EXPECT_TRUE(IsHeldOpen(ChartFile()));
  });
}

TEST_F(SettingsChart, ClosedByTheEngineIsOpenedAgainForAnAssignment) {
  ForEachClass([&](Settings& settings) {
    EXPECT_EQ(settings.Get(), "1000");
    ASSERT_EQ(TovrinFile().btReset(), StatusSuccess);
    settings.Let("6000");
    EXPECT_TRUE(IsHeldOpen(ChartFile()));
    EXPECT_EQ(settings.Get(), "6000");
  });
}

TEST_F(SettingsChart, OpenedAgainMayStillLackTheAccount) {
  ForEachClass([](Settings& settings) {
    EXPECT_EQ(settings.Get(), "1000");
    ASSERT_EQ(TovrinFile().btReset(), StatusSuccess);
    ExpectRaised([&] { settings.Let("9999"); }, ErrorAccount, settings.Assigning("9999"),
                 StatusKeyNotFound);
  });
}

// Nobody looks at how the second open went: the search then meets a file that is not open.
TEST_F(SettingsChart, ClosedByTheEngineAndThenMissingFailsInTheSearch) {
  ForEachClass([&](Settings& settings) {
    EXPECT_EQ(settings.Get(), "1000");
    ASSERT_EQ(TovrinFile().btReset(), StatusSuccess);
    {
      const TakenAway away(ChartFile());
      ExpectRaised([&] { return settings.Get(); }, ErrorRead, settings.Reading(Cash),
                   StatusFileNotOpen);
      ExpectRaised([&] { settings.Let("6000"); }, ErrorAccount, settings.Assigning("6000"),
                   StatusFileNotOpen);
    }
    EXPECT_EQ(settings.Get(), "1000") << "and is opened again as soon as it is there";
  });
}

TEST_F(SettingsChart, ClosedByTheEngineAndThenRefusedFailsInTheSearchAndIsNotPassedOver) {
  ForEachClass([&](Settings& settings) {
    EXPECT_EQ(settings.Get(), "1000");
    ASSERT_EQ(TovrinFile().btReset(), StatusSuccess);
    Protection protection(ChartFile(), /*allowRead=*/false);
    ExpectRaised([&] { return settings.Get(); }, ErrorRead, settings.Reading(Cash),
                 StatusFileNotOpen);
    ExpectRaised([&] { settings.Let("6000"); }, ErrorAccount, settings.Assigning("6000"),
                 StatusFileNotOpen);
    protection.Lift();
    EXPECT_EQ(settings.Get(), "1000");
  });
}

// --- The end of the chart ---

TEST_F(SettingsChart, IsClosedByCloseFile) {
  ForEachClass([&](Settings& settings) {
    EXPECT_EQ(settings.Get(), "1000");
    EXPECT_EQ(settings.CloseFile(), StatusSuccess);
    EXPECT_FALSE(IsHeldOpen(GeneralFile()));
    EXPECT_FALSE(IsHeldOpen(ChartFile()));
    EXPECT_EQ(settings.CloseFile(), StatusSuccess);
  });
}

TEST_F(SettingsChart, IsClosedByDestruction) {
  ForEachClass([&](Settings& settings) {
    {
      Settings gone = settings.Another();
      gone.OpenAndRead();
      EXPECT_EQ(gone.Get(), "1000");
      ASSERT_TRUE(IsHeldOpen(ChartFile()));
    }
    EXPECT_FALSE(IsHeldOpen(ChartFile()));
  });
}

TEST_F(SettingsChart, StaysInUseOverASecondOpenFile) {
  ForEachClass([&](Settings& settings) {
    EXPECT_EQ(settings.Get(), "1000");
    settings.OpenAndRead();
    {
      const TakenAway away(ChartFile());
      EXPECT_EQ(settings.Get(), "1000");
    }
    EXPECT_EQ(settings.CloseFile(), StatusSuccess);
    EXPECT_FALSE(IsHeldOpen(ChartFile()));
  });
}

TEST_F(SettingsChart, IsOpenedAndClosedAlsoWhereTheSettingsAreNotOpen) {
  ForEachClass([&](Settings& settings) {
    Settings closed = settings.Another();
    closed.Let("6000");
    EXPECT_EQ(closed.Get(), "6000");
    EXPECT_TRUE(IsHeldOpen(ChartFile()));
    EXPECT_EQ(closed.CloseFile(), StatusSuccess);
    EXPECT_FALSE(IsHeldOpen(ChartFile()));
  });
}

TEST_F(SettingsChart, ThatFailsToCloseIsNotTold) {
  std::int32_t account = 7000;
  ForEachClass([&](Settings& settings) {
    ASSERT_EQ(settings.CloseFile(), StatusSuccess);
    ++account;
    test::RunInChild([&] {
      settings.OpenAndRead();
      EXPECT_EQ(settings.Get(), "1000");
      AddAccount(company_.Folder(), {std::to_string(account), account});
      test::BreakDisk(ChartFile());
      EXPECT_EQ(settings.CloseFile(), StatusSuccess);
    });
  });
}

// The payroll setup answers with its last close, whichever that was; others with that of the row.
TEST_F(SettingsChart, ThatIsTheOnlyFileToCloseIsToldByThePayrollSetupAlone) {
  ForEachClass([](Settings& settings) {
    Settings closed = settings.Another();
    closed.Let("6000");
    ASSERT_EQ(TovrinFile().btReset(), StatusSuccess);
    const bool isPayroll = closed.IsOf("DefaultEmployeeData");
    EXPECT_EQ(closed.CloseFile(), isPayroll ? StatusFileNotOpen : StatusSuccess);
    EXPECT_EQ(closed.CloseFile(), StatusSuccess);
  });
}

TEST_F(SettingsChart, IsGivenUpWhereTheEngineClosedAllFiles) {
  ForEachClass([&](Settings& settings) {
    EXPECT_EQ(settings.Get(), "1000");
    ASSERT_EQ(TovrinFile().btReset(), StatusSuccess);
    EXPECT_EQ(settings.CloseFile(), StatusFileNotOpen);
    EXPECT_EQ(settings.CloseFile(), StatusSuccess);
    settings.OpenAndRead();
    const TakenAway away(ChartFile());
    EXPECT_EQ(RaisedNumber([&] { return settings.Get(); }), ErrorOpen)
        << "it is opened as if for the first time";
  });
}

}  // namespace
}  // namespace larkmoor
