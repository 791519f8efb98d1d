// A driver against a model: the same random operations on a file and on plain containers in memory,
// compared after every step. The model is written from the rules, as simply as they can be said.

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
#include <functional>
#include <limits>
#include <map>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "engine/store/conformance.h"
#include "support/dice.h"
#include "support/seed.h"

namespace larkmoor::test {
namespace {

using store::File;
using store::FileDescription;
using store::KeyDescription;
using store::KeySegment;
using store::OpenMode;
using store::Seek;
using store::SegmentType;
using store::SteadyReads;
using store::Step;

// The model --------------------------------------------------------------------------------------

template <typename T>
int Compare(const T& left, const T& right) {
  return left < right ? -1 : (right < left ? 1 : 0);
}

template <typename T>
int CompareAs(std::span<const std::byte> left, std::span<const std::byte> right) {
  return Compare(Peek<T>(left, 0), Peek<T>(right, 0));
}

int CompareSegment(const KeySegment& segment, std::span<const std::byte> left,
                   std::span<const std::byte> right) {
  switch (segment.type) {
    case SegmentType::Byte:
      return CompareAs<std::uint8_t>(left, right);
    case SegmentType::Integer:
      return CompareAs<std::int16_t>(left, right);
    case SegmentType::Long:
    case SegmentType::Day:
      return CompareAs<std::int32_t>(left, right);
    case SegmentType::Double:
    case SegmentType::Date:
      return CompareAs<double>(left, right);
    case SegmentType::ZeroText:
      return PeekText(left, 0, segment.width).compare(PeekText(right, 0, segment.width));
    case SegmentType::Text:
    case SegmentType::Guid:
      return std::memcmp(left.data(), right.data(), segment.width);
  }
  return 0;
}

/// Compares two keys as they lie in a key buffer.
int CompareKeys(const KeyDescription& path, std::span<const std::byte> left,
                std::span<const std::byte> right) {
  std::size_t offset = 0;
  for (const KeySegment& segment : path.segments) {
    const int result = CompareSegment(segment, left.subspan(offset, segment.width),
                                      right.subspan(offset, segment.width));
    if (result != 0) return result;
    offset += segment.width;
  }
  return 0;
}

/// Counts records in the order of their insertion, so that it is their physical place too.
using Id = std::uint64_t;

struct Row {
  Bytes record;
  std::uint64_t version;  ///< another one after each change
};

/// The content of a file.
struct Table {
  FileDescription description;
  std::map<Id, Row> rows = {};
  Id lastId = 0;
  std::uint64_t lastVersion = 0;
};

/// An object on a table.
class ModelFile : public File {
 public:
  ModelFile(Table& table, OpenMode mode) : table_(table), mode_(mode) {}

  [[nodiscard]] const FileDescription& Description() const override { return table_.description; }

  Status Get(Seek seek, std::int16_t keyNumber, std::span<const std::byte> key,
             std::span<std::byte> record) override {
    const KeyDescription* path = table_.description.FindKey(keyNumber);
    if (path == nullptr) return StatusInvalidKeyNumber;
    const bool goesOn = seek == Seek::Next || seek == Seek::Previous;
    if (goesOn && !place_) return StatusInvalidPositioning;
    if (goesOn && place_->keyNumber != keyNumber) return StatusDifferentKeyNumber;

    const bool upwards = seek == Seek::Equal || seek == Seek::Greater ||
                         seek == Seek::GreaterOrEqual || seek == Seek::First || seek == Seek::Next;
    std::optional<Id> best;
    for (const auto& [id, row] : table_.rows) {
      if (!Fits(seek, *path, key, id)) continue;
      if (!best || Before(*path, id, *best) == upwards) best = id;
    }
    if (!best) return seek == Seek::Equal ? StatusKeyNotFound : StatusEndOfFile;
    Take(*best, record);
    TakePlace(keyNumber);
    return StatusSuccess;
  }

  Status StepTo(Step step, std::span<std::byte> record) override {
    const auto& rows = table_.rows;
    auto row = rows.end();
    switch (step) {
      case Step::First:
        row = rows.begin();
        break;
      case Step::Last:
        if (!rows.empty()) row = std::prev(rows.end());
        break;
      case Step::Next:
        row = rows.upper_bound(physical_);
        break;
      case Step::Previous:
        row = rows.lower_bound(physical_);
        row = row == rows.begin() ? rows.end() : std::prev(row);
        break;
    }
    if (row == rows.end()) return StatusEndOfFile;
    Take(row->first, record);
    place_.reset();
    return StatusSuccess;
  }

