// The class FAAsset, and on it what all classes of fixed assets do: nothing stands behind them.
#include <gtest/gtest.h>

#include <larkmoor/further/fa_asset.h>
#include <larkmoor/further/fa_bus_use.h>
#include <larkmoor/further/fa_post.h>

namespace larkmoor {
namespace {

TEST(FAAsset, SearchesFindNothing) {
  FAAsset assets;
  EXPECT_EQ(assets.GetEqual(), StatusEndOfFile);
  EXPECT_EQ(assets.GetLast(), StatusEndOfFile);
  FABusUse uses;
  EXPECT_EQ(uses.GetNext(), StatusEndOfFile);
}

TEST(FAAsset, EveryOtherOperationAnswers0) {
  FAAsset assets;
  EXPECT_EQ(assets.OpenFile(), StatusSuccess);
  EXPECT_EQ(assets.Insert(), StatusSuccess);
  EXPECT_EQ(assets.Update(), StatusSuccess);
  EXPECT_EQ(assets.Delete(), StatusSuccess);
  EXPECT_EQ(assets.StepFirst(), StatusSuccess);
  EXPECT_EQ(assets.StepLast(), StatusSuccess);
  EXPECT_EQ(assets.StepNext(), StatusSuccess);
  EXPECT_EQ(assets.StepPrevious(), StatusSuccess);
  EXPECT_EQ(assets.RecordCount(), 0);
  EXPECT_EQ(assets.CloseFile(), StatusSuccess);
}

TEST(FAAsset, DropsWhatIsAssigned) {
  FAAsset assets;
  assets.Description("Delivery van");
  assets.AssetID(12);
  assets.Proceeds(900);
  assets.Listed(true);
  EXPECT_EQ(assets.Description(), "");
  EXPECT_EQ(assets.AssetID(), 0);
  EXPECT_EQ(assets.Proceeds(), 0);
  EXPECT_FALSE(assets.Listed());
}

TEST(FAAsset, DatesReadTheEmptyDate) {
  FAAsset assets;
  EXPECT_EQ(assets.Acquired(), Date(2.0));
  assets.Acquired(Date::FromYmd(2024, 2, 29));
  EXPECT_EQ(assets.Acquired(), Date(2.0));
  EXPECT_EQ(FAPost().DatePosted(), Date(2.0));
}

TEST(FAAsset, VariantsReadAnEmptyText) {
  FAAsset assets;
  assets.DateOfDisposal(Date::FromYmd(2024, 2, 29));
  EXPECT_EQ(assets.DateOfDisposal().GetKind(), Variant::Kind::String);
  EXPECT_EQ(assets.DateOfDisposal().ToText(), "");
}

TEST(FAAsset, TakesAnyIndex) {
  FAAsset assets;
  assets.Unused1(-1, 7);
  EXPECT_EQ(assets.Unused1(-1), 0);
  EXPECT_EQ(assets.Unused2(32767), 0);
}

}  // namespace
}  // namespace larkmoor
