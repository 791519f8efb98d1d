#include "peers/sqlite.h"

namespace larkmoor::bench {

Database::Database(const std::filesystem::path& path, Synchronous synchronous) {
  constexpr int Flags = SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE | SQLITE_OPEN_NOMUTEX;
  Check(sqlite3_open_v2(path.c_str(), &handle_, Flags, nullptr) == SQLITE_OK, "database");
  Run("PRAGMA journal_mode = WAL; PRAGMA mmap_size = 4294967296; PRAGMA cache_size = -65536");
  Run(synchronous == Synchronous::Full ? "PRAGMA synchronous = FULL"
                                       : "PRAGMA synchronous = NORMAL");
}

Statement::Statement(const Database& database, std::string_view text) {
  const int code = sqlite3_prepare_v3(database.Handle(), text.data(), static_cast<int>(text.size()),
                                      SQLITE_PREPARE_PERSISTENT, &handle_, nullptr);
  Check(code == SQLITE_OK, "prepare");
}

bool Statement::Step() {
  const int code = sqlite3_step(handle_);
  if (code == SQLITE_ROW) return true;
  Check(code == SQLITE_DONE, "step");
  sqlite3_reset(handle_);
  return false;
}

std::string_view Statement::Text(int column) {
  const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(handle_, column));
  return {text, static_cast<std::size_t>(sqlite3_column_bytes(handle_, column))};
}

void Statement::Bind(int place, std::string_view value) {
  sqlite3_bind_text(handle_, place, value.data(), static_cast<int>(value.size()), SQLITE_STATIC);
}

void Statement::Bind(int place, std::span<const std::byte> value) {
  sqlite3_bind_blob(handle_, place, value.data(), static_cast<int>(value.size()), SQLITE_STATIC);
}

}  // namespace larkmoor::bench
