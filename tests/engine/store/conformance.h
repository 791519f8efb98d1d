// What every driver is held to. The suites that stand on `DriverTest` run once for each driver of
// `EveryDriver`; a new driver is one more line there.
#pragma once

#include <filesystem>
#include <ostream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include <larkmoor/status.h>

#include "engine/store/driver.h"
#include "support/company.h"
#include "support/sample_files.h"

namespace larkmoor::test {

struct DriverUnderTest {
  const char* name;
  store::Driver& (*driver)();
};

inline std::ostream& operator<<(std::ostream& out, const DriverUnderTest& driver) {
  return out << driver.name;
}

inline std::vector<DriverUnderTest> EveryDriver() {
  return {
      {"Embedded", &store::DefaultDriver},
  };
}

inline std::string DriverName(const testing::TestParamInfo<DriverUnderTest>& info) {
  return info.param.name;
}

/// A driver with a folder to make files in.
class DriverTest : public testing::TestWithParam<DriverUnderTest> {
 protected:
  [[nodiscard]] store::Driver& Driver() const { return GetParam().driver(); }
  [[nodiscard]] const std::filesystem::path& Folder() const { return folder_.Path(); }

  /// Makes an empty file, "Sample.dat" for `SampleFile()`.
  std::filesystem::path Make(const store::FileDescription& description) {
    const std::filesystem::path path = Folder() / (description.name + ".dat");
    EXPECT_EQ(Driver().Create(path, description), StatusSuccess);
    return path;
  }

  /// Makes an empty file and opens it.
  Cursor New(const store::FileDescription& description) { return {Driver(), Make(description)}; }

  /// What is wrong with the file; nothing, as it should be.
  std::vector<std::string> Findings(const std::filesystem::path& path) {
    std::vector<std::string> findings;
    EXPECT_EQ(Driver().Verify(path, findings, {}), StatusSuccess);
    return findings;
  }

 private:
  TempFolder folder_;
};

/// What a walk over records of these numbers gives.
using Numbers = std::vector<std::int32_t>;
/// What a check of a sound file gives.
inline const std::vector<std::string> Nothing;

}  // namespace larkmoor::test
