#include "settings/settings_frame.h"

#include "engine/tovrin_file_names.h"

namespace larkmoor {
namespace {

constexpr std::int16_t ByRow = 0;

}  // namespace

SettingsFrame::SettingsFrame(const RecordDescription& record, std::string_view name,
                             SettingsBehaviour behaviour)
    : file_(record, TovrinFileNames::GeneralFile()),
      accounts_(name, behaviour.missingAccountReadsEmpty ? SettingsAccounts::Missing::ReadsEmpty
                                                         : SettingsAccounts::Missing::Raises),
      row_(record.rowMark->value) {}

Status SettingsFrame::OpenFile() {
  accounts_.ForgetDenial();
  const Status status = file_.Open();
  if (status != StatusSuccess) return status;
  Record().ClearBuffer();
  fileVersion_ = File().btDataVersion();
  return status;
}

Status SettingsFrame::CloseFile() {
  accounts_.Close();
  return file_.IsOpen() ? file_.Close() : StatusSuccess;
}

Status SettingsFrame::Read() {
  File().KeyWord(row_, 0);
  return File().btGetEqual(ByRow);
}

Status SettingsFrame::Update() { return File().btUpdate(ByRow); }

}  // namespace larkmoor
