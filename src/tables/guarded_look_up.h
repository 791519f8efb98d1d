// A look-up into a table that the user may not be allowed to see.
//
// Where the engine refuses the file (46, 51) that is no failure: the ID reads as empty, the index
// is stored as 0, and the table is not tried again until `Reset`. All other failures are raised.
#pragma once

#include "tables/master_look_up.h"

namespace larkmoor {

/// What a property raises where it resolves an ID: at the open, and at the search.
struct LookUpErrors {
  LookUpError open;
  LookUpError search;
};

class GuardedLookUp : public MasterLookUp {
 public:
  using MasterLookUp::MasterLookUp;

  /// Opens the file unless it is marked open. False where the user is refused.
  bool OpenUnlessDenied(std::int16_t mode, const LookUpError& error);
  /// The same with the status of an open that the class made itself.
  bool TakeOpen(Status status, const LookUpError& error);
  /// The ID of an index; empty for index 0, which touches no file.
  std::string ResolvedID(std::int32_t index, std::int16_t mode, const LookUpErrors& errors);
  /// The index of an ID; 0 for the empty text, which touches no file.
  std::int32_t ResolvedIndex(std::string_view id, const LookUpErrors& errors);
  /// Searches an open file by index, or by ID with any of the engine's searches.
  std::string SearchedID(std::int32_t index, const LookUpError& error);
  std::int32_t SearchedIndex(std::string_view id, Status (TovrinFile::*search)(std::int16_t),
                             const LookUpError& error);

  [[nodiscard]] bool IsDenied() const { return isDenied_; }
  /// Has the file tried again.
  void ForgetDenial() { isDenied_ = false; }
  /// Forgets the refusal and that the file is open, for the class's `OpenFile`.
  void Reset();

 private:
  bool isDenied_ = false;
};

}  // namespace larkmoor
