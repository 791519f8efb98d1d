#include "sales.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <random>

namespace larkmoor::bench {
namespace {

constexpr std::int32_t Customers = 5000;
constexpr std::int32_t SalesADay = 137;
constexpr std::int32_t DaysInPeriod = 30;
constexpr std::int32_t LastPeriod = 41;
constexpr double FirstDay = 45292;  // 1 January 2024
constexpr double TaxRate = 0.07;

constexpr std::array<std::string_view, 8> Families = {
    "Harrow", "Lindqvist", "Okafor", "Brandt", "Ferreira", "Kowalski", "Tanner", "Whitlock"};
constexpr std::array<std::string_view, 8> Trades = {
    "Joinery",  "& Sons Hardware", "Garden Supply", "Interiors",
    "Boatyard", "Electrical Ltd.", "Schools Trust", "Hotel & Restaurant"};
constexpr std::array<std::string_view, 8> Goods = {
    "Desk, oak, 160 x 80 cm",         "Office chair, blue, with arms",
    "Shelf board, beech, oiled",      "Cordless drill with two batteries",
    "Wood screws 4 x 40, box of 200", "LED panel 40 W, neutral white",
    "Extension lead, 10 m, outdoor",  "Delivery and assembly on site"};
constexpr std::array<std::string_view, 4> Cities = {"Ashford", "Millbrook", "Port Lorne",
                                                    "Stonebridge"};
constexpr std::array<std::string_view, 4> States = {"GA", "NC", "TN", "VA"};

double Cents(double amount) { return std::round(amount * 100) / 100; }

std::string Numbered(const char* format, std::int32_t number) {
  std::array<char, 32> text{};
  std::snprintf(text.data(), text.size(), format, number);
  return text.data();
}

/// One of the words, the same for the same number.
template <std::size_t Size>
std::string_view Pick(const std::array<std::string_view, Size>& words, std::size_t number) {
  return words[number % Size];
}

std::string CustomerName(std::int32_t customer) {
  const auto number = static_cast<std::size_t>(customer);
  return std::string(Pick(Families, number)) + " " +
         std::string(Pick(Trades, number / Families.size()));
}

SaleLine GoodsLine(std::minstd_rand& random) {
  SaleLine line;
  const auto item = static_cast<std::int32_t>(random() % 900);
  line.description = Pick(Goods, static_cast<std::size_t>(item));
  line.account = FirstIncome + item % 4;
  line.item = 1 + item;
  line.taxType = 1;
  line.quantity = 1 + static_cast<double>(random() % 12);
  line.unitPrice = Cents(5 + static_cast<double>(random() % 40000) / 100);
  line.amount = -Cents(line.quantity * line.unitPrice);
  return line;
}

SaleLine TaxLine(double net) {
  SaleLine line;
  line.description = "Sales tax, county and state";
  line.account = SalesTaxPayable;
  line.amount = -Cents(net * TaxRate);
  return line;
}

void AddLines(Sale& sale, std::minstd_rand& random) {
  for (SaleLine& line : sale.lines) {
    line = &line == &sale.lines.back() ? TaxLine(sale.amount) : GoodsLine(random);
    sale.amount = Cents(sale.amount - line.amount);
  }
}

}  // namespace

Sale SaleOf(std::int32_t number) {
  std::minstd_rand random(static_cast<std::uint32_t>(number));
  random.discard(2);  // neighbours start alike
  const std::int32_t day = number / SalesADay;
  Sale sale;
  sale.number = number;
  sale.period = static_cast<std::int16_t>(std::min(1 + day / DaysInPeriod, LastPeriod));
  sale.invoice = Numbered("INV-%07d", number);
  sale.purchaseOrder = Numbered("PO %d", static_cast<std::int32_t>(random() % 100'000));
  sale.customer = 1 + static_cast<std::int32_t>(random() % Customers);
  sale.customerName = CustomerName(sale.customer);
  sale.street = Numbered("%d Station Road", 1 + sale.customer % 240);
  sale.city = Pick(Cities, static_cast<std::size_t>(sale.customer));
  sale.state = Pick(States, static_cast<std::size_t>(sale.customer));
  sale.zipcode = Numbered("%05d", 10'000 + sale.customer);
  sale.date = FirstDay + day;
  sale.dateDue = sale.date + 30;
  AddLines(sale, random);
  return sale;
}

std::vector<Sale> SalesFrom(std::int32_t first, std::int32_t count) {
  std::vector<Sale> sales;
  sales.reserve(static_cast<std::size_t>(count));
  for (std::int32_t i = 0; i < count; ++i) sales.push_back(SaleOf(first + i));
  return sales;
}

Totals TotalsOf(std::span<const Sale> sales) {
  Totals totals;
  for (const Sale& sale : sales) {
    totals.AddSale(sale.invoice, sale.date, sale.amount);
    for (const SaleLine& line : sale.lines) {
      totals.AddRow(line.description, line.quantity, line.amount);
    }
  }
  return totals;
}

}  // namespace larkmoor::bench
