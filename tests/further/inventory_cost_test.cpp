// The class InventoryCost: the walk along an item's cost layers, and what they sum up to.
#include <cstdint>

#include <gtest/gtest.h>

#include <larkmoor/further/inventory_cost.h>
#include <larkmoor/status.h>

#include "support/company.h"
#include "support/record_files.h"

namespace larkmoor {
namespace {

/// The code of layers that are not on hand.
constexpr std::int16_t NotOnHand = 15;

class InventoryCostTest : public testing::Test {
 protected:
  InventoryCostTest() { EXPECT_EQ(layers_.OpenFile(), StatusSuccess); }

  void Add(std::int32_t item, double quantity, std::int16_t code = 0) {
    layers_.Index(item);
    layers_.Quantity1(quantity);
    layers_.RecordCode(code);
    ASSERT_EQ(layers_.Insert(), StatusSuccess);
  }

  test::Company company_;
  InventoryCost layers_;
};

using InventoryCostFile = InventoryCostTest;
using InventoryCostFinders = InventoryCostTest;
using InventoryCostQuantityOnHand = InventoryCostTest;

TEST_F(InventoryCostFile, IsInvCostDat) {
  EXPECT_TRUE(test::IsHeldOpen(company_.Folder() / "InvCost.dat"));
}

// --- Finders ---

TEST_F(InventoryCostFinders, LayerWithNothingButItemAndQuantityIsFoundAndCounted) {
  layers_.Index(7);
  layers_.Quantity1(2.5);
  ASSERT_EQ(layers_.Insert(), StatusSuccess);
  InventoryCost reader;
  ASSERT_EQ(reader.OpenFile(), StatusSuccess);
  ASSERT_EQ(reader.GetFirst(7), StatusSuccess);
  EXPECT_EQ(reader.Index(), 7);
  EXPECT_EQ(reader.QuantityOnHand(7), 2.5);
}

TEST_F(InventoryCostFinders, GetFirstReadsTheLayerThatWasAddedFirst) {
  Add(8, 1);
  Add(7, 2);
  Add(7, 3);
  ASSERT_EQ(layers_.GetFirst(7), StatusSuccess);
  EXPECT_EQ(layers_.Quantity1(), 2);
}

TEST_F(InventoryCostFinders, GetFirstOfAnItemWithoutLayersReadsTheNextOneOnFile) {
  Add(5, 1);
  Add(7, 2);
  ASSERT_EQ(layers_.GetFirst(6), StatusSuccess);
  EXPECT_EQ(layers_.Index(), 7);
  EXPECT_EQ(layers_.GetFirst(8), StatusEndOfFile);
}

TEST_F(InventoryCostFinders, GetNextRunsOnIntoTheNextItemToTheEnd) {
  Add(8, 1);
  Add(7, 2);
  Add(7, 3);
  ASSERT_EQ(layers_.GetFirst(7), StatusSuccess);
  ASSERT_EQ(layers_.GetNext(), StatusSuccess);
  EXPECT_EQ(layers_.Quantity1(), 3);
  ASSERT_EQ(layers_.GetNext(), StatusSuccess);
  EXPECT_EQ(layers_.Index(), 8);
  EXPECT_EQ(layers_.GetNext(), StatusEndOfFile);
}

TEST_F(InventoryCostFinders, GetEqualComparesNumberAndRecordType) {
  layers_.Number(40);
  layers_.RecordType(1);
  Add(7, 2);
  layers_.RecordType(2);
  Add(8, 3);
  ASSERT_EQ(layers_.GetEqual(40, 1), StatusSuccess);
  EXPECT_EQ(layers_.Index(), 7);
  ASSERT_EQ(layers_.GetEqual(40, 2), StatusSuccess);
  EXPECT_EQ(layers_.Index(), 8);
  EXPECT_EQ(layers_.GetEqual(40, 3), StatusKeyNotFound);
  EXPECT_EQ(layers_.GetEqual(41, 1), StatusKeyNotFound);
}

// The item of the next transaction comes first by item, so that the two keys go different ways.
TEST_F(InventoryCostFinders, GetNextGoesOnAlongTheKeyOfTheLastSearch) {
  layers_.Number(40);
  Add(7, 2);
  layers_.Number(41);
  Add(5, 3);
  ASSERT_EQ(layers_.GetEqual(40, 0), StatusSuccess);
  ASSERT_EQ(layers_.GetNext(), StatusSuccess);
  EXPECT_EQ(layers_.Number(), 41);
  ASSERT_EQ(layers_.GetFirst(5), StatusSuccess);
  ASSERT_EQ(layers_.GetNext(), StatusSuccess);
  EXPECT_EQ(layers_.Number(), 40);
}

TEST_F(InventoryCostFinders, GetNextWithoutAPlaceAnswers8) {
  EXPECT_EQ(layers_.GetNext(), StatusInvalidPositioning);
}

// --- QuantityOnHand ---

TEST_F(InventoryCostQuantityOnHand, OfAnItemWithoutLayersIs0) {
  EXPECT_EQ(layers_.QuantityOnHand(7), 0.0);
  Add(6, 1);
  Add(8, 2);
  EXPECT_EQ(layers_.QuantityOnHand(7), 0.0);
}

TEST_F(InventoryCostQuantityOnHand, AddsUpTheLayersOfTheItemAlone) {
  Add(6, 1);
  Add(7, 2);
  Add(8, 4);
  Add(7, 8);
  EXPECT_EQ(layers_.QuantityOnHand(7), 10.0);
}

TEST_F(InventoryCostQuantityOnHand, LeavesOutCode15) {
  Add(7, 1);
  Add(7, 2, NotOnHand);
  Add(7, 4);
  EXPECT_EQ(layers_.QuantityOnHand(7), 5.0);
}

TEST_F(InventoryCostQuantityOnHand, CountsWhatWasTakenOut) {
  Add(7, 5);
  Add(7, -2);
  EXPECT_EQ(layers_.QuantityOnHand(7), 3.0);
}

TEST_F(InventoryCostQuantityOnHand, ReturnsWhatItHasAtTheEndOfTheFile) {
  Add(6, 1);
  Add(7, 2);
  Add(7, 4);
  EXPECT_EQ(layers_.QuantityOnHand(7), 6.0);
  EXPECT_EQ(layers_.GetNext(), StatusEndOfFile);
}

TEST_F(InventoryCostQuantityOnHand, MovesTheObjectsPlace) {
  Add(5, 1);
  Add(7, 2);
  Add(8, 4);
  ASSERT_EQ(layers_.GetFirst(5), StatusSuccess);
  ASSERT_EQ(layers_.QuantityOnHand(7), 2.0);
  EXPECT_EQ(layers_.Index(), 8) << "the layer that ended the sum is in hand";
  EXPECT_EQ(layers_.GetNext(), StatusEndOfFile);
}

TEST_F(InventoryCostQuantityOnHand, OfAnObjectThatIsNotOpenIs0) {
  InventoryCost closed;
  closed.Index(7);
  closed.Quantity1(2);
  EXPECT_EQ(closed.QuantityOnHand(7), 0.0);
}

}  // namespace
}  // namespace larkmoor
