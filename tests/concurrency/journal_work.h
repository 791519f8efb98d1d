// Work on the journals: entries that all workers rewrite, invoices of each worker's own, walks over
// both.
#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <string>

#include <larkmoor/journals/general_journal.h>
#include <larkmoor/journals/sales_journal.h>

#include "concurrency/load_work.h"

namespace larkmoor::test {

/// Puts the entries that all rewrite in place.
void PostSharedEntries(Worker& worker);

/// Reads the shared entries, and rewrites them where it may. The rows are one commit and the header
/// another: a rewrite whose header answers 80 leaves its rows, and the reference of the header
/// counts the others.
class EntryWork final : public Work {
 public:
  EntryWork(Worker& worker, bool writes) : worker_(worker), writes_(writes) { Open(); }
  [[nodiscard]] const char* Name() const override { return "entries"; }
  void Do() override;
  void Reopen() override;

 private:
  void Open();
  void Rewrite(std::size_t number);
  void Walk();

  Worker& worker_;
  bool writes_;
  GeneralJournal journal_;
  std::array<int, SharedEntries + 1> seen_{};
  std::int32_t serial_ = 0;
};

/// Adds, changes and deletes invoices that nobody else writes to: they are always as this worker
/// left them.
class InvoiceWork final : public Work {
 public:
  explicit InvoiceWork(Worker& worker) : worker_(worker) { Open(); }
  [[nodiscard]] const char* Name() const override { return "invoices"; }
  void Do() override;
  void Reopen() override;
  void Finish() override;

 private:
  void Open();
  void Post();
  void Change(std::int32_t nRecord);
  void Take(std::int32_t nRecord);
  void ReadBack(std::int32_t nRecord);
  std::string NewMark();

  Worker& worker_;
  SalesJournal journal_;
  std::map<std::int32_t, std::string> marks_;  ///< of the invoices on file, by number
  std::int32_t serial_ = 0;
};

/// Walks over everyone's invoices.
class InvoiceWalk final : public Work {
 public:
  explicit InvoiceWalk(Worker& worker) : worker_(worker) { Open(); }
  [[nodiscard]] const char* Name() const override { return "walks"; }
  void Do() override;
  void Reopen() override;

 private:
  void Open();

  Worker& worker_;
  SalesJournal journal_;
};

}  // namespace larkmoor::test
