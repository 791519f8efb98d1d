// A disk of little room, which work fills up again and again.

#include <sys/resource.h>

#include <algorithm>
#include <chrono>
#include <csignal>
#include <cstdint>
#include <exception>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include <larkmoor/status.h>

#include "support/child_process.h"
#include "support/sample_files.h"
#include "support/told_work.h"
#include "trials/child.h"
#include "trials/trial.h"
#include "trials/watched_driver.h"

namespace larkmoor::trials {
namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;
using store::Seek;
using test::Content;
using test::Cursor;
using test::MadeSample;
using test::SampleKey;

bool MayMount() {
  static const bool may = test::CanMount();
  return may;
}

/// A disk of the calling process's own, of which a part can be set aside. Where the process may not
/// mount one, a bound to the length of its files stands in for it.
class SmallDisk {
 public:
  explicit SmallDisk(Round& round) : folder_(round.Folder() / "disk"), dice_(round.Dice()) {
    fs::create_directory(folder_);
    if (MayMount()) {
      // More than the work can fill with all that is ever left to it.
      test::MountMemoryDisk(folder_, std::size_t{8} << 20);
    } else {
      std::signal(SIGXFSZ, SIG_IGN);
    }
    round.Count(MayMount() ? "small disks" : "bounded files");
  }

  [[nodiscard]] const fs::path& Folder() const { return folder_; }

  /// Leaves some hundred pages of room.
  void Fill() {
    constexpr std::uintmax_t Page = 4096;
    const std::uintmax_t left = Page * static_cast<std::uintmax_t>(50 + dice_.Below(200));
    if (!MayMount()) return Bound(LargestFile() + left);
    const std::uintmax_t room = fs::space(folder_).available;
    std::ofstream ballast(Ballast(), std::ios::binary);
    for (std::uintmax_t taken = 0; taken + left < room; taken += Page) {
      ballast << std::string(Page, 'x');
    }
  }

  /// Makes room again.
  void Empty() {
    if (MayMount()) {
      fs::remove(Ballast());
    } else {
      Bound(RLIM_INFINITY);
    }
  }

 private:
  [[nodiscard]] fs::path Ballast() const { return folder_ / "ballast"; }

  static void Bound(rlim_t size) {
    rlimit limit{};
    getrlimit(RLIMIT_FSIZE, &limit);
    limit.rlim_cur = size;
    setrlimit(RLIMIT_FSIZE, &limit);
  }

  [[nodiscard]] std::uintmax_t LargestFile() const {
    std::uintmax_t largest = 0;
    for (const auto& entry : fs::directory_iterator(folder_)) {
      largest = std::max(largest, entry.file_size());
    }
    return largest;
  }

  fs::path folder_;
  test::Dice& dice_;
};

/// A file, and what it must hold.
class FullDiskWork {
 public:
  FullDiskWork(Round& round, const SmallDisk& disk)
      : round_(round), path_(disk.Folder() / "Sample.dat") {
    test::MustSucceed(driver_.Create(path_, test::SampleFile()), "create");
    file_ = std::make_unique<Cursor>(driver_, path_);
  }
  ~FullDiskWork() { round_.Count("answers", driver_.Answers()); }
  FullDiskWork(const FullDiskWork&) = delete;
  FullDiskWork& operator=(const FullDiskWork&) = delete;

  /// Says whether the disk may be full from now on.
  void Surround(bool isFull) { driver_.Surround({.isFull = isFull}); }

  /// Some writes, each of which must succeed.
  void WriteALittle() {
    for (int i = 5 + Below(40); i > 0; --i) test::MustSucceed(WriteOne(), "write");
    Compare();
  }

  /// Writes until there is no room.
  void WriteUntilFull() {
    Status status = StatusSuccess;
    while (status == StatusSuccess) status = Below(20) == 0 ? LoadInBulk() : WriteOne();
    if (status != StatusDiskFull) {
      throw Finding("a full disk answers " + std::to_string(status));
    }
    round_.Count("full disks met");
    Compare();
  }

