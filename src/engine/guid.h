// GUIDs between their text form and their 16 bytes.
#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace larkmoor {

using GuidBytes = std::array<std::byte, 16>;

/// The bytes of a GUID in text form, 8-4-4-4-12 hexadecimal digits in either case, with or without
/// braces, in the order of the text; nothing for any other text.
std::optional<GuidBytes> ParseGuid(std::string_view text);

/// 8-4-4-4-12 upper-case hexadecimal digits without braces.
std::string FormatGuid(std::span<const std::byte, 16> bytes);

/// A new random GUID (RFC 4122, version 4).
GuidBytes NewGuid();

/// The bytes that a GUID field holds for a UTF-8 text: those of a GUID, of any other text its first
/// 16 characters, of the empty text zero bytes. Raises error 13 where the text is not UTF-8.
GuidBytes GuidFieldFromText(std::string_view text);

/// The UTF-8 text of a GUID field: empty for zero bytes, the text where the field holds one,
/// otherwise the GUID's text form.
std::string GuidFieldToText(std::span<const std::byte, 16> bytes);

}  // namespace larkmoor
