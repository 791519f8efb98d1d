// What a call raised.
#pragma once

#include <cstdint>
#include <utility>

#include <larkmoor/error.h>

namespace larkmoor::test {

/// The number of the `Error` that `call` raises; 0 where it raises none.
template <typename Call>
std::int32_t RaisedNumber(Call&& call) {
  try {
    static_cast<void>(std::forward<Call>(call)());
  } catch (const Error& error) {
    return error.Number();
  }
  return 0;
}

}  // namespace larkmoor::test
