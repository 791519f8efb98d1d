// How journals walk their transactions by period: ReadFirst and ReadNext. The sales journal, which
// goes over to the quotes, is tested with its class.
#include <gtest/gtest.h>

#include "support/journal_traits.h"

namespace larkmoor {
namespace {

template <typename Journal>
using PeriodWalkTest = test::SharedJournalFixture<Journal>;

using WithPlainWalk = testing::Types<CashReceiptJournal, CashDisbursementJournal, PurchaseJournal,
                                     InventoryAdjustmentJournal, AssemblyAdjustmentJournal,
                                     PurchaseOrderJournal, SalesOrderJournal>;
TYPED_TEST_SUITE(PeriodWalkTest, WithPlainWalk, test::JournalNames);

TYPED_TEST(PeriodWalkTest, GivesTheTransactionsFromThePeriodOnAndNothingElse) {
  this->AddOthers(9, "later");
  this->AddOwn(1, "too early");
  this->AddOwn(5, "A5");
  this->AddOwn(3, "A3");
  this->AddOthers(1, "earlier");
  this->Open();
  EXPECT_EQ(this->WalkFrom(2), (typename TestFixture::References{"A3", "A5"}));
}

TYPED_TEST(PeriodWalkTest, BringsThePeriodBetween0And41) {
  this->AddOwn(-1, "A-1");
  this->AddOwn(40, "A40");
  this->AddOwn(41, "A41");
  this->Open();
  EXPECT_EQ(this->WalkFrom(50), (typename TestFixture::References{"A41"}));
  EXPECT_EQ(this->WalkFrom(-5), (typename TestFixture::References{"A40", "A41"}));
}

}  // namespace
}  // namespace larkmoor
