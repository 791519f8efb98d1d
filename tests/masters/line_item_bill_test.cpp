// The components of an assembly, as the class LineItem shows them: below release 11.5 the item's
// own record holds them, from 11.5 on the newest of the revisions in the file of bills does, which
// is read once for an item and cannot be changed from here.
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <string_view>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include <larkmoor/masters/line_item.h>
#include <larkmoor/status.h>

#include "engine/records/bom_history.h"
#include "engine/records/line_item.h"
#include "engine/store/driver.h"
#include "engine/tovrin_file.h"
#include "engine/tovrin_file_names.h"
#include "support/company.h"
#include "support/errors.h"
#include "support/masters.h"
#include "support/read_only_file.h"
#include "support/record_files.h"
#include "support/taken_away.h"

namespace larkmoor {
namespace {

using test::AddItem;
using test::Company;
using test::IsHeldOpen;
using test::OpenRecordFile;
using test::RaisedNumber;
using test::TakenAway;

// The items of every company here.
constexpr std::int32_t Cart = 7;
constexpr std::int32_t Wagon = 8;

struct Component {
  std::int32_t item;
  double quantity;
};
using Components = std::vector<Component>;

/// That many components, of the items 101 and on.
Components Some(int count) {
  Components components;
  for (int number = 1; number <= count; ++number)
    components.push_back({100 + number, number + 0.5});
  return components;
}

/// A company with two items, and an object that has the first of them in hand.
class LineItemBillTest : public testing::Test {
 protected:
  explicit LineItemBillTest(double release = 11.5) : company_(release) {
    AddItem(company_.Folder(), {"CART", Cart});
    AddItem(company_.Folder(), {"WAGON", Wagon});
    EXPECT_EQ(item_.OpenFile(), StatusSuccess);
    EXPECT_EQ(item_.GetEqual("CART"), StatusSuccess);
  }

  std::filesystem::path BillFile() const {
    return company_.Folder() / TovrinFileNames::BOMHistoryFile();
  }
  std::filesystem::path ItemFile() const {
    return company_.Folder() / TovrinFileNames::LineItemFile();
  }

  /// Adds a revision of an assembly's bill.
  void AddRevision(std::int32_t assembly, std::int32_t revision, const Components& components,
                   double effectiveDate = 45000) {
    OpenRecordFile(BillFile(), BOMHistoryRecord::Describe()).Add([&](Tovrin2Record& record) {
      record.SetLong(BOMHistoryRecord::AssemblyRecordNo, assembly);
      record.SetLong(BOMHistoryRecord::RevisionNumber, revision);
      record.SetDate(BOMHistoryRecord::EffectiveDate, effectiveDate);
      record.SetLong(BOMHistoryRecord::NoComponents, static_cast<std::int32_t>(components.size()));
      int number = 1;
      for (const Component& component : components) {
        record.SetLong(BOMHistoryRecord::ComponentRecordNumber, component.item, number);
        record.SetDouble(BOMHistoryRecord::ComponentQtyRequired, component.quantity, number);
        ++number;
      }
    });
  }

  /// Puts components into the record of CART on file, and has `item_` read it.
  void StoreInRecord(const Components& components) {
    OpenRecordFile file(ItemFile(), LineItemRecord::Describe());
    ASSERT_EQ(file.File().btStepFirst(), StatusSuccess);
    file.Record().SetInteger(LineItemRecord::NumberOfComponents,
                             static_cast<std::int16_t>(components.size()));
    int number = 1;
    for (const Component& component : components) {
      file.Record().SetLong(LineItemRecord::ComponentIndex, component.item, number);
      file.Record().SetDouble(LineItemRecord::ComponentQuantity, component.quantity, number);
      ++number;
    }
    ASSERT_EQ(file.File().btUpdate(0), StatusSuccess);
    ASSERT_EQ(item_.GetEqual("CART"), StatusSuccess);
  }

