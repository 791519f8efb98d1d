// Timing by turns.
#pragma once

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <ctime>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include <benchmark/benchmark.h>

namespace larkmoor::bench {

/// Tells in microseconds what a piece of work takes.
using Stopwatch = double (*)(const std::function<void()>& work);

/// On the clock.
inline double MicrosecondsOf(const std::function<void()>& work) {
  const auto start = std::chrono::steady_clock::now();
  work();
  const std::chrono::duration<double, std::micro> took = std::chrono::steady_clock::now() - start;
  return took.count();
}

/// Of the processor: for what waits for nothing, beside other work.
inline double ProcessorMicrosecondsOf(const std::function<void()>& work) {
  const auto now = [] {
    timespec time{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) * 1e6 + static_cast<double>(time.tv_nsec) / 1e3;
  };
  const double start = now();
  work();
  return now() - start;
}

/// Times the same work on several stores turn by turn and reports the median of each, in
/// microseconds: a disk is never as busy in one second as in the next.
class Turns {
 public:
  /// `work` answers how long the part of it took that is to be known.
  void Add(std::string name, std::function<double()> work) {
    works_.push_back({std::move(name), std::move(work), {}});
  }
  /// Each time another one comes first.
  void Take() {
    for (Work& work : works_) work.times.push_back(work.run());
    std::rotate(works_.begin(), works_.begin() + 1, works_.end());
  }
  void Report(benchmark::State& state) {
    for (Work& work : works_) {
      const auto middle = work.times.begin() + static_cast<std::ptrdiff_t>(work.times.size() / 2);
      std::nth_element(work.times.begin(), middle, work.times.end());
      state.counters[work.name] = *middle;
    }
  }

 private:
  struct Work {
    std::string name;
    std::function<double()> run;
    std::vector<double> times;
  };

  std::vector<Work> works_;
};

/// What every one of a list of stores is made with.
template <typename Store, typename With>
const With& Each(const With& with) {
  return with;
}

}  // namespace larkmoor::bench
