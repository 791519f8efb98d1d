// Reads of records, each checked against what is on file. Times are processor time: the files lie
// in memory.

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include <benchmark/benchmark.h>

#include "phases.h"
#include "records/expected.h"
#include "records/larkmoor_store.h"
#include "records/lmdb_store.h"
#include "records/sqlite_store.h"

namespace larkmoor::bench {
namespace {

// The operations, each written once for all stores.

template <RecordStore Store>
void Find(benchmark::State& state, Store& store, const std::vector<Placed>& some) {
  std::size_t next = 0;
  for ([[maybe_unused]] auto _ : state) {
    const Sought& sought = some[next];
    if (++next == some.size()) next = 0;
    Check(store.Find(sought.probe) && store.InHand() == sought.seen, "find");
  }
}

/// Goes along a path, again and again from its start. `order` is what lies on it.
template <typename Store, typename Iterator>
void Walk(benchmark::State& state, Store& store, Path path, Iterator begin, Iterator end) {
  Iterator place = begin;
  Check(store.Start(path) && store.InHand() == *place, "start");
  for ([[maybe_unused]] auto _ : state) {
    if (++place == end) {
      store.End();
      place = begin;
      Check(store.Start(path), "start");
    } else {
      Check(store.Move(), "move");
    }
    Check(store.InHand() == *place, "record on the path");
  }
  store.End();
}

template <typename Store, typename Kind>
void Walk(benchmark::State& state, Store& store, Path path, const Expected<Kind>& expected) {
  const std::vector<Seen>& order = path == Path::Step ? expected.InOrder() : expected.ByKey();
  if (path == Path::Previous) return Walk(state, store, path, order.rbegin(), order.rend());
  Walk(state, store, path, order.begin(), order.end());
}

/// How far a percentage may be off: that of a large file is an estimate.
constexpr double Tolerance = 5;

template <PercentageStore Store>
void TellPercentage(benchmark::State& state, Store& store, const std::vector<Placed>& some) {
  std::size_t next = 0;
  for ([[maybe_unused]] auto _ : state) {
    const Placed& sought = some[next++ % some.size()];
    Check(store.Find(sought.probe), "find");
    Check(std::abs(store.Percentage() - sought.percent) < Tolerance, "percentage");
  }
}

/// What the store finds at some percentages, proved to lie there.
template <PercentageStore Store>
std::vector<Seen> FoundByPercentage(Store& store, const std::vector<double>& percents,
                                    const std::vector<Seen>& byKey) {
  const auto placeAt = [&](double percent) {
    const double place = std::clamp(percent, 0.0, 100.0) / 100 * static_cast<double>(byKey.size());
    return byKey.begin() + static_cast<std::ptrdiff_t>(place);
  };
  std::vector<Seen> found;
  for (const double percent : percents) {
    Check(store.FindByPercentage(percent), "find by percentage");
    const auto end = placeAt(percent + Tolerance);
    Check(std::find(placeAt(percent - Tolerance), end, store.InHand()) != end, "percentage");
    found.push_back(store.InHand());
  }
  return found;
}

template <PercentageStore Store>
void FindByPercentage(benchmark::State& state, Store& store, const std::vector<Seen>& byKey) {
  const std::vector<double> percents = {50, 7, 93, 31, 0, 66, 100, 12, 84, 43};
  const std::vector<Seen> expected = FoundByPercentage(store, percents, byKey);
  std::size_t next = 0;
  for ([[maybe_unused]] auto _ : state) {
    const std::size_t place = next++ % percents.size();
    Check(store.FindByPercentage(percents[place]) && store.InHand() == expected[place],
          "find by percentage");
  }
}

template <RecordStore Store>
void Count(benchmark::State& state, Store& store, std::int64_t records) {
  for ([[maybe_unused]] auto _ : state) Check(store.Count() == records, "count");
}

/// SQLite does not look at a file before it is asked something, so that all are asked for a record.
template <RecordStore Store>
void OpenAndClose(benchmark::State& state, Store& store, const Sought& sought) {
  store.Close();
  for ([[maybe_unused]] auto _ : state) {
    store.Open();
    Check(store.Find(sought.probe) && store.InHand() == sought.seen, "find");
    store.Close();
  }
  store.Open();
}

/// All stores of a kind in a folder, each opened once for all benchmarks, and what they hold.
template <typename Kind>
struct Stores {
  Stores(const std::filesystem::path& folder, std::int32_t records)
      : larkmoor(folder), plain(folder), packed(folder), sqlite(folder), expected(records) {}