  /// What a client may try while there is no room: each succeeds or is told, and changes nothing
  /// that it should not.
  void TryWhileFull() {
    for (int i = Below(10); i > 0; --i) {
      WriteOne();
      LoadInBulk();
    }
    Compare();
    file_.reset();
    driver_.Compact(path_);  // there may be no room for a second file
    file_ = std::make_unique<Cursor>(driver_, path_);
    Compare();
  }

  void Reopen() {
    file_.reset();
    file_ = std::make_unique<Cursor>(driver_, path_);
    Compare();
  }

 private:
  int Below(int end) { return round_.Dice().Below(end); }

  /// Inserts, updates or deletes a record.
  Status WriteOne() {
    round_.Count("writes");
    if (content_.empty() || Below(3) > 0) return InsertOne();
    const auto chosen = std::next(content_.begin(), Below(static_cast<int>(content_.size())));
    test::MustSucceed(file_->Get(Seek::Equal, SampleKey::Number, {.number = chosen->first}),
                      "read");
    const test::Change change{0, chosen->first, Below(3) == 0 ? 0 : 1 + Below(100'000)};
    const Status status =
        change.value == 0
            ? file_->Delete()
            : file_->Update(SampleKey::Number, MadeSample(change.number, change.value));
    if (status == StatusSuccess) Apply(change, content_);
    return status;
  }

  Status InsertOne() {
    const test::Change change{0, NextNumber(content_), 1 + Below(100'000)};
    const Status status = file_->Insert(SampleKey::Number, MadeSample(change.number, change.value));
    if (status == StatusSuccess) Apply(change, content_);
    return status;
  }

  static std::int32_t NextNumber(const Content& content) {
    return content.empty() ? 1 : content.rbegin()->first + 1;
  }

  /// Many records in one commit: all of them, or none.
  Status LoadInBulk() {
    round_.Count("bulk loads");
    Content loaded = content_;
    const auto batch = driver_.BeginBatch();
    Status status = StatusSuccess;
    for (int i = 10 + Below(2000); i > 0 && status == StatusSuccess; --i) {
      const std::int32_t number = NextNumber(loaded);
      status = file_->Insert(SampleKey::Number, MadeSample(number, number));
      loaded[number] = number;
    }
    if (status == StatusSuccess) status = batch->Commit();
    if (status == StatusSuccess) content_ = std::move(loaded);
    return status;
  }

  void Compare() {
    Cursor reader = file_->Another();
    if (ContentOf(reader) != content_) throw Finding("a full disk loses or bends records");
    if (reader.File().RecordCount() != static_cast<std::int32_t>(content_.size())) {
      throw Finding("a full disk bends the count of records");
    }
    std::vector<std::string> findings;
    test::MustSucceed(driver_.Verify(path_, findings, {}), "verify");
    if (!findings.empty()) throw Finding("after a full disk: " + findings.front());
    round_.Count("comparisons");
  }

  Round& round_;
  fs::path path_;
  WatchedDriver driver_;
  std::unique_ptr<Cursor> file_;
  Content content_;
};

void FillUpAgainAndAgain(Round& round, SmallDisk& disk) {
  FullDiskWork work(round, disk);
  work.WriteALittle();
  for (int times = 1 + round.Dice().Below(3); times > 0; --times) {
    work.Surround(true);
    disk.Fill();
    work.WriteUntilFull();
    work.TryWhileFull();
    disk.Empty();
    work.Surround(false);
    work.WriteALittle();
    work.Reopen();
  }
}

}  // namespace

void FullRound(Round& round) {
  InChild(round, 60s, [](Round& inner) {
    SmallDisk disk(inner);
    try {
      FillUpAgainAndAgain(inner, disk);
    } catch (const std::exception&) {
      // The disk goes with the child: what is on it is kept beside it.
      fs::copy(disk.Folder(), inner.Folder() / "left", fs::copy_options::recursive);
      throw;
    }
  });
}

}  // namespace larkmoor::trials
