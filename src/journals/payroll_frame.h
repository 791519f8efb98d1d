// A journal of paychecks: rows in two lists, and the file of employees beside the chart of
// accounts.
#pragma once

#include "journals/journal_frame.h"
#include "journals/payroll_rows.h"
#include "tables/master_look_up.h"

namespace larkmoor {

class PayrollFrame final : public JournalFrame {
 public:
  PayrollFrame(std::string_view name, std::int16_t code) : JournalFrame(name, code, rows_, {}) {}

  /// Opens the employees too and returns that status. Accounts and employees that cannot be opened
  /// leave the rest open.
  Status OpenFile();
  Status CloseFile();

  std::int16_t NDistributions() { return Variant(rows_.Pay().loaded).ToInteger(); }
  void NDistributions(std::int16_t value) { rows_.SetPayCount(value); }
  std::int16_t NLaborDistributions() { return Variant(rows_.Job().loaded).ToInteger(); }
  void NLaborDistributions(std::int16_t value) { rows_.SetJobCount(value); }

  /// The row record with that row of the list in it, counted from 1.
  Tovrin2Record& PayRow(std::int16_t row) { return rows_.ShowPay(row); }
  Tovrin2Record& JobRow(std::int16_t row) { return rows_.ShowJob(row); }

  [[nodiscard]] MasterLookUp& Employees() { return employees_; }
  /// Whether the user was refused the file of employees at the open.
  [[nodiscard]] bool AreEmployeesDenied() const { return areEmployeesDenied_; }

 private:
  PayrollRows rows_{Rows()};
  MasterLookUp employees_{EmployeeTable};
  bool areEmployeesDenied_ = false;
};

}  // namespace larkmoor