  Status Insert(std::int16_t keyNumber, std::span<std::byte> record) override {
    if (mode_ == OpenMode::ReadOnly) return StatusAccessDenied;
    if (Description().FindKey(keyNumber) == nullptr) return StatusInvalidKeyNumber;
    Bytes inserted(record.begin(), record.end());
    for (const KeyDescription& key : Description().keys) {
      if (key.autoIncrement) GiveNumber(key.segments.front(), inserted);
    }
    const Id id = table_.lastId + 1;
    if (RepeatsUniqueKey(inserted, id)) return StatusDuplicateKey;
    table_.lastId = id;
    table_.rows[id] = {inserted, ++table_.lastVersion};
    Take(id, record);
    TakePlace(keyNumber);
    return StatusSuccess;
  }

  Status Update(std::int16_t keyNumber, std::span<const std::byte> record) override {
    if (mode_ == OpenMode::ReadOnly) return StatusAccessDenied;
    if (Description().FindKey(keyNumber) == nullptr) return StatusInvalidKeyNumber;
    if (!current_) return StatusInvalidPositioning;
    if (!IsAsRead()) return StatusRecordConflict;
    if (ChangesFixedKey(record)) return StatusKeyNotModifiable;
    if (RepeatsUniqueKey(record, current_->id)) return StatusDuplicateKey;
    Row& row = table_.rows[current_->id];
    row = {Bytes(record.begin(), record.end()), ++table_.lastVersion};
    current_->version = row.version;
    TakePlace(keyNumber);
    return StatusSuccess;
  }

  Status Delete() override {
    if (mode_ == OpenMode::ReadOnly) return StatusAccessDenied;
    if (!current_) return StatusInvalidPositioning;
    if (!IsAsRead()) return StatusRecordConflict;
    table_.rows.erase(current_->id);
    current_.reset();
    return StatusSuccess;
  }

  Status Percentage(std::int16_t keyNumber, double& percent) override {
    const KeyDescription* path = Description().FindKey(keyNumber);
    if (path == nullptr) return StatusInvalidKeyNumber;
    if (!current_) return StatusInvalidPositioning;
    const auto before = std::count_if(table_.rows.begin(), table_.rows.end(), [&](const auto& row) {
      return Before(*path, row.first, current_->id);
    });
    const std::size_t steps = table_.rows.size() - 1;
    percent = steps == 0 ? 0 : 100.0 * static_cast<double>(before) / static_cast<double>(steps);
    return StatusSuccess;
  }

  /// Of the ends alone: which record lies between them is the driver's to say.
  Status GetByPercentage(std::int16_t keyNumber, double percent,
                         std::span<std::byte> record) override {
    return Get(percent <= 0 ? Seek::First : Seek::Last, keyNumber, {}, record);
  }

  std::int32_t RecordCount() override { return static_cast<std::int32_t>(table_.rows.size()); }
  std::unique_ptr<SteadyReads> BeginSteadyReads() override {
    return std::make_unique<SteadyReads>();  // nobody else writes
  }
  Status Claim() override {
    return mode_ == OpenMode::ReadOnly ? StatusAccessDenied : StatusSuccess;
  }
  Status Sync() override { return StatusSuccess; }

  /// The key number of the place on a key path.
  [[nodiscard]] std::optional<std::int16_t> PlaceKey() const {
    return place_ ? std::optional(place_->keyNumber) : std::nullopt;
  }

  /// Whether there is no current record that someone else has changed or deleted.
  [[nodiscard]] bool IsUndisturbed() const { return !current_ || IsAsRead(); }

 private:
  struct Current {
    Id id;
    std::uint64_t version;
  };
  struct Place {
    std::int16_t keyNumber;
    Bytes key;
    Id id;
  };

