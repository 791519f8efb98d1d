// The example that brings a web shop's sales into a company, as a program of its own: on a few
// lines written here, and on five years of sales that are kept beside the checkout where there is a
// copy. What they should come to is added up from the same files by sqlite3.
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include <larkmoor/date.h>
#include <larkmoor/journal_code.h>
#include <larkmoor/journals/sales_journal.h>
#include <larkmoor/masters/chart.h>
#include <larkmoor/masters/customer.h>

#include "examples/example_programs.h"
#include "support/company.h"
#include "support/record_files.h"
#include "support/run_program.h"

namespace larkmoor::test {
namespace {

/// The four files that the program reads.
struct ShopFiles {
  std::filesystem::path customers;
  std::filesystem::path invoices;
  std::filesystem::path lines;
  std::filesystem::path tracks;
};

ShopFiles ShopFilesIn(const std::filesystem::path& folder) {
  return {folder / "Customer.csv", folder / "Invoice.csv", folder / "InvoiceLine.csv",
          folder / "Track.csv"};
}

/// A shop with two customers, whose names have a comma and quotes, and two invoices of three rows.
class SmallShop {
 public:
  SmallShop() {
    WriteFile(Files().customers,
              "CustomerId,FirstName,LastName,Company,Address,City,State,Country,PostalCode,Phone,"
              "Fax,Email\r\n"
              "1,Åse,Lindqvist,,\"Sjøgata 2, loft\",Tromsø,Troms,Norway,9008,1,2,a@example\r\n"
              "12,Jo,Ek,\"The \"\"Ek\"\" Shop\",Quay 1,Oslo,,Norway,0150,3,4,j@example\r\n");
    WriteInvoices("2.98");
    WriteFile(Files().lines,
              "InvoiceLineId,InvoiceId,TrackId,UnitPrice,Quantity\n"
              "1,1,7,0.99,2\n"
              "2,2,8,1.99,1\n"
              "3,2,7,0.99,1\n");
    WriteFile(Files().tracks, "TrackId,Name\n7,\"Fjord, in two\nlines\"\n8,Gull\n");
  }

  /// The invoices, of which the second has that total.
  void WriteInvoices(std::string_view total, std::string_view more = {}) const {
    WriteFile(Files().invoices,
              "InvoiceId,CustomerId,InvoiceDate,BillingAddress,BillingCity,BillingState,"
              "BillingCountry,BillingPostalCode,Total\n"
              "1,1,2021-01-05,Sjøgata 2,Tromsø,Troms,Norway,9008,1.98\n"
              "2,12,2022-12-31,Quay 1,Oslo,,Norway,0150," +
                  std::string(total) + "\n" + std::string(more));
  }

  [[nodiscard]] ShopFiles Files() const { return ShopFilesIn(folder_.Path()); }

 private:
  TempFolder folder_;
};

/// A company that the program fills.
class Importing {
 public:
  explicit Importing(const ShopFiles& files)
      : arguments_{files.customers, files.invoices, files.lines, files.tracks} {}

  [[nodiscard]] ProgramResult Run() const {
    return company_.Run(LARKMOOR_IMPORT_INVOICES, arguments_);
  }
  /// Runs it where it has to succeed, and connects to the company. Gives its output.
  std::string Output() const { return company_.Output(LARKMOOR_IMPORT_INVOICES, arguments_); }

 private:
  ExampleCompany company_;
  std::vector<std::string> arguments_;
};

// --- What is in the company ----------------------------------------------------------------------

struct Posted {
  std::int64_t total = 0;
  int rows = 0;
  std::int64_t sumOfRows = 0;

