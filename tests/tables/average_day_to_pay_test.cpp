// The class AverageDayToPay: the property that bears the name of the class.
#include <cstdint>

#include <gtest/gtest.h>

#include <larkmoor/tables/average_day_to_pay.h>

#include "automation/automation.h"

namespace larkmoor {
namespace {

TEST(AverageDayToPayTest, PropertyOfTheNameOfTheClassHasAnUnderscoreInCppAndNoneAtRunTime) {
  AverageDayToPay days;
  days.AverageDayToPay_(31);
  EXPECT_EQ(days.AverageDayToPay_(), 31);

  automation::Object object("AverageDayToPay");
  object.Let("AverageDayToPay", 31);
  EXPECT_EQ(object.Get("AverageDayToPay"), Variant(std::int32_t{31}));
}

}  // namespace
}  // namespace larkmoor
