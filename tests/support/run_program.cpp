#include "support/run_program.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <stdexcept>
#include <system_error>

extern char** environ;

namespace larkmoor::test {
namespace {

/// A nameless file for what a program writes: unlike a pipe it never makes the program wait.
class Capture {
 public:
  Capture() : file_(std::tmpfile(), &std::fclose) {
    if (!file_) throw std::runtime_error("no temporary file");
  }
  [[nodiscard]] int Descriptor() const { return fileno(file_.get()); }

  std::string Text() {
    std::string text;
    std::rewind(file_.get());
    std::array<char, 4096> buffer{};
    while (const std::size_t count = std::fread(buffer.data(), 1, buffer.size(), file_.get())) {
      text.append(buffer.data(), count);
    }
    return text;
  }

 private:
  std::unique_ptr<std::FILE, int (*)(std::FILE*)> file_;
};

/// A terminal of which the test holds the other side. It keeps some 4,000 characters unread.
class Terminal {
 public:
  Terminal() : master_(posix_openpt(O_RDWR | O_NOCTTY)) {
    if (master_ < 0 || grantpt(master_) != 0 || unlockpt(master_) != 0) {
      throw std::runtime_error("no terminal");
    }
    slave_ = open(ptsname(master_), O_RDWR | O_NOCTTY);
  }
  Terminal(const Terminal&) = delete;
  Terminal& operator=(const Terminal&) = delete;
  ~Terminal() {
    if (slave_ >= 0) close(slave_);
    close(master_);
  }
  [[nodiscard]] int Descriptor() const { return slave_; }

  std::string Text() {
    close(slave_);
    slave_ = -1;
    std::string text;
    std::array<char, 4096> buffer{};
    ssize_t count = 0;
    while ((count = read(master_, buffer.data(), buffer.size())) > 0) {
      text.append(buffer.data(), static_cast<std::size_t>(count));
    }
    return text;
  }

 private:
  int master_;
  int slave_ = -1;
};

pid_t Start(const std::vector<std::string>& command, int out, int err) {
  std::vector<char*> arguments;
  for (const std::string& word : command) arguments.push_back(const_cast<char*>(word.c_str()));
  arguments.push_back(nullptr);
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
  posix_spawn_file_actions_adddup2(&actions, out, STDOUT_FILENO);
  posix_spawn_file_actions_adddup2(&actions, err, STDERR_FILENO);
  pid_t pid = -1;
  const int error = posix_spawn(&pid, arguments[0], &actions, nullptr, arguments.data(), environ);
  posix_spawn_file_actions_destroy(&actions);
  if (error != 0) throw std::system_error(error, std::generic_category(), command.front());
  return pid;
}

int WaitFor(pid_t pid) {
  int state = 0;
  while (waitpid(pid, &state, 0) < 0) {
    if (errno != EINTR) throw std::system_error(errno, std::generic_category(), "waitpid");
  }
  return WIFSIGNALED(state) ? -WTERMSIG(state) : WEXITSTATUS(state);
}

template <typename ErrorSide>
ProgramResult Run(const std::vector<std::string>& command) {
  Capture out;
  ErrorSide err;
  const int exitCode = WaitFor(Start(command, out.Descriptor(), err.Descriptor()));
  return {exitCode, out.Text(), err.Text()};
}

}  // namespace

ProgramResult RunProgram(const std::vector<std::string>& command) { return Run<Capture>(command); }

ProgramResult RunProgramOnTerminal(const std::vector<std::string>& command) {
  return Run<Terminal>(command);
}

}  // namespace larkmoor::test
