// The class InventoryComponent, which has the shape of a table and no file: walks over it end at
// once.
#include <gtest/gtest.h>

#include <larkmoor/further/inventory_component.h>

namespace larkmoor {
namespace {

TEST(InventoryComponent, OpensAndClosesWithoutAnyFile) {
  InventoryComponent components;
  EXPECT_EQ(components.OpenFile(), StatusSuccess);
  EXPECT_EQ(components.RecordCount(), 0);
  EXPECT_EQ(components.CloseFile(), StatusSuccess);
}

TEST(InventoryComponent, EveryReadAndWriteAnswers9) {
  InventoryComponent components;
  ASSERT_EQ(components.OpenFile(), StatusSuccess);
  EXPECT_EQ(components.StepFirst(), StatusEndOfFile);
  EXPECT_EQ(components.StepLast(), StatusEndOfFile);
  EXPECT_EQ(components.StepNext(), StatusEndOfFile);
  EXPECT_EQ(components.StepPrevious(), StatusEndOfFile);
  EXPECT_EQ(components.Insert(), StatusEndOfFile);
  EXPECT_EQ(components.Update(), StatusEndOfFile);
  EXPECT_EQ(components.Delete(), StatusEndOfFile);
}

TEST(InventoryComponent, DropsWhatIsAssigned) {
  InventoryComponent components;
  components.ComponentID("WHEEL");
  components.Quantity(4);
  components.Unknown(1);
  EXPECT_EQ(components.ComponentID(), "");
  EXPECT_EQ(components.Quantity(), 0);
  EXPECT_EQ(components.Unknown(), 0);
}

}  // namespace
}  // namespace larkmoor
