// The class BOMHistory: its search by item, which begins at the lowest item whatever is asked for.
#include <cstdint>
#include <limits>

#include <gtest/gtest.h>

#include <larkmoor/further/bom_history.h>
#include <larkmoor/status.h>

#include "support/company.h"

namespace larkmoor {
namespace {

/// An open table with revisions 1 and 2 of item 5 and revision 1 of item 9, added from the last to
/// the first.
class BOMHistoryTest : public testing::Test {
 protected:
  BOMHistoryTest() {
    EXPECT_EQ(revisions_.OpenFile(), StatusSuccess);
    Add(9, 1);
    Add(5, 2);
    Add(5, 1);
  }

  void Add(std::int32_t item, std::int32_t revision) {
    revisions_.RecordNumber(0);
    revisions_.AssemblyRecordNo(item);
    revisions_.RevisionNumber(revision);
    EXPECT_EQ(revisions_.Insert(), StatusSuccess);
  }

  test::Company company_;
  BOMHistory revisions_;
};

TEST_F(BOMHistoryTest, GetFirstForItemIndexReadsTheSameRevisionForEveryItem) {
  constexpr std::int32_t Highest = std::numeric_limits<std::int32_t>::max();
  for (const std::int32_t item : {0, 5, 9, 1000, -1, Highest}) {
    std::int32_t asked = item;
    ASSERT_EQ(revisions_.GetFirstForItemIndex(asked), StatusSuccess) << item;
    EXPECT_EQ(revisions_.AssemblyRecordNo(), 5) << item;
    EXPECT_EQ(revisions_.RevisionNumber(), 1) << item;
    EXPECT_EQ(asked, item) << "the argument stays";
  }
}

TEST_F(BOMHistoryTest, GetNextByItemIndexGoesOnByItemAndRevision) {
  std::int32_t item = 9;
  ASSERT_EQ(revisions_.GetFirstForItemIndex(item), StatusSuccess);
  ASSERT_EQ(revisions_.GetNextByItemIndex(), StatusSuccess);
  EXPECT_EQ(revisions_.AssemblyRecordNo(), 5);
  EXPECT_EQ(revisions_.RevisionNumber(), 2);
  ASSERT_EQ(revisions_.GetNextByItemIndex(), StatusSuccess);
  EXPECT_EQ(revisions_.AssemblyRecordNo(), 9);
  EXPECT_EQ(revisions_.GetNextByItemIndex(), StatusEndOfFile);
}

TEST_F(BOMHistoryTest, GetNextByItemIndexAfterGetEqualAnswers7) {
  ASSERT_EQ(revisions_.GetEqual(1), StatusSuccess);
  EXPECT_EQ(revisions_.AssemblyRecordNo(), 9);
  EXPECT_EQ(revisions_.GetNextByItemIndex(), StatusDifferentKeyNumber);
}

TEST_F(BOMHistoryTest, ARevisionMayStandTwice) {
  Add(5, 2);
  EXPECT_EQ(revisions_.RecordCount(), 4);
}

}  // namespace
}  // namespace larkmoor
