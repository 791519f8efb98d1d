#include "tables/table_frame.h"

#include "connection/shared_state.h"

namespace larkmoor {

TableFrame::TableFrame(const RecordDescription& record, std::string_view fileName,
                       FrameBehaviour behaviour)
    : fileName_(fileName),
      behaviour_(behaviour),
      file_(std::make_unique<TovrinFile>()),
      record_(record) {}

Status TableFrame::OpenFile() {
  const Status status =
      file_->btOpen(Shared().gCompanyPath + std::string(fileName_), TovrinFile::NormalMode);
  if (status != StatusSuccess) {
    if (!behaviour_.failedOpenKeepsFile) file_ = std::make_unique<TovrinFile>();
    return status;
  }
  isOpen_ = !behaviour_.openSetsNoMark;
  record_.AttachBuffer(file_->RecordBuffer());
  record_.ClearBuffer();
  fileVersion_ = file_->btDataVersion();
  return status;
}

Status TableFrame::CloseFile() {
  if (!isOpen_) return StatusSuccess;
  const Status status = file_->btClose();
  file_ = std::make_unique<TovrinFile>();
  record_ = Tovrin2Record(record_.Description());
  isOpen_ = behaviour_.closeKeepsOpenMark;
  return status;
}

}  // namespace larkmoor
