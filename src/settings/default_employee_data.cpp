#include <larkmoor/error.h>

#include "connection/message_boxes.h"
#include "settings/default_employee_data_parts.h"

namespace larkmoor {
namespace {

constexpr std::int16_t ByRow = 0;

/// Two or three statuses in one number, which raises error 6 where it is beyond an Integer.
Status Combined(Status first, Status second, Status third = StatusSuccess) {
  return Variant(first + 1000 * second + 1000000 * third).ToInteger();
}

}  // namespace

// The sum raises before the files are let go of: where it does, they stay open to the end of the
// object.
Status DefaultEmployeeData::OpenFile() {
  Parts& parts = *parts_;
  const bool wasOpen = parts.settings.IsOpen();
  const Status first = parts.settings.OpenFile();
  parts.settings.Mark(wasOpen);
  const Status second = parts.w2.Open();
  const Status third = parts.payroll.HasRows() ? parts.payroll.Open() : StatusSuccess;
  const Status status = Combined(first, second, third);
  if (status != StatusSuccess) {
    parts.settings.Release();
    parts.w2.Release();
    return status;
  }
  parts.settings.Mark(true);
  parts.w2.Record().ClearBuffer();
  return status;
}

// The status is that of the last file closed.
Status DefaultEmployeeData::CloseFile() {
  Parts& parts = *parts_;
  Status status = parts.settings.Accounts().Close();
  if (!parts.settings.IsOpen()) return status;
  parts.settings.CloseFile();
  status = parts.w2.Close();
  return parts.payroll.HasRows() ? parts.payroll.Close() : status;
}

Status DefaultEmployeeData::Read() {
  const Status first = parts_->settings.Read();
  parts_->w2.File().KeyWord(DefaultW2DataRecord::Describe().rowMark->value, 0);
  return Combined(first, parts_->w2.File().btGetEqual(ByRow));
}

Status DefaultEmployeeData::Update() {
  const Status first = parts_->settings.Update();
  return Combined(first, parts_->w2.File().btUpdate(ByRow));
}

// The one property that tells of an index outside in a message box, and gives 0.
std::int16_t DefaultEmployeeData::PRDeductAddOrder(std::int16_t Index) {
  try {
    return parts_->settings.Record().GetInteger(DefaultEmployeeDataRecord::PRDeductAddOrder, Index);
  } catch (const Error& error) {
    ShowMessageBox("PRDeductAddOrder = " + std::to_string(Index) + "\r\n" +
                   std::to_string(error.Number()) + " : " + error.Description());
    return 0;
  }
}

}  // namespace larkmoor
