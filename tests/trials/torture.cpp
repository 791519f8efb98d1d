// Tries for a given time to make the store lose or bend data, and tells what it tried and found.

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <exception>
#include <iomanip>
#include <iostream>
#include <optional>
#include <random>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include <CLI/CLI.hpp>

#include "trials/runner.h"
#include "trials/trial.h"

namespace larkmoor::trials {
namespace {

struct Options {
  int seconds = 60;
  std::uint32_t seed = std::random_device{}();
  std::optional<std::uint32_t> round;
  std::vector<std::string> names;
};

Plan PlanOf(const Options& options, std::size_t trials) {
  Plan plan{.seed = options.seed};
  if (options.round) {
    plan.firstRound = *options.round;
    plan.rounds = 1;
  } else {
    plan.time = std::chrono::milliseconds(std::chrono::seconds(options.seconds)) / trials;
  }
  return plan;
}

std::vector<Trial> ChosenTrials(const Options& options) {
  std::vector<Trial> chosen;
  for (const Trial& trial : Trials()) {
    const auto& names = options.names;
    if (names.empty() || std::find(names.begin(), names.end(), trial.name) != names.end()) {
      chosen.push_back(trial);
    }
  }
  return chosen;
}

void PrintRow(std::string_view trial, const std::string& rounds, const std::string& found,
              const std::string& tried) {
  std::cout << std::left << std::setw(8) << trial << std::right << std::setw(7) << rounds
            << std::setw(7) << found << "  " << tried << '\n';
}

std::string TextOf(const Tally& tried) {
  std::string text;
  for (const auto& [what, count] : tried.Entries()) {
    text += (text.empty() ? "" : ", ") + std::to_string(count) + ' ' + what;
  }
  return text;
}

void PrintFailures(const Trial& trial, const Options& options, const Outcome& outcome) {
  for (const FailedRound& failed : outcome.failed) {
    std::cout << "\nFound by " << trial.name << ": " << failed.finding
              << "\n  its files:  " << failed.folder.string() << "\n  once more:  tests/torture"
              << " --trial " << trial.name << " --seed " << options.seed << " --round "
              << failed.round << '\n';
  }
}

/// Whether nothing was found.
bool Torture(const Options& options) {
  const std::vector<Trial> trials = ChosenTrials(options);
  std::cout << "seed " << options.seed << '\n';
  PrintRow("trial", "rounds", "found", "tried");
  std::vector<Outcome> outcomes;
  bool nothingFound = true;
  for (const Trial& trial : trials) {
    const Outcome& outcome = outcomes.emplace_back(Run(trial, PlanOf(options, trials.size())));
    PrintRow(trial.name, std::to_string(outcome.rounds), std::to_string(outcome.failed.size()),
             TextOf(outcome.tried));
    std::cout.flush();
    nothingFound = nothingFound && outcome.failed.empty();
  }
  for (std::size_t i = 0; i < trials.size(); ++i) PrintFailures(trials[i], options, outcomes[i]);
  return nothingFound;
}

}  // namespace
}  // namespace larkmoor::trials

int main(int count, char** arguments) try {
  using namespace larkmoor::trials;  // NOLINT(google-build-using-namespace)
  std::set<std::string> names;
  for (const Trial& trial : Trials()) names.emplace(trial.name);
  Options options;
  CLI::App app("Tries for a while to make the store lose or bend data. Ends with 1 where it could.",
               "tests/torture");
  app.add_option("--seconds", options.seconds, "how long, all trials together")
      ->check(CLI::PositiveNumber)
      ->capture_default_str();
  app.add_option("--seed", options.seed, "to try the same again; a new one otherwise");
  app.add_option("--trial", options.names, "only this one")->check(CLI::IsMember(names));
  app.add_option("--round", options.round, "only the round of this number");
  try {
    app.parse(count, arguments);
  } catch (const CLI::ParseError& error) {
    return app.exit(error) == 0 ? 0 : 2;
  }
  return Torture(options) ? 0 : 1;
} catch (const std::exception& error) {
  std::cerr << error.what() << '\n';
  return 2;
}
