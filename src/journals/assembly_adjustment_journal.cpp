#include "connection/shared_state.h"
#include "journals/assembly_adjustment_journal_parts.h"
#include "journals/header_fields.h"
#include "journals/lenient_accounts.h"

namespace larkmoor {
namespace {

constexpr std::string_view AccountProperty = "AssemblyAdjustmentJournal.Account";

}  // namespace

std::string AssemblyAdjustmentJournal::MainAccount() {
  if (!HasMainAccount(Shared().gDataVersion)) return {};
  return LenientAccountID(parts_->journal,
                          parts_->journal.Record().GetLong(JrnlHdrRecord::MainAccountIndex),
                          AccountProperty);
}

void AssemblyAdjustmentJournal::MainAccount(std::string_view value) {
  if (!HasMainAccount(Shared().gDataVersion)) return;
  parts_->journal.Record().SetLong(
      JrnlHdrRecord::MainAccountIndex,
      LenientAccountIndex(parts_->journal, value, AccountProperty, value));
}

std::string AssemblyAdjustmentJournal::DetailGLAccount(std::int16_t Index) {
  return LenientAccountID(parts_->journal,
                          parts_->journal.Row(Index).GetLong(JrnlRowRecord::AccountIndex),
                          AccountProperty);
}

void AssemblyAdjustmentJournal::DetailGLAccount(std::int16_t Index, std::string_view value) {
  Tovrin2Record& row = parts_->journal.Row(Index);
  row.SetLong(JrnlRowRecord::AccountIndex,
              LenientAccountIndex(parts_->journal, value, AccountProperty, value));
}

// The reason is the description of the first row without a line number. A transaction without such
// a row has none and takes none.

std::string AssemblyAdjustmentJournal::ReasonForBuild() {
  const std::int16_t row = parts_->ReasonRow();
  return row > 0 ? DetailDescription(row) : std::string();
}

void AssemblyAdjustmentJournal::ReasonForBuild(std::string_view value) {
  const std::int16_t row = parts_->ReasonRow();
  if (row > 0) DetailDescription(row, value);
}

}  // namespace larkmoor
