// What every trial stands on. A trial tries for a while to make the store lose or bend data, in
// rounds. A round works in a folder of its own by a seed of its own, so that it can be repeated.
#pragma once

#include <cstdint>
#include <filesystem>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "support/dice.h"

namespace larkmoor::trials {

/// A promise that the store did not keep. Ends the round.
class Finding : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// What was tried, by its name, and how often; names in the order in which they came up.
class Tally {
 public:
  using Entry = std::pair<std::string, std::int64_t>;

  void Add(std::string_view what, std::int64_t count = 1);
  [[nodiscard]] const std::vector<Entry>& Entries() const { return entries_; }

 private:
  std::vector<Entry> entries_;
};

/// One round: where it works, what it chooses by, and what it has tried.
class Round {
 public:
  Round(std::filesystem::path folder, std::uint32_t seed)
      : folder_(std::move(folder)), dice_(seed) {}

  /// Empty at first. Kept where the round fails, and gone otherwise.
  [[nodiscard]] const std::filesystem::path& Folder() const { return folder_; }
  test::Dice& Dice() { return dice_; }
  void Count(std::string_view what, std::int64_t count = 1) { tally_.Add(what, count); }
  [[nodiscard]] const Tally& Tried() const { return tally_; }

 private:
  std::filesystem::path folder_;
  test::Dice dice_;
  Tally tally_;
};

struct Trial {
  std::string_view name;
  /// Throws a `Finding`, or whatever else went wrong.
  void (*round)(Round& round);
};

/// All trials.
std::span<const Trial> Trials();

// The rounds of each trial.

/// Processes that write, read, walk, open and compact at once, and are killed at any moment.
void KillRound(Round& round);
/// A writer whose every write is recorded, and the files that a loss of power could have left.
void PowerRound(Round& round);
/// A disk that fills up while it is written to.
void FullRound(Round& round);
/// A file that was damaged while nobody had it open.
void DamageRound(Round& round);

}  // namespace larkmoor::trials
