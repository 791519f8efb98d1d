#include "lmdb_sales.h"

#include <algorithm>
#include <cstring>

#include "engine/store/lmdb/record_value.h"

namespace larkmoor::bench {
namespace {

using Header = JrnlHdrRecord;
using Row = JrnlRowRecord;

// The paths of the header file and of the row file that this program walks; the others are only
// kept.
constexpr int ByNRecord = 1;
constexpr int ByReference = 4;
constexpr int ByPeriod = 7;
constexpr int RowsInOrder = 1;

// Fields of a record.

template <typename T>
T Get(std::span<const std::byte> record, const Field& field) {
  T value;
  std::memcpy(&value, record.data() + field.offset, sizeof value);
  return value;
}

std::string_view GetText(std::span<const std::byte> record, const Field& field) {
  const auto* text = reinterpret_cast<const char*>(record.data()) + field.offset;
  return {text, strnlen(text, field.width)};
}

template <typename T>
void Put(std::span<std::byte> record, const Field& field, T value) {
  std::memcpy(record.data() + field.offset, &value, sizeof value);
}

void PutText(std::span<std::byte> record, const Field& field, std::string_view value) {
  std::memcpy(record.data() + field.offset, value.data(),
              std::min<std::size_t>(value.size(), field.width));
}

void FillHeader(std::span<std::byte> record, const Sale& sale) {
  constexpr std::int16_t True = -1;
  Put(record, Header::NRecord, sale.number);
  Put(record, Header::TrxNumberL, sale.number);
  Put(record, Header::Period, sale.period);
  Put(record, Header::JournalID, Sale::Journal);
  PutText(record, Header::Reference, sale.invoice);
  PutText(record, Header::PurchaseOrderNumber, sale.purchaseOrder);
  Put(record, Header::IDNumber, sale.customer);
  PutText(record, Header::Description, sale.customerName);
  PutText(record, Header::ShipToName, sale.customerName);
  PutText(record, Header::ShipToAddress1, sale.street);
  PutText(record, Header::ShipToCity, sale.city);
  PutText(record, Header::ShipToState, sale.state);
  PutText(record, Header::ShipToZipcode, sale.zipcode);
  PutText(record, Header::ShipVia, ShipMethod);
  PutText(record, Header::Terms, Terms);
  PutText(record, Header::SalesTaxCode, TaxCode);
  Put(record, Header::TrxDate, sale.date);
  Put(record, Header::DateDue, sale.dateDue);
  Put(record, Header::Amount, sale.amount);
  Put(record, Header::MainAccountIndex, Receivables);
  Put(record, Header::Posted, True);
}

void FillRow(std::span<std::byte> record, const Sale& sale, const SaleLine& line,
             std::int16_t number) {
  Put(record, Row::NRecord, sale.number);
  Put(record, Row::JournalID, std::int32_t{Sale::Journal});
  Put(record, Row::TrxDate, static_cast<std::int32_t>(sale.date));
  Put(record, Row::LineNo, number);
  PutText(record, Row::Description, line.description);
  Put(record, Row::AccountIndex, line.account);
  Put(record, Row::ItemIndex, line.item);
  Put(record, Row::CustomerIndex, sale.customer);
  Put(record, Row::TaxType, line.taxType);
  Put(record, Row::Quantity, line.quantity);
  Put(record, Row::UnitPrice, line.unitPrice);
  Put(record, Row::StockingQuantity, line.quantity);
  Put(record, Row::StockingUnitPrice, line.unitPrice);
  Put(record, Row::Amount, line.amount);
}

void AddHeaderKeys(LmdbWrite& write, const Sale& sale) {
  write.AddKey(LmdbKey::OfPath(0)
                   .Byte(0)
                   .Long(sale.number)
                   .Integer(sale.period)
                   .Integer(Sale::Journal)
                   .Byte(0));
  write.AddKey(LmdbKey::OfPath(ByNRecord).Long(sale.number));
  write.AddKey(LmdbKey::OfPath(ByReference).Text(sale.invoice));
  write.AddKey(
      LmdbKey::OfPath(ByPeriod).Integer(Sale::Journal).Integer(sale.period).Text(sale.invoice));
  write.AddKey(LmdbKey::OfPath(9).Integer(Sale::Journal).Long(sale.customer));
  write.AddKey(LmdbKey::OfPath(15).Integer(Sale::Journal).Long(sale.customer).Text(sale.invoice));
}

void AddRowKeys(LmdbWrite& write, const Sale& sale, const SaleLine& line) {
  const auto day = static_cast<std::int32_t>(sale.date);
  write.AddKey(LmdbKey::OfPath(0).Long(sale.number));
  write.AddKey(LmdbKey::OfPath(RowsInOrder).Long(sale.number).Integer(0));
  write.AddKey(LmdbKey::OfPath(2).Long(line.account).Long(day).Long(sale.number));
  write.AddKey(LmdbKey::OfPath(6).Long(0).Long(day));
}

}  // namespace

LmdbKey& LmdbKey::Text(std::string_view value) {
  std::memcpy(bytes_.data() + size_, value.data(), value.size());
  size_ += value.size();
  return Byte(0);
}

bool LmdbKey::Begins(const MDB_val& entry) const {
  return entry.mv_size >= size_ && std::memcmp(entry.mv_data, bytes_.data(), size_) == 0;
}

LmdbFile::LmdbFile(const std::filesystem::path& path) {
  constexpr std::size_t MapSize = std::size_t{32} << 30;
  mdb_env_create(&env_);
  mdb_env_set_mapsize(env_, MapSize);
  Check(mdb_env_open(env_, path.c_str(), MDB_NOSUBDIR | MDB_NOMETASYNC | MDB_NOTLS, 0600) == 0,
        "environment");
  Check(mdb_txn_begin(env_, nullptr, MDB_RDONLY, &read_) == 0, "transaction");
  mdb_dbi_open(read_, nullptr, 0, &tree_);
  mdb_cursor_open(read_, tree_, &keys_);
  mdb_cursor_open(read_, tree_, &records_);
  End();
}

LmdbFile::~LmdbFile() {
  mdb_cursor_close(keys_);
  mdb_cursor_close(records_);
  mdb_txn_abort(read_);
  mdb_env_close(env_);
}

void LmdbFile::Begin() {
  Check(mdb_txn_renew(read_) == 0, "transaction");
  mdb_cursor_renew(read_, keys_);
  mdb_cursor_renew(read_, records_);
}

bool LmdbFile::Find(const LmdbKey& from, const LmdbKey& path) {
  MDB_val value;
  entry_ = from.Value();
  return mdb_cursor_get(keys_, &entry_, &value, MDB_SET_RANGE) == 0 && path.Begins(entry_);
}

bool LmdbFile::Next(const LmdbKey& path) {
  MDB_val value;
  return mdb_cursor_get(keys_, &entry_, &value, MDB_NEXT) == 0 && path.Begins(entry_);
}

MDB_val LmdbFile::Record() {
  // The number at the end of an entry lies there as in the record's own key.
  std::array<unsigned char, 9> bytes{0x01};
  std::memcpy(bytes.data() + 1, static_cast<char*>(entry_.mv_data) + entry_.mv_size - 8, 8);
  MDB_val key{bytes.size(), bytes.data()};
  MDB_val record;
  Check(mdb_cursor_get(records_, &key, &record, MDB_SET) == 0, "record");
  return record;
}

LmdbWrite::LmdbWrite(LmdbFile& file) : file_(file) {
  Check(mdb_txn_begin(file.env_, nullptr, 0, &txn_) == 0, "transaction");
  number_ = LastRecord();
}

std::uint64_t LmdbWrite::LastRecord() const {
  MDB_cursor* cursor = nullptr;
  mdb_cursor_open(txn_, file_.tree_, &cursor);
  const LmdbKey behind = LmdbKey::BehindRecords();
  MDB_val entry = behind.Value();
  MDB_val value;
  int code = mdb_cursor_get(cursor, &entry, &value, MDB_SET_RANGE);
  code = mdb_cursor_get(cursor, &entry, &value, code == 0 ? MDB_PREV : MDB_LAST);
  std::uint64_t number = 0;
  if (code == 0) {
    const auto* bytes = static_cast<const unsigned char*>(entry.mv_data) + 1;
    for (std::size_t i = 0; i < sizeof number; ++i) number = number << 8 | bytes[i];
  }
  mdb_cursor_close(cursor);
  return number;
}

bool LmdbWrite::Has(const LmdbKey& path) const {
  MDB_cursor* cursor = nullptr;
  mdb_cursor_open(txn_, file_.tree_, &cursor);
  MDB_val entry = path.Value();
  MDB_val value;
  const bool has = mdb_cursor_get(cursor, &entry, &value, MDB_SET_RANGE) == 0 && path.Begins(entry);
  mdb_cursor_close(cursor);
  return has;
}

void LmdbWrite::Add(std::span<const std::byte> value) { Put(LmdbKey::OfRecord(++number_), value); }

void LmdbWrite::Put(const LmdbKey& key, std::span<const std::byte> value) {
  MDB_val name = key.Value();
  MDB_val bytes{value.size(), const_cast<std::byte*>(value.data())};
  Check(mdb_put(txn_, file_.tree_, &name, &bytes, 0) == 0, "put");
}

void LmdbWrite::Commit() {
  const int code = mdb_txn_commit(txn_);
  txn_ = nullptr;
  Check(code == 0, "commit");
}

LmdbSales::LmdbSales(const std::filesystem::path& place, Form form)
    : form_(form),
      folder_(place),
      headers_(folder_.Path() / "headers"),
      rows_(folder_.Path() / "rows") {}

Totals LmdbSales::Walk() {
  Totals totals;
  headers_.Begin();
  rows_.Begin();
  const LmdbKey path = LmdbKey::OfPath(ByPeriod).Integer(Sale::Journal);
  bool found = headers_.Find(path, path);
  for (; found; found = headers_.Next(path)) ReadSale(totals);
  rows_.End();
  headers_.End();
  return totals;
}

Totals LmdbSales::Find(const std::string& invoice) {
  Totals totals;
  headers_.Begin();
  rows_.Begin();
  const LmdbKey path = LmdbKey::OfPath(ByReference).Text(invoice);
  if (headers_.Find(path, path)) ReadSale(totals);
  rows_.End();
  headers_.End();
  return totals;
}

void LmdbSales::ReadSale(Totals& totals) {
  ReadRecord(headers_, header_);
  ReadRows();
  AddTo(totals);
}

void LmdbSales::ReadRows() {
  const LmdbKey path =
      LmdbKey::OfPath(RowsInOrder).Long(Get<std::int32_t>(header_, Header::NRecord));
  count_ = 0;
  for (bool found = rows_.Find(path, path); found; found = rows_.Next(path)) {
    if (++count_ > images_.size()) images_.emplace_back();
    ReadRecord(rows_, images_[count_ - 1]);
  }
}

void LmdbSales::ReadRecord(LmdbFile& file, std::span<std::byte> record) {
  const MDB_val value = file.Record();
  const std::span bytes(static_cast<const std::byte*>(value.mv_data), value.mv_size);
  if (form_ == Form::Plain) {
    std::memcpy(record.data(), bytes.data(), record.size());
    return;
  }
  store::lmdb::Stamp stamp;
  Check(store::lmdb::ReadRecordValue(bytes, stamp, record), "packed record");
}

void LmdbSales::AddTo(Totals& totals) const {
  totals.AddSale(GetText(header_, Header::Reference), Get<double>(header_, Header::TrxDate),
                 Get<double>(header_, Header::Amount));
  for (const RowImage& row : std::span(images_).first(count_)) {
    totals.AddRow(GetText(row, Row::Description), Get<double>(row, Row::Quantity),
                  Get<double>(row, Row::Amount));
  }
}

void LmdbSales::Insert(const Sale& sale) {
  LmdbWrite rows(rows_);
  PutRows(rows, sale);
  rows.Commit();
  LmdbWrite headers(headers_);
  PutHeader(headers, sale);
  headers.Commit();
}

void LmdbSales::Load(std::span<const Sale> sales) {
  LmdbWrite rows(rows_);
  LmdbWrite headers(headers_);
  for (const Sale& sale : sales) {
    PutRows(rows, sale);
    PutHeader(headers, sale);
  }
  rows.Commit();
  headers.Commit();
}

void LmdbSales::PutHeader(LmdbWrite& write, const Sale& sale) {
  Check(!write.Has(LmdbKey::OfPath(ByNRecord).Long(sale.number)), "new number");
  std::ranges::fill(header_, std::byte{0});
  FillHeader(header_, sale);
  PutRecord(write, header_);
  AddHeaderKeys(write, sale);
}

void LmdbSales::PutRows(LmdbWrite& write, const Sale& sale) {
  std::int16_t number = 0;
  for (const SaleLine& line : sale.lines) {
    RowImage row{};
    FillRow(row, sale, line, ++number);
    PutRecord(write, row);
    AddRowKeys(write, sale, line);
  }
}

void LmdbSales::PutRecord(LmdbWrite& write, std::span<const std::byte> record) const {
  constexpr store::lmdb::Stamp NoStamp = 0;
  if (form_ == Form::Plain) {
    write.Add(record);
  } else {
    write.Add(store::lmdb::RecordValue(NoStamp, record));
  }
}

}  // namespace larkmoor::bench
