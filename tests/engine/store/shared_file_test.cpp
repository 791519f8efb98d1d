// Files in a folder that others can get at: users who may only read, names that are links, and what
// is no file at all.
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include <atomic>
#include <chrono>
#include <cstring>
#include <filesystem>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include "engine/store/conformance.h"
#include "support/child_process.h"

namespace larkmoor::test {
namespace {

namespace fs = std::filesystem;
using store::OpenMode;
using store::Seek;
using store::Step;

class SharedFile : public DriverTest {
 protected:
  /// Has everyone read the files, and nobody else write them.
  void LetOthersRead() {
    fs::permissions(Folder(), fs::perms(0755));
    for (const auto& file : fs::directory_iterator(Folder())) {
      fs::permissions(file, fs::perms(0644));
    }
  }

  /// The helper program with a file open, to be asked for writes.
  static ChildProcess Writer(const fs::path& path) {
    ChildProcess writer({LARKMOOR_WRITER_PROCESS, "remote", path});
    EXPECT_EQ(writer.ReadLine(), "ready");
    return writer;
  }
};
INSTANTIATE_TEST_SUITE_P(Every, SharedFile, testing::ValuesIn(EveryDriver()), DriverName);

// Users who may only read -------------------------------------------------------------------------

TEST_P(SharedFile, AUserWhoMayOnlyReadSeesTheWritesOfOthersAtOnce) {
  const fs::path path = Make(SampleFile());
  ChildProcess writer = Writer(path);
  LetOthersRead();
  RunInChild([&] {
    ASSERT_TRUE(BecomeNobody());
    Cursor file(Driver(), path, OpenMode::ReadOnly);
    for (std::int32_t value = 1; value <= 20; ++value) {
      ASSERT_EQ(writer.Ask("insert 5 " + std::to_string(value)), "0");
      ASSERT_EQ(file.Get(Seek::Equal, SampleKey::Number, {.number = 5}), StatusSuccess);
      EXPECT_EQ(file.InHand(), MadeSample(5, value));
      ASSERT_EQ(writer.Ask("delete"), "0");
      EXPECT_EQ(file.StepTo(Step::First), StatusEndOfFile);
    }
    ASSERT_EQ(writer.Ask("lengthen 10 5000"), "0");
    EXPECT_EQ(NumbersByStep(file).size(), 5000U);
    EXPECT_EQ(file.Insert(SampleKey::Number, MadeSample(1, 1)), StatusAccessDenied);
    EXPECT_EQ(file.Update(SampleKey::Number, MadeSample(1, 1)), StatusAccessDenied);
    EXPECT_EQ(file.Delete(), StatusAccessDenied);
  });
}

TEST_P(SharedFile, AUserWhoMayOnlyReadIsToldSoByAdministrationToo) {
  const fs::path path = Make(SampleFile());
  LetOthersRead();
  RunInChild([&] {
    ASSERT_TRUE(BecomeNobody());
    EXPECT_EQ(Driver().SetOwner(path, "mine", false), StatusPermission);
    EXPECT_EQ(Driver().ClearOwner(path, "mine"), StatusPermission);
    EXPECT_EQ(Driver().Compact(path), StatusPermission);
    EXPECT_EQ(Driver().Create(Folder() / "New.dat", SampleFile()), StatusPermission);
    store::FileStatistics statistics;
    EXPECT_EQ(Driver().Statistics(path, statistics), StatusSuccess);
    EXPECT_EQ(Findings(path), Nothing);
  });
}

/// Rewrites all records of the file, each time in one commit, until its process is ended.
[[noreturn]] void RewriteForEver(store::Driver& driver, const fs::path& path) {
  Cursor file(driver, path);
  for (std::int32_t stamp = 2;; ++stamp) {
    const auto batch = driver.BeginBatch();
    for (Status status = file.StepTo(Step::First); status == StatusSuccess;
         status = file.StepTo(Step::Next)) {
      file.Update(SampleKey::Number, MadeSample(file.InHand().number, stamp));
    }
    if (batch->Commit() != StatusSuccess) _exit(1);
  }
}

/// Walks over the file for that long, and tells how many walks met anything but whole records, each
/// once.
int DamagedWalks(store::Driver& driver, const fs::path& path, std::int32_t records,
                 std::chrono::milliseconds time) {
  Cursor file(driver, path, OpenMode::ReadOnly);
  int damaged = 0;
  const auto end = std::chrono::steady_clock::now() + time;
  while (std::chrono::steady_clock::now() < end) {
    std::int32_t whole = 0;
    Status status = file.Get(Seek::First, SampleKey::Number);
    for (; status == StatusSuccess; status = file.Get(Seek::Next, SampleKey::Number)) {
      whole += file.InHand() == MadeSample(whole + 1, file.InHand().stamp) ? 1 : 0;
    }
    damaged += status == StatusEndOfFile && whole == records ? 0 : 1;
  }
  return damaged;
}

// They have no place in the readers' table, and must yet never see a page that is written anew.
TEST_P(SharedFile, ThreadsThatMayOnlyReadSeeWholeRecordsBesideAWriter) {
  constexpr std::int32_t Records = 300;
  constexpr int Readers = 8;
  const fs::path path = Make(SampleFile());
  {
    Cursor file(Driver(), path);
    const auto batch = Driver().BeginBatch();
    for (std::int32_t number = 1; number <= Records; ++number) Fill(file, {MadeSample(number, 1)});
    ASSERT_EQ(batch->Commit(), StatusSuccess);
  }
  LetOthersRead();
  RunInChild([&] {
    const pid_t writer = fork();
    if (writer == 0) RewriteForEver(Driver(), path);
    RunInChild([&] {
      ASSERT_TRUE(BecomeNobody());
      std::atomic<int> damaged = 0;
      std::vector<std::thread> readers;
      for (int i = 0; i < Readers; ++i) {
        readers.emplace_back(
            [&] { damaged += DamagedWalks(Driver(), path, Records, std::chrono::seconds(3)); });
      }
      for (std::thread& reader : readers) reader.join();
      EXPECT_EQ(damaged, 0);
    });
    EXPECT_EQ(kill(writer, SIGKILL), 0);
  });
  EXPECT_EQ(Findings(path), Nothing);
}

// Links -------------------------------------------------------------------------------------------

// Were each name to have locks of its own, two who open the file by different names would write
// over each other.
TEST_P(SharedFile, AFileAndALinkToItAreOneFileToTwoProcesses) {
  const fs::path path = Make(SampleFile());
  const fs::path link = Folder() / "Link.dat";
  fs::create_symlink(path, link);
  for (const fs::path& name : {path, link}) {
    EXPECT_EQ(Cursor(Driver(), name).Insert(SampleKey::Number, {}), StatusSuccess);
  }
  ChildProcess first({LARKMOOR_WRITER_PROCESS, "fill", path, "500"});
  ChildProcess second({LARKMOOR_WRITER_PROCESS, "fill", link, "500"});
  EXPECT_EQ(first.Wait(), 0) << testing::PrintToString(first.RemainingLines());
  EXPECT_EQ(second.Wait(), 0) << testing::PrintToString(second.RemainingLines());
  Cursor file(Driver(), path);
  EXPECT_EQ(NumbersByKey(file, SampleKey::Number).size(), 1002U);
  EXPECT_EQ(Findings(path), Nothing);
}

TEST_P(SharedFile, AFileOfTwoNamesAnswers85ToTheOneWhileTheOtherIsInUse) {
  const fs::path path = Make(SampleFile());
  const fs::path second = Folder() / "Second.dat";
  fs::create_hard_link(path, second);
  const auto insertBy = [this](const fs::path& name) {
    return Cursor(Driver(), name).Insert(SampleKey::Number, {});
  };
  // Each name has a lock file from now on.
  for (const fs::path& name : {path, second}) EXPECT_EQ(insertBy(name), StatusSuccess);
  {
    ChildProcess other({LARKMOOR_WRITER_PROCESS, "remote", path});
    ASSERT_EQ(other.ReadLine(), "ready");
    EXPECT_EQ(insertBy(path), StatusSuccess);
    std::unique_ptr<store::File> file;
    EXPECT_EQ(Driver().Open(second, store::OpenMode::Normal, file), StatusFileInUse);
  }
  EXPECT_EQ(insertBy(second), StatusSuccess);
  EXPECT_EQ(Cursor(Driver(), path).File().RecordCount(), 4);
}

TEST_P(SharedFile, CompactThroughALinkCompactsTheFileAndLeavesTheLink) {
  const fs::path path = Make(SampleFile());
  const fs::path link = Folder() / "Link.dat";
  fs::create_symlink(path, link);
  EXPECT_EQ(Driver().Compact(link), StatusSuccess);
  EXPECT_TRUE(fs::is_symlink(link));
  EXPECT_TRUE(fs::is_regular_file(fs::symlink_status(path)));
  EXPECT_EQ(Cursor(Driver(), path).Insert(SampleKey::Number, {}), StatusSuccess);
}

TEST_P(SharedFile, ALinkThatLeadsNowhereAnswers12AndMakesNothing) {
  fs::create_symlink(Folder() / "None.dat", Folder() / "Link.dat");
  std::unique_ptr<store::File> file;
  EXPECT_EQ(Driver().Open(Folder() / "Link.dat", OpenMode::Normal, file), StatusFileNotFound);
  EXPECT_EQ(Driver().Open(Folder() / "Link.dat", OpenMode::ReadOnly, file), StatusFileNotFound);
  EXPECT_EQ(Driver().Create(Folder() / "Link.dat", SampleFile()), StatusFileExists);
  EXPECT_FALSE(fs::exists(Folder() / "None.dat"));
}

TEST_P(SharedFile, ALinkThatLeadsToItselfIsAnswered) {
  fs::create_symlink(Folder() / "Link.dat", Folder() / "Link.dat");
  std::unique_ptr<store::File> file;
  EXPECT_NE(Driver().Open(Folder() / "Link.dat", OpenMode::Normal, file), StatusSuccess);
}

// What is no file ---------------------------------------------------------------------------------

class NoFile : public SharedFile {
 protected:
  /// Expects an answer in good time, in both modes and by two users.
  void ExpectAnswers(const fs::path& path, Status expected) {
    fs::permissions(Folder(), fs::perms(0755));
    for (const bool mayWrite : {true, false}) {
      for (const OpenMode mode : {OpenMode::Normal, OpenMode::ReadOnly}) {
        RunInChild([&] {
          alarm(10);
          if (!mayWrite) {
            ASSERT_TRUE(BecomeNobody());
          }
          std::unique_ptr<store::File> file;
          EXPECT_EQ(Driver().Open(path, mode, file), expected)
              << path << ", may write " << mayWrite;
        });
      }
    }
  }
};
INSTANTIATE_TEST_SUITE_P(Every, NoFile, testing::ValuesIn(EveryDriver()), DriverName);

TEST_P(NoFile, AFifoAnswers30) {
  const fs::path path = Folder() / "Sample.dat";
  ASSERT_EQ(mkfifo(path.c_str(), 0444), 0);
  ASSERT_EQ(chmod(path.c_str(), 0444), 0);
  ExpectAnswers(path, StatusNotARecordFile);
}

TEST_P(NoFile, AFolderAnswers30) {
  fs::create_directory(Folder() / "Sample.dat");
  ExpectAnswers(Folder() / "Sample.dat", StatusNotARecordFile);
}

TEST_P(NoFile, ADeviceAnswers30) {
  fs::create_symlink("/dev/zero", Folder() / "Zero.dat");
  fs::create_symlink("/dev/null", Folder() / "Null.dat");
  ExpectAnswers(Folder() / "Zero.dat", StatusNotARecordFile);
  ExpectAnswers(Folder() / "Null.dat", StatusNotARecordFile);
}

TEST_P(NoFile, ASocketIsAnswered) {
  sockaddr_un name{};
  name.sun_family = AF_UNIX;
  const std::string path = (Folder() / "Sample.dat").string();
  ASSERT_LT(path.size(), sizeof name.sun_path);
  std::memcpy(name.sun_path, path.c_str(), path.size());
  const int socketOnDisk = socket(AF_UNIX, SOCK_STREAM, 0);
  ASSERT_EQ(bind(socketOnDisk, reinterpret_cast<const sockaddr*>(&name), sizeof name), 0);
  std::unique_ptr<store::File> file;
  EXPECT_NE(Driver().Open(path, OpenMode::Normal, file), StatusSuccess);
  EXPECT_NE(Driver().Open(path, OpenMode::ReadOnly, file), StatusSuccess);
  close(socketOnDisk);
}

}  // namespace
}  // namespace larkmoor::test
