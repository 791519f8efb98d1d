#include "jobs/lmdb_journal.h"

#include <algorithm>

#include "engine/records/jrnl_hdr.h"
#include "engine/records/jrnl_row.h"

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

void AddHeaderKeys(LmdbWrite& write, std::int16_t journal, const Transaction& from) {
  write.AddKey(
      LmdbKey::OfPath(0).Byte(0).Long(from.number).Integer(from.period).Integer(journal).Byte(0));
  write.AddKey(LmdbKey::OfPath(ByNRecord).Long(from.number));
  write.AddKey(LmdbKey::OfPath(ByReference).Text(from.reference));
  write.AddKey(
      LmdbKey::OfPath(ByPeriod).Integer(journal).Integer(from.period).Text(from.reference));
  write.AddKey(LmdbKey::OfPath(9).Integer(journal).Long(from.party));
  write.AddKey(LmdbKey::OfPath(15).Integer(journal).Long(from.party).Text(from.reference));
}

void AddRowKeys(LmdbWrite& write, const Transaction& from, const Line& line) {
  const auto day = static_cast<std::int32_t>(from.date);
  write.AddKey(LmdbKey::OfPath(0).Long(from.number));
  write.AddKey(LmdbKey::OfPath(RowsInOrder).Long(from.number).Integer(0));
  write.AddKey(LmdbKey::OfPath(2).Long(line.account).Long(day).Long(from.number));
  write.AddKey(LmdbKey::OfPath(6).Long(0).Long(day));
}

LmdbKey PathOf(const Wanted& wanted) {
  if (wanted.reference.empty()) return LmdbKey::OfPath(ByNRecord).Long(wanted.number);
  return LmdbKey::OfPath(ByReference).Text(wanted.reference);
}

}  // namespace

LmdbTransactions::LmdbTransactions(const std::filesystem::path& place, std::int16_t journal,
                                   Form form)
    : journal_(journal),
      quantity_(journal == Paychecks::Code ? Row::StockingUnitPrice : Row::Quantity),
      folder_(place),
      headers_(folder_.Path() / "headers", form),
      rows_(folder_.Path() / "rows", form) {}

Totals LmdbTransactions::Walk() {
  Totals totals;
  headers_.Begin();
  rows_.Begin();
  const LmdbKey path = LmdbKey::OfPath(ByPeriod).Integer(journal_);
  bool found = headers_.Find(path, path);
  for (; found; found = headers_.Next(path)) Read(totals);
  rows_.End();
  headers_.End();
  return totals;
}

Totals LmdbTransactions::Find(const Wanted& wanted) {
  Totals totals;
  headers_.Begin();
  rows_.Begin();
  const LmdbKey path = PathOf(wanted);
  if (headers_.Find(path, path)) Read(totals);
  rows_.End();
  headers_.End();
  return totals;
}

void LmdbTransactions::Read(Totals& totals) {
  headers_.Read(header_);
  ReadRows();
  AddTo(totals);
}

void LmdbTransactions::ReadRows() {
  const LmdbKey path =
      LmdbKey::OfPath(RowsInOrder).Long(GetField<std::int32_t>(header_, Header::NRecord));
  count_ = 0;
  for (bool found = rows_.Find(path, path); found; found = rows_.Next(path)) {
    if (++count_ > images_.size()) images_.emplace_back();
    rows_.Read(images_[count_ - 1]);
  }
}

void LmdbTransactions::AddTo(Totals& totals) const {
  totals.AddHeader(GetTextField(header_, Header::Reference),
                   GetField<double>(header_, Header::TrxDate),
                   GetField<double>(header_, Header::Amount));
  for (const RowImage& row : std::span(images_).first(count_)) {
    totals.AddRow(GetTextField(row, Row::Description), GetField<double>(row, quantity_),
                  GetField<double>(row, Row::Amount));
  }
}

void LmdbTransactions::Insert(const Transaction& transaction) {
  LmdbWrite rows(rows_);
  PutRows(rows, transaction);
  rows.Commit();
  LmdbWrite headers(headers_);
  PutHeader(headers, transaction);
  headers.Commit();
}

void LmdbTransactions::Load(std::span<const Transaction> transactions) {
  LmdbWrite rows(rows_);
  LmdbWrite headers(headers_);
  for (const Transaction& each : transactions) {
    PutRows(rows, each);
    PutHeader(headers, each);
  }
  rows.Commit();
  headers.Commit();
}

void LmdbTransactions::PutHeader(LmdbWrite& write, const Transaction& transaction) {
  Check(!write.Has(LmdbKey::OfPath(ByNRecord).Long(transaction.number)), "new number");
  std::ranges::fill(header_, std::byte{0});
  FillHeader(header_, journal_, transaction);
  write.Add(header_);
  AddHeaderKeys(write, journal_, transaction);
}

void LmdbTransactions::PutRows(LmdbWrite& write, const Transaction& transaction) {
  std::int16_t number = 0;
  for (const Line& line : transaction.lines) {
    RowImage row{};
    FillRow(row, journal_, transaction, line, ++number);
    write.Add(row);
    AddRowKeys(write, transaction, line);
  }
}

}  // namespace larkmoor::bench
