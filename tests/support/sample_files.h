// Record files for the engine's tests: a small record with a field of every kind that keys are made
// of, three files over it, and a file object with a record buffer to work on them.
//
// Nothing here needs GoogleTest, so that helper processes can use it too.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <filesystem>
#include <initializer_list>
#include <iosfwd>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include <larkmoor/status.h>

#include "engine/store/driver.h"

namespace larkmoor::test {

using Bytes = std::vector<std::byte>;

/// Throws `std::runtime_error` that names the work and its status where that is not 0.
void MustSucceed(Status status, std::string_view what);

/// The value at that place of a record.
template <typename T>
T Peek(std::span<const std::byte> record, std::size_t offset) {
  T value;
  std::memcpy(&value, record.subspan(offset, sizeof value).data(), sizeof value);
  return value;
}

/// Puts a value at that place of a record.
template <typename T>
void Poke(std::span<std::byte> record, std::size_t offset, const T& value) {
  std::memcpy(record.subspan(offset, sizeof value).data(), &value, sizeof value);
}

/// The bytes of a text field up to its first zero byte or its width.
std::string PeekText(std::span<const std::byte> record, std::size_t offset, std::size_t width);

/// Fills a text field: the text, cut at the width, and zero bytes behind it.
void PokeText(std::span<std::byte> record, std::size_t offset, std::size_t width,
              std::string_view text);

/// The record of the sample files, 64 bytes, unpacked.
struct Sample {
  std::int32_t number = 0;
  std::int32_t account = 0;
  std::int16_t kind = 0;
  std::uint8_t group = 0;
  std::uint8_t grade = 0;
  std::string code = {};  ///< four bytes of fixed text
  double amount = 0;
  double when = 0;
  std::int32_t due = 0;
  std::string name = {};  ///< up to eight bytes of zero-terminated text
  std::array<std::uint8_t, 16> guid = {};
  std::int32_t stamp = 0;  ///< in no key

  static Sample FromBytes(std::span<const std::byte> record);
  [[nodiscard]] Bytes ToBytes() const;

  bool operator==(const Sample&) const = default;
};

std::ostream& operator<<(std::ostream& out, const Sample& sample);

/// Where the fields of a `Sample` lie.
struct SampleOffset {
  static constexpr std::uint16_t Number = 0;
  static constexpr std::uint16_t Account = 4;
  static constexpr std::uint16_t Kind = 8;
  static constexpr std::uint16_t Group = 10;
  static constexpr std::uint16_t Grade = 11;
  static constexpr std::uint16_t Code = 12;
  static constexpr std::uint16_t Amount = 16;
  static constexpr std::uint16_t When = 24;
  static constexpr std::uint16_t Due = 32;
  static constexpr std::uint16_t Name = 36;
  static constexpr std::uint16_t Guid = 44;
  static constexpr std::uint16_t Stamp = 60;
  static constexpr std::uint16_t End = 64;
};

/// The key numbers of `SampleFile`; those between are missing.
struct SampleKey {
  static constexpr std::int16_t Number = 0;   ///< unique, gives numbers
  static constexpr std::int16_t Name = 1;     ///< zero-terminated text
  static constexpr std::int16_t Missing = 2;  ///< no file has it
  static constexpr std::int16_t Place = 3;    ///< group, account and name
  static constexpr std::int16_t Kind = 4;
  static constexpr std::int16_t Group = 6;
  static constexpr std::int16_t Amount = 7;
  static constexpr std::int16_t When = 10;
  static constexpr std::int16_t Due = 11;
  static constexpr std::int16_t Code = 15;  ///< fixed text
  static constexpr std::int16_t Guid = 16;
};

/// A file with a key of every kind. All but the number may repeat.
store::FileDescription SampleFile();

/// The key numbers of `StrictFile`.
struct StrictKey {
  static constexpr std::int16_t Number = 0;   ///< unique, gives numbers
  static constexpr std::int16_t Account = 1;  ///< unique
  static constexpr std::int16_t Grade = 3;    ///< not modifiable
  static constexpr std::int16_t Name = 5;     ///< not modifiable, zero-terminated text
};

/// A file whose keys refuse things.
store::FileDescription StrictFile();

/// The key numbers of `LooseFile`.
struct LooseKey {
  static constexpr std::int16_t Group = 0;
  static constexpr std::int16_t Kind = 9;  ///< unique, gives numbers of 16 bits
};

/// A file whose key 0 repeats and whose numbers have 16 bits.
store::FileDescription LooseFile();

/// A record of which every key follows from the two numbers, so that a record that was written by
/// halves can be told from a whole one.
Sample MadeSample(std::int32_t number, std::int32_t value);

/// Length of a key buffer.
inline constexpr std::size_t KeyBufferLength = 255;

/// A key buffer that holds the key of that number as the record has it; zero bytes where there is
/// no such key.
Bytes KeyOf(const store::FileDescription& description, std::int16_t keyNumber,
            std::span<const std::byte> record);

/// An opened sample file with its record buffer.
class Cursor {
 public:
  /// Opens the file. Throws `std::runtime_error` with the status where that fails.
  Cursor(store::Driver& driver, std::filesystem::path path,
         store::OpenMode mode = store::OpenMode::Normal);

  /// Another object on the same file, with a position of its own.
  [[nodiscard]] Cursor Another(store::OpenMode mode = store::OpenMode::Normal) const;

  /// A search; those that compare look for the key that `sought` has.
  Status Get(store::Seek seek, std::int16_t keyNumber, const Sample& sought = {});
  Status StepTo(store::Step step);
  /// Puts `sample` into the record buffer and inserts it.
  Status Insert(std::int16_t keyNumber, const Sample& sample);
  /// Puts `sample` into the record buffer and rewrites the current record.
  Status Update(std::int16_t keyNumber, const Sample& sample);
  Status Delete();

  /// What the record buffer holds.
  [[nodiscard]] Sample InHand() const { return Sample::FromBytes(buffer_); }
  [[nodiscard]] Bytes& Buffer() { return buffer_; }
  [[nodiscard]] store::File& File() const { return *file_; }
  [[nodiscard]] const std::filesystem::path& Path() const { return path_; }

 private:
  store::Driver* driver_;
  std::filesystem::path path_;
  std::unique_ptr<store::File> file_;
  Bytes buffer_;
};

/// Inserts the records one after the other. Throws `std::runtime_error` where a status is not 0.
void Fill(Cursor& file, std::initializer_list<Sample> samples);

/// The numbers of all records along a key path, in physical order, and the same backwards.
std::vector<std::int32_t> NumbersByKey(Cursor& file, std::int16_t keyNumber);
std::vector<std::int32_t> NumbersByKeyBackwards(Cursor& file, std::int16_t keyNumber);
std::vector<std::int32_t> NumbersByStep(Cursor& file);
std::vector<std::int32_t> NumbersByStepBackwards(Cursor& file);

}  // namespace larkmoor::test
