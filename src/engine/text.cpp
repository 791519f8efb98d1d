#include "engine/text.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <optional>

#include "engine/runtime_error.h"

namespace larkmoor {
namespace {

// Only the bytes from 0x80 to 0x9F differ from the first 256 characters of Unicode. The five that
// Windows-1252 leaves open stand for themselves, so that no byte of a record is lost on its way to
// a client and back.
constexpr unsigned char FirstSpecialByte = 0x80;
constexpr std::array<char32_t, 32> SpecialCharacters = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

char32_t CharacterOf(unsigned char byte) {
  const std::size_t special = byte - std::size_t{FirstSpecialByte};
  return special < SpecialCharacters.size() ? SpecialCharacters[special] : char32_t{byte};
}

std::optional<char> ByteOf(char32_t character) {
  if (character < 0x80 || (character >= 0xA0 && character <= 0xFF)) {
    return static_cast<char>(character);
  }
  const auto found = std::find(SpecialCharacters.begin(), SpecialCharacters.end(), character);
  if (found == SpecialCharacters.end()) return std::nullopt;
  return static_cast<char>(FirstSpecialByte + (found - SpecialCharacters.begin()));
}

// What the first byte of a UTF-8 sequence tells.
struct Sequence {
  std::size_t length;
  char32_t firstBits;
  char32_t lowest;  // what is less has a shorter form, and this form of it is not allowed
};

Sequence SequenceFrom(unsigned char first) {
  if (first < 0x80) return {1, first, 0};
  if (first >= 0xC0 && first < 0xE0) return {2, first & 0x1FU, 0x80};
  if (first >= 0xE0 && first < 0xF0) return {3, first & 0x0FU, 0x800};
  if (first >= 0xF0 && first < 0xF8) return {4, first & 0x07U, 0x10000};
  RaiseRuntimeError(errors::TypeMismatch);
}

// Takes the first character off a UTF-8 text that is not empty.
char32_t TakeCharacter(std::string_view& utf8) {
  const Sequence sequence = SequenceFrom(static_cast<unsigned char>(utf8.front()));
  if (sequence.length > utf8.size()) RaiseRuntimeError(errors::TypeMismatch);
  char32_t character = sequence.firstBits;
  for (const char next : utf8.substr(1, sequence.length - 1)) {
    const auto byte = static_cast<unsigned char>(next);
    if ((byte & 0xC0U) != 0x80) RaiseRuntimeError(errors::TypeMismatch);
    character = (character << 6) | (byte & 0x3FU);
  }
  const bool isSurrogate = character >= 0xD800 && character <= 0xDFFF;
  if (character < sequence.lowest || character > 0x10FFFF || isSurrogate) {
    RaiseRuntimeError(errors::TypeMismatch);
  }
  utf8.remove_prefix(sequence.length);
  return character;
}

// `character` is at most 0xFFFF: Windows-1252 has none beyond.
void AppendUtf8(char32_t character, std::string& utf8) {
  const auto append = [&utf8](char32_t byte) { utf8.push_back(static_cast<char>(byte)); };
  const auto tail = [](char32_t bits) { return 0x80 | (bits & 0x3F); };
  if (character < 0x80) {
    append(character);
  } else if (character < 0x800) {
    append(0xC0 | (character >> 6));
    append(tail(character));
  } else {
    append(0xE0 | (character >> 12));
    append(tail(character >> 6));
    append(tail(character));
  }
}

bool IsAscii(std::string_view bytes) {
  unsigned char all = 0;
  for (const char byte : bytes) all |= static_cast<unsigned char>(byte);
  return all < 0x80;
}

char LowerAscii(char letter) {
  return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
}

}  // namespace

std::string ToWindows1252(std::string_view utf8) {
  // Most texts are ASCII, and are the same in both.
  if (IsAscii(utf8)) return std::string(utf8);
  std::string bytes;
  bytes.reserve(utf8.size());
  while (!utf8.empty()) bytes.push_back(ByteOf(TakeCharacter(utf8)).value_or('?'));
  return bytes;
}

std::string FromWindows1252(std::string_view bytes) {
  if (IsAscii(bytes)) return std::string(bytes);
  std::string utf8;
  utf8.reserve(bytes.size());
  for (const char byte : bytes) AppendUtf8(CharacterOf(static_cast<unsigned char>(byte)), utf8);
  return utf8;
}

bool FitsWindows1252(std::string_view utf8) {
  bool fits = true;
  while (!utf8.empty()) fits = ByteOf(TakeCharacter(utf8)).has_value() && fits;
  return fits;
}

bool EqualIgnoringCase(std::string_view left, std::string_view right) {
  return std::equal(left.begin(), left.end(), right.begin(), right.end(),
                    [](char a, char b) { return LowerAscii(a) == LowerAscii(b); });
}

std::string_view TrimBlanks(std::string_view text) {
  const std::size_t first = text.find_first_not_of(' ');
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(' ') - first + 1);
}

}  // namespace larkmoor
