// Work that is told before it is done, so that after a sudden end it is known what files must hold.
//
// A writer tells each piece of work before it is tried: "try 0:5=17 1:3=-" says that in the first
// of its files record 5 gets the value 17, and that in the second record 3 is deleted. Once the
// status was 0 it says "done".
#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>
#include <map>
#include <string>
#include <vector>

#include "support/sample_files.h"

namespace larkmoor::test {

/// What is done to a `MadeSample`.
struct Change {
  std::size_t file;  ///< place among the writer's files, from 0
  std::int32_t number;
  std::int32_t value;  ///< 0 deletes
};

/// Values by number.
using Content = std::map<std::int32_t, std::int32_t>;

void Apply(const Change& change, Content& content);

inline constexpr const char* DoneLine = "done";
std::string TryLine(const std::vector<Change>& changes);
/// The changes that a line tells to be tried. Throws `std::runtime_error` where it tells none.
std::vector<Change> ChangesIn(const std::string& line);

/// The records that are one writer's own, by their numbers.
struct Share {
  std::int32_t first = 1;
  std::int32_t last = std::numeric_limits<std::int32_t>::max();

  [[nodiscard]] bool Has(std::int32_t number) const { return first <= number && number <= last; }
};

/// The share's records as the file holds them. Throws `std::runtime_error` where a record is not a
/// whole `MadeSample`, comes twice, or the walk does not end in status 9.
Content ContentOf(Cursor& file, const Share& share = {});

/// What a writer's files must hold by what it told.
class Expectation {
 public:
  explicit Expectation(std::size_t files = 1) : files_(files) {}

  /// Takes a line of the writer. Throws `std::runtime_error` where it is no such line.
  void Follow(const std::string& line);

  /// What is wrong with what was found in a file; empty where nothing is. All work that was done
  /// must be there; what was under way at the end may be there or not, but not by halves. Goes on
  /// from what was found.
  std::string Mismatch(const Content& found, std::size_t file = 0);

  /// Takes note of someone else's change, which was done.
  void Note(const Change& change);

  /// Pieces of work that were done.
  [[nodiscard]] int Done() const { return done_; }

 private:
  struct State {
    Content done;
    Content tried;  ///< with the work that was told but not confirmed
  };

  std::vector<State> files_;
  int done_ = 0;
};

}  // namespace larkmoor::test
