// How the examples look at a status. To copy along with them.
#pragma once

#include <stdexcept>
#include <string>
#include <string_view>

#include <larkmoor/connection/btrieve.h>
#include <larkmoor/status.h>

namespace example {

/// Ends the work in hand where a status is not success. Not every status is a failure: those that a
/// call may well answer with, such as the end of a walk, are looked at before they come here.
inline void Check(larkmoor::Status status, std::string_view what) {
  if (status == larkmoor::StatusSuccess) return;
  larkmoor::Btrieve connection;
  throw std::runtime_error(std::string(what) + ": " + connection.ErrorMessage(status).ToText());
}

}  // namespace example
