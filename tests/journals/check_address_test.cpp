// The address on a check, CheckName to CheckCountry, of the journals of money that comes and goes.
#include <gtest/gtest.h>

#include <larkmoor/status.h>

#include "engine/records/jrnl_hdr.h"
#include "support/journal_traits.h"

namespace larkmoor {
namespace {

template <typename Journal>
using CheckAddressTest = test::SharedJournalFixture<Journal>;

using WithChecks = testing::Types<CashReceiptJournal, CashDisbursementJournal>;
TYPED_TEST_SUITE(CheckAddressTest, WithChecks, test::JournalNames);

TYPED_TEST(CheckAddressTest, IsThatOfTheHeader) {
  this->Open();
  this->journal_.NRecord(1);
  this->journal_.CheckName("Elm Street Dairy");
  this->journal_.CheckAddr1("1 Elm Street");
  this->journal_.CheckAddr2("Back door");
  this->journal_.CheckCity("Elmton");
  this->journal_.CheckState("OH");
  this->journal_.CheckZipcode("44001");
  this->journal_.CheckCountry("USA");
  ASSERT_EQ(this->journal_.Insert(), StatusSuccess);
  EXPECT_EQ(this->files_.Text(1, JrnlHdrRecord::Name), "Elm Street Dairy");
  EXPECT_EQ(this->files_.Text(1, JrnlHdrRecord::Address1), "1 Elm Street");
  EXPECT_EQ(this->files_.Text(1, JrnlHdrRecord::Address2), "Back door");
  EXPECT_EQ(this->files_.Text(1, JrnlHdrRecord::City), "Elmton");
  EXPECT_EQ(this->files_.Text(1, JrnlHdrRecord::State), "OH");
  EXPECT_EQ(this->files_.Text(1, JrnlHdrRecord::Zipcode), "44001");
  EXPECT_EQ(this->files_.Text(1, JrnlHdrRecord::Country), "USA");
}

}  // namespace
}  // namespace larkmoor
