#include "concurrency/transfer_work.h"

#include <larkmoor/bulk_write.h>

#include "concurrency/table_traits.h"

namespace larkmoor::test {

double SumOfAccounts(Chart& chart) {
  double sum = 0;
  for (std::int32_t number = FirstAccount; number < FirstAccount + Accounts; ++number) {
    Require(chart.GetEqual(number) == StatusSuccess, "an account is gone");
    sum += chart.Activity(0);
  }
  return sum;
}

void TransferWork::Open() {
  Require(chart_.OpenFile() == StatusSuccess, "the accounts do not open");
  Require(customer_.OpenFile() == StatusSuccess, "the customers do not open");
}

void TransferWork::Reopen() {
  Require(chart_.CloseFile() == StatusSuccess, "the accounts do not close");
  Require(customer_.CloseFile() == StatusSuccess, "the customers do not close");
  Open();
}

void TransferWork::Do() {
  BulkWrite bulk;
  if (!PassBothGates()) return;
  Require(SumOfAccounts(chart_) == HeldByAccounts, "the accounts do not add up in one state");
  if (worker_.dice.OneIn(3)) return;  // an audit, which leaves nothing
  MoveSomething();
  worker_.Count(Kind::Transaction, bulk.Commit(), "Commit");
  ++worker_.tally.transfers;
}

template <typename Table>
Status TransferWork::PassTheGate(Table& table) {
  worker_.Count(Kind::Read, Traits<Table>::Get(table, Gate), "a gate");
  table.LastUpdateCounter(table.LastUpdateCounter() + 1);
  return worker_.Count(Kind::Write, table.Update(), "Update of a gate", {StatusRecordConflict});
}

bool TransferWork::PassBothGates() {
  const bool accountsFirst = worker_.dice.OneIn(2);
  const Status first = accountsFirst ? PassTheGate(chart_) : PassTheGate(customer_);
  if (first != StatusSuccess) return false;
  const Status second = accountsFirst ? PassTheGate(customer_) : PassTheGate(chart_);
  Require(second == StatusSuccess, "two transfers are under way at once");
  return true;
}

void TransferWork::MoveSomething() {
  const double amount = worker_.dice.Below(1000);
  for (const double change : {-amount, amount}) {
    const std::int32_t account = FirstAccount + worker_.dice.Below(Accounts);
    worker_.Count(Kind::Read, chart_.GetEqual(account), "an account");
    chart_.Activity(0, chart_.Activity(0) + change);
    worker_.Count(Kind::Write, chart_.Update(), "Update of an account");
  }
}

}  // namespace larkmoor::test
