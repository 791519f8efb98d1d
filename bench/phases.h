// The parts of a run, each a call of the program.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>

namespace larkmoor::bench {

/// What the stores of records hold, and where their files are.
struct RecordsOptions {
  std::string kind;  ///< "header" or "row"
  std::int32_t records = 0;
  std::filesystem::path folder;
};

/// Makes the stores with their records, which the phases below open.
void FillStores(const RecordsOptions& options);

// Each registers its benchmarks. Their names are KIND/OPERATION/RECORDS/STORE, of figures taken by
// turns KIND/PHASE/RECORDS with counters OPERATION/STORE in microseconds.

void RegisterReads(const RecordsOptions& options);
/// Many records in one commit; taken out again, untimed.
void RegisterBulk(const RecordsOptions& options);
// Single writes, each a commit. They change the records, so that they come last: first in memory,
// then, on the disk, each of them safe there before the next.
void RegisterMemoryWrites(const RecordsOptions& options);
void RegisterDurable(const RecordsOptions& options);

struct JobsOptions {
  std::int32_t transactions = 0;  ///< on file in each journal
  std::int32_t posts = 0;         ///< how many invoices are posted one by one
};

/// Whole jobs, in folders of their own. Their names are job/JOB/RECORDS/STORE, or as above.
void RegisterJobs(const JobsOptions& options);

}  // namespace larkmoor::bench
