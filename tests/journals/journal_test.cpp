// The class Journal, which has the shape of a table and answers the same to everyone.
#include <gtest/gtest.h>

#include <larkmoor/journals/journal.h>

#include "automation/automation.h"

namespace larkmoor {
namespace {

TEST(JournalTest, EveryCustomerAndVendorHasTransactionsThoughThereAreNone) {
  Journal journal;
  EXPECT_TRUE(journal.CustomerInJournals(0));
  EXPECT_TRUE(journal.CustomerInJournals(-1));
  EXPECT_TRUE(journal.VendorInJournals(0));
  EXPECT_TRUE(journal.VendorInJournals(12));
  EXPECT_EQ(journal.RecordCount(), 0);
}

TEST(JournalTest, TruthByNameIsMinus1) {
  automation::Object journal("Journal");
  EXPECT_EQ(journal.Call("CustomerInJournals", {0}), Variant(-1));
  EXPECT_EQ(journal.Call("VendorInJournals", {0}), Variant(-1));
}

TEST(JournalTest, OperationsAnswer0WithoutACompany) {
  Journal journal;
  EXPECT_EQ(journal.OpenFile(), StatusSuccess);
  EXPECT_EQ(journal.Insert(), StatusSuccess);
  EXPECT_EQ(journal.Update(), StatusSuccess);
  EXPECT_EQ(journal.Delete(1), StatusSuccess);
  EXPECT_EQ(journal.CloseFile(), StatusSuccess);
}

TEST(JournalTest, StepsAnswer0ForEver) {
  Journal journal;
  EXPECT_EQ(journal.StepFirst(), StatusSuccess);
  EXPECT_EQ(journal.StepNext(), StatusSuccess);
  EXPECT_EQ(journal.StepNext(), StatusSuccess);
  EXPECT_EQ(journal.StepLast(), StatusSuccess);
  EXPECT_EQ(journal.StepPrevious(), StatusSuccess);
}

}  // namespace
}  // namespace larkmoor
