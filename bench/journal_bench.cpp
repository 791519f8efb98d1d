// What the sales journal costs above the store it stands on, and beside another: the same sales
// through the library, in bare LMDB and in SQLite, side by side in one run.
//
//     build/release/bench/larkmoor_bench --benchmark_filter=Sales --benchmark_repetitions=5
//     --benchmark_enable_random_interleaving=true --benchmark_report_aggregates_only
//
// Compare the medians of a group; the machine matters less then. A walk reads all sales once. The
// stores that are read or loaded lie in memory, some four gigabytes in all; those that are written
// to sale by sale lie on the disk of TMPDIR and take two.

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

#include "larkmoor_sales.h"
#include "lmdb_sales.h"
#include "sales.h"
#include "sqlite_sales.h"
#include "support.h"

namespace larkmoor::bench {
namespace {

constexpr std::int32_t SalesOnFile = 100'000;
constexpr std::int32_t SalesInCommit = 1000;
constexpr std::int32_t SingleInserts = 1000;
constexpr std::int32_t Commits = 20;

/// A store with the first sales on file; new ones take the numbers behind.
template <typename Store>
struct FilledStore {
  FilledStore(const std::filesystem::path& place, std::int32_t onFile) : store(place) {
    constexpr std::int32_t Step = 5000;
    while (next <= onFile) store.Load(NewSales(Step));
  }

  std::vector<Sale> NewSales(std::int32_t count) {
    next += count;
    return SalesFrom(next - count, count);
  }

  Store store;
  std::int32_t next = 1;
};

/// For reads only.
template <typename Store>
Store& StoreInMemory() {
  static FilledStore<Store> filled(InMemory(), SalesOnFile);
  return filled.store;
}

const Totals& AllTotals() {
  static const Totals totals = TotalsOf(SalesFrom(1, SalesOnFile));
  return totals;
}

/// All invoice numbers, shuffled, the same way for every store.
const std::vector<std::string>& Invoices() {
  static const std::vector<std::string> invoices = [] {
    std::vector<std::string> all;
    for (const Sale& sale : SalesFrom(1, SalesOnFile)) all.push_back(sale.invoice);
    std::shuffle(all.begin(), all.end(), std::minstd_rand(7));
    return all;
  }();
  return invoices;
}

template <typename Store>
void SalesWalk(benchmark::State& state) {
  Store& store = StoreInMemory<Store>();
  const Totals& expected = AllTotals();
  for ([[maybe_unused]] auto _ : state) Check(store.Walk() == expected, "walk");
  state.SetItemsProcessed(state.iterations() * SalesOnFile);
}

void SalesWalkInOneQuery(benchmark::State& state) {
  SqliteSales& store = StoreInMemory<SqliteSales>();
  const Totals& expected = AllTotals();
  for ([[maybe_unused]] auto _ : state) Check(store.WalkInOneQuery() == expected, "walk");
  state.SetItemsProcessed(state.iterations() * SalesOnFile);
}

template <typename Store>
void SalesFindInvoice(benchmark::State& state) {
  Store& store = StoreInMemory<Store>();
  const std::vector<std::string>& invoices = Invoices();
  std::size_t next = 0;
  for ([[maybe_unused]] auto _ : state) {
    const Totals found = store.Find(invoices[next++ % invoices.size()]);
    Check(found.sales == 1 && found.rows == 5, "invoice");
  }
}

/// Times the same work on several stores turn by turn and reports the median of each: a disk is
/// never as busy in one second as in the next.
class Turns {
 public:
  void Add(std::string name, std::function<void(const Sale&)> work) {
    stores_.push_back({std::move(name), std::move(work), {}});
  }
  /// Each time another store comes first.
  void Take(const Sale& sale) {
    for (Store& store : stores_) {
      const auto start = std::chrono::steady_clock::now();
      store.work(sale);
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
    std::function<void(const Sale&)> work;
    std::vector<double> times;
  };

  std::vector<Store> stores_;
};

/// Each sale is safe on the disk before the next one. In microseconds.
void SalesInsert(benchmark::State& state) {
  static FilledStore<LarkmoorSales> larkmoor(OnDisk(), SalesOnFile);
  static FilledStore<LmdbSales> plain(OnDisk(), SalesOnFile);
  static FilledStore<PackedLmdbSales> packed(OnDisk(), SalesOnFile);
  Turns turns;
  turns.Add("larkmoor_us", [](const Sale& sale) { larkmoor.store.Insert(sale); });
  turns.Add("lmdb_us", [](const Sale& sale) { plain.store.Insert(sale); });
  turns.Add("packed_lmdb_us", [](const Sale& sale) { packed.store.Insert(sale); });
  const std::vector<Sale> sales = larkmoor.NewSales(SingleInserts);
  auto sale = sales.begin();
  for ([[maybe_unused]] auto _ : state) turns.Take(*sale++);
  turns.Report(state);
}

/// A new store is loaded, a thousand sales in a commit; the next repetition goes on behind them.
template <typename Store>
void SalesBulkInsert(benchmark::State& state) {
  static FilledStore<Store> filled(InMemory(), 0);
  const std::vector<Sale> sales = filled.NewSales(Commits * SalesInCommit);
  std::span<const Sale> left = sales;
  for ([[maybe_unused]] auto _ : state) {
    filled.store.Load(left.first(SalesInCommit));
    left = left.subspan(SalesInCommit);
  }
  state.SetItemsProcessed(state.iterations() * SalesInCommit);
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
void SalesWalkMemory(benchmark::State& state) {
  LarkmoorSales& store = StoreInMemory<LarkmoorSales>();
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

BENCHMARK_TEMPLATE(SalesWalk, LarkmoorSales)->Unit(benchmark::kMillisecond);
BENCHMARK_TEMPLATE(SalesWalk, LmdbSales)->Unit(benchmark::kMillisecond);
BENCHMARK_TEMPLATE(SalesWalk, PackedLmdbSales)->Unit(benchmark::kMillisecond);
BENCHMARK_TEMPLATE(SalesWalk, SqliteSales)->Unit(benchmark::kMillisecond);
BENCHMARK(SalesWalkInOneQuery)->Unit(benchmark::kMillisecond);
BENCHMARK(SalesWalkMemory)->Iterations(1)->Unit(benchmark::kMillisecond);

BENCHMARK_TEMPLATE(SalesFindInvoice, LarkmoorSales);
BENCHMARK_TEMPLATE(SalesFindInvoice, LmdbSales);
BENCHMARK_TEMPLATE(SalesFindInvoice, PackedLmdbSales);
BENCHMARK_TEMPLATE(SalesFindInvoice, SqliteSales);

// As many in every store, so that all grow alike.
BENCHMARK(SalesInsert)->Iterations(SingleInserts)->UseRealTime()->Unit(benchmark::kMicrosecond);
BENCHMARK_TEMPLATE(SalesBulkInsert, LarkmoorSales)
    ->Iterations(Commits)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_TEMPLATE(SalesBulkInsert, LmdbSales)->Iterations(Commits)->Unit(benchmark::kMillisecond);
BENCHMARK_TEMPLATE(SalesBulkInsert, PackedLmdbSales)
    ->Iterations(Commits)
    ->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace larkmoor::bench
