#include "engine/tovrin_file.h"

#include <algorithm>
#include <cstring>
#include <utility>

#include <larkmoor/status.h>

#include "engine/guid.h"
#include "engine/path.h"
#include "engine/text.h"

namespace larkmoor {
namespace {

// The thread's objects, for `btReset`. A plain pointer, so that objects which outlive the thread's
// other state (statics of a client) can still leave the list.
thread_local TovrinFile* firstOfThread = nullptr;

}  // namespace

TovrinFile::TovrinFile() : next_(firstOfThread), record_(std::make_shared<RecordBytes>()) {
  if (next_ != nullptr) next_->previous_ = this;
  firstOfThread = this;
}

TovrinFile::~TovrinFile() {
  (previous_ != nullptr ? previous_->next_ : firstOfThread) = next_;
  if (next_ != nullptr) next_->previous_ = previous_;
}

Status TovrinFile::btOpen(std::string_view path, std::int16_t mode) {
  file_.reset();
  const std::filesystem::path resolved = ResolvePath(path);
  if (resolved.empty()) return StatusInvalidFileName;
  const auto openMode = mode == ReadOnlyMode ? store::OpenMode::ReadOnly : store::OpenMode::Normal;
  const Status status = store::DefaultDriver().Open(resolved, openMode, file_);
  if (status != StatusSuccess) return status;
  record_->resize(file_->Description().recordLength);
  actualLength_ = 0;
  return status;
}

Status TovrinFile::btClose() {
  if (!file_) return StatusFileNotOpen;
  const Status status = file_->Sync();
  file_.reset();
  return status;
}

Status TovrinFile::btInsert(std::int16_t keyNumber) {
  return file_ ? file_->Insert(keyNumber, *record_) : StatusFileNotOpen;
}

Status TovrinFile::btUpdate(std::int16_t keyNumber) {
  return file_ ? file_->Update(keyNumber, *record_) : StatusFileNotOpen;
}

Status TovrinFile::btDelete() { return file_ ? file_->Delete() : StatusFileNotOpen; }

Status TovrinFile::btGetEqual(std::int16_t keyNumber) { return Get(store::Seek::Equal, keyNumber); }
Status TovrinFile::btGetGreaterThan(std::int16_t keyNumber) {
  return Get(store::Seek::Greater, keyNumber);
}
Status TovrinFile::btGetGreaterOrEqual(std::int16_t keyNumber) {
  return Get(store::Seek::GreaterOrEqual, keyNumber);
}
Status TovrinFile::btGetLessThan(std::int16_t keyNumber) {
  return Get(store::Seek::Less, keyNumber);
}
Status TovrinFile::btGetLessOrEqual(std::int16_t keyNumber) {
  return Get(store::Seek::LessOrEqual, keyNumber);
}
Status TovrinFile::btGetFirst(std::int16_t keyNumber) { return Get(store::Seek::First, keyNumber); }
Status TovrinFile::btGetLast(std::int16_t keyNumber) { return Get(store::Seek::Last, keyNumber); }
Status TovrinFile::btGetNext(std::int16_t keyNumber) { return Get(store::Seek::Next, keyNumber); }
Status TovrinFile::btGetPrevious(std::int16_t keyNumber) {
  return Get(store::Seek::Previous, keyNumber);
}

Status TovrinFile::btStepFirst() { return StepTo(store::Step::First); }
Status TovrinFile::btStepLast() { return StepTo(store::Step::Last); }
Status TovrinFile::btStepNext() { return StepTo(store::Step::Next); }
Status TovrinFile::btStepPrevious() { return StepTo(store::Step::Previous); }

Status TovrinFile::btFindPercentage(std::int16_t keyNumber, double& percent) {
  return file_ ? file_->Percentage(keyNumber, percent) : StatusFileNotOpen;
}

Status TovrinFile::btGetByPercentage(std::int16_t keyNumber, double percent) {
  if (!file_) return StatusFileNotOpen;
  return NoteRead(file_->GetByPercentage(keyNumber, percent, *record_));
}

std::int32_t TovrinFile::btRecordCount() { return file_ ? file_->RecordCount() : 0; }

std::unique_ptr<store::SteadyReads> TovrinFile::BeginSteadyReads() {
  return file_ ? file_->BeginSteadyReads() : nullptr;
}

Status TovrinFile::Claim() { return file_ ? file_->Claim() : StatusFileNotOpen; }

Status TovrinFile::btReset() {
  Status result = StatusSuccess;
  for (TovrinFile* each = firstOfThread; each != nullptr; each = each->next_) {
    const Status status = each->btClose();
    if (result == StatusSuccess && status != StatusFileNotOpen) result = status;
  }
  return result;
}

Status TovrinFile::btVersion(std::string_view /*path*/,
                             std::array<std::byte, VersionBufferSize>& buffer) {
  std::byte* place = buffer.data();
  for (const store::EngineVersion& block : store::DefaultDriver().Versions()) {
    std::memcpy(place, &block.version, 2);
    std::memcpy(place + 2, &block.revision, 2);
    std::memcpy(place + 4, &block.id, 1);
    place += 5;
  }
  return StatusSuccess;
}

double TovrinFile::btDataVersion() const { return file_ ? file_->Description().release : 0; }

std::string TovrinFile::btNewGUID() const { return FormatGuid(NewGuid()); }

std::uint8_t TovrinFile::RecordByte(std::int32_t index) const {
  if (index < 0 || static_cast<std::size_t>(index) >= record_->size()) return 0;
  return std::to_integer<std::uint8_t>((*record_)[static_cast<std::size_t>(index)]);
}

void TovrinFile::KeyByte(std::uint8_t value, std::int16_t offset) {
  WriteKey(&value, sizeof value, offset);
}
void TovrinFile::KeyWord(std::int16_t value, std::int16_t offset) {
  WriteKey(&value, sizeof value, offset);
}
void TovrinFile::KeyLong(std::int32_t value, std::int16_t offset) {
  WriteKey(&value, sizeof value, offset);
}
void TovrinFile::KeyDouble(double value, std::int16_t offset) {
  WriteKey(&value, sizeof value, offset);
}

void TovrinFile::KeyText(std::string_view value, std::int16_t offset) {
  if (const auto guid = ParseGuid(value)) return WriteKey(guid->data(), guid->size(), offset);
  const std::string text = ToWindows1252(value);
  WriteKey(text.data(), text.size(), offset);
}

void TovrinFile::KeyString(std::string_view value, std::int16_t length, std::int16_t offset) {
  std::string text = ToWindows1252(value);
  text.resize(static_cast<std::size_t>(std::max<std::int16_t>(length, 0)));
  WriteKey(text.data(), text.size(), offset);
}

void TovrinFile::KeyTerminated(std::string_view value, std::int16_t offset) {
  const std::string text = ToWindows1252(value);
  WriteKey(text.c_str(), text.size() + 1, offset);
}

const store::FileDescription* TovrinFile::Description() const {
  return file_ ? &file_->Description() : nullptr;
}

Status TovrinFile::Get(store::Seek seek, std::int16_t keyNumber) {
  if (!file_) return StatusFileNotOpen;
  return NoteRead(file_->Get(seek, keyNumber, key_, *record_));
}

Status TovrinFile::StepTo(store::Step step) {
  return file_ ? NoteRead(file_->StepTo(step, *record_)) : StatusFileNotOpen;
}

Status TovrinFile::NoteRead(Status status) {
  if (status == StatusSuccess) actualLength_ = static_cast<std::int32_t>(record_->size());
  return status;
}

void TovrinFile::WriteKey(const void* bytes, std::size_t size, std::int16_t offset) {
  if (offset < 0 || static_cast<std::size_t>(offset) >= key_.size()) return;
  const auto place = static_cast<std::size_t>(offset);
  std::memcpy(key_.data() + place, bytes, std::min(size, key_.size() - place));
}

}  // namespace larkmoor
