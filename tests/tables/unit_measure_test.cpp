// The class UnitMeasure: its finder by name.
#include <string_view>

#include <gtest/gtest.h>

#include <larkmoor/status.h>
#include <larkmoor/tables/unit_measure.h>

#include "support/company.h"

namespace larkmoor {
namespace {

/// A company with the units "Box" of 12 and "Boxes" of 144.
class UnitMeasureFinder : public testing::Test {
 protected:
  UnitMeasureFinder() {
    EXPECT_EQ(units_.OpenFile(), StatusSuccess);
    Add("Box", 12);
    Add("Boxes", 144);
  }

  void Add(std::string_view id, double stockingUnits) {
    units_.ID(id);
    units_.NoStockingUnits(stockingUnits);
    EXPECT_EQ(units_.Insert(), StatusSuccess) << id;
  }

  test::Company company_;
  UnitMeasure units_;
};

TEST_F(UnitMeasureFinder, ReadsTheUnitOfThatId) {
  EXPECT_EQ(units_.GetEqual("Box"), StatusSuccess);
  EXPECT_EQ(units_.NoStockingUnits(), 12);
  EXPECT_EQ(units_.GetEqual("Boxes"), StatusSuccess);
  EXPECT_EQ(units_.NoStockingUnits(), 144);
}

TEST_F(UnitMeasureFinder, AnswersAnUnknownIdWith4AndKeepsTheRecordInHand) {
  ASSERT_EQ(units_.GetEqual("Box"), StatusSuccess);
  EXPECT_EQ(units_.GetEqual("Crate"), StatusKeyNotFound);
  EXPECT_EQ(units_.ID(), "Box");
}

TEST_F(UnitMeasureFinder, ComparesTheWholeIdWithCaseAndBlanks) {
  EXPECT_EQ(units_.GetEqual("Bo"), StatusKeyNotFound);
  EXPECT_EQ(units_.GetEqual("BOX"), StatusKeyNotFound);
  EXPECT_EQ(units_.GetEqual("Box "), StatusKeyNotFound);
}

TEST_F(UnitMeasureFinder, InsertRefusesAnIdThatIsTaken) {
  units_.ID("Box");
  EXPECT_EQ(units_.Insert(), StatusDuplicateKey);
}

}  // namespace
}  // namespace larkmoor
