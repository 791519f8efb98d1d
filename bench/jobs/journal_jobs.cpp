// What journals cost above the store they stand on, and beside another: the same transactions
// through the library, in bare LMDB and in SQLite. Walks, finds and loads are in memory; what is
// posted one by one is on a disk.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <span>
#include <string>
#include <tuple>
#include <vector>

#include <benchmark/benchmark.h>

#include "data/transactions.h"
#include "jobs/jobs.h"
#include "jobs/larkmoor_journal.h"
#include "jobs/lmdb_journal.h"
#include "jobs/sqlite_journal.h"
#include "support.h"
#include "turns.h"

namespace larkmoor::bench {
namespace {

constexpr std::int32_t InCommit = 1000;

/// Where a store is made, and how many transactions it starts with.
struct Beginning {
  std::filesystem::path place;
  std::int32_t onFile = 0;
};

/// A store with the first transactions on file.
template <typename Store, typename Book>
struct FilledStore {
  explicit FilledStore(const Beginning& beginning) : store(beginning.place) {
    for (std::int32_t first = 1; first <= beginning.onFile; first += InCommit) {
      store.Load(TransactionsFrom<Book>(first, std::min(InCommit, beginning.onFile - first + 1)));
    }
  }

  Store store;
};

/// For reads only.
template <typename Store, typename Book>
Store& StoreInMemory(std::int32_t onFile) {
  static FilledStore<Store, Book> filled({InMemory(), onFile});
  return filled.store;
}

template <typename Book>
const Totals& AllTotals(std::int32_t onFile) {
  static const Totals totals = TotalsOf(TransactionsFrom<Book>(1, onFile));
  return totals;
}

/// What leads to each transaction, shuffled, the same way for every store.
template <typename Book>
const std::vector<Wanted>& AllWanted(std::int32_t onFile) {
  static const std::vector<Wanted> wanted = [onFile] {
    std::vector<Wanted> all;
    for (const Transaction& each : TransactionsFrom<Book>(1, onFile)) {
      all.push_back({each.number, Book::FoundByReference ? each.reference : ""});
    }
    std::shuffle(all.begin(), all.end(), std::minstd_rand(7));
    return all;
  }();
  return wanted;
}

template <typename Store, typename Book>
void Walk(benchmark::State& state, std::int32_t onFile) {
  Store& store = StoreInMemory<Store, Book>(onFile);
  const Totals& expected = AllTotals<Book>(onFile);
  for ([[maybe_unused]] auto _ : state) Check(store.Walk() == expected, "walk");
}

template <typename Book>
void WalkInOneQuery(benchmark::State& state, std::int32_t onFile) {
  auto& store = StoreInMemory<SqliteJournal<Book>, Book>(onFile);
  const Totals& expected = AllTotals<Book>(onFile);
  for ([[maybe_unused]] auto _ : state) Check(store.WalkInOneQuery() == expected, "walk");
}

template <typename Store, typename Book>
void Find(benchmark::State& state, std::int32_t onFile) {
  Store& store = StoreInMemory<Store, Book>(onFile);
  const std::vector<Wanted>& wanted = AllWanted<Book>(onFile);
  std::size_t next = 0;
  for ([[maybe_unused]] auto _ : state) {
    const Totals found = store.Find(wanted[next++ % wanted.size()]);
    Check(found.transactions == 1 && found.rows == 5, "find");
  }
}

/// As many lines as rows, and one with the names of the columns.
void CheckExport(const std::filesystem::path& file, std::int32_t transactions) {
  std::ifstream csv(file);
  const auto lines = std::count(std::istreambuf_iterator<char>(csv), {}, '\n');
  Check(lines == 1 + 5 * std::int64_t{transactions}, "lines of the export");
}

/// The command line, as a process of its own, writes a year's sales as CSV.
template <typename Store, typename Book>
void Export(benchmark::State& state, std::int32_t onFile) {
  const Folder folder(InMemory());
  const std::filesystem::path file = folder.Path() / "sales.csv";
  const std::string command = StoreInMemory<Store, Book>(onFile).ExportTo(file);
  for ([[maybe_unused]] auto _ : state) Check(std::system(command.c_str()) == 0, "export");
  CheckExport(file, onFile);
}

/// Each transaction is on the disk before the next one, where the store is made so.
template <typename Book, template <typename> typename... Stores>
void Post(benchmark::State& state, std::int32_t onFile, const std::string& job) {
  const Beginning beginning{OnDisk(), onFile};
  std::tuple<FilledStore<Stores<Book>, Book>...> stores(Each<Stores<Book>>(beginning)...);
  const std::vector<Transaction> transactions =
      TransactionsFrom<Book>(onFile + 1, static_cast<std::int32_t>(state.max_iterations));
  auto transaction = transactions.begin();
  Turns turns;
  const auto add = [&]<typename Store>(FilledStore<Store, Book>& filled) {
    turns.Add(job + "/" + std::string(Store::Name),
              [&] { return MicrosecondsOf([&] { filled.store.Insert(*transaction); }); });
  };
  std::apply([&](auto&... each) { (add(each), ...); }, stores);
  for ([[maybe_unused]] auto _ : state) {
    turns.Take();
    ++transaction;
  }
  turns.Report(state);
}

/// New stores are loaded, a thousand transactions in a commit.
template <typename Book, template <typename> typename... Stores>
void Load(benchmark::State& state, const std::string& job) {
  const Beginning beginning{InMemory(), 0};
  std::tuple<FilledStore<Stores<Book>, Book>...> stores(Each<Stores<Book>>(beginning)...);
  std::vector<Transaction> transactions;
  Turns turns;
  const auto add = [&]<typename Store>(FilledStore<Store, Book>& filled) {
    turns.Add(job + "/" + std::string(Store::Name), [&] {
      return ProcessorMicrosecondsOf([&] { filled.store.Load(transactions); }) / InCommit;
    });
  };
  std::apply([&](auto&... each) { (add(each), ...); }, stores);
  std::int32_t first = 1;
  for ([[maybe_unused]] auto _ : state) {
    transactions = TransactionsFrom<Book>(first, InCommit);
    turns.Take();
    first += InCommit;
  }
  turns.Report(state);
}

template <template <typename> typename Store, typename Book>
void RegisterReadsOf(const JobsOptions& options) {
  using Of = Store<Book>;
  const std::int32_t onFile = options.transactions;
  RegisterJob<Of>(std::string("walk_") + Book::Name, onFile, [=](auto& state) {
    Walk<Of, Book>(state, onFile);
  })->Unit(benchmark::kMillisecond);
  RegisterJob<Of>(std::string("find_") + Book::Name, onFile,
                  [=](auto& state) { Find<Of, Book>(state, onFile); });
}

template <typename Book>
void RegisterJournal(const JobsOptions& options, std::int32_t posts) {
  const std::int32_t onFile = options.transactions;
  RegisterReadsOf<LarkmoorJournal, Book>(options);
  RegisterReadsOf<LmdbJournal, Book>(options);
  RegisterReadsOf<PackedLmdbJournal, Book>(options);
  RegisterReadsOf<SqliteJournal, Book>(options);
  benchmark::RegisterBenchmark(
      JobName(std::string("walk_") + Book::Name, onFile, "sqlite_one_query").c_str(),
      [=](auto& state) { WalkInOneQuery<Book>(state, onFile); })
      ->Unit(benchmark::kMillisecond);

  const std::string post = std::string("post_") + Book::Name;
  RegisterTurns(post, onFile, [=](auto& state) {
    Post<Book, LarkmoorJournal, LmdbJournal, PackedLmdbJournal, SqliteJournal, FullSqliteJournal>(
        state, onFile, post);
  })->Iterations(posts);
  const std::string load = std::string("load_") + Book::Name;
  RegisterTurns(load, onFile, [=](auto& state) {
    Load<Book, LarkmoorJournal, LmdbJournal, PackedLmdbJournal, SqliteJournal>(state, load);
  })->Iterations(std::max(onFile / InCommit, 3));
}

template <template <typename> typename Store>
void RegisterExport(std::int32_t onFile) {
  RegisterJob<Store<Sales>>("export_sales", onFile,
                            [=](auto& state) { Export<Store<Sales>, Sales>(state, onFile); })
      ->UseRealTime()
      ->Unit(benchmark::kMillisecond);
}

}  // namespace

void RegisterJournals(const JobsOptions& options) {
  RegisterJournal<Sales>(options, options.posts);
  // The other journals show that they are no slower, for which fewer do.
  RegisterJournal<Purchases>(options, options.posts / 4);
  RegisterJournal<Paychecks>(options, options.posts / 4);
  RegisterExport<LarkmoorJournal>(options.transactions);
  RegisterExport<SqliteJournal>(options.transactions);
}

}  // namespace larkmoor::bench
