// What the generated rows of the member table are made with.
#pragma once

#include <larkmoor/member_access.h>

#include "automation/automation.h"

namespace larkmoor::automation {

template <typename T>
Class ClassRow(std::string_view name, std::string_view subsystem, std::string_view doc,
               std::span<const Member> members, const RecordDescription* record) {
  return {name,
          subsystem,
          doc,
          members,
          []() -> void* { return new T; },
          [](void* object) { delete static_cast<T*>(object); },
          &MemberAccess<T>::File,
          record};
}

}  // namespace larkmoor::automation
