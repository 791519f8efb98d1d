#include "trials/damage.h"

#include <algorithm>
#include <cstddef>
#include <string>

namespace larkmoor::trials {
namespace {

using test::Dice;

constexpr std::size_t Page = 4096;
constexpr std::size_t PageHead = 16;
constexpr std::size_t Sector = 512;

std::size_t PageOf(const std::string& bytes, Dice& dice) {
  return dice.PlaceIn(bytes.size() / Page);
}

char AnyByte(Dice& dice) { return static_cast<char>(dice.Below(256)); }

std::string At(std::size_t place) { return " at " + std::to_string(place); }

/// A place that matters: anywhere, in one of the first pages, or where a page says what it is.
std::size_t AnyPlace(const std::string& bytes, Dice& dice) {
  switch (dice.Below(4)) {
    case 0:
      return dice.PlaceIn(std::min(bytes.size(), 4 * Page));
    case 1:
      return PageOf(bytes, dice) * Page + dice.PlaceIn(4 * PageHead);
    default:
      return dice.PlaceIn(bytes.size());
  }
}

std::string CutOff(std::string& bytes, Dice& dice) {
  const std::size_t length = dice.OneIn(2) ? PageOf(bytes, dice) * Page : AnyPlace(bytes, dice);
  bytes.resize(length);
  return "cut off" + At(length);
}

std::string Append(std::string& bytes, Dice& dice) {
  const std::size_t count = 1 + dice.PlaceIn(3 * Page);
  for (std::size_t i = 0; i < count; ++i) bytes += AnyByte(dice);
  return "garbage of " + std::to_string(count) + " bytes appended";
}

std::string FlipBits(std::string& bytes, Dice& dice) {
  std::string told = "bits flipped";
  for (int i = dice.OneIn(2) ? 1 : 1 + dice.Below(16); i > 0; --i) {
    const std::size_t place = AnyPlace(bytes, dice);
    bytes[place] = static_cast<char>(bytes[place] ^ (1 << dice.Below(8)));
    told += At(place);
  }
  return told;
}

std::string ChangeBytes(std::string& bytes, Dice& dice) {
  const std::size_t place = AnyPlace(bytes, dice);
  const std::size_t end = std::min(bytes.size(), place + 1 + dice.PlaceIn(64));
  for (std::size_t i = place; i < end; ++i) bytes[i] = AnyByte(dice);
  return std::to_string(end - place) + " bytes changed" + At(place);
}

std::string SwapPages(std::string& bytes, Dice& dice) {
  const std::size_t first = PageOf(bytes, dice) * Page;
  const std::size_t second = PageOf(bytes, dice) * Page;
  std::swap_ranges(bytes.begin() + static_cast<std::ptrdiff_t>(first),
                   bytes.begin() + static_cast<std::ptrdiff_t>(first + Page),
                   bytes.begin() + static_cast<std::ptrdiff_t>(second));
  return "pages swapped" + At(first) + At(second);
}

std::string CopyPage(std::string& bytes, Dice& dice) {
  const std::size_t from = PageOf(bytes, dice) * Page;
  const std::size_t to = PageOf(bytes, dice) * Page;
  bytes.replace(to, Page, bytes.substr(from, Page));
  return "a page copied" + At(from) + At(to);
}

std::string Blank(std::string& bytes, Dice& dice) {
  const std::size_t size = dice.OneOf({Sector, Page, 2 * Page});
  const std::size_t place = dice.PlaceIn(bytes.size() / size + 1) * size;
  const std::size_t end = std::min(bytes.size(), place + size);
  const bool isZero = dice.OneIn(2);
  for (std::size_t i = place; i < end; ++i) bytes[i] = isZero ? '\0' : AnyByte(dice);
  return std::string(isZero ? "zeros" : "garbage") + " over " + std::to_string(size) + " bytes" +
         At(place);
}

}  // namespace

std::string Damage(std::string& bytes, Dice& dice) {
  static constexpr std::string (*Kinds[])(std::string&, Dice&) = {
      CutOff, Append, FlipBits, FlipBits, ChangeBytes, ChangeBytes, SwapPages, CopyPage, Blank};
  return dice.OneOf(Kinds)(bytes, dice);
}

}  // namespace larkmoor::trials
