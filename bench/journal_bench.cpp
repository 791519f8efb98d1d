// What journals cost above the store they stand on, and beside another: the same transactions
// through the library, in bare LMDB and in SQLite, side by side in one run. See
// docs/performance.md.
//
//     build/release/bench/larkmoor_bench --benchmark_filter='Sales|Purchases|Paychecks'
//     --benchmark_repetitions=5 --benchmark_enable_random_interleaving=true
//     --benchmark_report_aggregates_only
//
// Compare the medians of a group; the machine matters less then. A walk reads all transactions
// once. The stores that are read or loaded lie in memory, up to 600 megabytes for each journal;
// those that are written to one by one lie on the disk of TMPDIR and take as much.

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <functional>
#include <random>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include <benchmark/benchmark.h>

#include "larkmoor_journal.h"
#include "lmdb_journal.h"
#include "sqlite_journal.h"
#include "support.h"
#include "transactions.h"

namespace larkmoor::bench {
namespace {

constexpr std::int32_t OnFile = 20'000;
constexpr std::int32_t InCommit = 1000;
constexpr std::int32_t SingleInserts = 500;

/// A store with the first transactions on file; new ones take the numbers behind.
template <typename Store, typename Book>
struct FilledStore {
  FilledStore(const std::filesystem::path& place, std::int32_t onFile) : store(place) {
    while (next <= onFile) store.Load(New(InCommit));
  }

  std::vector<Transaction> New(std::int32_t count) {
    next += count;
    return TransactionsFrom<Book>(next - count, count);
  }

  Store store;
  std::int32_t next = 1;
};

/// For reads only.
template <typename Store, typename Book>
Store& StoreInMemory() {
  static FilledStore<Store, Book> filled(InMemory(), OnFile);
  return filled.store;
}

template <typename Book>
const Totals& AllTotals() {
  static const Totals totals = TotalsOf(TransactionsFrom<Book>(1, OnFile));
  return totals;
}

/// What leads to each transaction, shuffled, the same way for every store.
template <typename Book>
const std::vector<Wanted>& AllWanted() {
  static const std::vector<Wanted> wanted = [] {
    std::vector<Wanted> all;
    for (const Transaction& each : TransactionsFrom<Book>(1, OnFile)) {
      all.push_back({each.number, Book::FoundByReference ? each.reference : ""});
    }
    std::shuffle(all.begin(), all.end(), std::minstd_rand(7));
    return all;
  }();
  return wanted;
}

template <template <typename> typename Store, typename Book>
void Walk(benchmark::State& state) {
  Store<Book>& store = StoreInMemory<Store<Book>, Book>();
  const Totals& expected = AllTotals<Book>();
  for ([[maybe_unused]] auto _ : state) Check(store.Walk() == expected, "walk");
  state.SetItemsProcessed(state.iterations() * OnFile);
}

template <typename Book>
void WalkInOneQuery(benchmark::State& state) {
  auto& store = StoreInMemory<SqliteJournal<Book>, Book>();
  const Totals& expected = AllTotals<Book>();
  for ([[maybe_unused]] auto _ : state) Check(store.WalkInOneQuery() == expected, "walk");
  state.SetItemsProcessed(state.iterations() * OnFile);
}

template <template <typename> typename Store, typename Book>
void Find(benchmark::State& state) {
  Store<Book>& store = StoreInMemory<Store<Book>, Book>();
  const std::vector<Wanted>& wanted = AllWanted<Book>();
  std::size_t next = 0;
  for ([[maybe_unused]] auto _ : state) {
    const Totals found = store.Find(wanted[next++ % wanted.size()]);
    Check(found.transactions == 1 && found.rows == 5, "find");
  }
}

/// Times the same work on several stores turn by turn and reports the median of each: a disk is
/// never as busy in one second as in the next.
class Turns {
 public:
  void Add(std::string name, std::function<void(const Transaction&)> work) {
    stores_.push_back({std::move(name), std::move(work), {}});
  }
  /// Each time another store comes first.
  void Take(const Transaction& transaction) {
    for (Store& store : stores_) {
      const auto start = std::chrono::steady_clock::now();
      store.work(transaction);
      const std::chrono::duration<double, std::micro> took =
          std::chrono::steady_clock::now() - start;
      store.times.push_back(took.count());
    }
    std::rotate(stores_.begin(), stores_.begin() + 1, stores_.end());
  }
  void Report(benchmark::State& state) {
    for (Store& store : stores_) {
      const auto middle = store.times.begin() + static_cast<std::ptrdiff_t>(store.times.size() / 2);
      std::nth_element(store.times.begin(), middle, store.times.end());
      state.counters[store.name] = *middle;
    }
  }

 private:
  struct Store {
    std::string name;
    std::function<void(const Transaction&)> work;
    std::vector<double> times;
  };

