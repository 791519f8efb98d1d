#include "text_tools.h"

#include <algorithm>

namespace larkmoor::cli {
namespace {

constexpr std::size_t LongestQuote = 60;

bool IsContinuation(char c) { return (static_cast<unsigned char>(c) & 0xC0U) == 0x80U; }

/// Bytes of the UTF-8 character that a text starts with, 0 where it starts with none.
std::size_t CharacterLength(std::string_view text) {
  const auto lead = static_cast<unsigned char>(text.front());
  const std::size_t length = lead < 0x80   ? 1
                             : lead < 0xC2 ? 0
                             : lead < 0xE0 ? 2
                             : lead < 0xF0 ? 3
                             : lead < 0xF5 ? 4
                                           : 0;
  if (length > text.size()) return 0;
  for (std::size_t i = 1; i < length; ++i) {
    if (!IsContinuation(text[i])) return 0;
  }
  return length;
}

bool IsControl(std::string_view character) {
  const auto lead = static_cast<unsigned char>(character[0]);
  if (character.size() == 1) return lead < 0x20 || lead == 0x7F;
  return lead == 0xC2 && static_cast<unsigned char>(character[1]) < 0xA0;
}

}  // namespace

std::string Counted(long long count, std::string_view noun) {
  return std::to_string(count) + " " + std::string(noun) + (count == 1 ? "" : "s");
}

std::string Printable(std::string_view text) {
  std::string result;
  result.reserve(text.size());
  while (!text.empty()) {
    const std::size_t length = CharacterLength(text);
    if (length == 0 || IsControl(text.substr(0, length))) {
      result += '.';
    } else {
      result += text.substr(0, length);
    }
    text.remove_prefix(std::max<std::size_t>(1, length));
  }
  return result;
}

std::size_t DisplayWidth(std::string_view utf8) {
  return static_cast<std::size_t>(
      std::count_if(utf8.begin(), utf8.end(), [](char c) { return !IsContinuation(c); }));
}

std::string Quoted(std::string_view text) {
  std::string shown = Printable(text);
  if (shown.size() > LongestQuote) {
    std::size_t end = LongestQuote;
    while (IsContinuation(shown[end])) --end;
    shown.resize(end);
    shown += "...";
  }
  return '"' + shown + '"';
}

}  // namespace larkmoor::cli
