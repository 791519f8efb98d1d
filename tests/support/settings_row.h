// One row of a company's settings, behind the back of the objects under test.
#pragma once

#include <filesystem>
#include <utility>

#include <gtest/gtest.h>

#include <larkmoor/status.h>
#include <larkmoor/variant.h>

#include "engine/record_description.h"
#include "engine/records/general_row.h"
#include "engine/tovrin_file_names.h"
#include "support/field_values.h"
#include "support/record_files.h"

namespace larkmoor::test {

/// The row of the general file that a record stands for. Every company has it.
class SettingsRow {
 public:
  SettingsRow(const std::filesystem::path& folder, const RecordDescription& record)
      : path_(folder / TovrinFileNames::GeneralFile()), record_(&record) {}

  /// Has `change` work on the record and rewrites the row.
  template <typename Work>
  void Change(Work&& change) const {
    InHand([&](OpenRecordFile& row) {
      std::forward<Work>(change)(row.Record());
      EXPECT_EQ(row.File().btUpdate(0), StatusSuccess);
    });
  }
  void Set(const Field& field, const Variant& value, int index = 0, int index2 = 0) const {
    Change([&](Tovrin2Record& record) { SetValue(record, field, value, index, index2); });
  }
  void Delete() const {
    InHand([](OpenRecordFile& row) { EXPECT_EQ(row.File().btDelete(), StatusSuccess); });
  }
  /// Puts the row back after `Delete`, blank.
  void Insert() const {
    OpenRecordFile(path_, *record_).Add([&](Tovrin2Record& record) {
      record.SetInteger(GeneralRowRecord::RowType, record_->rowMark->value);
    });
  }

  [[nodiscard]] Variant Value(const Field& field, int index = 0, int index2 = 0) const {
    Variant value;
    InHand([&](OpenRecordFile& row) { value = ValueOf(row.Record(), field, index, index2); });
    return value;
  }
  [[nodiscard]] RecordBytes Bytes() const {
    RecordBytes bytes;
    InHand([&](OpenRecordFile& row) { bytes = row.Record().Bytes(); });
    return bytes;
  }

 private:
  /// Has `work` work on the file with the row read.
  template <typename Work>
  void InHand(Work&& work) const {
    OpenRecordFile file(path_, *record_);
    ASSERT_EQ(file.ReadRow(record_->rowMark->value), StatusSuccess)
        << path_ << " has no row of " << record_->name;
    std::forward<Work>(work)(file);
  }

  std::filesystem::path path_;
  const RecordDescription* record_;
};

}  // namespace larkmoor::test
