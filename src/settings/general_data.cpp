#include "engine/runtime_error.h"
#include "settings/general_data_parts.h"

namespace larkmoor {
namespace {

/// -1 in a byte.
constexpr std::uint8_t Marked = 0xFF;

}  // namespace

void GeneralData::BatchFlag(std::int16_t Index, std::uint8_t value) {
  parts_->settings.Record().SetByte(GeneralDataRecord::BatchFlag, value != 0 ? Marked : 0, Index);
}

// It assigns the stored day to itself, and so on without end.
void GeneralData::OldestUnpostedTrx(const Variant&) { RaiseRuntimeError(errors::OutOfStackSpace); }

std::uint8_t GeneralData::Unused4() {
  return parts_->settings.Record().GetBoolean(GeneralDataRecord::Unused4) ? 1 : 0;
}

void GeneralData::Unused4(std::uint8_t value) {
  parts_->settings.Record().SetBoolean(GeneralDataRecord::Unused4, value != 0);
}

}  // namespace larkmoor