  Company company_;
  LineItem item_;
};

/// Indexes that no repeating field has.
constexpr std::int16_t Outside[] = {-32768, -1, 32767};

// --- In the item's record ---

class LineItemBillBelow11_5 : public LineItemBillTest {
 protected:
  LineItemBillBelow11_5() : LineItemBillTest(11.4) { std::filesystem::remove(BillFile()); }
};

TEST_F(LineItemBillBelow11_5, IsShownFromTheRecord) {
  StoreInRecord({{21, 1.5}, {22, 2.5}});
  EXPECT_EQ(item_.NumberOfComponents(), 2);
  EXPECT_EQ(item_.ComponentIndex(1), 21);
  EXPECT_EQ(item_.ComponentQuantity(1), 1.5);
  EXPECT_EQ(item_.ComponentIndex(2), 22);
  EXPECT_EQ(item_.ComponentQuantity(2), 2.5);
}

TEST_F(LineItemBillBelow11_5, TakesTheIndexAsItIs) {
  StoreInRecord({{21, 1.5}});
  EXPECT_EQ(item_.ComponentIndex(0), 0);
  EXPECT_EQ(item_.ComponentQuantity(0), 0);
  EXPECT_EQ(item_.ComponentIndex(99), 0);
  EXPECT_EQ(item_.ComponentQuantity(99), 0);
  for (const std::int16_t index : Outside) {
    EXPECT_EQ(RaisedNumber([&] { return item_.ComponentIndex(index); }), 9) << index;
    EXPECT_EQ(RaisedNumber([&] { item_.ComponentIndex(index, 21); }), 9) << index;
    EXPECT_EQ(RaisedNumber([&] { return item_.ComponentQuantity(index); }), 9) << index;
    EXPECT_EQ(RaisedNumber([&] { item_.ComponentQuantity(index, 1.5); }), 9) << index;
  }
}

TEST_F(LineItemBillBelow11_5, CanBeChanged) {
  item_.NumberOfComponents(1);
  item_.ComponentIndex(1, 21);
  item_.ComponentQuantity(1, 1.5);
  item_.ComponentIndex(99, 22);
  ASSERT_EQ(item_.Update(), StatusSuccess);
  LineItem reader;
  ASSERT_EQ(reader.OpenFile(), StatusSuccess);
  ASSERT_EQ(reader.GetEqual("CART"), StatusSuccess);
  EXPECT_EQ(reader.NumberOfComponents(), 1);
  EXPECT_EQ(reader.ComponentIndex(1), 21);
  EXPECT_EQ(reader.ComponentQuantity(1), 1.5);
  EXPECT_EQ(reader.ComponentIndex(99), 22);
}

TEST(LineItemBillOfAnObjectThatNeverWasOpen, IsThatOfTheRecord) {
  LineItem item;
  item.NumberOfComponents(3);
  item.ComponentQuantity(2, 1.5);
  EXPECT_EQ(item.NumberOfComponents(), 3);
  EXPECT_EQ(item.ComponentQuantity(2), 1.5);
}

// --- In the file of revisions ---

using LineItemBill = LineItemBillTest;
using LineItemBillLoad = LineItemBillTest;
using LineItemBillFile = LineItemBillTest;

TEST_F(LineItemBill, IsThatOfTheRevision) {
  AddRevision(Cart, 1, {{21, 1.5}, {22, 2.5}});
  EXPECT_EQ(item_.NumberOfComponents(), 2);
  EXPECT_EQ(item_.ComponentIndex(1), 21);
  EXPECT_EQ(item_.ComponentQuantity(1), 1.5);
  EXPECT_EQ(item_.ComponentIndex(2), 22);
  EXPECT_EQ(item_.ComponentQuantity(2), 2.5);
}

TEST_F(LineItemBill, OfAnItemWithoutRevisionsIsEmpty) {
  AddRevision(Wagon, 1, {{21, 1.5}});
  AddRevision(Cart - 1, 1, {{22, 2.5}});
  EXPECT_EQ(item_.NumberOfComponents(), 0);
  EXPECT_EQ(item_.ComponentIndex(1), 0);
  EXPECT_EQ(item_.ComponentQuantity(1), 0);
}

TEST_F(LineItemBill, IsNoLongerThatOfTheRecord) {
  StoreInRecord({{21, 1.5}});
  EXPECT_EQ(item_.NumberOfComponents(), 0);
  EXPECT_EQ(item_.ComponentIndex(1), 0);
  EXPECT_EQ(item_.ComponentQuantity(1), 0);
}

TEST_F(LineItemBill, IsThatOfTheHighestRevisionWhereverItLies) {
  AddRevision(Cart, 2, {{22, 2.5}});
  AddRevision(Cart, 3, {{23, 3.5}, {33, 3.75}});
  AddRevision(Wagon, 9, {{29, 9.5}});
  AddRevision(Cart, 1, {{21, 1.5}, {31, 1.75}, {41, 1.25}});
  EXPECT_EQ(item_.NumberOfComponents(), 2);
  EXPECT_EQ(item_.ComponentIndex(1), 23);
  EXPECT_EQ(item_.ComponentQuantity(2), 3.75);
}

TEST_F(LineItemBill, IsThatOfTheLaterOfTwoRowsOfOneRevision) {
  AddRevision(Cart, 2, {{21, 1.5}});
  AddRevision(Cart, 2, {{22, 2.5}, {32, 2.75}});
  AddRevision(Cart, 1, {{23, 3.5}});
  EXPECT_EQ(item_.NumberOfComponents(), 2);
  EXPECT_EQ(item_.ComponentIndex(1), 22);
}

TEST_F(LineItemBill, DoesNotGoByTheDate) {
  AddRevision(Cart, 2, {{22, 2.5}}, /*effectiveDate=*/30000);
  AddRevision(Cart, 1, {{21, 1.5}}, /*effectiveDate=*/46000);
  EXPECT_EQ(item_.ComponentIndex(1), 22);
}

TEST_F(LineItemBill, MayBeThatOfRevision0AndNoneBelow) {
  AddRevision(Cart, -1, {{20, 0.5}});
  EXPECT_EQ(item_.NumberOfComponents(), 0);
  AddRevision(Cart, 0, {{21, 1.5}});
  ASSERT_EQ(item_.GetEqual("CART"), StatusSuccess);
  EXPECT_EQ(item_.NumberOfComponents(), 1);
  EXPECT_EQ(item_.ComponentIndex(1), 21);
}

TEST_F(LineItemBill, IsEmptyWhereTheNewestRevisionIs) {
  AddRevision(Cart, 1, {{21, 1.5}});
  AddRevision(Cart, 2, {});
  EXPECT_EQ(item_.NumberOfComponents(), 0);
  EXPECT_EQ(item_.ComponentIndex(1), 0);
  EXPECT_EQ(item_.ComponentQuantity(1), 0);
}

TEST_F(LineItemBill, OfAnIndexOutsideIsTheNearest) {
  AddRevision(Cart, 1, {{21, 1.5}, {22, 2.5}, {23, 3.5}});
  for (const std::int16_t index : {std::int16_t{0}, std::int16_t{-1}, std::int16_t{-32768}}) {
    EXPECT_EQ(item_.ComponentIndex(index), 21) << index;
    EXPECT_EQ(item_.ComponentQuantity(index), 1.5) << index;
  }
  for (const std::int16_t index : {std::int16_t{4}, std::int16_t{99}, std::int16_t{32767}}) {
    EXPECT_EQ(item_.ComponentIndex(index), 23) << index;
    EXPECT_EQ(item_.ComponentQuantity(index), 3.5) << index;
  }
}

TEST_F(LineItemBill, HoldsAsManyAs300Components) {
  AddRevision(Cart, 1, Some(300));
  EXPECT_EQ(item_.NumberOfComponents(), 300);
  EXPECT_EQ(item_.ComponentIndex(300), 400);
  EXPECT_EQ(item_.ComponentQuantity(300), 300.5);
}

class LineItemBillWritten : public LineItemBillTest, public testing::WithParamInterface<double> {
 protected:
  LineItemBillWritten() : LineItemBillTest(GetParam()) {}
};

TEST_P(LineItemBillWritten, StaysAsItWas) {
  StoreInRecord({{31, 9.5}});
  AddRevision(Cart, 1, {{21, 1.5}});
  item_.NumberOfComponents(5);
  item_.ComponentIndex(1, 99);
  item_.ComponentQuantity(1, 99.5);
  for (const std::int16_t index : Outside) {
    EXPECT_EQ(RaisedNumber([&] { item_.ComponentIndex(index, 99); }), 0) << index;
    EXPECT_EQ(RaisedNumber([&] { item_.ComponentQuantity(index, 99.5); }), 0) << index;
  }
  EXPECT_EQ(item_.NumberOfComponents(), 1);
  EXPECT_EQ(item_.ComponentIndex(1), 21);
  EXPECT_EQ(item_.ComponentQuantity(1), 1.5);
  ASSERT_EQ(item_.Update(), StatusSuccess);
  OpenRecordFile items(ItemFile(), LineItemRecord::Describe());
  ASSERT_EQ(items.File().btStepFirst(), StatusSuccess);
  EXPECT_EQ(items.Record().GetInteger(LineItemRecord::NumberOfComponents), 1);
  EXPECT_EQ(items.Record().GetLong(LineItemRecord::ComponentIndex, 1), 31);
  EXPECT_EQ(items.Record().GetDouble(LineItemRecord::ComponentQuantity, 1), 9.5);
  OpenRecordFile bills(BillFile(), BOMHistoryRecord::Describe());
  ASSERT_EQ(bills.File().btStepFirst(), StatusSuccess);
  EXPECT_EQ(bills.Record().GetLong(BOMHistoryRecord::ComponentRecordNumber, 1), 21);
}

INSTANTIATE_TEST_SUITE_P(LineItem, LineItemBillWritten, testing::Values(11.5, 12.0, 19.0));

// --- When it is read ---

TEST_F(LineItemBillLoad, FollowsTheItemInHand) {
  AddRevision(Cart, 1, Some(1));
  AddRevision(Wagon, 1, Some(2));
  const struct {
    const char* name;
    const char* from;  ///< the item in hand before
    std::function<Status()> read;
    int components;
  } reads[] = {
      {"GetEqual", "CART", [&] { return item_.GetEqual("WAGON"); }, 2},
      {"GetForIndex", "CART", [&] { return item_.GetForIndex(Wagon); }, 2},
      {"GetGreaterThan", "CART", [&] { return item_.GetGreaterThan("CART"); }, 2},
      {"GetGreaterThanOrEqual", "CART", [&] { return item_.GetGreaterThanOrEqual("D"); }, 2},
      {"GetLessThan", "WAGON", [&] { return item_.GetLessThan("WAGON"); }, 1},
      {"GetLessThanOrEqual", "WAGON", [&] { return item_.GetLessThanOrEqual("D"); }, 1},
      {"GetFirst", "WAGON", [&] { return item_.GetFirst(); }, 1},
      {"GetLast", "CART", [&] { return item_.GetLast(); }, 2},
      {"GetNext", "CART", [&] { return item_.GetNext(); }, 2},
      {"GetPrevious", "WAGON", [&] { return item_.GetPrevious(); }, 1},
      {"GetByPercent", "CART", [&] { return item_.GetByPercent(100); }, 2},
      {"StepFirst", "WAGON", [&] { return item_.StepFirst(); }, 1},
      {"StepLast", "CART", [&] { return item_.StepLast(); }, 2},
      {"StepNext", "CART", [&] { return item_.StepNext(); }, 2},
      {"StepPrevious", "WAGON", [&] { return item_.StepPrevious(); }, 1},
  };
  for (const auto& read : reads) {
    ASSERT_EQ(item_.GetEqual(read.from), StatusSuccess) << read.name;
    ASSERT_EQ(item_.NumberOfComponents(), 3 - read.components) << read.name;
    ASSERT_EQ(read.read(), StatusSuccess) << read.name;
    EXPECT_EQ(item_.NumberOfComponents(), read.components) << read.name;
    EXPECT_EQ(item_.ComponentIndex(99), 100 + read.components) << read.name;
  }
}

TEST_F(LineItemBillLoad, HappensOnceForTheItemInHand) {
  AddRevision(Cart, 1, Some(1));
  EXPECT_EQ(item_.NumberOfComponents(), 1);
  AddRevision(Cart, 2, Some(2));
  EXPECT_EQ(item_.NumberOfComponents(), 1);
  EXPECT_EQ(item_.ComponentIndex(2), 101);
  EXPECT_EQ(item_.ComponentQuantity(2), 1.5);
}

TEST_F(LineItemBillLoad, HappensOnceForAnItemWithoutRevisionsToo) {
  EXPECT_EQ(item_.NumberOfComponents(), 0);
  AddRevision(Cart, 1, Some(1));
  EXPECT_EQ(item_.NumberOfComponents(), 0);
}

TEST_F(LineItemBillLoad, HappensAgainAfterTheSameItemIsRead) {
  AddRevision(Cart, 1, Some(1));
  EXPECT_EQ(item_.NumberOfComponents(), 1);
  AddRevision(Cart, 2, Some(2));
  ASSERT_EQ(item_.GetEqual("CART"), StatusSuccess);
  EXPECT_EQ(item_.NumberOfComponents(), 2);
}

TEST_F(LineItemBillLoad, HappensAgainAlsoAfterAReadThatFindsNothing) {
  AddRevision(Cart, 1, Some(1));
  const std::function<Status()> reads[] = {
      [&] { return item_.GetEqual("NOTHING"); }, [&] { return item_.GetForIndex(99); },
      [&] { return item_.GetLessThan("CART"); }, [&] { return item_.StepPrevious(); }};
  int revision = 1;
  for (const auto& read : reads) {
    EXPECT_EQ(item_.NumberOfComponents(), revision);
    ++revision;
    AddRevision(Cart, revision, Some(revision));
    EXPECT_NE(read(), StatusSuccess);
    EXPECT_EQ(item_.NumberOfComponents(), revision);
  }
}

TEST_F(LineItemBillLoad, DoesNotHappenAgainAfterOperationsThatReadNoItem) {
  AddRevision(Cart, 1, Some(1));
  EXPECT_EQ(item_.NumberOfComponents(), 1);
  AddRevision(Cart, 2, Some(2));
  EXPECT_EQ(item_.FindByPercent(), 0);
  EXPECT_EQ(item_.NumberOfComponents(), 1) << "FindByPercent";
  EXPECT_EQ(item_.RecordCount(), 2);
  EXPECT_EQ(item_.NumberOfComponents(), 1) << "RecordCount";
  ASSERT_EQ(item_.Update(), StatusSuccess);
  EXPECT_EQ(item_.NumberOfComponents(), 1) << "Update";
  ASSERT_EQ(item_.Delete(), StatusSuccess);
  EXPECT_EQ(item_.NumberOfComponents(), 1) << "Delete";
}

TEST_F(LineItemBillLoad, HappensAgainAfterAnInsert) {
  AddRevision(Cart, 1, Some(1));
  EXPECT_EQ(item_.NumberOfComponents(), 1);
  item_.ItemID("SLEDGE");
  item_.Index(0);
  ASSERT_EQ(item_.Insert(), StatusSuccess);
  EXPECT_EQ(item_.NumberOfComponents(), 0);
}

TEST_F(LineItemBillLoad, HappensAgainAfterAnInsertThatFails) {
  AddRevision(Cart, 1, Some(1));
  EXPECT_EQ(item_.NumberOfComponents(), 1);
  AddRevision(Cart, 2, Some(2));
  ASSERT_EQ(item_.Insert(), StatusDuplicateKey);
  EXPECT_EQ(item_.NumberOfComponents(), 2);
}

TEST_F(LineItemBillLoad, HappensAgainAfterOpenFile) {
  AddRevision(Cart, 1, Some(1));
  EXPECT_EQ(item_.NumberOfComponents(), 1);
  ASSERT_EQ(item_.OpenFile(), StatusSuccess);
  EXPECT_EQ(item_.NumberOfComponents(), 0) << "a blank record has none";
}

// --- The file of revisions ---

TEST_F(LineItemBillFile, StaysOpenFromTheFirstAccessToCloseFile) {
  EXPECT_FALSE(IsHeldOpen(BillFile()));
  EXPECT_EQ(item_.ComponentQuantity(1), 0);
  EXPECT_TRUE(IsHeldOpen(BillFile()));
  EXPECT_EQ(item_.CloseFile(), StatusSuccess);
  EXPECT_FALSE(IsHeldOpen(BillFile()));
}

// OpenFile takes it for closed, so that the CloseFile after it passes it over.
TEST_F(LineItemBillFile, StaysOpenFromASecondOpenFileToDestruction) {
  {
    LineItem item;
    ASSERT_EQ(item.OpenFile(), StatusSuccess);
    EXPECT_EQ(item.NumberOfComponents(), 0);
    ASSERT_EQ(item.OpenFile(), StatusSuccess);
    ASSERT_EQ(item.CloseFile(), StatusSuccess);
    EXPECT_TRUE(IsHeldOpen(BillFile()));
  }
  EXPECT_FALSE(IsHeldOpen(BillFile()));
}

TEST_F(LineItemBillFile, IsNotOpenedByAWrite) {
  item_.NumberOfComponents(1);
  item_.ComponentIndex(1, 21);
  item_.ComponentQuantity(1, 1.5);
  EXPECT_FALSE(IsHeldOpen(BillFile()));
}

TEST_F(LineItemBillFile, NeedsNoMoreThanReading) {
  AddRevision(Cart, 1, {{21, 1.5}});
  test::WhereOnlyThisIsReadOnly(BillFile(), [] {
    LineItem item;
    ASSERT_EQ(item.OpenFile(), StatusSuccess);
    ASSERT_EQ(item.GetEqual("CART"), StatusSuccess);
    EXPECT_EQ(item.NumberOfComponents(), 1);
    EXPECT_EQ(item.ComponentIndex(1), 21);
  });
}

TEST_F(LineItemBillFile, ThatIsMissingIsTriedAgainAtEachAccess) {
  AddRevision(Cart, 1, {{21, 1.5}});
  {
    const TakenAway away(BillFile());
    EXPECT_EQ(item_.NumberOfComponents(), 0);
    EXPECT_EQ(item_.ComponentIndex(1), 0);
    EXPECT_EQ(item_.ComponentQuantity(1), 0);
  }
  EXPECT_EQ(item_.ComponentIndex(1), 21);
}

TEST_F(LineItemBillFile, OfAnotherOwnerIsTriedAgainAtEachAccess) {
  AddRevision(Cart, 1, {{21, 1.5}});
  test::ProtectFile(BillFile(), /*allowRead=*/false);
  EXPECT_EQ(item_.NumberOfComponents(), 0);
  EXPECT_EQ(item_.ComponentQuantity(1), 0);
  ASSERT_EQ(store::DefaultDriver().ClearOwner(BillFile(), "someone"), StatusSuccess);
  EXPECT_EQ(item_.ComponentQuantity(1), 1.5);
}

TEST_F(LineItemBillFile, OfAnotherOwnerWhoLetsItBeReadIsRead) {
  AddRevision(Cart, 1, {{21, 1.5}});
  test::ProtectFile(BillFile(), /*allowRead=*/true);
  EXPECT_EQ(item_.NumberOfComponents(), 1);
}

// A failure in the middle of the work is no error either.
TEST_F(LineItemBillFile, ThatIsNoLongerOpenHasNoComponents) {
  AddRevision(Cart, 1, {{21, 1.5}});
  EXPECT_EQ(item_.NumberOfComponents(), 1);
  ASSERT_EQ(TovrinFile().btReset(), StatusSuccess);
  EXPECT_EQ(item_.NumberOfComponents(), 1) << "what was read is kept";
  EXPECT_EQ(item_.GetEqual("CART"), StatusFileNotOpen);
  EXPECT_EQ(item_.NumberOfComponents(), 0);
  EXPECT_EQ(item_.ComponentIndex(1), 0);
}

}  // namespace
}  // namespace larkmoor
