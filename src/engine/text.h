// Text as clients see it (UTF-8) and as records hold it (Windows-1252, one byte a character).
#pragma once

#include <string>
#include <string_view>

namespace larkmoor {

/// Windows-1252 bytes of a UTF-8 text; a character that Windows-1252 does not have becomes "?". The
/// five bytes that Windows-1252 leaves open stand for the control characters of the same number.
/// Raises error 13 where the text is not UTF-8.
std::string ToWindows1252(std::string_view utf8);

/// UTF-8 of Windows-1252 bytes.
std::string FromWindows1252(std::string_view bytes);

/// Whether every character of a UTF-8 text has its place in Windows-1252. Raises error 13 where the
/// text is not UTF-8.
bool FitsWindows1252(std::string_view utf8);

/// Whether two texts are the same but for the case of the ASCII letters.
bool EqualIgnoringCase(std::string_view left, std::string_view right);

/// The text without the blanks at its two ends.
std::string_view TrimBlanks(std::string_view text);

}  // namespace larkmoor
