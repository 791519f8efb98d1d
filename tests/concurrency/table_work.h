// Work on one table: records that many raise, numbers that the file gives, reads of both.
#pragma once

#include <algorithm>
#include <array>
#include <cstdint>
#include <string>

#include "concurrency/load_work.h"
#include "concurrency/table_traits.h"

namespace larkmoor::test {

/// A piece of work with one object of that class.
template <typename Table>
class TableWork : public Work {
 public:
  explicit TableWork(Worker& worker) : worker_(worker) { Open(); }
  [[nodiscard]] const char* Name() const override { return Traits<Table>::Name; }
  void Reopen() override {
    Require(table_.CloseFile() == StatusSuccess, std::string(Name()) + " does not close");
    Open();
  }

 protected:
  /// Reads one of the counted records. What it shows is one state of it, and none that is older
  /// than what was seen before.
  std::int32_t ReadCounted() {
    const std::int32_t number = 1 + worker_.dice.Below(CountedRecords);
    worker_.Count(Kind::Read, Traits<Table>::Get(table_, number), Name());
    const std::int32_t counter = table_.LastUpdateCounter();
    Require(Traits<Table>::Mark(table_) == MarkOf(counter), "a record of two states");
    std::int32_t& seen = seen_[static_cast<std::size_t>(number)];
    Require(counter >= seen, "a record went back to an older state");
    seen = counter;
    return number;
  }
  static std::string MarkOf(std::int32_t counter) {
    return counter == 0 ? "" : "state " + std::to_string(counter);
  }

  Worker& worker_;
  Table table_;

 private:
  void Open() {
    Require(table_.OpenFile() == StatusSuccess, std::string(Name()) + " does not open");
  }

  std::array<std::int32_t, CountedRecords + 1> seen_{};
};

template <typename Table>
class TableReader final : public TableWork<Table> {
 public:
  using TableWork<Table>::TableWork;
  void Do() override {
    this->ReadCounted();
    if (this->worker_.dice.OneIn(4)) WalkALittle();
  }

 private:
  /// Nothing is ever deleted from these tables: a walk meets each record once, in order.
  void WalkALittle() {
    constexpr int Steps = 100;
    const std::int32_t records = this->table_.RecordCount();
    std::int32_t met = 0;
    Status status = this->worker_.Count(Kind::Read, this->table_.StepFirst(), "StepFirst");
    for (; status == StatusSuccess && met < Steps; ++met) {
      const std::int32_t number = Traits<Table>::Number(this->table_);
      Require(number == met + 1, "a walk meets " + std::to_string(number) + " in place " +
                                     std::to_string(met + 1) + " of " + this->Name());
      status =
          this->worker_.Count(Kind::Read, this->table_.StepNext(), "StepNext", {StatusEndOfFile});
    }
    Require(met >= std::min(records, Steps), "a walk misses records");
    Require(this->table_.RecordCount() >= records, "records are gone");
  }
};

template <typename Table>
class TableWriter final : public TableWork<Table> {
 public:
  using TableWork<Table>::TableWork;
  void Do() override {
    if (this->worker_.dice.OneIn(3)) {
      TakeANumber();
    } else {
      RaiseARecord();
    }
  }

 private:
  void RaiseARecord() {
    const std::int32_t number = this->ReadCounted();
    this->table_.LastUpdateCounter(this->table_.LastUpdateCounter() + 1);
    Traits<Table>::SetMark(this->table_, this->MarkOf(this->table_.LastUpdateCounter()));
    const Status status =
        this->worker_.Count(Kind::Write, this->table_.Update(), "Update", {StatusRecordConflict});
    if (status != StatusSuccess) return;
    constexpr auto Place = static_cast<std::size_t>(Traits<Table>::Place);
    ++this->worker_.tally.raised[Place][static_cast<std::size_t>(number)];
  }

  void TakeANumber() {
    Traits<Table>::SetNew(this->table_, this->worker_.number, ++serial_);
    this->worker_.Count(Kind::Write, this->table_.Insert(), "Insert");
    const std::int32_t number = Traits<Table>::Number(this->table_);
    Require(Traits<Table>::Given(this->worker_.ledger).Note(number),
            "the number " + std::to_string(number) + " was given twice in " + this->Name());
    if (this->worker_.dice.OneIn(8)) {
      this->worker_.Count(Kind::Write, this->table_.Insert(), "Insert of a number that is taken",
                          {StatusDuplicateKey});
    }
  }

  std::int32_t serial_ = 0;
};

}  // namespace larkmoor::test
