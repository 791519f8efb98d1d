// The general ledger: what all transactions of all journals post to the accounts.
//
// A header posts its amount to its main account, and each row its amount to its own, debits above 0
// and credits below. Orders and quotes post nothing.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include <larkmoor/currency.h>
#include <larkmoor/date.h>

#include "header_walk.h"
#include "journals/row_file.h"

namespace larkmoor::cli {

struct Account {
  std::string id;
  std::string description;
  std::int16_t type = UnknownType;

  /// Of what is posted to no account of the chart.
  static constexpr std::int16_t UnknownType = -1;
  /// The name of the type, empty for an unknown one.
  [[nodiscard]] std::string TypeText() const;
};

/// The accounts of the connected company by their indexes. Raises a `Failure` with the status where
/// the chart cannot be read.
std::map<std::int32_t, Account> ReadAccounts();
/// The account of an index; one that says so where there is none.
Account AccountOf(const std::map<std::int32_t, Account>& accounts, std::int32_t index);

struct Posting {
  std::int32_t account = 0;  ///< its index
  Currency amount;
  std::string text;
};

/// A transaction as it stands in the ledger.
struct LedgerEntry {
  std::int32_t nRecord = 0;
  Date date;
  std::string number;
  std::string name;
  std::vector<Posting> postings;

  /// What the postings add up to, which is 0.00 in books that are in order.
  [[nodiscard]] Currency Total() const;
};

/// Goes through all transactions that post, by date.
class LedgerWalk {
 public:
  /// `output` tells what comes of the transactions while they are walked.
  explicit LedgerWalk(Output output);

  /// Takes the next transaction in hand; false at the end. Raises a `Failure` with the status where
  /// a file cannot be read.
  bool Next();
  [[nodiscard]] const LedgerEntry& Entry() const { return entry_; }

  /// Reports on standard error the transactions so far that are out of balance, if any.
  void ReportImbalances() const;

 private:
  void Fill();
  void AddRows();
  void Post(std::int32_t account, double amount, const std::string& text);

  HeaderWalk headers_;
  RowFile rows_;
  LedgerEntry entry_;
  std::vector<std::int32_t> outOfBalance_;
};

/// The balance of each account that anything is posted to, by its index.
std::map<std::int32_t, Currency> AccountBalances();

}  // namespace larkmoor::cli
