// Whole jobs, by name.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

#include <benchmark/benchmark.h>

#include "phases.h"

namespace larkmoor::bench {

void RegisterJournals(const JobsOptions& options);
void RegisterEmployees();
void RegisterAccounts();

inline std::string JobName(const std::string& job, std::int32_t records, std::string_view store) {
  return "job/" + job + "/" + std::to_string(records) + "/" + std::string(store);
}

template <typename Store, typename Run>
benchmark::internal::Benchmark* RegisterJob(const std::string& job, std::int32_t records, Run run) {
  return benchmark::RegisterBenchmark(JobName(job, records, Store::Name).c_str(), std::move(run));
}

/// For a job that all stores do by turns in one benchmark.
template <typename Run>
benchmark::internal::Benchmark* RegisterTurns(const std::string& job, std::int32_t records,
                                              Run run) {
  return benchmark::RegisterBenchmark(("job/" + job + "/" + std::to_string(records)).c_str(),
                                      std::move(run));
}

}  // namespace larkmoor::bench