  bool operator==(const Posted&) const = default;
};

std::ostream& operator<<(std::ostream& out, const Posted& posted) {
  return out << posted.total << " in " << posted.rows << " rows of " << posted.sumOfRows;
}

/// All invoices by number, read from the journal; and what they add up to on each account.
struct Books {
  std::map<std::string, Posted> invoices;
  Balances balances;
};

Books ReadBooks() {
  Books books;
  SalesJournal journal;
  EXPECT_EQ(journal.OpenFile(), StatusSuccess);
  Status status = journal.ReadFirst(0);
  for (; status == StatusSuccess; status = journal.ReadNext()) {
    EXPECT_FALSE(books.invoices.contains(journal.InvoiceNumber())) << journal.InvoiceNumber();
    Posted& posted = books.invoices[journal.InvoiceNumber()];
    posted.total = ToCents(journal.ARAmount());
    posted.rows = journal.NDistributions();
    books.balances[journal.MainAccount()] += posted.total;
    for (std::int16_t row = 1; row <= posted.rows; ++row) {
      const std::int64_t cents = ToCents(journal.DetailAmount(row));
      posted.sumOfRows += cents;
      books.balances[journal.DetailGLAccount(row)] += cents;
    }
  }
  EXPECT_EQ(status, StatusEndOfFile);
  return books;
}

// --- What the files come to ----------------------------------------------------------------------

ShopFiles Chinook() {
  return ShopFilesIn(std::filesystem::path(LARKMOOR_SOURCE_DIR) / "../shared/data/chinook");
}

/// What sqlite3 says of the shop's customers, invoices and lines.
std::vector<std::vector<std::string>> AskOfChinook(const std::string& query) {
  return AskSqlite({{"Customer", Chinook().customers},
                    {"Invoice", Chinook().invoices},
                    {"Line", Chinook().lines}},
                   query);
}

/// A shop that has sold music for five years: 412 invoices with 2,240 rows.
class ChinookShop : public testing::Test {
 protected:
  void SetUp() override {
    if (!std::filesystem::exists(Chinook().invoices)) {
      GTEST_SKIP() << "skipped: no chinook data beside the checkout";
    }
    SKIP_WITHOUT_SQLITE();
  }

  void Import() const {
    EXPECT_EQ(importing.Output(),
              "59 customers made\n"
              "412 invoices posted with 2240 rows, 2328.60 in all\n"
              "0 invoices were there already\n");
  }

