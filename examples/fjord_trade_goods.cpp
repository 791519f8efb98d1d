// What comes into stock and leaves it: purchases, adjustments and assemblies; and the invoices that
// are kept as patterns.
#include <larkmoor/larkmoor.h>

#include "fjord_trade.h"

namespace fjord {
namespace {

using larkmoor::AssemblyAdjustmentJournal;
using larkmoor::InventoryAdjustmentJournal;
using larkmoor::LineItem;
using larkmoor::MemorizedTransactions;
using larkmoor::PurchaseJournal;
using larkmoor::Vendor;

void FillVendor(PurchaseJournal& journal, Vendor& vendor, const CsvRow& bill) {
  journal.VendorIndex(IndexOf(vendor, bill.Text("VendorID")));
  journal.VendorName(vendor.Name());
  journal.Terms("net " + std::to_string(vendor.NetDueDays()) + " days");
  journal.DateDue(larkmoor::Date(bill.Day("Date").Serial() + vendor.NetDueDays()));
}

// The goods are debits to stock, and what is owed for them a credit to payables.
void FillPurchase(PurchaseJournal& journal, Vendor& vendor, LineItem& item, Document bill) {
  journal.InvoiceNumber(bill.front().Text("InvoiceNumber"));
  FillVendor(journal, vendor, bill.front());
  FillRows(journal, bill, [&](std::int16_t number, const CsvRow& row) {
    journal.DetailItemIndex(number, IndexOf(item, row.Text("ItemID")));
    journal.DetailDescription(number, row.Text("Description"));
    journal.DetailQuantity(number, row.Number("Quantity"));
    journal.DetailUnitPrice(number, row.Number("UnitCost"));
  });
  journal.MainAccount("2010");
  journal.APAmount(ToDollars(Counterpart(bill)));
}

// Whose stock changes, and by how much its value does.
template <typename Journal>
void FillStock(Journal& journal, LineItem& item, Document document) {
  const CsvRow& first = document.front();
  journal.Reference(first.Text("Reference"));
  journal.ItemIndex(IndexOf(item, first.Text("ItemID")));
  journal.Description(item.ItemDescription());
  journal.MainAccount(item.GLInventoryAccount());
  journal.AmountAdjusted(ToDollars(Counterpart(document)));
}

void FillAdjustment(InventoryAdjustmentJournal& journal, LineItem& item, Document adjustment) {
  FillStock(journal, item, adjustment);
  FillRows(journal, adjustment, [&](std::int16_t number, const CsvRow& row) {
    journal.DetailItemIndex(number, item.Index());
    journal.DetailReasonToAdjust(number, row.Text("Reason"));
    journal.DetailQuantity(number, row.Number("Quantity"));
    journal.DetailUnitCost(number, row.Number("UnitCost"));
  });
}

// The reason stands in a row of its own, which has no number and posts nothing.
void AddReason(AssemblyAdjustmentJournal& journal, const std::string& reason) {
  const auto row = static_cast<std::int16_t>(journal.NDistributions() + 1);
  journal.NDistributions(row);
  journal.DetailLineNo(row, 0);
  journal.ReasonForBuild(reason);
}

// The components are credits to stock, and what is built of them is a debit.
void FillAssembly(AssemblyAdjustmentJournal& journal, LineItem& item, Document assembly) {
  FillStock(journal, item, assembly);
  FillRows(journal, assembly, [&](std::int16_t number, const CsvRow& row) {
    journal.DetailComponentItemIndex(number, IndexOf(item, row.Text("ComponentID")));
    journal.DetailDescription(number, item.ItemDescription());
    journal.DetailQuantity(number, row.Number("Quantity"));
    journal.DetailUnitPrice(number, row.Number("UnitCost"));
  });
  AddReason(journal, assembly.front().Text("Reason"));
}

// Of a pattern there is one row in memory.
void FillPatternRow(MemorizedTransactions& patterns, const CsvRow& row) {
  patterns.NDistributions(1);
  patterns.DetailLineNo(1, 1);
  patterns.DetailDescription(1, row.Text("Description"));
  patterns.DetailQuantity(1, row.Number("Quantity"));
  patterns.DetailUnitPrice(1, row.Number("UnitPrice"));
  patterns.DetailGLAccount(1, row.Text("AccountID"));
  patterns.DetailAmount(1, ToDollars(row.Cents("Amount")));
}

void AddPattern(MemorizedTransactions& patterns, larkmoor::Customer& customer, const CsvRow& row,
                std::int32_t number) {
  Check(patterns.ClearRecord(), "Clearing the header");
  patterns.NRecord(number);
  patterns.JournalID(larkmoor::tovJournalCodeSales);
  patterns.MemorizedID(row.Text("MemorizedID"));
  patterns.Index(IndexOf(customer, row.Text("CustomerID")));
  patterns.Description(customer.BillToName());
  patterns.Account("1110");
  patterns.TotalAmount(ToDollars(-row.Cents("Amount")));
  FillPatternRow(patterns, row);
  Check(patterns.Insert(), "Adding a pattern");
}

}  // namespace

Posted PostPurchases(const Folder& data, TransactionNumbers& numbers) {
  Vendor vendor;
  LineItem item;
  Check(vendor.OpenFile(), "Opening the vendors");
  Check(item.OpenFile(), "Opening the items");
  return PostDocuments<PurchaseJournal>(
      {data / "purchases.csv", "InvoiceNumber", larkmoor::tovJournalCodePurchase}, numbers,
      [&](PurchaseJournal& journal, Document bill) { FillPurchase(journal, vendor, item, bill); });
}

Posted PostAdjustments(const Folder& data, TransactionNumbers& numbers) {
  LineItem item;
  Check(item.OpenFile(), "Opening the items");
  return PostDocuments<InventoryAdjustmentJournal>(
      {data / "adjustments.csv", "Reference", larkmoor::tovJournalCodeInventoryAdjustment}, numbers,
      [&](InventoryAdjustmentJournal& journal, Document adjustment) {
        FillAdjustment(journal, item, adjustment);
      });
}

Posted PostAssemblies(const Folder& data, TransactionNumbers& numbers) {
  LineItem item;
  Check(item.OpenFile(), "Opening the items");
  return PostDocuments<AssemblyAdjustmentJournal>(
      {data / "assemblies.csv", "Reference", larkmoor::tovJournalCodeAssemblyAdjustment}, numbers,
      [&](AssemblyAdjustmentJournal& journal, Document assembly) {
        FillAssembly(journal, item, assembly);
      });
}

std::size_t Memorize(const Folder& data) {
  const std::vector<CsvRow> rows = ReadCsv(data / "memorized.csv");
  larkmoor::Customer customer;
  MemorizedTransactions patterns;
  Check(customer.OpenFile(), "Opening the customers");
  Check(patterns.OpenFile(), "Opening the patterns");
  std::int32_t number = 0;
  for (const CsvRow& row : rows) AddPattern(patterns, customer, row, ++number);
  Check(patterns.CloseFile(), "Closing the patterns");
  return rows.size();
}

}  // namespace fjord
