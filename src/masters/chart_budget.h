// The budget of an account as `Chart` shows it from release 14 on: amounts that lie in two files of
// their own and are read once an open.
#pragma once

#include <array>
#include <cstdint>
#include <string>

#include "tables/record_file.h"

namespace larkmoor {

/// The amounts belong to the open of the chart and not to an account: those read first serve every
/// account that the object visits. Old clients count on it.
class ChartBudget {
 public:
  static constexpr std::int16_t LastPeriod = 55;

  ChartBudget();

  /// The amount of a period, 0 to 55. Raises 0x80040201 where the files cannot be opened; where the
  /// user is refused, the amounts are kept in memory alone.
  double Amount(std::int16_t period);
  void SetAmount(std::int16_t period, double amount);
  /// Writes all amounts to the row of an account, where any was set. Tells no status.
  void Write(const std::string& accountGUID);
  /// Closes the files and forgets the amounts.
  void Forget();
  /// Closes the files. Appends a line for each close that fails, and sets `failure` to its status.
  void Close(std::string& message, Status& failure);

 private:
  void Load();
  bool OpenFiles();
  void FindBudget();

  RecordFile budgets_;
  RecordFile details_;
  std::array<double, LastPeriod + 1> amounts_{};
  std::string budgetGUID_;  // empty until the budget was found
  bool areFilesOpen_ = false;
  bool isLoaded_ = false;
  bool isChanged_ = false;
  bool isUnavailable_ = false;
};

/// Appends a line about a close where it failed, and sets `failure` to its status.
void NoteClose(Status status, std::string_view file, std::string& message, Status& failure);

}  // namespace larkmoor