  const Importing importing{Chinook()};
};

// --- A small shop --------------------------------------------------------------------------------

TEST(ImportInvoices, TellsWhatItDid) {
  const SmallShop shop;
  const Importing importing(shop.Files());
  EXPECT_EQ(importing.Output(),
            "2 customers made\n"
            "2 invoices posted with 3 rows, 4.96 in all\n"
            "0 invoices were there already\n");
}

TEST(ImportInvoices, PostsAnInvoiceOnReceivablesWithARowOnSalesForEachLine) {
  const SmallShop shop;
  const Importing importing(shop.Files());
  importing.Output();

  SalesJournal journal;
  ASSERT_EQ(journal.OpenFile(), StatusSuccess);
  ASSERT_EQ(journal.GetForInvoice("WEB-0002"), StatusSuccess);
  EXPECT_EQ(journal.JournalID(), tovJournalCodeSales);
  EXPECT_EQ(journal.TrxDate(), Date::FromYmd(2022, 12, 31));
  EXPECT_EQ(journal.DateDue(), Date::FromYmd(2023, 1, 14));
  EXPECT_EQ(journal.Period(), 8) << "the eighth quarter of the books";
  EXPECT_EQ(journal.CustomerName(), "The \"Ek\" Shop");
  EXPECT_EQ(journal.ShipToAddr1(), "Quay 1");
  EXPECT_EQ(journal.MainAccount(), "1100");
  EXPECT_EQ(journal.ARAmount(), 2.98);
  EXPECT_TRUE(journal.Posted());

  ASSERT_EQ(journal.NDistributions(), 2);
  EXPECT_EQ(journal.DetailDescription(1), "Gull");
  EXPECT_EQ(journal.DetailDescription(2), "Fjord, in two\nlines");
  EXPECT_EQ(journal.DetailQuantity(2), 1);
  EXPECT_EQ(journal.DetailUnitPrice(2), 0.99);
  EXPECT_EQ(journal.DetailAmount(2), -0.99);
  EXPECT_EQ(journal.DetailGLAccount(2), "4000");
}

TEST(ImportInvoices, GivesEachCustomerItsOwnAddress) {
  const SmallShop shop;
  const Importing importing(shop.Files());
  importing.Output();

  Customer customer;
  ASSERT_EQ(customer.OpenFile(), StatusSuccess);
  ASSERT_EQ(customer.GetEqual("WEB-0001"), StatusSuccess);
  EXPECT_EQ(customer.BillToName(), "Åse Lindqvist");
  EXPECT_EQ(customer.BillToAddress1(), "Sjøgata 2, loft");
  EXPECT_EQ(customer.GLSalesAccount(), "4000");
  ASSERT_EQ(customer.GetEqual("WEB-0012"), StatusSuccess);
  EXPECT_EQ(customer.BillToName(), "The \"Ek\" Shop");
  EXPECT_EQ(customer.Contact(), "Jo Ek");
  EXPECT_EQ(customer.BillToCity(), "Oslo");
}

TEST(ImportInvoices, AgainPostsOnlyWhatIsNew) {
  const SmallShop shop;
  const Importing importing(shop.Files());
  importing.Output();
  EXPECT_EQ(importing.Output(),
            "0 customers made\n"
            "0 invoices posted with 0 rows, 0.00 in all\n"
            "2 invoices were there already\n");

  shop.WriteInvoices("2.98", "3,1,2023-01-01,Sjøgata 2,Tromsø,Troms,Norway,9008,5.97\n");
  std::ofstream(shop.Files().lines, std::ios::app) << "4,3,8,1.99,3\n";
  EXPECT_EQ(importing.Output(),
            "0 customers made\n"
            "1 invoices posted with 1 rows, 5.97 in all\n"
            "2 invoices were there already\n");
  EXPECT_EQ(ReadBooks().invoices, (std::map<std::string, Posted>{{"WEB-0001", {198, 1, -198}},
                                                                 {"WEB-0002", {298, 2, -298}},
                                                                 {"WEB-0003", {597, 1, -597}}}));
}

TEST(ImportInvoices, ATotalThatTheLinesDoNotComeToEndsItBeforeAnythingIsPosted) {
  const SmallShop shop;
  shop.WriteInvoices("2.99");
  const Importing importing(shop.Files());
  const ProgramResult result = importing.Run();
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_EQ(result.err,
            shop.Files().invoices.string() + ":3: the lines do not add up to the total\n");

  shop.WriteInvoices("2.98");
  EXPECT_EQ(importing.Output(),
            "0 customers made\n"
            "2 invoices posted with 3 rows, 4.96 in all\n"
            "0 invoices were there already\n");
}

TEST(ImportInvoices, AFieldThatIsNoNumberIsToldWithItsPlace) {
  const SmallShop shop;
  shop.WriteInvoices("free");
  const ProgramResult result = Importing(shop.Files()).Run();
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_EQ(result.err,
            shop.Files().invoices.string() + ":3: column Total: \"free\" is not a number\n");
}

// --- The large shop ------------------------------------------------------------------------------

TEST_F(ChinookShop, EveryInvoiceIsTheSumOfItsLines) {
  Import();
  const auto answer = AskOfChinook(
      "select printf('WEB-%04d', i.InvoiceId), cast(round(i.Total * 100) as integer),"
      "  count(*), -sum(cast(round(l.UnitPrice * 100) as integer) * l.Quantity) "
      "from Invoice i join Line l on l.InvoiceId = i.InvoiceId group by i.InvoiceId");
  std::map<std::string, Posted> expected;
  for (const auto& line : answer) {
    expected[line.at(0)] = {std::stoll(line.at(1)), std::stoi(line.at(2)), std::stoll(line.at(3))};
  }
  EXPECT_EQ(expected.size(), 412U);
  EXPECT_EQ(ReadBooks().invoices, expected);
}

TEST_F(ChinookShop, TheTrialBalanceIsTheSumOfAllLines) {
  Import();
  const auto answer = AskOfChinook(
      "select sum(cast(round(UnitPrice * 100) as integer) * Quantity), count(*) "
      "from Line");
  const std::int64_t sum = std::stoll(answer.at(0).at(0));
  EXPECT_EQ(sum, 232860);
  EXPECT_EQ(ReadBooks().balances, (Balances{{"1100", sum}, {"4000", -sum}}));
}

TEST_F(ChinookShop, EveryCustomerOwesTheSumOfItsInvoices) {
  Import();
  const auto answer = AskOfChinook(
      "select printf('WEB-%04d', c.CustomerId), replace(case c.Company when '' then"
      "  c.FirstName || ' ' || c.LastName else c.Company end, 'ł', '?'), c.City, c.PostalCode,"
      "  sum(cast(round(i.Total * 100) as integer)) "
      "from Customer c join Invoice i on i.CustomerId = c.CustomerId group by c.CustomerId");
  EXPECT_EQ(answer.size(), 59U);
  Customer customer;
  SalesJournal journal;
  ASSERT_EQ(customer.OpenFile(), StatusSuccess);
  ASSERT_EQ(journal.OpenFile(), StatusSuccess);
  for (const auto& line : answer) {
    ASSERT_EQ(customer.GetEqual(line.at(0)), StatusSuccess) << line.at(0);
    EXPECT_EQ(customer.BillToName(), line.at(1));
    EXPECT_EQ(customer.BillToCity(), line.at(2));
    EXPECT_EQ(customer.BillToZipcode(), line.at(3));
    std::int64_t owed = 0;
    Status status = journal.ReadFirstForCustomer(customer.Index());
    for (; status == StatusSuccess && journal.CustomerIndex() == customer.Index();
         status = journal.ReadNextByCustomer()) {
      owed += ToCents(journal.ARAmount());
    }
    EXPECT_EQ(owed, std::stoll(line.at(4))) << line.at(0);
  }
}

// `MaxTrxNumberL` alone would give most transactions of a period the same number.
TEST_F(ChinookShop, InvoicesOfAPeriodAreNumberedFrom1) {
  Import();
  std::map<std::int16_t, std::int32_t> last;
  SalesJournal journal;
  ASSERT_EQ(journal.OpenFile(), StatusSuccess);
  Status status = journal.ReadFirst(0);
  for (; status == StatusSuccess; status = journal.ReadNext()) {
    EXPECT_EQ(journal.TrxNumberL(), ++last[journal.Period()]) << journal.InvoiceNumber();
  }
  EXPECT_EQ(status, StatusEndOfFile);
  EXPECT_EQ(last.size(), 20U) << "four periods a year";
}

TEST_F(ChinookShop, ASecondRunPostsNothingTwice) {
  Import();
  const Books before = ReadBooks();
  EXPECT_EQ(importing.Output(),
            "0 customers made\n"
            "0 invoices posted with 0 rows, 0.00 in all\n"
            "412 invoices were there already\n");
  const Books after = ReadBooks();
  EXPECT_EQ(after.invoices, before.invoices);
  EXPECT_EQ(after.balances, before.balances);
}

// It writes a hundred invoices at a time; what was gathered when it fails is dropped.
TEST_F(ChinookShop, ARunThatEndedInTheMiddleIsTakenUpByTheNext) {
  const TempFolder folder;
  ShopFiles files = Chinook();
  std::string invoices = ReadFile(files.invoices);
  files.invoices = folder.Path() / "Invoice.csv";
  const std::size_t place = invoices.find("\n250,");
  ASSERT_NE(place, std::string::npos);
  WriteFile(files.invoices, invoices.replace(invoices.find('\n', place + 1), 1, "9\n"));
  const Importing resuming(files);
  EXPECT_EQ(resuming.Run().exitCode, 1);

  std::filesystem::copy_file(Chinook().invoices, files.invoices,
                             std::filesystem::copy_options::overwrite_existing);
  const std::string told = resuming.Output();
  EXPECT_TRUE(told.starts_with("0 customers made\n212 invoices posted ")) << told;
  EXPECT_TRUE(told.ends_with("200 invoices were there already\n")) << told;
  const Books resumed = ReadBooks();
  Import();
  const Books atOnce = ReadBooks();
  EXPECT_EQ(resumed.invoices, atOnce.invoices);
  EXPECT_EQ(resumed.balances, atOnce.balances);
}

}  // namespace
}  // namespace larkmoor::test
