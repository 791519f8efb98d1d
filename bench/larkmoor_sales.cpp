#include "larkmoor_sales.h"

#include <larkmoor/bulk_write.h>
#include <larkmoor/masters/chart.h>

namespace larkmoor::bench {

LarkmoorSales::LarkmoorSales(const std::filesystem::path& place) : company_(place) {
  company_.Connect();
  AddAccounts();
  Check(journal_.OpenFile() == StatusSuccess, "open");
}

void LarkmoorSales::AddAccounts() {
  Chart chart;
  Check(chart.OpenFile() == StatusSuccess, "chart");
  std::int32_t index = 0;
  for (const std::string_view id : Accounts) {
    chart.Index(++index);
    chart.AccountID(id);
    Check(chart.Insert() == StatusSuccess, "account");
  }
}

Totals LarkmoorSales::Walk() {
  Totals totals;
  Status status = journal_.ReadFirst(0);
  for (; status == StatusSuccess; status = journal_.ReadNext()) AddTo(totals);
  Check(status == StatusEndOfFile, "walk");
  return totals;
}

Totals LarkmoorSales::Find(const std::string& invoice) {
  Totals totals;
  Check(journal_.GetForInvoice(invoice) == StatusSuccess, "invoice");
  AddTo(totals);
  return totals;
}

void LarkmoorSales::AddTo(Totals& totals) {
  totals.AddSale(journal_.InvoiceNumber(), journal_.TrxDate().ToDouble(), journal_.ARAmount());
  const std::int16_t rows = journal_.NDistributions();
  for (std::int16_t row = 1; row <= rows; ++row) {
    totals.AddRow(journal_.DetailDescription(row), journal_.DetailQuantity(row),
                  journal_.DetailAmount(row));
  }
}

void LarkmoorSales::Insert(const Sale& sale) {
  SetHeader(sale);
  journal_.NDistributions(static_cast<std::int16_t>(sale.lines.size()));
  std::int16_t row = 0;
  for (const SaleLine& line : sale.lines) SetRow(++row, line, sale.customer);
  Check(journal_.Insert() == StatusSuccess, "insert");
}

void LarkmoorSales::Load(std::span<const Sale> sales) {
  BulkWrite bulk;
  for (const Sale& sale : sales) Insert(sale);
  Check(bulk.Commit() == StatusSuccess, "commit");
}

void LarkmoorSales::SetHeader(const Sale& sale) {
  journal_.ClearRecord();
  journal_.NRecord(sale.number);
  journal_.TrxNumberL(sale.number);
  journal_.Period(sale.period);
  journal_.JournalID(Sale::Journal);
  journal_.InvoiceNumber(sale.invoice);
  journal_.CustomerPO(sale.purchaseOrder);
  journal_.CustomerIndex(sale.customer);
  journal_.CustomerName(sale.customerName);
  journal_.ShipToName(sale.customerName);
  journal_.ShipToAddr1(sale.street);
  journal_.ShipToCity(sale.city);
  journal_.ShipToState(sale.state);
  journal_.ShipToZipcode(sale.zipcode);
  journal_.ShipVia(ShipMethod);
  journal_.Terms(Terms);
  journal_.SalesTaxCode(TaxCode);
  journal_.TrxDate(Date(sale.date));
  journal_.DateDue(Date(sale.dateDue));
  journal_.ARAmount(sale.amount);
  journal_.MainAccount(Accounts[Receivables - 1]);
  journal_.Posted(true);
}

void LarkmoorSales::SetRow(std::int16_t row, const SaleLine& line, std::int32_t customer) {
  journal_.DetailLineNo(row, row);
  journal_.DetailDescription(row, line.description);
  journal_.DetailGLAccount(row, Accounts[static_cast<std::size_t>(line.account - 1)]);
  journal_.DetailItemIndex(row, line.item);
  journal_.DetailCustomerIndex(row, customer);
  journal_.DetailTaxType(row, line.taxType);
  journal_.DetailQuantity(row, line.quantity);
  journal_.DetailUnitPrice(row, line.unitPrice);
  journal_.DetailStockingQuantity(row, line.quantity);
  journal_.DetailStockingUnitPrice(row, line.unitPrice);
  journal_.DetailAmount(row, line.amount);
}

}  // namespace larkmoor::bench
