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
#include "journal_shape.h"
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
      header_(JrnlHdrRecord::Describe()),
      rows_(TovrinFileNames::JrnlRowFile()) {
  if (codes_.empty() || FindMember(type, JournalProperty::DetailAmount) == nullptr) {
    throw UsageError("the transactions of " + std::string(type.name) +
                     " are of another shape than a header with one list of rows; go by the records "
                     "of their files instead");
  }
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
  detail_ = 0;
  isNew_ = true;
  hasCode_ = hasNumberInPeriod_ = false;
}

void JournalRows::StartDetail() {
  if (detail_ == std::numeric_limits<std::int16_t>::max()) {
    throw ValueError("a transaction cannot have so many rows");
  }
  const auto detail = static_cast<std::int16_t>(detail_ + 1);
  journal_.Let(JournalProperty::NDistributions, detail);
  TakeDetail(detail);
}

bool JournalRows::NextDetail() {
  LoadInHand();
  if (detail_ >= journal_.Get(JournalProperty::NDistributions).ToInteger()) return false;
  TakeDetail(static_cast<std::int16_t>(detail_ + 1));
  return true;
}

void JournalRows::TakeDetail(std::int16_t detail) {
  journal_.Get(JournalProperty::DetailAmount, {detail});
  detail_ = detail;
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
  detail_ = 0;
  NextDetail();
}

std::vector<Variant> JournalRows::ArgumentsOf(const Column& column) const {
  if (column.property->takesDetail) return {detail_};
  return {column.indexes.begin(), column.indexes.end()};
}

Variant JournalRows::Get(const Column& column) {
  LoadInHand();
  if (column.property->ofDetail && detail_ == 0) return {};
  try {
    return journal_.Get(column.property->name, ArgumentsOf(column));
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
  hasCode_ |= field == &JrnlHdrRecord::JournalID;
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
  if (!hasCode_) journal_.Let(JournalProperty::JournalID, codes_.front());
  numbers_.NumberRecord();
  numbers_.NumberInPeriod(hasNumberInPeriod_);
  if (IsOnFile(journal_.Get(JournalProperty::NRecord).ToLong())) return StatusDuplicateKey;
  return WithRows(journal_.Call("Insert").ToInteger(), detail_);
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
  return WithRows(journal_.Call("Update").ToInteger(),
                  journal_.Get(JournalProperty::NDistributions).ToInteger());
}

Status JournalRows::Delete() {
  LoadInHand();
  loaded_.reset();
  return WithRows(journal_.Call("Delete").ToInteger(), 0);
}

/// The status of a write, once the rows have been counted where it was successful.
Status JournalRows::WithRows(Status status, std::int16_t count) {
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
