#include "journals.h"

#include <algorithm>
#include <iterator>

#include <larkmoor/journal_code.h>

namespace larkmoor::cli {
namespace {

struct Journal {
  std::int16_t code;
  std::string_view className;
  bool posts = true;
};

constexpr std::int16_t Quote = 12;

constexpr Journal Journals[] = {
    {tovJournalCodeGeneral, "GeneralJournal"},
    {tovJournalCodeCashReceipt, "CashReceiptJournal"},
    {tovJournalCodeCashDisbursement, "CashDisbursementJournal"},
    {tovJournalCodeSales, "SalesJournal"},
    {tovJournalCodePurchase, "PurchaseJournal"},
    {tovJournalCodePayroll, "PayrollJournal"},
    {tovJournalCodeInventoryAdjustment, "InventoryAdjustmentJournal"},
    {tovJournalCodeAssemblyAdjustment, "AssemblyAdjustmentJournal"},
    {tovJournalCodePurchaseOrder, "PurchaseOrderJournal", false},
    {tovJournalCodeSalesOrder, "SalesOrderJournal", false},
    {Quote, "SalesJournal", false},
};

}  // namespace

std::vector<std::int16_t> JournalCodesOf(std::string_view className) {
  std::vector<std::int16_t> codes;
  for (const Journal& journal : Journals) {
    if (journal.className == className) codes.push_back(journal.code);
  }
  return codes;
}

bool Posts(std::int16_t journalCode) {
  const auto found = std::ranges::find(Journals, journalCode, &Journal::code);
  return found == std::end(Journals) || found->posts;
}

}  // namespace larkmoor::cli
