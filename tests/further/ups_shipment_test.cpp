// The class UPSShipment: its three finders, of which one takes a number for a text.
#include <cstdint>
#include <string_view>

#include <gtest/gtest.h>

#include <larkmoor/further/ups_shipment.h>

#include "support/company.h"

namespace larkmoor {
namespace {

class UPSShipmentTest : public testing::Test {
 protected:
  UPSShipmentTest() { EXPECT_EQ(shipments_.OpenFile(), StatusSuccess); }

  void Add(std::string_view guid, std::string_view number) {
    shipments_.ShipmentRecordNumber(0);
    shipments_.GUID(guid);
    shipments_.ShipmentNumber(number);
    ASSERT_EQ(shipments_.Insert(), StatusSuccess);
  }

  test::Company company_;
  UPSShipment shipments_;
};

constexpr std::string_view Braced = "{00112233-4455-6677-8899-aabbccddeeff}";

// Elsewhere a GUID is sixteen bytes, and reads in one form.
TEST_F(UPSShipmentTest, GUIDIsTextAndKeepsItsForm) {
  Add(Braced, "1");
  ASSERT_EQ(shipments_.StepFirst(), StatusSuccess);
  EXPECT_EQ(shipments_.GUID(), Braced);
}

TEST_F(UPSShipmentTest, GetForGUIDComparesLetterByLetter) {
  Add(Braced, "1");
  Add("second", "2");
  ASSERT_EQ(shipments_.GetForGUID(Braced), StatusSuccess);
  EXPECT_EQ(shipments_.ShipmentNumber(), "1");
  EXPECT_EQ(shipments_.GetForGUID("{00112233-4455-6677-8899-AABBCCDDEEFF}"), StatusKeyNotFound);
  EXPECT_EQ(shipments_.GetForGUID("00112233-4455-6677-8899-aabbccddeeff"), StatusKeyNotFound);
}

TEST_F(UPSShipmentTest, GetForShipmentRecordNumberReadsTheShipmentOfThatNumber) {
  Add("first", "1");
  Add("second", "2");
  ASSERT_EQ(shipments_.GetForShipmentRecordNumber(1), StatusSuccess);
  EXPECT_EQ(shipments_.GUID(), "first");
  EXPECT_EQ(shipments_.GetForShipmentRecordNumber(3), StatusKeyNotFound);
}

TEST_F(UPSShipmentTest, GetForShipmentNumberComparesBytesAndNotDigits) {
  Add("first", "7");
  EXPECT_EQ(shipments_.GetForShipmentNumber(7), StatusKeyNotFound);
  EXPECT_EQ(shipments_.GetForShipmentNumber('7'), StatusSuccess);
}

TEST_F(UPSShipmentTest, GetForShipmentNumberComparesTheFirstFourCharacters) {
  Add("first", "1234-5");
  EXPECT_EQ(shipments_.GetForShipmentNumber(1234), StatusKeyNotFound);
  constexpr std::int32_t Text1234 = '1' | '2' << 8 | '3' << 16 | '4' << 24;
  EXPECT_EQ(shipments_.GetForShipmentNumber(Text1234), StatusSuccess);
}

}  // namespace
}  // namespace larkmoor
