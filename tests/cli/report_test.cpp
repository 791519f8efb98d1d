#include <string>

#include <gtest/gtest.h>

#include "cli/journal_company.h"
#include "engine/records/jrnl_hdr.h"
#include "engine/records/jrnl_row.h"
#include "support/child_process.h"
#include "support/journals.h"

namespace larkmoor::test {
namespace {

class Report : public testing::Test {
 protected:
  std::string Output(const std::string& report, std::vector<std::string> options = {}) {
    options.insert(options.begin(), report);
    return company_.Output("report", options);
  }
  std::string Csv(const std::string& report, std::vector<std::string> options = {}) {
    options.insert(options.end(), {"--format", "csv"});
    return Output(report, options);
  }
  ProgramResult Run(std::vector<std::string> arguments) {
    return company_.Run("report", std::move(arguments));
  }

  JournalCompany company_;
};

// --- Register ---

class RegisterReport : public Report {
 protected:
  RegisterReport() {
    company_.Post(SampleInvoice{
        .number = "103", .date = "2026-02-01", .customer = 2, .amount = 1000, .period = 2});
    company_.Post(SampleInvoice{.number = "101", .date = "2025-12-30", .amount = 20.1});
    company_.Post(SampleInvoice{.number = "102", .date = "2026-01-15", .amount = -3.25});
  }
};

TEST_F(RegisterReport, GivesInvoicesByDateWithARunningTotal) {
  EXPECT_EQ(Output("register"),
            "Date        InvoiceNumber  CustomerID  CustomerName    Amount  RunningTotal\n"
            "----------  -------------  ----------  -------------  -------  ------------\n"
            "2025-12-30  101            BERG        Berg & Sønner    20.10         20.10\n"
            "2026-01-15  102            BERG        Berg & Sønner    -3.25         16.85\n"
            "2026-02-01  103            DAHL        Dahl           1000.00       1016.85\n");
}

TEST_F(RegisterReport, OfAPeriodOrAYearTotalsThatAlone) {
  EXPECT_EQ(Csv("register", {"--period", "2"}),
            "Date,InvoiceNumber,CustomerID,CustomerName,Amount,RunningTotal\n"
            "2026-02-01,103,DAHL,Dahl,1000.00,1000.00\n");
  EXPECT_EQ(Csv("register", {"--year", "2026"}),
            "Date,InvoiceNumber,CustomerID,CustomerName,Amount,RunningTotal\n"
            "2026-01-15,102,BERG,Berg & Sønner,-3.25,-3.25\n"
            "2026-02-01,103,DAHL,Dahl,1000.00,996.75\n");
  EXPECT_EQ(Csv("register", {"--year", "2026", "--period", "3"}),
            "Date,InvoiceNumber,CustomerID,CustomerName,Amount,RunningTotal\n");
}

TEST_F(RegisterReport, InvoicesOfOneDayStandInTheOrderOfTheirNumbersOfRecord) {
  company_.Post(SampleInvoice{.number = "099", .date = "2026-01-15", .amount = 1});
  const std::string csv = Csv("register", {"--period", "1"});
  EXPECT_LT(csv.find(",102,"), csv.find(",099,"));
}

TEST_F(RegisterReport, HasNoQuotesOrdersOrOtherJournals) {
  const std::string before = Output("register");
  company_.Post(SampleInvoice{.number = "Q", .date = "2026-01-15", .amount = 1, .isQuote = true});
  company_.PostOrder("SO", 5);
  company_.Post(SampleEntry{"GJ", "2026-01-01", {{"1000", 5}, {"6000", -5}}});
  EXPECT_EQ(Output("register"), before);
}

TEST_F(RegisterReport, ACustomerWhoIsGoneHasNoID) {
  ASSERT_EQ(company_.Run("delete", {"Customer", "--where", "CustomerID=DAHL"}).exitCode, 0);
  EXPECT_TRUE(Contains(Csv("register"), "2026-02-01,103,,Dahl,1000.00,"));
}

TEST_F(RegisterReport, JsonHasNumbers) {
  EXPECT_EQ(Output("register", {"--period", "2", "--format", "json"}),
            "[\n{\"Date\":\"2026-02-01\",\"InvoiceNumber\":\"103\",\"CustomerID\":\"DAHL\","
            "\"CustomerName\":\"Dahl\",\"Amount\":1000.0,\"RunningTotal\":1000.0}\n]\n");
}

// --- Invoice ---

class InvoiceReport : public Report {
 protected:
  InvoiceReport() {
    company_.Post(
        SampleInvoice{.number = "A-7",
                      .date = "2026-01-05",
                      .amount = 107.5,
                      .rows = {{"4000", -100, "Axe, large", 2, 50}, {"2000", -7.5, "Tax"}},
                      .due = "2026-02-04",
                      .received = 7.5});
    EXPECT_EQ(
        company_
            .Run("set", {"SalesJournal", "--where", "InvoiceNumber=A-7", "ShipToName=Berg, boats",
                         "ShipToCity=Two Harbors", "ShipToState=MN", "CustomerPO=P 1"})
            .exitCode,
        0);
  }
};

TEST_F(InvoiceReport, StandsAsOnPaper) {
  EXPECT_EQ(Output("invoice", {"A-7"}),
            "Invoice: A-7\n"
            "Date: 2026-01-05\n"
            "Due: 2026-02-04\n"
            "Customer: BERG\n"
            "Name: Berg & Sønner\n"
            "Customer's order: P 1\n"
            "\n"
            "Bill to             Ship to\n"
            "Berg & Sønner       Berg, boats\n"
            "1 Main Street       Two Harbors, MN\n"
            "Duluth, MN 55801\n"
            "\n"
            "Quantity  Description  UnitPrice  AccountID  Amount\n"
            "--------  -----------  ---------  ---------  ------\n"
            "       2  Axe, large       50.00  4000       100.00\n"
            "       0  Tax               0.00  2000         7.50\n"
            "--------  -----------  ---------  ---------  ------\n"
            "          Total                              107.50\n"
            "\n"
            "Received: 7.50\n"
            "Open: 100.00\n");
}

TEST_F(InvoiceReport, CsvHasALineForEachRow) {
  const std::string csv = Csv("invoice", {"A-7"});
  EXPECT_TRUE(csv.starts_with("InvoiceNumber,Date,DateDue,CustomerID,CustomerName,")) << csv;
  EXPECT_TRUE(Contains(csv,
                       "\nA-7,2026-01-05,2026-02-04,BERG,Berg & Sønner,P 1,,,Berg & Sønner,"
                       "1 Main Street,,Duluth,MN,55801,,\"Berg, boats\",,,Two Harbors,MN,,,"
                       "107.50,7.50,100.00,2,\"Axe, large\",50.00,4000,100.00\n"))
      << csv;
  EXPECT_TRUE(csv.ends_with(",107.50,7.50,100.00,0,Tax,0.00,2000,7.50\n")) << csv;
}

TEST_F(InvoiceReport, JsonHasTheRowsInTheInvoice) {
  const std::string json = Output("invoice", {"A-7", "--format", "json"});
  EXPECT_TRUE(Contains(json, "  \"BillToCity\": \"Duluth\",\n")) << json;
  EXPECT_TRUE(Contains(json,
                       "  \"Open\": 100.0,\n"
                       "  \"Rows\": [\n"
                       "    {\n"
                       "      \"Quantity\": 2.0,\n"
                       "      \"Description\": \"Axe, large\",\n"
                       "      \"UnitPrice\": 50.0,\n"
                       "      \"AccountID\": \"4000\",\n"
                       "      \"Amount\": 100.0\n"
                       "    },\n"))
      << json;
}

TEST_F(InvoiceReport, OfAnInvoiceWithoutRowsIsALineWithEmptyRowColumns) {
  company_.Post(SampleInvoice{.number = "none", .date = "2026-01-05"});
  EXPECT_TRUE(Csv("invoice", {"none"}).ends_with(",0.00,0.00,0.00,,,,,\n"));
}

TEST_F(InvoiceReport, PassesOverOtherTransactionsOfThatNumber) {
  company_.PostOrder("A-8", 5);
  company_.Post(SampleInvoice{.number = "A-8", .date = "2026-01-05", .isQuote = true});
  EXPECT_EQ(Run({"invoice", "A-8"}).exitCode, 1);
  company_.Post(SampleInvoice{.number = "A-8", .date = "2026-03-05", .amount = 9});
  EXPECT_TRUE(Contains(Output("invoice", {"A-8"}), "Date: 2026-03-05\n"));
}

TEST_F(InvoiceReport, FailsForANumberThatNoInvoiceHas) {
  const ProgramResult result = Run({"invoice", "A"});
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_EQ(result.err, "larkmoor: there is no invoice \"A\"\n");
  EXPECT_EQ(result.out, "");
}

TEST(InvoiceOfOldData, HasNoBillToAddress) {
  const JournalCompany company("12");
  company.Post(SampleInvoice{.number = "A", .date = "2026-01-05"});
  EXPECT_TRUE(Contains(company.Output("report", {"invoice", "A"}), "\nBill to    Ship to\n\n"));
}

// --- Trial balance ---

class TrialBalance : public Report {};

TEST_F(TrialBalance, GivesEachAccountThatIsPostedToOnItsSide) {
  company_.Post(SampleInvoice{.number = "1",
                              .date = "2026-01-05",
                              .amount = 107.5,
                              .rows = {{"4000", -100}, {"2000", -7.5}}});
  company_.Post(SampleEntry{"GJ", "2026-01-06", {{"6000", 1250}, {"1000", -1250}}});
  EXPECT_EQ(Output("trial-balance"),
            "AccountID  Description  Type                         Debit   Credit\n"
            "---------  -----------  -------------------------  -------  -------\n"
            "1000       Bank         Cash                                1250.00\n"
            "1100       Receivables  Accounts Receivable         107.50\n"
            "2000       Sales tax    Other Current Liabilities              7.50\n"
            "4000       Sales        Income                               100.00\n"
            "6000       Rent         Expenses                   1250.00\n"
            "---------  -----------  -------------------------  -------  -------\n"
            "Total                                              1357.50  1357.50\n");
}

TEST_F(TrialBalance, HasNumbersAndNoTotalForPrograms) {
  company_.Post(SampleEntry{"GJ", "2026-01-06", {{"6000", 12.5}, {"1000", -12.5}}});
  EXPECT_EQ(Csv("trial-balance"),
            "AccountID,Description,Type,Debit,Credit\n"
            "1000,Bank,Cash,0.00,12.50\n"
            "6000,Rent,Expenses,12.50,0.00\n");
  EXPECT_TRUE(Contains(Output("trial-balance", {"--format", "json"}),
                       "\"Type\":\"Cash\",\"Debit\":0.0,\"Credit\":12.5}"));
}

TEST_F(TrialBalance, ShowsAnAccountWhosePostingsEvenOut) {
  company_.Post(
      SampleEntry{"GJ", "2026-01-06", {{"6000", 5}, {"1000", -5}, {"6000", -5}, {"1000", 5}}});
  EXPECT_EQ(Output("trial-balance"),
            "AccountID  Description  Type      Debit  Credit\n"
            "---------  -----------  --------  -----  ------\n"
            "1000       Bank         Cash       0.00\n"
            "6000       Rent         Expenses   0.00\n"
            "---------  -----------  --------  -----  ------\n"
            "Total                              0.00    0.00\n");
}

TEST_F(TrialBalance, OrdersAndQuotesPostNothing) {
  company_.PostOrder("SO", 5);
  company_.Post(SampleInvoice{
      .number = "Q", .date = "2026-01-15", .amount = 1, .rows = {{"4000", -1}}, .isQuote = true});
  EXPECT_EQ(Csv("trial-balance"), "AccountID,Description,Type,Debit,Credit\n");
}

TEST_F(TrialBalance, DoesNotDrift) {
  std::vector<SampleRow> rows(3000, {"4000", -0.1});
  company_.Post(
      SampleInvoice{.number = "1", .date = "2026-01-05", .amount = 300, .rows = std::move(rows)});
  EXPECT_EQ(Csv("trial-balance"),
            "AccountID,Description,Type,Debit,Credit\n"
            "1100,Receivables,Accounts Receivable,300.00,0.00\n"
            "4000,Sales,Income,0.00,300.00\n");
}

TEST_F(TrialBalance, ShowsWhatBelongsToNoAccount) {
  company_.Post(SampleEntry{"GJ", "2026-01-06", {{"6000", 5}, {"", -3}, {"1000", -2}}});
  ASSERT_EQ(company_.Run("delete", {"Chart", "--where", "AccountID=6000"}).exitCode, 0);
  EXPECT_EQ(Csv("trial-balance"),
            "AccountID,Description,Type,Debit,Credit\n"
            "1000,Bank,Cash,0.00,2.00\n"
            ",no account,,0.00,3.00\n"
            ",\"no account on file, index 5\",,5.00,0.00\n");
}

TEST_F(TrialBalance, TellsOfTransactionsThatAreOutOfBalance) {
  company_.Post(SampleEntry{"GJ", "2026-01-06", {{"6000", 5}, {"1000", -5}}});
  const std::int32_t bad =
      company_.Post(SampleEntry{"GJ", "2026-01-07", {{"6000", 5}, {"1000", -4}}});
  const ProgramResult result = Run({"trial-balance", "--format", "csv"});
  EXPECT_EQ(result.exitCode, 0);
  EXPECT_EQ(result.out,
            "AccountID,Description,Type,Debit,Credit\n"
            "1000,Bank,Cash,0.00,9.00\n6000,Rent,Expenses,10.00,0.00\n");
  EXPECT_EQ(result.err,
            "larkmoor: 1 transaction does not add up to 0.00, the first of them that of NRecord " +
                std::to_string(bad) + "\n");
}

TEST_F(TrialBalance, FailsForAnAmountThatIsNoMoney) {
  const JournalFiles files(company_.Folder());
  files.AddTransaction({.nRecord = 9, .journal = 0}, {1e300});
  const ProgramResult result = Run({"trial-balance"});
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_EQ(result.err, "larkmoor: transaction 9: 1E+300 is no amount of money\n");
}

TEST(TrialBalanceOfOldData, PutsTotalsOfHeadersToNoAccount) {
  const JournalCompany company("11");
  company.Post(
      SampleInvoice{.number = "1", .date = "2026-01-05", .amount = 5, .rows = {{"4000", -5}}});
  EXPECT_EQ(company.Output("report", {"trial-balance", "--format", "csv"}),
            "AccountID,Description,Type,Debit,Credit\n"
            "4000,Sales,Income,0.00,5.00\n"
            ",no account,,5.00,0.00\n");
}

// --- Aged receivables ---

class AgedReceivables : public Report {
 protected:
  /// The amounts of the one customer who owes anything, as of 30 June 2026.
  std::string Ages() {
    const std::string csv = Csv("aged-receivables", {"--as-of", "2026-06-30"});
    const std::string titles =
        "CustomerID,CustomerName,NotDue,Days1To30,Days31To60,Days61To90,Over90,Total\n";
    EXPECT_TRUE(csv.starts_with(titles)) << csv;
    const std::string row = csv.substr(titles.size());
    EXPECT_TRUE(row.empty() || row.starts_with("BERG,Berg & Sønner,")) << row;
    return row.empty() ? row : row.substr(std::string("BERG,Berg & Sønner,").size());
  }
  void PostDue(std::string_view due, double amount, std::string_view date = "2026-01-02") {
    company_.Post(SampleInvoice{.number = "1", .date = date, .amount = amount, .due = due});
  }
};

TEST_F(AgedReceivables, AnInvoiceIsDueFromTheDayAfterItsDate) {
  PostDue("2026-07-01", 1);
  PostDue("2026-06-30", 2);
  EXPECT_EQ(Ages(), "3.00,0.00,0.00,0.00,0.00,3.00\n");
}

TEST_F(AgedReceivables, ColumnsEndAfter30And60And90Days) {
  PostDue("2026-06-29", 1);   // 1 day
  PostDue("2026-05-31", 2);   // 30
  PostDue("2026-05-30", 4);   // 31
  PostDue("2026-05-01", 8);   // 60
  PostDue("2026-04-30", 16);  // 61
  PostDue("2026-04-01", 32);  // 90
  PostDue("2026-03-31", 64);  // 91
  PostDue("2025-06-30", 128);
  EXPECT_EQ(Ages(), "0.00,3.00,12.00,48.00,192.00,255.00\n");
}

TEST_F(AgedReceivables, WithoutADueDateTheInvoicesOwnCounts) {
  PostDue("", 5, "2026-06-30");
  PostDue("", 7, "2026-05-15");
  EXPECT_EQ(Ages(), "5.00,0.00,7.00,0.00,0.00,12.00\n");
}

TEST_F(AgedReceivables, CountsWhatHasNotBeenReceived) {
  company_.Post(SampleInvoice{
      .number = "1", .date = "2026-06-01", .amount = 10, .due = "2026-07-01", .received = 9.9});
  company_.Post(SampleInvoice{
      .number = "2", .date = "2026-06-01", .amount = 10, .due = "2026-07-01", .received = 10});
  EXPECT_EQ(Ages(), "0.10,0.00,0.00,0.00,0.00,0.10\n");
}

TEST_F(AgedReceivables, LeavesOutQuotesOrdersAndInvoicesOfLaterDays) {
  PostDue("2026-08-01", 5, "2026-07-01");
  company_.Post(SampleInvoice{.number = "Q", .date = "2026-01-02", .amount = 1, .isQuote = true});
  company_.PostOrder("SO", 5);
  EXPECT_EQ(Ages(), "");
  PostDue("2026-08-01", 5, "2026-06-30");
  EXPECT_EQ(Ages(), "5.00,0.00,0.00,0.00,0.00,5.00\n");
}

TEST_F(AgedReceivables, HasARowForEachCustomerAndTotals) {
  company_.Post(SampleInvoice{
      .number = "1", .date = "2026-06-01", .customer = 2, .amount = 10, .due = "2026-07-01"});
  company_.Post(SampleInvoice{
      .number = "2", .date = "2026-06-01", .customer = 1, .amount = -2.5, .due = "2026-06-15"});
  EXPECT_EQ(
      Output("aged-receivables", {"--as-of", "2026-06-30"}),
      "CustomerID  CustomerName   NotDue  Days1To30  Days31To60  Days61To90  Over90  Total\n"
      "----------  -------------  ------  ---------  ----------  ----------  ------  -----\n"
      "BERG        Berg & Sønner    0.00      -2.50        0.00        0.00    0.00  -2.50\n"
      "DAHL        Dahl            10.00       0.00        0.00        0.00    0.00  10.00\n"
      "----------  -------------  ------  ---------  ----------  ----------  ------  -----\n"
      "Total                       10.00      -2.50        0.00        0.00    0.00   7.50\n");
}

TEST_F(AgedReceivables, IsOfTodayWithoutADate) {
  PostDue("2026-07-01", 1, "1999-01-01");
  const ProgramResult result = Run({"aged-receivables", "--format", "csv"});
  EXPECT_EQ(result.exitCode, 0);
  EXPECT_TRUE(Contains(result.out, "BERG,"));
}

TEST_F(AgedReceivables, AsOfThatIsNoDateIsWrongUsage) {
  const ProgramResult result = Run({"aged-receivables", "--as-of", "31.6.2026"});
  EXPECT_EQ(result.exitCode, 2);
  EXPECT_TRUE(Contains(result.err, "--as-of: \"31.6.2026\" is no date")) << result.err;
}

// --- All of them ---

TEST_F(Report, WithoutAKnownReportIsWrongUsage) {
  EXPECT_EQ(Run({}).exitCode, 2);
  EXPECT_EQ(Run({"balance-sheet"}).exitCode, 2);
  EXPECT_EQ(Run({"invoice"}).exitCode, 2);
  EXPECT_EQ(Run({"register", "--format", "text"}).exitCode, 2);
}

TEST_F(Report, OfAFolderThatIsNoCompanyFails) {
  const ProgramResult result = Larkmoor({"report", company_.Beside("nowhere"), "register"});
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_TRUE(Contains(result.err, "nowhere: Btrieve error ")) << result.err;
}

TEST_F(Report, ShowsItsProgressOnATerminal) {
  company_.Post(SampleInvoice{.number = "1", .date = "2026-01-05"});
  for (const char* report : {"register", "trial-balance", "aged-receivables"}) {
    const ProgramResult result =
        RunProgramOnTerminal({LARKMOOR_CLI, "report", company_.Folder(), report});
    EXPECT_TRUE(Contains(result.err, "reading 100 %")) << report;
    EXPECT_TRUE(result.err.ends_with("\r\x1b[K")) << report;
  }
}

TEST_F(Report, ReadsACompanyThatCannotBeWritten) {
  if (!CanMount()) GTEST_SKIP() << "skipped: no mounts for tests here";
  company_.Post(
      SampleInvoice{.number = "1", .date = "2026-01-05", .amount = 5, .rows = {{"4000", -5}}});
  RunInChild([&] {
    MountReadOnly(company_.Folder());
    for (const std::vector<std::string>& arguments : {std::vector<std::string>{"register"},
                                                      {"invoice", "1"},
                                                      {"trial-balance"},
                                                      {"aged-receivables"}}) {
      const ProgramResult result = Run(arguments);
      EXPECT_EQ(result.exitCode, 0) << result.err;
      EXPECT_TRUE(Contains(result.out, "5.00")) << arguments.front();
    }
    EXPECT_TRUE(Contains(company_.Output("export", {"--as", "ledger"}), " 5.00\n"));
  });
}

}  // namespace
}  // namespace larkmoor::test
