#include "reports/customers.h"

#include "engine/records/customer.h"
#include "failure.h"
#include "header_walk.h"

namespace larkmoor::cli {

Customers::Customers() : file_(CustomerTable) { OpenForReading(file_); }

const CustomerName& Customers::Of(std::int32_t index) {
  const auto [at, isNew] = known_.try_emplace(index);
  if (isNew) at->second = Read(index);
  return at->second;
}

CustomerName Customers::Read(std::int32_t index) {
  const Status status = file_.FindIndex(index);
  if (status == StatusSuccess) return {file_.ID(), file_.Record().GetText(CustomerRecord::Name)};
  if (status != StatusKeyNotFound) Require(status, CustomerTable.fileName);
  return {{}, "no customer on file, index " + std::to_string(index)};
}

}  // namespace larkmoor::cli
