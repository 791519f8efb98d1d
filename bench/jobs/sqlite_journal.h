// Transactions as a good programmer would keep them in SQLite: columns with their own types, an
// index for each way of looking, the rows of a transaction side by side.
#pragma once

#include <cstdint>
#include <filesystem>
#include <span>
#include <string>
#include <string_view>

#include "data/transactions.h"
#include "peers/sqlite.h"
#include "support.h"

namespace larkmoor::bench {

class SqliteTransactions {
 public:
  SqliteTransactions(const std::filesystem::path& place, std::int16_t journal,
                     Synchronous synchronous);

  // As those of `LarkmoorJournal`.

  /// A query for the next header and one for its rows, transaction by transaction. As between two
  /// reads of the journal, nothing is held between two of them: each shows what was committed last.
  Totals Walk();
  /// One query for all headers, open from the start to the end, and one for the rows of each.
  Totals WalkInOneQuery();
  Totals Find(const Wanted& wanted);
  void Insert(const Transaction& transaction);
  void Load(std::span<const Transaction> transactions);
  /// The command that writes a line for each row as CSV.
  [[nodiscard]] std::string ExportTo(const std::filesystem::path& file) const;

 private:
  /// The database with its tables in it.
  class Tables : public Database {
   public:
    Tables(const std::filesystem::path& path, Synchronous synchronous);
  };

  void AddTo(Totals& totals, Statement& header);
  void Add(const Transaction& from);

  std::int32_t journal_;
  Folder folder_;
  Tables database_;
  Statement walk_;
  Statement next_;
  Statement findReference_;
  Statement findNumber_;
  Statement rows_;
  Statement insertHeader_;
  Statement insertRow_;
};

template <typename Book>
class SqliteJournal : public SqliteTransactions {
 public:
  static constexpr std::string_view Name = "sqlite";
  explicit SqliteJournal(const std::filesystem::path& place)
      : SqliteTransactions(place, Book::Code, Synchronous::Normal) {}
};

template <typename Book>
class FullSqliteJournal : public SqliteTransactions {
 public:
  static constexpr std::string_view Name = "sqlite_full";
  explicit FullSqliteJournal(const std::filesystem::path& place)
      : SqliteTransactions(place, Book::Code, Synchronous::Full) {}
};

}  // namespace larkmoor::bench
