// What journals tell and count of their own transactions alone: MaxTrxNumber, MaxTrxNumberL and
// IncrementBatchCount.
#include <cstdint>

#include <gtest/gtest.h>

#include <larkmoor/bulk_write.h>
#include <larkmoor/status.h>

#include "support/journal_traits.h"

namespace larkmoor {
namespace {

template <typename Journal>
using JournalCountersTest = test::SharedJournalFixture<Journal>;

using Counting = testing::Types<CashReceiptJournal, CashDisbursementJournal, SalesJournal,
                                PurchaseJournal, InventoryAdjustmentJournal,
                                AssemblyAdjustmentJournal, PurchaseOrderJournal, SalesOrderJournal>;
TYPED_TEST_SUITE(JournalCountersTest, Counting, test::JournalNames);

TYPED_TEST(JournalCountersTest, MaxTrxNumberIsThatOfTheJournal) {
  BulkWrite bulk;
  std::int32_t nRecord = 0;
  for (const std::int16_t code : test::AllJournalCodes) {
    const std::int32_t number = code == this->Code ? 40000 : 50000;
    this->files_.AddHeader(
        {.nRecord = ++nRecord, .journal = code, .period = 5, .trxNumber = number});
  }
  ASSERT_EQ(bulk.Commit(), StatusSuccess);
  EXPECT_EQ(this->journal_.MaxTrxNumberL(5), 40000);
  if constexpr (requires { this->journal_.MaxTrxNumber(5); }) {
    EXPECT_EQ(this->journal_.MaxTrxNumber(5), -25536) << "the number in 16 bits";
  }
}

TYPED_TEST(JournalCountersTest, IncrementBatchCountCountsATransactionOfTheJournal) {
  EXPECT_EQ(this->journal_.IncrementBatchCount(), -1);
  for (const std::int16_t code : test::AllJournalCodes) {
    EXPECT_EQ(this->BatchEntries(code), code == this->Code ? 1 : 0) << code;
  }
}

}  // namespace
}  // namespace larkmoor
