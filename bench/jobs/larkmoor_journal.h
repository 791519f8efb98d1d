// Transactions as a client of the library keeps them: in a company, through the class of their
// journal.
#pragma once

#include <filesystem>
#include <span>
#include <string>
#include <string_view>

#include <larkmoor/journals/payroll_journal.h>
#include <larkmoor/journals/purchase_journal.h>
#include <larkmoor/journals/sales_journal.h>

#include "data/transactions.h"
#include "support.h"

namespace larkmoor::bench {

template <typename Book>
class LarkmoorJournal {
 public:
  static constexpr std::string_view Name = "larkmoor";

  explicit LarkmoorJournal(const std::filesystem::path& place);

  /// Reads all transactions in the order of their periods.
  Totals Walk();
  Totals Find(const Wanted& wanted);
  void Insert(const Transaction& transaction);
  /// Inserts all of them in one commit a file.
  void Load(std::span<const Transaction> transactions);
  /// The command that writes a line for each row of an invoice as CSV.
  [[nodiscard]] std::string ExportTo(const std::filesystem::path& file) const;

 private:
  Company company_;
  typename Book::Journal journal_;
};

extern template class LarkmoorJournal<Sales>;
extern template class LarkmoorJournal<Purchases>;
extern template class LarkmoorJournal<Paychecks>;

}  // namespace larkmoor::bench
