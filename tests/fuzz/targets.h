// What is fuzzed. A target takes any bytes, and raises where something that must hold does not; the
// fuzzers and the test of the corpus call the same ones.
#pragma once

#include <cstdint>
#include <span>
#include <string_view>

namespace larkmoor::fuzz {

using Input = std::span<const std::uint8_t>;

/// A "VERSION.TXT" of these bytes: the release that it tells, and the connection on it.
void CompanyVersion(Input input);
/// A CSV file, imported into a class, exported, and imported again.
void CsvImport(Input input);
/// A text as a date and as a value of every other type.
void DateText(Input input);
/// Writes and searches on a file with keys of every kind, against a model.
void KeySearch(Input input);
/// A record file of hostile bytes: opened, checked, read and written to.
void RecordFile(Input input);
/// A stream in the sequential form, loaded and saved again.
void SaveFile(Input input);

struct Target {
  std::string_view name;  ///< of its folder in corpus/, too
  void (*run)(Input input);
};

inline constexpr Target Targets[] = {
    {"company_version", CompanyVersion}, {"csv_import", CsvImport},   {"date_text", DateText},
    {"key_search", KeySearch},           {"record_file", RecordFile}, {"save_file", SaveFile},
};

/// The target of that name, or null.
constexpr const Target* FindTarget(std::string_view name) {
  for (const Target& target : Targets) {
    if (target.name == name) return &target;
  }
  return nullptr;
}

}  // namespace larkmoor::fuzz
