// Brings the sales of a web shop into a company: its customers, and every invoice with its rows.
//
//     import_invoices COMPANY CUSTOMERS.csv INVOICES.csv LINES.csv TRACKS.csv
//
// COMPANY is a folder; the company is made where there is none. What is there already stays as it
// is, so that the program can run again: after new sales, or after a failure.
//
// The columns are those of a shop that sells music:
//
//     CUSTOMERS  CustomerId, FirstName, LastName, Company, Address, City, State, Country,
//     PostalCode,
//                Phone, Fax, Email
//     INVOICES   InvoiceId, CustomerId, InvoiceDate, BillingAddress, BillingCity, BillingState,
//                BillingCountry, BillingPostalCode, Total
//     LINES      InvoiceId, TrackId, UnitPrice, Quantity
//     TRACKS     TrackId, Name
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <exception>
#include <filesystem>
#include <iostream>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include <larkmoor/larkmoor.h>

#include "check.h"
#include "csv_reader.h"
#include "posting.h"

namespace {

using example::Check;
using example::CsvRow;
using larkmoor::Status;
using larkmoor::StatusKeyNotFound;
using larkmoor::StatusSuccess;

// --- How the shop's sales lie in the books -------------------------------------------------------

struct Account {
  std::string_view id;
  std::string_view description;
  std::int16_t type;
};

constexpr std::string_view Receivable = "1100";
constexpr std::string_view Sales = "4000";

constexpr Account Accounts[] = {
    {"1000", "Cash", 0},
    {Receivable, "Accounts receivable", 1},
    {"3000", "Paid-in capital", 16},
    {"3100", "Retained earnings", 18},
    {Sales, "Sales of the web shop", 21},
};

constexpr int FirstYear = 2021;
constexpr int LastPeriod = 41;
constexpr int DaysToPay = 14;

// The books of the shop have four periods a year: the first quarter of its first year is period 1.
std::int16_t PeriodOf(larkmoor::Date day) {
  const std::chrono::year_month_day ymd = day.ToYmd();
  const int quarter = (static_cast<int>(static_cast<unsigned>(ymd.month())) - 1) / 3;
  const int period = (static_cast<int>(ymd.year()) - FirstYear) * 4 + quarter + 1;
  if (period < 1 || period > LastPeriod) {
    throw std::runtime_error("The books have no period for " + day.ToText() + ".");
  }
  return static_cast<std::int16_t>(period);
}

// The shop's numbers start at 1. Customers and invoices bear them with a mark: 7 becomes WEB-0007,
// and nothing that is entered by hand clashes with it.
std::string ShopNumber(const CsvRow& row, std::string_view column) {
  std::string number = row.Text(column);
  if (number.size() < 4) number.insert(0, 4 - number.size(), '0');
  return "WEB-" + number;
}

// --- What has been done --------------------------------------------------------------------------

struct Report {
  int customers = 0;
  int invoices = 0;
  int invoicesThere = 0;
  int rows = 0;
  std::int64_t cents = 0;
};

std::ostream& operator<<(std::ostream& out, const Report& report) {
  return out << report.customers << " customers made\n"
             << report.invoices << " invoices posted with " << report.rows << " rows, "
             << example::DollarText(report.cents) << " in all\n"
             << report.invoicesThere << " invoices were there already\n";
}

// Whether a search found what it was for. "Not there" is an answer, anything else a failure.
bool WasFound(Status status, std::string_view what) {
  if (status == StatusKeyNotFound) return false;
  Check(status, what);
  return true;
}

// --- Accounts and customers ----------------------------------------------------------------------

void MakeMissingAccounts() {
  larkmoor::Chart chart;
  Check(chart.OpenFile(), "Opening the accounts");
  for (const Account& account : Accounts) {
    if (WasFound(chart.GetForAccountId(account.id), "Looking for an account")) continue;
    chart.Index(0);  // the file gives the next one
    chart.AccountID(account.id);
    chart.AccountDescription(account.description);
    chart.AccountType(account.type);
    Check(chart.Insert(), "Adding an account");
  }
  Check(chart.CloseFile(), "Closing the accounts");
}

std::string FullName(const CsvRow& row) {
  return row.Text("FirstName") + " " + row.Text("LastName");
}

void FillAddress(larkmoor::Customer& customer, const CsvRow& row) {
  const std::string& company = row.Text("Company");
  customer.BillToName(company.empty() ? FullName(row) : company);
  customer.BillToAddress1(row.Text("Address"));
  customer.BillToCity(row.Text("City"));
  customer.BillToState(row.Text("State"));
  customer.BillToZipcode(row.Text("PostalCode"));
  customer.BillToCountry(row.Text("Country"));
}

void AddCustomer(larkmoor::Customer& customer, const CsvRow& row) {
  customer.CustomerID(ShopNumber(row, "CustomerId"));
  FillAddress(customer, row);
  customer.Contact(FullName(row));
  customer.Telephone1(row.Text("Phone"));
  customer.Fax(row.Text("Fax"));
  customer.Email(row.Text("Email"));
  customer.GLSalesAccount(Sales);
  customer.NetDueDays(DaysToPay);
  Check(customer.Insert(), "Adding a customer");
}

void MakeMissingCustomers(std::span<const CsvRow> rows, Report& report) {
  larkmoor::Customer customer;
  for (const CsvRow& row : rows) {
    // A customer object saves the addresses of one customer after each opening.
    Check(customer.OpenFile(), "Opening the customers");
    if (!WasFound(customer.GetEqual(ShopNumber(row, "CustomerId")), "Looking for a customer")) {
      AddCustomer(customer, row);
      ++report.customers;
    }
    Check(customer.CloseFile(), "Closing the customers");
  }
}

// --- Invoices ------------------------------------------------------------------------------------

// What the rows of the invoices are made from.
struct Lines {
  std::unordered_map<std::string, std::vector<const CsvRow*>> ofInvoice;
  std::unordered_map<std::string, std::string> trackNames;
};

Lines SortLines(std::span<const CsvRow> rows, std::span<const CsvRow> tracks) {
  Lines lines;
  for (const CsvRow& row : rows) lines.ofInvoice[row.Text("InvoiceId")].push_back(&row);
  for (const CsvRow& track : tracks) lines.trackNames[track.Text("TrackId")] = track.Text("Name");
  return lines;
}

class InvoicePosting {
 public:
  explicit InvoicePosting(const Lines& lines) : lines_(lines) {
    Check(journal_.OpenFile(), "Opening the sales journal");
    Check(posted_.OpenFile(), "Opening the sales journal");
    Check(customer_.OpenFile(), "Opening the customers");
  }

