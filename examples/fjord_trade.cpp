// A month of trade for the company that fjord_tools makes: what it buys, pays, receives, builds and
// pays out in January 2027.
//
//     fjord_trade COMPANY DATA
//
// DATA is a folder with the files that data/README.md describes. From release 19 on the company has
// a row for each pay level of an employee, which is to be imported first:
//
//     larkmoor import COMPANY EmployeeAux5 DATA/pay_levels.csv
#include "fjord_trade.h"

#include <exception>
#include <iostream>
#include <string_view>

#include <larkmoor/larkmoor.h>

namespace {

using example::Check;
using example::TransactionNumbers;

template <typename Result>
void Tell(std::string_view what, const Result& result) {
  std::cout << what << result << '\n';
}

void AddMasters(const fjord::Folder& data) {
  Tell("Vendors:     ", fjord::AddVendors(data));
  Tell("Items:       ", fjord::AddItems(data));
  Tell("Components:  ", fjord::AddComponents(data));
  Tell("Jobs:        ", fjord::AddJobs(data));
  Tell("Employees:   ", fjord::AddEmployees(data));
}

void PostTransactions(const fjord::Folder& data) {
  TransactionNumbers numbers;
  Tell("Purchases:   ", fjord::PostPurchases(data, numbers));
  Tell("Payments:    ", fjord::PostPayments(data, numbers));
  Tell("Receipts:    ", fjord::PostReceipts(data, numbers));
  Tell("Adjustments: ", fjord::PostAdjustments(data, numbers));
  Tell("Assemblies:  ", fjord::PostAssemblies(data, numbers));
  Tell("Paychecks:   ", fjord::PostPaychecks(data, numbers));
  Tell("Patterns:    ", fjord::Memorize(data));
}

// All in one commit a file.
void PostMonth(const fjord::Folder& company, const fjord::Folder& data) {
  larkmoor::Btrieve connection;
  Check(connection.Connect(company.string()).ToInteger(), "Connecting");
  larkmoor::BulkWrite bulk;
  AddMasters(data);
  PostTransactions(data);
  Check(bulk.Commit(), "Writing the month");
  Check(connection.Disconnect().ToInteger(), "Disconnecting");
}

}  // namespace

int main(int argc, char** argv) try {
  if (argc != 3) {
    std::cerr << "usage: fjord_trade COMPANY DATA\n";
    return 2;
  }
  PostMonth(argv[1], argv[2]);
} catch (const std::exception& error) {
  std::cerr << error.what() << '\n';
  return 1;
}
