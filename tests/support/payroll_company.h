// A company with employees whose payroll is under test.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string_view>

#include <gtest/gtest.h>

#include <larkmoor/masters/employee.h>
#include <larkmoor/status.h>
#include <larkmoor/variant.h>

#include "engine/records/employee.h"
#include "engine/tovrin_file_names.h"
#include "support/company.h"
#include "support/field_values.h"
#include "support/masters.h"
#include "support/payroll_files.h"
#include "support/record_files.h"

namespace larkmoor::test {

/// A company with two employees, and an object that has the first of them in hand.
class PayrollTest : public testing::Test {
 protected:
  static constexpr std::int32_t Adams = 30;
  static constexpr std::int32_t Baker = 20;
  static constexpr WholeCompany All{};  ///< owner of the default rows

  explicit PayrollTest(double release = 19.0) : company_(release) {
    AddEmployee(company_.Folder(), {"ADAMS", Adams});
    AddEmployee(company_.Folder(), {"BAKER", Baker});
    EXPECT_EQ(employee_.OpenFile(), StatusSuccess);
    EXPECT_EQ(employee_.GetEqual("ADAMS"), StatusSuccess);
  }

  std::filesystem::path ChartFile() const {
    return company_.Folder() / TovrinFileNames::ChartFile();
  }
  std::filesystem::path EmployeeFile() const {
    return company_.Folder() / TovrinFileNames::EmployeeFile();
  }

  /// A field of the record of ADAMS on file.
  Variant Stored(const Field& field, int index = 0, int index2 = 0) {
    OpenRecordFile file(EmployeeFile(), EmployeeRecord::Describe());
    ReadAdams(file);
    return ValueOf(file.Record(), field, index, index2);
  }
  /// Puts a value into the record of ADAMS on file, and has `employee_` read it.
  void Store(const Variant& value, const Field& field, int index = 0, int index2 = 0) {
    OpenRecordFile file(EmployeeFile(), EmployeeRecord::Describe());
    ReadAdams(file);
    SetValue(file.Record(), field, value, index, index2);
    EXPECT_EQ(file.File().btUpdate(0), StatusSuccess);
    EXPECT_EQ(employee_.GetEqual("ADAMS"), StatusSuccess);
  }

  Company company_;
  PayrollFiles payroll_{company_.Folder()};
  Employee employee_;

 private:
  static void ReadAdams(OpenRecordFile& file) {
    file.File().KeyTerminated("ADAMS", 0);
    EXPECT_EQ(file.File().btGetEqual(0), StatusSuccess);
  }
};

}  // namespace larkmoor::test
