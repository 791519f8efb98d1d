#include "support/random_work.h"

#include <algorithm>
#include <memory>
#include <utility>

namespace larkmoor::test {

using store::Seek;

RandomWork::RandomWork(store::Driver& driver, std::vector<Cursor> files, const Share& share,
                       std::uint32_t seed, Tell tell)
    : driver_(driver), share_(share), dice_(seed), tell_(std::move(tell)) {
  for (Cursor& file : files) {
    std::vector<std::int32_t> numbers;
    for (const auto& [number, value] : ContentOf(file, share)) numbers.push_back(number);
    places_.push_back({std::move(file), std::move(numbers)});
  }
}

void RandomWork::Work() {
  const bool gathered = dice_.OneIn(4);
  const auto batch = gathered ? driver_.BeginBatch() : nullptr;
  Do(Plan(gathered ? 2 + dice_.Below(12) : 1));
  if (batch) MustSucceed(batch->Commit(), "commit");
  tell_(DoneLine);
}

/// Chooses writes and tells them.
std::vector<RandomWork::Write> RandomWork::Plan(int count) {
  std::vector<Write> writes;
  std::vector<Change> told;
  for (int i = 0; i < count; ++i) {
    writes.push_back(PlanWrite());
    told.push_back(writes.back().change);
  }
  tell_(TryLine(told));
  return writes;
}

RandomWork::Write RandomWork::PlanWrite() {
  constexpr std::size_t Few = 20;
  constexpr std::size_t Many = 150;
  const std::size_t file = dice_.PlaceIn(places_.size());
  std::vector<std::int32_t>& numbers = places_[file].numbers;
  const std::int32_t value = 1 + dice_.Below(100'000);
  if (numbers.size() < Few || (numbers.size() < Many && dice_.OneIn(3))) {
    const auto highest = std::max_element(numbers.begin(), numbers.end());
    const std::int32_t number = highest == numbers.end() ? share_.first : *highest + 1;
    numbers.push_back(number);
    return {{file, number, value}, true};
  }
  const auto chosen = numbers.begin() + static_cast<std::ptrdiff_t>(dice_.PlaceIn(numbers.size()));
  const std::int32_t number = *chosen;
  if (dice_.OneIn(2)) return {{file, number, value}, false};
  numbers.erase(chosen);
  return {{file, number, 0}, false};
}

void RandomWork::Do(const std::vector<Write>& writes) {
  for (const Write& write : writes) Do(write);
}

void RandomWork::Do(const Write& write) {
  Cursor& file = places_[write.change.file].file;
  const Sample sample = MadeSample(write.change.number, write.change.value);
  if (write.isNew) return MustSucceed(file.Insert(SampleKey::Number, sample), "insert");
  MustSucceed(file.Get(Seek::Equal, SampleKey::Number, sample), "read");
  if (write.change.value == 0) return MustSucceed(file.Delete(), "delete");
  MustSucceed(file.Update(SampleKey::Number, sample), "update");
}

}  // namespace larkmoor::test
