// The fields of the class LineItem that the record keeps as indexes into other files: three
// accounts and the buyer, in every release of the data.
#include <cstdint>
#include <filesystem>
#include <ostream>
#include <string>
#include <string_view>

#include <gtest/gtest.h>

#include <larkmoor/masters/line_item.h>
#include <larkmoor/status.h>

#include "connection/status_messages.h"
#include "engine/records/line_item.h"
#include "engine/store/driver.h"
#include "engine/tovrin_file_names.h"
#include "support/accounts.h"
#include "support/child_process.h"
#include "support/company.h"
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
using test::TakenAway;

/// A company with two accounts and two employees, and an object open on its items, with a blank
/// record in hand.
class LineItemLookUpTest : public testing::Test {
 protected:
  explicit LineItemLookUpTest(double release = 19.0) : company_(release) {
    AddAccount(company_.Folder(), {"4000", 17});
    AddAccount(company_.Folder(), {"5000", 18});
    AddEmployee(company_.Folder(), {"ROSA", 7});
    AddEmployee(company_.Folder(), {"TOM", 8});
    EXPECT_EQ(item_.OpenFile(), StatusSuccess);
    item_.ItemID("AXLE");
  }

  std::filesystem::path File(std::string_view name) const { return company_.Folder() / name; }
  std::filesystem::path ChartFile() const { return File(TovrinFileNames::ChartFile()); }
  std::filesystem::path EmployeeFile() const { return File(TovrinFileNames::EmployeeFile()); }
  std::filesystem::path ItemFile() const { return File(TovrinFileNames::LineItemFile()); }

  /// An index of the only item on file.
  std::int32_t StoredIndex(const Field& field) {
    OpenRecordFile file(ItemFile(), LineItemRecord::Describe());
    EXPECT_EQ(file.File().btStepFirst(), StatusSuccess);
    return file.Record().GetLong(field);
  }

  /// Adds the only item, with that index on file, and reads it into `item_`.
  void ReadItemWith(const Field& field, std::int32_t index) {
    OpenRecordFile(ItemFile(), LineItemRecord::Describe()).Add([&](Tovrin2Record& record) {
      record.SetText(LineItemRecord::ItemID, "AXLE");
      record.SetLong(field, index);
    });
    ASSERT_EQ(item_.GetEqual("AXLE"), StatusSuccess);
  }

  Company company_;
  LineItem item_;
};

// --- Accounts ---

/// A property that shows an account.
struct AccountProperty {
  const char* name;
  std::string (LineItem::*get)();
  void (LineItem::*let)(std::string_view);
  const Field* index;
};

void PrintTo(const AccountProperty& property, std::ostream* out) { *out << property.name; }

const AccountProperty AccountProperties[] = {
    {"GLCOGSSalaryAccount", &LineItem::GLCOGSSalaryAccount, &LineItem::GLCOGSSalaryAccount,
     &LineItemRecord::GLCOGSSalaryAccountIndex},
    {"GLInventoryAccount", &LineItem::GLInventoryAccount, &LineItem::GLInventoryAccount,
     &LineItemRecord::GLInventoryAccountIndex},
    {"GLSalesAccount", &LineItem::GLSalesAccount, &LineItem::GLSalesAccount,
     &LineItemRecord::GLSalesAccountIndex},
};

std::string NameOfAccount(const testing::TestParamInfo<AccountProperty>& tested) {
  return tested.param.name;
}

class LineItemAccount : public LineItemLookUpTest,
                        public testing::WithParamInterface<AccountProperty> {
 protected:
  explicit LineItemAccount(double release = 19.0) : LineItemLookUpTest(release) {}

  static std::string Get(LineItem& item) { return (item.*GetParam().get)(); }
  static void Let(LineItem& item, std::string_view id) { (item.*GetParam().let)(id); }
  std::string Get() { return Get(item_); }
  void Let(std::string_view id) { Let(item_, id); }

  static std::string Step(std::string_view step) {
    return "LineItem." + std::string(GetParam().name) + "->Chart." + std::string(step);
  }
};

