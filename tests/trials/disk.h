// Files on a disk that may lose its power.
#pragma once

#include <cstddef>
#include <string>
#include <utility>
#include <vector>

#include "support/dice.h"
#include "trials/recording.h"

namespace larkmoor::trials {

/// What a file holds for certain, and what was written to it since but not made safe. Takes the
/// writes, changes of length and syncs of that file in their order.
class FileOnDisk {
 public:
  /// Starts with what is safe.
  explicit FileOnDisk(std::string bytes) : safe_(std::move(bytes)) {}

  void Take(const Event& event);

  /// The file as a loss of power at this moment could have left it: of what is not safe any of it,
  /// in any order, cut at the sectors of the disk.
  [[nodiscard]] std::string AfterLossOfPower(test::Dice& dice) const;

  /// What a process reads from it.
  [[nodiscard]] std::string AsWritten() const;

 private:
  std::string safe_;
  std::vector<Event> unsafe_;
};

/// Which file has which name.
class NamesOnDisk {
 public:
  /// Starts with so many names, each of the file of its number.
  explicit NamesOnDisk(std::size_t names);

  /// Takes a rename, or a sync of the folder.
  void Take(const Event& event);

  /// Each name's file, as a loss of power at this moment could have left it.
  [[nodiscard]] std::vector<std::size_t> AfterLossOfPower(test::Dice& dice) const;
  /// Each name's file, as a process finds it.
  [[nodiscard]] std::vector<std::size_t> AsGiven() const { return After(unsafe_.size()); }

 private:
  /// The files after the first of the renames that are not safe.
  [[nodiscard]] std::vector<std::size_t> After(std::size_t renames) const;

  std::vector<std::size_t> safe_;
  std::vector<Event> unsafe_;
};

}  // namespace larkmoor::trials
