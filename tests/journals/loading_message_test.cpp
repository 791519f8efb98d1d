// What the box says that is shown where a row cannot be taken into memory.
#include <gtest/gtest.h>

#include "journals/payroll_rows.h"

namespace larkmoor {
namespace {

TEST(LoadingMessage, RunsItsPiecesIntoEachOther) {
  EXPECT_EQ(LoadingMessage(77, {.inHand = 3, .capacity = 10, .loaded = 4},
                           Error(7, "Larkmoor", "Out of memory")),
            "Error in JrnlRow_GetDetail:\r\nNRecord = 77, NDetail = 3NRowsLoaded = 4, "
            "NRowsDefined = 107 : Out of memory");
}

TEST(LoadingMessage, OfAPaycheckTellsBothListsAndNoNumberOfTheError) {
  EXPECT_EQ(LoadingMessage(77, {.inHand = 3, .capacity = 10, .loaded = 4},
                           {.inHand = 1, .capacity = 10, .loaded = 2},
                           Error(7, "Larkmoor", "Out of memory")),
            "Error in JrnlRow_GetDetail:\r\nNRecord = 77\r\n, Err.Number: Out of memory"
            ", NDetailPay = 3NRowsLoadedPay = 4, NRowsDefinedPay = 10"
            ", NDetailJob = 1NRowsLoadedJob = 2, NRowsDefinedJob = 10");
}

}  // namespace
}  // namespace larkmoor
