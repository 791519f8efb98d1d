#include "engine/store/lmdb/format.h"

#include <crypt.h>

#include <algorithm>
#include <cstring>

#include <nlohmann/json.hpp>

#include "engine/store/lmdb/seal.h"

namespace larkmoor::store::lmdb {
namespace {

using Json = nlohmann::json;

/// No field lies farther from the record's start than 16 bits tell.
constexpr std::uint32_t LongestRecord = 1U << 16;

constexpr std::string_view FormatName = "larkmoor-3";

constexpr std::string_view SegmentNames[] = {"byte", "integer",  "long", "double", "date",
                                             "day",  "zerotext", "text", "guid"};

std::byte FirstByte(Prefix prefix, int more) {
  return static_cast<std::byte>(static_cast<int>(prefix) + more);
}

/// The byte that tells the kind of an entry; LMDB knows no empty ones.
std::byte FirstByte(const MDB_val& entry) { return *static_cast<const std::byte*>(entry.mv_data); }

Json ToJson(const KeyDescription& key) {
  Json segments = Json::array();
  for (const KeySegment& segment : key.segments) {
    segments.push_back({{"type", SegmentNames[static_cast<std::size_t>(segment.type)]},
                        {"offset", segment.offset},
                        {"width", segment.width}});
  }
  return {{"number", key.number},
          {"unique", key.unique},
          {"modifiable", key.modifiable},
          {"autoIncrement", key.autoIncrement},
          {"segments", std::move(segments)}};
}

KeyDescription KeyFromJson(const Json& json) {
  KeyDescription key{
      json.at("number"), json.at("unique"), json.at("modifiable"), json.at("autoIncrement"), {}};
  for (const Json& segment : json.at("segments")) {
    const auto name = segment.at("type").get<std::string_view>();
    const auto type = std::find(std::begin(SegmentNames), std::end(SegmentNames), name);
    if (type == std::end(SegmentNames)) throw std::invalid_argument("segment type");
    key.segments.push_back({static_cast<SegmentType>(type - std::begin(SegmentNames)),
                            segment.at("offset"), segment.at("width")});
  }
  return key;
}

/// Bytes that a segment of the type takes, 0 where the description tells.
std::size_t FixedWidth(SegmentType type) {
  switch (type) {
    case SegmentType::Byte:
      return 1;
    case SegmentType::Integer:
      return 2;
    case SegmentType::Long:
    case SegmentType::Day:
      return 4;
    case SegmentType::Double:
    case SegmentType::Date:
      return 8;
    case SegmentType::Guid:
      return 16;
    case SegmentType::ZeroText:
    case SegmentType::Text:
      break;
  }
  return 0;
}

/// Whether a key's searches can never reach outside the record or the key buffer.
bool IsSound(const KeyDescription& key, std::uint32_t recordLength) {
  constexpr std::size_t KeyBufferSize = 255;
  const bool counts = key.segments.size() == 1 && (key.segments[0].type == SegmentType::Integer ||
                                                   key.segments[0].type == SegmentType::Long);
  return key.number >= 0 && key.number <= HighestKeyNumber && !key.segments.empty() &&
         key.Width() <= KeyBufferSize && key.segments.size() <= KeyBufferSize / 2 &&
         (counts || !key.autoIncrement) &&
         std::all_of(key.segments.begin(), key.segments.end(), [&](const KeySegment& segment) {
           const std::size_t fixed = FixedWidth(segment.type);
           return segment.width > 0 && (fixed == 0 || segment.width == fixed) &&
                  std::size_t{segment.offset} + segment.width <= recordLength;
         });
}

}  // namespace

EntryKey EntryKey::OfHeader(char name) {
  EntryKey key;
  key.Append(Prefix::Header);
  key.bytes_[key.size_++] = static_cast<std::byte>(name);
  return key;
}

EntryKey EntryKey::OfCounters() {
  EntryKey key;
  key.Append(Prefix::Counters);
  return key;
}

EntryKey EntryKey::OfRecord(RecordNumber number) {
  EntryKey key;
  key.Append(Prefix::Record);
  key.Append(number);
  return key;
}

EntryKey EntryKey::BeforeKey(std::int16_t keyNumber) {
  EntryKey key;
  key.Append(Prefix::Key, keyNumber);
  return key;
}

EntryKey EntryKey::OfKey(std::int16_t keyNumber, const EncodedKey& encoded) {
  EntryKey key;
  key.Append(Prefix::Key, keyNumber);
  key.Append(encoded.Bytes());
  return key;
}

EntryKey EntryKey::OfKey(std::int16_t keyNumber, const EncodedKey& encoded, RecordNumber number) {
  EntryKey key = OfKey(keyNumber, encoded);
  key.Append(number);
  return key;
}

EntryKey EntryKey::CopyOf(const MDB_val& entry) {
  EntryKey key;
  key = entry;
  return key;
}

MDB_val EntryKey::Value() const { return {size_, const_cast<std::byte*>(bytes_)}; }

bool EntryKey::Begins(const MDB_val& entry) const {
  return entry.mv_size >= size_ && std::memcmp(entry.mv_data, bytes_, size_) == 0;
}

bool EntryKey::operator==(const MDB_val& entry) const {
  return entry.mv_size == size_ && Begins(entry);
}

void EntryKey::Append(Prefix prefix, int more) { bytes_[size_++] = FirstByte(prefix, more); }

void EntryKey::Append(std::span<const std::byte> bytes) {
  if (!bytes.empty()) std::memcpy(bytes_ + size_, bytes.data(), bytes.size());
  size_ += bytes.size();
}

void EntryKey::Append(RecordNumber number) {
  for (int shift = 56; shift >= 0; shift -= 8)
    bytes_[size_++] = static_cast<std::byte>(number >> shift);
}

bool IsHeader(const MDB_val& entry) {
  return entry.mv_size == 2 && FirstByte(entry) == FirstByte(Prefix::Header, 0);
}

bool IsRecord(const MDB_val& entry) {
  return entry.mv_size == 1 + NumberSize && FirstByte(entry) == FirstByte(Prefix::Record, 0);
}

bool IsOfSomeKey(const MDB_val& entry) {
  return entry.mv_size > 1 + NumberSize && FirstByte(entry) >= FirstByte(Prefix::Key, 0);
}

bool IsOfKey(const MDB_val& entry, std::int16_t keyNumber) {
  return entry.mv_size > 1 + NumberSize && FirstByte(entry) == FirstByte(Prefix::Key, keyNumber);
}

RecordNumber NumberIn(const MDB_val& entry) {
  const auto* bytes = static_cast<const std::uint8_t*>(entry.mv_data) + entry.mv_size - NumberSize;
  RecordNumber number = 0;
  std::memcpy(&number, bytes, sizeof number);
  return __builtin_bswap64(number);
}

Owner Owner::Make(std::string_view name, bool allowRead) {
  const char* salt = crypt_gensalt(nullptr, 0, nullptr, 0);
  crypt_data scratch{};
  return {crypt_r(std::string(name).c_str(), salt, &scratch), allowRead};
}

bool Owner::IsNamed(std::string_view name) const {
  crypt_data scratch{};
  return hash == crypt_r(std::string(name).c_str(), hash.c_str(), &scratch);
}

std::string ToBytes(const Counters& counters) {
  return Seal({reinterpret_cast<const char*>(&counters), sizeof counters});
}

std::optional<Counters> CountersFromBytes(std::string_view bytes) {
  const auto text = Unseal(bytes);
  Counters counters;
  if (!text || text->size() != sizeof counters) return std::nullopt;
  std::memcpy(&counters, text->data(), sizeof counters);
  return counters;
}

std::string ToBytes(const FileDescription& description) {
  Json keys = Json::array();
  for (const KeyDescription& key : description.keys) keys.push_back(ToJson(key));
  return Seal(Json{{"format", FormatName},
                   {"name", description.name},
                   {"release", description.release},
                   {"recordLength", description.recordLength},
                   {"keys", std::move(keys)}}
                  .dump());
}

std::optional<FileDescription> DescriptionFromBytes(std::string_view bytes) try {
  const auto text = Unseal(bytes);
  if (!text) return std::nullopt;
  const Json json = Json::parse(*text);
  if (json.at("format") != FormatName) return std::nullopt;
  FileDescription description{json.at("name"), json.at("release"), json.at("recordLength"), {}};
  if (description.recordLength > LongestRecord) return std::nullopt;
  for (const Json& each : json.at("keys")) {
    KeyDescription key = KeyFromJson(each);
    if (!IsSound(key, description.recordLength) || description.FindKey(key.number) != nullptr) {
      return std::nullopt;
    }
    description.keys.push_back(std::move(key));
  }
  return description;
} catch (const std::exception&) {
  return std::nullopt;
}

std::string ToBytes(const Owner& owner) {
  return Seal(Json{{"hash", owner.hash}, {"allowRead", owner.allowRead}}.dump());
}

std::optional<Owner> OwnerFromBytes(std::string_view bytes) try {
  const auto text = Unseal(bytes);
  if (!text) return std::nullopt;
  const Json json = Json::parse(*text);
  return Owner{json.at("hash"), json.at("allowRead")};
} catch (const std::exception&) {
  return std::nullopt;
}

}  // namespace larkmoor::store::lmdb
