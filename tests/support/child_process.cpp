#include "support/child_process.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/mount.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <exception>
#include <iostream>
#include <stdexcept>
#include <utility>

#include <grp.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <sched.h>

namespace larkmoor::test {
namespace {

[[noreturn]] void Fail(const std::string& what) {
  throw std::runtime_error(what + ": " + std::strerror(errno));
}

struct Pipe {
  int read;
  int write;
};

/// A pipe that programs started meanwhile do not inherit.
Pipe MakePipe() {
  std::array<int, 2> ends{};
  if (pipe2(ends.data(), O_CLOEXEC) != 0) Fail("pipe");
  return {ends[0], ends[1]};
}

/// Exit code of a process, or minus the number of the signal that ended it.
int WaitFor(pid_t pid) {
  int state = 0;
  while (waitpid(pid, &state, 0) < 0) {
    if (errno != EINTR) Fail("wait");
  }
  return WIFEXITED(state) ? WEXITSTATUS(state) : -WTERMSIG(state);
}

/// Starts a program with these ends of pipes as its input and output.
pid_t Spawn(const std::vector<std::string>& command, int input, int output) {
  std::vector<char*> arguments;
  arguments.reserve(command.size() + 1);
  for (const std::string& part : command) arguments.push_back(const_cast<char*>(part.c_str()));
  arguments.push_back(nullptr);

  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_adddup2(&actions, input, STDIN_FILENO);
  posix_spawn_file_actions_adddup2(&actions, output, STDOUT_FILENO);
  posix_spawnattr_t attributes;
  posix_spawnattr_init(&attributes);
  sigset_t pipeSignal;
  sigemptyset(&pipeSignal);
  sigaddset(&pipeSignal, SIGPIPE);
  posix_spawnattr_setsigdefault(&attributes, &pipeSignal);
  posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSIGDEF);

  pid_t pid = -1;
  errno = posix_spawn(&pid, arguments[0], &actions, &attributes, arguments.data(), environ);
  posix_spawnattr_destroy(&attributes);
  posix_spawn_file_actions_destroy(&actions);
  if (errno != 0) Fail("start of " + command.front());
  return pid;
}

/// Gives the process a table of mounts that no other process sees, which takes root's rights.
bool OwnMounts() {
  return unshare(CLONE_NEWNS) == 0 &&
         mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0;
}

/// Runs `body` in a forked child and gives its exit code, or minus the signal that ended it.
int ForkAndRun(const std::function<int()>& body) {
  // A child that hangs is ended by its alarm.
  constexpr unsigned int Seconds = 120;
  std::cout.flush();
  std::fflush(nullptr);
  const pid_t pid = fork();
  if (pid < 0) Fail("fork");
  if (pid > 0) return WaitFor(pid);
  alarm(Seconds);
  const int code = body();
  std::cout.flush();
  std::fflush(nullptr);
  _exit(code);
}

/// Failures of the running test so far.
int FailureCount() {
  const auto& result = *testing::UnitTest::GetInstance()->current_test_info()->result();
  int count = 0;
  for (int i = 0; i < result.total_part_count(); ++i) {
    count += result.GetTestPartResult(i).failed() ? 1 : 0;
  }
  return count;
}

}  // namespace

ChildProcess::ChildProcess(const std::vector<std::string>& command) {
  // A test that writes to a killed child gets an error and lives on.
  signal(SIGPIPE, SIG_IGN);
  const Pipe toChild = MakePipe();
  const Pipe fromChild = MakePipe();
  input_ = toChild.write;
  output_ = fromChild.read;
  pid_ = Spawn(command, toChild.read, fromChild.write);
  close(toChild.read);
  close(fromChild.write);
}

ChildProcess::ChildProcess(ChildProcess&& other) noexcept
    : pid_(std::exchange(other.pid_, -1)),
      input_(std::exchange(other.input_, -1)),
      output_(std::exchange(other.output_, -1)),
      unread_(std::move(other.unread_)) {}