  /// Whether `seek`, with that key sought, may find that record.
  [[nodiscard]] bool Fits(Seek seek, const KeyDescription& path, std::span<const std::byte> key,
                          Id id) const {
    if (seek == Seek::First || seek == Seek::Last) return true;
    const bool goesOn = seek == Seek::Next || seek == Seek::Previous;
    const int order = CompareKeys(path, OwnKey(path, id), goesOn ? place_->key : key);
    switch (seek) {
      case Seek::Greater:
        return order > 0;
      case Seek::GreaterOrEqual:
        return order >= 0;
      case Seek::Less:
        return order < 0;
      case Seek::LessOrEqual:
        return order <= 0;
      case Seek::Next:
        return order > 0 || (order == 0 && id > place_->id);
      case Seek::Previous:
        return order < 0 || (order == 0 && id < place_->id);
      default:
        return order == 0;
    }
  }

  /// Whether a record lies before another on a key path.
  [[nodiscard]] bool Before(const KeyDescription& path, Id left, Id right) const {
    const int order = CompareKeys(path, OwnKey(path, left), OwnKey(path, right));
    return order < 0 || (order == 0 && left < right);
  }

  [[nodiscard]] Bytes OwnKey(const KeyDescription& path, Id id) const {
    return KeyOf(Description(), path.number, table_.rows.at(id).record);
  }

  void Take(Id id, std::span<std::byte> record) {
    const Row& row = table_.rows.at(id);
    std::copy(row.record.begin(), row.record.end(), record.begin());
    current_ = {id, row.version};
    physical_ = id;
  }

  void TakePlace(std::int16_t keyNumber) {
    const Id id = current_->id;
    place_ = {keyNumber, KeyOf(Description(), keyNumber, table_.rows.at(id).record), id};
  }

  [[nodiscard]] bool IsAsRead() const {
    const auto row = table_.rows.find(current_->id);
    return row != table_.rows.end() && row->second.version == current_->version;
  }

  void GiveNumber(const KeySegment& segment, Bytes& record) const {
    const auto give = [&]<typename T>(T) {
      if (Peek<T>(record, segment.offset) != 0) return;
      T highest = 0;
      for (const auto& [id, row] : table_.rows) {
        highest = std::max(highest, Peek<T>(row.record, segment.offset));
      }
      Poke(record, segment.offset, static_cast<T>(highest + 1));
    };
    if (segment.type == SegmentType::Integer) {
      give(std::int16_t{});
    } else {
      give(std::int32_t{});
    }
  }

  [[nodiscard]] bool SameKey(const KeyDescription& path, std::span<const std::byte> left,
                             std::span<const std::byte> right) const {
    return CompareKeys(path, KeyOf(Description(), path.number, left),
                       KeyOf(Description(), path.number, right)) == 0;
  }

  [[nodiscard]] bool RepeatsUniqueKey(std::span<const std::byte> record, Id id) const {
    for (const KeyDescription& key : Description().keys) {
      if (!key.unique) continue;
      for (const auto& [otherId, other] : table_.rows) {
        if (otherId != id && SameKey(key, record, other.record)) return true;
      }
    }
    return false;
  }

  [[nodiscard]] bool ChangesFixedKey(std::span<const std::byte> record) const {
    const Bytes& before = table_.rows.at(current_->id).record;
    return std::any_of(Description().keys.begin(), Description().keys.end(),
                       [&](const KeyDescription& key) {
                         return !key.modifiable && !SameKey(key, record, before);
                       });
  }

