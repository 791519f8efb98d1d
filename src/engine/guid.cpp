#include "engine/guid.h"

#include <algorithm>
#include <cstring>
#include <functional>
#include <random>

#include "engine/text.h"

namespace larkmoor {
namespace {

// The shape of the text form: a 0 stands for a hexadecimal digit.
constexpr std::string_view Shape = "00000000-0000-0000-0000-000000000000";
constexpr std::string_view HexDigits = "0123456789ABCDEF";

// Where the standard layout keeps the version (high four bits) and the variant (high two bits).
constexpr std::size_t VersionByte = 6;
constexpr std::size_t VariantByte = 8;

std::string_view WithoutBraces(std::string_view text) {
  const bool hasBraces = text.size() > 1 && text.front() == '{' && text.back() == '}';
  return hasBraces ? text.substr(1, text.size() - 2) : text;
}

std::optional<unsigned> HexValue(char digit) {
  if (digit >= '0' && digit <= '9') return static_cast<unsigned>(digit - '0');
  if (digit >= 'A' && digit <= 'F') return static_cast<unsigned>(digit - 'A' + 10);
  if (digit >= 'a' && digit <= 'f') return static_cast<unsigned>(digit - 'a' + 10);
  return std::nullopt;
}

bool HasStandardLayout(std::span<const std::byte, 16> bytes) {
  const auto version = std::to_integer<unsigned>(bytes[VersionByte] >> 4);
  const auto variant = std::to_integer<unsigned>(bytes[VariantByte] >> 6);
  return version >= 1 && version <= 5 && variant == 2;
}

bool IsPrintableAscii(char character) { return character >= ' ' && character <= '~'; }

bool IsPrintable(char character) {
  constexpr std::string_view Unprintable = "\x7F\x81\x8D\x8F\x90\x9D";
  return static_cast<unsigned char>(character) >= ' ' &&
         Unprintable.find(character) == std::string_view::npos;
}

// A field of 16 bytes does not say whether it holds a GUID or the characters of a short text. The
// GUIDs that this library and its neighbours make have the standard layout, so a field that has it
// is a GUID. Of the rest, a text gives itself away by its filling: characters first, at least one
// of them plain, then nothing but zero bytes, which a GUID hardly ever ends in. A text of all 16
// characters has no filling to tell it by, so all of them must be plain. What still remains, GUIDs
// numbered by hand among it, is a GUID.
bool LooksLikeText(std::string_view field) {
  const std::string_view characters = field.substr(0, field.find('\0'));
  if (characters.size() == field.size()) return std::ranges::all_of(field, IsPrintableAscii);
  return field.find_first_not_of('\0', characters.size()) == std::string_view::npos &&
         std::ranges::all_of(characters, IsPrintable) &&
         std::ranges::any_of(characters, IsPrintableAscii);
}

}  // namespace

std::optional<GuidBytes> ParseGuid(std::string_view text) {
  text = WithoutBraces(text);
  if (text.size() != Shape.size()) return std::nullopt;
  GuidBytes bytes{};
  std::size_t digits = 0;
  for (std::size_t i = 0; i < Shape.size(); ++i) {
    if (Shape[i] == '-') {
      if (text[i] != '-') return std::nullopt;
      continue;
    }
    const std::optional<unsigned> value = HexValue(text[i]);
    if (!value) return std::nullopt;
    std::byte& byte = bytes[digits++ / 2];
    byte = (byte << 4) | std::byte(*value);
  }
  return bytes;
}

std::string FormatGuid(std::span<const std::byte, 16> bytes) {
  std::string text(Shape);
  std::size_t digits = 0;
  for (char& character : text) {
    if (character == '-') continue;
    const auto byte = std::to_integer<unsigned>(bytes[digits / 2]);
    character = HexDigits[digits % 2 == 0 ? byte >> 4 : byte & 0xFU];
    ++digits;
  }
  return text;
}

GuidBytes NewGuid() {
  std::random_device source;
  std::array<std::random_device::result_type, 4> random{};
  std::ranges::generate(random, std::ref(source));
  GuidBytes bytes{};
  static_assert(sizeof(random) == sizeof(bytes));
  std::memcpy(bytes.data(), random.data(), bytes.size());
  bytes[VersionByte] = (bytes[VersionByte] & std::byte{0x0F}) | std::byte{0x40};
  bytes[VariantByte] = (bytes[VariantByte] & std::byte{0x3F}) | std::byte{0x80};
  return bytes;
}

GuidBytes GuidFieldFromText(std::string_view text) {
  if (const std::optional<GuidBytes> guid = ParseGuid(text)) return *guid;
  GuidBytes bytes{};
  const std::string characters = ToWindows1252(text);
  std::memcpy(bytes.data(), characters.data(), std::min(characters.size(), bytes.size()));
  return bytes;
}

std::string GuidFieldToText(std::span<const std::byte, 16> bytes) {
  const auto isZero = [](std::byte byte) { return byte == std::byte{0}; };
  if (std::ranges::all_of(bytes, isZero)) return {};
  const std::string_view field(reinterpret_cast<const char*>(bytes.data()), bytes.size());
  if (HasStandardLayout(bytes) || !LooksLikeText(field)) return FormatGuid(bytes);
  return FromWindows1252(field.substr(0, field.find('\0')));
}

}  // namespace larkmoor
