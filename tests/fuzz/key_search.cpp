// Writes and searches on a file with keys of every kind, against a model.
//
// An input is a list of operations: what to do, and what to do it with. All of them are in one
// batch, which is dropped in the end.
#include <array>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>

#include <larkmoor/error.h>
#include <larkmoor/status.h>

#include "engine/guid.h"
#include "engine/runtime_error.h"
#include "engine/text.h"
#include "engine/tovrin_file.h"
#include "fuzz/input_reader.h"
#include "fuzz/key_model.h"
#include "fuzz/restored_file.h"
#include "support/errors.h"

namespace larkmoor::fuzz {
namespace {

using store::KeyDescription;
using store::Seek;
using test::Bytes;
using test::MadeSample;

constexpr std::size_t RecordLength = test::SampleOffset::End;
constexpr std::int32_t RecordsAtFirst = 40;

std::vector<Bytes> FirstRecords() {
  std::vector<Bytes> records;
  for (std::int32_t number = 1; number <= RecordsAtFirst; ++number) {
    records.push_back(MadeSample(number, number * 37 % 19 - 5).ToBytes());
  }
  return records;
}

void FillFile(test::Cursor& file) {
  for (const Bytes& record : FirstRecords()) {
    Must(file.Insert(test::SampleKey::Number, test::Sample::FromBytes(record)) == StatusSuccess,
         "a record can be inserted");
  }
}

/// The key buffer as the writers' rules have it.
class KeyBuffer {
 public:
  [[nodiscard]] std::span<const std::byte> Bytes() const { return bytes_; }

  /// What does not fit is dropped.
  void Put(std::span<const std::byte> bytes, int offset) {
    for (const std::byte value : bytes) {
      if (offset >= 0 && offset < std::ssize(bytes_))
        bytes_[static_cast<std::size_t>(offset)] = value;
      if (offset++ < 0) return;
    }
  }
  void Put(std::string_view text, int offset) { Put(std::as_bytes(std::span(text)), offset); }
  template <typename Number>
  void PutNumber(Number number, int offset) {
    Put(std::as_bytes(std::span(&number, 1)), offset);
  }

 private:
  std::array<std::byte, TovrinFile::KeyBufferSize> bytes_{};
};

/// The key writers that take a text.
enum class TextWriter { Text, String, Terminated };

/// A file and its model, which are told the same.
class Comparison {
 public:
  explicit Comparison(const std::filesystem::path& path) : model_(test::SampleFile()) {
    Must(file_.btOpen(path.string(), TovrinFile::NormalMode) == StatusSuccess, "the file opens");
    model_.Records() = FirstRecords();
    Must(file_.btRecordCount() == RecordsAtFirst, "what was dropped before has left nothing");
  }

  void Do(InputReader& input) {
    constexpr void (Comparison::*Operations[])(InputReader&) = {
        &Comparison::WriteNumber, &Comparison::WriteText, &Comparison::WriteKeyOfRecord,
        &Comparison::Search,      &Comparison::Insert,    &Comparison::Update,
        &Comparison::Delete,
    };
    (this->*Operations[input.TakeChoice(std::size(Operations))])(input);
  }

 private:
  void WriteNumber(InputReader& input) {
    const auto offset = input.Take<std::int16_t>();
    switch (input.TakeChoice(4)) {
      case 0:
        return Write(&TovrinFile::KeyByte, input.Take<std::uint8_t>(), offset);
      case 1:
        return Write(&TovrinFile::KeyWord, input.Take<std::int16_t>(), offset);
      case 2:
        return Write(&TovrinFile::KeyLong, input.Take<std::int32_t>(), offset);
      default:
        return Write(&TovrinFile::KeyDouble, input.Take<double>(), offset);
    }
  }

  template <typename Number>
  void Write(void (TovrinFile::*write)(Number, std::int16_t), Number number, std::int16_t offset) {
    (file_.*write)(number, offset);
    key_.PutNumber(number, offset);
  }

