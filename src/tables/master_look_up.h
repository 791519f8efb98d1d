// Turning the index that records bear into the ID that users know, and back.
//
// Every table that points at accounts, customers, employees and the like does this over a file of
// its own, so that nobody's position is disturbed. What is common stands here; when the file is
// opened, in which mode, and with which words a failure is raised, each class says itself.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include <larkmoor/status.h>

#include "tables/record_file.h"

namespace larkmoor {

/// How a master file is searched. Its key 0 is the ID.
struct MasterTable {
  const RecordDescription& (*describe)();
  std::string_view fileName;
  const Field& id;
  const Field& index;
  std::int16_t indexKey;
};

extern const MasterTable AccountTable;
extern const MasterTable CostTable;
extern const MasterTable CustomerTable;
extern const MasterTable EmployeeTable;
extern const MasterTable ItemTable;
extern const MasterTable JobTable;
extern const MasterTable PhaseTable;
extern const MasterTable VendorTable;

/// What is raised where a step of a look-up fails: the number, the property that asked, and the
/// step.
struct LookUpError {
  std::int32_t number;
  std::string_view property;
  std::string_view step;
};

/// What a property raises that shows an index as an ID: on its way to the ID, and on the way back.
struct ReferenceErrors {
  LookUpError open;
  LookUpError openByID;
  LookUpError byIndex;
  LookUpError byID;
};

/// Raises the error; its description begins with the property, the step and what was sought.
[[noreturn]] void Raise(const LookUpError& error, std::string_view sought, Status status);

/// A master file that is looked into.
class MasterLookUp : public RecordFile {
 public:
  explicit MasterLookUp(const MasterTable& table);

  /// Reads the record of that index, or of that ID.
  Status FindIndex(std::int32_t index);
  Status FindID(std::string_view id);
  // Of the record read last.
  [[nodiscard]] std::string ID();
  [[nodiscard]] std::int32_t Index();

  /// Opens the file unless it is marked open. A failure is raised.
  void OpenOnNeed(std::int16_t mode, const LookUpError& error);
  /// The ID of an index. A failure is raised; its step is followed by the index and ")".
  std::string IDOf(std::int32_t index, const LookUpError& error);
  /// The index of an ID. A failure is raised; its step is followed by the ID and ")".
  std::int32_t IndexOf(std::string_view id, const LookUpError& error);

  // The whole of such a property, over a file that opens in normal mode where it is first needed. 0
  // and the empty text stand for nothing and touch no file.
  std::string ReferenceID(std::int32_t index, const ReferenceErrors& errors);
  std::int32_t ReferenceIndex(std::string_view id, const ReferenceErrors& errors);

 private:
  const MasterTable& table_;
};

/// Whether the status says that the user may not see a table. For look-ups this is no failure.
constexpr bool IsDenial(Status status) {
  return status == StatusAccessDenied || status == StatusInvalidOwner;
}

}  // namespace larkmoor
