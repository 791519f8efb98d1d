// Eight processes at work on one company: readers and writers, on the same records, through the
// classes that clients use.
//
//   larkmoor_company_load [--seconds N | --pieces N] [--seed S]
//
// It runs for a minute, for so many seconds, or until each worker has done so many pieces of work.
// At the end every file is verified, and what is on file compared with what the workers were told.
// It prints one line of JSON: what was done in a second, by kind, and for how many milliseconds the
// slowest worker stood still. It ends with 0 where all went well, and otherwise with 1 and a word
// of explanation on standard error.
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <csignal>
#include <cstddef>
#include <cstdint>
#include <exception>
#include <filesystem>
#include <iomanip>
#include <iostream>
#include <limits>
#include <new>
#include <sstream>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

#include <larkmoor/company.h>
#include <larkmoor/connection/btrieve.h>
#include <larkmoor/message_box.h>

#include "concurrency/load_work.h"
#include "engine/store/driver.h"
#include "support/company.h"

namespace larkmoor::test {
namespace {

namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;
using std::chrono::duration_cast;
using std::chrono::milliseconds;

struct Options {
  std::chrono::seconds time{60};
  std::uint64_t pieces = std::numeric_limits<std::uint64_t>::max();  ///< of each worker
  std::uint32_t seed = 1;
};

/// The workers of each process. Threads of one process share its hold on the files.
constexpr std::array<std::int32_t, 8> WorkersOfProcesses{1, 1, 1, 1, 1, 1, 3, 3};
/// A worker that does not end a piece of work in this time is taken to be stuck. A piece is over in
/// milliseconds where the machine has nothing else to do.
constexpr std::chrono::seconds Patience{30};

// --- A worker ------------------------------------------------------------------------------------

/// Every third worker only reads.
WorkList WorksOf(Worker& worker) {
  return worker.number % 3 == 0 ? ReadingWorks(worker) : WritingWorks(worker);
}

void DoPieces(Worker& worker, WorkList& works, std::uint64_t pieces) {
  constexpr int PiecesBetweenReopenings = 50;
  while (!worker.ledger.stop && worker.tally.pieces < pieces) {
    Work& work = *works[worker.dice.PlaceIn(works.size())];
    worker.tally.doing = work.Name();
    const auto start = Clock::now();
    work.Do();
    if (worker.dice.OneIn(PiecesBetweenReopenings)) work.Reopen();
    const std::int64_t took = duration_cast<milliseconds>(Clock::now() - start).count();
    worker.tally.longestPiece = std::max(worker.tally.longestPiece.load(), took);
    ++worker.tally.pieces;
  }
}

void RunWorker(LoadLedger& ledger, std::int32_t number, const fs::path& folder,
               const Options& options) {
  WorkerTally& tally = ledger.workers[static_cast<std::size_t>(number)];
  // A message box tells of what no status told.
  SetMessageBoxHandler([&tally](std::string_view text) { tally.Fail(text); });
  try {
    Btrieve connection;
    Require(connection.Connect(folder.string()) == Variant(StatusSuccess), "cannot connect");
    Worker worker{number, Dice(options.seed + static_cast<std::uint32_t>(number)), tally, ledger};
    WorkList works = WorksOf(worker);
    DoPieces(worker, works, options.pieces);
    for (const auto& work : works) work->Finish();
  } catch (const std::exception& error) {
    tally.Fail(error.what());
  }
  if (tally.hasFailed) ledger.stop = true;
  tally.hasEnded = true;
}

[[noreturn]] void RunProcess(LoadLedger& ledger, std::int32_t first, std::int32_t count,
                             const fs::path& folder, const Options& options) {
  std::vector<std::thread> others;
  for (std::int32_t i = 1; i < count; ++i) {
    others.emplace_back([&, number = first + i] { RunWorker(ledger, number, folder, options); });
  }
  RunWorker(ledger, first, folder, options);
  for (std::thread& other : others) other.join();
  _exit(0);
}

// --- All of them ---------------------------------------------------------------------------------

/// The ledger, in memory that forked processes share.
LoadLedger& SharedLedger() {
  void* memory = mmap(nullptr, sizeof(LoadLedger), PROT_READ | PROT_WRITE,
                      MAP_SHARED | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0);
  if (memory == MAP_FAILED) throw std::bad_alloc();
  return *new (memory) LoadLedger;
}

/// The processes of the load, watched until they end.
class Processes {
 public:
  Processes(LoadLedger& ledger, const fs::path& folder, const Options& options) : ledger_(ledger) {
    for (const std::int32_t count : WorkersOfProcesses) {
      const pid_t pid = fork();
      if (pid == 0) RunProcess(ledger, workers_, count, folder, options);
      if (pid > 0) living_.push_back(pid);
      workers_ += count;
    }
    lastSeen_.resize(static_cast<std::size_t>(workers_));
  }
  ~Processes() {
    for (const pid_t pid : living_) kill(pid, SIGKILL);
    for (const pid_t pid : living_) waitpid(pid, nullptr, 0);
  }
  Processes(const Processes&) = delete;
  Processes& operator=(const Processes&) = delete;

  [[nodiscard]] std::int32_t Workers() const { return workers_; }

  /// Waits for the end of all, and tells them to stop when the time is over. Throws where one dies
  /// or stands still.
  void Watch(std::chrono::seconds time) {
    const auto end = Clock::now() + time;
    for (auto& seen : lastSeen_) seen.at = Clock::now();
    while (!living_.empty()) {
      std::this_thread::sleep_for(milliseconds(20));
      if (Clock::now() >= end) ledger_.stop = true;
      SeeWhoEnded();
      SeeWhoGetsOn();
    }
  }

