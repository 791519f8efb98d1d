// Files of a company folder behind the back of the objects under test: text files, rows, and who
// holds what open.
#pragma once

#include <unistd.h>

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>
#include <utility>

#include <gtest/gtest.h>

#include "engine/record_description.h"
#include "engine/store/driver.h"
#include "engine/tovrin_file.h"
#include "engine/tovrin_record.h"
#include "engine/tovrin_status.h"

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

/// Whether the file system lets this process write everywhere, so that no file is read-only to it.
inline bool IsSuperuser() { return geteuid() == 0; }

/// Takes away the right to write the file.
inline void MakeReadOnly(const std::filesystem::path& path) {
  std::filesystem::permissions(path, std::filesystem::perms::owner_read);
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
