// The generic file class: one opened record file, its record buffer and its key buffer.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include <larkmoor/status.h>

#include "engine/store/driver.h"

namespace larkmoor {

/// The bytes of the record in hand, shared by a file and the record objects bound to it.
using RecordBytes = std::vector<std::byte>;
/// What `RecordBuffer` gives and `AttachBuffer` takes. The buffer lives as long as any holder.
using RecordBufferHandle = std::shared_ptr<RecordBytes>;

/// A record file with Btrieve's operations. Every operation answers with a status unless told
/// otherwise; on an object that is not open it is 3. No record lock is ever taken, so there is no
/// lock argument. Objects belong to the thread that made them.
class TovrinFile {
 public:
  static constexpr std::int16_t NormalMode = 0;
  static constexpr std::int16_t ReadOnlyMode = -2;
  static constexpr std::size_t KeyBufferSize = 255;
  static constexpr std::size_t VersionBufferSize = 15;

  TovrinFile();
  /// Releases the file; unlike `btClose` without a sync to disk.
  ~TovrinFile();
  TovrinFile(const TovrinFile&) = delete;
  TovrinFile& operator=(const TovrinFile&) = delete;

  /// Opens the file at a full path in mode 0 (read-write) or -2 (read-only). What the object held
  /// open is closed first. The path may use "\" or "/"; the file's name matches in any case.
  Status btOpen(std::string_view path, std::int16_t mode);
  Status btClose();
  /// Adds the record buffer as a new record.
  Status btInsert(std::int16_t keyNumber);
  /// Rewrites the current record from the record buffer.
  Status btUpdate(std::int16_t keyNumber);
  /// Deletes the current record.
  Status btDelete();

  // Reads by key. The first five compare with the key buffer.
  Status btGetEqual(std::int16_t keyNumber);
  Status btGetGreaterThan(std::int16_t keyNumber);
  Status btGetGreaterOrEqual(std::int16_t keyNumber);
  Status btGetLessThan(std::int16_t keyNumber);
  Status btGetLessOrEqual(std::int16_t keyNumber);
  Status btGetFirst(std::int16_t keyNumber);
  Status btGetLast(std::int16_t keyNumber);
  Status btGetNext(std::int16_t keyNumber);
  Status btGetPrevious(std::int16_t keyNumber);

  // Reads in physical order.
  Status btStepFirst();
  Status btStepLast();
  Status btStepNext();
  Status btStepPrevious();

  /// Where on a key path the current record lies, 0.0 to 100.0. `percent` is set on success only.
  Status btFindPercentage(std::int16_t keyNumber, double& percent);
  /// Reads the record that lies at that percentage and takes the place on the key path there.
  Status btGetByPercentage(std::int16_t keyNumber, double percent);
  /// The number of records; 0 of a file that is not open.
  std::int32_t btRecordCount();
  /// As long as the answer lives, this thread's reads of the file see one state of it and what the
  /// thread itself writes. Null of a file that is not open.
  [[nodiscard]] std::unique_ptr<store::SteadyReads> BeginSteadyReads();
  /// Within a batch: keeps other writers away from here to the end of the batch.
  Status Claim();
  /// Closes all files of this thread's objects, which then answer 3; their record buffers keep what
  /// they hold. Needs no open file.
  Status btReset();
  /// Tells the engine's versions: three blocks of five bytes, each a 16-bit version, a 16-bit
  /// revision and an 8-bit id. Needs no open file.
  Status btVersion(std::string_view path, std::array<std::byte, VersionBufferSize>& buffer);
  /// Release of the open file's data; 0 of a file that is not open.
  [[nodiscard]] double btDataVersion() const;
  /// A newly made GUID in text form. Needs no open file.
  [[nodiscard]] std::string btNewGUID() const;

  /// The record buffer, for binding a record object.
  [[nodiscard]] RecordBufferHandle RecordBuffer() const { return record_; }
  /// One byte of the record buffer, by its place from 0; 0 outside.
  [[nodiscard]] std::uint8_t RecordByte(std::int32_t index) const;
  /// Length of the record last read, 0 before the first read.
  [[nodiscard]] std::int32_t ActualLength() const { return actualLength_; }

  // The key writers put one value into the key buffer at a byte offset from the key's start. What
  // does not fit into the buffer is dropped. The buffer starts as zero bytes, and nothing but the
  // writers changes it.
  void KeyByte(std::uint8_t value, std::int16_t offset);
  void KeyWord(std::int16_t value, std::int16_t offset);
  void KeyLong(std::int32_t value, std::int16_t offset);
  void KeyDouble(double value, std::int16_t offset);
  /// The 16 bytes of a GUID in text form, of any other text its own characters.
  void KeyText(std::string_view value, std::int16_t offset);
  /// A text of exactly `length` bytes: cut, or filled with zero bytes.
  void KeyString(std::string_view value, std::int16_t length, std::int16_t offset);
  /// A text with a zero byte behind it, as keys over zero-terminated text want it.
  void KeyTerminated(std::string_view value, std::int16_t offset);

  /// What the open file says of itself, or null.
  [[nodiscard]] const store::FileDescription* Description() const;

 private:
  Status Get(store::Seek seek, std::int16_t keyNumber);
  Status StepTo(store::Step step);
  Status NoteRead(Status status);
  void WriteKey(const void* bytes, std::size_t size, std::int16_t offset);

  std::unique_ptr<store::File> file_;
  TovrinFile* previous_ = nullptr;  // the thread's objects, for btReset
  TovrinFile* next_ = nullptr;
  RecordBufferHandle record_;
  std::int32_t actualLength_ = 0;
  std::array<std::byte, KeyBufferSize> key_{};
};

}  // namespace larkmoor
