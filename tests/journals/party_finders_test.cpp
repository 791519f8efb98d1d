// How journals walk the transactions of a customer or of a vendor: ReadFirstForCustomer and
// ReadNextByCustomer, ReadFirstForVendor and ReadNextByVendor.
#include <cstdint>

#include <gtest/gtest.h>

#include <larkmoor/status.h>

#include "connection/shared_state.h"
#include "support/journal_traits.h"

namespace larkmoor {
namespace {

using test::JournalFiles;

/// The finders of a journal, by the party that comes first in it.
template <typename Journal>
struct PartyFinders {
  static constexpr bool HasCustomers = requires(Journal & journal) {
    journal.ReadNextByCustomer();
  };

  static Status ReadFirst(Journal& journal, std::int32_t index) {
    if constexpr (HasCustomers) {
      return journal.ReadFirstForCustomer(index);
    } else {
      return journal.ReadFirstForVendor(index);
    }
  }
  static Status ReadNext(Journal& journal) {
    if constexpr (HasCustomers) {
      return journal.ReadNextByCustomer();
    } else {
      return journal.ReadNextByVendor();
    }
  }
  static std::int32_t Party(Journal& journal) {
    if constexpr (HasCustomers) {
      return journal.CustomerIndex();
    } else {
      return journal.VendorIndex();
    }
  }
};

template <typename Journal>
class PartyFindersTest : public test::SharedJournalFixture<Journal> {
 protected:
  using Finders = PartyFinders<Journal>;

  Status ReadFirstFor(std::int32_t index) { return Finders::ReadFirst(this->journal_, index); }
  Status ReadNextByParty() { return Finders::ReadNext(this->journal_); }
  std::int32_t Party() { return Finders::Party(this->journal_); }
};

using WithParties = testing::Types<CashReceiptJournal, CashDisbursementJournal, SalesJournal,
                                   PurchaseJournal, PurchaseOrderJournal, SalesOrderJournal>;
TYPED_TEST_SUITE(PartyFindersTest, WithParties, test::JournalNames);

TYPED_TEST(PartyFindersTest, GiveThoseOfThePartyByNumberAndThoseOfTheNextOnes) {
  this->AddOwn(1, "B7", 7);
  this->AddOwn(2, "A7", 7);
  this->AddOwn(3, "A9", 9);
  this->AddOwn(3, "A6", 6);
  this->AddOthers(1, "other", 7);
  this->Open();
  EXPECT_EQ(this->Walk(this->ReadFirstFor(7), [&] { return this->ReadNextByParty(); }),
            (typename TestFixture::References{"A7", "B7", "A9"}));
}

TYPED_TEST(PartyFindersTest, WithoutAnyOfThePartyLandOnTheNextOne) {
  this->AddOwn(1, "A6", 6);
  this->AddOwn(1, "A9", 9);
  this->Open();
  ASSERT_EQ(this->ReadFirstFor(7), StatusSuccess);
  EXPECT_EQ(this->Party(), 9);
  this->ExpectInHand("A9", 2);
}

TYPED_TEST(PartyFindersTest, PassOverOtherJournalsToTheEnd) {
  this->AddOthers(1, "other", 7);
  this->Open();
  EXPECT_EQ(this->ReadFirstFor(7), StatusEndOfFile);
  EXPECT_EQ(this->journal_.NDistributions(), 0);
}

TYPED_TEST(PartyFindersTest, EndAtAnotherJournalAndKeepTheRows) {
  this->AddOwn(1, "A7", 7);
  this->Add(this->NextCode, 1, "other", 7);
  this->Open();
  ASSERT_EQ(this->ReadFirstFor(7), StatusSuccess);
  EXPECT_EQ(this->ReadNextByParty(), StatusEndOfFile);
  this->ExpectInHand("other", 1);
}

TYPED_TEST(PartyFindersTest, AnswerTheStatusOfTheRows) {
  this->files_.AddHeader({.nRecord = 1, .journal = this->Code, .idNumber = 7});
  this->Open();
  EXPECT_EQ(this->ReadFirstFor(7), StatusEndOfFile);
  EXPECT_EQ(this->Party(), 7);
}

TYPED_TEST(PartyFindersTest, NeedAnOpenFileAndAPlaceOnTheirOwnKey) {
  this->AddOwn(1, "A7", 7);
  EXPECT_EQ(this->ReadFirstFor(7), StatusFileNotOpen);
  EXPECT_EQ(this->ReadNextByParty(), StatusFileNotOpen);
  this->Open();
  EXPECT_EQ(this->ReadNextByParty(), StatusInvalidPositioning);
  ASSERT_EQ(this->journal_.ReadFirst(1), StatusSuccess);
  EXPECT_EQ(this->ReadNextByParty(), StatusDifferentKeyNumber);
}

// A walk that was refused is the last search all the same: behind party 9 comes party 10, not the
// next period.
TYPED_TEST(PartyFindersTest, RefusedAreWhereTheNextWriteTakesItsPlace) {
  this->AddOwn(1, "A9", 9);
  this->AddOwn(2, "A7", 7);
  this->AddOwn(3, "A10", 10);
  this->Open();
  ASSERT_EQ(this->journal_.ReadFirst(1), StatusSuccess);
  ASSERT_EQ(this->ReadNextByParty(), StatusDifferentKeyNumber);
  ASSERT_EQ(this->journal_.Update(), StatusSuccess);
  ASSERT_EQ(this->journal_.ReadNext(), StatusSuccess);
  EXPECT_EQ(this->Reference(), "A10");
}

// The key bears another number in several of these releases, and no release has two of them.
TYPED_TEST(PartyFindersTest, FindTheirKeyInEveryRelease) {
  using Finders = PartyFinders<TypeParam>;
  this->InEveryRelease([&](const JournalFiles& files, TypeParam& journal) {
    files.AddTransaction({.nRecord = 1, .journal = this->Code, .idNumber = 7}, {10});
    files.AddTransaction({.nRecord = 2, .journal = this->Code, .idNumber = 8}, {20});
    EXPECT_EQ(Finders::ReadFirst(journal, 7), StatusSuccess);
    EXPECT_EQ(Finders::Party(journal), 7);
    EXPECT_EQ(Finders::ReadNext(journal), StatusSuccess);
    EXPECT_EQ(Finders::Party(journal), 8);
  });
}

TYPED_TEST(PartyFindersTest, ChooseTheKeyByTheReleaseThatWasOpenedLast) {
  this->AddOwn(1, "A7", 7);
  this->Open();
  for (const double release : {17.9, 18.0, 18.9}) {
    Shared().gDataVersion = release;
    EXPECT_EQ(this->ReadFirstFor(7), StatusInvalidKeyNumber) << release;
  }
  Shared().gDataVersion = 19.0;
  EXPECT_EQ(this->ReadFirstFor(7), StatusSuccess);
}

}  // namespace
}  // namespace larkmoor
