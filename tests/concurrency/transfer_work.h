// Transfers between accounts, each in one `BulkWrite` over two files, and audits of all accounts.
#pragma once

#include <larkmoor/masters/chart.h>
#include <larkmoor/masters/customer.h>

#include "concurrency/load_work.h"

namespace larkmoor::test {

// The accounts lie behind the counted records. The first one, and the customer of its number, count
// the transfers; what the others hold is the same in all.
inline constexpr std::int32_t Gate = CountedRecords + 1;
inline constexpr std::int32_t FirstAccount = Gate + 1;
inline constexpr std::int32_t Accounts = 10;
inline constexpr double HeldByAccounts = 10'000;

/// What the accounts hold in all.
double SumOfAccounts(Chart& chart);

/// Whoever passes a gate inside of a `BulkWrite` has the file to itself until the end: it reads one
/// state of it, and nothing that it writes answers 80. The two gates are passed in either order, so
/// that any two transfers would stand in each other's way if they did not take turns.
class TransferWork : public Work {
 public:
  explicit TransferWork(Worker& worker) : worker_(worker) { Open(); }
  [[nodiscard]] const char* Name() const override { return "transfers"; }
  void Do() override;
  void Reopen() override;

 private:
  void Open();
  template <typename Table>
  Status PassTheGate(Table& table);
  bool PassBothGates();
  void MoveSomething();

  Worker& worker_;
  Chart chart_;
  Customer customer_;
};

}  // namespace larkmoor::test
