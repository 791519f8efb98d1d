#include "jobs/larkmoor_journal.h"

#include <cstddef>
#include <cstdint>
#include <string_view>

#include <larkmoor/bulk_write.h>
#include <larkmoor/masters/chart.h>
#include <larkmoor/masters/employee.h>

namespace larkmoor::bench {
namespace {

std::string_view AccountID(std::int32_t index) {
  return Accounts[static_cast<std::size_t>(index - 1)];
}

void AddAccounts() {
  Chart chart;
  Check(chart.OpenFile() == StatusSuccess, "chart");
  std::int32_t index = 0;
  for (const std::string_view id : Accounts) {
    chart.Index(++index);
    chart.AccountID(id);
    Check(chart.Insert() == StatusSuccess, "account");
  }
}

void AddEmployees() {
  BulkWrite bulk;
  Employee employee;
  Check(employee.OpenFile() == StatusSuccess, "employees");
  for (std::int32_t index = 1; index <= Employees; ++index) {
    employee.Index(index);
    employee.EmployeeID(EmployeeID(index));
    Check(employee.Insert() == StatusSuccess, "employee");
  }
  Check(bulk.Commit() == StatusSuccess, "commit");
}

// What the journals have under names of their own.

void SetParty(SalesJournal& journal, const Transaction& sale) {
  journal.CustomerIndex(sale.party);
  journal.CustomerName(sale.partyName);
  journal.CustomerPO(sale.purchaseOrder);
  journal.SalesTaxCode(sale.taxCode);
  journal.ARAmount(sale.amount);
}

void SetParty(PurchaseJournal& journal, const Transaction& bill) {
  journal.VendorIndex(bill.party);
  journal.VendorName(bill.partyName);
  journal.PONumber(bill.purchaseOrder);
  journal.APAmount(bill.amount);
}

void SetRowParty(SalesJournal& journal, std::int16_t row, const Line& line, std::int32_t customer) {
  journal.DetailCustomerIndex(row, customer);
  journal.DetailTaxType(row, line.taxType);
}

void SetRowParty(PurchaseJournal& journal, std::int16_t row, const Line&, std::int32_t vendor) {
  journal.DetailVendorIndex(row, vendor);
}

double AmountOf(SalesJournal& journal) { return journal.ARAmount(); }
double AmountOf(PurchaseJournal& journal) { return journal.APAmount(); }

// What sales and purchases share, and how paychecks have it.

template <typename Journal>
void SetHeader(Journal& journal, const Transaction& transaction) {
  SetParty(journal, transaction);
  journal.InvoiceNumber(transaction.reference);
  journal.ShipToName(transaction.shipName);
  journal.ShipToAddr1(transaction.street);
  journal.ShipToCity(transaction.city);
  journal.ShipToState(transaction.state);
  journal.ShipToZipcode(transaction.zipcode);
  journal.ShipVia(transaction.shipMethod);
  journal.Terms(transaction.terms);
  journal.DateDue(Date(transaction.dateDue));
}

void SetHeader(PayrollJournal& journal, const Transaction& check) {
  journal.EmployeeID(EmployeeID(check.party));
  journal.EmployeeName(check.partyName);
  journal.CheckNumber(check.reference);
  journal.PayPeriodEnd(Date(check.periodEnd));
  journal.CashAmount(check.amount);
}

template <typename Journal>
void SetRow(Journal& journal, std::int16_t row, const Line& line, std::int32_t party) {
  journal.DetailLineNo(row, row);
  journal.DetailDescription(row, line.description);
  journal.DetailGLAccount(row, AccountID(line.account));
  journal.DetailItemIndex(row, line.item);
  journal.DetailQuantity(row, line.quantity);
  journal.DetailUnitPrice(row, line.unitPrice);
  journal.DetailStockingQuantity(row, line.quantity);
  journal.DetailStockingUnitPrice(row, line.unitPrice);
  journal.DetailAmount(row, line.amount);
  SetRowParty(journal, row, line, party);
}

void SetRow(PayrollJournal& journal, std::int16_t row, const Line& line, std::int32_t) {
  journal.PayLineNo(row, row);
  journal.PayDescription(row, line.description);
  journal.PayAccount(row, AccountID(line.account));
  journal.PayNField(row, static_cast<std::int16_t>(line.item));
  journal.PayQuantity(row, line.quantity);
  journal.PayAmount(row, line.amount);
}

template <typename Journal>
void AddTo(Totals& totals, Journal& journal) {
  totals.AddHeader(journal.InvoiceNumber(), journal.TrxDate().ToDouble(), AmountOf(journal));
  const std::int16_t rows = journal.NDistributions();
  for (std::int16_t row = 1; row <= rows; ++row) {
    totals.AddRow(journal.DetailDescription(row), journal.DetailQuantity(row),
                  journal.DetailAmount(row));
  }
}

void AddTo(Totals& totals, PayrollJournal& journal) {
  totals.AddHeader(journal.CheckNumber(), journal.TrxDate().ToDouble(), journal.CashAmount());
  const std::int16_t rows = journal.NDistributions();
  for (std::int16_t row = 1; row <= rows; ++row) {
    totals.AddRow(journal.PayDescription(row), journal.PayQuantity(row), journal.PayAmount(row));
  }
}

template <typename Journal>
Status Seek(Journal& journal, const Wanted& wanted) {
  return journal.GetForInvoice(wanted.reference);
}

Status Seek(PayrollJournal& journal, const Wanted& wanted) {
  return journal.GetEqual(wanted.number);
}

}  // namespace

template <typename Book>
LarkmoorJournal<Book>::LarkmoorJournal(const std::filesystem::path& place) : company_(place) {
  company_.Connect();
  AddAccounts();
  AddEmployees();
  Check(journal_.OpenFile() == StatusSuccess, "open");
}

template <typename Book>
Totals LarkmoorJournal<Book>::Walk() {
  Totals totals;
  Status status = journal_.ReadFirst(0);
  for (; status == StatusSuccess; status = journal_.ReadNext()) AddTo(totals, journal_);
  Check(status == StatusEndOfFile, "walk");
  return totals;
}

template <typename Book>
Totals LarkmoorJournal<Book>::Find(const Wanted& wanted) {
  Totals totals;
  Check(Seek(journal_, wanted) == StatusSuccess, "find");
  AddTo(totals, journal_);
  return totals;
}

template <typename Book>
void LarkmoorJournal<Book>::Insert(const Transaction& transaction) {
  journal_.ClearRecord();
  journal_.NRecord(transaction.number);
  journal_.TrxNumberL(transaction.number);
  journal_.Period(transaction.period);
  journal_.JournalID(Book::Code);
  journal_.TrxDate(Date(transaction.date));
  journal_.MainAccount(AccountID(transaction.mainAccount));
  journal_.Posted(true);
  SetHeader(journal_, transaction);
  journal_.NDistributions(static_cast<std::int16_t>(transaction.lines.size()));
  std::int16_t row = 0;
  for (const Line& line : transaction.lines) SetRow(journal_, ++row, line, transaction.party);
  Check(journal_.Insert() == StatusSuccess, "insert");
}

template <typename Book>
void LarkmoorJournal<Book>::Load(std::span<const Transaction> transactions) {
  BulkWrite bulk;
  for (const Transaction& each : transactions) Insert(each);
  Check(bulk.Commit() == StatusSuccess, "commit");
}

template <typename Book>
std::string LarkmoorJournal<Book>::ExportTo(const std::filesystem::path& file) const {
  return LARKMOOR_CLI " export " + company_.Path().string() +
         " SalesJournal --fields InvoiceNumber,TrxDate,CustomerName,ARAmount,DetailDescription,"
         "DetailQuantity,DetailUnitPrice,DetailAmount --output " +
         file.string();
}

template class LarkmoorJournal<Sales>;
template class LarkmoorJournal<Purchases>;
template class LarkmoorJournal<Paychecks>;

}  // namespace larkmoor::bench