  // The search by number goes on to a later invoice where only another journal has the number.
  bool IsPosted(const CsvRow& invoice) {
    const std::string number = ShopNumber(invoice, "InvoiceId");
    return WasFound(posted_.GetForInvoice(number), "Looking for an invoice") &&
           posted_.InvoiceNumber() == number;
  }

  void Post(const CsvRow& invoice, Report& report) {
    FillHeader(invoice);
    FillCustomer(invoice);
    const std::int64_t total = FillRows(invoice);
    journal_.ARAmount(example::ToDollars(total));
    Check(journal_.Insert(), "Posting an invoice");
    ++report.invoices;
    report.rows += journal_.NDistributions();
    report.cents += total;
  }

  void Close() {
    Check(customer_.CloseFile(), "Closing the customers");
    Check(posted_.CloseFile(), "Closing the sales journal");
    Check(journal_.CloseFile(), "Closing the sales journal");
  }

 private:
  // What the customer owes is a debit to receivables.
  void FillHeader(const CsvRow& invoice) {
    const larkmoor::Date day = invoice.Day("InvoiceDate");
    StartTransaction(journal_, numbers_, larkmoor::tovJournalCodeSales, PeriodOf(day), day);
    journal_.InvoiceNumber(ShopNumber(invoice, "InvoiceId"));
    journal_.DateDue(larkmoor::Date(day.Serial() + DaysToPay));
    journal_.MainAccount(Receivable);
    journal_.Posted(true);
  }

  // What is sent goes to where the invoice goes.
  void FillCustomer(const CsvRow& invoice) {
    Check(customer_.GetEqual(ShopNumber(invoice, "CustomerId")), "Finding an invoice's customer");
    journal_.CustomerIndex(customer_.Index());
    journal_.CustomerName(customer_.BillToName());
    journal_.ShipToName(customer_.BillToName());
    journal_.ShipToAddr1(invoice.Text("BillingAddress"));
    journal_.ShipToCity(invoice.Text("BillingCity"));
    journal_.ShipToState(invoice.Text("BillingState"));
    journal_.ShipToZipcode(invoice.Text("BillingPostalCode"));
    journal_.ShipToCountry(invoice.Text("BillingCountry"));
  }

