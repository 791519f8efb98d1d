// A thread that a test waits for, but not for ever.
#pragma once

#include <chrono>
#include <future>
#include <thread>
#include <type_traits>
#include <utility>

namespace larkmoor::test {

/// Runs a function on a thread of its own. A function that is still running at the end is left to
/// itself, so that a test which finds two threads in each other's way can say so; whatever the
/// function uses must then be its own.
template <typename Result>
class Worker {
 public:
  template <typename Function>
  explicit Worker(Function function) {
    std::packaged_task<Result()> task(std::move(function));
    result_ = task.get_future();
    thread_ = std::thread(std::move(task));
  }
  Worker(const Worker&) = delete;
  Worker& operator=(const Worker&) = delete;
  ~Worker() {
    if (!result_.valid() || EndsWithin(std::chrono::seconds(0))) {
      thread_.join();
    } else {
      thread_.detach();
    }
  }

  /// Whether the function comes to its end in that time.
  [[nodiscard]] bool EndsWithin(std::chrono::milliseconds time) const {
    return result_.wait_for(time) == std::future_status::ready;
  }

  /// What the function returned, once; raises what it raised.
  Result Get() { return result_.get(); }

 private:
  std::future<Result> result_;
  std::thread thread_;
};

template <typename Function>
Worker(Function) -> Worker<std::invoke_result_t<Function>>;

/// Runs `function` on a thread of its own to its end.
template <typename Function>
auto OnAnotherThread(Function function) {
  return Worker(std::move(function)).Get();
}

}  // namespace larkmoor::test
