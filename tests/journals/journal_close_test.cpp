// What CloseFile of the journals closes, and what it raises. A purchase keeps two of its files
// open, and a paycheck has two lists of rows: theirs is tested with their classes.
#include <filesystem>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include <larkmoor/status.h>

#include "connection/status_messages.h"
#include "engine/tovrin_file.h"
#include "support/accounts.h"
#include "support/child_process.h"
#include "support/failing_disk.h"
#include "support/journal_traits.h"
#include "support/masters.h"
#include "support/raised_errors.h"
#include "support/record_files.h"

namespace larkmoor {
namespace {

using test::AddAccount;
using test::AddEmployee;
using test::ExpectRaised;
using test::IsHeldOpen;

template <typename Journal>
class JournalCloseTest : public test::SharedJournalFixture<Journal> {
 protected:
  static constexpr bool HasSalesRep = requires(Journal & journal) { journal.SalesRepID(); };

  /// Opens all files that the journal ever opens.
  void OpenAll() {
    this->Open();
    if constexpr (HasSalesRep) this->journal_.SalesRepID();
  }
  std::vector<std::filesystem::path> AllFiles() const {
    std::vector<std::filesystem::path> files = {this->files_.Headers(), this->files_.Rows(),
                                                this->Accounts()};
    if (HasSalesRep) files.push_back(this->Employees());
    return files;
  }
  void ExpectHeldOpen(bool isHeldOpen) const {
    for (const auto& path : AllFiles()) EXPECT_EQ(IsHeldOpen(path), isHeldOpen) << path;
  }
};

using Closing = testing::Types<GeneralJournal, CashReceiptJournal, CashDisbursementJournal,
                               SalesJournal, InventoryAdjustmentJournal, AssemblyAdjustmentJournal,
                               PurchaseOrderJournal, SalesOrderJournal>;
TYPED_TEST_SUITE(JournalCloseTest, Closing, test::JournalNames);

TYPED_TEST(JournalCloseTest, LeavesNothingOpenDropsTheTransactionAndMayBeCalledAgain) {
  this->AddOwn(1, "A");
  this->OpenAll();
  ASSERT_EQ(this->journal_.GetEqual(1), StatusSuccess);
  this->ExpectHeldOpen(true);
  EXPECT_EQ(this->journal_.CloseFile(), StatusSuccess);
  this->ExpectHeldOpen(false);
  EXPECT_EQ(this->Reference(), "");
  EXPECT_EQ(this->journal_.NDistributions(), 0);
  EXPECT_EQ(this->journal_.CloseFile(), StatusSuccess);
}

TYPED_TEST(JournalCloseTest, IsWhatTheEndOfTheObjectDoes) {
  {
    TypeParam brief;
    ASSERT_EQ(brief.OpenFile(), StatusSuccess);
    ASSERT_TRUE(IsHeldOpen(this->files_.Headers()));
  }
  this->ExpectHeldOpen(false);
}

TYPED_TEST(JournalCloseTest, OfFilesThatTheEngineClosedAnswers0) {
  this->Open();
  ASSERT_EQ(TovrinFile().btReset(), StatusSuccess);
  EXPECT_EQ(this->journal_.CloseFile(), StatusSuccess);
}

TYPED_TEST(JournalCloseTest, RaisesWithTheNamesOfTheFilesThatFailInTheirOrder) {
  test::RunInChild([&] {
    this->OpenAll();
    AddAccount(this->company_.Folder(), {"1100", 5});
    AddEmployee(this->company_.Folder(), {"ADAMS", 11});
    this->AddOwn(1, "A");
    for (const auto& path : this->AllFiles()) test::BreakDisk(path);
    const std::string closing = std::string(TestFixture::Traits::Name) + ".CloseFile";
    std::string failed = closing + ": ";
    for (const std::string name : {"Chart", "Employee", "JrnlHdr", "JrnlRow"}) {
      if (name == "Employee" && !this->HasSalesRep) continue;
      failed += "\r\n" + closing + "->" + name + ".CloseFile";
    }
    ExpectRaised([&] { return this->journal_.CloseFile(); }, ErrorClose, failed, StatusIOError);
    EXPECT_EQ(this->journal_.CloseFile(), StatusSuccess) << "all are closed all the same";
  });
}

}  // namespace
}  // namespace larkmoor
