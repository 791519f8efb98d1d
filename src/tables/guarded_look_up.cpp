#include "tables/guarded_look_up.h"

namespace larkmoor {

bool GuardedLookUp::OpenUnlessDenied(std::int16_t mode, const LookUpError& error) {
  if (isDenied_) return false;
  return IsOpen() || TakeOpen(Open(mode), error);
}

bool GuardedLookUp::TakeOpen(Status status, const LookUpError& error) {
  if (status == StatusSuccess) return true;
  if (!IsDenial(status)) Raise(error, "", status);
  isDenied_ = true;
  return false;
}

std::string GuardedLookUp::ResolvedID(std::int32_t index, std::int16_t mode,
                                      const LookUpErrors& errors) {
  if (index == 0 || !OpenUnlessDenied(mode, errors.open)) return {};
  return SearchedID(index, errors.search);
}

std::int32_t GuardedLookUp::ResolvedIndex(std::string_view id, const LookUpErrors& errors) {
  if (id.empty() || !OpenUnlessDenied(TovrinFile::NormalMode, errors.open)) return 0;
  return SearchedIndex(id, &TovrinFile::btGetEqual, errors.search);
}

std::string GuardedLookUp::SearchedID(std::int32_t index, const LookUpError& error) {
  const Status status = FindIndex(index);
  if (status == StatusSuccess) return ID();
  if (!IsDenial(status)) Raise(error, std::to_string(index) + ")", status);
  isDenied_ = true;
  return {};
}

std::int32_t GuardedLookUp::SearchedIndex(std::string_view id,
                                          Status (TovrinFile::*search)(std::int16_t),
                                          const LookUpError& error) {
  File().KeyTerminated(id, 0);
  const Status status = (File().*search)(0);
  if (status == StatusSuccess) return Index();
  if (!IsDenial(status)) Raise(error, std::string(id) + ")", status);
  isDenied_ = true;
  return 0;
}

void GuardedLookUp::Reset() {
  isDenied_ = false;
  Mark(false);
}

}  // namespace larkmoor
