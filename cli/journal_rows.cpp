#include "journal_rows.h"

#include <algorithm>
#include <limits>
#include <string>
#include <utility>

#include <larkmoor/error.h>
#include <larkmoor/message_box.h>

#include "connection/shared_state.h"
#include "engine/records/jrnl_hdr.h"
#include "engine/tovrin_file_names.h"
#include "failure.h"
#include "journals.h"
#include "journals/header_key.h"
#include "text_tools.h"
#include "value_text.h"

namespace larkmoor::cli {
namespace {

using automation::Class;

/// What the journal shows in message boxes in the lifetime of the object, which it keeps from being
/// shown.
class CaughtMessages {
 public:
  CaughtMessages()
      : before_(SetMessageBoxHandler([this](std::string_view text) { text_ += text; })) {}
  ~CaughtMessages() { SetMessageBoxHandler(std::move(before_)); }
  CaughtMessages(const CaughtMessages&) = delete;
  CaughtMessages& operator=(const CaughtMessages&) = delete;

  [[nodiscard]] const std::string& Text() const { return text_; }

 private:
  std::string text_;
  MessageBoxHandler before_;
};

void OpenForReading(TovrinFile& file, std::string_view name) {
  const std::string path = Shared().gCompanyPath + std::string(name);
  Require(file.btOpen(path, TovrinFile::ReadOnlyMode), name);
}

[[noreturn]] void RaiseOneRowOnly(std::string_view className) {
  throw UsageError(std::string(className) +
                   " has but one row in memory, which stands for every row of a transaction: it "
                   "would show and write back other rows than those on file; go by MemorizedHdr "
                   "and MemorizedRow instead");
}

/// The text up to a blank line, in one line.
std::string FirstParagraph(const std::string& text) {
  std::string line = text.substr(0, text.find("\r\n\r\n"));
  for (std::size_t at = 0; (at = line.find("\r\n", at)) != std::string::npos;) {
    line.replace(at, 2, " ");
  }
  return Printable(line);
}

}  // namespace

JournalRows::JournalRows(const Class& type)
    : journal_(type),
      shape_(type.name, JournalPropertiesOf(type)),
      codes_(JournalCodesOf(type.name)),
      lists_(DetailListsOf(type)),
      header_(JrnlHdrRecord::Describe()),
      rows_(TovrinFileNames::JrnlRowFile()) {
  if (codes_.empty()) RaiseOneRowOnly(type.name);
  Open();
  OpenForReading(headerFile_, TovrinFileNames::JrnlHdrFile());
  OpenForReading(chart_, TovrinFileNames::ChartFile());
  Require(rows_.Open(TovrinFile::ReadOnlyMode), TovrinFileNames::JrnlRowFile());
  header_.AttachBuffer(headerFile_.RecordBuffer());
}

void JournalRows::Open() { Require(journal_.Call("OpenFile").ToInteger(), Name()); }

bool JournalRows::IsOwnCode(std::int16_t code) const {
  return std::ranges::find(codes_, code) != codes_.end();
}

bool JournalRows::IsRow() const { return IsOwnCode(header_.GetInteger(JrnlHdrRecord::JournalID)); }

void JournalRows::StartRow() {
  // Rows of the transaction before lie in memory until the next open.
  Open();
  list_ = 0;
  detail_ = 0;
  isNew_ = true;
  hasNumberInPeriod_ = false;
  // Some of the journal's properties are shown of transactions with its code only.
  journal_.Let(JournalProperty::JournalID, codes_.front());
}

void JournalRows::StartDetail(std::string_view list) {
  const auto found = std::ranges::find(lists_, list, &DetailList::name);
  const auto wanted = static_cast<std::size_t>(found - lists_.begin());
  if (wanted < list_) {
    throw ValueError("a " + std::string(list) + " row cannot stand behind a " +
                     std::string(List().name) + " row of the same transaction");
  }
  if (wanted > list_) TakeList(wanted);
  if (detail_ == std::numeric_limits<std::int16_t>::max()) {
    throw ValueError("a transaction cannot have so many rows");
  }
  const auto detail = static_cast<std::int16_t>(detail_ + 1);
  journal_.Let(List().count, detail);
  TakeDetail(detail);
}

void JournalRows::EndDetail() {
  if (List().mark.empty() || journal_.Get(List().mark, {detail_}).ToLong() != 0) return;
  throw ValueError("a " + std::string(List().name) + " row needs a " + std::string(List().mark) +
                   " other than 0: without it, it would be read back as a " +
                   std::string(lists_.front().name) + " row");
}

bool JournalRows::NextDetail() {
  LoadInHand();
  while (detail_ >= CountOf(List())) {
    if (list_ + 1 == lists_.size()) return false;
    TakeList(list_ + 1);
  }
  TakeDetail(static_cast<std::int16_t>(detail_ + 1));
  return true;
}

/// Leaves the list in hand for one behind it. The row that it has in hand is put away first, which
/// the number 0 does: otherwise the next list's rows would go for it.
void JournalRows::TakeList(std::size_t list) {
  if (detail_ > 0) journal_.Get(List().position, {std::int16_t{0}});
  list_ = list;
  detail_ = 0;
}

void JournalRows::TakeDetail(std::int16_t detail) {
  journal_.Get(List().position, {detail});
  detail_ = detail;
}

std::int32_t JournalRows::CountOf(const DetailList& list) const {
  return journal_.Get(list.count).ToInteger();
}

std::int32_t JournalRows::DetailCount() const {
  std::int32_t count = 0;
  for (const DetailList& list : lists_) count += CountOf(list);
  return count;
}

void JournalRows::LoadInHand() {
  const std::int32_t nRecord = header_.GetLong(JrnlHdrRecord::NRecord);
  if (isNew_ || loaded_ == nRecord) return;
  const Status status = journal_.Call("GetEqual", {nRecord}).ToInteger();
  // A transaction without rows answers 9, and is there all the same.
  const bool isWithoutRows =
      status == StatusEndOfFile && journal_.Get(JournalProperty::NRecord).ToLong() == nRecord;
  if (!isWithoutRows) Require(status, std::string(Name()) + " " + std::to_string(nRecord));
  loaded_ = nRecord;
  list_ = 0;
  detail_ = 0;
  NextDetail();
}

std::vector<Variant> JournalRows::ArgumentsOf(const Column& column) const {
  if (column.property->takesDetail) return {detail_};
  return {column.indexes.begin(), column.indexes.end()};
}

Variant JournalRows::Get(const Column& column) {
  LoadInHand();
  const Property& property = *column.property;
  if (property.ofDetail && (detail_ == 0 || property.detailList != List().name)) return {};
  try {
    return journal_.Get(property.name, ArgumentsOf(column));
  } catch (const Error& error) {
    throw Failure(std::string(Name()) + " " + journal_.Get(JournalProperty::NRecord).ToText() +
                  ": " + column.Name() + ": " + Printable(error.Description()));
  }
}

void JournalRows::Set(const Column& column, const Variant& value) {
  LoadInHand();
  const Field* field = column.property->field;
  if (field == &JrnlHdrRecord::JournalID && !IsOwnCode(value.ToInteger())) {
    throw ValueError(value.ToText() + " is not the code of a transaction of " +
                     std::string(Name()));
  }
  hasNumberInPeriod_ |= field == &JrnlHdrRecord::TrxNumberL;
  Assign(column, value);
}

/// Sets a property. One that is stored by hand may drop what it cannot look up, with or without a
/// message.
void JournalRows::Assign(const Column& column, const Variant& value) {
  const std::vector<Variant> arguments = ArgumentsOf(column);
  if (column.property->field != nullptr) {
    return journal_.Let(column.property->name, value, arguments);
  }
  const CaughtMessages messages;
  journal_.Let(column.property->name, value, arguments);
  if (journal_.Get(column.property->name, arguments) == value) return;
  throw ValueError(Quoted(value.ToText()) + " is not kept: " +
                   (messages.Text().empty() ? "it is not on file, or data of this release has no "
                                              "room for it"
                                            : FirstParagraph(messages.Text())));
}

Status JournalRows::Insert() {
  numbers_.NumberRecord();
  numbers_.NumberInPeriod(hasNumberInPeriod_);
  if (IsOnFile(journal_.Get(JournalProperty::NRecord).ToLong())) return StatusDuplicateKey;
  return WithRows(journal_.Call("Insert").ToInteger(), DetailCount());
}

bool JournalRows::IsOnFile(std::int32_t nRecord) {
  headerFile_.KeyLong(nRecord, 0);
  const std::int16_t key = HeaderKey::ByNRecord(headerFile_.btDataVersion());
  return headerFile_.btGetEqual(key) == StatusSuccess;
}

Status JournalRows::Update() {
  if (journal_.Get(JournalProperty::NRecord).ToLong() != loaded_) {
    throw Failure("NRecord of a transaction that is on file cannot be changed");
  }
  return WithRows(journal_.Call("Update").ToInteger(), DetailCount());
}

Status JournalRows::Delete() {
  LoadInHand();
  loaded_.reset();
  return WithRows(journal_.Call("Delete").ToInteger(), 0);
}

/// The status of a write, once the rows have been counted where it was successful.
Status JournalRows::WithRows(Status status, std::int32_t count) {
  if (status != StatusSuccess) return status;
  constexpr std::int16_t ByTransaction = 0;
  const std::int32_t nRecord = journal_.Get(JournalProperty::NRecord).ToLong();
  std::int32_t found = 0;
  rows_.ReadRows(nRecord, ByTransaction, [&] { ++found; });
  if (found == count) return status;
  throw Failure(std::string(Name()) + " " + std::to_string(nRecord) +
                ": its rows could not be written");
}

}  // namespace larkmoor::cli
