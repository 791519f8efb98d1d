// The class DefaultCustomerData: what it does to its own fields. How it is opened, read and
// rewritten is in settings_frame_test.cpp, its accounts are in settings_accounts_test.cpp.
#include "engine/records/default_customer_data.h"

#include <cstddef>
#include <cstdint>
#include <utility>

#include <gtest/gtest.h>

#include <larkmoor/settings/default_customer_data.h>
#include <larkmoor/status.h>
#include <larkmoor/variant.h>

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

/// A company of a release and an object open on it, its row not read yet.
class DefaultCustomerDataTest : public testing::Test {
 protected:
  explicit DefaultCustomerDataTest(double release = 19.0) : company_(release) {
    EXPECT_EQ(customers_.OpenFile(), StatusSuccess);
  }

  /// Puts a value into the row on file and has the object read it.
  void Store(const Field& field, const Variant& value, int index = 0) {
    row_.Set(field, value, index);
    ASSERT_EQ(customers_.Read(), StatusSuccess);
  }
  /// Rewrites the row from the object and gives what is on file then.
  Variant Written(const Field& field, int index = 0) {
    EXPECT_EQ(customers_.Update(), StatusSuccess);
    return row_.Value(field, index);
  }

  Company company_;
  SettingsRow row_{company_.Folder(), DefaultCustomerDataRecord::Describe()};
  DefaultCustomerData customers_;
};

using DefaultCustomerDataIndexes = DefaultCustomerDataTest;
using DefaultCustomerDataNumbers = DefaultCustomerDataTest;
using DefaultCustomerDataMerchant = DefaultCustomerDataTest;

TEST_F(DefaultCustomerDataTest, ActualLengthIsThatOfTheRowReadLast) {
  EXPECT_EQ(customers_.ActualLength(), 0);
  ASSERT_EQ(customers_.Read(), StatusSuccess);
  EXPECT_EQ(customers_.ActualLength(), static_cast<std::int32_t>(row_.Bytes().size()));
  EXPECT_EQ(DefaultCustomerData().ActualLength(), 0);
}

TEST_F(DefaultCustomerDataTest, NLabelsShowsWhatIsOnFile) {
  Store(DefaultCustomerDataRecord::NLabels, std::int16_t{3});
  EXPECT_EQ(customers_.NLabels(), 3);
}

TEST_F(DefaultCustomerDataTest, Unused2IsStored) {
  ASSERT_EQ(customers_.Read(), StatusSuccess);
  customers_.Unused2(3, 7);
  EXPECT_EQ(customers_.Unused2(3), 7);
  EXPECT_EQ(Written(DefaultCustomerDataRecord::Unused2, 3), 7);
}

// --- Indexes ---

TEST_F(DefaultCustomerDataIndexes, OfAgingHeadingsAreBroughtInto1To4) {
  row_.Change([](Tovrin2Record& row) {
    row.SetText(DefaultCustomerDataRecord::AgingHeading, "nobody's", 0);
    row.SetText(DefaultCustomerDataRecord::AgingHeading, "0 to 30", 1);
    row.SetText(DefaultCustomerDataRecord::AgingHeading, "over 90", 4);
  });
  ASSERT_EQ(customers_.Read(), StatusSuccess);
  EXPECT_EQ(customers_.AgingHeading(0), "0 to 30");
  EXPECT_EQ(customers_.AgingHeading(-7), "0 to 30");
  EXPECT_EQ(customers_.AgingHeading(9), "over 90");
  customers_.AgingHeading(0, "current");
  customers_.AgingHeading(5, "late");
  EXPECT_EQ(Written(DefaultCustomerDataRecord::AgingHeading, 1), "current");
  EXPECT_EQ(row_.Value(DefaultCustomerDataRecord::AgingHeading, 4), "late");
  EXPECT_EQ(row_.Value(DefaultCustomerDataRecord::AgingHeading, 0), "nobody's");
}

