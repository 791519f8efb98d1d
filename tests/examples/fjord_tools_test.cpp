// The examples on the demonstration's company: one makes it and posts its year, the other adds a
// row to an invoice. What the year should come to is added up from the same files by sqlite3.
#include <cstdint>
#include <filesystem>
#include <set>
#include <string>
#include <tuple>

#include <gtest/gtest.h>

#include <larkmoor/date.h>
#include <larkmoor/journals/general_journal.h>
#include <larkmoor/journals/jrnl_hdr.h>
#include <larkmoor/journals/sales_journal.h>
#include <larkmoor/journals/sales_order_journal.h>
#include <larkmoor/masters/customer.h>
#include <larkmoor/tables/address.h>

#include "examples/example_programs.h"
#include "support/run_program.h"

namespace larkmoor::test {
namespace {

std::filesystem::path Data() {
  return std::filesystem::path(LARKMOOR_SOURCE_DIR) / "examples/data";
}

/// The company with its year.
class FjordTools : public testing::Test {
 protected:
  FjordTools() { company.Output(LARKMOOR_FJORD_TOOLS, {Data()}); }

  const ExampleCompany company;
};

using AddFreight = FjordTools;

/// The postings of all transactions of a journal, less the quotes. `header` gives the amount that
/// the header posts.
template <typename Journal, typename Header>
void AddPostings(Balances& balances, Header header) {
  Journal journal;
  ASSERT_EQ(journal.OpenFile(), StatusSuccess);
  Status status = journal.ReadFirst(0);
  for (; status == StatusSuccess; status = journal.ReadNext()) {
    if (!journal.Posted()) continue;
    if (!journal.MainAccount().empty()) balances[journal.MainAccount()] += ToCents(header(journal));
    for (std::int16_t row = 1; row <= journal.NDistributions(); ++row) {
      balances[journal.DetailGLAccount(row)] += ToCents(journal.DetailAmount(row));
    }
  }
  EXPECT_EQ(status, StatusEndOfFile);
}

Balances ReadBalances() {
  Balances balances;
  AddPostings<SalesJournal>(balances, [](SalesJournal& sales) { return sales.ARAmount(); });
  AddPostings<GeneralJournal>(balances, [](GeneralJournal& entry) { return entry.MainAmount(); });
  return balances;
}

// --- The year ------------------------------------------------------------------------------------

TEST_F(FjordTools, TheTrialBalanceIsTheSumOfInvoicesAndJournalEntries) {
  SKIP_WITHOUT_SQLITE();
  const auto answer =
      AskSqlite({{"Invoice", Data() / "invoices.csv"}, {"Entry", Data() / "journal.csv"}},
                "with Posting as (select AccountID, Amount from Invoice"
                "  union all select AccountID, Amount from Entry"
                "  union all select '1110', -Amount from Invoice) "
                "select AccountID, sum(cast(round(Amount * 100) as integer)) "
                "from Posting group by AccountID");
  Balances expected;
  std::int64_t sum = 0;
  for (const auto& line : answer) {
    expected[line.at(0)] = std::stoll(line.at(1));
    sum += expected[line.at(0)];
  }
  EXPECT_GT(expected.size(), 30U);
  EXPECT_EQ(sum, 0);
  EXPECT_EQ(ReadBalances(), expected);
}

TEST_F(FjordTools, AnInvoiceHasItsOrderItsTermsAndTheAddressOfItsDelivery) {
  SalesJournal journal;
  ASSERT_EQ(journal.OpenFile(), StatusSuccess);
  ASSERT_EQ(journal.GetForInvoice("10401"), StatusSuccess);
  EXPECT_EQ(journal.CustomerName(), "Granite Ridge Builders, Inc.");
  EXPECT_EQ(journal.TrxDate(), Date::FromYmd(2026, 1, 6));
  EXPECT_EQ(journal.Period(), 1);
  EXPECT_EQ(journal.ShipToAddr2(), "Gate 2");
  EXPECT_EQ(journal.Terms(), "1 % 15 days, net 60 days");
  EXPECT_EQ(journal.DiscountDate(), Date::FromYmd(2026, 1, 21));
  EXPECT_EQ(journal.DateDue(), Date::FromYmd(2026, 3, 7));
  EXPECT_EQ(journal.DetailDescription(1), "Cordless drill 18 V, two batteries");
  EXPECT_EQ(journal.DetailQuantity(4), 2.5);
  EXPECT_EQ(journal.DetailAmount(4), -155.00);
  EXPECT_EQ(journal.DetailGLAccount(4), "4050");
}

TEST_F(FjordTools, AnOrderTellsWhatWasShippedAndIsClosedWhereThatIsAll) {
  SalesOrderJournal journal;
  ASSERT_EQ(journal.OpenFile(), StatusSuccess);
  ASSERT_EQ(journal.GetForSalesOrder("SO-2001"), StatusSuccess);
  EXPECT_EQ(journal.DetailQuantity(2), 13);
  EXPECT_EQ(journal.DetailShippedQuantity(2), 0);
  EXPECT_EQ(journal.DetailShippedQuantity(3), 19);
  EXPECT_EQ(journal.NumSOLines2(), 5);
  EXPECT_FALSE(journal.CloseSalesOrder());
  ASSERT_EQ(journal.GetForSalesOrder("SO-2002"), StatusSuccess);
  EXPECT_TRUE(journal.CloseSalesOrder());
}

TEST_F(FjordTools, QuotesComeBehindAllInvoices) {
  SalesJournal journal;
  ASSERT_EQ(journal.OpenFile(), StatusSuccess);
  int invoices = 0;
  Status status = journal.ReadFirst(1);
  for (; status == StatusSuccess && !journal.Quote(); status = journal.ReadNext()) ++invoices;
  EXPECT_EQ(invoices, 140);
  EXPECT_EQ(status, StatusSuccess);
  EXPECT_EQ(journal.InvoiceNumber(), "Q-501");
  EXPECT_EQ(journal.QuoteGoodThruDate(), Date::FromYmd(2026, 3, 4));
}

TEST_F(FjordTools, CustomersHaveAllTheirAddresses) {
  SKIP_WITHOUT_SQLITE();
  const auto answer = AskSqlite({{"Customer", Data() / "customers.csv"}},
                                "select sum((BillToName != '') + (ShipTo1Name != '')"
                                "  + (ShipTo2Name != '')) from Customer");
  Address address;
  ASSERT_EQ(address.OpenFile(), StatusSuccess);
  EXPECT_EQ(address.RecordCount(), std::stoi(answer.at(0).at(0)));

  Customer customer;
  ASSERT_EQ(customer.OpenFile(), StatusSuccess);
  ASSERT_EQ(customer.GetEqual("RØDLAND"), StatusSuccess);
  EXPECT_EQ(customer.ShipToAddress1(1), "Kaien 7");
  EXPECT_EQ(customer.ShipToName(2), "");
}

// `MaxTrxNumberL` alone would give most transactions of a period the same number.
TEST_F(FjordTools, NoTwoTransactionsOfAPeriodAndJournalHaveTheSameNumber) {
  std::set<std::tuple<std::int16_t, std::int16_t, std::int32_t>> numbers;
  JrnlHdr header;
  ASSERT_EQ(header.OpenFile(), StatusSuccess);
  Status status = header.StepFirst();
  for (; status == StatusSuccess; status = header.StepNext()) {
    EXPECT_TRUE(numbers.emplace(header.JournalID(), header.Period(), header.TrxNumberL()).second)
        << header.Reference();
  }
  EXPECT_EQ(status, StatusEndOfFile);
  EXPECT_EQ(numbers.size(), 12U + 20U + 140U + 43U);
}

TEST_F(FjordTools, AFolderThatHoldsACompanyIsRefused) {
  const ProgramResult result = company.Run(LARKMOOR_FJORD_TOOLS, {Data()});
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_EQ(result.err, company.Folder() + ": the folder holds a company already\n");
}

// --- A row more ----------------------------------------------------------------------------------

TEST_F(AddFreight, AddsARowAndAsMuchToWhatIsOwed) {
  const Balances before = ReadBalances();
  EXPECT_EQ(company.Output(LARKMOOR_ADD_FREIGHT, {"10440", "25.50", "4070"}),
            "Invoice 10440 for Birchbark Canoe Company has 4 rows now and comes to 1327.38.\n");
  Balances expected = before;
  expected["1110"] += 2550;
  expected["4070"] -= 2550;
  EXPECT_EQ(ReadBalances(), expected);
}

TEST_F(AddFreight, OnAnAccountThatIsNotThereChangesNothing) {
  const Balances before = ReadBalances();
  const ProgramResult result = company.Run(LARKMOOR_ADD_FREIGHT, {"10440", "25.50", "4071"});
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_TRUE(result.err.starts_with("DetailGLAccount->Chart.GetForAccountID(4071)")) << result.err;
  EXPECT_EQ(ReadBalances(), before);
}

TEST_F(AddFreight, ToANumberThatNoInvoiceHasIsRefused) {
  ProgramResult result = company.Run(LARKMOOR_ADD_FREIGHT, {"10999", "25.50", "4070"});
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_TRUE(result.err.starts_with("Finding invoice 10999: ")) << result.err;
  result = company.Run(LARKMOOR_ADD_FREIGHT, {"SO-2001", "25.50", "4070"});
  EXPECT_EQ(result.exitCode, 1);
}

}  // namespace
}  // namespace larkmoor::test
