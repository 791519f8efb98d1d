#include <chrono>

#include "crossref/audit_trail_parts.h"

namespace larkmoor {
namespace {

using std::chrono::days;
using std::chrono::floor;
using std::chrono::local_seconds;
using std::chrono::seconds;

seconds TimeOfDay(const Date& date) {
  const local_seconds time = date.ToChrono();
  return time - floor<days>(time);
}

local_seconds DayOf(double stored) { return floor<days>(Date(stored).ToChrono()); }

}  // namespace

// One stored date holds the day and the time.

larkmoor::Date AuditTrail::EntryDate() {
  return Date::FromChrono(DayOf(parts_->table.Record().GetDate(AuditTrailRecord::EntryDate)));
}

larkmoor::Date AuditTrail::EntryTime() {
  const Date stored(parts_->table.Record().GetDate(AuditTrailRecord::EntryDate));
  return Date(static_cast<double>(TimeOfDay(stored).count()) / days::period::num);
}

void AuditTrail::EntryTime(larkmoor::Date value) {
  Tovrin2Record& record = parts_->table.Record();
  const local_seconds day = DayOf(record.GetDate(AuditTrailRecord::EntryDate));
  record.SetDate(AuditTrailRecord::EntryDate, Date::FromChrono(day + TimeOfDay(value)).Serial());
}

}  // namespace larkmoor