TEST_F(DefaultCustomerDataIndexes, OfPaymentMethodsAreBroughtInto1To10) {
  row_.Change([](Tovrin2Record& row) {
    row.SetText(DefaultCustomerDataRecord::PaymentMethod, "nobody's", 0);
    row.SetText(DefaultCustomerDataRecord::PaymentMethod, "cash", 1);
    row.SetText(DefaultCustomerDataRecord::PaymentMethod, "card", 10);
  });
  ASSERT_EQ(customers_.Read(), StatusSuccess);
  EXPECT_EQ(customers_.PaymentMethod(0), "cash");
  EXPECT_EQ(customers_.PaymentMethod(11), "card");
  customers_.PaymentMethod(0, "coins");
  customers_.PaymentMethod(99, "transfer");
  EXPECT_EQ(Written(DefaultCustomerDataRecord::PaymentMethod, 1), "coins");
  EXPECT_EQ(row_.Value(DefaultCustomerDataRecord::PaymentMethod, 10), "transfer");
  EXPECT_EQ(row_.Value(DefaultCustomerDataRecord::PaymentMethod, 0), "nobody's");
}

TEST_F(DefaultCustomerDataIndexes, OfCustomFieldsAreBroughtInto1To5) {
  row_.Change([](Tovrin2Record& row) {
    for (const int field : {0, 1, 5}) {
      row.SetBoolean(DefaultCustomerDataRecord::CustomFieldEnabled, field == 5, field);
    }
    row.SetText(DefaultCustomerDataRecord::CustomFieldLabel, "first", 1);
    row.SetText(DefaultCustomerDataRecord::CustomFieldLabel, "fifth", 5);
  });
  ASSERT_EQ(customers_.Read(), StatusSuccess);
  EXPECT_FALSE(customers_.CustomFieldEnabled(0));
  EXPECT_TRUE(customers_.CustomFieldEnabled(6));
  EXPECT_EQ(customers_.CustomFieldLabel(0), "first");
  EXPECT_EQ(customers_.CustomFieldLabel(6), "fifth");
  customers_.CustomFieldEnabled(0, true);
  customers_.CustomFieldEnabled(6, false);
  customers_.CustomFieldLabel(0, "region");
  customers_.CustomFieldLabel(6, "source");
  EXPECT_EQ(Written(DefaultCustomerDataRecord::CustomFieldEnabled, 1), true);
  EXPECT_EQ(row_.Value(DefaultCustomerDataRecord::CustomFieldEnabled, 5), false);
  EXPECT_EQ(row_.Value(DefaultCustomerDataRecord::CustomFieldEnabled, 0), false);
  EXPECT_EQ(row_.Value(DefaultCustomerDataRecord::CustomFieldLabel, 1), "region");
  EXPECT_EQ(row_.Value(DefaultCustomerDataRecord::CustomFieldLabel, 5), "source");
}

TEST_F(DefaultCustomerDataIndexes, OfAgingDaysAreTakenAsTheyAre) {
  Store(DefaultCustomerDataRecord::AgingDays, std::int16_t{15}, 0);
  EXPECT_EQ(customers_.AgingDays(0), 15);
  EXPECT_EQ(RaisedNumber([&] { return customers_.AgingDays(-1); }), errors::SubscriptOutOfRange);
  EXPECT_EQ(RaisedNumber([&] { return customers_.AgingDays(99); }), errors::SubscriptOutOfRange);
}

// --- Numbers ---

TEST_F(DefaultCustomerDataNumbers, FCDaysKeepsItsValueWhateverIsAssigned) {
  Store(DefaultCustomerDataRecord::FCDays, std::int16_t{14});
  customers_.FCDays(30);
  EXPECT_EQ(customers_.FCDays(), 14);
  EXPECT_EQ(Written(DefaultCustomerDataRecord::FCDays), 14);
}

TEST_F(DefaultCustomerDataNumbers, NextSONumberKeepsItsValueWhateverIsAssigned) {
  Store(DefaultCustomerDataRecord::NextSONumber, "SO-77");
  for (const char* value : {"100", "", "SO-78"}) {
    customers_.NextSONumber(value);
    EXPECT_EQ(customers_.NextSONumber(), "SO-77");
  }
  EXPECT_EQ(Written(DefaultCustomerDataRecord::NextSONumber), "SO-77");
}

