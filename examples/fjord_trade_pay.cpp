// Paychecks: what is paid and withheld in one list of rows, and the hours for jobs in another.
#include <larkmoor/larkmoor.h>

#include "fjord_trade.h"

namespace fjord {
namespace {

using larkmoor::JobData;
using larkmoor::PayrollJournal;

// Opened anew for each look: the rate of a pay level stays in hand until another level is asked
// for, whoever the employee is.
double RateOf(const std::string& employeeID, std::int16_t level) {
  larkmoor::Employee employee;
  Check(employee.OpenFile(), "Opening the employees");
  Check(employee.GetEqual(employeeID), "Finding " + employeeID);
  const double rate = employee.PayRateAmount(level);
  Check(employee.CloseFile(), "Closing the employees");
  return rate;
}

// Hours have a pay level, and come to the employee's rate of it; other rows have none.
void CheckPay(const CsvRow& row) {
  const std::int16_t level = row.Integer("Level");
  if (level == 0) return;
  const double pay = row.Number("Hours") * RateOf(row.Text("EmployeeID"), level);
  if (ToCents(pay) != row.Cents("Amount")) row.Fail("the amount is not hours times rate");
}

void FillPayRow(PayrollJournal& journal, std::int16_t number, const CsvRow& row) {
  journal.PayLineNo(number, number);
  journal.PayFieldNumber(number, row.Integer("Field"));
  journal.PayEmployeeID(number, row.Text("EmployeeID"));
  journal.PayDescription(number, row.Text("Description"));
  journal.PayQuantity(number, row.Number("Hours"));
  journal.PayAccount(number, row.Text("AccountID"));
  journal.PayAmount(number, ToDollars(row.Cents("Amount")));
}

void FillJobRow(PayrollJournal& journal, std::int16_t number, JobData& job, const CsvRow& row) {
  journal.JobJobIndex(number, IndexOf(job, row.Text("JobID")));
  journal.JobFieldNumber(number, row.Integer("Field"));
  journal.JobLevel(number, static_cast<std::int16_t>(row.Integer("Level") - 1));
  journal.JobEmployeeID(number, row.Text("EmployeeID"));
  journal.JobHours(number, row.Number("Hours"));
  journal.JobAccount(number, row.Text("AccountID"));
  journal.JobAmount(number, ToDollars(row.Cents("Amount")));
}

// A row that has a job belongs to the labor list, the others to the pay list.
bool IsLabor(const CsvRow& row) { return !row.Text("JobID").empty(); }

void FillPayRows(PayrollJournal& journal, Document paycheck) {
  std::int16_t number = 0;
  for (const CsvRow& row : paycheck) {
    if (IsLabor(row)) continue;
    journal.NDistributions(++number);
    FillPayRow(journal, number, row);
  }
}

void FillJobRows(PayrollJournal& journal, JobData& job, Document paycheck) {
  std::int16_t number = 0;
  for (const CsvRow& row : paycheck) {
    if (!IsLabor(row)) continue;
    journal.NLaborDistributions(++number);
    FillJobRow(journal, number, job, row);
  }
}

// Both lists share the one row in hand. Asking for pay row 0 puts the last pay row away, before it
// would be overwritten by what belongs to a labor row.
void FillLists(PayrollJournal& journal, JobData& job, Document paycheck) {
  for (const CsvRow& row : paycheck) CheckPay(row);
  journal.NDistributions(0);
  journal.NLaborDistributions(0);
  FillPayRows(journal, paycheck);
  journal.PayAmount(0);
  FillJobRows(journal, job, paycheck);
}

void FillHours(PayrollJournal& journal, Document paycheck) {
  for (const CsvRow& row : paycheck) {
    const std::int16_t level = row.Integer("Level");
    if (level == 0) continue;
    journal.HoursSalaryAmount(level, journal.HoursSalaryAmount(level) + row.Number("Hours"));
  }
}

void FillPaycheck(PayrollJournal& journal, JobData& job, Document paycheck) {
  const CsvRow& first = paycheck.front();
  larkmoor::Employee employee;
  Check(employee.OpenFile(), "Opening the employees");
  Check(employee.GetEqual(first.Text("EmployeeID")), "Finding an employee");
  journal.CheckNumber(first.Text("CheckNumber"));
  journal.EmployeeID(employee.EmployeeID());
  journal.EmployeeName(employee.EmployeeName());
  journal.PayPeriodEnd(first.Day("PayPeriodEnd"));
  FillHours(journal, paycheck);
  FillLists(journal, job, paycheck);
  journal.MainAccount("1020");
  journal.CashAmount(ToDollars(Counterpart(paycheck)));
}

}  // namespace

Posted PostPaychecks(const Folder& data, TransactionNumbers& numbers) {
  JobData job;
  Check(job.OpenFile(), "Opening the jobs");
  return PostDocuments<PayrollJournal>(
      {data / "paychecks.csv", "CheckNumber", larkmoor::tovJournalCodePayroll}, numbers,
      [&](PayrollJournal& journal, Document paycheck) { FillPaycheck(journal, job, paycheck); });
}

}  // namespace fjord
