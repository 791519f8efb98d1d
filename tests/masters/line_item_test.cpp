// The class LineItem: its file, its finders and the key that they go along, and the bytes of the
// record. Accounts and buyer are told in line_item_look_ups_test.cpp, the components of an assembly
// in line_item_bill_test.cpp.
#include "engine/records/line_item.h"

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <functional>

#include <gtest/gtest.h>

#include <larkmoor/masters/line_item.h>
#include <larkmoor/status.h>

#include "engine/tovrin_file.h"
#include "engine/tovrin_file_names.h"
#include "support/child_process.h"
#include "support/company.h"
#include "support/failing_disk.h"
#include "support/masters.h"
#include "support/record_files.h"
#include "support/taken_away.h"

namespace larkmoor {
namespace {

using test::AddItem;
using test::Company;
using test::IsHeldOpen;
using test::OpenRecordFile;
using test::TakenAway;

class LineItemTest : public testing::Test {
 protected:
  std::filesystem::path ItemFile() const {
    return company_.Folder() / TovrinFileNames::LineItemFile();
  }

  Company company_;
};

/// Three items whose indexes go against their IDs, laid in a third order, and an object open on
/// them.
class OpenLineItemTest : public LineItemTest {
 protected:
  OpenLineItemTest() {
    AddItem(company_.Folder(), {"BOLT", 20});
    AddItem(company_.Folder(), {"AXLE", 30});
    AddItem(company_.Folder(), {"CHAIN", 10});
    EXPECT_EQ(item_.OpenFile(), StatusSuccess);
  }

