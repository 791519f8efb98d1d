#include "engine/store/lmdb/lmdb_file.h"

#include <algorithm>
#include <cstring>

#include <larkmoor/status.h>

#include "engine/store/lmdb/failure.h"
#include "engine/store/lmdb/percentage.h"
#include "engine/store/lmdb/record_value.h"
#include "engine/store/lmdb/writes.h"

namespace larkmoor::store::lmdb {
namespace {

Status SearchStatus(int code, Status notFound) {
  return code == MDB_NOTFOUND ? notFound : StatusOf(code);
}

/// Gives a record its number where an auto-increment key asks for one, and takes it back unless the
/// insert succeeds.
class GivenNumber {
 public:
  GivenNumber(const Writing& writing, const FileDescription& file, std::span<std::byte> record) {
    for (const KeyDescription& key : file.keys) {
      if (!key.autoIncrement) continue;
      const auto field = record.subspan(key.segments[0].offset, key.segments[0].width);
      if (std::any_of(field.begin(), field.end(), [](std::byte b) { return b != std::byte{0}; })) {
        continue;
      }
      const std::int64_t number = NextNumber(writing, key);
      exhausted_ = number == 0;
      std::memcpy(field.data(), &number, field.size());
      field_ = field;
    }
  }
  ~GivenNumber() {
    if (!kept_) std::fill(field_.begin(), field_.end(), std::byte{0});
  }
  GivenNumber(const GivenNumber&) = delete;
  GivenNumber& operator=(const GivenNumber&) = delete;

  [[nodiscard]] bool Exhausted() const { return exhausted_; }
  void Keep() { kept_ = true; }

