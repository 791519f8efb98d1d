// What reading an employee's payroll costs above the store it stands on: `GetForIndex` and ten
// payroll fields on data of release 19, and bare LMDB reading the same rows by the same keys. All
// files lie in memory.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <numeric>
#include <random>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include <benchmark/benchmark.h>

#include <larkmoor/bulk_write.h>
#include <larkmoor/masters/employee.h>

#include "data/record_images.h"
#include "engine/records/employee.h"
#include "engine/records/employee_aux1.h"
#include "engine/records/employee_aux6.h"
#include "engine/tovrin_file_names.h"
#include "jobs/jobs.h"
#include "peers/lmdb_file.h"
#include "support.h"
#include "tables/record_file.h"

namespace larkmoor::bench {
namespace {

constexpr double Release = 19;
constexpr std::int32_t EmployeesOnFile = 2000;
constexpr std::int32_t CompanyFields = 80;
constexpr std::int16_t FieldsRead = 10;
/// In the fields above, the employees go by the company's default.
constexpr std::int16_t OwnFields = 7;

// What is on file. All sums are whole numbers, so that the order does not matter.
double DefaultAmount(std::int32_t field) { return 1000.0 * field; }
double OwnAmount(std::int32_t employee, std::int32_t field) { return employee + 10'000.0 * field; }

std::string IDOf(std::int32_t employee) { return "EMP" + std::to_string(employee); }

double ExpectedSum(std::int32_t employee) {
  double sum = 0;
  for (std::int32_t field = 1; field <= FieldsRead; ++field) {
    sum += field <= OwnFields ? OwnAmount(employee, field) : DefaultAmount(field);
  }
  return sum;
}

/// A company, read through the public class.
class LarkmoorEmployees {
 public:
  static constexpr std::string_view Name = "larkmoor";

  LarkmoorEmployees() : company_(InMemory()) {
    company_.Connect();
    BulkWrite bulk;
    Fill();
    Check(bulk.Commit() == StatusSuccess, "commit");
    Check(employee_.OpenFile() == StatusSuccess, "open");
  }

  double Read(std::int32_t index) {
    Check(employee_.GetForIndex(index) == StatusSuccess, "employee");
    double sum = 0;
    for (std::int16_t field = 1; field <= FieldsRead; ++field) sum += employee_.EEAmount(field);
    return sum;
  }

 private:
  /// Fields of an employee are laid into their file by hand: the class reads rows and makes none.
  static void Fill() {
    RecordFile fields(EmployeeAux6Record::Describe(), TovrinFileNames::EmployeeAuxFile6());
    Check(fields.Open() == StatusSuccess, "fields");
    Employee employee;
    Check(employee.OpenFile() == StatusSuccess, "employees");
    for (std::int32_t index = 1; index <= EmployeesOnFile; ++index) {
      employee.Index(index);
      employee.EmployeeID(IDOf(index));
      Check(employee.Insert() == StatusSuccess, "employee");
      for (std::int32_t field = 1; field <= OwnFields; ++field) {
        Tovrin2Record& row = fields.Record();
        row.SetLong(EmployeeAux6Record::EmployeeIndex, index);
        row.SetLong(EmployeeAux6Record::RowNumber, field - 1);
        row.SetDouble(EmployeeAux6Record::Amount, OwnAmount(index, field));
        Check(fields.File().btInsert(0) == StatusSuccess, "field");
      }
    }
    FillDefaults();
  }

  /// A new company has these rows, blank.
  static void FillDefaults() {
    RecordFile defaults(EmployeeAux1Record::Describe(), TovrinFileNames::EmployeeAuxFile1());
    Check(defaults.Open() == StatusSuccess, "defaults");
    for (std::int32_t field = 1; field <= CompanyFields; ++field) {
      defaults.File().KeyLong(field - 1, 0);
      Check(defaults.File().btGetEqual(0) == StatusSuccess, "default");
      defaults.Record().SetDouble(EmployeeAux1Record::Amount, DefaultAmount(field));
      Check(defaults.File().btUpdate(0) == StatusSuccess, "default");
    }
  }

  Company company_;
  Employee employee_;
};

/// One of the three files in bare LMDB, with room for a record of it.
class LmdbRecords {
 public:
  LmdbRecords(const std::filesystem::path& path, Form form, const RecordDescription& description)
      : file_(path, form), record_(description.FileFor(Release).recordLength) {}

  /// Reads the record of that key. False where there is none.
  bool Read(const LmdbKey& key) {
    if (!file_.Find(key, key)) return false;
    file_.Read(record_);
    return true;
  }

  [[nodiscard]] LmdbFile& File() { return file_; }
  [[nodiscard]] std::span<std::byte> Record() { return record_; }

 private:
  LmdbFile file_;
  std::vector<std::byte> record_;
};

/// The same rows in bare LMDB.
template <Form TheForm>
class LmdbEmployees {
 public:
  static constexpr std::string_view Name = TheForm == Form::Plain ? "lmdb" : "packed_lmdb";

  LmdbEmployees() {
    FillEmployees();
    FillFields();
    FillDefaults();
  }

  double Read(std::int32_t index) {
    employees_.File().Begin();
    fields_.File().Begin();
    defaults_.File().Begin();
    Check(employees_.Read(LmdbKey::OfPath(ByIndex).Long(index)), "employee");
    const auto employee = GetField<std::int32_t>(employees_.Record(), EmployeeRecord::Index);
    double sum = 0;
    for (std::int32_t field = 1; field <= FieldsRead; ++field) sum += Amount(employee, field);
    defaults_.File().End();
    fields_.File().End();
    employees_.File().End();
    return sum;
  }

 private:
  static constexpr int ByIndex = 4;
  static constexpr int ByEmployee = 3;
  static constexpr int ByNumber = 0;

  double Amount(std::int32_t employee, std::int32_t field) {
    if (fields_.Read(LmdbKey::OfPath(ByEmployee).Long(employee).Long(field - 1))) {
      return GetField<double>(fields_.Record(), EmployeeAux6Record::Amount);
    }
    Check(defaults_.Read(LmdbKey::OfPath(ByNumber).Long(field - 1)), "default");
    return GetField<double>(defaults_.Record(), EmployeeAux1Record::Amount);
  }

  void FillEmployees() {
    LmdbWrite write(employees_.File());
    for (std::int32_t index = 1; index <= EmployeesOnFile; ++index) {
      const std::span<std::byte> record = employees_.Record();
      std::ranges::fill(record, std::byte{0});
      PutField(record, EmployeeRecord::Index, index);
      PutTextField(record, EmployeeRecord::EmployeeID, IDOf(index));
      write.Add(record);
      write.AddKey(LmdbKey::OfPath(0).Text(IDOf(index)));
      write.AddKey(LmdbKey::OfPath(ByIndex).Long(index));
    }
    write.Commit();
  }

  void FillFields() {
    LmdbWrite write(fields_.File());
    for (std::int32_t index = 1; index <= EmployeesOnFile; ++index) {
      for (std::int32_t field = 1; field <= OwnFields; ++field) {
        const std::span<std::byte> record = fields_.Record();
        PutField(record, EmployeeAux6Record::EmployeeIndex, index);
        PutField(record, EmployeeAux6Record::RowNumber, field - 1);
        PutField(record, EmployeeAux6Record::Amount, OwnAmount(index, field));
        write.Add(record);
        write.AddKey(LmdbKey::OfPath(0).Long(index).Long(field - 1));
        write.AddKey(LmdbKey::OfPath(ByEmployee).Long(index).Long(field - 1));
      }
    }
    write.Commit();
  }

  void FillDefaults() {
    LmdbWrite write(defaults_.File());
    for (std::int32_t field = 1; field <= CompanyFields; ++field) {
      PutField(defaults_.Record(), EmployeeAux1Record::RowNumber, field - 1);
      PutField(defaults_.Record(), EmployeeAux1Record::Amount, DefaultAmount(field));
      write.Add(defaults_.Record());
      write.AddKey(LmdbKey::OfPath(ByNumber).Long(field - 1));
    }
    write.Commit();
  }

  Folder folder_{InMemory()};
  LmdbRecords employees_{folder_.Path() / "employees", TheForm, EmployeeRecord::Describe()};
  LmdbRecords fields_{folder_.Path() / "fields", TheForm, EmployeeAux6Record::Describe()};
  LmdbRecords defaults_{folder_.Path() / "defaults", TheForm, EmployeeAux1Record::Describe()};
};

using PlainLmdbEmployees = LmdbEmployees<Form::Plain>;
using PackedLmdbEmployees = LmdbEmployees<Form::Packed>;

/// All employees, shuffled, the same way for every store.
const std::vector<std::int32_t>& Indexes() {
  static const std::vector<std::int32_t> indexes = [] {
    std::vector<std::int32_t> all(EmployeesOnFile);
    std::iota(all.begin(), all.end(), 1);
    std::shuffle(all.begin(), all.end(), std::minstd_rand(7));
    return all;
  }();
  return indexes;
}

template <typename Store>
void Payroll(benchmark::State& state) {
  static Store store;
  const std::vector<std::int32_t>& indexes = Indexes();
  std::size_t next = 0;
  for ([[maybe_unused]] auto _ : state) {
    const std::int32_t index = indexes[next++ % indexes.size()];
    Check(store.Read(index) == ExpectedSum(index), "payroll");
  }
}

template <typename Store>
void RegisterPayroll() {
  RegisterJob<Store>("payroll", EmployeesOnFile, Payroll<Store>);
}

}  // namespace

void RegisterEmployees() {
  RegisterPayroll<LarkmoorEmployees>();
  RegisterPayroll<PlainLmdbEmployees>();
  RegisterPayroll<PackedLmdbEmployees>();
}

}  // namespace larkmoor::bench
