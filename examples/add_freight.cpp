// Adds what was forgotten to an invoice that is posted already: a row for the freight.
//
//     add_freight COMPANY INVOICE AMOUNT ACCOUNT
//
// AMOUNT is in dollars, ACCOUNT the ID of the income account for freight.
#include <cstdint>
#include <exception>
#include <iostream>
#include <stdexcept>
#include <string>
#include <string_view>

#include <larkmoor/larkmoor.h>

#include "check.h"
#include "posting.h"

namespace {

using example::Check;
using larkmoor::SalesJournal;

// The search by number goes on to a later invoice where only another journal has the number.
void FindInvoice(SalesJournal& journal, const std::string& number) {
  Check(journal.GetForInvoice(number), "Finding invoice " + number);
  if (journal.InvoiceNumber() != number) throw std::runtime_error(number + " is no invoice.");
}

// The row is a credit, and what the customer owes grows by as much: header and rows stay 0.00
// together.
void AddRow(SalesJournal& journal, std::int64_t cents, std::string_view account) {
  const auto row = static_cast<std::int16_t>(journal.NDistributions() + 1);
  journal.NDistributions(row);
  journal.DetailLineNo(row, row);
  journal.DetailDescription(row, "Freight");
  journal.DetailQuantity(row, 1);
  journal.DetailUnitPrice(row, example::ToDollars(cents));
  journal.DetailGLAccount(row, account);
  journal.DetailAmount(row, example::ToDollars(-cents));
  journal.ARAmount(example::ToDollars(example::ToCents(journal.ARAmount()) + cents));
  journal.EditCount(journal.EditCount() + 1);
}

void AddFreight(const std::string& number, std::int64_t cents, std::string_view account) {
  SalesJournal journal;
  Check(journal.OpenFile(), "Opening the sales journal");
  FindInvoice(journal, number);
  AddRow(journal, cents, account);
  // This answers 80 where someone else has changed the invoice since it was read.
  Check(journal.Update(), "Writing invoice " + number + " back");
  std::cout << "Invoice " << number << " for " << journal.CustomerName() << " has "
            << journal.NDistributions() << " rows now and comes to "
            << example::DollarText(example::ToCents(journal.ARAmount())) << ".\n";
  Check(journal.CloseFile(), "Closing the sales journal");
}

}  // namespace

int main(int argc, char** argv) try {
  if (argc != 5) {
    std::cerr << "usage: add_freight COMPANY INVOICE AMOUNT ACCOUNT\n";
    return 2;
  }
  larkmoor::Btrieve connection;
  Check(connection.Connect(argv[1]).ToInteger(), "Connecting");
  AddFreight(argv[2], example::ToCents(larkmoor::Variant(argv[3]).ToDouble()), argv[4]);
  Check(connection.Disconnect().ToInteger(), "Disconnecting");
} catch (const std::exception& error) {
  std::cerr << error.what() << '\n';
  return 1;
}