  LarkmoorStore<Kind> larkmoor;
  PlainLmdbStore<Kind> plain;
  PackedLmdbStore<Kind> packed;
  NormalSqliteStore<Kind> sqlite;
  OneTransactionWalk<Kind> oneTransaction{plain};
  OneQueryWalk<Kind> oneQuery{sqlite};
  Expected<Kind> expected;
};

template <typename Kind>
class Registry {
 public:
  explicit Registry(const RecordsOptions& options)
      : records_(options.records),
        stores_(std::make_shared<Stores<Kind>>(options.folder, options.records)) {}

  void AddAll() {
    Warm();
    AddReads(&Stores<Kind>::larkmoor);
    AddReads(&Stores<Kind>::plain);
    AddReads(&Stores<Kind>::packed);
    AddReads(&Stores<Kind>::sqlite);
    AddWalks(&Stores<Kind>::oneTransaction);
    AddWalks(&Stores<Kind>::oneQuery);
    AddPercentages(&Stores<Kind>::larkmoor);
    AddPercentages(&Stores<Kind>::sqlite);
  }

 private:
  /// Brings all pages of the files into the memory of the process: what is measured is not how the
  /// system hands them over.
  void Warm() {
    const auto readAll = [&](auto& store, Path path) {
      std::int32_t count = 0;
      for (bool found = store.Start(path); found; found = store.Move()) ++count;
      store.End();
      Check(count == records_, "all records");
    };
    for (const Path path : {Path::Step, Path::Next}) {
      readAll(stores_->larkmoor, path);
      readAll(stores_->oneTransaction, path);
      readAll(stores_->packed, path);
      readAll(stores_->oneQuery, path);
    }
  }

  template <typename Store>
  void AddReads(Store Stores<Kind>::*store) {
    Add<Store>("find",
               [store](auto& state, auto& all) { Find(state, all.*store, all.expected.Some()); });
    AddWalks(store);
    Add<Store>("count", [store, records = records_](auto& state, auto& all) {
      Count(state, all.*store, records);
    });
    Add<Store>("open", [store](auto& state, auto& all) {
      OpenAndClose(state, all.*store, all.expected.Some().front());
    });
  }

  template <typename Store>
  void AddWalks(Store Stores<Kind>::*store) {
    const auto add = [&](const char* operation, Path path) {
      Add<Store>(operation, [store, path](auto& state, auto& all) {
        Walk(state, all.*store, path, all.expected);
      });
    };
    add("next", Path::Next);
    add("previous", Path::Previous);
    add("step", Path::Step);
  }

  template <typename Store>
  void AddPercentages(Store Stores<Kind>::*store) {
    Add<Store>("percentage", [store](auto& state, auto& all) {
      TellPercentage(state, all.*store, all.expected.Some());
    });
    Add<Store>("find_by_percentage", [store](auto& state, auto& all) {
      FindByPercentage(state, all.*store, all.expected.ByKey());
    });
  }

  template <typename Store, typename Operation>
  void Add(const std::string& operation, Operation run) {
    const std::string name = std::string(Kind::Name) + "/" + operation + "/" +
                             std::to_string(records_) + "/" + std::string(Store::Name);
    benchmark::RegisterBenchmark(
        name.c_str(), [run, stores = stores_](benchmark::State& state) { run(state, *stores); });
  }

  std::int32_t records_;
  std::shared_ptr<Stores<Kind>> stores_;
};

}  // namespace

void RegisterReads(const RecordsOptions& options) {
  WithKind(options.kind, [&]<typename Kind>(Kind) { Registry<Kind>(options).AddAll(); });
}

}  // namespace larkmoor::bench
