// The properties of the class MemorizedTransactions that have a rule of their own: the kind of
// transaction in other numbers, the customer or vendor behind it, and its accounts.
#include <cstdint>
#include <vector>

#include <gtest/gtest.h>

#include <larkmoor/journal_code.h>
#include <larkmoor/journals/memorized_transactions.h>
#include <larkmoor/status.h>

#include "connection/status_messages.h"
#include "engine/records/jrnl_hdr.h"
#include "engine/records/jrnl_row.h"
#include "engine/store/driver.h"
#include "support/accounts.h"
#include "support/masters.h"
#include "support/memorized.h"
#include "support/raised_errors.h"
#include "support/read_only_file.h"
#include "support/record_files.h"
#include "support/taken_away.h"

namespace larkmoor {
namespace {

using test::AddAccount;
using test::AddCustomer;
using test::AddVendor;
using test::ExpectRaised;
using test::IsHeldOpen;
using test::TakenAway;

// Journals, as headers bear them.
constexpr std::int16_t Invoice = tovJournalCodeSales;
constexpr std::int16_t Payment = tovJournalCodeCashDisbursement;
constexpr std::int16_t Bill = tovJournalCodePurchase;
constexpr std::int16_t Quote = 12;

using MemorizedTransactionsHeader = test::MemorizedFixture;
using MemorizedTransactionsRowFields = test::MemorizedFixture;
using MemorizedTransactionsID = test::MemorizedFixture;
using MemorizedTransactionsAccount = test::MemorizedFixture;

// --- The header ---

TEST_F(MemorizedTransactionsHeader, NamesFieldsInItsOwnWords) {
  Open();
  patterns_.NRecord(Ours);
  patterns_.AddrAddr1("1 Main St");
  patterns_.AddrAddr2("Suite 2");
  patterns_.AddrCity("Ghent");
  patterns_.AddrCountry("Belgium");
  patterns_.AddrName("Ada Adams");
  patterns_.AddrState("OV");
  patterns_.AddrZipCode("9000");
  patterns_.DropShipCustomerIndex(3);
  patterns_.Index(4);
  patterns_.ReverseTransaction(true);
  patterns_.TotalAmount(12.5);
  patterns_.TransactionID("RENT");
  EXPECT_EQ(patterns_.MemorizedID(), "RENT");
  ASSERT_EQ(patterns_.Insert(), StatusSuccess);
  files_.OfHeader(Ours, [](Tovrin2Record& header) {
    EXPECT_EQ(header.GetText(JrnlHdrRecord::Address1), "1 Main St");
    EXPECT_EQ(header.GetText(JrnlHdrRecord::Address2), "Suite 2");
    EXPECT_EQ(header.GetText(JrnlHdrRecord::City), "Ghent");
    EXPECT_EQ(header.GetText(JrnlHdrRecord::Country), "Belgium");
    EXPECT_EQ(header.GetText(JrnlHdrRecord::Name), "Ada Adams");
    EXPECT_EQ(header.GetText(JrnlHdrRecord::State), "OV");
    EXPECT_EQ(header.GetText(JrnlHdrRecord::Zipcode), "9000");
    EXPECT_EQ(header.GetLong(JrnlHdrRecord::ShipIndex), 3);
    EXPECT_EQ(header.GetLong(JrnlHdrRecord::IDNumber), 4);
    EXPECT_TRUE(header.GetBoolean(JrnlHdrRecord::Reversed));
    EXPECT_EQ(header.GetDouble(JrnlHdrRecord::Amount), 12.5);
    EXPECT_EQ(header.GetText(JrnlHdrRecord::MemorizedID), "RENT");
  });
}

// In the headers of transactions the distribution stores nothing.
TEST_F(MemorizedTransactionsHeader, StoresFlag1AndTheDirectDepositDistribution) {
  Open();
  patterns_.NRecord(Ours);
  patterns_.Flag1(true);
  patterns_.DirDepDistribution("half");
  ASSERT_EQ(patterns_.Insert(), StatusSuccess);
  MemorizedTransactions reader;
  ASSERT_EQ(reader.OpenFile(), StatusSuccess);
  reader.StepFirst();
  EXPECT_TRUE(reader.Flag1());
  EXPECT_EQ(reader.DirDepDistribution(), "half");
}

TEST_F(MemorizedTransactionsHeader, DropShipIsAByteOverATruthValue) {
  Open();
  patterns_.NRecord(Ours);
  EXPECT_EQ(patterns_.DropShip(), 0);
  patterns_.DropShip(1);
  EXPECT_EQ(patterns_.DropShip(), 255);
  ASSERT_EQ(patterns_.Insert(), StatusSuccess);
  EXPECT_TRUE(files_.OfHeader(
      Ours, [](Tovrin2Record& header) { return header.GetBoolean(JrnlHdrRecord::DropShip); }));
  patterns_.DropShip(0);
  EXPECT_EQ(patterns_.DropShip(), 0);
}

TEST_F(MemorizedTransactionsHeader, RecordTypeIsAnotherNumberOfFiveJournals) {
  constexpr std::int16_t Journals[] = {3, 2, 12, 10, 0};
  Open();
  std::int16_t type = 0;
  for (const std::int16_t journal : Journals) {
    patterns_.JournalID(99);
    patterns_.RecordType(type);
    EXPECT_EQ(patterns_.JournalID(), journal);
    EXPECT_EQ(patterns_.RecordType(), type);
    ++type;
  }
}

TEST_F(MemorizedTransactionsHeader, RecordTypeOfAnyOtherJournalIs0) {
  constexpr std::int16_t Journals[] = {1, 4, 5, 7, 8, 11, -1, 99};
  Open();
  for (const std::int16_t journal : Journals) {
    patterns_.JournalID(journal);
    EXPECT_EQ(patterns_.RecordType(), 0) << journal;
    EXPECT_EQ(patterns_.JournalID(), journal) << "reading changes nothing";
  }
}

// It becomes a general journal entry, which reads as 4.
TEST_F(MemorizedTransactionsHeader, RecordTypeAssignedAnyOtherNumberStoresJournal0) {
  constexpr std::int16_t Types[] = {5, -1, 12, 32767};
  Open();
  for (const std::int16_t type : Types) {
    patterns_.JournalID(99);
    patterns_.RecordType(type);
    EXPECT_EQ(patterns_.JournalID(), 0) << type;
    EXPECT_EQ(patterns_.RecordType(), 4) << type;
  }
}

// --- The row ---

TEST_F(MemorizedTransactionsRowFields, NamesItsTaxTypeATaxCode) {
  Open();
  patterns_.NRecord(Ours);
  patterns_.DetailTaxCode(1, 4);
  patterns_.DetailFlag1(1, true);
  ASSERT_EQ(patterns_.Insert(), StatusSuccess);
  const auto rows = files_.OfRows(Ours, [](Tovrin2Record& row) {
    EXPECT_EQ(row.GetInteger(JrnlRowRecord::TaxType), 4);
    EXPECT_EQ(row.GetText(JrnlRowRecord::TaxCode), "");
    EXPECT_TRUE(row.GetBoolean(JrnlRowRecord::Flag1));
    return true;
  });
  EXPECT_EQ(rows.size(), 1U);
}

TEST_F(MemorizedTransactionsRowFields, IsFreightWhereItsKindOfPostingIs6) {
  Open();
  patterns_.NRecord(Ours);
  patterns_.DetailFreightFlag(1, true);
  EXPECT_TRUE(patterns_.DetailFreightFlag(1));
  ASSERT_EQ(patterns_.Insert(), StatusSuccess);
  const auto kinds = [&] {
    return files_.OfRows(Ours,
                         [](Tovrin2Record& row) { return row.GetLong(JrnlRowRecord::TrxType); });
  };
  EXPECT_EQ(kinds(), std::vector<std::int32_t>{6});
  ASSERT_EQ(patterns_.Delete(), StatusSuccess);
  patterns_.DetailFreightFlag(1, false);
  EXPECT_FALSE(patterns_.DetailFreightFlag(1));
  ASSERT_EQ(patterns_.Insert(), StatusSuccess);
  EXPECT_EQ(kinds(), std::vector<std::int32_t>{0});
}

TEST_F(MemorizedTransactionsRowFields, IsNoFreightOfAnyOtherKindOfPosting) {
  constexpr std::int32_t Kinds[] = {-1, 0, 1, 5, 7};
  Open();
  for (const std::int32_t kind : Kinds) {
    files_.AddHeader({.nRecord = kind + 10});
    files_.AddRow(kind + 10,
                  [&](Tovrin2Record& row) { row.SetLong(JrnlRowRecord::TrxType, kind); });
    ASSERT_EQ(patterns_.StepLast(), StatusSuccess);
    EXPECT_FALSE(patterns_.DetailFreightFlag(1)) << kind;
  }
}

// --- ID ---

TEST_F(MemorizedTransactionsID, IsThatOfACustomerOrAVendorByTheJournal) {
  AddCustomer(company_.Folder(), {"HARRIS", 3});
  AddVendor(company_.Folder(), {"STONE", 3});
  LoadFor(0, 3);
  const auto idIn = [&](std::int16_t journal) {
    patterns_.JournalID(journal);
    return patterns_.ID();
  };
  constexpr std::int16_t OfCustomers[] = {1, 3, 11};
  constexpr std::int16_t OfVendors[] = {2, 4, 10};
  constexpr std::int16_t OfOthers[] = {0, 5, 7, 8, 12, -1, 99};
  for (const std::int16_t journal : OfCustomers) EXPECT_EQ(idIn(journal), "HARRIS") << journal;
  for (const std::int16_t journal : OfVendors) EXPECT_EQ(idIn(journal), "STONE") << journal;
  for (const std::int16_t journal : OfOthers) EXPECT_EQ(idIn(journal), "") << journal;
}

TEST_F(MemorizedTransactionsID, OfNobodyIsEmptyAndNeedsNoFile) {
  const TakenAway customers(Customers());
  const TakenAway vendors(Vendors());
  LoadFor(Invoice, 0);
  EXPECT_EQ(patterns_.ID(), "");
  patterns_.JournalID(Bill);
  EXPECT_EQ(patterns_.ID(), "");
  patterns_.Index(3);
  patterns_.JournalID(Quote);
  EXPECT_EQ(patterns_.ID(), "");
}

TEST_F(MemorizedTransactionsID, AssignedDoesNothing) {
  AddCustomer(company_.Folder(), {"HARRIS", 3});
  AddCustomer(company_.Folder(), {"LAKE", 4});
  LoadFor(Invoice, 3);
  patterns_.ID("LAKE");
  patterns_.ID("NOBODY");
  patterns_.ID("");
  EXPECT_FALSE(IsHeldOpen(Customers()));
  EXPECT_EQ(patterns_.Index(), 3);
  EXPECT_EQ(patterns_.ID(), "HARRIS");
}

TEST_F(MemorizedTransactionsID, HoldsOnlyTheFileThatItNeeds) {
  AddCustomer(company_.Folder(), {"HARRIS", 3});
  AddVendor(company_.Folder(), {"STONE", 3});
  LoadFor(Payment, 3);
  EXPECT_EQ(patterns_.ID(), "STONE");
  EXPECT_TRUE(IsHeldOpen(Vendors()));
  EXPECT_FALSE(IsHeldOpen(Customers()));
  patterns_.JournalID(Invoice);
  EXPECT_EQ(patterns_.ID(), "HARRIS");
  EXPECT_TRUE(IsHeldOpen(Vendors()));
  EXPECT_TRUE(IsHeldOpen(Customers()));
}

// One text serves both.
TEST_F(MemorizedTransactionsID, ThatIsUnknownRaisesWithTheNameOfTheCustomers) {
  LoadFor(Invoice, 77);
  ExpectRaised([&] { return patterns_.ID(); }, ErrorRead,
               "MemorizedTransactions.ID->Customer.GetForIndex(77)", StatusKeyNotFound);
  patterns_.JournalID(Bill);
  ExpectRaised([&] { return patterns_.ID(); }, ErrorRead,
               "MemorizedTransactions.ID->Customer.GetForIndex(77)", StatusKeyNotFound);
  AddVendor(company_.Folder(), {"STONE", 77});
  EXPECT_EQ(patterns_.ID(), "STONE");
}

TEST_F(MemorizedTransactionsID, WithoutTheFileRaisesAtEveryReadUntilItIsBack) {
  AddCustomer(company_.Folder(), {"HARRIS", 3});
  AddVendor(company_.Folder(), {"STONE", 3});
  LoadFor(Invoice, 3);
  {
    const TakenAway customers(Customers());
    const TakenAway vendors(Vendors());
    for (int i = 0; i < 2; ++i) {
      patterns_.JournalID(Invoice);
      ExpectRaised([&] { return patterns_.ID(); }, ErrorOpen,
                   "MemorizedTransactions.ID->Customer.OpenFile", StatusFileNotFound);
      patterns_.JournalID(Bill);
      ExpectRaised([&] { return patterns_.ID(); }, ErrorOpen,
                   "MemorizedTransactions.ID->Vendor.OpenFile", StatusFileNotFound);
    }
  }
  EXPECT_EQ(patterns_.ID(), "STONE");
  patterns_.JournalID(Invoice);
  EXPECT_EQ(patterns_.ID(), "HARRIS");
}

// The read that meets the refusal is empty too, and the file is not tried again.
TEST_F(MemorizedTransactionsID, OfProtectedCustomersIsEmptyFromThenOn) {
  AddCustomer(company_.Folder(), {"HARRIS", 3});
  AddVendor(company_.Folder(), {"STONE", 3});
  LoadFor(Invoice, 3);
  test::ProtectFile(Customers(), /*allowRead=*/false);
  EXPECT_EQ(patterns_.ID(), "");
  ASSERT_EQ(store::DefaultDriver().ClearOwner(Customers(), "someone"), StatusSuccess);
  EXPECT_EQ(patterns_.ID(), "");
  patterns_.JournalID(Bill);
  EXPECT_EQ(patterns_.ID(), "STONE") << "the vendors are a file of their own";
}

TEST_F(MemorizedTransactionsID, OfProtectedVendorsIsEmptyFromThenOn) {
  AddCustomer(company_.Folder(), {"HARRIS", 3});
  AddVendor(company_.Folder(), {"STONE", 3});
  LoadFor(Bill, 3);
  test::ProtectFile(Vendors(), /*allowRead=*/false);
  EXPECT_EQ(patterns_.ID(), "");
  ASSERT_EQ(store::DefaultDriver().ClearOwner(Vendors(), "someone"), StatusSuccess);
  EXPECT_EQ(patterns_.ID(), "");
  patterns_.JournalID(Invoice);
  EXPECT_EQ(patterns_.ID(), "HARRIS");
}

TEST_F(MemorizedTransactionsID, OpensCustomersAndVendorsForWriting) {
  AddAccount(company_.Folder(), {"1100", 5});
  AddCustomer(company_.Folder(), {"HARRIS", 3});
  AddVendor(company_.Folder(), {"STONE", 3});
  files_.AddTransaction({.nRecord = Ours, .journal = Invoice, .idNumber = 3}, {10});
  const auto loadOf = [&](std::int16_t journal) {
    Open();
    patterns_.StepFirst();
    patterns_.JournalID(journal);
  };
  test::WhereOnlyThisIsReadOnly(Customers(), [&] {
    loadOf(Invoice);
    ExpectRaised([&] { return patterns_.ID(); }, ErrorOpen,
                 "MemorizedTransactions.ID->Customer.OpenFile", StatusPermission);
  });
  test::WhereOnlyThisIsReadOnly(Vendors(), [&] {
    loadOf(Bill);
    ExpectRaised([&] { return patterns_.ID(); }, ErrorOpen,
                 "MemorizedTransactions.ID->Vendor.OpenFile", StatusPermission);
  });
}

// --- Account and DetailGLAccount ---

TEST_F(MemorizedTransactionsAccount, OfHeaderAndRowAreShownByTheirIds) {
  AddAccount(company_.Folder(), {"1100", 5});
  AddAccount(company_.Folder(), {"4000", 6});
  Open();
  patterns_.NRecord(Ours);
  patterns_.Account("1100");
  patterns_.DetailGLAccount(1, "4000");
  EXPECT_EQ(patterns_.Account(), "1100");
  EXPECT_EQ(patterns_.DetailGLAccount(1), "4000");
  ASSERT_EQ(patterns_.Insert(), StatusSuccess);
  EXPECT_EQ(files_.Long(Ours, JrnlHdrRecord::MainAccountIndex), 5);
  EXPECT_EQ(files_.OfRows(
                Ours, [](Tovrin2Record& row) { return row.GetLong(JrnlRowRecord::AccountIndex); }),
            std::vector<std::int32_t>{6});
  patterns_.Account("");
  patterns_.DetailGLAccount(1, "");
  EXPECT_EQ(patterns_.Account(), "");
  EXPECT_EQ(patterns_.DetailGLAccount(1), "");
}

// Elsewhere an index without an account raises.
TEST_F(MemorizedTransactionsAccount, ThatIsUnknownReadsEmpty) {
  files_.AddHeader({.nRecord = Ours}, [](Tovrin2Record& header) {
    header.SetLong(JrnlHdrRecord::MainAccountIndex, 77);
  });
  files_.AddRow(Ours, [](Tovrin2Record& row) { row.SetLong(JrnlRowRecord::AccountIndex, 77); });
  Open();
  ASSERT_EQ(patterns_.StepFirst(), StatusSuccess);
  EXPECT_EQ(patterns_.Account(), "");
  EXPECT_EQ(patterns_.DetailGLAccount(1), "");
  AddAccount(company_.Folder(), {"1100", 77});
  EXPECT_EQ(patterns_.Account(), "1100");
  EXPECT_EQ(patterns_.DetailGLAccount(1), "1100");
}

// The text shows 0 whatever was sought, and names Account also where a row is meant.
TEST_F(MemorizedTransactionsAccount, AssignedAnUnknownOneRaisesWithTheNumber0AndStaysAsItWas) {
  AddAccount(company_.Folder(), {"1100", 5});
  Open();
  patterns_.Account("1100");
  patterns_.DetailGLAccount(1, "1100");
  ExpectRaised([&] { patterns_.Account("9999"); }, ErrorRead,
               "MemorizedTransactions.Account=>Chart.GetEqual(0)", StatusKeyNotFound);
  ExpectRaised([&] { patterns_.DetailGLAccount(1, "9999"); }, ErrorRead,
               "MemorizedTransactions.Account=>Chart.GetEqual(0)", StatusKeyNotFound);
  EXPECT_EQ(patterns_.Account(), "1100");
  EXPECT_EQ(patterns_.DetailGLAccount(1), "1100");
}

TEST_F(MemorizedTransactionsAccount, WithoutTheFileRaisesAtEveryTryUntilItIsBack) {
  AddAccount(company_.Folder(), {"1100", 5});
  files_.AddHeader({.nRecord = Ours}, [](Tovrin2Record& header) {
    header.SetLong(JrnlHdrRecord::MainAccountIndex, 5);
  });
  files_.AddRow(Ours, [](Tovrin2Record& row) { row.SetLong(JrnlRowRecord::AccountIndex, 5); });
  {
    const TakenAway away(Accounts());
    ASSERT_EQ(patterns_.OpenFile(), StatusFileNotFound);
    ASSERT_EQ(patterns_.StepFirst(), StatusSuccess);
    for (int i = 0; i < 2; ++i) {
      ExpectRaised([&] { return patterns_.Account(); }, ErrorOpen,
                   "MemorizedTransactions.Account=>Chart.OpenFile", StatusFileNotFound);
      ExpectRaised([&] { patterns_.Account("1100"); }, ErrorOpen,
                   "MemorizedTransactions.Account=>Chart.OpenFile", StatusFileNotFound);
      ExpectRaised([&] { return patterns_.DetailGLAccount(1); }, ErrorOpen,
                   "MemorizedTransactions.Account=>Chart.OpenFile", StatusFileNotFound);
      ExpectRaised([&] { patterns_.DetailGLAccount(1, "1100"); }, ErrorOpen,
                   "MemorizedTransactions.Account=>Chart.OpenFile", StatusFileNotFound);
    }
  }
  EXPECT_EQ(patterns_.Account(), "1100");
  EXPECT_TRUE(IsHeldOpen(Accounts())) << "from the first need on";
  EXPECT_EQ(patterns_.DetailGLAccount(1), "1100");
  EXPECT_EQ(patterns_.CloseFile(), StatusSuccess);
  EXPECT_FALSE(IsHeldOpen(Accounts()));
}

TEST_F(MemorizedTransactionsAccount, ThatIsEmptyNeedsNoFile) {
  const TakenAway away(Accounts());
  ASSERT_EQ(patterns_.OpenFile(), StatusFileNotFound);
  patterns_.Account("");
  EXPECT_EQ(patterns_.Account(), "");
  patterns_.DetailGLAccount(1, "");
  EXPECT_EQ(patterns_.DetailGLAccount(1), "");
}

// Reading passes the refusal over in silence, assigning does not.
TEST_F(MemorizedTransactionsAccount, OfProtectedAccountsReadsEmptyAndRaisesWhenAssigned) {
  AddAccount(company_.Folder(), {"1100", 5});
  files_.AddHeader({.nRecord = Ours}, [](Tovrin2Record& header) {
    header.SetLong(JrnlHdrRecord::MainAccountIndex, 5);
  });
  files_.AddRow(Ours, [](Tovrin2Record& row) { row.SetLong(JrnlRowRecord::AccountIndex, 5); });
  test::ProtectFile(Accounts(), /*allowRead=*/false);
  ASSERT_EQ(patterns_.OpenFile(), StatusInvalidOwner);
  ASSERT_EQ(patterns_.StepFirst(), StatusSuccess);
  EXPECT_EQ(patterns_.Account(), "");
  EXPECT_EQ(patterns_.DetailGLAccount(1), "");
  ExpectRaised([&] { patterns_.Account("1100"); }, ErrorOpen,
               "MemorizedTransactions.Account=>Chart.OpenFile", StatusInvalidOwner);
  patterns_.Account("");
  EXPECT_EQ(patterns_.Account(), "");
}

TEST_F(MemorizedTransactionsAccount, OfAccountsProtectedAtOpenFileStaysEmpty) {
  AddAccount(company_.Folder(), {"1100", 5});
  files_.AddTransaction({.nRecord = Ours}, {10});
  test::ProtectFile(Accounts(), /*allowRead=*/false);
  ASSERT_EQ(patterns_.OpenFile(), StatusInvalidOwner);
  ASSERT_EQ(store::DefaultDriver().ClearOwner(Accounts(), "someone"), StatusSuccess);
  ASSERT_EQ(patterns_.StepFirst(), StatusSuccess);
  patterns_.Account("1100");
  EXPECT_EQ(patterns_.Account(), "");
  ASSERT_EQ(patterns_.Update(), StatusSuccess);
  EXPECT_EQ(files_.Long(Ours, JrnlHdrRecord::MainAccountIndex), 5) << "but it can be assigned";
}

}  // namespace
}  // namespace larkmoor
