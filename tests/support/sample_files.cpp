#include "support/sample_files.h"

#include <algorithm>
#include <ostream>
#include <stdexcept>
#include <utility>

namespace larkmoor::test {
namespace {

using store::FileDescription;
using store::KeySegment;
using store::Seek;
using store::SegmentType;
using store::Step;

constexpr std::size_t CodeWidth = 4;
constexpr std::size_t NameWidth = 8;

constexpr KeySegment Number{SegmentType::Long, SampleOffset::Number, 4};
constexpr KeySegment Account{SegmentType::Long, SampleOffset::Account, 4};
constexpr KeySegment Kind{SegmentType::Integer, SampleOffset::Kind, 2};
constexpr KeySegment Group{SegmentType::Byte, SampleOffset::Group, 1};
constexpr KeySegment Grade{SegmentType::Byte, SampleOffset::Grade, 1};
constexpr KeySegment Code{SegmentType::Text, SampleOffset::Code, CodeWidth};
constexpr KeySegment Amount{SegmentType::Double, SampleOffset::Amount, 8};
constexpr KeySegment When{SegmentType::Date, SampleOffset::When, 8};
constexpr KeySegment Due{SegmentType::Day, SampleOffset::Due, 4};
constexpr KeySegment Name{SegmentType::ZeroText, SampleOffset::Name, NameWidth};
constexpr KeySegment Guid{SegmentType::Guid, SampleOffset::Guid, 16};

/// Goes on until the walk ends. The bound ends a walk that runs in a circle.
template <typename Read>
std::vector<std::int32_t> Walk(Cursor& file, Read start, Read next) {
  constexpr std::size_t Bound = 1'000'000;
  std::vector<std::int32_t> numbers;
  for (Status status = start(); status == StatusSuccess && numbers.size() < Bound;
       status = next()) {
    numbers.push_back(file.InHand().number);
  }
  return numbers;
}

std::vector<std::int32_t> WalkKey(Cursor& file, std::int16_t keyNumber, Seek start, Seek next) {
  const auto read = [&](Seek seek) { return [&, seek] { return file.Get(seek, keyNumber); }; };
  return Walk(file, read(start), read(next));
}

std::vector<std::int32_t> WalkSteps(Cursor& file, Step start, Step next) {
  const auto read = [&](Step step) { return [&, step] { return file.StepTo(step); }; };
  return Walk(file, read(start), read(next));
}

}  // namespace

void MustSucceed(Status status, std::string_view what) {
  if (status != StatusSuccess) {
    throw std::runtime_error(std::string(what) + " answered " + std::to_string(status));
  }
}

std::string PeekText(std::span<const std::byte> record, std::size_t offset, std::size_t width) {
  const auto field = record.subspan(offset, width);
  const auto end = std::find(field.begin(), field.end(), std::byte{0});
  std::string text;
  std::transform(field.begin(), end, std::back_inserter(text),
                 [](std::byte value) { return static_cast<char>(value); });
  return text;
}

void PokeText(std::span<std::byte> record, std::size_t offset, std::size_t width,
              std::string_view text) {
  const auto field = record.subspan(offset, width);
  std::fill(field.begin(), field.end(), std::byte{0});
  std::memcpy(field.data(), text.data(), std::min(width, text.size()));
}

Sample Sample::FromBytes(std::span<const std::byte> record) {
  return {
      .number = Peek<std::int32_t>(record, SampleOffset::Number),
      .account = Peek<std::int32_t>(record, SampleOffset::Account),
      .kind = Peek<std::int16_t>(record, SampleOffset::Kind),
      .group = Peek<std::uint8_t>(record, SampleOffset::Group),
      .grade = Peek<std::uint8_t>(record, SampleOffset::Grade),
      .code = PeekText(record, SampleOffset::Code, CodeWidth),
      .amount = Peek<double>(record, SampleOffset::Amount),
      .when = Peek<double>(record, SampleOffset::When),
      .due = Peek<std::int32_t>(record, SampleOffset::Due),
      .name = PeekText(record, SampleOffset::Name, NameWidth),
      .guid = Peek<std::array<std::uint8_t, 16>>(record, SampleOffset::Guid),
      .stamp = Peek<std::int32_t>(record, SampleOffset::Stamp),
  };
}

Bytes Sample::ToBytes() const {
  Bytes record(SampleOffset::End);
  Poke(record, SampleOffset::Number, number);
  Poke(record, SampleOffset::Account, account);
  Poke(record, SampleOffset::Kind, kind);
  Poke(record, SampleOffset::Group, group);
  Poke(record, SampleOffset::Grade, grade);
  PokeText(record, SampleOffset::Code, CodeWidth, code);
  Poke(record, SampleOffset::Amount, amount);
  Poke(record, SampleOffset::When, when);
  Poke(record, SampleOffset::Due, due);
  PokeText(record, SampleOffset::Name, NameWidth, name);
  Poke(record, SampleOffset::Guid, guid);
  Poke(record, SampleOffset::Stamp, stamp);
  return record;
}

std::ostream& operator<<(std::ostream& out, const Sample& sample) {
  out << "{number " << sample.number << ", account " << sample.account << ", kind " << sample.kind
      << ", group " << int{sample.group} << ", grade " << int{sample.grade} << ", code \""
      << sample.code << "\", amount " << sample.amount << ", when " << sample.when << ", due "
      << sample.due << ", name \"" << sample.name << "\", guid";
  for (const std::uint8_t value : sample.guid) out << ' ' << int{value};
  return out << ", stamp " << sample.stamp << '}';
}

FileDescription SampleFile() {
  return {.name = "Sample",
          .release = 19.0,
          .recordLength = SampleOffset::End,
          .keys = {
              {.number = SampleKey::Number,
               .unique = true,
               .autoIncrement = true,
               .segments = {Number}},
              {.number = SampleKey::Name, .segments = {Name}},
              {.number = SampleKey::Place, .segments = {Group, Account, Name}},
              {.number = SampleKey::Kind, .segments = {Kind}},
              {.number = SampleKey::Group, .segments = {Group}},
              {.number = SampleKey::Amount, .segments = {Amount}},
              {.number = SampleKey::When, .segments = {When}},
              {.number = SampleKey::Due, .segments = {Due}},
              {.number = SampleKey::Code, .segments = {Code}},
              {.number = SampleKey::Guid, .segments = {Guid}},
          }};
}

FileDescription StrictFile() {
  return {.name = "Strict",
          .release = 11.5,
          .recordLength = SampleOffset::End,
          .keys = {
              {.number = StrictKey::Number,
               .unique = true,
               .autoIncrement = true,
               .segments = {Number}},
              {.number = StrictKey::Account, .unique = true, .segments = {Account}},
              {.number = StrictKey::Grade, .modifiable = false, .segments = {Grade}},
              {.number = StrictKey::Name, .modifiable = false, .segments = {Name}},
          }};
}

FileDescription LooseFile() {
  return {.name = "Loose",
          .release = 8.0,
          .recordLength = SampleOffset::End,
          .keys = {
              {.number = LooseKey::Group, .segments = {Group}},
              {.number = LooseKey::Kind, .unique = true, .autoIncrement = true, .segments = {Kind}},
          }};
}

Sample MadeSample(std::int32_t number, std::int32_t value) {
  Sample sample{
      .number = number,
      .account = value,
      .kind = static_cast<std::int16_t>(value % 7 - 3),
      .group = static_cast<std::uint8_t>(value % 5),
      .grade = static_cast<std::uint8_t>(number % 3),
      .code = std::to_string(value % 100),
      .amount = value / 4.0 - number,
      .when = 36526 + value / 8.0,
      .due = 36526 + value % 31,
      .name = "N" + std::to_string(value % 1000),
      .stamp = value,
  };
  Poke(std::as_writable_bytes(std::span(sample.guid)), 4, number);
  Poke(std::as_writable_bytes(std::span(sample.guid)), 10, value);
  return sample;
}

Bytes KeyOf(const FileDescription& description, std::int16_t keyNumber,
            std::span<const std::byte> record) {
  Bytes key;
  if (const auto* found = description.FindKey(keyNumber)) {
    for (const KeySegment& segment : found->segments) {
      const auto field = record.subspan(segment.offset, segment.width);
      key.insert(key.end(), field.begin(), field.end());
    }
  }
  key.resize(KeyBufferLength);
  return key;
}

Cursor::Cursor(store::Driver& driver, std::filesystem::path path, store::OpenMode mode)
    : driver_(&driver), path_(std::move(path)) {
  MustSucceed(driver.Open(path_, mode, file_), "open of " + path_.string());
  buffer_.resize(file_->Description().recordLength);
}

Cursor Cursor::Another(store::OpenMode mode) const { return {*driver_, path_, mode}; }

Status Cursor::Get(Seek seek, std::int16_t keyNumber, const Sample& sought) {
  const Bytes key = KeyOf(file_->Description(), keyNumber, sought.ToBytes());
  return file_->Get(seek, keyNumber, key, buffer_);
}

Status Cursor::StepTo(Step step) { return file_->StepTo(step, buffer_); }

Status Cursor::Insert(std::int16_t keyNumber, const Sample& sample) {
  buffer_ = sample.ToBytes();
  return file_->Insert(keyNumber, buffer_);
}

Status Cursor::Update(std::int16_t keyNumber, const Sample& sample) {
  buffer_ = sample.ToBytes();
  return file_->Update(keyNumber, buffer_);
}

Status Cursor::Delete() { return file_->Delete(); }

void Fill(Cursor& file, std::initializer_list<Sample> samples) {
  for (const Sample& sample : samples) {
    MustSucceed(file.Insert(file.File().Description().keys.front().number, sample), "insert");
  }
}

std::vector<std::int32_t> NumbersByKey(Cursor& file, std::int16_t keyNumber) {
  return WalkKey(file, keyNumber, Seek::First, Seek::Next);
}

std::vector<std::int32_t> NumbersByKeyBackwards(Cursor& file, std::int16_t keyNumber) {
  return WalkKey(file, keyNumber, Seek::Last, Seek::Previous);
}

std::vector<std::int32_t> NumbersByStep(Cursor& file) {
  return WalkSteps(file, Step::First, Step::Next);
}

std::vector<std::int32_t> NumbersByStepBackwards(Cursor& file) {
  return WalkSteps(file, Step::Last, Step::Previous);
}

}  // namespace larkmoor::test
