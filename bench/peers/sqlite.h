// SQLite as a good programmer opens and asks it: a write-ahead log, the file mapped into memory,
// prepared statements.
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <span>
#include <string>
#include <string_view>

#include <sqlite3.h>

#include "support.h"

namespace larkmoor::bench {

/// What is safe when a commit returns.
enum class Synchronous {
  Normal,  ///< against the death of the process; loss of power takes the last commits
  Full     ///< against loss of power, too
};

/// An open database, made where there is none.
class Database {
 public:
  explicit Database(const std::filesystem::path& path, Synchronous synchronous);
  ~Database() { sqlite3_close(handle_); }
  Database(const Database&) = delete;
  Database& operator=(const Database&) = delete;

  [[nodiscard]] sqlite3* Handle() const { return handle_; }
  /// How many rows the last statement changed.
  [[nodiscard]] int Changes() const { return sqlite3_changes(handle_); }
  void Run(const char* statements) {
    Check(sqlite3_exec(handle_, statements, nullptr, nullptr, nullptr) == SQLITE_OK, statements);
  }

 private:
  sqlite3* handle_ = nullptr;
};

/// A prepared statement.
class Statement {
 public:
  Statement(const Database& database, std::string_view text);
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
  [[nodiscard]] std::int64_t Long(int column) { return sqlite3_column_int64(handle_, column); }
  [[nodiscard]] double Real(int column) { return sqlite3_column_double(handle_, column); }
  [[nodiscard]] std::string_view Text(int column);
  void Read(int column, std::int32_t& value) { value = Integer(column); }
  void Read(int column, std::string& value) { value = Text(column); }

  // The values of a statement that was started anew, by their places from 1. Texts and bytes are to
  // last until it has run.
  void Bind(int place, std::int32_t value) { sqlite3_bind_int(handle_, place, value); }
  void Bind(int place, std::int64_t value) { sqlite3_bind_int64(handle_, place, value); }
  void Bind(int place, double value) { sqlite3_bind_double(handle_, place, value); }
  void Bind(int place, std::string_view value);
  void Bind(int place, std::span<const std::byte> value);
  void BindNull(int place) { sqlite3_bind_null(handle_, place); }

 private:
  sqlite3_stmt* handle_ = nullptr;
};

}  // namespace larkmoor::bench