  std::vector<Store> stores_;
};

/// Each transaction is safe on the disk before the next one. In microseconds.
template <typename Book>
void Insert(benchmark::State& state) {
  static FilledStore<LarkmoorJournal<Book>, Book> larkmoor(OnDisk(), OnFile);
  static FilledStore<LmdbJournal<Book>, Book> plain(OnDisk(), OnFile);
  static FilledStore<PackedLmdbJournal<Book>, Book> packed(OnDisk(), OnFile);
  Turns turns;
  turns.Add("larkmoor_us", [](const Transaction& each) { larkmoor.store.Insert(each); });
  turns.Add("lmdb_us", [](const Transaction& each) { plain.store.Insert(each); });
  turns.Add("packed_lmdb_us", [](const Transaction& each) { packed.store.Insert(each); });
  const std::vector<Transaction> transactions = larkmoor.New(SingleInserts);
  auto transaction = transactions.begin();
  for ([[maybe_unused]] auto _ : state) turns.Take(*transaction++);
  turns.Report(state);
}

/// A new store is loaded, a thousand transactions in a commit.
template <template <typename> typename Store, typename Book>
void BulkInsert(benchmark::State& state) {
  FilledStore<Store<Book>, Book> filled(InMemory(), 0);
  const std::vector<Transaction> transactions = filled.New(OnFile);
  std::span<const Transaction> left = transactions;
  for ([[maybe_unused]] auto _ : state) {
    filled.store.Load(left.first(InCommit));
    left = left.subspan(InCommit);
  }
  state.SetItemsProcessed(state.iterations() * InCommit);
}

/// Memory of the process in kB: what is resident, and the part of it that is no file's.
struct Memory {
  double resident = 0;
  double own = 0;

  static Memory Now() {
    Memory memory;
    std::ifstream rollup("/proc/self/smaps_rollup");
    for (std::string word; rollup >> word;) {
      if (word == "Rss:") rollup >> memory.resident;
      if (word == "Anonymous:") rollup >> memory.own;
    }
    Check(memory.resident > 0, "memory");
    return memory;
  }
};

/// What a walk adds to the memory of the process. The first one may bring pages of the files into
/// its map, which are the system's to take back; the second finds them there.
template <typename Book>
void WalkMemory(benchmark::State& state) {
  auto& store = StoreInMemory<LarkmoorJournal<Book>, Book>();
  for ([[maybe_unused]] auto _ : state) {
    const Memory before = Memory::Now();
    store.Walk();
    const Memory between = Memory::Now();
    store.Walk();
    const Memory after = Memory::Now();
    state.counters["own_kB"] = before.own;
    state.counters["own_growth_kB"] = after.own - before.own;
    state.counters["resident_kB"] = between.resident;
    state.counters["resident_growth_kB"] = after.resident - between.resident;
  }
}

/// As many in every store, so that all grow alike.
void Load(benchmark::internal::Benchmark* bench) {
  bench->Iterations(OnFile / InCommit)->Unit(benchmark::kMillisecond);
}

void InMilliseconds(benchmark::internal::Benchmark* bench) { bench->Unit(benchmark::kMillisecond); }

// The same for each journal.
#define BENCH_JOURNAL(Book)                                                   \
  BENCHMARK_TEMPLATE(Walk, LarkmoorJournal, Book)->Apply(InMilliseconds);     \
  BENCHMARK_TEMPLATE(Walk, LmdbJournal, Book)->Apply(InMilliseconds);         \
  BENCHMARK_TEMPLATE(Walk, PackedLmdbJournal, Book)->Apply(InMilliseconds);   \
  BENCHMARK_TEMPLATE(Walk, SqliteJournal, Book)->Apply(InMilliseconds);       \
  BENCHMARK_TEMPLATE(WalkInOneQuery, Book)->Apply(InMilliseconds);            \
  BENCHMARK_TEMPLATE(WalkMemory, Book)->Apply(InMilliseconds)->Iterations(1); \
  BENCHMARK_TEMPLATE(Find, LarkmoorJournal, Book);                            \
  BENCHMARK_TEMPLATE(Find, LmdbJournal, Book);                                \
  BENCHMARK_TEMPLATE(Find, PackedLmdbJournal, Book);                          \
  BENCHMARK_TEMPLATE(Find, SqliteJournal, Book);                              \
  BENCHMARK_TEMPLATE(Insert, Book)                                            \
      ->Iterations(SingleInserts)                                             \
      ->UseRealTime()                                                         \
      ->Unit(benchmark::kMicrosecond);                                        \
  BENCHMARK_TEMPLATE(BulkInsert, LarkmoorJournal, Book)->Apply(Load);         \
  BENCHMARK_TEMPLATE(BulkInsert, LmdbJournal, Book)->Apply(Load);             \
  BENCHMARK_TEMPLATE(BulkInsert, PackedLmdbJournal, Book)->Apply(Load)

BENCH_JOURNAL(Sales);
BENCH_JOURNAL(Purchases);
BENCH_JOURNAL(Paychecks);

#undef BENCH_JOURNAL

}  // namespace
}  // namespace larkmoor::bench
