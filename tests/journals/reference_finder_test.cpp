// How journals search a transaction by the number on its paper: GetForInvoice, GetForPurchaseOrder
// and GetForSalesOrder.
#include <string_view>

#include <gtest/gtest.h>

#include <larkmoor/status.h>

#include "support/journal_traits.h"

namespace larkmoor {
namespace {

using test::JournalFiles;

Status GetForReference(SalesJournal& journal, std::string_view number) {
  return journal.GetForInvoice(number);
}
Status GetForReference(PurchaseJournal& journal, std::string_view number) {
  return journal.GetForInvoice(number);
}
Status GetForReference(PurchaseOrderJournal& journal, std::string_view number) {
  return journal.GetForPurchaseOrder(number);
}
Status GetForReference(SalesOrderJournal& journal, std::string_view number) {
  return journal.GetForSalesOrder(number);
}

template <typename Journal>
class ReferenceFinderTest : public test::SharedJournalFixture<Journal> {
 protected:
  Status Find(std::string_view number) { return GetForReference(this->journal_, number); }
};

using WithReferenceFinder =
    testing::Types<SalesJournal, PurchaseJournal, PurchaseOrderJournal, SalesOrderJournal>;
TYPED_TEST_SUITE(ReferenceFinderTest, WithReferenceFinder, test::JournalNames);

/// Those that walk on from there; a sales journal walks on from ReadFirst alone.
template <typename Journal>
using ReferencePlaceTest = ReferenceFinderTest<Journal>;
using WithPlainWalk = testing::Types<PurchaseJournal, PurchaseOrderJournal, SalesOrderJournal>;
TYPED_TEST_SUITE(ReferencePlaceTest, WithPlainWalk, test::JournalNames);

TYPED_TEST(ReferenceFinderTest, ReadsTheTransactionOfThatNumber) {
  this->AddOwn(1, "1001");
  this->AddOwn(1, "1002");
  this->Open();
  ASSERT_EQ(this->Find("1002"), StatusSuccess);
  this->ExpectInHand("1002", 2);
  EXPECT_EQ(this->Find("1003"), StatusKeyNotFound);
  EXPECT_EQ(this->Find("100"), StatusKeyNotFound);
  EXPECT_EQ(this->Reference(), "1002");
}

TYPED_TEST(ReferenceFinderTest, PassesOverOtherJournalsOfTheSameNumber) {
  this->AddOthers(1, "1001");
  this->AddOwn(2, "1001");
  this->Open();
  ASSERT_EQ(this->Find("1001"), StatusSuccess);
  EXPECT_EQ(this->journal_.JournalID(), this->Code);
  EXPECT_EQ(this->journal_.Period(), 2);
}

// The number is not compared on the way.
TYPED_TEST(ReferenceFinderTest, OfANumberThatOnlyOtherJournalsHaveGivesALaterTransaction) {
  this->AddOthers(1, "1001");
  this->AddOthers(1, "1002");
  this->AddOwn(1, "1005");
  this->Open();
  ASSERT_EQ(this->Find("1001"), StatusSuccess);
  EXPECT_EQ(this->Reference(), "1005");
}

TYPED_TEST(ReferenceFinderTest, OfANumberThatOnlyOtherJournalsHaveEndsWithTheFile) {
  this->AddOwn(1, "1000");
  this->AddOthers(1, "1001");
  this->Open();
  EXPECT_EQ(this->Find("1001"), StatusEndOfFile);
}

TYPED_TEST(ReferencePlaceTest, IsWhereReadNextGoesOnFrom) {
  this->AddOwn(3, "1001");
  this->AddOwn(1, "1002");
  this->Add(this->NextCode, 1, "1003");
  this->Open();
  ASSERT_EQ(this->Find("1001"), StatusSuccess);
  ASSERT_EQ(this->journal_.ReadNext(), StatusSuccess);
  EXPECT_EQ(this->Reference(), "1002");
  EXPECT_EQ(this->journal_.ReadNext(), StatusEndOfFile);
}

TYPED_TEST(ReferenceFinderTest, FindsItsKeyInEveryRelease) {
  this->InEveryRelease([&](const JournalFiles& files, TypeParam& journal) {
    files.AddTransaction({.nRecord = 1, .journal = this->PreviousCode, .reference = "1001"}, {10});
    files.AddTransaction({.nRecord = 2, .journal = this->NextCode, .reference = "1001"}, {20});
    files.AddTransaction({.nRecord = 3, .journal = this->Code, .reference = "1001"}, {30});
    EXPECT_EQ(GetForReference(journal, "1001"), StatusSuccess);
    EXPECT_EQ(journal.NRecord(), 3);
  });
}

}  // namespace
}  // namespace larkmoor
