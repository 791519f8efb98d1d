// Transactions as a client of the library keeps them: in a company, through the class of their
// journal.
#pragma once

#include <filesystem>
#include <span>

#include <larkmoor/journals/payroll_journal.h>
#include <larkmoor/journals/purchase_journal.h>
#include <larkmoor/journals/sales_journal.h>

#include "support.h"
#include "transactions.h"

namespace larkmoor::bench {

template <typename Book>
class LarkmoorJournal {
 public:
  explicit LarkmoorJournal(const std::filesystem::path& place);

  /// Reads all transactions in the order of their periods.
  Totals Walk();
  Totals Find(const Wanted& wanted);
  void Insert(const Transaction& transaction);
  /// Inserts all of them in one commit a file.
  void Load(std::span<const Transaction> transactions);

 private:
  Company company_;
  typename Book::Journal journal_;
};

extern template class LarkmoorJournal<Sales>;
extern template class LarkmoorJournal<Purchases>;
extern template class LarkmoorJournal<Paychecks>;

}  // namespace larkmoor::bench
