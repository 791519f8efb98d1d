#include "masters/bill_of_material.h"

#include <larkmoor/variant.h>

#include "connection/conversions.h"
#include "engine/records/bom_history.h"
#include "engine/records/line_item.h"
#include "engine/tovrin_file_names.h"
#include "tables/master_look_up.h"

namespace larkmoor {
namespace {

constexpr std::int16_t ByRecordNumber = 0;
constexpr std::int16_t ByAssembly = 2;

}  // namespace

BillOfMaterial::BillOfMaterial(TableFrame& items)
    : items_(items), revisions_(BOMHistoryRecord::Describe(), TovrinFileNames::BOMHistoryFile()) {}

std::int16_t BillOfMaterial::Count() {
  Load();
  return count_;
}

std::int32_t BillOfMaterial::ItemOf(std::int16_t component) {
  Load();
  if (count_ < 1) return 0;
  return revisions_.Record().GetLong(BOMHistoryRecord::ComponentRecordNumber,
                                     Clamp(component, 1, count_));
}

double BillOfMaterial::QuantityOf(std::int16_t component) {
  Load();
  if (count_ < 1) return 0;
  return revisions_.Record().GetDouble(BOMHistoryRecord::ComponentQtyRequired,
                                       Clamp(component, 1, count_));
}

/// Another item may be in hand by now.
bool BillOfMaterial::IsLoaded() const { return isLoaded_ && loadedAt_ == items_.Moves(); }

void BillOfMaterial::Load() {
  if (IsLoaded() || isDenied_) return;
  isLoaded_ = false;
  count_ = 0;
  if (!OpenRevisions() || !FindNewest(items_.Record().GetLong(LineItemRecord::Index))) return;
  isLoaded_ = true;
  loadedAt_ = items_.Moves();
}

/// A file that does not open is tried again at the next look.
bool BillOfMaterial::OpenRevisions() {
  return revisions_.IsOpen() || revisions_.Open(TovrinFile::ReadOnlyMode) == StatusSuccess;
}

/// The last of the revisions with the highest number; false where the user is refused.
bool BillOfMaterial::FindNewest(std::int32_t item) {
  TovrinFile& file = revisions_.File();
  const Tovrin2Record& revision = revisions_.Record();
  std::int32_t newest = 0;
  std::int32_t number = 0;
  file.KeyLong(item, 0);
  file.KeyLong(0, 4);
  Status status = file.btGetGreaterOrEqual(ByAssembly);
  for (; status == StatusSuccess; status = file.btGetNext(ByAssembly)) {
    if (revision.GetLong(BOMHistoryRecord::AssemblyRecordNo) != item) break;
    if (revision.GetLong(BOMHistoryRecord::RevisionNumber) < newest) continue;
    newest = revision.GetLong(BOMHistoryRecord::RevisionNumber);
    number = revision.GetLong(BOMHistoryRecord::RecordNumber);
    count_ = Variant(revision.GetLong(BOMHistoryRecord::NoComponents)).ToInteger();
  }
  if (IsDenial(status)) {
    isDenied_ = true;
    revisions_.Close();
    return false;
  }
  if (count_ > 0) {
    file.KeyLong(number, 0);
    file.btGetEqual(ByRecordNumber);
  }
  return true;
}

void BillOfMaterial::Forget() {
  isLoaded_ = isDenied_ = false;
  revisions_.Mark(false);
}

void BillOfMaterial::Close() {
  if (revisions_.IsOpen()) revisions_.Close();
}

}  // namespace larkmoor