  /// A text that is not UTF-8 is refused, and writes nothing.
  void WriteText(InputReader& input) {
    const auto offset = input.Take<std::int16_t>();
    const auto writer = static_cast<TextWriter>(input.TakeChoice(3));
    const auto length = input.Take<std::int16_t>();
    const std::string_view text = input.TakeText();
    const std::int32_t raised = test::RaisedNumber([&] {
      if (writer == TextWriter::Text) file_.KeyText(text, offset);
      if (writer == TextWriter::String) file_.KeyString(text, length, offset);
      if (writer == TextWriter::Terminated) file_.KeyTerminated(text, offset);
      return 0;
    });
    Must(raised == test::RaisedNumber([&] { return ToWindows1252(text); }),
         "a text is refused where it is not UTF-8");
    if (raised == 0) key_.Put(WrittenBytes(writer, text, length), offset);
  }

  static std::string WrittenBytes(TextWriter writer, std::string_view text, std::int16_t length) {
    std::string bytes = ToWindows1252(text);
    if (writer == TextWriter::Terminated) return bytes + '\0';
    if (writer == TextWriter::String)
      bytes.resize(length > 0 ? static_cast<std::size_t>(length) : 0);
    const auto guid = writer == TextWriter::Text ? ParseGuid(text) : std::nullopt;
    if (guid) bytes.assign(reinterpret_cast<const char*>(guid->data()), guid->size());
    return bytes;
  }

  /// Aims at a record; a number written into the key behind that aims beside it.
  void WriteKeyOfRecord(InputReader& input) {
    const KeyDescription& key = TakeKey(input);
    if (model_.Records().empty()) return;
    const Bytes& record = model_.Records()[input.TakeChoice(model_.Records().size())];
    const Bytes bytes = test::KeyOf(model_.Description(), key.number, record);
    for (std::size_t i = 0; i < key.Width(); ++i) {
      Write(&TovrinFile::KeyByte, std::to_integer<std::uint8_t>(bytes[i]),
            static_cast<std::int16_t>(i));
    }
  }

  void Search(InputReader& input) {
    const std::size_t seek = input.TakeChoice(std::size(Searches));
    const KeyDescription& key = TakeKey(input);
    const auto path = model_.PathOf(key);
    const auto found = model_.Find(Searches[seek].seek, key, path, key_.Bytes());
    const Status missing = Searches[seek].seek == Seek::Equal ? StatusKeyNotFound : StatusEndOfFile;
    Read(Searches[seek].read, key, path, found, missing);
    if (!found) return;
    CheckNeighbours(key, path, *found);
    CheckPercentage(key, path, *found);
    CheckSteps(path[*found]);
    current_ = path[*found];
  }

  /// Goes a place on, and back again, both ways.
  void CheckNeighbours(const KeyDescription& key, const std::vector<std::size_t>& path,
                       std::size_t place) {
    const auto at = [&](std::size_t there) {
      return there < path.size() ? std::optional(there) : std::nullopt;
    };
    if (Read(&TovrinFile::btGetNext, key, path, at(place + 1))) {
      Read(&TovrinFile::btGetPrevious, key, path, place);
    }
    if (Read(&TovrinFile::btGetPrevious, key, path, at(place - 1))) {
      Read(&TovrinFile::btGetNext, key, path, place);
    }
  }

  void CheckPercentage(const KeyDescription& key, const std::vector<std::size_t>& path,
                       std::size_t place) {
    double percent = -1;
    Must(file_.btFindPercentage(key.number, percent) == StatusSuccess, "a record lies somewhere");
    Must(percent >= 0 && percent <= 100, "a percentage goes from 0 to 100");
    Must(file_.btGetByPercentage(key.number, percent) == StatusSuccess, "a record lies there");
    Must(InHand() == model_.Records()[path[place]], "of a small file a percentage is exact");
  }

  /// From the record at that place in physical order a step on, and back again. A step leaves no
  /// place on a key path.
  void CheckSteps(std::size_t place) {
    const bool isLast = place + 1 == model_.Records().size();
    Must(file_.btStepNext() == (isLast ? StatusEndOfFile : StatusSuccess),
         "a step ends at the end");
    Must(InHand() == model_.Records()[isLast ? place : place + 1],
         "a step goes to the next record");
    if (isLast) return;
    Must(file_.btStepPrevious() == StatusSuccess, "a step goes back");
    Must(InHand() == model_.Records()[place], "a step goes back to where it was");
    Must(file_.btGetNext(test::SampleKey::Number) == StatusInvalidPositioning,
         "a step leaves no place on a key path");
  }

