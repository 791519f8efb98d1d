#include "engine/store/lmdb/seal.h"

#include <cstring>

#define XXH_INLINE_ALL
#include <xxhash.h>

namespace larkmoor::store::lmdb {

std::uint64_t Checksum(std::span<const std::byte> bytes, std::uint64_t seed) {
  return XXH3_64bits_withSeed(bytes.data(), bytes.size(), seed);
}

std::string Seal(std::string_view text) {
  const std::uint64_t checksum = Checksum(std::as_bytes(std::span(text)));
  std::string sealed(text);
  return sealed.append(reinterpret_cast<const char*>(&checksum), sizeof checksum);
}

std::optional<std::string_view> Unseal(std::string_view sealed) {
  std::uint64_t checksum = 0;
  if (sealed.size() < sizeof checksum) return std::nullopt;
  const std::string_view text = sealed.substr(0, sealed.size() - sizeof checksum);
  std::memcpy(&checksum, sealed.data() + text.size(), sizeof checksum);
  if (checksum != Checksum(std::as_bytes(std::span(text)))) return std::nullopt;
  return text;
}

}  // namespace larkmoor::store::lmdb
