#include "trials/lockstep.h"

#include <algorithm>
#include <utility>

#include <larkmoor/status.h>

#include "trials/shapes.h"

namespace larkmoor::trials {
namespace {

using store::File;
using store::FileDescription;
using store::KeyDescription;
using store::Seek;
using store::Step;
using test::Bytes;

bool Same(const store::KeySegment& left, const store::KeySegment& right) {
  return left.type == right.type && left.offset == right.offset && left.width == right.width;
}

bool Same(const KeyDescription& left, const KeyDescription& right) {
  return left.number == right.number && left.unique == right.unique &&
         left.modifiable == right.modifiable && left.autoIncrement == right.autoIncrement &&
         std::ranges::equal(left.segments, right.segments,
                            [](const auto& one, const auto& other) { return Same(one, other); });
}

bool Same(const FileDescription& left, const FileDescription& right) {
  return left.name == right.name && left.release == right.release &&
         left.recordLength == right.recordLength &&
         std::ranges::equal(left.keys, right.keys,
                            [](const auto& one, const auto& other) { return Same(one, other); });
}

std::vector<Bytes> RecordsOf(File& file) {
  std::vector<Bytes> records;
  Bytes record(file.Description().recordLength);
  for (Status status = file.StepTo(Step::First, record); status == StatusSuccess;
       status = file.StepTo(Step::Next, record)) {
    records.push_back(record);
  }
  return records;
}

std::string OnKey(std::int16_t keyNumber) { return " on key " + std::to_string(keyNumber); }

}  // namespace

Lockstep::Lockstep(Round& round, std::filesystem::path sound, std::filesystem::path damaged,
                   store::OpenMode mode, bool isProtected)
    : round_(round),
      mode_(mode),
      sound_{std::move(sound), WatchedDriver({.isProtected = isProtected})},
      damaged_{std::move(damaged), WatchedDriver({.isDamaged = true, .isProtected = isProtected})} {
}

Lockstep::~Lockstep() { round_.Count("answers", damaged_.driver.Answers()); }

// Comparing

bool Lockstep::TellsDamage(Status status) {
  const bool tells =
      status == StatusIOError || status == StatusNotARecordFile || status == StatusInvalidOwner;
  if (tells) round_.Count("damage told");
  return tells;
}

std::optional<Status> Lockstep::Compare(const std::string& what, Status sound, Status damaged,
                                        const Bytes& before) {
  if (TellsDamage(damaged)) {
    if (damaged_.buffer != before) throw Finding(what + " that failed changed the record buffer");
    return std::nullopt;
  }
  if (damaged != sound) {
    throw Finding(what + " answers " + std::to_string(damaged) + ", the sound file " +
                  std::to_string(sound));
  }
  if (damaged_.buffer != sound_.buffer) throw Finding(what + " gives a wrong record");
  return damaged;
}

std::optional<Status> Lockstep::ReadBoth(const std::string& what, const Operation& read) {
  damaged_.buffer = sound_.buffer;
  const Bytes before = damaged_.buffer;
  const Status sound = read(*sound_.file, sound_.buffer);
  const Status damaged = read(*damaged_.file, damaged_.buffer);
  const auto status = Compare(what, sound, damaged, before);
  if (!status) readToldDamage_ = true;
  return status;
}

std::optional<Status> Lockstep::WriteBoth(const std::string& what, const Operation& write) {
  damaged_.buffer = sound_.buffer;
  const Bytes before = damaged_.buffer;
  const Status damaged = write(*damaged_.file, damaged_.buffer);
  const Status sound = TellsDamage(damaged) ? StatusSuccess : write(*sound_.file, sound_.buffer);
  return Compare(what, sound, damaged, before);
}

const FileDescription& Lockstep::Description() const { return sound_.file->Description(); }

void Lockstep::CompareDescriptions() const {
  if (!Same(Description(), damaged_.file->Description())) {
    throw Finding("the file describes itself as another");
  }
}

void Lockstep::CompareCounts() const {
  const std::int32_t count = damaged_.file->RecordCount();
  if (count != 0 && count != sound_.file->RecordCount()) {
    throw Finding("the file counts " + std::to_string(count) + " records, and has " +
                  std::to_string(sound_.file->RecordCount()));
  }
}

// Opening and closing

bool Lockstep::Open() {
  test::MustSucceed(sound_.driver.Open(sound_.path, mode_, sound_.file), "open");
  sound_.buffer.assign(Description().recordLength, {});
  known_ = RecordsOf(*sound_.file);
  const Status status = damaged_.driver.Open(damaged_.path, mode_, damaged_.file);
  if (TellsDamage(status)) return false;
  test::MustSucceed(status, "open");
  CompareDescriptions();
  return true;
}

void Lockstep::Close() {
  damaged_.file.reset();
  sound_.file.reset();
}

// Reading

void Lockstep::Read() {
  CompareCounts();
  WalkEverywhere();
  SearchEverywhere();
  ReadByPercentage();
}

void Lockstep::WalkEverywhere() {
  for (const KeyDescription& key : Description().keys) {
    const auto get = [&key](Seek seek) -> Operation {
      return [&key, seek](File& file, Bytes& record) {
        return file.Get(seek, key.number, {}, record);
      };
    };
    Walk("a walk" + OnKey(key.number), get(Seek::First), get(Seek::Next));
    Walk("a walk backwards" + OnKey(key.number), get(Seek::Last), get(Seek::Previous));
  }
  const auto step = [](Step step) -> Operation {
    return [step](File& file, Bytes& record) { return file.StepTo(step, record); };
  };
  Walk("stepping", step(Step::First), step(Step::Next));
  Walk("stepping backwards", step(Step::Last), step(Step::Previous));
}

/// Goes on to the end, or to where the damage is told.
void Lockstep::Walk(const std::string& what, const Operation& start, const Operation& onward) {
  round_.Count("walks");
  for (auto status = ReadBoth(what, start); status == StatusSuccess;) {
    status = ReadBoth(what, onward);
  }
}

Bytes Lockstep::Sought() {
  if (known_.empty() || round_.Dice().OneIn(4)) return RandomRecord(Description(), round_.Dice());
  return known_[round_.Dice().PlaceIn(known_.size())];
}

std::int16_t Lockstep::AnyKey() {
  const auto& keys = Description().keys;
  return keys[round_.Dice().PlaceIn(keys.size())].number;
}

void Lockstep::SearchEverywhere() {
  constexpr int Searches = 4;
  for (const KeyDescription& key : Description().keys) {
    for (int i = 0; i < Searches; ++i) Search(key.number, Sought());
  }
}

void Lockstep::Search(std::int16_t keyNumber, const Bytes& sought) {
  round_.Count("searches");
  const Bytes key = test::KeyOf(Description(), keyNumber, sought);
  for (const Seek seek :
       {Seek::Equal, Seek::Greater, Seek::GreaterOrEqual, Seek::Less, Seek::LessOrEqual}) {
    ReadBoth("a search" + OnKey(keyNumber),
             [&](File& file, Bytes& record) { return file.Get(seek, keyNumber, key, record); });
  }
}

/// Where a record lies is told about right only, so that the two files need not agree. A record
/// that is found must be one of those there are.
void Lockstep::ReadByPercentage() {
  for (const double percent : {0.0, 33.3, 100.0}) {
    const std::int16_t key = AnyKey();
    const Status status = damaged_.file->GetByPercentage(key, percent, damaged_.buffer);
    if (TellsDamage(status)) continue;
    if (status != (known_.empty() ? StatusEndOfFile : StatusSuccess)) {
      throw Finding("a read by percentage answers " + std::to_string(status));
    }
    if (status != StatusSuccess) continue;
    if (std::find(known_.begin(), known_.end(), damaged_.buffer) == known_.end()) {
      throw Finding("a read by percentage gives a wrong record");
    }
    double found = 0;
    TellsDamage(damaged_.file->Percentage(AnyKey(), found));
  }
}

void Lockstep::Verify() {
  round_.Count("verifications");
  std::vector<std::string> findings;
  const Status status = damaged_.driver.Verify(damaged_.path, findings, {});
  if (status == StatusSuccess && findings.empty() && readToldDamage_) {
    throw Finding("a file whose reads tell of damage verifies without a finding");
  }
}

// Writing

void Lockstep::Write() {
  for (int i = 0; i < 20; ++i) WriteOne();
  WriteBatch();
  known_ = RecordsOf(*sound_.file);
}

void Lockstep::WriteOne() {
  round_.Count("writes");
  const std::int16_t key = AnyKey();
  if (round_.Dice().OneIn(2)) {
    sound_.buffer = RandomRecord(Description(), round_.Dice());
    WriteBoth("an insert", [key](File& file, Bytes& record) { return file.Insert(key, record); });
    return;
  }
  const Bytes sought = test::KeyOf(Description(), key, Sought());
  const auto found = ReadBoth("a search" + OnKey(key), [&](File& file, Bytes& record) {
    return file.Get(Seek::GreaterOrEqual, key, sought, record);
  });
  if (found != StatusSuccess) return;
  if (round_.Dice().OneIn(2)) {
    WriteBoth("a delete", [](File& file, Bytes&) { return file.Delete(); });
  } else {
    sound_.buffer = RandomRecord(Description(), round_.Dice());
    WriteBoth("an update", [key](File& file, Bytes& record) { return file.Update(key, record); });
  }
}

/// First all of it on the damaged file, since a batch is the thread's; then, where it was
/// committed, once more on the sound one.
void Lockstep::WriteBatch() {
  std::vector<Bytes> records;
  for (int i = 0; i < 10; ++i) {
    records.push_back(RandomRecord(Description(), round_.Dice()));
  }
  const std::int16_t key = AnyKey();
  const auto insertAll = [&](Side& side, std::vector<Bytes>& inserted) {
    const auto batch = side.driver.BeginBatch();
    if (const Status claim = side.file->Claim(); TellsDamage(claim)) return claim;
    for (Bytes record : records) {
      const Status status = side.file->Insert(key, record);
      if (TellsDamage(status)) return status;
      if (status == StatusSuccess) inserted.push_back(std::move(record));
    }
    return batch->Commit();
  };
  std::vector<Bytes> damaged;
  if (TellsDamage(insertAll(damaged_, damaged))) return;
  std::vector<Bytes> sound;
  test::MustSucceed(insertAll(sound_, sound), "commit");
  if (damaged != sound) throw Finding("a batch inserts other records than into a sound file");
}

void Lockstep::Compact() {
  round_.Count("compactions");
  test::MustSucceed(sound_.driver.Compact(sound_.path), "compact");
  TellsDamage(damaged_.driver.Compact(damaged_.path));
}

void Lockstep::Administer() {
  store::FileStatistics sound;
  store::FileStatistics damaged;
  test::MustSucceed(sound_.driver.Statistics(sound_.path, sound), "statistics");
  if (!TellsDamage(damaged_.driver.Statistics(damaged_.path, damaged))) {
    if (damaged.records != sound.records || !Same(damaged.description, sound.description) ||
        damaged.hasOwner != sound.hasOwner || damaged.ownerAllowsRead != sound.ownerAllowsRead) {
      throw Finding("the statistics are wrong");
    }
  }
  if (mode_ == store::OpenMode::ReadOnly) return;
  TellsDamage(damaged_.driver.SetOwner(damaged_.path, "someone else", true));
  TellsDamage(damaged_.driver.ClearOwner(damaged_.path, "someone else"));
}

}  // namespace larkmoor::trials
