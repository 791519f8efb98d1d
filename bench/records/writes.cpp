// Writes of records, the stores taking turns. Each is proved by a read that is not timed.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <random>
#include <string>
#include <string_view>
#include <tuple>
#include <vector>

#include <benchmark/benchmark.h>

#include "phases.h"
#include "records/larkmoor_store.h"
#include "records/lmdb_store.h"
#include "records/sqlite_store.h"
#include "turns.h"

namespace larkmoor::bench {
namespace {

constexpr std::int32_t InBulk = 1000;
constexpr std::int32_t BulkRounds = 21;
constexpr std::int32_t SingleRounds = 101;
/// Records that each round changes. Writes to the disk change others than those in memory before.
constexpr std::int32_t PicksInRound = 3;

/// What all stores do in a round: other transactions each time.
template <typename Kind>
class Round {
 public:
  /// `done` rounds were done before, on the same files.
  Round(std::int32_t records, std::int32_t done)
      : lastTransaction_(records / Kind::InTransaction + done) {
    for (std::int32_t i = 1; i <= records / Kind::InTransaction; ++i) order_.push_back(i);
    std::ranges::shuffle(order_, std::minstd_rand(11));
    next_ = static_cast<std::size_t>(PicksInRound * done) % order_.size();
  }

  void Begin() {
    added = ImagesOf<Kind>(++lastTransaction_, 1);
    addedProbe = ProbeOf(lastTransaction_);
    amended = Next();
    moved = Next();
    removed = Next();
  }

  Images added{1, 0};
  Probe addedProbe;
  Probe amended;
  Probe moved;
  Probe removed;

 private:
  Probe Next() {
    const std::int32_t transaction = order_[next_];
    next_ = (next_ + 1) % order_.size();
    return ProbeOf(transaction);
  }

