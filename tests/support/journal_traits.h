// What tests that run over several journal classes need to know of each.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include <gtest/gtest.h>

#include <larkmoor/bulk_write.h>
#include <larkmoor/journal_code.h>
#include <larkmoor/journals/assembly_adjustment_journal.h>
#include <larkmoor/journals/cash_disbursement_journal.h>
#include <larkmoor/journals/cash_receipt_journal.h>
#include <larkmoor/journals/general_journal.h>
#include <larkmoor/journals/inventory_adjustment_journal.h>
#include <larkmoor/journals/purchase_journal.h>
#include <larkmoor/journals/purchase_order_journal.h>
#include <larkmoor/journals/sales_journal.h>
#include <larkmoor/journals/sales_order_journal.h>
#include <larkmoor/status.h>

#include "support/journal_fixture.h"

namespace larkmoor::test {

/// The name of a class, the code that its headers bear, and how it calls their reference.
template <typename Journal>
struct JournalTraits;

template <>
struct JournalTraits<GeneralJournal> {
  static constexpr std::string_view Name = "GeneralJournal";
  static constexpr std::int16_t Code = tovJournalCodeGeneral;
  static std::string Reference(GeneralJournal& journal) { return journal.Reference(); }
};

template <>
struct JournalTraits<CashReceiptJournal> {
  static constexpr std::string_view Name = "CashReceiptJournal";
  static constexpr std::int16_t Code = tovJournalCodeCashReceipt;
  static std::string Reference(CashReceiptJournal& journal) { return journal.Reference(); }
};

template <>
struct JournalTraits<CashDisbursementJournal> {
  static constexpr std::string_view Name = "CashDisbursementJournal";
  static constexpr std::int16_t Code = tovJournalCodeCashDisbursement;
  static std::string Reference(CashDisbursementJournal& journal) { return journal.CheckNumber(); }
};

template <>
struct JournalTraits<SalesJournal> {
  static constexpr std::string_view Name = "SalesJournal";
  static constexpr std::int16_t Code = tovJournalCodeSales;
  static std::string Reference(SalesJournal& journal) { return journal.InvoiceNumber(); }
};

template <>
struct JournalTraits<PurchaseJournal> {
  static constexpr std::string_view Name = "PurchaseJournal";
  static constexpr std::int16_t Code = tovJournalCodePurchase;
  static std::string Reference(PurchaseJournal& journal) { return journal.InvoiceNumber(); }
};

template <>
struct JournalTraits<InventoryAdjustmentJournal> {
  static constexpr std::string_view Name = "InventoryAdjustmentJournal";
  static constexpr std::int16_t Code = tovJournalCodeInventoryAdjustment;
  static std::string Reference(InventoryAdjustmentJournal& journal) { return journal.Reference(); }
};

template <>
struct JournalTraits<AssemblyAdjustmentJournal> {
  static constexpr std::string_view Name = "AssemblyAdjustmentJournal";
  static constexpr std::int16_t Code = tovJournalCodeAssemblyAdjustment;
  static std::string Reference(AssemblyAdjustmentJournal& journal) { return journal.Reference(); }
};

template <>
struct JournalTraits<PurchaseOrderJournal> {
  static constexpr std::string_view Name = "PurchaseOrderJournal";
  static constexpr std::int16_t Code = tovJournalCodePurchaseOrder;
  static std::string Reference(PurchaseOrderJournal& journal) { return journal.PONumber(); }
};

template <>
struct JournalTraits<SalesOrderJournal> {
  static constexpr std::string_view Name = "SalesOrderJournal";
  static constexpr std::int16_t Code = tovJournalCodeSalesOrder;
  static std::string Reference(SalesOrderJournal& journal) { return journal.InvoiceNumber(); }
};

/// Names the tests of each class after it.
struct JournalNames {
  template <typename Journal>
  static std::string GetName(int) {
    return std::string(JournalTraits<Journal>::Name);
  }
};

/// Every code that headers bear. A quote's has no class of its own.
inline constexpr std::int16_t AllJournalCodes[] = {tovJournalCodeGeneral,
                                                   tovJournalCodeCashReceipt,
                                                   tovJournalCodeCashDisbursement,
                                                   tovJournalCodeSales,
                                                   tovJournalCodePurchase,
                                                   tovJournalCodePayroll,
                                                   tovJournalCodeInventoryAdjustment,
                                                   tovJournalCodeAssemblyAdjustment,
                                                   tovJournalCodePurchaseOrder,
                                                   tovJournalCodeSalesOrder,
                                                   12};

/// The fixture of tests that run over several journal classes.
template <typename Journal>
class SharedJournalFixture : public JournalFixture<Journal> {
 protected:
  using Traits = JournalTraits<Journal>;
  static constexpr std::int16_t Code = Traits::Code;
  // They lie before and behind the journal's own code in every key that begins with the code.
  static constexpr std::int16_t PreviousCode = Code - 1;
  static constexpr std::int16_t NextCode = Code + 1;

  /// Lays a transaction of the journal under test.
  void AddOwn(std::int16_t period, std::string_view reference, std::int32_t party = 0) {
    this->Add(Code, period, reference, party);
  }
  /// Lays one transaction of each other journal, with a blank row, all in one commit.
  void AddOthers(std::int16_t period, std::string_view reference, std::int32_t party = 0) {
    BulkWrite bulk;
    for (const std::int16_t code : AllJournalCodes) {
      if (code == Code) continue;
      const std::int32_t nRecord = ++this->lastNRecord_;
      this->files_.AddHeader({.nRecord = nRecord,
                              .journal = code,
                              .period = period,
                              .reference = reference,
                              .idNumber = party});
      this->files_.AddRow(nRecord, [](Tovrin2Record&) {});
    }
    EXPECT_EQ(bulk.Commit(), StatusSuccess);
  }

  /// The reference of the header in hand, as the class shows it.
  std::string Reference() { return Traits::Reference(this->journal_); }

  /// Expects that transaction of one row in hand.
  void ExpectInHand(std::string_view reference, double amount) {
    EXPECT_EQ(Reference(), reference);
    EXPECT_EQ(this->journal_.NDistributions(), 1);
    EXPECT_EQ(this->journal_.DetailAmount(1), amount);
  }
};

}  // namespace larkmoor::test
