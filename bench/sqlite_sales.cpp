#include "sqlite_sales.h"

namespace larkmoor::bench {
namespace {

constexpr const char* Schema = R"(
  PRAGMA journal_mode = WAL;
  PRAGMA synchronous = NORMAL;
  PRAGMA mmap_size = 4294967296;
  PRAGMA cache_size = -65536;
  CREATE TABLE sale (
    id             INTEGER PRIMARY KEY,
    journal        INTEGER NOT NULL,
    period         INTEGER NOT NULL,
    trx_number     INTEGER NOT NULL,
    reference      TEXT NOT NULL,
    purchase_order TEXT NOT NULL,
    customer       INTEGER NOT NULL,
    customer_name  TEXT NOT NULL,
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
    amount         REAL NOT NULL,
    account        INTEGER NOT NULL,
    posted         INTEGER NOT NULL
  );
  CREATE INDEX sale_by_period    ON sale (journal, period, reference);
  CREATE INDEX sale_by_reference ON sale (reference, journal);
  CREATE INDEX sale_by_customer  ON sale (journal, customer, reference);
  CREATE TABLE sale_row (
    sale        INTEGER NOT NULL REFERENCES sale (id),
    line        INTEGER NOT NULL,
    date        INTEGER NOT NULL,
    account     INTEGER NOT NULL,
    item        INTEGER NOT NULL,
    customer    INTEGER NOT NULL,
    tax_type    INTEGER NOT NULL,
    description TEXT NOT NULL,
    quantity    REAL NOT NULL,
    unit_price  REAL NOT NULL,
    amount      REAL NOT NULL,
    PRIMARY KEY (sale, line)
  ) WITHOUT ROWID;
  CREATE INDEX sale_row_by_account ON sale_row (account, date, sale);
)";

constexpr std::string_view WalkQuery =
    "SELECT id, reference, date, amount FROM sale WHERE journal = ? ORDER BY period, reference";
constexpr std::string_view NextQuery =
    "SELECT id, reference, date, amount, period FROM sale "
    "WHERE journal = ? AND (period, reference) > (?, ?) ORDER BY period, reference LIMIT 1";
constexpr std::string_view FindQuery =
    "SELECT id, reference, date, amount FROM sale WHERE reference = ? AND journal = ?";
constexpr std::string_view RowsQuery =
    "SELECT description, quantity, amount FROM sale_row WHERE sale = ? ORDER BY line";
constexpr std::string_view SaleInsert =
    "INSERT INTO sale VALUES (?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?)";
constexpr std::string_view RowInsert = "INSERT INTO sale_row VALUES (?,?,?,?,?,?,?,?,?,?,?)";

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

SqliteSales::Database::Database(const std::filesystem::path& path) {
  constexpr int Flags = SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE | SQLITE_OPEN_NOMUTEX;
  Check(sqlite3_open_v2(path.c_str(), &handle_, Flags, nullptr) == SQLITE_OK, "database");
  Run(Schema);
}

SqliteSales::SqliteSales(const std::filesystem::path& place)
    : folder_(place),
      database_(folder_.Path() / "sales.db"),
      walk_(database_.Handle(), WalkQuery),
      next_(database_.Handle(), NextQuery),
      find_(database_.Handle(), FindQuery),
      rows_(database_.Handle(), RowsQuery),
      insertSale_(database_.Handle(), SaleInsert),
      insertRow_(database_.Handle(), RowInsert) {}

Totals SqliteSales::Walk() {
  Totals totals;
  std::int32_t period = 0;
  std::string reference;
  for (;;) {
    next_.Start(std::int32_t{Sale::Journal}, period, reference);
    if (!next_.Step()) return totals;
    AddTo(totals, next_);
    period = next_.Integer(4);
    reference = next_.Text(1);
    next_.End();
  }
}

Totals SqliteSales::WalkInOneQuery() {
  Totals totals;
  walk_.Start(std::int32_t{Sale::Journal});
  while (walk_.Step()) AddTo(totals, walk_);
  return totals;
}

Totals SqliteSales::Find(const std::string& invoice) {
  Totals totals;
  find_.Start(std::string_view(invoice), std::int32_t{Sale::Journal});
  while (find_.Step()) AddTo(totals, find_);
  return totals;
}

void SqliteSales::AddTo(Totals& totals, Statement& header) {
  totals.AddSale(header.Text(1), header.Real(2), header.Real(3));
  rows_.Start(header.Integer(0));
  while (rows_.Step()) totals.AddRow(rows_.Text(0), rows_.Real(1), rows_.Real(2));
}

void SqliteSales::Insert(const Sale& sale) {
  constexpr std::int32_t Posted = 1;
  insertSale_.Run(sale.number, std::int32_t{Sale::Journal}, std::int32_t{sale.period}, sale.number,
                  sale.invoice, sale.purchaseOrder, sale.customer, sale.customerName,
                  sale.customerName, sale.street, sale.city, sale.state, sale.zipcode, ShipMethod,
                  Terms, TaxCode, sale.date, sale.dateDue, sale.amount, Receivables, Posted);
  std::int32_t number = 0;
  for (const SaleLine& line : sale.lines) {
    insertRow_.Run(sale.number, ++number, static_cast<std::int32_t>(sale.date), line.account,
                   line.item, sale.customer, std::int32_t{line.taxType}, line.description,
                   line.quantity, line.unitPrice, line.amount);
  }
}

void SqliteSales::Load(std::span<const Sale> sales) {
  database_.Run("BEGIN");
  for (const Sale& sale : sales) Insert(sale);
  database_.Run("COMMIT");
}

}  // namespace larkmoor::bench
