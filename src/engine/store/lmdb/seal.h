// Checksums, so that bytes that went bad on their way are told and not believed.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace larkmoor::store::lmdb {

/// The checksum of the bytes. Equal bytes with another seed have another one.
std::uint64_t Checksum(std::span<const std::byte> bytes, std::uint64_t seed = 0);

/// The text with its checksum behind it.
std::string Seal(std::string_view text);
/// The text of what `Seal` gave; nothing where the checksum is not that of the text.
std::optional<std::string_view> Unseal(std::string_view sealed);

}  // namespace larkmoor::store::lmdb
