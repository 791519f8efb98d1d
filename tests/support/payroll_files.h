// The six files that hold the payroll of the employees from release 19 on: rows laid into them
// behind the back of the objects under test, changed, and read from them again.
#pragma once

#include <array>
#include <cstdint>
#include <filesystem>
#include <string_view>
#include <utility>

#include <gtest/gtest.h>

#include <larkmoor/status.h>
#include <larkmoor/variant.h>

#include "engine/records/employee_aux1.h"
#include "engine/records/employee_aux2.h"
#include "engine/records/employee_aux3.h"
#include "engine/records/employee_aux4.h"
#include "engine/records/employee_aux5.h"
#include "engine/records/employee_aux6.h"
#include "engine/tovrin_file_names.h"
#include "support/field_values.h"
#include "support/record_files.h"

namespace larkmoor::test {

/// Owner of the rows that belong to the company as a whole.
struct WholeCompany {};

// What each kind of owner is in a row, and in front of the row's number in a key: an employee's
// index, the GUID of a quarter, or nothing. The last give the number of key bytes written.
inline void SetOwner(Tovrin2Record&, const Field*, WholeCompany) {}
inline void SetOwner(Tovrin2Record& record, const Field* field, std::int32_t employee) {
  record.SetLong(*field, employee);
}
inline void SetOwner(Tovrin2Record& record, const Field* field, std::string_view quarter) {
  record.SetText(*field, quarter);
}
inline std::int16_t KeyOwner(TovrinFile&, WholeCompany) { return 0; }
inline std::int16_t KeyOwner(TovrinFile& file, std::int32_t employee) {
  file.KeyLong(employee, 0);
  return 4;
}
inline std::int16_t KeyOwner(TovrinFile& file, std::string_view quarter) {
  file.KeyText(quarter, 0);
  return 16;
}

/// The rows of one payroll file, by their owner and a number that counts from 1.
template <typename Owner>
class PayrollRows {
 public:
  struct Layout {
    const RecordDescription* record;
    const Field* owner;  ///< null where the rows belong to the whole company
    const Field* number;
    std::int32_t first;  ///< the stored number of the first row
    std::int16_t key;
  };

  PayrollRows(std::filesystem::path path, const Layout& layout)
      : path_(std::move(path)), layout_(layout) {}

  [[nodiscard]] const std::filesystem::path& Path() const { return path_; }

  /// Adds a row that is blank but for what `fill` puts into the record.
  template <typename Fill>
  void Add(Owner owner, std::int32_t number, Fill&& fill) const {
    OpenRecordFile(path_, *layout_.record).Add([&](Tovrin2Record& row) {
      SetOwner(row, layout_.owner, owner);
      row.SetLong(*layout_.number, Stored(number));
      fill(row);
    });
  }
  /// Adds a row that is blank but for one field.
  void Add(Owner owner, std::int32_t number, const Field& field, const Variant& value) const {
    Add(owner, number, [&](Tovrin2Record& row) { SetValue(row, field, value); });
  }

  /// Changes a field of a row that is there.
  void Change(Owner owner, std::int32_t number, const Field& field, const Variant& value,
              int index = 0) const {
    OpenRecordFile file(path_, *layout_.record);
    ASSERT_EQ(Find(file, owner, number), StatusSuccess) << path_ << " has no row " << number;
    SetValue(file.Record(), field, value, index);
    ASSERT_EQ(file.File().btUpdate(layout_.key), StatusSuccess);
  }
  void Delete(Owner owner, std::int32_t number) const {
    OpenRecordFile file(path_, *layout_.record);
    ASSERT_EQ(Find(file, owner, number), StatusSuccess) << path_ << " has no row " << number;
    ASSERT_EQ(file.File().btDelete(), StatusSuccess);
  }

  /// A field of a row on file, which must be there.
  [[nodiscard]] Variant Value(Owner owner, std::int32_t number, const Field& field,
                              int index = 0) const {
    OpenRecordFile file(path_, *layout_.record);
    EXPECT_EQ(Find(file, owner, number), StatusSuccess) << path_ << " has no row " << number;
    return ValueOf(file.Record(), field, index);
  }

  [[nodiscard]] std::int32_t Count() const {
    return OpenRecordFile(path_, *layout_.record).File().btRecordCount();
  }

 private:
  [[nodiscard]] std::int32_t Stored(std::int32_t number) const {
    return number - 1 + layout_.first;
  }
  Status Find(OpenRecordFile& file, Owner owner, std::int32_t number) const {
    const std::int16_t width = KeyOwner(file.File(), owner);
    file.File().KeyLong(Stored(number), width);
    return file.File().btGetEqual(layout_.key);
  }

  std::filesystem::path path_;
  Layout layout_;
};

/// The payroll files of a company.
class PayrollFiles {
 public:
  explicit PayrollFiles(const std::filesystem::path& folder)
      : levels(folder / TovrinFileNames::EmployeeAuxFile5(),
               {&EmployeeAux5Record::Describe(), &EmployeeAux5Record::EmployeeIndex,
                &EmployeeAux5Record::RowNumber, 0, 3}),
        fields(folder / TovrinFileNames::EmployeeAuxFile6(),
               {&EmployeeAux6Record::Describe(), &EmployeeAux6Record::EmployeeIndex,
                &EmployeeAux6Record::RowNumber, 0, 3}),
        defaults(folder / TovrinFileNames::EmployeeAuxFile1(),
                 {&EmployeeAux1Record::Describe(), nullptr, &EmployeeAux1Record::RowNumber, 0, 0}),
        quarters(folder / TovrinFileNames::EmployeeAuxFile2(),
                 {&EmployeeAux2Record::Describe(), &EmployeeAux2Record::EmployeeIndex,
                  &EmployeeAux2Record::Quarter, 1, 3}),
        quarterFields(folder / TovrinFileNames::EmployeeAuxFile3(),
                      {&EmployeeAux3Record::Describe(), &EmployeeAux3Record::QuarterRowGUID,
                       &EmployeeAux3Record::RowNumber, 0, 0}),
        quarterLevels(folder / TovrinFileNames::EmployeeAuxFile4(),
                      {&EmployeeAux4Record::Describe(), &EmployeeAux4Record::QuarterRowGUID,
                       &EmployeeAux4Record::RowNumber, 0, 0}) {}

  PayrollRows<std::int32_t> levels;    ///< pay levels of employees
  PayrollRows<std::int32_t> fields;    ///< payroll fields of employees, from 41 on the employer's
  PayrollRows<WholeCompany> defaults;  ///< payroll fields of the company, numbered alike
  PayrollRows<std::int32_t> quarters;  ///< quarters of employees
  PayrollRows<std::string_view> quarterFields;  ///< payroll fields of quarters
  PayrollRows<std::string_view> quarterLevels;  ///< pay levels of quarters

  /// All six, in the order in which they are opened.
  [[nodiscard]] std::array<std::filesystem::path, 6> All() const {
    return {levels.Path(),   fields.Path(),        defaults.Path(),
            quarters.Path(), quarterFields.Path(), quarterLevels.Path()};
  }
};

}  // namespace larkmoor::test
