// What the box says that is shown where a row cannot be taken into memory.
#include <gtest/gtest.h>

#include "journals/transaction_rows.h"

namespace larkmoor {
namespace {

TEST(LoadingMessage, RunsItsPiecesIntoEachOther) {
  EXPECT_EQ(LoadingMessage(77, {.inHand = 3, .capacity = 10, .loaded = 4},
                           Error(7, "Larkmoor", "Out of memory")),
            "Error in JrnlRow_GetDetail:\r\nNRecord = 77, NDetail = 3NRowsLoaded = 4, "
            "NRowsDefined = 107 : Out of memory");
}

}  // namespace
}  // namespace larkmoor
