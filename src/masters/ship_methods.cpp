#include "masters/ship_methods.h"

#include "engine/records/default_ship_method.h"
#include "engine/runtime_error.h"
#include "engine/tovrin_file_names.h"
#include "tables/record_file.h"

namespace larkmoor {
namespace {

constexpr std::int16_t ShipMethodRow = 7;

}  // namespace

std::int16_t ShipMethods::PlaceOf(std::string_view text) {
  LoadOnce();
  for (std::int16_t i = 1; i <= Last; ++i) {
    if (texts_[static_cast<std::size_t>(i)] == text) return static_cast<std::int16_t>(i - 1);
  }
  return 0;
}

const std::string& ShipMethods::TextOf(std::int32_t number) {
  LoadOnce();
  if (number < 0 || number > Last) RaiseRuntimeError(errors::SubscriptOutOfRange);
  return texts_[static_cast<std::size_t>(number)];
}

bool ShipMethods::AreThere() {
  LoadOnce();
  return areThere_;
}

// A file that cannot be read means no methods, and is not tried again.
void ShipMethods::LoadOnce() {
  if (areLoaded_) return;
  areLoaded_ = true;
  areThere_ = false;
  texts_ = {};
  RecordFile general(DefaultShipMethodRecord::Describe(), TovrinFileNames::GeneralFile());
  if (general.Open() != StatusSuccess) return;
  areThere_ = true;
  general.File().KeyWord(ShipMethodRow, 0);
  if (general.File().btGetEqual(0) == StatusSuccess) {
    for (int i = 1; i <= Last; ++i) {
      texts_[static_cast<std::size_t>(i)] =
          general.Record().GetText(DefaultShipMethodRecord::Description, i);
    }
  }
  general.Close();
}

}  // namespace larkmoor