  // Gives the total in cents.
  std::int64_t FillRows(const CsvRow& invoice) {
    const auto found = lines_.ofInvoice.find(invoice.Text("InvoiceId"));
    if (found == lines_.ofInvoice.end()) invoice.Fail("there are no lines for this invoice");
    journal_.NDistributions(static_cast<std::int16_t>(found->second.size()));
    std::int64_t total = 0;
    std::int16_t row = 0;
    for (const CsvRow* line : found->second) total += FillRow(++row, *line);
    if (total != invoice.Cents("Total")) invoice.Fail("the lines do not add up to the total");
    return total;
  }

  // Gives the amount in cents. It is a credit to sales, which is below 0, so that the header and
  // its rows are 0.00 together.
  std::int64_t FillRow(std::int16_t row, const CsvRow& line) {
    const double quantity = line.Number("Quantity");
    const std::int64_t cents = example::ToCents(line.Number("UnitPrice") * quantity);
    journal_.DetailLineNo(row, row);
    journal_.DetailDescription(row, TrackName(line));
    journal_.DetailQuantity(row, quantity);
    journal_.DetailUnitPrice(row, line.Number("UnitPrice"));
    journal_.DetailAmount(row, example::ToDollars(-cents));
    journal_.DetailGLAccount(row, Sales);
    return cents;
  }

  const std::string& TrackName(const CsvRow& line) const {
    const auto found = lines_.trackNames.find(line.Text("TrackId"));
    if (found == lines_.trackNames.end()) line.Fail("there is no track of that number");
    return found->second;
  }

  const Lines& lines_;
  larkmoor::SalesJournal journal_;
  // Searches of their own: a read brings rows, and with them what someone else wrote into them.
  larkmoor::SalesJournal posted_;
  larkmoor::Customer customer_;
  example::TransactionNumbers numbers_;
};

// A commit now and then: fast, and little is to be done again after a failure.
void PostMissingInvoices(std::span<const CsvRow> invoices, const Lines& lines,
                         larkmoor::BulkWrite& bulk, Report& report) {
  constexpr int InvoicesPerCommit = 100;
  InvoicePosting posting(lines);
  for (const CsvRow& invoice : invoices) {
    if (posting.IsPosted(invoice)) {
      ++report.invoicesThere;
      continue;
    }
    posting.Post(invoice, report);
    if (report.invoices % InvoicesPerCommit == 0) Check(bulk.Commit(), "Writing the invoices");
  }
  Check(bulk.Commit(), "Writing the invoices");
  posting.Close();
}

// --- The whole -----------------------------------------------------------------------------------

struct Files {
  std::vector<CsvRow> customers;
  std::vector<CsvRow> invoices;
  std::vector<CsvRow> lines;
  std::vector<CsvRow> tracks;
};

Report Import(const Files& files) {
  Report report;
  larkmoor::BulkWrite bulk;
  MakeMissingAccounts();
  MakeMissingCustomers(files.customers, report);
  Check(bulk.Commit(), "Writing accounts and customers");
  PostMissingInvoices(files.invoices, SortLines(files.lines, files.tracks), bulk, report);
  return report;
}

void ImportInto(const std::filesystem::path& company, const Files& files) {
  if (!std::filesystem::exists(company)) larkmoor::CreateCompany(company, {.Name = "Web shop"});
  larkmoor::Btrieve connection;
  Check(connection.Connect(company.string()).ToInteger(), "Connecting");
  std::cout << Import(files);
  Check(connection.Disconnect().ToInteger(), "Disconnecting");
}

}  // namespace

int main(int argc, char** argv) try {
  if (argc != 6) {
    std::cerr << "usage: import_invoices COMPANY CUSTOMERS.csv INVOICES.csv LINES.csv TRACKS.csv\n";
    return 2;
  }
  using example::ReadCsv;
  ImportInto(argv[1], {.customers = ReadCsv(argv[2]),
                       .invoices = ReadCsv(argv[3]),
                       .lines = ReadCsv(argv[4]),
                       .tracks = ReadCsv(argv[5])});
} catch (const std::exception& error) {
  std::cerr << error.what() << '\n';
  return 1;
}