TEST_F(DefaultCustomerDataNumbers, AreThoseThatTheJournalsCountWith) {
  ASSERT_EQ(WriteNextInvoiceNumber("I-1"), StatusSuccess);
  ASSERT_EQ(WriteNextQuoteNumber("Q-1"), StatusSuccess);
  ASSERT_EQ(WriteNextSONumber("SO-1"), StatusSuccess);
  ASSERT_EQ(customers_.Read(), StatusSuccess);
  EXPECT_EQ(customers_.NextInvoiceNumber(), "I-1");
  EXPECT_EQ(customers_.NextQuoteNumber(), "Q-1");
  EXPECT_EQ(customers_.NextSONumber(), "SO-1");
  customers_.NextInvoiceNumber("I-2");
  customers_.NextQuoteNumber("Q-2");
  ASSERT_EQ(customers_.Update(), StatusSuccess);
  EXPECT_EQ(ReadNextInvoiceNumber(), "I-2");
  EXPECT_EQ(ReadNextQuoteNumber(), "Q-2");
}

// --- The merchant ---

TEST_F(DefaultCustomerDataMerchant, TIDLengthCountsTheCharactersOfTheID) {
  ASSERT_EQ(customers_.Read(), StatusSuccess);
  customers_.Merchant_TID("terminal");
  EXPECT_EQ(customers_.Merchant_TID_Length(), 0);
  customers_.Merchant_ID("merchant 1");
  EXPECT_EQ(customers_.Merchant_TID_Length(), 10);
  customers_.Merchant_ID("Bl\xC3\xA5");  // three characters in four bytes
  EXPECT_EQ(customers_.Merchant_TID_Length(), 3);
}

TEST_F(DefaultCustomerDataMerchant, TIDLengthCannotBeAssigned) {
  Store(DefaultCustomerDataRecord::Merchant_ID, "merchant 1");
  const RecordBytes before = row_.Bytes();
  customers_.Merchant_TID_Length(99);
  EXPECT_EQ(customers_.Merchant_TID_Length(), 10);
  ASSERT_EQ(customers_.Update(), StatusSuccess);
  EXPECT_TRUE(row_.Bytes() == before);
}

TEST_F(DefaultCustomerDataMerchant, IDLengthIsWhatWasStoredAndNotCounted) {
  Store(DefaultCustomerDataRecord::Merchant_ID, "merchant 1");
  customers_.Merchant_ID_Length(5);
  EXPECT_EQ(customers_.Merchant_ID_Length(), 5);
  EXPECT_EQ(Written(DefaultCustomerDataRecord::Merchant_ID_Length), 5);
}

/// Data of a release, and whether the length of the merchant's ID can be assigned there.
class DefaultCustomerDataMerchantIDLength
    : public DefaultCustomerDataTest,
      public testing::WithParamInterface<std::pair<double, bool>> {
 protected:
  DefaultCustomerDataMerchantIDLength() : DefaultCustomerDataTest(GetParam().first) {}
};

TEST_P(DefaultCustomerDataMerchantIDLength, IsShownAlwaysAndAssignedFromRelease18On) {
  Store(DefaultCustomerDataRecord::Merchant_ID_Length, std::uint8_t{9});
  EXPECT_EQ(customers_.Merchant_ID_Length(), 9);
  customers_.Merchant_ID_Length(5);
  const std::uint8_t expected = GetParam().second ? 5 : 9;
  EXPECT_EQ(customers_.Merchant_ID_Length(), expected);
  EXPECT_EQ(Written(DefaultCustomerDataRecord::Merchant_ID_Length), expected);
}

INSTANTIATE_TEST_SUITE_P(Releases, DefaultCustomerDataMerchantIDLength,
                         testing::Values(std::pair(8.0, false), std::pair(17.0, false),
                                         std::pair(17.9, false), std::pair(18.0, true),
                                         std::pair(19.0, true)));

