// The wall between the engine and whatever keeps the records.
//
// A driver opens record files and answers every call with a Btrieve status; nothing that a driver
// meets is thrown. The embedded driver is in lmdb/. A second driver stands beside it by
// implementing `Driver` and `File`, and is held to the same conformance tests.
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include <larkmoor/status.h>

#include "engine/store/file_description.h"

namespace larkmoor::store {

/// Searches on a key path.
enum class Seek { Equal, Greater, GreaterOrEqual, Less, LessOrEqual, First, Last, Next, Previous };

/// Moves in physical order, which is the order of insertion.
enum class Step { First, Last, Next, Previous };

enum class OpenMode { Normal, ReadOnly };

/// As long as it lives, its thread's reads of the file see one state of it and what the thread
/// itself writes. For a few reads that belong together: it keeps the room of all later states'
/// deleted records in use.
class SteadyReads {
 public:
  virtual ~SteadyReads() = default;
};

/// One opened record file with a position of its own. The position has three sides: the current
/// record, which `Update` and `Delete` act on; the place on a key path, where `Next` and `Previous`
/// start; and the physical place, where steps start. Used from the thread that opened it.
/// Destruction closes.
///
/// A read that fails leaves `record` and the position as they were.
class File {
 public:
  virtual ~File() = default;

  /// What the file says of itself. Valid as long as this object.
  [[nodiscard]] virtual const FileDescription& Description() const = 0;

  /// Reads the record that `seek` finds on the key path and takes all three sides of the position
  /// there. `key` holds the key writers' bytes, at least as many as the key is wide, and is looked
  /// at by the searches that compare. `record` is of the file's record length.
  virtual Status Get(Seek seek, std::int16_t keyNumber, std::span<const std::byte> key,
                     std::span<std::byte> record) = 0;
  /// Reads a record in physical order. Leaves no place on a key path.
  virtual Status StepTo(Step step, std::span<std::byte> record) = 0;
  /// Adds `record` and makes it the current one, its place on the key path of `keyNumber`. A number
  /// that an auto-increment key gave is put into `record`, on success only.
  virtual Status Insert(std::int16_t keyNumber, std::span<std::byte> record) = 0;
  /// Rewrites the current record.
  virtual Status Update(std::int16_t keyNumber, std::span<const std::byte> record) = 0;
  /// Deletes the current record. The place on the key path and the physical place stay.
  virtual Status Delete() = 0;
  /// Where on the key path the current record lies, 0.0 for the first to 100.0 for the last.
  virtual Status Percentage(std::int16_t keyNumber, double& percent) = 0;
  /// Reads the record that lies there.
  virtual Status GetByPercentage(std::int16_t keyNumber, double percent,
                                 std::span<std::byte> record) = 0;
  /// The number of records, 0 where it cannot be read.
  virtual std::int32_t RecordCount() = 0;
  virtual std::unique_ptr<SteadyReads> BeginSteadyReads() = 0;
  /// Within a batch: keeps other writers away from here to the end of the batch, as the first write
  /// would, so that what is read from here on is what the batch's writes meet.
  virtual Status Claim() = 0;
  /// Makes what was committed safe against loss of power.
  virtual Status Sync() = 0;
};

/// All writes of one thread between its making and `Commit`, on whatever files of the driver: one
/// commit a file, seen by the thread's own reads at once. Destruction drops what was not committed.
class Batch {
 public:
  virtual ~Batch() = default;
  /// Commits file by file in the order of the first writes. The first failure is returned; that
  /// file and those after it keep nothing.
  virtual Status Commit() = 0;
};

/// Three numbers that tell a version of an engine.
struct EngineVersion {
  std::int16_t version;
  std::int16_t revision;
  std::uint8_t id;
};

/// What a person may want to know of a file without opening it for work.
struct FileStatistics {
  FileDescription description;
  std::int64_t records = 0;
  std::uintmax_t bytes = 0;  ///< size on disk
  bool hasOwner = false;
  bool ownerAllowsRead = false;
};

/// Called now and then during long work with what is done and what there is to do in all.
using Progress = std::function<void(std::int64_t done, std::int64_t total)>;

class Driver {
 public:
  virtual ~Driver() = default;

  /// Opens the file at `path`. `file` is set on success only.
  virtual Status Open(const std::filesystem::path& path, OpenMode mode,
                      std::unique_ptr<File>& file) = 0;
  /// Makes an empty file. 59 where one of that name exists.
  virtual Status Create(const std::filesystem::path& path, const FileDescription& description) = 0;
  /// Takes a file away that nobody has open, with what the driver keeps beside it.
  virtual void Remove(const std::filesystem::path& path) = 0;
  /// The versions that the engine tells: client, server and requestor.
  [[nodiscard]] virtual std::vector<EngineVersion> Versions() const = 0;
  /// Starts a batch for the calling thread, or joins the one under way: of a joined batch `Commit`
  /// does nothing and the outer one decides.
  virtual std::unique_ptr<Batch> BeginBatch() = 0;

  // Administration. None of it looks at owner names.

  virtual Status Statistics(const std::filesystem::path& path, FileStatistics& statistics) = 0;
  /// Protects the file: without the name an open answers 51, or, with `allowRead`, opens for
  /// reading and answers writes with 46.
  virtual Status SetOwner(const std::filesystem::path& path, std::string_view name,
                          bool allowRead) = 0;
  /// Takes the protection away; 51 where `name` is not the file's owner name.
  virtual Status ClearOwner(const std::filesystem::path& path, std::string_view name) = 0;
  /// Checks that every key entry has its record and every record its entries. Each finding is a
  /// line of text.
  virtual Status Verify(const std::filesystem::path& path, std::vector<std::string>& findings,
                        const Progress& progress) = 0;
  /// Rewrites the file without the room that deleted records left. 85 where anyone has it open.
  virtual Status Compact(const std::filesystem::path& path) = 0;
};

/// The driver that the engine works with.
Driver& DefaultDriver();

}  // namespace larkmoor::store
