#include "trials/child.h"

#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <exception>
#include <iostream>
#include <sstream>
#include <stdexcept>
#include <string>

namespace larkmoor::trials {
namespace {

constexpr char Separator = '\t';  // between a count and what it counts
constexpr int FoundSomething = 1;

/// Writes a line for each count, and behind them what was found, if anything.
std::string Report(const Round& round, const std::string& finding) {
  std::string report;
  for (const auto& [what, count] : round.Tried().Entries()) {
    report += std::to_string(count) + Separator + what + '\n';
  }
  return report + finding;
}

[[noreturn]] void BeChild(Round& round, int output, std::chrono::seconds time,
                          const std::function<void(Round&)>& body) {
  alarm(static_cast<unsigned int>(time.count()));
  dup2(output, STDERR_FILENO);
  Round own(round.Folder(), round.Dice().Seed());
  std::string finding;
  try {
    body(own);
  } catch (const std::exception& error) {
    finding = error.what();
  }
  const std::string report = Report(own, finding);
  const bool written =
      write(output, report.data(), report.size()) == static_cast<ssize_t>(report.size());
  _exit(finding.empty() && written ? 0 : FoundSomething);
}

std::string AllOf(int input) {
  std::string text;
  std::array<char, 4096> piece{};
  for (;;) {
    const ssize_t count = read(input, piece.data(), piece.size());
    if (count > 0) text.append(piece.data(), static_cast<std::size_t>(count));
    if (count == 0 || (count < 0 && errno != EINTR)) return text;
  }
}

/// Adds the counts to the round, and gives the rest of the text, of which there may be much.
std::string TakeCounts(std::istringstream text, Round& round) {
  constexpr std::size_t Enough = 1000;
  std::string rest;
  for (std::string line; std::getline(text, line);) {
    std::istringstream words(line);
    std::int64_t count = 0;
    std::string what;
    if (words >> count && words.get() == Separator && std::getline(words, what)) {
      round.Count(what, count);
    } else if (rest.size() < Enough) {
      rest += (rest.empty() ? "" : "\n") + line;
    }
  }
  return rest;
}

int WaitFor(pid_t child) {
  int state = 0;
  while (waitpid(child, &state, 0) < 0) {
    if (errno != EINTR) throw std::runtime_error(std::strerror(errno));
  }
  return state;
}

}  // namespace

void InChild(Round& round, std::chrono::seconds time, const std::function<void(Round&)>& body) {
  std::array<int, 2> ends{};
  if (pipe(ends.data()) != 0) throw std::runtime_error(std::strerror(errno));
  std::cout.flush();
  const pid_t child = fork();
  if (child < 0) throw std::runtime_error(std::strerror(errno));
  if (child == 0) BeChild(round, ends[1], time, body);
  close(ends[1]);
  round.Dice().Seed();  // the child's
  const std::string rest = TakeCounts(std::istringstream(AllOf(ends[0])), round);
  close(ends[0]);
  const int state = WaitFor(child);
  if (WIFEXITED(state) && WEXITSTATUS(state) == 0) return;
  if (WIFEXITED(state)) throw Finding(rest);
  const bool hangs = WTERMSIG(state) == SIGALRM;
  throw Finding((hangs ? "it hangs" : "it crashes by signal " + std::to_string(WTERMSIG(state))) +
                (rest.empty() ? "" : ": " + rest));
}

}  // namespace larkmoor::trials
