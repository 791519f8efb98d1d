// The class GroupData: a finder by a wider number than the one that is stored.
#include <gtest/gtest.h>

#include <larkmoor/status.h>
#include <larkmoor/tables/group_data.h>

#include "support/company.h"

namespace larkmoor {
namespace {

TEST(GroupDataTest, GetEqualComparesAllOfTheNumber) {
  const test::Company company;
  GroupData groups;
  ASSERT_EQ(groups.OpenFile(), StatusSuccess);
  groups.Index(7);
  ASSERT_EQ(groups.Insert(), StatusSuccess);
  EXPECT_EQ(groups.GetEqual(7), StatusSuccess);
  EXPECT_EQ(groups.GetEqual(0x10000 + 7), StatusKeyNotFound) << "its lower half is the group's";
  EXPECT_EQ(groups.GetEqual(8), StatusKeyNotFound);
}

}  // namespace
}  // namespace larkmoor
