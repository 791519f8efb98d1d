// Customers, employees and the like laid into their files behind the back of the objects under
// test. Accounts are in accounts.h.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string_view>

#include "engine/records/cost.h"
#include "engine/records/customer.h"
#include "engine/records/employee.h"
#include "engine/records/line_item.h"
#include "engine/records/phase.h"
#include "engine/records/vendor.h"
#include "support/record_files.h"

namespace larkmoor::test {

/// What a look-up needs of the record of a master file.
struct Master {
  std::string_view id;
  std::int32_t index;
};

/// Adds a record to the master file `name` of the company in `folder`.
inline void AddMaster(const std::filesystem::path& folder, std::string_view name,
                      const RecordDescription& description, const Field& id, const Field& index,
                      const Master& master) {
  OpenRecordFile file(folder / name, description);
  file.Add([&](Tovrin2Record& record) {
    record.SetText(id, master.id);
    record.SetLong(index, master.index);
  });
}

inline void AddCost(const std::filesystem::path& folder, const Master& cost) {
  AddMaster(folder, "Cost.dat", CostRecord::Describe(), CostRecord::CostID, CostRecord::Index,
            cost);
}

inline void AddCustomer(const std::filesystem::path& folder, const Master& customer) {
  AddMaster(folder, "Customer.dat", CustomerRecord::Describe(), CustomerRecord::CustomerID,
            CustomerRecord::Index, customer);
}

inline void AddEmployee(const std::filesystem::path& folder, const Master& employee) {
  AddMaster(folder, "Employee.dat", EmployeeRecord::Describe(), EmployeeRecord::EmployeeID,
            EmployeeRecord::Index, employee);
}

inline void AddItem(const std::filesystem::path& folder, const Master& item) {
  AddMaster(folder, "LineItem.dat", LineItemRecord::Describe(), LineItemRecord::ItemID,
            LineItemRecord::Index, item);
}

inline void AddPhase(const std::filesystem::path& folder, const Master& phase) {
  AddMaster(folder, "Phase.dat", PhaseRecord::Describe(), PhaseRecord::PhaseID, PhaseRecord::Index,
            phase);
}

inline void AddVendor(const std::filesystem::path& folder, const Master& vendor) {
  AddMaster(folder, "Vendor.dat", VendorRecord::Describe(), VendorRecord::VendorID,
            VendorRecord::Index, vendor);
}

}  // namespace larkmoor::test
