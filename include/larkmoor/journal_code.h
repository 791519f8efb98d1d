// The codes of the journals.
#pragma once

#include <cstdint>

namespace larkmoor {

/// Which journal a transaction belongs to: the values of `JournalID` and of other properties that
/// name a journal. 6 and 9 are not used. Quotes bear 12, which has no name here.
enum tovJournalCode : std::int32_t {
  /// General journal.
  tovJournalCodeGeneral = 0,
  /// Receipts from customers.
  tovJournalCodeCashReceipt = 1,
  /// Payments to vendors.
  tovJournalCodeCashDisbursement = 2,
  /// Sales invoices.
  tovJournalCodeSales = 3,
  /// Purchases.
  tovJournalCodePurchase = 4,
  /// Pay of employees.
  tovJournalCodePayroll = 5,
  /// Adjustments of stock.
  tovJournalCodeInventoryAdjustment = 7,
  /// Assemblies built or taken apart.
  tovJournalCodeAssemblyAdjustment = 8,
  /// Purchase orders.
  tovJournalCodePurchaseOrder = 10,
  /// Sales orders.
  tovJournalCodeSalesOrder = 11,
};

}  // namespace larkmoor
