// Which journals there are: the codes that headers bear, and the classes that show them.
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

namespace larkmoor::cli {

/// The codes of the transactions that a class shows, that of new ones first. None for a class over
/// other transactions than those of the header file.
std::vector<std::int16_t> JournalCodesOf(std::string_view className);

/// Whether transactions of that journal are posted to the accounts. Orders and quotes are not.
bool Posts(std::int16_t journalCode);

}  // namespace larkmoor::cli
