// Texts of the command line: counted, and made fit for a person's terminal.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace larkmoor::cli {

/// "1 record", "59 records".
std::string Counted(long long count, std::string_view noun);

/// The UTF-8 text with each control character, and each byte that is not UTF-8, replaced by ".", so
/// that no value of a record moves the cursor or breaks a line.
std::string Printable(std::string_view text);

/// The number of characters of a UTF-8 text. Records hold Windows-1252, whose characters all take
/// one column of a terminal.
std::size_t DisplayWidth(std::string_view utf8);

/// The printable text in quotation marks, a long one cut, for a message.
std::string Quoted(std::string_view text);

}  // namespace larkmoor::cli
