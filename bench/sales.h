// The sales that every store of the journal benchmarks holds, and what reading them shows.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace larkmoor::bench {

/// The accounts that sales are posted to; their indexes count from 1 in this order.
inline constexpr std::array<std::string_view, 6> Accounts = {"11000", "23100", "40000",
                                                             "40200", "40400", "40600"};
inline constexpr std::int32_t Receivables = 1;
inline constexpr std::int32_t SalesTaxPayable = 2;
inline constexpr std::int32_t FirstIncome = 3;

struct SaleLine {
  std::string description;
  std::int32_t account = 0;
  std::int32_t item = 0;
  std::int16_t taxType = 0;
  double quantity = 0;
  double unitPrice = 0;
  double amount = 0;  // credits are below 0
};

/// An invoice: four lines of goods and one of sales tax.
struct Sale {
  static constexpr std::int16_t Journal = 3;

  std::int32_t number = 0;
  std::int16_t period = 0;
  std::string invoice;
  std::string purchaseOrder;
  std::int32_t customer = 0;
  std::string customerName;
  std::string street;
  std::string city;
  std::string state;
  std::string zipcode;
  double date = 0;
  double dateDue = 0;
  double amount = 0;
  std::array<SaleLine, 5> lines;
};

inline constexpr std::string_view Terms = "Net 30 Days";
inline constexpr std::string_view ShipMethod = "Courier";
inline constexpr std::string_view TaxCode = "COUNTY";

/// The sale of that number, from 1: always the same one.
Sale SaleOf(std::int32_t number);
std::vector<Sale> SalesFrom(std::int32_t first, std::int32_t count);

/// What a reader has seen of sales: proof that all of them read the same, and the reason why none
/// of it is left out by the compiler.
struct Totals {
  std::int64_t sales = 0;
  std::int64_t rows = 0;
  std::size_t characters = 0;
  double days = 0;
  double amounts = 0;
  double quantities = 0;
  double rowAmounts = 0;

  /// Takes three properties of a header and three of a row.
  void AddSale(std::string_view invoice, double date, double amount) {
    ++sales;
    characters += invoice.size();
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

Totals TotalsOf(std::span<const Sale> sales);

}  // namespace larkmoor::bench
