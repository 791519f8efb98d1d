// What the workers of the company load tell, in memory that all their processes share.
#pragma once

#include <algorithm>
#include <array>
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

namespace larkmoor::test {

/// Records that many workers count up at once: so many in each table, numbered from 1.
inline constexpr std::int32_t CountedRecords = 6;
/// Where the workers' entries of the general journal are, which they all rewrite: from 1.
inline constexpr std::int32_t SharedEntries = 6;

enum class Kind { Read, Write, Transaction, Conflict };
inline constexpr std::size_t Kinds = 4;

enum class Counted { Address, Customer, Chart, Entry };
inline constexpr std::size_t CountedTables = 4;

/// What one worker was told, and whether it gets on. Written by the worker, read by the program
/// that watches it.
struct WorkerTally {
  using Count = std::atomic<std::uint64_t>;

  std::array<Count, Kinds> operations;
  /// How often each counted record was raised with status 0; element 0 is unused.
  std::array<std::array<Count, CountedRecords + 1>, CountedTables> raised;
  Count transfers;                         ///< committed
  Count invoices;                          ///< on file, by what the worker was told
  Count pieces;                            ///< of work done
  std::atomic<std::int64_t> longestPiece;  ///< in milliseconds
  /// The piece under way. A literal, which lies in one place in all forked processes.
  std::atomic<const char*> doing = "first opening";
  std::atomic<bool> hasEnded;
  std::atomic<bool> hasFailed;
  std::array<char, 400> failure;

  void Fail(std::string_view why) {
    const std::size_t size = std::min(why.size(), failure.size() - 1);
    std::memcpy(failure.data(), why.data(), size);
    hasFailed = true;
  }
};

/// How often each number was given by a file.
class GivenNumbers {
 public:
  /// Notes a number; false where it was given before, or cannot have been given.
  bool Note(std::int32_t number) {
    return number > 0 && number < Most && times_[static_cast<std::size_t>(number)]++ == 0;
  }
  [[nodiscard]] bool Has(std::int32_t number) const {
    return number > 0 && number < Most && times_[static_cast<std::size_t>(number)] != 0;
  }
  [[nodiscard]] std::int32_t Count() const {
    std::int32_t count = 0;
    for (const auto& times : times_) count += times != 0 ? 1 : 0;
    return count;
  }

 private:
  static constexpr std::int32_t Most = 1 << 22;

  std::array<std::atomic<std::uint8_t>, Most> times_;
};

inline constexpr std::size_t MostWorkers = 32;

struct LoadLedger {
  std::array<WorkerTally, MostWorkers> workers;
  GivenNumbers addresses;
  GivenNumbers customers;
  GivenNumbers accounts;
  std::atomic<bool> stop;

  template <typename Value>
  std::uint64_t Sum(Value&& value) const {
    std::uint64_t sum = 0;
    for (const WorkerTally& worker : workers) sum += value(worker);
    return sum;
  }
};

static_assert(std::atomic<std::uint64_t>::is_always_lock_free, "shared between processes");

}  // namespace larkmoor::test