TEST(DefaultCustomerDataBeforeOpenFile, DropsTheLengthOfTheMerchantsID) {
  DefaultCustomerData customers;
  customers.Merchant_ID_Length(5);
  EXPECT_EQ(customers.Merchant_ID_Length(), 0);
}

// --- Bytes of the row ---

/// Data of a release, and the last byte that is shown there.
class DefaultCustomerDataUnused11
    : public DefaultCustomerDataTest,
      public testing::WithParamInterface<std::pair<double, std::int16_t>> {
 protected:
  DefaultCustomerDataUnused11() : DefaultCustomerDataTest(GetParam().first) {
    // The first two bytes tell which row it is, and are 1 and 0.
    row_.Change([](Tovrin2Record& row) {
      for (std::size_t place = 2; place < row.Bytes().size(); ++place) {
        row.Bytes()[place] = std::byte{PatternAt(place)};
      }
    });
    EXPECT_EQ(customers_.Read(), StatusSuccess);
  }

  /// A number that no byte nearby has.
  static std::uint8_t PatternAt(std::size_t place) {
    return static_cast<std::uint8_t>(1 + place % 251);
  }
  static std::int16_t Last() { return GetParam().second; }
};

TEST_P(DefaultCustomerDataUnused11, ShowsTheRowsBytesFrom1ToTheLastOfTheReleaseAndStoresNothing) {
  const RecordBytes before = row_.Bytes();
  EXPECT_EQ(customers_.Unused11(1), 0);
  EXPECT_EQ(customers_.Unused11(2), PatternAt(2));
  const auto last = static_cast<std::size_t>(Last());
  EXPECT_EQ(customers_.Unused11(static_cast<std::int16_t>(Last() - 1)), PatternAt(last - 1));
  EXPECT_EQ(customers_.Unused11(Last()), PatternAt(last));

  EXPECT_EQ(customers_.Unused11(0), 0) << "byte 0 is 1";
  EXPECT_EQ(customers_.Unused11(-9999), 0);
  EXPECT_EQ(customers_.Unused11(static_cast<std::int16_t>(Last() + 1)), PatternAt(last));
  EXPECT_EQ(customers_.Unused11(9999), PatternAt(last));
  EXPECT_EQ(customers_.Unused11(32767), PatternAt(last));

  customers_.Unused11(5, 200);
  customers_.Unused11(9999, 200);
  ASSERT_EQ(customers_.Update(), StatusSuccess);
  EXPECT_TRUE(row_.Bytes() == before);
}

INSTANTIATE_TEST_SUITE_P(
    Releases, DefaultCustomerDataUnused11,
    testing::Values(
        std::pair<double, std::int16_t>(8.0, 2685), std::pair<double, std::int16_t>(10.9, 2685),
        std::pair<double, std::int16_t>(11.0, 1281), std::pair<double, std::int16_t>(12.9, 1281),
        std::pair<double, std::int16_t>(13.0, 1534), std::pair<double, std::int16_t>(13.9, 1534),
        std::pair<double, std::int16_t>(14.0, 1437), std::pair<double, std::int16_t>(15.9, 1437),
        std::pair<double, std::int16_t>(16.0, 2461), std::pair<double, std::int16_t>(17.9, 2461),
        std::pair<double, std::int16_t>(18.0, 1143), std::pair<double, std::int16_t>(19.0, 1143)));

TEST_F(DefaultCustomerDataTest, Unused11ShowsTheRowWithWhatWasAssignedSince) {
  ASSERT_EQ(customers_.Read(), StatusSuccess);
  const auto place = static_cast<std::int16_t>(DefaultCustomerDataRecord::NetDueDays.offset);
  customers_.NetDueDays(21);
  EXPECT_EQ(customers_.Unused11(place), 21);
  EXPECT_EQ(DefaultCustomerData().Unused11(1), 0);
}

}  // namespace
}  // namespace larkmoor
