// Vendors with where their money goes, items with what they are built of, jobs, and employees with
// their pay levels.
#include <larkmoor/larkmoor.h>

#include "fjord_trade.h"

namespace fjord {
namespace {

// --- Vendors -------------------------------------------------------------------------------------

void FillMailingAddress(larkmoor::Vendor& vendor, const CsvRow& row) {
  vendor.Name(row.Text("Name"));
  vendor.Address1(row.Text("Address1"));
  vendor.Address2(row.Text("Address2"));
  vendor.City(row.Text("City"));
  vendor.State(row.Text("State"));
  vendor.Zipcode(row.Text("Zipcode"));
  vendor.Country(row.Text("Country"));
}

// Where payments go. An address that is empty is not kept.
void FillRemitTo(larkmoor::Vendor& vendor, const CsvRow& row) {
  vendor.RemitToName(1, row.Text("RemitTo1Name"));
  vendor.RemitToAddress1(1, row.Text("RemitTo1Address1"));
  vendor.RemitToAddress2(1, row.Text("RemitTo1Address2"));
  vendor.RemitToCity(1, row.Text("RemitTo1City"));
  vendor.RemitToState(1, row.Text("RemitTo1State"));
  vendor.RemitToZipcode(1, row.Text("RemitTo1Zipcode"));
  vendor.RemitToCountry(1, row.Text("RemitTo1Country"));
}

// The ID comes first: the addresses belong to the vendor of that ID.
void AddVendor(larkmoor::Vendor& vendor, const CsvRow& row) {
  vendor.VendorID(row.Text("VendorID"));
  FillMailingAddress(vendor, row);
  FillRemitTo(vendor, row);
  vendor.Contact(row.Text("Contact"));
  vendor.Telephone1(row.Text("Telephone1"));
  vendor.Email(row.Text("Email"));
  vendor.PurchaseAccount(row.Text("PurchaseAccount"));
  vendor.DiscountPercent(row.Number("DiscountPercent"));
  vendor.DiscountDays(row.Integer("DiscountDays"));
  vendor.NetDueDays(row.Integer("NetDueDays"));
  Check(vendor.Insert(), "Adding a vendor");
}

// --- Items ---------------------------------------------------------------------------------------

void AddItem(larkmoor::LineItem& item, larkmoor::Vendor& vendor, const CsvRow& row) {
  item.Index(0);  // the file gives the next one
  item.ItemID(row.Text("ItemID"));
  item.ItemDescription(row.Text("Description"));
  item.UnitOfMeasure(row.Text("UnitOfMeasure"));
  item.GLSalesAccount(row.Text("GLSalesAccount"));
  item.GLInventoryAccount(row.Text("GLInventoryAccount"));
  item.GLCOGSSalaryAccount(row.Text("GLCostAccount"));
  item.SalesPrice(0, row.Number("SalesPrice"));
  item.Cost(row.Number("Cost"));
  item.VendorIndex(IndexOf(vendor, row.Text("VendorID")));
  Check(item.Insert(), "Adding an item");
}

// The first revision of an item's bill of material, with all its components.
void AddBill(larkmoor::BOMHistory& bill, larkmoor::LineItem& item, Document components) {
  bill.RecordNumber(0);  // the file gives the next one
  bill.AssemblyRecordNo(IndexOf(item, components.front().Text("ItemID")));
  bill.RevisionNumber(1);
  bill.NoComponents(static_cast<std::int32_t>(components.size()));
  std::int16_t number = 0;
  for (const CsvRow& row : components) {
    ++number;
    bill.ComponentRecordNumber(number, IndexOf(item, row.Text("ComponentID")));
    bill.ComponentQtyRequired(number, row.Number("Quantity"));
  }
  Check(bill.Insert(), "Adding a bill of material");
}

// --- Jobs and employees --------------------------------------------------------------------------

void AddJob(larkmoor::JobData& job, larkmoor::Customer& customer, const CsvRow& row) {
  job.Index(0);  // the file gives the next one
  job.JobID(row.Text("JobID"));
  job.JobDescription(row.Text("Description"));
  job.CustomerIndex(IndexOf(customer, row.Text("CustomerID")));
  job.StartDate(row.Day("StartDate"));
  Check(job.Insert(), "Adding a job");
}

void FillEmployee(larkmoor::Employee& employee, const CsvRow& row) {
  employee.EmployeeID(row.Text("EmployeeID"));
  employee.EmployeeFirstName(row.Text("FirstName"));
  employee.EmployeeLastName(row.Text("LastName"));
  employee.EmployeeName(row.Text("FirstName") + " " + row.Text("LastName"));
  employee.JobTitle(row.Text("JobTitle"));
  employee.Address1(row.Text("Address1"));
  employee.City(row.Text("City"));
  employee.State(row.Text("State"));
  employee.Zipcode(row.Text("Zipcode"));
  employee.DateHired(row.Day("DateHired"));
  employee.IsEmployee(true);
}

// A rate for which there is no row is dropped without a word, and so it is read again.
void SetRates(larkmoor::Employee& employee, const std::vector<CsvRow>& levels) {
  for (const CsvRow& level : levels) {
    if (level.Integer("EmployeeIndex") != employee.Index()) continue;
    const auto number = static_cast<std::int16_t>(level.Integer("RowNumber") + 1);
    employee.PayRateAmount(number, level.Number("PayRateAmount"));
    if (employee.PayRateAmount(number) != level.Number("PayRateAmount")) {
      level.Fail("the company has no such row; from release 19 on import this file first");
    }
  }
}

// Up to release 18 the rates are in the employee's record, and later in rows by the employee's
// index, which only an employee on file has. Each employee has an opening of its own: the row of a
// pay level stays in hand until another level is asked for, whoever the employee is.
void AddEmployee(const CsvRow& row, const std::vector<CsvRow>& levels) {
  larkmoor::Employee employee;
  Check(employee.OpenFile(), "Opening the employees");
  FillEmployee(employee, row);
  Check(employee.Insert(), "Adding an employee");
  SetRates(employee, levels);
  Check(employee.Update(), "Writing the rates of an employee");
  Check(employee.CloseFile(), "Closing the employees");
}

}  // namespace

// A vendor object saves the addresses of one vendor after each opening.
std::size_t AddVendors(const Folder& data) {
  const std::vector<CsvRow> rows = ReadCsv(data / "vendors.csv");
  larkmoor::Vendor vendor;
  for (const CsvRow& row : rows) {
    Check(vendor.OpenFile(), "Opening the vendors");
    AddVendor(vendor, row);
    Check(vendor.CloseFile(), "Closing the vendors");
  }
  return rows.size();
}

std::size_t AddItems(const Folder& data) {
  const std::vector<CsvRow> rows = ReadCsv(data / "items.csv");
  larkmoor::Vendor vendor;
  larkmoor::LineItem item;
  Check(vendor.OpenFile(), "Opening the vendors");
  Check(item.OpenFile(), "Opening the items");
  for (const CsvRow& row : rows) AddItem(item, vendor, row);
  Check(item.CloseFile(), "Closing the items");
  Check(vendor.CloseFile(), "Closing the vendors");
  return rows.size();
}

std::size_t AddComponents(const Folder& data) {
  const std::vector<CsvRow> rows = ReadCsv(data / "components.csv");
  larkmoor::LineItem item;
  larkmoor::BOMHistory bill;
  Check(item.OpenFile(), "Opening the items");
  Check(bill.OpenFile(), "Opening the bills of material");
  for (const Document components : example::GroupBy(rows, "ItemID")) {
    AddBill(bill, item, components);
  }
  Check(bill.CloseFile(), "Closing the bills of material");
  Check(item.CloseFile(), "Closing the items");
  return rows.size();
}

std::size_t AddJobs(const Folder& data) {
  const std::vector<CsvRow> rows = ReadCsv(data / "jobs.csv");
  larkmoor::Customer customer;
  larkmoor::JobData job;
  Check(customer.OpenFile(), "Opening the customers");
  Check(job.OpenFile(), "Opening the jobs");
  for (const CsvRow& row : rows) AddJob(job, customer, row);
  Check(job.CloseFile(), "Closing the jobs");
  Check(customer.CloseFile(), "Closing the customers");
  return rows.size();
}

std::size_t AddEmployees(const Folder& data) {
  const std::vector<CsvRow> rows = ReadCsv(data / "employees.csv");
  const std::vector<CsvRow> levels = ReadCsv(data / "pay_levels.csv");
  for (const CsvRow& row : rows) AddEmployee(row, levels);
  return rows.size();
}

}  // namespace fjord
