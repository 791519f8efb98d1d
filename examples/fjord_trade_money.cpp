// What is paid to vendors and received from customers, on bills and invoices that are on file.
#include <stdexcept>

#include <larkmoor/larkmoor.h>

#include "fjord_trade.h"

namespace fjord {
namespace {

using larkmoor::CashDisbursementJournal;
using larkmoor::CashReceiptJournal;
using larkmoor::Customer;
using larkmoor::PurchaseJournal;
using larkmoor::SalesJournal;
using larkmoor::Vendor;

constexpr std::string_view Checking = "1020";

// The search by number goes on to a later document where only another journal has the number.
template <typename Journal>
void Find(Journal& journal, const std::string& number) {
  Check(journal.GetForInvoice(number), "Finding " + number);
  if (journal.InvoiceNumber() != number) throw std::runtime_error(number + " is not on file.");
}

// An invoice is a debit, and what is paid on it above 0 as well. Rows that were paid are credits.
void NotePaid(SalesJournal& invoices, const CsvRow& row) {
  const std::int64_t paid = ToCents(invoices.AmountReceived()) - row.Cents("Amount");
  if (paid > ToCents(invoices.ARAmount())) row.Fail("more is paid than is owed");
  invoices.AmountReceived(ToDollars(paid));
  Check(invoices.Update(), "Noting what was received on an invoice");
}

// A bill is a credit, and what is paid on it below 0 as well.
void NotePaid(PurchaseJournal& bills, const CsvRow& row) {
  const std::int64_t paid = ToCents(bills.AmountPaid()) - row.Cents("Amount");
  if (paid < ToCents(bills.APAmount())) row.Fail("more is paid than is owed");
  bills.AmountPaid(ToDollars(paid));
  Check(bills.Update(), "Noting what was paid on a bill");
}

// A row pays the bill or the invoice of that number; one without a number is on account.
template <typename Journal, typename Documents>
void PayInvoice(Journal& journal, std::int16_t number, Documents& documents, const CsvRow& row) {
  const std::string& invoice = row.Text("InvoicePaid");
  journal.DetailInvoicePaid(number, invoice);
  journal.DetailInvoiceNRecord(number, 0);
  if (invoice.empty()) return;
  Find(documents, invoice);
  journal.DetailInvoiceNRecord(number, documents.NRecord());
  NotePaid(documents, row);
}

// The part of a payment or a receipt that pays bills or invoices.
double PaidOnInvoices(Document document) {
  std::int64_t cents = 0;
  for (const CsvRow& row : document) {
    if (!row.Text("InvoicePaid").empty()) cents += std::abs(row.Cents("Amount"));
  }
  return ToDollars(cents);
}

// --- Payments ------------------------------------------------------------------------------------

// A check goes to the first remit-to address, or to the vendor's own where there is none.
void FillPayee(CashDisbursementJournal& journal, Vendor& vendor) {
  const bool isElsewhere = !vendor.RemitToName(1).empty();
  journal.VendorName(vendor.Name());
  journal.CheckName(isElsewhere ? vendor.RemitToName(1) : vendor.Name());
  journal.CheckAddr1(isElsewhere ? vendor.RemitToAddress1(1) : vendor.Address1());
  journal.CheckAddr2(isElsewhere ? vendor.RemitToAddress2(1) : vendor.Address2());
  journal.CheckCity(isElsewhere ? vendor.RemitToCity(1) : vendor.City());
  journal.CheckState(isElsewhere ? vendor.RemitToState(1) : vendor.State());
  journal.CheckZipcode(isElsewhere ? vendor.RemitToZipcode(1) : vendor.Zipcode());
  journal.CheckCountry(isElsewhere ? vendor.RemitToCountry(1) : vendor.Country());
}

void FillPayment(CashDisbursementJournal& journal, Vendor& vendor, PurchaseJournal& bills,
                 Document payment) {
  const CsvRow& first = payment.front();
  journal.CheckNumber(first.Text("CheckNumber"));
  journal.VendorIndex(IndexOf(vendor, first.Text("VendorID")));
  FillPayee(journal, vendor);
  FillRows(journal, payment, [&](std::int16_t number, const CsvRow& row) {
    journal.DetailDescription(number, row.Text("Description"));
    PayInvoice(journal, number, bills, row);
  });
  journal.TotalPaidOnInvoice(PaidOnInvoices(payment));
  journal.MainAccount(Checking);
  journal.CashAmount(ToDollars(Counterpart(payment)));
}

// --- Receipts ------------------------------------------------------------------------------------

void FillReceipt(CashReceiptJournal& journal, Customer& customer, SalesJournal& invoices,
                 Document receipt) {
  const CsvRow& first = receipt.front();
  journal.ReceiptNum(first.Text("ReceiptNum"));
  journal.Reference(first.Text("Reference"));
  journal.PaymentMethod(first.Text("PaymentMethod"));
  journal.CustomerIndex(IndexOf(customer, first.Text("CustomerID")));
  journal.CustomerName(customer.BillToName());
  FillRows(journal, receipt, [&](std::int16_t number, const CsvRow& row) {
    PayInvoice(journal, number, invoices, row);
  });
  journal.InvoicesPaid(PaidOnInvoices(receipt));
  journal.MainAccount(Checking);
  journal.CashAmount(ToDollars(Counterpart(receipt)));
}

}  // namespace

Posted PostPayments(const Folder& data, TransactionNumbers& numbers) {
  Vendor vendor;
  PurchaseJournal bills;
  Check(vendor.OpenFile(), "Opening the vendors");
  Check(bills.OpenFile(), "Opening the bills");
  return PostDocuments<CashDisbursementJournal>(
      {data / "payments.csv", "CheckNumber", larkmoor::tovJournalCodeCashDisbursement}, numbers,
      [&](CashDisbursementJournal& journal, Document payment) {
        FillPayment(journal, vendor, bills, payment);
      });
}

Posted PostReceipts(const Folder& data, TransactionNumbers& numbers) {
  Customer customer;
  SalesJournal invoices;
  Check(customer.OpenFile(), "Opening the customers");
  Check(invoices.OpenFile(), "Opening the invoices");
  return PostDocuments<CashReceiptJournal>(
      {data / "receipts.csv", "ReceiptNum", larkmoor::tovJournalCodeCashReceipt}, numbers,
      [&](CashReceiptJournal& journal, Document receipt) {
        FillReceipt(journal, customer, invoices, receipt);
      });
}

}  // namespace fjord
