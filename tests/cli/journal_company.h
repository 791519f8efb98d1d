// A company with transactions, posted through the public classes as a client would.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include <larkmoor/connection/btrieve.h>
#include <larkmoor/journals/general_journal.h>
#include <larkmoor/journals/sales_journal.h>
#include <larkmoor/journals/sales_order_journal.h>
#include <larkmoor/masters/chart.h>
#include <larkmoor/masters/customer.h>

#include "cli/larkmoor_command.h"

namespace larkmoor::test {

/// A row, with the sign of its posting.
struct SampleRow {
  std::string_view account;
  double amount = 0;
  std::string_view text = {};
  double quantity = 0;
  double unitPrice = 0;
};

struct SampleInvoice {
  std::string_view number;
  std::string_view date;
  std::int32_t customer = 1;
  double amount = 0;
  std::vector<SampleRow> rows = {};
  std::string_view due = {};
  double received = 0;
  std::int16_t period = 1;
  bool isQuote = false;
};

struct SampleEntry {
  std::string_view reference;
  std::string_view date;
  std::vector<SampleRow> rows;
  std::string_view text = "Entry";
};

/// Six accounts and two customers, whose indexes count from 1. Nothing is posted yet.
class JournalCompany : public CommandCompany {
 public:
  explicit JournalCompany(const std::string& release = "19") : CommandCompany(release) {
    EXPECT_EQ(Btrieve().Connect(Folder()), StatusSuccess);
    AddAccounts();
    AddCustomers();
  }

  void AddAccount(std::string_view id, std::string_view name, std::int16_t type) const {
    Chart chart;
    EXPECT_EQ(chart.OpenFile(), StatusSuccess);
    chart.AccountID(id);
    chart.AccountDescription(name);
    chart.AccountType(type);
    EXPECT_EQ(chart.Insert(), StatusSuccess);
  }

  void AddCustomer(std::string_view id, std::string_view name, std::string_view city) const {
    Customer customer;
    EXPECT_EQ(customer.OpenFile(), StatusSuccess);
    customer.CustomerID(id);
    customer.BillToName(name);
    customer.BillToAddress1("1 Main Street");
    customer.BillToCity(city);
    customer.BillToState("MN");
    customer.BillToZipcode("55801");
    EXPECT_EQ(customer.Insert(), StatusSuccess);
  }

  /// Posts an invoice or quote to account 1100, and gives its `NRecord`.
  std::int32_t Post(const SampleInvoice& invoice) const {
    SalesJournal journal;
    EXPECT_EQ(journal.OpenFile(), StatusSuccess);
    journal.JournalID(invoice.isQuote ? 12 : 3);
    journal.Period(invoice.period);
    journal.InvoiceNumber(invoice.number);
    journal.CustomerIndex(invoice.customer);
    journal.CustomerName(invoice.customer == 1 ? "Berg & Sønner" : "Dahl");
    journal.MainAccount("1100");
    journal.ARAmount(invoice.amount);
    journal.AmountReceived(invoice.received);
    if (!invoice.date.empty()) journal.TrxDate(*Date::FromText(invoice.date));
    if (!invoice.due.empty()) journal.DateDue(*Date::FromText(invoice.due));
    for (const SampleRow& row : invoice.rows) {
      const std::int16_t i = AddRow(journal, row);
      journal.DetailQuantity(i, row.quantity);
      journal.DetailUnitPrice(i, row.unitPrice);
    }
    return Insert(journal);
  }

  /// The same for an entry of the general journal, which has no main account.
  std::int32_t Post(const SampleEntry& entry) const {
    GeneralJournal journal;
    EXPECT_EQ(journal.OpenFile(), StatusSuccess);
    journal.Period(1);
    journal.Reference(entry.reference);
    journal.Description(entry.text);
    journal.TrxDate(*Date::FromText(entry.date));
    for (const SampleRow& row : entry.rows) AddRow(journal, row);
    return Insert(journal);
  }

  /// The same for a sales order.
  std::int32_t PostOrder(std::string_view number, double amount) const {
    SalesOrderJournal journal;
    EXPECT_EQ(journal.OpenFile(), StatusSuccess);
    journal.JournalID(11);
    journal.Period(1);
    journal.InvoiceNumber(number);
    journal.CustomerIndex(1);
    journal.MainAccount("1100");
    journal.ARAmount(amount);
    journal.TrxDate(Date::FromYmd(2026, 1, 31));
    const std::int16_t i = AddRow(journal, {"4000", -amount, "Ordered"});
    journal.DetailQuantity(i, 1);
    return Insert(journal);
  }

 private:
  void AddAccounts() const {
    AddAccount("1000", "Bank", 0);
    AddAccount("1100", "Receivables", 1);
    AddAccount("2000", "Sales tax", 12);
    AddAccount("4000", "Sales", 21);
    AddAccount("6000", "Rent", 24);
    AddAccount("9999", "Never used", 24);
  }

  void AddCustomers() const {
    AddCustomer("BERG", "Berg & Sønner", "Duluth");
    AddCustomer("DAHL", "Dahl", "Proctor");
  }

  template <typename Journal>
  static std::int16_t AddRow(Journal& journal, const SampleRow& row) {
    const auto i = static_cast<std::int16_t>(journal.NDistributions() + 1);
    journal.NDistributions(i);
    journal.DetailGLAccount(i, row.account);
    journal.DetailAmount(i, row.amount);
    journal.DetailDescription(i, row.text);
    return i;
  }

  template <typename Journal>
  static std::int32_t Insert(Journal& journal) {
    journal.NRecord(journal.MaxNRecord() + 1);
    journal.TrxNumberL(journal.MaxTrxNumberL(journal.Period()) + 1);
    EXPECT_EQ(journal.Insert(), StatusSuccess);
    return journal.NRecord();
  }
};

}  // namespace larkmoor::test
