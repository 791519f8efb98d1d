#include "tables/table_frame.h"

#include <larkmoor/variant.h>

namespace larkmoor {

TableFrame::TableFrame(const RecordDescription& record, std::string_view fileName,
                       FrameBehaviour behaviour)
    : file_(record, fileName), behaviour_(behaviour) {}

Status TableFrame::OpenFile() {
  const Status status = behaviour_.failedOpenKeepsFile ? file_.OpenKeeping() : file_.Open();
  if (status != StatusSuccess) return status;
  file_.Mark(!behaviour_.openSetsNoMark);
  Record().ClearBuffer();
  fileVersion_ = File().btDataVersion();
  return status;
}

void TableFrame::TakeBackOpen(bool wasOpen) {
  file_.Close();
  file_.Mark(wasOpen);
}

std::int32_t TableFrame::FindByPercent() {
  double percent = 0;
  File().btFindPercentage(keyNumber_, percent);
  return Variant(percent).ToLong();
}

Status TableFrame::GetByPercent(double percent) {
  ++moves_;
  return File().btGetByPercentage(keyNumber_, percent);
}

Status TableFrame::CloseFile() {
  if (!IsOpen()) return StatusSuccess;
  const Status status = file_.Close();
  file_.Mark(behaviour_.closeKeepsOpenMark);
  return status;
}

}  // namespace larkmoor
