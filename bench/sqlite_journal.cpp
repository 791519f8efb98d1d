#include "sqlite_journal.h"

#include <string>

namespace larkmoor::bench {
namespace {

constexpr const char* Schema = R"(
  PRAGMA journal_mode = WAL;
  PRAGMA synchronous = NORMAL;
  PRAGMA mmap_size = 4294967296;
  PRAGMA cache_size = -65536;
  CREATE TABLE header (
    id             INTEGER PRIMARY KEY,
    journal        INTEGER NOT NULL,
    period         INTEGER NOT NULL,
    trx_number     INTEGER NOT NULL,
    reference      TEXT NOT NULL,
    purchase_order TEXT NOT NULL,
    party          INTEGER NOT NULL,
    party_name     TEXT NOT NULL,
    ship_name      TEXT NOT NULL,
    ship_street    TEXT NOT NULL,
    ship_city      TEXT NOT NULL,
    ship_state     TEXT NOT NULL,
    ship_zipcode   TEXT NOT NULL,
    ship_method    TEXT NOT NULL,
    terms          TEXT NOT NULL,
    tax_code       TEXT NOT NULL,
    date           REAL NOT NULL,
    date_due       REAL NOT NULL,
    period_end     REAL NOT NULL,
    amount         REAL NOT NULL,
    account        INTEGER NOT NULL,
    posted         INTEGER NOT NULL
  );
  CREATE INDEX header_by_period    ON header (journal, period, reference);
  CREATE INDEX header_by_reference ON header (reference, journal);
  CREATE INDEX header_by_party     ON header (journal, party, reference);
  CREATE TABLE line (
    header      INTEGER NOT NULL REFERENCES header (id),
    number      INTEGER NOT NULL,
    date        INTEGER NOT NULL,
    account     INTEGER NOT NULL,
    item        INTEGER NOT NULL,
    party       INTEGER NOT NULL,
    tax_type    INTEGER NOT NULL,
    description TEXT NOT NULL,
    quantity    REAL NOT NULL,
    unit_price  REAL NOT NULL,
    amount      REAL NOT NULL,
    PRIMARY KEY (header, number)
  ) WITHOUT ROWID;
  CREATE INDEX line_by_account ON line (account, date, header);
)";

constexpr std::string_view WalkQuery =
    "SELECT id, reference, date, amount FROM header WHERE journal = ? ORDER BY period, reference";
constexpr std::string_view NextQuery =
    "SELECT id, reference, date, amount, period FROM header "
    "WHERE journal = ? AND (period, reference) > (?, ?) ORDER BY period, reference LIMIT 1";
constexpr std::string_view FindReferenceQuery =
    "SELECT id, reference, date, amount FROM header WHERE reference = ? AND journal = ?";
constexpr std::string_view FindNumberQuery =
    "SELECT id, reference, date, amount FROM header WHERE id = ?";
constexpr std::string_view RowsQuery =
    "SELECT description, quantity, amount FROM line WHERE header = ? ORDER BY number";
constexpr std::string_view HeaderInsert =
    "INSERT INTO header VALUES (?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?)";
constexpr std::string_view LineInsert = "INSERT INTO line VALUES (?,?,?,?,?,?,?,?,?,?,?)";

}  // namespace

Statement::Statement(sqlite3* database, std::string_view text) {
  const int code = sqlite3_prepare_v3(database, text.data(), static_cast<int>(text.size()),
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

SqliteTransactions::Database::Database(const std::filesystem::path& path) {
  constexpr int Flags = SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE | SQLITE_OPEN_NOMUTEX;
  Check(sqlite3_open_v2(path.c_str(), &handle_, Flags, nullptr) == SQLITE_OK, "database");
  Run(Schema);
}

SqliteTransactions::SqliteTransactions(const std::filesystem::path& place, std::int16_t journal)
    : journal_(journal),
      folder_(place),
      database_(folder_.Path() / "journal.db"),
      walk_(database_.Handle(), WalkQuery),
      next_(database_.Handle(), NextQuery),
      findReference_(database_.Handle(), FindReferenceQuery),
      findNumber_(database_.Handle(), FindNumberQuery),
      rows_(database_.Handle(), RowsQuery),
      insertHeader_(database_.Handle(), HeaderInsert),
      insertRow_(database_.Handle(), LineInsert) {}

Totals SqliteTransactions::Walk() {
  Totals totals;
  std::int32_t period = 0;
  std::string reference;
  for (;;) {
    next_.Start(journal_, period, reference);
    if (!next_.Step()) return totals;
    AddTo(totals, next_);
    period = next_.Integer(4);
    reference = next_.Text(1);
    next_.End();
  }
}

Totals SqliteTransactions::WalkInOneQuery() {
  Totals totals;
  walk_.Start(journal_);
  while (walk_.Step()) AddTo(totals, walk_);
  return totals;
}

Totals SqliteTransactions::Find(const Wanted& wanted) {
  Totals totals;
  Statement& find = wanted.reference.empty() ? findNumber_ : findReference_;
  if (wanted.reference.empty()) {
    find.Start(wanted.number);
  } else {
    find.Start(std::string_view(wanted.reference), journal_);
  }
  while (find.Step()) AddTo(totals, find);
  return totals;
}

void SqliteTransactions::AddTo(Totals& totals, Statement& header) {
  totals.AddHeader(header.Text(1), header.Real(2), header.Real(3));
  rows_.Start(header.Integer(0));
  while (rows_.Step()) totals.AddRow(rows_.Text(0), rows_.Real(1), rows_.Real(2));
}

void SqliteTransactions::Insert(const Transaction& from) {
  constexpr std::int32_t Posted = 1;
  insertHeader_.Run(from.number, journal_, std::int32_t{from.period}, from.number, from.reference,
                    from.purchaseOrder, from.party, from.partyName, from.shipName, from.street,
                    from.city, from.state, from.zipcode, from.shipMethod, from.terms, from.taxCode,
                    from.date, from.dateDue, from.periodEnd, from.amount, from.mainAccount, Posted);
  std::int32_t number = 0;
  for (const Line& line : from.lines) {
    insertRow_.Run(from.number, ++number, static_cast<std::int32_t>(from.date), line.account,
                   line.item, from.party, std::int32_t{line.taxType}, line.description,
                   line.quantity, line.unitPrice, line.amount);
  }
}

void SqliteTransactions::Load(std::span<const Transaction> transactions) {
  database_.Run("BEGIN");
  for (const Transaction& each : transactions) Insert(each);
  database_.Run("COMMIT");
}

}  // namespace larkmoor::bench