  Table& table_;
  OpenMode mode_;
  std::optional<Current> current_;
  std::optional<Place> place_;
  Id physical_ = 0;  ///< 0 lies before the first record
};

// Random work ------------------------------------------------------------------------------------

/// Puts a random value into one field. Values are few, so that keys repeat and searches hit.
void ChangeField(Dice& dice, Bytes& record, int field) {
  static constexpr double Doubles[] = {
      -std::numeric_limits<double>::infinity(), -2.5, -0.25, 0, 0.5, 2, 65537, 1e300};
  static constexpr std::string_view Texts[] = {
      "", " ", "A", "A ", "AB", "ABC", "ABCD", "ABCDEFGH", "ABCDEFGI", "\xE9", "ab\xFF"};
  switch (field) {
    case 0:
      Poke(record, SampleOffset::Number, std::int32_t{dice.OneIn(2) ? 0 : dice.Below(60)});
      break;
    case 1:
      Poke(record, SampleOffset::Account, std::int32_t{dice.Below(70) - 20});
      break;
    case 2:
      Poke(record, SampleOffset::Kind, static_cast<std::int16_t>(dice.Below(50)));
      break;
    case 3:
      Poke(record, SampleOffset::Group, static_cast<std::uint8_t>(126 + dice.Below(4)));
      break;
    case 4:
      Poke(record, SampleOffset::Grade, static_cast<std::uint8_t>(dice.Below(3)));
      break;
    case 5:
      PokeText(record, SampleOffset::Code, 4, dice.OneOf(Texts));
      break;
    case 6:
      Poke(record, SampleOffset::Amount, dice.OneOf(Doubles));
      break;
    case 7:
      Poke(record, SampleOffset::When, dice.OneOf(Doubles));
      break;
    case 8:
      Poke(record, SampleOffset::Due, std::int32_t{dice.Below(5) - 2});
      break;
    case 9:
      PokeText(record, SampleOffset::Name, 8, dice.OneOf(Texts));
      // Bytes behind the end of the text, which are part of the record and of no key.
      if (dice.OneIn(3)) Poke(record, SampleOffset::Name + 7, static_cast<char>(dice.Below(256)));
      break;
    default:
      Poke(record, SampleOffset::Guid + (dice.OneIn(2) ? 15 : 0), static_cast<char>(dice.Below(3)));
      break;
  }
}
constexpr int FieldCount = 11;

Bytes RandomRecord(Dice& dice) {
  Bytes record(SampleOffset::End);
  for (int field = 0; field < FieldCount; ++field) ChangeField(dice, record, field);
  return record;
}

/// A file and its model, each with the same objects, at work.
class Comparison {
 public:
  Comparison(store::Driver& driver, std::filesystem::path path, const FileDescription& description,
             std::uint32_t seed)
      : driver_(driver), path_(std::move(path)), table_{description}, dice_(seed) {
    Reopen();
  }

  /// Gathers all writes until the end, with a commit or a drop now and then.
  void Gather() {
    batch_ = driver_.BeginBatch();
    committed_ = table_;
  }

  /// Takes one random step on both sides and expects the same of both.
  void TakeStep() {
    ++step_;
    if (batch_ && dice_.OneIn(300)) return Commit();
    if (batch_ && dice_.OneIn(2000)) return Drop();
    if (dice_.OneIn(500)) return Reopen();
    Pair& pair = *pairs_[dice_.OneIn(8) ? ReadOnlyPair : static_cast<std::size_t>(dice_.Below(2))];
    if (dice_.OneIn(30)) pair.steady = pair.steady ? nullptr : pair.file->BeginSteadyReads();
    const Operation operation = Choose(pair);
    Bytes expected = operation.record.empty() ? pair.inHand : operation.record;
    Bytes found = expected;
    const Status expectedStatus = operation.run(*pair.model, expected);
    const Status foundStatus = operation.run(*pair.file, found);
    ASSERT_EQ(foundStatus, expectedStatus) << Where(operation);
    ASSERT_EQ(found, expected) << Where(operation);
    ASSERT_EQ(pair.file->RecordCount(), pair.model->RecordCount()) << Where(operation);
    pair.inHand = std::move(expected);
  }

  /// Expects both to hold the same records in the same order on every path.
  void CompareAll() {
    if (batch_) Commit();
    batch_.reset();
    Reopen();
    Pair& pair = *pairs_[0];
    const auto expectSameWalk = [&](const std::string& what, auto read) {
      for (bool isStart = true;; isStart = false) {
        const Status expected = read(*pair.model, pair.inHand, isStart);
        Bytes found(SampleOffset::End);
        ASSERT_EQ(read(*pair.file, found, isStart), expected) << what;
        if (expected != StatusSuccess) return;
        ASSERT_EQ(found, pair.inHand) << what;
      }
    };
    for (const KeyDescription& key : table_.description.keys) {
      expectSameWalk(
          "key " + std::to_string(key.number), [&](File& file, Bytes& record, bool isStart) {
            return file.Get(isStart ? Seek::Last : Seek::Previous, key.number, {}, record);
          });
    }
    expectSameWalk("steps", [](File& file, Bytes& record, bool isStart) {
      return file.StepTo(isStart ? Step::First : Step::Next, record);
    });
  }

  [[nodiscard]] std::int64_t Steps() const { return step_; }

 private:
  /// One object on the file and its like on the model.
  struct Pair {
    std::unique_ptr<File> file;
    std::unique_ptr<ModelFile> model;
    std::unique_ptr<SteadyReads> steady = nullptr;  ///< now and then
    Bytes inHand = Bytes(SampleOffset::End);
  };