  std::int32_t lastTransaction_;
  std::vector<std::int32_t> order_;
  std::size_t next_ = 0;
};

// The operations, each written once for all stores.

template <RecordStore Store, typename Kind>
double Insert(Store& store, const Round<Kind>& round, Stopwatch timed) {
  const double took = timed([&] { store.Insert(round.added[0]); });
  Check(store.Find(round.addedProbe) && store.InHand() == See<Kind>(round.added[0]), "insert");
  return took;
}

template <RecordStore Store, typename Kind>
double SetAmount(Store& store, const Round<Kind>& round, Stopwatch timed) {
  Check(store.Find(round.amended), "find");
  Seen expected = store.InHand();
  expected.amount += 1;
  const double took = timed([&] { store.SetAmount(expected.amount); });
  Check(store.Find(round.amended) && store.InHand() == expected, "update");
  return took;
}

template <RecordStore Store, typename Kind>
double SetKey(Store& store, const Round<Kind>& round, Stopwatch timed) {
  Check(store.Find(round.moved), "find");
  const Sought moved = Kind::Moved({round.moved, store.InHand()});
  const double took = timed([&] { store.SetKey(round.moved); });
  Check(store.Find(moved.probe) && store.InHand() == moved.seen, "update of a key");
  return took;
}

template <RecordStore Store, typename Kind>
double Delete(Store& store, const Round<Kind>& round, Stopwatch timed) {
  Check(store.Find(round.removed), "find");
  const Seen removed = store.InHand();
  const double took = timed([&] { store.Delete(); });
  Check(!store.Find(round.removed) || store.InHand() != removed, "delete");
  return took;
}

template <RecordStore Store>
double Load(Store& store, const Images& images) {
  const std::int64_t before = store.Count();
  const double took = ProcessorMicrosecondsOf([&] { store.Load(images); });
  Check(store.Count() == before + static_cast<std::int64_t>(images.Count()), "load");
  store.KeepFirst(before);
  return took / static_cast<double>(images.Count());
}

std::string Name(const RecordsOptions& options, const char* phase) {
  return options.kind + "/" + phase + "/" + std::to_string(options.records);
}

template <typename Store>
std::string Figure(const std::string& operation) {
  return operation + "/" + std::string(Store::Name);
}

template <typename Kind, template <typename> typename... StoresOf>
void Bulk(const RecordsOptions& options) {
  benchmark::RegisterBenchmark(Name(options, "bulk").c_str(), [=](benchmark::State& state) {
    const std::int32_t transactions = options.records / Kind::InTransaction;
    const Images images = ImagesOf<Kind>(transactions + 1, InBulk / Kind::InTransaction);
    std::tuple<StoresOf<Kind>...> stores(Each<StoresOf<Kind>>(options.folder)...);
    Turns turns;
    const auto add = [&]<typename Store>(Store& store) {
      turns.Add(Figure<Store>("bulk_insert"), [&] { return Load(store, images); });
    };
    std::apply([&](auto&... each) { (add(each), ...); }, stores);
    for ([[maybe_unused]] auto _ : state) turns.Take();
    turns.Report(state);
  })->Iterations(BulkRounds);
}

/// What tells single writes in memory from those on a disk.
struct Singles {
  const char* phase;
  std::string_view suffix;  ///< of the operations' names
  std::int32_t done;        ///< rounds before
  Stopwatch timed;
};

constexpr Singles InMemorySingles{"memory_writes", "_in_memory", 0, ProcessorMicrosecondsOf};
constexpr Singles DurableSingles{"durable", "", SingleRounds, MicrosecondsOf};

template <typename Kind, template <typename> typename... StoresOf>
void Single(const RecordsOptions& options, const Singles& singles) {
  const auto run = [=](benchmark::State& state) {
    std::tuple<StoresOf<Kind>...> stores(Each<StoresOf<Kind>>(options.folder)...);
    Round<Kind> round(options.records, singles.done);
    Turns inserts, amounts, keys, deletes;
    const auto add = [&]<typename Store>(Store& store) {
      const auto name = [&](std::string operation) {
        return Figure<Store>(operation.append(singles.suffix));
      };
      inserts.Add(name("insert"), [&] { return Insert(store, round, singles.timed); });
      amounts.Add(name("update"), [&] { return SetAmount(store, round, singles.timed); });
      keys.Add(name("update_key"), [&] { return SetKey(store, round, singles.timed); });
      deletes.Add(name("delete"), [&] { return Delete(store, round, singles.timed); });
    };
    std::apply([&](auto&... each) { (add(each), ...); }, stores);
    for ([[maybe_unused]] auto _ : state) {
      round.Begin();
      for (Turns* turns : {&inserts, &amounts, &keys, &deletes}) turns->Take();
    }
    for (Turns* turns : {&inserts, &amounts, &keys, &deletes}) turns->Report(state);
  };
  benchmark::RegisterBenchmark(Name(options, singles.phase).c_str(), run)->Iterations(SingleRounds);
}

/// A second database, so that one which waits for the disk does not write for the one that does
/// not.
template <typename Kind>
void AddFullSqlite(const std::filesystem::path& folder) {
  std::filesystem::copy_file(folder / NormalSqliteStore<Kind>::Name,
                             folder / FullSqliteStore<Kind>::Name);
}

}  // namespace

void RegisterBulk(const RecordsOptions& options) {
  WithKind(options.kind, [&]<typename Kind>(Kind) {
    Bulk<Kind, LarkmoorStore, PlainLmdbStore, PackedLmdbStore, NormalSqliteStore>(options);
  });
}

void RegisterMemoryWrites(const RecordsOptions& options) {
  WithKind(options.kind, [&]<typename Kind>(Kind) {
    Single<Kind, LarkmoorStore, PlainLmdbStore, PackedLmdbStore, NormalSqliteStore>(
        options, InMemorySingles);
  });
}

void RegisterDurable(const RecordsOptions& options) {
  WithKind(options.kind, [&]<typename Kind>(Kind) {
    AddFullSqlite<Kind>(options.folder);
    Single<Kind, LarkmoorStore, PlainLmdbStore, PackedLmdbStore, NormalSqliteStore,
           FullSqliteStore>(options, DurableSingles);
  });
}

}  // namespace larkmoor::bench
