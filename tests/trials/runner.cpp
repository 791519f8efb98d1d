#include "trials/runner.h"

#include <exception>
#include <string>

namespace larkmoor::trials {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t EnoughFailures = 10;

/// A round's own seed: the same for the same round of the same trial, and another for each.
std::uint32_t SeedOf(const Trial& trial, const Plan& plan, std::uint32_t round) {
  std::uint32_t hash = plan.seed;
  const auto stir = [&hash](std::uint32_t value) { hash = (hash ^ value) * 16777619U; };
  for (const char letter : trial.name) stir(static_cast<unsigned char>(letter));
  stir(round);
  return hash;
}

fs::path FolderOf(const Trial& trial, const Plan& plan, std::uint32_t round) {
  return plan.folder / ("torture-" + std::string(trial.name) + '-' + std::to_string(plan.seed) +
                        '-' + std::to_string(round));
}

void RunRound(const Trial& trial, const Plan& plan, std::uint32_t number, Outcome& outcome) {
  const fs::path folder = FolderOf(trial, plan, number);
  fs::remove_all(folder);
  fs::create_directories(folder);
  Round round(folder, SeedOf(trial, plan, number));
  try {
    trial.round(round);
    fs::remove_all(folder);
  } catch (const std::exception& error) {
    outcome.failed.push_back({number, error.what(), folder});
  }
  for (const auto& [what, count] : round.Tried().Entries()) outcome.tried.Add(what, count);
  ++outcome.rounds;
}

}  // namespace

Outcome Run(const Trial& trial, const Plan& plan) {
  const auto end = std::chrono::steady_clock::now() + plan.time;
  Outcome outcome;
  while (outcome.rounds < plan.rounds && outcome.failed.size() < EnoughFailures &&
         std::chrono::steady_clock::now() < end) {
    RunRound(trial, plan, plan.firstRound + outcome.rounds, outcome);
  }
  return outcome;
}

}  // namespace larkmoor::trials
