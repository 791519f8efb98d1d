// The row file as a journal works on it: all rows of one transaction at a time.
#pragma once

#include <cstdint>
#include <string_view>

#include "engine/records/jrnl_row.h"
#include "tables/record_file.h"

namespace larkmoor {

/// What every row of a transaction takes from its header.
struct RowStamp {
  std::int32_t nRecord;
  std::int16_t journalID;
  double trxDate;
};

class RowFile : public RecordFile {
 public:
  static constexpr std::int16_t ByTransaction = 0;
  static constexpr std::int16_t ByOrder = 1;

  explicit RowFile(std::string_view fileName) : RecordFile(JrnlRowRecord::Describe(), fileName) {}

  /// Reads all rows of a transaction along one of these keys and hands over after each: the rows of
  /// one moment, whoever replaces them meanwhile. Returns the status of the last read.
  template <typename Take>
  Status ReadRows(std::int32_t nRecord, std::int16_t keyNumber, Take take) {
    const auto steady = File().BeginSteadyReads();
    Status status = FindFirst(nRecord, keyNumber);
    while (status == StatusSuccess && BelongsTo(nRecord)) {
      take();
      status = File().btGetNext(keyNumber_);
    }
    return status;
  }
  /// Deletes all rows of a transaction, up to the first that cannot be deleted. Leaves the key
  /// number at 0. Within a batch, no others' rows come in between.
  void DeleteRows(std::int32_t nRecord);
  /// Inserts the row that the record holds, stamped, on the key number of the last walk.
  Status InsertStamped(const RowStamp& stamp);

  void ResetKeyNumber() { keyNumber_ = 0; }

 private:
  Status FindFirst(std::int32_t nRecord, std::int16_t keyNumber);
  [[nodiscard]] bool BelongsTo(std::int32_t nRecord);

  std::int16_t keyNumber_ = 0;
};

}  // namespace larkmoor
