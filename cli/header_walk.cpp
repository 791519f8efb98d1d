#include "header_walk.h"

#include <algorithm>

#include "engine/records/jrnl_hdr.h"
#include "engine/tovrin_file_names.h"
#include "failure.h"
#include "journals/header_key.h"

namespace larkmoor::cli {

HeaderWalk::HeaderWalk(const Condition& condition, Output output)
    : headers_(JrnlHdrRecord::Describe(), TovrinFileNames::JrnlHdrFile()),
      progress_("reading", output) {
  OpenForReading(headers_);
  Collect(condition);
  std::ranges::sort(places_);
}

void HeaderWalk::Collect(const Condition& condition) {
  TovrinFile& file = headers_.File();
  const std::int64_t total = file.btRecordCount();
  Status status = file.btStepFirst();
  for (std::int64_t count = 1; status == StatusSuccess; ++count, status = file.btStepNext()) {
    progress_.Show(count, total);
    if (!condition(Header())) continue;
    places_.push_back(
        {Header().GetDate(JrnlHdrRecord::TrxDate), Header().GetLong(JrnlHdrRecord::NRecord)});
  }
  if (status != StatusEndOfFile) Require(status, TovrinFileNames::JrnlHdrFile());
}

bool HeaderWalk::Next() {
  while (next_ < places_.size()) {
    progress_.Show(static_cast<std::int64_t>(next_), static_cast<std::int64_t>(places_.size()));
    if (Find(places_[next_++].nRecord)) return true;
  }
  progress_.Wipe();
  return false;
}

/// False for a transaction that someone else has deleted meanwhile.
bool HeaderWalk::Find(std::int32_t nRecord) {
  headers_.File().KeyLong(nRecord, 0);
  const Status status = headers_.File().btGetEqual(HeaderKey::ByNRecord(Release()));
  if (status != StatusKeyNotFound) Require(status, TovrinFileNames::JrnlHdrFile());
  return status == StatusSuccess;
}

void OpenForReading(RecordFile& file) {
  Require(file.Open(TovrinFile::ReadOnlyMode), file.Record().Description().fileName);
}

std::string NameOfTransaction(const Tovrin2Record& header) {
  return "transaction " + std::to_string(header.GetLong(JrnlHdrRecord::NRecord));
}

}  // namespace larkmoor::cli
