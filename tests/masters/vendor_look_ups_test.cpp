// The fields of the class Vendor that the record keeps in another form than clients see: the
// purchases account, an index into the chart in every release of the data, and the ship method, a
// number below release 13 and from 13 on a text out of the company's settings.
#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>

#include <gtest/gtest.h>

#include <larkmoor/masters/vendor.h>
#include <larkmoor/status.h>

#include "connection/status_messages.h"
#include "engine/records/chart.h"
#include "engine/records/vendor.h"
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
#include "support/ship_methods.h"
#include "support/taken_away.h"

namespace larkmoor {
namespace {

using test::AddAccount;
using test::Company;
using test::ExpectRaised;
using test::IsHeldOpen;
using test::OpenRecordFile;
using test::RaisedNumber;
using test::TakenAway;
using test::TenShipMethods;

/// A company of a release and an object open on its vendors, with a blank record in hand.
class VendorLookUpTest : public testing::Test {
 protected:
  explicit VendorLookUpTest(double release = 19.0) : company_(release) {
    EXPECT_EQ(vendor_.OpenFile(), StatusSuccess);
    vendor_.VendorID("ADAMS");
  }

  std::filesystem::path File(std::string_view name) const { return company_.Folder() / name; }
  std::filesystem::path ChartFile() const { return File(TovrinFileNames::ChartFile()); }
  std::filesystem::path GeneralFile() const { return File(TovrinFileNames::GeneralFile()); }
  std::filesystem::path VendorFile() const { return File(TovrinFileNames::VendorFile()); }

  /// What `value` tells of a vendor on file.
  template <typename Value>
  auto Stored(std::string_view id, Value&& value) {
    OpenRecordFile file(VendorFile(), VendorRecord::Describe());
    file.File().KeyTerminated(id, 0);
    EXPECT_EQ(file.File().btGetEqual(0), StatusSuccess) << id;
    return value(file.Record());
  }

  Company company_;
  Vendor vendor_;
};

// --- Purchases account ---

class VendorPurchaseAccount : public VendorLookUpTest {
 protected:
  explicit VendorPurchaseAccount(double release = 19.0) : VendorLookUpTest(release) {
    AddAccount(company_.Folder(), {"5000", 17});
    AddAccount(company_.Folder(), {"6000", 18});
  }

  std::int32_t StoredIndex() {
    return Stored("ADAMS", [](Tovrin2Record& record) {
      return record.GetLong(VendorRecord::PurchaseAccountIndex);
    });
  }

