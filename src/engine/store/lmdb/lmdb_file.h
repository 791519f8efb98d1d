// One opened record file: its position, its reads and its writes.
#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <vector>

#include "engine/store/driver.h"
#include "engine/store/lmdb/format.h"
#include "engine/store/lmdb/percentage.h"
#include "engine/store/lmdb/search.h"
#include "engine/store/lmdb/transactions.h"

namespace larkmoor::store::lmdb {

class LmdbFile final : public File {
 public:
  LmdbFile(std::shared_ptr<ThreadView> view, bool readOnly)
      : view_(std::move(view)), readOnly_(readOnly) {}

  [[nodiscard]] const FileDescription& Description() const override {
    return view_->Env().Description();
  }
  Status Get(Seek seek, std::int16_t keyNumber, std::span<const std::byte> key,
             std::span<std::byte> record) override;
  Status StepTo(Step step, std::span<std::byte> record) override;
  Status Insert(std::int16_t keyNumber, std::span<std::byte> record) override;
  Status Update(std::int16_t keyNumber, std::span<const std::byte> record) override;
  Status Delete() override;
  Status Percentage(std::int16_t keyNumber, double& percent) override;
  Status GetByPercentage(std::int16_t keyNumber, double percent,
                         std::span<std::byte> record) override;
  std::int32_t RecordCount() override;
  std::unique_ptr<SteadyReads> BeginSteadyReads() override;
  Status Claim() override;
  Status Sync() override { return view_->Env().Sync(); }

 private:
  /// The record that update and delete act on, and the write that it was read from.
  struct CurrentRecord {
    RecordNumber number = 0;  ///< 0 for none
    Stamp stamp = 0;
  };
  /// Where next and previous start. It needs no record to be there, so that it survives deletes.
  struct KeyPlace {
    std::int16_t keyNumber = -1;  ///< -1 for none
    EntryKey entry;
  };

  /// The spread of a key that was looked at last. A list that is scrolled asks for it again and
  /// again.
  struct KnownSpread {
    KeySpread spread;
    std::int16_t keyNumber;
    std::size_t state;
  };

  const KeySpread& SpreadOf(const Reading& reading, const KeyDescription& key);
  [[nodiscard]] Status CheckPlace(Seek seek, std::int16_t keyNumber) const;
  int MoveAlong(Cursor& cursor, Seek seek) const;
  int MoveInOrder(Cursor& cursor, Step step) const;
  Status TakeEntry(std::int16_t keyNumber, Cursor& keys, Cursor& records,
                   std::span<std::byte> record);
  [[nodiscard]] int GoToRecord(Cursor& records, RecordNumber number) const;
  Status TakeRecord(Cursor& records, std::span<std::byte> record);
  void TakeWritten(const KeyDescription& key, std::span<const std::byte> record,
                   CurrentRecord written);
  Status StoredRecord(const Writing& writing, std::vector<std::byte>& stored) const;

  std::shared_ptr<ThreadView> view_;
  bool readOnly_;
  CurrentRecord current_;
  KeyPlace place_;
  RecordNumber physical_ = 0;  // before the first record
  KeptCursor keys_;
  KeptCursor records_;
  std::optional<KnownSpread> spread_;
};

}  // namespace larkmoor::store::lmdb
