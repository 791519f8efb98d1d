#include "trials/trial.h"

#include <algorithm>

namespace larkmoor::trials {

void Tally::Add(std::string_view what, std::int64_t count) {
  const auto known = std::find_if(entries_.begin(), entries_.end(),
                                  [what](const Entry& entry) { return entry.first == what; });
  if (known == entries_.end()) {
    entries_.emplace_back(what, count);
  } else {
    known->second += count;
  }
}

std::span<const Trial> Trials() {
  static constexpr Trial All[] = {
      {"kill", KillRound},
      {"power", PowerRound},
      {"full", FullRound},
      {"damage", DamageRound},
  };
  return All;
}

}  // namespace larkmoor::trials