  static constexpr std::size_t ReadOnlyPair = 2;

  struct Operation {
    std::string_view name;
    std::int16_t keyNumber;
    std::function<Status(File&, Bytes&)> run;
    Bytes record = {};  ///< put into both record buffers before; empty for none
  };

  void Reopen() {
    for (auto& pair : pairs_) {
      const bool isReadOnly = &pair == &pairs_[ReadOnlyPair];
      const OpenMode mode = isReadOnly ? OpenMode::ReadOnly : OpenMode::Normal;
      pair = std::make_unique<Pair>();
      ASSERT_EQ(driver_.Open(path_, mode, pair->file), StatusSuccess);
      pair->model = std::make_unique<ModelFile>(table_, mode);
    }
  }

  void Commit() {
    ASSERT_EQ(batch_->Commit(), StatusSuccess);
    committed_ = table_;
  }

  void Drop() {
    // Positions on records that never were are over with them.
    for (auto& pair : pairs_) pair.reset();
    batch_.reset();
    table_ = committed_;
    batch_ = driver_.BeginBatch();
    Reopen();
  }

  Operation Choose(const Pair& pair) {
    const std::int16_t keyNumber = RandomKey();
    const int full = static_cast<int>(table_.rows.size());
    // Between 0 and 60 records; the fuller the file, the rarer an insert.
    if (dice_.Below(60) > full && dice_.OneIn(3)) return MakeInsert(keyNumber);
    switch (dice_.Below(10)) {
      case 0:
        return {"delete", 0, [](File& file, Bytes&) { return file.Delete(); }};
      case 1:
      case 2:
        return MakeUpdate(pair, keyNumber);
      case 3:
      case 4:
        return MakeStep();
      case 5:
        return pair.model->IsUndisturbed() && dice_.OneIn(2) ? MakePercentage(keyNumber)
                                                             : MakeGetByPercentage(keyNumber);
      default:
        return MakeGet(pair, keyNumber);
    }
  }

  std::int16_t RandomKey() {
    if (dice_.OneIn(50)) return dice_.OneIn(2) ? SampleKey::Missing : std::int16_t{-1};
    const auto& keys = table_.description.keys;
    // A favourite, so that walks on one path happen.
    if (dice_.OneIn(3)) return keys[static_cast<std::size_t>(step_ / 100) % keys.size()].number;
    return keys[static_cast<std::size_t>(dice_.Below(static_cast<int>(keys.size())))].number;
  }

  Operation MakeInsert(std::int16_t keyNumber) {
    Bytes record = RandomRecord(dice_);
    Poke(record, SampleOffset::Stamp, static_cast<std::int32_t>(step_));
    return {"insert", keyNumber,
            [=](File& file, Bytes& inserted) { return file.Insert(keyNumber, inserted); }, record};
  }

  Operation MakeUpdate(const Pair& pair, std::int16_t keyNumber) {
    Bytes record = pair.inHand;
    for (int changes = dice_.Below(4); changes > 0; --changes) {
      ChangeField(dice_, record, dice_.Below(FieldCount));
    }
    Poke(record, SampleOffset::Stamp, static_cast<std::int32_t>(step_));
    return {"update", keyNumber,
            [=](File& file, Bytes& updated) { return file.Update(keyNumber, updated); }, record};
  }

  Operation MakeStep() {
    static constexpr Step Steps[] = {Step::First, Step::Last, Step::Next, Step::Next,
                                     Step::Previous};
    const Step step = dice_.OneOf(Steps);
    return {"step", static_cast<std::int16_t>(step),
            [=](File& file, Bytes& record) { return file.StepTo(step, record); }};
  }

