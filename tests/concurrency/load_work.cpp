#include "concurrency/load_work.h"

#include <algorithm>

#include "concurrency/journal_work.h"
#include "concurrency/table_work.h"
#include "concurrency/transfer_work.h"

namespace larkmoor::test {
namespace {

/// Makes the records that many workers count up, and those of the transfers behind them.
template <typename Table, typename Fill>
void PrepareTable(LoadLedger& ledger, std::int32_t records, Fill fill) {
  Table table;
  Require(table.OpenFile() == StatusSuccess, "a table does not open");
  for (std::int32_t number = 1; number <= records; ++number) {
    Traits<Table>::SetNew(table, -1, number);
    fill(table, number);
    Require(table.Insert() == StatusSuccess, "a record cannot be added");
    Require(Traits<Table>::Given(ledger).Note(Traits<Table>::Number(table)),
            "a number comes twice");
  }
  Require(table.CloseFile() == StatusSuccess, "a table does not close");
}

/// All numbers that the file gave, and no other, are on file; each counted record was raised as
/// often as workers were told.
template <typename Table>
void CompareTable(const LoadLedger& ledger, const GivenNumbers& given) {
  const std::string name = Traits<Table>::Name;
  Table table;
  Require(table.OpenFile() == StatusSuccess, "a table does not open");
  std::int32_t records = 0;
  for (Status status = table.StepFirst(); status == StatusSuccess; status = table.StepNext()) {
    Require(given.Has(Traits<Table>::Number(table)), name + " has a record that nobody added");
    ++records;
  }
  Require(records == given.Count(), name + " has lost records that were added");
  for (std::int32_t number = 1; number <= CountedRecords; ++number) {
    const std::uint64_t raised = ledger.Sum([&](const WorkerTally& worker) {
      return worker
          .raised[static_cast<std::size_t>(Traits<Table>::Place)][static_cast<std::size_t>(number)]
          .load();
    });
    Require(Traits<Table>::Get(table, number) == StatusSuccess, "a counted record is gone");
    Require(static_cast<std::uint64_t>(table.LastUpdateCounter()) == raised,
            name + " " + std::to_string(number) + " was raised " + std::to_string(raised) +
                " times and says " + std::to_string(table.LastUpdateCounter()));
  }
}

void CompareTransfers(const LoadLedger& ledger) {
  const std::uint64_t transfers =
      ledger.Sum([](const WorkerTally& worker) { return worker.transfers.load(); });
  Chart chart;
  Customer customer;
  Require(chart.OpenFile() == StatusSuccess && chart.GetEqual(Gate) == StatusSuccess &&
              customer.OpenFile() == StatusSuccess && customer.GetForIndex(Gate) == StatusSuccess,
          "the gate is gone");
  for (const std::int32_t counted : {chart.LastUpdateCounter(), customer.LastUpdateCounter()}) {
    Require(static_cast<std::uint64_t>(counted) == transfers,
            std::to_string(transfers) + " transfers were told, and on file are " +
                std::to_string(counted));
  }
  Require(SumOfAccounts(chart) == HeldByAccounts, "the accounts do not add up");
}

void CompareJournals(const LoadLedger& ledger) {
  constexpr auto Entries = static_cast<std::size_t>(Counted::Entry);
  GeneralJournal entries;
  Require(entries.OpenFile() == StatusSuccess, "a journal does not open");
  for (std::size_t number = 1; number <= SharedEntries; ++number) {
    Require(entries.GetEqual(static_cast<std::int32_t>(number)) == StatusSuccess,
            "an entry is gone");
    const std::uint64_t raised = ledger.Sum(
        [&](const WorkerTally& worker) { return worker.raised[Entries][number].load(); });
    Require(entries.Reference() == std::to_string(raised), "an update of an entry is lost");
  }
  SalesJournal journal;
  Require(journal.OpenFile() == StatusSuccess, "a journal does not open");
  std::uint64_t invoices = 0;
  for (Status status = journal.ReadFirst(0); status == StatusSuccess; status = journal.ReadNext()) {
    ++invoices;
  }
  const std::uint64_t told =
      ledger.Sum([](const WorkerTally& worker) { return worker.invoices.load(); });
  Require(invoices == told, std::to_string(told) + " invoices were told, and on file are " +
                                std::to_string(invoices));
}

}  // namespace

void Require(bool holds, const std::string& otherwise) {
  if (!holds) throw LoadFailure(otherwise);
}

Status Worker::Count(Kind kind, Status status, std::string_view what,
                     std::initializer_list<Status> others) {
  const bool allowed =
      status == StatusSuccess || std::find(others.begin(), others.end(), status) != others.end();
  Require(allowed, std::string(what) + " answers " + std::to_string(status));
  if (status == StatusRecordConflict) kind = Kind::Conflict;
  ++tally.operations[static_cast<std::size_t>(kind)];
  return status;
}

WorkList ReadingWorks(Worker& worker) {
  WorkList works;
  works.push_back(std::make_unique<TableReader<Address>>(worker));
  works.push_back(std::make_unique<TableReader<Customer>>(worker));
  works.push_back(std::make_unique<TableReader<Chart>>(worker));
  works.push_back(std::make_unique<EntryWork>(worker, /*writes=*/false));
  works.push_back(std::make_unique<InvoiceWalk>(worker));
  return works;
}

WorkList WritingWorks(Worker& worker) {
  WorkList works;
  works.push_back(std::make_unique<TableWriter<Address>>(worker));
  works.push_back(std::make_unique<TableWriter<Customer>>(worker));
  works.push_back(std::make_unique<TableWriter<Chart>>(worker));
  works.push_back(std::make_unique<EntryWork>(worker, /*writes=*/true));
  works.push_back(std::make_unique<InvoiceWork>(worker));
  works.push_back(std::make_unique<TransferWork>(worker));
  return works;
}

void PrepareCompany(LoadLedger& ledger) {
  const auto nothing = [](auto&, std::int32_t) {};
  PrepareTable<Address>(ledger, CountedRecords, nothing);
  PrepareTable<Customer>(ledger, Gate, nothing);
  PrepareTable<Chart>(ledger, FirstAccount + Accounts - 1, [](Chart& chart, std::int32_t number) {
    chart.Activity(0, number < FirstAccount ? 0 : HeldByAccounts / Accounts);
  });
  WorkerTally unused{};
  Worker poster{-1, Dice(1), unused, ledger};
  PostSharedEntries(poster);
}

void CompareCompany(const LoadLedger& ledger) {
  CompareTable<Address>(ledger, ledger.addresses);
  CompareTable<Customer>(ledger, ledger.customers);
  CompareTable<Chart>(ledger, ledger.accounts);
  CompareTransfers(ledger);
  CompareJournals(ledger);
}

}  // namespace larkmoor::test
