#include "tables/record_file.h"

#include <string>

#include "connection/shared_state.h"

namespace larkmoor {

RecordFile::RecordFile(const RecordDescription& record, std::string_view fileName)
    : fileName_(fileName), file_(std::make_unique<TovrinFile>()), record_(record) {}

Status RecordFile::Open(std::int16_t mode) {
  const Status status = OpenKeeping(mode);
  if (status != StatusSuccess) Release();
  return status;
}

Status RecordFile::OpenKeeping(std::int16_t mode) {
  const Status status = file_->btOpen(Shared().gCompanyPath + std::string(fileName_), mode);
  if (status == StatusSuccess) Bind();
  return status;
}

Status RecordFile::Close() {
  const Status status = file_->btClose();
  Release();
  record_ = Tovrin2Record(record_.Description());
  isOpen_ = false;
  return status;
}

void RecordFile::Release() { file_ = std::make_unique<TovrinFile>(); }

void RecordFile::Bind() {
  record_.AttachBuffer(file_->RecordBuffer());
  isOpen_ = true;
}

}  // namespace larkmoor
