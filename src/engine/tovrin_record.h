// The record base: named fields over a file's record buffer.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include <larkmoor/currency.h>

#include "engine/record_description.h"
#include "engine/tovrin_file.h"

namespace larkmoor {

/// Fields of the record in a buffer. Gets and lets work on the buffer's bytes in place: a let
/// reaches the file with the next insert or update, a get shows what was read with the lets since.
/// Before `AttachBuffer` a record works on a blank buffer of its own.
///
/// An index outside a repeating field raises error 9 ("Subscript out of range") and changes
/// nothing. A field that lies beyond the record's length in the data at hand reads blank and drops
/// writes.
class Tovrin2Record {
 public:
  explicit Tovrin2Record(const RecordDescription& description);

  /// Binds to a file's record buffer.
  void AttachBuffer(RecordBufferHandle buffer);
  /// Fills the buffer with zero bytes.
  void ClearBuffer();

  [[nodiscard]] const RecordDescription& Description() const { return *description_; }
  [[nodiscard]] const RecordBytes& Bytes() const { return *buffer_; }
  [[nodiscard]] RecordBytes& Bytes() { return *buffer_; }

  // One get and one let for each type. `index` and `index2` count from 0 and are left out where the
  // field has none.
  [[nodiscard]] std::uint8_t GetByte(const Field& field, int index = 0, int index2 = 0) const;
  [[nodiscard]] bool GetBoolean(const Field& field, int index = 0, int index2 = 0) const;
  [[nodiscard]] std::int16_t GetInteger(const Field& field, int index = 0, int index2 = 0) const;
  [[nodiscard]] std::int32_t GetLong(const Field& field, int index = 0, int index2 = 0) const;
  [[nodiscard]] float GetSingle(const Field& field, int index = 0, int index2 = 0) const;
  [[nodiscard]] double GetDouble(const Field& field, int index = 0, int index2 = 0) const;
  [[nodiscard]] Currency GetCurrency(const Field& field, int index = 0, int index2 = 0) const;
  /// Days since 30 December 1899; a field of zero bytes reads as 2.0, the empty date.
  [[nodiscard]] double GetDate(const Field& field, int index = 0, int index2 = 0) const;
  /// UTF-8, up to the first zero byte or the field's width. Of a GUID field its text form.
  [[nodiscard]] std::string GetText(const Field& field, int index = 0, int index2 = 0) const;

  void SetByte(const Field& field, std::uint8_t value, int index = 0, int index2 = 0);
  /// Stores -1 or 0.
  void SetBoolean(const Field& field, bool value, int index = 0, int index2 = 0);
  void SetInteger(const Field& field, std::int16_t value, int index = 0, int index2 = 0);
  void SetLong(const Field& field, std::int32_t value, int index = 0, int index2 = 0);
  void SetSingle(const Field& field, float value, int index = 0, int index2 = 0);
  void SetDouble(const Field& field, double value, int index = 0, int index2 = 0);
  void SetCurrency(const Field& field, Currency value, int index = 0, int index2 = 0);
  void SetDate(const Field& field, double value, int index = 0, int index2 = 0);
  /// Cuts the text at the field's width. What Windows-1252 does not have becomes "?".
  void SetText(const Field& field, std::string_view value, int index = 0, int index2 = 0);

 private:
  template <typename T>
  [[nodiscard]] T Load(const Field& field, int index, int index2) const;
  template <typename T>
  void Store(const Field& field, T value, int index, int index2);

  const RecordDescription* description_;
  RecordBufferHandle buffer_;
};

}  // namespace larkmoor
