// A company that the user may only read, by the permissions of its files or because the disk is
// mounted read-only.
#include <filesystem>
#include <functional>
#include <string>

#include <gtest/gtest.h>

#include <larkmoor/connection/btrieve.h>
#include <larkmoor/journals/general_journal.h>
#include <larkmoor/masters/customer.h>
#include <larkmoor/status.h>
#include <larkmoor/tables/address.h>

#include "connection/shared_routines.h"
#include "engine/records/all_records.h"
#include "engine/records/jrnl_hdr.h"
#include "engine/records/jrnl_row.h"
#include "engine/tovrin_file_names.h"
#include "support/child_process.h"
#include "support/company.h"
#include "support/journals.h"
#include "support/record_files.h"

namespace larkmoor {
namespace {

namespace fs = std::filesystem;

/// A record file opened read-only, with a record bound to it.
struct ReadOnlyFile {
  ReadOnlyFile(const fs::path& path, const RecordDescription& description) : record(description) {
    EXPECT_EQ(file.btOpen(path.string(), TovrinFile::ReadOnlyMode), StatusSuccess) << path;
    record.AttachBuffer(file.RecordBuffer());
  }

  TovrinFile file;
  Tovrin2Record record;
};

class ReadOnlyCompany : public testing::Test {
 protected:
  ReadOnlyCompany() {
    for (std::int32_t number = 1; number <= 20; ++number) {
      files_.AddTransaction(
          {.nRecord = number, .journal = 0, .period = 1, .reference = "R" + std::to_string(number)},
          {1.0 * number, -1.0 * number});
    }
  }

  fs::path Folder() const { return company_.Folder(); }

  /// Runs `body` as each kind of user who may only read.
  void ForEveryReader(const std::function<void()>& body) {
    fs::permissions(Folder().parent_path(), fs::perms(0755));
    fs::permissions(Folder(), fs::perms(0755));
    for (const auto& file : fs::directory_iterator(Folder())) {
      fs::permissions(file, fs::perms(0644));
    }
    test::RunInChild([&] {
      SCOPED_TRACE("another user");
      ASSERT_TRUE(test::BecomeNobody());
      body();
    });
    if (!test::CanMount()) return;
    test::RunInChild([&] {
      SCOPED_TRACE("a read-only disk");
      test::MountReadOnly(Folder());
      body();
    });
  }

  test::Company company_;
  test::JournalFiles files_{company_.Folder()};
};

TEST_F(ReadOnlyCompany, ConnectsAndTellsItsNumbers) {
  ForEveryReader([&] {
    Btrieve connection;
    EXPECT_EQ(connection.Connect(Folder().string()), Variant(StatusSuccess));
    EXPECT_EQ(MaxNRecord(), 20);
  });
}

TEST_F(ReadOnlyCompany, Answers94ToTheClassesWhichOpenForWriting) {
  ForEveryReader([&] {
    EXPECT_EQ(Address().OpenFile(), StatusPermission);
    EXPECT_EQ(Customer().OpenFile(), StatusPermission);
    EXPECT_EQ(GeneralJournal().OpenFile(), StatusPermission);
  });
}

TEST_F(ReadOnlyCompany, IsReadFromEndToEnd) {
  ForEveryReader([&] {
    for (const RecordDescription* description : AllRecords()) {
      if (description->base != nullptr) continue;
      ReadOnlyFile opened(Folder() / description->fileName, *description);
      std::int32_t steps = 0;
      Status status = opened.file.btStepFirst();
      for (; status == StatusSuccess; status = opened.file.btStepNext()) ++steps;
      EXPECT_EQ(status, StatusEndOfFile) << description->fileName;
      EXPECT_EQ(steps, opened.file.btRecordCount()) << description->fileName;
    }
  });
}

TEST_F(ReadOnlyCompany, FindsTransactionsAndTheirRowsByKey) {
  ForEveryReader([&] {
    ReadOnlyFile headers(files_.Headers(), JrnlHdrRecord::Describe());
    headers.file.KeyLong(7, 0);
    ASSERT_EQ(headers.file.btGetEqual(1), StatusSuccess);
    EXPECT_EQ(headers.record.GetText(JrnlHdrRecord::Reference), "R7");
    ReadOnlyFile rows(files_.Rows(), JrnlRowRecord::Describe());
    rows.file.KeyLong(7, 0);
    ASSERT_EQ(rows.file.btGetEqual(0), StatusSuccess);
    EXPECT_EQ(rows.record.GetDouble(JrnlRowRecord::Amount), 7);
    ASSERT_EQ(rows.file.btGetNext(0), StatusSuccess);
    EXPECT_EQ(rows.record.GetDouble(JrnlRowRecord::Amount), -7);
  });
}

TEST_F(ReadOnlyCompany, Answers46ToWrites) {
  ForEveryReader([&] {
    ReadOnlyFile headers(files_.Headers(), JrnlHdrRecord::Describe());
    EXPECT_EQ(headers.file.btInsert(0), StatusAccessDenied);
    ASSERT_EQ(headers.file.btStepFirst(), StatusSuccess);
    EXPECT_EQ(headers.file.btUpdate(0), StatusAccessDenied);
    EXPECT_EQ(headers.file.btDelete(), StatusAccessDenied);
  });
  EXPECT_TRUE(files_.HasHeader(1));
}

}  // namespace
}  // namespace larkmoor
