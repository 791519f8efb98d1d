#include "data/transactions.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <random>
#include <utility>

namespace larkmoor::bench {
namespace {

constexpr std::int32_t Parties = 5000;
constexpr std::int32_t TransactionsADay = 55;
constexpr std::int32_t DaysInPeriod = 30;
constexpr std::int32_t LastPeriod = 41;
constexpr double FirstDay = 45292;  // 1 January 2024
constexpr double TaxRate = 0.07;
constexpr double FreightRate = 0.03;

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

std::string PartyName(std::int32_t party) {
  const auto number = static_cast<std::size_t>(party);
  return std::string(Pick(Families, number)) + " " +
         std::string(Pick(Trades, number / Families.size()));
}

/// The part that is the same in all journals.
Transaction Start(std::int32_t number, std::minstd_rand& random, std::int32_t parties) {
  random.discard(2);  // neighbours start alike
  const std::int32_t day = number / TransactionsADay;
  Transaction made;
  made.number = number;
  made.period = static_cast<std::int16_t>(std::min(1 + day / DaysInPeriod, LastPeriod));
  made.party = 1 + static_cast<std::int32_t>(random() % static_cast<std::uint32_t>(parties));
  made.partyName = PartyName(made.party);
  made.date = FirstDay + day;
  return made;
}

std::minstd_rand RandomOf(std::int32_t number) {
  return std::minstd_rand(static_cast<std::uint32_t>(number));
}

/// What goods need on their way. `place` chooses one of many addresses.
void ShipTo(Transaction& made, std::string name, std::int32_t place) {
  made.purchaseOrder = Numbered("PO %d", made.number * 7 % 100'000);
  made.shipName = std::move(name);
  made.street = Numbered("%d Station Road", 1 + place % 240);
  made.city = Pick(Cities, static_cast<std::size_t>(place));
  made.state = Pick(States, static_cast<std::size_t>(place));
  made.zipcode = Numbered("%05d", 10'000 + place);
  made.shipMethod = "Courier";
  made.terms = "Net 30 Days";
  made.dateDue = made.date + 30;
}

/// Header and rows together are 0.
void AddLine(Transaction& made, std::size_t place, Line line) {
  made.amount = Cents(made.amount - line.amount);
  made.lines[place] = std::move(line);
}

Line GoodsLine(std::minstd_rand& random) {
  Line line;
  line.item = 1 + static_cast<std::int32_t>(random() % 900);
  line.description = Pick(Goods, static_cast<std::size_t>(line.item));
  line.quantity = 1 + static_cast<double>(random() % 12);
  line.unitPrice = Cents(5 + static_cast<double>(random() % 40000) / 100);
  line.amount = Cents(line.quantity * line.unitPrice);
  return line;
}

Line AmountLine(std::string_view description, std::int32_t account, double amount) {
  Line line;
  line.description = description;
  line.account = account;
  line.amount = Cents(amount);
  return line;
}

}  // namespace

std::string EmployeeID(std::int32_t index) { return Numbered("EMP%04d", index); }

Transaction Sales::Of(std::int32_t number) {
  std::minstd_rand random = RandomOf(number);
  Transaction sale = Start(number, random, Parties);
  ShipTo(sale, sale.partyName, sale.party);
  sale.reference = Numbered("INV-%07d", number);
  sale.taxCode = "COUNTY";
  sale.mainAccount = Receivables;
  const std::size_t last = sale.lines.size() - 1;
  for (std::size_t i = 0; i < last; ++i) {
    Line line = GoodsLine(random);
    line.account = FirstIncome + line.item % 4;
    line.taxType = 1;
    line.amount = -line.amount;
    AddLine(sale, i, std::move(line));
  }
  AddLine(sale, last,
          AmountLine("Sales tax, county and state", TaxPayable, -TaxRate * sale.amount));
  return sale;
}

Transaction Purchases::Of(std::int32_t number) {
  constexpr std::int32_t OurPlace = 17;
  std::minstd_rand random = RandomOf(number);
  Transaction bill = Start(number, random, Parties);
  ShipTo(bill, "Marlow Office Furniture", OurPlace);
  bill.reference = Numbered("BILL-%07d", number);
  bill.mainAccount = Payables;
  const std::size_t last = bill.lines.size() - 1;
  for (std::size_t i = 0; i < last; ++i) {
    Line line = GoodsLine(random);
    line.account = Inventory;
    AddLine(bill, i, std::move(line));
  }
  AddLine(bill, last, AmountLine("Freight and packing", Freight, -FreightRate * bill.amount));
  return bill;
}

Transaction Paychecks::Of(std::int32_t number) {
  struct Deduction {
    std::string_view description;
    double rate;
  };
  constexpr std::array<Deduction, 4> Deductions = {{{"Federal income tax", 0.12},
                                                    {"Social Security", 0.062},
                                                    {"Medicare", 0.0145},
                                                    {"State income tax", 0.05}}};
  std::minstd_rand random = RandomOf(number);
  Transaction check = Start(number, random, Employees);
  check.reference = Numbered("%08d", number);
  check.periodEnd = check.date - 2;
  check.mainAccount = Cash;
  const double hours = 32 + static_cast<double>(random() % 16);
  const double gross = hours * Cents(15 + static_cast<double>(random() % 4000) / 100);
  Line wages = AmountLine("Hourly wages", Wages, gross);
  wages.quantity = hours;
  wages.item = 1;
  AddLine(check, 0, std::move(wages));
  for (std::size_t i = 0; i < Deductions.size(); ++i) {
    Line line = AmountLine(Deductions[i].description, TaxPayable, -Deductions[i].rate * gross);
    line.item = static_cast<std::int32_t>(i) + 2;
    AddLine(check, i + 1, std::move(line));
  }
  return check;
}

Totals TotalsOf(std::span<const Transaction> transactions) {
  Totals totals;
  for (const Transaction& each : transactions) {
    totals.AddHeader(each.reference, each.date, each.amount);
    for (const Line& line : each.lines) {
      totals.AddRow(line.description, line.quantity, line.amount);
    }
  }
  return totals;
}

}  // namespace larkmoor::bench
