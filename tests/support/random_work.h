// A writer that never comes to rest.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "support/dice.h"
#include "support/sample_files.h"
#include "support/told_work.h"

namespace larkmoor::test {

/// Random work on the records of a share: single writes, and batches over all of the files. Each
/// piece of work is told, as `told_work.h` says. Throws `std::runtime_error` where a status is not
/// 0.
class RandomWork {
 public:
  using Tell = std::function<void(const std::string& line)>;

  RandomWork(store::Driver& driver, std::vector<Cursor> files, const Share& share,
             std::uint32_t seed, Tell tell);

  /// Does one piece of work.
  void Work();

 private:
  /// A file and the numbers of the share's records in it.
  struct Place {
    Cursor file;
    std::vector<std::int32_t> numbers;
  };
  struct Write {
    Change change;
    bool isNew;
  };

  std::vector<Write> Plan(int count);
  Write PlanWrite();
  void Do(const std::vector<Write>& writes);
  void Do(const Write& write);

  store::Driver& driver_;
  std::vector<Place> places_;
  Share share_;
  Dice dice_;
  Tell tell_;
};

}  // namespace larkmoor::test
