// A damaged file beside the sound one that it was.
#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "engine/store/driver.h"
#include "support/sample_files.h"
#include "trials/trial.h"
#include "trials/watched_driver.h"

namespace larkmoor::trials {

/// Does the same to both files, and throws a `Finding` where the damaged one tells a lie: each of
/// its answers is that of the sound one, or says that there is damage. A write that the damaged
/// file refuses for its damage is not done to the sound one either.
class Lockstep {
 public:
  Lockstep(Round& round, std::filesystem::path sound, std::filesystem::path damaged,
           store::OpenMode mode, bool isProtected = false);
  ~Lockstep();
  Lockstep(const Lockstep&) = delete;
  Lockstep& operator=(const Lockstep&) = delete;

  /// Opens both. False where the damaged file says that it is none.
  bool Open();
  void Close();

  /// Reads in every way that there is.
  void Read();
  /// Asks the damaged file what is wrong with it, which must be something where a read has said so.
  void Verify();
  /// Writes single records, and a batch of them.
  void Write();
  /// Rewrites both. Nobody may have them open.
  void Compact();
  /// Asks for what administrators ask for.
  void Administer();

 private:
  /// One of the two files, with its record buffer.
  struct Side {
    std::filesystem::path path;
    WatchedDriver driver;
    std::unique_ptr<store::File> file = nullptr;
    test::Bytes buffer = {};
  };
  using Operation = std::function<Status(store::File&, test::Bytes&)>;

  /// Does it to the sound file and to the damaged one. Nothing where the latter tells of damage.
  std::optional<Status> ReadBoth(const std::string& what, const Operation& read);
  /// Does it to the damaged file and, unless that tells of damage, to the sound one.
  std::optional<Status> WriteBoth(const std::string& what, const Operation& write);
  std::optional<Status> Compare(const std::string& what, Status sound, Status damaged,
                                const test::Bytes& before);
  bool TellsDamage(Status status);

  void CompareDescriptions() const;
  void CompareCounts() const;
  void WalkEverywhere();
  void Walk(const std::string& what, const Operation& start, const Operation& onward);
  void SearchEverywhere();
  void Search(std::int16_t keyNumber, const test::Bytes& sought);
  void ReadByPercentage();
  void WriteOne();
  void WriteBatch();
  /// A record to look for: mostly one that is there.
  test::Bytes Sought();
  std::int16_t AnyKey();
  [[nodiscard]] const store::FileDescription& Description() const;

  Round& round_;
  store::OpenMode mode_;
  Side sound_;
  Side damaged_;
  std::vector<test::Bytes> known_;  ///< records that the sound file had when it was opened
  bool readToldDamage_ = false;
};

}  // namespace larkmoor::trials
