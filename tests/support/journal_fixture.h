// What the tests of one journal class stand on: a company, its transactions and a journal object.
#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include <larkmoor/status.h>

#include "engine/records/general_data.h"
#include "engine/records/jrnl_hdr.h"
#include "engine/records/jrnl_row.h"
#include "engine/tovrin_file_names.h"
#include "support/company.h"
#include "support/journals.h"
#include "support/record_files.h"

namespace larkmoor::test {

/// A company, a journal object that is not open yet, and the message boxes caught.
template <typename Journal>
class JournalFixture : public testing::Test {
 protected:
  using References = std::vector<std::string>;
  using Messages = std::vector<std::string>;

  /// Lays a transaction of one row that finders look at. The transactions are numbered from 1, and
  /// the row's amount is the number.
  void Add(std::int16_t code, std::int16_t period, std::string_view reference,
           std::int32_t party = 0) {
    ++lastNRecord_;
    files_.AddTransaction({.nRecord = lastNRecord_,
                           .journal = code,
                           .period = period,
                           .reference = reference,
                           .idNumber = party},
                          {static_cast<double>(lastNRecord_)});
  }

  void Open() { ASSERT_EQ(journal_.OpenFile(), StatusSuccess); }
  /// Opens the journal and reads the transaction of that number.
  void Load(std::int32_t nRecord) {
    Open();
    ASSERT_EQ(journal_.GetEqual(nRecord), StatusSuccess);
  }

  /// Lays a transaction of two rows, which `fill` fills by their number, and loads it. Behind it
  /// lies the row of another transaction, number 3.
  void LoadTwoRows(std::int16_t code,
                   const std::function<void(Tovrin2Record&, std::int16_t number)>& fill) {
    files_.AddHeader({.nRecord = 1, .journal = code});
    for (std::int16_t number = 1; number <= 3; ++number) {
      files_.AddRow(number < 3 ? 1 : 2, [&](Tovrin2Record& row) { fill(row, number); });
    }
    Load(1);
  }

  /// The references of the transactions that a walk gives, from the answer of its first read to
  /// the end.
  References Walk(Status first, const std::function<Status()>& next) {
    References found;
    Status status = first;
    for (; status == StatusSuccess; status = next()) {
      found.push_back(files_.Text(journal_.NRecord(), JrnlHdrRecord::Reference));
    }
    EXPECT_EQ(status, StatusEndOfFile);
    return found;
  }
  References WalkFrom(std::int16_t period) {
    return Walk(journal_.ReadFirst(period), [&] { return journal_.ReadNext(); });
  }

  /// Runs `body(files, journal)` with an open journal in an empty company of each release in which
  /// the keys of headers change, and of the one before.
  template <typename Body>
  static void InEveryRelease(Body&& body) {
    for (const double release : {8.0, 12.9, 13.0, 17.9, 18.0, 18.9, 19.0}) {
      SCOPED_TRACE("release " + std::to_string(release));
      const Company company(release);
      Journal journal;
      ASSERT_EQ(journal.OpenFile(), StatusSuccess);
      body(JournalFiles(company.Folder()), journal);
    }
  }

  // One field of the rows that a transaction has on file.
  [[nodiscard]] std::vector<std::int32_t> RowLongs(std::int32_t nRecord, const Field& field) const {
    return files_.OfRows(nRecord, [&](Tovrin2Record& row) { return row.GetLong(field); });
  }
  [[nodiscard]] std::vector<std::string> RowTexts(std::int32_t nRecord, const Field& field) const {
    return files_.OfRows(nRecord, [&](Tovrin2Record& row) { return row.GetText(field); });
  }

  /// Entries that the general file counts for a journal.
  [[nodiscard]] std::int16_t BatchEntries(std::int16_t code) const {
    constexpr std::int16_t BatchCounters = 4;
    OpenRecordFile general(General(), GeneralDataRecord::Describe());
    EXPECT_EQ(general.ReadRow(BatchCounters), StatusSuccess);
    return general.Record().GetInteger(GeneralDataRecord::BatchEntryCount, code);
  }

  [[nodiscard]] std::filesystem::path Accounts() const { return company_.Folder() / "Chart.dat"; }
  [[nodiscard]] std::filesystem::path Employees() const {
    return company_.Folder() / "Employee.dat";
  }
  [[nodiscard]] std::filesystem::path General() const {
    return company_.Folder() / TovrinFileNames::GeneralFile();
  }

  Company company_;
  JournalFiles files_{company_.Folder()};
  CapturedMessages messages_;
  Journal journal_;
  std::int32_t lastNRecord_ = 0;
};

}  // namespace larkmoor::test
