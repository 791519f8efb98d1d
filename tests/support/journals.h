// Transactions behind the back of the journals under test: headers and rows laid into the company's
// files and read from them again. Accounts are in accounts.h, employees in masters.h.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include <larkmoor/bulk_write.h>
#include <larkmoor/status.h>

#include "engine/records/jrnl_hdr.h"
#include "engine/records/jrnl_row.h"
#include "engine/tovrin_file_names.h"
#include "support/record_files.h"

namespace larkmoor::test {

/// What finders look at in a header.
struct HeaderSample {
  std::int32_t nRecord = 0;
  std::int16_t journal = 0;
  std::int16_t period = 0;
  std::string_view reference = {};
  std::int32_t idNumber = 0;
  std::int32_t trxNumber = 0;
};

/// The two record files that all journals of a company share, or two others of the same layout.
class JournalFiles {
 public:
  explicit JournalFiles(const std::filesystem::path& folder,
                        std::string_view headers = TovrinFileNames::JrnlHdrFile(),
                        std::string_view rows = TovrinFileNames::JrnlRowFile())
      : headers_(folder / headers), rows_(folder / rows) {}

  [[nodiscard]] const std::filesystem::path& Headers() const { return headers_; }
  [[nodiscard]] const std::filesystem::path& Rows() const { return rows_; }

  /// Adds a header that is blank but for `header` and what `fill` puts into the record.
  template <typename Fill>
  void AddHeader(const HeaderSample& header, Fill&& fill) const {
    OpenRecordFile file(Headers(), JrnlHdrRecord::Describe());
    file.Add([&](Tovrin2Record& record) {
      record.SetLong(JrnlHdrRecord::NRecord, header.nRecord);
      record.SetInteger(JrnlHdrRecord::JournalID, header.journal);
      record.SetInteger(JrnlHdrRecord::Period, header.period);
      record.SetText(JrnlHdrRecord::Reference, header.reference);
      record.SetLong(JrnlHdrRecord::IDNumber, header.idNumber);
      record.SetLong(JrnlHdrRecord::TrxNumberL, header.trxNumber);
      fill(record);
    });
  }
  void AddHeader(const HeaderSample& header) const {
    AddHeader(header, [](Tovrin2Record&) {});
  }

  /// Adds a row to the transaction of that number, blank but for what `fill` puts into the record.
  template <typename Fill>
  void AddRow(std::int32_t nRecord, Fill&& fill) const {
    OpenRecordFile file(Rows(), JrnlRowRecord::Describe());
    file.Add([&](Tovrin2Record& record) {
      record.SetLong(JrnlRowRecord::NRecord, nRecord);
      fill(record);
    });
  }

  /// Adds a row of each amount, all in one commit.
  void AddRows(std::int32_t nRecord, const std::vector<double>& amounts) const {
    OpenRecordFile file(Rows(), JrnlRowRecord::Describe());
    BulkWrite bulk;
    for (const double amount : amounts) {
      file.Add([&](Tovrin2Record& record) {
        record.SetLong(JrnlRowRecord::NRecord, nRecord);
        record.SetDouble(JrnlRowRecord::Amount, amount);
      });
    }
    EXPECT_EQ(bulk.Commit(), StatusSuccess);
  }

  /// Adds a header and a row of each amount.
  void AddTransaction(const HeaderSample& header, const std::vector<double>& amounts) const {
    AddHeader(header);
    AddRows(header.nRecord, amounts);
  }

  /// What `value` tells of each row on file that bears the number, in the order of insertion.
  template <typename Value>
  auto OfRows(std::int32_t nRecord, Value&& value) const {
    OpenRecordFile file(Rows(), JrnlRowRecord::Describe());
    std::vector<decltype(value(file.Record()))> found;
    TovrinFile& rows = file.File();
    for (Status status = rows.btStepFirst(); status == StatusSuccess; status = rows.btStepNext()) {
      if (file.Record().GetLong(JrnlRowRecord::NRecord) != nRecord) continue;
      found.push_back(value(file.Record()));
    }
    return found;
  }

  /// The amounts of these rows.
  [[nodiscard]] std::vector<double> Amounts(std::int32_t nRecord) const {
    return OfRows(nRecord, [](Tovrin2Record& row) { return row.GetDouble(JrnlRowRecord::Amount); });
  }

  /// Whether there is a header of that number on file.
  [[nodiscard]] bool HasHeader(std::int32_t nRecord) const {
    OpenRecordFile file(Headers(), JrnlHdrRecord::Describe());
    file.File().KeyLong(nRecord, 0);
    return file.File().btGetEqual(KeyOfNumber) == StatusSuccess;
  }

  /// What `value` tells of the header of that number on file.
  template <typename Value>
  auto OfHeader(std::int32_t nRecord, Value&& value) const {
    OpenRecordFile file(Headers(), JrnlHdrRecord::Describe());
    file.File().KeyLong(nRecord, 0);
    EXPECT_EQ(file.File().btGetEqual(KeyOfNumber), StatusSuccess) << "no header " << nRecord;
    return value(file.Record());
  }

  // One field of that header.
  [[nodiscard]] std::string Text(std::int32_t nRecord, const Field& field) const {
    return OfHeader(nRecord, [&](Tovrin2Record& header) { return header.GetText(field); });
  }
  [[nodiscard]] std::int32_t Long(std::int32_t nRecord, const Field& field) const {
    return OfHeader(nRecord, [&](Tovrin2Record& header) { return header.GetLong(field); });
  }

 private:
  static constexpr std::int16_t KeyOfNumber = 1;

  std::filesystem::path headers_;
  std::filesystem::path rows_;
};

}  // namespace larkmoor::test
