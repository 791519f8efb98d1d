// The benchmarks, part by part. `bench/run` calls all of them and tells what came out.
//
//     larkmoor_bench PHASE KIND RECORDS FOLDER [--benchmark_...]
//     larkmoor_bench jobs TRANSACTIONS POSTS [--benchmark_...]
//
// The phases of a folder are fill, reads, bulk, memory_writes and durable, in this order.

#include <cstddef>
#include <cstdlib>
#include <exception>
#include <iostream>
#include <span>
#include <string>

#include <benchmark/benchmark.h>

#include "phases.h"

namespace larkmoor::bench {
namespace {

/// Prepares a part; false where the words name none.
bool Prepare(std::span<char* const> words) {
  const std::string phase = words.empty() ? "" : words[0];
  if (phase == "jobs" && words.size() == 3) {
    RegisterJobs({.transactions = std::atoi(words[1]), .posts = std::atoi(words[2])});
    return true;
  }
  if (words.size() != 4) return false;
  const RecordsOptions options{words[1], std::atoi(words[2]), words[3]};
  if (phase == "fill") return FillStores(options), true;
  if (phase == "reads") return RegisterReads(options), true;
  if (phase == "bulk") return RegisterBulk(options), true;
  if (phase == "memory_writes") return RegisterMemoryWrites(options), true;
  if (phase == "durable") return RegisterDurable(options), true;
  return false;
}

}  // namespace
}  // namespace larkmoor::bench

int main(int argc, char** argv) try {
  // Takes the options that are its own, and leaves the words.
  benchmark::Initialize(&argc, argv);
  if (!larkmoor::bench::Prepare(std::span(argv, static_cast<std::size_t>(argc)).subspan(1))) {
    std::cerr << "usage: larkmoor_bench PHASE KIND RECORDS FOLDER\n"
                 "       larkmoor_bench jobs TRANSACTIONS POSTS\n";
    return 2;
  }
  if (std::string(argv[1]) != "fill") benchmark::RunSpecifiedBenchmarks();
  benchmark::Shutdown();
  return 0;
} catch (const std::exception& failure) {
  std::cerr << "This failed: " << failure.what() << '\n';
  return 1;
}
