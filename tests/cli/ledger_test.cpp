#include <cmath>
#include <map>
#include <sstream>
#include <string>

#include <gtest/gtest.h>

#include "cli/journal_company.h"
#include "cli/ledger_programs.h"

namespace larkmoor::test {
namespace {

class LedgerExport : public testing::Test {
 protected:
  std::string Ledger() { return company_.Output("export", {"--as", "ledger"}); }
  /// Its transactions, without the accounts ahead of them.
  std::string Transactions() {
    const std::string ledger = Ledger();
    return ledger.substr(ledger.find("\n\n2") + 1);
  }

  JournalCompany company_;
};

TEST_F(LedgerExport, NamesTheAccountsByTypeIDAndDescription) {
  EXPECT_EQ(Ledger(),
            "; The general ledger of a company, written by larkmoor.\n\n"
            "account Cash\n"
            "account Cash:1000 Bank\n    ; type: C\n"
            "account Accounts Receivable\n"
            "account Accounts Receivable:1100 Receivables\n    ; type: A\n"
            "account Other Current Liabilities\n"
            "account Other Current Liabilities:2000 Sales tax\n    ; type: L\n"
            "account Income\n"
            "account Income:4000 Sales\n    ; type: R\n"
            "account Expenses\n"
            "account Expenses:6000 Rent\n    ; type: X\n"
            "account Expenses:9999 Never used\n    ; type: X\n");
}

TEST_F(LedgerExport, HasAllTransactionsByDateWithNumberNameAndPostings) {
  company_.Post(
      SampleEntry{"GJ-1", "2026-01-06", {{"6000", 1250, "Shop"}, {"1000", -1250}}, "Rent"});
  company_.Post(SampleInvoice{.number = "A-1",
                              .date = "2026-01-05",
                              .amount = 107.5,
                              .rows = {{"4000", -100, "Axe"}, {"2000", -7.5}}});
  EXPECT_EQ(Transactions(),
            "\n2026-01-05 (A-1) Berg & Sønner\n"
            "    Accounts Receivable:1100 Receivables              107.50\n"
            "    Income:4000 Sales                                -100.00  ; Axe\n"
            "    Other Current Liabilities:2000 Sales tax           -7.50\n"
            "\n2026-01-06 (GJ-1) Rent\n"
            "    Expenses:6000 Rent                               1250.00  ; Shop\n"
            "    Cash:1000 Bank                                  -1250.00\n");
}

TEST_F(LedgerExport, LeavesOutOrdersQuotesAndWhatPostsNothing) {
  company_.PostOrder("SO", 5);
  company_.Post(SampleInvoice{.number = "Q", .date = "2026-01-15", .amount = 1, .isQuote = true});
  company_.Post(SampleEntry{"GJ", "2026-01-06", {}});
  EXPECT_TRUE(Ledger().ends_with("Never used\n    ; type: X\n"));
}

TEST_F(LedgerExport, EvensOutATransactionThatIsOutOfBalance) {
  company_.Post(SampleEntry{"GJ", "2026-01-06", {{"6000", 5}, {"1000", -4.99}}});
  const ProgramResult result = company_.Run("export", {"--as", "ledger"});
  EXPECT_EQ(result.exitCode, 0);
  EXPECT_TRUE(
      Contains(result.out, "    Out of balance                                     -0.01\n"))
      << result.out;
  EXPECT_TRUE(Contains(result.err, "larkmoor: 1 transaction does not add up to 0.00"))
      << result.err;
}

TEST_F(LedgerExport, GivesATransactionWithoutADateTheDayOfTheEmptyDate) {
  company_.Post(SampleInvoice{.number = "1", .date = "", .amount = 1, .rows = {{"4000", -1}}});
  EXPECT_TRUE(Contains(Ledger(), "\n1900-01-01 (1) Berg"));
}

TEST_F(LedgerExport, WritesToAFile) {
  EXPECT_EQ(company_.Output("export", {"--as", "ledger", "-o", company_.Beside("x.ledger")}), "");
  EXPECT_EQ(ReadFile(company_.Beside("x.ledger")), Ledger());
}

TEST_F(LedgerExport, TakesNoPartOfTheLedger) {
  for (const std::vector<std::string>& arguments :
       {std::vector<std::string>{"SalesJournal", "--as", "ledger"},
        {"--as", "ledger", "--fields", "X"},
        {"--as", "ledger", "--key", "1"},
        {"--as", "ledger", "--where", "X=1"},
        {"--as", "beancount"},
        {}}) {
    EXPECT_EQ(company_.Run("export", arguments).exitCode, 2);
  }
}

// --- What other programs read in it ---

class OtherPrograms : public LedgerExport {
 protected:
  void SetUp() override {
    if (LedgerPrograms().empty()) GTEST_SKIP() << "skipped: no ledger and no hledger";
  }

