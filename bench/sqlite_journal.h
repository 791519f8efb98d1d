// Transactions as a good programmer would keep them in SQLite: columns with their own types, an
// index for each way of looking, the rows of a transaction side by side.
#pragma once

#include <cstdint>
#include <filesystem>
#include <span>
#include <string_view>

#include <sqlite3.h>

#include "support.h"
#include "transactions.h"

namespace larkmoor::bench {

/// A prepared statement.
class Statement {
 public:
  Statement(sqlite3* database, std::string_view text);
  ~Statement() { sqlite3_finalize(handle_); }
  Statement(const Statement&) = delete;
  Statement& operator=(const Statement&) = delete;

  /// Starts anew with these values.
  template <typename... Values>
  void Start(const Values&... values) {
    sqlite3_reset(handle_);
    int place = 0;
    (Bind(++place, values), ...);
  }
  /// Goes to the next row. False behind the last one.
  bool Step();
  /// Lets go of the row in hand, and with the last such statement of the state that was read.
  void End() { sqlite3_reset(handle_); }
  /// For a statement that gives no rows.
  template <typename... Values>
  void Run(const Values&... values) {
    Start(values...);
    Check(!Step(), "no rows wanted");
  }

  // Columns of the row in hand. A text lasts until the next step.
  [[nodiscard]] std::int32_t Integer(int column) { return sqlite3_column_int(handle_, column); }
  [[nodiscard]] double Real(int column) { return sqlite3_column_double(handle_, column); }
  [[nodiscard]] std::string_view Text(int column);

 private:
  void Bind(int place, std::int32_t value) { sqlite3_bind_int(handle_, place, value); }
  void Bind(int place, double value) { sqlite3_bind_double(handle_, place, value); }
  void Bind(int place, std::string_view value);

  sqlite3_stmt* handle_ = nullptr;
};

class SqliteTransactions {
 public:
  SqliteTransactions(const std::filesystem::path& place, std::int16_t journal);

  // As those of `LarkmoorJournal`.

  /// A query for the next header and one for its rows, transaction by transaction. As between two
  /// reads of the journal, nothing is held between two of them: each shows what was committed last.
  Totals Walk();
  /// One query for all headers, open from the start to the end, and one for the rows of each.
  Totals WalkInOneQuery();
  Totals Find(const Wanted& wanted);
  void Load(std::span<const Transaction> transactions);

 private:
  /// The database with its tables in it.
  class Database {
   public:
    explicit Database(const std::filesystem::path& path);
    ~Database() { sqlite3_close(handle_); }
    Database(const Database&) = delete;
    Database& operator=(const Database&) = delete;

    [[nodiscard]] sqlite3* Handle() const { return handle_; }
    void Run(const char* statements) {
      Check(sqlite3_exec(handle_, statements, nullptr, nullptr, nullptr) == SQLITE_OK, statements);
    }

   private:
    sqlite3* handle_ = nullptr;
  };

  void AddTo(Totals& totals, Statement& header);
  void Insert(const Transaction& from);

  std::int32_t journal_;
  Folder folder_;
  Database database_;
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
  explicit SqliteJournal(const std::filesystem::path& place)
      : SqliteTransactions(place, Book::Code) {}
};

}  // namespace larkmoor::bench
