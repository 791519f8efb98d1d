#include <algorithm>
#include <array>

#include <nlohmann/json.hpp>

#include <larkmoor/journal_code.h>

#include "engine/records/address.h"
#include "engine/records/jrnl_hdr.h"
#include "engine/tovrin_file_names.h"
#include "failure.h"
#include "header_walk.h"
#include "journals/header_key.h"
#include "journals/row_file.h"
#include "ledger.h"
#include "masters/address_book.h"
#include "money.h"
#include "reports/customers.h"
#include "reports/report_table.h"
#include "reports/reports.h"
#include "text_tools.h"
#include "value_text.h"

namespace larkmoor::cli {
namespace {

using automation::ValueType;

/// The lines of a postal address as records keep them, the name first.
struct PostalAddress {
  std::string name, address1, address2, city, state, zipcode, country;

  void AppendTo(std::vector<Variant>& row) const {
    for (const auto* line : {&name, &address1, &address2, &city, &state, &zipcode, &country}) {
      row.emplace_back(*line);
    }
  }
  /// The lines as they stand on paper, empty ones left out.
  [[nodiscard]] std::vector<std::string> Lines() const {
    std::string town = city;
    for (const auto& [between, part] : {std::pair(", ", state), std::pair(" ", zipcode)}) {
      if (!town.empty() && !part.empty()) town += between;
      town += part;
    }
    std::vector<std::string> lines = {name, address1, address2, town, country};
    std::erase(lines, "");
    return lines;
  }
};

struct InvoiceRow {
  double quantity;
  std::string description;
  Currency unitPrice;
  std::string account;
  Currency amount;
};

struct Invoice {
  std::string number;
  Date date, due;
  std::string customerID, customerName, customerPO, order, terms;
  PostalAddress billTo, shipTo;
  std::vector<InvoiceRow> rows;
  Currency total, received;

