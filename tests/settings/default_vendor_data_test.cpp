// The class DefaultVendorData: what it does to its own fields. How it is opened, read and rewritten
// is in settings_frame_test.cpp, its accounts are in settings_accounts_test.cpp.
#include "engine/records/default_vendor_data.h"

#include <cstdint>

#include <gtest/gtest.h>

#include <larkmoor/settings/default_vendor_data.h>
#include <larkmoor/status.h>

#include "connection/shared_routines.h"
#include "engine/runtime_error.h"
#include "engine/tovrin_file.h"
#include "support/company.h"
#include "support/errors.h"
#include "support/settings_row.h"

namespace larkmoor {
namespace {

using test::Company;
using test::RaisedNumber;
using test::SettingsRow;

class DefaultVendorDataTest : public testing::Test {
 protected:
  DefaultVendorDataTest() { EXPECT_EQ(vendors_.OpenFile(), StatusSuccess); }

  Company company_;
  SettingsRow row_{company_.Folder(), DefaultVendorDataRecord::Describe()};
  DefaultVendorData vendors_;
};

TEST_F(DefaultVendorDataTest, ActualLengthIsThatOfTheRowReadLast) {
  EXPECT_EQ(vendors_.ActualLength(), 0);
  ASSERT_EQ(vendors_.Read(), StatusSuccess);
  EXPECT_EQ(vendors_.ActualLength(), static_cast<std::int32_t>(row_.Bytes().size()));
}

TEST_F(DefaultVendorDataTest, NLabelsShowsWhatIsOnFile) {
  row_.Set(DefaultVendorDataRecord::NLabels, std::int16_t{3});
  ASSERT_EQ(vendors_.Read(), StatusSuccess);
  EXPECT_EQ(vendors_.NLabels(), 3);
}

// Customers' settings bring an index outside to the nearest one; these do not.
TEST_F(DefaultVendorDataTest, IndexesAreTakenAsTheyAre) {
  row_.Change([](Tovrin2Record& row) {
    row.SetText(DefaultVendorDataRecord::AgingHeading, "nobody's", 0);
    row.SetText(DefaultVendorDataRecord::AgingHeading, "0 to 30", 1);
    row.SetText(DefaultVendorDataRecord::CustomFieldLabel, "zeroth", 0);
    row.SetText(DefaultVendorDataRecord::CustomFieldLabel, "first", 1);
    row.SetBoolean(DefaultVendorDataRecord::CustomFieldEnabled, true, 0);
    row.SetBoolean(DefaultVendorDataRecord::CustomFieldEnabled, false, 1);
  });
  ASSERT_EQ(vendors_.Read(), StatusSuccess);
  EXPECT_EQ(vendors_.AgingHeading(0), "nobody's");
  EXPECT_EQ(vendors_.AgingHeading(1), "0 to 30");
  EXPECT_EQ(vendors_.CustomFieldLabel(0), "zeroth");
  EXPECT_EQ(vendors_.CustomFieldLabel(1), "first");
  EXPECT_TRUE(vendors_.CustomFieldEnabled(0));
  EXPECT_FALSE(vendors_.CustomFieldEnabled(1));
}

TEST_F(DefaultVendorDataTest, IndexesOutsideRaise9AndChangeNothing) {
  ASSERT_EQ(vendors_.Read(), StatusSuccess);
  const RecordBytes before = row_.Bytes();
  constexpr std::int16_t Beyond = 99;
  const auto expectRaised9 = [](auto&& call) {
    EXPECT_EQ(RaisedNumber(call), errors::SubscriptOutOfRange);
  };
  expectRaised9([&] { return vendors_.AgingHeading(Beyond); });
  expectRaised9([&] { vendors_.AgingHeading(Beyond, "late"); });
  expectRaised9([&] { return vendors_.CustomFieldLabel(Beyond); });
  expectRaised9([&] { vendors_.CustomFieldLabel(Beyond, "region"); });
  expectRaised9([&] { return vendors_.CustomFieldEnabled(Beyond); });
  expectRaised9([&] { vendors_.CustomFieldEnabled(-1, true); });
  ASSERT_EQ(vendors_.Update(), StatusSuccess);
  EXPECT_TRUE(row_.Bytes() == before);
}

TEST_F(DefaultVendorDataTest, LastPONumberIsThatWhichPurchaseOrdersCountWith) {
  ASSERT_EQ(WriteLastPONumber("PO-1"), StatusSuccess);
  ASSERT_EQ(vendors_.Read(), StatusSuccess);
  EXPECT_EQ(vendors_.LastPONumber(), "PO-1");
  vendors_.LastPONumber("PO-2");
  ASSERT_EQ(vendors_.Update(), StatusSuccess);
  EXPECT_EQ(ReadLastPONumber(), "PO-2");
}

TEST_F(DefaultVendorDataTest, TermsUnusedIsEmpty) {
  ASSERT_EQ(vendors_.Read(), StatusSuccess);
  const RecordBytes before = row_.Bytes();
  vendors_.TermsUnused("net 30");
  EXPECT_EQ(vendors_.TermsUnused(), "");
  ASSERT_EQ(vendors_.Update(), StatusSuccess);
  EXPECT_TRUE(row_.Bytes() == before);
}

}  // namespace
}  // namespace larkmoor