TEST_P(LineItemAccount, IsStoredAsTheIndexAndShownAsTheID) {
  Let("4000");
  EXPECT_EQ(Get(), "4000");
  ASSERT_EQ(item_.Insert(), StatusSuccess);
  EXPECT_EQ(StoredIndex(*GetParam().index), 17);
  LineItem reader;
  ASSERT_EQ(reader.OpenFile(), StatusSuccess);
  ASSERT_EQ(reader.GetEqual("AXLE"), StatusSuccess);
  EXPECT_EQ(Get(reader), "4000");
}

TEST_P(LineItemAccount, OfIndex0IsEmptyAndOpensNoFile) {
  std::filesystem::remove(ChartFile());
  EXPECT_EQ(Get(), "");
}

TEST_P(LineItemAccount, BecomesIndex0ByTheEmptyIDAndOpensNoFile) {
  ReadItemWith(*GetParam().index, 17);
  std::filesystem::remove(ChartFile());
  Let("");
  EXPECT_EQ(Get(), "");
  ASSERT_EQ(item_.Update(), StatusSuccess);
  EXPECT_EQ(StoredIndex(*GetParam().index), 0);
}

TEST_P(LineItemAccount, OfAnUnknownIndexRaises) {
  ReadItemWith(*GetParam().index, 99);
  ExpectRaised([&] { return Get(); }, ErrorRead, Step("GetEqual(99)"), StatusKeyNotFound);
}

TEST_P(LineItemAccount, AssignedAnUnknownIDRaisesAndStaysAsItWas) {
  Let("4000");
  for (const std::string id : {"9999", "400", "40000", "4000 "}) {
    ExpectRaised([&] { Let(id); }, ErrorAccount, Step("GetForAccountID(" + id + ")"),
                 StatusKeyNotFound);
    EXPECT_EQ(Get(), "4000") << id;
  }
}

TEST_P(LineItemAccount, WithoutTheFileRaisesAtEachTryAndStaysAsItWas) {
  ReadItemWith(*GetParam().index, 17);
  {
    const TakenAway away(ChartFile());
    for (int tries = 0; tries < 2; ++tries) {
      ExpectRaised([&] { return Get(); }, ErrorRead, Step("Open"), StatusFileNotFound);
      ExpectRaised([&] { Let("5000"); }, ErrorRead, Step("Open"), StatusFileNotFound);
    }
  }
  EXPECT_EQ(Get(), "4000");
}

// A file of another owner is no exception here.
TEST_P(LineItemAccount, OfAChartOfAnotherOwnerRaisesAtEachTry) {
  test::ProtectFile(ChartFile(), /*allowRead=*/false);
  for (int tries = 0; tries < 2; ++tries) {
    ExpectRaised([&] { Let("4000"); }, ErrorRead, Step("Open"), StatusInvalidOwner);
  }
  ASSERT_EQ(store::DefaultDriver().ClearOwner(ChartFile(), "someone"), StatusSuccess);
  Let("4000");
  EXPECT_EQ(Get(), "4000");
}

TEST_P(LineItemAccount, OfAChartThatCannotBeWrittenRaises) {
  test::WhereOnlyThisIsReadOnly(ChartFile(), [] {
    LineItem item;
    ASSERT_EQ(item.OpenFile(), StatusSuccess);
    ExpectRaised([&] { Let(item, "4000"); }, ErrorRead, Step("Open"), StatusPermission);
  });
}

TEST_P(LineItemAccount, KeepsTheChartOpenUntilCloseFile) {
  EXPECT_FALSE(IsHeldOpen(ChartFile()));
  Let("4000");
  EXPECT_TRUE(IsHeldOpen(ChartFile()));
  EXPECT_EQ(item_.CloseFile(), StatusSuccess);
  EXPECT_FALSE(IsHeldOpen(ChartFile()));
}

INSTANTIATE_TEST_SUITE_P(LineItem, LineItemAccount, testing::ValuesIn(AccountProperties),
                         NameOfAccount);

class LineItemAccountOfOldData : public LineItemAccount {
 protected:
  LineItemAccountOfOldData() : LineItemAccount(8.0) {}
};

TEST_P(LineItemAccountOfOldData, IsLookedUpToo) {
  ExpectRaised([&] { Let("no account at all"); }, ErrorAccount,
               Step("GetForAccountID(no account at all)"), StatusKeyNotFound);
  Let("4000");
  EXPECT_EQ(Get(), "4000");
  ASSERT_EQ(item_.Insert(), StatusSuccess);
  EXPECT_EQ(StoredIndex(*GetParam().index), 17);
}

