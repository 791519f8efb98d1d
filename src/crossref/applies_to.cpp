#include "crossref/applies_to.h"

namespace larkmoor {

std::string AppliesToText(std::int16_t code) {
  switch (code) {
    case AppliesToCustomer:
      return "Customer";
    case AppliesToVendor:
      return "Vendor";
    case AppliesToEmployee:
      return "Employee";
    case AppliesToItem:
      return "Inventory Item";
    case AppliesToAccount:
      return "G/L Account";
    default:
      return {};
  }
}

}  // namespace larkmoor
