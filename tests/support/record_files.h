// Files of a company folder behind the back of the objects under test: text files, rows, and who
// holds what open.
#pragma once

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>
#include <utility>

#include <gtest/gtest.h>

#include <larkmoor/status.h>

#include "engine/record_description.h"
#include "engine/store/driver.h"
#include "engine/tovrin_file.h"
#include "engine/tovrin_record.h"
#include "support/child_process.h"

namespace larkmoor::test {

/// Puts a file of exactly these bytes in place of whatever stood there.
inline void WriteFile(const std::filesystem::path& path, std::string_view bytes) {
  std::filesystem::remove_all(path);
  std::ofstream(path, std::ios::binary) << bytes;
}

/// All bytes of a file.
inline std::string ReadFile(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

/// Whether any object has the record file open. Compacting a file that someone holds answers 85.
inline bool IsHeldOpen(const std::filesystem::path& path) {
  const Status status = store::DefaultDriver().Compact(path);
  EXPECT_TRUE(status == StatusSuccess || status == StatusFileInUse)
      << path << " cannot be probed: " << status;
  return status == StatusFileInUse;
}

/// Protects a record file by an owner name that nobody in these tests gives.
inline void ProtectFile(const std::filesystem::path& path, bool allowRead) {
  ASSERT_EQ(store::DefaultDriver().SetOwner(path, "someone", allowRead), StatusSuccess);
}

/// Runs `body` in a child process of a user who may read the file and not write it.
template <typename Body>
void WhereReadOnly(const std::filesystem::path& path, Body&& body) {
  using std::filesystem::perms;
  constexpr perms ReadByAll = perms::owner_read | perms::group_read | perms::others_read;
  constexpr perms EnteredByAll = perms::owner_exec | perms::group_exec | perms::others_exec;
  std::filesystem::permissions(path, ReadByAll);
  for (const auto& folder : {path.parent_path(), path.parent_path().parent_path()}) {
    std::filesystem::permissions(folder, ReadByAll | EnteredByAll | perms::owner_write);
  }
  RunInChild([&] {
    ASSERT_TRUE(BecomeNobody());
    body();
  });
}

/// A record file, open for the lifetime of the object, with a record bound to it: for laying rows
/// and for looking at what a call has left.
class OpenRecordFile {
 public:
  OpenRecordFile(const std::filesystem::path& path, const RecordDescription& description)
      : record_(description) {
    EXPECT_EQ(file_.btOpen(path.string(), TovrinFile::NormalMode), StatusSuccess) << path;
    record_.AttachBuffer(file_.RecordBuffer());
  }

  TovrinFile& File() { return file_; }
  Tovrin2Record& Record() { return record_; }

  /// Inserts a row that is blank but for what `fill` puts into the record.
  template <typename Fill>
  void Add(Fill&& fill) {
    record_.ClearBuffer();
    std::forward<Fill>(fill)(record_);
    EXPECT_EQ(file_.btInsert(0), StatusSuccess);
  }

  /// Reads the row whose key 0 is this 16-bit number, as the rows of the general file are kept.
  Status ReadRow(std::int16_t number) {
    file_.KeyWord(number, 0);
    return file_.btGetEqual(0);
  }

 private:
  TovrinFile file_;
  Tovrin2Record record_;
};

}  // namespace larkmoor::test
