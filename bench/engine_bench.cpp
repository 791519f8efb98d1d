// What the library costs above the store it stands on: the same work through a public class and in
// bare LMDB, side by side in one run.
//
//     build/release/bench/larkmoor_bench --benchmark_repetitions=5
//     --benchmark_filter='-Sales|Purchases|Paychecks|Payroll'
//     --benchmark_report_aggregates_only
//
// Compare the medians of a pair; the machine matters less then.

#include <cstdint>
#include <cstring>
#include <random>
#include <string>
#include <vector>

#include <benchmark/benchmark.h>
#include <lmdb.h>

#include <larkmoor/larkmoor.h>

#include "support.h"

namespace larkmoor::bench {
namespace {

constexpr std::int32_t Records = 100'000;
constexpr std::size_t RecordSize = 468;  // as long as an address

/// A company with many addresses, made once.
class FullCompany {
 public:
  static void Connect() {
    static const FullCompany full;
    full.company_.Connect();
  }

 private:
  FullCompany() {
    company_.Connect();
    BulkWrite bulk;
    Address address;
    Check(address.OpenFile() == 0, "open");
    for (std::int32_t i = 0; i < Records; ++i) {
      address.AddressRecordNumber(0);
      address.CustomerRecordNumber(i % 5000);
      address.Name("Somebody");
      Check(address.Insert() == 0, "insert");
    }
    Check(bulk.Commit() == 0, "commit");
  }

  Company company_;
};

/// The same records in LMDB as a good programmer would keep them: one tree by number, one by key.
class BareStore {
 public:
  static BareStore& Instance() {
    static BareStore store;
    return store;
  }
  BareStore(const BareStore&) = delete;
  BareStore& operator=(const BareStore&) = delete;

  MDB_env* env = nullptr;
  MDB_dbi records = 0;
  MDB_dbi keys = 0;

 private:
  BareStore() {
    mdb_env_create(&env);
    mdb_env_set_mapsize(env, std::size_t{1} << 32);
    mdb_env_set_maxdbs(env, 2);
    Check(mdb_env_open(env, (folder_.Path() / "bare").c_str(), MDB_NOSUBDIR, 0600) == 0, "env");
    MDB_txn* txn = nullptr;
    mdb_txn_begin(env, nullptr, 0, &txn);
    mdb_dbi_open(txn, "records", MDB_CREATE | MDB_INTEGERKEY, &records);
    mdb_dbi_open(txn, "keys", MDB_CREATE | MDB_INTEGERKEY, &keys);
    std::string bytes(RecordSize, 'x');
    for (std::uint64_t i = 1; i <= Records; ++i) {
      MDB_val number{sizeof i, &i};
      MDB_val record{bytes.size(), bytes.data()};
      Check(mdb_put(txn, records, &number, &record, MDB_APPEND) == 0, "record");
      Check(mdb_put(txn, keys, &number, &number, MDB_APPEND) == 0, "key");
    }
    Check(mdb_txn_commit(txn) == 0, "commit");
  }
  ~BareStore() { mdb_env_close(env); }

  Folder folder_;
};

std::int32_t AnyNumber() {
  static std::minstd_rand random(7);
  return static_cast<std::int32_t>(random() % Records) + 1;
}

void KeyedReadLarkmoor(benchmark::State& state) {
  FullCompany::Connect();
  Address address;
  Check(address.OpenFile() == 0, "open");
  for ([[maybe_unused]] auto _ : state) {
    const std::int32_t number = AnyNumber();
    Check(address.GetEqual(number) == 0 && address.AddressRecordNumber() == number, "read");
  }
}

void KeyedReadBareLmdb(benchmark::State& state) {
  BareStore& store = BareStore::Instance();
  MDB_txn* txn = nullptr;
  mdb_txn_begin(store.env, nullptr, MDB_RDONLY, &txn);
  mdb_txn_reset(txn);
  std::vector<char> buffer(RecordSize);
  for ([[maybe_unused]] auto _ : state) {
    auto wanted = static_cast<std::uint64_t>(AnyNumber());
    MDB_val key{sizeof wanted, &wanted};
    MDB_val number;
    MDB_val record;
    mdb_txn_renew(txn);
    Check(mdb_get(txn, store.keys, &key, &number) == 0 &&
              mdb_get(txn, store.records, &number, &record) == 0,
          "read");
    std::memcpy(buffer.data(), record.mv_data, record.mv_size);
    benchmark::DoNotOptimize(buffer.data());
    mdb_txn_reset(txn);
  }
  mdb_txn_abort(txn);
}

void NextLarkmoor(benchmark::State& state) {
  FullCompany::Connect();
  Address address;
  Check(address.OpenFile() == 0, "open");
  Check(address.GetFirstForCustomer(0) == 0, "first");
  for ([[maybe_unused]] auto _ : state) {
    if (address.GetNextByCustomer() != 0) Check(address.GetFirstForCustomer(0) == 0, "first");
  }
}

void StepLarkmoor(benchmark::State& state) {
  FullCompany::Connect();
  Address address;
  Check(address.OpenFile() == 0, "open");
  for ([[maybe_unused]] auto _ : state) {
    if (address.StepNext() != 0) Check(address.StepFirst() == 0, "first");
  }
}

void StepBareLmdb(benchmark::State& state) {
  BareStore& store = BareStore::Instance();
  MDB_txn* txn = nullptr;
  mdb_txn_begin(store.env, nullptr, MDB_RDONLY, &txn);
  mdb_txn_reset(txn);
  std::vector<char> buffer(RecordSize);
  std::uint64_t place = 0;
  for ([[maybe_unused]] auto _ : state) {
    ++place;
    MDB_val number{sizeof place, &place};
    MDB_val record;
    mdb_txn_renew(txn);
    if (mdb_get(txn, store.records, &number, &record) == 0) {
      std::memcpy(buffer.data(), record.mv_data, record.mv_size);
      benchmark::DoNotOptimize(buffer.data());
    } else {
      place = 0;
    }
    mdb_txn_reset(txn);
  }
  mdb_txn_abort(txn);
}

void OpenAndClose(benchmark::State& state) {
  FullCompany::Connect();
  for ([[maybe_unused]] auto _ : state) {
    Address address;
    Check(address.OpenFile() == 0, "open");
    address.CloseFile();
  }
}

void OpenAndCloseWhileAnotherHasIt(benchmark::State& state) {
  FullCompany::Connect();
  Address other;
  Check(other.OpenFile() == 0, "open");
  OpenAndClose(state);
}

BENCHMARK(KeyedReadLarkmoor);
BENCHMARK(KeyedReadBareLmdb);
BENCHMARK(StepLarkmoor);
BENCHMARK(StepBareLmdb);
BENCHMARK(NextLarkmoor);
BENCHMARK(OpenAndClose);
BENCHMARK(OpenAndCloseWhileAnotherHasIt);

}  // namespace
}  // namespace larkmoor::bench
