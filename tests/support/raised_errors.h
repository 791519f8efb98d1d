// What a failing step behind a property raises.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

#include <gtest/gtest.h>

#include <larkmoor/error.h>
#include <larkmoor/status.h>

#include "connection/status_messages.h"

namespace larkmoor::test {

/// Expects `call` to raise that error about the step `step`, which ended with `status`.
template <typename Call>
void ExpectRaised(Call&& call, std::int32_t number, std::string_view step, Status status) {
  try {
    static_cast<void>(std::forward<Call>(call)());
  } catch (const Error& error) {
    EXPECT_EQ(error.Number(), number);
    EXPECT_EQ(error.Source(), "Tovrin");
    EXPECT_EQ(error.Description(), std::string(step) + "\r\n\r\n" + BtrieveErrorText(status));
    EXPECT_EQ(error.BtrieveStatus(), status);
    return;
  }
  ADD_FAILURE() << step << " raises nothing";
}

}  // namespace larkmoor::test
