// Makes the company of the demonstration and posts its year: Fjord Tools, a wholesaler of tools,
// with its accounts and customers, quotes, orders, invoices and the general journal.
//
//     fjord_tools FOLDER DATA [RELEASE]
//
// FOLDER is made. DATA is a folder with the files that data/README.md describes. RELEASE is that of
// the company's files, such as 18; otherwise 19.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <exception>
#include <filesystem>
#include <iostream>
#include <iterator>
#include <span>
#include <sstream>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include <larkmoor/larkmoor.h>

#include "check.h"
#include "csv_reader.h"
#include "documents.h"
#include "posting.h"

namespace {

using example::Check;
using example::CsvRow;
using example::Document;
using example::GroupBy;
using example::Posted;
using example::ReadCsv;
using example::StartTransaction;
using example::ToCents;
using example::ToDollars;
using example::TransactionNumbers;
using larkmoor::GeneralJournal;
using larkmoor::SalesJournal;
using larkmoor::SalesOrderJournal;

constexpr std::string_view Receivable = "1110";

// --- Accounts and customers ----------------------------------------------------------------------

std::size_t AddAccounts(std::span<const CsvRow> rows) {
  larkmoor::Chart chart;
  Check(chart.OpenFile(), "Opening the accounts");
  for (const CsvRow& row : rows) {
    chart.Index(0);  // the file gives the next one
    chart.AccountID(row.Text("AccountID"));
    chart.AccountDescription(row.Text("AccountDescription"));
    chart.AccountType(row.Integer("AccountType"));
    Check(chart.Insert(), "Adding an account");
  }
  Check(chart.CloseFile(), "Closing the accounts");
  return rows.size();
}

void FillBillTo(larkmoor::Customer& customer, const CsvRow& row) {
  customer.BillToName(row.Text("BillToName"));
  customer.BillToAddress1(row.Text("BillToAddress1"));
  customer.BillToAddress2(row.Text("BillToAddress2"));
  customer.BillToCity(row.Text("BillToCity"));
  customer.BillToState(row.Text("BillToState"));
  customer.BillToZipcode(row.Text("BillToZipcode"));
  customer.BillToCountry(row.Text("BillToCountry"));
  customer.BillToSalesTaxCode(row.Text("BillToSalesTaxCode"));
}

// An address that is empty is not kept.
void FillShipTo(larkmoor::Customer& customer, const CsvRow& row, std::int16_t number) {
  const std::string prefix = "ShipTo" + std::to_string(number);
  customer.ShipToName(number, row.Text(prefix + "Name"));
  customer.ShipToAddress1(number, row.Text(prefix + "Address1"));
  customer.ShipToAddress2(number, row.Text(prefix + "Address2"));
  customer.ShipToCity(number, row.Text(prefix + "City"));
  customer.ShipToState(number, row.Text(prefix + "State"));
  customer.ShipToZipcode(number, row.Text(prefix + "Zipcode"));
  customer.ShipToCountry(number, row.Text(prefix + "Country"));
}

void FillTerms(larkmoor::Customer& customer, const CsvRow& row) {
  customer.DiscountPercent(row.Number("DiscountPercent"));
  customer.DiscountDays(row.Integer("DiscountDays"));
  customer.NetDueDays(row.Integer("NetDueDays"));
  customer.CODTerms(row.Integer("NetDueDays") == 0);
}

// The ID comes first: the addresses belong to the customer of that ID.
void AddCustomer(larkmoor::Customer& customer, const CsvRow& row) {
  customer.CustomerID(row.Text("CustomerID"));
  FillBillTo(customer, row);
  FillShipTo(customer, row, 1);
  FillShipTo(customer, row, 2);
  FillTerms(customer, row);
  customer.Contact(row.Text("Contact"));
  customer.Telephone1(row.Text("Telephone1"));
  customer.Email(row.Text("Email"));
  customer.GLSalesAccount(row.Text("GLSalesAccount"));
  Check(customer.Insert(), "Adding a customer");
}

// A customer object saves the addresses of one customer after each opening.
std::size_t AddCustomers(std::span<const CsvRow> rows) {
  larkmoor::Customer customer;
  for (const CsvRow& row : rows) {
    Check(customer.OpenFile(), "Opening the customers");
    AddCustomer(customer, row);
    Check(customer.CloseFile(), "Closing the customers");
  }
  return rows.size();
}

// --- Quotes, orders, invoices --------------------------------------------------------------------

// Where a document goes to: 0 is the customer's bill-to address, others are its ship-to addresses.
template <typename Journal>
void FillShipTo(Journal& journal, larkmoor::Customer& customer, std::int16_t number) {
  const bool billTo = number == 0;
  journal.ShipToName(billTo ? customer.BillToName() : customer.ShipToName(number));
  journal.ShipToAddr1(billTo ? customer.BillToAddress1() : customer.ShipToAddress1(number));
  journal.ShipToAddr2(billTo ? customer.BillToAddress2() : customer.ShipToAddress2(number));
  journal.ShipToCity(billTo ? customer.BillToCity() : customer.ShipToCity(number));
  journal.ShipToState(billTo ? customer.BillToState() : customer.ShipToState(number));
  journal.ShipToZipcode(billTo ? customer.BillToZipcode() : customer.ShipToZipcode(number));
  journal.ShipToCountry(billTo ? customer.BillToCountry() : customer.ShipToCountry(number));
}

template <typename Journal>
void FillCustomer(Journal& journal, larkmoor::Customer& customer, const CsvRow& document) {
  Check(customer.GetEqual(document.Text("CustomerID")), "Finding the customer of a document");
  journal.CustomerIndex(customer.Index());
  journal.CustomerName(customer.BillToName());
  journal.SalesTaxCode(customer.BillToSalesTaxCode());
  FillShipTo(journal, customer, document.Integer("ShipTo"));
}

// What all documents have in a row. Amounts are credits, below 0.
template <typename Journal>
void FillRow(Journal& journal, std::int16_t number, const CsvRow& row) {
  journal.DetailLineNo(number, number);
  journal.DetailDescription(number, row.Text("Description"));
  journal.DetailQuantity(number, row.Number("Quantity"));
  journal.DetailUnitPrice(number, row.Number("UnitPrice"));
  journal.DetailAmount(number, ToDollars(row.Cents("Amount")));
  journal.DetailGLAccount(number, row.Text("AccountID"));
}

// What the rows come to is a debit to receivables, so that header and rows are 0.00 together. Gives
// it in cents.
template <typename Journal>
std::int64_t FillRows(Journal& journal, Document document) {
  journal.NDistributions(static_cast<std::int16_t>(document.size()));
  std::int64_t total = 0;
  std::int16_t number = 0;
  for (const CsvRow& row : document) {
    FillRow(journal, ++number, row);
    total -= row.Cents("Amount");
  }
  journal.MainAccount(Receivable);
  journal.ARAmount(ToDollars(total));
  return total;
}

void FillQuote(SalesJournal& journal, larkmoor::Customer&, Document document, std::int64_t) {
  journal.QuoteGoodThruDate(document.front().Day("GoodThruDate"));
}

void FillOrder(SalesOrderJournal& journal, larkmoor::Customer&, Document document, std::int64_t) {
  journal.ShipByDate(document.front().Day("ShipByDate"));
  journal.NumSOLines2(journal.NDistributions());
  std::int16_t number = 0;
  bool isOpen = false;
  for (const CsvRow& row : document) {
    ++number;
    journal.DetailSOLine2(number, number);
    journal.DetailShippedQuantity(number, row.Number("QuantityShipped"));
    isOpen = isOpen || row.Number("QuantityShipped") < row.Number("Quantity");
  }
  journal.CloseSalesOrder(!isOpen);
}

std::string TermsText(larkmoor::Customer& customer) {
  if (customer.CODTerms()) return "C.O.D.";
  std::ostringstream text;
  if (customer.DiscountPercent() > 0) {
    text << customer.DiscountPercent() << " % " << customer.DiscountDays() << " days, ";
  }
  text << "net " << customer.NetDueDays() << " days";
  return text.str();
}

void FillInvoice(SalesJournal& journal, larkmoor::Customer& customer, Document document,
                 std::int64_t total) {
  const double day = document.front().Day("Date").Serial();
  journal.SONo(document.front().Text("OrderNumber"));
  journal.Terms(TermsText(customer));
  journal.DateDue(larkmoor::Date(day + customer.NetDueDays()));
  journal.Posted(true);
  if (customer.DiscountPercent() == 0) return;
  journal.DiscountDate(larkmoor::Date(day + customer.DiscountDays()));
  const std::int64_t discount = ToCents(ToDollars(total) * customer.DiscountPercent() / 100);
  journal.DiscountAmount(ToDollars(discount));
}

// --- Posting -------------------------------------------------------------------------------------

// A kind of document: where it lies, the code that its journal has, the company's number of the
// next one, and what only this kind has.
template <typename Journal>
struct Kind {
  std::string_view file;
  std::string_view numberColumn;
  std::int16_t code;
  std::string (Journal::*nextNumber)();
  void (Journal::*setNextNumber)(std::string_view);
  void (*fill)(Journal& journal, larkmoor::Customer& customer, Document document,
               std::int64_t total);
};

constexpr Kind<SalesJournal> Quotes = {.file = "quotes.csv",
                                       .numberColumn = "QuoteNumber",
                                       .code = 12,
                                       .nextNumber = &SalesJournal::NextQuoteNumber,
                                       .setNextNumber = &SalesJournal::NextQuoteNumber,
                                       .fill = FillQuote};
constexpr Kind<SalesOrderJournal> Orders = {.file = "orders.csv",
                                            .numberColumn = "OrderNumber",
                                            .code = larkmoor::tovJournalCodeSalesOrder,
                                            .nextNumber = &SalesOrderJournal::NextSONumber,
                                            .setNextNumber = &SalesOrderJournal::NextSONumber,
                                            .fill = FillOrder};
constexpr Kind<SalesJournal> Invoices = {.file = "invoices.csv",
                                         .numberColumn = "InvoiceNumber",
                                         .code = larkmoor::tovJournalCodeSales,
                                         .nextNumber = &SalesJournal::NextInvoiceNumber,
                                         .setNextNumber = &SalesJournal::NextInvoiceNumber,
                                         .fill = FillInvoice};

// A write that fails tells nothing, and so the number is read again.
template <typename Journal>
void SetNextNumber(Journal& journal, const Kind<Journal>& kind, const std::string& number) {
  (journal.*kind.setNextNumber)(number);
  if ((journal.*kind.nextNumber)() != number) {
    throw std::runtime_error("The number " + number + " cannot be noted as the next one.");
  }
}

// The company's next number, which leaves the one behind it for the next document. The papers have
// gone out with the numbers in the file: both must agree.
template <typename Journal>
std::string TakeNumber(Journal& journal, const Kind<Journal>& kind, const CsvRow& document) {
  const std::string number = (journal.*kind.nextNumber)();
  if (number != document.Text(kind.numberColumn)) {
    document.Fail("the company's next number is " + number);
  }
  SetNextNumber(journal, kind, example::NumberAfter(number));
  return number;
}

// Gives the total in cents.
template <typename Journal>
std::int64_t PostDocument(Journal& journal, const Kind<Journal>& kind, larkmoor::Customer& customer,
                          TransactionNumbers& numbers, Document document) {
  const CsvRow& first = document.front();
  StartTransaction(journal, numbers, kind.code, first.Integer("Period"), first.Day("Date"));
  journal.InvoiceNumber(TakeNumber(journal, kind, first));
  FillCustomer(journal, customer, first);
  const std::int64_t total = FillRows(journal, document);
  kind.fill(journal, customer, document, total);
  Check(journal.Insert(), "Posting a document");
  return total;
}

template <typename Journal>
Posted PostAll(const Kind<Journal>& kind, const std::filesystem::path& data,
               TransactionNumbers& numbers) {
  const std::vector<CsvRow> rows = ReadCsv(data / kind.file);
  const std::vector<Document> documents = GroupBy(rows, kind.numberColumn);
  Journal journal;
  larkmoor::Customer customer;
  Check(journal.OpenFile(), "Opening the journal");
  Check(customer.OpenFile(), "Opening the customers");
  Posted posted = {.documents = std::ssize(documents), .rows = std::ssize(rows)};
  SetNextNumber(journal, kind, rows.at(0).Text(kind.numberColumn));
  for (const Document document : documents) {
    posted.cents += PostDocument(journal, kind, customer, numbers, document);
  }
  Check(customer.CloseFile(), "Closing the customers");
  Check(journal.CloseFile(), "Closing the journal");
  return posted;
}

// --- The general journal -------------------------------------------------------------------------

// Debits are above 0 and credits below, and there is no main account. Gives the debits in cents.
std::int64_t FillEntryRows(GeneralJournal& journal, Document entry) {
  journal.NDistributions(static_cast<std::int16_t>(entry.size()));
  std::int64_t balance = 0;
  std::int64_t debits = 0;
  std::int16_t number = 0;
  for (const CsvRow& row : entry) {
    const std::int64_t cents = row.Cents("Amount");
    ++number;
    journal.DetailLineNo(number, number);
    journal.DetailDescription(number, row.Text("Description"));
    journal.DetailGLAccount(number, row.Text("AccountID"));
    journal.DetailAmount(number, ToDollars(cents));
    balance += cents;
    debits += std::max<std::int64_t>(cents, 0);
  }
  if (balance != 0) entry.front().Fail("the entry does not add up to 0.00");
  return debits;
}

std::int64_t PostEntry(GeneralJournal& journal, TransactionNumbers& numbers, Document entry) {
  const CsvRow& first = entry.front();
  StartTransaction(journal, numbers, larkmoor::tovJournalCodeGeneral, first.Integer("Period"),
                   first.Day("Date"));
  journal.Reference(first.Text("Reference"));
  journal.Description(first.Text("Description"));
  journal.BeginningBalanceFlag(first.Text("Reference").starts_with("OPEN-"));
  journal.Posted(true);
  const std::int64_t debits = FillEntryRows(journal, entry);
  Check(journal.Insert(), "Posting a journal entry");
  return debits;
}

Posted PostEntries(const std::filesystem::path& data, TransactionNumbers& numbers) {
  const std::vector<CsvRow> rows = ReadCsv(data / "journal.csv");
  const std::vector<Document> entries = GroupBy(rows, "Reference");
  GeneralJournal journal;
  Check(journal.OpenFile(), "Opening the general journal");
  Posted posted = {.documents = std::ssize(entries), .rows = std::ssize(rows)};
  for (const Document entry : entries) posted.cents += PostEntry(journal, numbers, entry);
  Check(journal.CloseFile(), "Closing the general journal");
  return posted;
}

// --- The whole -----------------------------------------------------------------------------------

void TellNextNumbers() {
  SalesJournal sales;
  SalesOrderJournal orders;
  std::cout << "Next come quote " << sales.NextQuoteNumber() << ", order " << orders.NextSONumber()
            << " and invoice " << sales.NextInvoiceNumber() << '\n';
}

// All in one commit a file: either the company has its year, or it is empty.
void PostYear(const std::filesystem::path& data) {
  larkmoor::BulkWrite bulk;
  std::cout << "Accounts:  " << AddAccounts(ReadCsv(data / "accounts.csv")) << '\n';
  std::cout << "Customers: " << AddCustomers(ReadCsv(data / "customers.csv")) << '\n';
  TransactionNumbers numbers;
  std::cout << "Quotes:    " << PostAll(Quotes, data, numbers) << '\n';
  std::cout << "Orders:    " << PostAll(Orders, data, numbers) << '\n';
  std::cout << "Invoices:  " << PostAll(Invoices, data, numbers) << '\n';
  std::cout << "Entries:   " << PostEntries(data, numbers) << '\n';
  Check(bulk.Commit(), "Writing the year");
  TellNextNumbers();
}

void MakeCompany(const std::filesystem::path& folder, const std::filesystem::path& data,
                 double release) {
  larkmoor::CreateCompany(folder, {.Release = release, .Name = "Fjord Tools"});
  larkmoor::Btrieve connection;
  Check(connection.Connect(folder.string()).ToInteger(), "Connecting");
  PostYear(data);
  Check(connection.Disconnect().ToInteger(), "Disconnecting");
}

}  // namespace

int main(int argc, char** argv) try {
  if (argc != 3 && argc != 4) {
    std::cerr << "usage: fjord_tools FOLDER DATA [RELEASE]\n";
    return 2;
  }
  MakeCompany(argv[1], argv[2], argc == 4 ? larkmoor::Variant(argv[3]).ToDouble() : 19);
} catch (const std::exception& error) {
  std::cerr << error.what() << '\n';
  return 1;
}
