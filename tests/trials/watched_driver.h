// A driver that looks at every status which another driver answers.
#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "engine/store/driver.h"
#include "trials/statuses.h"

namespace larkmoor::trials {

/// Hands everything on to `driver`, and throws a `Finding` where a status is none that the
/// operation may answer. Its files and batches must not outlive it.
class WatchedDriver final : public store::Driver {
 public:
  explicit WatchedDriver(const Surroundings& surroundings = {},
                         store::Driver& driver = store::DefaultDriver())
      : driver_(driver), surroundings_(surroundings) {}

  /// Says that there is something else around the files from now on.
  void Surround(const Surroundings& surroundings) { surroundings_ = surroundings; }
  /// Statuses that were looked at.
  [[nodiscard]] std::int64_t Answers() const { return answers_; }
  /// Gives the status on to the caller, unless it must not be.
  Status Check(Operation operation, const Position& position, Status status);

  Status Open(const std::filesystem::path& path, store::OpenMode mode,
              std::unique_ptr<store::File>& file) override;
  Status Create(const std::filesystem::path& path,
                const store::FileDescription& description) override;
  void Remove(const std::filesystem::path& path) override { driver_.Remove(path); }
  [[nodiscard]] std::vector<store::EngineVersion> Versions() const override {
    return driver_.Versions();
  }
  std::unique_ptr<store::Batch> BeginBatch() override;
  Status Statistics(const std::filesystem::path& path, store::FileStatistics& statistics) override;
  Status SetOwner(const std::filesystem::path& path, std::string_view name,
                  bool allowRead) override;
  Status ClearOwner(const std::filesystem::path& path, std::string_view name) override;
  Status Verify(const std::filesystem::path& path, std::vector<std::string>& findings,
                const store::Progress& progress) override;
  Status Compact(const std::filesystem::path& path) override;

 private:
  store::Driver& driver_;
  Surroundings surroundings_;
  std::int64_t answers_ = 0;
};

}  // namespace larkmoor::trials
