// The class Aflocat, a table without any departure from the frame.
#include <gtest/gtest.h>

#include <larkmoor/tables/aflocat.h>

#include "support/company.h"

namespace larkmoor {
namespace {

TEST(AflocatTest, EveryFurtherCloseFileAnswers0) {
  const test::Company company;
  Aflocat aflocat;
  ASSERT_EQ(aflocat.OpenFile(), StatusSuccess);
  EXPECT_EQ(aflocat.CloseFile(), StatusSuccess);
  EXPECT_EQ(aflocat.CloseFile(), StatusSuccess);
  EXPECT_EQ(aflocat.StepFirst(), StatusFileNotOpen);
}

}  // namespace
}  // namespace larkmoor