  Operation MakeGet(const Pair& pair, std::int16_t keyNumber) {
    static constexpr Seek Seeks[] = {Seek::Equal,    Seek::Greater, Seek::GreaterOrEqual,
                                     Seek::Less,     Seek::First,   Seek::LessOrEqual,
                                     Seek::Last,     Seek::Next,    Seek::Next,
                                     Seek::Previous, Seek::Next,    Seek::Previous};
    static constexpr std::string_view Names[] = {"equal", "greater",       "greater or equal",
                                                 "less",  "less or equal", "first",
                                                 "last",  "next",          "previous"};
    const Seek seek = dice_.OneOf(Seeks);
    const bool goesOn = seek == Seek::Next || seek == Seek::Previous;
    if (goesOn && !dice_.OneIn(5)) keyNumber = pair.model->PlaceKey().value_or(keyNumber);
    const Bytes sought = RandomSought(pair);
    const Bytes key = KeyOf(table_.description, keyNumber, sought);
    return {Names[static_cast<std::size_t>(seek)], keyNumber,
            [=](File& file, Bytes& record) { return file.Get(seek, keyNumber, key, record); }};
  }

  /// A record whose key a search looks for: that in the hand of some object, any in the file, or
  /// one that may be nowhere.
  Bytes RandomSought(const Pair& pair) {
    if (dice_.OneIn(4)) return RandomRecord(dice_);
    if (dice_.OneIn(3)) return pair.inHand;
    if (table_.rows.empty() || dice_.OneIn(3)) return pairs_[0]->inHand;
    const int chosen = dice_.Below(static_cast<int>(table_.rows.size()));
    return std::next(table_.rows.begin(), chosen)->second.record;
  }

  /// The percentage goes into the record buffer, the stretch between the ends as one value.
  Operation MakePercentage(std::int16_t keyNumber) {
    return {"percentage", keyNumber, [=](File& file, Bytes& record) {
              double percent = -1;
              const Status status = file.Percentage(keyNumber, percent);
              const bool isBetween = percent > 0 && percent < 100;
              Poke(record, SampleOffset::Guid, isBetween ? 50.0 : percent);
              return status;
            }};
  }

  Operation MakeGetByPercentage(std::int16_t keyNumber) {
    static constexpr double Percents[] = {0, 100, -1, 101, -1e300, 1e300};
    const double percent = dice_.OneOf(Percents);
    return {"by percentage", keyNumber, [=](File& file, Bytes& record) {
              return file.GetByPercentage(keyNumber, percent, record);
            }};
  }

  [[nodiscard]] std::string Where(const Operation& operation) const {
    return "step " + std::to_string(step_) + ", " + std::string(operation.name) + " on " +
           std::to_string(operation.keyNumber);
  }

  store::Driver& driver_;
  std::filesystem::path path_;
  Table table_;
  Table committed_;
  Dice dice_;
  std::unique_ptr<store::Batch> batch_;
  std::array<std::unique_ptr<Pair>, 3> pairs_;
  std::int64_t step_ = 0;
};

class Model : public DriverTest {
 protected:
  /// Rounds of work on files of that kind: most of them in batches, some with a commit a write.
  void Work(const FileDescription& description) {
    constexpr int Rounds = 10;
    constexpr int Steps = 8500;
    constexpr int StepsWithoutBatch = 400;
    const std::uint32_t seed = Seed();
    std::int64_t compared = 0;
    for (int round = 0; round < Rounds; ++round) {
      SCOPED_TRACE(testing::Message() << "LARKMOOR_SEED=" << seed << ", round " << round);
      const bool isGathered = round % 5 != 4;
      FileDescription numbered = description;
      numbered.name += std::to_string(round);
      const auto path = Make(numbered);
      Comparison comparison(Driver(), path, numbered, seed + static_cast<std::uint32_t>(round));
      if (isGathered) comparison.Gather();
      for (int step = isGathered ? Steps : StepsWithoutBatch; step > 0; --step) {
        comparison.TakeStep();
        if (HasFatalFailure()) return;
      }
      comparison.CompareAll();
      if (HasFatalFailure()) return;
      compared += comparison.Steps();
      EXPECT_EQ(Findings(path), Nothing);
    }
    RecordProperty("operations", std::to_string(compared));
  }
};
INSTANTIATE_TEST_SUITE_P(Every, Model, testing::ValuesIn(EveryDriver()), DriverName);

TEST_P(Model, AFileWithEveryKindOfKeyBehavesAsTheRulesSay) { Work(SampleFile()); }

TEST_P(Model, AFileWhoseKeysRefuseThingsBehavesAsTheRulesSay) { Work(StrictFile()); }

TEST_P(Model, AFileOfRepeatedKeysAndShortNumbersBehavesAsTheRulesSay) { Work(LooseFile()); }

}  // namespace
}  // namespace larkmoor::test
