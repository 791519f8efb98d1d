#include "connection/first_settings.h"

#include <chrono>

#include "engine/records/default_customer_data.h"
#include "engine/records/default_employee_data.h"
#include "engine/records/default_job_data.h"
#include "engine/records/default_ship_method.h"
#include "engine/records/default_vendor_data.h"
#include "engine/records/default_w2_data.h"
#include "engine/records/general_data.h"

namespace larkmoor {
namespace {

using std::chrono::days;
using std::chrono::months;
using std::chrono::sys_days;
using std::chrono::year_month_day;

constexpr std::int16_t PeriodsOfAYear = 12;

constexpr std::string_view FirstNumber = "1001";
constexpr std::string_view NumberBeforeFirst = "1000";

/// The day so many months after the first one; where the month is too short, its last day.
sys_days MonthsAfter(year_month_day first, int count) {
  const year_month_day day = first + months(count);
  return sys_days(day.ok() ? day : day.year() / day.month() / std::chrono::last);
}

year_month_day FirstDayOf(const CompanyOptions& options) {
  if (options.FiscalYearStart.Serial() != 0) return options.FiscalYearStart.ToYmd();
  const year_month_day today(floor<days>(std::chrono::system_clock::now()));
  return today.year() / std::chrono::January / 1;
}

double Serial(sys_days day) { return Date::FromChrono(year_month_day(day)).Serial(); }

/// This year's periods are 1 to 12, the next one's 13 to 24.
void FillGeneral(Tovrin2Record& record, const CompanyOptions& options) {
  const year_month_day first = FirstDayOf(options);
  record.SetInteger(GeneralDataRecord::CalendarYear,
                    static_cast<std::int16_t>(static_cast<int>(first.year())));
  record.SetInteger(GeneralDataRecord::NumberOfPeriods, PeriodsOfAYear);
  record.SetInteger(GeneralDataRecord::CurrentPeriod, 1);
  for (int period = 1; period <= 2 * PeriodsOfAYear; ++period) {
    record.SetDate(GeneralDataRecord::PeriodStartDate, Serial(MonthsAfter(first, period - 1)),
                   period);
    record.SetDate(GeneralDataRecord::PeriodEndDate, Serial(MonthsAfter(first, period) - days(1)),
                   period);
  }
}

/// Aging classes of 30 days each; those of customers and vendors lie in records of their own.
void FillAging(Tovrin2Record& record, const Field& agingDays, const Field& heading) {
  constexpr std::string_view Headings[] = {"0-30", "31-60", "61-90", "Over 90 days"};
  for (int i = 1; i <= 4; ++i) {
    record.SetInteger(agingDays, static_cast<std::int16_t>(30 * i), i);
    record.SetText(heading, Headings[i - 1], i);
  }
}

void FillCustomers(Tovrin2Record& record, const CompanyOptions&) {
  using Defaults = DefaultCustomerDataRecord;
  constexpr std::string_view PaymentMethods[] = {"Check", "Cash", "Credit card", "Bank transfer"};
  record.SetInteger(Defaults::NetDueDays, 30);
  record.SetInteger(Defaults::DiscountDays, 10);
  record.SetDouble(Defaults::DiscountPercent, 2);
  record.SetDouble(Defaults::CreditLimit, 2500);
  record.SetBoolean(Defaults::AgeByDueDate, true);
  FillAging(record, Defaults::AgingDays, Defaults::AgingHeading);
  record.SetText(Defaults::DefaultPayMethod, PaymentMethods[0]);
  int place = 0;
  for (const std::string_view method : PaymentMethods) {
    record.SetText(Defaults::PaymentMethod, method, ++place);
  }
  for (const Field* number :
       {&Defaults::NextInvoiceNumber, &Defaults::NextQuoteNumber, &Defaults::NextSONumber,
        &Defaults::NextProposal, &Defaults::NextCCM}) {
    record.SetText(*number, FirstNumber);
  }
  record.SetText(Defaults::TaxTypeDescription, "Taxable", 1);
  record.SetBoolean(Defaults::TaxTypeTaxable, true, 1);
  record.SetText(Defaults::TaxTypeDescription, "Exempt", 2);
}

void FillVendors(Tovrin2Record& record, const CompanyOptions&) {
  using Defaults = DefaultVendorDataRecord;
  record.SetInteger(Defaults::NetDueDays, 30);
  record.SetDouble(Defaults::CreditLimit, 5000);
  record.SetBoolean(Defaults::AgeByDueDate, true);
  FillAging(record, Defaults::AgingDays, Defaults::AgingHeading);
  record.SetText(Defaults::LastPONumber, NumberBeforeFirst);
  record.SetText(Defaults::NextCheck, FirstNumber);
}

void FillItems(Tovrin2Record& record, const CompanyOptions&) {
  using Defaults = DefaultShipMethodRecord;
  constexpr std::string_view ShipMethods[] = {
      "Courier", "Customer pickup", "Hand delivery", "Mail", "Ground",
      "Truck",   "Overnight",       "Second day",    "Rail", "Ocean freight"};
  constexpr int PriceLevels = 10;
  int place = 0;
  for (const std::string_view method : ShipMethods) {
    record.SetText(Defaults::Description, method, ++place);
  }
  for (std::int16_t i = 0; i < PriceLevels; ++i) {
    record.SetText(Defaults::PriceLevelName, "Price level " + std::to_string(i + 1), i);
    record.SetInteger(Defaults::PriceLevelLevel, static_cast<std::int16_t>(i + 1), i);
    record.SetInteger(Defaults::PriceLevelEnabled, i == 0 ? 1 : 0, i);
  }
  record.SetText(Defaults::NextWorkTicketNo, FirstNumber);
}

void FillPayroll(Tovrin2Record& record, const CompanyOptions&) {
  record.SetText(DefaultEmployeeDataRecord::NextCheck, FirstNumber);
  record.SetText(DefaultEmployeeDataRecord::HoursDescription, "Regular", 1);
  record.SetText(DefaultEmployeeDataRecord::HoursDescription, "Overtime", 2);
  record.SetText(DefaultEmployeeDataRecord::SalaryDescription, "Salary", 1);
}

void LeaveBlank(Tovrin2Record&, const CompanyOptions&) {}

constexpr FirstSettings Settings[] = {{DefaultCustomerDataRecord::Describe, FillCustomers},
                                      {DefaultVendorDataRecord::Describe, FillVendors},
                                      {DefaultEmployeeDataRecord::Describe, FillPayroll},
                                      {GeneralDataRecord::Describe, FillGeneral},
                                      {DefaultW2DataRecord::Describe, LeaveBlank},
                                      {DefaultShipMethodRecord::Describe, FillItems},
                                      {DefaultJobDataRecord::Describe, LeaveBlank}};

}  // namespace

std::span<const FirstSettings> AllFirstSettings() { return Settings; }

}  // namespace larkmoor
