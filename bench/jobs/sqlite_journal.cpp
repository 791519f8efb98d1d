#include "jobs/sqlite_journal.h"

#include <string>

namespace larkmoor::bench {
namespace {

constexpr const char* DatabaseName = "journal.db";
constexpr const char* Schema = R"(
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
/// The columns that the library is asked for, under its names.
constexpr std::string_view ExportQuery =
    "SELECT reference, date(h.date + 2415018.5), party_name, h.amount, description, quantity, "
    "unit_price, l.amount FROM header h JOIN line l ON l.header = h.id ORDER BY h.id, number";
constexpr std::string_view LineInsert = "INSERT INTO line VALUES (?,?,?,?,?,?,?,?,?,?,?)";

}  // namespace

SqliteTransactions::Tables::Tables(const std::filesystem::path& path, Synchronous synchronous)
    : Database(path, synchronous) {
  Run(Schema);
}

SqliteTransactions::SqliteTransactions(const std::filesystem::path& place, std::int16_t journal,
                                       Synchronous synchronous)
    : journal_(journal),
      folder_(place),
      database_(folder_.Path() / DatabaseName, synchronous),
      walk_(database_, WalkQuery),
      next_(database_, NextQuery),
      findReference_(database_, FindReferenceQuery),
      findNumber_(database_, FindNumberQuery),
      rows_(database_, RowsQuery),
      insertHeader_(database_, HeaderInsert),
      insertRow_(database_, LineInsert) {}

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

void SqliteTransactions::Insert(const Transaction& transaction) {
  database_.Run("BEGIN");
  Add(transaction);
  database_.Run("COMMIT");
}

void SqliteTransactions::Add(const Transaction& from) {
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
  for (const Transaction& each : transactions) Add(each);
  database_.Run("COMMIT");
}

std::string SqliteTransactions::ExportTo(const std::filesystem::path& file) const {
  return "sqlite3 -csv -header " + (folder_.Path() / DatabaseName).string() + " \"" +
         std::string(ExportQuery) + "\" > " + file.string();
}

}  // namespace larkmoor::bench
