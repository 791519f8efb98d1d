#include "connection/conversions.h"
#include "engine/text.h"
#include "settings/default_customer_data_parts.h"

namespace larkmoor {
namespace {

/// The last byte that `Unused11` reaches, by release.
std::int16_t LastUnusedByte(double release) {
  if (release < 11.0) return 2685;
  if (release < 13.0) return 1281;
  if (release < 14.0) return 1534;
  if (release < 16.0) return 1437;
  return release < 18.0 ? 2461 : 1143;
}

}  // namespace

// Both keep their value, whatever is assigned.

void DefaultCustomerData::FCDays(std::int16_t) {}

void DefaultCustomerData::NextSONumber(std::string_view) {}

void DefaultCustomerData::Merchant_ID_Length(std::uint8_t value) {
  constexpr double StoresLength = 18.0;
  if (parts_->settings.FileVersion() < StoresLength) return;
  parts_->settings.Record().SetByte(DefaultCustomerDataRecord::Merchant_ID_Length, value);
}

// The length is that of the other text.
std::uint8_t DefaultCustomerData::Merchant_TID_Length() {
  return Variant(static_cast<std::int32_t>(ToWindows1252(Merchant_ID()).size())).ToByte();
}

void DefaultCustomerData::Merchant_TID_Length(std::uint8_t) {}

std::uint8_t DefaultCustomerData::Unused11(std::int16_t Index) {
  return parts_->settings.File().RecordByte(
      Clamp(Index, 1, LastUnusedByte(parts_->settings.FileVersion())));
}

void DefaultCustomerData::Unused11(std::int16_t, std::uint8_t) {}

}  // namespace larkmoor