ChildProcess::~ChildProcess() {
  Kill();
  for (const int descriptor : {input_, output_}) {
    if (descriptor >= 0) close(descriptor);
  }
}

void ChildProcess::Send(std::string_view line) {
  const std::string text = std::string(line) + '\n';
  // Lines are shorter than what a pipe takes in one piece. A dead child is seen by its silence.
  [[maybe_unused]] const ssize_t written = write(input_, text.data(), text.size());
}

std::optional<std::string> ChildProcess::ReadLine(std::chrono::milliseconds time) {
  const auto end = Clock::now() + time;
  for (;;) {
    if (const auto lineEnd = unread_.find('\n'); lineEnd != std::string::npos) {
      std::string line = unread_.substr(0, lineEnd);
      unread_.erase(0, lineEnd + 1);
      return line;
    }
    if (!ReadMore(end)) return {};
  }
}

bool ChildProcess::ReadMore(Clock::time_point end) {
  const auto left = std::chrono::ceil<std::chrono::milliseconds>(end - Clock::now());
  pollfd ready{output_, POLLIN, 0};
  if (left.count() <= 0 || poll(&ready, 1, static_cast<int>(left.count())) == 0) return false;
  std::array<char, 4096> piece{};
  const ssize_t count = read(output_, piece.data(), piece.size());
  if (count <= 0) return false;
  unread_.append(piece.data(), static_cast<std::size_t>(count));
  return true;
}

std::string ChildProcess::Ask(std::string_view line) {
  Send(line);
  return ReadLine().value_or("");
}

void ChildProcess::Kill() {
  if (pid_ < 0) return;
  kill(pid_, SIGKILL);
  WaitFor(std::exchange(pid_, -1));
}

std::vector<std::string> ChildProcess::RemainingLines() {
  std::vector<std::string> lines;
  while (auto line = ReadLine()) lines.push_back(std::move(*line));
  return lines;
}

int ChildProcess::Wait(std::chrono::milliseconds time) {
  close(std::exchange(input_, -1));
  const auto end = Clock::now() + time;
  while (ReadMore(end)) {
  }
  if (Clock::now() >= end) kill(pid_, SIGKILL);
  return WaitFor(std::exchange(pid_, -1));
}

void RunInChild(const std::function<void()>& body) {
  const int failuresBefore = FailureCount();
  const int code = ForkAndRun([&] {
    try {
      body();
    } catch (const std::exception& error) {
      ADD_FAILURE() << "raised: " << error.what();
    }
    return FailureCount() == failuresBefore ? 0 : 1;
  });
  if (code > 0) ADD_FAILURE() << "expectations failed in a child, see above";
  if (code < 0) ADD_FAILURE() << "a child was ended by signal " << -code;
}

bool BecomeNobody() {
  constexpr id_t Nobody = 65534;
  if (geteuid() == 0) {
    if (setgroups(0, nullptr) != 0 || setgid(Nobody) != 0 || setuid(Nobody) != 0) return false;
  }
  return geteuid() != 0;
}

bool CanMount() {
  return ForkAndRun([] { return OwnMounts() ? 0 : 1; }) == 0;
}

void MountMemoryDisk(const std::string& folder, std::size_t bytes) {
  const std::string options = "size=" + std::to_string(bytes);
  if (!OwnMounts() || mount("none", folder.c_str(), "tmpfs", 0, options.c_str()) != 0) {
    Fail("memory disk on " + folder);
  }
}

void MountReadOnly(const std::string& folder) {
  const char* path = folder.c_str();
  if (!OwnMounts() || mount(path, path, nullptr, MS_BIND, nullptr) != 0 ||
      mount("none", path, nullptr, MS_BIND | MS_REMOUNT | MS_RDONLY, nullptr) != 0) {
    Fail("read-only view of " + folder);
  }
}

}  // namespace larkmoor::test