 private:
  struct Progress {
    std::uint64_t pieces = 0;
    Clock::time_point at;
  };

  void SeeWhoEnded() {
    std::erase_if(living_, [](pid_t pid) {
      int state = 0;
      if (waitpid(pid, &state, WNOHANG) != pid) return false;
      Require(WIFEXITED(state) && WEXITSTATUS(state) == 0, "a process died");
      return true;
    });
  }

  /// Those that have done their part stand still until the last one has.
  void SeeWhoGetsOn() {
    for (std::size_t i = 0; i < lastSeen_.size(); ++i) {
      const WorkerTally& worker = ledger_.workers[i];
      Progress& seen = lastSeen_[i];
      if (worker.hasEnded || worker.pieces != seen.pieces) seen = {worker.pieces, Clock::now()};
      Require(Clock::now() - seen.at < Patience,
              "worker " + std::to_string(i) + " stands still at its " + worker.doing.load());
    }
  }

  LoadLedger& ledger_;
  std::vector<pid_t> living_;
  std::int32_t workers_ = 0;
  std::vector<Progress> lastSeen_;
};

void VerifyAllFiles(const fs::path& folder) {
  for (const auto& entry : fs::directory_iterator(folder)) {
    if (entry.path().extension() != ".dat") continue;
    std::vector<std::string> findings;
    const Status status = store::DefaultDriver().Verify(entry.path(), findings, {});
    Require(status == StatusSuccess && findings.empty(),
            entry.path().filename().string() + " does not verify, status " +
                std::to_string(status) + (findings.empty() ? "" : ": " + findings.front()));
  }
}

std::string Json(const LoadLedger& ledger, std::int32_t workers, double seconds,
                 const Options& options) {
  std::int64_t longest = 0;
  for (const WorkerTally& worker : ledger.workers) {
    longest = std::max(longest, worker.longestPiece.load());
  }
  std::ostringstream json;
  json << std::fixed << std::setprecision(1) << "{\"seconds\": " << seconds
       << ", \"seed\": " << options.seed << ", \"processes\": " << WorkersOfProcesses.size()
       << ", \"workers\": " << workers;
  constexpr std::array<const char*, Kinds> Names{"reads", "writes", "transactions", "conflicts"};
  for (std::size_t kind = 0; kind < Kinds; ++kind) {
    const std::uint64_t count =
        ledger.Sum([&](const WorkerTally& worker) { return worker.operations[kind].load(); });
    json << ", \"" << Names[kind] << "_per_second\": " << static_cast<double>(count) / seconds;
  }
  json << ", \"longest_wait_ms\": " << longest << "}";
  return json.str();
}

/// The failures that the workers told, one a line.
std::string Failures(const LoadLedger& ledger) {
  std::string all;
  for (std::size_t i = 0; i < ledger.workers.size(); ++i) {
    const WorkerTally& worker = ledger.workers[i];
    if (!worker.hasFailed) continue;
    all += "worker " + std::to_string(i) + " at its " + worker.doing.load() + ": " +
           worker.failure.data() + "\n";
  }
  return all;
}

void MakeCompany(LoadLedger& ledger, const fs::path& folder) {
  CreateCompany(folder, {.Name = "Harbour Trading"});
  Btrieve connection;
  Require(connection.Connect(folder.string()) == Variant(StatusSuccess), "cannot connect");
  PrepareCompany(ledger);
}

int Run(const Options& options) {
  const TempFolder parent;
  const fs::path folder = parent.Path() / "company";
  LoadLedger& ledger = SharedLedger();
  MakeCompany(ledger, folder);
  const auto start = Clock::now();
  Processes processes(ledger, folder, options);
  processes.Watch(options.time);
  const double seconds = std::chrono::duration<double>(Clock::now() - start).count();
  if (const std::string failures = Failures(ledger); !failures.empty()) {
    std::cerr << failures;
    return 1;
  }
  VerifyAllFiles(folder);
  Btrieve connection;
  Require(connection.Connect(folder.string()) == Variant(StatusSuccess), "cannot connect");
  CompareCompany(ledger);
  std::cout << Json(ledger, processes.Workers(), seconds, options) << std::endl;
  return 0;
}

/// Nothing where the arguments are none of the program's.
bool Read(const std::vector<std::string>& arguments, Options& options) {
  if (arguments.size() % 2 != 0) return false;
  for (std::size_t i = 0; i < arguments.size(); i += 2) {
    const auto number = std::stoul(arguments[i + 1]);
    if (arguments[i] == "--seconds") {
      options.time = std::chrono::seconds(number);
    } else if (arguments[i] == "--pieces") {
      options.pieces = number;
      options.time = std::chrono::hours(1);
    } else if (arguments[i] == "--seed") {
      options.seed = static_cast<std::uint32_t>(number);
    } else {
      return false;
    }
  }
  return true;
}

}  // namespace
}  // namespace larkmoor::test

int main(int argc, char** argv) try {
  larkmoor::test::Options options;
  if (!larkmoor::test::Read({argv + 1, argv + argc}, options)) {
    std::cerr << "usage: larkmoor_company_load [--seconds N | --pieces N] [--seed S]\n";
    return 2;
  }
  return larkmoor::test::Run(options);
} catch (const std::exception& error) {
  std::cerr << error.what() << '\n';
  return 1;
}