 private:
  std::span<std::byte> field_;
  bool exhausted_ = false;
  bool kept_ = false;
};

bool RepeatsUnique(const Writing& writing, const FileDescription& file,
                   std::span<const std::byte> record) {
  return std::any_of(file.keys.begin(), file.keys.end(), [&](const KeyDescription& key) {
    return key.unique && HasKey(writing, key.number, EncodeKeyOf(key, record));
  });
}

/// The key entries that differ between two states of a record.
std::vector<KeyChange> Changes(const FileDescription& file, std::span<const std::byte> before,
                               std::span<const std::byte> after) {
  std::vector<KeyChange> changes;
  for (const KeyDescription& key : file.keys) {
    const EncodedKey from = EncodeKeyOf(key, before);
    const EncodedKey to = EncodeKeyOf(key, after);
    if (!std::ranges::equal(from.Bytes(), to.Bytes())) changes.push_back({&key, from, to});
  }
  return changes;
}

Status CheckChanges(const Writing& writing, const std::vector<KeyChange>& changes) {
  for (const KeyChange& change : changes) {
    if (!change.key->modifiable) return StatusKeyNotModifiable;
  }
  for (const KeyChange& change : changes) {
    if (change.key->unique && HasKey(writing, change.key->number, change.to)) {
      return StatusDuplicateKey;
    }
  }
  return StatusSuccess;
}

int ApplyChanges(const Writing& writing, const std::vector<KeyChange>& changes, RecordNumber number,
                 Counters& counters) {
  int code = MDB_SUCCESS;
  for (const KeyChange& change : changes) {
    const auto from = EntryKey::OfKey(change.key->number, change.from, number);
    const auto to = EntryKey::OfKey(change.key->number, change.to, number);
    if (code == MDB_SUCCESS) code = RemoveKey(writing, from, counters);
    if (code == MDB_SUCCESS) code = PutKey(writing, to, counters);
  }
  return code;
}

int InsertEntries(const Writing& writing, const FileDescription& file, RecordNumber number,
                  Stamp stamp, std::span<const std::byte> record, Counters& counters) {
  int code = PutRecord(writing, number, stamp, record);
  for (const KeyDescription& key : file.keys) {
    const auto entry = EntryKey::OfKey(key.number, EncodeKeyOf(key, record), number);
    if (code == MDB_SUCCESS) code = PutKey(writing, entry, counters);
  }
  return code;
}

int RemoveEntries(const Writing& writing, const FileDescription& file, RecordNumber number,
                  std::span<const std::byte> record, Counters& counters) {
  int code = RemoveRecord(writing, number);
  for (const KeyDescription& key : file.keys) {
    const auto entry = EntryKey::OfKey(key.number, EncodeKeyOf(key, record), number);
    if (code == MDB_SUCCESS) code = RemoveKey(writing, entry, counters);
  }
  return code;
}

}  // namespace

// Reads

Status LmdbFile::CheckPlace(Seek seek, std::int16_t keyNumber) const {
  if (seek != Seek::Next && seek != Seek::Previous) return StatusSuccess;
  if (place_.keyNumber < 0) return StatusInvalidPositioning;
  return place_.keyNumber == keyNumber ? StatusSuccess : StatusDifferentKeyNumber;
}

int LmdbFile::MoveAlong(Cursor& cursor, Seek seek) const {
  int code = MDB_SUCCESS;
  if (cursor.Stands()) {
    code = cursor.Move(seek == Seek::Next ? MDB_NEXT : MDB_PREV);
  } else {
    code = seek == Seek::Next ? cursor.After(place_.entry) : cursor.Below(place_.entry);
  }
  if (code == MDB_SUCCESS && !IsOfKey(cursor.Entry(), place_.keyNumber)) return MDB_NOTFOUND;
  return code;
}

Status LmdbFile::Get(Seek seek, std::int16_t keyNumber, std::span<const std::byte> key,
                     std::span<std::byte> record) {
  const KeyDescription* description = Description().FindKey(keyNumber);
  if (description == nullptr) return StatusInvalidKeyNumber;
  if (const Status status = CheckPlace(seek, keyNumber); status != StatusSuccess) return status;
  const Reading reading(*view_);
  if (reading.Failure() != StatusSuccess) return reading.Failure();

  Cursor keys(keys_, reading);
  Cursor records(records_, reading);
  const bool along = seek == Seek::Next || seek == Seek::Previous;
  // A search at or above most often goes on where the last one ended: the rows of a transaction lie
  // behind those of the one before.
  if (!along && seek != Seek::GreaterOrEqual) {
    keys.Forget();
    records.Forget();
  }
  const int code = along ? MoveAlong(keys, seek) : SearchKey(keys, seek, *description, key);
  keys.Stay(false);
  if (code == MDB_SUCCESS) return TakeEntry(keyNumber, keys, records, record);
  return SearchStatus(code, seek == Seek::Equal ? StatusKeyNotFound : StatusEndOfFile);
}

Status LmdbFile::TakeEntry(std::int16_t keyNumber, Cursor& keys, Cursor& records,
                           std::span<std::byte> record) {
  const int code = GoToRecord(records, NumberIn(keys.Entry()));
  records.Stay(false);
  if (code != MDB_SUCCESS) return StatusIOError;  // an entry without its record
  const Status status = TakeRecord(records, record);
  if (status != StatusSuccess) return status;
  place_.keyNumber = keyNumber;
  place_.entry = keys.Entry();
  keys.Stay(true);
  return status;
}

/// A walk along a key in the order of insertion needs but one step for each record.
int LmdbFile::GoToRecord(Cursor& records, RecordNumber number) const {
  const EntryKey wanted = EntryKey::OfRecord(number);
  if (records.Stands() && number == physical_ + 1 && records.Move(MDB_NEXT) == MDB_SUCCESS &&
      wanted == records.Entry()) {
    return MDB_SUCCESS;
  }
  return records.At(wanted);
}

Status LmdbFile::TakeRecord(Cursor& records, std::span<std::byte> record) {
  const RecordNumber number = NumberIn(records.Entry());
  if (!ReadRecordValue(number, BytesOf(records.Value()), current_.stamp, record)) {
    return StatusIOError;
  }
  current_.number = number;
  physical_ = number;
  records.Stay(true);
  return StatusSuccess;
}

int LmdbFile::MoveInOrder(Cursor& cursor, Step step) const {
  int code = MDB_SUCCESS;
  switch (step) {
    case Step::First:
      code = cursor.AtOrAbove(EntryKey::OfRecord(0));
      break;
    case Step::Last:
      code = cursor.Below(EntryKey::OfRecord(LastNumber));
      break;
    case Step::Next:
      code = cursor.Stands() ? cursor.Move(MDB_NEXT) : cursor.After(EntryKey::OfRecord(physical_));
      break;
    case Step::Previous:
      code = cursor.Stands() ? cursor.Move(MDB_PREV) : cursor.Below(EntryKey::OfRecord(physical_));
      break;
  }
  if (code == MDB_SUCCESS && !IsRecord(cursor.Entry())) return MDB_NOTFOUND;
  return code;
}

Status LmdbFile::StepTo(Step step, std::span<std::byte> record) {
  const Reading reading(*view_);
  if (reading.Failure() != StatusSuccess) return reading.Failure();
  Cursor records(records_, reading);
  const int code = MoveInOrder(records, step);
  records.Stay(false);
  if (code != MDB_SUCCESS) return SearchStatus(code, StatusEndOfFile);
  const Status status = TakeRecord(records, record);
  if (status == StatusSuccess) place_.keyNumber = -1;
  return status;
}

std::int32_t LmdbFile::RecordCount() {
  const Reading reading(*view_);
  if (reading.Failure() != StatusSuccess) return 0;
  const auto counters = ReadCounters(reading.Transaction(), reading.Tree());
  return counters ? static_cast<std::int32_t>(counters->records) : 0;
}

std::unique_ptr<SteadyReads> LmdbFile::BeginSteadyReads() {
  return std::make_unique<Steady>(view_);
}

Status LmdbFile::Claim() {
  if (readOnly_) return StatusAccessDenied;
  const Writing writing(*view_);
  return writing.Failure();
}

const KeySpread& LmdbFile::SpreadOf(const Reading& reading, const KeyDescription& key) {
  const std::size_t state = reading.State();
  if (state == UnknownState || !spread_ || spread_->keyNumber != key.number ||
      spread_->state != state) {
    spread_ = {KeySpread(reading, key, Description().recordLength), key.number, state};
  }
  return spread_->spread;
}

Status LmdbFile::Percentage(std::int16_t keyNumber, double& percent) {
  const KeyDescription* key = Description().FindKey(keyNumber);
  if (key == nullptr) return StatusInvalidKeyNumber;
  if (current_.number == 0) return StatusInvalidPositioning;
  const Reading reading(*view_);
  if (reading.Failure() != StatusSuccess) return reading.Failure();
  const auto stored =
      ReadEntry(reading.Transaction(), reading.Tree(), EntryKey::OfRecord(current_.number));
  if (!stored) return StatusRecordConflict;
  Stamp stamp;
  std::vector<std::byte> record(Description().recordLength);
  if (!ReadRecordValue(current_.number, std::as_bytes(std::span(*stored)), stamp, record)) {
    return StatusIOError;
  }
  percent = SpreadOf(reading, *key)
                .PercentOf(EntryKey::OfKey(keyNumber, EncodeKeyOf(*key, record), current_.number));
  return StatusSuccess;
}

Status LmdbFile::GetByPercentage(std::int16_t keyNumber, double percent,
                                 std::span<std::byte> record) {
  const KeyDescription* key = Description().FindKey(keyNumber);
  if (key == nullptr) return StatusInvalidKeyNumber;
  const Reading reading(*view_);
  if (reading.Failure() != StatusSuccess) return reading.Failure();
  const auto entry = SpreadOf(reading, *key).EntryAt(percent);
  if (!entry) return StatusEndOfFile;
  Cursor keys(keys_, reading);
  Cursor records(records_, reading);
  const int code = keys.At(*entry);
  keys.Stay(false);
  if (code != MDB_SUCCESS) return SearchStatus(code, StatusEndOfFile);
  return TakeEntry(keyNumber, keys, records, record);
}

// Writes

Status LmdbFile::Insert(std::int16_t keyNumber, std::span<std::byte> record) {
  if (readOnly_) return StatusAccessDenied;
  const KeyDescription* key = Description().FindKey(keyNumber);
  if (key == nullptr) return StatusInvalidKeyNumber;
  Writing writing(*view_);
  if (writing.Failure() != StatusSuccess) return writing.Failure();

  GivenNumber given(writing, Description(), record);
  if (given.Exhausted() || RepeatsUnique(writing, Description(), record)) return StatusDuplicateKey;
  auto counters = ReadCounters(writing.Transaction(), writing.Tree());
  if (!counters) return StatusIOError;
  const CurrentRecord inserted{counters->next++, NewStamp()};
  ++counters->records;
  int code =
      InsertEntries(writing, Description(), inserted.number, inserted.stamp, record, *counters);
  if (code == MDB_SUCCESS) code = PutCounters(writing, *counters);
  const Status status = writing.Finish(code);
  if (status != StatusSuccess) return status;
  given.Keep();
  TakeWritten(*key, record, inserted);
  return status;
}

Status LmdbFile::StoredRecord(const Writing& writing, std::vector<std::byte>& stored) const {
  const auto found =
      ReadEntry(writing.Transaction(), writing.Tree(), EntryKey::OfRecord(current_.number));
  if (!found) return StatusRecordConflict;
  Stamp stamp;
  stored.resize(Description().recordLength);
  if (!ReadRecordValue(current_.number, std::as_bytes(std::span(*found)), stamp, stored)) {
    return StatusIOError;
  }
  return stamp == current_.stamp ? StatusSuccess : StatusRecordConflict;
}

Status LmdbFile::Update(std::int16_t keyNumber, std::span<const std::byte> record) {
  if (readOnly_) return StatusAccessDenied;
  const KeyDescription* key = Description().FindKey(keyNumber);
  if (key == nullptr) return StatusInvalidKeyNumber;
  if (current_.number == 0) return StatusInvalidPositioning;
  Writing writing(*view_);
  if (writing.Failure() != StatusSuccess) return writing.Failure();

  std::vector<std::byte> stored;
  if (const Status status = StoredRecord(writing, stored); status != StatusSuccess) return status;
  const std::vector<KeyChange> changes = Changes(Description(), stored, record);
  if (const Status status = CheckChanges(writing, changes); status != StatusSuccess) return status;
  auto counters = ReadCounters(writing.Transaction(), writing.Tree());
  if (!counters) return StatusIOError;
  const CurrentRecord updated{current_.number, NewStamp()};
  int code = PutRecord(writing, updated.number, updated.stamp, record);
  if (code == MDB_SUCCESS) code = ApplyChanges(writing, changes, updated.number, *counters);
  if (code == MDB_SUCCESS && !changes.empty()) code = PutCounters(writing, *counters);
  const Status status = writing.Finish(code);
  if (status == StatusSuccess) TakeWritten(*key, record, updated);
  return status;
}

Status LmdbFile::Delete() {
  if (readOnly_) return StatusAccessDenied;
  if (current_.number == 0) return StatusInvalidPositioning;
  Writing writing(*view_);
  if (writing.Failure() != StatusSuccess) return writing.Failure();

  std::vector<std::byte> stored;
  if (const Status status = StoredRecord(writing, stored); status != StatusSuccess) return status;
  auto counters = ReadCounters(writing.Transaction(), writing.Tree());
  if (!counters) return StatusIOError;
  --counters->records;
  int code = RemoveEntries(writing, Description(), current_.number, stored, *counters);
  if (code == MDB_SUCCESS) code = PutCounters(writing, *counters);
  const Status status = writing.Finish(code);
  if (status == StatusSuccess) current_.number = 0;
  return status;
}

void LmdbFile::TakeWritten(const KeyDescription& key, std::span<const std::byte> record,
                           CurrentRecord written) {
  keys_.Leave();
  records_.Leave();
  current_ = written;
  physical_ = written.number;
  place_ = {key.number, EntryKey::OfKey(key.number, EncodeKeyOf(key, record), written.number)};
}

}  // namespace larkmoor::store::lmdb
