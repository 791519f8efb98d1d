// Prints a paycheck: what is paid and withheld, and the hours that are charged to jobs.
//
//     paycheck COMPANY CHECK
#include <cstdint>
#include <exception>
#include <iomanip>
#include <iostream>
#include <stdexcept>
#include <string>

#include <larkmoor/larkmoor.h>

#include "check.h"
#include "posting.h"

namespace {

using example::Check;
using larkmoor::PayrollJournal;

std::string AmountText(double amount) { return example::DollarText(example::ToCents(amount)); }

// There is no search by the number of a check: the paychecks are walked from the first period on.
void FindPaycheck(PayrollJournal& journal, const std::string& number) {
  larkmoor::Status status = journal.ReadFirst(0);
  while (status == larkmoor::StatusSuccess && journal.CheckNumber() != number) {
    status = journal.ReadNext();
  }
  if (status == larkmoor::StatusEndOfFile) throw std::runtime_error("No paycheck " + number + ".");
  Check(status, "Looking for paycheck " + number);
}

void PrintRow(double hours, double amount, const std::string& text) {
  std::cout << std::setw(8) << (hours == 0 ? "" : larkmoor::Variant(hours).ToText())
            << std::setw(11) << AmountText(amount) << "  " << text << '\n';
}

// Rows of taxes have no hours.
void PrintPay(PayrollJournal& journal) {
  std::cout << "Pay\n";
  for (std::int16_t row = 1; row <= journal.NDistributions(); ++row) {
    PrintRow(journal.PayQuantity(row), journal.PayAmount(row),
             journal.PayAccount(row) + " " + journal.PayDescription(row));
  }
}

void PrintLabor(PayrollJournal& journal) {
  larkmoor::JobData job;
  Check(job.OpenFile(), "Opening the jobs");
  std::cout << "Hours for jobs\n";
  for (std::int16_t row = 1; row <= journal.NLaborDistributions(); ++row) {
    Check(job.GetForIndex(journal.JobJobIndex(row)), "Finding a job");
    PrintRow(journal.JobHours(row), journal.JobAmount(row),
             journal.JobAccount(row) + " " + job.JobID() + ", " + job.JobDescription());
  }
  Check(job.CloseFile(), "Closing the jobs");
}

void PrintPaycheck(const std::string& number) {
  PayrollJournal journal;
  Check(journal.OpenFile(), "Opening the payroll journal");
  FindPaycheck(journal, number);
  std::cout << "Check " << number << " for " << journal.EmployeeName() << ": "
            << AmountText(-journal.CashAmount()) << '\n';
  PrintPay(journal);
  PrintLabor(journal);
  Check(journal.CloseFile(), "Closing the payroll journal");
}

}  // namespace

int main(int argc, char** argv) try {
  if (argc != 3) {
    std::cerr << "usage: paycheck COMPANY CHECK\n";
    return 2;
  }
  larkmoor::Btrieve connection;
  Check(connection.Connect(argv[1]).ToInteger(), "Connecting");
  PrintPaycheck(argv[2]);
  Check(connection.Disconnect().ToInteger(), "Disconnecting");
} catch (const std::exception& error) {
  std::cerr << error.what() << '\n';
  return 1;
}
