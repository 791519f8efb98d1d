// Records that go away behind the back of the objects under test.
#pragma once

#include <filesystem>
#include <string_view>

#include <gtest/gtest.h>

#include <larkmoor/status.h>

#include "support/record_files.h"

namespace larkmoor::test {

/// Deletes the record of that ID from a file whose key 0 is the ID.
inline void RemoveRecord(const std::filesystem::path& path, const RecordDescription& description,
                         std::string_view id) {
  OpenRecordFile file(path, description);
  file.File().KeyTerminated(id, 0);
  ASSERT_EQ(file.File().btGetEqual(0), StatusSuccess) << id << " is not on file";
  ASSERT_EQ(file.File().btDelete(), StatusSuccess);
}

}  // namespace larkmoor::test
