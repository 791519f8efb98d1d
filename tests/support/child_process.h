// Other processes: programs that a test talks to, and pieces of a test that run in a process of
// their own because they might crash, give up rights or change what is mounted.
#pragma once

#include <sys/types.h>

#include <chrono>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace larkmoor::test {

/// A started program with pipes to its input and from its output.
class ChildProcess {
 public:
  /// Starts `command`, the program's path first.
  explicit ChildProcess(const std::vector<std::string>& command);
  ChildProcess(ChildProcess&& other) noexcept;
  ChildProcess& operator=(ChildProcess&&) = delete;
  /// Kills it where it still runs.
  ~ChildProcess();

  /// Writes a line to its input.
  void Send(std::string_view line);
  /// The next line of its output; nothing at the end of the output or when the time is over.
  std::optional<std::string> ReadLine(std::chrono::milliseconds time = std::chrono::seconds(30));
  /// Sends a line and gives the line that comes back; the empty text where none comes.
  std::string Ask(std::string_view line);
  /// Ends it by SIGKILL, wherever it is, and waits for its death.
  void Kill();
  /// All further lines, to the end of its output.
  std::vector<std::string> RemainingLines();
  /// Closes its input, waits for its end and gives its exit code, or minus the number of the signal
  /// that ended it; kills it when the time is over.
  int Wait(std::chrono::milliseconds time = std::chrono::seconds(60));

 private:
  using Clock = std::chrono::steady_clock;
  /// Takes what comes next from its output; false at the end of the output or of the time.
  bool ReadMore(Clock::time_point end);

  pid_t pid_ = -1;  ///< -1 once its end was seen
  int input_ = -1;
  int output_ = -1;
  std::string unread_;
};

/// Runs `body` in a forked child and adds a failure where it does not come to its end or an
/// expectation fails there. The child shares nothing with the test but what the test had before.
void RunInChild(const std::function<void()>& body);

/// Gives the calling process an unprivileged user, and tells whether it now is one. For use inside
/// `RunInChild`.
bool BecomeNobody();

/// Whether this process may give a child mounts of its own.
bool CanMount();
// Each gives the calling process, which must be a child of its own, its own view of `folder`: a
// memory disk of that size, or the same content that cannot be written to. They throw
// `std::runtime_error` where that fails.
void MountMemoryDisk(const std::string& folder, std::size_t bytes);
void MountReadOnly(const std::string& folder);

}  // namespace larkmoor::test