  [[nodiscard]] Currency Open() const { return Difference(total, received); }
};

// --- Reading ---

/// The bill-to address, which data below release 13 does not have.
PostalAddress BillToOf(std::int32_t customer, double release) {
  if (release < AddressBook::FirstRelease) return {};
  RecordFile file(AddressRecord::Describe(), TovrinFileNames::AddressFile());
  OpenForReading(file);
  file.File().KeyLong(customer, 0);
  file.File().KeyLong(0, 4);
  const Status status = file.File().btGetEqual(CustomerAddresses.key);
  if (status == StatusKeyNotFound) return {};
  Require(status, TovrinFileNames::AddressFile());
  const Tovrin2Record& address = file.Record();
  return {
      address.GetText(AddressRecord::Name),         address.GetText(AddressRecord::AddressLine1),
      address.GetText(AddressRecord::AddressLine2), address.GetText(AddressRecord::City),
      address.GetText(AddressRecord::State),        address.GetText(AddressRecord::Zipcode),
      address.GetText(AddressRecord::Country)};
}

PostalAddress ShipToOf(const Tovrin2Record& header) {
  return {
      header.GetText(JrnlHdrRecord::ShipToName),     header.GetText(JrnlHdrRecord::ShipToAddress1),
      header.GetText(JrnlHdrRecord::ShipToAddress2), header.GetText(JrnlHdrRecord::ShipToCity),
      header.GetText(JrnlHdrRecord::ShipToState),    header.GetText(JrnlHdrRecord::ShipToZipcode),
      header.GetText(JrnlHdrRecord::ShipToCountry)};
}

/// The rows with the sign that the customer sees: their postings are credits.
std::vector<InvoiceRow> RowsOf(const Tovrin2Record& header) {
  const std::map<std::int32_t, Account> accounts = ReadAccounts();
  const std::string name = NameOfTransaction(header);
  RowFile file(TovrinFileNames::JrnlRowFile());
  OpenForReading(file);
  const Tovrin2Record& row = file.Record();
  std::vector<InvoiceRow> rows;
  constexpr std::int16_t InOrder = 1;
  const Status status = file.ReadRows(header.GetLong(JrnlHdrRecord::NRecord), InOrder, [&] {
    rows.push_back({row.GetDouble(JrnlRowRecord::Quantity), row.GetText(JrnlRowRecord::Description),
                    MoneyOf(row.GetDouble(JrnlRowRecord::UnitPrice), name),
                    AccountOf(accounts, row.GetLong(JrnlRowRecord::AccountIndex)).id,
                    Difference(Currency(), MoneyOf(row.GetDouble(JrnlRowRecord::Amount), name))});
  });
  if (status != StatusEndOfFile) Require(status, TovrinFileNames::JrnlRowFile());
  return rows;
}

Invoice InvoiceOf(const Tovrin2Record& header, double release) {
  const std::int32_t customer = header.GetLong(JrnlHdrRecord::IDNumber);
  const std::string name = NameOfTransaction(header);
  return {.number = header.GetText(JrnlHdrRecord::Reference),
          .date = Date(header.GetDate(JrnlHdrRecord::TrxDate)),
          .due = Date(header.GetDate(JrnlHdrRecord::DateDue)),
          .customerID = Customers().Of(customer).id,
          .customerName = header.GetText(JrnlHdrRecord::Description),
          .customerPO = header.GetText(JrnlHdrRecord::PurchaseOrderNumber),
          .order = header.GetText(JrnlHdrRecord::OrderNumber),
          .terms = header.GetText(JrnlHdrRecord::Terms),
          .billTo = BillToOf(customer, release),
          .shipTo = ShipToOf(header),
          .rows = RowsOf(header),
          .total = MoneyOf(header.GetDouble(JrnlHdrRecord::Amount), name),
          .received = MoneyOf(header.GetDouble(JrnlHdrRecord::PaidOnInvoice), name)};
}

/// Walks the transactions with a reference, those of other journals among them.
Invoice FindInvoice(const std::string& number) {
  RecordFile headers(JrnlHdrRecord::Describe(), TovrinFileNames::JrnlHdrFile());
  OpenForReading(headers);
  const double release = headers.File().btDataVersion();
  const std::int16_t key = HeaderKey::ByReference(release);
  const Tovrin2Record& header = headers.Record();
  headers.File().KeyTerminated(number, 0);
  for (Status status = headers.File().btGetEqual(key);
       status == StatusSuccess && header.GetText(JrnlHdrRecord::Reference) == number;
       status = headers.File().btGetNext(key)) {
    if (header.GetInteger(JrnlHdrRecord::JournalID) == tovJournalCodeSales) {
      return InvoiceOf(header, release);
    }
  }
  throw Failure("there is no invoice " + Quoted(number));
}

// --- Writing ---

std::vector<Variant> HeaderOf(const Invoice& invoice) {
  std::vector<Variant> row = {invoice.number,     invoice.date,         invoice.due,
                              invoice.customerID, invoice.customerName, invoice.customerPO,
                              invoice.order,      invoice.terms};
  invoice.billTo.AppendTo(row);
  invoice.shipTo.AppendTo(row);
  for (const Currency amount : {invoice.total, invoice.received, invoice.Open()}) {
    row.emplace_back(InCents(amount));
  }
  return row;
}

std::vector<Variant> ValuesOf(const InvoiceRow& row) {
  return {row.quantity, row.description, row.unitPrice, row.account, InCents(row.amount)};
}

const ReportShape& HeaderShape() {
  static const ReportShape Shape(
      {{"InvoiceNumber", ValueType::String},  {"Date", ValueType::Date},
       {"DateDue", ValueType::Date},          {"CustomerID", ValueType::String},
       {"CustomerName", ValueType::String},   {"CustomerPO", ValueType::String},
       {"SONo", ValueType::String},           {"Terms", ValueType::String},
       {"BillToName", ValueType::String},     {"BillToAddress1", ValueType::String},
       {"BillToAddress2", ValueType::String}, {"BillToCity", ValueType::String},
       {"BillToState", ValueType::String},    {"BillToZipcode", ValueType::String},
       {"BillToCountry", ValueType::String},  {"ShipToName", ValueType::String},
       {"ShipToAddress1", ValueType::String}, {"ShipToAddress2", ValueType::String},
       {"ShipToCity", ValueType::String},     {"ShipToState", ValueType::String},
       {"ShipToZipcode", ValueType::String},  {"ShipToCountry", ValueType::String},
       {"Total", ValueType::Currency},        {"Received", ValueType::Currency},
       {"Open", ValueType::Currency}});
  return Shape;
}

const ReportShape& RowsShape() {
  static const ReportShape Shape({{"Quantity", ValueType::Double},
                                  {"Description", ValueType::String},
                                  {"UnitPrice", ValueType::Currency},
                                  {"AccountID", ValueType::String},
                                  {"Amount", ValueType::Currency}});
  return Shape;
}

/// An object with the rows in it.
void WriteJson(const Invoice& invoice, std::ostream& out) {
  nlohmann::ordered_json json = JsonOf(HeaderShape().Columns(), HeaderOf(invoice));
  nlohmann::ordered_json& rows = json["Rows"] = nlohmann::ordered_json::array();
  for (const InvoiceRow& row : invoice.rows) {
    rows.push_back(JsonOf(RowsShape().Columns(), ValuesOf(row)));
  }
  out << JsonText(json, JsonIndent) << '\n';
}

/// A line a row, with the columns of the invoice repeated; an invoice without rows is one line.
void WriteCsv(const Invoice& invoice, std::ostream& out) {
  std::vector<Column> columns = HeaderShape().Columns();
  std::ranges::copy(RowsShape().Columns(), std::back_inserter(columns));
  const auto writer = MakeRowWriter("csv", out, columns);
  const std::vector<Variant> header = HeaderOf(invoice);
  const auto write = [&](const std::vector<Variant>& row) {
    std::vector<Variant> line = header;
    line.insert(line.end(), row.begin(), row.end());
    writer->Write(line);
  };
  for (const InvoiceRow& row : invoice.rows) write(ValuesOf(row));
  if (invoice.rows.empty()) write(std::vector<Variant>(RowsShape().Columns().size()));
  writer->Finish();
}

/// "Due: 2026-02-05", nothing for an empty text.
void WriteLabelled(std::string_view label, const std::string& text, std::ostream& out) {
  if (!text.empty()) out << label << ": " << Printable(text) << '\n';
}

void WriteSideBySide(std::vector<std::string> left, std::vector<std::string> right,
                     std::ostream& out) {
  const std::size_t height = std::max(left.size(), right.size());
  left.resize(height);
  right.resize(height);
  std::size_t width = 0;
  for (std::string& line : left) width = std::max(width, DisplayWidth(line = Printable(line)));
  for (std::size_t i = 0; i < height; ++i) {
    std::string line = left[i];
    if (!right[i].empty()) {
      line += std::string(width - DisplayWidth(left[i]) + 4, ' ') + Printable(right[i]);
    }
    out << line << '\n';
  }
}

/// As it would stand on paper.
void WriteText(const Invoice& invoice, std::ostream& out) {
  WriteLabelled("Invoice", invoice.number, out);
  WriteLabelled("Date", TextOf(invoice.date), out);
  WriteLabelled("Due", TextOf(invoice.due), out);
  WriteLabelled("Customer", invoice.customerID, out);
  WriteLabelled("Name", invoice.customerName, out);
  WriteLabelled("Customer's order", invoice.customerPO, out);
  WriteLabelled("Sales order", invoice.order, out);
  WriteLabelled("Terms", invoice.terms, out);
  out << '\n';
  std::vector<std::string> billTo = {"Bill to"};
  std::vector<std::string> shipTo = {"Ship to"};
  std::ranges::copy(invoice.billTo.Lines(), std::back_inserter(billTo));
  std::ranges::copy(invoice.shipTo.Lines(), std::back_inserter(shipTo));
  WriteSideBySide(std::move(billTo), std::move(shipTo), out);
  out << '\n';
  const auto writer = MakeRowWriter("table", out, RowsShape().Columns());
  for (const InvoiceRow& row : invoice.rows) writer->Write(ValuesOf(row));
  writer->WriteTotals({{}, "Total", {}, {}, InCents(invoice.total)});
  writer->Finish();
  out << '\n';
  WriteLabelled("Received", MoneyText(InCents(invoice.received)), out);
  WriteLabelled("Open", MoneyText(InCents(invoice.Open())), out);
}

}  // namespace

void WriteInvoice(const std::string& number, const std::string& format, std::ostream& out) {
  const Invoice invoice = FindInvoice(number);
  if (format == "json") return WriteJson(invoice, out);
  if (format == "csv") return WriteCsv(invoice, out);
  WriteText(invoice, out);
}

}  // namespace larkmoor::cli
