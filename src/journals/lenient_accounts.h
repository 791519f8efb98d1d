// Accounts by their IDs in the two classes that read an account which is not there as empty, and
// that open the chart of accounts once more where it could not be opened with the rest.
#pragma once

#include <string>
#include <string_view>

#include "journals/transaction_frame.h"

namespace larkmoor {

/// `property` opens the message of a failure. A chart that cannot be opened raises 0x80040201.
std::string LenientAccountID(TransactionFrame& frame, std::int32_t index,
                             std::string_view property);
/// An ID that is not there raises 0x80040204, with `shown` in the message.
std::int32_t LenientAccountIndex(TransactionFrame& frame, std::string_view id,
                                 std::string_view property, std::string_view shown);

}  // namespace larkmoor
