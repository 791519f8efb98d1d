// The sales as a client of the library keeps them: in a company, through the sales journal.
#pragma once

#include <filesystem>
#include <span>
#include <string>

#include <larkmoor/journals/sales_journal.h>

#include "sales.h"
#include "support.h"

namespace larkmoor::bench {

class LarkmoorSales {
 public:
  explicit LarkmoorSales(const std::filesystem::path& place);

  /// Reads all sales in the order of their periods.
  Totals Walk();
  /// Reads the sale of that invoice number.
  Totals Find(const std::string& invoice);
  void Insert(const Sale& sale);
  /// Inserts all of them in one commit a file.
  void Load(std::span<const Sale> sales);

 private:
  void AddAccounts();
  void AddTo(Totals& totals);
  void SetHeader(const Sale& sale);
  void SetRow(std::int16_t row, const SaleLine& line, std::int32_t customer);

  Company company_;
  SalesJournal journal_;
};

}  // namespace larkmoor::bench