INSTANTIATE_TEST_SUITE_P(LineItem, LineItemAccountOfOldData, testing::ValuesIn(AccountProperties),
                         NameOfAccount);

// --- The buyer ---

class LineItemBuyer : public LineItemLookUpTest {
 protected:
  explicit LineItemBuyer(double release = 19.0) : LineItemLookUpTest(release) {}
};

constexpr std::string_view OpenOfEmployees = "LineItem.BuyerID->Employee.Open";

TEST_F(LineItemBuyer, IsStoredAsTheIndexAndShownAsTheID) {
  item_.BuyerID("ROSA");
  EXPECT_EQ(item_.BuyerID(), "ROSA");
  item_.BuyerID("TOM");
  EXPECT_EQ(item_.BuyerID(), "TOM");
  ASSERT_EQ(item_.Insert(), StatusSuccess);
  EXPECT_EQ(StoredIndex(LineItemRecord::BuyerIndex), 8);
}

TEST_F(LineItemBuyer, IsShownByTheIndexOnFile) {
  ReadItemWith(LineItemRecord::BuyerIndex, 7);
  EXPECT_EQ(item_.BuyerID(), "ROSA");
}

TEST_F(LineItemBuyer, OfIndex0IsEmptyAndOpensNoFile) {
  std::filesystem::remove(EmployeeFile());
  EXPECT_EQ(item_.BuyerID(), "");
}

TEST_F(LineItemBuyer, BecomesIndex0ByTheEmptyIDAndOpensNoFile) {
  ReadItemWith(LineItemRecord::BuyerIndex, 7);
  std::filesystem::remove(EmployeeFile());
  item_.BuyerID("");
  EXPECT_EQ(item_.BuyerID(), "");
  ASSERT_EQ(item_.Update(), StatusSuccess);
  EXPECT_EQ(StoredIndex(LineItemRecord::BuyerIndex), 0);
}

TEST_F(LineItemBuyer, OfAnUnknownIndexRaises) {
  ReadItemWith(LineItemRecord::BuyerIndex, 9);
  ExpectRaised([&] { return item_.BuyerID(); }, ErrorRead,
               "LineItem.BuyerID->Employee.GetForIndex(9)", StatusKeyNotFound);
}

TEST_F(LineItemBuyer, AssignedAnUnknownIDRaisesAndStaysAsItWas) {
  item_.BuyerID("ROSA");
  for (const std::string id : {"NOBODY", "ROS", "ROSAMUND", "Rosa"}) {
    ExpectRaised([&] { item_.BuyerID(id); }, ErrorAccount,
                 "LineItem.BuyerID->Employee.GetEqual(" + id + ")", StatusKeyNotFound);
    EXPECT_EQ(item_.BuyerID(), "ROSA") << id;
  }
}

TEST_F(LineItemBuyer, WithoutTheFileRaisesAtEachTryAndStaysAsItWas) {
  ReadItemWith(LineItemRecord::BuyerIndex, 7);
  {
    const TakenAway away(EmployeeFile());
    for (int tries = 0; tries < 2; ++tries) {
      ExpectRaised([&] { return item_.BuyerID(); }, ErrorRead, OpenOfEmployees, StatusFileNotFound);
      ExpectRaised([&] { item_.BuyerID("TOM"); }, ErrorRead, OpenOfEmployees, StatusFileNotFound);
    }
  }
  EXPECT_EQ(item_.BuyerID(), "ROSA");
}

TEST_F(LineItemBuyer, OfAFileOfAnotherOwnerRaisesAtEachTry) {
  test::ProtectFile(EmployeeFile(), /*allowRead=*/false);
  for (int tries = 0; tries < 2; ++tries) {
    ExpectRaised([&] { item_.BuyerID("ROSA"); }, ErrorRead, OpenOfEmployees, StatusInvalidOwner);
  }
}

TEST_F(LineItemBuyer, OfAFileThatCannotBeWrittenRaises) {
  test::WhereOnlyThisIsReadOnly(EmployeeFile(), [] {
    LineItem item;
    ASSERT_EQ(item.OpenFile(), StatusSuccess);
    ExpectRaised([&] { item.BuyerID("ROSA"); }, ErrorRead, OpenOfEmployees, StatusPermission);
  });
}