  /// Changes the record of account 17 on file.
  template <typename Change>
  void ChangeAccount(Change&& change) {
    OpenRecordFile chart(ChartFile(), ChartRecord::Describe());
    chart.File().KeyLong(17, 0);
    ASSERT_EQ(chart.File().btGetEqual(3), StatusSuccess);
    change(chart);
  }
};

constexpr std::string_view OpenOfChart = "Vendor.PurchaseAccount->Chart.Open";

/// Unlike the accounts of customers it never was a text.
class VendorPurchaseAccountOfAnyRelease : public VendorPurchaseAccount,
                                          public testing::WithParamInterface<double> {
 protected:
  VendorPurchaseAccountOfAnyRelease() : VendorPurchaseAccount(GetParam()) {}
};

TEST_P(VendorPurchaseAccountOfAnyRelease, IsStoredAsTheIndexAndShownAsTheID) {
  vendor_.PurchaseAccount("5000");
  EXPECT_EQ(vendor_.PurchaseAccount(), "5000");
  ASSERT_EQ(vendor_.Insert(), StatusSuccess);
  EXPECT_EQ(StoredIndex(), 17);
  Vendor reader;
  ASSERT_EQ(reader.OpenFile(), StatusSuccess);
  ASSERT_EQ(reader.GetEqual("ADAMS"), StatusSuccess);
  EXPECT_EQ(reader.PurchaseAccount(), "5000");
}

TEST_P(VendorPurchaseAccountOfAnyRelease, AssignedAnUnknownIDRaises) {
  ExpectRaised([&] { vendor_.PurchaseAccount("no account at all"); }, ErrorAccount,
               "Vendor.PurchaseAccount->Chart.GetForAccountID(no account at all)",
               StatusKeyNotFound);
}

INSTANTIATE_TEST_SUITE_P(Vendor, VendorPurchaseAccountOfAnyRelease,
                         testing::Values(8.0, 10.9, 11.0, 19.0));

TEST_F(VendorPurchaseAccount, ShowsTheIDThatTheAccountHasNow) {
  vendor_.PurchaseAccount("5000");
  ChangeAccount([](OpenRecordFile& chart) {
    chart.Record().SetText(ChartRecord::AccountID, "5100");
    EXPECT_EQ(chart.File().btUpdate(3), StatusSuccess);
  });
  EXPECT_EQ(vendor_.PurchaseAccount(), "5100");
}

TEST_F(VendorPurchaseAccount, OfIndex0IsEmptyAndOpensNoFile) {
  std::filesystem::remove(ChartFile());
  EXPECT_EQ(vendor_.PurchaseAccount(), "");
}

TEST_F(VendorPurchaseAccount, BecomesIndex0ByTheEmptyIDAndOpensNoFile) {
  vendor_.PurchaseAccount("5000");
  ASSERT_EQ(vendor_.Insert(), StatusSuccess);
  ASSERT_EQ(vendor_.CloseFile(), StatusSuccess);
  ASSERT_EQ(vendor_.OpenFile(), StatusSuccess);
  ASSERT_EQ(vendor_.GetEqual("ADAMS"), StatusSuccess);
  std::filesystem::remove(ChartFile());
  vendor_.PurchaseAccount("");
  EXPECT_EQ(vendor_.PurchaseAccount(), "");
  ASSERT_EQ(vendor_.Update(), StatusSuccess);
  EXPECT_EQ(StoredIndex(), 0);
}

TEST_F(VendorPurchaseAccount, OfAnUnknownIndexRaises) {
  vendor_.PurchaseAccount("5000");
  ChangeAccount([](OpenRecordFile& chart) { EXPECT_EQ(chart.File().btDelete(), StatusSuccess); });
  ExpectRaised([&] { return vendor_.PurchaseAccount(); }, ErrorRead,
               "Vendor.PurchaseAccount->Chart.GetEqual(17)", StatusKeyNotFound);
}

TEST_F(VendorPurchaseAccount, AssignedAnUnknownIDStaysAsItWas) {
  vendor_.PurchaseAccount("5000");
  for (const std::string id : {"9999", "500", "50000", "5000 "}) {
    ExpectRaised([&] { vendor_.PurchaseAccount(id); }, ErrorAccount,
                 "Vendor.PurchaseAccount->Chart.GetForAccountID(" + id + ")", StatusKeyNotFound);
    EXPECT_EQ(vendor_.PurchaseAccount(), "5000") << id;
  }
}

TEST_F(VendorPurchaseAccount, WithoutTheFileRaisesAtEachTryAndStaysAsItWas) {
  vendor_.PurchaseAccount("5000");
  ASSERT_EQ(vendor_.Insert(), StatusSuccess);
  Vendor reader;
  ASSERT_EQ(reader.OpenFile(), StatusSuccess);
  ASSERT_EQ(reader.GetEqual("ADAMS"), StatusSuccess);
  {
    const TakenAway away(ChartFile());
    for (int tries = 0; tries < 2; ++tries) {
      ExpectRaised([&] { return reader.PurchaseAccount(); }, ErrorRead, OpenOfChart,
                   StatusFileNotFound);
      ExpectRaised([&] { reader.PurchaseAccount("6000"); }, ErrorRead, OpenOfChart,
                   StatusFileNotFound);
    }
  }
  EXPECT_EQ(reader.PurchaseAccount(), "5000");
}

// A file of another owner is no exception here.
TEST_F(VendorPurchaseAccount, OfAChartOfAnotherOwnerRaisesAtEachTry) {
  test::ProtectFile(ChartFile(), /*allowRead=*/false);
  for (int tries = 0; tries < 2; ++tries) {
    ExpectRaised([&] { vendor_.PurchaseAccount("5000"); }, ErrorRead, OpenOfChart,
                 StatusInvalidOwner);
  }
  ASSERT_EQ(store::DefaultDriver().ClearOwner(ChartFile(), "someone"), StatusSuccess);
  vendor_.PurchaseAccount("5000");
  EXPECT_EQ(vendor_.PurchaseAccount(), "5000");
}

TEST_F(VendorPurchaseAccount, OfAChartThatCannotBeWrittenRaises) {
  test::WhereOnlyThisIsReadOnly(ChartFile(), [] {
    Vendor vendor;
    ASSERT_EQ(vendor.OpenFile(), StatusSuccess);
    ExpectRaised([&] { vendor.PurchaseAccount("5000"); }, ErrorRead, OpenOfChart, StatusPermission);
  });
}

TEST_F(VendorPurchaseAccount, KeepsTheChartOpenUntilCloseFile) {
  EXPECT_FALSE(IsHeldOpen(ChartFile()));
  vendor_.PurchaseAccount("5000");
  EXPECT_TRUE(IsHeldOpen(ChartFile()));
  EXPECT_EQ(vendor_.CloseFile(), StatusSuccess);
  EXPECT_FALSE(IsHeldOpen(ChartFile()));
}

TEST_F(VendorPurchaseAccount, KeepsTheChartOpenAfterAnIDThatIsUnknown) {
  EXPECT_EQ(RaisedNumber([&] { vendor_.PurchaseAccount("9999"); }), ErrorAccount);
  EXPECT_TRUE(IsHeldOpen(ChartFile()));
}

// CloseFile looks at what it knows to be open, one file after the other.
TEST_F(VendorPurchaseAccount, ClosesTheChartThoughTheVendorsAreNotOpen) {
  Vendor vendor;
  vendor.PurchaseAccount("5000");
  EXPECT_TRUE(IsHeldOpen(ChartFile()));
  EXPECT_EQ(vendor.CloseFile(), StatusSuccess);
  EXPECT_FALSE(IsHeldOpen(ChartFile()));
}

TEST_F(VendorPurchaseAccount, KeepsNoChartOpenAtDestruction) {
  {
    Vendor vendor;
    ASSERT_EQ(vendor.OpenFile(), StatusSuccess);
    vendor.PurchaseAccount("5000");
    ASSERT_TRUE(IsHeldOpen(ChartFile()));
  }
  EXPECT_FALSE(IsHeldOpen(ChartFile()));
}

// OpenFile takes the chart for closed, so that the CloseFile after it passes it over.
TEST_F(VendorPurchaseAccount, KeepsTheChartOpenFromASecondOpenFileToDestruction) {
  {
    Vendor vendor;
    ASSERT_EQ(vendor.OpenFile(), StatusSuccess);
    vendor.PurchaseAccount("5000");
    ASSERT_EQ(vendor.OpenFile(), StatusSuccess);
    EXPECT_TRUE(IsHeldOpen(ChartFile()));
    ASSERT_EQ(vendor.CloseFile(), StatusSuccess);
    EXPECT_TRUE(IsHeldOpen(ChartFile()));
  }
  EXPECT_FALSE(IsHeldOpen(ChartFile()));
}

TEST_F(VendorPurchaseAccount, OpensTheChartAgainAfterASecondOpenFile) {
  vendor_.PurchaseAccount("5000");
  ASSERT_EQ(vendor_.OpenFile(), StatusSuccess);
  vendor_.PurchaseAccount("6000");
  EXPECT_EQ(vendor_.PurchaseAccount(), "6000");
  EXPECT_EQ(vendor_.CloseFile(), StatusSuccess);
  EXPECT_FALSE(IsHeldOpen(ChartFile()));
}

TEST_F(VendorPurchaseAccount, DoesNotTellOfAChartThatFailsToClose) {
  test::RunInChild([&] {
    Vendor vendor;
    ASSERT_EQ(vendor.OpenFile(), StatusSuccess);
    vendor.PurchaseAccount("5000");
    AddAccount(company_.Folder(), {"7000", 19});
    test::BreakDisk(ChartFile());
    EXPECT_EQ(vendor.CloseFile(), StatusSuccess);
    EXPECT_EQ(vendor.CloseFile(), StatusSuccess);
  });
}

// --- Ship method ---

class VendorShipVia : public VendorLookUpTest {
 protected:
  explicit VendorShipVia(double release = 13.0) : VendorLookUpTest(release) {
    SetMethods(TenShipMethods);
  }

