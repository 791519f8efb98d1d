// Turning the IDs of accounts, as users know them, into the indexes that records bear: what every
// import of a journal does once a row. All files lie in memory.

#include <cstddef>
#include <cstdint>
#include <random>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include <benchmark/benchmark.h>

#include <larkmoor/bulk_write.h>
#include <larkmoor/masters/chart.h>

#include "data/record_images.h"
#include "engine/records/chart.h"
#include "jobs/jobs.h"
#include "peers/lmdb_file.h"
#include "peers/sqlite.h"
#include "support.h"
#include "tables/account_look_up.h"

namespace larkmoor::bench {
namespace {

constexpr double Release = 19;
constexpr std::int32_t AccountsOnFile = 500;
constexpr std::size_t Lookups = 100'000;

std::string IDOf(std::int32_t account) { return std::to_string(10'000 + 40 * account); }

/// As the library's classes look accounts up.
class LarkmoorAccounts {
 public:
  static constexpr std::string_view Name = "larkmoor";

  LarkmoorAccounts() : company_(InMemory()) {
    company_.Connect();
    BulkWrite bulk;
    Chart chart;
    Check(chart.OpenFile() == StatusSuccess, "chart");
    for (std::int32_t index = 1; index <= AccountsOnFile; ++index) {
      chart.Index(index);
      chart.AccountID(IDOf(index));
      Check(chart.Insert() == StatusSuccess, "account");
    }
    Check(bulk.Commit() == StatusSuccess, "commit");
    Check(accounts_.Open() == StatusSuccess, "open");
  }

  std::int32_t Resolve(const std::string& id) { return accounts_.AccountIndex(id, "AccountID"); }

 private:
  Company company_;
  AccountLookUp accounts_{AccountLookUp::OpenedBy::Class};
};

template <Form TheForm>
class LmdbAccounts {
 public:
  static constexpr std::string_view Name = TheForm == Form::Plain ? "lmdb" : "packed_lmdb";

  LmdbAccounts() {
    LmdbWrite write(file_);
    for (std::int32_t index = 1; index <= AccountsOnFile; ++index) {
      PutField(std::span(record_), ChartRecord::Index, index);
      PutTextField(record_, ChartRecord::AccountID, IDOf(index));
      write.Add(record_);
      write.AddKey(LmdbKey::OfPath(ByID).Text(IDOf(index)));
      write.AddKey(LmdbKey::OfPath(ByIndex).Long(index));
    }
    write.Commit();
  }

  std::int32_t Resolve(const std::string& id) {
    const LmdbKey path = LmdbKey::OfPath(ByID).Text(id);
    file_.Begin();
    Check(file_.Find(path, path), "account");
    file_.Read(record_);
    file_.End();
    return GetField<std::int32_t>(record_, ChartRecord::Index);
  }

 private:
  static constexpr int ByID = 0;
  static constexpr int ByIndex = 3;

  Folder folder_{InMemory()};
  LmdbFile file_{folder_.Path() / "accounts", TheForm};
  std::vector<std::byte> record_ =
      std::vector<std::byte>(ChartRecord::Describe().LengthFor(Release));
};

class SqliteAccounts {
 public:
  static constexpr std::string_view Name = "sqlite";

  SqliteAccounts() {
    Statement insert(database_, "INSERT INTO account VALUES (?, ?)");
    for (std::int32_t index = 1; index <= AccountsOnFile; ++index) insert.Run(index, IDOf(index));
  }

  std::int32_t Resolve(const std::string& id) {
    find_.Start(id);
    Check(find_.Step(), "account");
    const std::int32_t index = find_.Integer(0);
    find_.End();
    return index;
  }

 private:
  struct Tables : Database {
    explicit Tables(const std::filesystem::path& path) : Database(path, Synchronous::Normal) {
      Run("CREATE TABLE account (id INTEGER PRIMARY KEY, account_id TEXT NOT NULL UNIQUE)");
    }
  };

  Folder folder_{InMemory()};
  Tables database_{folder_.Path() / "accounts.db"};
  Statement find_{database_, "SELECT id FROM account WHERE account_id = ?"};
};

/// What is looked up, the same for every store.
const std::vector<std::int32_t>& Indexes() {
  static const std::vector<std::int32_t> indexes = [] {
    std::minstd_rand random(7);
    std::vector<std::int32_t> all(Lookups);
    for (std::int32_t& index : all) {
      index = 1 + static_cast<std::int32_t>(random() % AccountsOnFile);
    }
    return all;
  }();
  return indexes;
}

template <typename Store>
void Resolve(benchmark::State& state) {
  static Store store;
  std::vector<std::string> ids;
  for (const std::int32_t index : Indexes()) ids.push_back(IDOf(index));
  for ([[maybe_unused]] auto _ : state) {
    for (std::size_t i = 0; i < Lookups; ++i) {
      Check(store.Resolve(ids[i]) == Indexes()[i], "account");
    }
  }
}

template <typename Store>
void RegisterResolve() {
  RegisterJob<Store>("resolve_accounts", Lookups, Resolve<Store>)->Unit(benchmark::kMillisecond);
}

}  // namespace

void RegisterAccounts() {
  RegisterResolve<LarkmoorAccounts>();
  RegisterResolve<LmdbAccounts<Form::Plain>>();
  RegisterResolve<LmdbAccounts<Form::Packed>>();
  RegisterResolve<SqliteAccounts>();
}

void RegisterJobs(const JobsOptions& options) {
  RegisterJournals(options);
  RegisterEmployees();
  RegisterAccounts();
}

}  // namespace larkmoor::bench
