// The form in which a file keeps its owner name.
#include <gtest/gtest.h>

#include "engine/store/lmdb/format.h"

namespace larkmoor::store::lmdb {
namespace {

TEST(OwnerMake, GivesAnotherHashEachTimeThatKnowsTheNameAgain) {
  const Owner one = Owner::Make("Blakeney", false);
  const Owner other = Owner::Make("Blakeney", false);
  EXPECT_NE(one.hash, other.hash);
  for (const Owner& owner : {one, other}) {
    EXPECT_EQ(owner.hash.find("Blakeney"), std::string::npos);
    EXPECT_TRUE(owner.IsNamed("Blakeney"));
    EXPECT_FALSE(owner.IsNamed("blakeney"));
    EXPECT_FALSE(owner.IsNamed(""));
  }
}

// From a hash that is the same with every name nothing could be told apart.
TEST(OwnerMake, TellsNamesOfAnyLengthApart) {
  for (const std::size_t length : {0U, 1U, 8U, 9U, 72U, 73U, 255U}) {
    const std::string name(length, 'x');
    const Owner owner = Owner::Make(name, true);
    EXPECT_TRUE(owner.IsNamed(name)) << length;
    EXPECT_FALSE(owner.IsNamed(name + "x")) << length;
  }
}

}  // namespace
}  // namespace larkmoor::store::lmdb
