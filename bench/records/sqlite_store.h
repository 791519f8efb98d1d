// Records as a good programmer would keep them in SQLite: a table with a column for each field and
// an index for each key, in the order of insertion. What repeats in a record would be a table of
// its own, and is empty here.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "engine/record_description.h"
#include "peers/sqlite.h"
#include "records/store.h"
#include "support.h"

namespace larkmoor::bench {

/// What is asked of the table. Those that give a record give its place, what is looked at, and the
/// columns of the walking key.
enum class Query {
  Find,
  First,
  Last,
  StepFirst,
  Next,
  Previous,
  StepNext,
  WalkNext,
  WalkPrevious,
  WalkStep,
  Count,
  Percentage,
  FindByPercentage,
  Insert,
  SetAmount,
  SetKey,
  Delete,
  KeepFirst,
  Size
};

/// How a kind of records is told in the statements.
struct SqliteTable {
  const RecordDescription& record;
  std::string_view account;
  std::string_view findCondition;
  std::string_view walkColumns;
  std::string_view keyField;

  /// The statements that make the table with its indexes.
  [[nodiscard]] std::string Schema(double release) const;
  [[nodiscard]] std::string TextOf(Query query) const;
};

/// Gives an insert, started anew, the fields of a record.
void BindFields(Statement& insert, const RecordDescription& record,
                std::span<const std::byte> image);

/// A database with the records of one kind. Each call asks anew: between two of them no transaction
/// is held, so that each shows what was committed last.
template <typename Kind, Synchronous TheSynchronous>
class SqliteStore {
 public:
  static constexpr std::string_view Name =
      TheSynchronous == Synchronous::Normal ? "sqlite" : "sqlite_full";

  explicit SqliteStore(const std::filesystem::path& folder) : path_(folder / Name) {
    const bool isNew = !std::filesystem::exists(path_);
    Open();
    if (isNew) database_->Run(Table.Schema(DataRelease).c_str());
  }

  void Open() { database_.emplace(path_, TheSynchronous); }
  void Close() {
    for (std::optional<Statement>& statement : statements_) statement.reset();
    database_.reset();
  }

  bool Find(const Probe& probe) {
    Statement& find = Prepared(Query::Find);
    Kind::Ask(find, probe);
    return Take(find);
  }
  bool Start(Path path) {
    walk_ = path;
    Statement& first = Prepared(Of(path, Query::First, Query::Last, Query::StepFirst));
    first.Start();
    return Take(first);
  }
  bool Move() {
    Statement& next = Prepared(Of(walk_, Query::Next, Query::Previous, Query::StepNext));
    if (walk_ == Path::Step) {
      next.Start(place_);
    } else {
      StartAtPlace(next);
    }
    return Take(next);
  }
  void End() {}
  [[nodiscard]] Seen InHand() const { return inHand_; }
  std::int64_t Count() {
    Statement& count = Prepared(Query::Count);
    count.Start();
    Check(count.Step(), "count");
    const std::int64_t records = count.Long(0);
    count.End();
    return records;
  }

  double Percentage() {
    Statement& percentage = Prepared(Query::Percentage);
    StartAtPlace(percentage);
    Check(percentage.Step(), "percentage");
    const double percent = percentage.Real(0);
    percentage.End();
    return percent;
  }
  bool FindByPercentage(double percent) {
    Statement& find = Prepared(Query::FindByPercentage);
    find.Start(percent);
    return Take(find);
  }

  void Insert(std::span<const std::byte> image) {
    Statement& insert = Prepared(Query::Insert);
    insert.Start();
    BindFields(insert, Kind::Record::Describe(), image);
    Check(!insert.Step(), "insert");
  }
  void SetAmount(double amount) {
    Prepared(Query::SetAmount).Run(amount, place_);
    Check(database_->Changes() == 1, "update");
  }
  void SetKey(const Probe& probe) {
    Prepared(Query::SetKey).Run(Kind::OtherKey(probe), place_);
    Check(database_->Changes() == 1, "update");
  }
  void Delete() {
    Prepared(Query::Delete).Run(place_);
    Check(database_->Changes() == 1, "delete");
  }

  void Load(const Images& images) {
    database_->Run("BEGIN");
    for (std::size_t i = 0; i < images.Count(); ++i) Insert(images[i]);
    database_->Run("COMMIT");
  }
  void KeepFirst(std::int64_t count) { Prepared(Query::KeepFirst).Run(count); }

  // For a walk in one query, which stays open over all of it.
  Statement& WholeWalk(Path path) {
    return Prepared(Of(path, Query::WalkNext, Query::WalkPrevious, Query::WalkStep));
  }
  static Seen SeenIn(Statement& row) { return {row.Integer(1), row.Real(2), row.Integer(3)}; }

 private:
  inline static const SqliteTable Table{Kind::Record::Describe(), Kind::Account.name,
                                        Kind::FindCondition, Kind::WalkColumns,
                                        Kind::KeyField.name};

  static Query Of(Path path, Query next, Query previous, Query step) {
    if (path == Path::Step) return step;
    return path == Path::Next ? next : previous;
  }

  Statement& Prepared(Query query) {
    std::optional<Statement>& statement = statements_[static_cast<std::size_t>(query)];
    if (!statement) statement.emplace(*database_, Table.TextOf(query));
    return *statement;
  }

  bool Take(Statement& found) {
    if (!found.Step()) return false;
    place_ = found.Long(0);
    inHand_ = SeenIn(found);
    found.Read(4, segment1_);
    found.Read(5, segment2_);
    found.Read(6, segment3_);
    found.End();
    return true;
  }
  void StartAtPlace(Statement& statement) {
    statement.Start(segment1_, segment2_, segment3_, place_);
  }

  std::filesystem::path path_;
  std::optional<Database> database_;
  std::array<std::optional<Statement>, static_cast<std::size_t>(Query::Size)> statements_;
  Path walk_ = Path::Next;

  // The record in hand.
  std::int64_t place_ = 0;
  Seen inHand_;
  std::int32_t segment1_ = 0;
  std::int32_t segment2_ = 0;
  typename Kind::LastWalkSegment segment3_{};
};

/// The same database, walked in one query that stays open from start to end, and so shows one state
/// of the data.
template <typename Kind>
class OneQueryWalk {
 public:
  static constexpr std::string_view Name = "sqlite_one_query";

  explicit OneQueryWalk(SqliteStore<Kind, Synchronous::Normal>& store) : store_(store) {}

  bool Start(Path path) {
    walk_ = &store_.WholeWalk(path);
    walk_->Start();
    return walk_->Step();
  }
  bool Move() { return walk_->Step(); }
  void End() { walk_->End(); }
  [[nodiscard]] Seen InHand() const { return store_.SeenIn(*walk_); }

 private:
  SqliteStore<Kind, Synchronous::Normal>& store_;
  Statement* walk_ = nullptr;
};

template <typename Kind>
using NormalSqliteStore = SqliteStore<Kind, Synchronous::Normal>;
template <typename Kind>
using FullSqliteStore = SqliteStore<Kind, Synchronous::Full>;

}  // namespace larkmoor::bench
