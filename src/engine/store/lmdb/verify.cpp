#include "engine/store/lmdb/verify.h"

#include <larkmoor/status.h>

#include "engine/store/lmdb/failure.h"
#include "engine/store/lmdb/record_value.h"
#include "engine/store/lmdb/search.h"

namespace larkmoor::store::lmdb {
namespace {

class Verifier {
 public:
  Verifier(const Reading& reading, const FileDescription& file, std::vector<std::string>& findings,
           const Progress& progress)
      : reading_(reading),
        file_(file),
        findings_(findings),
        progress_(progress),
        counters_(ReadCounters(reading.Transaction(), reading.Tree()).value_or(Counters())),
        total_(static_cast<std::int64_t>(counters_.records * (file.keys.size() + 1))) {}

  Status Run() {
    Cursor cursor(reading_);
    int code = cursor.AtOrAbove(EntryKey::OfRecord(0));
    for (; code == MDB_SUCCESS; code = cursor.Move(MDB_NEXT)) {
      if (IsRecord(cursor.Entry())) {
        CheckRecord(NumberIn(cursor.Entry()), cursor.Value());
      } else if (!(EntryKey::OfCounters() == cursor.Entry())) {
        CheckKeyEntry(cursor.Entry());
      }
      if (++done_ % 4096 == 0 && progress_) progress_(done_, total_);
    }
    if (code != MDB_NOTFOUND) return StatusOf(code);
    CheckCounters();
    return StatusSuccess;
  }

 private:
  void Found(const std::string& text) { findings_.push_back(text); }

  bool TakeRecord(RecordNumber number, std::span<const std::byte> value) {
    Stamp stamp;
    record_.resize(file_.recordLength);
    return ReadRecordValue(number, value, stamp, record_);
  }

  void CheckRecord(RecordNumber number, const MDB_val& value) {
    ++records_;
    const std::string name = "record " + std::to_string(number);
    if (number >= counters_.next) Found(name + ": its number was never given");
    if (!TakeRecord(number, BytesOf(value)))
      return Found(name + ": its bytes are not those that were written");
    for (const KeyDescription& key : file_.keys) {
      const EntryKey entry = EntryKey::OfKey(key.number, EncodeKeyOf(key, record_), number);
      if (!ReadEntry(reading_.Transaction(), reading_.Tree(), entry)) {
        Found(name + ": has no entry on key " + std::to_string(key.number));
      }
    }
  }

  void CheckKeyEntry(const MDB_val& entry) {
    for (const KeyDescription& key : file_.keys) {
      if (IsOfKey(entry, key.number)) return CheckEntryOf(key, entry);
    }
    Found("an entry belongs to no key of the file");
  }

  void CheckEntryOf(const KeyDescription& key, const MDB_val& entry) {
    ++entries_;
    const RecordNumber number = NumberIn(entry);
    const std::string name =
        "key " + std::to_string(key.number) + ", record " + std::to_string(number);
    const auto stored =
        ReadEntry(reading_.Transaction(), reading_.Tree(), EntryKey::OfRecord(number));
    if (!stored) return Found(name + ": the entry has no record");
    if (!TakeRecord(number, std::as_bytes(std::span(*stored)))) return;  // told with the record
    if (!(EntryKey::OfKey(key.number, EncodeKeyOf(key, record_), number) == entry)) {
      Found(name + ": the entry is not that of the record");
    }
    CheckUnique(key, entry, name);
  }

  /// Entries come in order, so that equal values of a unique key are neighbours.
  void CheckUnique(const KeyDescription& key, const MDB_val& entry, const std::string& name) {
    const std::string value(static_cast<const char*>(entry.mv_data), entry.mv_size - NumberSize);
    if (key.unique && value == lastValue_) Found(name + ": the key is unique, and repeats");
    lastValue_ = value;
  }

  void CheckCounters() {
    if (records_ != counters_.records) {
      Found("the file counts " + std::to_string(counters_.records) + " records and holds " +
            std::to_string(records_));
    }
    if (entries_ != records_ * file_.keys.size()) {
      Found("the keys have " + std::to_string(entries_) + " entries for " +
            std::to_string(records_) + " records");
    }
  }

  const Reading& reading_;
  const FileDescription& file_;
  std::vector<std::string>& findings_;
  const Progress& progress_;
  Counters counters_;
  std::int64_t total_;
  std::int64_t done_ = 0;
  std::uint64_t records_ = 0;
  std::uint64_t entries_ = 0;
  std::string lastValue_;
  std::vector<std::byte> record_;
};

}  // namespace

Status VerifyFile(ThreadView& view, std::vector<std::string>& findings, const Progress& progress) {
  const Reading reading(view);
  if (reading.Failure() != StatusSuccess) return reading.Failure();
  return Verifier(reading, view.Env().Description(), findings, progress).Run();
}

}  // namespace larkmoor::store::lmdb
