#include "trials/watched_driver.h"

#include <memory>
#include <optional>
#include <span>
#include <string>
#include <utility>

#include "trials/trial.h"

namespace larkmoor::trials {
namespace {

using store::Seek;

std::string_view NameOf(Operation operation) {
  static constexpr std::string_view Names[] = {
      "open",   "create", "search",     "seek",       "next or previous",   "step",
      "insert", "update", "delete",     "percentage", "read by percentage", "sync",
      "commit", "claim",  "statistics", "set owner",  "clear owner",        "verify",
      "compact"};
  return Names[static_cast<std::size_t>(operation)];
}

Operation OperationOf(Seek seek) {
  if (seek == Seek::Equal) return Operation::Search;
  return seek == Seek::Next || seek == Seek::Previous ? Operation::GoOn : Operation::Seek;
}

/// A file whose position is followed, as far as statuses depend on it.
class WatchedFile final : public store::File {
 public:
  WatchedFile(WatchedDriver& driver, std::unique_ptr<store::File> file, store::OpenMode mode)
      : driver_(driver), file_(std::move(file)), isReadOnly_(mode == store::OpenMode::ReadOnly) {}

  [[nodiscard]] const store::FileDescription& Description() const override {
    return file_->Description();
  }

  Status Get(Seek seek, std::int16_t keyNumber, std::span<const std::byte> key,
             std::span<std::byte> record) override {
    return TakesPlace(
        keyNumber, Check(OperationOf(seek), keyNumber, file_->Get(seek, keyNumber, key, record)));
  }

  Status StepTo(store::Step step, std::span<std::byte> record) override {
    return TakesPlace({}, Check(Operation::Step, {}, file_->StepTo(step, record)));
  }

  Status Insert(std::int16_t keyNumber, std::span<std::byte> record) override {
    return TakesPlace(keyNumber,
                      Check(Operation::Insert, keyNumber, file_->Insert(keyNumber, record)));
  }

  Status Update(std::int16_t keyNumber, std::span<const std::byte> record) override {
    return TakesPlace(keyNumber,
                      Check(Operation::Update, keyNumber, file_->Update(keyNumber, record)));
  }

  Status Delete() override {
    const Status status = Check(Operation::Delete, {}, file_->Delete());
    if (status == StatusSuccess) hasCurrent_ = false;
    return status;
  }

  Status Percentage(std::int16_t keyNumber, double& percent) override {
    const Status status =
        Check(Operation::Percentage, keyNumber, file_->Percentage(keyNumber, percent));
    if (status == StatusSuccess && !(percent >= 0 && percent <= 100)) {
      throw Finding("a record lies at " + std::to_string(percent) + " percent");
    }
    return status;
  }

  Status GetByPercentage(std::int16_t keyNumber, double percent,
                         std::span<std::byte> record) override {
    return TakesPlace(keyNumber, Check(Operation::GetByPercentage, keyNumber,
                                       file_->GetByPercentage(keyNumber, percent, record)));
  }

  std::int32_t RecordCount() override { return file_->RecordCount(); }

  std::unique_ptr<store::SteadyReads> BeginSteadyReads() override {
    return file_->BeginSteadyReads();
  }

  Status Claim() override { return Check(Operation::Claim, {}, file_->Claim()); }

  Status Sync() override { return Check(Operation::Sync, {}, file_->Sync()); }

 private:
  /// Checks a status of an operation on that key, or on none.
  Status Check(Operation operation, std::optional<std::int16_t> key, Status status) {
    Position position{.isReadOnly = isReadOnly_, .hasCurrent = hasCurrent_, .onThatPath = {}};
    if (key) position.hasKey = Description().FindKey(*key) != nullptr;
    if (place_) position.onThatPath = place_ == key;
    return driver_.Check(operation, position, status);
  }

  /// Takes the place on that key path, or on none, where the operation succeeded.
  Status TakesPlace(std::optional<std::int16_t> key, Status status) {
    if (status == StatusSuccess) {
      place_ = key;
      hasCurrent_ = true;
    }
    return status;
  }

  WatchedDriver& driver_;
  std::unique_ptr<store::File> file_;
  bool isReadOnly_;
  bool hasCurrent_ = false;
  std::optional<std::int16_t> place_;  ///< key number of the place on a key path
};

class WatchedBatch final : public store::Batch {
 public:
  WatchedBatch(WatchedDriver& driver, std::unique_ptr<store::Batch> batch)
      : driver_(driver), batch_(std::move(batch)) {}

  Status Commit() override { return driver_.Check(Operation::Commit, {}, batch_->Commit()); }

 private:
  WatchedDriver& driver_;
  std::unique_ptr<store::Batch> batch_;
};

}  // namespace

Status WatchedDriver::Check(Operation operation, const Position& position, Status status) {
  ++answers_;
  if (!Allowed(operation, position, surroundings_).contains(status)) {
    throw Finding(std::string(NameOf(operation)) + " must not answer " + std::to_string(status) +
                  " here");
  }
  return status;
}

Status WatchedDriver::Open(const std::filesystem::path& path, store::OpenMode mode,
                           std::unique_ptr<store::File>& file) {
  std::unique_ptr<store::File> opened;
  const Status status = Check(Operation::Open, {}, driver_.Open(path, mode, opened));
  if (status != StatusSuccess) return status;
  // Without its owner name a protected file is for reading.
  const auto effective = surroundings_.isProtected ? store::OpenMode::ReadOnly : mode;
  file = std::make_unique<WatchedFile>(*this, std::move(opened), effective);
  return status;
}

Status WatchedDriver::Create(const std::filesystem::path& path,
                             const store::FileDescription& description) {
  return Check(Operation::Create, {}, driver_.Create(path, description));
}

std::unique_ptr<store::Batch> WatchedDriver::BeginBatch() {
  return std::make_unique<WatchedBatch>(*this, driver_.BeginBatch());
}

Status WatchedDriver::Statistics(const std::filesystem::path& path,
                                 store::FileStatistics& statistics) {
  return Check(Operation::Statistics, {}, driver_.Statistics(path, statistics));
}

Status WatchedDriver::SetOwner(const std::filesystem::path& path, std::string_view name,
                               bool allowRead) {
  return Check(Operation::SetOwner, {}, driver_.SetOwner(path, name, allowRead));
}

Status WatchedDriver::ClearOwner(const std::filesystem::path& path, std::string_view name) {
  return Check(Operation::ClearOwner, {}, driver_.ClearOwner(path, name));
}

Status WatchedDriver::Verify(const std::filesystem::path& path, std::vector<std::string>& findings,
                             const store::Progress& progress) {
  return Check(Operation::Verify, {}, driver_.Verify(path, findings, progress));
}

Status WatchedDriver::Compact(const std::filesystem::path& path) {
  return Check(Operation::Compact, {}, driver_.Compact(path));
}

}  // namespace larkmoor::trials