  LedgerBalances BalancesFoundBy(const std::string& program) {
    return BalancesBy(program, company_.Write("company.ledger", Ledger()));
  }
};

TEST_F(OtherPrograms, FindTheBalancesOfTheTrialBalance) {
  const std::map<std::string, std::string> names = {
      {"1000", "Cash:1000 Bank"},
      {"1100", "Accounts Receivable:1100 Receivables"},
      {"2000", "Other Current Liabilities:2000 Sales tax"},
      {"4000", "Income:4000 Sales"},
      {"6000", "Expenses:6000 Rent"}};
  for (int i = 1; i <= 50; ++i) {
    const double net = 33.33 * i;
    const double tax = std::round(net * 7.5) / 100;
    company_.Post(SampleInvoice{.number = std::to_string(i),
                                .date = i % 2 == 0 ? "2026-01-05" : "2025-12-31",
                                .amount = std::round((net + tax) * 100) / 100,
                                .rows = {{"4000", -net, "Axe"}, {"2000", -tax, "Tax"}}});
    company_.Post(SampleEntry{"GJ", "2026-01-06", {{"6000", 0.07 * i}, {"1000", -0.07 * i}}});
  }

  LedgerBalances expected;
  std::istringstream lines(company_.Output("report", {"trial-balance", "--format", "csv"}));
  std::string line;
  std::getline(lines, line);
  while (std::getline(lines, line)) {
    std::vector<std::string> cells;
    std::istringstream row(line);
    for (std::string cell; std::getline(row, cell, ',');) cells.push_back(cell);
    ASSERT_EQ(cells.size(), 5U) << line;
    expected[names.at(cells[0])] = CentsOf(cells[3]) - CentsOf(cells[4]);
  }
  ASSERT_EQ(expected.size(), names.size());
  EXPECT_EQ(expected.at("Cash:1000 Bank"), -8925);
  for (const std::string& program : LedgerPrograms()) {
    EXPECT_EQ(BalancesFoundBy(program), expected) << program;
  }
}

TEST_F(OtherPrograms, TakeNamesThatMeanSomethingToThem) {
  company_.AddAccount("10;0", "Two  blanks, a\ttab; (and) [more]", 0);
  company_.AddAccount("10,0", "Two blanks, a tab, (and) [more]", 0);
  company_.AddAccount("10\u00A0 1", "a:b = @ {c} #* é", 3);
  company_.AddAccount(" =5", "", 24);
  company_.Post(SampleEntry{"(A)1) ;x",
                            "2026-01-06",
                            {{"10;0", 1, "date: tomorrow; [2026-13-45]"},
                             {"10,0", 2, "  two  blanks\nand a line, key:: 1+"},
                             {"10\u00A0 1", 4, ":tag:"},
                             {" =5", -8.25, ";"},
                             {"1000", 1.25}},
                            "* ! (x) | y; date:2026-99-99\tz"});
  company_.Post(SampleEntry{"", "2026-01-06", {{"1000", 3}, {"6000", -3}}, "(no code) =x"});
  company_.Post(SampleEntry{"only rows", "2026-01-06", {{"1000", 3}, {"6000", -3}}, ""});
  const LedgerBalances expected = {{"Cash:10,0 Two blanks, a tab, (and) [more]", 100},
                                   {"Cash:10,0 Two blanks, a tab, (and) [more] (index 8)", 200},
                                   {"unknown:10 1 a,b = @ {c} #* é", 400},
                                   {"Expenses:=5", -825},
                                   {"Cash:1000 Bank", 725},
                                   {"Expenses:6000 Rent", -600}};
  for (const std::string& program : LedgerPrograms()) {
    EXPECT_EQ(BalancesFoundBy(program), expected) << program;
  }
}

TEST_F(OtherPrograms, TakeATransactionThatIsOutOfBalanceAndPartsOfCents) {
  company_.Post(SampleEntry{"GJ", "2026-01-06", {{"6000", 1.0025}, {"1000", -1.0025}}});
  company_.Post(SampleEntry{"GJ", "2026-01-06", {{"6000", 5}, {"", 2}, {"1000", -4}}});
  const std::string file =
      company_.Write("company.ledger", company_.Run("export", {"--as", "ledger"}).out);
  for (const std::string& program : LedgerPrograms()) {
    const LedgerBalances balances = BalancesBy(program, file);
    EXPECT_EQ(balances.at("Out of balance"), -300) << program;
    EXPECT_EQ(balances.at("no account"), 200) << program;
    EXPECT_EQ(balances.at("Expenses:6000 Rent"), 600) << program;
  }
}

}  // namespace
}  // namespace larkmoor::test