TEST_F(LineItemBuyer, KeepsTheEmployeesOpenUntilCloseFile) {
  EXPECT_FALSE(IsHeldOpen(EmployeeFile()));
  item_.BuyerID("ROSA");
  EXPECT_TRUE(IsHeldOpen(EmployeeFile()));
  EXPECT_FALSE(IsHeldOpen(ChartFile()));
  EXPECT_EQ(item_.CloseFile(), StatusSuccess);
  EXPECT_FALSE(IsHeldOpen(EmployeeFile()));
}

class LineItemBuyerOfOldData : public LineItemBuyer {
 protected:
  LineItemBuyerOfOldData() : LineItemBuyer(8.0) {}
};

TEST_F(LineItemBuyerOfOldData, IsLookedUpToo) {
  item_.BuyerID("TOM");
  EXPECT_EQ(item_.BuyerID(), "TOM");
  ASSERT_EQ(item_.Insert(), StatusSuccess);
  EXPECT_EQ(StoredIndex(LineItemRecord::BuyerIndex), 8);
}

// --- The files of the look-ups over a second OpenFile ---

using LineItemLookUpFiles = LineItemLookUpTest;

// OpenFile takes them for closed, so that the CloseFile after it passes them over.
TEST_F(LineItemLookUpFiles, StayOpenFromASecondOpenFileToDestruction) {
  {
    LineItem item;
    ASSERT_EQ(item.OpenFile(), StatusSuccess);
    item.GLSalesAccount("4000");
    item.BuyerID("ROSA");
    ASSERT_EQ(item.OpenFile(), StatusSuccess);
    ASSERT_EQ(item.CloseFile(), StatusSuccess);
    EXPECT_TRUE(IsHeldOpen(ChartFile()));
    EXPECT_TRUE(IsHeldOpen(EmployeeFile()));
  }
  EXPECT_FALSE(IsHeldOpen(ChartFile()));
  EXPECT_FALSE(IsHeldOpen(EmployeeFile()));
}

// An OpenFile that fails forgets them as well.
TEST_F(LineItemLookUpFiles, StayOpenFromAFailedOpenFileToDestruction) {
  {
    LineItem item;
    ASSERT_EQ(item.OpenFile(), StatusSuccess);
    item.GLSalesAccount("4000");
    item.BuyerID("ROSA");
    {
      const TakenAway away(ItemFile());
      ASSERT_EQ(item.OpenFile(), StatusFileNotFound);
    }
    ASSERT_EQ(item.CloseFile(), StatusFileNotOpen);
    EXPECT_TRUE(IsHeldOpen(ChartFile()));
    EXPECT_TRUE(IsHeldOpen(EmployeeFile()));
  }
  EXPECT_FALSE(IsHeldOpen(ChartFile()));
  EXPECT_FALSE(IsHeldOpen(EmployeeFile()));
}

TEST_F(LineItemLookUpFiles, AreOpenedAgainAfterASecondOpenFile) {
  item_.GLSalesAccount("4000");
  item_.BuyerID("ROSA");
  ASSERT_EQ(item_.OpenFile(), StatusSuccess);
  item_.GLSalesAccount("5000");
  item_.BuyerID("TOM");
  EXPECT_EQ(item_.GLSalesAccount(), "5000");
  EXPECT_EQ(item_.BuyerID(), "TOM");
  EXPECT_EQ(item_.CloseFile(), StatusSuccess);
  EXPECT_FALSE(IsHeldOpen(ChartFile()));
  EXPECT_FALSE(IsHeldOpen(EmployeeFile()));
}

TEST_F(LineItemLookUpFiles, ThatFailToCloseAreNotTold) {
  test::RunInChild([&] {
    LineItem item;
    ASSERT_EQ(item.OpenFile(), StatusSuccess);
    item.BuyerID("ROSA");
    AddEmployee(company_.Folder(), {"UMA", 9});
    test::BreakDisk(EmployeeFile());
    EXPECT_EQ(item.CloseFile(), StatusSuccess);
    EXPECT_EQ(item.CloseFile(), StatusSuccess);
  });
}

}  // namespace
}  // namespace larkmoor