  void SetMethods(const test::ShipMethodTexts& methods) {
    test::SetShipMethods(company_.Folder(), methods);
  }

  /// The text of the ship method of a vendor on file.
  std::string StoredText(std::string_view id) {
    return Stored(id,
                  [](Tovrin2Record& record) { return record.GetText(VendorRecord::ShipViaText); });
  }

  /// Adds a vendor with that text on file and reads it into `vendor_`.
  void ReadVendorThatShipsBy(std::string_view text) {
    OpenRecordFile(VendorFile(), VendorRecord::Describe()).Add([&](Tovrin2Record& record) {
      record.SetText(VendorRecord::VendorID, text);
      record.SetText(VendorRecord::ShipViaText, text);
    });
    ASSERT_EQ(vendor_.GetEqual(text), StatusSuccess);
  }
};

TEST_F(VendorShipVia, ReadsOneLessThanTheNumberOfTheMethod) {
  ReadVendorThatShipsBy("Airborne");
  EXPECT_EQ(vendor_.ShipVia(), 0);
  ReadVendorThatShipsBy("Courier");
  EXPECT_EQ(vendor_.ShipVia(), 1);
  ReadVendorThatShipsBy("Van");
  EXPECT_EQ(vendor_.ShipVia(), 9);
}

// Unlike that of a customer.
TEST_F(VendorShipVia, ReadsWhatWasAssigned) {
  for (std::int16_t method = 0; method <= 9; ++method) {
    vendor_.ShipVia(method);
    EXPECT_EQ(vendor_.ShipVia(), method);
  }
}

TEST_F(VendorShipVia, IsStoredAsTheTextOfTheNextMethod) {
  vendor_.ShipVia(2);
  ASSERT_EQ(vendor_.Insert(), StatusSuccess);
  EXPECT_EQ(StoredText("ADAMS"), "Hand");
}

TEST_F(VendorShipVia, IsClearedByMinus1) {
  ReadVendorThatShipsBy("Courier");
  vendor_.ShipVia(-1);
  EXPECT_EQ(vendor_.ShipVia(), 0);
  ASSERT_EQ(vendor_.Update(), StatusSuccess);
  EXPECT_EQ(StoredText("Courier"), "");
}

TEST_F(VendorShipVia, OutsideMinus1To9Raises9AndStaysAsItWas) {
  vendor_.ShipVia(5);
  for (const std::int16_t method : {std::int16_t{10}, std::int16_t{11}, std::int16_t{-2},
                                    std::int16_t{-32768}, std::int16_t{32767}}) {
    EXPECT_EQ(RaisedNumber([&] { vendor_.ShipVia(method); }), 9) << method;
    EXPECT_EQ(vendor_.ShipVia(), 5) << method;
  }
}

TEST_F(VendorShipVia, OfATextThatNoMethodIsReads0) {
  for (const char* text : {"Balloon", "courier", "Courier ", "Cour"}) {
    ReadVendorThatShipsBy(text);
    EXPECT_EQ(vendor_.ShipVia(), 0) << text;
  }
}

TEST_F(VendorShipVia, WithoutATextIsTheFirstMethodWithoutOne) {
  EXPECT_EQ(vendor_.ShipVia(), 0);
  test::ShipMethodTexts methods = TenShipMethods;
  methods[2] = "";
  SetMethods(methods);
  ASSERT_EQ(vendor_.OpenFile(), StatusSuccess);
  EXPECT_EQ(vendor_.ShipVia(), 2);
}

TEST_F(VendorShipVia, IsTheFirstOfTwoMethodsOfOneName) {
  test::ShipMethodTexts methods = TenShipMethods;
  methods[7] = "Courier";
  SetMethods(methods);
  vendor_.ShipVia(7);
  EXPECT_EQ(vendor_.ShipVia(), 1);
}

TEST_F(VendorShipVia, ReadsTheMethodsOnceAndAgainAfterOpenFile) {
  EXPECT_EQ(vendor_.ShipVia(), 0);
  SetMethods({"Balloon"});
  vendor_.ShipVia(1);
  EXPECT_EQ(vendor_.ShipVia(), 1);
  ASSERT_EQ(vendor_.OpenFile(), StatusSuccess);
  vendor_.ShipVia(0);
  ASSERT_EQ(vendor_.Insert(), StatusSuccess);
  EXPECT_EQ(StoredText(""), "Balloon");
}

TEST_F(VendorShipVia, LeavesTheFileOfTheMethodsClosed) {
  EXPECT_EQ(vendor_.ShipVia(), 0);
  EXPECT_FALSE(IsHeldOpen(GeneralFile()));
}

TEST_F(VendorShipVia, WithoutTheFileTakesAllMethodsForEmptyUntilOpenFile) {
  ReadVendorThatShipsBy("Courier");
  {
    const TakenAway away(GeneralFile());
    EXPECT_EQ(vendor_.ShipVia(), 0);
  }
  EXPECT_EQ(vendor_.ShipVia(), 0) << "a failure is not tried again";
  vendor_.ShipVia(4);
  ASSERT_EQ(vendor_.Update(), StatusSuccess);
  EXPECT_EQ(StoredText("Courier"), "") << "a method that is not known clears the text";
  ASSERT_EQ(vendor_.OpenFile(), StatusSuccess);
  vendor_.ShipVia(1);
  EXPECT_EQ(vendor_.ShipVia(), 1);
}

TEST_F(VendorShipVia, AssignedWithoutTheFileClearsTheTextWhateverTheNumber) {
  for (const std::int16_t method : {std::int16_t{10}, std::int16_t{-2}, std::int16_t{32767}}) {
    const std::string id = "Courier" + std::to_string(method);
    OpenRecordFile(VendorFile(), VendorRecord::Describe()).Add([&](Tovrin2Record& record) {
      record.SetText(VendorRecord::VendorID, id);
      record.SetText(VendorRecord::ShipViaText, "Courier");
    });
    ASSERT_EQ(vendor_.OpenFile(), StatusSuccess);
    ASSERT_EQ(vendor_.GetEqual(id), StatusSuccess);
    {
      const TakenAway away(GeneralFile());
      EXPECT_EQ(RaisedNumber([&] { vendor_.ShipVia(method); }), 0) << method;
    }
    ASSERT_EQ(vendor_.Update(), StatusSuccess);
    EXPECT_EQ(StoredText(id), "") << method;
  }
}

TEST_F(VendorShipVia, WithoutTheRowTakesAllMethodsForEmpty) {
  test::DeleteShipMethods(company_.Folder());
  ReadVendorThatShipsBy("Courier");
  EXPECT_EQ(vendor_.ShipVia(), 0);
  EXPECT_FALSE(IsHeldOpen(GeneralFile()));
}

TEST_F(VendorShipVia, OfAFileOfAnotherOwnerTakesAllMethodsForEmpty) {
  test::ProtectFile(GeneralFile(), /*allowRead=*/false);
  ReadVendorThatShipsBy("Courier");
  EXPECT_EQ(vendor_.ShipVia(), 0);
}

TEST_F(VendorShipVia, OfAFileThatCannotBeWrittenTakesAllMethodsForEmpty) {
  ReadVendorThatShipsBy("Courier");
  test::WhereOnlyThisIsReadOnly(GeneralFile(), [] {
    Vendor vendor;
    ASSERT_EQ(vendor.OpenFile(), StatusSuccess);
    ASSERT_EQ(vendor.GetEqual("Courier"), StatusSuccess);
    EXPECT_EQ(vendor.ShipVia(), 0);
  });
}

class VendorShipViaBelow13 : public VendorShipVia {
 protected:
  VendorShipViaBelow13() : VendorShipVia(12.9) {}
};

TEST_F(VendorShipViaBelow13, IsTheNumberItself) {
  std::filesystem::remove(GeneralFile());
  for (const std::int16_t method :
       {std::int16_t{2}, std::int16_t{-1}, std::int16_t{10}, std::int16_t{32767}}) {
    vendor_.ShipVia(method);
    EXPECT_EQ(vendor_.ShipVia(), method);
  }
  ASSERT_EQ(vendor_.Insert(), StatusSuccess);
  EXPECT_EQ(StoredText("ADAMS"), "");
}

TEST_F(VendorShipViaBelow13, DoesNotLookAtTheText) {
  ReadVendorThatShipsBy("Courier");
  EXPECT_EQ(vendor_.ShipVia(), 0);
}

}  // namespace
}  // namespace larkmoor