  LineItem item_;
};

using LineItemLifecycle = LineItemTest;
using LineItemFinders = OpenLineItemTest;
using LineItemKeyNumber = OpenLineItemTest;
using LineItemPercentage = OpenLineItemTest;
using LineItemWrites = OpenLineItemTest;
using LineItemBytes = OpenLineItemTest;

// --- Opening and closing ---

TEST_F(LineItemLifecycle, FileIsLineItemDat) {
  LineItem item;
  ASSERT_EQ(item.OpenFile(), StatusSuccess);
  EXPECT_TRUE(IsHeldOpen(company_.Folder() / "LineItem.dat"));
}

TEST_F(LineItemLifecycle, OperationsBeforeOpenFileAnswer3) {
  LineItem item;
  EXPECT_EQ(item.GetEqual("AXLE"), StatusFileNotOpen);
  EXPECT_EQ(item.GetForIndex(1), StatusFileNotOpen);
  EXPECT_EQ(item.GetGreaterThan(""), StatusFileNotOpen);
  EXPECT_EQ(item.GetGreaterThanOrEqual(""), StatusFileNotOpen);
  EXPECT_EQ(item.GetLessThan("Z"), StatusFileNotOpen);
  EXPECT_EQ(item.GetLessThanOrEqual("Z"), StatusFileNotOpen);
  EXPECT_EQ(item.GetFirst(), StatusFileNotOpen);
  EXPECT_EQ(item.GetLast(), StatusFileNotOpen);
  EXPECT_EQ(item.GetNext(), StatusFileNotOpen);
  EXPECT_EQ(item.GetPrevious(), StatusFileNotOpen);
  EXPECT_EQ(item.GetByPercent(50), StatusFileNotOpen);
  EXPECT_EQ(item.StepFirst(), StatusFileNotOpen);
  EXPECT_EQ(item.Insert(), StatusFileNotOpen);
  EXPECT_EQ(item.Update(), StatusFileNotOpen);
  EXPECT_EQ(item.Delete(), StatusFileNotOpen);
  EXPECT_EQ(item.RecordCount(), 0);
  EXPECT_EQ(item.CloseFile(), StatusSuccess);
}

TEST_F(LineItemLifecycle, FailedOpenFileLeavesItClosed) {
  LineItem item;
  {
    const TakenAway away(ItemFile());
    EXPECT_EQ(item.OpenFile(), StatusFileNotFound);
    EXPECT_EQ(item.StepFirst(), StatusFileNotOpen);
    EXPECT_EQ(item.CloseFile(), StatusSuccess);
  }
  EXPECT_EQ(item.OpenFile(), StatusSuccess);
}

TEST_F(LineItemLifecycle, FileOfAnotherOwnerAnswers51) {
  test::ProtectFile(ItemFile(), /*allowRead=*/false);
  EXPECT_EQ(LineItem().OpenFile(), StatusInvalidOwner);
}

TEST_F(LineItemLifecycle, ReadOnlyFileDoesNotOpen) {
  test::WhereReadOnly(ItemFile(), [] { EXPECT_EQ(LineItem().OpenFile(), StatusPermission); });
}

TEST_F(LineItemLifecycle, CloseFileClosesAndAnswers0EachTime) {
  LineItem item;
  ASSERT_EQ(item.OpenFile(), StatusSuccess);
  EXPECT_EQ(item.CloseFile(), StatusSuccess);
  EXPECT_FALSE(IsHeldOpen(ItemFile()));
  EXPECT_EQ(item.CloseFile(), StatusSuccess);
}

TEST_F(LineItemLifecycle, CloseFileOfAFileThatIsNoLongerOpenAnswers3) {
  LineItem item;
  ASSERT_EQ(item.OpenFile(), StatusSuccess);
  ASSERT_EQ(TovrinFile().btReset(), StatusSuccess);
  EXPECT_EQ(item.CloseFile(), StatusFileNotOpen);
  EXPECT_EQ(item.CloseFile(), StatusSuccess);
}

TEST_F(LineItemLifecycle, CloseFileThatFailsAnswersItsStatusAndClosesAllTheSame) {
  test::RunInChild([&] {
    LineItem item;
    ASSERT_EQ(item.OpenFile(), StatusSuccess);
    ASSERT_EQ(item.Insert(), StatusSuccess);
    test::BreakDisk(ItemFile());
    EXPECT_EQ(item.CloseFile(), StatusIOError);
    EXPECT_EQ(item.CloseFile(), StatusSuccess);
  });
}

TEST_F(LineItemLifecycle, FailedSecondOpenFileReleasesTheFileAndKeepsTheMark) {
  LineItem item;
  ASSERT_EQ(item.OpenFile(), StatusSuccess);
  {
    const TakenAway away(ItemFile());
    EXPECT_EQ(item.OpenFile(), StatusFileNotFound);
  }
  EXPECT_FALSE(IsHeldOpen(ItemFile()));
  EXPECT_EQ(item.StepFirst(), StatusFileNotOpen);
  EXPECT_EQ(item.CloseFile(), StatusFileNotOpen);
  EXPECT_EQ(item.CloseFile(), StatusSuccess);
}

TEST_F(LineItemLifecycle, SecondOpenFileStartsAnew) {
  AddItem(company_.Folder(), {"AXLE", 7});
  LineItem item;
  ASSERT_EQ(item.OpenFile(), StatusSuccess);
  ASSERT_EQ(item.GetForIndex(7), StatusSuccess);
  EXPECT_EQ(item.OpenFile(), StatusSuccess);
  EXPECT_EQ(item.ItemID(), "");
  EXPECT_EQ(item.Update(), StatusInvalidPositioning);
  EXPECT_EQ(item.CloseFile(), StatusSuccess);
  EXPECT_FALSE(IsHeldOpen(ItemFile()));
}

TEST_F(LineItemLifecycle, DestructionClosesTheFile) {
  {
    LineItem item;
    ASSERT_EQ(item.OpenFile(), StatusSuccess);
    ASSERT_TRUE(IsHeldOpen(ItemFile()));
  }
  EXPECT_FALSE(IsHeldOpen(ItemFile()));
}

// --- Finders ---

TEST_F(LineItemFinders, GetEqualReadsTheItemOfExactlyThatID) {
  ASSERT_EQ(item_.GetEqual("AXLE"), StatusSuccess);
  EXPECT_EQ(item_.Index(), 30);
  for (const char* id : {"AXL", "AXLES", "Axle", "AXLE ", ""}) {
    EXPECT_EQ(item_.GetEqual(id), StatusKeyNotFound) << id;
  }
  EXPECT_EQ(item_.ItemID(), "AXLE") << "a read that finds nothing leaves the record";
}

TEST_F(LineItemFinders, GetGreaterThanReadsTheNextHigherID) {
  ASSERT_EQ(item_.GetGreaterThan(""), StatusSuccess);
  EXPECT_EQ(item_.ItemID(), "AXLE");
  ASSERT_EQ(item_.GetGreaterThan("AXLE"), StatusSuccess);
  EXPECT_EQ(item_.ItemID(), "BOLT");
  EXPECT_EQ(item_.GetGreaterThan("CHAIN"), StatusEndOfFile);
}

TEST_F(LineItemFinders, GetGreaterThanOrEqualReadsThatIDOrTheNextHigher) {
  ASSERT_EQ(item_.GetGreaterThanOrEqual("BOLT"), StatusSuccess);
  EXPECT_EQ(item_.ItemID(), "BOLT");
  ASSERT_EQ(item_.GetGreaterThanOrEqual("BOLTS"), StatusSuccess);
  EXPECT_EQ(item_.ItemID(), "CHAIN");
  EXPECT_EQ(item_.GetGreaterThanOrEqual("CHAINS"), StatusEndOfFile);
}

TEST_F(LineItemFinders, GetLessThanReadsTheNextLowerID) {
  ASSERT_EQ(item_.GetLessThan("ZZZ"), StatusSuccess);
  EXPECT_EQ(item_.ItemID(), "CHAIN");
  ASSERT_EQ(item_.GetLessThan("CHAIN"), StatusSuccess);
  EXPECT_EQ(item_.ItemID(), "BOLT");
  EXPECT_EQ(item_.GetLessThan("AXLE"), StatusEndOfFile);
}

TEST_F(LineItemFinders, GetLessThanOrEqualReadsThatIDOrTheNextLower) {
  ASSERT_EQ(item_.GetLessThanOrEqual("BOLT"), StatusSuccess);
  EXPECT_EQ(item_.ItemID(), "BOLT");
  ASSERT_EQ(item_.GetLessThanOrEqual("BOL"), StatusSuccess);
  EXPECT_EQ(item_.ItemID(), "AXLE");
  EXPECT_EQ(item_.GetLessThanOrEqual("AXL"), StatusEndOfFile);
}

TEST_F(LineItemFinders, GetForIndexReadsTheItemOfThatIndex) {
  ASSERT_EQ(item_.GetForIndex(20), StatusSuccess);
  EXPECT_EQ(item_.ItemID(), "BOLT");
  EXPECT_EQ(item_.GetForIndex(21), StatusKeyNotFound);
}

TEST_F(LineItemFinders, StepsGoInTheOrderOfInsertion) {
  ASSERT_EQ(item_.StepFirst(), StatusSuccess);
  EXPECT_EQ(item_.ItemID(), "BOLT");
  ASSERT_EQ(item_.StepNext(), StatusSuccess);
  EXPECT_EQ(item_.ItemID(), "AXLE");
  ASSERT_EQ(item_.StepLast(), StatusSuccess);
  EXPECT_EQ(item_.ItemID(), "CHAIN");
  EXPECT_EQ(item_.StepNext(), StatusEndOfFile);
  ASSERT_EQ(item_.StepPrevious(), StatusSuccess);
  EXPECT_EQ(item_.ItemID(), "AXLE");
  EXPECT_EQ(item_.GetNext(), StatusInvalidPositioning) << "a step leaves no place on a key";
}

// --- The key that walks and writes go along ---

TEST_F(LineItemKeyNumber, OfANewObjectIsThatOfTheIDs) {
  EXPECT_EQ(item_.GetNext(), StatusInvalidPositioning);
  ASSERT_EQ(item_.GetFirst(), StatusSuccess);
  EXPECT_EQ(item_.ItemID(), "AXLE");
  ASSERT_EQ(item_.GetLast(), StatusSuccess);
  EXPECT_EQ(item_.ItemID(), "CHAIN");
  ASSERT_EQ(item_.GetPrevious(), StatusSuccess);
  EXPECT_EQ(item_.ItemID(), "BOLT");
}

TEST_F(LineItemKeyNumber, FollowsTheFindersByID) {
  const std::function<Status()> finders[] = {
      [&] { return item_.GetEqual("BOLT"); }, [&] { return item_.GetGreaterThan("AXLE"); },
      [&] { return item_.GetGreaterThanOrEqual("AXLES"); },
      [&] { return item_.GetLessThan("CHAIN"); }, [&] { return item_.GetLessThanOrEqual("C"); }};
  for (const auto& find : finders) {
    ASSERT_EQ(item_.GetForIndex(20), StatusSuccess);
    ASSERT_EQ(find(), StatusSuccess);
    ASSERT_EQ(item_.ItemID(), "BOLT");
    ASSERT_EQ(item_.GetNext(), StatusSuccess);
    EXPECT_EQ(item_.ItemID(), "CHAIN");
    EXPECT_EQ(item_.GetNext(), StatusEndOfFile);
  }
}

TEST_F(LineItemKeyNumber, FollowsTheFinderByIndex) {
  ASSERT_EQ(item_.GetForIndex(20), StatusSuccess);
  ASSERT_EQ(item_.GetNext(), StatusSuccess);
  EXPECT_EQ(item_.ItemID(), "AXLE");
  ASSERT_EQ(item_.GetFirst(), StatusSuccess);
  EXPECT_EQ(item_.ItemID(), "CHAIN");
  EXPECT_EQ(item_.GetPrevious(), StatusEndOfFile);
  ASSERT_EQ(item_.GetLast(), StatusSuccess);
  EXPECT_EQ(item_.ItemID(), "AXLE");
}

TEST_F(LineItemKeyNumber, FollowsAFinderThatFindsNothing) {
  ASSERT_EQ(item_.GetForIndex(99), StatusKeyNotFound);
  ASSERT_EQ(item_.GetFirst(), StatusSuccess);
  EXPECT_EQ(item_.ItemID(), "CHAIN");
}

TEST_F(LineItemKeyNumber, IsNotTouchedBySteps) {
  ASSERT_EQ(item_.GetForIndex(20), StatusSuccess);
  ASSERT_EQ(item_.StepFirst(), StatusSuccess);
  ASSERT_EQ(item_.GetFirst(), StatusSuccess);
  EXPECT_EQ(item_.ItemID(), "CHAIN");
}

TEST_F(LineItemKeyNumber, IsThatOfTheNextWrite) {
  ASSERT_EQ(item_.GetForIndex(20), StatusSuccess);
  ASSERT_EQ(item_.Update(), StatusSuccess);
  ASSERT_EQ(item_.GetNext(), StatusSuccess);
  EXPECT_EQ(item_.ItemID(), "AXLE");
  item_.ItemID("ANVIL");
  item_.Index(25);
  ASSERT_EQ(item_.Insert(), StatusSuccess);
  ASSERT_EQ(item_.GetPrevious(), StatusSuccess);
  EXPECT_EQ(item_.ItemID(), "BOLT");
}

// Unlike that of customers and vendors.
TEST_F(LineItemKeyNumber, StaysOverCloseFileAndOpenFile) {
  ASSERT_EQ(item_.GetForIndex(20), StatusSuccess);
  ASSERT_EQ(item_.OpenFile(), StatusSuccess);
  ASSERT_EQ(item_.GetFirst(), StatusSuccess);
  EXPECT_EQ(item_.ItemID(), "CHAIN");
  ASSERT_EQ(item_.CloseFile(), StatusSuccess);
  ASSERT_EQ(item_.OpenFile(), StatusSuccess);
  ASSERT_EQ(item_.GetFirst(), StatusSuccess);
  EXPECT_EQ(item_.ItemID(), "CHAIN");
}

// --- Percentages ---

TEST_F(LineItemPercentage, OfTheFirstIs0AndOfTheLast100AlongTheKeyInUse) {
  ASSERT_EQ(item_.GetFirst(), StatusSuccess);
  EXPECT_EQ(item_.FindByPercent(), 0);
  ASSERT_EQ(item_.GetLast(), StatusSuccess);
  EXPECT_EQ(item_.FindByPercent(), 100);
  ASSERT_EQ(item_.GetForIndex(10), StatusSuccess);
  ASSERT_EQ(item_.ItemID(), "CHAIN");
  EXPECT_EQ(item_.FindByPercent(), 0);
}

TEST_F(LineItemPercentage, ThatCannotBeToldIs0) {
  EXPECT_EQ(item_.FindByPercent(), 0);
  EXPECT_EQ(LineItem().FindByPercent(), 0);
  ASSERT_EQ(item_.GetLast(), StatusSuccess);
  ASSERT_EQ(item_.CloseFile(), StatusSuccess);
  EXPECT_EQ(item_.FindByPercent(), 0);
}

TEST_F(LineItemPercentage, IsWhereGetByPercentReads) {
  ASSERT_EQ(item_.GetByPercent(100), StatusSuccess);
  EXPECT_EQ(item_.ItemID(), "CHAIN");
  ASSERT_EQ(item_.GetByPercent(0), StatusSuccess);
  EXPECT_EQ(item_.ItemID(), "AXLE");
  ASSERT_EQ(item_.GetNext(), StatusSuccess);
  EXPECT_EQ(item_.ItemID(), "BOLT");
  ASSERT_EQ(item_.GetForIndex(20), StatusSuccess);
  ASSERT_EQ(item_.GetByPercent(0), StatusSuccess);
  EXPECT_EQ(item_.ItemID(), "CHAIN");
}

// --- Writes ---

TEST_F(LineItemWrites, InsertGivesTheNextIndex) {
  item_.ItemID("DRILL");
  ASSERT_EQ(item_.Insert(), StatusSuccess);
  EXPECT_EQ(item_.Index(), 31);
  EXPECT_EQ(item_.RecordCount(), 4);
}

TEST_F(LineItemWrites, InsertOfAnIDThatIsThereAnswers5) {
  item_.ItemID("AXLE");
  EXPECT_EQ(item_.Insert(), StatusDuplicateKey);
  EXPECT_EQ(item_.RecordCount(), 3);
}

TEST_F(LineItemWrites, UpdateRewritesAndDeleteTakesAwayTheItemInHand) {
  ASSERT_EQ(item_.GetEqual("BOLT"), StatusSuccess);
  item_.Location("Shelf 4");
  ASSERT_EQ(item_.Update(), StatusSuccess);
  LineItem other;
  ASSERT_EQ(other.OpenFile(), StatusSuccess);
  ASSERT_EQ(other.GetForIndex(20), StatusSuccess);
  EXPECT_EQ(other.Location(), "Shelf 4");
  ASSERT_EQ(other.Delete(), StatusSuccess);
  EXPECT_EQ(other.RecordCount(), 2);
  EXPECT_EQ(item_.Update(), StatusRecordConflict);
}

// --- The bytes of the record ---

TEST_F(LineItemBytes, AreAsManyAsTheRecordReadLastHas) {
  EXPECT_EQ(item_.NRecordBytes(), 0);
  ASSERT_EQ(item_.StepFirst(), StatusSuccess);
  const std::uint32_t length = LineItemRecord::Describe().LengthFor(19.0);
  EXPECT_EQ(item_.NRecordBytes(), static_cast<std::int32_t>(length));
}

TEST_F(LineItemBytes, AreThoseOfTheRecordInHandCountedFrom0) {
  ASSERT_EQ(item_.GetEqual("BOLT"), StatusSuccess);
  OpenRecordFile file(ItemFile(), LineItemRecord::Describe());
  ASSERT_EQ(file.File().btStepFirst(), StatusSuccess);
  ASSERT_EQ(item_.NRecordBytes(), static_cast<std::int32_t>(file.Record().Bytes().size()));
  for (std::int32_t i = 0; i < item_.NRecordBytes(); ++i) {
    const std::byte expected = file.Record().Bytes()[static_cast<std::size_t>(i)];
    ASSERT_EQ(std::byte{item_.RecordByte(i)}, expected) << i;
  }
}

TEST_F(LineItemBytes, FollowWhatIsAssigned) {
  ASSERT_EQ(item_.GetEqual("BOLT"), StatusSuccess);
  item_.ItemID("NUT");
  EXPECT_EQ(item_.RecordByte(static_cast<std::int32_t>(LineItemRecord::ItemID.offset)), 'N');
}

TEST_F(LineItemBytes, OutsideAre0) {
  ASSERT_EQ(item_.GetEqual("BOLT"), StatusSuccess);
  for (const std::int32_t index : {-1, item_.NRecordBytes(), 2147483647, -2147483647 - 1}) {
    EXPECT_EQ(item_.RecordByte(index), 0) << index;
  }
}

TEST(LineItemUnused1, Reads0AndDropsWrites) {
  LineItem item;
  item.Unused1(7);
  EXPECT_EQ(item.Unused1(), 0);
}

}  // namespace
}  // namespace larkmoor
