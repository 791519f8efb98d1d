// The transactions that every store of the journal benchmarks holds, and what reading them shows.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace larkmoor {
class PayrollJournal;
class PurchaseJournal;
class SalesJournal;
}  // namespace larkmoor

namespace larkmoor::bench {

/// The accounts that transactions are posted to; their indexes count from 1 in this order.
inline constexpr std::array<std::string_view, 11> Accounts = {"11000", "23100", "40000", "40200",
                                                              "40400", "40600", "20000", "12000",
                                                              "57500", "10200", "66000"};
inline constexpr std::int32_t Receivables = 1;
inline constexpr std::int32_t TaxPayable = 2;
inline constexpr std::int32_t FirstIncome = 3;
inline constexpr std::int32_t Payables = 7;
inline constexpr std::int32_t Inventory = 8;
inline constexpr std::int32_t Freight = 9;
inline constexpr std::int32_t Cash = 10;
inline constexpr std::int32_t Wages = 11;

struct Line {
  std::string description;
  std::int32_t account = 0;
  std::int32_t item = 0;  // of a paycheck the payroll field
  std::int16_t taxType = 0;
  double quantity = 0;
  double unitPrice = 0;
  double amount = 0;  // credits are below 0
};

/// An invoice, a bill or a paycheck. What its journal does not know is empty or 0.
struct Transaction {
  std::int32_t number = 0;
  std::int16_t period = 0;
  std::string reference;
  std::string purchaseOrder;
  std::int32_t party = 0;
  std::string partyName;
  std::string shipName;
  std::string street;
  std::string city;
  std::string state;
  std::string zipcode;
  std::string_view shipMethod = "";
  std::string_view terms = "";
  std::string_view taxCode = "";
  double date = 0;
  double dateDue = 0;
  double periodEnd = 0;
  double amount = 0;
  std::int32_t mainAccount = 0;
  std::array<Line, 5> lines;
};

// The journals: the class, its code, and the transaction of a number from 1, always the same one.

/// Invoices: four lines of goods and one of sales tax.
struct Sales {
  static constexpr const char* Name = "sales";
  using Journal = SalesJournal;
  static constexpr std::int16_t Code = 3;
  static constexpr bool FoundByReference = true;
  static Transaction Of(std::int32_t number);
};

/// Bills: four lines of goods and one of freight.
struct Purchases {
  static constexpr const char* Name = "purchases";
  using Journal = PurchaseJournal;
  static constexpr std::int16_t Code = 4;
  static constexpr bool FoundByReference = true;
  static Transaction Of(std::int32_t number);
};

/// Paychecks: the wages and four deductions, each a pay row.
struct Paychecks {
  static constexpr const char* Name = "paychecks";
  using Journal = PayrollJournal;
  static constexpr std::int16_t Code = 5;
  static constexpr bool FoundByReference = false;
  static Transaction Of(std::int32_t number);
};

/// The employees that paychecks go to; their indexes count from 1.
inline constexpr std::int32_t Employees = 200;
std::string EmployeeID(std::int32_t index);

template <typename Book>
std::vector<Transaction> TransactionsFrom(std::int32_t first, std::int32_t count) {
  std::vector<Transaction> transactions;
  transactions.reserve(static_cast<std::size_t>(count));
  for (std::int32_t i = 0; i < count; ++i) transactions.push_back(Book::Of(first + i));
  return transactions;
}

/// What a transaction is looked for by: its reference, or where that is empty its number.
struct Wanted {
  std::int32_t number = 0;
  std::string reference;
};

/// What a reader has seen of transactions: proof that all of them read the same, and the reason why
/// none of it is left out by the compiler.
struct Totals {
  std::int64_t transactions = 0;
  std::int64_t rows = 0;
  std::size_t characters = 0;
  double days = 0;
  double amounts = 0;
  double quantities = 0;
  double rowAmounts = 0;

  /// Takes three properties of a header and three of a row.
  void AddHeader(std::string_view reference, double date, double amount) {
    ++transactions;
    characters += reference.size();
    days += date;
    amounts += amount;
  }
  void AddRow(std::string_view description, double quantity, double amount) {
    ++rows;
    characters += description.size();
    quantities += quantity;
    rowAmounts += amount;
  }

  bool operator==(const Totals&) const = default;
};

Totals TotalsOf(std::span<const Transaction> transactions);

}  // namespace larkmoor::bench