  /// One read, which gives the record at that place of the path, or `missing` and changes nothing.
  bool Read(Status (TovrinFile::*read)(std::int16_t), const KeyDescription& key,
            const std::vector<std::size_t>& path, std::optional<std::size_t> expected,
            Status missing = StatusEndOfFile) {
    const Bytes before = InHand();
    const Status status = (file_.*read)(key.number);
    Must(status == (expected ? StatusSuccess : missing), "a read answers what the model answers");
    Must(InHand() == (expected ? model_.Records()[path[*expected]] : before),
         "a read gives what the model gives, and leaves the record where it fails");
    return status == StatusSuccess;
  }

  /// A record of any bytes.
  void Insert(InputReader& input) {
    Bytes record = TakeRecord(input);
    if (NumberOf(record) == 0) SetNumber(record, model_.NextNumber());
    const bool isTaken = NumberOf(record) == 0 || model_.HasNumberOf(record);
    const Status status = file_.btInsert(TakeKey(input).number);
    Must(status == (isTaken ? StatusDuplicateKey : StatusSuccess), "a number is taken once");
    if (status != StatusSuccess) return;
    Must(InHand() == record, "after an insert the buffer holds the number");
    current_ = model_.Records().size();
    model_.Records().push_back(record);
  }

  void Update(InputReader& input) {
    const Bytes record = TakeRecord(input);
    const Status status = file_.btUpdate(TakeKey(input).number);
    if (!current_) return Must(status == StatusInvalidPositioning, "no record to change");
    const bool isTaken = model_.HasNumberOf(record, current_);
    Must(status == (isTaken ? StatusDuplicateKey : StatusSuccess), "a number is taken once");
    if (status == StatusSuccess) model_.Records()[*current_] = record;
  }

  void Delete(InputReader& /*input*/) {
    const Status status = file_.btDelete();
    if (!current_) return Must(status == StatusInvalidPositioning, "no record to delete");
    Must(status == StatusSuccess, "the current record can be deleted");
    model_.Records().erase(model_.Records().begin() + static_cast<std::ptrdiff_t>(*current_));
    current_.reset();
  }

  const KeyDescription& TakeKey(InputReader& input) const {
    const auto& keys = model_.Description().keys;
    return keys[input.TakeChoice(keys.size())];
  }

  /// Puts a record of the input's bytes into the record buffer, over what is there.
  Bytes TakeRecord(InputReader& input) {
    const std::size_t offset = input.TakeChoice(RecordLength);
    const Input bytes = input.TakeBytes(input.TakeChoice(RecordLength - offset + 1));
    std::ranges::transform(bytes,
                           file_.RecordBuffer()->begin() + static_cast<std::ptrdiff_t>(offset),
                           [](std::uint8_t value) { return std::byte{value}; });
    return InHand();
  }

  [[nodiscard]] Bytes InHand() const { return *file_.RecordBuffer(); }
  static std::int32_t NumberOf(const Bytes& record) {
    return test::Peek<std::int32_t>(record, test::SampleOffset::Number);
  }
  static void SetNumber(Bytes& record, std::int32_t number) {
    test::Poke(std::span(record), test::SampleOffset::Number, number);
  }

  struct SearchCall {
    Seek seek;
    Status (TovrinFile::*read)(std::int16_t);
  };
  static constexpr SearchCall Searches[] = {
      {Seek::Equal, &TovrinFile::btGetEqual},
      {Seek::Greater, &TovrinFile::btGetGreaterThan},
      {Seek::GreaterOrEqual, &TovrinFile::btGetGreaterOrEqual},
      {Seek::Less, &TovrinFile::btGetLessThan},
      {Seek::LessOrEqual, &TovrinFile::btGetLessOrEqual},
      {Seek::First, &TovrinFile::btGetFirst},
      {Seek::Last, &TovrinFile::btGetLast},
  };

  TovrinFile file_;
  KeyModel model_;
  KeyBuffer key_;
  std::optional<std::size_t> current_;  ///< place of the current record in the model
};

}  // namespace

void KeySearch(Input input) {
  static const RestoredFile filled(test::SampleFile(), FillFile);
  // To open what is open already costs little.
  static const test::Cursor open(store::DefaultDriver(), filled.Path());
  const auto dropped = store::DefaultDriver().BeginBatch();
  Comparison comparison(filled.Path());
  InputReader reader(input);
  while (!reader.AtEnd()) comparison.Do(reader);
}

}  // namespace larkmoor::fuzz
